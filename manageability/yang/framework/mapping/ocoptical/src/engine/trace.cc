// Ring lines, and the refusal of null arguments.
#include "engine/trace.h"

#include <cstdarg>
#include <cstdio>

namespace ocoptical {

namespace {

constexpr size_t ring_line_size = 250;

} // namespace

void ring_line(const trace_point &at, const log_text &text, zmf_map_ctx ctx, ...) {
    char line[ring_line_size];
    const int head =
        snprintf(line, sizeof line, text.level == level_err ? "#%u: ERR: %s:%d ctx=%p," : "#%u: TRC: %s:%d ctx=%p,",
                 ret_nc_zmf_trace_index_incr(), at.function, at.line, static_cast<void *>(ctx));
    if (head >= 0 && static_cast<size_t>(head) < sizeof line) {
        va_list arguments;
        va_start(arguments, ctx);
        vsnprintf(line + head, sizeof line - static_cast<size_t>(head), text.text, arguments);
        va_end(arguments);
    }
    _ringlog(ctx->ring_log, ZMF_RINGLOG_FLAGS, line);
}

rcode refuse_arguments(zmf_map_ctx ctx, const trace_point &at) {
    log_statement(ctx, at, ERR("Invalid arguments passed!"));
    zmf_oc_error_path(ctx);
    return RC_INVALID_ARGUMENTS;
}

} // namespace ocoptical
