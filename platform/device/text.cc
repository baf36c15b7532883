// Places in a text, and UTF-8.
#include "device/text.h"

#include <algorithm>
#include <cstdint>

namespace text {
namespace {

bool is_continuation(char byte) {
    return (static_cast<uint8_t>(byte) & 0xc0) == 0x80;
}

struct lead_byte {
    uint8_t least, most;   // the lead byte
    uint8_t length;        // of the whole character
    uint8_t second, until; // what may follow it: no over-long forms, no surrogates, nothing above U+10FFFF
};

constexpr lead_byte lead_bytes[] = {
    {0x01, 0x7f, 1, 0x00, 0x00}, {0xc2, 0xdf, 2, 0x80, 0xbf}, {0xe0, 0xe0, 3, 0xa0, 0xbf},
    {0xe1, 0xec, 3, 0x80, 0xbf}, {0xed, 0xed, 3, 0x80, 0x9f}, {0xee, 0xef, 3, 0x80, 0xbf},
    {0xf0, 0xf0, 4, 0x90, 0xbf}, {0xf1, 0xf3, 4, 0x80, 0xbf}, {0xf4, 0xf4, 4, 0x80, 0x8f},
};

// Length of the character at the start of `rest`; 0 when there is none.
size_t character_length(std::string_view rest) {
    const auto lead = static_cast<uint8_t>(rest.front());
    const auto found = std::ranges::find_if(
        lead_bytes, [lead](const lead_byte &row) { return lead >= row.least && lead <= row.most; });
    if (found == std::end(lead_bytes) || rest.size() < found->length)
        return 0;
    if (found->length == 1)
        return 1;
    const auto second = static_cast<uint8_t>(rest[1]);
    if (second < found->second || second > found->until)
        return 0;
    return std::ranges::all_of(rest.substr(2, found->length - 2), is_continuation) ? found->length : 0;
}

constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";

} // namespace

position position_of(std::string_view whole, size_t offset) {
    return place_counter(whole).position_of(offset);
}

position place_counter::position_of(size_t offset) {
    if (counted_ == 0 && whole_.starts_with(byte_order_mark) && offset >= byte_order_mark.size())
        counted_ = byte_order_mark.size();
    for (; counted_ < std::min(offset, whole_.size()); ++counted_) {
        if (whole_[counted_] == '\n')
            there_ = {there_.line + 1, 1};
        else if (!is_continuation(whole_[counted_]))
            ++there_.column;
    }
    return there_;
}

size_t first_bad_byte(std::string_view whole) {
    for (size_t at = 0; at < whole.size();) {
        const auto byte = static_cast<uint8_t>(whole[at]);
        const size_t length = byte > 0 && byte < 0x80 ? 1 : character_length(whole.substr(at));
        if (length == 0)
            return at;
        at += length;
    }
    return std::string_view::npos;
}

std::string shortened(std::string_view whole, size_t limit) {
    if (whole.size() <= limit)
        return std::string(whole);
    size_t end = limit;
    while (end > 0 && is_continuation(whole[end]))
        --end;
    return std::string(whole.substr(0, end)) + "...";
}

} // namespace text
