// Edits: the nodes of a native tree are done one after the other. Entries of top lists are kept as they were before
// they are first touched, and given back when the device refuses something later on.
#include "device/store.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "device/text.h"

namespace device {
namespace {

using schema::native_node;
using zmf::output_node;

// What a node asks of its target.
enum class ask { nothing, merge, replace, remove, erase };

// Whether the operation that holds for a node is a removal, be it its own or one that it has from a node around it.
bool is_of_removal(output_node asked) {
    while (asked && !(asked.has_source() && asked.op_explicit()))
        asked = asked.parent();
    return asked && (asked.op() == OP_DELETE || asked.op() == OP_REMOVE);
}

ask ask_of(output_node asked, const native_node *node) {
    if (!asked.has_source() || (node != nullptr && node->is_key))
        return ask::nothing;
    switch (asked.op()) {
    case OP_DELETE:
        return ask::erase;
    case OP_REMOVE:
        return ask::remove;
    case OP_REPLACE:
        return ask::replace;
    default:
        return is_of_removal(asked) ? ask::nothing : ask::merge;
    }
}

bool is_writing(ask what) {
    return what == ask::merge || what == ask::replace;
}

bool is_removing(ask what) {
    return what == ask::remove || what == ask::erase;
}

bool is_leaf(const native_node *node) {
    return node != nullptr && node->value != schema::type::none;
}

template <typename Test>
bool any_child(output_node parent, const native_node *place, Test test) {
    for (output_node each = parent.first_child(); each; each = each.next_sibling())
        if (test(each, place == nullptr ? nullptr : schema::native_child(place, each.tag())))
            return true;
    return false;
}

bool is_made(output_node entry, const native_node *list);

// Whether something is to stand at a node or below it; at a node that the device does not know, so that it is refused.
bool writes(output_node asked, const native_node *node) {
    const bool is_written = is_writing(ask_of(asked, node));
    if (is_leaf(node) || (node == nullptr && is_written))
        return is_written;
    const bool is_list = node != nullptr && node->what == schema::kind::list;
    return is_list ? is_made(asked, node) : any_child(asked, node, writes);
}

bool is_made(output_node entry, const native_node *list) {
    const ask own = ask_of(entry, list);
    const bool has_only_keys =
        !any_child(entry, list, [](output_node, const native_node *node) { return node == nullptr || !node->is_key; });
    const bool key_came_with_source = any_child(entry, list, [](output_node each, const native_node *node) {
        return node != nullptr && node->is_key && each.has_source();
    });
    return own == ask::replace || any_child(entry, list, writes) ||
           (has_only_keys && key_came_with_source && !is_of_removal(entry));
}

// Whether a node or something below it asks for anything.
bool asks(output_node asked, const native_node *node) {
    const ask own = ask_of(asked, node);
    if (node == nullptr || is_leaf(node) ? own != ask::nothing : own == ask::replace || is_removing(own))
        return true;
    return (node != nullptr && node->what == schema::kind::list && is_made(asked, node)) ||
           any_child(asked, node, asks);
}

// The first node below `parent` that must be there to be deleted, if there is one.
output_node first_erased(output_node parent, const native_node *place) {
    output_node found;
    any_child(parent, place, [&found](output_node each, const native_node *node) {
        found = ask_of(each, node) == ask::erase ? each : first_erased(each, node);
        return static_cast<bool>(found);
    });
    return found;
}

output_node key_of(output_node entry, const native_node &key) {
    for (output_node each = entry.first_child(); each; each = each.next_sibling())
        if (std::string_view(key.tag) == each.tag() && each.value() != nullptr && *each.value() != '\0')
            return each;
    return {};
}

// "/logical-channels/channel[channel-index='5']/description"
std::string path_of(output_node asked) {
    std::vector<output_node> steps;
    for (; asked.parent(); asked = asked.parent())
        steps.push_back(asked);
    std::string path;
    const native_node *node = nullptr;
    bool is_known = true;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        path.append("/").append(step->tag());
        node = is_known ? schema::native_child(node, step->tag()) : nullptr;
        is_known = node != nullptr;
        if (!is_known || node->what != schema::kind::list)
            continue;
        for (const native_node &key : schema::native_keys(node))
            if (output_node given = key_of(*step, key))
                path.append("[").append(key.tag).append("='").append(given.value()).append("']");
    }
    return path;
}

[[noreturn]] void refuse(const char *error_tag, output_node asked, std::string text) {
    throw edit_failure{error_tag, path_of(asked), asked.tag(), asked.ns() == nullptr ? "" : asked.ns(),
                       std::move(text)};
}

std::string quoted(std::string_view value) {
    return '"' + text::shortened(value) + '"';
}

// What top lists and top leaves were before the edit.
class journal {
public:
    explicit journal(record &config) : config_(config), leaves_(config.leaves) {}

