// The inside of an output tree: how nodes are found by path and by key. output_nodes.h has the nodes.
//
// A place is a parent and a class: all nodes of one path below one parent. Its newest node is found among the parent's
// children while these are few; a parent with many, and a list with a current entry, have their places in a hash table.
// A second table leads from keys to list entries.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "output_nodes.h"
#include "path.h"
#include "schema/schema.h"
#include "text.h"
#include "tree.h"
#include "zmf.h"

namespace zmf {

// A place in the hash table.
struct kept_place {
    uint32_t parent, path_class;
    uint32_t newest;
    uint32_t current;  // the current entry, 0 where none is
    uint32_t noted_at; // level at which `current` was last noted, 0 never
};

// A path that was read, and the classes of its steps.
struct known_path {
    const char *address = nullptr; // of the text as it was given, and the class of the node that it starts at
    uint32_t start_class = 0;
    std::string text;
    std::vector<path_step> steps; // their texts point into `text`
    std::vector<uint32_t> classes;
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
    void keep_apart() noexcept; // in the tree that is noted
    void note(uint32_t entry, uint32_t level);

private:
    struct note_record {
        uint32_t place, current, noted_at;
    };
    output_tree::body *tree_ = nullptr;
    std::vector<note_record> notes_;
    size_t dropped_ = 0;
};

struct addition {
    const known_path *path;
    size_t steps; // of the path: how many, from the first
    const char *ns;
    const char *value;          // may be null
    const zmf_datatree *source; // may be null
    bool list_flag;
    uint32_t level; // list nodes on the walk record
};

struct output_tree::body : node_store {
    body();
    ~body();
    body(const body &) = delete;
    body &operator=(const body &) = delete;

    // Reads a path that starts at a node. Null: it cannot be read. Valid until the next path is read.
    const known_path *read(uint32_t start, const char *path);
    known_path *read_to_change(uint32_t start, const char *path);

    // `added` is the node at the end of the path. rc_too_big leaves the tree as it is.
    rcode add(uint32_t start, const addition &what, entry_notes &notes, uint32_t &added);
    uint32_t find(uint32_t start, const known_path &path);
    void set_namespace(uint32_t number, const char *ns);
    zmf_datatree *hand_out(uint32_t number);
    // From here on an add without list flag falls under no entry that a native list has, unless that one is current.
    void keep_apart() noexcept {
        apart_from = node_count;
        forget_way();
    }
    void forget_way() noexcept { way_end = 0; }

    size_t bytes() const noexcept;

    void make_current(uint32_t entry, uint32_t level, entry_notes &notes);
    uint32_t keep_place(uint32_t parent, uint32_t cls); // its number in `places`
    std::vector<kept_place> places = std::vector<kept_place>(1);

    entry_notes *noted_by = nullptr;
    uint32_t node_count = 0; // the root included
    uint32_t apart_from = 0; // see keep_apart
    size_t limit = SIZE_MAX;

private:
    struct key_slot {
        uint32_t hash;
        uint32_t entry; // 0: free
    };
    struct resolved_key {
        uint32_t path_class;
        std::string_view value;
    };

    using node_store::class_of;
    uint32_t class_of(uint32_t parent, std::string_view tag);
    bool is_class(uint32_t cls, uint32_t parent, std::string_view tag) const noexcept;
    void consult_schema(uint32_t number);
    std::string path_of(uint32_t cls) const;
    const known_path *keep_path(size_t slot, uint32_t start_class, const char *path);
    bool read_into(known_path &path, uint32_t start_class, const char *text);

    size_t follow_way(uint32_t start, const known_path &path, size_t most, uint32_t &place) const noexcept;
    uint16_t namespace_number(const char *ns);
    uint32_t create(uint32_t parent, uint32_t cls, uint16_t ns);
    uint32_t existing_step(uint32_t parent, uint32_t cls, const path_step &step, bool new_entry);
    uint32_t existing_value(uint32_t parent, uint32_t leaf_list, const char *value);
    bool has_any_key(uint32_t entry) noexcept;
    uint32_t create_step(uint32_t parent, uint32_t cls, const path_step &step, uint16_t ns);
    bool exceeds_limit(size_t need) const noexcept;
    size_t bytes_needed(const addition &what, size_t first_missing, uint32_t last) const;
    static void store(node_record &node, const char *value) noexcept;
    void set_value(uint32_t number, const char *value, const zmf_datatree *source);
    bool takes_value(uint32_t node, const char *value, const zmf_datatree *source) const;

    uint32_t newest(uint32_t parent, uint32_t cls) noexcept;
    uint32_t newest_child(const node_record &parent, uint32_t cls) const noexcept;
    uint32_t find_place(uint32_t parent, uint32_t cls) noexcept;
    size_t place_slot(uint32_t parent, uint32_t cls) const noexcept;
    void keep_children(uint32_t parent);
    void grow_place_slots();

    uint32_t key_hash(uint32_t parent, uint32_t cls, const std::vector<resolved_key> &keys) const noexcept;
    bool has_keys(uint32_t entry, const std::vector<resolved_key> &keys) noexcept;
    uint32_t entry_with_keys(uint32_t parent, uint32_t cls, const std::vector<resolved_key> &keys);
    void remember_keys(uint32_t entry, const std::vector<resolved_key> &keys);
    void key_was_set(uint32_t leaf);
    void grow_key_slots();
    const std::vector<resolved_key> &resolve(uint32_t cls, const std::vector<path_key> &keys);

    std::deque<handed_node> handed;
    std::vector<uint32_t> place_slots; // of `places`, open addressing, a power of two
    std::vector<key_slot> key_slots;   // likewise
    size_t keys_used = 0;
    // Where the last add led, which had no keys: the next one often leads along most of its way. 0: nowhere, or a list
    // has another current entry since.
    uint32_t way_end = 0;
    uint32_t way_start = 0;
    size_t way_steps = 0;
    text_table tags, namespaces;
    const char *last_ns = nullptr; // as it was given, and its number
    uint16_t last_ns_number = 0;
    text_arena values;
    std::unordered_map<uint64_t, uint32_t> class_numbers; // parent class and tag number
    std::array<std::unique_ptr<known_path>, 1024> paths;  // without keys, by address; open addressing
    size_t paths_kept = 0;
    known_path path_with_keys;
    std::vector<resolved_key> resolved;
};

inline output_tree::body *tree_of(const zmf_datatree *node) noexcept {
    return static_cast<output_tree::body *>(node->framework);
}
inline uint32_t number_of(const zmf_datatree *node) noexcept {
    return reinterpret_cast<const handed_node *>(node)->number;
}

} // namespace zmf
