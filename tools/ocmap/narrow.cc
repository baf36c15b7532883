// The request becomes patterns. A pattern stands for the nodes of one name below its parent pattern; it selects them
// whole, or names patterns below them. Tests among the children of a node make a variant of its pattern, for the nodes
// that pass them; variants are found by the values that they ask for, so that a request for many entries costs no more
// than one look-up for each entry of the reply.
#include "narrow.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "hundredths.h"
#include "request_tree.h"
#include "schema/schema.h"

namespace ocmap {
namespace {

using zmf::output_node;

constexpr uint32_t none = 0; // as a pattern it is the root's, which nothing leads to

size_t mix(uint64_t key) {
    key *= UINT64_C(0x9e3779b97f4a7c15);
    return static_cast<size_t>(key ^ (key >> 29));
}

// Nodes have the same name if this is the same: the address of their row in the tables, or else an odd number, from
// their tag and namespace.
using node_name = uint64_t;
constexpr node_name no_name = 0;

node_name name_of(const schema::node *row, const char *tag, const char *ns) {
    if (row != nullptr)
        return reinterpret_cast<uintptr_t>(row);
    const std::hash<std::string_view> hash;
    return mix(hash(tag) + mix(hash(ns == nullptr ? "" : ns))) | 1;
}

node_name name_of(const schema::node *row, const zmf_datatree &node) {
    return name_of(row, node.tag, node.ns);
}

node_name name_of(output_node node) {
    const schema::node *row = node.schema_node();
    return row != nullptr ? name_of(row, nullptr, nullptr) : name_of(row, node.tag(), node.ns());
}

const schema::node *row_below(const schema::node *parent, const zmf_datatree &child) {
    for (const schema::model &model : schema::models()) {
        const bool is_here =
            parent == nullptr || (parent >= model.nodes.data() && parent < model.nodes.data() + model.nodes.size());
        const schema::node *row = is_here ? schema::child(parent, model, child.tag) : nullptr;
        if (row != nullptr && child.ns != nullptr && std::string_view(row->ns) == child.ns)
            return row;
    }
    return nullptr;
}

bool is_leaf_list(const schema::node *row) {
    return row != nullptr && row->what == schema::kind::leaf_list;
}

struct test {
    node_name name;
    const schema::node *row;
    const zmf_datatree *leaf; // of the request
};

// A value as it is compared. Powers are hundredths in a request, and hundredths or a text with a point in a reply;
// `room` holds what is written anew.
std::string_view content(const schema::node *row, const char *value, std::string &room) {
    if (row == nullptr || row->value != schema::type::hundredths || std::strchr(value, '.') == nullptr)
        return comparable(row, value);
    room = to_hundredths(value).value_or(value);
    return room;
}

// `value_ns`: null if the value is of no identity.
bool is_passed(const test &asked, const char *value, const char *value_ns) {
    std::string room, room_of_asked;
    if (value == nullptr || content(asked.row, value, room) != content(asked.row, asked.leaf->value, room_of_asked))
        return false;
    return !asked.leaf->has_value_ns || value_ns == nullptr || std::strcmp(asked.leaf->value_ns, value_ns) == 0;
}

bool is_passed(const test &asked, const zmf_datatree &leaf) {
    return is_passed(asked, leaf.value, leaf.has_value_ns ? leaf.value_ns : nullptr);
}

bool is_passed(const test &asked, output_node leaf) {
    return is_passed(asked, leaf.value(), leaf.value_ns());
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

// Which leaves some variants of a pattern test: where the names begin, and how many they are. Of the leaf-lists that
// they test, the first alone has a name here, the last one: its first value leads to a variant.
struct form {
    uint32_t of;
    uint32_t first_name, names;
    bool has_listed;
    uint32_t next; // with the same first name
};

struct variant {
    size_t hash; // of what a node must hold to be led here
    uint32_t of_form;
    uint32_t first_test, tests;
    uint32_t selected; // the pattern for what passes
    uint32_t next;     // that a node is led to as well
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
    void passed(uint32_t of, output_node node, action tell) const;

    bool selects_value(uint32_t leaf_list, output_node leaf) const;
    size_t bytes() const;

private:
    struct sorted_tests {
        std::vector<test> single, listed; // of leaves, of leaf-lists
    };

    void take(const zmf_datatree &node, const schema::node *row, uint32_t number);
    void take_children(const zmf_datatree &node, const schema::node *row, uint32_t number);
    static sorted_tests sort(std::vector<test> tests);
    uint32_t variant_for(uint32_t of, const sorted_tests &tests);
    uint32_t form_for(uint32_t of, const sorted_tests &sorted);
    uint32_t find_same(const variant &made) const;
    void enter(variant made);
    uint32_t make_below(uint32_t around, node_name name);

    size_t hash_of(const pattern &of) const { return mix(of.around) ^ mix(of.name); }
    static size_t hash_of(const test &asked, const char *value) {
        std::string room;
        return std::hash<std::string_view>{}(content(asked.row, value, room));
    }
    size_t hash_of_tests(const variant &all) const;
    uint32_t led_to(size_t hash, uint32_t of_form) const;
    bool passes_all(const variant &all, output_node node) const;
    bool passes(const test &asked, output_node node) const;

    std::vector<pattern> patterns = std::vector<pattern>(1);
    std::vector<form> forms = std::vector<form>(1);
    std::vector<variant> variants = std::vector<variant>(1);
    std::vector<test> form_names, tests;
    number_table pattern_numbers;
    number_table first_variants;  // of those with one hash, by it
    number_table variant_numbers; // by all their tests
};

namespace {

bool is_test(const zmf_datatree &node) {
    return node.has_value && node.value != nullptr && !node.has_children;
}

template <typename action>
void for_children(output_node node, action run) {
    for (output_node child = node.first_child(); child; child = child.next_sibling())
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
        number = variant_for(number, sort(std::move(asked)));
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

// Two values of a leaf make a test that nothing passes.
client_filter::body::sorted_tests client_filter::body::sort(std::vector<test> tests) {
    const auto is_less = [](const test &a, const test &b) {
        const std::string_view left = comparable(a.row, a.leaf->value), right = comparable(b.row, b.leaf->value);
        return std::less<>{}(a.name, b.name) || (a.name == b.name && left < right);
    };
    std::ranges::sort(tests, is_less);
    sorted_tests sorted;
    for (const test &each : tests) {
        std::vector<test> &kind = is_leaf_list(each.row) ? sorted.listed : sorted.single;
        if (kind.empty() || kind.back().name != each.name || !is_passed(kind.back(), *each.leaf))
            kind.push_back(each);
    }
    return sorted;
}

uint32_t client_filter::body::form_for(uint32_t of, const sorted_tests &sorted) {
    const auto same_name = [](const test &a, const test &b) { return a.name == b.name; };
    std::vector<test> wanted = sorted.single;
    if (!sorted.listed.empty())
        wanted.push_back(sorted.listed.front());
    patterns[of].has_forms = true;
    // Forms without a leaf hang on the pattern itself.
    const uint32_t holder = make_below(of, sorted.single.empty() ? no_name : sorted.single.front().name);
    for (uint32_t known = patterns[holder].first_form; known != none; known = forms[known].next) {
        const test *names = form_names.data() + forms[known].first_name;
        if (forms[known].has_listed == !sorted.listed.empty() &&
            std::equal(wanted.begin(), wanted.end(), names, names + forms[known].names, same_name))
            return known;
    }
    forms.push_back({of, static_cast<uint32_t>(form_names.size()), static_cast<uint32_t>(wanted.size()),
                     !sorted.listed.empty(), patterns[holder].first_form});
    form_names.insert(form_names.end(), wanted.begin(), wanted.end());
    return patterns[holder].first_form = static_cast<uint32_t>(forms.size() - 1);
}

uint32_t client_filter::body::variant_for(uint32_t of, const sorted_tests &sorted) {
    variant made{0, form_for(of, sorted), static_cast<uint32_t>(tests.size()), 0, none, none};
    tests.insert(tests.end(), sorted.single.begin(), sorted.single.end());
    tests.insert(tests.end(), sorted.listed.begin(), sorted.listed.end());
    made.tests = static_cast<uint32_t>(tests.size()) - made.first_test;
    made.hash = mix(made.of_form);
    for (uint32_t i = 0; i < forms[made.of_form].names; ++i)
        made.hash = mix(made.hash + hash_of(tests[made.first_test + i], tests[made.first_test + i].leaf->value));

    if (const uint32_t known = find_same(made)) {
        tests.resize(made.first_test);
        return variants[known].selected;
    }
    const auto number = static_cast<uint32_t>(variants.size());
    made.selected = static_cast<uint32_t>(patterns.size());
    patterns.push_back({});
    enter(made);
    for (const test &each : sorted.single)
        patterns[make_below(made.selected, each.name)].is_whole = true;
    for (const test &each : sorted.listed)
        patterns[make_below(made.selected, each.name)].tested_by = number;
    return made.selected;
}

size_t client_filter::body::hash_of_tests(const variant &all) const {
    size_t hash = mix(all.of_form);
    for (uint32_t i = 0; i < all.tests; ++i) {
        const test &each = tests[all.first_test + i];
        hash = mix(hash + hash_of(each, each.leaf->value));
        if (each.leaf->has_value_ns)
            hash = mix(hash + std::hash<std::string_view>{}(each.leaf->value_ns));
    }
    return hash;
}

uint32_t client_filter::body::find_same(const variant &made) const {
    const auto is_same = [&](uint32_t number) {
        const variant &known = variants[number];
        const auto same_test = [](const test &a, const test &b) {
            return a.name == b.name && is_passed(a, *b.leaf) && a.leaf->has_value_ns == b.leaf->has_value_ns;
        };
        return known.hash == made.hash && known.of_form == made.of_form && known.tests == made.tests &&
               std::equal(tests.data() + known.first_test, tests.data() + known.first_test + known.tests,
                          tests.data() + made.first_test, same_test);
    };
    return variant_numbers.find(hash_of_tests(made), is_same);
}

void client_filter::body::enter(variant made) {
    const auto number = static_cast<uint32_t>(variants.size());
    const uint32_t first = led_to(made.hash, made.of_form);
    if (first != none)
        made.next = std::exchange(variants[first].next, number);
    variants.push_back(made);
    if (first == none)
        first_variants.add(number, [this](uint32_t kept) { return variants[kept].hash; });
    variant_numbers.add(number, [this](uint32_t kept) { return hash_of_tests(variants[kept]); });
}

uint32_t client_filter::body::led_to(size_t hash, uint32_t of_form) const {
    return first_variants.find(
        hash, [&](uint32_t number) { return variants[number].hash == hash && variants[number].of_form == of_form; });
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

bool client_filter::body::passes(const test &asked, output_node node) const {
    bool passes = false;
    for_children(
        node, [&](output_node child) { passes = passes || (name_of(child) == asked.name && is_passed(asked, child)); });
    return passes;
}

bool client_filter::body::passes_all(const variant &all, output_node node) const {
    const test *first = &tests[all.first_test];
    return std::all_of(first, first + all.tests, [&](const test &asked) { return passes(asked, node); });
}

template <typename action>
void client_filter::body::passed(uint32_t of, output_node node, action tell) const {
    const auto ask_form = [&](uint32_t number) {
        const form &asked = forms[number];
        const auto tell_passed = [&](size_t hash) {
            for (uint32_t each = led_to(hash, number); each != none; each = variants[each].next)
                if (passes_all(variants[each], node))
                    tell(variants[each].selected);
        };
        size_t hash = mix(number);
        for (uint32_t i = 0; i < asked.names - asked.has_listed; ++i) {
            const test &each = form_names[asked.first_name + i];
            output_node leaf;
            for_children(node, [&](output_node child) {
                if (!leaf && name_of(child) == each.name)
                    leaf = child;
            });
            if (!leaf || leaf.value() == nullptr)
                return;
            hash = mix(hash + hash_of(each, leaf.value()));
        }
        if (!asked.has_listed)
            return tell_passed(hash);
        const test &listed = form_names[asked.first_name + asked.names - 1];
        for_children(node, [&](output_node child) {
            if (child.value() != nullptr && name_of(child) == listed.name)
                tell_passed(mix(hash + hash_of(listed, child.value())));
        });
    };
    const auto ask_forms = [&](node_name name) {
        for (uint32_t number = patterns[below(of, name)].first_form; number != none; number = forms[number].next)
            ask_form(number);
    };
    ask_forms(no_name);
    node_name last = no_name;
    for_children(node, [&](output_node child) {
        const node_name name = name_of(child);
        if (name != last)
            ask_forms(name);
        last = name;
    });
}

bool client_filter::body::selects_value(uint32_t leaf_list, output_node leaf) const {
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
           pattern_numbers.bytes() + first_variants.bytes() + variant_numbers.bytes();
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

bool is_leaf(const schema::node *row, output_node node) {
    return row != nullptr ? row->value != schema::type::none : !node.first_child();
}

bool is_key(output_node child) {
    const schema::node *row = child.schema_node();
    return row != nullptr && row->is_key && child.value() != nullptr;
}

// Of the row of a list: all its keys are there.
bool has_keys(const schema::node *list, output_node entry) {
    size_t missing = 0;
    for (const schema::node *key = list + 1; key->is_key && key->parent == list; ++key)
        ++missing;
    for (output_node child = entry.first_child(); child && missing != 0; child = child.next_sibling())
        missing -= is_key(child);
    return missing == 0;
}

class marker {
public:
    marker(const zmf::output_tree &reply, const client_filter::body *asked, const missing_value &missing)
        : told_(reply), asked_(asked), missing_(missing) {}

    selection mark(output_node root) {
        if (asked_ == nullptr || asked_->at(0).is_whole) {
            mark_children(root);
        } else {
            patterns_.push_back(0);
            mark_by(root, 0);
        }
        return std::move(told_);
    }

private:
    // A conversion that knows no value leaves none, or an empty text.
    static bool has_value(output_node leaf) {
        if (leaf.value() == nullptr || *leaf.value() != '\0')
            return leaf.value() != nullptr;
        const schema::node *row = leaf.schema_node();
        return row == nullptr || row->value == schema::type::string || row->value == schema::type::name;
    }

    bool mark_leaf(output_node leaf) {
        const bool is_told = has_value(leaf);
        if (is_told)
            told_.add(leaf);
        else
            missing_(leaf);
        return is_told;
    }

    bool mark_children(output_node node) {
        bool is_any = false;
        for_children(node, [&](output_node child) { is_any |= mark_whole(child); });
        return is_any;
    }

    // False: nothing is told of the node.
    bool mark_whole(output_node node) {
        const schema::node *row = node.schema_node();
        if (is_leaf(row, node))
            return mark_leaf(node);
        if ((is_list(row) && !has_keys(row, node)) || !mark_children(node))
            return false;
        told_.add(node);
        return true;
    }

    // What the patterns from `first` on select of the node.
    bool mark_selected(output_node node, size_t first) {
        const schema::node *row = node.schema_node();
        const auto is_whole = [&](uint32_t number) { return asked_->at(number).is_whole; };
        if (std::any_of(patterns_.begin() + static_cast<std::ptrdiff_t>(first), patterns_.end(), is_whole))
            return mark_whole(node);
        if (is_leaf(row, node))
            return selects_value(node, first) && mark_leaf(node);
        if (is_list(row) && !has_keys(row, node))
            return false;
        if (!mark_by(node, first))
            return false;
        for_children(node, [&](output_node child) {
            if (is_list(row) && is_key(child))
                told_.add(child);
        });
        told_.add(node);
        return true;
    }

    bool mark_by(output_node node, size_t first) {
        for (size_t i = first, last = patterns_.size(); i < last; ++i)
            if (asked_->at(patterns_[i]).has_forms)
                asked_->passed(patterns_[i], node, [this](uint32_t selected) { patterns_.push_back(selected); });
        const size_t last = patterns_.size();
        for (size_t i = first; i < last; ++i)
            if (asked_->at(patterns_[i]).is_whole)
                return mark_children(node);
        bool is_any = false;
        for_children(node, [&](output_node child) {
            const node_name name = name_of(child);
            for (size_t i = first; i < last; ++i)
                if (const uint32_t below = asked_->below(patterns_[i], name); below != none)
                    patterns_.push_back(below);
            if (patterns_.size() != last)
                is_any |= mark_selected(child, last);
            patterns_.resize(last);
        });
        return is_any;
    }

    bool selects_value(output_node leaf, size_t first) const {
        return std::any_of(patterns_.begin() + static_cast<std::ptrdiff_t>(first), patterns_.end(),
                           [&](uint32_t number) { return asked_->selects_value(number, leaf); });
    }

    selection told_;
    const client_filter::body *asked_;
    const missing_value &missing_;
    std::vector<uint32_t> patterns_; // those for the node under way, behind those for the nodes around it
};

} // namespace

selection whole(const zmf::output_tree &reply, const missing_value &missing) {
    return marker(reply, nullptr, missing).mark(reply.top());
}

selection narrowed(const zmf::output_tree &reply, const client_filter &asked, const missing_value &missing) {
    return marker(reply, &asked.internals(), missing).mark(reply.top());
}

} // namespace ocmap
