#include "get_config.h"

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "report.h"
#include "road.h"

namespace ocmap {
namespace {

struct get_config_options {
    road_options road;
    std::string request;
};

int get_config(const get_config_options &options) {
    const request_file request = load_request(options.request, purpose::read);
    const client_filter asked(request.tree);
    road road(options.road);
    zmf::session session(OP_GET_CONFIG);
    road.watch(session);
    zmf::output_tree reply;
    road.read_config(session, request, asked.bytes(), reply);
    road.end_of_calls();
    road.print_reply(reply, narrowed(reply, asked, warn_of_missing), road.form_for(request.form));
    road.out.finish();
    return exit_done;
}

} // namespace

void add_get_config(CLI::App &app, std::function<int()> &chosen) {
    auto options = std::make_shared<get_config_options>();
    CLI::App *command = app.add_subcommand("get-config", "Read configuration from a device");
    add_road_options(*command, options->road);
    command->add_option("request", options->request, "The request, NETCONF XML or RFC 7951 JSON; - is standard input")
        ->required();
    command->callback([options, &chosen] { chosen = [options] { return get_config(*options); }; });
}

} // namespace ocmap
