// The descent over a request in OpenConfig terms: calls the callback of each node that the request reaches, and carries
// out on behalf of all callbacks what a replace, a delete, a read of a whole subtree and a content match mean.
#pragma once

#include "engine/model.h"

namespace ocoptical {

// Walks the node of a request by the model's row for it: a container, a list or a leaf.
rcode walk_ox(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree);

// Walks the one node that augments another model; its row is the model's augment entry.
rcode enter_augment_ox(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree);

} // namespace ocoptical
