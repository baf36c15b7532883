// The channel list on its way down: what is added for a request, by the order of calls. The plug-in is loaded as a
// device loads it, the stand-in answers.
#include <gtest/gtest.h>

#include <set>

#include "exported.h"
#include "hardware/hardware.h"
#include "namespaces.h"
#include "random_requests.h"
#include "request_text.h"
#include "ring_line.h"
#include "schema/schema.h"
#include "zmf/plugin.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

constexpr uint32_t cfg = OP_GET_CONFIG, get = OP_GET, edit = OP_EDIT, other_write = 5;
constexpr rcode injected = 0x5eed01;
constexpr char callbacks[] = "ymap_ox_oc_optical_openconfigterminaldevice_";

const zmf::plugin &loaded() {
    static const zmf::plugin plugin(OCOPTICAL_PLUGIN);
    return plugin;
}

zmf_node_fn function(const std::string &name) {
    return loaded().node_function(callbacks + name);
}

std::string in_channels(const std::string &list) {
    return "terminal-device{logical-channels{" + list + "}}";
}

// Carriers of all classes, by the order in which a name is tried.
const std::map<uint32_t, const char *> carriers = {
    {11, "TenGigECtrlr0_0_0_1"},
    {12, "FortyGigECtrlr0_0_0_2"},
    {13, "HundredGigECtrlr0_0_0_3"},
    {14, "CoherentDSP0_0_0_4"},
    {15, "ODU40_0_0_5"},
    {16, "OTU40_0_0_6"},
    {17, "HundredGigE0_0_0_7"},
    {18, "FourHundredGigE0_0_0_8"},
    {19, "OTU20_0_0_9"},
    {21, "FourHundredGigECtrlr0_1"},
    {22, "OTU4_ODU4"},
};

class channel : public testing::Test {
protected:
    void SetUp() override {
        hardware::current() = {};
        hardware::current().optical_terminal_device = true;
        for (const auto &[number, name] : carriers) {
            hardware::current().name_of[number] = name;
        }
    }
};

// One request: its session, its output, and the adds of the channel list, one a line, as in
//   /logical-channels/channel [cfg] source=delete list
class walk {
public:
    walk(uint32_t kind, const std::string &text, zmf_node_fn root = function("lvla_terminaldevice"))
        : session(kind), request(text, ZMF_NS_OC_TERMINAL_DEVICE), root_(root) {
        session.record([this](const zmf::call &c) { note(c); });
    }

    rcode run() { return root_(session.context(), request.top(), output.root()); }

    zmf::session session;
    request_text request;
    zmf::output_tree output;
    std::string adds;
    uint64_t walk_calls = 0; // calls that return a status, outside of fall-throughs
    uint64_t failed_walk_call = 0;

private:
    void note(const zmf::call &c) {
        static const std::set<std::string> of_the_list = {"/logical-channels/channel",
                                                          "/logical-channels/channel/channel-index",
                                                          "/logical-channels/channel/description",
                                                          "/otu/controllers/controller",
                                                          "/otu/controllers/controller/controller-name",
                                                          "/ethernet-interface/interfaces/interface",
                                                          "/ethernet-interface/interfaces/interface/interface-name",
                                                          "index"};
        if (c.op == zmf::operation::add_path && of_the_list.contains(c.path)) {
            std::string line = zmf::to_line(c).substr(sizeof "add");
            for (const auto &[module, shown] : modules) {
                const size_t at = line.find(module);
                if (at != std::string::npos) {
                    line.replace(at, std::string(module).size(), shown);
                }
            }
            adds += line + "\n";
        }
        const bool has_status = c.op == zmf::operation::add_path || c.op == zmf::operation::update_current_list ||
                                c.op == zmf::operation::get_node_info || c.op == zmf::operation::check_leafref;
        if (has_status && session.request().walk_all != 1) {
            ++walk_calls;
            if (c.result == injected) {
                failed_walk_call = walk_calls;
            }
        }
    }

