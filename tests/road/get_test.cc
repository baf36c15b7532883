// Reads of operational data, end to end: what comes of each carrier's state, what a client sees of it, and what becomes
// of native data that no conversion takes. Most reads are of the lab device (examples/lab.json). A read more: a row.
#include <algorithm>
#include <cstring>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "device_road.h"
#include "host.h"
#include "narrow.h"
#include "request.h"
#include "written_json.h"

namespace {

using road::device_road;
using road::outcome;
using road::run_host;
using road::scratch_file;
using zmf::output_node;

// Quotes are written as ' in these tests.
std::string channels(const std::string &entries) {
    return json_of("{'openconfig-terminal-device:terminal-device':{'logical-channels':{'channel':[" + entries + "]}}}");
}

std::string component(const std::string &entry) {
    return json_of("{'openconfig-platform:components':{'component':[" + entry + "]}}");
}

constexpr char line_component[] = "'name':'0/0-OpticalChannel0/0/0/13'";

std::string line(const std::string &below_optical_channel) {
    return component("{" + std::string(line_component) + ",'openconfig-terminal-device:optical-channel':{" +
                     below_optical_channel + "}}");
}

constexpr char whole_device[] = "{'openconfig-terminal-device:terminal-device':{}}";
constexpr char whole_components[] = "{'openconfig-platform:components':{}}";

std::string in_channels(const std::string &shown) {
    return "terminal-device(logical-channels(" + shown + "))";
}

std::string in_line(const std::string &shown) {
    return "components(component(name=0/0-OpticalChannel0/0/0/13 optical-channel(" + shown + ")))";
}

// A text of the lab device's file put in the place of another, each time that it stands there.
device::description lab_with(const std::vector<std::pair<std::string, std::string>> &changes) {
    std::string json = device::to_json(device::lab());
    for (const auto &[before, after] : changes) {
        const std::string old = json_of(before), made = json_of(after);
        size_t at = json.find(old);
        EXPECT_NE(at, std::string::npos) << before;
        for (; at != std::string::npos; at = json.find(old, at + made.size()))
            json.replace(at, old.size(), made);
    }
    return device::parse(json, "changed lab.json");
}

const std::string three_states = "'state':{'admin-state':null,'loopback-mode':null,'link-state':null}";

std::string channel_with_states(int index, const std::string &states) {
    return "channel(index=" + std::to_string(index) + " state(" + states + "))";
}

TEST(get, tells_the_state_of_each_carrier) {
    const std::string coherent = channel_with_states(301, "admin-state=MAINT loopback-mode=NONE link-state=UP");
    const std::string odu = channel_with_states(201, "admin-state=ENABLED loopback-mode=NONE link-state=UP");
    const std::string ethernet = channel_with_states(102, "loopback-mode=TERMINAL link-state=UP");
    const struct {
        std::string request, shown;
    } rows[] = {
        {channels("{'index':301," + three_states + "}"), in_channels(coherent)},
        {channels("{'index':300," + three_states + "}"),
         in_channels(channel_with_states(300, "admin-state=ENABLED loopback-mode=FACILITY link-state=DOWN"))},
        // In maintenance, too, but not enabled.
        {channels("{'index':310," + three_states + "}"),
         in_channels(channel_with_states(310, "admin-state=DISABLED loopback-mode=TERMINAL link-state=DOWN"))},
        {channels("{'index':201," + three_states + "}"), in_channels(odu)},
        {channels("{'index':102," + three_states + "}"), in_channels(ethernet)},
        {channels("{'index':201," + three_states + "},{'index':102," + three_states + "},{'index':301," + three_states +
                  "}"),
         in_channels(coherent + " " + odu + " " + ethernet)},
        // Nobody reports anything of the second.
        {channels("{'index':102," + three_states + "},{'index':103," + three_states + "}"), in_channels(ethernet)},
        {channels("{'state':{'link-state':null}}"),
         in_channels(channel_with_states(300, "link-state=DOWN") + " " + channel_with_states(301, "link-state=UP") +
                     " " + channel_with_states(310, "link-state=DOWN") + " " +
                     channel_with_states(200, "link-state=DOWN") + " " + channel_with_states(201, "link-state=UP") +
                     " " + channel_with_states(100, "link-state=DOWN") + " " +
                     channel_with_states(101, "link-state=UP") + " " + channel_with_states(102, "link-state=UP"))},
        // The value goes down with the request, and tests what comes up.
        {channels("{'index':301,'state':{'admin-state':'MAINT','link-state':null}}"),
         in_channels(channel_with_states(301, "admin-state=MAINT link-state=UP"))},
        {channels("{'index':201,'state':{'admin-state':'MAINT','link-state':null}}"),
         in_channels("channel(index=201)")},
        {channels("{'index':101,'ethernet':{'state':{'client-als':null,'als-delay':null}}}"),
         in_channels("channel(index=101 ethernet(state(client-als=LASER_SHUTDOWN als-delay=100)))")},
        {channels("{'index':301,'otn':{'state':{'tti-msg-recv':null}}}"),
         in_channels("channel(index=301 otn(state(tti-msg-recv=east-13)))")},
        {json_of("{'openconfig-terminal-device:terminal-device':{'operational-modes':{'mode':[{'mode-id':5003},"
                 "{'mode-id':5017}]}}}"),
         "terminal-device(operational-modes(mode(mode-id=5003 state(mode-id=5003 description=100G, 25 percent overhead "
         "vendor-id=Corvane)) mode(mode-id=5017 state(mode-id=5017))))"},
        {line("'state':{'frequency':null,'target-output-power':null,'line-port':null}"),
         in_line("state(frequency=193100000 target-output-power=-1.52 line-port=0/0-Optics0/0/0/13)")},
        {line("'Corvane-openconfig-terminal-device-ext:extended':{'thresholds':{},'state':{}}"),
         in_line("extended(state(optics-cd-max=70000 optics-cd-min=-70000 optics-cd-low-threshold=-160000 "
                 "optics-cd-high-threshold=160000 filter-roll-off-factor=0.200 rx-voa-target-power=-50 "
                 "rx-voa-fixed-ratio=1500 enh-colorless-mode=1 enh-sop-tol-mode=2 nleq-compensation=0 "
                 "cross-pol-gain-mode=5 cross-pol-weight-mode=3 cpr-win-mode=4 cpr-ext-win-mode=7 baud-rate=31.57) "
                 "thresholds(state(input-signal-power-lower=-23.00 input-signal-power-upper=3.00)))")},
        // Two powers: what is configured, in hundredths below, and what is measured, with a point.
        {line("'config':{'target-output-power':'-1.5','frequency':null},"
              "'state':{'target-output-power':'-1.52','frequency':null}"),
         in_line("config(frequency=193100000 target-output-power=-1.50) "
                 "state(frequency=193100000 target-output-power=-1.52)")},
        {line("'config':{'target-output-power':'-1.52','frequency':null},'state':{'line-port':null}"),
         in_line("state(line-port=0/0-Optics0/0/0/13)")},
        // A grey port of a device with an optical terminal has no power; one that the registry does not know is none.
        {component("{'name':'0/0-OpticalChannel0/0/0/2','openconfig-terminal-device:optical-channel':{'state':"
                   "{'target-output-power':null}}}"),
         "components(component(name=0/0-OpticalChannel0/0/0/2))"},
        {component("{'name':'0/0-OpticalChannel0/0/0/14'}"), ""},
    };
    device_road device(device::lab());
    for (const auto &row : rows) {
        EXPECT_EQ(device.seen(row.request, OP_GET), row.shown) << row.request;
        EXPECT_TRUE(device.leaves_without_value().empty()) << row.request;
    }
}

TEST(get, goes_by_what_the_device_can_do) {
    const std::string no_terminal = "'optical-terminal-device': true", terminal = "'optical-terminal-device': false";
    const std::string odu_state = channels("{'index':201,'state':{'loopback-mode':null}}");
    const std::string all_modes = channels("{'state':{'loopback-mode':null}}");
    const auto power_of = [](const std::string &name) {
        return component("{'name':'" + name +
                         "','openconfig-terminal-device:optical-channel':{'state':{'target-output-power':null}}}");
    };
    device_road without(lab_with({{no_terminal, terminal}}));
    EXPECT_THROW(without.seen(odu_state, OP_GET), std::runtime_error);
    EXPECT_EQ(without.seen(all_modes, OP_GET).find("index=201"), std::string::npos);
    // Each lane of the grey port has a power; the first one's stays.
    EXPECT_EQ(without.seen(power_of("0/0-OpticalChannel0/0/0/2"), OP_GET),
              "components(component(name=0/0-OpticalChannel0/0/0/2 optical-channel(state(target-output-power=0.52))))");

    // A line port of these routers is one that a component stands for, and no controller is.
    device_road other(lab_with({{"'router-type': 5", "'router-type': 18"}}));
    EXPECT_EQ(
        other.seen(power_of("0/0-OpticalChannel0/0/0/13"), OP_GET),
        "components(component(name=0/0-OpticalChannel0/0/0/13 optical-channel(state(target-output-power=-1.52))))");
    EXPECT_EQ(other.seen(power_of("0/0-OpticalChannel0/0/0/12"), OP_GET), "");

    // Without the state store no channel is known to be in maintenance.
    device_road storeless(lab_with({{"'state-store-installed': true", "'state-store-installed': false"}}));
    EXPECT_EQ(storeless.seen(channels("{'index':301,'state':{'admin-state':null}}"), OP_GET),
              in_channels(channel_with_states(301, "admin-state=ENABLED")));
}

TEST(get, of_configuration_asks_for_no_state) {
    device_road device(device::lab());
    const std::string request = channels("{'index':301,'state':{'description':null,'link-state':null}}");
    EXPECT_EQ(device.seen(request, OP_GET), in_channels("channel(index=301 state(description=line of ring 7 "
                                                        "link-state=UP))"));
    EXPECT_EQ(device.seen(request, OP_GET_CONFIG), in_channels("channel(index=301)"));
    EXPECT_EQ(device.seen(line("'state':{}"), OP_GET_CONFIG),
              "components(component(" + std::string("name=0/0-OpticalChannel0/0/0/13))"));
}

// Subtree filtering as RFC 6241 tells it in section 6.2, node by node: what a filter selects of a tree is marked. As
// the host promises beside it, entries come with their keys, and nothing is told of entries without keys, of leaves
// without value, or of containers with nothing in them.
class subtree_filter {
public:
    explicit subtree_filter(const zmf::fixed_tree &filter) {
        for (uint32_t i = 0; i < filter.count(); ++i)
            tops_.push_back(&filter.tops()[i]);
    }

