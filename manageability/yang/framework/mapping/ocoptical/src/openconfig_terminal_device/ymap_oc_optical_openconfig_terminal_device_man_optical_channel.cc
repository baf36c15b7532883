// Conversions of an optical channel: its container, configuration and state, and the delete of a whole one.
//
// Both native homes of an optical channel are opened, the terminal device's and the interface's; the platform decides
// which of them a leaf then uses. To add a leaf: a row of the family that it belongs to, or a CONVERSION, named in the
// model's table and declared beside it.
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"

#include <cstdio>

#include "engine/callback.h"
#include "engine/client_text.h"
#include "engine/request.h"
#include "platform.h"
#include "utility/channel.h"
#include "utility/components.h"
#include "utility/performance_paths.h"
#include "utility/range.h"
#include "utility/scan.h"
#include "utility/text.h"

using namespace ocoptical;

namespace {

constexpr target interface_configuration{ZMF_NS_IFMGR_CFG, NATIVE_INTERFACE_CONFIGURATION};
constexpr target interface_name{ZMF_NS_IFMGR_CFG, NATIVE_INTERFACE_CONFIGURATION "/interface-name"};
constexpr target interface_active{ZMF_NS_IFMGR_CFG, NATIVE_INTERFACE_CONFIGURATION "/active"};
constexpr target optical_channel{CFG, NATIVE_OPTICAL_CHANNEL};
constexpr target optical_channel_ifname{CFG, NATIVE_OPTICAL_CHANNEL "/ifname"};

constexpr target carrier{ZMF_NS_OPTICS_CFG, NATIVE_OPTICS "/optics-dwdm-carrier"};
constexpr target carrier_value{ZMF_NS_OPTICS_CFG, NATIVE_OPTICS "/optics-dwdm-carrier/param-value"};
constexpr target carrier_type{ZMF_NS_OPTICS_CFG, NATIVE_OPTICS "/optics-dwdm-carrier/param-type"};
constexpr target carrier_grid{ZMF_NS_OPTICS_CFG, NATIVE_OPTICS "/optics-dwdm-carrier/grid-type"};
constexpr target transmit_power{ZMF_NS_OPTICS_CFG, NATIVE_OPTICS "/optics-transmit-power"};
constexpr target fastpoll{ZMF_NS_OPTICS_CFG, NATIVE_OPTICS "/optics-fastpoll"};
constexpr target rx_threshold{ZMF_NS_OPTICS_CFG, NATIVE_RX_THRESHOLD};
constexpr target rx_threshold_type{ZMF_NS_OPTICS_CFG, NATIVE_RX_THRESHOLD "/rx-threshold-type"};
constexpr target rx_threshold_value{ZMF_NS_OPTICS_CFG, NATIVE_RX_THRESHOLD "/rx-threshold"};

constexpr target frequency{CFG, NATIVE_OPTICAL_CHANNEL "/frequency"};
constexpr target power{CFG, NATIVE_OPTICAL_CHANNEL "/power"};
constexpr target operational_mode{CFG, NATIVE_OPTICAL_CHANNEL "/operational-mode"};
constexpr target line_port{CFG, NATIVE_OPTICAL_CHANNEL "/line-port"};

// The keyed entry of an interface, without source in every request.
rcode open_interface(zmf_map_ctx ctx, zmf_datatree *tree, const char *name) {
    (void)add_list(ctx, tree, interface_configuration);
    (void)add(ctx, tree, interface_name, name);
    return add(ctx, tree, interface_active, "act");
}

rcode open_optical_channel(zmf_map_ctx ctx, zmf_datatree *tree, const char *ifname) {
    (void)add_list(ctx, tree, optical_channel);
    return add(ctx, tree, optical_channel_ifname, ifname);
}

} // namespace

