// Allowed ranges of values, and the sentence that a client reads when a value is outside.
#pragma once

#include <cstdint>

#include "zmf.h"

namespace ocoptical {

struct range {
    int32_t low, high; // both allowed
};

constexpr bool is_within(const range &allowed, int32_t number) {
    return allowed.low <= number && number <= allowed.high;
}

// Puts the sentence into err_msg, marks the error path and gives RC_VALUE_OUT_OF_RANGE. `sentence` takes both ends: "X
// is not within the allowed range: %d - %d".
rcode refuse_range(zmf_map_ctx ctx, const char *sentence, const range &allowed) ZMF_PRINTF(2, 0);

} // namespace ocoptical
