// A reply of 10,000 channels, made of native data: walk up, reply tree and JSON together, against libyang, which builds
// the same tree node by node and prints the same text. Each run has a process of its own. What both start from, native
// nodes here and texts of leaves there, is ready before the clock starts.
// To add a reply: a row of `replies`.
#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <libyang/libyang.h>
#include <sys/mman.h>
#include <unistd.h>

#include "apart.h"
#include "channels.h"
#include "device/store.h"
#include "narrow.h"
#include "output.h"
#include "reply.h"
#include "schema/schema.h"
#include "zmf/plugin.h"
#include "zmf/session.h"

namespace {

using bench::measured;

constexpr int runs = 5;
constexpr uint32_t channels = 10000;

// What a device answers to a request for native subtrees, and what a channel of the reply to it has.
struct reply_row {
    const char *name;
    uint32_t op_type;
    std::string device;
    std::vector<std::pair<const char *, const char *>> asked; // module and path
    std::span<const bench::told_node> channel;

    size_t leaves() const { return channels * bench::leaves_of(channel); }
};

constexpr const char *config_module = "Corvane-terminal-device-cfg";
constexpr const char *otu_module = "Corvane-controller-otu-oper";
constexpr const char *performance_module = "Corvane-pmengine-oper";

const std::array replies{
    reply_row{"configuration",
              OP_GET_CONFIG,
              bench::configured_device(),
              {{config_module, "/logical-channels"}},
              bench::configured_channel()},
    reply_row{"state from flex bins",
              OP_GET,
              bench::live_device(bench::performance::flex_bins),
              {{config_module, "/logical-channels"},
               {otu_module, "/otu"},
               {performance_module, "/performance-management/otu"}},
              bench::live_channel()},
    reply_row{"state from history",
              OP_GET,
              bench::live_device(bench::performance::history),
              {{config_module, "/logical-channels"},
               {otu_module, "/otu"},
               {performance_module, "/performance-management-history/global/periodic/otu-history"}},
              bench::live_channel()},
};

zmf::fixed_tree answer(const device::store &device, const reply_row &row) {
    zmf::session session(row.op_type);
    zmf::output_tree request;
    for (const auto &[module, path] : row.asked)
        if (zmf_map_datatree_add_path_flagged(session.context(), request.root(), path, schema::ns_of_module(module),
                                              nullptr, nullptr, nullptr, 0, 0) != RC_OK)
            throw std::runtime_error("no request for native data");
    return device.answer(request, row.op_type == OP_GET);
}

// Walked up and printed; `bytes` is what the reply tree holds of the heap.
measured walk_up(const reply_row &row, int descriptor) {
    const device::store device(device::parse(bench::for_ports(row.device, channels), row.name));
    device::install(device.held());
    const zmf::plugin plugin(OCOPTICAL_PLUGIN);
    plugin.serve(device.held().flex_bins ? zmf::performance::flex_bins : zmf::performance::history);
    device::install_state_store(device.held(), row.name);
    const zmf::fixed_tree native = answer(device, row);
    zmf::session session(row.op_type);
    ocmap::output out(descriptor);

    const size_t before = bench::heap_in_use();
    const double begin = bench::now();
    zmf::output_tree reply;
    if (plugin.up(session, native, reply, row.op_type == OP_GET) != RC_OK)
        throw std::runtime_error("the walk up failed");
    const double built = bench::now();
    const size_t after = bench::heap_in_use();
    const double resumed = bench::now();
    ocmap::print_reply_json(reply, ocmap::whole(reply, [](const auto &) {}), out);
    out.finish();
    return {built - begin + bench::now() - resumed, static_cast<double>(after - before)};
}

// A value for each row of the table of nodes; that of a container is not looked at.
struct prepared_channel {
    std::string index;
    std::vector<std::string> values;
};

// Channels in the order of the reply: controllers come ordered by their names, which tell them apart by "#/1".
std::vector<prepared_channel> prepare(const reply_row &row) {
    std::vector<uint32_t> ports(channels);
    std::iota(ports.begin(), ports.end(), 1);
    if (row.op_type == OP_GET)
        std::ranges::sort(ports, {}, [](uint32_t port) { return std::to_string(port) + "/1"; });
    std::vector<prepared_channel> prepared(channels);
    for (size_t i = 0; i < channels; ++i) {
        prepared[i].index = std::to_string(ports[i]);
        for (const bench::told_node &node : row.channel)
            prepared[i].values.push_back(node.value == nullptr ? "" : bench::numbered(node.value, ports[i]));
    }
    return prepared;
}

void must(LY_ERR result) {
    if (result != LY_SUCCESS)
        throw std::runtime_error("libyang: error " + std::to_string(result));
}

const lys_module *load(ly_ctx *context, const char *module) {
    const lys_module *loaded = ly_ctx_load_module(context, module, nullptr, nullptr);
    if (loaded == nullptr)
        throw std::runtime_error(std::string("libyang does not take ") + module);
    return loaded;
}

lyd_node *inner(lyd_node *parent, const char *tag) {
    lyd_node *made = nullptr;
    must(lyd_new_inner(parent, nullptr, tag, 0, &made));
    return made;
}

lyd_node *build(const lys_module *module, const reply_row &row, const std::vector<prepared_channel> &prepared) {
    constexpr size_t deepest = 8;
    lyd_node *top = nullptr;
    must(lyd_new_inner(nullptr, module, "terminal-device", 0, &top));
    lyd_node *list = inner(top, "logical-channels");
    for (const prepared_channel &channel : prepared) {
        std::array<lyd_node *, deepest> above{};
        must(lyd_new_list(list, nullptr, "channel", 0, &above[0], channel.index.c_str()));
        for (size_t i = 0; i < row.channel.size(); ++i) {
            const bench::told_node &node = row.channel[i];
            if (node.value == nullptr)
                above[node.depth + 1] = inner(above[node.depth], node.tag);
            else
                must(lyd_new_term(above[node.depth], nullptr, node.tag, channel.values[i].c_str(), 0, nullptr));
        }
    }
    return top;
}

// The same with libyang, printed to a stream, which is the fastest of its ways.
measured build_with_libyang(const reply_row &row, int descriptor) {
    ly_ctx *context = nullptr;
    must(ly_ctx_new(BENCH_MODULES, LY_CTX_NO_YANGLIBRARY, &context));
    (void)load(context, "openconfig-transport-types"); // identities are found in loaded modules only
    const lys_module *module = load(context, "openconfig-terminal-device");
    const std::vector<prepared_channel> prepared = prepare(row);
    FILE *out = fdopen(descriptor, "w");
    if (out == nullptr)
        throw std::runtime_error("no stream");

    const size_t before = bench::heap_in_use();
    const double begin = bench::now();
    lyd_node *top = build(module, row, prepared);
    const double built = bench::now();
    const size_t after = bench::heap_in_use();
    const double resumed = bench::now();
    must(lyd_print_file(out, top, LYD_JSON, 0));
    std::fflush(out);
    return {built - begin + bench::now() - resumed, static_cast<double>(after - before)};
}

using work = measured (*)(const reply_row &row, int descriptor);

std::string text_of(work run, const reply_row &row) {
    const int file = memfd_create("reply", MFD_CLOEXEC);
    bench::apart([&] { return run(row, file); });
    std::string text(static_cast<size_t>(lseek(file, 0, SEEK_END)), '\0');
    if (pread(file, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size()))
        bench::give_up("the text cannot be read");
    close(file);
    return text;
}

measured measure(work run, const reply_row &row) {
    return bench::apart([&] { return run(row, open("/dev/null", O_WRONLY | O_CLOEXEC)); });
}

bool texts_are_the_same(const reply_row &row) {
    const std::string ours = text_of(walk_up, row), theirs = text_of(build_with_libyang, row);
    const auto [a, b] = std::mismatch(ours.begin(), ours.end(), theirs.begin(), theirs.end());
    if (ours != theirs)
        std::fprintf(stderr, "%s: the texts differ at %td:\n%.200s\n-\n%.200s\n", row.name, a - ours.begin(), &*a, &*b);
    return ours == theirs;
}

void measure(const reply_row &row) {
    const auto leaves = static_cast<double>(row.leaves());
    std::vector<double> times, sizes;
    for (int run = 0; run < runs; ++run) {
        const measured up = measure(walk_up, row), built = measure(build_with_libyang, row);
        std::printf("walk up, reply and JSON: %7.2f ms, %5.1f bytes a leaf; libyang: %7.2f ms, %5.1f bytes a leaf\n",
                    up.seconds * 1e3, up.bytes / leaves, built.seconds * 1e3, built.bytes / leaves);
        times.push_back(up.seconds / built.seconds);
        sizes.push_back(up.bytes / built.bytes);
    }
    std::printf("reply / libyang, %s, time: %.2f (median of %d)\n", row.name, bench::median(times), runs);
    std::printf("reply / libyang, %s, memory per leaf: %.2f (median of %d)\n", row.name, bench::median(sizes), runs);
}

} // namespace

int main() {
    for (const reply_row &row : replies) {
        if (!texts_are_the_same(row))
            return 1;
        measure(row);
    }
}
