// What a client sees of a reply: the request's choice among its nodes, and their order. A case more: a row. Requests
// are JSON; replies are shown as shown_reply.h tells.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "namespaces.h"
#include "narrow.h"
#include "request.h"
#include "shown_reply.h"
#include "zmf.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

using ocmap::selection;
using ocmap::whole;

class replies : public testing::Test {
protected:
    void add(const std::string &path, const char *value, const char *ns = ZMF_NS_OC_TERMINAL_DEVICE) {
        zmf_datatree *made = nullptr;
        ASSERT_EQ(zmf_map_datatree_add_path_flagged(session_.context(), tree_.root(), path.c_str(), ns, value, nullptr,
                                                    &made, 0, 0),
                  RC_OK);
        if (path.ends_with("rate-class")) {
            made->value_ns = zmf_strdup(ZMF_NS_OC_TRANSPORT_TYPES, "test");
            made->has_value_ns = 1;
        }
    }

    static std::string channel(const char *index) {
        return std::string("/terminal-device/logical-channels/channel[index='") + index + "']";
    }

    // Three channels, not in model order, and a fourth that has no key.
    void fill() {
        add("/terminal-device/logical-channels/channel/config/description", "ghost");
        add(channel("5") + "/logical-channel-assignments/assignment[index='1']/config/allocation", "100");
        add(channel("5") + "/logical-channel-assignments/assignment[index='2']/config/allocation", "200");
        add(channel("5") + "/ingress/config/physical-channel", "1");
        add(channel("5") + "/ingress/config/physical-channel", "2");
        add(channel("5") + "/config/rate-class", "TRIB_RATE_100G");
        add(channel("5") + "/config/admin-state", "ENABLED");
        add(channel("5") + "/config/description", "east");
        add(channel("6") + "/config/description", nullptr);
        add(channel("6") + "/config/admin-state", "DISABLED");
        add(channel("7") + "/config/admin-state", "ENABLED");
        add(channel("7") + "/config/description", "west");
        add(channel("7") + "/otn/config", nullptr);
    }

    std::string shown(const selection &told) {
        shown::reply writer;
        ocmap::tell_reply(tree_, told, writer);
        return writer.text;
    }

    std::string narrowed_by(const std::string &request) {
        const zmf::fixed_tree tree = ocmap::read_request(request, ocmap::format::json, true);
        const ocmap::client_filter filter(tree);
        missing_.clear();
        return shown(narrowed(tree_, filter, note_missing_));
    }

    zmf::session session_{OP_GET_CONFIG};
    zmf::output_tree tree_;
    std::vector<zmf::output_node> missing_;
    const ocmap::missing_value note_missing_ = [this](zmf::output_node leaf) { missing_.push_back(leaf); };
};

std::string channels(const std::string &entries) {
    return R"({"openconfig-terminal-device:terminal-device":{"logical-channels":{"channel":[)" + entries + "]}}}";
}

// What stands around channels in a reply.
std::string of_device(const std::string &shown) {
    return shown.empty() ? "" : "terminal-device(logical-channels(" + shown + "))";
}

const std::string config5 = "config(description=east admin-state=ENABLED rate-class=TRIB_RATE_100G)";
const std::string ingress5 = "ingress(config(physical-channel=1 physical-channel=2))";
const std::string assignment1 = "assignment(index=1 config(allocation=100))";
const std::string assignment2 = "assignment(index=2 config(allocation=200))";
const std::string whole5 = "channel(index=5 " + config5 + " " + ingress5 + " logical-channel-assignments(" +
                           assignment1 + " " + assignment2 + "))";
const std::string whole6 = "channel(index=6 config(admin-state=DISABLED))";
const std::string whole7 = "channel(index=7 config(description=west admin-state=ENABLED))";

