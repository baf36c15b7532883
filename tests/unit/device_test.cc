// Device descriptions: what they say, what is refused where, and what the platform answers once one is installed.
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "device/device.h"
#include "platform.h"

namespace {

std::string refusal_of(const std::string &json) {
    try {
        device::parse(json, "a.json");
        return "taken";
    } catch (const device::description_error &error) {
        EXPECT_EQ(error.file, "a.json");
        return std::to_string(error.line) + ":" + std::to_string(error.column) + ": " + error.text;
    }
}

struct bad_row {
    const char *json;
    const char *place_and_words;
};

TEST(device, refuses_what_it_does_not_know) {
    const std::string name_of_64(64, 'x');
    const std::string too_long = R"({"channels": {"1": ")" + name_of_64 + "\"}}";
    const bad_row rows[] = {
        {"", "1:1: syntax error"},
        {"{", "1:1: syntax error"},
        {"[]", "1:1: a device description is an object"},
        {"7", "1:1: a device description is an object"},
        {"{\n  \"router-typ\": 5}", "2:3: unknown member \"router-typ\""},
        {R"({"router-type": 5, "router-type": 5})", "1:20: member \"router-type\" stands twice"},
        {R"({"router-type": 4294967296})", "1:17: \"router-type\" takes a number from 0 to 4294967295"},
        {R"({"router-type": -1})", "1:17: \"router-type\" takes"},
        {R"({"router-type": 7.0})", "1:17: \"router-type\" takes"},
        {R"({"router-type": "7"})", "1:17: \"router-type\" takes"},
        {R"({"router-type": {}})", "1:17: \"router-type\" takes"},
        {R"({"optical-terminal-device": 1})", "1:29: \"optical-terminal-device\" takes true or false"},
        {R"({"optical-terminal-device": null})", "1:29: \"optical-terminal-device\" takes"},
        {R"({"legacy-optical-terminal-device": []})", "1:36: \"legacy-optical-terminal-device\" takes"},
        {R"({"channels": []})", "1:14: \"channels\" takes an object"},
        {R"({"channels": "x"})", "1:14: \"channels\" takes an object"},
        {R"({"channels": {"0": "x"}})", "1:15: channel \"0\" is no number from 1 to 100000"},
        {R"({"channels": {"100001": "x"}})", "1:15: channel \"100001\" is no number"},
        {R"({"channels": {"07": "x"}})", "1:15: channel \"07\" is no number"},
        {R"({"channels": {"1 ": "x"}})", "1:15: channel \"1 \" is no number"},
        {R"({"channels": {"1": 5}})", "1:20: the name of channel \"1\" is no text"},
        {R"({"channels": {"1": {}}})", "1:20: the name of channel \"1\" is no text"},
        {R"({"channels": {"1": ["x"]}})", "1:20: the name of channel \"1\" is no text"},
        {R"({"channels": {"1": ""}})", "1:20: the name of channel \"1\" is empty"},
        {R"({"channels": {"1": "a b"}})", "1:20: name \"a b\" holds what is no printable ASCII"},
        {too_long.c_str(), "1:20: name \""},
        {R"({"channels": {"1": "a/b", "2": "a_b"}})", "1:32: name \"a_b\" is that of channel 1 already"},
        {R"({"channels": {"1": "a", "1": "b"}})", "1:25: member \"1\" stands twice"},
        {R"({"interface-registry": "no"})", "1:24: \"interface-registry\" takes true or false"},
        {R"({"interfaces": {}})", "1:16: \"interfaces\" takes an array of names"},
        {R"({"interfaces": [["x"]]})", "1:17: the name of an interface is no text"},
        {R"({"interfaces": [7]})", "1:17: the name of an interface is no text"},
        {R"({"interfaces": [""]})", "1:17: the name of an interface is empty"},
        {R"({"interfaces": ["a\u00e4"]})", "1:17: name \"a\xc3\xa4\" holds what is no printable ASCII"},
        {R"({"interfaces": ["a/b", "a_b"]})", "1:24: interface \"a_b\" stands twice"},
    };
    for (const bad_row &row : rows) {
        const std::string said = refusal_of(row.json);
        EXPECT_TRUE(said.starts_with(row.place_and_words)) << row.json << "\n  " << said;
    }
}

#define TOP R"("Corvane-terminal-device-cfg:logical-channels")"

