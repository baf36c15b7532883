// One log statement on both channels, the debug stream and the ring trace.
//
//     TRACE(ctx, ERR("Index is not allowed = %s"), node->value);
//
// A statement owns one filter word, the name of its function and its line. While both channels are off it costs two
// tests; the text is formatted only after a test has passed.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>

#include "zmf.h"

namespace ocoptical {

// A text as the statement gives it, and as the debug stream takes it: literals joined once.
struct log_text {
    int level; // as zmf_debug_should_log takes it
    const char *debug;
    const char *text;
};
inline constexpr int level_err = 0;
inline constexpr int level_trc = 3;

#define ERR(text)                                                                                                      \
    ocoptical::log_text {                                                                                              \
        ocoptical::level_err, "ERR: ZMF: ctx=%p," text, text                                                           \
    }
#define TRC(text)                                                                                                      \
    ocoptical::log_text {                                                                                              \
        ocoptical::level_trc, "TRC: ZMF: ctx=%p," text, text                                                           \
    }

inline constexpr uint32_t fresh_filter_word = 0xffffffffu; // the debug stream keeps a statement's state in its word

// Where a statement stands.
struct trace_point {
    const char *function;
    int line;
    uint32_t *filter_word;
};

void ring_line(const trace_point &at, const log_text &text, zmf_map_ctx ctx, ...);

template <typename... Arguments>
[[gnu::always_inline]] inline void log_statement(zmf_map_ctx ctx, const trace_point &at, const log_text &text,
                                                 Arguments... arguments) {
    if (zmf_debug_should_log(&ctx->log_state, text.level)) [[unlikely]] {
        _kvo_dt_log_filter_adv(text.level == level_err ? ctx->err_log : ctx->trc_log, 0, 0, 0, 0, 0, at.filter_word,
                               text.debug, static_cast<void *>(ctx), arguments...);
    }
    if (ctx->ring_trace_on) [[unlikely]] {
        ring_line(at, text, ctx, arguments...);
    }
}

#define OC_TRACE_AS(ctx, function, ...)                                                                                \
    do {                                                                                                               \
        static uint32_t filter_word = ocoptical::fresh_filter_word;                                                    \
        ocoptical::log_statement(ctx, {function, __LINE__, &filter_word}, __VA_ARGS__);                                \
    } while (0)

// In the body of a maker of callback.h, which names the exported function; elsewhere OC_SELF stands first.
#define TRACE(ctx, ...) OC_TRACE_AS(ctx, oc_self, __VA_ARGS__)
#define OC_SELF const char *const oc_self = __func__

// Marks the error path and gives the status of a null node or tree; its statement bears `at`.
rcode refuse_arguments(zmf_map_ctx ctx, const trace_point &at);

// A text for "%s", which takes no null.
inline const char *shown(const char *text) {
    return text != nullptr ? text : "(null)";
}

} // namespace ocoptical