TEST_F(replies, hold_what_was_asked_for) {
    fill();
    struct {
        const char *what;
        std::string request, shown; // of channels
        size_t missing = 0;
    } const rows[] = {
        {"a selected node brings all below it", R"({})", whole5 + " " + whole6 + " " + whole7, 1},
        {"a key alone brings its whole entry", R"({"index":5})", whole5},
        {"entries by key are a union, in the order of the reply", R"({"index":7},{"index":5})", whole5 + " " + whole7},
        {"a key that nobody has", R"({"index":8})", ""},
        {"a key beside others restricts, and is told", R"({"index":7,"config":{"description":null}})",
         "channel(index=7 config(description=west))"},
        {"a matching entry without what was selected keeps its key", R"({"index":6,"config":{"rate-class":null}})",
         "channel(index=6)"},
        {"the same entry twice is a union",
         R"({"index":5,"config":{"description":null}},{"index":5,"config":{"admin-state":null}})",
         "channel(index=5 config(description=east admin-state=ENABLED))"},
        {"an entry by key and a choice from all", R"({"index":5,"ingress":{}},{"config":{"description":null}})",
         "channel(index=5 config(description=east) " + ingress5 + ") channel(index=7 config(description=west))", 1},
        {"a selected key brings nothing else", R"({"index":null})",
         "channel(index=5) channel(index=6) channel(index=7)"},
        {"what is selected below an entry brings its key", R"({"ingress":{}})", "channel(index=5 " + ingress5 + ")"},
        {"an entry is left out where nothing is selected", R"({"config":{"rate-class":null}})",
         "channel(index=5 config(rate-class=TRIB_RATE_100G))"},
        {"content alone brings all its siblings, where it holds", R"({"config":{"admin-state":"ENABLED"}})",
         "channel(index=5 " + config5 + ") channel(index=7 config(description=west admin-state=ENABLED))"},
        {"content restricts what is selected beside it", R"({"config":{"admin-state":"ENABLED","description":null}})",
         "channel(index=5 config(description=east admin-state=ENABLED)) "
         "channel(index=7 config(description=west admin-state=ENABLED))"},
        {"content in one container does not restrict another",
         R"({"index":5,"config":{"admin-state":"DISABLED"},"ingress":{}})", "channel(index=5 " + ingress5 + ")"},
        {"all of several contents have to hold", R"({"config":{"admin-state":"ENABLED","description":"west"}})",
         "channel(index=7 config(description=west admin-state=ENABLED))"},
        {"contents in any order make the same test",
         R"({"config":{"description":"west","admin-state":"ENABLED"}},{"config":{"description":"x","admin-state":"ENABLED"}})",
         "channel(index=7 config(description=west admin-state=ENABLED))"},
        {"a leaf cannot hold two values, once is enough of one",
         R"({"config":{"description":"east"}},{"index":6,"openconfig-terminal-device:index":7})",
         "channel(index=5 " + config5 + ")"},
        {"content is compared as it stands", R"({"config":{"description":"EAST"}})", ""},
        {"a leaf without value has no content", R"({"index":6,"config":{"description":""}})", "channel(index=6)"},
        {"an identity with its module", R"({"config":{"rate-class":"openconfig-transport-types:TRIB_RATE_100G"}})",
         "channel(index=5 " + config5 + ")"},
        {"an identity of another module", R"({"config":{"rate-class":"openconfig-platform:TRIB_RATE_100G"}})", ""},
        {"one value of a leaf-list is enough", R"({"ingress":{"config":{"physical-channel":[2]}}})",
         "channel(index=5 " + ingress5 + ")"},
        {"no value of a leaf-list", R"({"ingress":{"config":{"physical-channel":[3]}}})", ""},
        {"two values of a leaf-list", R"({"ingress":{"config":{"physical-channel":[2,1]}}})",
         "channel(index=5 " + ingress5 + ")"},
        {"two values of a leaf-list, one of them missing", R"({"ingress":{"config":{"physical-channel":[1,3]}}})", ""},
        {"values of a leaf-list that one node has and other nodes ask for",
         R"({"ingress":{"config":{"physical-channel":[2,3]}}},{"ingress":{"config":{"physical-channel":[2]}}},)"
         R"({"ingress":{"config":{"physical-channel":[3]}}})",
         "channel(index=5 " + ingress5 + ")"},
        {"the tested value of a leaf-list beside a selection",
         R"({"ingress":{"config":{"physical-channel":[2],"transceiver":null}}})",
         "channel(index=5 ingress(config(physical-channel=2)))"},
        {"lists in lists", R"({"index":5,"logical-channel-assignments":{"assignment":[{"index":2}]}})",
         "channel(index=5 logical-channel-assignments(" + assignment2 + "))"},
        {"numbers compare as numbers",
         R"({"logical-channel-assignments":{"assignment":[{"config":{"allocation":"0100.000"}}]}})",
         "channel(index=5 logical-channel-assignments(" + assignment1 + "))"},
        {"a node of another module is another node", R"({"openconfig-platform:config":{}})", ""},
        {"an unknown node selects nothing, and is no content", R"({"index":5,"colour":null})", "channel(index=5)"},
        {"an unknown leaf never holds", R"({"index":5,"colour":"red"})", ""},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(narrowed_by(channels(row.request)), of_device(row.shown)) << row.what;
        EXPECT_EQ(missing_.size(), row.missing) << row.what;
    }
}

