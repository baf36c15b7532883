#include "json_writer.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>

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

// Not 0 where a byte of eight is not printable ASCII that stands for itself.
inline uint64_t special_in(uint64_t eight) {
    return (eight & top_bits) | has_below(eight, 0x20) | has_zero(eight ^ 0x7f * in_each_byte) |
           has_zero(eight ^ '"' * in_each_byte) | has_zero(eight ^ '\\' * in_each_byte);
}

bool is_plain(std::string_view text) {
    uint64_t eight = ' ' * in_each_byte;
    if (text.size() < sizeof eight) {
        for (const char letter : text)
            eight = eight << 8 | static_cast<uint8_t>(letter);
        return special_in(eight) == 0;
    }
    uint64_t special = 0;
    const char *const last = text.data() + text.size() - sizeof eight;
    for (const char *at = text.data(); at < last && special == 0; at += sizeof eight) {
        std::memcpy(&eight, at, sizeof eight);
        special = special_in(eight);
    }
    std::memcpy(&eight, last, sizeof eight);
    return (special | special_in(eight)) == 0;
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
        line(false);
    out_.write(bracket);
}

void json_writer::line(bool is_after_comma) {
    static constexpr std::string_view blanks = ",\n                                                                ";
    const size_t without = is_after_comma ? 0 : 1;
    size_t count = 2 * depth_;
    out_.write(blanks.substr(without, 2 - without + count));
    for (count -= std::min(count, blanks.size() - 2); count != 0; --count)
        out_.write(' ');
}

void json_writer::item() {
    line(is_started_);
    is_started_ = true;
}

// Most members have a tag alone, and most strings are plain: these are put together where they go.
bool json_writer::put_plain_member(std::string_view tag) {
    const size_t blanks = 2 * depth_;
    char *at = out_.room(blanks + tag.size() + 6);
    if (at == nullptr)
        return false;
    if (is_started_)
        *at++ = ',';
    *at++ = '\n';
    at = std::fill_n(at, blanks, ' ');
    *at++ = '"';
    std::memcpy(at, tag.data(), tag.size());
    at += tag.size();
    *at++ = '"';
    *at++ = ':';
    *at++ = ' ';
    out_.keep(at);
    is_started_ = true;
    return true;
}

bool json_writer::put_plain_string(std::string_view text) {
    char *at = out_.room(text.size() + 2);
    if (at == nullptr || !is_plain(text))
        return false;
    *at++ = '"';
    std::memcpy(at, text.data(), text.size());
    at += text.size();
    *at++ = '"';
    out_.keep(at);
    return true;
}

void json_writer::member(std::string_view mark, std::string_view module, std::string_view tag) {
    if (mark.empty() && module.empty() && put_plain_member(tag))
        return;
    item();
    out_.write('"');
    if (!mark.empty())
        out_.write(mark);
    if (!module.empty()) {
        escaped(module);
        out_.write(':');
    }
    out_.write(tag);
    out_.write("\": ");
}

void json_writer::string(std::string_view text) {
    if (put_plain_string(text))
        return;
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
    const std::string_view digits = text.substr(text.starts_with('-') ? 1 : 0);
    const bool is_written_so = !digits.empty() && (digits.size() == 1 || digits[0] != '0');
    int64_t number = 0;
    const auto [stopped, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool is_read = error == std::errc() && stopped == text.data() + text.size();
    return is_written_so && is_read && number >= std::numeric_limits<int32_t>::min() &&
           number <= std::numeric_limits<uint32_t>::max();
}

} // namespace ocmap
