// The sentence of a value out of its range.
#include "utility/range.h"

#include <cstdio>

#include "engine/client_text.h"
#include "utility/text.h"

namespace ocoptical {

rcode refuse_range(zmf_map_ctx ctx, const char *sentence, const range &allowed) {
    char text[text_size];
    snprintf(text, sizeof text, sentence, allowed.low, allowed.high);
    set_err_msg(ctx, text);
    zmf_oc_error_path(ctx);
    return RC_VALUE_OUT_OF_RANGE;
}

} // namespace ocoptical
