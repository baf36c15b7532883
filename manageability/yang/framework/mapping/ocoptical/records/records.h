// The records that are decoded here, as the codec fills them, and the descriptors that tell it how:
//
//     otu_per_port_info record;
//     pouch_decode(data, length, &record, &otu_per_port_info_pouch);
//     ... record.ConfigSecState ...
//     pouch_free_indirections(&record, &otu_per_port_info_pouch);
//
// To decode another record: its field table, a reading here, and one in catalogue.cc.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "records/catalogue.h"
#include "records/form.h"

#define OC_RECORD optics_edm_info
#define OC_TABLE "records/optics_edm_info.def"
#include "records/readings/structure.inc"

#define OC_RECORD otu_per_port_info
#define OC_TABLE "records/otu_per_port_info.def"
#include "records/readings/structure.inc"

#define OC_RECORD odu_per_port_info
#define OC_TABLE "records/odu_per_port_info.def"
#include "records/readings/structure.inc"

#define OC_RECORD ethernet_controller_driver_pouch_v2_type
#define OC_TABLE "records/ethernet_controller_driver_pouch_v2_type.def"
#include "records/readings/structure.inc"

namespace ocoptical {

static_assert(sizeof(optics_edm_info) == 3976 && offsetof(optics_edm_info, OpticsType) == 8);
static_assert(sizeof(otu_per_port_info) == 864 && offsetof(otu_per_port_info, ConfigSecState) == 140);
static_assert(sizeof(odu_per_port_info) == 3400 && offsetof(odu_per_port_info, ConfigSecState) == 352);
static_assert(sizeof(ethernet_controller_driver_pouch_v2_type) == 48 &&
              offsetof(ethernet_controller_driver_pouch_v2_type, TransportInfo) == 32 &&
              offsetof(ethernet_controller_driver_pouch_v2_type::r143, MaintenanceModeEnabled) == 0);

} // namespace ocoptical
