// Values on their whole way: down onto the device, and back up as configuration. A value more: a row. A row is tried on
// each device that it names.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "device_road.h"
#include "request.h"
#include "zmf/plugin.h"
#include "zmf/session.h"

namespace {

using road::bare_device;
using road::channel_request;
using road::device_road;
using road::edit_result;

enum devices : unsigned {
    type5 = 1,
    type7 = 2,
    type18 = 4,
    type19 = 8,
    all_types = 15,
    terminal = 16, // with an optical terminal device
    legacy = 32,
    everywhere = all_types | terminal | legacy,
};

struct router {
    uint32_t type;
    unsigned bit;
};
constexpr router routers[] = {{5, type5}, {7, type7}, {18, type18}, {19, type19}};

template <typename action>
void for_devices(unsigned wanted, action run) {
    for (const router &each : routers)
        for (const bool is_terminal : {true, false})
            if ((wanted & each.bit) != 0 && (wanted & (is_terminal ? terminal : legacy)) != 0) {
                SCOPED_TRACE("router type " + std::to_string(each.type) + (is_terminal ? "" : ", legacy"));
                run(device_road(bare_device(each.type, is_terminal)));
            }
}

// Where leaves stand, in OpenConfig and in the native model.
struct place {
    const char *path;           // below the channel, up to the leaf
    const char *before, *after; // what stands around the leaf in a request
    const char *native;
};
const place channel{"config/", R"("config":{)", "}", ""};
const place ethernet{"ethernet/config/", R"("ethernet":{"config":{)", "}}", "ethernet/"};
const place otn{"otn/config/", R"("otn":{"config":{)", "}}", "otn/"};
const place ingress{"ingress/config/", R"("ingress":{"config":{)", "}}", ""};
const place assignment{"logical-channel-assignments/assignment[index='1']/config/",
                       R"("logical-channel-assignments":{"assignment":[{"index":1,"config":{)", "}}]}",
                       "logical-channel-assignments/logical-channel-assignment[assignment-index='1']/"};

std::string request_for(const place &where, const std::string &leaf, const std::string &value) {
    return channel_request(R"({"index":300,)" + std::string(where.before) + '"' + leaf + "\":" + value + where.after +
                           "}");
}

std::string oc_path(const place &where, const std::string &leaf) {
    return "/terminal-device/logical-channels/channel[index='300']/" + std::string(where.path) + leaf;
}

std::string native_path(const place &where, const std::string &leaf) {
    return "/logical-channels/channel[channel-index='300']/" + std::string(where.native) + leaf;
}

const std::string types = "openconfig-transport-types:";
const std::string long_64(64, 'x'), long_65(65, 'x');

std::string quoted(const std::string &text) {
    return '"' + text + '"';
}

TEST(value, comes_back_as_it_went_or_changed_as_it_must) {
    struct {
        const place &where;
        std::string leaf, value; // as JSON
        std::string native_leaf, native;
        std::string back;
        unsigned on = everywhere;
    } const rows[] = {
        {channel, "description", quoted("east side"), "description", "east side", "east side"},
        {channel, "description", R"("a<b & \"c\" \u00e9")", "description", "a<b & \"c\" \xc3\xa9",
         "a<b & \"c\" \xc3\xa9"},
        {channel, "description", quoted(""), "description", "", ""},
        {channel, "index", "300", "channel-index", "300", "300"},
        {channel, "admin-state", quoted("ENABLED"), "admin-state", "enable", "ENABLED"},
        {channel, "admin-state", quoted("DISABLED"), "admin-state", "disable", "DISABLED"},
        {channel, "admin-state", quoted("MAINT"), "admin-state", "maintenance", "MAINT"},
        {channel, "loopback-mode", quoted("NONE"), "loopback-mode", "none", "NONE"},
        {channel, "loopback-mode", quoted("FACILITY"), "loopback-mode", "facility", "FACILITY"},
        {channel, "loopback-mode", quoted("TERMINAL"), "loopback-mode", "terminal", "TERMINAL"},
        // Of the long tables the ends, and what is spelt against the rule.
        {channel, "rate-class", quoted(types + "TRIB_RATE_10G"), "rate-class", "trib-rate10g", "TRIB_RATE_10G"},
        {channel, "rate-class", quoted(types + "TRIB_RATE_2.5G"), "rate-class", "trib-rate2-5g", "TRIB_RATE_2.5G"},
        {channel, "rate-class", quoted(types + "TRIB_RATE_1200G"), "rate-class", "trib-rate1200g", "TRIB_RATE_1200G"},
        {channel, "trib-protocol", quoted(types + "PROT_1GE"), "trib-protocol", "trib-proto-type1ge", "PROT_1GE"},
        {channel, "trib-protocol", quoted(types + "PROT_OTUCN"), "trib-protocol", "trib-proto-type-otu-cn",
         "PROT_OTUCN"},
        {channel, "trib-protocol", quoted(types + "PROT_400GE"), "trib-protocol", "trib-proto-type400ge", "PROT_400GE"},
        {channel, "logical-channel-type", quoted(types + "PROT_ETHERNET"), "logical-channel-type", "type-ethernet",
         "PROT_ETHERNET"},
        {channel, "logical-channel-type", quoted(types + "PROT_OTN"), "logical-channel-type", "type-otn", "PROT_OTN"},

        {ethernet, "client-als", quoted("ETHERNET"), "client-als", "ethernet", "ETHERNET"},
        {ethernet, "client-als", quoted("LASER_SHUTDOWN"), "client-als", "laser-shutdown", "LASER_SHUTDOWN"},
        {ethernet, "als-delay", "200", "als-delay", "200", "200"},
        {ethernet, "als-delay", "10", "als-delay", "10", "10"},
        {ethernet, "als-delay", "3000", "als-delay", "3000", "3000"},
        {ethernet, "als-delay", "0", "als-delay", "0", "0", type5 | type18 | type19 | terminal | legacy},
        {ethernet, "als-delay", "9", "als-delay", "9", "9", type5 | type18 | type19 | terminal | legacy},
        {ethernet, "als-delay", "3001", "als-delay", "3001", "3001", type5 | terminal | legacy},

        {otn, "tti-msg-transmit", quoted("south"), "tti-msg-transmit", "south", "south", all_types | terminal},
        {otn, "tti-msg-expected", quoted(long_64), "tti-msg-expected", long_64, long_64, all_types | terminal},
        {otn, "tti-msg-transmit", quoted(long_64), "tti-msg-transmit", long_64, long_64, all_types | terminal},

        // Names come back in the form of the platform.
        {ingress, "transceiver", quoted("0/1-Optics0/1/0/2"), "ingress-client-port", "Optics0/1/0/2",
         "0/1-Optics0/1/0/2", type5 | type7 | type18 | terminal},
        {ingress, "transceiver", quoted("Optics0/1/0/2"), "ingress-client-port", "Optics0/1/0/2", "0/1-Optics0/1/0/2",
         type5 | type7 | type18 | terminal},
        {ingress, "transceiver", quoted("0/7-Optics0/1/0/2"), "ingress-client-port", "Optics0/1/0/2",
         "0/1-Optics0/1/0/2", type5 | type7 | type18 | terminal},
        {ingress, "transceiver", quoted("Optics0/1/0/2"), "ingress-client-port", "Optics0/1/0/2", "Optics0/1/0/2",
         type19 | terminal},
        {ingress, "transceiver", quoted("0/1-Optics0/1/0/2"), "ingress-client-port", "Optics0/1/0/2", "Optics0/1/0/2",
         type19 | terminal},
        {ingress, "physical-channel", "[3]", "ingress-physical-channel", "3", "3"},

        {assignment, "index", "1", "assignment-index", "1", "1"},
        {assignment, "description", quoted("to ODU 200"), "description", "to ODU 200", "to ODU 200"},
        {assignment, "assignment-type", quoted("LOGICAL_CHANNEL"), "assignment-type", "type-logical-channel",
         "LOGICAL_CHANNEL"},
        {assignment, "assignment-type", quoted("OPTICAL_CHANNEL"), "assignment-type", "type-optical-channel",
         "OPTICAL_CHANNEL"},
        {assignment, "logical-channel", "200", "logical-channel-id", "200", "200"},
        {assignment, "optical-channel", quoted("0/1-OpticalChannel0/1/0/2"), "optical-channel-id",
         "0_1-OpticalChannel0_1_0_2", "0/1-OpticalChannel0/1/0/2"},
        {assignment, "optical-channel", quoted("OpticalChannel0/2/0/0"), "optical-channel-id", "OpticalChannel0_2_0_0",
         "OpticalChannel0/2/0/0"},
        {assignment, "optical-channel", quoted("my_channel"), "optical-channel-id", "my_channel", "my/channel"},
        // Only whole gigabits per second go down.
        {assignment, "allocation", quoted("100.000"), "allocation", "100", "100"},
        {assignment, "allocation", quoted("99.999"), "allocation", "99", "99"},
        {assignment, "allocation", quoted("10"), "allocation", "10", "10"},
        {assignment, "allocation", quoted("0.5"), "allocation", "0", "0"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.leaf + " " + row.value);
        for_devices(row.on, [&](device_road device) {
            const std::string native = native_path(row.where, row.native_leaf);
            const edit_result result = device.edit(request_for(row.where, row.leaf, row.value), native.c_str());
            ASSERT_TRUE(result.is_done()) << result.message << result.error_tag;
            EXPECT_EQ(result.native, row.native);
            EXPECT_EQ(device.value(oc_path(row.where, row.leaf)), row.back);
        });
    }
}

