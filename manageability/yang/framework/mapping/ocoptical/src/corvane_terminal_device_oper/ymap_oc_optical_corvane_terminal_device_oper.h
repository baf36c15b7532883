// The model Corvane-terminal-device-oper: its table, and the declarations of its callbacks and hooks.
#pragma once

#include "engine/export.h"
#include "exported.h"
#include "namespaces.h"
#include "utility/paths.h"
#include "zmf.h"

#define OC_MODEL ymap_xo_oc_optical_corvaneterminaldeviceoper
#define OC_TABLE "corvane_terminal_device_oper/ymap_oc_optical_corvane_terminal_device_oper.def"

#define STATE(leaf)                                                                                                    \
    { ZMF_NS_OC_TERMINAL_DEVICE, nullptr, OC_OPERATIONAL_MODE "/state/" leaf }

#include "engine/readings/declarations.inc"

namespace ocoptical {
zmf_node_shape mode_id_to_high; // the key and the state leaf
}
