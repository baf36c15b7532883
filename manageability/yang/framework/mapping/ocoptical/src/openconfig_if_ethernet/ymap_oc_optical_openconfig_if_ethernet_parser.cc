// Walkers of openconfig-if-ethernet: the augment entry, and default hooks for foreign children.
#include "openconfig_if_ethernet/ymap_oc_optical_openconfig_if_ethernet.h"

// clang-format off
#define OC_TRAITS {.s = ocoptical::side::high, .ns = ZMF_NS_OC_IF_ETHERNET}
// clang-format on
#include "engine/readings/nodes_ox.inc"
