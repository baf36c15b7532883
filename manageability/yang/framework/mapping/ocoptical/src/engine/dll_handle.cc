// A word that the modules loading the plug-in share through it. Zero at load, never read or written here.
#include "engine/export.h"
#include "exported.h"

OC_EXPORT void *oc_terminal_device_dll_handle = nullptr;
