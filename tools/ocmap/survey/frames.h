// Which functions of the plug-in are running, read off its own log lines: each tells where it starts and ends.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ocmap {

class frames {
public:
    void take(std::string_view ring_line);

    size_t depth() const { return open_.size(); }
    const std::string &operator[](size_t i) const { return open_[i].function; }
    static constexpr size_t npos = static_cast<size_t>(-1);
    size_t outer_callback() const; // the first callback of a node, which may call another's; npos: none is running
    size_t inner_callback() const;

private:
    size_t find(std::string_view function) const;
    void leave(std::string_view function);

    struct frame {
        std::string function;
        bool is_callback;
    };
    std::vector<frame> open_;
};

} // namespace ocmap