    static constexpr std::pair<const char *, const char *> modules[] = {
        {"ns=Corvane-terminal-device-cfg", "[cfg]"},
        {"ns=Corvane-controller-otu-oper", "[otu]"},
        {"ns=Corvane-drivers-media-eth-oper", "[eth]"},
        {"ns=openconfig-terminal-device", "[oc]"},
    };
    zmf_node_fn root_;
};

const std::string entry = "/logical-channels/channel [cfg] list\n";
const std::string index_asked = "/logical-channels/channel/channel-index [cfg]\n";
const std::string description_asked = "/logical-channels/channel/description [cfg]\n";
const std::string otu = "/otu/controllers/controller [otu] list\n";
const std::string ethernet = "/ethernet-interface/interfaces/interface [eth] list\n";

std::string entry_from(const std::string &op) {
    return "/logical-channels/channel [cfg] source=" + op + " list\n";
}
std::string index_is(const std::string &value, const std::string &op = "") {
    return "/logical-channels/channel/channel-index [cfg] value=\"" + value + "\"" +
           (op.empty() ? "" : " source=" + op) + "\n";
}
std::string description_is(const std::string &more) {
    return "/logical-channels/channel/description [cfg] " + more + "\n";
}
std::string otu_name(const std::string &name) {
    return "/otu/controllers/controller/controller-name [otu] value=\"" + name + "\"\n";
}
std::string ethernet_name(const std::string &name) {
    return "/ethernet-interface/interfaces/interface/interface-name [eth] value=\"" + name + "\"\n";
}

TEST_F(channel, adds) {
    const struct {
        uint32_t kind;
        int32_t logical_index; // afterwards
        const char *list;
        std::string adds;
    } rows[] = {
        // A create or merge: the key keeps its node as source, the entry has none.
        {edit, 5, "channel{index=5 config{index=5 description=x}}",
         entry + index_is("5", "none") + index_is("5", "none") + description_is("value=\"x\" source=none")},
        {other_write, 5, "channel!merge{index!merge=5 config{description!replace=x}}",
         entry + index_is("5", "merge") + description_is("value=\"x\" source=replace")},
        // Deletes: a leaf takes no value, a key keeps its own.
        {edit, 5, "channel!delete{index=5 config{description!delete=x}}",
         entry_from("delete") + index_is("5", "none") + description_is("source=delete")},
        {OP_EDIT_FULL, 5, "channel{index=5 config{index!delete=5 description!remove}}",
         entry + index_is("5", "none") + index_is("5", "delete") + description_is("source=remove")},
        // An entry deleted by its key: below it the entry's node stands for its leaves.
        {OP_EDIT_CHECKED, 0, "channel!delete{index=5}",
         entry_from("delete") + index_is("5", "none") +
             "/logical-channels/channel/channel-index [cfg] source=remove\n" + description_is("source=remove")},
        {edit, 5, "channel!replace{index=5 config{description=x}}",
         entry_from("remove") + index_is("5", "none") +
             "/logical-channels/channel/channel-index [cfg] source=remove\n" + description_is("source=remove") + entry +
             index_is("5", "none") + description_is("value=\"x\" source=none")},
        // Reads carry values and no source.
        {cfg, 0, "channel{index=14 config{index=14 description=x}}",
         // a content match: the leaves once more, for all of their siblings
         entry + index_is("14") + otu + ethernet + index_is("14") + otu + ethernet + description_is("value=\"x\"") +
             index_asked + otu + ethernet + description_asked},
        {cfg, 14, "channel{index=14 config{description}}", entry + index_is("14") + otu + ethernet + description_asked},
        {cfg, 0, "channel{config{description}}", entry + description_asked + "index [oc] node-out\n"},
        {get, 0, "channel{config{description}}", entry + otu + ethernet + description_asked + "index [oc] node-out\n"},
        {get, 0, "channel{index config{description}}",
         entry + otu + ethernet + index_asked + otu + ethernet + description_asked},
        {get, 0, "channel{index=14 config{index}}",
         entry + otu + index_is("14") + otu + ethernet + otu_name("CoherentDSP0/0/0/4") + index_asked + otu + ethernet},
        // The number of an entry lasts until the next one.
        {get, 0, "channel{index=14 config{description}} channel{config{description}}",
         entry + otu + index_is("14") + otu + ethernet + otu_name("CoherentDSP0/0/0/4") + description_asked + entry +
             otu + ethernet + description_asked + "index [oc] node-out\n"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.list);
        walk w(row.kind, in_channels(row.list));
        EXPECT_EQ(w.run(), RC_OK);
        EXPECT_EQ(w.adds, row.adds);
        EXPECT_EQ(w.session.request().logical_index, row.logical_index);
        EXPECT_EQ(w.session.error_marks() == 0, w.session.request().err_msg == nullptr);
    }
}

