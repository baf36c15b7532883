// Modules by name and namespace, and the native models: rows of the .def tables made into linked nodes.
// To add a module: its row. To add a native model: a .def, its lines in `rows`;
// one that adds to another follows it there.
#include "schema/schema.h"

#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

#include "namespaces.h"

namespace schema {
namespace {

struct module_row {
    const char *module;
    const char *ns;
};

#define NATIVE(module)                                                                                                 \
    { module, ZMF_NS_CORVANE(module) }
constexpr module_row modules[] = {
    {"openconfig-terminal-device", ZMF_NS_OC_TERMINAL_DEVICE},
    {"openconfig-platform", ZMF_NS_OC_PLATFORM},
    {"openconfig-platform-transceiver", ZMF_NS_OC_PLATFORM_TRANSCEIVER},
    {"openconfig-if-ethernet", ZMF_NS_OC_IF_ETHERNET},
    {"openconfig-interfaces", interfaces_ns},
    {"openconfig-transport-types", ZMF_NS_OC_TRANSPORT_TYPES},
    {"ietf-netconf", "urn:ietf:params:xml:ns:netconf:base:1.0"},
    NATIVE("Corvane-openconfig-terminal-device-ext"),
    NATIVE("Corvane-controller-odu-oper"),
    NATIVE("Corvane-controller-optics-cfg"),
    NATIVE("Corvane-controller-optics-oper"),
    NATIVE("Corvane-controller-otu-oper"),
    NATIVE("Corvane-drivers-media-eth-oper"),
    NATIVE("Corvane-ethernet-lldp-oper"),
    NATIVE("Corvane-ifmgr-cfg"),
    NATIVE("Corvane-pmengine-oper"),
    NATIVE("Corvane-terminal-device-cfg"),
    NATIVE("Corvane-terminal-device-oper"),
};

struct row {
    uint8_t depth;
    kind what;
    bool is_key;
    bool is_config;
    type value;
    const char *tag;
    const char *module;
    bool is_told = false;
};

#define ROW(depth, what, is_key, value, tag) {depth, kind::what, is_key, IS_CONFIG, type::value, tag, MODULE},
#define CONT(depth, tag) ROW(depth, container, false, none, tag)
#define LIST(depth, tag) ROW(depth, list, false, none, tag)
#define KEY(depth, tag, value) ROW(depth, leaf, true, value, tag)
#define LEAF(depth, tag, value) ROW(depth, leaf, false, value, tag)
#define LEAF_LIST(depth, tag, value) ROW(depth, leaf_list, false, value, tag)
#define TOLD(depth, tag, value) {depth, kind::leaf, false, IS_CONFIG, type::value, tag, MODULE, true},

constexpr row rows[] = {
#define IS_CONFIG true
#define MODULE "Corvane-terminal-device-cfg"
#include "corvane_terminal_device_cfg.def"
#undef MODULE
#define MODULE "Corvane-ifmgr-cfg"
#include "corvane_ifmgr_cfg.def"
#undef MODULE
#define MODULE "Corvane-controller-optics-cfg"
#include "corvane_controller_optics_cfg.def"
#undef MODULE
#undef IS_CONFIG
#define IS_CONFIG false
#define MODULE "Corvane-controller-optics-oper"
#include "corvane_controller_optics_oper.def"
#undef MODULE
#define MODULE "Corvane-controller-otu-oper"
#include "corvane_controller_otu_oper.def"
#undef MODULE
#define MODULE "Corvane-controller-odu-oper"
#include "corvane_controller_odu_oper.def"
#undef MODULE
#define MODULE "Corvane-drivers-media-eth-oper"
#include "corvane_drivers_media_eth_oper.def"
#undef MODULE
#define MODULE "Corvane-terminal-device-oper"
#include "corvane_terminal_device_oper.def"
#undef MODULE
#define MODULE "Corvane-pmengine-oper"
#include "corvane_pmengine_oper.def"
#undef MODULE
#define MODULE "Corvane-ethernet-lldp-oper"
#include "corvane_ethernet_lldp_oper.def"
#undef MODULE
#undef IS_CONFIG
};
constexpr size_t row_count = std::size(rows);

// The first row that cannot stand where it stands; the number of rows when all can.
consteval size_t first_faulty() {
    for (size_t i = 0; i < row_count; ++i) {
        const uint8_t above = i == 0 ? 0 : rows[i - 1].depth;
        const bool is_top = rows[i].depth == 0;
        if (is_top ? rows[i].what != kind::container : i == 0 || rows[i].depth > above + 1)
            return i;
        if (!is_top && rows[i].depth > above && rows[i - 1].value != type::none)
            return i;
        const bool follows_list = !is_top && rows[i].depth > above && rows[i - 1].what == kind::list;
        const bool follows_key = i > 0 && rows[i - 1].is_key && rows[i - 1].depth == rows[i].depth;
        const bool may_be_keyless = !rows[i].is_config;
        if (rows[i].is_key ? !follows_list && !follows_key : follows_list && !may_be_keyless)
            return i;
    }
    return row_count;
}
static_assert(first_faulty() == row_count);

struct linked {
    native_node nodes[row_count];
};

// `nodes` is where the result will stand.
consteval linked link(const native_node *nodes) {
    linked result{};
    for (size_t i = 0; i < row_count; ++i) {
        size_t parent = i;
        while (parent > 0 && rows[parent].depth >= rows[i].depth)
            --parent;
        size_t end = i + 1;
        while (end < row_count && rows[end].depth > rows[i].depth)
            ++end;
        result.nodes[i] = {rows[i].depth, rows[i].what,   rows[i].is_key, rows[i].is_config,
                           rows[i].value, rows[i].tag,    rows[i].module, rows[i].depth == 0 ? nullptr : nodes + parent,
                           nodes + end,   rows[i].is_told};
    }
    return result;
}

constexpr linked table = link(table.nodes);

struct child_name {
    const native_node *parent;
    std::string_view tag;
    bool operator==(const child_name &) const = default;
};

struct child_hash {
    size_t operator()(const child_name &name) const noexcept {
        return std::hash<std::string_view>{}(name.tag) ^ std::hash<const void *>{}(name.parent) * 31;
    }
};

std::string path_of(const native_node *node) {
    std::string path;
    for (; node != nullptr; node = node->parent)
        path.insert(0, node->tag).insert(0, 1, '/');
    return path;
}

// The lists of the table, with storage for what they point to.
struct list_table {
    std::deque<std::string> paths;
    std::deque<std::vector<const char *>> keys;
    std::vector<native_list> lists;
    std::unordered_map<std::string_view, size_t> by_path;

