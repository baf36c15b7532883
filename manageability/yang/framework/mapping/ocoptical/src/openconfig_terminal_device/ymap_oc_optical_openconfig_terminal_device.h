// The model openconfig-terminal-device: its table, its namespaces, and the declarations of its callbacks and hooks.
#pragma once

#include "engine/export.h"
#include "exported.h"
#include "namespaces.h"
#include "utility/paths.h"
#include "zmf.h"

#define OC_MODEL ymap_ox_oc_optical_openconfigterminaldevice
#define OC_TABLE "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.def"

// The native module that most rows name.
#define CFG ZMF_NS_TERMINAL_DEVICE_CFG

#include "engine/readings/declarations.inc"

// Conversions that the rows name; those of plain enumerations are in exported.h.
extern "C" {
zmf_node_shape oc_optical_rate_class_to_low;
zmf_node_shape oc_optical_trib_protocol_to_low;
zmf_node_shape oc_optical_logical_channel_type_to_low;
zmf_node_shape oc_optical_trans_to_client;
zmf_node_shape oc_optical_trans_to_client_state;
zmf_node_shape oc_optical_phychan_to_ing_phychan;
zmf_node_shape oc_optical_phychan_to_ing_phychan_state;
zmf_node_shape oc_optical_LCA_optical_channel_name_to_low;
zmf_node_shape oc_optical_LCA_optical_channel_name_to_low_state;
zmf_node_shape oc_optical_LCA_alloc_to_low;
zmf_node_shape oc_optical_LCA_alloc_to_low_state;
zmf_node_shape oc_optical_eth_client_als_to_low;
zmf_node_shape oc_optical_eth_als_delay_to_low;
zmf_node_shape oc_optical_otn_tti_transmit_to_low;
zmf_node_shape oc_optical_otn_tti_expected_to_low;
zmf_cont_shape oc_optical_optical_channel_to_low;
zmf_cont_shape oc_optical_optical_channel_state_to_low;
zmf_node_shape oc_optical_cfg_freq_to_low;
zmf_node_shape oc_optical_cfg_op_power_to_low;
zmf_node_shape oc_optical_cfg_oper_mode_to_low;
zmf_node_shape oc_optical_cfg_line_port_to_low;
zmf_node_shape oc_optical_state_freq_to_low;
zmf_node_shape oc_optical_state_op_power_to_low;
zmf_node_shape oc_optical_state_oper_mode_to_low;
zmf_node_shape oc_optical_state_line_port_to_low;
}
