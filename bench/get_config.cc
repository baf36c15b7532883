// Time and memory of a get-config of many channels, by the road that `ocmap get-config` takes: request down, answer of
// the device, walk up, narrowing, JSON. Each run has a process of its own and begins when the device is there. Memory
// is what the process grows by at its peak.
#include <array>
#include <cstdio>
#include <cstdlib>
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

// The channels are named by their container, or each by its number. A request is refused where its native tree would
// outgrow the memory that its size is given; what names 100,000 channels one by one is.
struct request_row {
    const char *name;
    std::string (*text)(uint32_t channels);
    std::vector<uint32_t> counts;
    uint32_t base; // the greatest count is compared to it
};

std::string whole_container(uint32_t) {
    return R"({"openconfig-terminal-device:terminal-device":{"logical-channels":{}}})";
}

std::string each_by_number(uint32_t channels) {
    std::string entries;
    for (uint32_t channel = 1; channel <= channels; ++channel)
        entries += (channel == 1 ? R"({"index":)" : R"(,{"index":)") + std::to_string(channel) + "}";
    return R"({"openconfig-terminal-device:terminal-device":{"logical-channels":{"channel":[)" + entries + "]}}}";
}

const std::array requests{
    request_row{"each by number", each_by_number, {100, 1000, 10000}, 1000},
    request_row{"", whole_container, {100, 1000, 10000, 100000}, 1000},
};

// Two containers; for each channel itself, its key, its containers and its leaves.
size_t nodes_of(uint32_t channels) {
    constexpr size_t containers = 3 + 4; // ethernet, otn, ingress, and `config` in each and in the channel
    return 2 + channels * (2 + containers + bench::leaves_of_channel);
}

measured get_config(const std::string &device, const std::string &request_text, uint32_t channels) {
    ocmap::road_options options;
    options.device = device;
    options.plugin = OCOPTICAL_PLUGIN;
    ocmap::road road(options);
    ocmap::output out(open("/dev/null", O_WRONLY | O_CLOEXEC));

    const size_t resident = bench::resident();
    const double begin = bench::now();
    const ocmap::request_file request{ocmap::read_request(request_text, ocmap::format::json, true), ocmap::format::json,
                                      request_text.size()};
    const ocmap::client_filter asked(request.tree);
    zmf::session session(OP_GET_CONFIG);
    zmf::output_tree reply;
    road.read(session, request, asked.bytes(), reply);
    ocmap::print_reply_json(reply, ocmap::narrowed(reply, asked, ocmap::warn_of_missing), out);
    out.finish();
    const double end = bench::now();
    if (reply.nodes() != nodes_of(channels))
        throw std::runtime_error("the reply is not that of all channels");
    return {end - begin, static_cast<double>(bench::peak_resident() - resident)};
}

class device_file {
public:
    explicit device_file(uint32_t channels) {
        const int made = mkstemp(name_.data());
        if (made < 0)
            bench::give_up("no temporary file");
        close(made);
        bench::apart([&] {
            device::write_file(bench::device_with_channels(channels), name_);
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

struct per_channel {
    double seconds, bytes;
};

per_channel measure(const request_row &row, uint32_t channels) {
    const device_file device(channels);
    const std::string request = row.text(channels);
    std::vector<double> seconds, bytes;
    for (int run = 0; run < runs; ++run) {
        const measured each = bench::apart([&] { return get_config(device.name(), request, channels); });
        seconds.push_back(each.seconds / channels);
        bytes.push_back(each.bytes / channels);
    }
    return {bench::median(seconds), bench::median(bytes)};
}

void measure(const request_row &row) {
    per_channel base{}, last{};
    for (const uint32_t channels : row.counts) {
        last = measure(row, channels);
        if (channels == row.base)
            base = last;
        std::printf("%7u channels: %9.3f ms, %6.2f us and %5.0f bytes a channel\n", channels,
                    last.seconds * channels * 1e3, last.seconds * 1e6, last.bytes);
    }
    const std::string how = *row.name == '\0' ? "" : std::string(", ") + row.name;
    std::printf("get-config%s, memory per channel at %u / at %u: %.2f (median of %d)\n", how.c_str(), row.counts.back(),
                row.base, last.bytes / base.bytes, runs);
    std::printf("get-config%s, time per channel at %u / at %u: %.2f (median of %d)\n", how.c_str(), row.counts.back(),
                row.base, last.seconds / base.seconds, runs);
}

} // namespace

int main() {
    for (const request_row &row : requests)
        measure(row);
}
