// Which OpenConfig leaves an answer wants.
#pragma once

#include "zmf.h"

namespace ocoptical {

// Config-side leaves: always, unless the request's scope shuts them out.
bool config_gate_is_open(zmf_map_ctx ctx);

// State-side leaves: a get of operational data wants them, whatever the gate.
bool wants_state(zmf_map_ctx ctx);

} // namespace ocoptical