TEST_F(channel, a_read_of_all_asks_for_all_channels_and_both_kinds_of_carriers) {
    const std::string below = index_asked + otu + ethernet + index_asked + otu + ethernet + description_asked;
    const std::string in_configuration_read = entry + below, in_get = entry + otu + ethernet + below;
    for (const char *request : {"terminal-device", "terminal-device{logical-channels}"}) {
        for (const uint32_t kind : {cfg, get}) {
            walk w(kind, request);
            EXPECT_EQ(w.run(), RC_OK);
            const std::string &expected = kind == get ? in_get : in_configuration_read;
            EXPECT_EQ(w.adds.substr(0, expected.size()), expected) << request << " " << kind;
        }
    }
}

// The carrier's class decides which operational lists a get of one channel opens, and which name it asks for.
TEST_F(channel, carriers) {
    const struct {
        uint32_t channel;
        std::string opened, named;
    } rows[] = {
        {11, ethernet, ethernet_name("TenGigECtrlr0/0/0/1")},
        {12, ethernet, ethernet_name("FortyGigECtrlr0/0/0/2")},
        {13, ethernet, ethernet_name("HundredGigECtrlr0/0/0/3")},
        {14, otu, otu_name("CoherentDSP0/0/0/4")},
        {15, "", ""},
        {16, otu, otu_name("OTU40/0/0/6")},
        {17, ethernet, ethernet_name("HundredGigE0/0/0/7")},
        {18, ethernet, ethernet_name("FourHundredGigE0/0/0/8")},
        {19, "", ""}, // OTU2: only OTU4 is known
        {20, "", ""}, // no carrier
        {21, ethernet, ethernet_name("FourHundredGigECtrlr0/1")},
        {22, "", ""}, // ODU comes before OTU4
    };
    const auto adds_of = [](const std::string &number, const std::string &opened, const std::string &named) {
        return entry + opened + index_is(number) + otu + ethernet + named + description_asked;
    };
    for (const auto &row : rows) {
        const std::string number = std::to_string(row.channel);
        walk w(get, in_channels("channel{index=" + number + " config{description}}"));
        EXPECT_EQ(w.run(), RC_OK);
        EXPECT_EQ(w.adds, adds_of(number, row.opened, row.named)) << row.channel;
    }
}

TEST_F(channel, number_to_name_and_class) {
    const auto convert = reinterpret_cast<uint32_t (*)(const char *, char *)>(
        loaded().symbol("oc_optical_convert_logical_index_to_interface"));
    const struct {
        const char *index, *before;
        uint32_t itype;
        const char *name;
    } rows[] = {
        {"11", "", ITYPE_ETHERNET, "TenGigECtrlr0/0/0/1"},
        {"14", "", ITYPE_COHERENT_DSP, "CoherentDSP0/0/0/4"},
        {"15", "", ITYPE_ODU, "ODU40/0/0/5"},
        {"16", "", ITYPE_OTU4, "OTU40/0/0/6"},
        {"18", "", ITYPE_ETHERNET, "FourHundredGigE0/0/0/8"},
        {"19", "", ITYPE_NONE, "OTU20/0/0/9"},
        {"22", "", ITYPE_ODU, "OTU4/ODU4"},
        {"14x", "", ITYPE_COHERENT_DSP, "CoherentDSP0/0/0/4"},
        {"99", "", ITYPE_NONE, ""},
        {"99", "OTU4_7", ITYPE_OTU4, "OTU4/7"}, // what stands in the buffer is looked at
        {nullptr, "OTU4_7", ITYPE_NONE, "OTU4_7"},
    };
    for (const auto &row : rows) {
        char name[200] = "";
        snprintf(name, sizeof name, "%s", row.before);
        EXPECT_EQ(convert(row.index, name), row.itype) << (row.index != nullptr ? row.index : "null");
        EXPECT_STREQ(name, row.name);
    }
}

