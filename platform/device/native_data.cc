// Records, their order, and the values in them.
#include "device/native_data.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <utility>

namespace device {
namespace {

bool is_number(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char byte) { return byte >= '0' && byte <= '9'; });
}

bool comes_before(std::string_view left, std::string_view right) {
    const bool left_is_number = is_number(left), right_is_number = is_number(right);
    if (left_is_number != right_is_number)
        return left_is_number;
    if (left_is_number && left.size() != right.size()) // numbers have no leading zeros
        return left.size() < right.size();
    return left < right;
}

entry_key key_of(std::string_view value) {
    entry_key key;
    append_key(key, value);
    return key;
}

template <typename Lists>
auto place_of(Lists &lists, const schema::native_node &list) {
    return std::ranges::lower_bound(lists, &list, {}, &list_data::node);
}

} // namespace

bool key_order::operator()(std::string_view left, std::string_view right) const noexcept {
    while (!left.empty() && !right.empty()) {
        const std::string_view left_value = next_key_value(left), right_value = next_key_value(right);
        if (left_value != right_value)
            return comes_before(left_value, right_value);
    }
    return left.size() < right.size();
}

bool record::operator==(const record &other) const {
    return leaves == other.leaves && lists == other.lists;
}

void set_leaf(record &in, const schema::native_node &leaf, std::string value) {
    const auto place = std::ranges::lower_bound(in.leaves, &leaf, {}, &leaf_value::node);
    if (place == in.leaves.end() || place->node != &leaf)
        in.leaves.insert(place, {&leaf, std::move(value)});
    else
        place->value = std::move(value);
}

bool add_value(record &in, const schema::native_node &leaf_list, std::string_view value) {
    return list_of(in, leaf_list).entries.try_emplace(key_of(value)).second;
}

bool erase_value(record &in, const schema::native_node &leaf_list, std::string_view value) {
    list_data *values = find_list(in, leaf_list);
    return values != nullptr && values->entries.erase(key_of(value)) != 0;
}

bool erase_leaves(record &in, const schema::native_node &subtree) {
    const auto is_below = [&](const auto &each) { return each.node >= &subtree && each.node < subtree.end; };
    size_t erased = std::erase_if(in.leaves, is_below);
    for (list_data &list : in.lists)
        if (list.node->what == schema::kind::leaf_list && is_below(list))
            erased += std::exchange(list.entries, {}).size();
    return erased != 0;
}

list_data *find_list(record &in, const schema::native_node &list) {
    const auto place = place_of(in.lists, list);
    return place != in.lists.end() && place->node == &list ? &*place : nullptr;
}

const list_data *find_list(const record &in, const schema::native_node &list) {
    const auto place = place_of(in.lists, list);
    return place != in.lists.end() && place->node == &list ? &*place : nullptr;
}

list_data &list_of(record &in, const schema::native_node &list) {
    const auto place = place_of(in.lists, list);
    return place != in.lists.end() && place->node == &list ? *place : *in.lists.insert(place, {&list, {}});
}

void drop_empty_lists(record &in) {
    std::erase_if(in.lists, [](const list_data &each) { return each.entries.empty(); });
}

void append_key(entry_key &key, std::string_view value) {
    key.append(value).push_back('\0');
}

std::string_view next_key_value(std::string_view &rest) {
    const std::string_view value = rest.substr(0, rest.find('\0'));
    rest.remove_prefix(std::min(rest.size(), value.size() + 1));
    return value;
}

bool to_canonical(const schema::native_node &leaf, std::string_view written, std::string &kept) {
    kept = written;
    if (leaf.value != schema::type::integer)
        return written.find('\0') == std::string_view::npos && !(leaf.value == schema::type::name && written.empty());
    const bool has_plus = written.starts_with('+') && !written.starts_with("+-");
    const std::string_view digits = written.substr(has_plus ? 1 : 0);
    int64_t number = 0;
    const auto [stopped, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || stopped != digits.data() + digits.size())
        return false;
    kept = std::to_string(number);
    return true;
}

} // namespace device
