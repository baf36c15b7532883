// Walkers of Corvane-terminal-device-oper, and default hooks for foreign children.
#include "corvane_terminal_device_oper/ymap_oc_optical_corvane_terminal_device_oper.h"

// clang-format off
#define OC_TRAITS {.s = ocoptical::side::low, .ns = ZMF_NS_TERMINAL_DEVICE_OPER, .only_get = true}
// clang-format on
#include "engine/readings/nodes_xo.inc"
