#include "channels.h"

#include <array>

#include "device/native_data.h"
#include "schema/schema.h"

namespace bench {
namespace {

constexpr const char *otn = "otn", *ethernet = "ethernet", *ingress = "ingress"; // told apart by address

constexpr std::array rows{
    // clang-format off
    channel_leaf{nullptr,    "description",          "client %u of ring 7", nullptr,    "description",          "client %u of ring 7"},
    channel_leaf{nullptr,    "admin-state",          "enable",              nullptr,    "admin-state",          "ENABLED"},
    channel_leaf{nullptr,    "logical-channel-type", "type-ethernet",       nullptr,    "logical-channel-type", "openconfig-transport-types:PROT_ETHERNET"},
    channel_leaf{nullptr,    "loopback-mode",        "none",                nullptr,    "loopback-mode",        "NONE"},
    channel_leaf{otn,        "tti-msg-transmit",     "to south %u",         otn,        "tti-msg-transmit",     "to south %u"},
    channel_leaf{otn,        "tti-msg-expected",     "from south %u",       otn,        "tti-msg-expected",     "from south %u"},
    channel_leaf{ethernet,   "client-als",           "laser-shutdown",      ethernet,   "client-als",           "LASER_SHUTDOWN"},
    channel_leaf{ethernet,   "als-delay",            "200",                 ethernet,   "als-delay",            "200"},
    channel_leaf{nullptr,    "ingress-client-port",  "Optics0/0/0/%u",      ingress,    "transceiver",          "0/0-Optics0/0/0/%u"},
    // clang-format on
};
static_assert(rows.size() + 1 == leaves_of_channel);

constexpr const char *native_module = "Corvane-terminal-device-cfg";
constexpr const char *native_list = "/logical-channels/channel";

std::string native_path(const channel_leaf &leaf) {
    const std::string container = leaf.native_container == nullptr ? "" : std::string("/") + leaf.native_container;
    return native_list + container + "/" + leaf.native_tag;
}

} // namespace

std::span<const channel_leaf> channel_leaves() {
    return rows;
}

std::string value_of(const char *value, uint32_t channel) {
    std::string text = value;
    if (const size_t place = text.find("%u"); place != std::string::npos)
        text.replace(place, 2, std::to_string(channel));
    return text;
}

device::description device_with_channels(uint32_t count) {
    std::array<const schema::native_node *, rows.size()> leaves{};
    for (size_t i = 0; i < rows.size(); ++i)
        leaves[i] = schema::native_at(native_path(rows[i]));
    device::description made;
    made.router_type = 5;
    made.optical_terminal_device = true;
    auto &channels = device::list_of(made.config, *schema::native_at(native_list)).entries;
    for (uint32_t channel = 1; channel <= count; ++channel) {
        made.channels.emplace(channel, "CoherentDSP0/0/0/" + std::to_string(channel));
        device::entry_key key;
        device::append_key(key, std::to_string(channel));
        device::record &entry = channels[key];
        for (size_t i = 0; i < rows.size(); ++i)
            device::set_leaf(entry, *leaves[i], value_of(rows[i].native_value, channel));
    }
    return made;
}

zmf::fixed_tree native_channels(uint32_t count) {
    const char *ns = schema::ns_of_module(native_module);
    zmf::tree_builder build;
    const auto leaf = [&](const char *tag, const std::string &value) {
        build.open(tag, ns);
        build.value(value);
        build.close();
    };
    build.open("logical-channels", ns);
    for (uint32_t channel = 1; channel <= count; ++channel) {
        build.open("channel", ns);
        leaf("channel-index", std::to_string(channel));
        const char *container = nullptr;
        const auto go_to = [&](const char *other) {
            if (container == other)
                return;
            if (container != nullptr)
                build.close();
            if (other != nullptr)
                build.open(other, ns);
            container = other;
        };
        for (const channel_leaf &each : rows) {
            go_to(each.native_container);
            leaf(each.native_tag, value_of(each.native_value, channel));
        }
        go_to(nullptr);
        build.close();
    }
    build.close();
    return build.finish();
}

} // namespace bench
