// Numbers at the start of a text.
#include "utility/scan.h"

#include <cerrno>
#include <climits>
#include <cstdlib>

namespace ocoptical {

bool scan_number(const char *text, int32_t *number) {
    char *end = nullptr;
    errno = 0;
    const long read = strtol(text, &end, 10);
    if (end == text || errno == ERANGE || read < INT32_MIN || read > INT32_MAX) {
        return false;
    }
    *number = static_cast<int32_t>(read);
    return true;
}

} // namespace ocoptical
