// Components: an optical channel down onto a device and back up, on platforms of either kind, and what is refused. A
// case more: a row. Quotes are written as ' in requests.
#include <string>

#include <gtest/gtest.h>

#include "device/native_json.h"
#include "device_road.h"
#include "host.h"
#include "written_json.h"
#include "zmf/session.h"

namespace {

using road::device_road;
using road::edit_result;
using road::outcome;
using road::run_host;
using road::scratch_file;

// An optical terminal device that keeps frequency and power with its channels, or, `legacy`, with its interfaces.
device_road platform(uint32_t router_type, bool is_legacy) {
    device::description made = road::bare_device(router_type, true);
    made.legacy_optical_terminal_device = is_legacy;
    return device_road(std::move(made));
}

std::string components(const std::string &entries) {
    return json_of("{'openconfig-platform:components':{'component':[" + entries + "]}}");
}

constexpr char name[] = "0/1-OpticalChannel0/1/0/2";
constexpr char other_name[] = "0/1-OpticalChannel0/1/0/3";

std::string component(const std::string &named, const std::string &children) {
    return "{'name':'" + named + "'" + (children.empty() ? "" : ",") + children + "}";
}

// Of the component with `name`: leaves of its optical channel, or of what the vendor adds to that.
std::string config(const std::string &leaves) {
    return component(name, "'openconfig-terminal-device:optical-channel':{'config':{" + leaves + "}}");
}
std::string extended(const std::string &children) {
    return component(name, "'openconfig-terminal-device:optical-channel':{"
                           "'Corvane-openconfig-terminal-device-ext:extended':{" +
                               children + "}}");
}

std::string operation(const std::string &word) {
    return "'@':{'ietf-netconf:operation':'" + word + "'}";
}

const std::string all = R"({"openconfig-platform:components":{}})";

// What a client sees of the component if its optical channel holds this; nothing of a component without anything.
std::string seen_component(const std::string &channel, const std::string &named = name) {
    return "component(name=" + named + " config(name=" + named + ")" +
           (channel.empty() ? "" : " optical-channel(" + channel + ")") + ")";
}
std::string seen(const std::string &channel) {
    return channel.empty() ? "" : "components(" + seen_component(channel) + ")";
}

// What the device keeps of a leaf, in its configuration: with the optical channel, or with the interface's optics.
std::string in_channel(const std::string &leaves) {
    const std::string key = "'ifname':'%OpticalChannel0_1_0_2'";
    return "'Corvane-terminal-device-cfg:optical-channels':{'optical-channel':[{" +
           (leaves.empty() ? key : key + "," + leaves) + "}]}";
}
std::string in_interface(const std::string &more) {
    return "'Corvane-ifmgr-cfg:interface-configurations':{'interface-configuration':[{'active':'act',"
           "'interface-name':'Optics0/1/0/2'" +
           more + "}]}";
}
std::string in_optics(const std::string &leaves) {
    return in_interface(",'Corvane-controller-optics-cfg:optics':{" + leaves + "}");
}
std::string in_carrier(const std::string &value) {
    return in_optics("'optics-dwdm-carrier':{'grid-type':'100mhz-grid','param-type':'frequency','param-value':'" +
                     value + "'}");
}
std::string in_threshold(const std::string &type, int value) {
    return in_optics("'rx-thresholds':{'rx-threshold':[{'rx-threshold-type':'" + type +
                     "','rx-threshold':" + std::to_string(value) + "}]}");
}

// Where a leaf stands below its component, and what stands around it there.
enum class place : uint8_t { config, extended, thresholds };

std::string at(place where, const std::string &leaf) {
    const std::string config = "'config':{" + leaf + "}", channel = "'openconfig-terminal-device:optical-channel':{",
                      vendor = channel + "'Corvane-openconfig-terminal-device-ext:extended':{";
    return where == place::config     ? channel + config + "}"
           : where == place::extended ? vendor + config + "}}"
                                      : vendor + "'thresholds':{" + config + "}}}";
}
std::string seen_at(place where, const std::string &leaf) {
    return where == place::config     ? "config(" + leaf + ")"
           : where == place::extended ? "extended(config(" + leaf + "))"
                                      : "extended(thresholds(config(" + leaf + ")))";
}

// "$" and "%" are what names begin with on all router types but 19, outside of the device and in it.
std::string on_router(std::string text, uint32_t router_type) {
    for (const auto &[mark, prefix] : {std::pair('$', "0/1-"), std::pair('%', "0_1-")})
        for (size_t found = text.find(mark); found != std::string::npos; found = text.find(mark))
            text.replace(found, 1, router_type == 19 ? "" : prefix);
    return text;
}

struct leaf_row {
    bool is_legacy;
    place where;
    const char *leaf, *value; // as JSON
    std::string native;       // the device's configuration after the edit
    const char *back;         // what a client reads then
    bool is_ranged = false;   // and mapped on router types 18 and 19 only
};

void goes_and_comes(const leaf_row &row, uint32_t router_type) {
    SCOPED_TRACE(std::string(row.leaf) + (row.is_legacy ? " legacy " : " ") + std::to_string(router_type));
    const std::string named = on_router("$OpticalChannel0/1/0/2", router_type);
    const bool is_mapped = !row.is_ranged || router_type == 18 || router_type == 19;
    device_road device = platform(router_type, row.is_legacy);
    const auto expect = [&](const std::string &native, const std::string &reply) {
        const std::string json = json_of(on_router("{'config':{" + native + "}}", router_type));
        EXPECT_TRUE(device.held().config == device::parse(json, "expected").config) << json << "\n"
                                                                                    << device::to_json(device.held());
        EXPECT_EQ(device.seen(all), on_router(reply, router_type));
    };
    const auto leaf = [&](const std::string &member) { return components(component(named, at(row.where, member))); };

    const edit_result written = device.edit(leaf("'" + std::string(row.leaf) + "':" + row.value));
    ASSERT_TRUE(written.is_done()) << written.message << written.error_tag;
    const std::string back = std::string(row.leaf) + "=" + row.back;
    expect(is_mapped ? row.native : "",
           is_mapped ? "components(" + seen_component(seen_at(row.where, back), named) + ")" : "");

    const edit_result erased =
        device.edit(leaf("'@" + std::string(row.leaf) + "':{'ietf-netconf:operation':'remove'}"));
    ASSERT_TRUE(erased.is_done()) << erased.message << erased.error_tag;
    const bool is_in_channel = row.native.starts_with("'Corvane-terminal-device-cfg:");
    expect(!is_mapped      ? ""
           : is_in_channel ? in_channel("")
                           : in_interface(""),
           is_mapped && is_in_channel ? "components(" + seen_component("", named) + ")" : "");
}

TEST(optical_channel, each_leaf_goes_to_the_device_and_comes_back) {
    constexpr place config = place::config, vendor = place::extended, limits = place::thresholds;
    const auto channel = [](const std::string &leaf, const std::string &value) {
        return in_channel("'" + leaf + "':'" + value + "'");
    };
    const leaf_row rows[] = {
        {false, config, "frequency", "'193100050'", channel("frequency", "193100050"), "193100050"},
        {false, config, "target-output-power", "'-3.47'", channel("power", "-347"), "-3.47"},
        {false, config, "target-output-power", "'-19'", channel("power", "-1900"), "-19.00"},
        {false, config, "target-output-power", "5.0", channel("power", "500"), "5.00"},
        {false, config, "target-output-power", "'+00.05'", channel("power", "5"), "0.05"},
        {false, config, "operational-mode", "5003", channel("operational-mode", "5003"), "5003"},
        {false, config, "line-port", "'Optics0/1/0/2'", channel("line-port", "Optics0/1/0/2"), "$Optics0/1/0/2"},

        // A legacy platform keeps frequency on a grid of 100 MHz and power in tenths of dBm: the rest is lost.
        {true, config, "frequency", "'193100099'", in_carrier("1931000"), "193100000"},
        {true, config, "frequency", "'186100000'", in_carrier("1861000"), "186100000"},
        {true, config, "frequency", "'196137500'", in_carrier("1961375"), "196137500"},
        {true, config, "target-output-power", "'-3.47'", in_optics("'optics-transmit-power':-34"), "-3.40"},
        {true, config, "target-output-power", "'-0.05'", in_optics("'optics-transmit-power':0"), "0.00"},
        {true, config, "target-output-power", "'5'", in_optics("'optics-transmit-power':50"), "5.00"},
        {true, config, "operational-mode", "5003", channel("operational-mode", "5003"), "5003"},
        {true, config, "line-port", "'Optics0/1/0/2'", channel("line-port", "Optics0/1/0/2"), "$Optics0/1/0/2"},

        {false, vendor, "optics-cd-max", "350000", channel("cd-max", "350000"), "350000", true},
        {false, vendor, "optics-cd-min", "-350000", channel("cd-min", "-350000"), "-350000", true},
        {false, vendor, "optics-cd-low-threshold", "-12", channel("cd-low-threshold", "-12"), "-12", true},
        {false, vendor, "optics-cd-high-threshold", "12", channel("cd-high-threshold", "12"), "12", true},
        {false, vendor, "filter-roll-off-factor", "'0.250'", channel("filter-roll-off-factor", "0.250"), "0.250", true},
        {false, vendor, "rx-voa-target-power", "-190", channel("rx-voa-target-power", "-190"), "-190", true},
        {false, vendor, "rx-voa-fixed-ratio", "1700", channel("rx-voa-fixed-ratio", "1700"), "1700", true},
        {false, vendor, "enh-colorless-mode", "3", channel("enh-colorless-mode", "3"), "3", true},
        {false, vendor, "enh-sop-tol-mode", "2", channel("enh-sop-tol-mode", "2"), "2", true},
        {false, vendor, "nleq-compensation", "5", channel("nleq-comp-mode", "5"), "5", true},
        {false, vendor, "cross-pol-gain-mode", "15", channel("cross-pol-gain-mode", "15"), "15", true},
        {false, vendor, "cross-pol-weight-mode", "7", channel("cross-pol-weight-mode", "7"), "7", true},
        {false, vendor, "cpr-win-mode", "4", channel("cpr-win-mode", "4"), "4", true},
        {false, vendor, "cpr-ext-win-mode", "9", channel("cpr-ext-win-mode", "9"), "9", true},

        // Seven decimals of a baud rate; thresholds in tenths of dBm.
        {false, vendor, "baud-rate", "'69.4'", in_optics("'optics-baud-rate':'69.4000000'"), "69.4000000"},
        {false, vendor, "baud-rate", "'69.43621477'", in_optics("'optics-baud-rate':'69.4362148'"), "69.4362148"},
        {false, vendor, "fastpoll-sop-enable", "'enable'", in_optics("'optics-fastpoll':'enable'"), "enable"},
        {false, limits, "input-signal-power-lower", "-1239", in_threshold("low", -123), "-1230"},
        {false, limits, "input-signal-power-lower", "-4000", in_threshold("low", -400), "-4000"},
        {false, limits, "input-signal-power-upper", "9", in_threshold("high", 0), "0"},
        {false, limits, "input-signal-power-upper", "3000", in_threshold("high", 300), "3000"},
    };
    for (const leaf_row &row : rows)
        for (const uint32_t router_type : {5u, 7u, 18u, 19u})
            goes_and_comes(row, router_type);
}

// The interface's optics come back where there is a terminal device; a legacy platform has nothing of the vendor's.
TEST(optical_channel, comes_back_as_far_as_the_platform_tells_it) {
    const std::string frequency = at(place::config, "'frequency':'193100050'");
    const std::string mode = at(place::config, "'operational-mode':5003");
    const std::string fastpoll = at(place::extended, "'fastpoll-sop-enable':'enable'");
    const std::string in_td = in_channel("'frequency':'193100050'"), in_if = in_carrier("1931000");
    const std::string mode_kept = in_channel("'operational-mode':'5003'"), mode_seen = "config(operational-mode=5003)";
    const std::string polled = in_optics("'optics-fastpoll':'enable'");
    const std::string polled_seen = "extended(config(fastpoll-sop-enable=enable))";
    const struct {
        bool terminal_device, legacy;
        std::string edit, native, channel; // none: no component
    } rows[] = {
        {false, false, frequency, in_td, "config(frequency=193100050)"},
        {true, false, frequency, in_td, "config(frequency=193100050)"},
        {false, true, frequency, in_if, ""},
        {true, true, frequency, in_if, "config(frequency=193100000)"},
        {false, false, mode, mode_kept, mode_seen},
        {false, true, mode, mode_kept, mode_seen},
        {false, false, fastpoll, polled, ""},
        {true, false, fastpoll, polled, polled_seen},
        {false, true, fastpoll, "", ""},
        {true, true, fastpoll, "", ""},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.edit + (row.terminal_device ? " T" : "") + (row.legacy ? " L" : ""));
        device::description made = road::bare_device(18, row.terminal_device);
        made.legacy_optical_terminal_device = row.legacy;
        device_road device(std::move(made));
        ASSERT_TRUE(device.edit(components(component(name, row.edit))).is_done());
        const std::string json = json_of(on_router("{'config':{" + row.native + "}}", 18));
        EXPECT_TRUE(device.held().config == device::parse(json, "expected").config) << device::to_json(device.held());
        EXPECT_EQ(device.seen(all), seen(row.channel));
    }
}

