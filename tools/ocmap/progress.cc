#include "progress.h"

#include <cstdio>
#include <string>
#include <unistd.h>

#include "paint.h"
#include "report.h"

namespace ocmap {

progress::progress(bool is_long) : is_on_(is_long && is_terminal(STDERR_FILENO)) {}

void progress::now(std::string_view what) {
    if (!is_on_)
        return;
    std::fprintf(stderr, "\r%s...\x1b[K", one_line(what).c_str());
    is_shown_ = true;
}

void progress::end() {
    if (is_shown_)
        std::fputs("\r\x1b[K", stderr);
    is_shown_ = false;
}

} // namespace ocmap
