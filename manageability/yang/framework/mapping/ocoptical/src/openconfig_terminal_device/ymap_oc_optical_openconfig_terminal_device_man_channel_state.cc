// Conversions of a channel's live state: what is asked of its carrier, or of all carriers where no channel is named.
//
// To add one: a CONVERSION, named in the model's table and declared beside it.
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"

#include <cstring>
#include <span>

#include "engine/callback.h"
#include "engine/request.h"
#include "platform.h"
#include "utility/channel.h"
#include "utility/enumerations.h"
#include "utility/text.h"

using namespace ocoptical;

namespace {

enum carrier_kind : uint8_t { ethernet, otu, odu, unknown };
constexpr size_t carrier_kinds = unknown;

// By carrier_kind.
using carrier_targets = target[carrier_kinds];
using carrier_values = const char *[carrier_kinds];

constexpr carrier_targets admin_states = {
    {ZMF_NS_MEDIA_ETH_OPER, NATIVE_ETHERNET_INTERFACE "/admin-state"},
    {ZMF_NS_OTU_OPER, NATIVE_OTU_CONTROLLER "/info/state"},
    {ZMF_NS_ODU_OPER, NATIVE_ODU_CONTROLLER "/info/state"},
};
constexpr carrier_targets loopbacks = {
    {ZMF_NS_MEDIA_ETH_OPER, NATIVE_ETHERNET_INTERFACE "/phy-info/loopback"},
    {ZMF_NS_OTU_OPER, NATIVE_OTU_CONTROLLER "/info/loopback-mode"},
    {ZMF_NS_ODU_OPER, NATIVE_ODU_CONTROLLER "/info/loopback-mode"},
};
constexpr carrier_targets link_states = {
    {ZMF_NS_MEDIA_ETH_OPER, NATIVE_ETHERNET_INTERFACE "/oper-state-up"},
    {ZMF_NS_OTU_OPER, NATIVE_OTU_CONTROLLER "/info/state"},
    {ZMF_NS_ODU_OPER, NATIVE_ODU_CONTROLLER "/info/state"},
};

constexpr carrier_kind ethernet_first[] = {ethernet, otu, odu};
constexpr carrier_kind otu_first[] = {otu, ethernet, odu};

// ODU controllers, which stand last, are there with the optical terminal device.
std::span<const carrier_kind> on_this_device(std::span<const carrier_kind> order) {
    return hwinfo_has_optical_term_dev() ? order : order.first(order.size() - 1);
}

carrier_kind kind_of(uint32_t itype) {
    if (itype == ITYPE_ETHERNET) {
        return ethernet;
    }
    if (is_otu_class(itype)) {
        return otu;
    }
    return itype == ITYPE_ODU && hwinfo_has_optical_term_dev() ? odu : unknown;
}

carrier_kind classify(zmf_map_ctx ctx) {
    return kind_of(channel_under_walk(ctx).itype);
}

// The status of the last add.
rcode ask_all(zmf_map_ctx ctx, zmf_datatree *tree, const carrier_targets &at, const carrier_values &values,
              std::span<const carrier_kind> order) {
    rcode status = RC_OK;
    for (const carrier_kind kind : order) {
        status = add(ctx, tree, at[kind], values[kind]);
    }
    return status;
}

rcode ask_one(zmf_map_ctx ctx, zmf_datatree *tree, const carrier_targets &at, const carrier_values &values,
              carrier_kind kind) {
    if (kind == unknown) {
        zmf_oc_error_path(ctx);
        return RC_INVALID_ARGUMENTS;
    }
    return add(ctx, tree, at[kind], values[kind]);
}

// The native word for a state that the client filters by. The last row that matches decides.
const char *native_admin_state(zmf_map_ctx ctx, carrier_kind kind, const char *value, const char *otherwise,
                               const char *oc_self) {
    const enumeration *table = nullptr;
    switch (kind) {
    case ethernet:
        table = &ethernet_admin_state;
        break;
    case otu:
        TRACE(ctx, TRC("OC_OPT_TERM:  OTU/Coherent CONTROLLER"));
        table = &otu_admin_state;
        break;
    case odu:
        TRACE(ctx, TRC("OC_OPT_TERM:  ODU CONTROLLER"));
        table = &odu_admin_state;
        break;
    case unknown:
        return otherwise;
    }
    const char *low = look_up(oc_self, *table, direction::to_low, value, pick::last);
    return low != nullptr ? low : otherwise;
}

} // namespace

