// Sessions of the stand-in: walk record, positions, questions, text helpers, call log, faults, and how failures are
// told.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "namespaces.h"
#include "walk/request_text.h"
#include "zmf/plugin.h"
#include "zmf/session.h"

namespace {

constexpr char channel_path[] = "/terminal-device/logical-channels/channel";
constexpr char oc_ns[] = ZMF_NS_OC_TERMINAL_DEVICE;
constexpr char cfg_ns[] = ZMF_NS_CORVANE("Corvane-terminal-device-cfg");

void push(zmf::session &s, const zmf_datatree &node, unsigned kind) {
    zmf_map_add_to_node_hierarchy(s.context(), &node, kind);
}
void pop(zmf::session &s, const zmf_datatree &node) {
    zmf_map_remove_from_node_hierarchy(s.context(), &node);
}

// "5", or the status name.
std::string info(zmf::session &s, const char *list_path, const char *key) {
    const char *text = "unset";
    const rcode status = zmf_map_get_node_info(s.context(), list_path, key, &text);
    if (status == RC_OK)
        return text;
    EXPECT_EQ(text, nullptr);
    return zmf::status_name(status);
}

TEST(zmf_positions, key_of_the_current_entry) {
    const struct {
        const char *entry, *answer;
    } rows[] = {
        {"channel{index=5 config}", "5"},
        {"channel{config{index=6} index=5}", "5"},
        {"channel{index=}", ""},
        {"channel{index}", "RC_ZMF_NO_SUCH_ENTRY"},
        {"channel{config{index=5}}", "RC_ZMF_NO_SUCH_ENTRY"},
        {"channel", "RC_ZMF_NO_SUCH_ENTRY"},
        {"channel{?3}", "RC_ZMF_NO_SUCH_ENTRY"},
    };
    for (const auto &row : rows) {
        request_text request(row.entry, oc_ns);
        zmf::session s(OP_GET);
        EXPECT_EQ(zmf_map_update_current_list_node(s.context(), channel_path), zmf::rc_no_position);
        EXPECT_EQ(info(s, channel_path, "index"), "RC_ZMF_NO_SUCH_ENTRY");
        push(s, *request.top(), ZMF_HIER_LIST);
        EXPECT_EQ(zmf_map_update_current_list_node(s.context(), channel_path), RC_OK);
        EXPECT_EQ(info(s, channel_path, "index"), row.answer) << row.entry;
    }
}

TEST(zmf_positions, hidden_children_still_answer) {
    request_text request("channel{index=5 config}", oc_ns);
    zmf::session s(OP_GET);
    zmf_datatree &channel = *request.top();
    const zmf_datatree before = channel;
    push(s, channel, ZMF_HIER_LIST);
    zmf_map_update_current_list_node(s.context(), channel_path);
    channel.children = nullptr;
    channel.child_count = 0;
    channel.has_children = 0;
    EXPECT_EQ(info(s, channel_path, "index"), "5");
    // An inner list under a fall-through gets the entry without children: it has no key.
    EXPECT_EQ(zmf_map_update_current_list_node(s.context(), "/inner"), RC_OK);
    EXPECT_EQ(info(s, "/inner", "index"), "RC_ZMF_NO_SUCH_ENTRY");
    channel = before;
    EXPECT_EQ(info(s, "/inner", "index"), "5");
}

TEST(zmf_positions, popping_a_list_gives_both_kinds_back) {
    request_text request("box{outer{k=1 inner{k=2} inner{k=3}}}", oc_ns);
    zmf_datatree &box = *request.top();
    zmf_datatree &outer = box.children[0];
    zmf::session s(OP_EDIT);
    zmf::output_tree tree;
    const auto add = [&](const char *path, bool list) {
        EXPECT_EQ(zmf_map_datatree_add_path_flagged(s.context(), tree.root(), path, cfg_ns, nullptr, nullptr, nullptr,
                                                    list, 0),
                  RC_OK);
    };
    push(s, box, ZMF_HIER_CONTAINER);
    push(s, outer, ZMF_HIER_LIST);
    zmf_map_update_current_list_node(s.context(), "/o");
    add("/o", true);
    add("/o/first", false);
    for (uint32_t i : {1u, 2u}) {
        push(s, outer.children[i], ZMF_HIER_LIST);
        zmf_map_update_current_list_node(s.context(), "/o/i");
        zmf_map_update_current_list_node(s.context(), "/o");
        EXPECT_EQ(info(s, "/o", "k"), i == 1 ? "2" : "3");
        add("/o", true); // twice in one entry: one entry as long as it is empty, and one to give back
        add("/o", true);
        add("/o/x", false);
        add("/o", true);
        add("/o/y", false);
        pop(s, outer.children[i]);
        EXPECT_EQ(info(s, "/o", "k"), "1");
        EXPECT_EQ(info(s, "/o/i", "k"), "RC_ZMF_NO_SUCH_ENTRY");
    }
    add("/o/last", false);
    pop(s, outer);
    EXPECT_EQ(info(s, "/o", "k"), "RC_ZMF_NO_SUCH_ENTRY");
    add("/o/newest", false); // no entry is current any more
    pop(s, box);
    EXPECT_EQ(s.hierarchy_depth(), 0u);
    EXPECT_EQ(s.imbalances(), 0u);

    std::string shape;
    for (zmf::output_node o = tree.top().first_child(); o; o = o.next_sibling()) {
        shape += "o(";
        for (zmf::output_node leaf = o.first_child(); leaf; leaf = leaf.next_sibling())
            shape += std::string(" ") + leaf.tag();
        shape += " )";
    }
    EXPECT_EQ(shape, "o( first last )o( x )o( y )o( x )o( y newest )");
}

// What one entry of a request opened in a native list is not filled by the next one.
TEST(zmf_positions, entries_of_a_request_have_native_entries_of_their_own) {
    request_text request("box{outer{k=1} outer{k=2}}", oc_ns);
    zmf_datatree &box = *request.top();
    zmf::session s(OP_GET);
    zmf::output_tree tree;
    push(s, box, ZMF_HIER_CONTAINER);
    for (uint32_t i : {0u, 1u}) {
        push(s, box.children[i], ZMF_HIER_LIST);
        for (const auto &[path, list] : {std::pair("/logical-channels/channel", 1), // one that is opened, and others
                                         std::pair("/otu/controllers/controller/controller-name", 0),
                                         std::pair("/otu/controllers/controller/info/state", 0)})
            EXPECT_EQ(zmf_map_datatree_add_path_flagged(s.context(), tree.root(), path, cfg_ns,
                                                        list ? nullptr : (i == 0 ? "one" : "two"), nullptr, nullptr,
                                                        static_cast<unsigned>(list), 0),
                      RC_OK);
        pop(s, box.children[i]);
    }
    pop(s, box);
    std::string shown;
    for (zmf::output_node o = tree.find("/otu/controllers").first_child(); o; o = o.next_sibling())
        shown += std::string(o.first_child().value()) + " ";
    EXPECT_EQ(shown, "one two ");
}

TEST(zmf_positions, trees_and_sessions_may_end_in_any_order) {
    request_text request("l{k=1}", oc_ns);
    const auto add = [](zmf::session &s, zmf::output_tree &tree, const char *path, bool list) {
        zmf_map_datatree_add_path_flagged(s.context(), tree.root(), path, cfg_ns, nullptr, nullptr, nullptr, list, 0);
    };
    zmf::session first(OP_EDIT);
    zmf::output_tree lasting;
    push(first, *request.top(), ZMF_HIER_LIST);
    {
        zmf::output_tree passing;
        add(first, passing, "/l", true);
    }
    add(first, lasting, "/l", true);
    add(first, lasting, "/l/k", false);
    {
        zmf::session second(OP_EDIT); // takes the tree over, without a position in it
        add(second, lasting, "/l", true);
        add(second, lasting, "/l/k", false);
    }
    add(first, lasting, "/l", true);
    EXPECT_EQ(lasting.nodes(), 5u);
    pop(first, *request.top());
    first.reset();
    add(first, lasting, "/l", true);
    EXPECT_EQ(lasting.nodes(), 6u) << "after a reset no entry is current";
}

TEST(zmf_record, unbalanced_calls_are_counted) {
    request_text request("a{b{c}}", oc_ns);
    zmf_datatree &a = *request.top();
    zmf_datatree &b = a.children[0];
    zmf_datatree &c = b.children[0];
    zmf::session s(OP_EDIT);
    push(s, a, ZMF_HIER_CONTAINER);
    push(s, b, ZMF_HIER_LIST);
    pop(s, c);
    EXPECT_EQ(s.hierarchy_depth(), 2u);
    push(s, c, ZMF_HIER_CONTAINER);
    pop(s, b);
    EXPECT_EQ(s.hierarchy_depth(), 1u);
    pop(s, a);
    pop(s, a);
    EXPECT_EQ(s.hierarchy_depth(), 0u);
    EXPECT_EQ(s.imbalances(), 3u);
    for (int i = 0; i < 1000; ++i) // deeper than any request
        push(s, a, ZMF_HIER_LIST);
    EXPECT_EQ(s.hierarchy_depth(), 1000u);
}

TEST(zmf_record, itree_frames_keep_their_place) {
    zmf_datatree nodes[2]{};
    zmf::session s(OP_GET);
    zmf_itree_frame *frame = nullptr;
    zmf_map_util_itree_stack_push(s.context(), nodes, 2, nullptr);
    zmf_map_util_itree_stack_peak(s.context(), &frame);
    for (int i = 0; i < 100; ++i)
        zmf_map_util_itree_stack_push(s.context(), nullptr, 0, nullptr);
    EXPECT_EQ(zmf_map_util_itree_stack_size(s.context()), 101u);
    EXPECT_EQ(frame->nodes, nodes);
    EXPECT_EQ(frame->count, 2u);
    for (int i = 0; i < 102; ++i)
        zmf_map_util_itree_stack_pop(s.context());
    zmf_map_util_itree_stack_peak(s.context(), &frame);
    EXPECT_EQ(frame, nullptr);
    EXPECT_EQ(s.stack_size(), 0u);
    EXPECT_EQ(s.imbalances(), 1u);
}

TEST(zmf_request_keys, a_key_is_added_behind_the_children) {
    request_text request("tlv{state{value} x:y} tlv", oc_ns);
    zmf_datatree &entry = request.tops()[0];
    const zmf_datatree *old = entry.children;
    zmf::session s(OP_GET);
    const auto add = [&](zmf_datatree *to, const char *path, zmf_datatree **out, const char *value = nullptr) {
        return zmf_map_datatree_add_path_flagged(s.context(), to, path, oc_ns, value, nullptr, out, 0, 0);
    };
    zmf_datatree *key = nullptr;
    ASSERT_EQ(add(&entry, "oui", &key), RC_OK);
    ASSERT_EQ(entry.child_count, 3u);
    EXPECT_EQ(key, &entry.children[2]);
    EXPECT_STREQ(key->tag, "oui");
    EXPECT_STREQ(key->ns, oc_ns);
    EXPECT_FALSE(key->has_value || key->op_explicit || key->is_key);
    EXPECT_STREQ(old[0].tag, "state") << "the old array stays";
    EXPECT_EQ(old[0].children, entry.children[0].children) << "what is below is shared";

    key->is_key = 1;
    const zmf_datatree *grown = entry.children;
    ASSERT_EQ(add(&entry, "type", &key), RC_OK);
    EXPECT_EQ(entry.child_count, 4u);
    EXPECT_STREQ(grown[2].tag, "oui");
    EXPECT_TRUE(entry.children[2].is_key);
    ASSERT_EQ(add(&entry, "oui", &key, "7"), RC_OK);
    EXPECT_EQ(entry.child_count, 4u) << "a second add fills the first";
    EXPECT_STREQ(entry.children[2].value, "7");

    zmf_datatree &bare = request.tops()[1];
    ASSERT_EQ(add(&bare, "/oui", nullptr), RC_OK);
    EXPECT_TRUE(bare.has_children);
    EXPECT_EQ(bare.child_count, 1u);
    for (const char *path : {"a/b", "", "/", "a[k=1]"})
        EXPECT_EQ(add(&bare, path, nullptr), zmf::rc_bad_path) << path;
    s.limit(0);
    EXPECT_EQ(add(&bare, "type", nullptr), zmf::rc_too_big);
    EXPECT_EQ(bare.child_count, 1u);
}

TEST(zmf_questions, leafref_differs_only_when_both_have_values) {
    const struct {
        const char *entry;
        bool fails;
    } rows[] = {
        {"channel{index=5 config{index=5}}", false},
        {"channel{index=5 config{description=x index=6}}", true},
        {"channel{config{index=6} index=5}", true},
        {"channel{index=5 config{index=}}", true},
        {"channel{index=5 config{index}}", false},
        {"channel{index=5 config{description=6}}", false},
        {"channel{index=5 config}", false},
        {"channel{index=5 state{index=6}}", false},
        {"channel{index config{index=6}}", false},
        {"channel{config{index=6}}", false},
        {"channel", false},
    };
    for (const auto &row : rows) {
        request_text request(row.entry, oc_ns);
        zmf::session s(OP_EDIT);
        EXPECT_EQ(zmf_map_check_oc_leafref(s.context(), channel_path, "config", "index", request.top()),
                  row.fails ? zmf::rc_leafref_mismatch : RC_OK)
            << row.entry;
    }
}

// The last answers for long arrays are kept: they must not outlive a change.
TEST(zmf_questions, long_entries_are_searched_anew_when_they_change) {
    std::string text = "channel{";
    for (int i = 0; i < 200; ++i)
        text += "config ";
    request_text request(text + "index=5}", oc_ns);
    zmf::session s(OP_GET);
    push(s, *request.top(), ZMF_HIER_LIST);
    zmf_map_update_current_list_node(s.context(), channel_path);
    EXPECT_EQ(info(s, channel_path, "id"), "RC_ZMF_NO_SUCH_ENTRY");
    EXPECT_EQ(info(s, channel_path, "index"), "5");
    zmf_map_datatree_add_path_flagged(s.context(), request.top(), "id", oc_ns, "7", nullptr, nullptr, 0, 0);
    EXPECT_EQ(info(s, channel_path, "id"), "7");
    EXPECT_EQ(info(s, channel_path, "index"), "5");
}

TEST(zmf_questions, what_a_request_does_to_a_node) {
    const struct {
        uint32_t op;
        bool deletes;
    } rows[] = {{OP_MERGE, false}, {OP_REPLACE, false}, {2, false}, {OP_DELETE, true}, {OP_REMOVE, true}};
    for (uint32_t kind : {0u, 1u, 8u, 10u, 15u}) {
        zmf::session s(kind);
        for (const auto &row : rows) {
            zmf_datatree node{};
            node.op = row.op;
            EXPECT_EQ(zmf_map_is_request_delete(&node), row.deletes);
            EXPECT_EQ(zmf_map_is_request_add(s.context(), &node), kind != 0 && kind != 10 && !row.deletes);
        }
        EXPECT_FALSE(zmf_map_is_request_delete(nullptr));
        EXPECT_FALSE(zmf_map_is_request_add(s.context(), nullptr));
    }
    EXPECT_TRUE(zmf_map_do_these_match("a", std::string("a").c_str()));
    EXPECT_FALSE(zmf_map_do_these_match("a", "ab"));
    EXPECT_FALSE(zmf_map_do_these_match(nullptr, nullptr));
}

TEST(zmf_questions, an_identity_needs_its_namespace) {
    char right[] = "urn:t";
    zmf::session s(OP_EDIT);
    zmf_datatree node{};
    const auto fails = [&](const char *ns) { return zmf_map_validate_data_ns(s.context(), &node, ns, 0) != 0; };
    EXPECT_TRUE(fails("urn:t"));
    node.value_ns = right;
    EXPECT_TRUE(fails("urn:t")) << "the flag says that there is one";
    node.has_value_ns = 1;
    EXPECT_FALSE(fails("urn:t"));
    EXPECT_TRUE(fails("urn:other"));
    EXPECT_TRUE(fails(nullptr));
}

TEST(zmf_text, bounded_operations_at_their_borders) {
    char dest[8];
    const auto with = [&](const char *start) {
        std::memset(dest, '#', sizeof dest);
        std::memcpy(dest, start, std::strlen(start) + 1);
        return dest;
    };
    const std::string endless(8, 'x');
    const struct {
        const char *what;
        std::function<rcode()> run;
        const char *left; // null: failure, and an empty destination
    } rows[] = {
        {"copy that fits", [&] { return zmf_strcpy_s("t", with("old"), 4, "abc"); }, "abc"},
        {"copy without room for the end", [&] { return zmf_strcpy_s("t", with("old"), 3, "abc"); }, nullptr},
        {"copy of an empty text", [&] { return zmf_strcpy_s("t", with("old"), 1, ""); }, ""},
        {"copy of none", [&] { return zmf_strcpy_s("t", with("old"), 8, nullptr); }, nullptr},
        {"part", [&] { return zmf_strncpy_s("t", with("old"), 4, "abcdef", 3); }, "abc"},
        {"part that is too long", [&] { return zmf_strncpy_s("t", with("old"), 3, "abcdef", 3); }, nullptr},
        {"length equal to size, shorter text", [&] { return zmf_strncpy_s("t", with("old"), 8, "ab", 8); }, "ab"},
        {"length equal to size, long text", [&] { return zmf_strncpy_s("t", with("old"), 8, endless.c_str(), 8); },
         nullptr},
        {"append", [&] { return zmf_strcat_s("t", with("ab"), 5, "cd"); }, "abcd"},
        {"append without room", [&] { return zmf_strcat_s("t", with("ab"), 4, "cd"); }, nullptr},
        {"append to what has no end", [&] { return zmf_strcat_s("t", with("abcd"), 3, ""); }, nullptr},
        {"append none", [&] { return zmf_strcat_s("t", with("ab"), 8, nullptr); }, nullptr},
    };
    for (const auto &row : rows) {
        const rcode status = row.run();
        EXPECT_EQ(status == RC_OK, row.left != nullptr) << row.what;
        EXPECT_STREQ(dest, row.left == nullptr ? "" : row.left) << row.what;
    }
    dest[0] = 'x';
    EXPECT_NE(zmf_strcpy_s("t", dest, 0, "a"), RC_OK);
    EXPECT_EQ(dest[0], 'x');
    EXPECT_NE(zmf_strcpy_s("t", nullptr, 8, "a"), RC_OK);
}

TEST(zmf_text, comparison) {
    constexpr size_t unlimited = 0x7fffffffffffffff;
    const struct {
        const char *a, *b;
        size_t max;
        bool fails, equal;
    } rows[] = {
        {"abc", "abc", unlimited, false, true},
        {"abc", "abd", unlimited, false, false},
        {"abc", "ab", unlimited, false, false},
        {"abc", "abd", 2, false, true},
        {nullptr, "a", unlimited, true, false},
        {"a", nullptr, unlimited, true, false},
        {"a", "a", 0, true, false},
    };
    for (const auto &row : rows) {
        int indicator = 0;
        EXPECT_EQ(zmf_strcmp_s("t", row.a, row.max, row.b, &indicator) != RC_OK, row.fails);
        EXPECT_EQ(indicator == 0, row.equal);
    }
    EXPECT_NE(zmf_strcmp_s("t", "a", unlimited, "a", nullptr), RC_OK);
}

TEST(zmf_faults, each_call_that_answers_with_a_status_can_fail) {
    constexpr rcode injected = 0x77;
    request_text request("channel{index=5}", oc_ns);
    char *copy = nullptr;
    std::unique_ptr<zmf::output_tree> tree;
    const char *text = nullptr;
    const std::vector<std::function<rcode(zmf::session &)>> calls = {
        [&](zmf::session &s) {
            return zmf_map_datatree_add_path_flagged(s.context(), tree->root(), "/a", oc_ns, "1", nullptr, nullptr, 0,
                                                     0);
        },
        [&](zmf::session &s) { return zmf_map_datatree_update_namespace(s.context(), tree->root(), "/a", cfg_ns, 1); },
        [&](zmf::session &s) { return zmf_map_update_current_list_node(s.context(), channel_path); },
        [&](zmf::session &s) { return zmf_map_get_node_info(s.context(), channel_path, "index", &text); },
        [&](zmf::session &s) {
            return zmf_map_check_oc_leafref(s.context(), channel_path, "config", "index", request.top());
        },
        [&](zmf::session &) {
            copy = zmf_strdup("x", "ZMF MAP");
            const rcode status = copy == nullptr ? injected : RC_OK;
            kvo_named_free(copy);
            return status;
        },
    };
    for (uint64_t n = 1; n <= calls.size() + 1; ++n) {
        tree = std::make_unique<zmf::output_tree>();
        zmf::session s(OP_EDIT);
        push(s, *request.top(), ZMF_HIER_LIST);
        s.fail_call(n, injected);
        for (uint64_t i = 1; i <= calls.size(); ++i) {
            const rcode status = calls[i - 1](s);
            const bool lacks_entry = n == 3 && i == 4; // since the call before it failed
            EXPECT_EQ(status, i == n ? injected : lacks_entry ? zmf::rc_no_such_entry : RC_OK) << n << ' ' << i;
            EXPECT_EQ(tree->nodes(), n == 1 ? 0u : 1u) << "a call that fails does nothing";
        }
        EXPECT_EQ(s.status_calls(), calls.size());
        EXPECT_TRUE(zmf_map_validate_data_ns(s.context(), request.top(), oc_ns, 0) != 0);
        EXPECT_EQ(s.status_calls(), calls.size() + 1);
    }
}

// Failures. A walk is written as steps: "+tag" match and push a child of the top, "tag" match only, "~" match of
// the namespaces, "-" pop, "!" mark, "#text" a client text, "@" the leafref check of the top.
std::string told(const char *request, const std::vector<std::string> &walk, rcode status) {
    request_text tree(request, oc_ns);
    zmf::session s(OP_EDIT);
    std::vector<zmf_datatree *> record;
    const auto child = [&](const std::string &tag) -> zmf_datatree * {
        if (record.empty())
            return tree.top();
        for (uint32_t i = 0; i < record.back()->child_count; ++i)
            if (tag == record.back()->children[i].tag)
                return &record.back()->children[i];
        return nullptr;
    };
    for (const std::string &step : walk) {
        if (step[0] == '+') {
            record.push_back(child(step.substr(1)));
            zmf_map_do_these_match(record.back()->tag, step.c_str() + 1);
            push(s, *record.back(), step == "+channel" ? ZMF_HIER_LIST : ZMF_HIER_CONTAINER);
        } else if (step == "-") {
            pop(s, *record.back());
            record.pop_back();
        } else if (step == "!") {
            zmf_oc_error_path(s.context());
        } else if (step == "~") {
            zmf_map_do_these_match(oc_ns, oc_ns);
        } else if (step == "@") {
            zmf_map_check_oc_leafref(s.context(), channel_path, "config", "index", record.back());
        } else if (step[0] == '#') {
            kvo_named_free(s.request().err_msg);
            s.request().err_msg = zmf_strdup(step.c_str() + 1, "ZMF MAP");
        } else {
            zmf_map_do_these_match(child(step)->tag, step.c_str());
        }
    }
    while (!record.empty()) {
        pop(s, *record.back());
        record.pop_back();
    }
    const zmf::failure failure = s.describe(status);
    EXPECT_EQ(failure.status, status);
    EXPECT_EQ(failure.leaf_or_tag.empty(), failure.path.empty());
    EXPECT_EQ(failure.ns, failure.path.empty() || status == zmf::rc_leafref_mismatch ? failure.ns : oc_ns);
    return failure.path + " : " + failure.message;
}

TEST(zmf_failures, are_told_with_their_path_and_text) {
    constexpr char request[] =
        "terminal-device{logical-channels{channel{index=5 config{index=6 test-signal=true odd=1}}"
        " channel{config!delete{index=6}}} config}";
    const std::vector<std::string> to_config = {"+terminal-device", "+logical-channels", "+channel", "+config"};
    const auto below = [](std::vector<std::string> walk, const std::vector<std::string> &more) {
        walk.insert(walk.end(), more.begin(), more.end());
        return walk;
    };
    const std::vector<std::string> to_channel = {"+terminal-device", "+logical-channels", "+channel"};
    constexpr char channel[] = "/terminal-device/logical-channels/channel[index='5']";
    const struct {
        const char *what;
        std::vector<std::string> walk;
        rcode status;
        std::string told;
    } rows[] = {
        {"a leaf that is refused, text after the mark", below(to_config, {"test-signal", "!", "#test-signal"}),
         RC_UNSUPPORTED_NODE, std::string(channel) + "/config/test-signal : test-signal"},
        {"an unknown tag, after a match of namespaces", below(to_config, {"~", "#odd", "!"}), RC_UNSUPPORTED_NODE,
         std::string(channel) + "/config/odd : odd"},
        {"a sentence names no node", below(to_channel, {"index", "#index is out of range", "!"}), RC_VALUE_OUT_OF_RANGE,
         std::string(channel) + "/index : index is out of range"},
        {"a container with children is deleted", below(to_channel, {"config", "!"}), RC_INVALID_ARGUMENTS,
         std::string(channel) + "/config : "},
        {"a key that misses names the list", below(to_channel, {"#id", "!"}), RC_LIST_KEY_ERROR,
         std::string(channel) + " : id"},
        {"no mark: the last match",
         {"+terminal-device", "+logical-channels", "channel"},
         RC_SUBTREE_ERROR,
         std::string(channel) + " : "},
        {"no mark, and the namespaces matched last", below(to_config, {"~"}), RC_SUBTREE_ERROR,
         std::string(channel) + "/config : "},
        {"an earlier refusal is not the reason", below(to_config, {"test-signal", "#test-signal", "!", "-", "index"}),
         zmf::rc_too_big, std::string(channel) + "/index : "},
        {"an earlier text is not the reason", below(to_config, {"test-signal", "#index", "!", "-", "config", "!"}),
         RC_INVALID_ARGUMENTS, std::string(channel) + "/config : "},
        {"key and leaf differ", below(to_channel, {"index", "@"}), zmf::rc_leafref_mismatch,
         std::string(channel) + "/config/index : the key index is \"5\", but config/index is \"6\""},
        {"the top node", {"+terminal-device", "!"}, RC_INVALID_ARGUMENTS, "/terminal-device : "},
        {"nothing was walked", {}, RC_INVALID_ARGUMENTS, " : "},
    };
    for (const auto &row : rows)
        EXPECT_EQ(told(request, row.walk, row.status), row.told) << row.what;
    EXPECT_EQ(told("terminal-device{logical-channels{channel{index=it's}}}", to_channel, RC_SUBTREE_ERROR),
              "/terminal-device/logical-channels/channel[index=\"it's\"] : ");
}

TEST(zmf_log, calls_are_told_in_order_as_lines) {
    request_text request("channel!delete{index=5}", oc_ns);
    zmf::session s(OP_EDIT);
    zmf::output_tree tree;
    std::vector<std::string> lines;
    s.record([&](const zmf::call &made) { lines.push_back(zmf::to_line(made)); });
    zmf_datatree *out = nullptr;
    const char *text = nullptr;
    zmf_map_do_these_match("a", "b\n\"");
    push(s, *request.top(), ZMF_HIER_LIST);
    zmf_map_update_current_list_node(s.context(), channel_path);
    zmf_map_get_node_info(s.context(), channel_path, "index", &text);
    zmf_map_is_request_delete(request.top());
    zmf_map_datatree_add_path_flagged(s.context(), tree.root(), "/logical-channels/channel", cfg_ns, nullptr,
                                      request.top(), nullptr, 1, 0);
    zmf_map_datatree_add_path_flagged(s.context(), tree.root(), "/logical-channels/channel/channel-index", cfg_ns, "5",
                                      request.top()->children, &out, 0, 1);
    zmf_map_datatree_add_path_flagged(s.context(), tree.root(), "//", "urn:unknown", "", nullptr, nullptr, 0, 0);
    zmf_map_datatree_update_namespace(s.context(), tree.root(), "/x", oc_ns, 1);
    zmf_oc_error_path(s.context());
    zmf_map_util_itree_stack_push(s.context(), request.top()->children, 1, nullptr);
    zmf_map_util_itree_stack_size(s.context());
    pop(s, *request.top());
    s.record(nullptr);
    zmf_oc_error_path(s.context());
    const std::vector<std::string> expected = {
        R"(match "a" "b\x0a\"" -> no)",
        "push list channel",
        "current /terminal-device/logical-channels/channel",
        R"(info /terminal-device/logical-channels/channel key=index value="5")",
        "is-delete channel -> yes",
        "add /logical-channels/channel ns=Corvane-terminal-device-cfg source=delete list",
        R"(add /logical-channels/channel/channel-index ns=Corvane-terminal-device-cfg value="5" source=none cross-module node-out)",
        R"(add // ns=urn:unknown value="" -> RC_ZMF_BAD_PATH)",
        "namespace /x ns=openconfig-terminal-device",
        "error-path",
        "stack-push 1",
        "stack-size -> 1",
        "pop channel",
    };
    EXPECT_EQ(lines, expected);
    EXPECT_EQ(s.error_marks(), 2u);
    EXPECT_EQ(zmf::status_name(RC_VALUE_OUT_OF_RANGE), "RC_VALUE_OUT_OF_RANGE");
    EXPECT_EQ(zmf::status_name(0x12u), "status 0x00000012");
    EXPECT_STREQ(zmf::operation_name(zmf::operation::error_path), "error_path");
}

