// Logical channel numbers to the names of their carriers.
#include "utility/channel.h"

#include <cstring>

#include "engine/export.h"
#include "engine/request.h"
#include "exported.h"
#include "platform.h"
#include "utility/scan.h"
#include "utility/text.h"

using namespace ocoptical;

namespace {

struct carrier_class {
    const char *part; // of the name
    uint32_t itype;
};

// The first that is found decides, so the last row never does.
constexpr carrier_class carrier_classes[] = {
    {"TenGigECtrlr", ITYPE_ETHERNET},
    {"FortyGigECtrlr", ITYPE_ETHERNET},
    {"HundredGigECtrlr", ITYPE_ETHERNET},
    {"CoherentDSP", ITYPE_COHERENT_DSP},
    {"ODU", ITYPE_ODU},
    {"OTU4", ITYPE_OTU4},
    {"HundredGigE", ITYPE_ETHERNET},
    {"FourHundredGigE", ITYPE_ETHERNET},
};

} // namespace

ocoptical::channel_under_walk::channel_under_walk(zmf_map_ctx ctx) : number(ctx->req_ctx->logical_index) {
    char text[text_size];
    print_number(text, number);
    itype = oc_optical_convert_logical_index_to_interface(text, carrier_name);
}

bool ocoptical::wants_sibling(zmf_map_ctx ctx) {
    const uint32_t kind = request_kind(ctx);
    return !hwinfo_has_optical_term_dev() && (kind == OP_EDIT || kind == OP_EDIT_FULL);
}

OC_EXPORT uint32_t oc_optical_convert_logical_index_to_interface(const char *index_text, char *out) {
    if (index_text == nullptr) {
        return ITYPE_NONE;
    }
    int32_t index = 0;
    (void)scan_number(index_text, &index);
    (void)ocoptical_ifmap_c_find_ifname(static_cast<uint32_t>(index), out);
    for (char *at = strchr(out, '_'); at != nullptr; at = strchr(at, '_')) {
        *at = '/';
    }
    for (const carrier_class &row : carrier_classes) {
        if (strstr(out, row.part) != nullptr) {
            return row.itype;
        }
    }
    return ITYPE_NONE;
}
