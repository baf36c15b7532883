// Items of the state store as encoded records. The store's library may be missing on a host: it is looked for until it
// is found once.
#pragma once

#include <cstddef>
#include <cstdint>

#include "zmf.h"

namespace ocoptical {

// RC_OK once the library is there. `found` remembers.
rcode find_state_store(int32_t *found);

// A binding that lives as long as the process, made at the first use.
struct state_store_binding {
    const char *subtree;
    uint32_t mode;
    void *handle = nullptr;
    int32_t library_found = 0;

    rcode look_for_library() { return handle != nullptr ? RC_OK : find_state_store(&library_found); }
    rcode bind();
};

// An item as the store hands it out.
struct state_store_item {
    void *data = nullptr;
    size_t length = 0;

    void release();
};

} // namespace ocoptical
