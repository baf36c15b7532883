#include "survey/path_pattern.h"

#include <algorithm>
#include <cstdint>

namespace ocmap {
namespace {

constexpr size_t longest_path = 1000;
constexpr std::string_view any_steps = "**";

// "*" takes as little as will do: on a mismatch the last one takes a letter more.
bool fits(std::string_view glob, std::string_view text) {
    size_t g = 0, t = 0, star = std::string_view::npos, resume = 0;
    while (t < text.size()) {
        if (g < glob.size() && glob[g] == '*') {
            star = g++;
            resume = t;
        } else if (g < glob.size() && (glob[g] == '?' || glob[g] == text[t])) {
            ++g;
            ++t;
        } else if (star != std::string_view::npos) {
            g = star + 1;
            t = ++resume;
        } else {
            return false;
        }
    }
    return glob.find_first_not_of('*', g) == std::string_view::npos;
}

// How many letters have to be changed, put in or left out.
size_t distance(std::string_view left, std::string_view right) {
    std::vector<size_t> row(right.size() + 1);
    for (size_t i = 0; i < row.size(); ++i)
        row[i] = i;
    for (size_t l = 0; l < left.size(); ++l) {
        size_t diagonal = row[0]++;
        for (size_t r = 0; r < right.size(); ++r) {
            const size_t above = row[r + 1];
            row[r + 1] = std::min({above + 1, row[r] + 1, diagonal + (left[l] != right[r])});
            diagonal = above;
        }
    }
    return row.back();
}

std::string_view last_step(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

template <typename node_type>
std::vector<std::string_view> tags_from(const node_type *node) {
    std::vector<std::string_view> tags;
    for (; node != nullptr; node = node->parent)
        tags.emplace_back(node->tag);
    std::ranges::reverse(tags);
    return tags;
}

} // namespace

path_pattern::path_pattern(std::string_view text) {
    if (text.size() > longest_path)
        throw pattern_error{"a path of more than 1000 characters"};
    if (text.ends_with('/'))
        text.remove_suffix(1);
    if (!text.starts_with('/'))
        throw pattern_error{"a path begins with \"/\""};
    while (!text.empty())
        take_step(text);
}

void path_pattern::take_step(std::string_view &text) {
    if (text.front() != '/')
        throw pattern_error{"what stands behind a key is no step: \"" + std::string(text) + "\""};
    text.remove_prefix(1);
    const size_t end = std::min(text.find_first_of("/["), text.size());
    std::string_view step = text.substr(0, end);
    step = step.substr(step.find(':') + 1);
    if (step.empty())
        throw pattern_error{"a step without name"};
    steps_.emplace_back(step);
    text.remove_prefix(end);
    while (text.starts_with('['))
        take_key(text);
}

// [name=value], the value in quotes of either kind or in none.
void path_pattern::take_key(std::string_view &text) {
    const size_t equals = text.find('=');
    if (equals == std::string_view::npos)
        throw pattern_error{"a key is written [name=value]"};
    std::string_view name = text.substr(1, equals - 1);
    name = name.substr(name.find(':') + 1);
    text.remove_prefix(equals + 1);
    const bool is_quoted = text.starts_with('\'') || text.starts_with('"');
    const std::string end = is_quoted ? std::string{text.front(), ']'} : "]";
    text.remove_prefix(is_quoted);
    const size_t length = text.find(end);
    if (name.empty() || length == std::string_view::npos)
        throw pattern_error{"a key is written [name=value]"};
    keys_.push_back({steps_.back(), std::string(name), std::string(text.substr(0, length))});
    text.remove_prefix(length + end.size());
}

// Which of the steps so far can stand for the tags so far, step by step.
bool path_pattern::matches(const std::vector<std::string_view> &tags) const {
    std::vector<uint8_t> can(tags.size() + 1), next(tags.size() + 1);
    can[0] = 1;
    for (const std::string &step : steps_) {
        const bool is_any = step == any_steps;
        next[0] = is_any && can[0];
        for (size_t t = 0; t < tags.size(); ++t)
            next[t + 1] = is_any ? can[t + 1] || next[t] : can[t] && fits(step, tags[t]);
        can.swap(next);
    }
    return can.back() != 0;
}

std::string path_pattern::bare() const {
    std::string path;
    for (const std::string &step : steps_)
        path.append("/").append(step);
    return path;
}

std::vector<std::string_view> tags_of(const schema::node &node) {
    return tags_from(&node);
}

std::vector<std::string_view> tags_of(const schema::native_node &node) {
    return tags_from(&node);
}

std::vector<std::string> nearest(const std::string &path, const std::vector<std::string> &known, size_t most) {
    struct candidate {
        size_t far;
        const std::string *path;
    };
    std::vector<candidate> all;
    for (const std::string &each : known) {
        const size_t in_name = distance(last_step(path), last_step(each));
        all.push_back({distance(path, each) + 2 * in_name, &each});
    }
    std::ranges::stable_sort(all, {}, &candidate::far);
    std::vector<std::string> best;
    for (size_t i = 0; i < std::min(most, all.size()); ++i)
        best.push_back(*all[i].path);
    return best;
}

} // namespace ocmap
