// Questions about the request under way. The kind is read anew at each use.
#pragma once

#include "zmf.h"

namespace ocoptical {

inline uint32_t request_kind(zmf_map_ctx ctx) {
    return ctx->req_ctx->request->op_type;
}

inline bool is_read(zmf_map_ctx ctx) {
    const uint32_t kind = request_kind(ctx);
    return kind == OP_GET_CONFIG || kind == OP_GET;
}

inline bool is_get(zmf_map_ctx ctx) {
    return request_kind(ctx) == OP_GET;
}

inline bool needs_keys(zmf_map_ctx ctx) {
    const uint32_t kind = request_kind(ctx);
    return kind < 16 && ((ZMF_KEYED_KINDS >> kind) & 1u) != 0;
}

} // namespace ocoptical