const std::string provisioned = config("'frequency':'193100000','target-output-power':'-3.5','operational-mode':5003,"
                                       "'line-port':'Optics0/1/0/2'");
const std::string seen_config = "config(frequency=193100000 target-output-power=-3.50 operational-mode=5003 "
                                "line-port=0/1-Optics0/1/0/2)";

TEST(optical_channel, of_a_legacy_platform_is_kept_in_a_file) {
    device_road device = platform(18, true);
    ASSERT_TRUE(device.edit(components(provisioned)).is_done());
    EXPECT_EQ(device.seen(all), seen(seen_config));
    std::string kept;
    device::append_native(kept, device.held().config, 0);
    EXPECT_NE(kept.find(R"("Corvane-controller-optics-cfg:optics": {)"), std::string::npos) << kept;
    EXPECT_EQ(device::parse("{\"config\": " + kept + "}", "kept").config, device.held().config);
}

// Two channels with all that the way up has of them.
device_road provisioned_platform(bool is_legacy) {
    device_road device = platform(18, is_legacy);
    const std::string second =
        component(other_name, "'openconfig-terminal-device:optical-channel':{'config':{'target-output-power':'1'}}");
    const std::string more =
        extended("'config':{'optics-cd-min':-10,'optics-cd-max':10,'fastpoll-sop-enable':'enable'},"
                 "'thresholds':{'config':{'input-signal-power-lower':-1200}}");
    for (const std::string &entry : {provisioned, second, more})
        EXPECT_TRUE(device.edit(components(entry)).is_done());
    return device;
}
const std::string seen_other = seen_component("config(target-output-power=1.00)", other_name);

