// The model Corvane-ifmgr-cfg: its table, and the declarations of its callbacks and hooks.
#pragma once

#include "engine/export.h"
#include "exported.h"
#include "namespaces.h"
#include "utility/paths.h"
#include "zmf.h"

#define OC_MODEL ymap_xo_oc_optical_corvaneifmgrcfg
#define OC_TABLE "corvane_ifmgr_cfg/ymap_oc_optical_corvane_ifmgr_cfg.def"

#include "engine/readings/declarations.inc"

// Conversions that the rows name.
extern "C" {
zmf_node_shape interface_configuration_component_component_to_high;
}
