// Standard output, with one promise: a write that failed is not lost.
#pragma once

#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace ocmap {

struct output_error {
    std::string text;
};

class output {
public:
    explicit output(int descriptor) : descriptor_(descriptor) {}
    explicit output(std::string &text) : descriptor_(-1), text_(&text) {} // for what is not standard output

    void write(std::string_view text) noexcept { // does nothing after a failure
        if (text.size() > held_back - held_)
            return write_out(text);
        std::memcpy(buffer_.get() + held_, text.data(), text.size());
        held_ += text.size();
    }
    void write(char letter) noexcept { write({&letter, 1}); }
    // Room for so many bytes, to be filled from its start and then kept up to `end`; null: none without writing out.
    char *room(size_t size) noexcept { return size <= held_back - held_ ? buffer_.get() + held_ : nullptr; }
    void keep(const char *end) noexcept { held_ = static_cast<size_t>(end - buffer_.get()); }
    bool failed() const noexcept { return error_ != 0; }
    void finish(); // writes what is held back; throws output_error if this or an earlier write failed

private:
    static constexpr size_t held_back = 1 << 16;

    void write_out(std::string_view text) noexcept; // when there is no room for it
    void flush() noexcept;
    void put(std::string_view text) noexcept;

    int descriptor_;
    std::string *text_ = nullptr;
    int error_ = 0;
    std::unique_ptr<char[]> buffer_ = std::make_unique_for_overwrite<char[]>(held_back);
    size_t held_ = 0;
};

} // namespace ocmap
