#include "engine/up.h"

#include "engine/config_gate.h"
#include "namespaces.h"

namespace ocoptical {

namespace {

struct wanted {
    const char *paths[3];
};

wanted wanted_paths(zmf_map_ctx ctx, const up_leaf &to) {
    return {{to.key, config_gate_is_open(ctx) ? to.config : nullptr, wants_state(ctx) ? to.state : nullptr}};
}

} // namespace

rcode add_up(zmf_map_ctx ctx, zmf_datatree *tree, const up_leaf &to, const char *value, const zmf_datatree *source) {
    rcode status = RC_OK;
    for (const char *path : wanted_paths(ctx, to).paths) {
        if (path != nullptr && status == RC_OK) {
            status =
                zmf_map_datatree_add_path_flagged(ctx, tree, path, to.ns, value, source, nullptr, 0, to.cross_module);
        }
    }
    return status;
}

rcode add_identity_up(zmf_map_ctx ctx, zmf_datatree *tree, const up_leaf &to, const char *value, const char *value_ns,
                      const char *memory_tag) {
    rcode status = RC_OK;
    for (const char *path : wanted_paths(ctx, to).paths) {
        if (path == nullptr || status != RC_OK) {
            continue;
        }
        zmf_datatree *added = nullptr;
        status = zmf_map_datatree_add_path_flagged(ctx, tree, path, to.ns, value, nullptr, &added, 0, to.cross_module);
        if (added != nullptr) {
            added->value_ns = zmf_strdup(value_ns, memory_tag);
            added->has_value_ns = 1;
        }
    }
    return status;
}

rcode repair_optical_channel_namespace(zmf_map_ctx ctx, zmf_datatree *tree) {
    return zmf_map_datatree_update_namespace(ctx, tree, "/components/component/optical-channel",
                                             ZMF_NS_OC_TERMINAL_DEVICE, 1);
}

} // namespace ocoptical
