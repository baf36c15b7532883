// Answers: what a read selects is gathered for each list by the keys that it gives, and then the data is stepped
// through once, by key where all keys are given.
#include "device/store.h"

#include <algorithm>
#include <map>
#include <ranges>
#include <vector>

namespace device {
namespace {

using schema::native_node;
using zmf::output_node;

struct selection;

// What is asked of the entries of one list. Each row says which keys it gives, as bits, and has one selection for each
// of their values: so entries that are asked for twice are a union, and none is searched for.
struct list_filter {
    std::map<unsigned, std::map<entry_key, selection, key_order>> by_given_keys;
};

struct selection {
    bool everything = false;
    std::vector<const native_node *> subtrees; // leaves and whole containers
    std::map<const native_node *, list_filter> lists;

    bool holds(const native_node *node) const {
        const auto after = std::ranges::upper_bound(subtrees, node);
        return everything || (after != subtrees.begin() && node < (*std::prev(after))->end);
    }

    // Subtrees are in model order and apart from one another from here on.
    void settle() {
        std::ranges::sort(subtrees);
        const native_node *end = nullptr;
        std::erase_if(subtrees, [&end](const native_node *each) {
            const bool is_inside = end != nullptr && each < end;
            end = is_inside ? end : each->end;
            return is_inside;
        });
        for (auto &[list, filter] : lists)
            for (auto &[given, rows] : filter.by_given_keys)
                for (auto &[key, selected] : rows)
                    selected.settle();
    }
};

// Reads a request.
class selector {
public:
    selector(bool with_operational, bool with_flex_bins)
        : with_operational_(with_operational),
          left_out_(with_flex_bins ? nullptr : schema::native_child(nullptr, "performance-management")) {}

    void select_below(output_node parent, const native_node *place, selection &into) {
        for (output_node each = parent.first_child(); each; each = each.next_sibling())
            if (const native_node *node = schema::native_child(place, each.tag());
                node != nullptr && !node->is_key && node != left_out_ && (node->is_config || with_operational_))
                select(each, node, into);
    }

private:
    void select(output_node asked, const native_node *node, selection &into) {
        const bool is_filled(asked.first_child());
        if (node->what == schema::kind::list && (is_filled || tells_of_itself(node)))
            select_entry(asked, node, into.lists[node]);
        else if (node->what == schema::kind::container && is_filled)
            select_below(asked, node, into);
        else if (node->what != schema::kind::list && (into.subtrees.empty() || into.subtrees.back() != node))
            into.subtrees.push_back(node);
    }

    // An entry that was opened and not filled is none, unless its list has leaves that come with it in any case.
    static bool tells_of_itself(const native_node *list) {
        for (const native_node *child = list + 1; child < list->end; ++child)
            if (child->parent == list && child->is_told)
                return true;
        return false;
    }

    void select_entry(output_node asked, const native_node *list, list_filter &into) {
        entry_key key;
        unsigned given = 0;
        if (!read_keys(asked, list, key, given))
            return;
        selection &selected = into.by_given_keys[given][key];
        if (has_other_than_keys(asked, list))
            select_below(asked, list, selected);
        else if (asked.first_child())
            selected.everything = true;
    }

    static bool has_other_than_keys(output_node entry, const native_node *list) {
        for (output_node each = entry.first_child(); each; each = each.next_sibling())
            if (const native_node *node = schema::native_child(list, each.tag()); node == nullptr || !node->is_key)
                return true;
        return false;
    }

    // False: no entry can have these keys.
    static bool read_keys(output_node entry, const native_node *list, entry_key &key, unsigned &given) {
        unsigned bit = 1;
        for (const native_node &each : schema::native_keys(list)) {
            const char *value = value_of(entry, each.tag);
            std::string kept;
            if (value != nullptr && *value != '\0') {
                if (!to_canonical(each, value, kept))
                    return false;
                append_key(key, kept);
                given |= bit;
            }
            bit <<= 1;
        }
        return true;
    }

    static const char *value_of(output_node entry, std::string_view tag) {
        for (output_node each = entry.first_child(); each; each = each.next_sibling())
            if (tag == each.tag() && each.value() != nullptr)
                return each.value();
        return nullptr;
    }

    bool with_operational_;
    const native_node *left_out_; // what the device does not keep
};

using selections = std::vector<const selection *>;

class answerer {
public:
    explicit answerer(zmf::tree_builder &to) : to_(to) {}

