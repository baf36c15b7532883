// The operation `create`, which the host settles before a walk: it looks at what the device has.
#pragma once

#include "input.h"
#include "road.h"

namespace ocmap {

request_file tops_of(const request_file &request); // its top nodes, with nothing below them

// Makes each create of the request a merge. Throws device::edit_failure, "data-exists", if a node to be created is
// there, walk_failure if the device cannot be read.
void settle_creates(road &road, request_file &request);

} // namespace ocmap