CONTAINER_CONVERSION(oc_optical_optical_channel_to_low) {
    const component_names names(ctx, oc_self);
    TRACE(ctx, TRC("SIL: Comp name = %s, intf name = %s, "), names.component, names.interface);
    rcode status = RC_OK;
    if (names.has_interface) {
        status = open_interface(ctx, tree, names.interface);
    } else if (is_read(ctx)) {
        status = add_list(ctx, tree, interface_configuration);
    }
    if (names.component[0] != '\0') {
        status = open_optical_channel(ctx, tree, names.ifname);
    } else if (is_read(ctx)) {
        status = add_list(ctx, tree, optical_channel);
    }
    return status;
}

// Configuration.

namespace {

constexpr range frequency_range{186100000, 196137500}; // MHz
constexpr int32_t legacy_grid = 100;                   // MHz
constexpr range power_range{-1900, 500};               // 0.01 dBm
constexpr int32_t legacy_power_unit = 10;              // 0.01 dBm

rcode add_legacy_frequency(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const char *text) {
    if (is_read(ctx)) {
        return add_across(ctx, tree, carrier_value, text);
    }
    if (zmf_map_is_request_delete(node)) {
        return add_across(ctx, tree, carrier, nullptr, node);
    }
    (void)add_across(ctx, tree, carrier_value, text, node);
    (void)add_across(ctx, tree, carrier_type, "frequency", node);
    return add_across(ctx, tree, carrier_grid, "100mhz-grid", node);
}

} // namespace

CONVERSION(oc_optical_cfg_freq_to_low) {
    char mhz[text_size] = "";
    char on_legacy_grid[text_size] = "";
    if (node->value != nullptr) {
        int32_t number = 0;
        (void)scan_copy(oc_self, node->value, mhz, &number);
        if (!is_within(frequency_range, number)) {
            TRACE(ctx, ERR("Frequency is not allowed = %s * 1MHZ"), node->value);
            return refuse_range(ctx, "Frequency is not within the allowed range: %d - %d", frequency_range);
        }
        snprintf(on_legacy_grid, sizeof on_legacy_grid, "%d", number / legacy_grid);
    }
    if (hwinfo_has_legacy_optical_term_dev()) {
        return add_legacy_frequency(ctx, node, tree, on_legacy_grid);
    }
    return add_across_by_edit_rule(ctx, node, tree, frequency, mhz);
}

CONVERSION(oc_optical_cfg_op_power_to_low) {
    int32_t number = 0;
    char text[text_size] = "";
    const bool is_number = node->value != nullptr && scan_copy(oc_self, node->value, text, &number);
    const bool legacy = hwinfo_has_legacy_optical_term_dev();
    if (node->value != nullptr) {
        snprintf(text, sizeof text, "%d", legacy ? number / legacy_power_unit : number);
    }
    if (!is_read(ctx) && !zmf_map_is_request_delete(node) && !(is_number && is_within(power_range, number))) {
        TRACE(ctx, ERR("Invalid range of power"));
        set_err_msg(ctx, "target-output-power");
        zmf_oc_error_path(ctx);
        return refuse_range(ctx, "Target Output Power is not within the allowed range: %d - %d", power_range);
    }
    return add_across_by_edit_rule(ctx, node, tree, legacy ? transmit_power : power, text);
}

CONVERSION(oc_optical_cfg_oper_mode_to_low) {
    return add_by_edit_rule(ctx, node, tree, operational_mode, node->value);
}

namespace {

// A line port that is named by itself has to lie on the component that it is configured for.
bool lies_elsewhere(zmf_map_ctx ctx, const zmf_datatree *node) {
    if (ctx->req_ctx->walk_all == 1 || ctx->req_ctx->delete_walk != 0 || !node->has_value) {
        return false;
    }
    const char *component = nullptr;
    (void)zmf_map_get_node_info(ctx, OC_COMPONENT, "name", &component);
    return component != nullptr && node->value != nullptr &&
           oc_optical_check_lineport_rsip(component, node->value) != RC_OK;
}

} // namespace

