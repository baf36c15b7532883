// What edits leave on the device: each operation on each kind of node, where the node is there and where it is not. A
// case more: a row. Then the commands get-config, edit and up as a user meets them.
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "device_road.h"
#include "host.h"

namespace {

using road::bare_device;
using road::channel_request;
using road::device_road;
using road::edit_result;
using road::outcome;
using road::run_host;
using road::scratch_file;

// "@": {"ietf-netconf:operation": "..."}, of the object that it stands in or of the leaf that it names.
std::string op(const std::string &operation, const std::string &leaf = "") {
    return "\"@" + leaf + R"(":{"ietf-netconf:operation":")" + operation + "\"}";
}

const std::string given = channel_request(
    R"({"index":5,)"
    R"("config":{"description":"east","admin-state":"ENABLED"},)"
    R"("ethernet":{"config":{"client-als":"LASER_SHUTDOWN","als-delay":200}},)"
    R"("ingress":{"config":{"physical-channel":[1,2]}},)"
    R"("logical-channel-assignments":{"assignment":[)"
    R"({"index":1,"config":{"logical-channel":200,"allocation":"100"}},{"index":2,"config":{"logical-channel":201}}]}},)"
    R"({"index":6,"config":{"description":"west"}})");

// The pieces of what is on the device then.
const std::string config5 = " config(index=5 description=east admin-state=ENABLED)";
const std::string ethernet5 = " ethernet(config(client-als=LASER_SHUTDOWN als-delay=200))";
const std::string ingress5 = " ingress(config(physical-channel=1 physical-channel=2))";
const std::string assignment1 = "assignment(index=1 config(index=1 logical-channel=200 allocation=100))";
const std::string assignment2 = "assignment(index=2 config(index=2 logical-channel=201))";
const std::string channel6 = "channel(index=6 config(index=6 description=west))";

std::string assignments(const std::string &entries) {
    return " logical-channel-assignments(" + entries + ")";
}
std::string channel5(const std::string &content) {
    return "channel(index=5" + content + ") " + channel6;
}

const std::string both_assignments = assignments(assignment1 + " " + assignment2);
const std::string before = channel5(config5 + ethernet5 + ingress5 + both_assignments);

TEST(edit, leaves_the_device_as_it_should) {
    const std::string all = ethernet5 + ingress5 + both_assignments;
    const std::string native5 = "/logical-channels/channel[channel-index='5']";
    struct {
        const char *what;
        std::string entry, after;
        std::string error_tag{}, path{};
    } const rows[] = {
        // The entry.
        {"merge into what is there", R"({"index":5,"config":{"loopback-mode":"NONE"}})",
         channel5(" config(index=5 description=east admin-state=ENABLED loopback-mode=NONE)" + all)},
        {"merge of a new entry", R"({"index":7,"config":{"description":"new"}})",
         before + " channel(index=7 config(index=7 description=new))"},
        {"merge of a new entry with nothing but its key", R"({"index":7})",
         before + " channel(index=7 config(index=7))"},
        {"replace of what is there", "{" + op("replace") + R"(,"index":5,"config":{"description":"new"}})",
         channel5(" config(index=5 description=new)")},
        {"replace of what is not there", "{" + op("replace") + R"(,"index":7,"config":{"description":"new"}})",
         before + " channel(index=7 config(index=7 description=new))"},
        {"delete of what is there", "{" + op("delete") + R"(,"index":5})", channel6},
        {"delete of what is not there", "{" + op("delete") + R"(,"index":7})", before, "data-missing",
         "/logical-channels/channel[channel-index='7']"},
        {"delete of what is there, content and all",
         "{" + op("delete") + R"(,"index":5,"config":{"description":"east"},)" +
             R"("logical-channel-assignments":{"assignment":[{"index":1}]}})",
         channel6},
        {"remove of what is there", "{" + op("remove") + R"(,"index":5})", channel6},
        {"remove of what is not there", "{" + op("remove") + R"(,"index":7})", before},

        // Containers.
        {"replace of a container", R"({"index":5,"config":{)" + op("replace") + R"(,"description":"new"}})",
         channel5(" config(index=5 description=new)" + all)},
        {"replace of a container that was empty",
         R"({"index":6,"otn":{"config":{)" + op("replace") + R"(,"tti-msg-transmit":"x"}}})",
         "channel(index=5" + config5 + all +
             ") channel(index=6 config(index=6 description=west) otn(config(tti-msg-transmit=x)))"},
        {"delete of a container", R"({"index":5,"config":{)" + op("delete") + "}}", channel5(" config(index=5)" + all)},
        {"remove of a container", R"({"index":5,"ingress":{)" + op("remove") + "}}",
         channel5(config5 + ethernet5 + both_assignments)},
        {"remove of a container brings the default of client-als back",
         R"({"index":5,"ethernet":{)" + op("remove") + "}}",
         channel5(config5 + " ethernet(config(client-als=ETHERNET))" + ingress5 + both_assignments)},
        {"remove of a container without content", R"({"index":6,"ingress":{)" + op("remove") + "}}", before},
        {"remove of all assignments", R"({"index":5,"logical-channel-assignments":{)" + op("remove") + "}}",
         channel5(config5 + ethernet5 + ingress5)},

        // Entries below an entry.
        {"delete of an assignment",
         R"({"index":5,"logical-channel-assignments":{"assignment":[{)" + op("delete") + R"(,"index":1}]}})",
         channel5(config5 + ethernet5 + ingress5 + assignments(assignment2))},
        {"delete of an assignment that is not there",
         R"({"index":5,"logical-channel-assignments":{"assignment":[{)" + op("delete") + R"(,"index":3}]}})", before,
         "data-missing", native5 + "/logical-channel-assignments/logical-channel-assignment[assignment-index='3']"},
        {"remove of an assignment that is not there",
         R"({"index":5,"logical-channel-assignments":{"assignment":[{)" + op("remove") + R"(,"index":3}]}})", before},
        {"replace of an assignment",
         R"({"index":5,"logical-channel-assignments":{"assignment":[{)" + op("replace") +
             R"(,"index":1,"config":{"description":"new"}}]}})",
         channel5(config5 + ethernet5 + ingress5 +
                  assignments("assignment(index=1 config(index=1 description=new)) " + assignment2))},

        // Leaves.
        {"delete of a leaf", R"({"index":5,"config":{)" + op("delete", "admin-state") + "}}",
         channel5(" config(index=5 description=east)" + all)},
        {"delete of a leaf that is not there", R"({"index":5,"config":{)" + op("delete", "loopback-mode") + "}}",
         before, "data-missing", native5 + "/loopback-mode"},
        {"remove of a leaf that is not there", R"({"index":5,"config":{)" + op("remove", "loopback-mode") + "}}",
         before},
        {"replace of a leaf", R"({"index":5,"config":{"admin-state":"MAINT",)" + op("replace", "admin-state") + "}}",
         channel5(" config(index=5 description=east admin-state=MAINT)" + all)},
        {"delete of client-als writes its default",
         R"({"index":5,"ethernet":{"config":{)" + op("delete", "client-als") + "}}}",
         channel5(config5 + " ethernet(config(client-als=ETHERNET als-delay=200))" + ingress5 + both_assignments)},

        // Values of a leaf-list.
        {"merge of a value", R"({"index":5,"ingress":{"config":{"physical-channel":[3,1]}}})",
         channel5(config5 + ethernet5 + " ingress(config(physical-channel=1 physical-channel=2 physical-channel=3))" +
                  both_assignments)},
        {"delete of a value",
         R"({"index":5,"ingress":{"config":{"physical-channel":[1],"@physical-channel":[{"ietf-netconf:operation":"delete"}]}}})",
         channel5(config5 + ethernet5 + " ingress(config(physical-channel=2))" + both_assignments)},
        {"delete of a value that is not there",
         R"({"index":5,"ingress":{"config":{"physical-channel":[3],"@physical-channel":[{"ietf-netconf:operation":"delete"}]}}})",
         before, "data-missing", native5 + "/ingress-physical-channel"},
        {"remove of a value that is not there",
         R"({"index":5,"ingress":{"config":{"physical-channel":[3],"@physical-channel":[{"ietf-netconf:operation":"remove"}]}}})",
         before},

        // Values that become nothing on the way down.
        {"a name of no transceiver", R"({"index":5,"ingress":{"config":{"transceiver":"Optics0"}}})", before,
         "invalid-value", native5 + "/ingress-client-port"},

        // All or nothing.
        {"a refusal after a change",
         R"({"index":6,"config":{"description":"changed"}},{"index":5,"config":{"admin-state":"UP"}})", before,
         "invalid-value", native5 + "/admin-state"},
        {"a refusal after an entry was deleted",
         "{" + op("delete") + R"(,"index":5},{)" + op("delete") + R"(,"index":7})", before, "data-missing",
         "/logical-channels/channel[channel-index='7']"},
        {"the same entry deleted and merged",
         "{" + op("delete") + R"(,"index":6},{"index":6,"config":{"admin-state":"MAINT"}})",
         "channel(index=5" + config5 + all + ") channel(index=6 config(index=6 admin-state=MAINT))"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        device_road device(bare_device(5, true));
        ASSERT_TRUE(device.edit(given).is_done());
        ASSERT_EQ(device.channels(), before);
        const edit_result result = device.edit(channel_request(row.entry));
        EXPECT_EQ(result.status, RC_OK) << result.message;
        EXPECT_EQ(result.error_tag, row.error_tag) << result.message;
        EXPECT_EQ(result.path, row.path);
        EXPECT_EQ(device.channels(), row.after);
    }
}

TEST(edit, that_the_plug_in_refuses_changes_nothing) {
    struct {
        std::string request;
        rcode status;
    } const rows[] = {
        {channel_request(R"({"index":6,"config":{"description":"changed"}},{"index":0})"), RC_VALUE_OUT_OF_RANGE},
        {channel_request(R"({"index":5,"config":{)" + op("delete") + R"(,"description":"east"}})"),
         RC_INVALID_ARGUMENTS},
        {channel_request(R"({"index":5,"config":{"description":"changed","state":null}})"), RC_UNSUPPORTED_NODE},
    };
    for (const auto &row : rows) {
        device_road device(bare_device(5, true));
        ASSERT_TRUE(device.edit(given).is_done());
        std::string request = row.request;
        if (const size_t null = request.find("null"); null != std::string::npos)
            request.replace(null, 4, "{}");
        EXPECT_EQ(device.edit(request).status, row.status) << request;
        EXPECT_EQ(device.channels(), before);
    }
}

TEST(edit, replaces_all_channels_at_once) {
    device_road device(bare_device(5, true));
    ASSERT_TRUE(device.edit(given).is_done());
    EXPECT_TRUE(device
                    .edit(R"({"openconfig-terminal-device:terminal-device":{"logical-channels":{)" + op("replace") +
                          R"(,"channel":[{"index":6,"config":{"admin-state":"MAINT"}}]}}})")
                    .is_done());
    EXPECT_EQ(device.channels(), "channel(index=6 config(index=6 admin-state=MAINT))");
}

// The commands.

std::string bytes_of(const std::string &name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string example(const std::string &name) {
    return std::string(EXAMPLES) + "/" + name;
}

std::string empty_device(const std::string &name = "device.json") {
    return scratch_file(name, R"({"router-type":5,"optical-terminal-device":true})");
}

TEST(commands, provision_and_read_back_what_was_asked_for) {
    const std::string device = empty_device("provisioned.json");
    const outcome done = run_host({"edit", "--device", device, "--save", example("provision-channels.json")});
    EXPECT_EQ(done.status, 0) << done.err;
    EXPECT_EQ(done.out, "{\"ietf-netconf:ok\": [null]}\n");
    const std::string all = R"({"openconfig-terminal-device:terminal-device": {}})";
    const outcome json = run_host({"get-config", "--device", device, scratch_file("all.json", all)});
    EXPECT_EQ(json.status, 0) << json.err;
    EXPECT_EQ(json.out, bytes_of(example("provision-channels.json")));

    // The XML form of the reply is the request of the XML example, and can be sent as an edit again.
    const outcome shown =
        run_host({"edit", "--device", empty_device(), "--show", "--format", "json", example("provision-channels.xml")});
    EXPECT_EQ(shown.out, json.out) << shown.err;
    const outcome xml = run_host({"get-config", "--device", device, "--format", "xml", scratch_file("all.json", all)});
    std::string again = xml.out;
    for (const std::string mark : {"<data ", "</data>"})
        again.replace(again.find(mark), mark.size(), mark[1] == '/' ? "</config>" : "<config ");
    const outcome sent =
        run_host({"edit", "--show", "--format", "json", "--device", empty_device(), scratch_file("again.xml", again)});
    EXPECT_EQ(sent.out, json.out) << sent.err;
}

TEST(commands, read_what_a_request_chooses) {
    const std::string device = scratch_file("device.json", R"({"router-type":5,
        "config":{"Corvane-terminal-device-cfg:logical-channels":{"channel":[
            {"channel-index":5,"description":"a<b \"c\"","rate-class":"trib-rate100g"},
            {"channel-index":6,"admin-state":"none of these"}]}}})");
    const std::string request = scratch_file(
        "request.xml", "<terminal-device xmlns=\"http://openconfig.net/yang/terminal-device\"><logical-channels>"
                       "<channel><index>5</index><config><rate-class/><description/></config></channel>"
                       "<channel><index>6</index></channel></logical-channels></terminal-device>");
    const outcome xml = run_host({"get-config", "--device", device, request});
    EXPECT_EQ(xml.status, 0);
    EXPECT_EQ(xml.out, "<data xmlns=\"urn:ietf:params:xml:ns:netconf:base:1.0\">\n"
                       "  <terminal-device xmlns=\"http://openconfig.net/yang/terminal-device\">\n"
                       "    <logical-channels>\n"
                       "      <channel>\n"
                       "        <index>5</index>\n"
                       "        <config>\n"
                       "          <description>a&lt;b &quot;c&quot;</description>\n"
                       "          <rate-class xmlns:openconfig-transport-types=\"http://openconfig.net/yang/"
                       "transport-types\">openconfig-transport-types:TRIB_RATE_100G</rate-class>\n"
                       "        </config>\n"
                       "      </channel>\n"
                       "      <channel>\n"
                       "        <index>6</index>\n"
                       "        <config>\n"
                       "          <index>6</index>\n"
                       "        </config>\n"
                       "      </channel>\n"
                       "    </logical-channels>\n"
                       "  </terminal-device>\n"
                       "</data>\n");
    EXPECT_EQ(xml.err, "ocmap: warning: no value of "
                       "/terminal-device/logical-channels/channel[index='6']/config/admin-state\n");
    const outcome json = run_host({"get-config", "--device", device, "--format", "json", request});
    EXPECT_EQ(json.out, R"({
  "openconfig-terminal-device:terminal-device": {
    "logical-channels": {
      "channel": [
        {
          "index": 5,
          "config": {
            "description": "a<b \"c\"",
            "rate-class": "openconfig-transport-types:TRIB_RATE_100G"
          }
        },
        {
          "index": 6,
          "config": {
            "index": 6
          }
        }
      ]
    }
  }
}
)");
}

TEST(commands, walk_native_trees_up) {
    const std::string json = scratch_file("native.json", R"({
        "Corvane-terminal-device-cfg:logical-channels":{"channel":[
            {"admin-state":"enable","loopback-mode":"terminal","channel-index":5,
             "ingress-physical-channel":[1,2],"otn":{"tti-msg-expected":null},"unheard-of":1}]},
        "Corvane-terminal-device-cfg:transceivers":{"transceiver":[{"ifname":"Optics0/0/0/1"}]}})");
    const std::string xml = scratch_file(
        "native.xml", "<data xmlns=\"urn:ietf:params:xml:ns:netconf:base:1.0\">"
                      "<logical-channels xmlns=\"urn:corvane:yang:Corvane-terminal-device-cfg\">"
                      "<channel><admin-state>enable</admin-state><loopback-mode>terminal</loopback-mode>"
                      "<channel-index>5</channel-index><ingress-physical-channel>1</ingress-physical-channel>"
                      "<ingress-physical-channel>2</ingress-physical-channel><otn><tti-msg-expected/></otn>"
                      "<unheard-of>1</unheard-of></channel></logical-channels></data>");
    const std::string head = "{\n  \"openconfig-terminal-device:terminal-device\": {\n    \"logical-channels\": {\n"
                             "      \"channel\": [\n        {\n          \"index\": 5",
                      tail = "\n        }\n      ]\n    }\n  }\n}\n";
    const std::string config = ",\n          \"config\": {\n            \"index\": 5,\n"
                               "            \"admin-state\": \"ENABLED\",\n"
                               "            \"loopback-mode\": \"TERMINAL\"\n          }";
    const std::string state = ",\n          \"state\": {\n            \"index\": 5,\n"
                              "            \"admin-state\": \"ENABLED\"\n          }";
    const auto ingress = [](const std::string &sides) {
        return ",\n          \"ingress\": {" + sides + "\n          }";
    };
    const auto side = [](const std::string &name) {
        return "\n            \"" + name +
               "\": {\n              \"physical-channel\": [\n                1,\n"
               "                2\n              ]\n            }";
    };
    struct {
        std::vector<std::string> more;
        std::string out;
        size_t warnings;
    } const rows[] = {
        {{}, head + config + state + ingress(side("config") + "," + side("state")) + tail, 2},
        {{"--op", "get-config"}, head + config + ingress(side("config")) + tail, 1},
        {{"--gate", "shut"}, head + state + ingress(side("state")) + tail, 1},
        {{"--op", "get-config", "--gate", "shut"}, head + tail, 0},
    };
    for (const auto &row : rows) {
        for (const std::string &native : {json, xml}) {
            std::vector<std::string> arguments{"up", "--format", "json", native};
            arguments.insert(arguments.end(), row.more.begin(), row.more.end());
            const outcome result = run_host(arguments);
            EXPECT_EQ(result.status, 0);
            EXPECT_EQ(result.out, row.out);
            EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), row.warnings) << result.err;
        }
    }
}

