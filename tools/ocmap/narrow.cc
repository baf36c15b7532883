// The request becomes patterns. A pattern stands for the nodes of one name below its parent pattern; it selects them
// whole, or names patterns below them. Tests among the children of a node make a variant of its pattern, for the nodes
// that pass them; variants are found by the values that they ask for, so that a request for many entries costs no more
// than one look-up for each entry of the reply.
#include "narrow.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "schema/schema.h"

namespace ocmap {
namespace {

using zmf::output_tree;

constexpr uint32_t none = 0; // as a pattern it is the root's, which nothing leads to

size_t mix(uint64_t key) {
    key *= UINT64_C(0x9e3779b97f4a7c15);
    return static_cast<size_t>(key ^ (key >> 29));
}

// Nodes have the same name if this is the same: the address of their row in the tables, or else an odd number, from
// their tag and namespace.
using node_name = uint64_t;
constexpr node_name no_name = 0;

node_name name_of(const schema::node *row, const zmf_datatree &node) {
    if (row != nullptr)
        return reinterpret_cast<uintptr_t>(row);
    const std::hash<std::string_view> hash;
    return mix(hash(node.tag) + mix(hash(node.ns == nullptr ? "" : node.ns))) | 1;
}

const schema::node *row_below(const schema::node *parent, const zmf_datatree &child) {
    for (const schema::model &model : schema::models()) {
        const bool is_here = parent == nullptr
                                 ? model.is_root
                                 : parent >= model.nodes.data() && parent < model.nodes.data() + model.nodes.size();
        const schema::node *row = is_here ? schema::child(parent, model, child.tag) : nullptr;
        if (row != nullptr && child.ns != nullptr && std::string_view(schema::ns_of_module(row->module)) == child.ns)
            return row;
    }
    return nullptr;
}

bool is_leaf_list(const schema::node *row) {
    return row != nullptr && row->what == schema::kind::leaf_list;
}

// Numbers are compared without what does not change them: "+05.50" as "5.5".
std::string_view comparable(const schema::node *row, std::string_view text) {
    using schema::type;
    if (row == nullptr ||
        (row->value != type::integer && row->value != type::integer64 && row->value != type::decimal64))
        return text;
    while (text.size() > 1 && (text[0] == '+' || (text[0] == '0' && text[1] != '.')))
        text.remove_prefix(1);
    if (text.find('.') != std::string_view::npos) {
        while (text.ends_with('0'))
            text.remove_suffix(1);
        if (text.ends_with('.'))
            text.remove_suffix(1);
    }
    return text;
}

struct test {
    node_name name;
    const schema::node *row;
    const zmf_datatree *leaf; // of the request
};

bool is_passed(const test &asked, const zmf_datatree &leaf) {
    if (leaf.value == nullptr || comparable(asked.row, leaf.value) != comparable(asked.row, asked.leaf->value))
        return false;
    return !asked.leaf->has_value_ns || !leaf.has_value_ns || leaf.value_ns == nullptr ||
           std::strcmp(asked.leaf->value_ns, leaf.value_ns) == 0;
}

// A pattern, by its place: the pattern around it and its name there.
struct pattern {
    uint32_t around = none;
    node_name name = no_name;
    uint32_t first_form = none; // of the forms of tests around it, one that this name stands first in
    uint32_t tested_by = none;  // a variant: values of a leaf-list that it tests are selected
    bool is_whole = false;
    bool has_forms = false;
};

// Which leaves some variants of a pattern test, leaf-lists aside: where the names begin, and how many they are.
struct form {
    uint32_t of;
    uint32_t first_name, names;
    uint32_t next; // with the same first name
};

struct variant {
    size_t hash;
    uint32_t of_form;
    uint32_t first_test, tests;
    uint32_t selected; // the pattern for what passes
};

// Numbers of records, found by a hash. 0 is no record.
class number_table {
public:
    template <typename is_it>
    uint32_t find(size_t hash, is_it right) const {
        for (size_t slot = hash & mask(); slots_[slot] != 0; slot = (slot + 1) & mask())
            if (right(slots_[slot]))
                return slots_[slot];
        return 0;
    }

