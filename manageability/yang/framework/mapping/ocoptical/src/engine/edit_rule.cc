// The rule of a plain leaf.
#include "engine/add.h"
#include "engine/request.h"

namespace ocoptical {

rcode add_by_edit_rule(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const target &at,
                       const char *value) {
    if (is_read(ctx)) {
        return add(ctx, tree, at, value);
    }
    return add(ctx, tree, at, zmf_map_is_request_delete(node) ? nullptr : value, node);
}

} // namespace ocoptical
