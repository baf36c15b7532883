// The walkers of native answers. Leaves are called straight from the loop of their parent.
#include "engine/walk_xo.h"

#include "engine/request.h"
#include "engine/trace.h"
#include "engine/walk.h"

namespace ocoptical {

namespace {

// A container or list calls the leaves below it itself.
rcode visit(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree) {
    return has_subtree(model.kind) ? walk_xo(ctx, model, node, tree) : model.callback.node(ctx, node, tree);
}

const model_node *match(zmf_map_ctx ctx, const model_node &model, const char *tag) {
    for (const model_node &child : children_of(model)) {
        if ((!child.only_get || is_get(ctx)) && zmf_map_do_these_match(tag, child.tag)) {
            return &child;
        }
    }
    return nullptr;
}

rcode walk_unknown(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree) {
    if (!zmf_map_do_these_match(node->ns, model.ns)) {
        return model.augments(ctx, node, tree);
    }
    if (model.names_unknown_tag) {
        WALK_TRACE(TRC("Unsupported tag `%s`. Ignoring."), shown(node->tag));
    } else {
        WALK_TRACE(TRC("Unsupported tag. Ignoring."));
    }
    return RC_OK;
}

rcode walk_children(zmf_map_ctx ctx, const model_node &model, const subtree &below, zmf_datatree *tree) {
    rcode status = RC_OK;
    for (uint32_t at = 0; at < below.count && status == RC_OK; ++at) {
        zmf_datatree *child = &below.children[at];
        if (child->tag == nullptr) {
            status = note_missing_tag(ctx, model);
        } else if (const model_node *known = match(ctx, model, child->tag)) {
            status = visit(ctx, *known, child, tree);
        } else {
            status = walk_unknown(ctx, model, child, tree);
        }
    }
    return status;
}

rcode walk_container(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, const subtree &below,
                     zmf_datatree *tree) {
    zmf_map_add_to_node_hierarchy(ctx, node, ZMF_HIER_CONTAINER);
    rcode status = model.callback.container(ctx, node, below.count, tree);
    if (status == RC_OK) {
        status = walk_children(ctx, model, below, tree);
    }
    zmf_map_remove_from_node_hierarchy(ctx, node);
    return status;
}

void mark_keys(const model_node &model, const subtree &below) {
    for (uint32_t at = 0; at < below.count; ++at) {
        for (const char *key : model.native_keys) {
            if (key != nullptr && zmf_map_do_these_match(below.children[at].tag, key)) {
                below.children[at].is_key = 1;
                below.children[at].added_key = 1;
            }
        }
    }
}

rcode walk_list(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, const subtree &below,
                zmf_datatree *tree) {
    if (below.count == 0) {
        WALK_TRACE(ERR("No keys specified with a list node."));
    }
    zmf_map_add_to_node_hierarchy(ctx, node, ZMF_HIER_LIST);
    rcode status = zmf_map_update_current_list_node(ctx, model.list_path);
    if (status == RC_OK) {
        mark_keys(model, below);
        status = model.callback.node(ctx, node, tree);
        if (status == RC_NOT_MAPPED) {
            // The entry does not belong to the optical view.
            zmf_map_remove_from_node_hierarchy(ctx, node);
            return RC_OK;
        }
    }
    const uint8_t depth = ctx->req_ctx->output_list_depth;
    zmf_add_to_output_list_ctx(ctx, node, tree);
    const bool grown = ctx->req_ctx->output_list_depth > depth;
    if (status == RC_OK) {
        status = walk_children(ctx, model, below, tree);
    }
    zmf_map_remove_from_node_hierarchy(ctx, node);
    if (grown) {
        zmf_remove_from_output_list_ctx(ctx, node, tree);
    }
    return status == RC_NOT_MAPPED ? RC_OK : status;
}

} // namespace

rcode walk_xo(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree) {
    rcode status = begin_walk(ctx, model, node, tree);
    if (status != RC_OK) {
        return status;
    }
    subtree below;
    status = take_subtree(ctx, model, node, &below);
    if (status == RC_OK) {
        status = model.kind == node_kind::list ? walk_list(ctx, model, node, below, tree)
                                               : walk_container(ctx, model, node, below, tree);
    }
    WALK_TRACE(TRC("End"));
    return status;
}

rcode enter_augment_xo(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree) {
    rcode status = begin_walk(ctx, model, node, tree);
    if (status != RC_OK) {
        return status;
    }
    subtree below;
    status = take_subtree(ctx, model, node, &below);
    if (status == RC_OK) {
        WALK_TRACE(TRC("Processing tag '%s'"), shown(node->tag));
        if (node->tag == nullptr) {
            status = note_missing_tag(ctx, model);
        }
        // A missing tag matches nothing, and its status stays.
        const model_node *top = match(ctx, model, node->tag);
        const rcode walked = top != nullptr ? visit(ctx, *top, node, tree) : walk_unknown(ctx, model, node, tree);
        status = status != RC_OK ? status : walked;
    }
    WALK_TRACE(TRC("End"));
    return status;
}

} // namespace ocoptical
