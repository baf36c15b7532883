// Bounded text operations, each called in one place. The library's names are macros that check against the object sizes
// the compiler knows at the call, so an inlined call with a generous limit fails in optimised builds only: the file
// behind this header is compiled on its own.
#pragma once

#include <cstddef>

namespace ocoptical {

struct text_comparison {
    int result;    // of the operation; a null text fails
    int indicator; // 0: equal

    bool match() const { return result == 0 && indicator == 0; }
};

// Case-sensitive, over the whole texts.
text_comparison compare_texts(const char *a, const char *b);

// The framework's comparison, without a limit.
bool framework_texts_match(const char *caller, const char *a, const char *b);

// Zeroes `size` bytes.
void clear(void *memory, size_t size);

} // namespace ocoptical
