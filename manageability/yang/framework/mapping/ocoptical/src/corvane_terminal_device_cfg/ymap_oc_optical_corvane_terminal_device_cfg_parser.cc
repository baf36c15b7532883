// Walkers of Corvane-terminal-device-cfg: roots, and default hooks for foreign children.
#include "corvane_terminal_device_cfg/ymap_oc_optical_corvane_terminal_device_cfg.h"

#define OC_TRAITS                                                                                                      \
    { .s = ocoptical::side::low, .ns = ZMF_NS_CORVANE("Corvane-terminal-device-cfg") }
#include "engine/readings/nodes_xo.inc"
