// Components: an optical channel down onto a device and back up, on platforms of either kind, and what is refused. A
// case more: a row. Quotes are written as ' in requests.
#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "device/native_json.h"
#include "device_road.h"
#include "host.h"
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

std::string json_of(std::string text) {
    std::replace(text.begin(), text.end(), '\'', '"');
    return text;
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

#define CHANNEL "/optical-channels/optical-channel[ifname='0_1-OpticalChannel0_1_0_2']"
#define OPTICS "/interface-configurations/interface-configuration[active='act'][interface-name='Optics0/1/0/2']/optics"
#define CARRIER OPTICS "/optics-dwdm-carrier/param-value"
#define LOW OPTICS "/rx-thresholds/rx-threshold[rx-threshold-type='low']/rx-threshold"
#define HIGH OPTICS "/rx-thresholds/rx-threshold[rx-threshold-type='high']/rx-threshold"

TEST(optical_channel, comes_back_as_it_went_or_changed_as_it_must) {
    const struct {
        uint32_t router_type;
        bool is_legacy;
        std::string entry; // of the request
        const char *native_leaf, *native;
        std::string channel; // what comes back; empty: no component
    } rows[] = {
        {18, false, config("'frequency':'193100050'"), CHANNEL "/frequency", "193100050",
         "config(frequency=193100050)"},
        {5, false, config("'frequency':'186100000'"), CHANNEL "/frequency", "186100000", "config(frequency=186100000)"},
        {19, false, config("'frequency':'196137500'"), CHANNEL "/frequency", "196137500", ""},
        {18, true, config("'frequency':'193100050'"), CARRIER, "1931000", "config(frequency=193100000)"},
        {7, true, config("'frequency':'196137500'"), CARRIER, "1961375", "config(frequency=196137500)"},

        {18, false, config("'target-output-power':'-3.47'"), CHANNEL "/power", "-347",
         "config(target-output-power=-3.47)"},
        {18, false, config("'target-output-power':'-19'"), CHANNEL "/power", "-1900",
         "config(target-output-power=-19.00)"},
        {18, false, config("'target-output-power':5.0"), CHANNEL "/power", "500", "config(target-output-power=5.00)"},
        {18, false, config("'target-output-power':'+00.05'"), CHANNEL "/power", "5",
         "config(target-output-power=0.05)"},
        {18, true, config("'target-output-power':'-3.47'"), OPTICS "/optics-transmit-power", "-34",
         "config(target-output-power=-3.40)"},
        {18, true, config("'target-output-power':'-0.05'"), OPTICS "/optics-transmit-power", "0",
         "config(target-output-power=0.00)"},

        {5, false, config("'operational-mode':5003"), CHANNEL "/operational-mode", "5003",
         "config(operational-mode=5003)"},
        {5, true, config("'operational-mode':5003"), CHANNEL "/operational-mode", "5003",
         "config(operational-mode=5003)"},
        {18, false, config("'line-port':'Optics0/1/0/2'"), CHANNEL "/line-port", "Optics0/1/0/2",
         "config(line-port=0/1-Optics0/1/0/2)"},
        {18, true, config("'line-port':'0/1-Optics0/1/0/2'"), CHANNEL "/line-port", "Optics0/1/0/2",
         "config(line-port=0/1-Optics0/1/0/2)"},

        {18, false, extended("'config':{'nleq-compensation':5}"), CHANNEL "/nleq-comp-mode", "5",
         "extended(config(nleq-compensation=5))"},
        {19, false, extended("'config':{'optics-cd-max':-350000}"), CHANNEL "/cd-max", "-350000", ""},
        {5, false, extended("'config':{'nleq-compensation':5}"), CHANNEL "/nleq-comp-mode", "-", ""},
        {5, false, extended("'config':{'baud-rate':'69.4'}"), OPTICS "/optics-baud-rate", "69.4000000",
         "extended(config(baud-rate=69.4000000))"},
        {5, false, extended("'config':{'fastpoll-sop-enable':'enable'}"), OPTICS "/optics-fastpoll", "enable",
         "extended(config(fastpoll-sop-enable=enable))"},
        {5, false, extended("'thresholds':{'config':{'input-signal-power-lower':-1239}}"), LOW, "-123",
         "extended(thresholds(config(input-signal-power-lower=-1230)))"},
        {5, false, extended("'thresholds':{'config':{'input-signal-power-upper':3000}}"), HIGH, "300",
         "extended(thresholds(config(input-signal-power-upper=3000)))"},
        // A legacy platform has none of the vendor's.
        {18, true, extended("'config':{'nleq-compensation':5,'baud-rate':'69.4'}"), OPTICS "/optics-baud-rate", "-",
         ""},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.entry + (row.is_legacy ? " legacy " : " ") + std::to_string(row.router_type));
        device_road device = platform(row.router_type, row.is_legacy);
        const edit_result result = device.edit(components(row.entry), row.native_leaf);
        ASSERT_TRUE(result.is_done()) << result.message << result.error_tag;
        EXPECT_EQ(result.native, row.native);
        if (row.router_type != 19) { // names have another form there
            EXPECT_EQ(device.seen(all), seen(row.channel));
        }
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

        {components(component(name, "'openconfig-platform-transceiver:transceiver':{}")), RC_UNSUPPORTED_NODE,
         entry + "/transceiver", "transceiver"},
        {components(component(name, "'state':{}")), RC_UNSUPPORTED_NODE, entry + "/state", "state"},
        {components(component(name, "'config':{'name':'0/1-OpticalChannel0/1/0/2','type':'x'}")), RC_UNSUPPORTED_NODE,
         entry + "/config/type", "type"},
        {components(component(name, "'config':{" + operation("delete") + "}")), RC_UNSUPPORTED_NODE, entry + "/config",
         "config"},
        {json_of("{'openconfig-platform:components':{'rack':{}}}"), RC_UNSUPPORTED_NODE, "/components/rack", "rack"},
        {json_of("{'openconfig-platform:components':{" + operation("remove") + "}}"), RC_UNSUPPORTED_NODE,
         "/components", "components"},
        {components(component(name, operation("delete") + ",'openconfig-terminal-device:optical-channel':{}")),
         RC_INVALID_ARGUMENTS, entry, "a component is deleted by its key alone"},

        {components(component(name, "'config':{'name':'other'}")), zmf::rc_leafref_mismatch, entry + "/config/name",
         std::string("the key name is \"") + name + "\", but config/name is \"other\""},
        {components("{'config':{'name':'other'}}"), RC_LIST_KEY_ERROR, "/components/component", "name"},
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
        {components(component(name, "'config':{'name':null}")), "components(" + seen_component("") + ")"},
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
