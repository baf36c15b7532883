// Numbers that a client writes with a point and the plug-in takes as whole hundredths: powers in dBm.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ocmap {

// "-3.5" gives "-350"; nothing where the text is no decimal number, or has more than two decimals.
std::optional<std::string> to_hundredths(std::string_view text);

// "-350" gives "-3.50". A text with a point is none of hundredths, and stays as it is, as does what is no number.
std::string from_hundredths(std::string_view text);

} // namespace ocmap
