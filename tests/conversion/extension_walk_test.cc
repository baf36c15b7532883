// The vendor's part of an optical channel in a walk: what reaches it, what is passed over, and what is refused.
#include <string>

#include <gtest/gtest.h>

#include "adds.h"
#include "corvane_openconfig_terminal_device_ext/ymap_oc_optical_corvane_openconfig_terminal_device_ext.h"
#include "exported.h"
#undef OC_MODEL
#undef OC_TABLE
#include "hardware/hardware.h"
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"
#include "walk/request_text.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

constexpr uint32_t cfg = OP_GET_CONFIG, get = OP_GET, edit = OP_EDIT;
constexpr auto component = ymap_ox_oc_optical_openconfigterminaldevice_augment_lvla_component;
constexpr auto augment = ymap_ox_oc_optical_corvaneopenconfigterminaldeviceext_augment_lvla_optical_channel;

const std::string entries = "I list\nI/interface-name=Optics0/1/0/2\nI/active=act\nT list\n"
                            "T/ifname=0_1-OpticalChannel0_1_0_2\n";
const std::string port = "P list\nP/name=Optics0/1/0/2\n";

// Nodes "x:..." are the vendor's where `foreign` does not say otherwise.
struct walk_row {
    zmf_node_fn walk;
    bool legacy;
    uint32_t kind;
    const char *request;
    rcode status;
    const char *err_msg;
    std::string adds;
    const char *foreign = ZMF_NS_OPTICAL_CHANNEL_EXT;
};

void check(const walk_row &row, const char *ns) {
    SCOPED_TRACE(std::string(row.request) + " kind " + std::to_string(row.kind) + (row.legacy ? " legacy" : ""));
    hardware::current() = {};
    hardware::current().router_type = 18;
    hardware::current().legacy_optical_terminal_device = row.legacy;
    zmf::session session(row.kind);
    const add_log log(session);
    strcpy(session.request().component_name, "0/1-OpticalChannel0/1/0/2");
    request_text request(row.request, ns, row.foreign);
    zmf::output_tree output;
    EXPECT_EQ(row.walk(session.context(), request.top(), output.root()), row.status);
    EXPECT_STREQ(session.request().err_msg, row.err_msg);
    EXPECT_EQ(log.text, row.adds);
    EXPECT_EQ(session.error_marks(), row.err_msg != nullptr ? 1u : 0u);
    EXPECT_EQ(session.hierarchy_depth(), 0u);
    EXPECT_EQ(request.changes(), "");
}

TEST(extension, in_the_walk_of_an_optical_channel) {
    const std::string rate = "O/optics-baud-rate=69.4000000 @ cross\n";
    const std::string leaves = "T/frequency @ cross\nT/power @ cross\nT/operational-mode @\nT/line-port @\n";
    const walk_row rows[] = {
        {component, false, edit, "optical-channel{x:extended{x:config{x:baud-rate=69.4}}}", RC_OK, nullptr,
         entries + rate},
        {component, true, edit, "optical-channel{x:extended{x:config{x:baud-rate=69.4}}}", RC_OK, nullptr, entries},
        {component, true, edit, "optical-channel{x:extended{x:unknown=1}}", RC_OK, nullptr, entries},
        {component, true, get, "optical-channel{x:extended{x:config{x:baud-rate}}}", RC_OK, nullptr, entries},

        // An edit knows one child by tag and namespace; a read leaves both to the vendor's model, which looks at tags.
        {component, false, edit, "optical-channel{x:other{x:config}}", RC_OK, nullptr, entries},
        {component, false, edit, "optical-channel{x:extended{x:config}}", RC_OK, nullptr, entries, foreign_ns},
        {component, false, edit, "optical-channel{x:other!delete}", RC_OK, nullptr, entries, foreign_ns},
        {component, false, get, "optical-channel{x:extended{x:config{x:baud-rate}}}", RC_OK, nullptr,
         entries + port + "O/optics-baud-rate= cross\n", foreign_ns},
        {component, false, get, "optical-channel{x:other{x:config}}", RC_OK, nullptr, entries},
        {component, false, get, "optical-channel{x:other{x:config}}", RC_OK, nullptr, entries, foreign_ns},

        // Below the vendor's own container.
        {component, false, edit, "optical-channel{x:extended{x:unknown=1}}", RC_UNSUPPORTED_NODE, "unknown", entries},
        {component, false, edit, "optical-channel{x:extended{x:config{x:baud-rate=69.4 x:unknown=1}}}",
         RC_UNSUPPORTED_NODE, "unknown", entries + rate},
        {component, false, edit, "optical-channel{x:extended{x:state{x:baud-rate=69.4}}}", RC_UNSUPPORTED_NODE, "state",
         entries},
        {component, false, edit, "optical-channel{x:extended{novel=1}}", RC_UNSUPPORTED_AUGMENT, "novel", entries},
        {component, false, edit, "optical-channel{x:extended{x:thresholds{x:config{novel=1}}}}", RC_UNSUPPORTED_AUGMENT,
         "novel", entries},
        {component, false, edit, "optical-channel{x:extended{novel!remove}}", RC_OK, nullptr, entries},
        {component, false, cfg, "optical-channel{x:extended{x:unknown novel x:config{x:baud-rate}}}", RC_OK, nullptr,
         entries + "O/optics-baud-rate= cross\n"},

        // The whole channel is walked twice, and the vendor's part sees a tag that is not its own.
        {component, false, edit, "optical-channel!delete", RC_OK, nullptr, entries + leaves + entries + leaves},

        // Beside the optical channel.
        {component, false, edit, "novel{a=1}", RC_UNSUPPORTED_NODE, "novel", ""},
        {component, false, get, "novel{a=1}", RC_OK, nullptr, ""},
        {component, false, edit, "x:novel{a=1}", RC_UNSUPPORTED_AUGMENT, "novel", "", foreign_ns},
        {component, false, get, "x:novel{a=1}", RC_OK, nullptr, "", foreign_ns},
    };
    for (const walk_row &row : rows) {
        check(row, ZMF_NS_OC_TERMINAL_DEVICE);
    }
}

TEST(extension, by_its_own_entry) {
    const walk_row rows[] = {
        {augment, false, edit, "other{config}", RC_UNSUPPORTED_NODE, "other", ""},
        {augment, false, get, "other{config}", RC_OK, nullptr, ""},
        {augment, false, edit, "x:other{config}", RC_UNSUPPORTED_AUGMENT, "other", "", foreign_ns},
        {augment, false, edit, "x:other!delete{config}", RC_OK, nullptr, "", foreign_ns},
        {augment, true, edit, "extended{config{fastpoll-sop-enable=enable}}", RC_OK, nullptr,
         "O/optics-fastpoll=enable @ cross\n"},
    };
    for (const walk_row &row : rows) {
        check(row, ZMF_NS_OPTICAL_CHANNEL_EXT);
    }
}

// An unknown tag leaves a line in the trace whether or not it fails.
TEST(extension, traces_what_it_does_not_know) {
    for (const uint32_t kind : {get, edit}) {
        zmf::session session(kind);
        std::string lines;
        session.ring([&](std::string_view line) { lines += std::string(line) + "\n"; });
        request_text request("other{config}", ZMF_NS_OPTICAL_CHANNEL_EXT);
        zmf::output_tree output;
        augment(session.context(), request.top(), output.root());
        EXPECT_NE(lines.find("Unsupported tag `other` is specified in the request."), std::string::npos) << lines;
    }
}

} // namespace
