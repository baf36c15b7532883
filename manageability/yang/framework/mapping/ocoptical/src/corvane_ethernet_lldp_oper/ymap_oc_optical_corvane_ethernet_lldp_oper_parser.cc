// Walkers of Corvane-ethernet-lldp-oper: the root, and default hooks for foreign children.
#include "corvane_ethernet_lldp_oper/ymap_oc_optical_corvane_ethernet_lldp_oper.h"

#define OC_TRAITS                                                                                                      \
    { .s = ocoptical::side::low, .ns = ZMF_NS_LLDP_OPER, .only_get = true }
#include "engine/readings/nodes_xo.inc"
