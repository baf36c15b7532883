// Keyed paths: adds that reach an entry by its key and not by the walk's position.
#include "utility/keyed_path.h"

#include <cstdio>

#include "engine/trace.h"
#include "utility/safe_text.h"

namespace ocoptical {

namespace {

constexpr uint32_t xpath_operation = 1; // there is no other

} // namespace

void prepare_keyed_path(zmf_map_xpath_op *op, zmf_datatree *tree, uint32_t kind, const char *ns, const char *format,
                        const char *key) {
    clear(op, sizeof *op);
    op->tree = tree;
    op->operation = xpath_operation;
    op->kind = kind;
    snprintf(op->ns, sizeof op->ns, "%s", ns);
    snprintf(op->xpath, sizeof op->xpath, format, key);
}

rcode settle_keyed_add(zmf_map_ctx ctx, rcode status, const char *caller) {
    if (status != RC_LEAF_EXISTS) {
        return status;
    }
    OC_TRACE_AS(ctx, caller, TRC("leaf already exist"));
    return RC_OK;
}

rcode set_leaf(zmf_map_ctx ctx, zmf_datatree *tree, const char *ns, const char *format, const char *key,
               const char *value, const char *caller) {
    zmf_map_xpath_op op;
    prepare_keyed_path(&op, tree, ZMF_XPATH_SET_LEAF, ns, format, key);
    snprintf(op.value, sizeof op.value, "%s", value != nullptr ? value : "");
    return settle_keyed_add(ctx, zmf_map_tree_xpath_operations(ctx, &op), caller);
}

} // namespace ocoptical
