// What the walkers of both directions share.
#include "engine/walk.h"

#include "engine/export.h"

namespace ocoptical {

rcode begin_walk(zmf_map_ctx ctx, const model_node &model, const zmf_datatree *node, const zmf_datatree *tree) {
    assert(NULL != ctx);
    WALK_TRACE(TRC("Start"));
    if (node == nullptr || tree == nullptr) {
        static uint32_t filter_word = fresh_filter_word;
        return refuse_arguments(ctx, {model.walker, __LINE__, &filter_word});
    }
    return RC_OK;
}

rcode take_subtree(zmf_map_ctx ctx, const model_node &model, const zmf_datatree *node, subtree *below) {
    if (node->has_children) {
        *below = {node->children, node->child_count, true};
        if (below->children == nullptr && below->count != 0) {
            WALK_TRACE(ERR("Failed to get subtrees!"));
            return RC_SUBTREE_ERROR;
        }
    }
    return RC_OK;
}

rcode note_missing_tag(zmf_map_ctx ctx, const model_node &model) {
    WALK_TRACE(ERR("Tag name is not available!"));
    return RC_SUBTREE_ERROR;
}

} // namespace ocoptical
