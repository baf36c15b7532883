// Encoding of records, for whoever fills the state store.
#pragma once

#include <string>

#include "pouch/layout.h"

namespace pouch {

// A status as pouch_decode has them; what encode() makes, pouch_decode() takes. `type` has a schema.
rcode encode(const void *record, const record_type &type, std::string &encoded);

} // namespace pouch
