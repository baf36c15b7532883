// Contiguous trees and their builder. The builder writes a tape, one small record a node in document order; finish()
// walks it once and gives every node's children their place when it meets the node, so that no node is ever moved.
#include <cstdlib>
#include <new>
#include <stdexcept>
#include <vector>

#include "text.h"
#include "tree.h"

namespace zmf {

namespace {

struct release_memory {
    void operator()(void *memory) const noexcept { std::free(memory); }
};
using node_array = std::unique_ptr<zmf_datatree[], release_memory>;

// Zeroed by the system, so that a page costs nothing before a node is laid out in it.
node_array allocate_nodes(size_t count) {
    auto *memory = static_cast<zmf_datatree *>(std::calloc(count, sizeof(zmf_datatree)));
    if (memory == nullptr)
        throw std::bad_alloc();
    return node_array(memory);
}

struct tape_record {
    const char *value;
    uint32_t tag;
    uint32_t ns;
    uint32_t child_count;
    uint32_t op : 7;
    uint32_t op_explicit : 1;
    uint32_t value_ns : 24;
};
static_assert(sizeof(tape_record) == 24);

constexpr uint32_t most_value_namespaces = (1u << 24) - 1;
constexpr size_t records_in_chunk = 8192;

} // namespace

struct fixed_tree::body {
    node_array nodes;
    uint32_t tops = 0;
    size_t node_count = 0;
    text_arena tags, namespaces, values;
};

fixed_tree::fixed_tree() noexcept = default;
fixed_tree::fixed_tree(fixed_tree &&) noexcept = default;
fixed_tree &fixed_tree::operator=(fixed_tree &&) noexcept = default;
fixed_tree::~fixed_tree() = default;

zmf_datatree *fixed_tree::tops() const noexcept {
    return body_ ? body_->nodes.get() : nullptr;
}
uint32_t fixed_tree::count() const noexcept {
    return body_ ? body_->tops : 0;
}
size_t fixed_tree::nodes() const noexcept {
    return body_ ? body_->node_count : 0;
}

struct tree_builder::state {
    text_table tags, namespaces;
    text_arena values;
    std::vector<std::unique_ptr<tape_record[]>> tape;
    std::vector<tape_record *> open;
    size_t node_count = 0;
    uint32_t tops = 0;

    tape_record &append() {
        if (node_count % records_in_chunk == 0)
            tape.push_back(std::make_unique_for_overwrite<tape_record[]>(records_in_chunk));
        tape_record &record = tape.back()[node_count++ % records_in_chunk];
        record = {};
        return record;
    }

    tape_record &innermost() {
        if (open.empty())
            throw std::logic_error("no node is open");
        return *open.back();
    }

    void write(zmf_datatree &node, const tape_record &record) const {
        node.tag = tags.text(record.tag);
        node.ns = namespaces.text(record.ns);
        node.value = record.value;
        node.has_value = record.value != nullptr;
        node.op = record.op;
        node.op_explicit = record.op_explicit;
        node.value_ns = const_cast<char *>(namespaces.text(record.value_ns));
        node.has_value_ns = record.value_ns != 0;
    }

    void lay_out(zmf_datatree *nodes);
};

// `places` holds, for each level, where the next node of the tape goes and how many of its siblings are still to come.
void tree_builder::state::lay_out(zmf_datatree *nodes) {
    struct place {
        zmf_datatree *next;
        uint32_t left;
    };
    std::vector<place> places{{nodes, tops}};
    zmf_datatree *unused = nodes + tops;
    for (size_t i = 0; i < node_count; ++i) {
        const tape_record &record = tape[i / records_in_chunk][i % records_in_chunk];
        while (places.back().left == 0)
            places.pop_back();
        place &here = places.back();
        zmf_datatree &node = *here.next++;
        --here.left;
        write(node, record);
        if (record.child_count != 0) {
            node.children = unused;
            node.child_count = record.child_count;
            node.has_children = 1;
            places.push_back({unused, record.child_count});
            unused += record.child_count;
        }
        if (i % records_in_chunk == records_in_chunk - 1)
            tape[i / records_in_chunk].reset(); // keeps the peak near the size of the tree itself
    }
}

tree_builder::tree_builder() : state_(std::make_unique<state>()) {}
tree_builder::~tree_builder() = default;

void tree_builder::open(std::string_view tag, std::string_view ns) {
    uint32_t tag_number = state_->tags.number(tag);
    uint32_t ns_number = ns.empty() ? 0 : state_->namespaces.number(ns);
    tape_record &record = state_->append();
    record.tag = tag_number;
    record.ns = ns_number;
    ++(state_->open.empty() ? state_->tops : state_->open.back()->child_count);
    state_->open.push_back(&record);
}

void tree_builder::value(std::string_view text) {
    state_->innermost().value = state_->values.keep(text);
}

void tree_builder::value_namespace(std::string_view ns) {
    uint32_t number = state_->namespaces.number(ns);
    if (number > most_value_namespaces)
        throw std::length_error("too many namespaces");
    state_->innermost().value_ns = number;
}

void tree_builder::operation(uint32_t op) {
    state_->innermost().op = op & 0x7f;
    state_->innermost().op_explicit = 1;
}

void tree_builder::close() {
    state_->innermost();
    state_->open.pop_back();
}

size_t tree_builder::nodes() const noexcept {
    return state_->node_count;
}
uint32_t tree_builder::depth() const noexcept {
    return static_cast<uint32_t>(state_->open.size());
}

fixed_tree tree_builder::finish() {
    if (!state_->open.empty())
        throw std::logic_error("a node is still open");
    fixed_tree tree;
    if (state_->node_count != 0) {
        state_->tags.forget_look_up();
        state_->namespaces.forget_look_up();
        tree.body_ = std::make_unique<fixed_tree::body>();
        tree.body_->nodes = allocate_nodes(state_->node_count);
        state_->lay_out(tree.body_->nodes.get());
        tree.body_->tops = state_->tops;
        tree.body_->node_count = state_->node_count;
        tree.body_->tags = state_->tags.release_texts();
        tree.body_->namespaces = state_->namespaces.release_texts();
        tree.body_->values = std::move(state_->values);
    }
    state_ = std::make_unique<state>();
    return tree;
}

} // namespace zmf
