// Colours, where a terminal shows them and NO_COLOR is unset.
#pragma once

#include <string>
#include <string_view>

namespace ocmap {

enum class colour { plain, bold, faint, red, green, yellow };

class paint {
public:
    explicit paint(int descriptor); // of what is written to
    std::string operator()(colour which, std::string_view text) const;

private:
    bool is_on_;
};

bool is_terminal(int descriptor);

} // namespace ocmap
