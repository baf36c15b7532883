// Scaling by moving the point, so that no number is too long or comes out rounded.
#include "hundredths.h"

#include <algorithm>

#include "request_tree.h"

namespace ocmap {
namespace {

bool are_digits(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return byte >= '0' && byte <= '9'; });
}

// The sign is taken off.
bool take_minus(std::string_view &text) {
    const bool is_negative = text.starts_with('-');
    if (is_negative || text.starts_with('+'))
        text.remove_prefix(1);
    return is_negative;
}

} // namespace

std::optional<std::string> to_hundredths(std::string_view text) {
    text = trimmed(text);
    const bool is_negative = take_minus(text);
    const size_t point = text.find('.');
    const std::string_view whole = text.substr(0, point);
    const std::string_view decimals = point == std::string_view::npos ? "" : text.substr(point + 1);
    const bool has_bare_point = point != std::string_view::npos && decimals.empty();
    if (whole.empty() || has_bare_point || decimals.size() > 2 || !are_digits(whole) || !are_digits(decimals))
        return std::nullopt;
    std::string digits = std::string(whole).append(decimals).append(2 - decimals.size(), '0');
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
    return (is_negative && digits != "0" ? "-" : "") + digits;
}

std::string from_hundredths(std::string_view text) {
    std::string_view rest = text;
    const bool is_negative = take_minus(rest);
    if (rest.empty() || !are_digits(rest))
        return std::string(text);
    std::string digits(rest);
    if (digits.size() < 3)
        digits.insert(0, 3 - digits.size(), '0');
    return (is_negative ? "-" : "") + digits.insert(digits.size() - 2, ".");
}

} // namespace ocmap
