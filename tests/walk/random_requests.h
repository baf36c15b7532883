// Requests that no client would write, as texts (request_text.h), from a seed.
#pragma once

#include <map>
#include <random>
#include <string>
#include <vector>

using child_table = std::map<std::string, std::vector<const char *>>; // by the parent's tag

class random_requests {
public:
    random_requests(uint32_t seed, const child_table &children) : random_(seed), children_(children) {}

    uint32_t below(uint32_t n) { return static_cast<uint32_t>(random_() % n); }
    bool one_in(uint32_t n) { return below(n) == 0; }
    const char *one_of(const std::vector<const char *> &these) {
        return these[below(static_cast<uint32_t>(these.size()))];
    }
    std::string request(const char *top) { return node(top, 0); }

private:
    std::string node(const char *tag, int depth) {
        std::string text = tag;
        if (one_in(5)) {
            text += one_of({"!merge", "!replace", "!replace", "!delete", "!delete", "!remove"});
        }
        if (one_in(2)) {
            text += one_of({"=", "=1", "=5", "=x", "=100001", "=true"});
        }
        if (one_in(30)) {
            return text + one_of({"{}", "{?2}", "{?0}", "{#2}"});
        }
        if (depth < deepest && !one_in(4)) {
            text += "{";
            for (uint32_t i = below(4); i != 0; --i) {
                text += node(child_of(tag), depth + 1) + " ";
            }
            text += "}";
        }
        return text;
    }

    const char *child_of(const std::string &tag) {
        const auto known = children_.find(tag);
        if (known == children_.end() || one_in(10)) {
            return one_of({"zz", "x:zz", "_:zz", "-", "id", "index", "state", "x:config"});
        }
        return one_of(known->second);
    }

    static constexpr int deepest = 7;
    std::mt19937 random_;
    const child_table &children_;
};