    std::set<uint32_t> select(output_node root) {
        selected_.clear();
        for (const zmf_datatree *top : tops_)
            for_named(root, *top, [&](output_node node) { apply(node, *top); });
        return selected_;
    }

private:
    static const char *ns_of(output_node node) {
        return node.schema_node() != nullptr ? node.schema_node()->ns : node.ns();
    }

    template <typename action>
    static void for_children(output_node node, action run) {
        for (output_node child = node.first_child(); child; child = child.next_sibling())
            run(child);
    }

    template <typename action>
    static void for_named(output_node parent, const zmf_datatree &wanted, action run) {
        for_children(parent, [&](output_node child) {
            if (std::strcmp(child.tag(), wanted.tag) == 0 && std::strcmp(ns_of(child), wanted.ns) == 0)
                run(child);
        });
    }

    static bool is_content_match(const zmf_datatree &filter) { return filter.has_value && filter.value != nullptr; }

    static bool holds(output_node leaf, const zmf_datatree &test) {
        return leaf.value() != nullptr && std::strcmp(leaf.value(), test.value) == 0;
    }

    static bool lacks_key(output_node node) {
        const schema::node *row = node.schema_node();
        if (row == nullptr || row->what != schema::kind::list)
            return false;
        bool is_found = true;
        for (const schema::node *key = row + 1; key->is_key && key->parent == row; ++key) {
            bool has_it = false;
            for_children(node, [&](output_node child) { has_it |= child.schema_node() == key && child.value(); });
            is_found &= has_it;
        }
        return !is_found;
    }

