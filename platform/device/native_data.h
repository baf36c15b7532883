// Native data, configuration or operational: what a device holds, by the tables of platform/schema.
//
// Containers are not kept: one is there if something stands in it. A record holds what stands between two levels of
// lists: the leaves of a list entry with those of the containers below it, and the lists in them. Lists are ordered by
// key, numbers by value and before texts, so that entries always come in the same order. A leaf-list is a list too: its
// values are the keys of empty entries, so that it may hold many. Entries of a list without keys are known by their
// place.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "schema/schema.h"

namespace device {

// Keys are not among the leaves of their entry.
struct leaf_value {
    const schema::native_node *node;
    std::string value;
    bool operator==(const leaf_value &) const = default;
};

// The values of all keys of an entry, in the order of the table, each ended by a zero byte.
using entry_key = std::string;
struct key_order {
    using is_transparent = void;
    bool operator()(std::string_view left, std::string_view right) const noexcept;
};

struct list_data;

struct record {
    std::vector<leaf_value> leaves; // in model order
    std::vector<list_data> lists;   // leaf-lists too, in model order

    bool operator==(const record &other) const;
};

struct list_data {
    const schema::native_node *node;
    std::map<entry_key, record, key_order> entries;
    bool operator==(const list_data &) const = default;
};

// Leaves and leaf-lists of a record.
void set_leaf(record &in, const schema::native_node &leaf, std::string value);
bool add_value(record &in, const schema::native_node &leaf_list, std::string_view value);   // false: there already
bool erase_value(record &in, const schema::native_node &leaf_list, std::string_view value); // false: not there
bool erase_leaves(record &in, const schema::native_node &subtree);                          // false: none there

// Lists of a record. A list without entries is none; `drop_empty_lists` takes out what is left of such.
list_data *find_list(record &in, const schema::native_node &list);
const list_data *find_list(const record &in, const schema::native_node &list);
list_data &list_of(record &in, const schema::native_node &list); // made if it is not there
void drop_empty_lists(record &in);

void append_key(entry_key &key, std::string_view value);
std::string_view next_key_value(std::string_view &rest); // takes the first value off

// A value as the device keeps it: integers without sign "+" and leading zeros. False: no value of this leaf, as an
// empty name is none.
bool to_canonical(const schema::native_node &leaf, std::string_view written, std::string &kept);

// Which containers are left and entered on the way from one place of a record to the next. `base` is what the record
// belongs to: a list, or null for the top.
class container_steps {
public:
    explicit container_steps(const schema::native_node *base) : base_(base) {}

    template <typename Leave, typename Enter>
    void go_to(const schema::native_node *node, Leave leave, Enter enter) {
        while (!open_.empty() && !(open_.back() < node && node < open_.back()->end))
            leave_one(leave);
        enter_above(node, enter);
    }

    template <typename Leave>
    void leave_all(Leave leave) {
        while (!open_.empty())
            leave_one(leave);
    }

private:
    template <typename Leave>
    void leave_one(Leave &leave) {
        leave(*open_.back());
        open_.pop_back();
    }

    template <typename Enter>
    void enter_above(const schema::native_node *node, Enter &enter) {
        const schema::native_node *above = node->parent;
        if (above == base_ || (!open_.empty() && above == open_.back()))
            return;
        enter_above(above, enter);
        enter(*above);
        open_.push_back(above);
    }

    const schema::native_node *base_;
    std::vector<const schema::native_node *> open_;
};

} // namespace device
