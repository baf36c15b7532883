// Adding config and state leaves by what the answer wants.
#include "engine/up.h"

#include "engine/config_gate.h"

namespace ocoptical {

namespace {

// Calls `add` with each path that is wanted.
template <typename Add>
rcode add_where_wanted(zmf_map_ctx ctx, const up_leaf &to, Add add) {
    rcode first_failure = RC_OK;
    const auto add_if = [&](bool wanted, const char *path) {
        const rcode status = wanted && path != nullptr ? add(path) : RC_OK;
        if (first_failure == RC_OK) {
            first_failure = status;
        }
    };
    add_if(true, to.key);
    add_if(config_gate_is_open(ctx), to.config);
    add_if(wants_state(ctx), to.state);
    return first_failure;
}

void set_value_namespace(zmf_datatree *node, const char *value_ns, const char *memory_tag) {
    if (node->has_value_ns) {
        kvo_named_free(node->value_ns);
    }
    node->value_ns = zmf_strdup(value_ns, memory_tag);
    node->has_value_ns = 1;
}

} // namespace

rcode add_up(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const up_leaf &to, zmf_value_fn value,
             const zmf_datatree *source) {
    return add_where_wanted(ctx, to, [&](const char *path) {
        return zmf_map_datatree_add_path_flagged(ctx, tree, path, to.ns,
                                                 value != nullptr ? value(ctx, node, tree) : node->value, source,
                                                 nullptr, 0, to.cross_module);
    });
}

rcode add_text_up(zmf_map_ctx ctx, zmf_datatree *tree, const up_leaf &to, const char *text) {
    return add_where_wanted(ctx, to, [&](const char *path) {
        return zmf_map_datatree_add_path_flagged(ctx, tree, path, to.ns, text, nullptr, nullptr, 0, to.cross_module);
    });
}

rcode add_identity_up(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const up_leaf &to,
                      zmf_value_fn value, const char *value_ns, const char *memory_tag) {
    return add_where_wanted(ctx, to, [&](const char *path) {
        zmf_datatree *added = nullptr;
        const rcode status = zmf_map_datatree_add_path_flagged(ctx, tree, path, to.ns, value(ctx, node, tree), nullptr,
                                                               &added, 0, to.cross_module);
        if (added != nullptr) {
            set_value_namespace(added, value_ns, memory_tag);
        }
        return status;
    });
}

} // namespace ocoptical