    list_table() {
        for (const native_node &node : table.nodes)
            if (node.what == kind::list)
                add(node);
    }

    void add(const native_node &list) {
        std::vector<const char *> &names = keys.emplace_back();
        for (const native_node &key : native_keys(&list))
            names.push_back(key.tag);
        by_path.emplace(paths.emplace_back(path_of(&list)), lists.size());
        lists.push_back({paths.back().c_str(), list.module, names});
    }
};

const list_table &all_lists() {
    static const list_table made;
    return made;
}

using name_index = std::unordered_map<std::string_view, const char *>;

name_index index_of_modules(const char *module_row::*from, const char *module_row::*to) {
    name_index index;
    for (const module_row &each : modules)
        index.emplace(each.*from, each.*to);
    return index;
}

const char *find(const name_index &index, std::string_view name) {
    const auto found = index.find(name);
    return found == index.end() ? nullptr : found->second;
}

} // namespace

const char *ns_of_module(std::string_view module) {
    static const name_index index = index_of_modules(&module_row::module, &module_row::ns);
    return find(index, module);
}

const char *module_of_ns(std::string_view ns) {
    static const name_index index = index_of_modules(&module_row::ns, &module_row::module);
    return find(index, ns);
}

std::span<const native_node> native_nodes() {
    return table.nodes;
}

const native_node *native_child(const native_node *parent, std::string_view tag) {
    static const auto index = [] {
        std::unordered_map<child_name, const native_node *, child_hash> made;
        for (const native_node &node : table.nodes)
            made.emplace(child_name{node.parent, node.tag}, &node);
        return made;
    }();
    const auto found = index.find({parent, tag});
    return found == index.end() ? nullptr : found->second;
}

const native_node *native_at(std::string_view path) {
    const native_node *found = nullptr;
    while (path.starts_with('/')) {
        path.remove_prefix(1);
        const std::string_view step = path.substr(0, path.find('/'));
        found = native_child(found, step);
        if (found == nullptr)
            return nullptr;
        path.remove_prefix(step.size());
    }
    return path.empty() ? found : nullptr;
}

std::span<const native_node> native_keys(const native_node *list) {
    const native_node *end = list + 1;
    while (end != list->end && end->is_key)
        ++end;
    return {list + 1, end};
}

std::span<const native_list> native_lists() {
    return all_lists().lists;
}

const native_list *native_list_at(std::string_view path) {
    const auto found = all_lists().by_path.find(path);
    return found == all_lists().by_path.end() ? nullptr : &all_lists().lists[found->second];
}

} // namespace schema
