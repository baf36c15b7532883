// Time of `ocmap get` with its call log, on the lab device: the whole process, as a user starts it.
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "apart.h"

namespace {

constexpr int runs = 20;

struct top_row {
    const char *name, *request;
};

constexpr top_row tops[] = {
    {"/terminal-device", R"({"openconfig-terminal-device:terminal-device":{}})"},
    {"/components", R"({"openconfig-platform:components":{}})"},
};

double run_host(const std::string &request_file) {
    std::string words[] = {OCMAP_HOST, "get", "--calls", request_file};
    char *const arguments[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
    posix_spawn_file_actions_t wires;
    posix_spawn_file_actions_init(&wires);
    posix_spawn_file_actions_addopen(&wires, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);

    const double start = bench::now();
    pid_t host = 0;
    int status = 0;
    if (posix_spawn(&host, OCMAP_HOST, &wires, nullptr, arguments, environ) != 0 || waitpid(host, &status, 0) != host ||
        status != 0)
        bench::give_up("the host fails");
    const double seconds = bench::now() - start;
    posix_spawn_file_actions_destroy(&wires);
    return seconds;
}

} // namespace

int main() {
    std::string request_file = "/tmp/bench-request-XXXXXX";
    const int descriptor = mkstemp(request_file.data());
    if (descriptor < 0)
        bench::give_up("no file for requests");
    close(descriptor);
    for (const top_row &top : tops) {
        std::ofstream(request_file) << top.request;
        std::vector<double> seconds(runs);
        for (double &each : seconds)
            each = run_host(request_file);
        std::printf("get of %s with its calls: %.1f ms (median of %d)\n", top.name, bench::median(seconds) * 1e3, runs);
    }
    unlink(request_file.c_str());
}
