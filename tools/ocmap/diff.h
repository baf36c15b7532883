// `ocmap diff`: one request on two devices, side by side.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace ocmap {

void add_diff(CLI::App &app, std::function<int()> &chosen);

} // namespace ocmap
