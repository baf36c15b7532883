// Walkers of Corvane-controller-optics-oper, and default hooks for foreign children.
#include "corvane_controller_optics_oper/ymap_oc_optical_corvane_controller_optics_oper.h"

// clang-format off
#define OC_TRAITS {.s = ocoptical::side::low, .ns = ZMF_NS_OPTICS_OPER, .only_get = true, .names_unknown_tag = true}
// clang-format on
#include "engine/readings/nodes_xo.inc"
