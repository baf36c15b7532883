// The fixed text buffers: sizes, terminator included, and whole numbers in them.
#pragma once

#include <charconv>
#include <cstddef>

namespace ocoptical {

inline constexpr size_t text_size = 200;            // names, values, sentences
inline constexpr size_t state_store_name_size = 64; // names of controllers in the state store
inline constexpr size_t state_store_path_size = 64; // paths of their items
inline constexpr size_t internal_name_size = 64;    // names in the interface registry and the interface map

// As "%d", "%u" and "%ld" print it, into a buffer of text_size bytes.
template <typename integer>
void print_number(char *out, integer number) {
    *std::to_chars(out, out + text_size - 1, number).ptr = '\0';
}

} // namespace ocoptical
