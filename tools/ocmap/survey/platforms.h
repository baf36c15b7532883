// The platforms that make a difference: router types, the two capabilities, and where statistics come from.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <string>

#include "device/device.h"

namespace ocmap {

struct platform {
    uint32_t router_type;
    bool has_terminal_device, is_legacy, has_history;
};
inline constexpr size_t platform_count = 32;
const std::array<platform, platform_count> &platforms();

using platform_set = std::bitset<platform_count>;

// The lab device as one of that kind.
device::description device_of(const platform &kind);

// "legacy, router type 7 or 19"; empty where all are meant.
std::string told(const platform_set &those);

} // namespace ocmap
