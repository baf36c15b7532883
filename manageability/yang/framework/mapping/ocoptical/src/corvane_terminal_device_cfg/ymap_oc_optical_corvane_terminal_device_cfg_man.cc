// Hand-written callbacks and conversions of Corvane-terminal-device-cfg: lists, identities, names, frequency and power.
//
// To add a leaf that converts: a row of the family that it belongs to, named in the model's table and declared beside
// it.
#include "corvane_terminal_device_cfg/ymap_oc_optical_corvane_terminal_device_cfg.h"

#include <cstdio>

#include "engine/callback.h"
#include "engine/config_gate.h"
#include "platform.h"
#include "utility/components.h"
#include "utility/keyed_path.h"
#include "utility/safe_text.h"
#include "utility/scan.h"
#include "utility/text.h"

using namespace ocoptical;

namespace {

// A record for an entry at a keyed path; `format` takes the key.
void prepare(zmf_map_xpath_op *op, zmf_datatree *tree, const char *format, const char *key) {
    prepare_keyed_path(op, tree, ZMF_XPATH_FIND_LIST, ZMF_NS_OC_TERMINAL_DEVICE, format, key);
}

// An entry that is there already counts as made.
rcode stitch(zmf_map_ctx ctx, zmf_map_xpath_op *op, const char *list_path, const char *oc_self) {
    snprintf(op->list_path, sizeof op->list_path, "%s", list_path);
    return settle_keyed_add(ctx, zmf_map_stitch_list_to_list(ctx, op), oc_self);
}

} // namespace

CONVERSION(ymap_xo_oc_optical_corvaneterminaldevicecfg_list_lvla_logicalchannels_channel) {
    const char *index = nullptr;
    const rcode status = read_native_key(ctx, NATIVE_CHANNEL, "channel-index", &index);
    if (status != RC_OK) {
        return status;
    }
    if (zmf_map_is_request_delete(node)) {
        return add_list(ctx, tree, {ZMF_NS_OC_TERMINAL_DEVICE, OC_CHANNEL}, node);
    }
    zmf_map_xpath_op entry;
    prepare(&entry, tree, OC_CHANNEL "[index=%s]/", index);
    return stitch(ctx, &entry, OC_CHANNEL, oc_self);
}

CONVERSION(
    ymap_xo_oc_optical_corvaneterminaldevicecfg_list_lvla_logicalchannels_logicalchannelassignments_logicalchannelassignment) {
    const char *channel = nullptr;
    const char *index = nullptr;
    rcode status = read_native_key(ctx, NATIVE_CHANNEL, "channel-index", &channel);
    if (status == RC_OK) {
        status = read_native_key(ctx, NATIVE_ASSIGNMENT, "assignment-index", &index);
    }
    if (status != RC_OK) {
        return status;
    }
    zmf_map_xpath_op entry;
    prepare(&entry, tree, OC_CHANNEL "[index=%s]/", channel);
    status = zmf_map_tree_xpath_operations(ctx, &entry);
    if (status == RC_LEAF_EXISTS) {
        TRACE(ctx, TRC("List channel[%s] already exists"), channel);
        status = RC_OK;
    }
    if (status != RC_OK) {
        return status;
    }
    zmf_datatree *parent = entry.found_node;
    if (parent == nullptr) {
        return RC_SUBTREE_ERROR;
    }
    if (zmf_map_is_request_delete(node)) {
        return add_list(ctx, tree, {ZMF_NS_OC_TERMINAL_DEVICE, OC_ASSIGNMENT},
                        node); // at the root, not below the parent
    }
    prepare(&entry, parent, "/logical-channel-assignments/assignment[index=%s]/", index);
    return stitch(ctx, &entry, OC_ASSIGNMENT, oc_self);
}

// Optical channels stand below their component.

namespace {

bool has_interface(zmf_map_ctx ctx, const char *component) {
    char interface[text_size] = "";
    oc_optical_convert_opticalchannel_to_interface(component, interface);
    return oc_optical_check_opt_chnl_ifhandle(ctx, interface) != 0;
}

} // namespace

