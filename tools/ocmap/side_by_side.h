// Two trees beside each other: nodes that are the same in both stand in one row.
#pragma once

#include <string>
#include <vector>

#include "narrow.h"
#include "output.h"
#include "zmf/tree.h"

namespace ocmap {

// A node of either kind of tree, as it is compared and shown.
struct shown_node {
    std::string name;  // with module where it differs from that above, and keys: those of one name are the same node
    std::string value; // " = ...", and the operation
    std::vector<shown_node> children;
};

std::vector<shown_node> shown(const zmf::output_tree &native);
std::vector<shown_node> shown(const zmf::output_tree &reply, const selection &told);

struct side {
    std::string title;
    std::vector<shown_node> nodes;
};

// Marks: "|" the values differ, "<" and ">" the node is on that side only.
void print_beside(const side &left, const side &right, output &out);

} // namespace ocmap
