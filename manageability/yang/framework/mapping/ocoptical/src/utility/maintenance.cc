// Whether a controller is in maintenance, by its record in the state store.
#include <cstdio>

#include "engine/export.h"
#include "engine/trace.h"
#include "exported.h"
#include "pouch.h"
#include "records/records.h"
#include "statedb.h"
#include "utility/safe_text.h"
#include "utility/state_store.h"
#include "utility/text.h"

using namespace ocoptical;

namespace {

// OTU and ODU controllers tell their state alike.
union controller_record {
    otu_per_port_info otu;
    odu_per_port_info odu;
};

struct controller_kind {
    rcode (*convert_name)(const char *name, char *out);
    const char *item_format; // takes the converted name
    const pouch_descriptor *record;
    uint32_t (*state_of)(const controller_record &record);
};

constexpr uint32_t bind_mode = 4;
constexpr uint32_t item_type = 7;

rcode get_item(zmf_map_ctx ctx, state_store_binding &store, const char *path, state_store_item *read,
               const char *oc_self) {
    rcode status = store.look_for_library();
    if (status != RC_OK) {
        return status;
    }
    status = store.bind();
    if (status != RC_OK) {
        TRACE(ctx, ERR("Statedb_bind failed for path %s"), store.subtree);
        return status;
    }
    status = statedb_item_get(store.handle, path, &read->data, &read->length, item_type);
    if (status != RC_OK) {
        TRACE(ctx, ERR("statedb_item_get failed for path %s "), path);
    }
    return status;
}

rcode decode_state(zmf_map_ctx ctx, const controller_kind &kind, const char *controller, const state_store_item &read,
                   uint32_t *mode, const char *oc_self) {
    controller_record record = {};
    rcode status = pouch_decode(read.data, read.length, &record, kind.record);
    if (status != RC_OK) {
        // The words are the same for both kinds.
        TRACE(ctx, ERR("pouch_decode failed for otu_per_port_info_pouch for otu_ctrlr_name : %s / error: %s"),
              shown(controller), rcode_strerror(status));
        return status;
    }
    *mode = kind.state_of(record);
    TRACE(ctx, TRC("sec state VALUE %d"), static_cast<int>(*mode));
    status = pouch_free_indirections(&record, kind.record);
    if (status != RC_OK) {
        TRACE(ctx, ERR("pouch_free_indirections rc = %d"), static_cast<int>(status));
    }
    return status;
}

// A name that does not convert makes a path that the store does not have.
rcode read_state(zmf_map_ctx ctx, const controller_kind &kind, state_store_binding &store, const char *controller,
                 uint32_t *mode, const char *oc_self) {
    char name[state_store_name_size] = "";
    (void)kind.convert_name(controller, name);
    char path[state_store_path_size];
    snprintf(path, sizeof path, kind.item_format, name);
    state_store_item read;
    rcode status = get_item(ctx, store, path, &read, oc_self);
    if (status == RC_OK) {
        status = decode_state(ctx, kind, controller, read, mode, oc_self);
    }
    read.release();
    return status;
}

} // namespace

#define CONTROLLER_MODE(function, bind_path, convert_name, item_format, family)                                        \
    OC_EXPORT rcode function(zmf_map_ctx ctx, const char *controller, uint32_t *mode) {                                \
        OC_SELF;                                                                                                       \
        assert(NULL != ctx);                                                                                           \
        static constexpr controller_kind kind = {                                                                      \
            convert_name, item_format, &family##_per_port_info_pouch,                                                  \
            [](const controller_record &record) { return static_cast<uint32_t>(record.family.ConfigSecState); }};      \
        static constinit state_store_binding store = {bind_path, bind_mode};                                           \
        TRACE(ctx, TRC("Start"));                                                                                      \
        const rcode status = read_state(ctx, kind, store, controller, mode, oc_self);                                  \
        TRACE(ctx, TRC("End"));                                                                                        \
        return status;                                                                                                 \
    }

// clang-format off
CONTROLLER_MODE(get_otu_maint_mode, "/oper/otu/if/", oc_optical_convert_otu_cntrlr_to_statedb_interface, "%s/otu_port_info", otu)
CONTROLLER_MODE(get_odu_maint_mode, "/oper/odu/if/", oc_optical_convert_odu_cntrlr_to_statedb_interface, "%s/port_info",     odu)
// clang-format on

namespace {

constexpr uint32_t ethernet_bind_mode = 0;
constexpr uint32_t ethernet_item_type = 0;

rcode get_ethernet_item(zmf_map_ctx ctx, state_store_binding &store, const char *path, state_store_item *read,
                        const char *oc_self) {
    rcode status = store.look_for_library();
    if (status == RC_OK) {
        status = store.bind();
    }
    if (status != RC_OK) {
        TRACE(ctx, ERR("STATEDB bind failed for %s"), store.subtree);
        return status;
    }
    status = statedb_item_get(store.handle, path, &read->data, &read->length, ethernet_item_type);
    if (status != RC_OK) {
        TRACE(ctx, ERR("statedb item get failed for path %s"), path);
    }
    return status;
}

rcode decode_ethernet_mode(zmf_map_ctx ctx, state_store_item &read, uint32_t *mode, const char *oc_self) {
    ethernet_controller_driver_pouch_v2_type record = {};
    const rcode status = pouch_decode(read.data, read.length, &record, &ethernet_controller_driver_pouch_v2_type_pouch);
    if (status != RC_OK) {
        TRACE(ctx, ERR("Pouch decode failed %s"), rcode_strerror(status));
        return status;
    }
    if (record.TransportInfo != nullptr && record.TransportInfo->MaintenanceModeEnabled != nullptr) {
        *mode = *record.TransportInfo->MaintenanceModeEnabled;
        TRACE(ctx, TRC("maint value  %d"), static_cast<int>(*mode));
    }
    read.release();
    (void)pouch_free_indirections(&record, &ethernet_controller_driver_pouch_v2_type_pouch);
    return RC_OK;
}

rcode read_ethernet_mode(zmf_map_ctx ctx, const char *controller, uint32_t *mode, const char *oc_self) {
    static constinit state_store_binding store = {"/oper/ethernet_drvr/oper/if/", ethernet_bind_mode};
    char path[state_store_name_size] = "";
    rcode status = oc_optical_convert_ethernet_cntrlr_to_statedb_interface(controller, path);
    if (status != RC_OK) {
        TRACE(ctx, ERR(" String conversion to optics failed for %s error %s "), shown(controller),
              rcode_strerror(status));
        return status;
    }
    TRACE(ctx, TRC("STATEDB intf name %s %s"), controller, static_cast<const char *>(path));
    state_store_item read;
    status = get_ethernet_item(ctx, store, path, &read, oc_self);
    if (status == RC_OK) {
        status = decode_ethernet_mode(ctx, read, mode, oc_self);
    }
    read.release();
    return status;
}

} // namespace

OC_EXPORT rcode get_maint_mode(zmf_map_ctx ctx, const char *controller, uint32_t *mode) {
    OC_SELF;
    assert(NULL != ctx);
    TRACE(ctx, TRC("Start"));
    const rcode status = read_ethernet_mode(ctx, controller, mode, oc_self);
    TRACE(ctx, TRC("End"));
    return status;
}
