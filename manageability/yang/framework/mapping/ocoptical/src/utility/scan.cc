// Numbers at the start of a text.
#include "utility/scan.h"

#include <algorithm>
#include <cstdlib>

namespace ocoptical {

bool scan_number(const char *text, int32_t *number) {
    char *end = nullptr;
    const long read = strtol(text, &end, 10); // at its own ends where the text is beyond them
    if (end == text) {
        return false;
    }
    *number = static_cast<int32_t>(std::clamp<long>(read, INT32_MIN, INT32_MAX));
    return true;
}

} // namespace ocoptical
