// The inside of an output tree. Nodes are numbered in order of creation and live in chunks that never move; number 0 is
// the root, so 0 also says "none". Each place (a parent and a class) has a slot in one hash table that leads to the
// newest node there, and through it to the current entry. A second table leads from keys to list entries.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "path.h"
#include "schema/schema.h"
#include "text.h"
#include "tree.h"
#include "zmf.h"

namespace zmf {

// A node with its bookkeeping. A node's address is its record's address; `node.framework` is the tree's body.
struct output_node {
    zmf_datatree node;
    uint32_t number;
    uint32_t parent;
    uint32_t first_child, last_child, next_sibling;
    uint32_t path_class;
    uint32_t current; // of the newest node of a place: the current entry there
    uint32_t has_source : 1;
    uint32_t list_entry : 1;
    uint32_t noted_at : 30; // of the newest node of a place: level at which `current` was last noted, 0 never
};

// All nodes at one path without keys.
struct path_class {
    uint32_t parent;
    const char *tag;
    bool is_key = false;
    bool is_leaf_list = false;
    std::vector<uint32_t> keys; // classes of the key leaves, for a list of the schema
    const schema::native_list *native = nullptr;
    const schema::model *model = nullptr;
    const schema::node *openconfig = nullptr;
};

// Current entries that were noted, so that they can be given back. Sizes count what was ever noted and not given back,
// and a tree that ends takes its notes along without disturbing sizes that somebody remembers.
class entry_notes {
public:
    ~entry_notes() { leave(); }
    entry_notes() = default;
    entry_notes(const entry_notes &) = delete;
    entry_notes &operator=(const entry_notes &) = delete;

    void enter(output_tree::body &tree); // later notes are of this tree; those of another one are given back
    void leave() noexcept;               // gives back everything
    void forget() noexcept;              // the tree ends

    size_t size() const noexcept { return dropped_ + notes_.size(); }
    void give_back(size_t size) noexcept;
    void note(uint32_t parent, uint32_t place_class, uint32_t entry, uint32_t level);

private:
    struct note_record {
        uint32_t parent, path_class, current, noted_at;
    };
    output_tree::body *tree_ = nullptr;
    std::vector<note_record> notes_;
    size_t dropped_ = 0;
};

struct addition {
    std::vector<path_step> *steps;
    const char *ns;
    const char *value;          // may be null
    const zmf_datatree *source; // may be null
    bool list_flag;
    uint32_t level; // list nodes on the walk record
};

struct output_tree::body {
    body();
    ~body();
    body(const body &) = delete;
    body &operator=(const body &) = delete;

    // `added` is the node at the end of the path. rc_too_big leaves the tree as it is.
    rcode add(uint32_t start, const addition &what, entry_notes &notes, output_node *&added);
    output_node *find(uint32_t start, const std::vector<path_step> &steps); // null: not there
    void set_namespace(output_node &node, const char *ns);

    output_node &at(uint32_t number) noexcept { return chunks[number / chunk_nodes][number % chunk_nodes]; }
    output_node *newest(uint32_t parent, uint32_t cls) noexcept; // null: nothing at this place
    const path_class &class_at(uint32_t number) const noexcept { return classes[number]; }
    size_t bytes() const noexcept;

    entry_notes *noted_by = nullptr;
    uint32_t node_count = 0; // the root included
    size_t limit = SIZE_MAX;

private:
    static constexpr size_t chunk_nodes = 512;
    struct key_slot {
        uint32_t hash;
        uint32_t entry; // 0: free
    };
    struct resolved_key {
        uint32_t path_class;
        std::string_view value;
    };

    uint32_t class_of(uint32_t parent, std::string_view tag);
    void consult_schema(uint32_t number);
    std::string path_of(uint32_t cls) const;

    output_node &create(uint32_t parent, uint32_t cls, const char *ns);
    output_node *existing_step(uint32_t parent, uint32_t cls, const path_step &step, bool new_entry);
    output_node *existing_value(uint32_t parent, uint32_t leaf_list, const char *value);
    bool is_openconfig_list(uint32_t cls) const noexcept;
    bool has_any_key(const output_node &entry) noexcept;
    output_node &create_step(uint32_t parent, uint32_t cls, const path_step &step, const char *ns);
    size_t bytes_needed(const addition &what, size_t first_missing, const output_node *last) const;
    void set_value(output_node &node, const char *value, const zmf_datatree *source);
    bool takes_value(const output_node *node, const char *value, const zmf_datatree *source) const;

    size_t place_slot(uint32_t parent, uint32_t cls) noexcept;
    void grow_places();
    uint32_t key_hash(uint32_t parent, uint32_t cls, const std::vector<resolved_key> &keys) const noexcept;
    bool has_keys(uint32_t entry, const std::vector<resolved_key> &keys) noexcept;
    output_node *entry_with_keys(uint32_t parent, uint32_t cls, const std::vector<resolved_key> &keys);
    void remember_keys(output_node &entry, const std::vector<resolved_key> &keys);
    void key_was_set(const output_node &leaf);
    void grow_key_slots();
    std::vector<resolved_key> resolve(uint32_t cls, const std::vector<path_key> &keys);

    std::vector<std::unique_ptr<output_node[]>> chunks;
    std::vector<uint32_t> places; // newest nodes, open addressing, a power of two
    size_t places_used = 0;
    std::vector<key_slot> key_slots; // likewise
    size_t keys_used = 0;
    text_table names; // tags and namespaces
    text_arena values;
    std::vector<path_class> classes;                      // 0 is the root's
    std::unordered_map<uint64_t, uint32_t> class_numbers; // parent class and tag number
    std::vector<uint32_t> step_classes;                   // of the path under way
};

inline output_tree::body *tree_of(const zmf_datatree *node) noexcept {
    return static_cast<output_tree::body *>(node->framework);
}
inline output_node *record_of(zmf_datatree *node) noexcept {
    return reinterpret_cast<output_node *>(node);
}
inline const output_node *record_of(const zmf_datatree *node) noexcept {
    return reinterpret_cast<const output_node *>(node);
}

} // namespace zmf