TEST(commands, log_the_calls_of_both_ways) {
    const std::string device = scratch_file("device.json", R"({"router-type":5,
        "config":{"Corvane-terminal-device-cfg:logical-channels":{"channel":[{"channel-index":5}]}}})");
    const std::string request = scratch_file("request", channel_request(R"({"index":5,"config":{"index":5}})"));
    const outcome result = run_host({"get-config", "--calls", "--device", device, request});
    const size_t down = result.out.find("add /logical-channels/channel/channel-index ns=Corvane-terminal-device-cfg "
                                        "value=\"5\"\n"),
                 up = result.out.find("add /terminal-device/logical-channels/channel/config/index"),
                 reply = result.out.find("\n\n{\n");
    EXPECT_LT(down, up);
    EXPECT_LT(up, reply);
    EXPECT_NE(reply, std::string::npos) << result.out;
}

TEST(commands, tell_why_an_edit_was_refused) {
    struct {
        std::string entry, message;
    } const rows[] = {
        {R"({"index":5,"config":{"admin-state":"UP"}})",
         "ocmap: the device refuses the edit\n  error-tag:  invalid-value\n"
         "  error-path: /logical-channels/channel[channel-index='5']/admin-state\n  leaf:       admin-state\n"
         "  message:    there is no value for admin-state\n"},
        {"{" + op("delete") + R"(,"index":5})",
         "ocmap: the device refuses the edit\n  error-tag:  data-missing\n"
         "  error-path: /logical-channels/channel[channel-index='5']\n  leaf:       channel\n"
         "  message:    there is no channel to delete\n"},
        {R"({"index":0})", "ocmap: RC_VALUE_OUT_OF_RANGE\n  error-tag:  invalid-value\n"
                           "  error-path: /terminal-device/logical-channels/channel[index='0']/index\n"
                           "  message:    Logical channel index is not within the allowed range: 1 - 100000\n"},
    };
    for (const auto &row : rows) {
        const std::string device = empty_device(), held = bytes_of(device);
        const outcome result =
            run_host({"edit", "--device", device, "--save", scratch_file("request", channel_request(row.entry))});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, row.message);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(bytes_of(device), held);
    }
}

