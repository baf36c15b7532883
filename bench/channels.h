// Logical channels with ten configuration leaves each, as a device holds them and as OpenConfig tells them.
// A leaf more: a row in channels.cc, and a leaf in openconfig-terminal-device.yang.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "device/device.h"
#include "zmf/tree.h"

namespace bench {

// "%u" in a value stands for the number of the channel.
struct channel_leaf {
    const char *native_container; // null: the channel itself
    const char *native_tag, *native_value;
    const char *container; // whose `config` holds the leaf; null: the channel itself
    const char *tag, *value;
};

// In the order of the OpenConfig model; without `config/index`, which the key stands for in native data.
std::span<const channel_leaf> channel_leaves();
constexpr size_t leaves_of_channel = 10; // `config/index` included, the key not

std::string value_of(const char *value, uint32_t channel);

// Channels 1 to `count`.
device::description device_with_channels(uint32_t count);
zmf::fixed_tree native_channels(uint32_t count);

} // namespace bench
