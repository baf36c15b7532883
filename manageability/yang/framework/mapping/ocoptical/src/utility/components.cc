// Components, below which optical channels stand.
#include "utility/components.h"

#include "namespaces.h"
#include "utility/paths.h"

namespace ocoptical {

rcode repair_optical_channel_namespace(zmf_map_ctx ctx, zmf_datatree *tree) {
    return zmf_map_datatree_update_namespace(ctx, tree, OC_OPTICAL_CHANNEL, ZMF_NS_OC_TERMINAL_DEVICE, 1);
}

} // namespace ocoptical