TEST(device, refuses_configuration_that_no_device_can_hold) {
    const bad_row rows[] = {
        // in place of the value of "config", which begins in column 12
        {"[]", "1:12: \"config\" takes an object of native containers"},
        {"null", "1:12: \"config\" takes"},
        {R"({"logical-channels": {}})", "1:13: \"logical-channels\" is named without its module"},
        {R"({"Corvane-shoe-cfg:shoes": {}})", "1:13: unknown module \"Corvane-shoe-cfg\""},
        {R"({"openconfig-platform:components": {}})", "1:13: unknown module \"openconfig-platform\""},
        {R"({"Corvane-controller-otu-oper:otu": {}})", "1:13: module \"Corvane-controller-otu-oper\" holds no config"},
        {R"({"Corvane-terminal-device-cfg:otu": {}})", "1:13: unknown container \"Corvane-terminal-device-cfg:otu\""},
        {"{" TOP ": {}, " TOP ": {}}", "1:65: member \"Corvane-terminal-device-cfg:logical-channels\" stands twice"},
        {"{" TOP ": []}", "1:61: \"logical-channels\" takes an object"},
        {"{" TOP ": 7}", "1:61: \"logical-channels\" takes an object"},
        {"{" TOP R"(: {"chanel": []}})", "1:62: unknown member \"chanel\" in \"logical-channels\""},
        {"{" TOP R"(: {"Corvane-terminal-device-cfg:channel": []}})", "1:62: unknown member"},
        {"{" TOP R"(: {"channel": {}}})", "1:73: \"channel\" takes an array of objects"},
        {"{" TOP R"(: {"channel": [7]}})", "1:74: \"channel\" takes an array of objects"},
        {"{" TOP R"(: {"channel": [[]]}})", "1:74: \"channel\" takes an array of objects"},
        {"{" TOP R"(: {"channel": [{}]}})", "1:74: an entry of \"channel\" without its key \"channel-index\""},
        {"{" TOP R"(: {"channel": [{"channel-index": "x"}]}})", "1:92: \"x\" is no value of \"channel-index\""},
        {"{" TOP R"(: {"channel": [{"channel-index": ""}]}})", "1:92: \"\" is no value of \"channel-index\""},
        {"{" TOP R"(: {"channel": [{"channel-index": 1.5}]}})", "1:92: \"1.5\" is no value of"},
        {"{" TOP R"(: {"channel": [{"channel-index": 1}, {"channel-index": "01"}]}})",
         "1:96: entry channel[channel-index='1'] stands twice"},
        {"{" TOP R"(: {"channel": [{"description": null}]}})", "1:90: \"description\" takes a value"},
        {"{" TOP R"(: {"channel": [{"description": ["x"]}]}})", "1:90: \"description\" takes a value"},
        {"{" TOP R"(: {"channel": [{"description": {}}]}})", "1:90: \"description\" takes a value"},
        {"{" TOP R"(: {"channel": [{"description": "a\u0000b"}]}})", "1:90: "},
        {"{" TOP R"(: {"channel": [{"ingress-physical-channel": 1}]}})",
         "1:103: \"ingress-physical-channel\" takes an array of values"},
        {"{" TOP R"(: {"channel": [{"ingress-physical-channel": [[1]]}]}})",
         "1:104: \"ingress-physical-channel\" takes an array of values"},
        {"{" TOP R"(: {"channel": [{"ingress-physical-channel": [1, 2, "01"]}]}})",
         "1:110: value \"1\" stands twice in \"ingress-physical-channel\""},
        {R"({"Corvane-terminal-device-cfg:transceivers": {"transceiver": [{"ifname": ""}]}})",
         "1:85: key \"ifname\" is empty"},
    };
    for (const bad_row &row : rows) {
        const std::string said = refusal_of(std::string(R"({"config": )") + row.json + "}");
        EXPECT_TRUE(said.starts_with(row.place_and_words)) << row.json << "\n  " << said;
    }
}

TEST(device, keeps_what_it_reports_apart_from_what_it_is_configured_to) {
    const std::string otu = R"({"Corvane-controller-otu-oper:otu": {"controllers": {"controller": [
                               {"controller-name": "OTU40/0/0/14", "info": {"qfactor": 9.40}}]}}})";
    const device::description said = device::parse(R"({"operational": )" + otu + "}", "a.json");
    EXPECT_TRUE(said.config == device::record());
    ASSERT_EQ(said.operational.lists.size(), 1u);
    const device::record &controller = said.operational.lists[0].entries.at(std::string("OTU40/0/0/14\0", 13));
    ASSERT_EQ(controller.leaves.size(), 1u);
    EXPECT_EQ(controller.leaves[0].value, "9.40");

    const bad_row rows[] = {
        {R"({"operational": []})", "1:17: \"operational\" takes an object of native containers"},
        {R"({"operational": {)" TOP R"(: {}}})",
         "1:18: module \"Corvane-terminal-device-cfg\" holds no operational data"},
        {R"({"operational": {"Corvane-controller-otu-oper:odu": {}}})", "1:18: unknown container"},
        {R"({"operational": {}, "operational": {}})", "1:21: member \"operational\" stands twice"},
    };
    for (const bad_row &row : rows)
        EXPECT_TRUE(refusal_of(row.json).starts_with(row.place_and_words))
            << row.json << "\n  " << refusal_of(row.json);
}

