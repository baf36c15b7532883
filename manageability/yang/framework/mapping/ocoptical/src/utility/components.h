// Components, below which optical channels stand.
#pragma once

#include "zmf.h"

namespace ocoptical {

// Gives the optical-channel container, which an add of another module may have made, its own namespace.
rcode repair_optical_channel_namespace(zmf_map_ctx ctx, zmf_datatree *tree);

} // namespace ocoptical
