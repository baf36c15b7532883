// The only calls of the Safe C Library. A function more: here, behind a plain prototype.
#include "utility/safe_text.h"

#include <cstdint>

#include <safe_mem_lib.h>
#include <safe_str_lib.h>

#include "zmf.h"

namespace ocoptical {

text_comparison compare_texts(const char *a, const char *b) {
    text_comparison compared{-1, -1};
    if (a != nullptr && b != nullptr) {
        compared.result = strcmp_s(a, RSIZE_MAX_STR, b, &compared.indicator);
    }
    return compared;
}

bool framework_texts_match(const char *caller, const char *a, const char *b) {
    constexpr size_t no_limit = INT64_MAX;
    int indicator = -1;
    return zmf_strcmp_s(caller, a, no_limit, b, &indicator) == RC_OK && indicator == 0;
}

void clear(void *memory, size_t size) {
    memset_s(memory, size, 0, size);
}

} // namespace ocoptical
