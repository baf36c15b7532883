// One request on two devices. A request more: a row.
#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host.h"

namespace {

using road::outcome;
using road::run_host;
using road::scratch_file;

constexpr char lab[] = EXAMPLES "/lab.json";
constexpr char legacy[] = EXAMPLES "/legacy.json";

// Without the blanks that keep the columns apart: "left | right".
std::vector<std::string> rows_of(const std::string &text) {
    std::vector<std::string> rows{""};
    for (const char letter : text) {
        if (letter == '\n')
            rows.emplace_back();
        else if (letter != ' ' || (!rows.back().empty() && rows.back().back() != ' '))
            rows.back() += letter;
    }
    return rows;
}

std::string channel(const std::string &inside) {
    return R"({"openconfig-platform:components":{"component":[{"name":"0/0-OpticalChannel0/0/0/12",)"
           R"("openconfig-terminal-device:optical-channel":{)" +
           inside + "}}]}}";
}

TEST(diff, shows_what_differs) {
    const std::string edit = channel(R"("config":{"frequency":"193500000","operational-mode":5003})");
    const std::string refused = channel(R"("config":{"frequency":"1"})");
    struct {
        std::vector<std::string> arguments;
        std::string request;
        int status;
        std::vector<std::string> rows;
    } const cases[] = {
        {{"--device", lab, "--device", legacy, "--op", "edit"},
         edit,
         0,
         {"frequency = 193500000 <", "> param-value = 1935000", "> param-type = frequency", "> grid-type = 100mhz-grid",
          "operational-mode = 5003 operational-mode = 5003", "ok ok"}},
        {{"--device", legacy, "--device", lab, "--op", "edit"},
         edit,
         0,
         {"> frequency = 193500000", "param-value = 1935000 <"}},
        {{"--device", lab, "--device", legacy, "--op", "edit"},
         refused,
         1,
         {"refused: RC_VALUE_OUT_OF_RANGE refused: RC_VALUE_OUT_OF_RANGE",
          "error-tag: invalid-value error-tag: invalid-value"}},
    };
    for (const auto &each : cases) {
        std::vector<std::string> arguments{"diff", scratch_file("request", each.request)};
        arguments.insert(arguments.end(), each.arguments.begin(), each.arguments.end());
        const outcome result = run_host(arguments);
        EXPECT_EQ(result.status, each.status) << result.err;
        const std::vector<std::string> rows = rows_of(result.out);
        for (const std::string &row : each.rows)
            EXPECT_EQ(std::ranges::count(rows, row), 1) << row << "\n" << result.out;
    }
}

TEST(diff, compares_replies_and_reads_standard_input_once) {
    const std::string changed = scratch_file("changed.json", "");
    ASSERT_EQ(std::system((std::string("cp ") + lab + " " + changed).c_str()), 0);
    const std::string edit = scratch_file("edit", R"({"openconfig-terminal-device:terminal-device":)"
                                                  R"({"logical-channels":{"channel":[{"index":301,"config":)"
                                                  R"({"index":301,"description":"changed"}}]}}})");
    ASSERT_EQ(run_host({"edit", "--device", changed, "--save", edit}).status, 0);
    const std::string read = scratch_file("read", R"({"openconfig-terminal-device:terminal-device":)"
                                                  R"({"logical-channels":{"channel":[{"index":301,"config":)"
                                                  R"({"description":null,"admin-state":null}}]}}})");
    const outcome result =
        run_host({"diff", "--device", lab, "--device", changed, "--op", "get-config", "-"}, {.input = read});
    EXPECT_EQ(result.status, 0) << result.err;
    const std::vector<std::string> rows = rows_of(result.out);
    for (const char *row :
         {"description = line of ring 7 | description = changed", "admin-state = MAINT admin-state = MAINT"})
        EXPECT_EQ(std::ranges::count(rows, row), 1) << row << "\n" << result.out;
}

TEST(diff, wants_two_devices) {
    const std::string request = EXAMPLES "/read-one-channel.xml";
    EXPECT_EQ(run_host({"diff", request}).status, 64);
    EXPECT_EQ(run_host({"diff", "--device", lab, request}).status, 64);
    EXPECT_EQ(run_host({"diff", "--device", lab, "--device", lab, "--device", lab, request}).status, 64);
    EXPECT_EQ(run_host({"diff", "--device", lab, "--device", "/nowhere/device.json", request}).status, 2);
}

} // namespace