    template <typename hash_of>
    void add(uint32_t number, hash_of hash) {
        if ((used_ + 1) * 10 > slots_.size() * 7) {
            std::vector<uint32_t> old(slots_.size() * 2);
            old.swap(slots_);
            for (const uint32_t kept : old)
                if (kept != 0)
                    place(kept, hash(kept));
        }
        place(number, hash(number));
        ++used_;
    }

    size_t bytes() const { return slots_.size() * sizeof(uint32_t); }

private:
    size_t mask() const { return slots_.size() - 1; }

    void place(uint32_t number, size_t hash) {
        size_t slot = hash & mask();
        while (slots_[slot] != 0)
            slot = (slot + 1) & mask();
        slots_[slot] = number;
    }

    std::vector<uint32_t> slots_ = std::vector<uint32_t>(64);
    size_t used_ = 0;
};

} // namespace

struct client_filter::body {
    explicit body(const zmf::fixed_tree &request);

    const pattern &at(uint32_t number) const { return patterns[number]; }
    uint32_t below(uint32_t around, node_name name) const; // none: nothing of that name is asked for

    // Tells the pattern of each variant of `of` that a node passes.
    template <typename action>
    void passed(uint32_t of, const zmf_datatree *node, action tell) const;

    bool selects_value(uint32_t leaf_list, const zmf_datatree &leaf) const;
    size_t bytes() const;

private:
    struct sorted_tests {
        std::vector<test> single, listed; // of leaves, of leaf-lists
        bool is_possible = true;
    };

    void take(const zmf_datatree &node, const schema::node *row, uint32_t number);
    void take_children(const zmf_datatree &node, const schema::node *row, uint32_t number);
    static sorted_tests sort(std::vector<test> tests);
    uint32_t variant_for(uint32_t of, const sorted_tests &tests);
    uint32_t form_for(uint32_t of, const std::vector<test> &single);
    uint32_t make_below(uint32_t around, node_name name);

    size_t hash_of(const pattern &of) const { return mix(of.around) ^ mix(of.name); }
    static size_t hash_of(const test &asked, const char *value) {
        return std::hash<std::string_view>{}(comparable(asked.row, value));
    }
    bool passes_all(const variant &all, const zmf_datatree *node) const;
    bool passes(const test &asked, const zmf_datatree *node) const;

