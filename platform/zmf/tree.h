// Trees of the framework: output trees that grow by path, and contiguous trees that walkers step through.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "output_nodes.h"
#include "zmf.h"

namespace zmf {

// A tree of contiguous child arrays, as walkers need it: a request, or a frozen answer. The nodes are writable (walkers
// mark them) and live as long as the tree. Texts belong to the tree. `framework` is null in its nodes.
class fixed_tree {
public:
    fixed_tree() noexcept;
    fixed_tree(fixed_tree &&) noexcept;
    fixed_tree &operator=(fixed_tree &&) noexcept;
    ~fixed_tree();

    zmf_datatree *tops() const noexcept; // contiguous, `count()` of them
    uint32_t count() const noexcept;     // top nodes
    size_t nodes() const noexcept;       // all nodes

private:
    friend class tree_builder;
    struct body;
    std::unique_ptr<body> body_;
};

// Builds a fixed_tree in document order. Tags and namespaces are kept once per distinct text. While it builds, a node
// costs about 24 bytes beside its value; `finish` lays all nodes out in one array.
class tree_builder {
public:
    tree_builder();
    ~tree_builder();

    // Opens a child of the node that is open, or a top node. `ns` may be empty (null in the node then).
    void open(std::string_view tag, std::string_view ns);
    // The open node: its value (a leaf; "" is a value), the namespace of an identity value, its explicit operation.
    void value(std::string_view text);
    void value_namespace(std::string_view ns);
    void operation(uint32_t op);
    void close();

    size_t nodes() const noexcept;
    uint32_t depth() const noexcept; // open nodes
    fixed_tree finish();             // every node is closed; the builder is empty afterwards

private:
    struct state;
    std::unique_ptr<state> state_;
};

class output_node;

// An output tree: nodes are found by hash and kept small; one that is handed out stays where it is. Grows through the
// operations of the framework only (see session). Deleting the tree releases all of it.
class output_tree {
public:
    output_tree();
    ~output_tree();
    output_tree(const output_tree &) = delete;
    output_tree &operator=(const output_tree &) = delete;

    zmf_datatree *root() noexcept; // for walkers
    output_node top() const noexcept;
    size_t nodes() const noexcept; // without the root
    size_t bytes() const noexcept; // storage in use
    void limit(size_t bytes);      // an add that would need more answers rc_too_big

    // The node at an absolute path with keys, if there is one.
    output_node find(const char *path);

    struct body;
    body *internals() noexcept { return body_.get(); }

private:
    std::unique_ptr<body> body_;
};

// A node of an output tree, for reading. Small, and valid as long as the tree; one that is made of nothing is no node.
class output_node {
public:
    output_node() noexcept = default;
    output_node(const node_store *store, uint32_t number) noexcept : store_(store), number_(number) {}

    explicit operator bool() const noexcept { return store_ != nullptr; }
    bool operator==(const output_node &) const noexcept = default;

    const char *tag() const noexcept { return of_class().tag; }                   // null: the root
    const char *value() const noexcept { return node_store::value_of(record()); } // null: none
    const char *ns() const noexcept { return store_->namespace_of(record()); }    // null: the root
    const char *value_ns() const noexcept;                                        // of an identity value; null: none
    uint32_t op() const noexcept { return record().op; }
    bool op_explicit() const noexcept { return record().op_explicit; }

    // In order of creation.
    output_node first_child() const noexcept { return other(record().first_child); }
    output_node next_sibling() const noexcept { return other(record().next_sibling); }
    output_node parent() const noexcept { return number_ == 0 ? output_node() : output_node(store_, record().parent); }
    uint32_t number() const noexcept { return number_; } // from 1; the root has 0

    bool is_list_entry() const noexcept { return record().list_entry; } // made by an add with list flag, or by key
    bool has_source() const noexcept { return record().has_source; }    // an add with source made or last changed it
    bool is_key() const noexcept { return of_class().is_key; }          // a key leaf by the tables of platform/schema
    bool is_leaf_list() const noexcept { return of_class().is_leaf_list; } // by these tables
    bool is_list() const noexcept { return of_class().is_list; }           // by these tables; an entry without key too
    // Null: no OpenConfig table has it.
    const schema::node *schema_node() const noexcept { return of_class().openconfig; }

private:
    const node_record &record() const noexcept { return store_->at(number_); }
    const path_class &of_class() const noexcept { return store_->class_of(record()); }
    output_node other(uint32_t number) const noexcept {
        return number == 0 ? output_node() : output_node(store_, number);
    }

    const node_store *store_ = nullptr;
    uint32_t number_ = 0;
};

inline const char *output_node::value_ns() const noexcept {
    const node_record &node = record();
    return node.is_handed && node.handed->node.has_value_ns ? node.handed->node.value_ns : nullptr;
}

} // namespace zmf
