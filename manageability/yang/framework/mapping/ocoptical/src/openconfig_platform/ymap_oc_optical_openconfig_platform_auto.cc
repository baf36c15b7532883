// Default callbacks of openconfig-platform, and its duck_map hooks.
#include "openconfig_platform/ymap_oc_optical_openconfig_platform.h"

#include "engine/callback.h"

using namespace ocoptical;

#define OC_BINDING OC_EXPORT_WEAK
#define OC_SIDE high
#include "engine/readings/callbacks.inc"
