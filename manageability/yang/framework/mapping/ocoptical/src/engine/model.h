// A model as the walkers step through it: one flat array in tree order, linked when it is compiled.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "zmf.h"

namespace ocoptical {

enum class node_kind : uint8_t { container, list, key, leaf, leaf_list, augment };

union node_callback {
    zmf_node_fn node; // lists, keys, leaves; null in an augment entry
    zmf_cont_fn container;
};

struct model_node {
    node_kind kind;
    uint8_t depth;         // 0: a root container or an augment entry
    bool only_get;         // walked in a get of operational data only
    const char *tag;       // local name; null in an augment entry
    const char *walker;    // name of the node's walker, as traces show it
    const char *ns;        // namespace of the model
    const char *list_path; // lists: absolute, without keys
    node_callback callback;
    zmf_node_fn augments;  // containers, lists, augment entries: the _parse_augments hook
    bool is_state = false; // the `state` child of its parent
    uint8_t keys = 0;      // lists: number of key leaves
    uint16_t span = 1;     // rows of the subtree, this one included
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

// Whether a row may follow the one before it (null for the first row).
consteval bool fits(const model_node *before, const model_node &node) {
    if ((node.kind == node_kind::augment) != (node.tag == nullptr) ||
        (node.kind == node_kind::list) != (node.list_path != nullptr)) {
        return false;
    }
    const bool wants_child =
        before != nullptr && (before->kind == node_kind::list || before->kind == node_kind::augment);
    if (wants_child && node.depth != before->depth + 1) {
        return false;
    }
    if (node.depth == 0) {
        return node.kind == node_kind::container || node.kind == node_kind::augment;
    }
    if (before == nullptr || node.depth > before->depth + 1) {
        return false;
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
consteval size_t first_fault(const std::array<model_node, rows> &table) {
    for (size_t row = 0; row < rows; ++row) {
        if (!fits(row == 0 ? nullptr : &table[row - 1], table[row])) {
            return row;
        }
    }
    const node_kind last = table[rows - 1].kind;
    if (last == node_kind::list || last == node_kind::augment) {
        return rows - 1;
    }
    return no_fault;
}

template <size_t row>
struct sound_table {
    static_assert(row == no_fault, "the row of this number (the first is 0) cannot stand where it stands");
    static constexpr bool value = true;
};

template <size_t rows>
consteval std::array<model_node, rows> link(std::array<model_node, rows> table) {
    for (size_t row = 0; row < rows; ++row) {
        model_node &node = table[row];
        node.is_state = node.depth > 0 && node.tag != nullptr && same_text(node.tag, "state");
        node.only_get = node.only_get || node.is_state;
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

} // namespace ocoptical
