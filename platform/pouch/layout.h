// A record type as codec and description files use it: the packed schema laid over the member table, with the names of
// the full schema. It needs nothing of the descriptor any more.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pouch.h"
#include "pouch/notation.h"

namespace pouch {

inline constexpr size_t largest = size_t{16} << 20; // bytes of a decoded record, and of what one decode allocates

struct record_shape;
struct chosen_shape;

// A decoded value. Sizes are those of the place in the record: a pointer for what is optional.
struct shape {
    kind what = kind::nothing;
    bool owns = false; // it is, or holds, a pointer to memory of its own
    size_t size = 0;
    size_t alignment = 1;
    size_t least = 0;               // bytes that it takes encoded, at the least
    size_t count = 0;               // N, of arrays and fields of bytes
    shape *inner = nullptr;         // of an optional, a list, an array
    record_shape *record = nullptr; // of a record
    size_t chooser = 0;             // of a choice: offset of the enumeration that chooses
    std::vector<chosen_shape> alternatives;

    const chosen_shape *chosen(const uint8_t *of_record) const; // of a choice, null: nothing
};

struct chosen_shape {
    int32_t value;
    std::string name; // may be empty
    shape *what;
};

struct placed_field {
    size_t offset;
    shape *what;
    std::string name;
};

struct record_shape {
    uint32_t number = 0;
    bool owns = false;
    size_t size = 0;
    size_t alignment = 1;
    size_t least = 0;
    std::vector<placed_field> fields;
};

struct type_fault {
    rcode status;
    std::string text;
};

class record_type {
public:
    explicit record_type(const pouch_descriptor &from); // throws type_fault

    const std::string &name() const noexcept { return name_; }
    bool has_schema() const noexcept { return top_ != nullptr; }
    const record_shape &top() const noexcept { return *top_; }
    uint64_t fingerprint() const noexcept { return fingerprint_; } // of name, version and schema

private:
    enum class progress : uint8_t { none, under_way, done };
    struct layout_work;

    shape *add_shape(const form &what);
    shape shape_of(const form &what);
    void place_fields(const definition &packed, const definition &named, const pouch_member &row);
    void measure(record_shape &record, layout_work &work, size_t depth);
    void measure(shape &each, layout_work &work, size_t depth);
    void check_places(const record_shape &record) const;

    std::string name_;
    uint64_t fingerprint_;
    std::deque<shape> shapes_; // never moved
    std::deque<record_shape> records_;
    std::unordered_map<uint32_t, record_shape *> record_of_;
    const record_shape *top_ = nullptr;
};

} // namespace pouch