    std::vector<pattern> patterns = std::vector<pattern>(1);
    std::vector<form> forms = std::vector<form>(1);
    std::vector<variant> variants = std::vector<variant>(1);
    std::vector<test> form_names, tests;
    number_table pattern_numbers, variant_numbers;
};

namespace {

bool is_test(const zmf_datatree &node) {
    return node.has_value && node.value != nullptr && !node.has_children;
}

template <typename action>
void for_children(const zmf_datatree *node, action run) {
    for (const auto *child = output_tree::first_child(node); child; child = output_tree::next_sibling(child))
        run(child);
}

} // namespace

client_filter::body::body(const zmf::fixed_tree &request) {
    patterns[0].is_whole = request.count() == 0;
    for (uint32_t i = 0; i < request.count(); ++i) {
        const zmf_datatree &top = request.tops()[i];
        const schema::node *row = row_below(nullptr, top);
        take(top, row, make_below(0, name_of(row, top)));
    }
}

void client_filter::body::take(const zmf_datatree &node, const schema::node *row, uint32_t number) {
    if (patterns[number].is_whole)
        return;
    if (node.has_children)
        take_children(node, row, number);
    else
        patterns[number].is_whole = true;
}

void client_filter::body::take_children(const zmf_datatree &node, const schema::node *row, uint32_t number) {
    std::vector<test> asked;
    for (uint32_t i = 0; i < node.child_count; ++i) {
        const zmf_datatree &child = node.children[i];
        if (!is_test(child))
            continue;
        const schema::node *child_row = row_below(row, child);
        if (row != nullptr && child_row == nullptr)
            return; // no node that the tables know holds a leaf that they do not know
        asked.push_back({name_of(child_row, child), child_row, &child});
    }
    const bool has_tests_only = asked.size() == node.child_count;
    if (!asked.empty()) {
        const sorted_tests sorted = sort(std::move(asked));
        if (!sorted.is_possible)
            return;
        number = variant_for(number, sorted);
    }
    patterns[number].is_whole |= has_tests_only;
    if (patterns[number].is_whole)
        return;
    for (uint32_t i = 0; i < node.child_count; ++i) {
        const zmf_datatree &child = node.children[i];
        if (is_test(child))
            continue;
        const schema::node *child_row = row_below(row, child);
        take(child, child_row, make_below(number, name_of(child_row, child)));
    }
}

// A leaf cannot hold two values, a leaf-list can.
client_filter::body::sorted_tests client_filter::body::sort(std::vector<test> tests) {
    const auto is_less = [](const test &a, const test &b) {
        const std::string_view left = comparable(a.row, a.leaf->value), right = comparable(b.row, b.leaf->value);
        return std::less<>{}(a.name, b.name) || (a.name == b.name && left < right);
    };
    std::ranges::sort(tests, is_less);
    sorted_tests sorted;
    for (const test &each : tests) {
        std::vector<test> &kind = is_leaf_list(each.row) ? sorted.listed : sorted.single;
        if (!kind.empty() && kind.back().name == each.name) {
            if (is_passed(kind.back(), *each.leaf))
                continue;
            sorted.is_possible &= is_leaf_list(each.row);
        }
        kind.push_back(each);
    }
    return sorted;
}

uint32_t client_filter::body::form_for(uint32_t of, const std::vector<test> &single) {
    const auto same_name = [](const test &a, const test &b) { return a.name == b.name; };
    patterns[of].has_forms = true;
    // Forms without a name of their own hang on the pattern itself.
    const uint32_t holder = make_below(of, single.empty() ? no_name : single.front().name);
    for (uint32_t known = patterns[holder].first_form; known != none; known = forms[known].next) {
        const test *names = form_names.data() + forms[known].first_name;
        if (std::equal(single.begin(), single.end(), names, names + forms[known].names, same_name))
            return known;
    }
    forms.push_back({of, static_cast<uint32_t>(form_names.size()), static_cast<uint32_t>(single.size()),
                     patterns[holder].first_form});
    form_names.insert(form_names.end(), single.begin(), single.end());
    return patterns[holder].first_form = static_cast<uint32_t>(forms.size() - 1);
}

uint32_t client_filter::body::variant_for(uint32_t of, const sorted_tests &sorted) {
    variant made{0, form_for(of, sorted.single), static_cast<uint32_t>(tests.size()), 0, none};
    made.hash = mix(made.of_form);
    for (const test &each : sorted.single)
        made.hash = mix(made.hash + hash_of(each, each.leaf->value));
    tests.insert(tests.end(), sorted.single.begin(), sorted.single.end());
    tests.insert(tests.end(), sorted.listed.begin(), sorted.listed.end());
    made.tests = static_cast<uint32_t>(tests.size()) - made.first_test;

    const auto is_same = [&](uint32_t number) {
        const variant &known = variants[number];
        const auto same_test = [](const test &a, const test &b) {
            return a.name == b.name && is_passed(a, *b.leaf) && a.leaf->has_value_ns == b.leaf->has_value_ns;
        };
        return known.hash == made.hash && known.of_form == made.of_form && known.tests == made.tests &&
               std::equal(tests.data() + known.first_test, tests.data() + known.first_test + known.tests,
                          tests.data() + made.first_test, same_test);
    };
    if (const uint32_t known = variant_numbers.find(made.hash, is_same)) {
        tests.resize(made.first_test);
        return variants[known].selected;
    }
    const auto number = static_cast<uint32_t>(variants.size());
    made.selected = static_cast<uint32_t>(patterns.size());
    patterns.push_back({});
    variants.push_back(made);
    variant_numbers.add(number, [this](uint32_t kept) { return variants[kept].hash; });
    for (const test &each : sorted.single)
        patterns[make_below(made.selected, each.name)].is_whole = true;
    for (const test &each : sorted.listed)
        patterns[make_below(made.selected, each.name)].tested_by = number;
    return made.selected;
}

uint32_t client_filter::body::below(uint32_t around, node_name name) const {
    const auto is_it = [&](uint32_t number) {
        return patterns[number].around == around && patterns[number].name == name;
    };
    return pattern_numbers.find(hash_of({around, name}), is_it);
}

uint32_t client_filter::body::make_below(uint32_t around, node_name name) {
    if (const uint32_t known = below(around, name))
        return known;
    patterns.push_back({around, name});
    const auto number = static_cast<uint32_t>(patterns.size() - 1);
    pattern_numbers.add(number, [this](uint32_t kept) { return hash_of(patterns[kept]); });
    return number;
}

bool client_filter::body::passes(const test &asked, const zmf_datatree *node) const {
    bool passes = false;
    for_children(node, [&](const zmf_datatree *child) {
        passes = passes || (name_of(output_tree::schema_node(child), *child) == asked.name && is_passed(asked, *child));
    });
    return passes;
}

bool client_filter::body::passes_all(const variant &all, const zmf_datatree *node) const {
    const test *first = &tests[all.first_test];
    return std::all_of(first, first + all.tests, [&](const test &asked) { return passes(asked, node); });
}

template <typename action>
void client_filter::body::passed(uint32_t of, const zmf_datatree *node, action tell) const {
    const auto ask_form = [&](uint32_t number) {
        const form &asked = forms[number];
        size_t hash = mix(number);
        for (uint32_t i = 0; i < asked.names; ++i) {
            const test &each = form_names[asked.first_name + i];
            const zmf_datatree *leaf = nullptr;
            for_children(node, [&](const zmf_datatree *child) {
                if (leaf == nullptr && name_of(output_tree::schema_node(child), *child) == each.name)
                    leaf = child;
            });
            if (leaf == nullptr || leaf->value == nullptr)
                return;
            hash = mix(hash + hash_of(each, leaf->value));
        }
        variant_numbers.find(hash, [&](uint32_t candidate) {
            const variant &found = variants[candidate];
            if (found.hash == hash && found.of_form == number && passes_all(found, node))
                tell(found.selected);
            return false; // variants can differ in tests of leaf-lists
        });
    };
    const auto ask_forms = [&](node_name name) {
        for (uint32_t number = patterns[below(of, name)].first_form; number != none; number = forms[number].next)
            ask_form(number);
    };
    ask_forms(no_name);
    node_name last = no_name;
    for_children(node, [&](const zmf_datatree *child) {
        const node_name name = name_of(output_tree::schema_node(child), *child);
        if (name != last)
            ask_forms(name);
        last = name;
    });
}

bool client_filter::body::selects_value(uint32_t leaf_list, const zmf_datatree &leaf) const {
    const pattern &asked = patterns[leaf_list];
    if (asked.tested_by == none)
        return false;
    const variant &by = variants[asked.tested_by];
    const test *first = &tests[by.first_test];
    return std::any_of(first, first + by.tests,
                       [&](const test &each) { return each.name == asked.name && is_passed(each, leaf); });
}

size_t client_filter::body::bytes() const {
    return patterns.capacity() * sizeof(pattern) + forms.capacity() * sizeof(form) +
           variants.capacity() * sizeof(variant) + (tests.capacity() + form_names.capacity()) * sizeof(test) +
           pattern_numbers.bytes() + variant_numbers.bytes();
}

client_filter::client_filter(const zmf::fixed_tree &request) : body_(std::make_unique<body>(request)) {}
client_filter::~client_filter() = default;
size_t client_filter::bytes() const noexcept {
    return body_->bytes();
}

namespace {

bool is_list(const schema::node *row) {
    return row != nullptr && row->what == schema::kind::list;
}

bool is_leaf(const schema::node *row, const zmf_datatree *node) {
    return row != nullptr ? row->value != schema::type::none : output_tree::first_child(node) == nullptr;
}

bool is_key(const zmf_datatree *child) {
    const schema::node *row = output_tree::schema_node(child);
    return row != nullptr && row->is_key && child->value != nullptr;
}

// Of the row of a list: all its keys are there.
bool has_keys(const schema::node *list, const zmf_datatree *entry) {
    size_t missing = 0;
    for (const schema::node *key = list + 1; key->is_key && key->parent == list; ++key)
        ++missing;
    for (const auto *child = output_tree::first_child(entry); child && missing != 0;
         child = output_tree::next_sibling(child))
        missing -= is_key(child);
    return missing == 0;
}

class marker {
public:
    marker(const zmf::output_tree &reply, const client_filter::body *asked, const missing_value &missing)
        : told_(reply), asked_(asked), missing_(missing) {}

