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

// The entry of a component becomes the one that later adds fall under; it is made where it is missing.
rcode open_component(zmf_map_ctx ctx, zmf_datatree *tree, const char *component);
// The same with its config/name.
rcode open_component_config(zmf_map_ctx ctx, zmf_datatree *tree, const char *component);

// The key of the native entry under walk. A key without text is as good as none.
rcode read_native_key(zmf_map_ctx ctx, const char *list, const char *key, const char **text);

// Gives the optical-channel container, which an add of another module may have made, its own namespace.
rcode repair_optical_channel_namespace(zmf_map_ctx ctx, zmf_datatree *tree);

} // namespace ocoptical
