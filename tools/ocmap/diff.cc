#include "diff.h"

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "report.h"
#include "road.h"
#include "side_by_side.h"

namespace ocmap {
namespace {

struct diff_options {
    std::vector<std::string> devices;
    std::string plugin, request, op = "get";
};

const std::map<std::string, uint32_t> op_types{{"get", OP_GET},
                                               {"get-config", OP_GET_CONFIG},
                                               {"edit", OP_EDIT},
                                               {"edit-checked", OP_EDIT_CHECKED},
                                               {"edit-full", OP_EDIT_FULL}};

// What a device makes of a request: the native tree of the walk down, and what comes of it.
struct result {
    side native, reply;
    bool is_refused = false;
};

std::vector<shown_node> one_node(const std::string &text) {
    return {{text, "", {}}};
}

std::vector<shown_node> told(const zmf::failure &failure) {
    std::vector<shown_node> all{{"refused", ": " + zmf::status_name(failure.status), {}}};
    all.push_back({"error-tag", std::string(": ") + error_tag(failure), {}});
    all.push_back({"error-path", ": " + one_line(failure.path), {}});
    if (!failure.message.empty())
        all.push_back({"message", ": " + one_line(failure.message), {}});
    return all;
}

std::vector<shown_node> told(const device::edit_failure &failure) {
    return {{"refused", " by the device", {}},
            {"error-tag", ": " + failure.error_tag, {}},
            {"error-path", ": " + one_line(failure.path), {}},
            {"message", ": " + one_line(failure.text), {}}};
}

class run {
public:
    run(const diff_options &options, const std::string &device, uint32_t op_type)
        : op_type_(op_type), road_(device_options(options, device)) {
        done_.native.title = "native, " + device;
        done_.reply.title = "reply, " + device;
    }

    result with(const input_bytes &input) {
        try {
            const bool is_read = op_type_ == OP_GET || op_type_ == OP_GET_CONFIG;
            const request_file request = make_request(input, is_read ? purpose::read : purpose::edit);
            if (is_read)
                read(request);
            else
                edit(request);
        } catch (const walk_failure &failure) {
            done_.is_refused = true;
            done_.reply.nodes = told(failure.what);
        }
        return std::move(done_);
    }

private:
    static road_options device_options(const diff_options &options, const std::string &device) {
        road_options made;
        made.device = device;
        made.plugin = options.plugin;
        return made;
    }

    void read(const request_file &request) {
        const client_filter asked(request.tree);
        zmf::session session(op_type_);
        zmf::output_tree reply;
        zmf::fixed_tree answer;
        {
            zmf::output_tree native;
            road_.down(session, request, asked.bytes(), native);
            done_.native.nodes = shown(native);
            answer = road_.device.answer(native, op_type_ == OP_GET);
        }
        road_.up(session, answer, op_type_ == OP_GET, reply);
        done_.reply.nodes = shown(reply, narrowed(reply, asked, [](zmf::output_node) {}));
    }

    void edit(const request_file &request) {
        zmf::session session(op_type_);
        zmf::output_tree native;
        road_.down(session, request, 0, native);
        done_.native.nodes = shown(native);
        const auto failure = road_.device.apply(native);
        done_.is_refused = failure.has_value();
        done_.reply.nodes = failure ? told(*failure) : one_node("ok");
    }

    const uint32_t op_type_;
    road road_;
    result done_;
};

int diff(const diff_options &options) {
    const uint32_t op_type = op_types.at(options.op);
    const bool is_read = op_type == OP_GET || op_type == OP_GET_CONFIG;
    const input_bytes input = load_bytes(options.request, is_read ? purpose::read : purpose::edit);
    std::array<result, 2> both;
    for (size_t i = 0; i < both.size(); ++i)
        both[i] = run(options, options.devices[i], op_type).with(input);
    output out(STDOUT_FILENO);
    print_beside(both[0].native, both[1].native, out);
    out.write("\n");
    print_beside(both[0].reply, both[1].reply, out);
    out.finish();
    return both[0].is_refused || both[1].is_refused ? exit_refused : exit_done;
}

} // namespace

void add_diff(CLI::App &app, std::function<int()> &chosen) {
    auto options = std::make_shared<diff_options>();
    CLI::App *command = app.add_subcommand("diff", "Run one request on two devices, and show both side by side");
    command->add_option("--device", options->devices, "Device descriptions; given twice")
        ->required()
        ->expected(1)
        ->take_all()
        ->type_name("FILE");
    command->footer("The exit status is 1 if a device refuses the request.\n"
                    "Example:\n"
                    "  ocmap diff --device examples/lab.json --device examples/legacy.json --op edit "
                    "examples/provision-optical-channel.xml");
    add_plugin_option(*command, options->plugin);
    command
        ->add_option("--op", options->op,
                     "Kind of request: get, get-config, edit, edit-checked, edit-full (default: get)")
        ->check(CLI::IsMember(op_types))
        ->type_name("KIND");
    command->add_option("request", options->request, "The request, NETCONF XML or RFC 7951 JSON; - is standard input")
        ->required();
    command->callback([options, &chosen] {
        if (options->devices.size() != 2)
            throw CLI::ValidationError("--device", "is given twice");
        chosen = [options] { return diff(*options); };
    });
}

} // namespace ocmap
