// A model as the walkers step through it: one flat array in tree order, linked when it is compiled.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "zmf.h"

namespace ocoptical {

// High: OpenConfig, requests on their way down. Low: native, answers on their way up.
enum class side : uint8_t { high, low };

enum class node_kind : uint8_t { container, list, key, leaf, leaf_list, augment };

union node_callback {
    zmf_node_fn node; // lists, keys, leaves; null in an augment entry
    zmf_cont_fn container;
};

inline constexpr int most_native_keys = 2;

struct model_node {
    node_kind kind = node_kind::leaf;
    uint8_t depth = 0;                              // 0: a root container or an augment entry
    bool only_get = false;                          // walked in a get of operational data only
    const char *tag = nullptr;                      // local name; null in an augment entry
    const char *walker = nullptr;                   // name of the node's walker, as traces show it
    const char *list_path = nullptr;                // lists: absolute, without keys
    const char *leafref_path = nullptr;             // lists: the path at which keys are held against `config`
    node_callback callback = {.node = nullptr};     // none in an augment entry
    zmf_node_fn augments = nullptr;                 // all but leaves: the _parse_augments hook
    const char *native_keys[most_native_keys] = {}; // low side, lists: names of the keys
    const char *ns = nullptr;                       // namespace of the model
    bool names_unknown_tag = false;
    bool is_state = false;        // the `state` child of its parent
    bool is_unmapped_key = false; // see model_traits
    uint8_t keys = 0;             // high side, lists: number of key leaves
    uint16_t span = 1;            // rows of the subtree, this one included
};

constexpr bool same_text(const char *a, const char *b) {
    while (*a != '\0' && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b;
}

constexpr bool has_subtree(node_kind kind) {
    return kind == node_kind::container || kind == node_kind::list || kind == node_kind::augment;
}

inline constexpr size_t no_fault = static_cast<size_t>(-1);

constexpr bool wants_children(side s, node_kind kind) {
    return kind == node_kind::augment || (s == side::high && kind == node_kind::list);
}

// Whether a row may follow the one before it (null for the first row).
consteval bool fits(side s, const model_node *before, const model_node &node) {
    if ((node.kind == node_kind::augment) != (node.tag == nullptr) ||
        (node.kind == node_kind::list) != (node.list_path != nullptr)) {
        return false;
    }
    const bool wants_child = before != nullptr && wants_children(s, before->kind);
    if (wants_child && node.depth != before->depth + 1) {
        return false;
    }
    if (node.depth == 0) {
        return node.kind == node_kind::container || node.kind == node_kind::augment;
    }
    if (before == nullptr || node.kind == node_kind::augment || node.depth > before->depth + 1) {
        return false;
    }
    if (s == side::low) {
        return node.depth <= before->depth || has_subtree(before->kind);
    }
    // A key is the first child of its list or follows another key, and a list has one.
    const bool first_child = node.depth == before->depth + 1;
    if (first_child) {
        return has_subtree(before->kind) && (before->kind == node_kind::list) == (node.kind == node_kind::key);
    }
    return node.kind != node_kind::key || (before->kind == node_kind::key && before->depth == node.depth);
}

// Number of the first row that cannot stand where it stands, counted from 0; no_fault for a sound table.
template <size_t rows>
consteval size_t first_fault(side s, const std::array<model_node, rows> &table) {
    for (size_t row = 0; row < rows; ++row) {
        if (!fits(s, row == 0 ? nullptr : &table[row - 1], table[row])) {
            return row;
        }
    }
    return wants_children(s, table[rows - 1].kind) ? rows - 1 : no_fault;
}

template <size_t row>
struct sound_table {
    static_assert(row == no_fault, "the row of this number (the first is 0) cannot stand where it stands");
    static constexpr bool value = true;
};

// What all rows of a model have in common.
struct model_traits {
    side s;
    const char *ns;
    bool only_get = false;          // a model of operational data
    bool names_unknown_tag = false; // the trace of an unknown child bears its tag
    bool has_unmapped_keys = false; // keys refuse like all leaves, and the walk goes on: else no entry could be named
};

// Rows as a table gives them; `link` fills in the rest.
consteval model_node container_row(uint8_t depth, const char *tag, const char *walker, zmf_cont_fn callback,
                                   zmf_node_fn augments, bool only_get = false) {
    return {.kind = node_kind::container,
            .depth = depth,
            .only_get = only_get,
            .tag = tag,
            .walker = walker,
            .callback = {.container = callback},
            .augments = augments};
}

consteval model_node list_row(uint8_t depth, const char *tag, const char *walker, const char *list_path,
                              zmf_node_fn callback, zmf_node_fn augments, bool only_get = false) {
    return {.kind = node_kind::list,
            .depth = depth,
            .only_get = only_get,
            .tag = tag,
            .walker = walker,
            .list_path = list_path,
            .leafref_path = list_path,
            .callback = {.node = callback},
            .augments = augments};
}

consteval model_node checked_at(model_node list, const char *leafref_path) {
    list.leafref_path = leafref_path;
    return list;
}

// A native list names its keys, which need no rows of their own.
consteval model_node with_keys(model_node list, const char *key, const char *second_key = nullptr) {
    list.native_keys[0] = key;
    list.native_keys[1] = second_key;
    return list;
}

consteval model_node leaf_row(node_kind kind, uint8_t depth, const char *tag, const char *walker,
                              zmf_node_fn callback) {
    return {.kind = kind, .depth = depth, .tag = tag, .walker = walker, .callback = {.node = callback}};
}

consteval model_node augment_row(const char *walker, zmf_node_fn augments) {
    return {.kind = node_kind::augment, .walker = walker, .augments = augments};
}

template <size_t rows>
consteval std::array<model_node, rows> link(const model_traits &model, std::array<model_node, rows> table) {
    for (size_t row = 0; row < rows; ++row) {
        model_node &node = table[row];
        node.ns = model.ns;
        node.names_unknown_tag = model.names_unknown_tag;
        node.is_unmapped_key = model.has_unmapped_keys && node.kind == node_kind::key;
        node.is_state = model.s == side::high && node.depth > 0 && node.tag != nullptr && same_text(node.tag, "state");
        node.only_get = node.only_get || model.only_get || node.is_state;
        for (size_t below = row + 1; below < rows && table[below].depth > node.depth; ++below) {
            ++node.span;
            node.keys += table[below].depth == node.depth + 1 && table[below].kind == node_kind::key;
        }
    }
    return table;
}

// The row of an exported walker.
template <size_t rows>
consteval size_t row_of(const std::array<model_node, rows> &table, const char *walker) {
    size_t row = 0;
    while (!same_text(table[row].walker, walker)) {
        ++row; // past the end: not a constant expression, so an unknown name does not compile
    }
    return row;
}

// The children of a node, in model order: for (const model_node &child : children_of(node)).
class child_range {
public:
    class iterator {
    public:
        explicit iterator(const model_node *at) : at_(at) {}
        const model_node &operator*() const { return *at_; }
        iterator &operator++() {
            at_ += at_->span;
            return *this;
        }
        bool operator!=(const iterator &other) const { return at_ != other.at_; }

    private:
        const model_node *at_;
    };

    explicit child_range(const model_node &parent) : parent_(&parent) {}
    iterator begin() const { return iterator(parent_ + 1); }
    iterator end() const { return iterator(parent_ + parent_->span); }

private:
    const model_node *parent_;
};

inline child_range children_of(const model_node &parent) {
    return child_range(parent);
}

inline const model_node &first_child(const model_node &parent) {
    return *(&parent + 1);
}

} // namespace ocoptical
