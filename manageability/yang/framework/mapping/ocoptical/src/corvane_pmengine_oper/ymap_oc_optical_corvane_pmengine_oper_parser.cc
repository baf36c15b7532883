// Walkers of Corvane-pmengine-oper: roots, and default hooks for foreign children.
#include "corvane_pmengine_oper/ymap_oc_optical_corvane_pmengine_oper.h"

// clang-format off
#define OC_TRAITS {.s = ocoptical::side::low, .ns = ZMF_NS_PMENGINE_OPER, .only_get = true}
// clang-format on
#include "engine/readings/nodes_xo.inc"
