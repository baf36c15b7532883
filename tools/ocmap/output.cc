// Buffered writing to a descriptor.
#include "output.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace ocmap {

void output::put(std::string_view text) noexcept {
    if (text_ != nullptr) {
        text_->append(text);
        return;
    }
    while (!text.empty() && !failed()) {
        const ssize_t written = ::write(descriptor_, text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(static_cast<size_t>(written));
        else if (errno != EINTR)
            error_ = errno;
    }
}

void output::flush() noexcept {
    put({buffer_.get(), held_});
    held_ = 0;
}

void output::write_out(std::string_view text) noexcept {
    flush();
    if (text.size() > held_back)
        put(text);
    else
        write(text);
}

void output::finish() {
    flush();
    if (failed())
        throw output_error{std::string("standard output: ") + std::strerror(error_)};
}

} // namespace ocmap
