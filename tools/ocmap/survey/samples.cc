#include "survey/samples.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

namespace ocmap {
namespace {

constexpr char transport_types[] = "openconfig-transport-types";

// The value for a leaf whose path ends so, where that of its type will not do. The first row that fits counts.
struct value_row {
    std::string_view path_end;
    const char *value;
    const char *module = nullptr;
};

constexpr value_row openconfig_values[] = {
    {"/admin-state", "ENABLED"},
    {"/config/rate-class", "TRIB_RATE_100G", transport_types},
    {"/config/trib-protocol", "PROT_100GE", transport_types},
    {"/config/logical-channel-type", "PROT_ETHERNET", transport_types},
    {"/loopback-mode", "FACILITY"},
    {"/client-als", "ETHERNET"},
    {"/assignment-type", "LOGICAL_CHANNEL"},
    {"/frequency", "193100000"},
    {"/operational-mode", "5003"},
    {"/filter-roll-off-factor", "0.035"},
};

constexpr value_row native_values[] = {
    {"/logical-channels/channel/admin-state", "enable"}, {"/channel/loopback-mode", "facility"},
    {"/channel/trib-protocol", "trib-proto-type100ge"},  {"/channel/rate-class", "trib-rate100g"},
    {"/channel/logical-channel-type", "type-ethernet"},  {"/channel/ethernet/client-als", "laser-shutdown"},
    {"/assignment-type", "type-logical-channel"},        {"/optical-channel/frequency", "193100000"},
    {"/optics-dwdm-carrier/param-type", "frequency"},    {"/optics-dwdm-carrier/param-value", "1931000"},
    {"/optics-dwdm-carrier/grid-type", "100mhz-grid"},   {"/valid", "true"},
};

const value_row *row_for(std::span<const value_row> rows, std::string_view path) {
    const auto found = std::ranges::find_if(rows, [&](const value_row &row) { return path.ends_with(row.path_end); });
    return found == rows.end() ? nullptr : &*found;
}

const char *of_type(schema::type type) {
    switch (type) {
    case schema::type::boolean:
        return "true";
    case schema::type::integer:
    case schema::type::integer64:
        return "1";
    case schema::type::decimal64:
        return "1.5";
    case schema::type::hundredths:
        return "-150";
    default:
        return "sample";
    }
}

// What the name of a channel says of its class; the first row that fits counts.
struct class_row {
    std::string_view in_name;
    const char *name;
};
constexpr class_row classes[] = {
    {"GigE", "ethernet"},
    {"CoherentDSP", "coherent"},
    {"OTU4", "otu4"},
    {"ODU", "odu"},
};

std::string name_of_class(const device::description &on, std::string_view in_name, std::string_view otherwise) {
    const auto found = std::ranges::find_if(
        on.channels, [&](const auto &channel) { return channel.second.find(in_name) != std::string::npos; });
    return std::string(found == on.channels.end() ? otherwise : std::string_view(found->second));
}

std::string location_of(const std::string &name) {
    const size_t slash = name.find('/');
    return slash == std::string::npos ? "0/0/0/12" : name.substr(slash - 1);
}

std::string component_of(const device::description &on, const std::string &port) {
    constexpr uint32_t without = 19; // a prefix
    std::string name = "OpticalChannel" + port;
    int rack = 0, slot = 0;
    if (on.router_type != without && std::sscanf(port.c_str(), "%d/%d", &rack, &slot) == 2)
        name = "0/" + std::to_string(slot) + "-" + name;
    return name;
}

const schema::node *list_above(const schema::node &node, std::string_view tag) {
    for (const schema::node *each = &node; each != nullptr; each = each->parent)
        if (each->what == schema::kind::list && tag == each->tag)
            return each;
    return nullptr;
}

bool has_list_above(const schema::node &node) {
    for (const schema::node *each = &node; each != nullptr; each = each->parent)
        if (each->what == schema::kind::list)
            return true;
    return false;
}

// The key that a leaf under `config` or `state` of an entry repeats.
const schema::node *repeated_key(const schema::node &leaf) {
    const schema::node *list = leaf.parent == nullptr ? nullptr : leaf.parent->parent;
    if (list == nullptr || list->what != schema::kind::list)
        return nullptr;
    for (const schema::node *key = list + 1; key->is_key; ++key)
        if (std::string_view(key->tag) == leaf.tag)
            return key;
    return nullptr;
}

// The port that carries an optical channel, as a component.
std::string port_of(std::string component) {
    constexpr std::string_view channel = "OpticalChannel";
    if (const size_t at = component.find(channel); at != std::string::npos)
        component.replace(at, channel.size(), "Optics");
    return component;
}

} // namespace

std::string path_of(const schema::node &node) {
    return (node.parent == nullptr ? "" : path_of(*node.parent)) + "/" + node.tag;
}

std::string path_of(const schema::native_node &node) {
    return (node.parent == nullptr ? "" : path_of(*node.parent)) + "/" + node.tag;
}

samples::samples(const device::description &on)
    : ethernet_(name_of_class(on, "GigECtrlr", "HundredGigECtrlr0/0/0/1")),
      coherent_(name_of_class(on, "CoherentDSP", "CoherentDSP0/0/0/12")),
      otu_(name_of_class(on, "OTU4", "OTU40/0/0/14")), odu_(name_of_class(on, "ODU", "ODU40/0/0/12")),
      port_(location_of(coherent_)), component_(component_of(on, port_)) {
    for (const class_row &row : classes)
        for (const auto &[channel, name] : on.channels)
            if (name.find(row.in_name) != std::string::npos) {
                const std::string index = std::to_string(channel);
                channels_.push_back({row.name, row.name + (" channel " + index), {{"channel", "index", index}}});
                break;
            }
    if (channels_.empty())
        channels_.push_back({"unknown", "channel 1", {{"channel", "index", "1"}}});
}

std::vector<subject> samples::subjects(const schema::node &node, const std::vector<chosen_key> &given) const {
    if (!has_list_above(node))
        return {subject{}};
    const bool is_given =
        std::ranges::any_of(given, [&](const chosen_key &each) { return list_above(node, each.list) != nullptr; });
    if (is_given)
        return {{"given", "the entry given", given}};
    std::vector<subject> all{{"all", "all entries", {}, true}};
    if (list_above(node, "channel") != nullptr)
        all.insert(all.end(), channels_.begin(), channels_.end());
    else
        all.push_back({"one", list_above(node, "component") != nullptr ? component_ : "one entry", {}});
    return all;
}

std::string samples::component(const subject &whose) const {
    for (const chosen_key &each : whose.keys)
        if (each.list == "component")
            return each.value;
    return component_;
}

sample samples::key(const schema::node &key, const subject &whose) const {
    const std::string_view list = key.parent->tag;
    for (const chosen_key &each : whose.keys)
        if (each.list == list && each.name == key.tag)
            return {each.value};
    if (list == "component")
        return {component_};
    if (list == "interface")
        return {"HundredGigE" + port_};
    return {key.value == schema::type::integer ? "1" : "sample"};
}

sample samples::value(const schema::node &leaf, const subject &whose) const {
    if (leaf.is_key)
        return key(leaf, whose);
    if (const schema::node *repeated = repeated_key(leaf))
        return key(*repeated, whose);
    const std::string path = path_of(leaf);
    if (path.ends_with("/line-port") || path.ends_with("/config/transceiver"))
        return {port_of(component(whose))};
    if (path.ends_with("/config/optical-channel"))
        return {component(whose)};
    if (const value_row *row = row_for(openconfig_values, path))
        return {row->value, row->module};
    return {of_type(leaf.value), leaf.value == schema::type::identity ? transport_types : nullptr};
}

std::string samples::native_value(const schema::native_node &leaf) const {
    if (leaf.value == schema::type::name)
        return "Optics" + port_;
    const value_row *row = row_for(native_values, path_of(leaf));
    return row != nullptr ? row->value
                          : of_type(leaf.value == schema::type::string ? schema::type::integer : leaf.value);
}

std::vector<std::string> samples::native_keys(const schema::native_node &key) const {
    const std::string_view list = key.parent->tag;
    const std::string path = path_of(*key.parent);
    if (std::string_view(key.tag) == "channel-index") {
        std::vector<std::string> all;
        for (const subject &each : channels_)
            all.push_back(each.keys.front().value);
        return all;
    }
    if (list == "optical-channel") {
        std::string name = component_;
        std::ranges::replace(name, '/', '_');
        return {name};
    }
    if (std::string_view(key.tag) == "active")
        return {"act"};
    if (std::string_view(key.tag) == "rx-threshold-type")
        return {"low", "high"};
    if (key.value == schema::type::integer)
        return {"1"};
    if (path.starts_with("/otu/") || list.starts_with("otu"))
        return {coherent_, otu_};
    if (path.starts_with("/odu/") || list.starts_with("odu"))
        return {odu_};
    if (path.starts_with("/ethernet-interface/") || path.starts_with("/lldp/") || list.starts_with("ethernet"))
        return {ethernet_};
    return {"Optics" + port_};
}

} // namespace ocmap
