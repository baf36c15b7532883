// What the walkers of both directions share: their beginning, and the children of a node.
#pragma once

#include "engine/model.h"
#include "engine/trace.h"

namespace ocoptical {

// A walker traces under the name that its node's row gives, with the line of the statement in the engine;
// a statement has one filter word for all walkers.
#define WALK_TRACE(...) OC_TRACE_AS(ctx, model.walker, __VA_ARGS__)

// The children of a node as a walker works on them.
struct subtree {
    zmf_datatree *children = nullptr;
    uint32_t count = 0;
    bool present = false; // has_children
};

// The context asserted, "Start", the argument test.
rcode begin_walk(zmf_map_ctx ctx, const model_node &model, const zmf_datatree *node, const zmf_datatree *tree);

// A null array with a count is an error.
rcode take_subtree(zmf_map_ctx ctx, const model_node &model, const zmf_datatree *node, subtree *below);

rcode note_missing_tag(zmf_map_ctx ctx, const model_node &model);

} // namespace ocoptical
