// Default callbacks of Corvane-terminal-device-oper, and its duck_map hooks.
#include "corvane_terminal_device_oper/ymap_oc_optical_corvane_terminal_device_oper.h"

#include "engine/callback.h"

using namespace ocoptical;

#define OC_BINDING OC_EXPORT_WEAK
#define OC_SIDE low
#include "engine/readings/callbacks.inc"
