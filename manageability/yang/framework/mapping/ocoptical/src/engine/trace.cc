// Ring lines, the refusal of null arguments, and the client's text.
#include "engine/trace.h"

#include <cstdarg>
#include <cstdio>

namespace ocoptical {

namespace {

constexpr size_t ring_line_size = 250;

} // namespace

void ring_line(zmf_map_ctx ctx, const log_text &text, const trace_point &at, ...) {
    char line[ring_line_size];
    const int head =
        snprintf(line, sizeof line, text.level == level_err ? "#%u: ERR: %s:%d ctx=%p," : "#%u: TRC: %s:%d ctx=%p,",
                 ret_nc_zmf_trace_index_incr(), at.function, at.line, static_cast<void *>(ctx));
    if (head >= 0 && static_cast<size_t>(head) < sizeof line) {
        va_list arguments;
        va_start(arguments, at);
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

namespace {

void replace_text(char **held, const char *text, const char *memory_tag) {
    if (*held != nullptr) {
        kvo_named_free(*held);
        *held = nullptr;
    }
    if (text != nullptr) {
        *held = zmf_strdup(text, memory_tag);
    }
}

} // namespace

void set_err_msg(zmf_map_ctx ctx, const char *text, const char *memory_tag) {
    if (ctx->req_ctx != nullptr) {
        replace_text(&ctx->req_ctx->err_msg, text, memory_tag);
    }
}

void set_err_info(zmf_map_ctx ctx, const char *text) {
    if (ctx->req_ctx != nullptr) {
        replace_text(&ctx->req_ctx->err_info, text, "ZMF MAP");
    }
}

} // namespace ocoptical
