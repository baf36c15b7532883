// Native leaves up to OpenConfig: the config and the state leaf of one value, each where the answer wants it.
#pragma once

#include "zmf.h"

namespace ocoptical {

struct up_leaf {
    const char *ns;
    const char *config; // behind the gate; null: none
    const char *state;  // in a get of operational data; null: none
    unsigned int cross_module = 0;
    const char *key = nullptr; // always, before the others
};

// Adds a value where it is wanted, in the order key, config, state. One add does not wait for another: the status is
// that of the first that failed. `value` converts the node anew for each add; null: the node's own value.
rcode add_up(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const up_leaf &to, zmf_value_fn value,
             const zmf_datatree *source);

// The same with a text that is converted already.
rcode add_text_up(zmf_map_ctx ctx, zmf_datatree *tree, const up_leaf &to, const char *text);

// The same with an identity value: the nodes that are added bear the namespace of its module.
rcode add_identity_up(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const up_leaf &to,
                      zmf_value_fn value, const char *value_ns, const char *memory_tag);

} // namespace ocoptical