    selection mark(const zmf_datatree *root) {
        if (asked_ == nullptr || asked_->at(0).is_whole) {
            mark_children(root);
        } else {
            patterns_.push_back(0);
            mark_by(root, 0);
        }
        return std::move(told_);
    }

private:
    bool mark_leaf(const zmf_datatree *leaf) {
        if (leaf->value != nullptr)
            told_.add(leaf);
        else
            missing_(leaf);
        return leaf->value != nullptr;
    }

    bool mark_children(const zmf_datatree *node) {
        bool is_any = false;
        for_children(node, [&](const zmf_datatree *child) { is_any |= mark_whole(child); });
        return is_any;
    }

    // False: nothing is told of the node.
    bool mark_whole(const zmf_datatree *node) {
        const schema::node *row = output_tree::schema_node(node);
        if (is_leaf(row, node))
            return mark_leaf(node);
        if ((is_list(row) && !has_keys(row, node)) || !mark_children(node))
            return false;
        told_.add(node);
        return true;
    }

    // What the patterns from `first` on select of the node.
    bool mark_selected(const zmf_datatree *node, size_t first) {
        const schema::node *row = output_tree::schema_node(node);
        const auto is_whole = [&](uint32_t number) { return asked_->at(number).is_whole; };
        if (std::any_of(patterns_.begin() + static_cast<std::ptrdiff_t>(first), patterns_.end(), is_whole))
            return mark_whole(node);
        if (is_leaf(row, node))
            return selects_value(node, first) && mark_leaf(node);
        if (is_list(row) && !has_keys(row, node))
            return false;
        if (!mark_by(node, first))
            return false;
        for_children(node, [&](const zmf_datatree *child) {
            if (is_list(row) && is_key(child))
                told_.add(child);
        });
        told_.add(node);
        return true;
    }

