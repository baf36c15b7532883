// The rule of a plain leaf.
#include "engine/add.h"
#include "engine/request.h"

namespace ocoptical {

namespace {

using add_fn = rcode (*)(zmf_map_ctx, zmf_datatree *, const target &, const char *, const zmf_datatree *);

rcode by_rule(add_fn add_one, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const target &at,
              const char *value) {
    if (is_read(ctx)) {
        return add_one(ctx, tree, at, value, nullptr);
    }
    return add_one(ctx, tree, at, zmf_map_is_request_delete(node) ? nullptr : value, node);
}

} // namespace

rcode add_by_edit_rule(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const target &at,
                       const char *value) {
    return by_rule(add, ctx, node, tree, at, value);
}

rcode add_across_by_edit_rule(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const target &at,
                              const char *value) {
    return by_rule(add_across, ctx, node, tree, at, value);
}

} // namespace ocoptical
