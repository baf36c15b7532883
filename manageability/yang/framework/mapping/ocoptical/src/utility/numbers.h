// Numeric texts between notations.
#pragma once

#include <cstdint>

namespace ocoptical {

// A double as an unsigned 64-bit number, by truncation: what does not fit gives 0, what is no number gives 2^63.
uint64_t to_unsigned(double number);

} // namespace ocoptical
