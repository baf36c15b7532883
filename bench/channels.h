// Many ports with their logical channels, as a device describes them and as OpenConfig tells them.
// A leaf more: its native value in channels.cc, its row in the table there, and the leaf in
// openconfig-terminal-device.yang.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace bench {

// A text for many ports: what stands between "<<" and ">>" is written for each of them, with commas between, and there
// "#" is the number of the port, from 1, "#+200" that and 200.
std::string for_ports(std::string_view text, uint32_t ports);
std::string numbered(std::string_view text, uint32_t port); // what is written for one of them

enum class performance { flex_bins, history };

// Device descriptions, as texts for many ports. Channels with ten leaves of configuration; or ports whose channels have
// state, with all bins that a device keeps: a coherent port with its optics (the channels that are configured), an ODU
// and an Ethernet controller.
std::string configured_device();
std::string live_device(performance kept);

// A node of a channel in a reply, the key left out. In model order.
struct told_node {
    unsigned depth;
    const char *tag;
    const char *value; // "#" in it is the number of the channel; null: a container
};

std::span<const told_node> configured_channel();
std::span<const told_node> live_channel(); // the leaves that do not come from optics, with 30-second intervals

size_t leaves_of(std::span<const told_node> channel); // with the key

} // namespace bench
