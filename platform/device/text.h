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

// Offset of the first byte that is no part of a UTF-8 character, or is zero; npos when there is none.
size_t first_bad_byte(std::string_view whole);

// At most `limit` bytes of a text for a message, cut between characters, with "..." for what is left out.
std::string shortened(std::string_view whole, size_t limit = 100);

} // namespace text
