// `ocmap get` and `ocmap get-config`: what a device reports and is configured to, or the latter alone, as far as a
// request asks for it.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace ocmap {

void add_gets(CLI::App &app, std::function<int()> &chosen);

} // namespace ocmap
