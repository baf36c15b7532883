// Sizes of the fixed text buffers, terminator included.
#pragma once

#include <cstddef>

namespace ocoptical {

inline constexpr size_t text_size = 200; // names, values, sentences

} // namespace ocoptical
