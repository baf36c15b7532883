// What the host tells when something is wrong, and the exit status that goes with it.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "device/store.h"
#include "zmf/session.h"

namespace ocmap {

enum exit_status { exit_done = 0, exit_refused = 1, exit_bad_input = 2, exit_usage = 64, exit_output = 74 };

// Control characters shown as \xNN and line ends as \n, so that a text from outside stays on its line.
std::string one_line(std::string_view text);

// "ocmap: <text>" on standard error.
void complain(std::string_view text);

// The NETCONF error-tag of a failure (RFC 6241, appendix A).
const char *error_tag(const zmf::failure &failure);

// Tells a failed walk on standard error: status, error-tag, error-path, message.
void report(const zmf::failure &failure);

// Tells an edit that the device refused: error-tag, error-path, leaf, message.
void report(const device::edit_failure &failure);

// Runs a command and turns what it throws into a message and an exit status.
int run_command(const std::function<int()> &command);

} // namespace ocmap
