// What the commands have in common: their options, and the road of a request: down to the native tree, onto the device,
// and up again.
#pragma once

#include <cstdint>
#include <string>

#include "device/store.h"
#include "input.h"
#include "narrow.h"
#include "output.h"
#include "progress.h"
#include "zmf/plugin.h"
#include "zmf/session.h"

namespace CLI {
class App;
}

namespace ocmap {

struct road_options {
    std::string device, plugin, form;
    bool calls = false, trace = false;
};
void add_road_options(CLI::App &command, road_options &options);
void add_device_options(CLI::App &command, road_options &options); // of these: the device and the plug-in
void add_plugin_option(CLI::App &command, std::string &file);
std::string plugin_of(const road_options &options); // the file to load

// A walk that came to a failure; everything written before it is out.
struct walk_failure {
    zmf::failure what;
};

enum class gate { open, shut };

class road {
public:
    explicit road(const road_options &options); // reads the device, and makes it the one that the plug-in asks

    // Both throw walk_failure. The second drops what the first left in the session. `request`: of OpenConfig nodes;
    // `filter_bytes`: storage that the request has beside its nodes.
    void down(zmf::session &session, const request_file &request, size_t filter_bytes, zmf::output_tree &native);
    void up(zmf::session &session, const zmf::fixed_tree &native, bool with_operational, zmf::output_tree &reply);

    // Down, answer, up: what a request asks for, and more; configuration alone where the session is of OP_GET_CONFIG.
    void read(zmf::session &session, const request_file &request, size_t filter_bytes, zmf::output_tree &reply);

    // Calls and log lines of the session, as the options want them.
    void watch(zmf::session &session);
    void end_of_calls(); // they have a line between them and what follows

    format form_for(format of_request) const;
    void print_reply(const zmf::output_tree &reply, const selection &told, format form);

private:
    device::store read_device();

    const road_options options_;
    progress steps_; // told of a device or request that is large

public:
    output out;
    device::store device;
    const zmf::plugin plugin;
};

// Tells a leaf of a reply that has no value on standard error.
void warn_of_missing(zmf::output_node leaf);

} // namespace ocmap
