// The plug-in's default place: build trees have the host in bin/ and the plug-in in lib/, installed trees where the
// distribution has its libraries.
#include "plugin_file.h"

#include <bit>
#include <filesystem>
#include <sys/auxv.h>

namespace ocmap {
namespace {

using std::filesystem::path;

// Where /proc is not mounted, the name by which the program was started will do.
path host_file() {
    std::error_code failed;
    path host = std::filesystem::read_symlink("/proc/self/exe", failed);
    if (failed)
        host = std::filesystem::canonical(std::bit_cast<const char *>(::getauxval(AT_EXECFN)), failed);
    return host;
}

} // namespace

std::string plugin_beside_host() {
    const path top = host_file().parent_path().parent_path();
    const path built = top / "lib" / "libocoptical.so", installed = top / OCMAP_LIBDIR / OCMAP_PLUGIN;
    return (std::filesystem::exists(built) || !std::filesystem::exists(installed) ? built : installed).string();
}

} // namespace ocmap
