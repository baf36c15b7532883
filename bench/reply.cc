// A reply of 10,000 channels, made of native data: walk up, reply tree and JSON together, against libyang, which builds
// the same tree node by node and prints the same text. Each run has a process of its own. What both start from, native
// nodes here and texts of leaves there, is ready before the clock starts.
#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <libyang/libyang.h>
#include <sys/mman.h>
#include <unistd.h>

#include "apart.h"
#include "channels.h"
#include "narrow.h"
#include "output.h"
#include "reply.h"
#include "zmf/plugin.h"
#include "zmf/session.h"

namespace {

using bench::measured;

constexpr int runs = 5;
constexpr uint32_t channels = 10000;
constexpr size_t leaves = channels * bench::leaves_of_channel;

// Walked up and printed; `bytes` is what the reply tree holds of the heap.
measured walk_up(int descriptor) {
    const zmf::plugin plugin(OCOPTICAL_PLUGIN);
    const zmf::fixed_tree native = bench::native_channels(channels);
    zmf::session session(OP_GET_CONFIG);
    ocmap::output out(descriptor);

    const size_t before = bench::heap_in_use();
    const double begin = bench::now();
    zmf::output_tree reply;
    if (plugin.up(session, native, reply, false) != RC_OK)
        throw std::runtime_error("the walk up failed");
    const double built = bench::now();
    const size_t after = bench::heap_in_use();
    const double resumed = bench::now();
    ocmap::print_reply_json(reply, ocmap::whole(reply, [](const auto &) {}), out);
    out.finish();
    return {built - begin + bench::now() - resumed, static_cast<double>(after - before)};
}

struct prepared_leaf {
    const char *container; // null: the channel itself
    const char *tag;
    std::string value;
};

struct prepared_channel {
    std::string index;
    std::vector<prepared_leaf> leaves;
};

std::vector<prepared_channel> prepare() {
    std::vector<prepared_channel> prepared(channels);
    for (uint32_t number = 1; prepared_channel & channel : prepared) {
        channel.index = std::to_string(number);
        channel.leaves.push_back({nullptr, "index", channel.index});
        for (const bench::channel_leaf &leaf : bench::channel_leaves())
            channel.leaves.push_back({leaf.container, leaf.tag, bench::value_of(leaf.value, number)});
        ++number;
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

lyd_node *build(const lys_module *module, const std::vector<prepared_channel> &prepared) {
    lyd_node *top = nullptr;
    must(lyd_new_inner(nullptr, module, "terminal-device", 0, &top));
    lyd_node *list = inner(top, "logical-channels");
    for (const prepared_channel &channel : prepared) {
        lyd_node *entry = nullptr;
        must(lyd_new_list(list, nullptr, "channel", 0, &entry, channel.index.c_str()));
        const char *container = nullptr;
        lyd_node *config = inner(entry, "config");
        for (const prepared_leaf &leaf : channel.leaves) {
            if (leaf.container != container) {
                container = leaf.container;
                config = inner(inner(entry, container), "config");
            }
            must(lyd_new_term(config, nullptr, leaf.tag, leaf.value.c_str(), 0, nullptr));
        }
    }
    return top;
}

// The same with libyang, printed to a stream, which is the fastest of its ways.
measured build_with_libyang(int descriptor) {
    ly_ctx *context = nullptr;
    must(ly_ctx_new(BENCH_MODULES, LY_CTX_NO_YANGLIBRARY, &context));
    (void)load(context, "openconfig-transport-types"); // identities are found in loaded modules only
    const lys_module *module = load(context, "openconfig-terminal-device");
    const std::vector<prepared_channel> prepared = prepare();
    FILE *out = fdopen(descriptor, "w");
    if (out == nullptr)
        throw std::runtime_error("no stream");

    const size_t before = bench::heap_in_use();
    const double begin = bench::now();
    lyd_node *top = build(module, prepared);
    const double built = bench::now();
    const size_t after = bench::heap_in_use();
    const double resumed = bench::now();
    must(lyd_print_file(out, top, LYD_JSON, 0));
    std::fflush(out);
    return {built - begin + bench::now() - resumed, static_cast<double>(after - before)};
}

std::string text_of(measured (*run)(int descriptor)) {
    const int file = memfd_create("reply", MFD_CLOEXEC);
    bench::apart([&] { return run(file); });
    std::string text(static_cast<size_t>(lseek(file, 0, SEEK_END)), '\0');
    if (pread(file, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size()))
        bench::give_up("the text cannot be read");
    close(file);
    return text;
}

measured measure(measured (*run)(int descriptor)) {
    return bench::apart([&] { return run(open("/dev/null", O_WRONLY | O_CLOEXEC)); });
}

bool texts_are_the_same() {
    const std::string ours = text_of(walk_up), theirs = text_of(build_with_libyang);
    const auto [a, b] = std::mismatch(ours.begin(), ours.end(), theirs.begin(), theirs.end());
    if (ours != theirs)
        std::fprintf(stderr, "the texts differ at %td:\n%.200s\n-\n%.200s\n", a - ours.begin(), &*a, &*b);
    return ours == theirs;
}

} // namespace

int main() {
    if (!texts_are_the_same())
        return 1;
    std::vector<double> times, sizes;
    for (int run = 0; run < runs; ++run) {
        const measured up = measure(walk_up), built = measure(build_with_libyang);
        std::printf("walk up, reply and JSON: %7.2f ms, %5.1f bytes a leaf; libyang: %7.2f ms, %5.1f bytes a leaf\n",
                    up.seconds * 1e3, up.bytes / leaves, built.seconds * 1e3, built.bytes / leaves);
        times.push_back(up.seconds / built.seconds);
        sizes.push_back(up.bytes / built.bytes);
    }
    std::printf("reply / libyang, time: %.2f (median of %d)\n", bench::median(times), runs);
    std::printf("reply / libyang, memory per leaf: %.2f (median of %d)\n", bench::median(sizes), runs);
}