TEST_F(channel, index_range) {
    const struct {
        const char *index;
        bool allowed;
        int32_t number; // of the entry, where the list callback of a get has read it
    } rows[] = {
        {"1", true, 1},
        {"100000", true, 100000},
        {"+7", true, 7},
        {"5x", true, 5},
        {"007", true, 7},
        {"0", false, 0},
        {"100001", false, 100001},
        {"-1", false, -1},
        {"abc", false, 0},
        {"", false, 0},
        {"99999999999", false, INT32_MAX},
        {"-99999999999", false, INT32_MIN},
        {"4294967301", false, INT32_MAX},
    };
    for (const auto &row : rows) {
        for (const uint32_t kind : {cfg, get, edit, OP_EDIT_CHECKED + 0u, OP_EDIT_FULL + 0u, other_write}) {
            SCOPED_TRACE(std::string(row.index) + " in kind " + std::to_string(kind));
            walk w(kind, in_channels(std::string("channel{index=") + row.index + " config{description}}"));
            EXPECT_EQ(w.run(), row.allowed ? RC_OK : RC_VALUE_OUT_OF_RANGE);
            EXPECT_EQ(w.adds.find("channel-index") != std::string::npos, row.allowed);
            EXPECT_EQ(w.session.request().logical_index, row.allowed || kind == get ? row.number : 0);
            EXPECT_STREQ(w.session.request().err_msg,
                         row.allowed ? nullptr : "Logical channel index is not within the allowed range: 1 - 100000");
            EXPECT_EQ(w.session.error_marks(), row.allowed ? 0u : 1u);
        }
    }
    walk w(other_write, in_channels("channel{index=5 config{index=0}}")); // config/index is tested as the key is
    EXPECT_EQ(w.run(), RC_VALUE_OUT_OF_RANGE);
    EXPECT_EQ(w.adds, entry + index_is("5", "none"));
    EXPECT_EQ(w.session.request().logical_index, 5); // keeps its earlier number
}

TEST_F(channel, sibling_module) {
    for (const bool terminal_device : {false, true}) {
        hardware::current().optical_terminal_device = terminal_device;
        for (const uint32_t kind : {cfg, get, edit, OP_EDIT_CHECKED + 0u, OP_EDIT_FULL + 0u, other_write}) {
            for (const char *list : {"channel{index=5}", "channel!delete{index=5}"}) {
                const uint64_t before = hardware::sibling_calls();
                walk(kind, in_channels(list)).run();
                const bool called = !terminal_device && (kind == OP_EDIT || kind == OP_EDIT_FULL) &&
                                    std::string(list).find("delete") == std::string::npos;
                EXPECT_EQ(hardware::sibling_calls() - before, called ? 1u : 0u) << kind << " " << list;
            }
        }
    }
}

