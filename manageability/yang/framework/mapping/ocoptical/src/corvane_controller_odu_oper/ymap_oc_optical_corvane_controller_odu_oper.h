// The model Corvane-controller-odu-oper: its table, and the declarations of its callbacks and hooks.
#pragma once

#include "engine/export.h"
#include "exported.h"
#include "namespaces.h"
#include "utility/paths.h"
#include "zmf.h"

#define OC_MODEL ymap_xo_oc_optical_corvanecontrolleroduoper
#define OC_TABLE "corvane_controller_odu_oper/ymap_oc_optical_corvane_controller_odu_oper.def"

#include "engine/readings/declarations.inc"

namespace ocoptical {
zmf_node_shape odu_state_to_high; // one native leaf, two leaves of the channel
}

// Conversions that the rows name.
extern "C" {
zmf_node_shape oc_optical_odu_oper_state_up_to_link_state_to_high;
zmf_node_shape oc_optical_odu_admin_state_to_high;
zmf_node_shape oc_optical_odu_oper_loopback_to_high;
}
