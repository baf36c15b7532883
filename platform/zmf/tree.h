// Trees of the framework: output trees that grow by path, and contiguous trees that walkers step through.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "zmf.h"

namespace schema {
struct node;
}

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

// An output tree: nodes in stable storage, one by one, found by hash. Grows through the operations of the framework
// only (see session). Deleting the tree releases all of it.
class output_tree {
public:
    output_tree();
    ~output_tree();
    output_tree(const output_tree &) = delete;
    output_tree &operator=(const output_tree &) = delete;

    zmf_datatree *root() noexcept;
    const zmf_datatree *root() const noexcept;
    size_t nodes() const noexcept; // without the root
    size_t bytes() const noexcept; // storage in use
    void limit(size_t bytes);      // an add that would need more answers rc_too_big

    // Reading, in order of creation. `node` is the root or a node of an output tree.
    static const zmf_datatree *first_child(const zmf_datatree *node) noexcept;
    static const zmf_datatree *next_sibling(const zmf_datatree *node) noexcept;
    static const zmf_datatree *parent(const zmf_datatree *node) noexcept; // null for the root
    static bool is_list_entry(const zmf_datatree *node) noexcept;         // made by an add with list flag, or by key
    static bool is_key(const zmf_datatree *node) noexcept;                // a key leaf by the tables of platform/schema
    static bool has_source(const zmf_datatree *node) noexcept;            // an add with source made or last changed it
    static bool is_leaf_list(const zmf_datatree *node) noexcept;          // by the tables of platform/schema
    static uint32_t number(const zmf_datatree *node) noexcept; // from 1, in order of creation; the root has 0
    static const schema::node *schema_node(const zmf_datatree *node) noexcept; // null: no OpenConfig table has it

    // The node at an absolute path with keys; null: not there, or no path.
    const zmf_datatree *find(const char *path);

    struct body;
    body *internals() noexcept { return body_.get(); }

private:
    std::unique_ptr<body> body_;
};

} // namespace zmf
