// Walkers of openconfig-terminal-device: roots, augment entries, and default hooks for foreign children.
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"

#include "engine/callback.h"
#include "engine/walk_ox.h"

#include "engine/readings/nodes_ox.inc"