TEST(value, that_is_refused_on_the_way_down_changes_nothing) {
    const std::string delay7 = "Als Delay is not within the allowed range: 10 - 3000";
    const std::string delay18 = "Als Delay is not within the allowed range: 0 - 3000";
    const unsigned both = terminal | legacy;
    struct {
        const place &where;
        std::string leaf, value;
        rcode status;
        std::string message;
        unsigned on = everywhere;
    } const rows[] = {
        {channel, "test-signal", "true", RC_UNSUPPORTED_NODE, "test-signal"},
        {channel, "rate-class", quoted("TRIB_RATE_100G"), RC_NAMESPACE_MISSING,
         "namespace http://openconfig.net/yang/transport-types is missing for rate-class node"},
        {channel, "trib-protocol", quoted("openconfig-platform:PROT_100GE"), RC_NAMESPACE_MISSING,
         "namespace http://openconfig.net/yang/transport-types is missing for trib-protocol node"},
        {channel, "logical-channel-type", quoted("PROT_OTN"), RC_NAMESPACE_MISSING,
         "namespace http://openconfig.net/yang/transport-types is missing for logical-channel-type node"},
        {ethernet, "client-als", quoted("laser-shutdown"), RC_VALUE_OUT_OF_RANGE,
         "Client Als Value laser-shutdown is not allowed"},
        {ethernet, "als-delay", "9", RC_VALUE_OUT_OF_RANGE, delay7, type7 | both},
        {ethernet, "als-delay", "3001", RC_VALUE_OUT_OF_RANGE, delay7, type7 | both},
        {ethernet, "als-delay", "-1", RC_VALUE_OUT_OF_RANGE, delay7, type7 | both},
        {ethernet, "als-delay", "3001", RC_VALUE_OUT_OF_RANGE, delay18, type18 | type19 | both},
        {ethernet, "als-delay", "-1", RC_VALUE_OUT_OF_RANGE, delay18, type18 | type19 | both},
        {otn, "tti-msg-transmit", quoted(long_65), RC_VALUE_OUT_OF_RANGE,
         "TTI_transmit length is not within the allowed range: 64", all_types | terminal},
        {otn, "tti-msg-expected", quoted(long_65), RC_VALUE_OUT_OF_RANGE,
         "TTI_expected length is not within the allowed range: 64", all_types | terminal},
        {otn, "tti-msg-transmit", quoted("south"), RC_VALUE_OUT_OF_RANGE, "TTI_transmit is not supported",
         all_types | legacy},
        {otn, "tti-msg-expected", quoted("south"), RC_VALUE_OUT_OF_RANGE, "TTI_expected  is not supported",
         all_types | legacy},
        {otn, "tti-msg-auto", "true", RC_UNSUPPORTED_NODE, "tti-msg-auto"},
        {otn, "tributary-slot-granularity", quoted("TRIB_SLOT_1.25G"), RC_UNSUPPORTED_NODE,
         "tributary-slot-granularity"},
        {ingress, "transceiver", quoted("Optics0/1/0/2"), RC_VALUE_OUT_OF_RANGE, "", all_types | legacy},
        {assignment, "optical-channel", quoted("0/1-OpticalChannel0/2/0/0"), RC_VALUE_OUT_OF_RANGE,
         "R/S not matched for Optical channel"},
        {assignment, "optical-channel", quoted("1/1-OpticalChannel0/1/0/0"), RC_VALUE_OUT_OF_RANGE,
         "R/S not matched for Optical channel"},
        {assignment, "tributary-slot-index", "1", RC_UNSUPPORTED_NODE, "tributary-slot-index"},
        {assignment, "mapping", quoted(types + "AMP"), RC_UNSUPPORTED_NODE, "mapping"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.leaf + " " + row.value);
        for_devices(row.on, [&](device_road device) {
            const edit_result result = device.edit(request_for(row.where, row.leaf, row.value));
            EXPECT_EQ(result.status, row.status);
            EXPECT_EQ(result.message, row.message);
            EXPECT_EQ(result.path, oc_path(row.where, row.leaf));
            EXPECT_EQ(device.channels(), "");
        });
    }
}

