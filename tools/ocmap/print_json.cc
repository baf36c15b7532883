// The JSON form of a native request tree.
#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

#include "json_writer.h"
#include "operation_name.h"
#include "print.h"
#include "schema/schema.h"

namespace ocmap {
namespace {

using zmf::output_node;

const char *module_of(output_node node) {
    const char *ns = node.ns() ? node.ns() : "";
    const char *module = schema::module_of_ns(ns);
    return module ? module : ns;
}

bool is_same_name(output_node a, output_node b) {
    return std::strcmp(a.tag(), b.tag()) == 0 && std::strcmp(module_of(a), module_of(b)) == 0;
}

class json_printer {
public:
    explicit json_printer(output &out) : to_(out) {}

    void print(output_node root) {
        to_.open_object();
        members(root, "");
        to_.close_object();
        to_.finish();
    }

private:
    static bool is_in_array(output_node node) { return node.is_list_entry() || node.is_list() || node.is_leaf_list(); }

    // The entries of a list are gathered at the first of them.
    void members(output_node node, std::string_view module) {
        std::vector<output_node> lists;
        for (output_node child = node.first_child(); child; child = child.next_sibling()) {
            const bool is_entry = is_in_array(child);
            if (is_entry &&
                std::any_of(lists.begin(), lists.end(), [&](output_node list) { return is_same_name(list, child); }))
                continue;
            name(child, module, "");
            if (is_entry) {
                lists.push_back(child);
                list(child, module);
            } else {
                value(child, module);
            }
        }
    }

    void list(output_node first, std::string_view module_around) {
        const bool is_leaf_list = first.is_leaf_list();
        bool is_annotated = false;
        to_.open_array();
        for_entries(first, [&](output_node entry) {
            to_.item();
            if (is_leaf_list)
                scalar(entry);
            else
                object(entry);
            is_annotated |= is_leaf_list && operation_name(entry) != nullptr;
        });
        to_.close_array();
        if (is_annotated)
            annotations(first, module_around);
    }

    // Of a leaf-list: one for each value, null for one that carries no operation.
    void annotations(output_node first, std::string_view module_around) {
        name(first, module_around, "@");
        to_.open_array();
        for_entries(first, [&](output_node entry) {
            to_.item();
            if (const char *operation = operation_name(entry))
                annotation(operation);
            else
                to_.bare("null");
        });
        to_.close_array();
    }

    template <typename action>
    static void for_entries(output_node first, action run) {
        for (output_node entry = first; entry; entry = entry.next_sibling())
            if (is_in_array(entry) && is_same_name(first, entry))
                run(entry);
    }

    void value(output_node node, std::string_view module_around) {
        if (node.first_child()) {
            object(node);
            return;
        }
        scalar(node);
        if (const char *operation = operation_name(node)) {
            name(node, module_around, "@");
            annotation(operation);
        }
    }

    void scalar(output_node node) {
        if (node.value())
            to_.string(node.value());
        else
            to_.bare("null");
    }

    void object(output_node node) {
        to_.open_object();
        if (const char *operation = operation_name(node)) {
            to_.member("@", "", "");
            annotation(operation);
        }
        members(node, module_of(node));
        to_.close_object();
    }

    void annotation(std::string_view operation) {
        to_.bare(R"({"ietf-netconf:operation": )");
        to_.string(operation);
        to_.bare("}");
    }

    void name(output_node node, std::string_view module_around, std::string_view mark) {
        const std::string_view module = module_of(node);
        to_.member(mark, module == module_around ? "" : module, node.tag());
    }

    json_writer to_;
};

} // namespace

void print_json(const zmf::output_tree &tree, output &out) {
    json_printer(out).print(tree.top());
}

} // namespace ocmap
