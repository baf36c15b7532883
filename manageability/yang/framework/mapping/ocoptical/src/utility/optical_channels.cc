// Optical channels: whether a name agrees with itself, and whether its interface is there.
#include <cstdio>
#include <cstring>

#include "engine/export.h"
#include "engine/trace.h"
#include "exported.h"
#include "platform.h"
#include "utility/scan.h"
#include "utility/text.h"

using namespace ocoptical;

OC_EXPORT uint64_t ifreg_handle = 0; // bound at first use, never released

OC_EXPORT rcode oc_optical_check_opt_chnl_rsip(const char *component) {
    // A name without prefix has nothing to agree with.
    if (component == nullptr || strchr(component, '-') == nullptr) {
        return RC_OK;
    }
    int32_t a = absent, b = absent, r = absent, s = absent, i = absent, p = absent;
    sscanf(component, "%d/%d-OpticalChannel%d/%d/%d/%d", &a, &b, &r, &s, &i, &p);
    return a == r && b == s ? RC_OK : RC_SUBTREE_ERROR;
}

// Other modules call this without a context, and then it leaves no trace.
OC_EXPORT rcode zmf_ocoptical_ifmgr_init(zmf_map_ctx ctx) {
    OC_SELF;
    if (ctx != nullptr) {
        TRACE(ctx, TRC("Start"));
    }
    rcode status = RC_OK;
    if (ifreg_handle == 0) {
        static constexpr uint32_t what = 10;
        status = ifreg_db_bind(&what, 2, &ifreg_handle);
    }
    if (ctx != nullptr) {
        if (status != RC_OK) {
            TRACE(ctx, ERR("TALM Connection to IM server failed"));
        }
        TRACE(ctx, TRC("End"));
    }
    return status;
}

namespace {

uint32_t find_interface(zmf_map_ctx ctx, const char *name, const char *oc_self) {
    if (ifreg_handle == 0) {
        (void)zmf_ocoptical_ifmgr_init(ctx); // a registry that is not there finds nothing
    }
    char internal[internal_name_size] = "";
    if (name != nullptr) {
        ifreg_internal_namestring(name, internal, sizeof internal);
    }
    char registered[internal_name_size] = "";
    const rcode copied = zmf_strncpy_s(oc_self, registered, sizeof registered, internal, sizeof internal);
    if (copied != RC_OK) {
        TRACE(ctx, ERR("zmf_strncpy_s function failed with rc %d"), static_cast<int>(copied));
        return 0;
    }
    TRACE(ctx, TRC("OC_OPT: IFname: %s IM_ifname: %s"), name != nullptr ? name : "(null)", registered);
    const char *const names[] = {registered};
    uint32_t handle = 0;
    rcode entry_status = RC_OK;
    ifreg_find_result found = {&handle, &entry_status};
    const rcode status = ifreg_interface_find(ifreg_handle, 1, names, nullptr, &found);
    if (status == RC_OK && entry_status == RC_OK) {
        // A success, and it goes to the error channel all the same.
        TRACE(ctx, ERR("Get iftype: IM_FIND ifhandle :%d found for interface %s"), static_cast<int>(handle),
              registered);
    } else {
        TRACE(ctx, ERR("Get iftype: IM_FIND failed for interface %s, rc = %u\n"), registered,
              status != RC_OK ? status : entry_status);
    }
    return handle;
}

} // namespace

OC_EXPORT uint32_t oc_optical_check_opt_chnl_ifhandle(zmf_map_ctx ctx, const char *name) {
    OC_SELF;
    assert(NULL != ctx);
    TRACE(ctx, TRC("Start"));
    const uint32_t handle = find_interface(ctx, name, oc_self);
    TRACE(ctx, TRC("End"));
    return handle;
}