TEST(zmf_log, both_channels_lead_to_the_session_of_the_handle) {
    zmf::session s(OP_GET);
    zmf::session other(OP_GET);
    zmf_map_ctx ctx = s.context();
    std::vector<std::string> debug;
    std::vector<std::string> ring;
    EXPECT_FALSE(zmf_debug_should_log(&ctx->log_state, 0) || zmf_debug_should_log(&ctx->log_state, 3));
    s.debug(1u << 3, [&](std::string_view line) { debug.emplace_back(line); });
    EXPECT_EQ(ctx->ring_trace_on, 0u);
    s.ring([&](std::string_view line) { ring.emplace_back(line); });
    EXPECT_FALSE(zmf_debug_should_log(&ctx->log_state, 0));
    EXPECT_TRUE(zmf_debug_should_log(&ctx->log_state, 3));
    EXPECT_NE(ctx->ring_trace_on, 0u);

    uint32_t error_word = 0xffffffff;
    uint32_t trace_word = 0xffffffff;
    const std::string long_text(2000, 'x');
    _kvo_dt_log_filter_adv(ctx->err_log, 0, 0, 0, 0, 0, &error_word, "ERR: %d", 7);
    _kvo_dt_log_filter_adv(ctx->trc_log, 0, 0, 0, 0, 0, &trace_word, "TRC: %s", long_text.c_str());
    _kvo_dt_log_filter_adv(other.context()->trc_log, 0, 0, 0, 0, 0, &trace_word, "TRC: %d", 9);
    _ringlog(ctx->ring_log, ZMF_RINGLOG_FLAGS, "#1: TRC");
    EXPECT_EQ(debug, (std::vector<std::string>{"ERR: 7", "TRC: " + long_text}));
    EXPECT_EQ(ring, std::vector<std::string>{"#1: TRC"});
    EXPECT_EQ(error_word, 0u);
    EXPECT_EQ(trace_word, 3u);
    const uint32_t first = ret_nc_zmf_trace_index_incr();
    EXPECT_EQ(ret_nc_zmf_trace_index_incr(), first + 1);
    s.debug(9, nullptr);
    s.ring(nullptr);
    EXPECT_FALSE(zmf_debug_should_log(&ctx->log_state, 3));
    EXPECT_EQ(ctx->ring_trace_on, 0u);
}

