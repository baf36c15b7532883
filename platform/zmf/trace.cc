// The debug stream and the ring trace. Handles lead to the channels of a session; a line is formatted only here, after
// the plug-in's own test has passed.
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <string>

#include "session_body.h"
#include "zmf.h"

using namespace zmf;

namespace {

constexpr uint32_t unknown_filter = 0xffffffff;
constexpr size_t usual_line = 512;

std::string format_line(const char *format, va_list arguments) {
    std::string line(usual_line, '\0');
    va_list again;
    va_copy(again, arguments);
    int length = vsnprintf(line.data(), line.size(), format, arguments);
    if (length >= static_cast<int>(line.size())) {
        line.resize(static_cast<size_t>(length) + 1);
        vsnprintf(line.data(), line.size(), format, again);
    }
    va_end(again);
    line.resize(length < 0 ? 0 : static_cast<size_t>(length));
    return line;
}

const log_channel *open_channel(void *handle) {
    auto *channel = static_cast<const log_channel *>(handle);
    return channel != nullptr && *channel->sink ? channel : nullptr;
}

} // namespace

extern "C" {

int zmf_debug_should_log(struct zmf_log_state *state, int level) {
    return static_cast<int>(state->words[0] >> (static_cast<unsigned>(level) & 31u) & 1u);
}

void _kvo_dt_log_filter_adv(void *handle, int, int, int, int, int, uint32_t *filter_word, const char *format, ...) {
    const log_channel *channel = open_channel(handle);
    if (channel == nullptr || format == nullptr)
        return;
    if (filter_word != nullptr && *filter_word == unknown_filter)
        *filter_word = channel->level;
    va_list arguments;
    va_start(arguments, format);
    std::string line = format_line(format, arguments);
    va_end(arguments);
    (*channel->sink)(line);
}

uint32_t ret_nc_zmf_trace_index_incr(void) {
    static std::atomic<uint32_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

void _ringlog(void *ring_log, uint64_t, const char *line) {
    const log_channel *channel = open_channel(ring_log);
    if (channel != nullptr && line != nullptr)
        (*channel->sink)(line);
}

} // extern "C"
