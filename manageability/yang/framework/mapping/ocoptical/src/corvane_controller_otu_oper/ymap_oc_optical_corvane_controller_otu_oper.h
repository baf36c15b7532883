// The model Corvane-controller-otu-oper: its table, and the declarations of its callbacks and hooks.
#pragma once

#include "engine/export.h"
#include "exported.h"
#include "namespaces.h"
#include "utility/paths.h"
#include "zmf.h"

#define OC_MODEL ymap_xo_oc_optical_corvanecontrollerotuoper
#define OC_TABLE "corvane_controller_otu_oper/ymap_oc_optical_corvane_controller_otu_oper.def"

#include "engine/readings/declarations.inc"

namespace ocoptical {
zmf_node_shape otu_state_to_high; // one native leaf, two leaves of the channel
}

// Conversions that the rows name.
extern "C" {
zmf_node_shape oc_optical_otu_fec_state_to_link_state_to_high;
zmf_node_shape oc_optical_otu_admin_state_to_high;
zmf_node_shape oc_optical_otu_oper_loopback_to_high;
zmf_node_shape oc_optical_tti_msg_recv_to_tti_ascii_string_low_to_high;
zmf_node_shape oc_optical_post_fec_ber_instant_to_high;
zmf_node_shape oc_optical_pre_fec_ber_instant_to_high;
zmf_node_shape oc_optical_q_value_instant_to_high;
zmf_node_shape oc_optical_state_oper_mode_to_high;
}
