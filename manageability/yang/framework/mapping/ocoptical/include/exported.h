/* What the plug-in exports under a name of its own and not in a standard shape. Walkers, callbacks and conversions have
 * the shapes of zmf.h and are found by name. */
#ifndef OCOPTICAL_EXPORTED_H
#define OCOPTICAL_EXPORTED_H

#include <stdint.h>
#include <stdio.h>

#include "zmf.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Channel number as text to the name of its carrier ("/" form; `out` holds 200 bytes and keeps its text for an unknown
 * number) and the class of that name, ITYPE_*. A null text gives ITYPE_NONE and touches nothing. */
uint32_t oc_optical_convert_logical_index_to_interface(const char *index_text, char *out);

/* Appends a line to "/var/log/ocoptical.log": time stamp, then the caller's text, which brings its own line end. */
void oc_log_file(const char *format, ...) ZMF_PRINTF(1, 2);

extern FILE *fp;                            /* the log file, null until the first line */
extern void *oc_terminal_device_dll_handle; /* for the modules that load the plug-in, which itself never touches it */

#ifdef __cplusplus
}
#endif
#endif
