// Which record types the codec knows. Loaders register them, by groups, before there are requests.
#pragma once

#include <string>
#include <string_view>

#include "pouch.h"
#include "pouch/layout.h"

namespace pouch {

// Null: never registered. By name: the one registered last.
const record_type *find_type(const pouch_descriptor *descriptor);
const record_type *find_type(std::string_view name);

// Record and reason of the last refusal in a registration.
const std::string &last_refusal();

} // namespace pouch
