// `ocmap matrix`: what becomes of every leaf on every platform.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace ocmap {

void add_matrix(CLI::App &app, std::function<int()> &chosen);

} // namespace ocmap
