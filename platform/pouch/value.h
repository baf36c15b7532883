// Values of records as a description file gives them: by field name, numbers as they are written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace pouch {

// Where something stands in a file is no part of what it is: places are all equal.
struct place {
    size_t line = 0, column = 0;
    bool operator==(const place &) const { return true; }
};

struct member;

struct value {
    enum class kind : uint8_t { null, boolean, number, text, list, record };
    kind what = kind::null;
    std::string text; // "true", "-5"; of a text itself
    std::vector<value> entries;
    std::vector<member> members;
    place at{};
};
bool operator==(const value &a, const value &b);

struct member {
    std::string name;
    value what;
    place at{}; // of the name
    bool operator==(const member &) const = default;
};

inline bool operator==(const value &a, const value &b) {
    return a.what == b.what && a.text == b.text && a.entries == b.entries && a.members == b.members;
}

} // namespace pouch
