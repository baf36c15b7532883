// Numbers at the start of a text.
#pragma once

#include <cstdint>

namespace ocoptical {

// What a number of a name is preset to before a scan: a scan that stops early leaves it so.
inline constexpr int32_t absent = -1;

// Reads a decimal number as "%d" does: leading blanks, a sign, digits; what follows is not looked at. False, and
// `number` keeps its value, where there is none. A number beyond 32 bits is the nearest one that fits.
bool scan_number(const char *text, int32_t *number);

// Copies the value into `copy` (text_size bytes) and reads the number there: a value that does not fit has none.
bool scan_copy(const char *caller, const char *value, char *copy, int32_t *number);

// The number that the text begins with (0 where it begins with none) times `factor`, printed over it; the product
// wraps. The buffer holds text_size bytes.
void scale_text(char *text, int32_t factor);

} // namespace ocoptical
