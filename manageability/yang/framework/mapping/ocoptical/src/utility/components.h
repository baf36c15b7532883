// Components, below which optical channels stand.
#pragma once

#include "utility/text.h"
#include "zmf.h"

namespace ocoptical {

// The component under walk, and what its name gives: names for the native models. A component name that does not fit
// counts as empty; a component that is not named like an optical channel has no interface.
struct component_names {
    explicit component_names(zmf_map_ctx ctx, const char *caller);

    char component[text_size] = "";
    char interface[text_size] = ""; // "Optics0/1/0/2"
    char ifname[text_size] = "";    // "0_1-OpticalChannel0_1_0_2"
    bool has_interface = false;
};

// Gives the optical-channel container, which an add of another module may have made, its own namespace.
rcode repair_optical_channel_namespace(zmf_map_ctx ctx, zmf_datatree *tree);

} // namespace ocoptical
