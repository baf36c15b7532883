// The model openconfig-platform: its table, and the declarations of its callbacks and hooks.
#pragma once

#include "engine/export.h"
#include "namespaces.h"
#include "utility/paths.h"
#include "zmf.h"

#define OC_MODEL ymap_ox_oc_optical_openconfigplatform
#define OC_TABLE "openconfig_platform/ymap_oc_optical_openconfig_platform.def"

#include "engine/readings/declarations.inc"
