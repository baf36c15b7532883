// The texts that a failure leaves for the client.
#include "engine/client_text.h"

namespace ocoptical {

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
