// Descriptors, accessors and registration of all records, from the catalogue and the field tables.
#include "records/catalogue.h"

#include <iterator>

#include "engine/export.h"
#include "records/records.h"
#include "records/schema.h"

#define OC_RECORD optics_edm_info
#define OC_TABLE "records/optics_edm_info.def"
#include "records/readings/table.inc"

#define OC_RECORD otu_per_port_info
#define OC_TABLE "records/otu_per_port_info.def"
#include "records/readings/table.inc"

#define OC_RECORD odu_per_port_info
#define OC_TABLE "records/odu_per_port_info.def"
#include "records/readings/table.inc"

#define OC_RECORD ethernet_controller_driver_pouch_v2_type
#define OC_TABLE "records/ethernet_controller_driver_pouch_v2_type.def"
#include "records/readings/table.inc"

// A row does not know its group: its descriptor is made in a namespace that does, and taken from there.
namespace ocoptical::pouch::catalogue {

#define GROUP(name, from, file, version_high, version_low)                                                             \
    inline namespace name {                                                                                            \
    constexpr group here = {file, version(version_high, version_low)};                                                 \
    using table = pouch::from::table;
#define RECORD(name, number, fields, expected_definitions)                                                             \
    static_assert(field_count(table::all(), number) == (fields));                                                      \
    static_assert(definitions<table, number>.count == (expected_definitions));                                         \
    constexpr pouch_descriptor name = describe<table, number>(#name, here);
#define NAMED(name) constexpr pouch_descriptor name = describe_without_fields(#name, here);
#define END_GROUP }
#include "records/catalogue.def"
#undef GROUP
#undef RECORD
#undef NAMED
#undef END_GROUP

} // namespace ocoptical::pouch::catalogue

#define GROUP(name, table, file, version_high, version_low)
#define RECORD(name, number, fields, definitions) NAMED(name)
#define NAMED(name)                                                                                                    \
    constinit const pouch_descriptor name##_pouch = ocoptical::pouch::catalogue::name;                                 \
    const pouch_descriptor *name##_pouch_getfn() {                                                                     \
        return &name##_pouch;                                                                                          \
    }
#define END_GROUP
#include "records/catalogue.def"
#undef GROUP
#undef RECORD
#undef NAMED
#undef END_GROUP

namespace {

rcode register_all(const pouch_descriptor *const *records, size_t count) {
    rcode status = pouch_register_start();
    if (status != RC_OK) {
        return status;
    }
    for (size_t at = 0; at < count; ++at) {
        status = pouch_register(records[at]);
        if (status != RC_OK) {
            pouch_register_abort();
            return status;
        }
    }
    return pouch_register_end();
}

} // namespace

#define GROUP(name, table, file, version_high, version_low)                                                            \
    rcode pouch_register_all_##name##_pouchs() {                                                                       \
        static constexpr const pouch_descriptor *records[] = {
#define RECORD(name, number, fields, definitions) NAMED(name)
#define NAMED(name) &name##_pouch,
#define END_GROUP                                                                                                      \
    }                                                                                                                  \
    ;                                                                                                                  \
    return register_all(records, std::size(records));                                                                  \
    }
#include "records/catalogue.def"
#undef GROUP
#undef RECORD
#undef NAMED
#undef END_GROUP
