// The facts behind hwinfo_*, ocoptical_ifmap_* and the sibling module, settable as a whole.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform.h"

namespace hardware {

struct facts {
    uint32_t router_type = 0;
    bool optical_terminal_device = false;
    bool legacy_optical_terminal_device = false;
    std::unordered_map<uint32_t, std::string> name_of;        // channel -> "_" form, at most 63 characters
    std::unordered_map<std::string, uint32_t> channel_of;     // "_" form -> channel
    bool registry_reachable = true;                           // the interface registry answers
    std::unordered_map<std::string, uint32_t> interfaces;     // internal form of a name -> handle, not 0
    bool state_store_installed = false;                       // its library is there
    std::unordered_map<std::string, std::string> state_items; // path -> encoded record
};

facts &current();
std::string internal_name(std::string_view name); // of the interface registry
uint64_t sibling_calls();                         // calls of tdmgr_ocoptical_dll_interaction since the process started

} // namespace hardware
