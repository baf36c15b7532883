// How an output tree keeps its nodes, as far as reading takes it: by number, in order of creation, in chunks that never
// move. Number 0 is the root, so 0 also says "none".
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "zmf.h"

namespace schema {
struct model;
struct native_list;
struct node;
} // namespace schema

namespace zmf {

// A node as the plug-in holds it. Its address is that of `node`; `node.framework` is the tree's body.
struct handed_node {
    zmf_datatree node;
    uint32_t number;
};

// A node. One that is handed out has a zmf_datatree beside its record, which the plug-in may hold and write to.
struct node_record {
    union {
        const char *value;   // may be null
        handed_node *handed; // of a node that was handed out; the value stands there
    };
    uint32_t parent;
    uint32_t first_child, last_child, next_sibling;
    uint32_t path_class;
    uint16_t ns; // number
    uint16_t op : 7;
    uint16_t op_explicit : 1;
    uint16_t has_source : 1;
    uint16_t list_entry : 1;
    uint16_t is_handed : 1;
    uint16_t children : 5; // up to `few_children`
};
static_assert(sizeof(node_record) == 32);
constexpr uint32_t few_children = 16;

// All nodes at one path without keys.
struct path_class {
    uint32_t parent = 0;
    const char *tag = nullptr;
    bool is_key = false;
    bool is_leaf_list = false;
    bool is_list = false;
    bool is_openconfig_list = false;
    bool has_places = false;    // in the table of places
    uint32_t last_node = 0;     // found last; it is the newest of its place
    uint32_t last_place = 0;    // found last, in the table of places
    std::vector<uint32_t> keys; // classes of the key leaves, for a list of the schema
    const schema::native_list *native = nullptr;
    const schema::model *model = nullptr;
    const schema::node *openconfig = nullptr;
};

struct node_store {
    static constexpr size_t chunk_nodes = 512;

    node_record &at(uint32_t number) noexcept { return chunks[number / chunk_nodes][number % chunk_nodes]; }
    const node_record &at(uint32_t number) const noexcept { return chunks[number / chunk_nodes][number % chunk_nodes]; }
    const path_class &class_of(const node_record &node) const noexcept { return classes[node.path_class]; }
    const char *namespace_of(const node_record &node) const noexcept { return namespace_texts[node.ns]; }
    static const char *value_of(const node_record &node) noexcept {
        return node.is_handed ? node.handed->node.value : node.value;
    }

    std::vector<std::unique_ptr<node_record[]>> chunks;
    std::vector<path_class> classes;                    // 0 is the root's
    std::vector<const char *> namespace_texts{nullptr}; // by number, 0 is none
};

} // namespace zmf