TEST_F(replies, are_whole_where_nothing_is_chosen) {
    fill();
    const std::string all = of_device(whole5 + " " + whole6 + " " + whole7);
    EXPECT_EQ(narrowed_by(R"({"openconfig-terminal-device:terminal-device":{}})"), all);
    EXPECT_EQ(narrowed_by(R"({"openconfig-terminal-device:terminal-device":{"operational-modes":{}}})"), "");
    missing_.clear();
    EXPECT_EQ(shown(whole(tree_, note_missing_)), all);
    ASSERT_EQ(missing_.size(), 1u); // not the one of the entry that is never told
    EXPECT_STREQ(missing_[0].tag(), "description");
}

TEST_F(replies, tell_no_empty_text_but_of_a_string) {
    const struct {
        const char *leaf, *value, *shown; // below an entry that has a description
    } rows[] = {
        {"/config/description", "", "config(description=)"},
        {"/ingress/config/transceiver", "", "ingress(config(transceiver=))"},
        {"/state/admin-state", "__ignore__", "state(admin-state=__ignore__)"},
        {"/state/admin-state", "", ""},
        {"/state/index", "", ""},
        {"/state/rate-class", "", ""},
        {"/config/test-signal", "", ""},
        {"/otn/state/q-value/instant", "", ""},
        {"/ethernet/state/in-crc-errors", "", ""},
    };
    int index = 0;
    std::string expected;
    std::vector<std::string> never_told;
    for (const auto &row : rows) {
        const std::string key = std::to_string(++index);
        add(channel(key.c_str()) + row.leaf, row.value);
        expected += "channel(index=" + key + (*row.shown ? " " : "") + row.shown + ") ";
        if (*row.shown == '\0')
            never_told.emplace_back(row.leaf);
    }
    expected.pop_back();
    EXPECT_EQ(shown(whole(tree_, note_missing_)), of_device(expected));
    ASSERT_EQ(missing_.size(), never_told.size());
    for (size_t i = 0; i < missing_.size(); ++i)
        EXPECT_TRUE(never_told[i].ends_with(missing_[i].tag())) << never_told[i];
}

// The walk adds keys to a request; they choose nothing, since the filter is older.
TEST_F(replies, do_not_see_keys_that_a_walk_adds) {
    fill();
    const zmf::fixed_tree request = ocmap::read_request(channels("{}"), ocmap::format::json, true);
    const ocmap::client_filter filter(request);
    zmf_datatree &entry = request.tops()->children->children[0];
    ASSERT_EQ(zmf_map_datatree_add_path_flagged(session_.context(), &entry, "index", ZMF_NS_OC_TERMINAL_DEVICE, "7",
                                                nullptr, nullptr, 0, 0),
              RC_OK);
    EXPECT_EQ(shown(narrowed(tree_, filter, note_missing_)), of_device(whole5 + " " + whole6 + " " + whole7));
}

TEST_F(replies, show_what_no_table_knows_in_order_of_creation) {
    const char *const extension = ZMF_NS_CORVANE("Corvane-openconfig-terminal-device-ext");
    add("/unknown/second[name='b']/extended/zeta", "1", extension);
    add("/unknown/first", "2", ZMF_NS_OC_PLATFORM);
    add("/unknown/second[name='a']/alpha", "3", extension);
    add("/unknown/nothing", nullptr, extension);
    EXPECT_EQ(shown(whole(tree_, note_missing_)),
              "unknown(second(name=b extended(zeta=1)) second(name=a alpha=3) first=2)");
    EXPECT_EQ(missing_.size(), 1u);
}

// Ten thousand entries, each asked for by its key and a second test: if each were held against each, this would take
// minutes.
TEST_F(replies, of_many_entries_asked_for_one_by_one) {
    std::string entries, expected;
    for (int i = 1; i <= 10000; ++i) {
        const std::string index = std::to_string(i);
        add(channel(index.c_str()) + "/config/description", index.c_str());
        entries += (i == 1 ? "" : ",") + (R"({"index":)" + index) + R"(,"config":{"description":")" +
                   (i % 5000 == 0 ? index : "x") + R"("}})";
        expected += (i == 1 ? "channel(index=" : " channel(index=") + index +
                    (i % 5000 == 0 ? " config(description=" + index + "))" : ")");
    }
    EXPECT_EQ(narrowed_by(channels(entries)), of_device(expected));
}

} // namespace
