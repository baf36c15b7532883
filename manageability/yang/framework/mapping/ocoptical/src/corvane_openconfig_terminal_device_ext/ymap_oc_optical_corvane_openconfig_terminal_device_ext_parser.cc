// Walkers of Corvane-openconfig-terminal-device-ext: the augment entry, and hooks for foreign children.
#include "corvane_openconfig_terminal_device_ext/ymap_oc_optical_corvane_openconfig_terminal_device_ext.h"

// clang-format off
#define OC_TRAITS {.s = ocoptical::side::high, .ns = ZMF_NS_OPTICAL_CHANNEL_EXT, .names_unknown_tag = true}
// clang-format on
#include "engine/readings/nodes_ox.inc"
