// Damages good requests and holds the readers to their promise: a tree, or an error with a place in the input.
//
//   fuzz_readers SECONDS SEED [FILE]
//
// The inputs follow from the seed alone, so a run that ends in a crash crashes again at the same input. An input that
// breaks the promise in another way is kept in fuzz_readers.input. With a FILE that one input is read once, as it
// stands.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "request.h"

namespace {

using ocmap::format;

constexpr const char *broken_input = "fuzz_readers.input";

std::string bytes_of(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> good_requests() {
    std::vector<std::string> requests;
    for (const auto &entry : std::filesystem::directory_iterator(EXAMPLES))
        requests.push_back(bytes_of(entry.path()));
    std::ranges::sort(requests);
    return requests;
}

class damage {
public:
    damage(uint64_t seed, std::vector<std::string> good) : random_(seed), good_(std::move(good)) {}

    std::string next() {
        std::string text = good_[below(good_.size())];
        for (size_t count = 1 + below(6); count > 0 && !text.empty(); --count)
            strike(text);
        return text;
    }

private:
    size_t below(size_t end) { return std::uniform_int_distribution<size_t>(0, end - 1)(random_); }

    // Bytes that mean something to one of the forms are struck in more often than by chance.
    char byte() {
        static constexpr char telling[] = "<>&;!/?='\"{}[]:,@\\-0eE \n\t\xc3\xff\xed";
        return below(2) == 0 ? telling[below(sizeof telling)] : static_cast<char>(below(256));
    }

    void strike(std::string &text) {
        const size_t at = below(text.size());
        const size_t length = std::min(1 + below(below(3) == 0 ? 200 : 8), text.size() - at);
        switch (below(7)) {
        case 0:
            text[at] = static_cast<char>(text[at] ^ (1 << below(8)));
            break;
        case 1:
            text[at] = byte();
            break;
        case 2:
            text.insert(at, 1, byte());
            break;
        case 3:
            text.erase(at, length);
            break;
        case 4:
            text.insert(at, std::string(text, at, length));
            break;
        case 5:
            text.resize(at);
            break;
        default: {
            const std::string &other = good_[below(good_.size())];
            const size_t from = below(other.size());
            text.insert(at, other, from, 1 + below(100));
        }
        }
    }

    std::mt19937_64 random_;
    std::vector<std::string> good_;
};

// Whether the text has this line, and the line this column or ends just before it.
bool is_inside(const std::string &text, size_t line, size_t column) {
    size_t start = 0;
    for (size_t number = 1; number < line; ++number) {
        start = text.find('\n', start);
        if (start == std::string::npos)
            return false;
        ++start;
    }
    const size_t end = std::min(text.find('\n', start), text.size());
    return line > 0 && column > 0 && column <= end - start + 1;
}

void read_all(const zmf_datatree *nodes, uint32_t count, size_t &seen) {
    for (const zmf_datatree *node = nodes; node != nodes + count; ++node) {
        seen += 1 + (node->tag == nullptr);
        if (node->has_children)
            read_all(node->children, node->child_count, seen);
    }
}

// What is wrong with the outcome; empty: nothing.
std::string fault_of(const std::string &text, format form, ocmap::purpose what) {
    try {
        const zmf::fixed_tree tree = ocmap::read_request(text, form, what);
        size_t seen = 0;
        read_all(tree.tops(), tree.count(), seen);
        return seen == tree.nodes() && seen > 0 ? "" : "a tree with other nodes than it counts";
    } catch (const ocmap::input_error &error) {
        const std::string place = std::to_string(error.line) + ":" + std::to_string(error.column);
        if (error.text.empty())
            return "no reason at " + place;
        return is_inside(text, error.line, error.column) ? "" : place + " is not in the input: " + error.text;
    } catch (const std::exception &error) {
        return std::string("another exception: ") + error.what();
    }
}

bool keeps_promise(const std::string &text) {
    using ocmap::purpose;
    static constexpr struct {
        purpose what;
        const char *name;
    } purposes[] = {{purpose::read, "read"},
                    {purpose::edit, "edit"},
                    {purpose::edit_after_creates, "edit with creates"},
                    {purpose::native, "native data"}};
    for (const format form : {format::xml, format::json})
        for (const auto &each : purposes)
            if (const std::string fault = fault_of(text, form, each.what); !fault.empty()) {
                std::fprintf(stderr, "%s, %s: %s\n", form == format::xml ? "xml" : "json", each.name, fault.c_str());
                return false;
            }
    return true;
}

int fuzz(double seconds, uint64_t seed) {
    damage inputs(seed, good_requests());
    std::printf("seed %llu: ", static_cast<unsigned long long>(seed));
    std::fflush(stdout);
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    uint64_t count = 0;
    for (; std::chrono::steady_clock::now() < end; ++count) {
        const std::string text = inputs.next();
        if (!keeps_promise(text)) {
            std::ofstream(broken_input, std::ios::binary) << text;
            std::fprintf(stderr, "the input is kept in %s\n", broken_input);
            return EXIT_FAILURE;
        }
    }
    std::printf("%llu inputs\n", static_cast<unsigned long long>(count));
    return EXIT_SUCCESS;
}

} // namespace

int main(int count, char **arguments) {
    if (count == 4)
        return keeps_promise(bytes_of(arguments[3])) ? EXIT_SUCCESS : EXIT_FAILURE;
    if (count != 3) {
        std::fprintf(stderr, "usage: fuzz_readers SECONDS SEED [FILE]\n");
        return 64;
    }
    return fuzz(std::strtod(arguments[1], nullptr), std::strtoull(arguments[2], nullptr, 10));
}
