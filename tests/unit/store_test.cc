// The simulated device: what an edit leaves behind, what a read brings, and files that are saved.
//
// Edits and reads are written as the adds that make their tree, one word an add:  *C C/channel-index!merge=5
// "*" is the list flag, "!merge" the operation of the source (none without it), "=5" the value. C and A stand for the
// lists of channels and of assignments.
#include <algorithm>
#include <csignal>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <dirent.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "device/native_json.h"
#include "device/store.h"
#include "namespaces.h"
#include "written_json.h"
#include "zmf/session.h"

namespace {

constexpr char channel_list[] = "/logical-channels/channel";
constexpr char assignment_list[] = "/logical-channels/channel/logical-channel-assignments/logical-channel-assignment";
constexpr char native_ns[] = ZMF_NS_CORVANE("Corvane-terminal-device-cfg");

// Quotes are written as ' in these tests.
// A device with these entries of the channel list.
device::description with_channels(const std::string &entries) {
    return device::parse(
        json_of("{'config': {'Corvane-terminal-device-cfg:logical-channels': {'channel': [" + entries + "]}}}"),
        "a.json");
}

std::string shown(const device::record &config) {
    std::string json;
    device::append_native(json, config, 0);
    return json;
}

std::string full_path(const std::string &written) {
    const size_t slash = written.find('/');
    const std::string first = written.substr(0, slash);
    const std::string rest = slash == std::string::npos ? "" : written.substr(slash);
    return first == "C" ? channel_list + rest : first == "A" ? assignment_list + rest : written;
}

class tree_of_adds {
public:
    explicit tree_of_adds(const std::string &adds) : session_(OP_EDIT) {
        std::istringstream words(adds);
        for (std::string word; words >> word;)
            add(word);
    }
    const zmf::output_tree &tree() const { return tree_; }

private:
    void add(std::string word) {
        static const std::map<std::string, uint32_t> operations = {
            {"merge", OP_MERGE}, {"replace", OP_REPLACE}, {"delete", OP_DELETE}, {"remove", OP_REMOVE}};
        const bool is_list = word.front() == '*';
        word.erase(0, is_list ? 1 : 0);
        const size_t equals = word.find('=');
        const std::string value = equals == std::string::npos ? "" : word.substr(equals + 1);
        const char *given = equals == std::string::npos ? nullptr : value.c_str();
        word.erase(std::min(equals, word.size()));
        const size_t mark = word.find('!');
        zmf_datatree source{};
        if (mark != std::string::npos)
            source.op = operations.at(word.substr(mark + 1));
        source.op_explicit = 1;
        const std::string path = full_path(word.substr(0, mark));
        ASSERT_EQ(zmf_map_datatree_add_path_flagged(session_.context(), tree_.root(), path.c_str(), native_ns, given,
                                                    mark == std::string::npos ? nullptr : &source, nullptr, is_list, 0),
                  RC_OK)
            << path;
    }