TEST(commands, create_what_is_not_there_yet) {
    const std::string device = scratch_file("device.json", R"({"router-type":5,"optical-terminal-device":true,
        "config":{"Corvane-terminal-device-cfg:logical-channels":{"channel":[
            {"channel-index":5,"description":"east","ingress-physical-channel":[1]}]}}})");
    struct {
        std::string entry, path; // of what is there already; empty: done
    } const rows[] = {
        {"{" + op("create") + R"(,"index":6,"config":{"description":"west"}})", ""},
        {"{" + op("create") + R"(,"index":5})", "channel[index='5']"},
        {"{" + op("create") + R"(,"index":"+05"})", "channel[index='5']"},
        {R"({"index":5,"config":{)" + op("create") + R"(,"admin-state":"MAINT"}})", "channel[index='5']/config"},
        {R"({"index":5,"otn":{)" + op("create") + R"(,"config":{"tti-msg-expected":"x"}}})", ""},
        {R"({"index":5,"config":{"description":"x",)" + op("create", "description") + "}}",
         "channel[index='5']/config/description"},
        {R"({"index":5,"config":{"admin-state":"MAINT",)" + op("create", "admin-state") + "}}", ""},
        {R"({"index":5,"ingress":{"config":{"physical-channel":[2],)"
         R"("@physical-channel":[{"ietf-netconf:operation":"create"}]}}})",
         ""},
        {R"({"index":5,"ingress":{"config":{"physical-channel":[2,1],)"
         R"("@physical-channel":[null,{"ietf-netconf:operation":"create"}]}}})",
         "channel[index='5']/ingress/config/physical-channel"},
        {R"({"index":5,"ingress":{"config":{"physical-channel":["01"],)"
         R"("@physical-channel":[{"ietf-netconf:operation":"create"}]}}})",
         "channel[index='5']/ingress/config/physical-channel"},
        {R"({"index":5,"logical-channel-assignments":{"assignment":[{)" + op("create") + R"(,"index":1}]}})", ""},
    };
    for (const auto &row : rows) {
        const outcome result =
            run_host({"edit", "--device", device, scratch_file("request", channel_request(row.entry))});
        EXPECT_EQ(result.status, row.path.empty() ? 0 : 1) << row.entry << result.err;
        if (!row.path.empty()) {
            EXPECT_NE(result.err.find("  error-tag:  data-exists\n  error-path: /terminal-device/logical-channels/" +
                                      row.path + "\n"),
                      std::string::npos)
                << result.err;
        }
    }
}

