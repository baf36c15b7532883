// The model openconfig-if-ethernet: its table, and the declarations of its callbacks and hooks.
#pragma once

#include "engine/export.h"
#include "namespaces.h"
#include "zmf.h"

#define OC_MODEL ymap_ox_oc_optical_openconfigifethernet
#define OC_TABLE "openconfig_if_ethernet/ymap_oc_optical_openconfig_if_ethernet.def"

#include "engine/readings/declarations.inc"