TEST(component, is_deleted_replaced_and_changed) {
    const std::string seen_extended = " extended(config(optics-cd-max=10 optics-cd-min=-10 fastpoll-sop-enable=enable) "
                                      "thresholds(config(input-signal-power-lower=-1200)))";
    const std::string left = "extended(config(optics-cd-min=-10))";
    const struct {
        const char *what;
        std::string entry;
        std::string channel, legacy_channel; // what is left of it
    } rows[] = {
        {"nothing", component(name, "'config':{'name':'0/1-OpticalChannel0/1/0/2'}"), seen_config + seen_extended,
         seen_config},
        {"delete", component(name, operation("delete")), left, ""},
        {"remove", component(name, operation("remove")), left, ""},
        {"replace",
         component(name, operation("replace") +
                             ",'openconfig-terminal-device:optical-channel':{'config':{'frequency':'193200000'}}"),
         "config(frequency=193200000) " + left, "config(frequency=193200000)"},
        {"delete of the optical channel",
         component(name, "'openconfig-terminal-device:optical-channel':{" + operation("delete") + "}"),
         seen_extended.substr(1), ""},
        {"delete of leaves",
         config("'@frequency':{'ietf-netconf:operation':'delete'},'@target-output-power':{'ietf-netconf:operation':"
                "'delete'}"),
         "config(operational-mode=5003 line-port=0/1-Optics0/1/0/2)" + seen_extended,
         "config(operational-mode=5003 line-port=0/1-Optics0/1/0/2)"},
    };
    for (const bool is_legacy : {false, true})
        for (const auto &row : rows) {
            SCOPED_TRACE(std::string(row.what) + (is_legacy ? ", legacy" : ""));
            device_road device = provisioned_platform(is_legacy);
            const edit_result result = device.edit(components(row.entry));
            EXPECT_TRUE(result.is_done()) << result.message << result.error_tag;
            EXPECT_EQ(device.seen(all), "components(" + seen_component(is_legacy ? row.legacy_channel : row.channel) +
                                            " " + seen_other + ")");
        }
}

