// `ocmap get-config`: what a device is configured to, as far as a request asks for it.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace ocmap {

void add_get_config(CLI::App &app, std::function<int()> &chosen);

} // namespace ocmap
