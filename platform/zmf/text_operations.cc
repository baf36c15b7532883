// Owned copies and bounded text operations. A failure leaves an empty destination.
#include <cstdlib>
#include <cstring>

#include "session_body.h"
#include "zmf.h"

using namespace zmf;

namespace {

// Writes `length` characters behind `at` characters that stay.
rcode write(char *dest, size_t max, size_t at, const char *src, size_t length) {
    if (length >= max - at) {
        dest[0] = '\0';
        return rc_bad_text;
    }
    std::memmove(dest + at, src, length);
    dest[at + length] = '\0';
    return RC_OK;
}

rcode refuse(char *dest, size_t max) {
    if (dest != nullptr && max != 0)
        dest[0] = '\0';
    return rc_bad_text;
}

bool is_usable(const char *dest, size_t max, const char *src) {
    return dest != nullptr && max != 0 && src != nullptr;
}

} // namespace

extern "C" {

char *zmf_strdup(const char *text, const char *) {
    if (session::body *s = active_session) {
        s->last_text = ++s->events;
        if (s->refuses())
            return nullptr;
    }
    return text == nullptr ? nullptr : strdup(text);
}

void kvo_named_free(void *text) {
    std::free(text);
}

rcode zmf_strcpy_s(const char *, char *dest, size_t max, const char *src) {
    return is_usable(dest, max, src) ? write(dest, max, 0, src, strnlen(src, max)) : refuse(dest, max);
}

rcode zmf_strncpy_s(const char *, char *dest, size_t max, const char *src, size_t len) {
    return is_usable(dest, max, src) ? write(dest, max, 0, src, strnlen(src, len)) : refuse(dest, max);
}

rcode zmf_strcat_s(const char *, char *dest, size_t max, const char *src) {
    if (!is_usable(dest, max, src))
        return refuse(dest, max);
    size_t at = strnlen(dest, max);
    return at == max ? refuse(dest, max) : write(dest, max, at, src, strnlen(src, max));
}

// A comparison that fails says "different" as well, for callers that look at one of the two answers only.
rcode zmf_strcmp_s(const char *, const char *a, size_t max, const char *b, int *indicator) {
    if (indicator != nullptr)
        *indicator = 1;
    if (a == nullptr || b == nullptr || indicator == nullptr || max == 0)
        return rc_bad_text;
    *indicator = std::strncmp(a, b, max);
    return RC_OK;
}

} // extern "C"
