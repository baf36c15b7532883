// What `ocmap explain` says of nodes whose fate is known. A node more: a row.
#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host.h"

namespace {

using nlohmann::json;
using road::outcome;
using road::run_host;

#define LAB EXAMPLES "/lab.json"
#define LEGACY EXAMPLES "/legacy.json"
#define TD "Corvane-terminal-device-cfg"
#define OPT "Corvane-controller-optics-cfg"
#define CARRIER "/interface-configurations/interface-configuration/optics/optics-dwdm-carrier"
#define FEC                                                                                                            \
    "/performance-management/otu/otu-ports/otu-port/otu-prev/otu-prev-flex-interval/otu-prev-flex-interval-fecs/"      \
    "otu-prev-flex-interval-fec"
#define SNR                                                                                                            \
    "/performance-management/optics/optics-ports/optics-port/optics-prev/optics-prev-flex-interval/"                   \
    "optics-prev-flex-interval-optics/optics-prev-flex-interval-optic/snr"
#define CHANNEL "/terminal-device/logical-channels/channel"
#define OPTICAL "/components/component/optical-channel"

json explained(const std::string &device, const std::vector<std::string> &paths) {
    std::vector<std::string> arguments{"explain", "--device", device, "--format", "json"};
    arguments.insert(arguments.end(), paths.begin(), paths.end());
    const outcome result = run_host(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    return json::parse(result.out);
}

// "mapped ethernet,odu: merges PATH MODULE VALUE; ..."
std::string told(const json &fate) {
    std::string text = fate["outcome"];
    std::string whose;
    for (const json &each : fate["of"])
        whose += (whose.empty() ? " " : ",") + each["name"].get<std::string>();
    text += whose == " " ? "" : whose;
    if (fate["outcome"] == "refused")
        text += ": " + fate["error-tag"].get<std::string>() + ", " + fate["message"].get<std::string>();
    for (const json &call : fate["calls"]) {
        text += "\n" + call["verb"].get<std::string>() + " " + call["path"].get<std::string>() + " " +
                call["module"].get<std::string>();
        text += call["value"].is_null() ? "" : " " + call["value"].get<std::string>();
    }
    return text;
}

std::string told(const json &node, const char *deed) {
    std::string text;
    for (const json &fate : node[deed])
        text += (text.empty() ? "" : "\n") + told(fate);
    return text;
}

TEST(explain, tells_the_road_down) {
    struct {
        const char *device, *path, *deed, *told;
    } const rows[] = {
        {LAB, OPTICAL "/config/frequency", "get-config",
         "mapped all,one\nasks /optical-channels/optical-channel/frequency " TD " "},
        {LAB, OPTICAL "/config/frequency", "edit",
         "mapped one\nmerges /optical-channels/optical-channel/frequency " TD " 193100000"},
        {LAB, OPTICAL "/config/frequency", "delete",
         "mapped one\ndeletes /optical-channels/optical-channel/frequency " TD},
        {LEGACY, OPTICAL "/config/frequency", "get", "mapped all,one\nasks " CARRIER "/param-value " OPT " "},
        {LEGACY, OPTICAL "/config/frequency", "edit",
         "mapped one\nmerges " CARRIER "/param-value " OPT " 1931000\nmerges " CARRIER "/param-type " OPT
         " frequency\nmerges " CARRIER "/grid-type " OPT " 100mhz-grid"},
        {LEGACY, OPTICAL "/config/frequency", "delete", "mapped one\ndeletes " CARRIER " " OPT},
        {LAB, OPTICAL "/state/frequency", "edit", "refused one: operation-not-supported, state"},
        {LAB, OPTICAL "/state/frequency", "get-config", "dropped all,one"},
        {LAB, OPTICAL "/state/group-id", "get", "refused all,one: operation-not-supported, group-id"},
        {LEGACY, OPTICAL "/extended/config/optics-cd-max", "edit", "dropped one"},
        {LAB, CHANNEL "/config/rate-class", "edit",
         "mapped ethernet,coherent,otu4,odu\nmerges /logical-channels/channel/rate-class " TD " trib-rate100g"},
        {LAB, CHANNEL "[index=300]/config/rate-class", "edit",
         "mapped given\nmerges /logical-channels/channel/rate-class " TD " trib-rate100g"},
        {LAB, CHANNEL "[index='300']/config/index", "edit",
         "mapped given\nmerges /logical-channels/channel/channel-index " TD " 300"},
        {LAB, CHANNEL "[index=100001]/config/description", "edit",
         "refused given: invalid-value, Logical channel index is not within the allowed range: 1 - 100000"},
        // Words are FEC's, which only a channel of the OTU class has.
        {LAB, CHANNEL "/otn/state/pre-fec-ber/avg", "get",
         "mapped all,coherent,otu4\nasks " FEC "/pre-fec-ber/average Corvane-pmengine-oper \n"
         "dropped ethernet,odu"},
        {LAB, "/openconfig-terminal-device:terminal-device/**/esnr/min-time", "get",
         "mapped all,coherent,otu4\nasks " SNR "/min-time Corvane-pmengine-oper\ndropped ethernet,odu"},
    };
    std::map<std::string, std::vector<std::string>> paths; // by device
    for (const auto &row : rows)
        paths[row.device].emplace_back(row.path);
    std::map<std::string, json> answers;
    for (const auto &[device, asked] : paths) {
        answers[device] = explained(device, asked)["nodes"];
        ASSERT_EQ(answers[device].size(), asked.size());
    }
    std::map<std::string, size_t> next;
    for (const auto &row : rows)
        EXPECT_EQ(told(answers[row.device][next[row.device]++], row.deed), row.told) << row.path << " " << row.deed;
}

// "NATIVE: from -> to", of those that a read asks for.
std::vector<std::string> way_back(const std::string &device, const std::string &path) {
    std::vector<std::string> all;
    const json answer = explained(device, {path});
    for (const json &each : answer["nodes"][0]["filled-by"])
        if (each["asked"].get<bool>())
            all.push_back(each["native"].get<std::string>() + ": " + each["from"].get<std::string>() + " -> " +
                          each["to"].get<std::string>());
    return all;
}

TEST(explain, tells_the_way_back) {
    struct {
        const char *device, *path;
        std::vector<std::string> told;
    } const rows[] = {
        {LAB, OPTICAL "/config/frequency", {"/optical-channels/optical-channel/frequency: 193100000 -> 193100000"}},
        {LEGACY, OPTICAL "/config/frequency", {CARRIER "/param-value: 1931000 -> 193100000"}},
        {LAB, CHANNEL "/config/rate-class", {"/logical-channels/channel/rate-class: trib-rate100g -> TRIB_RATE_100G"}},
        {LAB, OPTICAL "/state/group-id", {}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(way_back(row.device, row.path), row.told) << row.path;
}

TEST(explain, tells_of_callback_and_conversion) {
    const json node = explained(LAB, {OPTICAL "/config/frequency"})["nodes"][0];
    EXPECT_EQ(node["callback"],
              "ymap_ox_oc_optical_openconfigterminaldevice_leaf_lvla_opticalchannel_config_frequency");
    EXPECT_EQ(node["edit"][0]["conversions"], json({"oc_optical_cfg_freq_to_low"}));
    const json list = explained(LAB, {CHANNEL})["nodes"][0];
    EXPECT_EQ(told(list, "delete"), "mapped ethernet,coherent,otu4,odu\ndeletes /logical-channels/channel " TD);
}

TEST(explain, takes_native_paths_and_wildcards) {
    const json answer = explained(LEGACY, {CARRIER "/param-value"});
    ASSERT_EQ(answer["native"].size(), 1U);
    const json node = answer["native"][0];
    EXPECT_EQ(
        node["used-by"],
        json::array(
            {{{"path", OPTICAL "/config/frequency"}, {"verb", "asks"}, {"operations", {"get-config", "get"}}},
             {{"path", OPTICAL "/config/frequency"}, {"verb", "merges"}, {"operations", json::array({"edit"})}}}));
    ASSERT_EQ(node["fills"].size(), 1U);
    EXPECT_EQ(node["fills"][0]["path"], OPTICAL "/config/frequency");

    struct {
        const char *path;
        size_t nodes, native;
    } const rows[] = {
        {OPTICAL "/config/*", 4, 0}, // frequency, power, mode, line port
        {"/terminal-device/**/pre-fec-ber/*", 7, 0},
        {"/performance-management*/**/pre-fec-ber/*", 0, 10},
        {"/optical-channels/**/cd-*", 0, 4},
        {CHANNEL "/config/{index}", 0, 0},
    };
    for (const auto &row : rows) {
        const outcome result = run_host({"explain", "--format", "json", row.path});
        EXPECT_EQ(result.status, row.nodes + row.native == 0 ? 2 : 0) << row.path;
        if (result.status == 0) {
            EXPECT_EQ(json::parse(result.out)["nodes"].size(), row.nodes) << row.path;
            EXPECT_EQ(json::parse(result.out)["native"].size(), row.native) << row.path;
        }
    }
}

TEST(explain, refuses_what_it_does_not_know) {
    struct {
        std::string path, message;
    } const rows[] = {
        {CHANNEL "/otn/state/prefec-ber/avg",
         "no model has " CHANNEL "/otn/state/prefec-ber/avg; nearest are: " CHANNEL "/otn/state/pre-fec-ber/avg "},
        {"/optical-channels/optical-channel/frequenzy", "nearest are: /optical-channels/optical-channel/frequency "},
        {CHANNEL "[number=3]/config/description", "channel has no key number"},
        {"terminal-device", "a path begins with \"/\""},
        {CHANNEL "[index=3/config", "a key is written [name=value]"},
        {CHANNEL "//config", "a step without name"},
        {"/" + std::string(100000, 'x'), "a path of more than 1000 characters"},
    };
    for (const auto &row : rows) {
        const outcome result = run_host({"explain", row.path});
        EXPECT_EQ(result.status, 2) << row.path;
        EXPECT_NE(result.err.find(row.message), std::string::npos) << result.err;
        EXPECT_EQ(result.out, "");
    }
}

TEST(explain, is_readable_by_people) {
    const outcome result = run_host({"explain", OPTICAL "/config/frequency", CHANNEL "/otn/state/pre-fec-ber/avg"});
    EXPECT_EQ(result.status, 0);
    for (const char *text : {"\n  edit        mapped  0/0-OpticalChannel0/0/0/12\n"
                             "    merges      /optical-channels/optical-channel/frequency  \"193100000\"  " TD "\n",
                             "  edit        refused  ethernet channel 100,", "  filled by   /optical-channels"})
        EXPECT_NE(result.out.find(text), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find('\x1b'), std::string::npos); // no terminal, no colour
}

} // namespace
