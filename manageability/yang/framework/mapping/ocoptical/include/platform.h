/* What the plug-in asks of the device: hardware facts, interface map, interface registry, sibling module. */
#ifndef OCOPTICAL_PLATFORM_H
#define OCOPTICAL_PLATFORM_H

#include "zmf.h"
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

uint32_t hwinfo_get_router_type(void);
bool hwinfo_has_optical_term_dev(void);
bool hwinfo_has_legacy_optical_term_dev(void);
rcode ocoptical_ifmap_c_find_ifname(uint32_t channel, char *name_out);     /* at most 64 bytes, "_" form */
rcode ocoptical_ifmap_c_find_ifindex(const char *name, uint32_t *channel); /* nonzero: unknown */

struct ifreg_find_result { /* two pointers, one entry each */
    uint32_t *handle;
    rcode *status;
};
rcode ifreg_db_bind(const uint32_t *what, uint32_t count, uint64_t *registry); /* *what == 10, count == 2 */
rcode ifreg_interface_find(uint64_t registry, uint32_t count, const char *const *names, const void *null_argument,
                           struct ifreg_find_result *result);
rcode ifreg_internal_namestring(const char *name, char *internal, size_t size);
rcode tdmgr_ocoptical_dll_interaction(zmf_map_ctx ctx, const struct zmf_datatree *node, struct zmf_datatree *root);

#ifdef __cplusplus
}
#endif
#endif
