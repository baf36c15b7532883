// `ocmap explain`: what becomes of a node, and why.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace ocmap {

void add_explain(CLI::App &app, std::function<int()> &chosen);

} // namespace ocmap
