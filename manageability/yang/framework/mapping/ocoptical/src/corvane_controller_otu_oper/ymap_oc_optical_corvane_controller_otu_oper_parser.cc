// Walkers of Corvane-controller-otu-oper, and default hooks for foreign children.
#include "corvane_controller_otu_oper/ymap_oc_optical_corvane_controller_otu_oper.h"

// clang-format off
#define OC_TRAITS {.s = ocoptical::side::low, .ns = ZMF_NS_OTU_OPER, .only_get = true}
// clang-format on
#include "engine/readings/nodes_xo.inc"
