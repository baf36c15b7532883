// Walkers of Corvane-ifmgr-cfg, and default hooks for foreign children.
#include "corvane_ifmgr_cfg/ymap_oc_optical_corvane_ifmgr_cfg.h"

// clang-format off
#define OC_TRAITS {.s = ocoptical::side::low, .ns = ZMF_NS_IFMGR_CFG, .names_unknown_tag = true}
// clang-format on
#include "engine/readings/nodes_xo.inc"
