// Walkers of openconfig-platform-transceiver: the augment entries, and default hooks for foreign children.
#include "openconfig_platform_transceiver/ymap_oc_optical_openconfig_platform_transceiver.h"

// clang-format off
#define OC_TRAITS {.s = ocoptical::side::high, .ns = ZMF_NS_OC_PLATFORM_TRANSCEIVER, .has_unmapped_keys = true}
// clang-format on
#include "engine/readings/nodes_ox.inc"