    zmf::session session_;
    zmf::output_tree tree_;
};

// What became of an edit: "" for done, else "data-missing description /path/with/keys".
std::string outcome_of(device::store &store, const std::string &adds) {
    const auto failure = store.apply(tree_of_adds(adds).tree());
    if (!failure)
        return "";
    EXPECT_EQ(failure->ns, native_ns);
    EXPECT_FALSE(failure->text.empty());
    return failure->error_tag + " " + failure->leaf + " " + failure->path;
}

#define ENTRY_5 "*C C/channel-index!merge=5 "
#define PATH_5 "/logical-channels/channel[channel-index='5']"

TEST(store, does_each_operation_on_each_kind_of_target) {
    const std::string bystander = ", {'channel-index': 6, 'description': 'six', 'ingress-physical-channel': [1, 2]}";
    const std::string full = "{'channel-index': 5, 'description': 'old', 'ingress-physical-channel': [1, 2],"
                             " 'ethernet': {'client-als': 'ethernet', 'als-delay': 10}}" +
                             bystander;
    const std::string bare = "{'channel-index': 5, 'admin-state': 'enable'}" + bystander;
    const std::string none = bystander.substr(2);
    const auto of_full = [&](const std::string &entry) { return entry + bystander; };
    const auto of_bare = [&](const std::string &rest) {
        return "{'channel-index': 5, 'admin-state': 'enable', " + rest + "}" + bystander;
    };
    const struct {
        const char *operation_and_kind, *edit;
        std::string present, after; // the channels before and after
        std::string absent, after_absent;
        const char *refusal; // where the target is absent
    } rows[] = {
        {"merge entry", ENTRY_5 "C/description!merge=new", full,
         of_full("{'channel-index': 5, 'description': 'new', 'ingress-physical-channel': [1, 2],"
                 " 'ethernet': {'client-als': 'ethernet', 'als-delay': 10}}"),
         none, "{'channel-index': 5, 'description': 'new'}" + bystander, ""},
        {"replace entry", "*C!remove C/channel-index!remove=5 *C C/channel-index!merge=5 C/description!merge=new", full,
         of_full("{'channel-index': 5, 'description': 'new'}"), none,
         "{'channel-index': 5, 'description': 'new'}" + bystander, ""},
        {"delete entry", "*C!delete C/channel-index!delete=5", full, none, none, none, "data-missing channel " PATH_5},
        {"remove entry", "*C!remove C/channel-index!remove=5", full, none, none, none, ""},

        {"merge container", ENTRY_5 "C/ethernet/als-delay!merge=20", full,
         of_full("{'channel-index': 5, 'description': 'old', 'ingress-physical-channel': [1, 2],"
                 " 'ethernet': {'client-als': 'ethernet', 'als-delay': 20}}"),
         bare, of_bare("'ethernet': {'als-delay': 20}"), ""},
        {"replace container", ENTRY_5 "C/ethernet!remove C/ethernet/als-delay!merge=20", full,
         of_full("{'channel-index': 5, 'description': 'old', 'ingress-physical-channel': [1, 2],"
                 " 'ethernet': {'als-delay': 20}}"),
         bare, of_bare("'ethernet': {'als-delay': 20}"), ""},
        {"delete container", ENTRY_5 "C/ethernet!delete", full,
         of_full("{'channel-index': 5, 'description': 'old', 'ingress-physical-channel': [1, 2]}"), bare, bare,
         "data-missing ethernet " PATH_5 "/ethernet"},
        {"remove container", ENTRY_5 "C/ethernet!remove", full,
         of_full("{'channel-index': 5, 'description': 'old', 'ingress-physical-channel': [1, 2]}"), bare, bare, ""},

        {"merge leaf", ENTRY_5 "C/description!merge=new", full,
         of_full("{'channel-index': 5, 'description': 'new', 'ingress-physical-channel': [1, 2],"
                 " 'ethernet': {'client-als': 'ethernet', 'als-delay': 10}}"),
         bare, of_bare("'description': 'new'"), ""},
        {"replace leaf", ENTRY_5 "C/description!remove C/description!replace=new", full,
         of_full("{'channel-index': 5, 'description': 'new', 'ingress-physical-channel': [1, 2],"
                 " 'ethernet': {'client-als': 'ethernet', 'als-delay': 10}}"),
         bare, of_bare("'description': 'new'"), ""},
        {"delete leaf", ENTRY_5 "C/description!delete", full,
         of_full("{'channel-index': 5, 'ingress-physical-channel': [1, 2],"
                 " 'ethernet': {'client-als': 'ethernet', 'als-delay': 10}}"),
         bare, bare, "data-missing description " PATH_5 "/description"},
        {"remove leaf", ENTRY_5 "C/description!remove", full,
         of_full("{'channel-index': 5, 'ingress-physical-channel': [1, 2],"
                 " 'ethernet': {'client-als': 'ethernet', 'als-delay': 10}}"),
         bare, bare, ""},

        {"merge value", ENTRY_5 "*C/ingress-physical-channel!merge=2", full, full, bare,
         of_bare("'ingress-physical-channel': [2]"), ""},
        {"replace value", ENTRY_5 "*C/ingress-physical-channel!remove=2 *C/ingress-physical-channel!merge=2", full,
         full, bare, of_bare("'ingress-physical-channel': [2]"), ""},
        {"delete value", ENTRY_5 "*C/ingress-physical-channel!delete=2", full,
         of_full("{'channel-index': 5, 'description': 'old', 'ingress-physical-channel': [1],"
                 " 'ethernet': {'client-als': 'ethernet', 'als-delay': 10}}"),
         bare, bare, "data-missing ingress-physical-channel " PATH_5 "/ingress-physical-channel"},
        {"remove value", ENTRY_5 "*C/ingress-physical-channel!remove=2", full,
         of_full("{'channel-index': 5, 'description': 'old', 'ingress-physical-channel': [1],"
                 " 'ethernet': {'client-als': 'ethernet', 'als-delay': 10}}"),
         bare, bare, ""},
    };
    for (const auto &row : rows) {
        device::store present(with_channels(row.present));
        EXPECT_EQ(outcome_of(present, row.edit), "") << row.operation_and_kind;
        EXPECT_EQ(shown(present.held().config), shown(with_channels(row.after).config)) << row.operation_and_kind;

        device::store absent(with_channels(row.absent));
        EXPECT_EQ(outcome_of(absent, row.edit), row.refusal) << row.operation_and_kind << " of what is not there";
        EXPECT_EQ(shown(absent.held().config), shown(with_channels(row.after_absent).config)) << row.operation_and_kind;
    }
}

constexpr char with_assignments[] =
    "{'channel-index': 5, 'description': 'five', 'logical-channel-assignments': {'logical-channel-assignment': ["
    "{'assignment-index': 1, 'allocation': 100}, {'assignment-index': 2, 'allocation': 200}]}}";

TEST(store, edits_by_the_rules_of_entries_leaves_and_sources) {
    const struct {
        const char *edit, *before, *after;
    } rows[] = {
        // Entries that are only opened leave nothing behind; one whose key came with a source is made.
        {"*C C/channel-index=5", "", ""},
        {"*C C/channel-index=5 C/description=x", "", ""},
        {"*C C/channel-index=5 *A A/assignment-index=1", "", ""},
        {"*C C/channel-index!merge=5", "", "{'channel-index': 5}"},
        {ENTRY_5 "*A A/assignment-index!merge=1", "",
         "{'channel-index': 5, 'logical-channel-assignments': {'logical-channel-assignment': [{'assignment-index': "
         "1}]}}"},
        {ENTRY_5 "C/description!remove", "", ""},
        {ENTRY_5 "C/ethernet/client-als!remove=ethernet", "", ""},
        {"*C C/channel-index!merge=0005", "{'channel-index': 5, 'description': 'x'}",
         "{'channel-index': 5, 'description': 'x'}"},
        // A leaf without source asks nothing, an empty text is a value.
        {"*C C/channel-index!merge=5 C/description= C/admin-state!merge=enable", "{'channel-index': 5}",
         "{'channel-index': 5, 'admin-state': 'enable'}"},
        {ENTRY_5 "C/description!merge=", "", "{'channel-index': 5, 'description': ''}"},
        {ENTRY_5 "C/ethernet/als-delay!merge=+007", "", "{'channel-index': 5, 'ethernet': {'als-delay': 7}}"},
        // A delete with a value writes it, unless the leaf goes with what is above it.
        {ENTRY_5 "C/ethernet/client-als!delete=ethernet", "{'channel-index': 5, 'ethernet': {'client-als': 'x'}}",
         "{'channel-index': 5, 'ethernet': {'client-als': 'ethernet'}}"},
        {"*C!remove C/channel-index!remove=5 C/ethernet/client-als!remove=ethernet",
         "{'channel-index': 5, 'ethernet': {'client-als': 'x'}}", ""},
        {ENTRY_5 "C/ethernet!delete C/ethernet/client-als!delete=ethernet",
         "{'channel-index': 5, 'ethernet': {'client-als': 'x'}}", "{'channel-index': 5}"},
        // All values of a leaf-list, and then one.
        {ENTRY_5 "*C/ingress-physical-channel!remove *C/ingress-physical-channel!merge=3",
         "{'channel-index': 5, 'ingress-physical-channel': [1, 2]}",
         "{'channel-index': 5, 'ingress-physical-channel': [3]}"},
        {ENTRY_5 "*C/ingress-physical-channel!merge=3 *C/ingress-physical-channel!merge=1",
         "{'channel-index': 5, 'ingress-physical-channel': [2]}",
         "{'channel-index': 5, 'ingress-physical-channel': [1, 2, 3]}"},
        // The later of two adds stands, in both orders; below a removed node things are made again.
        {ENTRY_5 "C/description!merge=x C/description!remove", "{'channel-index': 5, 'description': 'y'}",
         "{'channel-index': 5}"},
        {"*C!delete C/channel-index!delete=5 C/description!delete C/admin-state!merge=enable",
         "{'channel-index': 5, 'description': 'y'}", "{'channel-index': 5, 'admin-state': 'enable'}"},
        {ENTRY_5 "C/description!merge=x *C!delete C/channel-index!delete=5", "", ""},
        // Without keys: all entries of their parent.
        {"*C!remove C/description!remove", "{'channel-index': 5}, {'channel-index': 6}", ""},
        {"*C!delete", "{'channel-index': 5}, {'channel-index': 6}", ""},
        {ENTRY_5 "*A!remove", with_assignments, "{'channel-index': 5, 'description': 'five'}"},
        {ENTRY_5 "*A!remove A/assignment-index!remove=1", with_assignments,
         "{'channel-index': 5, 'description': 'five', 'logical-channel-assignments': {'logical-channel-assignment': ["
         "{'assignment-index': 2, 'allocation': 200}]}}"},
        {"/logical-channels!remove", with_assignments, ""},
        {"/logical-channels!delete", with_assignments, ""},
        {ENTRY_5 "C/logical-channel-assignments!delete", with_assignments,
         "{'channel-index': 5, 'description': 'five'}"},
        // An entry that was removed as a whole is made of nothing but what is merged then.
        {"*C!replace C/channel-index!replace=5 C/admin-state!replace=enable", with_assignments,
         "{'channel-index': 5, 'admin-state': 'enable'}"},
        // Lists of operational modules that a walk opens on its way.
        {"*C C/channel-index!merge=5 */otu/controllers/controller", "", "{'channel-index': 5}"},
    };
    for (const auto &row : rows) {
        device::store store(with_channels(row.before));
        EXPECT_EQ(outcome_of(store, row.edit), "") << row.edit;
        EXPECT_EQ(shown(store.held().config), shown(with_channels(row.after).config)) << row.edit;
    }
}

TEST(store, refuses_an_edit_as_a_whole) {
    const struct {
        const char *edit, *refusal;
    } rows[] = {
        {"C/admin-state!merge", "invalid-value admin-state " PATH_5 "/admin-state"},
        {"C/admin-state!replace", "invalid-value admin-state " PATH_5 "/admin-state"},
        {"*C/ingress-physical-channel!merge",
         "invalid-value ingress-physical-channel " PATH_5 "/ingress-physical-channel"},
        {"C/ethernet/als-delay!merge=soon", "invalid-value als-delay " PATH_5 "/ethernet/als-delay"},
        {"C/ethernet/als-delay!merge=", "invalid-value als-delay " PATH_5 "/ethernet/als-delay"},
        {"C/otn/tti-msg-expected!delete", "data-missing tti-msg-expected " PATH_5 "/otn/tti-msg-expected"},
        {"*C/ingress-physical-channel!delete=7",
         "data-missing ingress-physical-channel " PATH_5 "/ingress-physical-channel"},
        {"*C/ingress-physical-channel!delete",
         "data-missing ingress-physical-channel " PATH_5 "/ingress-physical-channel"},
        {"C/shoe-size!merge=44", "unknown-element shoe-size " PATH_5 "/shoe-size"},
        {"/shoes/size!merge=44", "unknown-element shoes /shoes"},
        {"*/otu/controllers/controller!delete", "operation-not-supported otu /otu"},
        {"*C C/channel-index!merge=x C/description!merge=y",
         "invalid-value channel-index /logical-channels/channel[channel-index='x']/channel-index"},
        {"*C C/description!merge=y", "missing-element channel-index /logical-channels/channel/channel-index"},
        {"*C C/description!remove", "missing-element channel-index /logical-channels/channel/channel-index"},
        {"*C!remove C/description!merge=y", "missing-element channel-index /logical-channels/channel/channel-index"},
        {"*C C/channel-index!merge=9 C/description!delete",
         "data-missing description /logical-channels/channel[channel-index='9']/description"},
        {"*C C/channel-index!merge=9 *A!delete A/assignment-index!delete=1",
         "data-missing logical-channel-assignment /logical-channels/channel[channel-index='9']"
         "/logical-channel-assignments/logical-channel-assignment[assignment-index='1']"},
        {"*C C/channel-index!merge=9 C/shoe-size!merge=44",
         "unknown-element shoe-size /logical-channels/channel[channel-index='9']/shoe-size"},
        {"*A!delete A/assignment-index!delete=3",
         "data-missing logical-channel-assignment " PATH_5
         "/logical-channel-assignments/logical-channel-assignment[assignment-index='3']"},
    };
    // Each comes behind changes of an entry that is there, of one that is new, and a removal.
    const std::string before = "*C!remove C/channel-index!remove=6 *C C/channel-index!merge=7 C/description!merge=new "
                               "*C C/channel-index!merge=5 C/description!merge=changed *A!remove "
                               "A/assignment-index!remove=1 ";
    const device::description as_it_was =
        with_channels(std::string(with_assignments) + ", {'channel-index': 6, 'description': 'six'}");
    for (const auto &row : rows) {
        device::store store(as_it_was);
        EXPECT_EQ(outcome_of(store, before + row.edit), row.refusal);
        EXPECT_EQ(shown(store.held().config), shown(as_it_was.config)) << row.edit;
        EXPECT_TRUE(store.held() == as_it_was) << row.edit;
    }
    device::store empty(device::parse("{}", "a.json"));
    EXPECT_EQ(outcome_of(empty, before + "C/admin-state!merge"), "invalid-value admin-state " PATH_5 "/admin-state");
    EXPECT_TRUE(empty.held() == device::description());
    EXPECT_EQ(outcome_of(empty, "*C!delete"), "data-missing channel /logical-channels/channel");
}

std::string text_below(const zmf_datatree *nodes, uint32_t count, const char *ns) {
    std::string text;
    for (const zmf_datatree *each = nodes; each != nodes + count; ++each) {
        text += (text.empty() ? "" : " ") + std::string(each->tag);
        EXPECT_STREQ(each->ns, ns);
        EXPECT_EQ(each->op_explicit, 0u);
        if (each->has_value)
            text += "=" + std::string(each->value);
        if (each->has_children)
            text += "{" + text_below(each->children, each->child_count, ns) + "}";
    }
    return text;
}

std::string text_of(const zmf_datatree *tops, uint32_t count) {
    std::string text;
    for (const zmf_datatree *each = tops; each != tops + count; ++each) {
        const schema::native_node *top = schema::native_child(nullptr, each->tag);
        text += (text.empty() ? "" : " ") + text_below(each, 1, schema::ns_of_module(top->module));
    }
    return text;
}

TEST(store, answers_what_is_selected) {
    const device::store store(device::parse(
        json_of("{'config': {'Corvane-terminal-device-cfg:optical-channels': {'optical-channel': [{'frequency': "
                "'193100000', 'ifname': '0_1-OpticalChannel0_1_0_2'}]},"
                "'Corvane-terminal-device-cfg:logical-channels': {'channel': ["
                "{'otn': {'tti-msg-transmit': 't'}, 'channel-index': 20, 'description': 'd20'},"
                "{'channel-index': 100, 'admin-state': 'enable', 'ingress-physical-channel': [2, 1]},"
                "{'description': 'd3', 'channel-index': 3, 'logical-channel-assignments': "
                "{'logical-channel-assignment': [{'assignment-index': 2}, {'assignment-index': 1, 'allocation': 10}]},"
                "'ethernet': {'als-delay': 10, 'client-als': 'ethernet'}}]}}}"),
        "a.json"));
    const std::string three =
        "channel{channel-index=3 description=d3 ethernet{client-als=ethernet als-delay=10} "
        "logical-channel-assignments{logical-channel-assignment{assignment-index=1 allocation=10} "
        "logical-channel-assignment{assignment-index=2}}}";
    const std::string twenty = "channel{channel-index=20 description=d20 otn{tti-msg-transmit=t}}";
    const std::string hundred =
        "channel{channel-index=100 admin-state=enable ingress-physical-channel=1 ingress-physical-channel=2}";
    const std::string optical =
        "optical-channels{optical-channel{ifname=0_1-OpticalChannel0_1_0_2 frequency=193100000}}";
    const auto in_channels = [](const std::string &entries) { return "logical-channels{" + entries + "}"; };
    const struct {
        const char *request;
        std::string answer;
    } rows[] = {
        {"", ""},
        {"/logical-channels", in_channels(three + " " + twenty + " " + hundred)},
        {"/optical-channels /logical-channels",
         in_channels(three + " " + twenty + " " + hundred) + " " + optical}, // in model order
        // Entries: by key, without one, several of them, opened and never filled.
        {"*C C/channel-index=20", in_channels(twenty)},
        {"*C C/channel-index=020", in_channels(twenty)},
        {"*C C/channel-index=x", ""},
        {"*C C/channel-index=7", ""},
        {"*C C/channel-index=100 *C C/channel-index=20", in_channels(twenty + " " + hundred)},
        {"*C C/channel-index", in_channels(three + " " + twenty + " " + hundred)},
        {"*C C/channel-index=", in_channels(three + " " + twenty + " " + hundred)},
        {"*C", ""},
        {"*C C/channel-index=3 *A", in_channels("channel{channel-index=3}")},
        // Every other leaf is a selection, whatever its value; keys come with what is selected.
        {"*C C/description=other",
         in_channels("channel{channel-index=3 description=d3} channel{channel-index=20 description=d20} "
                     "channel{channel-index=100}")},
        {"*C C/channel-index=100 C/admin-state=", in_channels("channel{channel-index=100 admin-state=enable}")},
        {"*C C/channel-index=100 *C/ingress-physical-channel=1",
         in_channels("channel{channel-index=100 ingress-physical-channel=1 ingress-physical-channel=2}")},
        {"*C C/channel-index=3 C/ethernet", in_channels("channel{channel-index=3 ethernet{client-als=ethernet "
                                                        "als-delay=10}}")},
        {"*C C/channel-index=3 C/ethernet/als-delay", in_channels("channel{channel-index=3 ethernet{als-delay=10}}")},
        {"*C C/channel-index=20 C/ethernet/als-delay", in_channels("channel{channel-index=20}")},
        {"*C C/channel-index=3 *A A/allocation",
         in_channels(
             "channel{channel-index=3 logical-channel-assignments{logical-channel-assignment{assignment-index=1 "
             "allocation=10} logical-channel-assignment{assignment-index=2}}}")},
        {"*C *A A/assignment-index=2",
         in_channels(
             "channel{channel-index=3 logical-channel-assignments{logical-channel-assignment{assignment-index=2}}"
             "} channel{channel-index=20} channel{channel-index=100}")},
        // Unions: of one entry asked for twice, and of one entry with all of them.
        {"*C C/channel-index=20 C/description *C C/channel-index=20 C/otn",
         in_channels("channel{channel-index=20 description=d20 otn{tti-msg-transmit=t}}")},
        {"*C C/channel-index=3 *A A/assignment-index=1 *C C/description",
         in_channels("channel{channel-index=3 description=d3 logical-channel-assignments{logical-channel-assignment{"
                     "assignment-index=1 allocation=10}}} channel{channel-index=20 description=d20} "
                     "channel{channel-index=100}")},
        {"C/logical-channel-assignments *C C/channel-index=3 *A A/assignment-index=1",
         in_channels(
             "channel{channel-index=3 logical-channel-assignments{logical-channel-assignment{assignment-index=1 "
             "allocation=10} logical-channel-assignment{assignment-index=2}}} channel{channel-index=20} "
             "channel{channel-index=100}")},
        // What the device does not know, or asks only for operational data.
        {"/shoes/size /logical-channels/shoes */otu/controllers/controller /otu/controllers/controller/controller-name",
         ""},
        {"*/optical-channels/optical-channel /optical-channels/optical-channel/ifname=0_1-OpticalChannel0_1_0_2",
         optical},
    };
    for (const auto &row : rows) {
        const tree_of_adds request(row.request);
        for (const bool with_operational : {false, true}) {
            const zmf::fixed_tree answer = store.answer(request.tree(), with_operational);
            EXPECT_EQ(text_of(answer.tops(), answer.count()), row.answer) << row.request;
        }
    }
}

// What a device reports is asked only if that is wanted, and then by the rules of configuration.
TEST(store, answers_operational_data_where_it_is_asked_for) {
    const device::store store(device::parse(
        json_of("{'config': {'Corvane-terminal-device-cfg:logical-channels': {'channel': [{'channel-index': 3}]}},"
                "'operational': {'Corvane-controller-optics-oper:optics-oper': {'optics-ports': {'optics-port': ["
                "{'name': 'O2', 'optics-info': {'cd': '5'}},"
                "{'name': 'O1', 'optics-info': {'snr': '', 'cd': '-7'},"
                " 'optics-lanes': {'optics-lane': [{'number': 2, 'transmit-power': '-120'},"
                "                                  {'number': 1, 'receive-signal-power': '-350'}]}}]}},"
                "'Corvane-terminal-device-oper:optical-interface': {'operational-modes': {'operational-mode': ["
                "{'mode-id': 10}, {'mode-id': 9, 'operational-mode-attributes': {'vendor-id': 'V'}}]}}}}"),
        "a.json"));
    const std::string channels = "logical-channels{channel{channel-index=3}}";
    const std::string lanes1 = "optics-lanes{optics-lane{number=1} optics-lane{number=2 transmit-power=-120}}";
    const auto ports = [](const std::string &entries) { return "optics-oper{optics-ports{" + entries + "}}"; };
    const auto modes = [](const std::string &entries) {
        return "optical-interface{operational-modes{" + entries + "}}";
    };
#define PORT "/optics-oper/optics-ports/optics-port"
#define MODE "/optical-interface/operational-modes/operational-mode"
    const struct {
        const char *request;
        std::string configuration, operational;
    } rows[] = {
        {"*C C/channel-index *" PORT " " PORT "/name=O2", channels,
         channels + " " + ports("optics-port{name=O2 optics-info{cd=5}}")},
        {PORT "/optics-info/cd *" MODE " " MODE "/mode-id=9", "",
         ports("optics-port{name=O1 optics-info{cd=-7}} optics-port{name=O2 optics-info{cd=5}}") + " " +
             modes("operational-mode{mode-id=9 operational-mode-attributes{vendor-id=V}}")},
        {"*" PORT " " PORT "/name=O1 " PORT "/optics-lanes/optics-lane/transmit-power=-1 " PORT "/optics-info/snr", "",
         ports("optics-port{name=O1 optics-info{snr=} " + lanes1 + "}")},
        {MODE "/mode-id", "",
         modes("operational-mode{mode-id=9 operational-mode-attributes{vendor-id=V}} operational-mode{mode-id=10}")},
        {"*" PORT, "", ""},
    };
    for (const auto &row : rows) {
        const tree_of_adds request(row.request);
        for (const bool with_operational : {false, true}) {
            const zmf::fixed_tree answer = store.answer(request.tree(), with_operational);
            EXPECT_EQ(text_of(answer.tops(), answer.count()), with_operational ? row.operational : row.configuration)
                << row.request;
        }
    }
}

// Lists without keys: entries as they stand, each with what tells it whatever is asked of it.
TEST(store, answers_entries_without_keys) {
#define DETAIL "/lldp/nodes/node/neighbors/details/detail"
#define NEIGHBOR DETAIL "/lldp-neighbor"
#define TLV NEIGHBOR "/mib/org-def-tlv-list/lldp-org-def-tlv-entry"
    const device::description described = device::parse(
        json_of("{'operational': {'Corvane-ethernet-lldp-oper:lldp': {'nodes': {'node': [{'node-name': 'N',"
                "'neighbors': {'details': {'detail': ["
                "{'interface-name': 'I2', 'device-id': 'd1', 'lldp-neighbor': ["
                "{'device-id': 'd1', 'port-id-detail': 'p9', 'hold-time': 9}]},"
                "{'interface-name': 'I1', 'device-id': 'd2', 'lldp-neighbor': [{'hold-time': 7}]},"
                "{'interface-name': 'I1', 'device-id': 'd1', 'lldp-neighbor': ["
                "{'port-id-detail': 'p2', 'mib': {'org-def-tlv-list': {'lldp-org-def-tlv-entry': ["
                "{'oui': 'b'}, {'oui': 'a', 'tlv-subtype': 1}, {'oui': 'b'}]}}},"
                "{'hold-time': 120, 'port-id-detail': 'p1', 'device-id': 'd1'}]}]}}}]}}}}"),
        "a.json");
    EXPECT_EQ(device::parse(device::to_json(described), "saved.json"), described);
    const device::store store(described);
    const auto details = [](const std::string &entries) {
        return "lldp{nodes{node{node-name=N neighbors{details{" + entries + "}}}}}";
    };
    const auto detail = [](const std::string &keys, const std::string &neighbors) {
        return "detail{" + keys + " " + neighbors + "}";
    };
    const std::string i1d1 = "interface-name=I1 device-id=d1", i1d2 = "interface-name=I1 device-id=d2",
                      i2d1 = "interface-name=I2 device-id=d1";
    const struct {
        const char *request;
        std::string answer;
    } rows[] = {
        {"*" NEIGHBOR " " NEIGHBOR "/hold-time",
         details(detail(i1d1, "lldp-neighbor{port-id-detail=p2} "
                              "lldp-neighbor{device-id=d1 port-id-detail=p1 hold-time=120}") +
                 " " + detail(i1d2, "lldp-neighbor{hold-time=7}") + " " +
                 detail(i2d1, "lldp-neighbor{device-id=d1 port-id-detail=p9 hold-time=9}"))},
        // By one key of two: the entries of every interface.
        {"*" NEIGHBOR " " NEIGHBOR "/chassis-id " DETAIL "/device-id=d1",
         details(detail(i1d1, "lldp-neighbor{port-id-detail=p2} lldp-neighbor{device-id=d1 port-id-detail=p1}") + " " +
                 detail(i2d1, "lldp-neighbor{device-id=d1 port-id-detail=p9}"))},
        {"*" NEIGHBOR " " NEIGHBOR "/hold-time " DETAIL "/device-id=d2",
         details(detail(i1d2, "lldp-neighbor{hold-time=7}"))},
        {"*" NEIGHBOR " " NEIGHBOR "/hold-time " DETAIL "/device-id=d3", "lldp{nodes{node{node-name=N}}}"},
        {"*" NEIGHBOR " *" TLV " " TLV "/oui=a " DETAIL "/device-id=d1 " DETAIL "/interface-name=I1",
         details(detail(
             i1d1, "lldp-neighbor{mib{org-def-tlv-list{lldp-org-def-tlv-entry{oui=b} "
                   "lldp-org-def-tlv-entry{oui=a tlv-subtype=1} lldp-org-def-tlv-entry{oui=b}}} port-id-detail=p2} "
                   "lldp-neighbor{device-id=d1 port-id-detail=p1}"))},
    };
    for (const auto &row : rows) {
        const tree_of_adds request(row.request);
        const zmf::fixed_tree answer = store.answer(request.tree(), true);
        EXPECT_EQ(text_of(answer.tops(), answer.count()), row.answer) << row.request;
    }
}

// Bins are known by number; entries of a list without keys by their place, and none of their leaves restricts.
TEST(store, answers_bins_and_history) {
    const std::string counts = "{'count': [{'data': '3'}, {'data': '1'}]}";
    const std::string json =
        "'operational': {'Corvane-pmengine-oper:performance-management': {'ethernet': {'ethernet-ports': "
        "{'ethernet-port': [{'name': 'E1', 'ethernet-prev': {'ethernet-prev-flex-interval': "
        "{'ethernet-prev-flex-interval-pcses': {'ethernet-prev-flex-interval-pcs': ["
        "{'slot-number': 10, 'cumulative-bip': '5'}, {'slot-number': 2, 'es-ne': " +
        counts +
        "}]}}}}]}}},"
        "'Corvane-pmengine-oper:performance-management-history': {'global': {'periodic': {'otu-history': "
        "{'otu-port-histories': {'otu-port-history': [{'name': 'C1', 'otu-second30-history': "
        "{'otu-second30otn-histories': {'otu-second30otn-history': [{'number': 7, "
        "'otu-second30otn-time-line-instances': {'otu-second30otn-time-line-instance': ["
        "{'number': 2, 'es-ne': {'data': '22'}}, {'number': 1, 'es-ne': {'data': '11'}, 'bbe-ne': {'data': '0'}}"
        "]}}]}}}]}}}}}}";
#define PCS                                                                                                            \
    "/performance-management/ethernet/ethernet-ports/ethernet-port/ethernet-prev/ethernet-prev-flex-interval/"         \
    "ethernet-prev-flex-interval-pcses/ethernet-prev-flex-interval-pcs"
#define OTN                                                                                                            \
    "/performance-management-history/global/periodic/otu-history/otu-port-histories/otu-port-history/"                 \
    "otu-second30-history/otu-second30otn-histories/otu-second30otn-history"
#define LINE OTN "/otu-second30otn-time-line-instances/otu-second30otn-time-line-instance"
    const auto pcs = [](const std::string &entries) {
        return "performance-management{ethernet{ethernet-ports{ethernet-port{name=E1 ethernet-prev{"
               "ethernet-prev-flex-interval{ethernet-prev-flex-interval-pcses{" +
               entries + "}}}}}}}";
    };
    const auto otn = [](const std::string &entry) {
        return "performance-management-history{global{periodic{otu-history{otu-port-histories{otu-port-history{name=C1 "
               "otu-second30-history{otu-second30otn-histories{otu-second30otn-history{" +
               entry + "}}}}}}}}}";
    };
    const auto line = [](const std::string &entries) { return "otu-second30otn-time-line-instances{" + entries + "}"; };
    const std::string one = "otu-second30otn-time-line-instance{number=1 es-ne{data=11} bbe-ne{data=0}}";
    const struct {
        const char *request;
        std::string bins, history;
    } rows[] = {
        {PCS "/es-ne/count/data " PCS "/cumulative-bip",
         pcs("ethernet-prev-flex-interval-pcs{slot-number=2 es-ne{count{data=3} count{data=1}}} "
             "ethernet-prev-flex-interval-pcs{slot-number=10 cumulative-bip=5}"),
         ""},
        {PCS "/slot-number=2", pcs("ethernet-prev-flex-interval-pcs{slot-number=2 es-ne{count{data=3} count{data=1}}}"),
         ""},
        {OTN "/number=0 " LINE "/number=1", otn("number=7 " + line(one)), otn("number=7 " + line(one))},
        {OTN "/number=0", otn("number=7"), otn("number=7")},
        {LINE "/es-ne/data",
         otn(line("otu-second30otn-time-line-instance{number=1 es-ne{data=11}} "
                  "otu-second30otn-time-line-instance{number=2 es-ne{data=22}}")),
         otn(line("otu-second30otn-time-line-instance{number=1 es-ne{data=11}} "
                  "otu-second30otn-time-line-instance{number=2 es-ne{data=22}}"))},
    };
    for (const std::string mode : {"true", "false"}) {
        const device::description said = device::parse(json_of("{'flex-bins': " + mode + ", " + json + "}"), "a.json");
        EXPECT_TRUE(device::parse(device::to_json(said), "saved") == said);
        const device::store store(said);
        for (const auto &row : rows) {
            const tree_of_adds request(row.request);
            const zmf::fixed_tree answer = store.answer(request.tree(), true);
            EXPECT_EQ(text_of(answer.tops(), answer.count()), mode == "true" ? row.bins : row.history) << row.request;
        }
    }
}

std::string reason(int error) {
    return std::strerror(error);
}

// A directory of its own, empty at first.
class save : public testing::Test {
protected:
    void SetUp() override { ASSERT_NE(mkdtemp(directory_.data()), nullptr); }
    void TearDown() override {
        for (const std::string &name : names())
            ::unlink(path(name).c_str());
        ::rmdir(directory_.c_str());
    }

