// The adds that conversions make, named for what they add.
#pragma once

#include "zmf.h"

namespace ocoptical {

// Where a leaf, container or list stands in a native model.
struct target {
    const char *ns;
    const char *path; // absolute, without keys
};

inline rcode add(zmf_map_ctx ctx, zmf_datatree *tree, const target &at, const char *value,
                 const zmf_datatree *source = nullptr) {
    return zmf_map_datatree_add_path_flagged(ctx, tree, at.path, at.ns, value, source, nullptr, 0, 0);
}

// The same where the path's leading nodes belong to another module.
inline rcode add_across(zmf_map_ctx ctx, zmf_datatree *tree, const target &at, const char *value,
                        const zmf_datatree *source = nullptr) {
    return zmf_map_datatree_add_path_flagged(ctx, tree, at.path, at.ns, value, source, nullptr, 0, 1);
}

inline rcode add_list_across(zmf_map_ctx ctx, zmf_datatree *tree, const target &at,
                             const zmf_datatree *source = nullptr) {
    return zmf_map_datatree_add_path_flagged(ctx, tree, at.path, at.ns, nullptr, source, nullptr, 1, 1);
}

// One value of a leaf-list.
inline rcode add_leaf_list(zmf_map_ctx ctx, zmf_datatree *tree, const target &at, const char *value,
                           const zmf_datatree *source = nullptr) {
    return zmf_map_datatree_add_path_flagged(ctx, tree, at.path, at.ns, value, source, nullptr, 1, 0);
}

// Opens an entry, the place for what is added below the list afterwards.
inline rcode add_list(zmf_map_ctx ctx, zmf_datatree *tree, const target &at, const zmf_datatree *source = nullptr) {
    return add_leaf_list(ctx, tree, at, nullptr, source);
}

// The rule of a plain leaf: a read asks with the value and without a source, a delete takes no value, any other edit
// both.
rcode add_by_edit_rule(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const target &at,
                       const char *value);
rcode add_across_by_edit_rule(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const target &at,
                              const char *value);

} // namespace ocoptical
