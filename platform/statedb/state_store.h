// The state store, seen from outside the plug-in. What it holds is part of the hardware facts.
#pragma once

#include <cstddef>

namespace statedb {

// Bindings that are open, those of readers that keep theirs included.
size_t open_bindings();

} // namespace statedb
