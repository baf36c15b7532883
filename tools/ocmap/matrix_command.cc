#include "matrix_command.h"

#include <map>
#include <memory>
#include <string>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include "matrix_print.h"
#include "plugin_file.h"
#include "progress.h"
#include "report.h"
#include "road.h"

namespace ocmap {
namespace {

struct matrix_options {
    std::string plugin, form = "text";
};

using print_fn = void (*)(const matrix &, output &);
const std::map<std::string, print_fn> forms{
    {"text", print_text}, {"csv", print_csv}, {"json", print_json}, {"html", print_html}};

int print_matrix(const matrix_options &options) {
    const zmf::plugin plugin(options.plugin.empty() ? plugin_beside_host() : options.plugin);
    progress steps(true);
    const matrix told = make_matrix(plugin, [&](size_t platform) {
        steps.now("platform " + std::to_string(platform + 1) + " of " + std::to_string(platform_count));
    });
    steps.end();
    if (!told.unsettled.empty()) {
        for (const std::string &each : told.unsettled)
            complain(each);
        complain(std::to_string(told.unsettled.size()) + " cells of the matrix cannot be worked out");
        return exit_refused;
    }
    output out(STDOUT_FILENO);
    forms.at(options.form)(told, out);
    out.finish();
    return exit_done;
}

} // namespace

void add_matrix(CLI::App &app, std::function<int()> &chosen) {
    auto options = std::make_shared<matrix_options>();
    CLI::App *command = app.add_subcommand("matrix", "Tell what becomes of every leaf on every platform");
    command->footer("Takes some seconds. The last lines of the text count leaves, by model.\n"
                    "Example:\n"
                    "  ocmap matrix --format html > matrix.html");
    add_plugin_option(*command, options->plugin);
    command->add_option("--format", options->form, "Form of the output: text, csv, json, html (default: text)")
        ->check(CLI::IsMember(forms))
        ->type_name("FORM");
    command->callback([options, &chosen] { chosen = [options] { return print_matrix(*options); }; });
}

} // namespace ocmap
