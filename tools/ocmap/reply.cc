// The order of a reply.
#include "reply.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <span>
#include <string>

#include "hundredths.h"

namespace ocmap {
namespace {

using zmf::output_node;

// A child that is told. Children of one name are those of one row, or of one number where no table knows them.
struct told_child {
    const schema::node *row; // null: known by no table
    size_t unknown;          // number of the name then
    output_node node;
};

bool has_name_of(const told_child &a, const told_child &b) {
    return a.row == b.row && a.unknown == b.unknown;
}

// Top nodes have a table each.
std::ptrdiff_t place_of_model(const schema::node *top) {
    const auto models = schema::models();
    const auto is_its = [top](const schema::model &model) { return &model.nodes.front() == top; };
    return std::ranges::find_if(models, is_its) - models.begin();
}

bool comes_before(const told_child &a, const told_child &b) {
    if (a.row == nullptr || b.row == nullptr)
        return a.row != nullptr || (b.row == nullptr && a.unknown < b.unknown);
    if (a.row->parent == nullptr)
        return place_of_model(a.row) < place_of_model(b.row);
    return std::less<>{}(a.row, b.row);
}

bool is_same(const char *a, const char *b) {
    return a == b || (a != nullptr && b != nullptr && std::strcmp(a, b) == 0);
}

// Most children come in order already, and most of the others are few.
void put_in_order(std::span<told_child> children) {
    constexpr size_t few = 16;
    if (std::ranges::is_sorted(children, comes_before))
        return;
    if (children.size() > few) {
        std::ranges::stable_sort(children, comes_before);
        return;
    }
    for (auto child = children.begin(); child != children.end(); ++child)
        std::rotate(std::upper_bound(children.begin(), child, *child, comes_before), child, child + 1);
}

class teller {
public:
    teller(const selection &told, reply_writer &to) : told_(told), to_(to) {}

    void children(output_node node) {
        const size_t first = children_.size();
        gather(node);
        put_in_order(std::span(children_).subspan(first));
        const size_t last = children_.size();
        for (size_t next = first; next < last;)
            next = tell_from(next, last);
        children_.resize(first);
    }

private:
    void gather(output_node node) {
        std::vector<output_node> unknown;
        for (output_node child = node.first_child(); child; child = child.next_sibling())
            if (told_.holds(child)) {
                const schema::node *row = child.schema_node();
                children_.push_back({row, row != nullptr ? 0 : number_of_name(unknown, child), child});
            }
    }

    static size_t number_of_name(std::vector<output_node> &names, output_node node) {
        const auto known = std::ranges::find_if(
            names, [&](output_node each) { return is_same(each.tag(), node.tag()) && is_same(each.ns(), node.ns()); });
        const auto number = static_cast<size_t>(known - names.begin());
        if (known == names.end())
            names.push_back(node);
        return number;
    }

    static schema::kind kind_of(const told_child &child) {
        using schema::kind;
        if (child.row != nullptr)
            return child.row->what;
        const bool is_leaf = !child.node.first_child();
        if (child.node.is_list_entry())
            return is_leaf ? kind::leaf_list : kind::list;
        return is_leaf ? kind::leaf : kind::container;
    }

    reply_name name_of(const told_child &child) {
        if (child.row == nullptr) {
            const char *ns = child.node.ns() == nullptr ? "" : child.node.ns();
            const char *module = schema::module_of_ns(ns);
            return {child.node.tag(), module == nullptr ? ns : module, ns};
        }
        if (child.row->module != module_) {
            module_ = child.row->module;
            module_ns_ = schema::ns_of_module(module_);
        }
        return {child.row->tag, module_, module_ns_};
    }

    // Tells the child at `first` and those of its name behind it; answers where the next name begins.
    size_t tell_from(size_t first, size_t last) {
        using schema::kind;
        const told_child all = children_[first]; // a copy, since `children_` grows meanwhile
        const kind what = kind_of(all);
        const bool is_list = what == kind::list || what == kind::leaf_list;
        const bool is_leaf = what == kind::leaf || what == kind::leaf_list;
        const reply_name name = name_of(all);
        if (is_list)
            to_.open_list(name);
        size_t next = first;
        for (; next < last && has_name_of(children_[next], all); ++next)
            if (is_leaf)
                leaf(name, all.row == nullptr ? schema::type::string : all.row->value, children_[next].node);
            else
                branch(name, children_[next].node);
        if (is_list)
            to_.close_list();
        return next;
    }

    void leaf(const reply_name &name, schema::type type, output_node node) {
        if (type != schema::type::hundredths)
            return to_.leaf(name, type, {node.value(), node.value_ns()});
        const std::string scaled = from_hundredths(node.value());
        to_.leaf(name, schema::type::decimal64, {scaled.c_str(), nullptr});
    }

    void branch(const reply_name &name, output_node node) {
        to_.open(name);
        children(node);
        to_.close();
    }

    const selection &told_;
    reply_writer &to_;
    std::vector<told_child> children_; // of the node under way, behind those of the nodes around it
    const char *module_ = nullptr;     // whose namespace was looked up last
    const char *module_ns_ = nullptr;
};

} // namespace

void tell_reply(const zmf::output_tree &reply, const selection &told, reply_writer &to) {
    teller(told, to).children(reply.top());
}

} // namespace ocmap
