// Where the plug-in is found when the command line does not say.
#pragma once

#include <string>

namespace ocmap {

std::string plugin_beside_host();

} // namespace ocmap
