// `ocmap down`: an OpenConfig request walked down to the native request tree.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace ocmap {

// Adds the subcommand. When the command line names it, `chosen` becomes what is to run.
void add_down(CLI::App &app, std::function<int()> &chosen);

} // namespace ocmap