    void keep(const list_data &list, const entry_key &key) {
        const auto [place, is_first] = entries_.try_emplace({list.node, key});
        if (const auto found = list.entries.find(key); is_first && found != list.entries.end())
            place->second = found->second;
    }

    void keep(const list_data &list, const entry_key &key, record &&removed) {
        const auto [place, is_first] = entries_.try_emplace({list.node, key});
        if (is_first)
            place->second = std::move(removed);
    }

    void undo() {
        config_.leaves = std::move(leaves_);
        for (auto &[place, before] : entries_) {
            list_data &list = list_of(config_, *place.first);
            if (before)
                list.entries[place.second] = std::move(*before);
            else
                list.entries.erase(place.second);
        }
        drop_empty_lists(config_);
    }

private:
    record &config_;
    std::vector<leaf_value> leaves_;
    std::map<std::pair<const native_node *, entry_key>, std::optional<record>> entries_;
};

class editor {
public:
    editor(record &config, journal &before) : config_(config), before_(before) {}

    // `removed`: a node above was deleted, so what is deleted here is gone already.
    void edit_below(output_node parent, const native_node *place, record &in, bool removed) {
        for (output_node each = parent.first_child(); each; each = each.next_sibling()) {
            const native_node *node = schema::native_child(place, each.tag());
            if (node == nullptr || !node->is_config)
                refuse_foreign(each, node);
            else if (node->what == schema::kind::container)
                edit_container(each, *node, in, removed);
            else if (node->what == schema::kind::list)
                edit_entry(each, *node, in, removed);
            else
                edit_leaf(each, *node, in, removed);
        }
        drop_empty_lists(in);
    }

private:
    struct given_keys {
        entry_key whole;                                // with all keys
        std::vector<std::optional<std::string>> values; // one for each key
        const native_node *missing = nullptr;           // the first that is not given
    };

    static void refuse_foreign(output_node asked, const native_node *node) {
        if (!asks(asked, node))
            return;
        if (node == nullptr)
            refuse("unknown-element", asked, "the device has no such node");
        refuse("operation-not-supported", asked, "operational data cannot be edited");
    }

    void edit_container(output_node asked, const native_node &node, record &in, bool removed) {
        const ask own = ask_of(asked, &node);
        if (is_removing(own) || own == ask::replace) {
            const bool had_leaves = erase_leaves(in, node);
            const bool had_lists = erase_lists(in, node);
            if (own == ask::erase && !removed && !had_leaves && !had_lists)
                refuse_missing(asked);
            removed = true;
        }
        edit_below(asked, &node, in, removed);
    }

    bool erase_lists(record &in, const native_node &subtree) {
        bool had_any = false;
        for (list_data &list : in.lists)
            if (list.node > &subtree && list.node < subtree.end)
                had_any |= erase_entries(in, list, {{}, {}, nullptr});
        return had_any;
    }

    void edit_entry(output_node asked, const native_node &list, record &in, bool removed) {
        if (!asks(asked, &list))
            return;
        const given_keys keys = read_keys(asked, list);
        const ask own = ask_of(asked, &list);
        const bool makes = is_made(asked, &list);
        if (is_removing(own) || own == ask::replace) {
            list_data *data = find_list(in, list);
            const bool had_any = data != nullptr && erase_entries(in, *data, keys);
            if (own == ask::erase && !removed && !had_any)
                refuse_missing(asked);
            if (!makes)
                return;
            removed = true;
        }
        if (keys.missing != nullptr)
            refuse_keyless(asked, *keys.missing);
        if (record *entry = entry_for_edit(in, list, keys.whole, makes))
            return edit_below(asked, &list, *entry, removed);
        if (const output_node erased = removed ? output_node() : first_erased(asked, &list))
            refuse_missing(erased);
    }

