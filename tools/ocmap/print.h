// Native request trees in text. Each printer keeps no more than one step of the tree in memory.
#pragma once

#include <string>

#include "output.h"
#include "zmf/tree.h"

namespace ocmap {

// A value that the format cannot carry.
struct print_error {
    std::string text;
};

// One element of the NETCONF base namespace, `filter` for a read and `config` for an edit, around the top nodes;
// operations as nc:operation. Throws print_error.
void print_xml(const zmf::output_tree &tree, bool is_read, output &out);

// RFC 7951, operations as annotations of RFC 7952. Values are strings throughout, since the types of native leaves are
// not known here; a leaf without value is null.
void print_json(const zmf::output_tree &tree, output &out);

} // namespace ocmap
