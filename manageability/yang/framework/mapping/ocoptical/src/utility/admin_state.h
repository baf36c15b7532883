// The administrative state of a channel: what its carrier reports, and maintenance, which the state store knows.
#pragma once

#include "utility/logical_channels.h"
#include "zmf.h"

namespace ocoptical {

// What a channel that would show `high` shows in mode `mode`. A null text, of a carrier in no known state, stays.
const char *in_maintenance(uint32_t mode, const char *high);

// Adds the leaf; `status` where there is nothing to add.
rcode add_admin_state(zmf_map_ctx ctx, zmf_datatree *tree, const carrier &at, const char *high, rcode status);

} // namespace ocoptical
