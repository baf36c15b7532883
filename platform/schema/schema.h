// The models as tables: OpenConfig as a client sees it, and the native models as the device holds them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace schema {

inline constexpr char interfaces_ns[] = "http://openconfig.net/yang/interfaces"; // no namespace of the plug-in's

enum class kind : uint8_t { container, list, leaf, leaf_list };
// `hundredths` is decimal64 to a client, and hundredths of it, without a point, to the plug-in.
enum class type : uint8_t {
    none,
    string,
    name,
    boolean,
    integer,
    integer64,
    decimal64,
    hundredths,
    enumeration,
    identity
};

// One node of an OpenConfig model, in model order. `module` changes where another module augments.
struct node {
    uint8_t depth;
    kind what;
    bool is_key;
    bool is_config; // false below `state` and in operational lists
    type value;     // none for containers and lists
    const char *tag;
    const char *module;   // "openconfig-terminal-device"
    const char *ns;       // of that module
    const char *callback; // what stands behind "ymap_ox_oc_optical_": "openconfigterminaldevice_leaf_lvla_..."
    const node *parent;   // null for a top node
    uint32_t end;         // index one past the subtree
};

// One OpenConfig tree, with what other modules add to it, and the exported walker that takes its top node (of
// `interfaces` the plug-in takes only what is added to an interface).
struct model {
    const char *module;
    const char *ns;
    const char *entry; // "ymap_ox_oc_optical_openconfigterminaldevice_lvla_terminaldevice"
    std::span<const node> nodes;
};
std::span<const model> models();
const model *root_of(std::string_view top_tag, std::string_view ns);                // null: no such root
const node *child(const node *parent_or_top, const model &m, std::string_view tag); // null parent: the top row

// Modules known by name: OpenConfig, identity and native modules.
const char *ns_of_module(std::string_view module); // null: unknown
const char *module_of_ns(std::string_view ns);     // null: unknown

// One node of a native model. All native models stand in one table, one after the other, in model order, so that nodes
// are ordered by their place; a subtree are the nodes from its top to `end`.
struct native_node {
    uint8_t depth;
    kind what;
    bool is_key;
    bool is_config; // false: of an operational module, which a read of configuration never asks
    type value;     // string, name (a text that is never empty) or integer; none for containers and lists
    const char *tag;
    const char *module;
    const native_node *parent; // null for a top container
    const native_node *end;    // one past the subtree
    bool is_told;              // a leaf that comes with its entry, whatever is asked of that
};
std::span<const native_node> native_nodes();
const native_node *native_child(const native_node *parent, std::string_view tag); // null parent: a top container
const native_node *native_at(std::string_view path);                              // "/otu/controllers"; null: unknown
std::span<const native_node> native_keys(const native_node *list);                // in order

// Native lists: path without keys, module, keys in order.
struct native_list {
    const char *path;   // "/logical-channels/channel"
    const char *module; // "Corvane-terminal-device-cfg"
    std::span<const char *const> keys;
};
std::span<const native_list> native_lists();
const native_list *native_list_at(std::string_view path); // null: not a list

} // namespace schema
