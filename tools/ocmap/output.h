// Standard output, with one promise: a write that failed is not lost.
#pragma once

#include <string>
#include <string_view>

namespace ocmap {

struct output_error {
    std::string text;
};

class output {
public:
    explicit output(int descriptor) noexcept : descriptor_(descriptor) {}

    void write(std::string_view text) noexcept; // does nothing after a failure
    bool failed() const noexcept { return error_ != 0; }
    void finish(); // writes what is held back; throws output_error if this or an earlier write failed

private:
    void flush() noexcept;
    void put(std::string_view text) noexcept;

    static constexpr size_t held_back = 1 << 16;
    int descriptor_;
    int error_ = 0;
    std::string buffer_;
};

} // namespace ocmap