TEST_F(channel, refusals) {
    const struct {
        uint32_t kind;
        rcode status;
        const char *request, *message;
    } rows[] = {
        {edit, RC_UNSUPPORTED_AUGMENT, "terminal-device{logical-channels{channel{index=5 x:new=1}}}", "new"},
        {edit, RC_UNSUPPORTED_AUGMENT, "terminal-device{x:new}", "new"},
        {edit, RC_OK, "terminal-device{x:new!delete}", nullptr},
        {get, RC_OK, "terminal-device{x:new}", nullptr},
        {edit, RC_UNSUPPORTED_NODE, "terminal-device{logical-channels{channel{index=5 state{index=5}}}}", "state"},
        {cfg, RC_OK, "terminal-device{logical-channels{channel{index=5 state{index=5}}}}", nullptr},
        {edit, RC_UNSUPPORTED_NODE, "terminal-device{operational-modes{mode{mode-id=1}}}", "mode"},
        {edit, RC_LIST_KEY_ERROR, "terminal-device{logical-channels{channel{config{description=x}}}}", "index"},
        {edit, zmf::rc_leafref_mismatch, "terminal-device{logical-channels{channel{index=5 config{index=6}}}}",
         nullptr},
        {edit, RC_INVALID_ARGUMENTS, "terminal-device{logical-channels!delete{channel{index=5}}}", nullptr},
        {edit, RC_SUBTREE_ERROR, "terminal-device{logical-channels{channel!delete}}", nullptr},
        {edit, RC_UNSUPPORTED_NODE, "optical-channel{power=1}", "power"},
        {edit, RC_INVALID_ARGUMENTS, "optical-channel{config!delete{frequency}}", nullptr},
        {edit, RC_UNSUPPORTED_AUGMENT, "x:component", "component"},
        {cfg, RC_OK, "x:component", nullptr},
    };
    for (const auto &row : rows) {
        const bool at_root = std::string(row.request).starts_with("terminal-device");
        walk w(row.kind, row.request, function(at_root ? "lvla_terminaldevice" : "augment_lvla_component"));
        EXPECT_EQ(w.run(), row.status) << row.request;
        if (row.status != RC_OK) {
            EXPECT_STREQ(w.session.request().err_msg, row.message) << row.request;
        }
    }
}

TEST_F(channel, hooks_for_nodes_without_a_callback) {
    zmf::session s(get);
    zmf::output_tree out;
    request_text request("lonely", ZMF_NS_OC_TERMINAL_DEVICE);
    const auto leaf = function("duck_map_leaf"), list = function("duck_map_list");
    const auto container =
        reinterpret_cast<zmf_cont_fn>(loaded().symbol((std::string(callbacks) + "duck_map_container").c_str()));
    ASSERT_NE(container, nullptr);

    EXPECT_EQ(container(s.context(), request.top(), 3, out.root()), RC_OK);
    EXPECT_EQ(list(s.context(), nullptr, nullptr), RC_OK); // the one without an argument test
    EXPECT_EQ(s.error_marks(), 0u);
    EXPECT_EQ(leaf(s.context(), request.top(), out.root()), RC_UNSUPPORTED_NODE);
    EXPECT_STREQ(s.request().err_msg, "lonely");
    EXPECT_EQ(container(s.context(), nullptr, 0, out.root()), RC_INVALID_ARGUMENTS);
    EXPECT_EQ(leaf(s.context(), request.top(), nullptr), RC_INVALID_ARGUMENTS);
    EXPECT_EQ(s.error_marks(), 3u);

    s.request().logical_index = 5;
    EXPECT_EQ(function("list_lvla_terminaldevice_logicalchannels_channel")(s.context(), nullptr, out.root()),
              RC_INVALID_ARGUMENTS);
    EXPECT_EQ(s.request().logical_index, 0); // cleared before the arguments are looked at
    EXPECT_EQ(s.stack_size() + s.hierarchy_depth(), 0u);
    EXPECT_DEATH(leaf(nullptr, request.top(), out.root()), "NULL != ctx");
}

TEST_F(channel, traces_of_a_callback) {
    std::vector<std::string> ring;
    walk w(edit, in_channels("channel{index=0}"));
    w.session.ring([&ring](std::string_view line) { ring.emplace_back(line); });
    w.run();
    std::string traced;
    for (const std::string &line : ring) {
        const ring_line parts(line);
        if (parts.function == std::string(callbacks) + "leaf_lvla_terminaldevice_channel_index") {
            traced += parts.level + " " + parts.text + "; ";
        }
    }
    EXPECT_EQ(traced, "TRC Start; ERR Logical Index  is not allowed = 0; TRC End; ");
}

