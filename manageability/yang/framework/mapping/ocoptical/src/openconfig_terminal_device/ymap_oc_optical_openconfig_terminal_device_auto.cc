// Default callbacks of openconfig-terminal-device, and its duck_map hooks.
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"

#include "engine/callback.h"

using namespace ocoptical;

#define OC_BINDING OC_EXPORT_WEAK
#define OC_SIDE high
#include "engine/readings/callbacks.inc"
