// The model Corvane-terminal-device-cfg: its table, and the declarations of its callbacks and hooks.
#pragma once

#include "engine/export.h"
#include "exported.h"
#include "namespaces.h"
#include "utility/paths.h"
#include "zmf.h"

#define OC_MODEL ymap_xo_oc_optical_corvaneterminaldevicecfg
#define OC_TABLE "corvane_terminal_device_cfg/ymap_oc_optical_corvane_terminal_device_cfg.def"

// clang-format off
// The config and the state leaf of one value, the config leaf alone, and both behind the key leaf of a list.
#define BOTH(base, leaf) {ZMF_NS_OC_TERMINAL_DEVICE, base "/config/" leaf, base "/state/" leaf}
#define CONFIG(base, leaf) {ZMF_NS_OC_TERMINAL_DEVICE, base "/config/" leaf, nullptr}
#define KEYED(base, leaf) {ZMF_NS_OC_TERMINAL_DEVICE, base "/config/" leaf, base "/state/" leaf, 0, base "/" leaf}
// clang-format on

#include "engine/readings/declarations.inc"

// Conversions that the rows name; those of plain enumerations are in exported.h.
extern "C" {
zmf_node_shape oc_optical_trib_protocol_to_high;
zmf_node_shape oc_optical_rate_class_to_high;
zmf_node_shape oc_optical_logical_channel_type_to_high;
zmf_node_shape oc_optical_client_to_trans;
zmf_node_shape oc_optical_ing_phychan_to_phychan;
zmf_node_shape oc_optical_eth_client_als_to_high;
zmf_node_shape oc_optical_eth_als_delay_to_high;
zmf_node_shape oc_optical_otn_tti_expected_to_high;
zmf_node_shape oc_optical_otn_tti_transmit_to_high;
zmf_node_shape oc_optical_LCA_optical_channel_name_to_high;
zmf_node_shape oc_optical_LCA_alloc_to_high;
zmf_node_shape oc_optical_optical_channel_to_high;
zmf_node_shape oc_optical_term_device_cfg_freq_to_high;
zmf_node_shape oc_optical_term_device_cfg_opt_power_to_high;
zmf_node_shape oc_optical_cfg_oper_mode_to_high;
zmf_node_shape oc_optical_cfg_line_port_to_high;
zmf_node_shape oc_optical_enh_colorless_mode_to_high;
zmf_node_shape oc_optical_sop_tol_mode_to_high;
zmf_node_shape oc_optical_nleq_comp_mode_to_high;
zmf_node_shape oc_optical_cross_pol_gain_to_high;
zmf_node_shape oc_optical_cross_pol_weight_to_high;
zmf_node_shape oc_optical_cpr_win_mode_to_high;
zmf_node_shape oc_optical_cpr_ext_win_to_high;
zmf_node_shape oc_optical_rx_voa_fixed_ratio_to_high;
zmf_node_shape oc_optical_rx_voa_target_pwr_to_high;
zmf_node_shape oc_optics_filter_rolloff_to_high;
zmf_node_shape oc_optical_optics_cd_max_to_high;
zmf_node_shape oc_optical_optics_cd_min_to_high;
zmf_node_shape oc_optical_optics_cd_low_threshold_to_high;
zmf_node_shape oc_optical_cd_high_threshold_to_high;
}
