/* The state store of the device: items by path, as encoded records. */
#ifndef OCOPTICAL_STATEDB_H
#define OCOPTICAL_STATEDB_H

#include "zmf.h"
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

rcode _statedb_bind(void **binding, const char *path, uint32_t mode);
rcode _statedb_unbind(void *binding);
rcode statedb_item_get(void *binding, const char *path, void **data, size_t *length, uint32_t type); /* free() data */

#ifdef __cplusplus
}
#endif
#endif
