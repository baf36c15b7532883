#include "made_texts.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <string_view>

#include "device/json_text.h"
#include "device/native_json.h"

namespace fuzz {
namespace {

using schema::kind;

constexpr const char *odd_texts[] = {
    "",    ".",    "-",  "#",     "a#b",      "-0", "1e400", "1.25E-03",   "99999999999999999999",
    "nan", "%s%n", " 5", "]'[\"", "\xc3\xa9", "/",  "a:b",   "[DISABLED]", "\n"};
constexpr const char *odd_numbers[] = {"0", "1", "7", "-1", "100001", "4294967296", "-9223372036854775808"};

// Collects the scalars of an example under the names of their members.
class collector : public json_text::visitor {
public:
    explicit collector(std::map<std::string, std::vector<std::string>, std::less<>> &into) : into_(into) {}
    void open_object(size_t) override {}
    void close_object(size_t) override {}
    void open_array(size_t) override {}
    void close_array(size_t) override {}
    void member(std::string_view name, size_t) override { name_ = name.substr(name.find(':') + 1); }
    void value(json_text::scalar what, std::string_view text, size_t) override {
        if (what != json_text::scalar::null)
            into_[name_].emplace_back(text);
    }

private:
    std::map<std::string, std::vector<std::string>, std::less<>> &into_;
    std::string name_;
};

std::string quoted(std::string_view text) {
    std::string json;
    device::append_text(json, text);
    return json;
}

bool is_integer(std::string_view text) {
    int64_t number = 0;
    const auto [stopped, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && stopped == text.data() + text.size();
}

// Members behind one another, without those that are empty.
void add(std::string &members, const std::string &member) {
    if (!member.empty() && !members.empty())
        members += ',';
    members += member;
}

std::string member(const char *module, const char *tag, const std::string &value) {
    return quoted(std::string(module) + (*module == '\0' ? "" : ":") + tag) + ':' + value;
}

// A leaf below `config` or `state` that says the key of the entry around it once more. With a value it is taken for the
// key itself, so that what else a read asks of other entries is lost.
bool repeats_key(const schema::node &leaf) {
    const schema::node *list = leaf.parent == nullptr ? nullptr : leaf.parent->parent;
    if (list == nullptr || list->what != kind::list)
        return false;
    for (const schema::node *key = list + 1; key->is_key && key->parent == list; ++key)
        if (std::string_view(key->tag) == leaf.tag)
            return true;
    return false;
}

} // namespace

made_texts::made_texts(uint64_t seed, const std::vector<std::string> &examples) : random_(seed) {
    for (const std::string &example : examples) {
        collector all(known_);
        json_text::read(example, all);
    }
    for (const auto &[tag, values] : known_)
        all_.insert(all_.end(), values.begin(), values.end());
}

std::string made_texts::text(const char *tag) {
    const auto known = known_.find(std::string_view(tag));
    if (known != known_.end() && !one_in(6))
        return known->second[below(known->second.size())];
    if (!one_in(3))
        return all_[below(all_.size())];
    return odd_texts[below(std::size(odd_texts))];
}

std::string made_texts::value(const char *tag, bool is_number) {
    if (!is_number)
        return quoted(text(tag));
    const std::string known = text(tag);
    return is_integer(known) && !one_in(8) ? known : odd_numbers[below(std::size(odd_numbers))];
}

std::string made_texts::native(bool is_config, bool is_whole) {
    return '{' + native_children(nullptr, is_config, is_whole ? form::description : form::native) + '}';
}

std::string made_texts::native_children(const schema::native_node *parent, bool is_config, form what) {
    std::string members;
    const schema::native_node *const first = parent == nullptr ? schema::native_nodes().data() : parent + 1;
    const schema::native_node *const last = parent == nullptr ? first + schema::native_nodes().size() : parent->end;
    for (const schema::native_node *node = first; node < last; node = node->end)
        if (node->is_config == is_config && !node->is_key && !one_in(3))
            add(members, native_node(*node, what));
    return members;
}

std::string made_texts::native_keys(const schema::native_node &list, form what) {
    std::string members;
    for (const schema::native_node &key : schema::native_keys(&list)) {
        if (what == form::native && one_in(20))
            continue;
        std::string known = value(key.tag, key.value == schema::type::integer);
        if (what == form::description && known == "\"\"")
            known = "\"0\"";
        add(members, member("", key.tag, known));
    }
    return members;
}

std::string made_texts::native_node(const schema::native_node &node, form what) {
    const bool needs_module = node.parent == nullptr || std::string_view(node.parent->module) != node.module;
    const auto named = [&](const std::string &value) {
        return member(needs_module ? node.module : "", node.tag, value);
    };
    const bool is_number = node.value == schema::type::integer;
    std::set<std::string> keys;
    std::string entries;
    switch (node.what) {
    case kind::leaf:
        return named(value(node.tag, is_number));
    case kind::container:
        return named('{' + native_children(&node, node.is_config, what) + '}');
    case kind::list:
        for (size_t count = below(4); count > 0; --count) {
            std::string entry = native_keys(node, what);
            const bool is_new = keys.insert(entry).second;
            add(entry, native_children(&node, node.is_config, what));
            if (is_new || what == form::native)
                add(entries, '{' + entry + '}');
        }
        break;
    case kind::leaf_list:
        for (size_t count = below(4); count > 0; --count)
            keys.insert(value(node.tag, is_number));
        for (const std::string &each : keys)
            add(entries, each);
    }
    return named('[' + entries + ']');
}

std::string made_texts::read() {
    return request(form::read);
}

std::string made_texts::edit() {
    return request(form::edit);
}

std::string made_texts::request(form what) {
    std::string members;
    const schema::model &sure = schema::models()[below(schema::models().size())];
    for (const schema::model &model : schema::models())
        if (&model == &sure || one_in(3))
            add(members, node(model.nodes.front(), model, what));
    return '{' + members + '}';
}

std::string made_texts::operation() {
    static constexpr const char *names[] = {"merge", "replace", "replace", "create", "delete", "delete", "remove"};
    return std::string(R"({"ietf-netconf:operation":")") + names[below(std::size(names))] + R"("})";
}

// Some children of a node, few where `most` is small.
std::string made_texts::children(const schema::node *parent, const schema::model &model, form what, size_t most) {
    std::vector<const schema::node *> rows;
    for (const schema::node *row = parent + 1; row < model.nodes.data() + parent->end;
         row = model.nodes.data() + row->end)
        if (!row->is_key && (what == form::read || row->is_config || one_in(20)))
            rows.push_back(row);
    std::ranges::shuffle(rows, random_);
    rows.resize(std::min(rows.size(), below(most + 1)));
    std::string members;
    for (const schema::node *row : rows)
        add(members, node(*row, model, what));
    return members;
}

std::string made_texts::entry(const schema::node &row, const schema::model &model, form what) {
    std::string members;
    for (const schema::node *key = &row + 1; key->is_key && key->parent == &row; ++key)
        if (!one_in(what == form::edit ? 30 : 3))
            add(members, node(*key, model, what));
    if (what == form::edit && one_in(4))
        add(members, "\"@\":" + operation());
    add(members, children(&row, model, what, 4));
    return '{' + members + '}';
}

std::string made_texts::node(const schema::node &row, const schema::model &model, form what) {
    const auto named = [&](const std::string &value) { return member(row.module, row.tag, value); };
    const bool is_selected = what == form::read && !row.is_key && (repeats_key(row) || !one_in(5));
    std::string entries;
    switch (row.what) {
    case kind::leaf: {
        const bool is_number = row.value == schema::type::integer && !one_in(10);
        std::string leaf = named(is_selected ? "null" : value(row.tag, is_number));
        if (what == form::edit && !row.is_key && one_in(6))
            add(leaf, quoted(std::string("@") + row.module + ':' + row.tag) + ':' + operation());
        return leaf;
    }
    case kind::container: {
        std::string members = children(&row, model, what, row.depth == 0 ? 2 : 3);
        if (what == form::edit && one_in(10))
            add(members, "\"@\":" + operation());
        return named('{' + members + '}');
    }
    case kind::list:
        for (size_t count = 1 + below(2); count > 0; --count)
            add(entries, entry(row, model, what));
        break;
    case kind::leaf_list:
        if (is_selected)
            return named("null");
        for (size_t count = 1 + below(3); count > 0; --count)
            add(entries, value(row.tag, row.value == schema::type::integer));
    }
    return named('[' + entries + ']');
}

} // namespace fuzz
