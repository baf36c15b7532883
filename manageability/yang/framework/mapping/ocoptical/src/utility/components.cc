// Components, below which optical channels stand.
#include "utility/components.h"

#include "engine/add.h"
#include "exported.h"
#include "namespaces.h"
#include "utility/paths.h"

namespace ocoptical {

component_names::component_names(zmf_map_ctx ctx, const char *caller) {
    zmf_strcpy_s(caller, component, sizeof component, ctx->req_ctx->component_name);
    has_interface = oc_optical_convert_opticalchannel_to_interface(component, interface) == RC_OK;
    oc_optical_convert_compname_to_optname(component, ifname);
}

rcode open_component(zmf_map_ctx ctx, zmf_datatree *tree, const char *component) {
    return zmf_map_search_or_add_list(ctx, tree, &ctx->req_ctx->list_cursor, OC_COMPONENT, component, "name",
                                      ZMF_NS_OC_PLATFORM);
}

rcode open_component_config(zmf_map_ctx ctx, zmf_datatree *tree, const char *component) {
    static constexpr target name{ZMF_NS_OC_PLATFORM, OC_COMPONENT "/config/name"};
    (void)open_component(ctx, tree, component);
    return add_across(ctx, tree, name, component);
}

rcode read_native_key(zmf_map_ctx ctx, const char *list, const char *key, const char **text) {
    *text = nullptr;
    const rcode status = zmf_map_get_node_info(ctx, list, key, text);
    return status == RC_OK && *text == nullptr ? RC_SUBTREE_ERROR : status;
}

rcode repair_optical_channel_namespace(zmf_map_ctx ctx, zmf_datatree *tree) {
    return zmf_map_datatree_update_namespace(ctx, tree, OC_OPTICAL_CHANNEL, ZMF_NS_OC_TERMINAL_DEVICE, 1);
}

} // namespace ocoptical
