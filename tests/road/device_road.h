// A device with the plug-in in front of it: OpenConfig edits go down onto it, and its configuration and state come up.
#pragma once

#include <string>
#include <vector>

#include "device/store.h"
#include "zmf.h"

namespace road {

// What an edit came to: a walk's status and text, or the device's refusal.
struct edit_result {
    rcode status = RC_OK;
    std::string path, message;
    std::string error_tag; // of the device; empty: not refused
    std::string native;    // value of the native leaf that was asked for, "-" if it has none or is not there
    bool is_done() const { return status == RC_OK && error_tag.empty(); }
};

class device_road {
public:
    explicit device_road(device::description what);

    // `request` is JSON; `native_leaf` a path with keys in the native edit, for edit_result::native.
    edit_result edit(const std::string &request, const char *native_leaf = nullptr);

    // Configuration below terminal-device/logical-channels, on one line (shown_reply.h); without what stands around it.
    std::string channels();
    // The value of one leaf of it, "-" if it has none or is not there.
    std::string value(const std::string &path);
    std::vector<std::string> leaves_without_value(); // their tags, in the last reply of channels() or seen()

    // What a client sees of what a JSON request chooses, on one line: configuration, or state too in an OP_GET.
    std::string seen(const std::string &request, uint32_t op_type = OP_GET_CONFIG);

    // Down, answer and up, before anything is narrowed. Throws std::runtime_error if a walk fails.
    void read(uint32_t op_type, const zmf::fixed_tree &request, zmf::output_tree &reply);

    const device::description &held() const { return store_.held(); }

private:
    void read(zmf::output_tree &reply); // configuration below terminal-device

    device::store store_;
    std::vector<std::string> missing_;
};

// The lab device of a router type, without configuration; with an optical terminal device, or a legacy one.
device::description bare_device(uint32_t router_type, bool optical_terminal_device);

// A JSON request for channels; `entries` are those of the list.
std::string channel_request(const std::string &entries);

} // namespace road