CONVERSION(oc_optical_optical_channel_to_high) {
    const char *name = nullptr;
    rcode status = read_native_key(ctx, NATIVE_OPTICAL_CHANNEL, "ifname", &name);
    if (status != RC_OK) {
        return status;
    }
    char component[text_size] = "";
    oc_optical_convert_optname_to_compname(name, component);
    if (config_gate_is_open(ctx)) {
        status = open_component_config(ctx, tree, component);
    }
    if (status != RC_OK || !wants_state(ctx)) {
        return status;
    }
    if (!has_interface(ctx, component)) {
        TRACE(ctx, ERR("OPTICS DOESNT EXIST "));
        return RC_NOT_MAPPED;
    }
    return open_component(ctx, tree, component);
}

// Channel leaves that convert.

namespace {

constexpr char identity_tag[] = "ZMF_NS_CORVANE_TERMINAL_DEVICE_CFG_OC_OPT_TYPES";

// The value as a name in the other form; a name that does not convert is empty.
rcode add_name_up(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const up_leaf &to,
                  rcode (*convert_name)(const char *name, char *out)) {
    char name[text_size] = "";
    convert_name(node->value, name);
    return add_text_up(ctx, tree, to, name);
}

} // namespace

#define UP(function, ...)                                                                                              \
    CONVERSION(function) {                                                                                             \
        static constexpr up_leaf to = __VA_ARGS__;                                                                     \
        return add_up(ctx, node, tree, to, nullptr, nullptr);                                                          \
    }
#define VALUE_UP(function, to_high, ...)                                                                               \
    CONVERSION(function) {                                                                                             \
        static constexpr up_leaf to = __VA_ARGS__;                                                                     \
        return add_up(ctx, node, tree, to, to_high, nullptr);                                                          \
    }
#define NAME_UP(function, to_high, ...)                                                                                \
    CONVERSION(function) {                                                                                             \
        static constexpr up_leaf to = __VA_ARGS__;                                                                     \
        return add_name_up(ctx, node, tree, to, to_high);                                                              \
    }
#define IDENTITY_UP(function, to_high, ...)                                                                            \
    CONVERSION(function) {                                                                                             \
        static constexpr up_leaf to = __VA_ARGS__;                                                                     \
        return add_identity_up(ctx, node, tree, to, to_high, ZMF_NS_OC_TRANSPORT_TYPES, identity_tag);                 \
    }

// clang-format off
IDENTITY_UP(oc_optical_trib_protocol_to_high,          oc_optical_convert_logical_channel_trib_protocol_to_high, BOTH(OC_CHANNEL, "trib-protocol"))
IDENTITY_UP(oc_optical_rate_class_to_high,             oc_optical_convert_logical_channel_rate_class_to_high,    BOTH(OC_CHANNEL, "rate-class"))
IDENTITY_UP(oc_optical_logical_channel_type_to_high,   oc_optical_convert_logical_channel_type_to_high,          BOTH(OC_CHANNEL, "logical-channel-type"))
NAME_UP(oc_optical_client_to_trans,                    oc_optical_convert_interface_to_trans,                    BOTH(OC_CHANNEL "/ingress", "transceiver"))
UP(oc_optical_ing_phychan_to_phychan,                                                                            BOTH(OC_CHANNEL "/ingress", "physical-channel"))
VALUE_UP(oc_optical_eth_client_als_to_high,            oc_optical_eth_client_als_low_to_high,                    CONFIG(OC_CHANNEL "/ethernet", "client-als"))
UP(oc_optical_eth_als_delay_to_high,                                                                             CONFIG(OC_CHANNEL "/ethernet", "als-delay"))
UP(oc_optical_otn_tti_expected_to_high,                                                                          BOTH(OC_CHANNEL "/otn", "tti-msg-expected"))
UP(oc_optical_otn_tti_transmit_to_high,                                                                          BOTH(OC_CHANNEL "/otn", "tti-msg-transmit"))
NAME_UP(oc_optical_LCA_optical_channel_name_to_high,   oc_optical_convert_optname_to_compname,                   BOTH(OC_ASSIGNMENT, "optical-channel"))
UP(oc_optical_LCA_alloc_to_high,                                                                                 BOTH(OC_ASSIGNMENT, "allocation"))
// clang-format on

// Optical channel leaves. The container on the way gets its namespace back, and the status is that of this repair.

