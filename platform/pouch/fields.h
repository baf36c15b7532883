// Records from values of their fields.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "pouch/layout.h"
#include "pouch/value.h"

namespace pouch {

struct field_fault {
    place at;
    std::string text;
};

// A decoded record, and what it points to. The type has a schema.
class held_record {
public:
    explicit held_record(const record_type &type); // all zero
    // Fields that are not named are 0, null or empty. Throws field_fault.
    held_record(const record_type &type, const value &fields);
    ~held_record();
    held_record(const held_record &) = delete;
    held_record &operator=(const held_record &) = delete;

    void *data() noexcept { return bytes_.get(); }
    const void *data() const noexcept { return bytes_.get(); }

private:
    const record_type &type_;
    std::unique_ptr<uint8_t[]> bytes_;
};

// Encoded; throws field_fault.
std::string encode_fields(const record_type &type, const value &fields);

} // namespace pouch
