// Items of the state store as encoded records.
#include "utility/state_store.h"

#include <cstdlib>
#include <unistd.h>

#include "statedb.h"

namespace ocoptical {

rcode find_state_store(int32_t *found) {
    if (*found == 0 && access("/pkg/lib/libstatedb.so", R_OK) == 0) {
        *found = 1;
    }
    return *found != 0 ? RC_OK : RC_STATEDB_UNAVAILABLE;
}

rcode state_store_binding::bind() {
    return handle != nullptr ? RC_OK : _statedb_bind(&handle, subtree, mode);
}

void state_store_item::release() {
    free(data);
    data = nullptr;
}

} // namespace ocoptical
