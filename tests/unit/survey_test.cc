// The parts that explanations and the matrix are made of: paths as people write them, sets of platforms, log lines.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "survey/frames.h"
#include "survey/path_pattern.h"
#include "survey/platforms.h"

namespace {

using ocmap::path_pattern;

std::vector<std::string_view> tags(std::string_view path) {
    std::vector<std::string_view> all;
    while (!path.empty()) {
        path.remove_prefix(1);
        all.push_back(path.substr(0, path.find('/')));
        path.remove_prefix(all.back().size());
    }
    return all;
}

TEST(path_pattern, matches) {
    struct {
        const char *pattern, *path;
        bool is_match;
    } const rows[] = {
        {"/a/b", "/a/b", true},
        {"/a/b/", "/a/b", true},
        {"/a", "/a/b", false},
        {"/a/b", "/a", false},
        {"/m:a/n:b[k=1]", "/a/b", true},
        {"/a/*", "/a/b", true},
        {"/a/*", "/a/b/c", false},
        {"/*/*-x?", "/a/pre-x1", true},
        {"/*/*-x?", "/a/pre-x", false},
        {"/a/**", "/a", true},
        {"/a/**", "/a/b/c", true},
        {"/**/c", "/a/b/c", true},
        {"/**/b/**", "/a/b/c", true},
        {"/**/b/**/b", "/a/b", false},
        {"/**/**/**", "/a/b", true},
        {"/**", "/a/b/c/d", true},
        {"/*a*a*a*a*b", "/aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", false},
    };
    for (const auto &row : rows)
        EXPECT_EQ(path_pattern(row.pattern).matches(tags(row.path)), row.is_match) << row.pattern << " " << row.path;
}

TEST(path_pattern, reads_keys) {
    const path_pattern path("/a[k=1]/b[m:k='x/]y'][l=\"z\"]/c");
    const std::vector<ocmap::chosen_key> keys{{"a", "k", "1"}, {"b", "k", "x/]y"}, {"b", "l", "z"}};
    EXPECT_EQ(path.keys(), keys);
    EXPECT_EQ(path.bare(), "/a/b/c");
    for (const char *bad : {"", "a", "//", "/a[", "/a[k", "/a[k=1", "/a[=1]", "/a[k='1]", "/a[k=1]b", "/m:"})
        EXPECT_THROW(path_pattern{bad}, ocmap::pattern_error) << bad;
}

TEST(nearest, prefers_slips_of_the_pen) {
    const std::vector<std::string> known{"/a/config/frequency", "/a/state/frequency", "/a/config/power", "/b"};
    EXPECT_EQ(ocmap::nearest("/a/config/frequenzy", known, 2),
              (std::vector<std::string>{"/a/config/frequency", "/a/state/frequency"}));
    EXPECT_EQ(ocmap::nearest("", known, 9).size(), known.size());
}

// Those for which all hold; -1: any.
ocmap::platform_set chosen(int router_type, int terminal, int legacy, int history) {
    ocmap::platform_set all;
    for (size_t i = 0; i < ocmap::platform_count; ++i) {
        const ocmap::platform &each = ocmap::platforms()[i];
        all[i] = (router_type < 0 || static_cast<int>(each.router_type) == router_type) &&
                 (terminal < 0 || each.has_terminal_device == (terminal == 1)) &&
                 (legacy < 0 || each.is_legacy == (legacy == 1)) && (history < 0 || each.has_history == (history == 1));
    }
    return all;
}

TEST(platforms, are_told_in_few_words) {
    EXPECT_EQ(ocmap::told(chosen(-1, -1, -1, -1)), "");
    EXPECT_EQ(ocmap::told(chosen(-1, -1, 1, -1)), "legacy");
    EXPECT_EQ(ocmap::told(chosen(7, 0, -1, 1)), "no optical terminal device, history, router type 7");
    EXPECT_EQ(ocmap::told(chosen(7, -1, -1, -1) | chosen(18, -1, -1, -1)), "router type 7 or 18");
    EXPECT_EQ(ocmap::told(chosen(-1, 1, -1, -1) | chosen(-1, 0, 1, -1)), "legacy; optical terminal device, not legacy");
}

TEST(frames, follow_the_log) {
    constexpr char walker[] = "ymap_ox_oc_optical_m_lvla_a";
    constexpr char callback[] = "ymap_ox_oc_optical_m_leaf_lvla_a_b";
    ocmap::frames running;
    const auto line = [&](const char *function, const char *text) {
        running.take(std::string("#7: TRC: ") + function + ":12 ctx=0x1," + text);
    };
    line(walker, "Start");
    EXPECT_EQ(running.outer_callback(), ocmap::frames::npos);
    line(callback, "Start");
    line("oc_optical_b_to_low", "Start");
    line("oc_optical_b_to_low", "some text, with a comma");
    EXPECT_EQ(running.outer_callback(), 1U);
    EXPECT_EQ(running[2], "oc_optical_b_to_low");
    running.take("#8: ERR: oc_optical_b_to_low:3 ctx=0x1,Invalid arguments passed!");
    EXPECT_EQ(running.depth(), 2U);
    line("a_walker_without_end", "Start");
    line(callback, "End");
    EXPECT_EQ(running.depth(), 1U);
    running.take("no line of a log");
    line("never_started", "End");
    EXPECT_EQ(running.depth(), 1U);
}

} // namespace