    // The nodes of a record that one of the selections holds.
    void answer(const record &from, const native_node *base, const selections &asked) {
        container_steps steps(base);
        const auto leave = [this](const native_node &) { to_.close(); };
        const auto enter = [this](const native_node &container) { open(container); };
        auto list = from.lists.begin();
        const auto answer_lists_before = [&](const native_node *node) {
            for (; list != from.lists.end() && (node == nullptr || list->node < node); ++list)
                answer_list(*list, asked, [&] { steps.go_to(list->node, leave, enter); });
        };
        for (const leaf_value &leaf : from.leaves) {
            answer_lists_before(leaf.node);
            if (!leaf.node->is_told && !holds(asked, leaf.node))
                continue;
            steps.go_to(leaf.node, leave, enter);
            answer_leaf(*leaf.node, leaf.value);
        }
        answer_lists_before(nullptr);
        steps.leave_all(leave);
    }

private:
    static bool holds(const selections &asked, const native_node *node) {
        return std::ranges::any_of(asked, [node](const selection *each) { return each->holds(node); });
    }

    void open(const native_node &node) {
        if (node.module != module_) {
            module_ = node.module;
            ns_ = schema::ns_of_module(module_);
        }
        to_.open(node.tag, ns_);
    }

    void answer_leaf(const native_node &leaf, std::string_view value) {
        open(leaf);
        to_.value(value);
        to_.close();
    }

    template <typename Arrive>
    void answer_list(const list_data &list, const selections &asked, Arrive arrive) {
        std::vector<const list_filter *> filters;
        for (const selection *each : asked)
            if (const auto found = each->lists.find(list.node); found != each->lists.end())
                filters.push_back(&found->second);
        const bool is_whole = holds(asked, list.node);
        if (list.node->what == schema::kind::leaf_list) {
            if (is_whole)
                answer_values(list, arrive);
            return;
        }
        const unsigned all_keys = (1u << schema::native_keys(list.node).size()) - 1;

        if (!is_whole && all_keys != 0 && filters.size() == 1 && has_only(*filters.front(), all_keys)) {
            for (const auto &[key, selected] : filters.front()->by_given_keys.at(all_keys))
                if (const auto entry = list.entries.find(key); entry != list.entries.end())
                    answer_entry(*list.node, *entry, {&selected}, arrive);
            return;
        }
        static const selection whole{true, {}, {}};
        for (const auto &entry : list.entries) {
            selections of_entry;
            if (is_whole)
                of_entry.push_back(&whole);
            else
                add_selections(filters, list.node, entry.first, of_entry);
            if (!of_entry.empty())
                answer_entry(*list.node, entry, of_entry, arrive);
        }
    }

    template <typename Arrive>
    void answer_values(const list_data &leaf_list, Arrive arrive) {
        arrive();
        for (const auto &[key, empty] : leaf_list.entries) {
            std::string_view rest = key;
            answer_leaf(*leaf_list.node, next_key_value(rest));
        }
    }

    static bool has_only(const list_filter &filter, unsigned given) {
        return filter.by_given_keys.size() == 1 && filter.by_given_keys.begin()->first == given;
    }

    static void add_selections(const std::vector<const list_filter *> &filters, const native_node *list,
                               std::string_view key, selections &to) {
        for (const list_filter *filter : filters)
            for (const auto &[given, rows] : filter->by_given_keys)
                if (const auto found = rows.find(part_of(key, list, given)); found != rows.end())
                    to.push_back(&found->second);
    }

    // The values of the given keys.
    static entry_key part_of(std::string_view key, const native_node *list, unsigned given) {
        entry_key part;
        for (size_t i = 0; i < schema::native_keys(list).size(); ++i)
            if (const std::string_view value = next_key_value(key); given >> i & 1)
                append_key(part, value);
        return part;
    }

    template <typename Arrive>
    void answer_entry(const native_node &list, const std::pair<const entry_key, record> &entry, const selections &asked,
                      Arrive arrive) {
        arrive();
        open(list);
        std::string_view rest = entry.first;
        for (const native_node &key : schema::native_keys(&list))
            answer_leaf(key, next_key_value(rest));
        answer(entry.second, &list, asked);
        to_.close();
    }

    zmf::tree_builder &to_;
    const char *module_ = nullptr;
    const char *ns_ = nullptr;
};

} // namespace

zmf::fixed_tree store::answer(const zmf::output_tree &native_request, bool with_operational) const {
    selection asked;
    selector(with_operational, held_.flex_bins).select_below(native_request.top(), nullptr, asked);
    asked.settle();
    zmf::tree_builder answered;
    answerer to(answered);
    for (const record *held : {&held_.config, &held_.operational})
        to.answer(*held, nullptr, {&asked});
    return answered.finish();
}

} // namespace device
