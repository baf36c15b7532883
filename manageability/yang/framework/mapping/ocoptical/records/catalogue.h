/* The descriptors of all records, their accessors, and the registration of each group. Exported, for whoever loads the
 * plug-in; found there by name. */
#ifndef OCOPTICAL_RECORDS_CATALOGUE_H
#define OCOPTICAL_RECORDS_CATALOGUE_H

#include "pouch.h"

#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif
#ifdef __cplusplus
extern "C" {
#endif

/* Registers all records of the group or none: 0, or the status of the codec. */
#define GROUP(name, table, file, version_high, version_low) rcode pouch_register_all_##name##_pouchs(void);
#define RECORD(name, number, fields, definitions) NAMED(name)
#define NAMED(name)                                                                                                    \
    extern const struct pouch_descriptor name##_pouch;                                                                 \
    const struct pouch_descriptor *name##_pouch_getfn(void);
#define END_GROUP
#include "records/catalogue.def"
#undef GROUP
#undef RECORD
#undef NAMED
#undef END_GROUP

#ifdef __cplusplus
}
#endif
#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#endif
