// Words of decoded records, where they stand.
#pragma once

#include <cstdint>
#include <cstring>

#include "pouch/layout.h"
#include "zmf.h"

namespace pouch {

struct list_words {
    uint64_t count;
    uint8_t *entries; // null when there are none
};
static_assert(sizeof(list_words) == 16);

template <typename word>
word load(const uint8_t *at) {
    word read;
    std::memcpy(&read, at, sizeof read);
    return read;
}

template <typename word>
rcode store(uint8_t *at, word value) {
    std::memcpy(at, &value, sizeof value);
    return RC_OK;
}

// Releases what a record points to, and leaves null there.
void release(const record_shape &what, uint8_t *record);

} // namespace pouch
