// Default callbacks of Corvane-drivers-media-eth-oper, and its duck_map hooks.
#include "corvane_drivers_media_eth_oper/ymap_oc_optical_corvane_drivers_media_eth_oper.h"

#include "engine/callback.h"

using namespace ocoptical;

#define OC_BINDING OC_EXPORT_WEAK
#define OC_SIDE low
#include "engine/readings/callbacks.inc"
