// Time and memory of reads of many ports, by the road that `ocmap get` and `ocmap get-config` take: request down,
// answer of the device, walk up, narrowing, JSON. Each run has a process of its own and begins when the device is
// there. Memory is what the process grows by at its peak. To add a read: a row of `reads`.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include "apart.h"
#include "channels.h"
#include "narrow.h"
#include "reply.h"
#include "request.h"
#include "road.h"

namespace {

using bench::measured;

constexpr int runs = 5;

// A read of many ports. Device and request are texts for them (channels.h).
struct read_row {
    const char *name;
    uint32_t op_type;
    std::string device;
    const char *request;
    std::vector<uint32_t> counts;
    uint32_t base;                   // the greatest count is compared to it
    size_t nodes_a_port, nodes_once; // of the reply, before it is narrowed
};

constexpr const char *by_number =
    R"({"openconfig-terminal-device:terminal-device":{"logical-channels":{"channel":[<<{"index":#}>>]}}})";
constexpr const char *all_channels = R"({"openconfig-terminal-device:terminal-device":{"logical-channels":{}}})";
constexpr const char *all_there_is =
    R"({"openconfig-terminal-device:terminal-device":{},"openconfig-platform:components":{}})";

// A channel has an entry and a key; those of ODU and Ethernet two containers and four leaves below.
const size_t configured_nodes = 2 + bench::configured_channel().size();
const size_t live_nodes = 2 + bench::live_channel().size();
constexpr size_t controller_nodes = 2 + 2 + 4;
// ESNR has no interval in flex bins.
constexpr size_t esnr_nodes = 1 + 6, esnr_history_nodes = esnr_nodes + 1;
// Read for all channels at once, history has no OTN counters, and nothing of an ODU.
constexpr size_t counters = 4;
// A component has an entry, a key, `config/name`, and four statistics of seven leaves in `optical-channel/state`.
constexpr size_t component_nodes = 2 + 2 + 2 + 4 * (1 + 7);

// A request is refused where its native tree would outgrow the memory that its size is given; what names 100,000
// channels one by one is.
const std::array reads{
    read_row{"get-config, each by number",
             OP_GET_CONFIG,
             bench::configured_device(),
             by_number,
             {100, 1000, 10000},
             1000,
             configured_nodes,
             2},
    read_row{"get-config",
             OP_GET_CONFIG,
             bench::configured_device(),
             all_channels,
             {100, 1000, 10000, 100000},
             1000,
             configured_nodes,
             2},
    read_row{"get, flex bins",
             OP_GET,
             bench::live_device(bench::performance::flex_bins),
             all_there_is,
             {100, 1000, 10000},
             1000,
             live_nodes + esnr_nodes + 2 * controller_nodes + component_nodes,
             3},
    read_row{"get, history",
             OP_GET,
             bench::live_device(bench::performance::history),
             all_there_is,
             {100, 1000, 10000},
             1000,
             live_nodes + esnr_history_nodes - counters + controller_nodes + component_nodes,
             3},
};

measured read(const read_row &row, const std::string &device, const std::string &request_text, uint32_t ports) {
    ocmap::road_options options;
    options.device = device;
    options.plugin = OCOPTICAL_PLUGIN;
    ocmap::road road(options);
    ocmap::output out(open("/dev/null", O_WRONLY | O_CLOEXEC));

    const size_t resident = bench::resident_anew();
    const double begin = bench::now();
    const ocmap::request_file request{ocmap::read_request(request_text, ocmap::format::json, true), ocmap::format::json,
                                      request_text.size()};
    const ocmap::client_filter asked(request.tree);
    zmf::session session(row.op_type);
    zmf::output_tree reply;
    road.read(session, request, asked.bytes(), reply);
    ocmap::print_reply_json(reply, ocmap::narrowed(reply, asked, ocmap::warn_of_missing), out);
    out.finish();
    const double end = bench::now();
    if (reply.nodes() != row.nodes_once + ports * row.nodes_a_port)
        throw std::runtime_error(std::string(row.name) + ": the reply has " + std::to_string(reply.nodes()) +
                                 " nodes, and not those of all ports");
    return {end - begin, static_cast<double>(bench::peak_resident() - resident)};
}

class device_file {
public:
    device_file(const read_row &row, uint32_t ports) {
        const int made = mkstemp(name_.data());
        if (made < 0)
            bench::give_up("no temporary file");
        close(made);
        bench::apart([&] {
            if (!(std::ofstream(name_) << bench::for_ports(row.device, ports) << std::flush))
                throw std::runtime_error("no device file");
            return measured{};
        });
    }
    ~device_file() { std::remove(name_.c_str()); }
    device_file(const device_file &) = delete;
    device_file &operator=(const device_file &) = delete;

    const std::string &name() const { return name_; }

private:
    std::string name_ = "/tmp/bench-device-XXXXXX";
};

struct per_port {
    double seconds, bytes;
};

per_port measure(const read_row &row, uint32_t ports) {
    const device_file device(row, ports);
    const std::string request = bench::for_ports(row.request, ports);
    std::vector<double> seconds, bytes;
    for (int run = 0; run < runs; ++run) {
        const measured each = bench::apart([&] { return read(row, device.name(), request, ports); });
        seconds.push_back(each.seconds / ports);
        bytes.push_back(each.bytes / ports);
    }
    return {bench::median(seconds), bench::median(bytes)};
}

void measure(const read_row &row) {
    per_port base{}, last{};
    for (const uint32_t ports : row.counts) {
        last = measure(row, ports);
        if (ports == row.base)
            base = last;
        std::printf("%7u ports: %9.3f ms, %7.2f us and %6.0f bytes a port\n", ports, last.seconds * ports * 1e3,
                    last.seconds * 1e6, last.bytes);
    }
    std::printf("%s, memory per port at %u / at %u: %.2f (median of %d)\n", row.name, row.counts.back(), row.base,
                last.bytes / base.bytes, runs);
    std::printf("%s, time per port at %u / at %u: %.2f (median of %d)\n", row.name, row.counts.back(), row.base,
                last.seconds / base.seconds, runs);
}

} // namespace

int main() {
    for (const read_row &row : reads)
        measure(row);
}
