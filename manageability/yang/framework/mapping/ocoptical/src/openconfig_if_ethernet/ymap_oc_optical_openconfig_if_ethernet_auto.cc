// Default callbacks of openconfig-if-ethernet, and its duck_map hooks.
#include "openconfig_if_ethernet/ymap_oc_optical_openconfig_if_ethernet.h"

#include "engine/callback.h"

using namespace ocoptical;

#define OC_BINDING OC_EXPORT_WEAK
#define OC_SIDE high
#include "engine/readings/callbacks.inc"
