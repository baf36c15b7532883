#include "up.h"

#include <map>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "report.h"
#include "road.h"

namespace ocmap {
namespace {

struct up_options {
    road_options road;
    std::string op = "get", gate = "open";
    std::string native;
};

const std::map<std::string, uint32_t> op_types{{"get", OP_GET}, {"get-config", OP_GET_CONFIG}};

void shut_gate(zmf::session &session) {
    session.request().request->scope_word = 2;
    session.request().request->scope_flags_1 = 1;
}

void refuse_unknown(const request_file &native, const zmf::plugin &plugin, const std::string &file) {
    for (uint32_t i = 0; i < native.tree.count(); ++i) {
        const zmf_datatree &top = native.tree.tops()[i];
        const std::string ns = top.ns == nullptr ? "" : top.ns;
        if (!plugin.takes_up(top))
            throw bad_input{name_of(file) + ": no root of the plug-in takes top node \"" + top.tag + '"' +
                            (ns.empty() ? " without a namespace" : " of namespace \"" + ns + '"')};
    }
}

int up(const up_options &options) {
    const uint32_t op_type = op_types.at(options.op);
    const request_file native = load_request(options.native, purpose::native);
    road road(options.road);
    refuse_unknown(native, road.plugin, options.native);

    zmf::session session(op_type);
    if (options.gate == "shut")
        shut_gate(session);
    road.watch(session);
    zmf::output_tree reply;
    road.up(session, native.tree, op_type == OP_GET, reply);
    road.end_of_calls();
    road.print_reply(reply, whole(reply, warn_of_missing), road.form_for(native.form));
    road.out.finish();
    return exit_done;
}

} // namespace

void add_up(CLI::App &app, std::function<int()> &chosen) {
    auto options = std::make_shared<up_options>();
    CLI::App *command = app.add_subcommand("up", "Walk native trees up and print the OpenConfig tree that they make");
    command->footer("Example:\n"
                    "  ocmap edit --dry-run examples/provision-channels.xml > native.xml\n"
                    "  ocmap up --op get-config native.xml");
    command->add_option("--op", options->op, "Kind of read: get, get-config (default: get)")
        ->check(CLI::IsMember(op_types))
        ->type_name("KIND");
    command->add_option("--gate", options->gate, "Whether configuration comes up: open, shut (default: open)")
        ->check(CLI::IsMember({"open", "shut"}))
        ->type_name("STATE");
    add_road_options(*command, options->road);
    command
        ->add_option("native", options->native,
                     "Native data, XML of namespaces \"urn:corvane:yang:<module>\" or RFC 7951 JSON; - is standard "
                     "input")
        ->required();
    command->callback([options, &chosen] { chosen = [options] { return up(*options); }; });
}

} // namespace ocmap