    bool whole(output_node node) {
        if (lacks_key(node))
            return false;
        bool is_any = node.value() != nullptr;
        for_children(node, [&](output_node child) { is_any |= whole(child); });
        if (is_any)
            selected_.insert(node.number());
        return is_any;
    }

    // What one filter node selects of a node of its name.
    bool apply(output_node node, const zmf_datatree &filter) {
        if (!filter.has_children)
            return whole(node);
        if (lacks_key(node) || !passes(node, filter))
            return false;
        bool is_any = false, has_tests_only = true;
        for (uint32_t i = 0; i < filter.child_count; ++i) {
            const zmf_datatree &each = filter.children[i];
            has_tests_only &= is_content_match(each);
            for_named(node, each, [&](output_node child) {
                is_any |= is_content_match(each) ? holds(child, each) && whole(child) : apply(child, each);
            });
        }
        if (has_tests_only)
            return whole(node);
        if (is_any) {
            selected_.insert(node.number());
            for_children(node, [&](output_node child) {
                if (child.is_key())
                    selected_.insert(child.number());
            });
        }
        return is_any;
    }

    static bool passes(output_node node, const zmf_datatree &filter) {
        for (uint32_t i = 0; i < filter.child_count; ++i) {
            const zmf_datatree &test = filter.children[i];
            if (!is_content_match(test))
                continue;
            bool is_met = false;
            for_named(node, test, [&](output_node child) { is_met |= holds(child, test); });
            if (!is_met)
                return false;
        }
        return true;
    }

