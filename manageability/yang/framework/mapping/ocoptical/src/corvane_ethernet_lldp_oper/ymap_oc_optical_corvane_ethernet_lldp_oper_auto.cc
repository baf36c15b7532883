// Default callbacks of Corvane-ethernet-lldp-oper, and its duck_map hooks.
#include "corvane_ethernet_lldp_oper/ymap_oc_optical_corvane_ethernet_lldp_oper.h"

#include "engine/callback.h"

using namespace ocoptical;

#define OC_BINDING OC_EXPORT_WEAK
#define OC_SIDE low
#include "engine/readings/callbacks.inc"
