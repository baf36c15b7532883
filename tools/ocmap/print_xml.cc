// The XML form of a native request tree.
#include <cstring>

#include "operation_name.h"
#include "print.h"
#include "xml_writer.h"

namespace ocmap {
namespace {

using zmf::output_node;

class xml_printer {
public:
    explicit xml_printer(output &out) : to_(out) {}

    void print(output_node root, bool is_read) {
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
    void children(output_node node, const char *ns_around) {
        for (output_node child = node.first_child(); child; child = child.next_sibling())
            element(child, ns_around);
    }

    void element(output_node node, const char *ns_around) {
        to_.open(node.tag());
        const char *ns = node.ns() ? node.ns() : ns_around;
        if (std::strcmp(ns, ns_around) != 0)
            to_.attribute("xmlns", ns);
        if (const char *operation = operation_name(node))
            to_.attribute("nc:operation", operation);
        if (node.value())
            to_.text(node.tag(), node.value());
        children(node, ns);
        to_.close();
    }

    xml_writer to_;
};

} // namespace

void print_xml(const zmf::output_tree &tree, bool is_read, output &out) {
    xml_printer(out).print(tree.top(), is_read);
}

} // namespace ocmap