CONVERSION(oc_optical_cfg_line_port_to_low) {
    char port[text_size] = "";
    oc_optical_convert_trans_to_interface(node->value, port);
    if (lies_elsewhere(ctx, node)) {
        TRACE(ctx, ERR("R/S-line-port-R/S/I/P should match with the R/S-component-name-R/S/I/P"));
        set_err_msg(ctx, "line-port should match with the component name");
        zmf_oc_error_path(ctx);
        return RC_VALUE_OUT_OF_RANGE;
    }
    return add_by_edit_rule(ctx, node, tree, line_port, port);
}

// State.

namespace {

// What a get opens for the state of an optical channel, in order. Without a usable name it asks for all ports.
enum class opened : uint8_t { list, name, number_if_named, plain, number };

struct opened_row {
    target at;
    opened what;
};

constexpr opened_row opened_port[] = {
    {{ZMF_NS_OPTICS_OPER, NATIVE_OPTICS_PORT}, opened::list},
    {{ZMF_NS_OPTICS_OPER, NATIVE_OPTICS_PORT "/name"}, opened::name},
};

// Where 30-second history stands for flex bins.
constexpr opened_row opened_history[] = {
    {{ZMF_NS_PMENGINE_OPER, PM_OPTICS_PORT_HISTORY}, opened::list},
    {{ZMF_NS_PMENGINE_OPER, PM_OPTICS_PORT_HISTORY "/name"}, opened::name},
    {{ZMF_NS_PMENGINE_OPER, PM_OPTICS_HISTORY}, opened::plain},
    {{ZMF_NS_PMENGINE_OPER, PM_OPTICS_HISTORY "/number"}, opened::number_if_named},
    {{ZMF_NS_PMENGINE_OPER, PM_OPTICS_TIMELINE}, opened::plain},
    {{ZMF_NS_PMENGINE_OPER, PM_OPTICS_TIMELINE "/number"}, opened::number},
};

rcode open_row(zmf_map_ctx ctx, zmf_datatree *tree, const opened_row &row, const component_names &names) {
    switch (row.what) {
    case opened::list:
        return names.has_interface ? add_list(ctx, tree, row.at) : add(ctx, tree, row.at, nullptr);
    case opened::name:
        return add(ctx, tree, row.at, names.interface);
    case opened::plain:
        return add(ctx, tree, row.at, nullptr);
    case opened::number_if_named:
    case opened::number:
        return add(ctx, tree, row.at, "1");
    }
    return RC_OK;
}

// No failure ends it early; the last add made is the result.
template <size_t rows>
rcode open_rows(zmf_map_ctx ctx, zmf_datatree *tree, const opened_row (&table)[rows], const component_names &names,
                rcode status) {
    for (const opened_row &row : table) {
        const bool needs_name = row.what == opened::name || row.what == opened::number_if_named;
        if (names.has_interface || !needs_name) {
            status = open_row(ctx, tree, row, names);
        }
    }
    return status;
}

} // namespace

CONTAINER_CONVERSION(oc_optical_optical_channel_state_to_low) {
    if (!is_get(ctx)) {
        return RC_OK;
    }
    const component_names names(ctx, oc_self);
    TRACE(ctx, TRC("OC_OPT: Comp name = %s, intf name = %s, "), names.component, names.interface);
    rcode status = open_rows(ctx, tree, opened_port, names, RC_OK);
    if (OC_OPTICAL_PM_IS_FLEXBIN_UNSUPPORTED != 0) {
        status = open_rows(ctx, tree, opened_history, names, status);
    }
    return status;
}

// Leaves of state that a read asks for.

CONVERSION(oc_optical_state_freq_to_low) {
    static constexpr target at{ZMF_NS_OPTICS_OPER, NATIVE_OPTICS_PORT "/optics-info/dwdm-carrier-frequency"};
    return is_read(ctx) ? add_across(ctx, tree, at, nullptr) : RC_OK;
}

#define ASKED(function, leaf, value)                                                                                   \
    CONVERSION(function) {                                                                                             \
        return is_read(ctx) ? add(ctx, tree, leaf, value) : RC_OK;                                                     \
    }

