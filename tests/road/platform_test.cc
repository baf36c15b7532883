// Components and interfaces in requests of several top nodes, and of what no model here knows. A case more: a row.
// Quotes are written as ' in requests.
#include <string>

#include <gtest/gtest.h>

#include "device_road.h"
#include "host.h"
#include "request.h"
#include "written_json.h"
#include "zmf/plugin.h"
#include "zmf/session.h"

namespace {

using road::outcome;
using road::run_host;
using road::scratch_file;

constexpr uint32_t cfg = OP_GET_CONFIG, get = OP_GET, edit = OP_EDIT;

// The three trees, each with something in it or nothing.
std::string channels(const std::string &entries) {
    return "'openconfig-terminal-device:terminal-device':{" +
           (entries.empty() ? "" : "'logical-channels':{'channel':[" + entries + "]}") + "}";
}
std::string components(const std::string &entries) {
    return "'openconfig-platform:components':{" + (entries.empty() ? "" : "'component':[" + entries + "]") + "}";
}
std::string interfaces(const std::string &entries) {
    return "'openconfig-interfaces:interfaces':{" + (entries.empty() ? "" : "'interface':[" + entries + "]") + "}";
}
std::string interface(const std::string &children) {
    return interfaces("{'name':'e1'" + (children.empty() ? "" : "," + children) + "}");
}
std::string request(const std::vector<std::string> &tops) {
    std::string text;
    for (const std::string &top : tops)
        text += (text.empty() ? "{" : ",") + top;
    return json_of(text + "}");
}

struct walked {
    rcode status = RC_OK;
    std::string path, message;
    std::string added; // paths, one a line
};

walked walk(uint32_t kind, const std::string &text) {
    static const zmf::plugin plugin(OCOPTICAL_PLUGIN);
    device::install(road::bare_device(18, true));
    const zmf::fixed_tree tree = ocmap::read_request(text, ocmap::format::json, kind == get || kind == cfg);
    zmf::session session(kind);
    zmf::output_tree native;
    walked result;
    session.record([&](const zmf::call &c) {
        if (c.op == zmf::operation::add_path && c.path[0] == '/')
            result.added += std::string(c.path) + "\n";
    });
    result.status = plugin.down(session, tree, native);
    if (result.status != RC_OK) {
        const zmf::failure failure = session.describe(result.status);
        result.path = failure.path;
        result.message = failure.message;
    }
    EXPECT_EQ(session.hierarchy_depth() + session.stack_size() + session.imbalances(), 0u) << text;
    return result;
}

#define ENTRY "/interfaces/interface[name='e1']"
#define TRANSCEIVER "openconfig-platform-transceiver:"

TEST(interface, is_walked_as_far_as_models_are_here) {
    const struct {
        uint32_t kind;
        std::string request; // its top nodes
        rcode status = RC_OK;
        std::string path{}, message{};
    } rows[] = {
        {get, interfaces("")},
        {get, interfaces("{}")},
        {cfg, interfaces("{'name':'e1'}")},
        {get, interface("'openconfig-if-ethernet:ethernet':{}")},
        {get, interface("'openconfig-if-ethernet:ethernet':{'state':{'counters':{'in-crc-errors':null}}}"),
         RC_UNSUPPORTED_NODE, ENTRY "/ethernet/state/counters/in-crc-errors", "in-crc-errors"},
        {cfg, interface("'openconfig-if-ethernet:ethernet':{'state':{'counters':{'in-crc-errors':null}}}")},
        {edit,
         interface("'openconfig-if-ethernet:ethernet':{'config':{'port-speed':'openconfig-if-ethernet:SPEED_10GB'"
                   "}}"),
         RC_UNSUPPORTED_NODE, ENTRY "/ethernet/config/port-speed", "port-speed"},

        {get, interface("'state':{}")},
        {get, interface("'state':{'mtu':null}")},
        {get, interface("'state':{'mtu':null,'" TRANSCEIVER "transceiver':null}"), RC_UNSUPPORTED_NODE,
         ENTRY "/state/transceiver", "transceiver"},
        {get, interface("'state':{'" TRANSCEIVER "physical-channel':null}"), RC_UNSUPPORTED_NODE,
         ENTRY "/state/physical-channel", "physical-channel"},
        {cfg, interface("'state':{'" TRANSCEIVER "transceiver':null}")},
        {edit, interface("'state':{'" TRANSCEIVER "transceiver':'t'}"), RC_UNSUPPORTED_NODE, ENTRY "/state/transceiver",
         "transceiver"},
        {edit, interface("'state':{'mtu':1}"), RC_UNSUPPORTED_NODE, ENTRY "/state/mtu", "mtu"},
        {edit, interface("'state':{}"), RC_UNSUPPORTED_NODE, ENTRY "/state", "state"},

        {get, interface("'config':{'mtu':null},'subinterfaces':{}")},
        {edit, interface("'config':{'mtu':1}"), RC_UNSUPPORTED_NODE, ENTRY "/config", "config"},
        {edit, interface("'openconfig-platform:port':{}"), RC_UNSUPPORTED_NODE, ENTRY "/port", "port"},
        {edit, interface("")},
        {edit, interface("'@':{'ietf-netconf:operation':'remove'}"), RC_UNSUPPORTED_NODE, ENTRY, "interface"},
        {edit, interfaces("{'config':{'name':'e1'}}"), RC_LIST_KEY_ERROR, "/interfaces/interface", "name"},
        {edit, interfaces("{}"), RC_SUBTREE_ERROR, "/interfaces/interface", ""},
        {get, json_of("'openconfig-interfaces:interfaces':{'vlan':{}}")},
        {edit, json_of("'openconfig-interfaces:interfaces':{'vlan':{}}"), RC_UNSUPPORTED_NODE, "/interfaces/vlan",
         "vlan"},
    };
    for (const auto &row : rows) {
        const walked result = walk(row.kind, request({row.request}));
        EXPECT_EQ(zmf::status_name(result.status), zmf::status_name(row.status)) << row.kind << " " << row.request;
        EXPECT_EQ(result.path, row.path) << row.request;
        EXPECT_EQ(result.message, row.message) << row.request;
        EXPECT_EQ(result.added, "") << row.request;
    }
}

const std::string channel_5 = "{'index':5,'config':{'description':'x'}}";
const std::string optical = "{'name':'0/1-OpticalChannel0/1/0/2','openconfig-terminal-device:optical-channel':{"
                            "'config':{'frequency':'193100000'}}}";
const std::string unmapped =
    "{'name':'Rack 0','fan':{'config':{}},'" TRANSCEIVER "transceiver':{'physical-channels':{}}}";
const std::string refused = "{'name':'Rack 0','state':{'location':null}}";

// In requests of several top nodes each adds what it adds alone, whatever stands before it; what is refused ends it.
TEST(several_top_nodes, add_what_each_adds_and_are_refused_together) {
    const struct {
        uint32_t kind;
        std::vector<std::string> tops;
        rcode status = RC_OK;
        std::string path{};
    } rows[] = {
        {edit, {channels(channel_5), components(optical), interface("")}},
        {edit, {interface(""), components(unmapped + "," + optical), channels(channel_5)}},
        {get, {components(unmapped), interface("'state':{}"), channels("{'index':5}")}},
        {cfg, {interfaces(""), channels(""), components("")}},
        {edit,
         {channels(channel_5), interface("'openconfig-if-ethernet:ethernet':{'config':{'mac-address':'0'}}")},
         RC_UNSUPPORTED_NODE,
         ENTRY "/ethernet/config/mac-address"},
        {get,
         {components(optical + "," + refused), channels("")},
         RC_UNSUPPORTED_NODE,
         "/components/component[name='Rack 0']/state/location"},
    };
    for (const auto &row : rows) {
        std::string each;
        for (const std::string &top : row.tops)
            each += walk(row.kind, request({top})).added;
        const walked together = walk(row.kind, request(row.tops));
        EXPECT_EQ(zmf::status_name(together.status), zmf::status_name(row.status)) << row.tops[0];
        EXPECT_EQ(together.path, row.path);
        if (row.status == RC_OK) {
            EXPECT_EQ(together.added, each) << row.tops[0];
        }
    }
}

// The optical channel of a component is asked for once, not again by the walk of the rest.
TEST(component, has_its_other_children_walked_beside_the_optical_channel) {
    const std::string alone = walk(get, request({components("{'name':'0/1-OpticalChannel0/1/0/2'}")})).added;
    EXPECT_NE(alone, "");
    const char *const others[] = {"'config':{}",
                                  "'state':{'memory':{}}",
                                  "'openconfig-platform-transceiver:transceiver':{}",
                                  "'config':{'name':'0/1-OpticalChannel0/1/0/2'}",
                                  "'strange':{}",
                                  "'state':{'x':null}"};
    for (const std::string more : others)
        EXPECT_EQ(walk(get, request({components("{'name':'0/1-OpticalChannel0/1/0/2'," + more + "}")})).added, alone)
            << more;
}

TEST(commands, take_all_trees_in_one_request) {
    const std::string good = request(
        {channels("{'index':300,'config':{'index':300,'description':'z'}}"), components(unmapped), interface("")});
    const outcome shown = run_host({"edit", "--show", scratch_file("edit.json", good)});
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_NE(shown.out.find("\"description\": \"z\""), std::string::npos) << shown.out;
    EXPECT_EQ(shown.out.find("interfaces"), std::string::npos) << shown.out;

    const std::string strange = "{'strange':{},'openconfig-if-ethernet:other':{}}";
    const outcome read =
        run_host({"get", scratch_file("read.json",
                                      request({components(strange), channels("{'index':300,'config':{'index':null}}"),
                                               interfaces(strange)}))});
    EXPECT_EQ(read.status, 0) << read.err;
    EXPECT_EQ(read.out.find("strange"), std::string::npos) << read.out;
    EXPECT_EQ(read.out.find("interfaces"), std::string::npos) << read.out;

    const std::string refused_last =
        request({channels("{'index':300,'config':{'description':'y'}}"),
                 interface("'openconfig-if-ethernet:ethernet':{'config':{'duplex-mode':'FULL'}}")});
    for (const char *command : {"edit", "down"}) {
        std::vector<std::string> words{command, scratch_file("edit.json", refused_last)};
        if (words[0] == "down")
            words.insert(words.end(), {"--op", "edit-full"});
        const outcome result = run_host(words);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "ocmap: RC_UNSUPPORTED_NODE\n"
                              "  error-tag:  operation-not-supported\n"
                              "  error-path: " ENTRY "/ethernet/config/duplex-mode\n"
                              "  message:    duplex-mode\n");
    }
}

} // namespace
