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

// Adds the value where it is wanted, in the order key, config, state; the first failure ends it.
rcode add_up(zmf_map_ctx ctx, zmf_datatree *tree, const up_leaf &to, const char *value, const zmf_datatree *source);

// The same with an identity value: the nodes that are added bear the namespace of its module.
rcode add_identity_up(zmf_map_ctx ctx, zmf_datatree *tree, const up_leaf &to, const char *value, const char *value_ns,
                      const char *memory_tag);

// Gives the optical-channel container, which an add of another module may have made, its own namespace.
rcode repair_optical_channel_namespace(zmf_map_ctx ctx, zmf_datatree *tree);

} // namespace ocoptical
