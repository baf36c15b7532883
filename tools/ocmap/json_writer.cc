#include "json_writer.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include <nlohmann/json.hpp>

namespace ocmap {
namespace {

constexpr uint64_t in_each_byte = UINT64_C(0x0101010101010101);
constexpr uint64_t top_bits = 0x80 * in_each_byte;

// Whether a byte of eight is 0, or below `limit`; both know whether there is one, not where.
uint64_t has_zero(uint64_t eight) {
    return (eight - in_each_byte) & ~eight & top_bits;
}
uint64_t has_below(uint64_t eight, uint8_t limit) {
    return (eight - limit * in_each_byte) & ~eight & top_bits;
}

bool are_plain(uint64_t eight) {
    const uint64_t special = (eight & top_bits) | has_below(eight, 0x20) | has_zero(eight ^ 0x7f * in_each_byte) |
                             has_zero(eight ^ '"' * in_each_byte) | has_zero(eight ^ '\\' * in_each_byte);
    return special == 0;
}

// Nothing but printable ASCII that stands for itself.
bool is_plain(std::string_view text) {
    uint64_t eight = 0;
    for (; text.size() >= sizeof eight; text.remove_prefix(sizeof eight)) {
        std::memcpy(&eight, text.data(), sizeof eight);
        if (!are_plain(eight))
            return false;
    }
    eight = ' ' * in_each_byte;
    std::memcpy(&eight, text.data(), text.size());
    return are_plain(eight);
}

} // namespace

void json_writer::open(char bracket) {
    out_.write(bracket);
    ++depth_;
    is_started_ = false;
}

// An empty document still takes two lines.
void json_writer::close(char bracket) {
    const bool has_content = is_started_ || depth_ == 1;
    --depth_;
    is_started_ = true; // by what ends here
    if (has_content)
        line("");
    out_.write(bracket);
}

void json_writer::line(std::string_view before) {
    static constexpr std::string_view blanks = "\n                                                                ";
    size_t count = 2 * depth_;
    out_.write(before);
    out_.write(blanks.substr(0, 1 + count));
    for (count -= std::min(count, blanks.size() - 1); count != 0; --count)
        out_.write(' ');
}

void json_writer::item() {
    line(is_started_ ? "," : "");
    is_started_ = true;
}

void json_writer::member(std::string_view mark, std::string_view module, std::string_view tag) {
    item();
    out_.write('"');
    out_.write(mark);
    if (!module.empty()) {
        escaped(module);
        out_.write(':');
    }
    escaped(tag);
    out_.write("\": ");
}

void json_writer::string(std::string_view text) {
    out_.write('"');
    escaped(text);
    out_.write('"');
}

void json_writer::string(std::string_view module, std::string_view name) {
    out_.write('"');
    escaped(module);
    out_.write(':');
    escaped(name);
    out_.write('"');
}

// In pieces, since a value may be as long as a request; each ends where a character does.
void json_writer::escaped(std::string_view text) {
    using nlohmann::json;
    if (is_plain(text))
        return out_.write(text);
    while (!text.empty()) {
        size_t length = std::min<size_t>(text.size(), 1 << 16);
        while (length > 1 && length < text.size() && (text[length] & 0xc0) == 0x80)
            --length;
        const std::string quoted = json(text.substr(0, length)).dump(-1, ' ', false, json::error_handler_t::replace);
        out_.write(std::string_view(quoted).substr(1, quoted.size() - 2));
        text.remove_prefix(length);
    }
}

bool is_json_integer(std::string_view text) {
    if (text.starts_with('-'))
        text.remove_prefix(1);
    return !text.empty() && (text.size() == 1 || text[0] != '0') &&
           std::ranges::all_of(text, [](char letter) { return letter >= '0' && letter <= '9'; });
}

} // namespace ocmap
