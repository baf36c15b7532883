// Keyed paths: adds that reach an entry by its key and not by the walk's position.
#pragma once

#include "zmf.h"

namespace ocoptical {

// A record for the entry or leaf at a keyed path of `ns`; `format` takes the key. `kind` is ZMF_XPATH_*.
void prepare_keyed_path(zmf_map_xpath_op *op, zmf_datatree *tree, uint32_t kind, const char *ns, const char *format,
                        const char *key);

// A leaf at a keyed path, made where it is missing. One that is there already keeps its value and counts as success. A
// null value is an empty one. `caller` bears the trace.
rcode set_leaf(zmf_map_ctx ctx, zmf_datatree *tree, const char *ns, const char *format, const char *key,
               const char *value, const char *caller);

// The status of a keyed add; what is there already counts as success.
rcode settle_keyed_add(zmf_map_ctx ctx, rcode status, const char *caller);

} // namespace ocoptical