TEST(commands, leave_the_device_alone_in_a_dry_run) {
    const std::string device = empty_device(), held = bytes_of(device);
    const std::string request = scratch_file(
        "request", channel_request(R"({"index":5,"ingress":{"config":{"physical-channel":[1,2],)"
                                   R"("@physical-channel":[null,{"ietf-netconf:operation":"delete"}]}}})"));
    const outcome result = run_host({"edit", "--device", device, "--dry-run", request});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, R"({
  "Corvane-terminal-device-cfg:logical-channels": {
    "channel": [
      {
        "channel-index": "5",
        "ingress-physical-channel": [
          "1",
          "2"
        ],
        "@ingress-physical-channel": [
          null,
          {"ietf-netconf:operation": "delete"}
        ]
      }
    ]
  }
}
)");
    EXPECT_EQ(bytes_of(device), held);
}

TEST(commands, refuse_what_they_cannot_use) {
    const std::string request = scratch_file("request", channel_request(R"({"index":5})"));
    const std::string damaged = scratch_file("damaged.json", R"({"router-type":5,"config":{"no-such-module:x":{}}})");
    struct {
        std::vector<std::string> arguments;
        int status;
        std::string message;
    } const rows[] = {
        {{"edit", "--save", request}, 64, "--device"},
        {{"edit", "--device", damaged, "--dry-run", "--save", request}, 64, "--dry-run"},
        {{"edit", "--device", damaged, request}, 2, damaged + ":1:"},
        {{"get-config", "--device", damaged, request}, 2, damaged + ":1:"},
        {{"up", request}, 2, "no root of the plug-in takes top node \"terminal-device\""},
        {{"up",
          scratch_file("keyless.json", R"({"Corvane-terminal-device-cfg:logical-channels":{"channel":[{"a":1}]}})")},
         1,
         "an entry without its key"},
        {{"up", "--gate", "ajar", request}, 64, "ajar"},
        {{"up", "--op", "edit", request}, 64, "edit"},
        {{"up", scratch_file("nowhere.xml", "<otu/>")}, 2, "takes top node \"otu\" without a namespace"},
        {{"up", scratch_file("edit.json", R"({"Corvane-controller-otu-oper:otu":{"@":{}}})")},
         2,
         "edit.json:1:37: an operation in native data"},
        {{"up", scratch_file("module.json", R"({"no-such-module:x":{}})")}, 2, "module.json:1:2: "},
        {{"edit", "--device", "/nowhere/device.json", "--save", request}, 2, "/nowhere/device.json"},
    };
    for (const auto &row : rows) {
        const outcome result = run_host(row.arguments);
        EXPECT_EQ(result.status, row.status) << result.err;
        EXPECT_NE(result.err.find(row.message), std::string::npos) << result.err;
        EXPECT_EQ(result.out, "");
    }
}

} // namespace