    std::vector<const zmf_datatree *> tops_;
    std::set<uint32_t> selected_;
};

std::string path_of(output_node node) {
    std::string path;
    for (; node.tag() != nullptr; node = node.parent())
        path.insert(0, std::string("/") + node.tag() + (node.value() ? std::string("=") + node.value() : ""));
    return path;
}

size_t expect_same(output_node node, const ocmap::selection &told, const std::set<uint32_t> &selected) {
    size_t count = 0;
    for (output_node child = node.first_child(); child; child = child.next_sibling()) {
        EXPECT_EQ(told.holds(child), selected.contains(child.number())) << path_of(child);
        count += told.holds(child) + expect_same(child, told, selected);
    }
    return count;
}

struct filter_row {
    std::string request;
    bool is_of_whole; // all that a read of everything has of it comes
};

const std::vector<filter_row> &filter_rows() {
    static const std::vector<filter_row> rows{
        {json_of(whole_device), true},
        {json_of(whole_components), true},
        {json_of("{'openconfig-platform:components':{},'openconfig-terminal-device:terminal-device':"
                 "{'operational-modes':{}}}"),
         false},
        {json_of("{'openconfig-terminal-device:terminal-device':{'logical-channels':{}}}"), true},
        {channels("{}"), true},
        {channels("{'index':301}"), true},
        {channels("{'index':101},{'index':201},{'index':7}"), true},
        {channels("{'index':300,'state':{}}"), true},
        // What a channel is configured to shows in its state, but not where the state alone is asked for.
        {channels("{'index':null}"), false},
        {channels("{'state':{}}"), false},
        {channels("{'state':{'link-state':'UP'}}"), false},
        {channels("{'state':{'link-state':'UP','loopback-mode':null}}"), true},
        {channels("{'state':{'link-state':'UP','admin-state':'MAINT'}}"), false},
        {channels("{'index':301,'state':{'link-state':null},'config':{}},{'state':{'loopback-mode':null}}"), true},
        {channels("{'index':301,'logical-channel-assignments':{'assignment':[{'index':1,'state':{}}]},'otn':{}}"),
         true},
        {channels("{'index':301,'openconfig-platform:state':{}}"), false},
        {json_of("{'openconfig-terminal-device:terminal-device':{'operational-modes':{'mode':[{'state':"
                 "{'vendor-id':'Corvane','description':null}},{'mode-id':5017}]}}}"),
         true},
        {component("{" + std::string(line_component) + "}"), true},
        {component("{'name':null}"), false},
        {component("{'openconfig-terminal-device:optical-channel':{'state':{'frequency':'193100000'}}}"), false},
        {line("'state':{}"), true},
        {line("'config':{},'Corvane-openconfig-terminal-device-ext:extended':{'thresholds':{}}"), true},
        {line("'Corvane-openconfig-terminal-device-ext:extended':{'state':{'baud-rate':null}}"), true},
    };
    return rows;
}

zmf::fixed_tree read_filter(const std::string &request) {
    return ocmap::read_request(request, ocmap::format::json, true);
}

// No more than was asked for, and no less.
TEST(get, tells_what_an_independent_filter_selects) {
    device_road device(device::lab());
    size_t told_nodes = 0;
    for (const filter_row &row : filter_rows()) {
        SCOPED_TRACE(row.request);
        const zmf::fixed_tree request = read_filter(row.request), untouched = read_filter(row.request);
        const ocmap::client_filter asked(request);
        zmf::output_tree reply;
        device.read(OP_GET, request, reply);
        const auto told = narrowed(reply, asked, [](output_node leaf) { ADD_FAILURE() << path_of(leaf); });
        told_nodes += expect_same(reply.top(), told, subtree_filter(untouched).select(reply.top()));
    }
    EXPECT_GT(told_nodes, 1000u);
}

// Nothing is missing because it was asked for more narrowly.
TEST(get, tells_of_a_part_what_it_tells_of_the_whole) {
    device_road device(device::lab());
    zmf::output_tree whole_reply;
    device.read(OP_GET,
                read_filter(json_of("{'openconfig-platform:components':{},'openconfig-terminal-device:terminal-device':"
                                    "{}}")),
                whole_reply);
    for (const filter_row &row : filter_rows()) {
        if (!row.is_of_whole)
            continue;
        SCOPED_TRACE(row.request);
        const zmf::fixed_tree request = read_filter(row.request), untouched = read_filter(row.request);
        const ocmap::client_filter asked(request);
        zmf::output_tree reply;
        device.read(OP_GET, request, reply);
        const auto paths = [&](output_node root) {
            std::multiset<std::string> found;
            const std::set<uint32_t> selected = subtree_filter(untouched).select(root);
            const auto gather = [&](auto &self, output_node node) -> void {
                for (output_node child = node.first_child(); child; child = child.next_sibling()) {
                    if (selected.contains(child.number()))
                        found.insert(path_of(child));
                    self(self, child);
                }
            };
            gather(gather, root);
            return found;
        };
        const std::multiset<std::string> of_part = paths(reply.top()), of_whole = paths(whole_reply.top());
        std::vector<std::string> lost;
        std::ranges::set_difference(of_whole, of_part, std::back_inserter(lost));
        EXPECT_EQ(lost, std::vector<std::string>());
        EXPECT_FALSE(of_whole.empty());
    }
}

struct odd_row {
    const char *what;
    std::string before, after; // in the device's file
    std::string request;
    std::string shown;                // a client sees
    std::vector<std::string> missing; // leaves
};

TEST(get, warns_of_values_that_no_conversion_takes) {
    const std::string down = "'state': 'down',\n              'loopback-mode': 'line'";
    const auto in_place = [](const std::string &state, const std::string &loopback) {
        return "'state': '" + state + "','loopback-mode': '" + loopback + "'";
    };
    const std::string states = channels("{'index':300," + three_states + "}");
    const auto shown = [](const std::string &leaves) { return in_channels(channel_with_states(300, leaves)); };
    const odd_row rows[] = {
        {"a state and a loopback of no table",
         down,
         in_place("lost", "odd"),
         states,
         shown("link-state=DOWN"),
         {"admin-state", "loopback-mode"}},
        {"a state that is to be ignored",
         down,
         in_place("not-ready", "external"),
         states,
         shown("admin-state=__ignore__ loopback-mode=NONE link-state=DOWN"),
         {}},
        {"a link that is neither up nor down",
         "'oper-state-up': 'true'",
         "'oper-state-up': 'dunno'",
         channels("{'index':101,'state':{'link-state':null,'loopback-mode':null}}"),
         in_channels(channel_with_states(101, "loopback-mode=NONE")),
         {}},
        {"an unknown squelch, an empty time",
         "'laser-squelch-enabled': 'true'",
         "'laser-squelch-enabled': 'maybe'",
         channels("{'index':101,'ethernet':{'state':{'client-als':null,'als-delay':null}}}"),
         in_channels("channel(index=101 ethernet(state(als-delay=100)))"),
         {"client-als"}},
        {"empty numbers",
         "'cd-max': '70000'",
         "'cd-max': ''",
         line(
             "'Corvane-openconfig-terminal-device-ext:extended':{'state':{'optics-cd-max':null,'optics-cd-min':null}}"),
         in_line("extended(state(optics-cd-min=-70000))"),
         {"optics-cd-max"}},
        {"powers that are no numbers",
         "'transmit-power': '-152'",
         "'transmit-power': 'dark'",
         line("'state':{'target-output-power':null}"),
         in_line("state(target-output-power=0.00)"),
         {}},
        {"an empty text",
         "'full-tti-ascii-string': 'east-13'",
         "'full-tti-ascii-string': ''",
         channels("{'index':301,'otn':{'state':{'tti-msg-recv':null}}}"),
         in_channels("channel(index=301 otn(state(tti-msg-recv=)))"),
         {}},
    };
    for (const odd_row &row : rows) {
        device_road device(lab_with({{row.before, row.after}}));
        EXPECT_EQ(device.seen(row.request, OP_GET), row.shown) << row.what;
        EXPECT_EQ(device.leaves_without_value(), row.missing) << row.what;
    }
}

// The host itself: forms, warnings, and replies that end early.
TEST(get, is_a_command) {
    const std::string request = scratch_file("live.json", channels("{'index':301,'state':{'admin-state':null}}"));
    const outcome json = run_host({"get", request});
    EXPECT_EQ(json.status, 0) << json.err;
    EXPECT_NE(json.out.find(R"("admin-state": "MAINT")"), std::string::npos) << json.out;
    EXPECT_EQ(json.err, "");
    const outcome xml = run_host({"get", "--format", "xml", "--calls", request});
    EXPECT_NE(
        xml.out.find("add /otu/controllers/controller/info/state ns=Corvane-controller-otu-oper value=\"disabled\""),
        std::string::npos)
        << xml.out;
    EXPECT_NE(xml.out.find("<admin-state>MAINT</admin-state>"), std::string::npos) << xml.out;
    const outcome configuration = run_host({"get-config", request});
    EXPECT_EQ(configuration.out.find("MAINT"), std::string::npos) << configuration.out;

    const std::string whole = scratch_file("whole.json", json_of(whole_device));
    const auto get_from = [&whole](const device::description &what) {
        return run_host({"get", "--device", scratch_file("odd.json", device::to_json(what)), whole});
    };
    const outcome odd = get_from(lab_with({{"'state': 'down'", "'state': 'lost'"}}));
    EXPECT_EQ(odd.status, 0) << odd.err;
    EXPECT_NE(odd.err.find("warning: no value of /terminal-device/logical-channels/channel[index='300']/state/"
                           "admin-state\n"),
              std::string::npos)
        << odd.err;
    EXPECT_EQ(odd.out.find("\"\""), std::string::npos) << odd.out;

    // A controller that carries no channel, and of which the state store has no record to be read.
    const struct {
        std::string before, after, path, status, message;
    } ends[] = {
        {"/oper/odu/if/ODU40_0_0_14/port_info", "/oper/odu/if/ODU40_0_0_14/port",
         "/odu/controllers/controller[controller-name='ODU40/0/0/14']/info/state", "RC_STATEDB_NO_ITEM",
         "has no such item: /oper/odu/if/ODU40_0_0_14/port_info\n"},
        {"odu_per_port_info", "otu_per_port_info",
         "/odu/controllers/controller[controller-name='ODU40/0/0/14']/info/state", "RC_POUCH_OTHER_RECORD",
         ": /oper/odu/if/ODU40_0_0_14/port_info\n"},
        {"'state-store-installed': true", "'state-store-installed': false",
         "/otu/controllers/controller[controller-name='CoherentDSP0/0/0/20']/info/state", "RC_STATEDB_UNAVAILABLE",
         "the library of the state store is not there\n"},
    };
    for (const auto &row : ends) {
        const outcome ended = get_from(lab_with({{row.before, row.after}}));
        EXPECT_EQ(ended.status, 1);
        EXPECT_EQ(ended.out, "");
        EXPECT_EQ(ended.err.find("ocmap: " + row.status + "\n  error-tag:  operation-failed\n"), 0u) << ended.err;
        EXPECT_NE(ended.err.find("error-path: " + row.path), std::string::npos) << ended.err;
        EXPECT_NE(ended.err.find(row.message), std::string::npos) << ended.err;
    }

    const outcome unknown =
        run_host({"get", scratch_file("unknown.json", channels("{'index':99,'state':{'link-state':null}}"))});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_NE(unknown.err.find("/terminal-device/logical-channels/channel[index='99']/state/link-state"),
              std::string::npos)
        << unknown.err;
    EXPECT_NE(unknown.err.find("the channel is not there"), std::string::npos) << unknown.err;
}

} // namespace