TEST(component, of_an_edit_is_refused_with_its_reason) {
    const std::string entry = std::string("/components/component[name='") + name + "']";
    const std::string channel = entry + "/optical-channel/config/";
    const std::string long_name(201, 'x');
    const std::string frequency = "Frequency is not within the allowed range: 186100000 - 196137500";
    const std::string power = "Target Output Power is not within the allowed range: -1900 - 500";
    const struct {
        std::string request;
        rcode status;
        std::string path, message;
    } rows[] = {
        {components(config("'frequency':'186099999'")), RC_VALUE_OUT_OF_RANGE, channel + "frequency", frequency},
        {components(config("'frequency':'196137501'")), RC_VALUE_OUT_OF_RANGE, channel + "frequency", frequency},
        {components(config("'target-output-power':'-19.01'")), RC_VALUE_OUT_OF_RANGE, channel + "target-output-power",
         power},
        {components(config("'target-output-power':'5.01'")), RC_VALUE_OUT_OF_RANGE, channel + "target-output-power",
         power},
        {components(config("'line-port':'Optics0/1/0/3'")), RC_VALUE_OUT_OF_RANGE, channel + "line-port",
         "line-port should match with the component name"},
        // A good one before does not help.
        {components(provisioned + "," +
                    component(other_name, "'openconfig-terminal-device:optical-channel':{'config':{'frequency':'1'}}")),
         RC_VALUE_OUT_OF_RANGE,
         std::string("/components/component[name='") + other_name + "']/optical-channel/config/frequency", frequency},

        {components(component(name, "'openconfig-platform-transceiver:transceiver':{'config':{'enabled':true}}")),
         RC_UNSUPPORTED_NODE, entry + "/transceiver/config/enabled", "enabled"},
        {components(component(name, "'state':{}")), RC_UNSUPPORTED_NODE, entry + "/state", "state"},
        {components(component(name, "'config':{'name':'0/1-OpticalChannel0/1/0/2','type':'x'}")), RC_UNSUPPORTED_NODE,
         entry + "/config/type", "type"},
        {components(component(name, "'config':{'@name':{'ietf-netconf:operation':'delete'}}")), RC_UNSUPPORTED_NODE,
         entry + "/config/name", "name"},
        {components(component(name, "'config':{" + operation("delete") + ",'name':'0/1-OpticalChannel0/1/0/2'}")),
         RC_INVALID_ARGUMENTS, entry + "/config", ""},
        {components(component(name, "'chassis':{'config':{'slots':1}}")), RC_UNSUPPORTED_NODE,
         entry + "/chassis/config/slots", "slots"},
        {components(component(name, "'properties':{'property':[{'config':{}}]}")), RC_LIST_KEY_ERROR,
         entry + "/properties/property", "name"},
        {components(component(name, "'openconfig-if-ethernet:ethernet':{}")), RC_UNSUPPORTED_AUGMENT,
         entry + "/ethernet", "ethernet"},
        // What the plug-in maps does not make up for the rest.
        {components(provisioned.substr(0, provisioned.size() - 1) + ",'config':{'name':'0/1-OpticalChannel0/1/0/2',"
                                                                    "'rack':1}}"),
         RC_UNSUPPORTED_NODE, entry + "/config/rack", "rack"},
        {json_of("{'openconfig-platform:components':{'rack':{}}}"), RC_UNSUPPORTED_NODE, "/components/rack", "rack"},
        {json_of("{'openconfig-platform:components':{" + operation("remove") + "}}"), RC_UNSUPPORTED_NODE,
         "/components", "components"},
        {components(component(name, operation("delete") + ",'openconfig-terminal-device:optical-channel':{}")),
         RC_INVALID_ARGUMENTS, entry, "a component is deleted by its key alone"},

        {components(component(name, "'config':{'name':'other'}")), zmf::rc_leafref_mismatch, entry + "/config/name",
         std::string("the key name is \"") + name + "\", but config/name is \"other\""},
        {components("{'config':{'name':'other'}}"), RC_LIST_KEY_ERROR, "/components/component", "name"},
        {components("{}"), RC_SUBTREE_ERROR, "/components/component", ""},
        {components(component("", "")), RC_LIST_KEY_ERROR, "/components/component[name='']/name", "name"},
        {components(component(long_name, "")), RC_LIST_KEY_ERROR, "/components/component[name='" + long_name + "']",
         "the name of a component has at most 200 characters"},
    };
    for (const bool is_legacy : {false, true})
        for (const auto &row : rows) {
            SCOPED_TRACE(row.request + (is_legacy ? " legacy" : ""));
            device_road device = platform(18, is_legacy);
            const edit_result result = device.edit(row.request);
            EXPECT_EQ(result.status, row.status);
            EXPECT_EQ(result.path, row.path);
            EXPECT_EQ(result.message, row.message);
            EXPECT_EQ(device.seen(all), "");
        }
}

