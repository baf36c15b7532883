// Hand-written callbacks of openconfig-terminal-device: the channel list, its key, config/index and state/index.
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"

#include "engine/callback.h"
#include "engine/request.h"
#include "exported.h"
#include "platform.h"
#include "utility/channel.h"
#include "utility/range.h"
#include "utility/scan.h"
#include "utility/text.h"

using namespace ocoptical;

namespace {

constexpr range channel_index_range{1, 100000};

constexpr target channel{CFG, NATIVE_CHANNEL};
constexpr target channel_index{CFG, NATIVE_CHANNEL "/channel-index"};
constexpr target controller{ZMF_NS_OTU_OPER, NATIVE_OTU_CONTROLLER};
constexpr target controller_name{ZMF_NS_OTU_OPER, NATIVE_OTU_CONTROLLER "/controller-name"};
constexpr target ethernet_interface{ZMF_NS_MEDIA_ETH_OPER, NATIVE_ETHERNET_INTERFACE};
constexpr target interface_name{ZMF_NS_MEDIA_ETH_OPER, NATIVE_ETHERNET_INTERFACE "/interface-name"};

rcode open_channel(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    if (zmf_map_is_request_delete(node)) {
        return add_list(ctx, tree, channel, node);
    }
    if (wants_sibling(ctx)) {
        (void)tdmgr_ocoptical_dll_interaction(ctx, node, tree);
    }
    return add_list(ctx, tree, channel);
}

// The operational list of the carrier of the channel under walk; of all carriers where the request names no channel.
rcode open_carriers(zmf_map_ctx ctx, zmf_datatree *tree) {
    const char *index = nullptr;
    const rcode status = zmf_map_get_node_info(ctx, OC_CHANNEL, "index", &index);
    if (index == nullptr) {
        (void)add_list(ctx, tree, controller);
        return add_list(ctx, tree, ethernet_interface);
    }
    char name[text_size] = "";
    const uint32_t itype = oc_optical_convert_logical_index_to_interface(index, name);
    (void)scan_number(index, &ctx->req_ctx->logical_index);
    if (itype == ITYPE_ETHERNET) {
        return add_list(ctx, tree, ethernet_interface);
    }
    return is_otu_class(itype) ? add_list(ctx, tree, controller) : status;
}

// The carrier by its name; `status` where there is none to ask for.
rcode ask_for_carrier(zmf_map_ctx ctx, zmf_datatree *tree, uint32_t itype, const char *name, rcode status) {
    if (itype == ITYPE_ETHERNET) {
        return add(ctx, tree, interface_name, name);
    }
    return is_otu_class(itype) ? add(ctx, tree, controller_name, name) : status;
}

rcode enter_channel(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const char * /*oc_self*/) {
    const rcode status = open_channel(ctx, node, tree);
    return is_get(ctx) ? open_carriers(ctx, tree) : status;
}

} // namespace

// By hand down to its frame: the number of the entry before is forgotten even where the arguments are refused.
extern "C" OC_EXPORT rcode ymap_ox_oc_optical_openconfigterminaldevice_list_lvla_terminaldevice_logicalchannels_channel(
    zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    assert(NULL != ctx);
    static constinit frame f = OC_FRAME;
    ctx->req_ctx->logical_index = 0;
    return framed(f, enter_channel, ctx, node, tree);
}

CONVERSION(ymap_ox_oc_optical_openconfigterminaldevice_leaf_lvla_terminaldevice_channel_index) {
    char name[text_size] = "";
    const uint32_t itype = oc_optical_convert_logical_index_to_interface(node->value, name);
    int32_t index = 0;
    if (node->value != nullptr && !(scan_number(node->value, &index) && is_within(channel_index_range, index))) {
        TRACE(ctx, ERR("Logical Index  is not allowed = %s"), node->value); // two blanks: as operators know it
        return refuse_range(ctx, "Logical channel index is not within the allowed range: %d - %d", channel_index_range);
    }
    ctx->req_ctx->logical_index = index;
    if (!is_read(ctx)) {
        (void)zmf_map_is_request_delete(node); // asked and not heeded: a key keeps its value in a delete
        return add(ctx, tree, channel_index, node->value, node);
    }
    (void)add(ctx, tree, channel_index, node->value);
    (void)add_list(ctx, tree, controller);
    const rcode status = add_list(ctx, tree, ethernet_interface);
    return is_get(ctx) ? ask_for_carrier(ctx, tree, itype, name, status) : status;
}

CONVERSION(ymap_ox_oc_optical_openconfigterminaldevice_leaf_lvla_terminaldevice_config_index) {
    return ymap_ox_oc_optical_openconfigterminaldevice_leaf_lvla_terminaldevice_channel_index(ctx, node, tree);
}

// Any number is asked for here, and the entry's own is asked and not heeded.
CONVERSION(ymap_ox_oc_optical_openconfigterminaldevice_leaf_lvla_terminaldevice_state_index) {
    char name[text_size] = "";
    const uint32_t itype = oc_optical_convert_logical_index_to_interface(node->value, name);
    int32_t index = 0;
    if (node->value != nullptr) {
        (void)scan_number(node->value, &index);
    }
    ctx->req_ctx->logical_index = index;
    if (!is_get(ctx)) {
        return RC_OK;
    }
    const char *key = nullptr;
    (void)zmf_map_get_node_info(ctx, OC_CHANNEL, "index", &key);
    (void)add(ctx, tree, channel_index, node->value);
    (void)add_list(ctx, tree, controller);
    const rcode status = add_list(ctx, tree, ethernet_interface);
    return ask_for_carrier(ctx, tree, itype, name, status);
}
