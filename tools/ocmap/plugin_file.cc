// The plug-in's default place: build trees and installed trees have the host in bin/ and the plug-in in lib/.
#include "plugin_file.h"

#include <filesystem>

namespace ocmap {

std::string plugin_beside_host() {
    const auto host = std::filesystem::read_symlink("/proc/self/exe");
    return (host.parent_path().parent_path() / "lib" / "libocoptical.so").string();
}

} // namespace ocmap
