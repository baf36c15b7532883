// Records for tests of the codec: random schemas with the structure that a compiler would give them, random values for
// any record type, and comparison of decoded records.
#pragma once

#include <cstdint>
#include <deque>
#include <random>
#include <string>
#include <vector>

#include "pouch.h"
#include "pouch/layout.h"
#include "pouch/value.h"

namespace made {

using random = std::mt19937;

// A descriptor and what it points to.
struct record {
    record() = default;
    record(const record &) = delete;
    record &operator=(const record &) = delete;

    std::string name, full, packed;
    std::deque<std::vector<uint64_t>> offsets;
    std::vector<pouch_member> members;
    pouch_descriptor descriptor{};

    void add_member(uint64_t number, uint64_t size, std::vector<uint64_t> at);
    void describe(); // when the rest is there
};

void random_schema(random &source, record &into);

// Every field; what may be absent is there `presence` times of 100, lists have up to `longest` entries.
struct amount {
    unsigned presence, longest;
};
pouch::value random_value(const pouch::record_shape &what, random &source, amount how_much);

bool are_same(const pouch::record_shape &what, const void *a, const void *b);

// Registers one record, and tells the status of the first call that fails.
rcode register_alone(const pouch_descriptor &what);

} // namespace made
