// Hand-written callbacks and conversions of Corvane-drivers-media-eth-oper.
//
// To add a leaf: a row of CHANNEL_UP, named in the model's table and declared beside it.
#include "corvane_drivers_media_eth_oper/ymap_oc_optical_corvane_drivers_media_eth_oper.h"

#include <cstring>

#include "engine/callback.h"
#include "engine/request.h"
#include "utility/admin_state.h"
#include "utility/channel_up.h"
#include "utility/enumerations.h"
#include "utility/keyed_path.h"
#include "utility/logical_channels.h"

using namespace ocoptical;

namespace {

constexpr carrier_list interfaces{NATIVE_ETHERNET_INTERFACE, "interface-name"};
constexpr carrier_list statistics{NATIVE_ETHERNET_STATISTIC, "interface-name"};

// A channel is reached from both lists: the entry is the same.
rcode open_channel_of(zmf_map_ctx ctx, zmf_datatree *tree, const carrier_list &list, const char *oc_self) {
    const carrier at(ctx, list);
    if (!at.has_channel()) {
        return at.name_read;
    }
    TRACE(ctx, TRC("LINK: intf_name = %s, logical_id = %s"), shown(at.name), static_cast<const char *>(at.logical_id));
    const rcode status = open_channel(ctx, tree, at.logical_id);
    TRACE(ctx, TRC("OC_OPT_TERM: rc_name = %d "), static_cast<int>(at.name_read));
    TRACE(ctx, TRC("OC_OPT_TERM: intf_name = %s, logical_id = %s"), shown(at.name),
          static_cast<const char *>(at.logical_id));
    return status;
}

} // namespace

CONVERSION(ymap_xo_oc_optical_corvanedriversmediaethoper_list_lvla_ethernetinterface_statistics_statistic) {
    return open_channel_of(ctx, tree, statistics, oc_self);
}

CONVERSION(ymap_xo_oc_optical_corvanedriversmediaethoper_list_lvla_ethernetinterface_interfaces_interface) {
    return open_channel_of(ctx, tree, interfaces, oc_self);
}

CONVERSION(oc_optical_oper_state_up_to_link_state_to_high) {
    const carrier at(ctx, interfaces);
    const char *link_state = nullptr;
    if (node->value != nullptr && strcmp(node->value, "true") == 0) {
        link_state = "UP";
    } else if (node->value != nullptr && strcmp(node->value, "false") == 0) {
        link_state = "DOWN";
    }
    if (link_state == nullptr) {
        return at.name_read;
    }
    return add_channel_leaf(ctx, tree, at, OC_CHANNEL "/state/link-state", link_state);
}

// The counter is only the occasion: an Ethernet channel with statistics snoops.
CONVERSION(oc_optical_lldp_snooping_to_high) {
    const carrier at(ctx, statistics);
    if (!at.has_channel() || !is_get(ctx)) {
        return at.name_read;
    }
    return set_leaf(ctx, tree, ZMF_NS_OC_TERMINAL_DEVICE, OC_CHANNEL "[index=%s]/ethernet/lldp/state/snooping",
                    at.logical_id, "true", oc_self);
}

// clang-format off
CHANNEL_UP(oc_optical_eth_oper_loopback_to_high,                                       interfaces, OC_CHANNEL "/state/loopback-mode",                converted(oc_optical_convert_oper_loopback_mode_to_high),
           TRC("ETHERNET LOOPBACK: intf_name = %s, logical_id = %s"), TRC("ETHERNET LOOPBACK Values : low data: %s high data: %s"))
CHANNEL_UP(oc_optical_eth_state_als_delay_to_high,                                     interfaces, OC_CHANNEL "/ethernet/state/als-delay",           raw(),
           TRC("ETHERNET ALS DELAY: intf_name = %s, logical_id = %s"), TRC("ETHERNET ALS DELAY: Values : low data: %s high data: %s"))
CHANNEL_UP(oc_optical_eth_state_client_als_to_high,                                    interfaces, OC_CHANNEL "/ethernet/state/client-als",          converted(oc_optical_convert_oper_client_als_to_high),
           TRC("ETHERNET CLIENT ALS: intf_name = %s, logical_id = %s"), TRC("ETHERNET CLIENT ALS: Values : low data: %s high data: %s"))
CHANNEL_UP(oc_optical_rx_pause_frame_to_in_pause_frame_low_to_high,                    statistics, OC_CHANNEL "/ethernet/state/in-mac-pause-frames",  raw())
CHANNEL_UP(oc_optical_rx_octet_frame_1519_to_max_to_in_oversize_frame_low_to_high,     statistics, OC_CHANNEL "/ethernet/state/in-oversize-frames",   raw())
CHANNEL_UP(oc_optical_dropped_jabber_pkts_to_in_jabber_frames_low_to_high,             statistics, OC_CHANNEL "/ethernet/state/in-jabber-frames",     raw())
CHANNEL_UP(oc_optical_dropped_fragments_to_in_fragment_frames_low_to_high,             statistics, OC_CHANNEL "/ethernet/state/in-fragment-frames",   raw())
CHANNEL_UP(oc_optical_dropped_pkts_with_crc_align_errors_to_in_crc_errors_low_to_high, statistics, OC_CHANNEL "/ethernet/state/in-crc-errors",        raw())
CHANNEL_UP(oc_optical_tx_pause_frames_to_out_pause_frames_low_to_high,                 statistics, OC_CHANNEL "/ethernet/state/out-mac-pause-frames", raw())
// clang-format on

// For modules that load the plug-in. The channel is looked up last, and any request adds the leaf.
CONVERSION(oc_optical_ether_admin_state_to_high) {
    static constexpr traced_enumeration states = {ethernet_admin_state,
                                                  TRC("OC_OPT : i %d ADMIN STATE %s ret %d ind %d"),
                                                  TRC(" ADMIN STATE  LOw:%s, HIGH: %s ")};
    static uint32_t words[] = {fresh_filter_word, fresh_filter_word};
    const char *state =
        look_up_traced(ctx, states, node->value, {oc_self, __LINE__, &words[0]}, {oc_self, __LINE__, &words[1]});
    const char *name = nullptr;
    (void)zmf_map_get_node_info(ctx, interfaces.path, interfaces.key, &name);
    uint32_t mode = 0;
    const rcode status = get_maint_mode(ctx, name, &mode);
    TRACE(ctx, TRC(" Maint value is %d"), static_cast<int>(mode));
    state = in_mode(mode, state);
    TRACE(ctx, TRC(" Final INPUT VALUE : %s"), shown(state));
    char logical_id[text_size] = "";
    const rcode found = oc_optical_convert_interface_to_logical_id(name, logical_id);
    TRACE(ctx, TRC(" ETHERNET admin state to high: intf_name = %s, logical_id = %s"), shown(name),
          static_cast<const char *>(logical_id));
    TRACE(ctx, TRC(" ETHERNET admin state Values : low data: %s high data: %s"), shown(node->value), shown(state));
    static constexpr target admin_state{ZMF_NS_OC_TERMINAL_DEVICE, OC_CHANNEL "/state/admin-state"};
    return found == RC_OK ? add(ctx, tree, admin_state, state) : status;
}
