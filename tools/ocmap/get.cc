#include "get.h"

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "report.h"
#include "road.h"

namespace ocmap {
namespace {

struct get_options {
    uint32_t op_type;
    road_options road;
    std::string request;
};

int get(const get_options &options) {
    const request_file request = load_request(options.request, purpose::read);
    const client_filter asked(request.tree);
    road road(options.road);
    zmf::session session(options.op_type);
    road.watch(session);
    zmf::output_tree reply;
    road.read(session, request, asked.bytes(), reply);
    road.end_of_calls();
    road.print_reply(reply, narrowed(reply, asked, warn_of_missing), road.form_for(request.form));
    road.out.finish();
    return exit_done;
}

void add(CLI::App &app, std::function<int()> &chosen, const char *name, const char *told, uint32_t op_type) {
    auto options = std::make_shared<get_options>();
    options->op_type = op_type;
    CLI::App *command = app.add_subcommand(name, told);
    command->footer(std::string("Example:\n  ocmap ") + name + " --format json examples/read-one-channel.xml");
    add_road_options(*command, options->road);
    command->add_option("request", options->request, "The request, NETCONF XML or RFC 7951 JSON; - is standard input")
        ->required();
    command->callback([options, &chosen] { chosen = [options] { return get(*options); }; });
}

} // namespace

void add_gets(CLI::App &app, std::function<int()> &chosen) {
    add(app, chosen, "get", "Read configuration and state from a device", OP_GET);
    add(app, chosen, "get-config", "Read configuration from a device", OP_GET_CONFIG);
}

} // namespace ocmap
