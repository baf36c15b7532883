// The state store: encoded records under exact paths. A path is that of the binding with that of the item behind it.
#include "statedb/state_store.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>

#include "hardware/hardware.h"
#include "pouch/status.h"
#include "statedb.h"

namespace {

// One for each path, for ever: readers keep theirs over devices that come and go.
struct binding {
    std::string path;
    size_t times_open = 0;
};

std::map<std::string, binding, std::less<>> &bindings() {
    static std::map<std::string, binding, std::less<>> all;
    return all;
}

std::string &asked_last() {
    static std::string path;
    return path;
}

binding *open_binding(const void *handle) {
    for (auto &[path, each] : bindings())
        if (&each == handle && each.times_open > 0)
            return &each;
    return nullptr;
}

} // namespace

namespace statedb {

size_t open_bindings() {
    size_t count = 0;
    for (const auto &[path, each] : bindings())
        count += each.times_open;
    return count;
}

const std::string &last_item() {
    return asked_last();
}

} // namespace statedb

// Whatever the mode, the store is only read.
rcode _statedb_bind(void **handle, const char *path, uint32_t /*mode*/) {
    if (handle == nullptr || path == nullptr)
        return statedb::rc_bad_call;
    if (!hardware::current().state_store_installed)
        return statedb::rc_not_installed;
    binding &bound = bindings()[path];
    bound.path = path;
    ++bound.times_open;
    *handle = &bound;
    return RC_OK;
}

rcode _statedb_unbind(void *handle) {
    binding *bound = open_binding(handle);
    if (bound == nullptr)
        return statedb::rc_not_bound;
    --bound->times_open;
    return RC_OK;
}

rcode statedb_item_get(void *handle, const char *path, void **data, size_t *length, uint32_t /*type*/) {
    if (path == nullptr || data == nullptr || length == nullptr)
        return statedb::rc_bad_call;
    const binding *bound = open_binding(handle);
    if (bound == nullptr)
        return statedb::rc_not_bound;
    const hardware::facts &facts = hardware::current();
    if (!facts.state_store_installed)
        return statedb::rc_not_installed;
    asked_last() = bound->path + path;
    const std::string *item = facts.state_items.find(asked_last());
    if (item == nullptr)
        return statedb::rc_no_item;
    auto *copy = static_cast<char *>(std::malloc(item->size()));
    if (copy == nullptr)
        return RC_NO_MEMORY;
    std::ranges::copy(*item, copy); // bytes, no text
    *data = copy;
    *length = item->size();
    return RC_OK;
}