namespace {

constexpr target lane_power{ZMF_NS_OPTICS_OPER, NATIVE_OPTICS_PORT "/optics-lanes/optics-lane/transmit-power"};

} // namespace

ASKED(oc_optical_state_op_power_to_low, lane_power, node->value)
ASKED(oc_optical_state_oper_mode_to_low, operational_mode, nullptr)
ASKED(oc_optical_state_line_port_to_low, line_port, nullptr)

// The delete of a whole optical channel, for outside callers: clears both native homes whatever the platform.

namespace {

constexpr target deleted_optics[] = {carrier, transmit_power, fastpoll};

// cd-min is not among them.
constexpr target deleted_leaves[] = {
    {CFG, NATIVE_OPTICAL_CHANNEL "/operational-mode"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/line-port"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/frequency"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/power"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/enh-colorless-mode"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/cross-pol-gain-mode"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/cpr-ext-win-mode"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/enh-sop-tol-mode"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/cpr-win-mode"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/rx-voa-fixed-ratio"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/rx-voa-target-power"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/cd-low-threshold"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/cd-high-threshold"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/cd-max"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/cross-pol-weight-mode"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/nleq-comp-mode"},
    {CFG, NATIVE_OPTICAL_CHANNEL "/filter-roll-off-factor"},
};

rcode delete_interface(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const component_names &names) {
    ctx->req_ctx->delete_walk = 0;
    rcode status = open_interface(ctx, tree, names.interface);
    for (const target &leaf : deleted_optics) {
        status = add_across(ctx, tree, leaf, nullptr, node);
    }
    for (const char *type : {"low", "high"}) {
        (void)add_list_across(ctx, tree, rx_threshold, node);
        (void)add_across(ctx, tree, rx_threshold_type, type, node);
        status = add_across(ctx, tree, rx_threshold_value, nullptr, node);
    }
    ctx->req_ctx->delete_walk = 1; // stays, for the caller
    return status;
}

rcode delete_optical_channel(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree,
                             const component_names &names) {
    ctx->req_ctx->delete_walk = 0;
    rcode status = open_optical_channel(ctx, tree, names.ifname);
    for (const target &leaf : deleted_leaves) {
        status = add(ctx, tree, leaf, nullptr, node);
    }
    ctx->req_ctx->delete_walk = 1;
    return status;
}

} // namespace

CONVERSION(ymap_oc_optical_delete_component_optical_channel) {
    rcode status = RC_OK;
    if (wants_sibling(ctx)) {
        status = tdmgr_ocoptical_dll_interaction(ctx, node, tree);
    }
    const component_names names(ctx, oc_self);
    if (names.has_interface) {
        status = delete_interface(ctx, node, tree, names);
    }
    if (names.component[0] != '\0') {
        status = delete_optical_channel(ctx, node, tree, names);
    }
    return status;
}

// The vendor's augment of an optical channel, which a legacy platform does not have.
CONVERSION(ymap_ox_oc_optical_openconfigterminaldevice_lvla_opticalchannel_parse_augments) {
    TRACE(ctx, TRC("SIL: Component Name: %s"), static_cast<const char *>(ctx->req_ctx->component_name));
    TRACE(ctx, TRC("SIL : Name Space: %s"), shown(node->ns));
    TRACE(ctx, TRC("SIL : tag: %s"), shown(node->tag));
    if (hwinfo_has_legacy_optical_term_dev()) {
        return RC_OK;
    }
    const bool is_extended = is_read(ctx) || (zmf_map_do_these_match(node->ns, ZMF_NS_OPTICAL_CHANNEL_EXT) &&
                                              zmf_map_do_these_match(node->tag, "extended"));
    return is_extended
               ? ymap_ox_oc_optical_corvaneopenconfigterminaldeviceext_augment_lvla_optical_channel(ctx, node, tree)
               : RC_OK;
}
