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
    const auto &names = hardware::current().name_of;
    auto found = names.find(channel);
    if (found == names.end() || found->second.size() >= name_size || name_out == nullptr)
        return unknown_interface;
    std::memcpy(name_out, found->second.c_str(), found->second.size() + 1);
    return RC_OK;
}

rcode ocoptical_ifmap_c_find_ifindex(const char *name, uint32_t *channel) {
    const auto &channels = hardware::current().channel_of;
    auto found = name == nullptr ? channels.end() : channels.find(name);
    if (found == channels.end() || channel == nullptr)
        return unknown_interface;
    *channel = found->second;
    return RC_OK;
}

// What the sibling module does is its own business; that it was called is what can be seen.
rcode tdmgr_ocoptical_dll_interaction(zmf_map_ctx, const struct zmf_datatree *, struct zmf_datatree *) {
    ++calls_of_sibling;
    return RC_OK;
}

} // extern "C"