// A word of no table goes down as a leaf without value, and it is the device that refuses it.
TEST(value, that_the_device_refuses_is_named) {
    struct {
        const place &where;
        std::string leaf, value, native_leaf;
    } const rows[] = {
        {channel, "admin-state", quoted("UP"), "admin-state"},
        {channel, "admin-state", quoted("enable"), "admin-state"},
        {channel, "loopback-mode", quoted("LINE"), "loopback-mode"},
        {channel, "rate-class", quoted(types + "TRIB_RATE_25G"), "rate-class"},
        {channel, "trib-protocol", quoted(types + "PROT_OTUC"), "trib-protocol"},
        {channel, "logical-channel-type", quoted(types + "PROT_100GE"), "logical-channel-type"},
        {assignment, "assignment-type", quoted("CHANNEL"), "assignment-type"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.leaf + " " + row.value);
        for_devices(type5 | type19 | terminal | legacy, [&](device_road device) {
            const edit_result result = device.edit(request_for(row.where, row.leaf, row.value));
            EXPECT_EQ(result.status, RC_OK);
            EXPECT_EQ(result.error_tag, "invalid-value");
            EXPECT_EQ(result.path, native_path(row.where, row.native_leaf));
            EXPECT_NE(result.message.find(row.native_leaf), std::string::npos) << result.message;
            EXPECT_EQ(device.channels(), "");
        });
    }
}

