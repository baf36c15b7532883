// JSON texts told to a visitor piece by piece, each with its place; device files and requests are read this way.
//
// Beyond what JSON itself asks for, these are refused: bad UTF-8, a member that stands twice in its object, a number
// that no 64-bit integer or double can hold, and nesting deeper than 64.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace json_text {

inline constexpr size_t deepest = 64; // arrays and objects inside one another

// What is wrong with a text, and where. Lines and columns count from 1.
struct error {
    size_t line, column;
    std::string text;
};

// Thrown by a visitor; `read` turns it into an `error`. `at` is the offset of what is refused.
struct refusal {
    size_t at;
    std::string text;
};

enum class scalar { null, boolean, number, string };

// `at` is the offset of the first byte of what is told. Texts are valid during the call only.
class visitor {
public:
    virtual ~visitor() = default;
    virtual void open_object(size_t at) = 0;
    virtual void member(std::string_view name, size_t at) = 0; // its value follows
    virtual void close_object(size_t at) = 0;
    virtual void open_array(size_t at) = 0;
    virtual void close_array(size_t at) = 0;
    // Strings as they read, all others as they are written.
    virtual void value(scalar what, std::string_view text, size_t at) = 0;
};

void read(std::string_view whole, visitor &to); // throws error

} // namespace json_text
