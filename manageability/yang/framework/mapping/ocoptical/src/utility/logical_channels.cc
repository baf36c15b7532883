// Native entries of an answer and the logical channels that they carry.
#include "utility/logical_channels.h"

#include "exported.h"
#include "namespaces.h"
#include "utility/paths.h"

namespace ocoptical {

carrier::carrier(zmf_map_ctx ctx, const carrier_list &list)
    : name_read(zmf_map_get_node_info(ctx, list.path, list.key, &name)),
      channel_found(oc_optical_convert_interface_to_logical_id(name, logical_id)) {}

rcode open_channel(zmf_map_ctx ctx, zmf_datatree *tree, const char *logical_id) {
    return zmf_map_search_or_add_list(ctx, tree, &ctx->req_ctx->list_cursor, OC_CHANNEL, logical_id, "index",
                                      ZMF_NS_OC_TERMINAL_DEVICE);
}

rcode find_controller_channel(const char *optics, char *logical_id) {
    char controller[text_size] = "";
    (void)oc_optical_convert_optics_to_controller(optics, controller);
    return oc_optical_convert_interface_to_logical_id(controller, logical_id);
}

optics_carrier::optics_carrier(zmf_map_ctx ctx, zmf_datatree *tree, const carrier_list &ports)
    : name_read(zmf_map_get_node_info(ctx, ports.path, ports.key, &name)) {
    const rcode status = find_controller_channel(name, logical_id);
    has_channel = status == RC_OK;
    is_valid = is_valid_channel_for_esnr(name, ctx, tree, status) != 0;
}

} // namespace ocoptical
