// Walkers of openconfig-terminal-device: roots, augment entries, and default hooks for foreign children.
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"

#define OC_TRAITS                                                                                                      \
    { .s = ocoptical::side::high, .ns = ZMF_NS_OC_TERMINAL_DEVICE }
#include "engine/readings/nodes_ox.inc"
