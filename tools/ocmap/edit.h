// `ocmap edit`: a request that changes what a device is configured to.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace ocmap {

void add_edit(CLI::App &app, std::function<int()> &chosen);

} // namespace ocmap