    bool mark_by(const zmf_datatree *node, size_t first) {
        for (size_t i = first, last = patterns_.size(); i < last; ++i)
            if (asked_->at(patterns_[i]).has_forms)
                asked_->passed(patterns_[i], node, [this](uint32_t selected) { patterns_.push_back(selected); });
        const size_t last = patterns_.size();
        for (size_t i = first; i < last; ++i)
            if (asked_->at(patterns_[i]).is_whole)
                return mark_children(node);
        bool is_any = false;
        for_children(node, [&](const zmf_datatree *child) {
            const node_name name = name_of(output_tree::schema_node(child), *child);
            for (size_t i = first; i < last; ++i)
                if (const uint32_t below = asked_->below(patterns_[i], name); below != none)
                    patterns_.push_back(below);
            if (patterns_.size() != last)
                is_any |= mark_selected(child, last);
            patterns_.resize(last);
        });
        return is_any;
    }

    bool selects_value(const zmf_datatree *leaf, size_t first) const {
        return std::any_of(patterns_.begin() + static_cast<std::ptrdiff_t>(first), patterns_.end(),
                           [&](uint32_t number) { return asked_->selects_value(number, *leaf); });
    }

    selection told_;
    const client_filter::body *asked_;
    const missing_value &missing_;
    std::vector<uint32_t> patterns_; // those for the node under way, behind those for the nodes around it
};

} // namespace

selection whole(const zmf::output_tree &reply, const missing_value &missing) {
    return marker(reply, nullptr, missing).mark(reply.root());
}

selection narrowed(const zmf::output_tree &reply, const client_filter &asked, const missing_value &missing) {
    return marker(reply, &asked.internals(), missing).mark(reply.root());
}

} // namespace ocmap
