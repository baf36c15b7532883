// Checks that do not depend on a request's form.
#include "request_tree.h"

#include <algorithm>

#include "device/text.h"
#include "hundredths.h"
#include "zmf.h"

namespace ocmap {
namespace {

bool is_letter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_';
}

bool is_identifier(std::string_view name) {
    return !name.empty() && is_letter(name.front()) && std::ranges::all_of(name, [](char byte) {
        return is_letter(byte) || (byte >= '0' && byte <= '9') || byte == '-' || byte == '.';
    });
}

std::string quoted(std::string_view name) {
    return '"' + text::shortened(name) + '"';
}

struct operation_row {
    std::string_view name;
    uint32_t code;
};

constexpr operation_row operations[] = {
    {"merge", OP_MERGE}, {"replace", OP_REPLACE}, {"create", op_create}, {"delete", OP_DELETE}, {"remove", OP_REMOVE},
};

} // namespace

uint32_t operation_code(std::string_view name) {
    const auto *const found = std::ranges::find(operations, name, &operation_row::name);
    if (found == std::end(operations))
        throw refusal{"unknown operation " + quoted(name)};
    return found->code;
}

const schema::node *request_tree::known(std::string_view tag, std::string_view ns) const {
    if (open_.empty()) {
        const schema::model *root = schema::root_of(tag, ns);
        return root == nullptr ? nullptr : &root->nodes.front();
    }
    if (model_ == nullptr || open_.back().known == nullptr)
        return nullptr;
    const schema::node *found = schema::child(open_.back().known, *model_, tag);
    return found != nullptr && ns == found->ns ? found : nullptr;
}

void request_tree::open(std::string_view tag, std::string_view ns) {
    if (!is_identifier(tag))
        throw refusal{quoted(tag) + " is no name of a node"};
    if (open_.empty()) {
        model_ = schema::root_of(tag, ns);
        if (model_ == nullptr && !is_native())
            throw refusal{"unknown top node " + quoted(tag) +
                          (ns.empty() ? " without a namespace" : " of namespace " + quoted(ns))};
    } else if (is_leaf(node())) {
        throw refusal{"leaf " + quoted(node()->tag) + " holds node " + quoted(tag)};
    }
    if (open_.size() == deepest_node)
        throw refusal{"nesting deeper than " + std::to_string(deepest_node)};
    if (builder_.nodes() == most_nodes && !is_native())
        throw refusal{"more than " + std::to_string(most_nodes) + " nodes"};
    const schema::node *found = known(tag, ns);
    builder_.open(tag, ns);
    open_.push_back({found, false});
}

void request_tree::operation(uint32_t code) {
    if (is_read())
        throw refusal{no_operation()};
    open_.back().is_deleted = code == OP_DELETE || code == OP_REMOVE;
    const bool is_merge = code == op_create && purpose_ != purpose::edit_after_creates;
    builder_.operation(is_merge ? uint32_t{OP_MERGE} : code);
}

void request_tree::value(std::string_view text) {
    if (is_branch(node()))
        throw refusal{quoted(node()->tag) + " holds nodes, and no text"};
    if (is_native() || !is_leaf(node()) || node()->value != schema::type::hundredths)
        return builder_.value(text);
    const std::optional<std::string> scaled = to_hundredths(text);
    if (!scaled)
        throw refusal{quoted(text) + " is no decimal number with at most two decimals"};
    builder_.value(*scaled);
}

void request_tree::value(std::string_view identity, std::string_view ns) {
    value(identity);
    builder_.value_namespace(ns);
}

void request_tree::close() {
    open_.pop_back();
    builder_.close();
}

zmf::fixed_tree request_tree::finish() {
    if (builder_.nodes() == 0)
        throw refusal{"a request without a node"};
    return builder_.finish();
}

bool is_leaf(const schema::node *known) {
    return known != nullptr && known->value != schema::type::none;
}

bool is_branch(const schema::node *known) {
    return known != nullptr && known->value == schema::type::none;
}

std::optional<prefixed> split_identity(const schema::node *known, std::string_view text) {
    if (known == nullptr || known->value != schema::type::identity)
        return std::nullopt;
    const size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    return prefixed{text.substr(0, colon), text.substr(colon + 1)};
}

std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(white), text.size()));
    return text.substr(0, text.find_last_not_of(white) + 1);
}

std::string_view comparable(const schema::node *known, std::string_view text) {
    using schema::type;
    text = trimmed(text);
    if (known == nullptr ||
        (known->value != type::integer && known->value != type::integer64 && known->value != type::decimal64))
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

} // namespace ocmap
