// The host as a user meets it: exit statuses, messages, call logs and native trees of whole requests.
// A request more: a row in the table that it belongs to.
#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host.h"

namespace {

using road::outcome;
using road::run_host;
using road::scratch_file;

// A JSON request for channels; `entries` are those of the list.
std::string channels(const std::string &entries) {
    return R"({"openconfig-terminal-device:terminal-device":{"logical-channels":{"channel":[)" + entries + "]}}}";
}

outcome down(const std::string &op, const std::string &request, std::vector<std::string> more = {}) {
    std::vector<std::string> arguments{"down", "--op", op, scratch_file("request", request)};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run_host(arguments);
}

std::vector<std::string> lines_of(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

TEST(command_line, answers_and_refuses) {
    struct {
        std::vector<std::string> arguments;
        int status;
        std::string out, err; // to be found there
    } const rows[] = {
        {{"--version"}, 0, "ocmap 0.", ""},
        {{"--help"}, 0, "down", ""},
        {{"down", "--help"}, 0, "--device", ""},
        {{}, 64, "", "A subcommand is required"},
        {{"sideways"}, 64, "", "no subcommand sideways"},
        {{"down", "--op", "get", "--device", "", "request.xml"}, 64, "", "--device"},
        {{"down", "--op", "get", "--plugin", "", "request.xml"}, 64, "", "--plugin"},
        {{"down", "--op", "get"}, 64, "", "request"},
        {{"down", "request.xml"}, 64, "", "--op"},
        {{"down", "--op", "edit-most", "request.xml"}, 64, "", "edit-most"},
        {{"down", "--op", "10", "request.xml"}, 64, "", "10"},
        {{"down", "--op", "get", "--op", "edit", "request.xml"}, 64, "", "--op"},
        {{"down", "--op", "get", "--format", "yaml", "request.xml"}, 64, "", "yaml"},
        {{"down", "--op", "get", "one.xml", "two.xml"}, 64, "", "two.xml"},
        {{"down", "--op", "get", "--colour", "request.xml"}, 64, "", "--colour"},
    };
    for (const auto &row : rows) {
        const outcome result = run_host(row.arguments);
        EXPECT_EQ(result.status, row.status) << result.err;
        EXPECT_NE(result.out.find(row.out), std::string::npos) << result.out;
        EXPECT_NE(result.err.find(row.err), std::string::npos) << result.err;
        EXPECT_EQ(row.status == 0, result.err.empty());
        EXPECT_EQ(row.status == 0, !result.out.empty());
    }
}

// What stands behind the name of the file in the message; the whole message ends the line.
TEST(bad_input, is_refused_with_its_place) {
    const std::string good = channels(R"({"index":5})");
    struct {
        std::string op, request, message;
    } const rows[] = {
        {"get", "", ": an empty request"},
        {"get", " \n\t\n", ": an empty request"},
        {"get", "\n\n  hello", ":3:3: neither XML nor JSON"},
        {"get", good + "x", ":1:" + std::to_string(good.size() + 1) + ":"},
        {"get", "{\"openconfig-terminal-device:terminal-device\":\n  {\"a\":null,}}", ":2:"},
        {"get", "<terminal-device xmlns=\"http://openconfig.net/yang/terminal-device\">\n  <a></b>", ":2:"},
        {"get", "{\n\"openconfig-terminal-device:nowhere\":{}}", ":2:"},
        {"get", "{\n\n\"no-such-module:terminal-device\":{}}", ":3:"},
        {"get", channels("\n{\"@\":{\"ietf-netconf:operation\":\"delete\"}}"), ":2:"},
    };
    for (const auto &row : rows) {
        const outcome result = down(row.op, row.request);
        EXPECT_EQ(result.status, 2) << row.request;
        EXPECT_NE(result.err.find("/request" + row.message), std::string::npos) << result.err;
        EXPECT_EQ(lines_of(result.err).size(), 1U) << result.err;
        EXPECT_EQ(result.out, "");
    }
}

TEST(bad_input, names_the_file_that_is_unusable) {
    const std::string request = scratch_file("good.json", channels(R"({"index":5})"));
    const std::string device = scratch_file("device.json", "{\"router-type\": 5,\n \"colour\": 1}");
    const std::string store = scratch_file("store.json", "{\"state-store\": {\n \"/a\": {\"record\": \"shoe_info\"}}}");
    const std::string text = scratch_file("text.so", "not a shared object");
    const std::string bare = scratch_file("bare.json", "{}"); // without records, which that library does not know
    struct {
        std::vector<std::string> arguments;
        std::string message;
    } const rows[] = {
        {{"/nowhere/request.xml"}, "/nowhere/request.xml: No such file or directory"},
        {{"/"}, "/: Is a directory"},
        {{"/dev/zero"}, "/dev/zero: larger than 64 MiB"},
        {{"/nowhere/two\nlines\x1b"}, "/nowhere/two\\nlines\\x1b: No such file or directory"},
        {{request, "--device", "/nowhere/device.json"}, "/nowhere/device.json"},
        {{request, "--device", device}, device + ":2:2: "},
        {{request, "--device", device}, "colour"},
        {{request, "--device", store}, store + ":2:19: unknown record \"shoe_info\""},
        {{request, "--plugin", "/nowhere/plugin.so"}, "/nowhere/plugin.so"},
        {{request, "--plugin", text}, text},
        {{request, "--plugin", LIBRARY_WITHOUT_ROOTS, "--device", bare},
         "ymap_ox_oc_optical_openconfigterminaldevice_lvla_terminaldevice"},
    };
    for (const auto &row : rows) {
        std::vector<std::string> arguments{"down", "--op", "get"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const outcome result = run_host(arguments);
        EXPECT_EQ(result.status, 2) << row.message;
        EXPECT_NE(result.err.find(row.message), std::string::npos) << result.err;
        EXPECT_EQ(lines_of(result.err).size(), 1U) << result.err;
        EXPECT_EQ(result.out, "");
    }
}

TEST(failed_walk, tells_status_tag_path_and_text) {
    const std::string list = "/terminal-device/logical-channels/channel";
    const std::string range = "Logical channel index is not within the allowed range: 1 - 100000";
    struct {
        std::string op, request, status, tag, path, message;
    } const rows[] = {
        {"edit", channels(R"({"index":0})"), "RC_VALUE_OUT_OF_RANGE", "invalid-value", list + "[index='0']/index",
         range},
        {"get", channels(R"({"index":100001})"), "RC_VALUE_OUT_OF_RANGE", "invalid-value",
         list + "[index='100001']/index", range},
        {"edit", channels("{}"), "RC_SUBTREE_ERROR", "missing-element", list, "an entry without its key"},
        {"edit", channels(R"({"config":{"description":"x"}})"), "RC_LIST_KEY_ERROR", "missing-element", list, "index"},
        {"edit", channels(R"({"index":5,"@index":{"ietf-netconf:operation":"delete"}})"), "RC_KEY_DELETE",
         "operation-not-supported", list + "[index='5']/index", "a key cannot be deleted: delete its entry"},
        {"edit-checked", channels(R"({"index":5,"state":{"description":"x"}})"), "RC_UNSUPPORTED_NODE",
         "operation-not-supported", list + "[index='5']/state", "state"},
        {"edit-full", channels(R"({"index":5,"colour":"red"})"), "RC_UNSUPPORTED_NODE", "unknown-element",
         list + "[index='5']/colour", "colour"},
        {"edit", channels(R"({"index":5,"Corvane-terminal-device-cfg:colour":"red"})"), "RC_UNSUPPORTED_AUGMENT",
         "unknown-namespace", list + "[index='5']/colour", "colour"},
        {"edit",
         R"({"openconfig-terminal-device:terminal-device":{"logical-channels":{)"
         R"("@":{"ietf-netconf:operation":"delete"},"channel":[{"index":5}]}}})",
         "RC_INVALID_ARGUMENTS", "operation-failed", "/terminal-device/logical-channels",
         "a container is deleted as a whole, with no nodes in it"},
    };
    for (const auto &row : rows) {
        const outcome result = down(row.op, row.request);
        EXPECT_EQ(result.status, 1) << row.request;
        EXPECT_EQ(result.err, "ocmap: " + row.status + "\n  error-tag:  " + row.tag + "\n  error-path: " + row.path +
                                  "\n  message:    " + row.message + "\n");
        EXPECT_EQ(result.out, "");
    }
}

TEST(failed_walk, tells_both_values_of_a_key_that_disagrees) {
    const outcome result = down("edit", channels(R"({"index":5,"config":{"index":66}})"));
    EXPECT_EQ(result.status, 1);
    const std::vector<std::string> lines = lines_of(result.err);
    ASSERT_EQ(lines.size(), 4U) << result.err;
    EXPECT_EQ(lines[1], "  error-tag:  invalid-value");
    EXPECT_EQ(lines[2], "  error-path: /terminal-device/logical-channels/channel[index='5']/config/index");
    EXPECT_NE(lines[3].find('5'), std::string::npos);
    EXPECT_NE(lines[3].find("66"), std::string::npos);
}

// The adds of the channel list, its key, its description, and the carriers that a read opens; adds of other paths
// are left out. A read of operational data goes on with the `state` leaves: only its beginning is held against the row.
TEST(call_log, shows_each_add_with_its_source) {
    const std::string cfg = " ns=Corvane-terminal-device-cfg";
    const std::string channel = "add /logical-channels/channel" + cfg;
    const std::string index = "add /logical-channels/channel/channel-index" + cfg;
    const std::string description = "add /logical-channels/channel/description" + cfg;
    const std::string otu = "add /otu/controllers/controller ns=Corvane-controller-otu-oper list";
    const std::string otu_name = "add /otu/controllers/controller/controller-name ns=Corvane-controller-otu-oper";
    const std::string ethernet = "add /ethernet-interface/interfaces/interface ns=Corvane-drivers-media-eth-oper list";
    const std::string ethernet_name =
        "add /ethernet-interface/interfaces/interface/interface-name ns=Corvane-drivers-media-eth-oper";

    struct {
        std::string op, request;
        std::vector<std::string> lines;
    } const rows[] = {
        {"edit",
         channels(R"({"index":5,"config":{"index":5,"description":"east"}})"),
         {channel + " list", index + " value=\"5\" source=none", index + " value=\"5\" source=none",
          description + " value=\"east\" source=none"}},
        {"edit",
         channels(R"({"@":{"ietf-netconf:operation":"replace"},"index":5,"config":{"index":5,"description":"east"}})"),
         {channel + " source=remove list", index + " value=\"5\" source=none", index + " source=remove",
          description + " source=remove", channel + " list", index + " value=\"5\" source=none",
          index + " value=\"5\" source=none", description + " value=\"east\" source=none"}},
        {"edit",
         channels(R"({"@":{"ietf-netconf:operation":"delete"},"index":5})"),
         {channel + " source=delete list", index + " value=\"5\" source=none", index + " source=remove",
          description + " source=remove"}},
        {"edit",
         channels(R"({"index":5,"config":{"description":"east","@description":{"ietf-netconf:operation":"remove"}}})"),
         {channel + " list", index + " value=\"5\" source=none", description + " source=remove"}},
        {"get-config",
         channels(R"({"index":300})"),
         {channel + " list", index + " value=\"300\"", otu, ethernet, index, otu, ethernet, description}},
        {"get",
         channels(R"({"index":300})"),
         {channel + " list", otu, index + " value=\"300\"", otu, ethernet, otu_name + " value=\"CoherentDSP0/0/0/12\"",
          index, otu, ethernet, description}},
        {"get",
         channels(R"({"index":100})"),
         {channel + " list", ethernet, index + " value=\"100\"", otu, ethernet,
          ethernet_name + " value=\"HundredGigECtrlr0/0/0/1\"", index, otu, ethernet, description}},
        {"get",
         channels(R"({"index":200})"), // an ODU: no carrier by name
         {channel + " list", index + " value=\"200\"", otu, ethernet, index, otu, ethernet, description}},
        {"get",
         R"({"openconfig-terminal-device:terminal-device":{"logical-channels":{}}})",
         {channel + " list", otu, ethernet, index, otu, ethernet, index, otu, ethernet, description}},
    };
    for (const auto &row : rows) {
        const outcome result = down(row.op, row.request, {"--calls"});
        ASSERT_EQ(result.status, 0) << result.err;
        std::vector<std::string> told = lines_of(result.out);
        ASSERT_NE(std::find(told.begin(), told.end(), ""), told.end()) << "the log ends with an empty line";
        told.erase(std::find(told.begin(), told.end(), ""), told.end());
        std::erase_if(told, [](const std::string &line) {
            static const std::array known{"/logical-channels/channel",
                                          "/logical-channels/channel/channel-index",
                                          "/logical-channels/channel/description",
                                          "/otu/controllers/controller",
                                          "/otu/controllers/controller/controller-name",
                                          "/ethernet-interface/interfaces/interface",
                                          "/ethernet-interface/interfaces/interface/interface-name"};
            const std::string path = line.substr(4, line.find(' ', 4) - 4);
            return std::find(known.begin(), known.end(), path) == known.end();
        });
        if (row.op == "get")
            told.resize(std::min(told.size(), row.lines.size()));
        EXPECT_EQ(told, row.lines) << row.op << ' ' << row.request;
    }
}

TEST(native_tree, of_an_edit_in_both_forms) {
    const std::string request = channels(
        R"({"@":{"ietf-netconf:operation":"delete"},"index":5},{"index":6,"config":{"description":"a<b & \"c\""}})");
    const std::string base = "urn:ietf:params:xml:ns:netconf:base:1.0";
    const outcome xml = down("edit", request, {"--format", "xml"});
    EXPECT_EQ(xml.out.substr(0, xml.out.find("  <logical")),
              "<config xmlns=\"" + base + "\" xmlns:nc=\"" + base + "\">\n");
    EXPECT_NE(xml.out.find("  <logical-channels xmlns=\"urn:corvane:yang:Corvane-terminal-device-cfg\">\n"
                           "    <channel nc:operation=\"delete\">\n"
                           "      <channel-index>5</channel-index>\n"
                           "      <description nc:operation=\"remove\"/>\n"),
              std::string::npos)
        << xml.out;
    EXPECT_NE(xml.out.find("    <channel>\n"
                           "      <channel-index>6</channel-index>\n"
                           "      <description>a&lt;b &amp; &quot;c&quot;</description>\n"
                           "    </channel>\n"
                           "  </logical-channels>\n"
                           "</config>\n"),
              std::string::npos)
        << xml.out;

    const outcome json = down("edit", request);
    EXPECT_NE(json.out.find("{\n"
                            "  \"Corvane-terminal-device-cfg:logical-channels\": {\n"
                            "    \"channel\": [\n"
                            "      {\n"
                            "        \"@\": {\"ietf-netconf:operation\": \"delete\"},\n"
                            "        \"channel-index\": \"5\",\n"
                            "        \"description\": null,\n"
                            "        \"@description\": {\"ietf-netconf:operation\": \"remove\"}"),
              std::string::npos)
        << json.out;
    EXPECT_NE(json.out.find("      {\n"
                            "        \"channel-index\": \"6\",\n"
                            "        \"description\": \"a<b & \\\"c\\\"\"\n"
                            "      }\n"
                            "    ]\n"
                            "  }\n"
                            "}\n"),
              std::string::npos)
        << json.out;
}

TEST(examples, say_the_same_in_both_forms_and_from_standard_input) {
    struct {
        const char *op, *name;
        int status;
    } const rows[] = {
        {"edit", "create-two-channels", 0},
        {"get", "read-one-channel", 0},
        {"edit", "refused-index", 1},
        {"edit", "provision-optical-channel", 0},
        {"get", "read-optical-channel", 0},
        {"edit", "refused-frequency", 1},
        {"edit", "refused-port-speed", 1},
        {"get", "read-live-channel", 0},
        {"get", "read-live-optical-channel", 0},
    };
    for (const auto &row : rows) {
        const std::string file = std::string(EXAMPLES) + "/" + row.name;
        const outcome xml = run_host({"down", "--op", row.op, "--calls", file + ".xml"});
        const outcome json = run_host({"down", "--op", row.op, "--calls", "--format", "xml", file + ".json"});
        const outcome piped = run_host({"down", "--op", row.op, "--calls", "-"}, {.input = file + ".xml"});
        EXPECT_EQ(xml.status, row.status) << xml.err;
        EXPECT_EQ(xml.out, json.out);
        EXPECT_EQ(xml.err, json.err);
        EXPECT_EQ(xml.out, piped.out);
    }
}

TEST(output, that_cannot_be_written_is_told) {
    const std::string request = scratch_file("good.json", channels(R"({"index":5})"));
    for (const std::vector<std::string> &arguments :
         {std::vector<std::string>{"down", "--op", "edit", request}, {"--version"}, {"--help"}}) {
        const outcome full = run_host(arguments, {.output = "/dev/full"});
        EXPECT_EQ(full.status, 74);
        EXPECT_EQ(full.err, "ocmap: standard output: No space left on device\n");
        const outcome closed = run_host(arguments, {.is_output_closed = true});
        EXPECT_EQ(closed.status, 74);
        EXPECT_EQ(closed.err, "ocmap: standard output: Broken pipe\n");
    }
}

TEST(trace, goes_to_standard_error_on_both_channels) {
    const outcome result = down("edit", channels(R"({"index":0})"), {"--trace"});
    EXPECT_EQ(result.status, 1);
    for (const char *text : {"TRC: ZMF: ctx=", "ERR: ZMF: ctx=", "Logical Index  is not allowed = 0",
                             "TRC: ymap_ox_oc_optical_openconfigterminaldevice_lvla_terminaldevice:"})
        EXPECT_NE(result.err.find(text), std::string::npos) << text;
    EXPECT_EQ(result.out, "");
}

} // namespace
