// `ocmap up`: native trees walked up, and what OpenConfig tree comes of them.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace ocmap {

void add_up(CLI::App &app, std::function<int()> &chosen);

} // namespace ocmap
