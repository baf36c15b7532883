// Sizes of the fixed text buffers, terminator included.
#pragma once

#include <cstddef>

namespace ocoptical {

inline constexpr size_t text_size = 200;            // names, values, sentences
inline constexpr size_t state_store_name_size = 64; // names of controllers in the state store
inline constexpr size_t state_store_path_size = 64; // paths of their items
inline constexpr size_t internal_name_size = 64;    // names in the interface registry and the interface map

} // namespace ocoptical
