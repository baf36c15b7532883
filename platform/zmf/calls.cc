// The call log as text: names of statuses and operations, and one line for a call.
#include <array>
#include <cstdio>
#include <utility>

#include "pouch/status.h"
#include "schema/schema.h"
#include "session.h"

namespace zmf {

namespace {

constexpr std::pair<rcode, const char *> status_names[] = {
    {RC_OK, "RC_OK"},
    {RC_SUBTREE_ERROR, "RC_SUBTREE_ERROR"},
    {RC_INVALID_ARGUMENTS, "RC_INVALID_ARGUMENTS"},
    {RC_NO_MEMORY, "RC_NO_MEMORY"},
    {RC_UNSUPPORTED_NODE, "RC_UNSUPPORTED_NODE"},
    {RC_LIST_KEY_ERROR, "RC_LIST_KEY_ERROR"},
    {RC_KEY_DELETE, "RC_KEY_DELETE"},
    {RC_NAMESPACE_MISSING, "RC_NAMESPACE_MISSING"},
    {RC_NOT_MAPPED, "RC_NOT_MAPPED"},
    {RC_UNSUPPORTED_AUGMENT, "RC_UNSUPPORTED_AUGMENT"},
    {RC_LEAF_EXISTS, "RC_LEAF_EXISTS"},
    {RC_VALUE_OUT_OF_RANGE, "RC_VALUE_OUT_OF_RANGE"},
    {RC_STATEDB_UNAVAILABLE, "RC_STATEDB_UNAVAILABLE"},
    {OCOPTICAL_BAD_NAME, "OCOPTICAL_BAD_NAME"},
    {rc_leafref_mismatch, "RC_ZMF_LEAFREF_MISMATCH"},
    {rc_no_such_entry, "RC_ZMF_NO_SUCH_ENTRY"},
    {rc_bad_path, "RC_ZMF_BAD_PATH"},
    {rc_too_big, "RC_ZMF_TOO_BIG"},
    {rc_no_position, "RC_ZMF_NO_POSITION"},
    {rc_bad_text, "RC_ZMF_BAD_TEXT"},
};

enum class answers : uint8_t { nothing, status, yes_or_no, number };

struct operation_row {
    operation op;
    const char *name;
    const char *verb; // at the begin of a line
    answers result;
};

constexpr std::array operation_rows = {
    operation_row{operation::add_path, "add_path", "add", answers::status},
    operation_row{operation::update_namespace, "update_namespace", "namespace", answers::status},
    operation_row{operation::search_or_add_list, "search_or_add_list", "search-or-add", answers::status},
    operation_row{operation::search_list, "search_list", "search", answers::status},
    operation_row{operation::xpath, "xpath", "xpath", answers::status},
    operation_row{operation::stitch, "stitch", "stitch", answers::status},
    operation_row{operation::add_to_hierarchy, "add_to_hierarchy", "push", answers::nothing},
    operation_row{operation::remove_from_hierarchy, "remove_from_hierarchy", "pop", answers::nothing},
    operation_row{operation::update_current_list, "update_current_list", "current", answers::status},
    operation_row{operation::get_node_info, "get_node_info", "info", answers::status},
    operation_row{operation::add_to_output_list, "add_to_output_list", "output-push", answers::nothing},
    operation_row{operation::remove_from_output_list, "remove_from_output_list", "output-pop", answers::nothing},
    operation_row{operation::stack_push, "stack_push", "stack-push", answers::nothing},
    operation_row{operation::stack_pop, "stack_pop", "stack-pop", answers::nothing},
    operation_row{operation::stack_peak, "stack_peak", "stack-peak", answers::nothing},
    operation_row{operation::stack_size, "stack_size", "stack-size", answers::number},
    operation_row{operation::match, "match", "match", answers::yes_or_no},
    operation_row{operation::is_delete, "is_delete", "is-delete", answers::yes_or_no},
    operation_row{operation::is_add, "is_add", "is-add", answers::yes_or_no},
    operation_row{operation::check_leafref, "check_leafref", "leafref", answers::status},
    operation_row{operation::validate_ns, "validate_ns", "validate-ns", answers::status},
    operation_row{operation::error_path, "error_path", "error-path", answers::nothing},
};

constexpr bool rows_are_in_order() {
    for (size_t i = 0; i < operation_rows.size(); ++i)
        if (operation_rows[i].op != static_cast<operation>(i))
            return false;
    return operation_rows.back().op == operation::error_path;
}
static_assert(rows_are_in_order());

const operation_row &row_of(operation op) noexcept {
    return operation_rows[static_cast<size_t>(op)];
}

// One line whatever the text holds.
std::string quoted(std::string_view text) {
    std::string out = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\') {
            (out += '\\') += c;
        } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) {
            char hex[5];
            snprintf(hex, sizeof hex, "\\x%02x", static_cast<unsigned>(c));
            out += hex;
        } else {
            out += c;
        }
    }
    return out += '"';
}

const char *operation_of(const zmf_datatree &source) {
    if (!source.op_explicit)
        return "none";
    switch (source.op) {
    case OP_MERGE:
        return "merge";
    case OP_REPLACE:
        return "replace";
    case OP_DELETE:
        return "delete";
    case OP_REMOVE:
        return "remove";
    default:
        return "unknown";
    }
}

std::string module_or_uri(const char *ns) {
    const char *module = schema::module_of_ns(ns);
    return module == nullptr ? ns : module;
}

void add_result(std::string &line, const call &c) {
    switch (row_of(c.op).result) {
    case answers::nothing:
        break;
    case answers::status:
        if (c.result != RC_OK)
            line += " -> " + status_name(c.result);
        break;
    case answers::yes_or_no:
        line += c.result != 0 ? " -> yes" : " -> no";
        break;
    case answers::number:
        line += " -> " + std::to_string(c.result);
        break;
    }
}

} // namespace

std::string status_name(rcode status) {
    for (const auto &[known, name] : status_names)
        if (known == status)
            return name;
    if (const char *name = pouch::name(status))
        return name;
    char text[32];
    snprintf(text, sizeof text, "status 0x%08x", status);
    return text;
}

const char *operation_name(operation op) noexcept {
    return row_of(op).name;
}

std::string to_line(const call &c) {
    std::string line = row_of(c.op).verb;
    if (c.op == operation::match) { // two texts of any kind
        for (const char *text : {c.path, c.ns})
            line += text == nullptr ? " (null)" : " " + quoted(text);
        add_result(line, c);
        return line;
    }
    if (c.op == operation::add_to_hierarchy)
        line += c.number == ZMF_HIER_LIST ? " list" : " container";
    if (c.op == operation::stack_push)
        line += ' ' + std::to_string(c.number);
    if (c.path != nullptr)
        (line += ' ') += c.path;
    else if (c.node != nullptr && c.node->tag != nullptr)
        (line += ' ') += c.node->tag;
    if (c.ns != nullptr)
        line += " ns=" + module_or_uri(c.ns);
    if (c.key != nullptr)
        (line += " key=") += c.key;
    if (c.value != nullptr)
        line += " value=" + quoted(c.value);
    if (c.source != nullptr)
        (line += " source=") += operation_of(*c.source);
    if (c.list_flag)
        line += " list";
    if (c.cross_module_flag)
        line += " cross-module";
    if (c.node_out)
        line += " node-out";
    add_result(line, c);
    return line;
}

} // namespace zmf
