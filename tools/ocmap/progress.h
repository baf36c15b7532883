// What is under way, on standard error, where that is a terminal: for work that takes longer than a moment.
#pragma once

#include <string_view>

namespace ocmap {

class progress {
public:
    explicit progress(bool is_long);
    ~progress() { end(); }
    progress(const progress &) = delete;
    progress &operator=(const progress &) = delete;

    void now(std::string_view what); // takes the place of what was told before
    void end();                      // leaves the line as it was

private:
    const bool is_on_;
    bool is_shown_ = false;
};

} // namespace ocmap