    static given_keys read_keys(output_node entry, const native_node &list) {
        given_keys keys;
        for (const native_node &key : schema::native_keys(&list)) {
            output_node given = key_of(entry, key);
            if (!given) {
                keys.missing = keys.missing == nullptr ? &key : keys.missing;
                keys.values.emplace_back();
                continue;
            }
            keys.values.emplace_back(canonical(given, key));
            append_key(keys.whole, *keys.values.back());
        }
        return keys;
    }

    // Null: it is not there and is not to be made.
    record *entry_for_edit(record &in, const native_node &list, const entry_key &key, bool makes) {
        if (!makes && find_list(in, list) == nullptr)
            return nullptr;
        list_data &data = list_of(in, list);
        if (&in == &config_)
            before_.keep(data, key);
        const auto found = data.entries.find(key);
        if (found != data.entries.end())
            return &found->second;
        return makes ? &data.entries[key] : nullptr;
    }

    // Those that have the given keys: one, or several where keys are missing. False: none.
    bool erase_entries(const record &in, list_data &list, const given_keys &keys) {
        const bool is_one = keys.missing == nullptr && !keys.values.empty();
        auto each = is_one ? list.entries.find(keys.whole) : list.entries.begin();
        bool had_any = false;
        while (each != list.entries.end()) {
            const auto here = each++;
            if (is_one)
                each = list.entries.end();
            else if (!has_keys(here->first, keys))
                continue;
            if (&in == &config_)
                before_.keep(list, here->first, std::move(here->second));
            list.entries.erase(here);
            had_any = true;
        }
        return had_any;
    }

    static bool has_keys(std::string_view key, const given_keys &keys) {
        return std::ranges::all_of(keys.values, [&key](const std::optional<std::string> &wanted) {
            const std::string_view value = next_key_value(key);
            return !wanted || *wanted == value;
        });
    }

    static void edit_leaf(output_node asked, const native_node &leaf, record &in, bool removed) {
        const ask own = ask_of(asked, &leaf);
        const bool is_list = leaf.what == schema::kind::leaf_list;
        if (own == ask::nothing || (removed && is_removing(own)))
            return;
        if (is_writing(own) && asked.value() == nullptr)
            refuse("invalid-value", asked, std::string("there is no value for ") + leaf.tag);
        const std::string value = asked.value() == nullptr ? "" : canonical(asked, leaf);
        if (is_list && asked.value() != nullptr)
            return edit_value(asked, leaf, in, value);
        if (asked.value() != nullptr)
            return set_leaf(in, leaf, value);
        if (!erase_leaves(in, leaf) && own == ask::erase)
            refuse_missing(asked);
    }

    static void edit_value(output_node asked, const native_node &leaf_list, record &in, const std::string &value) {
        const ask own = ask_of(asked, &leaf_list);
        if (is_writing(own))
            add_value(in, leaf_list, value);
        if (is_removing(own) && !erase_value(in, leaf_list, value) && own == ask::erase)
            refuse("data-missing", asked, "there is no value " + quoted(value) + " in " + leaf_list.tag);
    }

    static std::string canonical(output_node asked, const native_node &leaf) {
        std::string kept;
        if (!to_canonical(leaf, asked.value(), kept))
            refuse("invalid-value", asked, quoted(asked.value()) + " is no value of " + leaf.tag);
        return kept;
    }

    [[noreturn]] static void refuse_missing(output_node asked) {
        refuse("data-missing", asked, std::string("there is no ") + asked.tag() + " to delete");
    }

    [[noreturn]] static void refuse_keyless(output_node entry, const native_node &key) {
        throw edit_failure{"missing-element", path_of(entry) + "/" + key.tag, key.tag,
                           entry.ns() == nullptr ? "" : entry.ns(),
                           std::string("an entry of ") + entry.tag() + " is named without its key " + key.tag};
    }

    record &config_;
    journal &before_;
};

} // namespace

std::optional<edit_failure> store::apply(const zmf::output_tree &native_edit) {
    journal before(held_.config);
    try {
        editor(held_.config, before).edit_below(native_edit.top(), nullptr, held_.config, false);
        return std::nullopt;
    } catch (edit_failure &failure) {
        before.undo();
        return std::move(failure);
    } catch (...) {
        before.undo();
        throw;
    }
}

} // namespace device
