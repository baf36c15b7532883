/* The record codec: descriptors of the state store's records, their registration, and decoding. */
#ifndef OCOPTICAL_POUCH_H
#define OCOPTICAL_POUCH_H

#include "zmf.h"
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

struct pouch_member {
    uint64_t number;
    uint64_t size;
    const uint64_t *offsets;
};
struct pouch_descriptor {
    uint64_t format; /* always 1 */
    const char *name;
    uint64_t version;
    const char *group_file;
    const struct pouch_member *members;
    const char *schema;
    const char *packed_schema;
    uint64_t member_count;
    uint64_t top_size;
};
rcode pouch_register_start(void);
rcode pouch_register(const struct pouch_descriptor *descriptor);
void pouch_register_abort(void);
rcode pouch_register_end(void);
rcode pouch_decode(const void *data, size_t length, void *record, const struct pouch_descriptor *descriptor);
rcode pouch_free_indirections(void *record, const struct pouch_descriptor *descriptor);
const char *rcode_strerror(rcode status);

#ifdef __cplusplus
}
#endif
#endif
