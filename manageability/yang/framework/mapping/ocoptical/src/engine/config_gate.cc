// The configuration gate: the one place that looks at the scope of a request.
#include "engine/config_gate.h"

#include "engine/request.h"

namespace ocoptical {

bool config_gate_is_open(zmf_map_ctx ctx) {
    constexpr uint32_t scoped = 2;
    const zmf_request &request = *ctx->req_ctx->request;
    if (request.scope_word != scoped) {
        return true;
    }
    const uint32_t flags = (request.scope_flags_1 & ZMF_SCOPE_MASK_1) | (request.scope_flags_2 & ZMF_SCOPE_MASK_2) |
                           (request.scope_flags_3 & ZMF_SCOPE_MASK_3) | (request.scope_flags_4 & ZMF_SCOPE_MASK_4) |
                           (request.scope_flags_5 & ZMF_SCOPE_MASK_5) | (request.scope_flags_6 & ZMF_SCOPE_MASK_6) |
                           (request.scope_flags_7 & ZMF_SCOPE_MASK_7) | (request.scope_flags_8 & ZMF_SCOPE_MASK_8) |
                           (request.scope_flags_9 & ZMF_SCOPE_MASK_9);
    return flags == 0;
}

bool wants_state(zmf_map_ctx ctx) {
    return is_get(ctx);
}

} // namespace ocoptical
