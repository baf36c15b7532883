// The texts that a failure leaves for the client.
#pragma once

#include "zmf.h"

namespace ocoptical {

// err_msg: the old text is released, a copy of `text` takes its place. A null text leaves none.
void set_err_msg(zmf_map_ctx ctx, const char *text, const char *memory_tag = "ZMF MAP");

// err_info, likewise: it is owned in the same way, and keeping the old text would lose it.
void set_err_info(zmf_map_ctx ctx, const char *text);

} // namespace ocoptical
