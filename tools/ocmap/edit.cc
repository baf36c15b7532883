#include "edit.h"

#include <map>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "create.h"
#include "json_writer.h"
#include "print.h"
#include "report.h"
#include "road.h"
#include "xml_writer.h"

namespace ocmap {
namespace {

struct edit_options {
    road_options road;
    std::string op = "edit";
    bool dry_run = false, save = false, show = false;
    std::string request;
};

const std::map<std::string, uint32_t> op_types{
    {"edit", OP_EDIT}, {"edit-checked", OP_EDIT_CHECKED}, {"edit-full", OP_EDIT_FULL}};

void print_native(const zmf::output_tree &native, format form, output &out) {
    if (form == format::xml)
        print_xml(native, false, out);
    else
        print_json(native, out);
}

void print_ok(format form, output &out) {
    if (form == format::xml) {
        xml_writer to(out);
        to.open("ok");
        to.attribute("xmlns", netconf_base);
        to.close();
        to.finish();
    } else {
        out.write("{\"ietf-netconf:ok\": [null]}\n");
    }
}

void save(const device::store &device, const std::string &file) {
    try {
        device.save(file);
    } catch (const device::description_error &error) {
        throw output_error{error.file + ": " + error.text};
    }
}

void print_held(road &road, const request_file &request, format form) {
    zmf::session session(OP_GET_CONFIG);
    zmf::output_tree reply;
    road.read(session, request, 0, reply);
    road.print_reply(reply, whole(reply, warn_of_missing), form);
}

void take_down(road &road, const request_file &request, const edit_options &options, format form) {
    zmf::session session(op_types.at(options.op));
    road.watch(session);
    zmf::output_tree native;
    road.down(session, request, 0, native);
    road.end_of_calls();
    if (options.dry_run)
        return print_native(native, form, road.out);
    if (const auto failure = road.device.apply(native)) {
        road.out.finish();
        throw device::edit_failure(*failure);
    }
}

int edit(const edit_options &options) {
    request_file request = load_request(options.request, purpose::edit_after_creates);
    road road(options.road);
    const format form = road.form_for(request.form);
    settle_creates(road, request);
    take_down(road, request, options, form);
    request = tops_of(request); // what stands below them is not held any longer
    if (options.save)
        save(road.device, options.road.device);
    if (options.show)
        print_held(road, request, form);
    else if (!options.dry_run)
        print_ok(form, road.out);
    road.out.finish();
    return exit_done;
}

} // namespace

void add_edit(CLI::App &app, std::function<int()> &chosen) {
    auto options = std::make_shared<edit_options>();
    CLI::App *command = app.add_subcommand("edit", "Change the configuration of a device, all of a request or nothing");
    command->footer("Prints <ok/>, in JSON {\"ietf-netconf:ok\": [null]}, unless an option asks for something else.\n"
                    "The device is forgotten with the end of the program, unless it is saved.\n"
                    "Example:\n"
                    "  cp examples/lab.json device.json\n"
                    "  ocmap edit --device device.json --save examples/provision-channels.xml");
    command->add_option("--op", options->op, "Kind of edit: edit, edit-checked, edit-full (default: edit)")
        ->check(CLI::IsMember(op_types))
        ->type_name("KIND");
    add_road_options(*command, options->road);
    CLI::Option *dry_run =
        command->add_flag("--dry-run", options->dry_run, "Print the native edit, and leave the device as it is");
    command->add_flag("--save", options->save, "Write the device back to its description file")
        ->needs(command->get_option("--device"))
        ->excludes(dry_run);
    command->add_flag("--show", options->show, "Print what the device then holds below the request's top nodes")
        ->excludes(dry_run);
    command->add_option("request", options->request, "The request, NETCONF XML or RFC 7951 JSON; - is standard input")
        ->required();
    command->callback([options, &chosen] { chosen = [options] { return edit(*options); }; });
}

} // namespace ocmap
