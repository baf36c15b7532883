// The XML form of a native request tree.
#include <cstring>

#include "operation_name.h"
#include "print.h"
#include "xml_writer.h"

namespace ocmap {
namespace {

using zmf::output_tree;

class xml_printer {
public:
    explicit xml_printer(output &out) : to_(out) {}

    void print(const zmf_datatree *root, bool is_read) {
        to_.open(is_read ? "filter" : "config");
        to_.attribute("xmlns", netconf_base);
        if (is_read)
            to_.attribute("type", "subtree");
        else
            to_.attribute("xmlns:nc", netconf_base);
        children(root, netconf_base);
        to_.close();
        to_.finish();
    }

private:
    void children(const zmf_datatree *node, const char *ns_around) {
        for (const auto *child = output_tree::first_child(node); child; child = output_tree::next_sibling(child))
            element(child, ns_around);
    }

    void element(const zmf_datatree *node, const char *ns_around) {
        to_.open(node->tag);
        const char *ns = node->ns ? node->ns : ns_around;
        if (std::strcmp(ns, ns_around) != 0)
            to_.attribute("xmlns", ns);
        if (const char *operation = operation_name(*node))
            to_.attribute("nc:operation", operation);
        if (node->value)
            to_.text(node->tag, node->value);
        children(node, ns);
        to_.close();
    }

    xml_writer to_;
};

} // namespace

void print_xml(const zmf::output_tree &tree, bool is_read, output &out) {
    xml_printer(out).print(tree.root(), is_read);
}

} // namespace ocmap