    std::string path(const std::string &name) const { return directory_ + "/" + name; }

    std::vector<std::string> names() const {
        std::vector<std::string> found;
        DIR *open = ::opendir(directory_.c_str());
        while (const dirent *each = ::readdir(open))
            if (each->d_name[0] != '.')
                found.emplace_back(each->d_name);
        ::closedir(open);
        return found;
    }

    static std::string content(const std::string &file) {
        std::ifstream in(file);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    std::string directory_ = testing::TempDir() + "saveXXXXXX";
};

TEST_F(save, writes_what_is_read_again) {
    device::description all = with_channels(std::string(with_assignments) +
                                            ", {'channel-index': 6, 'description': 'a \\\" \\\\ \\n \\u0001 \\u00e4', "
                                            "'ingress-physical-channel': [3, -1]}");
    all.router_type = 19;
    all.optical_terminal_device = all.legacy_optical_terminal_device = true;
    all.interface_registry = false;
    all.channels = {{5, "CoherentDSP0/0/0/1"}, {100000, "\"\\"}};
    all.interfaces = {"Optics0/0/0/1", "Optics0/0/0/0"};
    for (const device::description &each : {all, device::description(), device::lab()}) {
        device::store(each).save(path("device.json"));
        EXPECT_TRUE(device::read_file(path("device.json")) == each) << content(path("device.json"));
    }
    EXPECT_EQ(names(), std::vector<std::string>{"device.json"});
}

TEST_F(save, keeps_permissions_and_links) {
    std::ofstream(path("real.json")) << "{}";
    ASSERT_EQ(::chmod(path("real.json").c_str(), 0640), 0);
    ASSERT_EQ(::symlink("real.json", path("link.json").c_str()), 0);
    device::store(device::lab()).save(path("link.json"));
    struct stat link {
    }, real{};
    ASSERT_EQ(::lstat(path("link.json").c_str(), &link), 0);
    ASSERT_EQ(::stat(path("real.json").c_str(), &real), 0);
    EXPECT_TRUE(S_ISLNK(link.st_mode));
    EXPECT_EQ(real.st_mode & 07777, 0640u);
    EXPECT_TRUE(device::read_file(path("real.json")) == device::lab());
}

TEST_F(save, that_fails_leaves_the_old_file_and_nothing_else) {
    const device::store store(device::lab());
    const auto refusal_of = [&store](const std::string &file) -> std::string {
        try {
            store.save(file);
            return "saved";
        } catch (const device::description_error &error) {
            EXPECT_EQ(error.file, file);
            EXPECT_EQ(error.line, 0u);
            return error.text;
        }
    };
    std::ofstream(path("device.json")) << "old";
    EXPECT_EQ(refusal_of(path("nowhere/device.json")), reason(ENOENT));
    EXPECT_EQ(refusal_of(path("device.json/device.json")), reason(ENOTDIR));
    EXPECT_EQ(refusal_of("/dev/null"), reason(EINVAL));
    EXPECT_EQ(refusal_of(directory_), reason(EINVAL));

    // A disk that is full after 100 bytes.
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto old_handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{100, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::string refusal = refusal_of(path("device.json"));
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, old_handler);
    EXPECT_EQ(refusal, reason(EFBIG));

    // A directory that may not be written to; root would not be stopped by it.
    constexpr uid_t nobody = 65534;
    const uid_t user = ::geteuid();
    ASSERT_EQ(::chmod(directory_.c_str(), 0555), 0);
    ASSERT_EQ(::seteuid(user == 0 ? nobody : user), 0);
    const std::string refused = refusal_of(path("device.json"));
    ASSERT_EQ(::seteuid(user), 0);
    ASSERT_EQ(::chmod(directory_.c_str(), 0755), 0);
    EXPECT_EQ(refused, reason(EACCES));

    EXPECT_EQ(content(path("device.json")), "old");
    EXPECT_EQ(names(), std::vector<std::string>{"device.json"});
}

} // namespace
