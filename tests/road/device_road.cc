#include "device_road.h"

#include <stdexcept>

#include "narrow.h"
#include "request.h"
#include "shown_reply.h"
#include "zmf/plugin.h"
#include "zmf/session.h"

namespace road {
namespace {

const zmf::plugin &plugin() {
    static const zmf::plugin loaded(OCOPTICAL_PLUGIN);
    return loaded;
}

std::string value_at(zmf::output_tree &tree, const char *path) {
    const zmf::output_node leaf = tree.find(path);
    return !leaf || leaf.value() == nullptr ? "-" : leaf.value();
}

void become(const device::description &what) {
    device::install(what);
    plugin().serve(what.flex_bins ? zmf::performance::flex_bins : zmf::performance::history);
    device::install_state_store(what, "device");
}

} // namespace

device_road::device_road(device::description what) : store_(std::move(what)) {}

edit_result device_road::edit(const std::string &request, const char *native_leaf) {
    become(store_.held());
    const zmf::fixed_tree tree = ocmap::read_request(request, ocmap::format::json, false);
    zmf::output_tree native;
    zmf::session session(OP_EDIT);
    edit_result result;
    result.status = plugin().down(session, tree, native);
    if (result.status != RC_OK) {
        const zmf::failure failure = session.describe(result.status);
        result.path = failure.path;
        result.message = failure.message;
        return result;
    }
    if (native_leaf != nullptr)
        result.native = value_at(native, native_leaf);
    if (const auto failure = store_.apply(native)) {
        result.error_tag = failure->error_tag;
        result.path = failure->path;
        result.message = failure->text;
    }
    return result;
}

void device_road::read(zmf::output_tree &reply) {
    read(OP_GET_CONFIG,
         ocmap::read_request(R"({"openconfig-terminal-device:terminal-device":{}})", ocmap::format::json, true), reply);
}

void device_road::read(uint32_t op_type, const zmf::fixed_tree &request, zmf::output_tree &reply) {
    become(store_.held());
    const bool with_operational = op_type == OP_GET;
    zmf::session session(op_type);
    zmf::output_tree native;
    zmf::fixed_tree answer; // a failure is described by its nodes
    rcode status = plugin().down(session, request, native);
    if (status == RC_OK) {
        answer = store_.answer(native, with_operational);
        status = plugin().up(session, answer, reply, with_operational);
    }
    if (status != RC_OK)
        throw std::runtime_error("the device cannot be read: " + zmf::status_name(status) + " " +
                                 session.describe(status).path);
}

std::string device_road::channels() {
    zmf::output_tree reply;
    read(reply);
    missing_.clear();
    const auto told = ocmap::whole(reply, [this](zmf::output_node leaf) { missing_.push_back(leaf.tag()); });
    shown::reply writer;
    ocmap::tell_reply(reply, told, writer);
    const std::string before = "terminal-device(logical-channels(", after = "))";
    if (writer.text.empty())
        return "";
    if (!writer.text.starts_with(before) || !writer.text.ends_with(after))
        throw std::runtime_error("not a reply of channels: " + writer.text);
    return writer.text.substr(before.size(), writer.text.size() - before.size() - after.size());
}

std::string device_road::seen(const std::string &request, uint32_t op_type) {
    const zmf::fixed_tree tree = ocmap::read_request(request, ocmap::format::json, true);
    const ocmap::client_filter asked(tree);
    zmf::output_tree reply;
    read(op_type, tree, reply);
    missing_.clear();
    const auto told = narrowed(reply, asked, [this](zmf::output_node leaf) { missing_.push_back(leaf.tag()); });
    shown::reply writer;
    ocmap::tell_reply(reply, told, writer);
    return writer.text;
}

std::string device_road::value(const std::string &path) {
    zmf::output_tree reply;
    read(reply);
    return value_at(reply, path.c_str());
}

std::vector<std::string> device_road::leaves_without_value() {
    return missing_;
}

device::description bare_device(uint32_t router_type, bool optical_terminal_device) {
    device::description made = device::lab();
    made.router_type = router_type;
    made.optical_terminal_device = optical_terminal_device;
    made.legacy_optical_terminal_device = !optical_terminal_device;
    made.config = {};
    return made;
}

std::string channel_request(const std::string &entries) {
    return R"({"openconfig-terminal-device:terminal-device":{"logical-channels":{"channel":[)" + entries + "]}}}";
}

} // namespace road
