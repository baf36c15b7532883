// Walkers of Corvane-drivers-media-eth-oper, and default hooks for foreign children.
#include "corvane_drivers_media_eth_oper/ymap_oc_optical_corvane_drivers_media_eth_oper.h"

// clang-format off
#define OC_TRAITS {.s = ocoptical::side::low, .ns = ZMF_NS_MEDIA_ETH_OPER, .only_get = true}
// clang-format on
#include "engine/readings/nodes_xo.inc"
