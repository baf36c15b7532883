// Callbacks of Corvane-openconfig-terminal-device-ext, which nobody overrides, and its duck_map hooks.
#include "corvane_openconfig_terminal_device_ext/ymap_oc_optical_corvane_openconfig_terminal_device_ext.h"

#include "engine/callback.h"

using namespace ocoptical;

#define OC_BINDING OC_EXPORT
#define OC_SIDE high
#include "engine/readings/callbacks.inc"