CONVERSION(oc_optical_state_admin_state_to_low) {
    const char *low = ethernet_admin_state.low[0];
    rcode status = RC_OK;
    if (node->value != nullptr) {
        // The channel's number is not read yet at this point, so that a filter goes down as no filter.
        char name[text_size] = "";
        const carrier_kind kind = kind_of(oc_optical_convert_logical_index_to_interface("", name));
        low = native_admin_state(ctx, kind, node->value, low, oc_self);
        if (kind == unknown) {
            TRACE(ctx, ERR("OC_OPT_TERM: INTF NOT FOUND"));
            zmf_oc_error_path(ctx);
            status = RC_INVALID_ARGUMENTS;
        }
    }
    if (!is_get(ctx)) {
        return status;
    }
    const carrier_values values = {low, low, low};
    if (ctx->req_ctx->logical_index == 0) {
        return ask_all(ctx, tree, admin_states, values, on_this_device(ethernet_first));
    }
    const carrier_kind kind = classify(ctx);
    if (kind == unknown) {
        TRACE(ctx, ERR("OC_OPT_TERM:  INTF NOT FOUND"));
    }
    return ask_one(ctx, tree, admin_states, values, kind);
}

CONVERSION(oc_optical_state_loopback_to_low) {
    if (!is_get(ctx)) {
        return RC_OK;
    }
    const char *none = loopback_mode.low[0]; // whatever the client filters by
    const carrier_values values = {none, none, none};
    const int32_t index = ctx->req_ctx->logical_index;
    return index == 0 ? ask_all(ctx, tree, loopbacks, values, on_this_device(otu_first))
                      : ask_one(ctx, tree, loopbacks, values, classify(ctx));
}

CONVERSION(oc_optical_state_link_state_to_low) {
    if (!is_get(ctx)) {
        return RC_OK;
    }
    static constexpr carrier_values up = {"true", "up", "up"};
    static constexpr carrier_values down = {"false", "down", "down"};
    static constexpr carrier_values neither = {"", "", ""};
    const auto says = [&](const char *text) { return node->value != nullptr && strcmp(node->value, text) == 0; };
    const carrier_values &values = says("UP") ? up : says("DOWN") ? down : neither;
    const int32_t index = ctx->req_ctx->logical_index;
    // All ODU controllers are asked on every device.
    return index == 0 ? ask_all(ctx, tree, link_states, values, otu_first)
                      : ask_one(ctx, tree, link_states, values, classify(ctx));
}

CONVERSION(oc_optical_tti_msg_recv_to_tti_ascii_string_high_to_low) {
    static constexpr target received{ZMF_NS_OTU_OPER, NATIVE_OTU_CONTROLLER "/info/tti-mode/rec/full-tti-ascii-string"};
    return hwinfo_has_optical_term_dev() && is_read(ctx) ? add(ctx, tree, received, node->value) : RC_OK;
}

// The client's value is not asked for.

CONVERSION(oc_optical_eth_state_client_als_to_low) {
    static constexpr target squelch{ZMF_NS_MEDIA_ETH_OPER,
                                    "ethernet-interface/interfaces/interface/layer1-info/laser-squelch-enabled"};
    return is_read(ctx) ? add(ctx, tree, squelch, "false") : RC_OK;
}

CONVERSION(oc_optical_eth_state_als_delay_to_low) {
    static constexpr target holdoff{ZMF_NS_MEDIA_ETH_OPER,
                                    "ethernet-interface/interfaces/interface/phy-info/holdoff-time"};
    return is_read(ctx) ? add(ctx, tree, holdoff, nullptr) : RC_OK;
}
