// Hardware facts, the interface map and the sibling module, as the plug-in asks for them.
#include "hardware.h"

#include <atomic>
#include <cstring>

namespace {
constexpr rcode unknown_interface = 0x5a480100u;
constexpr size_t name_size = 64;
std::atomic<uint64_t> calls_of_sibling{0};
} // namespace

namespace hardware {

facts &current() {
    static facts installed;
    return installed;
}

uint64_t sibling_calls() {
    return calls_of_sibling;
}

} // namespace hardware

extern "C" {

uint32_t hwinfo_get_router_type(void) {
    return hardware::current().router_type;
}
bool hwinfo_has_optical_term_dev(void) {
    return hardware::current().optical_terminal_device;
}
bool hwinfo_has_legacy_optical_term_dev(void) {
    return hardware::current().legacy_optical_terminal_device;
}

// Leaves the output alone for a number that is not in the map.
rcode ocoptical_ifmap_c_find_ifname(uint32_t channel, char *name_out) {
    const std::string *found = hardware::current().name_of.find(channel);
    if (found == nullptr || found->size() >= name_size || name_out == nullptr)
        return unknown_interface;
    std::memcpy(name_out, found->c_str(), found->size() + 1);
    return RC_OK;
}

rcode ocoptical_ifmap_c_find_ifindex(const char *name, uint32_t *channel) {
    if (name == nullptr || channel == nullptr)
        return unknown_interface;
    static thread_local uint32_t last = 0;
    const uint32_t *found = hardware::current().channel_of.find(name, last);
    if (found == nullptr)
        return unknown_interface;
    *channel = *found;
    return RC_OK;
}

// What the sibling module does is its own business; that it was called is what can be seen.
rcode tdmgr_ocoptical_dll_interaction(zmf_map_ctx, const struct zmf_datatree *, struct zmf_datatree *) {
    ++calls_of_sibling;
    return RC_OK;
}

} // extern "C"
