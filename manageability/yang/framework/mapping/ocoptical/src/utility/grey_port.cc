// Whether a line port is grey, by its record in the state store.
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

OC_EXPORT int32_t statedb_available = 0;

namespace {

constexpr char subtree[] = "/oper/optics/if/";
constexpr uint32_t bind_mode = 0;
constexpr uint32_t item_type = 0;
constexpr uint32_t grey = 1; // OpticsType

rcode read_item(zmf_map_ctx ctx, void *binding, const char *name, state_store_item *read, const char *oc_self) {
    char state_store_name[text_size];
    clear(state_store_name, sizeof state_store_name);
    const rcode converted = oc_optical_convert_optics_interface_to_statedb_interface(name, state_store_name);
    if (converted != RC_OK) {
        TRACE(ctx, ERR("String conversion to optics failed for %s: %s"), shown(name), rcode_strerror(converted));
        return converted;
    }
    char path[text_size];
    clear(path, sizeof path);
    snprintf(path, sizeof path, "%s/%s", state_store_name, "optics_info");
    const rcode status = statedb_item_get(binding, path, &read->data, &read->length, item_type);
    if (status != RC_OK) {
        TRACE(ctx, ERR("statedb_item_get failed for optics %s, error:%s"), name, rcode_strerror(status));
    }
    return status;
}

// 1, 0, or what the codec refused.
rcode decode_type(zmf_map_ctx ctx, const char *name, const state_store_item &read, optics_edm_info *record,
                  const char *oc_self) {
    const rcode status = pouch_decode(read.data, read.length, record, &optics_edm_info_pouch);
    if (status != RC_OK) {
        TRACE(ctx, ERR("pouch_decode failed for optics %s / error: %s"), name, rcode_strerror(status));
        return status;
    }
    if (record->OpticsType != grey) {
        return 0;
    }
    TRACE(ctx, TRC("Lineport is Grey: Optics type:%d"), static_cast<int>(record->OpticsType));
    return 1;
}

rcode look_up_grey(zmf_map_ctx ctx, const char *name, const char *oc_self) {
    void *binding = nullptr;
    rcode status = find_state_store(&statedb_available);
    if (status == RC_OK) {
        status = _statedb_bind(&binding, subtree, bind_mode);
    }
    if (status != RC_OK) {
        TRACE(ctx, ERR("STATEDB bind failed for %s with %s"), static_cast<const char *>(subtree),
              rcode_strerror(status));
        return status;
    }
    state_store_item read;
    status = read_item(ctx, binding, name, &read, oc_self);
    if (status != RC_OK) {
        read.release();
        check_and_unbind(ctx, &binding);
        return status;
    }
    optics_edm_info record = {};
    status = decode_type(ctx, name, read, &record, oc_self);
    read.release();
    check_and_unbind(ctx, &binding);
    if (status == 0 || status == 1) {
        (void)pouch_free_indirections(&record, &optics_edm_info_pouch);
    }
    return status;
}

} // namespace

OC_EXPORT rcode oc_optical_is_lineport_grey(zmf_map_ctx ctx, const char *name) {
    OC_SELF;
    assert(NULL != ctx);
    TRACE(ctx, TRC("Start"));
    const rcode status = look_up_grey(ctx, name, oc_self);
    TRACE(ctx, TRC("End"));
    return status;
}

OC_EXPORT void check_and_unbind(zmf_map_ctx ctx, void **binding) {
    OC_SELF;
    assert(NULL != ctx);
    TRACE(ctx, TRC("Start"));
    if (binding != nullptr) {
        rcode status = find_state_store(&statedb_available);
        if (status == RC_OK) {
            status = _statedb_unbind(*binding);
        }
        if (status != RC_OK) {
            TRACE(ctx, ERR("statedb_unbind failed 0x%X, %s\n"), status, rcode_strerror(status));
        }
    }
    TRACE(ctx, TRC("End"));
}
