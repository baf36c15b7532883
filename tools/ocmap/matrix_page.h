// The page of `ocmap matrix --format html`, from matrix_page.html.
#pragma once

#include <string_view>

namespace ocmap {

extern const std::string_view matrix_page;

} // namespace ocmap