TEST(zmf_session, reset_clears_what_a_root_leaves) {
    request_text request("l{k=1}", oc_ns);
    zmf::session s(OP_EDIT_CHECKED);
    zmf_req_ctx &req = s.request();
    EXPECT_EQ(req.request->op_type, 8u);
    req.err_msg = zmf_strdup("text", "ZMF MAP");
    req.err_info = zmf_strdup("text", "ZMF MAP");
    req.walk_all = req.delete_walk = req.filter_bits = req.pass_flags = req.replace_armed = 1;
    req.logical_index = 5;
    s.context()->last_key_op = 3;
    push(s, *request.top(), ZMF_HIER_LIST);
    zmf_map_update_current_list_node(s.context(), "/l");
    zmf_map_util_itree_stack_push(s.context(), nullptr, 0, nullptr);
    s.reset();
    EXPECT_EQ(req.request->op_type, 8u);
    EXPECT_EQ(req.err_msg, nullptr);
    EXPECT_EQ(req.err_info, nullptr);
    EXPECT_EQ(req.walk_all + req.delete_walk + req.filter_bits + req.pass_flags + req.replace_armed, 0u);
    EXPECT_EQ(req.logical_index, 0);
    EXPECT_EQ(s.context()->last_key_op, 0u);
    EXPECT_EQ(s.hierarchy_depth() + s.stack_size(), 0u);
    EXPECT_EQ(info(s, "/l", "k"), "RC_ZMF_NO_SUCH_ENTRY");
}

