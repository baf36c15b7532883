// The model openconfig-terminal-device: its table, its namespaces, and the declarations of its callbacks and hooks.
#pragma once

#include "engine/export.h"
#include "namespaces.h"
#include "zmf.h"

#define OC_MODEL ymap_ox_oc_optical_openconfigterminaldevice
#define OC_TABLE "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.def"
#define OC_NAMESPACE ZMF_NS_OC_TERMINAL_DEVICE

// Native modules that the rows name.
#define CFG ZMF_NS_CORVANE("Corvane-terminal-device-cfg")

#include "engine/readings/declarations.inc"
