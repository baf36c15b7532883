// Numbers at the start of a text.
#include "utility/scan.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "utility/text.h"
#include "zmf.h"

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

bool scan_copy(const char *caller, const char *value, char *copy, int32_t *number) {
    zmf_strcpy_s(caller, copy, text_size, value);
    return scan_number(copy, number);
}

void scale_text(char *text, int32_t factor) {
    int32_t number = 0;
    (void)scan_number(text, &number);
    const uint32_t product = static_cast<uint32_t>(number) * static_cast<uint32_t>(factor);
    snprintf(text, text_size, "%d", static_cast<int32_t>(product));
}

} // namespace ocoptical