// clang-format off
#define OPTICAL_BOTH(leaf) {ZMF_NS_OC_TERMINAL_DEVICE, OC_OPTICAL_CHANNEL "/config/" leaf, OC_OPTICAL_CHANNEL "/state/" leaf, 1}
#define OPTICAL_CONFIG(leaf) {ZMF_NS_OC_TERMINAL_DEVICE, OC_OPTICAL_CHANNEL "/config/" leaf, nullptr, 1}
#define EXTENDED(leaf) {ZMF_NS_CORVANE("Corvane-openconfig-terminal-device-ext"), OC_OPTICAL_CHANNEL "/extended/config/" leaf, nullptr, 1}
// clang-format on
#define OPTICAL_UP(function, ...)                                                                                      \
    CONVERSION(function) {                                                                                             \
        static constexpr up_leaf to = __VA_ARGS__;                                                                     \
        (void)add_up(ctx, node, tree, to, nullptr, nullptr);                                                           \
        return repair_optical_channel_namespace(ctx, tree);                                                            \
    }

// clang-format off
OPTICAL_UP(oc_optical_cfg_oper_mode_to_high,           OPTICAL_BOTH("operational-mode"))
OPTICAL_UP(oc_optical_enh_colorless_mode_to_high,      EXTENDED("enh-colorless-mode"))
OPTICAL_UP(oc_optical_sop_tol_mode_to_high,            EXTENDED("enh-sop-tol-mode"))
OPTICAL_UP(oc_optical_nleq_comp_mode_to_high,          EXTENDED("nleq-compensation"))
OPTICAL_UP(oc_optical_cross_pol_gain_to_high,          EXTENDED("cross-pol-gain-mode"))
OPTICAL_UP(oc_optical_cross_pol_weight_to_high,        EXTENDED("cross-pol-weight-mode"))
OPTICAL_UP(oc_optical_cpr_win_mode_to_high,            EXTENDED("cpr-win-mode"))
OPTICAL_UP(oc_optical_cpr_ext_win_to_high,             EXTENDED("cpr-ext-win-mode"))
OPTICAL_UP(oc_optical_rx_voa_fixed_ratio_to_high,      EXTENDED("rx-voa-fixed-ratio"))
UP(oc_optical_rx_voa_target_pwr_to_high,               EXTENDED("rx-voa-target-power")) // without the repair
OPTICAL_UP(oc_optics_filter_rolloff_to_high,           EXTENDED("filter-roll-off-factor"))
OPTICAL_UP(oc_optical_optics_cd_max_to_high,           EXTENDED("optics-cd-max"))
OPTICAL_UP(oc_optical_optics_cd_min_to_high,           EXTENDED("optics-cd-min"))
OPTICAL_UP(oc_optical_optics_cd_low_threshold_to_high, EXTENDED("optics-cd-low-threshold"))
OPTICAL_UP(oc_optical_cd_high_threshold_to_high,       EXTENDED("optics-cd-high-threshold"))
// clang-format on

CONVERSION(oc_optical_cfg_line_port_to_high) {
    static constexpr up_leaf to = OPTICAL_BOTH("line-port");
    (void)add_name_up(ctx, node, tree, to, oc_optical_convert_interface_to_trans);
    return repair_optical_channel_namespace(ctx, tree);
}

// A legacy platform counts frequency and power in coarser units.

CONVERSION(oc_optical_term_device_cfg_freq_to_high) {
    char frequency[text_size] = "";
    if (node->value != nullptr) {
        zmf_strcpy_s(oc_self, frequency, sizeof frequency, node->value);
        if (hwinfo_has_legacy_optical_term_dev()) {
            TRACE(ctx, TRC("SIL: Native Frequency = %s * 100MHZ"), frequency);
            scale_text(frequency, 100);
            TRACE(ctx, TRC("SIL: Terminal-Device Frequency = %s * 1MHZ"), frequency);
        } else {
            TRACE(ctx, TRC("SIL: Terminal-Device Frequency = %s MHZ"), frequency);
        }
    }
    static constexpr up_leaf to = OPTICAL_CONFIG("frequency");
    (void)add_text_up(ctx, tree, to, frequency);
    return repair_optical_channel_namespace(ctx, tree);
}

CONVERSION(oc_optical_term_device_cfg_opt_power_to_high) {
    char power[text_size] = "";
    if (node->value != nullptr) {
        zmf_strcpy_s(oc_self, power, sizeof power, node->value);
        if (hwinfo_has_legacy_optical_term_dev()) {
            scale_text(power, 10);
        }
        TRACE(ctx, TRC("SIL: Terminal-Device Output Power: %s in 0.01 dBm"), power);
    }
    static constexpr up_leaf to = OPTICAL_CONFIG("target-output-power");
    (void)add_text_up(ctx, tree, to, power);
    return repair_optical_channel_namespace(ctx, tree);
}
