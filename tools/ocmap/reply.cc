// The order of a reply.
#include "reply.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace ocmap {
namespace {

using zmf::output_tree;

// The children of a node that have one name; the others stand behind the first.
struct group {
    const schema::node *row; // null: known by no table
    const zmf_datatree *first;
};

bool is_same(const char *a, const char *b) {
    return a == b || (a != nullptr && b != nullptr && std::strcmp(a, b) == 0);
}

bool is_in(const group &all, const zmf_datatree *node) {
    const schema::node *row = output_tree::schema_node(node);
    return row == all.row &&
           (row != nullptr || (is_same(node->tag, all.first->tag) && is_same(node->ns, all.first->ns)));
}

bool comes_before(const group &a, const group &b) {
    return a.row != nullptr && (b.row == nullptr || std::less<>{}(a.row, b.row));
}

class teller {
public:
    teller(const selection &told, reply_writer &to) : told_(told), to_(to) {}

    void children(const zmf_datatree *node) {
        const size_t first = groups_.size();
        gather(node, first);
        for (size_t i = first; i < groups_.size(); ++i)
            tell(group(groups_[i])); // a copy, since `groups_` grows meanwhile
        groups_.resize(first);
    }

private:
    template <typename action>
    void for_told(const zmf_datatree *first, action run) {
        for (const auto *node = first; node; node = output_tree::next_sibling(node))
            if (told_.holds(node))
                run(node);
    }

    void gather(const zmf_datatree *node, size_t first) {
        size_t last = groups_.size(); // of the last child
        for_told(output_tree::first_child(node), [&](const zmf_datatree *child) {
            if (last < groups_.size() && is_in(groups_[last], child))
                return;
            last = first;
            while (last < groups_.size() && !is_in(groups_[last], child))
                ++last;
            if (last < groups_.size())
                return;
            const group made{output_tree::schema_node(child), child};
            const auto place = std::upper_bound(groups_.begin() + static_cast<std::ptrdiff_t>(first), groups_.end(),
                                                made, comes_before);
            last = static_cast<size_t>(groups_.insert(place, made) - groups_.begin());
        });
    }

    static schema::kind kind_of(const group &all) {
        using schema::kind;
        if (all.row != nullptr)
            return all.row->what;
        const bool is_leaf = output_tree::first_child(all.first) == nullptr;
        if (output_tree::is_list_entry(all.first))
            return is_leaf ? kind::leaf_list : kind::list;
        return is_leaf ? kind::leaf : kind::container;
    }

    reply_name name_of(const group &all) {
        const char *ns = all.first->ns == nullptr ? "" : all.first->ns;
        if (all.row == nullptr) {
            const char *module = schema::module_of_ns(ns);
            return {all.first->tag, module == nullptr ? ns : module, ns};
        }
        if (all.row->module != module_) {
            module_ = all.row->module;
            module_ns_ = schema::ns_of_module(module_);
        }
        return {all.row->tag, module_, module_ns_};
    }

    void tell(const group &all) {
        using schema::kind;
        const kind what = kind_of(all);
        const bool is_list = what == kind::list || what == kind::leaf_list;
        const bool is_leaf = what == kind::leaf || what == kind::leaf_list;
        const reply_name name = name_of(all);
        if (is_list)
            to_.open_list(name);
        for_told(all.first, [&](const zmf_datatree *node) {
            if (!is_in(all, node))
                return;
            if (is_leaf)
                to_.leaf(name, all.row == nullptr ? schema::type::string : all.row->value, *node);
            else
                branch(name, node);
        });
        if (is_list)
            to_.close_list();
    }

    void branch(const reply_name &name, const zmf_datatree *node) {
        to_.open(name);
        children(node);
        to_.close();
    }

    const selection &told_;
    reply_writer &to_;
    std::vector<group> groups_;    // of the node under way, behind those of the nodes around it
    const char *module_ = nullptr; // whose namespace was looked up last
    const char *module_ns_ = nullptr;
};

} // namespace

void tell_reply(const zmf::output_tree &reply, const selection &told, reply_writer &to) {
    teller(told, to).children(reply.root());
}

} // namespace ocmap
