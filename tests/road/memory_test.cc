// What the host may take: 128 MiB and eight times the input, on the densest and the largest requests that it admits.
#include <cstdint>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "host.h"

namespace {

using road::outcome;
using road::run_host;
using road::scratch_file;

#ifdef __SANITIZE_ADDRESS__
constexpr bool is_measured = false; // the sanitizer's own memory would be measured
#else
constexpr bool is_measured = true;
#endif

constexpr size_t mib = size_t{1} << 20;

const std::string json_head = R"({"openconfig-terminal-device:terminal-device":{"logical-channels":{"channel":[)";
const std::string json_tail = R"({"index":1}]}}})";
const std::string xml_head =
    R"(<terminal-device xmlns="http://openconfig.net/yang/terminal-device"><logical-channels>)";
const std::string xml_tail = "</logical-channels></terminal-device>";

outcome run_within_bound(const std::string &op, const std::string &request, const std::string &form = "json") {
    outcome result = run_host({"down", "--op", op, "--format", form, request}, {.output = "/dev/null"});
    const size_t size = std::filesystem::file_size(request);
    EXPECT_LE(result.peak_bytes, 128 * mib + 8 * size)
        << op << " of " << size << " bytes took " << result.peak_bytes / mib << " MiB";
    std::filesystem::remove(request);
    return result;
}

class memory : public testing::Test {
protected:
    void SetUp() override {
        if (!is_measured)
            GTEST_SKIP();
    }
};

TEST_F(memory, is_bounded_for_a_million_empty_entries) {
    // Two containers, the empty entries, and an entry with its key: 1,000,000 nodes, and one too many.
    EXPECT_EQ(run_within_bound("edit", scratch_file("dense.json", json_head, "{},", 999996, json_tail)).status, 1);
    EXPECT_EQ(run_within_bound("edit", scratch_file("dense.json", json_head, "{},", 999997, json_tail)).status, 2);
}

TEST_F(memory, is_bounded_for_a_million_empty_elements) {
    EXPECT_EQ(run_within_bound("get", scratch_file("dense.xml", xml_head, "<x/>", 999998, xml_tail)).status, 0);
    EXPECT_EQ(run_within_bound("get", scratch_file("dense.xml", xml_head, "<x/>", 999999, xml_tail)).status, 2);
}

TEST_F(memory, is_bounded_where_no_name_comes_twice) {
    std::string members;
    for (int number = 0; number < 300000; ++number)
        members += "\"a" + std::to_string(number) + "\":1,";
    const std::string head = R"({"openconfig-terminal-device:terminal-device":{"logical-channels":{)";
    const std::string request = scratch_file("names.json", head, members, 1, R"("b":1}}})");
    EXPECT_EQ(run_within_bound("get", request).status, 0);
}

TEST_F(memory, is_bounded_where_the_walk_adds_a_key_to_each_entry) {
    const outcome result =
        run_within_bound("get-config", scratch_file("keyless.json", json_head, R"({"state":{}},)", 400000, json_tail));
    EXPECT_TRUE(result.status == 0 || result.err.find("error-tag:  too-big") != std::string::npos) << result.err;
}

TEST_F(memory, is_bounded_where_the_native_tree_grows_most) {
    const std::string entry = R"({"index":7},)";
    const outcome dense = run_within_bound("edit", scratch_file("many.json", json_head, entry, 490000, json_tail));
    EXPECT_TRUE(dense.status == 0 || dense.err.find("error-tag:  too-big") != std::string::npos) << dense.err;
}

TEST_F(memory, is_bounded_for_the_largest_request) {
    constexpr size_t largest = 64 * mib;
    const std::string head = json_head + R"({"index":5,"config":{"description":")";
    const std::string tail = "\"}}," + json_tail;
    const size_t room = largest - head.size() - tail.size();
    // One value of 64 MiB, of a character that grows fivefold in XML.
    EXPECT_EQ(run_within_bound("edit", scratch_file("long.json", head, "&", room, tail), "xml").status, 0);
    EXPECT_EQ(run_within_bound("edit", scratch_file("long.json", head, "&", room + 1, tail)).status, 2);

    const std::string entry = R"({"index":7,"config":{"index":7,"description":")" + std::string(210, 'd') + R"("}},)";
    const size_t entries = std::min<size_t>(199000, (largest - json_head.size() - json_tail.size()) / entry.size());
    EXPECT_EQ(run_within_bound("edit", scratch_file("many.json", json_head, entry, entries, json_tail)).status, 0);
}

} // namespace