// Every call that answers with a status fails in turn. Outside of fall-throughs the walk passes that status up, but for
// the calls marked "d" (dropped): the adds of the list callback and of a key in a read, of which the last one counts,
// and the question for the key.
TEST_F(channel, each_call_fails_once) {
    const struct {
        uint32_t kind;
        const char *list;
        std::string calls; // outside of fall-throughs: p passed up, d dropped
    } rows[] = {
        // current entry, key check, entry, key, config/index, description
        {edit, "channel{index=5 config{index=5 description=x}}", "pppppp"},
        {edit, "channel!delete{index=5 config{description!delete}}", "ppppp"},
        {edit, "channel!delete{index=5}", "pppp"},
        // current entry, key check, entry and key of both halves, description
        {edit, "channel!replace{index=5 config{description=x}}", "ppppppp"},
        // current entry, entry, (question, carrier,) index, OTU, Ethernet, (name,) description, (key for the client)
        {cfg, "channel{index=14 config{description}}", "ppddpp"},
        {get, "channel{index=14 config{description}}", "pddpdddpp"},
        {get, "channel{index=15 config{description}}", "pddddpp"},
        {get, "channel{config{description}}", "pdddppp"},
        {get, "channel", "pdddp"},
        {cfg, "", ""},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.list);
        walk whole(row.kind, in_channels(row.list));
        ASSERT_EQ(whole.run(), RC_OK);
        EXPECT_EQ(whole.walk_calls, row.calls.size());
        for (uint64_t n = 1; n <= whole.session.status_calls(); ++n) {
            SCOPED_TRACE(n);
            walk w(row.kind, in_channels(row.list));
            w.session.fail_call(n, injected);
            const rcode status = w.run();
            const bool passed = w.failed_walk_call != 0 && row.calls[w.failed_walk_call - 1] == 'p';
            EXPECT_EQ(status, passed ? injected : RC_OK);
            const zmf_req_ctx &words = w.session.request();
            EXPECT_EQ(w.session.hierarchy_depth() + w.session.stack_size() + w.session.imbalances(), 0u);
            EXPECT_EQ(words.walk_all + words.delete_walk + words.pass_flags + words.replace_armed, 0u);
            const std::string changes = w.request.changes();
            EXPECT_TRUE(changes.empty() || changes == "channel children") << changes; // a key was added to a read
        }
    }
}

TEST_F(channel, without_memory_the_status_stands_alone) {
    walk w(edit, in_channels("channel{index=0}"));
    w.session.fail_call(4, injected); // current entry, key check, entry, the sentence
    EXPECT_EQ(w.run(), RC_VALUE_OUT_OF_RANGE);
    EXPECT_EQ(w.session.request().err_msg, nullptr);
}

child_table children_by_tag() {
    child_table table;
    for (const schema::model &model : schema::models()) {
        for (const schema::node &node : model.nodes) {
            if (node.parent != nullptr) {
                table[node.parent->tag].push_back(node.tag);
            }
        }
    }
    return table;
}

TEST_F(channel, random_requests) {
    const child_table children = children_by_tag();
    constexpr uint32_t requests = 5000;
    constexpr uint32_t kinds[] = {OP_GET, OP_GET_CONFIG, OP_EDIT, OP_EDIT_CHECKED, OP_EDIT_FULL, other_write};
    uint32_t refused = 0;
    for (uint32_t seed = 1; seed <= requests; ++seed) {
        random_requests make(seed, children);
        const bool at_root = !make.one_in(4);
        const std::string text = make.request(at_root ? "terminal-device" : "optical-channel");
        walk w(kinds[seed % std::size(kinds)], text,
               function(at_root ? "lvla_terminaldevice" : "augment_lvla_component"));
        if (make.one_in(3)) {
            w.session.fail_call(1 + make.below(30), injected);
        }
        refused += w.run() != RC_OK;
        const zmf_req_ctx &words = w.session.request();
        const std::string changes = w.request.changes();
        const bool fine = w.session.hierarchy_depth() + w.session.stack_size() + w.session.imbalances() == 0 &&
                          words.walk_all + words.delete_walk + words.pass_flags + words.replace_armed == 0 &&
                          changes.find("texts") == std::string::npos && changes.find("!delete") == std::string::npos &&
                          changes.find("!remove") == std::string::npos;
        // Only a replace above another one loses its operation.
        const bool nested = text.find("!replace") != text.rfind("!replace");
        ASSERT_TRUE(fine && (nested || changes.find('!') == std::string::npos))
            << "seed " << seed << ": " << text << "\nleft: " << changes;
    }
    EXPECT_GT(refused, requests / 10); // the requests reach both ends
    EXPECT_LT(refused, requests * 9 / 10);
}

} // namespace
