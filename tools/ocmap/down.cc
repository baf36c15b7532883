// The subcommand `down`: reads the request, walks, prints the native tree.
#include "down.h"

#include <map>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "print.h"
#include "report.h"
#include "road.h"

namespace ocmap {
namespace {

struct down_options {
    road_options road;
    std::string op;
    std::string request;
};

const std::map<std::string, uint32_t> op_types{{"get", OP_GET},
                                               {"get-config", OP_GET_CONFIG},
                                               {"edit", OP_EDIT},
                                               {"edit-checked", OP_EDIT_CHECKED},
                                               {"edit-full", OP_EDIT_FULL}};

int down(const down_options &options) {
    const uint32_t op_type = op_types.at(options.op);
    const bool is_read = op_type == OP_GET || op_type == OP_GET_CONFIG;
    const request_file request = load_request(options.request, is_read ? purpose::read : purpose::edit);
    road road(options.road);
    zmf::session session(op_type);
    road.watch(session);
    zmf::output_tree native;
    road.down(session, request, 0, native);
    road.end_of_calls();
    if (road.form_for(request.form) == format::xml)
        print_xml(native, is_read, road.out);
    else
        print_json(native, road.out);
    road.out.finish();
    return exit_done;
}

} // namespace

void add_down(CLI::App &app, std::function<int()> &chosen) {
    auto options = std::make_shared<down_options>();
    CLI::App *command = app.add_subcommand("down", "Walk an OpenConfig request down to native paths and print them");
    command->footer("Example:\n"
                    "  ocmap down --op get --calls examples/read-one-channel.xml");
    command->add_option("--op", options->op, "Kind of request: get, get-config, edit, edit-checked, edit-full")
        ->required()
        ->check(CLI::IsMember(op_types))
        ->type_name("KIND");
    add_road_options(*command, options->road);
    command->add_option("request", options->request, "The request, NETCONF XML or RFC 7951 JSON; - is standard input")
        ->required();
    command->callback([options, &chosen] { chosen = [options] { return down(*options); }; });
}

} // namespace ocmap
