// Places in a text, and whether its bytes can be read as characters at all.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

// Line and column of a byte, both from 1; columns count characters. The end of the text is a place too.
struct position {
    size_t line, column;
};
position position_of(std::string_view whole, size_t offset);

// The same for many bytes of one text, each not before the last one, in one go through it.
class place_counter {
public:
    explicit place_counter(std::string_view whole) noexcept : whole_(whole) {}
    position position_of(size_t offset);

private:
    std::string_view whole_;
    size_t counted_ = 0;
    position there_{1, 1};
};

// Offset of the first byte that is no part of a UTF-8 character, or is zero; npos when there is none.
size_t first_bad_byte(std::string_view whole);

// At most `limit` bytes of a text for a message, cut between characters, with "..." for what is left out.
std::string shortened(std::string_view whole, size_t limit = 100);

} // namespace text
