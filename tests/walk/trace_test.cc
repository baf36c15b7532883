// Log statements on both channels, as the walkers make them.
#include "engine/client_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "ring_line.h"
#include "run.h"
#include "test_model.h"

namespace {

constexpr uint32_t err_only = 1, both_levels = 0x9;
constexpr char walker[] = "ymap_ox_oc_optical_testmodel_lvla_";

std::string pointer(const void *p) {
    char text[32];
    snprintf(text, sizeof text, "%p", p);
    return text;
}

// "TRC top: Start; TRC top: End; ", when numbers and contexts are right.
std::string ring_of(const fake::framework &f) {
    std::string text;
    unsigned int number = 0;
    for (const std::string &line : f.ring) {
        const ring_line parts(line);
        const bool right = parts.number == ++number && parts.ctx == &f.ctx && parts.source_line > 0 &&
                           parts.function.starts_with(walker);
        text += right ? parts.level + " " + parts.function.substr(strlen(walker)) + ": " + parts.text + "; " : line;
    }
    return text;
}

TEST(trace, frames_of_walkers) {
    const struct {
        uint32_t kind;
        const char *request, *script, *ring;
    } rows[] = {
        {OP_EDIT, "top{name=n}", "", "TRC top: Start; TRC name: Start; TRC name: End; TRC top: End; "},
        {OP_EDIT, "top{name=n}", "name:bad", "TRC top: Start; TRC name: Start; TRC name: End; TRC top: End; "},
        {OP_EDIT, "top{zz=1}", "",
         "TRC top: Start; ERR top: Unsupported tag is specified in the request.; TRC top: End; "},
        {OP_EDIT, "top{box!delete{a}}", "",
         "TRC top: Start; TRC box: Start; ERR box: Delete request with subtree present; TRC box: End; TRC top: End; "},
        {OP_EDIT, "top{box{?1}}", "",
         "TRC top: Start; TRC box: Start; ERR box: Failed to get subtrees!; TRC box: End; TRC top: End; "},
        {OP_EDIT, "top{box{a=1}}", "box:nm", "TRC top: Start; TRC box: Start; TRC top: End; "},
        {OP_EDIT, "top{shelf{entry{id=1}}}", "entry:nm",
         "TRC top: Start; TRC shelf: Start; TRC entry: Start; TRC entry: End; TRC shelf: End; TRC top: End; "},
        {OP_EDIT, "top{shelf{entry!replace{id=1}}}", "sub:nm", // in a delete half the walker goes on to its end
         "TRC top: Start; TRC shelf: Start; TRC entry: Start; TRC id: Start; TRC id: End; TRC v: Start; TRC v: End; "
         "TRC sub: Start; TRC sub: End; TRC id: Start; TRC id: End; TRC entry: End; TRC shelf: End; TRC top: End; "},
        {OP_EDIT, "top{shelf{entry}}", "",
         "TRC top: Start; TRC shelf: Start; TRC entry: Start; ERR entry: No keys specified with a list node.; "
         "ERR entry: No keys specified with a list node.; TRC entry: End; TRC shelf: End; TRC top: End; "},
        {OP_EDIT, "top{shelf{entry{id=1}}}", "leafref:bad",
         "TRC top: Start; TRC shelf: Start; TRC entry: Start; ERR entry: leafref value check fail; TRC entry: End; "
         "TRC shelf: End; TRC top: End; "},
    };
    for (const auto &row : rows) {
        fake::framework f(row.kind);
        f.script(row.script);
        run(f, row.request);
        EXPECT_EQ(ring_of(f), row.ring) << row.request;
    }
}

TEST(trace, invalid_arguments_have_no_end) {
    fake::framework f(OP_GET);
    ymap_ox_oc_optical_testmodel_lvla_top(&f.ctx, nullptr, &f.output);
    EXPECT_EQ(ring_of(f), "TRC top: Start; ERR top: Invalid arguments passed!; ");
}

TEST(trace, channels_are_independent) {
    const struct {
        uint32_t debug, ring;
        size_t debug_lines, ring_lines;
    } rows[] = {{0, 0, 0, 0}, {0, 1, 0, 3}, {err_only, 0, 1, 0}, {both_levels, 0, 3, 0}, {both_levels, 2, 3, 3}};
    for (const auto &row : rows) {
        fake::framework f(OP_EDIT);
        f.debug_levels = row.debug;
        f.ctx.ring_trace_on = row.ring;
        run(f, "top{zz=1}");
        EXPECT_EQ(f.debug.size(), row.debug_lines);
        EXPECT_EQ(f.ring.size(), row.ring_lines);
        EXPECT_EQ(f.trace_index, row.ring_lines); // numbers are taken for ring lines only
        EXPECT_EQ(f.error_marks, 1u);             // whatever is traced
        EXPECT_TRUE(f.faults.empty());
    }
}

TEST(trace, debug_lines) {
    fake::framework f(OP_EDIT);
    f.debug_levels = both_levels;
    run(f, "top{zz=1}");
    const std::string head = ": ZMF: ctx=" + pointer(&f.ctx) + ",";
    ASSERT_EQ(f.debug.size(), 3u);
    EXPECT_EQ(f.debug[0].text, "TRC" + head + "Start");
    EXPECT_EQ(f.debug[1].text, "ERR" + head + "Unsupported tag is specified in the request.");
    EXPECT_EQ(f.debug[2].text, "TRC" + head + "End");
    EXPECT_TRUE(f.debug[0].handle == f.ctx.trc_log && f.debug[1].handle == f.ctx.err_log);
}

TEST(trace, each_statement_has_a_word_and_leaves_it_alone) {
    const auto words = [] {
        fake::framework f(OP_EDIT);
        f.debug_levels = both_levels;
        run(f, "top{shelf{duo{k1=1 zz=1}}}");
        return f.debug;
    };
    const std::vector<fake::debug_line> first = words();
    std::vector<uint32_t *> distinct;
    for (const fake::debug_line &line : first) {
        EXPECT_EQ(line.filter_value, 0xffffffffu) << line.text;
        distinct.push_back(line.filter_word);
        *line.filter_word = 0xffffffffu;
    }
    std::sort(distinct.begin(), distinct.end());
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    EXPECT_EQ(distinct.size(), 5u); // "Start" of all, "Unsupported tag", and "End" of leaf, list and container

    *first[0].filter_word = 7;
    EXPECT_EQ(words()[0].filter_value, 7u);
    *first[0].filter_word = 0xffffffffu;
}

TEST(trace, a_ring_line_is_cut_at_249_characters) {
    const struct {
        size_t tag;
        bool cut;
    } rows[] = {{10, false}, {400, true}};
    for (const auto &row : rows) {
        fake::framework f(OP_GET);
        f.debug_levels = both_levels;
        const std::string tag(row.tag, 'x');
        run(f, "x:" + tag + "{y}");
        const std::string debug_line = "TRC: ZMF: ctx=" + pointer(&f.ctx) + ",Processing tag '" + tag + "'";
        EXPECT_EQ(f.debug[1].text, debug_line);
        const std::string &line = f.ring[1];
        const std::string whole = line.substr(0, line.find(',') + 1) + "Processing tag '" + tag + "'";
        EXPECT_EQ(line, row.cut ? whole.substr(0, 249) : whole);
    }
}

TEST(trace, a_text_without_request_context_is_dropped) {
    fake::framework f(OP_GET);
    f.ctx.req_ctx = nullptr;
    ocoptical::set_err_msg(&f.ctx, "tag");
    EXPECT_EQ(f.strdups, 0u);
}

} // namespace
