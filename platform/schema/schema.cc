// The OpenConfig models: rows of the .def tables made into linked nodes, and found by name.
// To add a model: a .def, its lines in the namespace below, a row in `model_rows`; one that adds to another has its
// lines among that one's, and the depth at which its own top stands there.
#include "schema/schema.h"

#include <array>
#include <unordered_map>

#include "namespaces.h"

namespace schema {
namespace {

struct row {
    uint8_t depth;
    kind what;
    bool is_key;
    bool is_edited; // false where no edit may touch the node, whatever stands above it
    type value;
    std::string_view tag;
    const char *module;
    const char *ns;
    const char *callback;
};

#define ROW(depth, what, is_key, is_edited, value, tag, callback)                                                      \
    {DEPTH + (depth), kind::what, is_key, is_edited, type::value, tag, MODULE, NS, callback},
#define CALLBACK(kind, name) CALLBACKS "_" kind "_" #name
#define CONT(depth, tag, name) ROW(depth, container, false, true, none, tag, CALLBACK("cont", name))
#define READ_CONT(depth, tag, name) ROW(depth, container, false, false, none, tag, CALLBACK("cont", name))
#define LIST(depth, tag, name) ROW(depth, list, false, true, none, tag, CALLBACK("list", name))
#define READ_LIST(depth, tag, name) ROW(depth, list, false, false, none, tag, CALLBACK("list", name))
#define KEY(depth, tag, name, value) ROW(depth, leaf, true, true, value, tag, CALLBACK("leaf", name))
#define LEAF(depth, tag, name, value) ROW(depth, leaf, false, true, value, tag, CALLBACK("leaf", name))
#define LEAF_LIST(depth, tag, name, value) ROW(depth, leaf_list, false, true, value, tag, CALLBACK("leaf", name))
#define STATS(depth, tag, name, stem)                                                                                  \
    CONT(depth, tag, name)                                                                                             \
    LEAF(depth + 1, "instant", stem##_instant, decimal64)                                                              \
    LEAF(depth + 1, "avg", stem##_avg, decimal64)                                                                      \
    LEAF(depth + 1, "min", stem##_min, decimal64)                                                                      \
    LEAF(depth + 1, "max", stem##_max, decimal64)                                                                      \
    LEAF(depth + 1, "interval", stem##_interval, integer64)                                                            \
    LEAF(depth + 1, "min-time", stem##_mintime, integer64)                                                             \
    LEAF(depth + 1, "max-time", stem##_maxtime, integer64)

#define TERMINAL_DEVICE "openconfig-terminal-device"
#define TRANSCEIVER "openconfig-platform-transceiver"
#define DEPTH 0
#define MODULE TERMINAL_DEVICE
#define NS ZMF_NS_OC_TERMINAL_DEVICE
#define CALLBACKS "openconfigterminaldevice"
constexpr row terminal_device[] = {
#include "openconfig_terminal_device.def"
};
#undef CALLBACKS
#undef NS
#undef MODULE

#define PLATFORM "openconfig-platform"
constexpr row components[] = {
#define MODULE PLATFORM
#define NS ZMF_NS_OC_PLATFORM
#define CALLBACKS "openconfigplatform"
#include "openconfig_platform.def"
#undef CALLBACKS
#undef NS
#undef MODULE
#undef DEPTH

#define DEPTH 2
#define MODULE TERMINAL_DEVICE
#define NS ZMF_NS_OC_TERMINAL_DEVICE
#define CALLBACKS "openconfigterminaldevice"
#include "openconfig_terminal_device_component.def"
#undef CALLBACKS
#undef NS
#undef MODULE
#undef DEPTH

#define DEPTH 3
#define MODULE "Corvane-openconfig-terminal-device-ext"
#define NS ZMF_NS_OPTICAL_CHANNEL_EXT
#define CALLBACKS "corvaneopenconfigterminaldeviceext"
#include "corvane_openconfig_terminal_device_ext.def"
#undef CALLBACKS
#undef NS
#undef MODULE
#undef DEPTH

#define DEPTH 2
#define MODULE TRANSCEIVER
#define NS ZMF_NS_OC_PLATFORM_TRANSCEIVER
#define CALLBACKS "openconfigplatformtransceiver"
#include "openconfig_platform_transceiver.def"
#undef CALLBACKS
#undef NS
#undef MODULE
#undef DEPTH
};

#define INTERFACES "openconfig-interfaces"
constexpr row interfaces[] = {
#define DEPTH 0
#define MODULE INTERFACES
#define NS interfaces_ns
#define CALLBACKS "openconfiginterfaces"
#include "openconfig_interfaces.def"
#undef CALLBACKS
#undef NS
#undef MODULE
#undef DEPTH

#define DEPTH 3
#define MODULE TRANSCEIVER
#define NS ZMF_NS_OC_PLATFORM_TRANSCEIVER
#define CALLBACKS "openconfigplatformtransceiver"
#include "openconfig_platform_transceiver_state.def"
#undef CALLBACKS
#undef NS
#undef MODULE
#undef DEPTH

#define DEPTH 2
#define MODULE "openconfig-if-ethernet"
#define NS ZMF_NS_OC_IF_ETHERNET
#define CALLBACKS "openconfigifethernet"
#include "openconfig_if_ethernet.def"
#undef CALLBACKS
#undef NS
#undef MODULE
#undef DEPTH
};

// The first row that cannot stand where it stands; the number of rows when all can.
template <size_t count>
consteval size_t first_faulty(const row (&rows)[count]) {
    for (size_t i = 0; i < count; ++i) {
        const row *above = i == 0 ? nullptr : &rows[i - 1];
        if (above == nullptr ? rows[i].depth != 0 : rows[i].depth == 0 || rows[i].depth > above->depth + 1)
            return i;
        const bool is_below = above != nullptr && rows[i].depth > above->depth;
        if (is_below && above->value != type::none)
            return i;
        if (rows[i].is_key && !(is_below ? above->what == kind::list : above != nullptr && above->is_key))
            return i;
    }
    return count;
}

template <size_t count>
consteval size_t count_of(const row (&rows)[count], kind what) {
    size_t found = 0;
    for (const row &each : rows)
        found += each.what == what;
    return found;
}

consteval size_t count_of(kind what) {
    return count_of(terminal_device, what) + count_of(components, what) + count_of(interfaces, what);
}

static_assert(first_faulty(terminal_device) == std::size(terminal_device));
static_assert(first_faulty(components) == std::size(components));
static_assert(first_faulty(interfaces) == std::size(interfaces));
static_assert(count_of(kind::container) == 109);
static_assert(count_of(kind::list) == 10);
static_assert(count_of(kind::leaf) + count_of(kind::leaf_list) == 401);

template <size_t count>
struct linked {
    node nodes[count];
};

// `nodes` is where the result will stand.
template <size_t count>
consteval linked<count> link(const row (&rows)[count], const node *nodes) {
    linked<count> result{};
    for (size_t i = 0; i < count; ++i) {
        size_t parent = i;
        while (parent > 0 && rows[parent].depth >= rows[i].depth)
            --parent;
        size_t end = i + 1;
        while (end < count && rows[end].depth > rows[i].depth)
            ++end;
        const bool is_edited_above = i == 0 || result.nodes[parent].is_config;
        result.nodes[i] = {rows[i].depth,
                           rows[i].what,
                           rows[i].is_key,
                           is_edited_above && rows[i].is_edited && rows[i].tag != "state",
                           rows[i].value,
                           rows[i].tag.data(),
                           rows[i].module,
                           rows[i].ns,
                           rows[i].callback,
                           i == 0 ? nullptr : nodes + parent,
                           static_cast<uint32_t>(end)};
    }
    return result;
}

constexpr linked<std::size(terminal_device)> terminal_device_tree = link(terminal_device, terminal_device_tree.nodes);
constexpr linked<std::size(components)> components_tree = link(components, components_tree.nodes);

constexpr linked<std::size(interfaces)> interfaces_tree = link(interfaces, interfaces_tree.nodes);

constexpr model model_rows[] = {
    {TERMINAL_DEVICE, ZMF_NS_OC_TERMINAL_DEVICE, "ymap_ox_oc_optical_openconfigterminaldevice_lvla_terminaldevice",
     terminal_device_tree.nodes},
    {PLATFORM, ZMF_NS_OC_PLATFORM, "ymap_ox_oc_optical_openconfigplatform_lvla_components", components_tree.nodes},
    {INTERFACES, interfaces_ns, "ymap_ox_oc_optical_openconfigifethernet_augment_lvla_interface",
     interfaces_tree.nodes},
};

struct child_name {
    const node *parent;
    std::string_view tag;
    bool operator==(const child_name &) const = default;
};

struct child_hash {
    size_t operator()(const child_name &name) const noexcept {
        return std::hash<std::string_view>{}(name.tag) ^ std::hash<const void *>{}(name.parent) * 31;
    }
};

using child_index = std::unordered_map<child_name, const node *, child_hash>;

child_index index_of_children() {
    child_index index;
    for (const model &each : model_rows)
        for (const node &child : each.nodes)
            if (child.parent != nullptr)
                index.emplace(child_name{child.parent, child.tag}, &child);
    return index;
}

} // namespace

std::span<const model> models() {
    return model_rows;
}

const model *root_of(std::string_view top_tag, std::string_view ns) {
    for (const model &each : model_rows)
        if (ns == each.ns && top_tag == each.nodes.front().tag)
            return &each;
    return nullptr;
}

const node *child(const node *parent_or_top, const model &m, std::string_view tag) {
    if (parent_or_top == nullptr)
        return tag == m.nodes.front().tag ? &m.nodes.front() : nullptr;
    static const child_index index = index_of_children();
    const auto found = index.find({parent_or_top, tag});
    return found == index.end() ? nullptr : found->second;
}

} // namespace schema