// The frequency of a component without an interface must not end up at that of the one before.
TEST(component, without_an_interface_is_refused_by_a_legacy_device) {
    for (const std::string &before : {std::string(), provisioned + ","}) {
        device_road device = platform(18, true);
        const edit_result result = device.edit(components(
            before +
            component("Rack 0", "'openconfig-terminal-device:optical-channel':{'config':{'frequency':'193200000'}}")));
        EXPECT_EQ(result.error_tag, "missing-element");
        EXPECT_EQ(result.path, "/interface-configurations/interface-configuration/active");
        EXPECT_EQ(device.seen(all), "");
    }
}

TEST(component, is_read_as_far_as_it_is_asked_for) {
    const std::string both = seen_component(seen_config) + " " + seen_other;
    const std::string just = "component(name=" + std::string(name);
    const struct {
        std::string request, reply;
    } rows[] = {
        {all, "components(" + both + ")"},
        {json_of("{'openconfig-platform:components':{'component':[{}]}}"), "components(" + both + ")"},
        {components(component(name, "")), "components(" + seen_component(seen_config) + ")"},
        {components(component(other_name, "") + "," + component(name, "'config':{}")),
         "components(" + seen_component("") + " " + seen_other + ")"},
        {components(component("OpticalChannel0/9/0/9", "")), ""},
        {components(component(std::string(201, 'x'), "")), ""},
        {components(component(name, "'state':{}")), "components(" + just + "))"},
        {components(component(name, "'config':{'name':'0/1-OpticalChannel0/1/0/2'}")),
         "components(" + seen_component("") + ")"},
        {components(component(name, "'chassis':{},'openconfig-platform-transceiver:transceiver':{},'fan':{'x':null}")),
         "components(" + just + "))"},
        {components(config("'frequency':null")),
         "components(" + just + " optical-channel(config(frequency=193100000))))"},
        {components("{'openconfig-terminal-device:optical-channel':{'config':{'target-output-power':null}}}"),
         "components(" + just + " optical-channel(config(target-output-power=-3.50))) component(name=" + other_name +
             " optical-channel(config(target-output-power=1.00))))"},
        {components("{'openconfig-terminal-device:optical-channel':{'config':{'target-output-power':'-3.5',"
                    "'operational-mode':null}}}"),
         "components(" + just + " optical-channel(config(target-output-power=-3.50 operational-mode=5003))))"},
        {json_of(
             "{'openconfig-terminal-device:terminal-device':{'logical-channels':{'channel':[{'config':{'index':null}}]"
             "}},'openconfig-platform:components':{'component':[" +
             component(other_name, "") + "]}}"),
         "terminal-device(logical-channels(channel(index=5 config(index=5)))) components(" + seen_other + ")"},
    };
    for (const bool is_legacy : {false, true}) {
        device_road device = platform(18, is_legacy);
        const std::string second = component(
            other_name, "'openconfig-terminal-device:optical-channel':{'config':{'target-output-power':'1'}}");
        ASSERT_TRUE(device
                        .edit(json_of("{'openconfig-platform:components':{'component':[" + provisioned + "," + second +
                                      "]},'openconfig-terminal-device:terminal-device':{'logical-channels':{'channel':"
                                      "[{'index':5,'config':{'index':5}}]}}}"))
                        .is_done());
        for (const auto &row : rows) {
            SCOPED_TRACE(row.request + (is_legacy ? " legacy" : ""));
            EXPECT_EQ(device.seen(row.request), row.reply);
        }
    }
}

