// A read allocates nothing of its own: calls of the allocator that come from the plug-in are counted, so that the text
// copies of the framework do not count. This program's allocator stands before the C library's; a sanitizer has one of
// its own, and then there is nothing to count.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <link.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "hardware/hardware.h"
#include "namespaces.h"
#include "request_text.h"
#include "zmf/plugin.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

struct range {
    uintptr_t from = 0, to = 0;
};

range plugin_code;
uint64_t allocations; // by the plug-in

} // namespace

#ifdef __SANITIZE_ADDRESS__
constexpr bool is_counted = false;
#else
constexpr bool is_counted = true;

#define NOTE_CALLER()                                                                                                  \
    do {                                                                                                               \
        const auto caller = reinterpret_cast<uintptr_t>(__builtin_return_address(0));                                  \
        allocations += caller >= plugin_code.from && caller < plugin_code.to;                                          \
    } while (0)

extern "C" {
void *__libc_malloc(size_t size);               // NOLINT(bugprone-reserved-identifier): the C library's own
void *__libc_calloc(size_t count, size_t size); // NOLINT(bugprone-reserved-identifier)

__attribute__((visibility("default"))) void *malloc(size_t size) {
    NOTE_CALLER();
    return __libc_malloc(size);
}

__attribute__((visibility("default"))) void *calloc(size_t count, size_t size) {
    NOTE_CALLER();
    return __libc_calloc(count, size);
}
}
#endif

namespace {

const zmf::plugin &loaded() {
    static const zmf::plugin plugin(OCOPTICAL_PLUGIN);
    return plugin;
}

range code_of(const void *symbol) {
    range found;
    Dl_info info;
    if (dladdr(symbol, &info) != 0) {
        found.from = reinterpret_cast<uintptr_t>(info.dli_fbase);
    }
    dl_iterate_phdr(
        [](dl_phdr_info *object, size_t, void *to) {
            auto *place = static_cast<range *>(to);
            for (int i = 0; object->dlpi_addr == place->from && i < object->dlpi_phnum; ++i) {
                place->to = std::max<uintptr_t>(place->to, object->dlpi_addr + object->dlpi_phdr[i].p_vaddr +
                                                               object->dlpi_phdr[i].p_memsz);
            }
            return 0;
        },
        &found);
    return found;
}

class allocation : public testing::Test {
protected:
    void SetUp() override {
        if (!is_counted) {
            GTEST_SKIP();
        }
        hardware::current() = {};
        hardware::current().router_type = 5;
        hardware::current().optical_terminal_device = true;
        hardware::current().name_of[1] = "CoherentDSP0_1_0_2";
        hardware::current().channel_of["CoherentDSP0_1_0_2"] = 1;
        plugin_code = code_of(loaded().symbol("oc_optical_is_lineport_grey"));
        allocations = 0;
    }

    // Adds that came of it.
    static uint64_t walk(const std::string &root, const std::string &text, const char *ns) {
        uint64_t adds = 0;
        zmf::session session(OP_GET);
        session.record(
            [&adds](const zmf::call &c) { adds += c.op == zmf::operation::add_path || c.op == zmf::operation::xpath; });
        request_text request(text, ns);
        zmf::output_tree output;
        EXPECT_EQ(loaded().node_function(root)(session.context(), request.top(), output.root()), RC_OK);
        return adds;
    }
};

TEST_F(allocation, none_in_a_read) {
    const uint64_t asked = walk("ymap_ox_oc_optical_openconfigterminaldevice_lvla_terminaldevice",
                                "terminal-device{logical-channels{channel{index=1}}}", ZMF_NS_OC_TERMINAL_DEVICE);
    EXPECT_GT(asked, 20u);

    const std::string statistics = "{minimum=1E-5 average=2 maximum=3 min-time=4 max-time=5}";
    const uint64_t told =
        walk("ymap_xo_oc_optical_corvanepmengineoper_lvla_performancemanagement",
             "performance-management{otu{otu-ports{otu-port{name=CoherentDSP0/1/0/2 otu-prev{otu-prev-flex-interval{"
             "otu-prev-flex-interval-fecs{otu-prev-flex-interval-fec{number=1 ec-bits{data=1} pre-fec-ber" +
                 statistics + " q" + statistics +
                 " flex-bin-interval=30}}}}}}}"
                 "optics{optics-ports{optics-port{name=Optics0/1/0/2 optics-prev{optics-prev-flex-interval{"
                 "optics-prev-flex-interval-optics{optics-prev-flex-interval-optic{number=1 cd" +
                 statistics + " pdl" + statistics + " snr" + statistics + " flex-bin-interval=30}}}}}}}}",
             ZMF_NS_PMENGINE_OPER);
    EXPECT_EQ(told, 1 + 5 + 5 + 3 + 1 + 5 + 5 + 5 + 1u);
    EXPECT_EQ(allocations, 0u);
}

// What does allocate is counted.
TEST_F(allocation, is_seen) {
    const auto to_name = reinterpret_cast<rcode (*)(zmf_map_ctx, const char *, char **)>(
        loaded().symbol("index_string_to_interface_name"));
    char *name = nullptr;
    EXPECT_EQ(to_name(nullptr, "1", &name), RC_OK);
    EXPECT_STREQ(name, "CoherentDSP0_1_0_2");
    EXPECT_EQ(allocations, 1u);
    free(name);
}

} // namespace
