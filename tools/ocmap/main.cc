// ocmap, the host program. A subcommand more: its own file with an add_... function, called here.
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <iostream>
#include <sstream>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include "diff.h"
#include "down.h"
#include "edit.h"
#include "explain.h"
#include "get.h"
#include "matrix_command.h"
#include "output.h"
#include "report.h"
#include "up.h"

namespace {

// Else a file opened later could become standard output, and be written to.
void occupy_standard_descriptors() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
        if (::fcntl(descriptor, F_GETFD) < 0)
            ::open("/dev/null", descriptor == STDERR_FILENO ? O_WRONLY : O_RDONLY);
}

// Help and version come as exceptions, too.
int answer(const CLI::App &app, const CLI::ParseError &outcome) {
    std::ostringstream asked, wrong;
    const bool is_failure = app.exit(outcome, asked, wrong) != 0;
    if (is_failure) {
        const std::vector<std::string> unknown = app.remaining();
        const bool lacks_command = app.get_subcommands().empty() && !unknown.empty();
        ocmap::complain(lacks_command ? "there is no subcommand " + unknown.front() : outcome.what());
        std::cerr << "Run with --help for more information.\n";
        return ocmap::exit_usage;
    }
    ocmap::output out(STDOUT_FILENO);
    out.write(asked.str());
    out.finish();
    return ocmap::exit_done;
}

int run(int count, char **words) {
    CLI::App app("Runs requests through the optical mapping plug-in, as a device's framework would.", "ocmap");
    app.set_version_flag("--version", "ocmap " OCMAP_VERSION);
    app.footer("Try first:\n"
               "  ocmap get examples/read-one-channel.xml\n"
               "  ocmap explain /components/component/optical-channel/config/frequency\n"
               "ocmap COMMAND --help has the options of a command and an example; man ocmap has all of it.");
    app.require_subcommand(1);
    std::function<int()> chosen;
    ocmap::add_gets(app, chosen);
    ocmap::add_edit(app, chosen);
    ocmap::add_down(app, chosen);
    ocmap::add_up(app, chosen);
    ocmap::add_explain(app, chosen);
    ocmap::add_matrix(app, chosen);
    ocmap::add_diff(app, chosen);
    try {
        app.parse(count, words);
    } catch (const CLI::ParseError &outcome) {
        return answer(app, outcome);
    }
    return chosen();
}

} // namespace

int main(int count, char **words) {
    occupy_standard_descriptors();
    // Instead of ending the program these become errors of what writes.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    return ocmap::run_command([count, words] { return run(count, words); });
}
