// Components, below which optical channels stand.
#include "utility/components.h"

#include "exported.h"
#include "namespaces.h"
#include "utility/paths.h"

namespace ocoptical {

component_names::component_names(zmf_map_ctx ctx, const char *caller) {
    zmf_strcpy_s(caller, component, sizeof component, ctx->req_ctx->component_name);
    has_interface = oc_optical_convert_opticalchannel_to_interface(component, interface) == RC_OK;
    oc_optical_convert_compname_to_optname(component, ifname);
}

rcode repair_optical_channel_namespace(zmf_map_ctx ctx, zmf_datatree *tree) {
    return zmf_map_datatree_update_namespace(ctx, tree, OC_OPTICAL_CHANNEL, ZMF_NS_OC_TERMINAL_DEVICE, 1);
}

} // namespace ocoptical
