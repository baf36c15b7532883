#include "paint.h"

#include <array>
#include <cstdlib>
#include <unistd.h>

namespace ocmap {
namespace {

constexpr std::array<std::string_view, 6> starts{"", "\x1b[1m", "\x1b[2m", "\x1b[31m", "\x1b[32m", "\x1b[33m"};

bool is_wanted() {
    const char *refused = std::getenv("NO_COLOR");
    const char *terminal = std::getenv("TERM");
    return (refused == nullptr || *refused == '\0') && (terminal == nullptr || std::string_view(terminal) != "dumb");
}

} // namespace

bool is_terminal(int descriptor) {
    return ::isatty(descriptor) == 1;
}

paint::paint(int descriptor) : is_on_(is_terminal(descriptor) && is_wanted()) {}

std::string paint::operator()(colour which, std::string_view text) const {
    if (!is_on_ || which == colour::plain)
        return std::string(text);
    return std::string(starts[static_cast<size_t>(which)]).append(text).append("\x1b[0m");
}

} // namespace ocmap