std::string example(const std::string &file) {
    return std::string(EXAMPLES) + "/" + file;
}

TEST(commands, provision_an_optical_channel_on_either_platform) {
    for (const std::string kind : {"lab", "legacy"}) {
        SCOPED_TRACE(kind);
        const outcome xml = run_host({"edit", "--device", example(kind + ".json"), "--dry-run", "--format", "json",
                                      example("provision-optical-channel.xml")});
        const outcome json = run_host(
            {"edit", "--device", example(kind + ".json"), "--dry-run", example("provision-optical-channel.json")});
        EXPECT_EQ(xml.status, 0) << xml.err;
        EXPECT_EQ(xml.out, json.out);
        const std::string frequency = kind == "lab" ? R"("frequency": "193500000")" : R"("param-value": "1935000")";
        EXPECT_NE(json.out.find(frequency), std::string::npos) << json.out;
    }
}

// What is created must not be there; what is there comes in hundredths.
TEST(commands, create_an_optical_channel_once) {
    const auto create = [](const std::string &named) {
        return run_host(
            {"edit", scratch_file("create.json", components(component(named, operation("create") +
                                                                                 ",'openconfig-terminal-device:optical-"
                                                                                 "channel':{'config':{'frequency':"
                                                                                 "'193100000'}}")))});
    };
    EXPECT_EQ(create("0/0-OpticalChannel0/0/0/12").status, 0);
    const outcome twice = create("0/0-OpticalChannel0/0/0/13");
    EXPECT_EQ(twice.status, 1);
    EXPECT_NE(twice.err.find("data-exists"), std::string::npos) << twice.err;
}

} // namespace