template <typename Work>
std::string refusal(Work work) {
    try {
        work();
    } catch (const zmf::plugin_error &error) {
        return error.text;
    }
    return "none";
}

TEST(zmf_plugin, faults_of_the_file_and_of_the_request_are_named) {
    EXPECT_NE(
        refusal([] { const zmf::plugin none("/nowhere/libnone.so"); }).find("\"/nowhere/libnone.so\" does not load"),
        std::string::npos);
    const zmf::plugin rootless(LIBRARY_WITHOUT_ROOTS);
    zmf::session s(OP_GET);
    zmf::output_tree out;
    const struct {
        const char *tag, *ns, *says;
    } rows[] = {
        {"terminal-device", oc_ns, " lacks ymap_ox_oc_optical_openconfigterminaldevice_lvla_terminaldevice"},
        {"terminal-device", "urn:other", "no root for top node \"terminal-device\" of namespace \"urn:other\""},
        {"nowhere", "", "no root for top node \"nowhere\" of namespace \"\""},
    };
    for (const auto &row : rows) {
        zmf::tree_builder builder;
        builder.open(row.tag, row.ns);
        builder.close();
        const zmf::fixed_tree request = builder.finish();
        EXPECT_NE(refusal([&] { rootless.down(s, request, out); }).find(row.says), std::string::npos) << row.says;
    }
    EXPECT_EQ(rootless.symbol("no_such_symbol"), nullptr);
}

} // namespace
