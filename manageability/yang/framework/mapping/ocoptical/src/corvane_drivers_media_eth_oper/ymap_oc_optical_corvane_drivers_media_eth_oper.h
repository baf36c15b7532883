// The model Corvane-drivers-media-eth-oper: its table, and the declarations of its callbacks and hooks.
#pragma once

#include "engine/export.h"
#include "exported.h"
#include "namespaces.h"
#include "utility/paths.h"
#include "zmf.h"

#define OC_MODEL ymap_xo_oc_optical_corvanedriversmediaethoper
#define OC_TABLE "corvane_drivers_media_eth_oper/ymap_oc_optical_corvane_drivers_media_eth_oper.def"

#include "engine/readings/declarations.inc"

// Conversions that the rows name.
extern "C" {
zmf_node_shape oc_optical_lldp_snooping_to_high;
zmf_node_shape oc_optical_rx_pause_frame_to_in_pause_frame_low_to_high;
zmf_node_shape oc_optical_rx_octet_frame_1519_to_max_to_in_oversize_frame_low_to_high;
zmf_node_shape oc_optical_dropped_jabber_pkts_to_in_jabber_frames_low_to_high;
zmf_node_shape oc_optical_dropped_fragments_to_in_fragment_frames_low_to_high;
zmf_node_shape oc_optical_dropped_pkts_with_crc_align_errors_to_in_crc_errors_low_to_high;
zmf_node_shape oc_optical_tx_pause_frames_to_out_pause_frames_low_to_high;
zmf_node_shape oc_optical_oper_state_up_to_link_state_to_high;
zmf_node_shape oc_optical_eth_oper_loopback_to_high;
zmf_node_shape oc_optical_eth_state_als_delay_to_high;
zmf_node_shape oc_optical_eth_state_client_als_to_high;
}