TEST(value, of_the_channel_index_has_its_range) {
    struct {
        std::string index;
        bool is_taken;
    } const rows[] = {{"0", false}, {"1", true}, {"100000", true}, {"100001", false}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.index);
        for_devices(everywhere, [&](device_road device) {
            const edit_result result =
                device.edit(channel_request(R"({"index":)" + row.index + R"(,"config":{"index":)" + row.index + "}}"));
            EXPECT_EQ(result.status, row.is_taken ? RC_OK : RC_VALUE_OUT_OF_RANGE);
            EXPECT_EQ(device.channels(), row.is_taken
                                             ? "channel(index=" + row.index + " config(index=" + row.index + "))"
                                             : std::string());
        });
    }
}

// What the device holds by other hands.
TEST(value, of_the_device_that_converts_to_nothing_is_not_told) {
    struct {
        const char *native, *channel;
        std::vector<std::string> missing;
    } const rows[] = {
        {R"("admin-state":"up")", "", {"admin-state"}},
        {R"("loopback-mode":"line")", "", {"loopback-mode"}},
        {R"("rate-class":"TRIB_RATE_10G")", "", {"rate-class"}},
        {R"("ethernet":{"client-als":"true"})", "", {"client-als"}},
        {R"("ingress-client-port":"HundredGigE0/1/0/2")", " ingress(config(transceiver=))", {}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.native);
        device_road device(device::parse(
            R"({"router-type":5,"optical-terminal-device":true,"config":{"Corvane-terminal-device-cfg:logical-channels":{"channel":[)"
            R"({"channel-index":5,)" +
                std::string(row.native) + "}]}}}",
            "device"));
        EXPECT_EQ(device.channels(), "channel(index=5 config(index=5)" + std::string(row.channel) + ")");
        EXPECT_EQ(device.leaves_without_value(), row.missing);
    }
}

// Logical channels come last, whatever order the answer has; what an earlier root left does not reach them, and tops
// that nobody takes do not disturb.
TEST(roots_up, run_in_their_order_and_start_afresh) {
    const zmf::plugin plugin(OCOPTICAL_PLUGIN);
    device::install(bare_device(5, true));
    const zmf::fixed_tree native = ocmap::read_request(
        R"({"Corvane-terminal-device-cfg:logical-channels":{"channel":[{"channel-index":5}]},
            "Corvane-terminal-device-cfg:optical-channels":{"optical-channel":[{"ifname":"OpticalChannel0_0_0_1"}]},
            "ietf-netconf:unknown":{},
            "Corvane-terminal-device-cfg:transceivers":{}})",
        ocmap::format::json, ocmap::purpose::native);
    zmf::session session(OP_GET_CONFIG);
    std::vector<std::string> tops;
    std::vector<uint32_t> left;
    session.record([&](const zmf::call &call) {
        if (call.op != zmf::operation::add_to_hierarchy || session.hierarchy_depth() != 1)
            return;
        tops.emplace_back(call.node->tag);
        left.push_back(session.request().filter_bits);
        session.request().filter_bits = 7;
    });
    zmf::output_tree reply;
    EXPECT_EQ(plugin.up(session, native, reply, false), RC_OK);
    EXPECT_EQ(tops, (std::vector<std::string>{"optical-channels", "transceivers", "logical-channels"}));
    EXPECT_EQ(left, (std::vector<uint32_t>{0, 0, 0}));
    EXPECT_TRUE(reply.find("/components/component[name='OpticalChannel0/0/0/1']/config/name"));
    EXPECT_TRUE(reply.find("/terminal-device/logical-channels/channel[index='5']/config/index"));
}

} // namespace
