// Walkers of Corvane-controller-optics-cfg, and default hooks for foreign children.
#include "corvane_controller_optics_cfg/ymap_oc_optical_corvane_controller_optics_cfg.h"

// clang-format off
#define OC_TRAITS {.s = ocoptical::side::low, .ns = ZMF_NS_OPTICS_CFG, .names_unknown_tag = true}
// clang-format on
#include "engine/readings/nodes_xo.inc"
