// Walkers of openconfig-platform: the root, and default hooks for foreign children.
#include "openconfig_platform/ymap_oc_optical_openconfig_platform.h"

// clang-format off
#define OC_TRAITS {.s = ocoptical::side::high, .ns = ZMF_NS_OC_PLATFORM, .has_unmapped_keys = true}
// clang-format on
#include "engine/readings/nodes_ox.inc"
