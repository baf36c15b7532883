// NETCONF's names of node operations.
#pragma once

#include "zmf.h"
#include "zmf/tree.h"

namespace ocmap {

// The operation that a node carries; null for a node that carries none.
inline const char *operation_name(zmf::output_node node) noexcept {
    if (!node.op_explicit())
        return nullptr;
    switch (node.op()) {
    case OP_REPLACE:
        return "replace";
    case OP_DELETE:
        return "delete";
    case OP_REMOVE:
        return "remove";
    default:
        return "merge";
    }
}

} // namespace ocmap
