// The frame of an operation: it answers, then tells the call to the session's sink; one that returns a status can be
// made to fail.
#pragma once

#include <new>

#include "session_body.h"

namespace zmf {

template <typename Fill>
inline void tell(session::body &s, operation op, uint32_t result, Fill fill) {
    if (s.sink) [[unlikely]] {
        call made{op};
        made.result = result;
        fill(made);
        s.sink(made);
    }
}

template <typename Work>
inline rcode answer(session::body &s, Work work) {
    if (s.refuses()) [[unlikely]]
        return s.failing_status;
    try {
        return work();
    } catch (const std::bad_alloc &) {
        return RC_NO_MEMORY;
    }
}

} // namespace zmf
