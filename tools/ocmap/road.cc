#include "road.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <unistd.h>
#include <vector>

#include <CLI/CLI.hpp>

#include "device/text.h"
#include "plugin_file.h"
#include "pouch/status.h"
#include "reply.h"
#include "report.h"
#include "statedb/state_store.h"

namespace ocmap {
namespace {

// What is left of 128 MiB and eight times the input after the host's own share, the request's nodes and its texts.
size_t memory_left(const request_file &request, size_t filter_bytes) {
    constexpr size_t mib = size_t{1} << 20;
    const size_t whole = 128 * mib + 8 * request.bytes;
    const size_t taken = 24 * mib + request.bytes + request.tree.nodes() * sizeof(zmf_datatree) + filter_bytes;
    return whole - std::min(whole, taken);
}

// A read makes the walk add keys to the request: the children of each entry once or twice more, and a key or two.
void limit_memory(const request_file &request, size_t filter_bytes, bool is_read, zmf::session &session,
                  zmf::output_tree &tree) {
    const size_t left = memory_left(request, filter_bytes);
    const size_t most = 4 * request.tree.nodes() * sizeof(zmf_datatree);
    const size_t keys = is_read ? std::min(left / 2, most) : 0;
    session.limit(keys);
    tree.limit(left - keys);
}

uint32_t op_type_of(zmf::session &session) {
    return session.request().request->op_type;
}

bool is_read(zmf::session &session) {
    return op_type_of(session) == OP_GET || op_type_of(session) == OP_GET_CONFIG;
}

void print_line(std::string_view line) {
    while (line.ends_with('\n'))
        line.remove_suffix(1);
    std::fprintf(stderr, "%s\n", one_line(line).c_str());
}

std::string step_of(zmf::output_node node) {
    std::string step = std::string("/") + node.tag();
    for (zmf::output_node child = node.first_child(); child; child = child.next_sibling())
        if (child.is_key() && child.value())
            step += std::string("[") + child.tag() + "='" + child.value() + "']";
    return step;
}

// A device that takes a while.
bool is_large(const std::string &file) {
    constexpr uintmax_t large = uintmax_t{1} << 20;
    std::error_code unknown;
    const uintmax_t bytes = std::filesystem::file_size(file, unknown);
    return !unknown && bytes > large;
}

// Of a failure on the way up that the plug-in says nothing of.
std::string reason_of(const zmf::failure &failure) {
    if (failure.status == zmf::rc_no_such_entry)
        return "an entry without its key";
    if (failure.status == RC_SUBTREE_ERROR && !failure.value.empty())
        return "nothing in OpenConfig stands for \"" + text::shortened(failure.value) + '"';
    const char *known = pouch::sentence(failure.status);
    const std::string sentence = known == nullptr ? "" : known;
    return pouch::is_of_item(failure.status) ? sentence + ": " + statedb::last_item() : sentence;
}

CLI::Validator is_named() {
    return {[](const std::string &name) { return name.empty() ? "an empty name" : ""; }, ""};
}

} // namespace

void add_plugin_option(CLI::App &command, std::string &file) {
    command.add_option("--plugin", file, "Plug-in to load (default: ../lib/libocoptical.so beside the host)")
        ->check(is_named())
        ->type_name("FILE");
}

std::string plugin_of(const road_options &options) {
    return options.plugin.empty() ? plugin_beside_host() : options.plugin;
}

void add_device_options(CLI::App &command, road_options &options) {
    command.add_option("--device", options.device, "Device description (default: the built-in lab device)")
        ->check(is_named())
        ->type_name("FILE");
    add_plugin_option(command, options.plugin);
}

void add_road_options(CLI::App &command, road_options &options) {
    add_device_options(command, options);
    command.add_option("--format", options.form, "Form of the output: xml, json (default: that of the input)")
        ->check(CLI::IsMember({"xml", "json"}))
        ->type_name("FORM");
    command.add_flag("--calls", options.calls, "First print each call that adds to a tree, one a line");
    command.add_flag("--trace", options.trace, "Print the plug-in's log lines on standard error");
}

road::road(const road_options &options)
    : options_(options), steps_(is_large(options.device) && !options.calls && !options.trace), out(STDOUT_FILENO),
      device(read_device()), plugin(plugin_of(options)) {
    device::install(device.held());
    plugin.serve(device.held().flex_bins ? zmf::performance::flex_bins : zmf::performance::history);
    device::install_state_store(device.held(), options.device.empty() ? "lab.json" : options.device);
}

device::store road::read_device() {
    if (options_.device.empty())
        return device::store(device::lab());
    steps_.now("reading " + options_.device);
    device::store read(device::read_file(options_.device));
    steps_.end();
    return read;
}

void road::watch(zmf::session &session) {
    if (options_.calls)
        session.record([this](const zmf::call &call) {
            if (call.op <= zmf::operation::stitch) {
                out.write(one_line(zmf::to_line(call)));
                out.write("\n");
            }
        });
    if (options_.trace) {
        constexpr uint32_t errors_and_trace = 1u << 0 | 1u << 3;
        session.debug(errors_and_trace, print_line);
        session.ring(print_line);
    }
}

void road::end_of_calls() {
    if (options_.calls)
        out.write("\n");
}

void road::down(zmf::session &session, const request_file &request, size_t filter_bytes, zmf::output_tree &native) {
    limit_memory(request, filter_bytes, is_read(session), session, native);
    steps_.now("walking down");
    const rcode status = plugin.down(session, request.tree, native);
    steps_.end();
    if (status == RC_OK)
        return;
    out.finish();
    zmf::failure failure = session.describe(status);
    if (status == zmf::rc_too_big)
        failure.message = "the native tree outgrows the memory that a request of this size is given";
    if (status == RC_INVALID_ARGUMENTS && is_read(session))
        failure.message = "the channel is not there, or is of a kind that does not have this";
    throw walk_failure{std::move(failure)};
}

void road::up(zmf::session &session, const zmf::fixed_tree &native, bool with_operational, zmf::output_tree &reply) {
    steps_.now("walking up");
    const rcode status = plugin.up(session, native, reply, with_operational);
    steps_.end();
    if (status == RC_OK)
        return;
    out.finish();
    zmf::failure failure = session.describe(status);
    if (failure.message.empty())
        failure.message = reason_of(failure);
    throw walk_failure{std::move(failure)};
}

void road::read(zmf::session &session, const request_file &request, size_t filter_bytes, zmf::output_tree &reply) {
    const bool with_operational = op_type_of(session) == OP_GET;
    zmf::fixed_tree answer;
    {
        zmf::output_tree native;
        down(session, request, filter_bytes, native);
        steps_.now("asking the device");
        answer = device.answer(native, with_operational);
        steps_.end();
    }
    up(session, answer, with_operational, reply);
}

format road::form_for(format of_request) const {
    return options_.form.empty() ? of_request : options_.form == "xml" ? format::xml : format::json;
}

void road::print_reply(const zmf::output_tree &reply, const selection &told, format form) {
    if (form == format::xml)
        print_reply_xml(reply, told, out);
    else
        print_reply_json(reply, told, out);
}

void warn_of_missing(zmf::output_node leaf) {
    std::vector<zmf::output_node> nodes;
    for (; leaf.parent(); leaf = leaf.parent())
        nodes.push_back(leaf);
    std::string path;
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node)
        path += step_of(*node);
    complain("warning: no value of " + path);
}

} // namespace ocmap
