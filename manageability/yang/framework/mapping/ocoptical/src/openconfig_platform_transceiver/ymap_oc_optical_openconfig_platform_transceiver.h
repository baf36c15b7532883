// The model openconfig-platform-transceiver: its table, and the declarations of its callbacks and hooks.
#pragma once

#include "engine/export.h"
#include "namespaces.h"
#include "utility/paths.h"
#include "zmf.h"

#define OC_MODEL ymap_ox_oc_optical_openconfigplatformtransceiver
#define OC_TABLE "openconfig_platform_transceiver/ymap_oc_optical_openconfig_platform_transceiver.def"

#include "engine/readings/declarations.inc"
