// Native interface configurations with their optics, walked up by the host as a program: which interfaces are optical
// channels, what their leaves become and lose, and what the gate holds back. A case more: a row. Quotes are written as
// ' in native data and replies, blanks do not count in replies.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host.h"
#include "written_json.h"

namespace {

using road::outcome;
using road::run_host;
using road::scratch_file;

std::string interface(const std::string &name, const std::string &optics) {
    return "{'active':'act','interface-name':'" + name + "'" +
           (optics.empty() ? "" : ",'Corvane-controller-optics-cfg:optics':{" + optics + "}") + "}";
}

// The reply for optical channels; `below` is what one has of its channel, the empty text for none.
std::string component(const std::string &below, const std::string &name = "0/0-OpticalChannel0/0/0/12") {
    return "{'name':'" + name + "','config':{'name':'" + name + "'}" +
           (below.empty() ? "" : ",'openconfig-terminal-device:optical-channel':{" + below + "}") + "}";
}
std::string extended(const std::string &below) {
    return "'Corvane-openconfig-terminal-device-ext:extended':{" + below + "}";
}

outcome walk_up(const std::string &entries, const std::string &device, const std::vector<std::string> &more) {
    std::vector<std::string> arguments{
        "up", "--device", device,
        scratch_file(
            "native.json",
            json_of("{'Corvane-ifmgr-cfg:interface-configurations':{'interface-configuration':[" + entries + "]}}"))};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run_host(arguments);
}

std::string reply(const std::string &components) {
    return components.empty() ? "{}" : json_of("{'openconfig-platform:components':{'component':[" + components + "]}}");
}

const std::string legacy = EXAMPLES "/legacy.json";
constexpr char port[] = "Optics0/0/0/12";

TEST(legacy_up, leaves_and_what_they_lose) {
    const auto threshold = [](const std::string &type, const std::string &value) {
        return "'rx-thresholds':{'rx-threshold':[{'rx-threshold-type':'" + type + "','rx-threshold':" + value + "}]}";
    };
    const auto carrier = [](const std::string &leaves) { return "'optics-dwdm-carrier':{" + leaves + "}"; };
    const struct {
        std::string optics, channel;
    } rows[] = {
        {carrier("'grid-type':'100mhz-grid','param-type':'frequency','param-value':'1931000'"),
         "'config':{'frequency':'193100000'}"},
        {carrier("'param-type':'wavelength','param-value':'1931000'"), // whatever it is called
         "'config':{'frequency':'193100000'}"},
        {carrier("'param-value':'19114'"), "'config':{'frequency':'1911400'}"},
        {carrier("'param-value':'19115'"), ""},
        {carrier("'param-value':'19610'"), ""},
        {carrier("'param-value':'19611'"), "'config':{'frequency':'1961100'}"},
        {"'optics-transmit-power':-35", "'config':{'target-output-power':'-3.50'}"},
        {"'optics-baud-rate':'69.43621477'", extended("'config':{'baud-rate':'69.4362148'}")},
        {threshold("low", "-230"), extended("'thresholds':{'config':{'input-signal-power-lower':-2300}}")},
        {threshold("high", "30"), extended("'thresholds':{'config':{'input-signal-power-upper':300}}")},
        {threshold("middle", "30"), ""},
        {"'rx-thresholds':{'rx-threshold':[{'rx-threshold':-230}]}", ""}, // of no type
        {"'rx-thresholds':{'rx-threshold':[{'rx-threshold':-230},{'rx-threshold-type':'low','rx-threshold':-10}]}",
         extended("'thresholds':{'config':{'input-signal-power-lower':-100}}")},
    };
    for (const auto &row : rows) {
        const outcome result = walk_up(interface(port, row.optics), legacy, {"--op", "get-config"});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(without_blanks(result.out), reply(component(row.channel))) << row.optics;
        EXPECT_EQ(result.err, "");
    }
}

TEST(legacy_up, gate_and_kind_of_read) {
    const std::string optics = "'optics-transmit-power':-35,'optics-fastpoll':'enable'";
    const std::string config = "'config':{'target-output-power':'-3.50'}";
    const std::string polled = "'fastpoll-sop-enable':'enable'";
    const std::string in_config = "'config':{" + polled + "}", in_state = "'state':{" + polled + "}";
    const struct {
        const char *op, *gate;
        std::string components;
    } rows[] = {
        {"get", "open", component(config + "," + extended(in_config + "," + in_state))},
        {"get-config", "open", component(config + "," + extended(in_config))},
        // The component and its name pass the gate.
        {"get", "shut", component(extended(in_state))},
        {"get-config", "shut", component("")},
    };
    for (const auto &row : rows) {
        const outcome result = walk_up(interface(port, optics), legacy, {"--op", row.op, "--gate", row.gate});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(without_blanks(result.out), reply(row.components)) << row.op << " " << row.gate;
    }
}

TEST(legacy_up, which_interfaces_are_components) {
    const std::string power = "'optics-transmit-power':-35", shown = "'config':{'target-output-power':'-3.50'}";
    const std::string without_terminal_device = scratch_file(
        "plain.json",
        json_of("{'router-type':18,'legacy-optical-terminal-device':true,'interfaces':['Optics0/0/0/12']}"));
    const std::string short_names = scratch_file(
        "short.json", json_of("{'router-type':19,'optical-terminal-device':true,'interfaces':['Optics0/0/0/12']}"));
    const struct {
        std::string device, entries, components;
    } rows[] = {
        {legacy, interface(port, power) + "," + interface("Optics0/0/0/13", power),
         component(shown) + "," + component(shown, "0/0-OpticalChannel0/0/0/13")},
        {legacy, interface(port, "") + "," + interface("Optics0/0/0/13", power),
         component(shown, "0/0-OpticalChannel0/0/0/13")},
        {short_names, interface(port, power), component(shown, "OpticalChannel0/0/0/12")},
        {without_terminal_device, interface(port, power), ""},
    };
    for (const auto &row : rows) {
        const outcome result = walk_up(row.entries, row.device, {"--op", "get-config"});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(without_blanks(result.out), reply(row.components)) << row.entries;
    }
}

} // namespace
