// Trees of the stand-in: paths, building contiguous trees, and output trees that grow by path.
#include <gtest/gtest.h>

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <deque>
#include <fstream>
#include <functional>
#include <string>

#include "zmf/path.h"
#include "zmf/session.h"
#include "zmf/tree.h"

#if defined(__SANITIZE_ADDRESS__)
#define SKIP_MEASUREMENT() GTEST_SKIP() << "memory is not measured under a sanitizer"
#else
#define SKIP_MEASUREMENT() static_cast<void>(0)
#endif

namespace {

constexpr char ns_a[] = "urn:a";
constexpr char ns_b[] = "urn:b";

// "a b(k=v)(j=w) c" for "/a/b[k='v'][j='w']/c", "bad" for a path that cannot be read.
std::string steps_of(const std::string &path) {
    std::vector<zmf::path_step> steps;
    if (!zmf::read_path(path, steps))
        return "bad";
    std::string text;
    for (const zmf::path_step &step : steps) {
        (text += text.empty() ? "" : " ") += step.name;
        for (const zmf::path_key &key : step.keys)
            text += "(" + std::string(key.name) + "=" + std::string(key.value) + ")";
    }
    return text;
}

TEST(zmf_path, reads_steps_prefixes_and_keys) {
    const struct {
        const char *path, *steps;
    } rows[] = {
        {"/a/b/c", "a b c"},
        {"a", "a"},
        {"/a/b/", "a b"},
        {"/m:a/b.x-1_/n:c", "a b.x-1_ c"},
        {"/a/a", "a a"},
        {"", "bad"},
        {"/", "bad"},
        {"//a", "bad"},
        {"/a//b", "bad"},
        {"/a b", "bad"},
        {"/1a", "bad"},
        {"/m:/a", "bad"},
        {"/a]", "bad"},
        {"/a[k='v']", "a(k=v)"},
        {"/a[k=\"v'w\"]/b", "a(k=v'w) b"},
        {"/a[m:k='v'][j='w']/b", "a(k=v)(j=w) b"},
        {"/a[k='x]/y[z='w']']/b", "a(k=x]/y[z='w']) b"},
        {"/a[k=v]", "a(k=v)"},
        {"/a[k=]/b", "a(k=) b"},
        {"/a[k=''][j=w]/", "a(k=)(j=w)"},
        {"/a[k=Optics0/0/0/1]/b", "a(k=Optics0/0/0/1) b"},
        {"/a[k=x#y]z]/b", "a(k=x#y]z) b"},
        {"/a[k=x[1]/y]/b", "a(k=x[1]/y) b"},
        {"/a[k=x]/y]", "a(k=x]/y)"},
        {"/a[k=1]/b/m:c[j=2/3]/d", "a(k=1) b c(j=2/3) d"},
        {"/a[k=x[0]/1]/b[j=2]", "a(k=x[0]/1) b(j=2)"},
        {"/a[k=1][j=2]/b", "a(k=1)(j=2) b"},
        {"/a[k='1", "bad"},
        {"/a[k=1", "bad"},
        {"/a[1]", "bad"},
        {"/a[k]/b", "bad"},
        {"/a[='v']", "bad"},
        {"/a[k='v']b", "bad"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(steps_of(row.path), row.steps) << row.path;
}

// Contiguous trees, as "tag=value!op{children}".
std::string text_of(const zmf_datatree &node) {
    std::string text = node.tag;
    if (node.has_value)
        text += std::string("=") + node.value;
    if (node.has_value_ns)
        text += std::string("@") + node.value_ns;
    if (node.op_explicit)
        text += "!" + std::to_string(node.op);
    if (node.has_children) {
        text += "{";
        for (uint32_t i = 0; i < node.child_count; ++i)
            text += (i == 0 ? "" : " ") + text_of(node.children[i]);
        text += "}";
    }
    return text;
}

void leaf(zmf::tree_builder &builder, const char *tag, const char *value) {
    builder.open(tag, ns_a);
    builder.value(value);
    builder.close();
}

TEST(zmf_builder, lays_children_out_in_order_of_the_request) {
    zmf::tree_builder builder;
    builder.open("top", ns_a);
    builder.open("list", ns_a);
    leaf(builder, "k", "1");
    builder.open("c", ns_b);
    builder.operation(OP_DELETE);
    leaf(builder, "d", "");
    builder.close();
    leaf(builder, "e", "x");
    builder.close();
    builder.open("list", "");
    builder.operation(OP_MERGE);
    builder.value("id");
    builder.value_namespace("urn:v");
    builder.close();
    EXPECT_EQ(builder.depth(), 1u);
    EXPECT_THROW(builder.finish(), std::logic_error);
    builder.close();
    EXPECT_THROW(builder.close(), std::logic_error);
    leaf(builder, "second", "2");
    EXPECT_EQ(builder.nodes(), 8u);

    zmf::fixed_tree tree = builder.finish();
    ASSERT_EQ(tree.count(), 2u);
    EXPECT_EQ(tree.nodes(), 8u);
    EXPECT_EQ(text_of(tree.tops()[0]), "top{list{k=1 c!3{d=} e=x} list=id@urn:v!0}");
    EXPECT_EQ(text_of(tree.tops()[1]), "second=2");
    const zmf_datatree &list = tree.tops()[0].children[0];
    EXPECT_STREQ(list.children[1].ns, ns_b);
    EXPECT_EQ(tree.tops()[0].children[1].ns, nullptr);
    EXPECT_EQ(list.tag, tree.tops()[0].children[1].tag) << "tags are kept once";
    EXPECT_EQ(list.framework, nullptr);

    EXPECT_EQ(builder.nodes(), 0u);
    EXPECT_EQ(builder.finish().count(), 0u) << "the builder is empty afterwards";
}

TEST(zmf_builder, takes_depth_and_breadth) {
    constexpr int depth = 20000;
    constexpr int breadth = 50000; // more than one chunk of the tape
    zmf::tree_builder builder;
    for (int i = 0; i < depth; ++i)
        builder.open("n" + std::to_string(i % 7), ns_a);
    for (int i = 0; i < breadth; ++i)
        leaf(builder, "leaf", std::to_string(i).c_str());
    for (int i = 0; i < depth; ++i)
        builder.close();
    zmf::fixed_tree tree = builder.finish();
    const zmf_datatree *node = tree.tops();
    for (int i = 0; i + 1 < depth; ++i) {
        ASSERT_EQ(node->child_count, 1u);
        ASSERT_EQ(node->tag, "n" + std::to_string(i % 7));
        node = node->children;
    }
    ASSERT_EQ(node->child_count, static_cast<uint32_t>(breadth));
    for (int i : {0, 1, 8191, 8192, breadth - 1})
        EXPECT_EQ(node->children[i].value, std::to_string(i));
}

size_t high_water() { // of this process, in KiB
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "VmHWM:") {
            size_t size = 0;
            status >> size;
            return size;
        }
    return 0;
}

TEST(zmf_builder, a_million_nodes_stay_within_their_memory) {
    SKIP_MEASUREMENT();
    const pid_t child = fork();
    if (child == 0) {
        const size_t before = high_water();
        zmf::tree_builder builder;
        builder.open("top", ns_a);
        for (int i = 0; i < 500000; ++i) {
            builder.open("entry", ns_a);
            builder.open("leaf", ns_a);
            builder.close();
            builder.close();
        }
        builder.close();
        zmf::fixed_tree tree = builder.finish();
        const size_t used = high_water() - before;
        _exit(tree.nodes() == 1000001 && used > 0 && used < size_t{125} * 1024 ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

// Output trees: "tag*=value!op?ns{children}", "*" a list entry, "!" an operation of a source, "+" a source without one,
// "?" a namespace that is not urn:a.
std::string grown(zmf::output_node node) {
    std::string text = node.tag() == nullptr ? "" : node.tag();
    text += node.is_list_entry() ? "*" : "";
    if (node.value() != nullptr)
        text += std::string("=") + node.value();
    if (node.op_explicit())
        text += "!" + std::to_string(node.op());
    else if (node.has_source())
        text += "+";
    if (node.ns() != nullptr && std::string(node.ns()) != ns_a)
        text += "?";
    std::string below;
    for (zmf::output_node child = node.first_child(); child; child = child.next_sibling()) {
        EXPECT_TRUE(child.parent() == node);
        below += (below.empty() ? "" : " ") + grown(child);
    }
    return below.empty() ? text : text + "{" + below + "}";
}

struct add_row {
    const char *path;
    const char *value = nullptr;
    int source = -1; // an operation; -1 no source, -2 a source without operation
    bool list = false;
    const char *ns = ns_a;
};

rcode add(zmf::session &s, zmf_datatree *tree, const add_row &row, zmf_datatree **out = nullptr) {
    zmf_datatree source{};
    source.op = row.source < 0 ? 0 : static_cast<uint32_t>(row.source);
    source.op_explicit = row.source >= 0;
    return zmf_map_datatree_add_path_flagged(s.context(), tree, row.path, row.ns, row.value,
                                             row.source == -1 ? nullptr : &source, out, row.list, 0);
}

TEST(zmf_output, grows_by_path) {
    constexpr char key[] = "/logical-channels/channel/channel-index";
    constexpr char channel[] = "/logical-channels/channel";
    constexpr char oc_channel[] = "/terminal-device/logical-channels/channel";
    const struct {
        const char *what;
        std::vector<add_row> adds;
        const char *tree;
    } rows[] = {
        {"what is missing is made", {{"/a/b/c", "1"}, {"a/b/d", "2"}, {"/m:a/x/"}}, "{a{b{c=1 d=2} x}}"},
        {"a node keeps its namespace", {{"/a/b", "1"}, {"/a/c", "2", -1, false, ns_b}, {"/a/c/d"}}, "{a{b=1 c=2?{d}}}"},
        {"a value stays without source", {{"/a", "1"}, {"/a", "2"}, {"/a"}}, "{a=1}"},
        {"a missing value is filled", {{"/a"}, {"/a", "1"}, {"/a", "2"}}, "{a=1}"},
        {"empty is a value", {{"/a", ""}, {"/a", "1"}}, "{a=}"},
        {"a source replaces", {{"/a", "1"}, {"/a", "2", OP_MERGE}, {"/a", "3", OP_DELETE}}, "{a=3!3}"},
        {"a source takes a value away", {{"/a", "1"}, {"/a", nullptr, OP_DELETE}}, "{a!3}"},
        {"a source without operation", {{"/a", "1", OP_DELETE}, {"/a", "2", -2}}, "{a=2+}"},
        {"a source marks the last node only", {{"/a/b/c", nullptr, OP_REMOVE}}, "{a{b{c!4}}}"},
        {"no source changes no operation", {{"/a", nullptr, OP_DELETE}, {"/a", "1"}}, "{a=1!3}"},
        {"an entry without child is used again",
         {{"/a/l", nullptr, -1, true}, {"/a/l", nullptr, OP_DELETE, true}},
         "{a{l*!3}}"},
        {"an entry with a child is not",
         {{"/l", nullptr, -1, true}, {"/l/k", "1"}, {"/l", nullptr, -1, true}, {"/l/k", "2"}, {"/l/x"}},
         "{l*{k=1} l*{k=2 x}}"},
        {"a list without flag is unkeyed", {{"/l/k", "1"}, {"/l/k", "2"}}, "{l{k=1}}"},
        {"lists within lists",
         {{"/l", nullptr, -1, true},
          {"/l/m", nullptr, -1, true},
          {"/l/m/k", "1"},
          {"/l/m", nullptr, -1, true},
          {"/l/m/k", "2"},
          {"/l", nullptr, -1, true},
          {"/l/m/k", "3"}},
         "{l*{m*{k=1} m*{k=2}} l*{m{k=3}}}"},
        {"a key takes no operation",
         {{channel, nullptr, OP_DELETE, true}, {key, "5", OP_DELETE}},
         "{logical-channels{channel*!3{channel-index=5+}}}"},
        {"a key holds its value against none",
         {{channel, nullptr, -1, true}, {key, "5", OP_DELETE}, {key, nullptr, OP_DELETE}},
         "{logical-channels{channel*{channel-index=5+}}}"},
        {"a key takes a later value of a source",
         {{key, "5", OP_MERGE}, {key, "6", OP_MERGE}},
         "{logical-channels{channel{channel-index=6+}}}"},
        {"a key of the other side",
         {{oc_channel, nullptr, -1, true},
          {"/terminal-device/logical-channels/channel/index", "5", OP_DELETE},
          {"/terminal-device/logical-channels/channel/config/index", "5", OP_DELETE}},
         "{terminal-device{logical-channels{channel*{index=5+ config{index=5!3}}}}}"},
        {"an OpenConfig list without current entry",
         {{"/terminal-device/logical-channels/channel[index=5]/x"},
          {"/terminal-device/logical-channels/channel/y"},
          {"/terminal-device/logical-channels/channel/z"}},
         "{terminal-device{logical-channels{channel*{index=5 x} channel{y z}}}}"},
        {"what got its key meanwhile is a real one",
         {{"/terminal-device/logical-channels/channel/y"},
          {"/terminal-device/logical-channels/channel/index", "5"},
          {"/terminal-device/logical-channels/channel/z"}},
         "{terminal-device{logical-channels{channel{y index=5} channel{z}}}}"},
        {"keys in the path",
         {{"/l[k='1']/v", "a"}, {"/l[k=2]/v", "b"}, {"/l[k=1]/w", "c"}},
         "{l*{k=1 v=a w=c} l*{k=2 v=b}}"},
        {"two keys in any order",
         {{"/l[k=1][j=2]/v", "a"}, {"/l[j=2][k=1]/w"}, {"/l[k=2][j=1]/v"}},
         "{l*{k=1 j=2 v=a w} l*{k=2 j=1 v}}"},
        {"the path finds what a key leaf named",
         {{channel, nullptr, -1, true},
          {key, "5"},
          {channel, nullptr, -1, true},
          {key, "6"},
          {"/logical-channels/channel[channel-index=5]/x"}},
         "{logical-channels{channel*{channel-index=5 x} channel*{channel-index=6}}}"},
        {"a key that changed is found no more",
         {{key, "5"}, {key, "6", OP_MERGE}, {"/logical-channels/channel[channel-index=5]/x"}},
         "{logical-channels{channel{channel-index=6+} channel*{channel-index=5 x}}}"},
        {"an older entry becomes the current one",
         {{"/l[k=1]"}, {"/l[k=2]"}, {"/l[k=1]", nullptr, -1, true}, {"/l/v", "a"}},
         "{l*{k=1 v=a} l*{k=2}}"},
        {"a path with keys moves no position",
         {{"/l", nullptr, -1, true}, {"/l[k=1]/v"}, {"/l/w"}, {"/l[k=1]/x"}, {"/l/x/y"}},
         "{l*{w x{y}} l*{k=1 v x}}"},
    };
    for (const auto &row : rows) {
        zmf::session s(OP_EDIT);
        zmf::output_tree tree;
        for (const add_row &each : row.adds)
            EXPECT_EQ(add(s, tree.root(), each), RC_OK);
        EXPECT_EQ(grown(tree.top()), row.tree) << row.what;
    }
}

TEST(zmf_output, a_node_that_is_handed_out_takes_relative_paths) {
    zmf::session s(OP_GET);
    zmf::output_tree tree;
    zmf_datatree *first = nullptr;
    zmf_datatree *second = nullptr;
    ASSERT_EQ(add(s, tree.root(), {"/l[k=1]"}, &first), RC_OK);
    ASSERT_EQ(add(s, tree.root(), {"/l[k=2]"}, &second), RC_OK);
    EXPECT_EQ(add(s, first, {"v", "1"}), RC_OK);
    EXPECT_EQ(add(s, second, {"/c/v", "2"}), RC_OK);
    EXPECT_EQ(add(s, first, {"k", "9"}), RC_OK);
    EXPECT_EQ(grown(tree.top()), "{l*{k=1 v=1} l*{k=2 c{v=2}}}");
    EXPECT_FALSE(tree.top().parent());
    EXPECT_EQ(tree.nodes(), 7u);
}

// A node that is handed out is the same for its holder and for readers, whoever changes it.
TEST(zmf_output, a_node_that_is_handed_out_follows_later_adds) {
    zmf::session s(OP_EDIT);
    zmf::output_tree tree;
    zmf_datatree *held = nullptr;
    zmf_datatree *again = nullptr;
    ASSERT_EQ(add(s, tree.root(), {"/a/b", "1"}, &held), RC_OK);
    EXPECT_STREQ(held->tag, "b");
    EXPECT_STREQ(held->value, "1");
    EXPECT_STREQ(held->ns, ns_a);
    ASSERT_EQ(add(s, tree.root(), {"/a/b", "2", OP_REPLACE}, &again), RC_OK);
    EXPECT_EQ(held, again);
    EXPECT_STREQ(held->value, "2");
    EXPECT_TRUE(held->op_explicit && held->op == OP_REPLACE);
    zmf_map_datatree_update_namespace(s.context(), tree.root(), "/a/b", ns_b, 1);
    EXPECT_STREQ(held->ns, ns_b);
    held->value_ns = zmf_strdup("urn:v", "test");
    held->has_value_ns = 1;
    EXPECT_STREQ(tree.find("/a/b").value_ns(), "urn:v");
    EXPECT_EQ(tree.find("/a").value_ns(), nullptr);
    ASSERT_EQ(add(s, tree.root(), {"/a/b", nullptr, OP_DELETE}), RC_OK);
    EXPECT_FALSE(held->has_value);
    EXPECT_EQ(grown(tree.top()), "{a{b!3?}}");
}

// Beyond a few children places are looked up in another way: what was current or newest stays so.
TEST(zmf_output, a_node_may_have_many_children) {
    constexpr int names = 40;
    for (int with_list = 0; with_list <= names; ++with_list) {
        zmf::session s(OP_EDIT);
        zmf::output_tree tree;
        std::string expected;
        for (int i = 0; i <= names; ++i) {
            if (i == with_list) {
                add(s, tree.root(), {"/t/l", nullptr, -1, true});
                add(s, tree.root(), {"/t/l/k", "1"});
                expected += " l*{k=1 v=2}";
            }
            const std::string name = "c" + std::to_string(i);
            add(s, tree.root(), {("/t/" + name).c_str()});
            expected += " " + name + "=" + std::to_string(i);
        }
        add(s, tree.root(), {"/t/l/v", "2"});
        for (int i = 0; i <= names; ++i)
            add(s, tree.root(), {("/t/c" + std::to_string(i)).c_str(), std::to_string(i).c_str()});
        add(s, tree.root(), {"/t/l", nullptr, -1, true});
        add(s, tree.root(), {"/t/l/k", "2"});
        s.reset();
        add(s, tree.root(), {"/t/l/v", "3"});
        EXPECT_EQ(grown(tree.top()), "{t{" + expected.substr(1) + " l*{k=2 v=3}}}") << with_list;
    }
}

// Paths are known again by where their text stands, and it may have changed.
TEST(zmf_output, a_path_is_what_its_text_says) {
    constexpr size_t paths = 3000; // more than are kept
    zmf::session s(OP_EDIT);
    zmf::output_tree tree;
    char buffer[32];
    std::deque<std::string> lasting;
    for (size_t round = 0; round < 2; ++round)
        for (size_t i = 0; i < paths; ++i) {
            if (round == 0)
                lasting.push_back("/t/n" + std::to_string(i));
            snprintf(buffer, sizeof buffer, "/u/n%zu", i % 7);
            add(s, tree.root(), {lasting[i].c_str(), "1"});
            add(s, tree.root(), {buffer, "1"});
        }
    EXPECT_EQ(tree.nodes(), 2 + paths + 7);
    snprintf(buffer, sizeof buffer, "/u//n");
    EXPECT_EQ(add(s, tree.root(), {buffer}), zmf::rc_bad_path);
    snprintf(buffer, sizeof buffer, "/u/n6");
    EXPECT_EQ(add(s, tree.root(), {buffer}), RC_OK);
    EXPECT_EQ(tree.nodes(), 2 + paths + 7);
}

TEST(zmf_output, namespaces_are_set_on_what_is_there) {
    zmf::session s(OP_GET);
    zmf::output_tree tree;
    add(s, tree.root(), {"/a/b"});
    for (const char *path : {"/a/b", "/a/none", "/none"})
        EXPECT_EQ(zmf_map_datatree_update_namespace(s.context(), tree.root(), path, ns_b, 1), RC_OK);
    EXPECT_EQ(grown(tree.top()), "{a{b?}}");
}

TEST(zmf_output, unreadable_adds_are_refused) {
    zmf::session s(OP_GET);
    zmf::output_tree tree;
    for (const char *path : {static_cast<const char *>(nullptr), "", "/a//b", "/a[k=1"})
        EXPECT_EQ(add(s, tree.root(), {path}), zmf::rc_bad_path);
    EXPECT_EQ(add(s, nullptr, {"/a"}), zmf::rc_bad_path);
    EXPECT_EQ(add(s, tree.root(), {"/a", nullptr, -1, false, nullptr}), zmf::rc_bad_path);
    EXPECT_EQ(zmf_map_datatree_update_namespace(s.context(), nullptr, "/a", ns_a, 1), zmf::rc_bad_path);
    EXPECT_EQ(zmf_map_datatree_update_namespace(s.context(), tree.root(), nullptr, ns_a, 1), zmf::rc_bad_path);
    EXPECT_EQ(zmf_map_datatree_update_namespace(s.context(), tree.root(), "/a", nullptr, 1), zmf::rc_bad_path);
    EXPECT_EQ(zmf_map_datatree_add_path_flagged(nullptr, tree.root(), "/a", ns_a, nullptr, nullptr, nullptr, 0, 0),
              zmf::rc_bad_path);
    EXPECT_EQ(tree.nodes(), 0u);
}

TEST(zmf_output, an_add_beyond_the_limit_changes_nothing) {
    zmf::session s(OP_EDIT);
    zmf::output_tree tree;
    ASSERT_EQ(add(s, tree.root(), {"/l", nullptr, -1, true}), RC_OK);
    ASSERT_EQ(add(s, tree.root(), {"/l/k", "1"}), RC_OK);
    tree.limit(tree.bytes() + 80);
    const std::string before = grown(tree.top());
    const std::string long_text(300, 'x');
    EXPECT_EQ(add(s, tree.root(), {"/a/b/c"}), zmf::rc_too_big);
    EXPECT_EQ(add(s, tree.root(), {"/l/k", long_text.c_str(), OP_MERGE}), zmf::rc_too_big);
    EXPECT_EQ(add(s, tree.root(), {"/l", long_text.c_str(), -1, true}), zmf::rc_too_big);
    EXPECT_EQ(grown(tree.top()), before);
    EXPECT_EQ(add(s, tree.root(), {"/l/k", long_text.c_str()}), RC_OK) << "a value that is not kept costs nothing";
    EXPECT_EQ(add(s, tree.root(), {"/l/v", "2"}), RC_OK) << "the entry is still the current one";
    EXPECT_EQ(grown(tree.top()), "{l*{k=1 v=2}}");
}

size_t allocated() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// Many entries: each is found by its key, and neither time nor memory grows out of line.
TEST(zmf_output, many_entries_stay_cheap) {
    constexpr size_t entries = 100000;
    zmf::session s(OP_EDIT);
    const size_t before = allocated();
    zmf::output_tree tree;
    for (size_t i = 0; i < entries; ++i) {
        add(s, tree.root(), {"/logical-channels/channel", nullptr, -1, true});
        add(s, tree.root(), {"/logical-channels/channel/channel-index", std::to_string(i).c_str()});
        add(s, tree.root(), {"/logical-channels/channel/admin-state"});
        add(s, tree.root(), {"/logical-channels/channel/description"});
    }
    const size_t used = allocated() - before;
    ASSERT_EQ(tree.nodes(), 4 * entries + 1);
    for (size_t i : {size_t{0}, size_t{777}, entries - 1}) {
        const std::string entry = "/logical-channels/channel[channel-index=" + std::to_string(i) + "]";
        EXPECT_EQ(add(s, tree.root(), {entry.c_str()}), RC_OK);
        EXPECT_EQ(tree.find(entry.c_str()).first_child().value(), std::to_string(i));
    }
    EXPECT_EQ(tree.nodes(), 4 * entries + 1);
    SKIP_MEASUREMENT();
    EXPECT_LT(used, tree.nodes() * 48);
    EXPECT_LT(tree.bytes(), used * 11 / 10);
    EXPECT_GT(tree.bytes(), used * 8 / 10);
}

} // namespace
