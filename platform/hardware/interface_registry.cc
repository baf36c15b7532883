// The interface registry: handles of interfaces by name. Its internal form of a name has "_" for each "/".
#include <algorithm>
#include <cstring>
#include <string>

#include "hardware/hardware.h"

namespace {

constexpr rcode registry_unreachable = 0x5a470100u;
constexpr rcode registry_bad_call = 0x5a470200u;
constexpr rcode no_such_interface = 0x5a470300u;

constexpr uint32_t bound_word = 10;
constexpr uint32_t bound_count = 2;
constexpr uint64_t the_registry = 1;

} // namespace

namespace hardware {

std::string internal_name(std::string_view name) {
    std::string internal(name);
    std::replace(internal.begin(), internal.end(), '/', '_');
    return internal;
}

} // namespace hardware

rcode ifreg_db_bind(const uint32_t *what, uint32_t count, uint64_t *registry) {
    if (what == nullptr || *what != bound_word || count != bound_count || registry == nullptr) {
        return registry_bad_call;
    }
    if (!hardware::current().registry_reachable) {
        return registry_unreachable;
    }
    *registry = the_registry;
    return RC_OK;
}

rcode ifreg_internal_namestring(const char *name, char *internal, size_t size) {
    if (name == nullptr || internal == nullptr || strlen(name) >= size) {
        return registry_bad_call;
    }
    const std::string text = hardware::internal_name(name);
    memcpy(internal, text.c_str(), text.size() + 1);
    return RC_OK;
}

rcode ifreg_interface_find(uint64_t registry, uint32_t count, const char *const *names, const void * /*null*/,
                           ifreg_find_result *result) {
    const hardware::facts &facts = hardware::current();
    if (registry != the_registry || !facts.registry_reachable) {
        return registry_unreachable;
    }
    if (names == nullptr || result == nullptr) {
        return registry_bad_call;
    }
    for (uint32_t at = 0; at < count; ++at) {
        const auto found = facts.interfaces.find(hardware::internal_name(names[at] != nullptr ? names[at] : ""));
        result->status[at] = found == facts.interfaces.end() ? no_such_interface : RC_OK;
        if (found != facts.interfaces.end()) {
            result->handle[at] = found->second;
        }
    }
    return RC_OK;
}
