// The state store, seen from outside the plug-in. What it holds is part of the hardware facts.
#pragma once

#include <cstddef>
#include <string>

namespace statedb {

// Bindings that are open, those of readers that keep theirs included.
size_t open_bindings();

// Path of the item that was asked for last; empty: none yet.
const std::string &last_item();

} // namespace statedb
