// The high-to-low walk on the test model, by the order of calls (walk_cases.cc) and by what it leaves in the request.
#include <gtest/gtest.h>

#include "engine/model.h"
#include "random_requests.h"
#include "run.h"
#include "test_model.h"

namespace {

struct prepared {
    explicit prepared(const walk_case &c) : entries(c.entries, TEST_NS), framework(c.kind) {
        framework.entries = &entries.tops();
        framework.script(c.script);
    }
    request_text entries;
    fake::framework framework;
};

TEST(walk, calls) {
    for (const walk_case &c : walk_cases()) {
        prepared p(c);
        run(p.framework, c.request);
        EXPECT_EQ(p.framework.joined_log(), lines(c.log)) << c.what << ": " << c.request;
        EXPECT_EQ(p.framework.texts.size(), p.framework.req.err_msg != nullptr ? 1u : 0u) << c.what;
    }
}

TEST(walk, marks) {
    const struct {
        uint32_t kind;
        const char *request, *marks; // kinds: 1 leaf, 2 leaf-list, 3 container, 4 list, 6 content match
    } rows[] = {
        {OP_EDIT, "top{name=n box{a=1 tags=2 inner{x=3}} shelf{entry{id=7 v=1}}}",
         "top:3 name:1 box:3 a:1 tags:2 inner:3 x:1 shelf:3 entry:4 id:1ks v:1"},
        {OP_GET, "top{box{a=1 b tags state{s}} shelf{entry{id=7 v=2}}}",
         "top:3 box:3 a:6 b:1 tags:2 state:3 s:1 shelf:3 entry:4 id:1ks v:6"},
        {OP_GET_CONFIG, "top{box{tags=1 b=}}", "top:3 box:3 tags:6 b:6"},
        {OP_GET_CONFIG, "top{box}", "top:3 box:3"}, // what falls through marks nothing
        {OP_EDIT, "top{shelf{entry!delete{id=7}}}", "top:3 shelf:3 entry:4 id:1ks"},
        {OP_EDIT, "top{shelf{duo!replace{k1=1 k2=2 z=3}}}", "top:3 shelf:3 duo:4 k1:1ks k2:1ks z:1"},
        {OP_GET, "top{zz x:a}", "top:3 zz: a:"},
    };
    for (const auto &row : rows) {
        fake::framework f(row.kind);
        EXPECT_EQ(run(f, row.request), row.marks) << row.request;
    }
}

TEST(walk, a_key_that_is_added_is_marked) {
    fake::framework f(OP_GET);
    run(f, "top{shelf{entry{v}}}");
    EXPECT_TRUE(f.added.is_key == 1 && f.added.added_key == 1);
}

TEST(walk, operation_of_the_last_list_entry) {
    constexpr uint32_t untouched = 99;
    const struct {
        const char *request, *script;
        uint32_t op;
    } rows[] = {
        {"top{shelf{duo!delete{k1=1}}}", "", OP_DELETE},
        {"top{shelf{entry!delete{id=7}}}", "", OP_REMOVE}, // of the list below that the delete falls to
        {"top{shelf{entry{id=7}}}", "", 0},
        {"top{shelf{entry!replace{id=7}}}", "", OP_MERGE},
        {"top{shelf{entry!replace{id=7}}}", "id:bad", OP_REMOVE}, // of the delete half
        {"top{shelf{entry!delete{id=7 sub{item!remove{no=1}}} duo{k1=1}}}", "duo:bad", OP_REMOVE},
        {"top{shelf{entry!delete{id=7}}}", "entry:bad", untouched},
        {"top{shelf{entry!delete{id=7}}}", "entry:nm", untouched},
    };
    for (const auto &row : rows) {
        fake::framework f(OP_EDIT);
        f.script(row.script);
        f.ctx.last_key_op = untouched;
        run(f, row.request);
        EXPECT_EQ(f.ctx.last_key_op, row.op) << row.request << " " << row.script;
    }
}

TEST(walk, words_at_the_start) {
    struct words {
        uint32_t filter_bits, walk_all, delete_walk;
    };
    const struct {
        uint32_t kind;
        words at_start;
        const char *request, *log, *marks;
    } rows[] = {
        // The bits outside the mask of a new level go, also those that mean nothing.
        {OP_GET,
         {0xffffffff, 0, 0},
         "top{name}",
         "+1 top; top/1(top f11111110); name(name f11111110); - top; = ok; left f11111112",
         "top:3 name:1"},
        {OP_EDIT,
         {0xffff0000, 0, 0},
         "top{name}",
         "+1 top; top/1(top fffff0000); name(name fffff0000); - top; = ok; left fffff0000",
         "top:3 name:1"},
        // Any value but 1 is a normal descent.
        {OP_EDIT,
         {0, 7, 0},
         "top{name}",
         "+1 top; top/1(top all=7); name(name all=7); - top; = ok; left all=7",
         "top:3 name:1"},
        {OP_EDIT, {0, 1, 0}, "top{name}", "top/1(top all); name(name all); = ok; left all", "top: name:"},
        // In a delete walk nothing is checked, and leaves are not marked.
        {OP_EDIT,
         {0, 0, 1},
         "top{box!delete{a}}",
         "+1 top; top/1(top dw1); +1 box; box/1(box !delete dw1); a(a dw1); - box; - top; = ok; left dw1",
         "top:3 box:3 a:"},
        {OP_EDIT,
         {0, 0, 1},
         "top{shelf{entry{v=1} entry{id=1} entry}}",
         "+1 top; top/1(top dw1); +1 shelf; shelf/3(shelf dw1); +2 entry; @ /t/entry; entry(entry dw1); v(v dw1);"
         "- entry; +2 entry; @ /t/entry; entry(entry dw1); id(id dw1); - entry; ! No keys specified with a list node.; "
         "+2 entry; @ /t/entry; entry(entry dw1); - entry; - shelf;"
         "- top; = ok; left dw1",
         "top:3 shelf:3 entry:4 v: entry:4 id:ks entry:4"},
    };
    for (const auto &row : rows) {
        fake::framework f(row.kind);
        f.req.filter_bits = row.at_start.filter_bits;
        f.req.walk_all = row.at_start.walk_all;
        f.req.delete_walk = row.at_start.delete_walk;
        EXPECT_EQ(run(f, row.request), row.marks) << row.request;
        EXPECT_EQ(f.joined_log(), lines(row.log));
    }
}

TEST(walk, null_arguments) {
    zmf_datatree node{};
    node.tag = "top";
    for (const zmf_node_fn walker :
         {ymap_ox_oc_optical_testmodel_lvla_top, ymap_ox_oc_optical_testmodel_augment_lvla_host}) {
        fake::framework f(OP_GET);
        EXPECT_EQ(walker(&f.ctx, nullptr, &f.output), RC_INVALID_ARGUMENTS);
        EXPECT_EQ(walker(&f.ctx, &node, nullptr), RC_INVALID_ARGUMENTS);
        EXPECT_EQ(f.joined_log(), lines("! Invalid arguments passed!; err; ! Invalid arguments passed!; err"));
        EXPECT_DEATH(walker(nullptr, &node, &f.output), "NULL != ctx");
    }
}

TEST(walk, texts_for_the_client) {
    fake::framework f(OP_EDIT);
    run(f, "top{zz=1}");
    run(f, "top{shelf{entry{v=1}}}"); // the first text is released
    EXPECT_STREQ(f.req.err_msg, "id");
    EXPECT_EQ(f.texts.size(), 1u);
    f.null_strdup_at = 3;
    run(f, "top{yy=1}");
    EXPECT_EQ(f.req.err_msg, nullptr);
    EXPECT_EQ(f.texts.size(), 0u);
    EXPECT_TRUE(f.faults.empty());
}

// Every call that answers with a status fails in turn: list positions, key checks, adds, callbacks and hooks. A failure
// inside a fall-through is dropped, any other one is what the walk returns.
TEST(walk, each_call_fails_once) {
    for (const walk_case &c : walk_cases()) {
        prepared whole(c);
        run(whole.framework, c.request);
        const std::string &last = whole.framework.log.back();
        const std::string left = last.starts_with("left") ? last : "";
        const bool in_augment = !c.request.starts_with("top");
        if (whole.framework.joined_log().find("= ok") == std::string::npos) {
            continue;
        }
        for (uint64_t n = 1; n <= whole.framework.status_calls; ++n) {
            SCOPED_TRACE(std::string(c.what) + ", call " + std::to_string(n) + ": " + c.request);
            prepared p(c);
            fake::framework &f = p.framework;
            f.fail_at = n;
            run(f, c.request);
            const std::string log = f.joined_log();
            if (!in_augment) { // whose second walk is not a fall-through: walk_cases.cc has its failures
                EXPECT_NE(log.find(f.failed_in_fall_through ? "= ok" : "= injected"), std::string::npos) << log;
            }
            EXPECT_TRUE(f.hierarchy.empty() && f.faults.empty() && f.req.delete_walk == 0 && f.req.walk_all == 0)
                << log;
            if (left.find("PA") == std::string::npos) {
                EXPECT_TRUE(f.req.pass_flags == 0 && f.req.replace_armed == 0) << log;
            }
            if (left.find('!') == std::string::npos) {
                EXPECT_EQ(log.find('!', log.find("left")), std::string::npos) << log;
            }
            if (left.find("frames") == std::string::npos) {
                EXPECT_TRUE(f.frames.empty()) << log;
            }
        }
    }
}

const child_table test_model = {
    {"top", {"name", "box", "shelf", "shelf", "meter"}},
    {"box", {"a", "b", "tags", "inner", "state"}},
    {"inner", {"x"}},
    {"shelf", {"entry", "duo"}},
    {"entry", {"id", "id", "v", "sub", "sub", "state"}},
    {"sub", {"w", "item"}},
    {"item", {"no"}},
    {"duo", {"k1", "k2", "z"}},
    {"extra", {"e"}},
};

TEST(walk, random_requests) {
    constexpr uint32_t requests = 20000;
    uint64_t refused = 0;
    for (uint32_t seed = 1; seed <= requests; ++seed) {
        random_requests make(seed, test_model);
        const std::vector<uint32_t> kinds = {OP_GET, OP_GET_CONFIG, OP_EDIT, OP_EDIT_CHECKED, OP_EDIT_FULL, 5};
        fake::framework f(kinds[seed % kinds.size()]);
        f.ctx.ring_trace_on = 0;
        f.fail_at = make.one_in(4) ? 1 + seed % 40 : 0;
        const std::string request = make.request(make.one_in(6) ? make.one_of({"extra", "x:host", "zz", "-"}) : "top");
        run(f, request);
        const std::string end = f.log.back().starts_with("left") ? f.log.back() : "";
        const bool fine = f.hierarchy.empty() && f.frames.empty() && f.faults.empty() && f.req.walk_all == 0 &&
                          f.req.delete_walk == 0 && f.req.pass_flags == 0 && f.req.replace_armed == 0 &&
                          end.find("children") == std::string::npos && end.find("texts") == std::string::npos &&
                          end.find("!delete") == std::string::npos && end.find("!remove") == std::string::npos;
        ASSERT_TRUE(fine) << "seed " << seed << ": " << request << "\n" << f.joined_log();
        // Only a replace above another one loses its operation.
        const size_t replaces = request.find("!replace");
        if (replaces == std::string::npos || request.find("!replace", replaces + 1) == std::string::npos) {
            ASSERT_EQ(end.find('!'), std::string::npos) << "seed " << seed << ": " << request << "\n" << f.joined_log();
        }
        refused += f.joined_log().find("= ok") == std::string::npos;
    }
    EXPECT_GT(refused, requests / 10); // the requests reach both ends
    EXPECT_LT(refused, requests * 9 / 10);
}

// Faulty tables. Each row is one array of nodes and the number of the row that cannot stand.
namespace faults {

using namespace ocoptical;

constexpr model_node cont(uint8_t depth) {
    return {.kind = node_kind::container, .depth = depth, .tag = "c"};
}
constexpr model_node list(uint8_t depth) {
    return {.kind = node_kind::list, .depth = depth, .tag = "l", .list_path = "/l"};
}
constexpr model_node key(uint8_t depth) {
    return {.kind = node_kind::key, .depth = depth, .tag = "k"};
}
constexpr model_node leaf(uint8_t depth) {
    return {.kind = node_kind::leaf, .depth = depth, .tag = "v"};
}
constexpr model_node augment(uint8_t depth = 0) {
    return {.kind = node_kind::augment, .depth = depth};
}

template <typename... nodes>
consteval size_t fault(nodes... rows) {
    return first_fault(side::high, std::array<model_node, sizeof...(rows)>{rows...});
}

static_assert(fault(cont(0), list(1), key(2), key(2), leaf(2), cont(2), leaf(3), leaf(1), augment(), cont(1)) ==
              no_fault);
static_assert(fault(leaf(0)) == 0);                                   // no root
static_assert(fault(cont(1)) == 0);                                   // no root above it
static_assert(fault(cont(0), leaf(2)) == 1);                          // a level is missing
static_assert(fault(cont(0), leaf(1), leaf(2)) == 2);                 // below a leaf
static_assert(fault(cont(0), key(1)) == 1);                           // a key outside a list
static_assert(fault(cont(0), list(1), leaf(2)) == 2);                 // a list without key
static_assert(fault(cont(0), list(1), key(2), leaf(2), key(2)) == 4); // a key behind another child
static_assert(fault(cont(0), list(1)) == 1);                          // an empty list, last
static_assert(fault(cont(0), list(1), leaf(1)) == 2);                 // an empty list, amid
static_assert(fault(augment(), cont(0)) == 1);                        // an augment entry without node
static_assert(fault(augment()) == 0);
static_assert(fault(cont(0), augment(1), cont(2)) == 1);                             // an augment entry below a node
static_assert(fault(cont(0), model_node{.kind = node_kind::leaf, .depth = 1}) == 1); // no tag
static_assert(fault(cont(0), model_node{.kind = node_kind::list, .depth = 1, .tag = "l"}, key(2)) == 1); // no path
static_assert(fault(cont(0), model_node{.kind = node_kind::leaf, .depth = 1, .tag = "v", .list_path = "/v"}) == 1);

} // namespace faults

} // namespace