TEST(device, takes_configuration_in_any_order_and_form) {
    const auto config_of = [](const std::string &json) { return device::parse(json, "a.json").config; };
    EXPECT_TRUE(config_of("{\"config\": {" TOP R"(: {"channel": [
                       {"otn": {}, "ethernet": {"als-delay": "+07", "client-als": true}, "channel-index": "20"},
                       {"channel-index": 3, "description": 1.50}]}}})") ==
                config_of("{\"config\": {" TOP R"(: {"channel": [
                       {"channel-index": 3, "description": "1.50"},
                       {"channel-index": 20, "ethernet": {"client-als": "true", "als-delay": 7}}]}}})"));
    EXPECT_TRUE(config_of("{\"config\": {" TOP R"(: {"channel": []}}})") == device::record());
}

TEST(device, takes_every_member_and_its_borders) {
    const std::string longest(63, 'x');
    const device::description said =
        device::parse(R"({"router-type": 4294967295, "legacy-optical-terminal-device": true,
                          "optical-terminal-device": false, "channels": {"1": "a", "100000": ")" +
                          longest + "\"}}",
                      "a.json");
    EXPECT_EQ(said.router_type, 4294967295u);
    EXPECT_FALSE(said.optical_terminal_device);
    EXPECT_TRUE(said.legacy_optical_terminal_device);
    EXPECT_EQ(said.channels, (std::map<uint32_t, std::string>{{1, "a"}, {100000, longest}}));

    const device::description silent = device::parse("{}", "a.json");
    EXPECT_EQ(silent.router_type, 0u);
    EXPECT_FALSE(silent.optical_terminal_device);
    EXPECT_FALSE(silent.legacy_optical_terminal_device);
    EXPECT_TRUE(silent.channels.empty());
    EXPECT_TRUE(silent.interface_registry);
    EXPECT_TRUE(silent.interfaces.empty());
}

TEST(device, registers_interfaces_by_their_place) {
    const char *names[] = {"Optics0_0_0_12", "Optics0/0/0/1", "Optics0/0/0/2"};
    uint32_t handles[3] = {};
    rcode statuses[3] = {};
    ifreg_find_result result{handles, statuses};
    uint64_t registry = 0;
    const uint32_t word = 10;

    device::install(device::parse(R"({"interfaces": ["Optics0/0/0/1", "Optics0/0/0/12"]})", "a.json"));
    ASSERT_EQ(ifreg_db_bind(&word, 2, &registry), RC_OK);
    ASSERT_EQ(ifreg_interface_find(registry, 3, names, nullptr, &result), RC_OK);
    EXPECT_EQ(statuses[0], RC_OK);
    EXPECT_EQ(handles[0], 2u);
    EXPECT_EQ(statuses[1], RC_OK);
    EXPECT_EQ(handles[1], 1u);
    EXPECT_NE(statuses[2], RC_OK);

    device::install(device::parse(R"({"interface-registry": false})", "a.json"));
    EXPECT_NE(ifreg_db_bind(&word, 2, &registry), RC_OK);
}

TEST(device, names_the_file_that_it_cannot_read) {
    for (const char *file : {"/nowhere/device.json", "/"}) {
        try {
            device::read_file(file);
            ADD_FAILURE() << file;
        } catch (const device::description_error &error) {
            EXPECT_EQ(error.file, file);
            EXPECT_EQ(error.line, 0u);
            EXPECT_FALSE(error.text.empty());
        }
    }
}

TEST(device, answers_as_the_installed_description_says) {
    char name[200] = "before";
    uint32_t channel = 0;

    device::install(device::read_file(EXAMPLES "/legacy.json"));
    EXPECT_EQ(hwinfo_get_router_type(), 18u);
    EXPECT_TRUE(hwinfo_has_optical_term_dev());
    EXPECT_TRUE(hwinfo_has_legacy_optical_term_dev());
    ocoptical_ifmap_c_find_ifname(21, name);
    EXPECT_STREQ(name, "CoherentDSP0_0_0_20");

    device::install(device::lab());
    EXPECT_EQ(hwinfo_get_router_type(), 5u);
    EXPECT_TRUE(hwinfo_has_optical_term_dev());
    EXPECT_FALSE(hwinfo_has_legacy_optical_term_dev());
    ocoptical_ifmap_c_find_ifname(21, name);
    EXPECT_STREQ(name, "CoherentDSP0_0_0_20"); // an unknown number leaves the name alone
    ocoptical_ifmap_c_find_ifname(300, name);
    EXPECT_STREQ(name, "CoherentDSP0_0_0_12");
    EXPECT_EQ(ocoptical_ifmap_c_find_ifindex("HundredGigECtrlr0_0_0_1", &channel), RC_OK);
    EXPECT_EQ(channel, 100u);
    EXPECT_NE(ocoptical_ifmap_c_find_ifindex("CoherentDSP0_0_0_20", &channel), RC_OK);
}

} // namespace
