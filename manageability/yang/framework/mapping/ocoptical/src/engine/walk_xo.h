// The descent over a native answer: calls the callback of each node. An unknown tag is never a failure.
#pragma once

#include "engine/model.h"

namespace ocoptical {

// Walks a container or list by the model's row for it.
rcode walk_xo(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree);

// Walks the one node that augments another model; its row is the model's augment entry.
rcode enter_augment_xo(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree);

} // namespace ocoptical
