// Runs the host program as a user does, in a directory of its own, and tells what came of it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace road {

// Where the host's input comes from and its output goes to; names of files.
struct wiring {
    std::string input = "/dev/null";
    std::string output{};          // empty: caught in outcome::out
    bool is_output_closed = false; // a pipe that nobody reads
    bool is_terminal = false;      // output and messages go to a terminal, and are caught together in outcome::out
    std::vector<std::string> environment{}; // "NAME=VALUE", beside what is set already
};

struct outcome {
    int status = -1; // exit status; 1000 + n: ended by signal n
    std::string out, err;
    uint64_t peak_bytes = 0;
};

outcome run_host(const std::vector<std::string> &arguments, const wiring &wires = {});

// A file in a directory that goes away with the test process. Returns its path.
std::string scratch_file(const std::string &name, std::string_view content);

// Writes `head`, `count` times `piece`, and `tail`, without holding them in memory.
std::string scratch_file(const std::string &name, std::string_view head, std::string_view piece, size_t count,
                         std::string_view tail);

} // namespace road
