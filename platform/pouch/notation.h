// Schemas of records as texts: "$1={Name}s{Counter}p(D);" with names, "$1=sp(D);" packed. A definition is "$n=", its
// fields and ";", the first one is the top record. To add a form: its kind, and how it reads in notation.cc; its width
// in layout.cc; its encoding in encode.cc, decode.cc and values.cc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pouch {

enum class kind : uint8_t {
    signed_8,
    unsigned_8,
    unsigned_16,
    signed_32,
    unsigned_32,
    signed_64,
    unsigned_64,
    boolean,
    enumeration,
    text,
    record,     // $n
    optional,   // p(x)
    list,       // a(x)
    array,      // NA(x)
    text_field, // Nx%S
    mac_field,  // Nx%m
    bytes,      // Nx
    choice,     // ?(<field,prefix>,1:x,2:y,?:v)
    nothing,    // v, in a choice only
};

inline constexpr size_t deepest = 32; // forms and records inside one another

struct alternative;

struct form {
    kind what = kind::nothing;
    bool is_packed = false;                // has a P before it: said, and of no consequence
    uint32_t number = 0;                   // N; the record's number; of a choice: which field of its record chooses
    std::vector<form> inner;               // one, of an optional, a list, an array
    std::vector<alternative> alternatives; // of a choice
};
bool operator==(const form &a, const form &b); // names left out

struct alternative {
    int32_t value;
    std::string name; // may be empty
    form what;
};
bool operator==(const alternative &a, const alternative &b);

struct field {
    std::string name; // may be empty; is, in a packed schema
    form what;
};

struct definition {
    uint32_t number;
    std::vector<field> fields;
};
using schema = std::vector<definition>;

enum class notation { full, packed };

struct schema_fault {
    size_t at; // byte in the text
    std::string text;
};

schema read_schema(std::string_view text, notation how); // throws schema_fault

} // namespace pouch
