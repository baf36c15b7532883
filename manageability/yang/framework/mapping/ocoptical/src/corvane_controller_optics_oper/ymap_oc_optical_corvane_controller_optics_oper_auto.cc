// Callbacks of Corvane-controller-optics-oper, which nobody overrides, and its duck_map hooks.
#include "corvane_controller_optics_oper/ymap_oc_optical_corvane_controller_optics_oper.h"

#include "engine/callback.h"

using namespace ocoptical;

#define OC_BINDING OC_EXPORT
#define OC_SIDE low
#include "engine/readings/callbacks.inc"
