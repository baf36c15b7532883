// Reading of a request's bytes, and the positions of what is wrong with them.
#include "input.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace ocmap {
namespace {

class file {
public:
    file(const std::string &name, size_t largest)
        : name_(name_of(name)), largest_(largest),
          descriptor_(name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (descriptor_ < 0)
            refuse(std::strerror(errno));
    }
    ~file() {
        if (descriptor_ > STDERR_FILENO)
            ::close(descriptor_);
    }
    file(const file &) = delete;
    file &operator=(const file &) = delete;

    std::string read_whole() const {
        std::string bytes;
        bytes.reserve(announced_size());
        std::array<char, size_t{1} << 16> piece{};
        for (;;) {
            const ssize_t count = ::read(descriptor_, piece.data(), piece.size());
            if (count == 0)
                return bytes;
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                refuse(std::strerror(errno));
            bytes.append(piece.data(), static_cast<size_t>(count));
            if (bytes.size() > largest_)
                refuse_size();
        }
    }

    const std::string &name() const { return name_; }

private:
    [[noreturn]] void refuse(const std::string &why) const { throw bad_input{name_ + ": " + why}; }

    size_t announced_size() const {
        struct stat facts {};
        if (::fstat(descriptor_, &facts) != 0)
            refuse(std::strerror(errno));
        if (!S_ISREG(facts.st_mode))
            return 0;
        if (static_cast<size_t>(facts.st_size) > largest_)
            refuse_size();
        return static_cast<size_t>(facts.st_size);
    }

    [[noreturn]] void refuse_size() const {
        refuse(largest_ == largest_request ? "larger than 64 MiB" : "larger than 2 GiB");
    }

    std::string name_;
    size_t largest_;
    int descriptor_;
};

[[noreturn]] void refuse_at(const input_bytes &input, size_t line, size_t column, const std::string &why) {
    throw bad_input{input.name + ":" + std::to_string(line) + ":" + std::to_string(column) + ": " + why};
}

format recognise(const input_bytes &input) {
    const std::string_view bytes = input.text;
    const std::string_view mark = "\xef\xbb\xbf";
    const size_t start = bytes.starts_with(mark) ? mark.size() : 0;
    size_t line = 1, line_start = start;
    for (size_t at = start; at < bytes.size(); ++at) {
        switch (bytes[at]) {
        case '<':
            return format::xml;
        case '{':
            return format::json;
        case '\n':
            ++line;
            line_start = at + 1;
            break;
        case ' ':
        case '\t':
        case '\r':
            break;
        default:
            refuse_at(input, line, at - line_start + 1, "neither XML nor JSON: a request begins with '<' or '{'");
        }
    }
    throw bad_input{input.name + ": an empty request"};
}

} // namespace

std::string name_of(const std::string &file) {
    return file == "-" ? "standard input" : file;
}

request_file load_request(const std::string &name, purpose what) {
    return make_request(load_bytes(name, what), what);
}

input_bytes load_bytes(const std::string &name, purpose what) {
    const file source(name, what == purpose::native ? largest_native : largest_request);
    return {source.name(), source.read_whole()};
}

request_file make_request(const input_bytes &input, purpose what) {
    const format form = recognise(input);
    try {
        return {read_request(input.text, form, what), form, input.text.size()};
    } catch (const input_error &error) {
        refuse_at(input, error.line, error.column, error.text);
    }
}

} // namespace ocmap
