// Walkers of Corvane-controller-odu-oper, and default hooks for foreign children.
#include "corvane_controller_odu_oper/ymap_oc_optical_corvane_controller_odu_oper.h"

// clang-format off
#define OC_TRAITS {.s = ocoptical::side::low, .ns = ZMF_NS_ODU_OPER}
// clang-format on
#include "engine/readings/nodes_xo.inc"
