// The model Corvane-controller-optics-cfg: its table, and the declarations of its callbacks and hooks.
#pragma once

#include "engine/export.h"
#include "exported.h"
#include "namespaces.h"
#include "utility/paths.h"
#include "zmf.h"

#define OC_MODEL ymap_xo_oc_optical_corvanecontrolleropticscfg
#define OC_TABLE "corvane_controller_optics_cfg/ymap_oc_optical_corvane_controller_optics_cfg.def"

#include "engine/readings/declarations.inc"

// Conversions that the rows name.
extern "C" {
zmf_node_shape oc_optical_cfg_freq_to_high;
zmf_node_shape oc_optical_cfg_opt_power_to_high;
zmf_node_shape oc_optical_ext_cfg_baud_rate_to_high;
zmf_node_shape oc_optical_cfg_fastpoll_sop_enable_to_high;
zmf_node_shape oc_optical_cfg_input_power_lower_threshold_to_high;
}
