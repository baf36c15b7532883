// The matrix of all leaves on all platforms, as a whole: what must hold of it, and some cells.
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host.h"

namespace {

using nlohmann::json;
using road::outcome;
using road::run_host;

const json &matrix() {
    static const json read = [] {
        const outcome result = run_host({"matrix", "--format", "json"});
        EXPECT_EQ(result.status, 0) << result.err;
        return json::parse(result.out);
    }();
    return read;
}

std::vector<std::string> lines_of(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

const json &leaf(const std::string &path) {
    const json &all = matrix()["leaves"];
    return *std::ranges::find_if(all, [&](const json &each) { return each["path"] == path; });
}

struct platform {
    size_t router_type;
    bool terminal, legacy, history;
};

size_t number_of(const platform &wanted) {
    const json &all = matrix()["platforms"];
    const json row = {{"router-type", wanted.router_type},
                      {"optical-terminal-device", wanted.terminal},
                      {"legacy", wanted.legacy},
                      {"history", wanted.history}};
    return static_cast<size_t>(std::ranges::find(all, row) - all.begin());
}

// "mapped ethernet,odu PATH PATH; refused otu4"; who is left out where all are meant.
std::string told(const std::string &path, const char *column, const platform &on) {
    std::string text;
    for (const json &group : leaf(path)[column]) {
        if (std::ranges::find(group["platforms"], json(number_of(on))) == group["platforms"].end())
            continue;
        for (const json &part : group["parts"]) {
            text += (text.empty() ? "" : "; ") + part["outcome"].get<std::string>();
            if (group["parts"].size() > 1)
                for (const json &each : part["of"])
                    text += " " + each.get<std::string>();
            for (const json &native : part["native"])
                text += " " + native["path"].get<std::string>();
        }
    }
    return text;
}

constexpr platform lab{5, true, false, false};
constexpr platform legacy{18, true, true, false};
constexpr platform bare{5, false, false, false};
constexpr platform with_history{5, true, false, true};

TEST(matrix, knows_what_platforms_differ_in) {
    constexpr char frequency[] = "/components/component/optical-channel/config/frequency";
    constexpr char transmit[] = "/terminal-device/logical-channels/channel/otn/config/tti-msg-transmit";
    constexpr char average[] = "/terminal-device/logical-channels/channel/otn/state/pre-fec-ber/avg";
    constexpr char cd_max[] = "/components/component/optical-channel/extended/config/optics-cd-max";
    const std::string carrier = "/interface-configurations/interface-configuration/optics/optics-dwdm-carrier";
    const std::string bins = "/performance-management/otu/otu-ports/otu-port/otu-prev/otu-prev-flex-interval/"
                             "otu-prev-flex-interval-fecs/otu-prev-flex-interval-fec/pre-fec-ber/average";
    const std::string time_line = "/performance-management-history/global/periodic/otu-history/otu-port-histories/"
                                  "otu-port-history/otu-second30-history/otu-second30fec-histories/"
                                  "otu-second30fec-history/otu-second30fec-time-line-instances/"
                                  "otu-second30fec-time-line-instance/pre-fec-ber/average";
    struct {
        const char *path, *column;
        platform on;
        std::string told;
    } const rows[] = {
        {frequency, "edit", lab, "mapped /optical-channels/optical-channel/frequency"},
        {frequency, "edit", legacy,
         "mapped " + carrier + "/param-value " + carrier + "/param-type " + carrier + "/grid-type"},
        {frequency, "delete", legacy, "mapped " + carrier},
        {frequency, "filled-by", legacy, "mapped " + carrier + "/param-value"},
        {transmit, "edit", lab, "mapped /logical-channels/channel/otn/tti-msg-transmit"},
        {transmit, "edit", bare, "refused"},
        {average, "get", lab, "mapped all coherent otu4 " + bins + "; dropped ethernet odu"},
        {average, "get", with_history, "mapped all coherent otu4 " + time_line + "; dropped ethernet odu"},
        {average, "filled-by", lab, "mapped " + bins},
        {average, "filled-by", with_history, "mapped " + time_line},
        {cd_max, "edit", {18, true, false, false}, "mapped /optical-channels/optical-channel/cd-max"},
        {cd_max, "edit", lab, "dropped"},
        {cd_max, "edit", legacy, "dropped"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(told(row.path, row.column, row.on), row.told) << row.path << " " << row.column;
}

// Leaves by model, without hyphens as in exported names.
std::map<std::string, size_t> exported_leaves() {
    constexpr std::string_view front = "ymap_ox_oc_optical_";
    std::ifstream exported(EXPORTS);
    std::map<std::string, size_t> leaves;
    for (std::string line; std::getline(exported, line);) {
        const size_t at = line.find(front), kind = line.find("_leaf_lvl");
        if (at != std::string::npos && kind != std::string::npos)
            ++leaves[line.substr(at + front.size(), kind - at - front.size())];
    }
    return leaves;
}

std::string without_hyphens(std::string model) {
    std::erase(model, '-');
    std::ranges::transform(model, model.begin(), [](unsigned char letter) { return std::tolower(letter); });
    return model;
}

TEST(matrix, is_whole) {
    EXPECT_EQ(matrix()["platforms"].size(), 32U);
    for (const json &each : matrix()["leaves"])
        for (const char *column : {"get-config", "get", "edit", "delete", "filled-by"}) {
            size_t cells = 0;
            for (const json &group : each[column])
                cells += group["platforms"].size();
            EXPECT_EQ(cells, 32U) << each["path"] << " " << column;
        }

    const std::map<std::string, size_t> exported = exported_leaves();
    for (const json &count : matrix()["counts"]) {
        const size_t leaves = count["leaves"];
        EXPECT_EQ(leaves,
                  count["mapped-down"].get<size_t>() + count["refused"].get<size_t>() + count["dropped"].get<size_t>());
        EXPECT_EQ(leaves,
                  count["model"] == "all" ? matrix()["leaves"].size() : exported.at(without_hyphens(count["model"])));
    }
}

TEST(matrix, has_a_line_of_every_leaf_on_every_platform) {
    const size_t leaves = matrix()["leaves"].size();
    const std::vector<std::string> csv = lines_of(run_host({"matrix", "--format", "csv"}).out);
    ASSERT_EQ(csv.size(), 1 + 32 * leaves);
    EXPECT_EQ(csv[0], "model,leaf,router-type,optical-terminal-device,legacy,statistics,get-config,get-config native,"
                      "get,get native,edit,edit native,delete,delete native,filled-by,filled-by native\r");
    const std::string row =
        "openconfig-terminal-device,/components/component/optical-channel/config/frequency,5,yes,no,"
        "flex bins,mapped,Corvane-terminal-device-cfg:/optical-channels/optical-channel/frequency,";
    EXPECT_EQ(std::ranges::count_if(csv, [&](const std::string &line) { return line.starts_with(row); }), 1);
}

TEST(matrix, fails_where_a_cell_cannot_be_worked_out) {
    const outcome result = run_host({"matrix", "--plugin", ODD_PLUGIN});
    EXPECT_EQ(result.status, 1) << result.err;
    EXPECT_EQ(result.out, "");
    const std::string channel = "ocmap: /terminal-device/logical-channels/channel/";
    std::vector<std::string> lines = lines_of(result.err);
    for (const std::string &line :
         {channel + "config/description, delete: status 0x0000dead",
          channel + "config/description, edit: status 0x0000dead",
          channel + "config/description, get: status 0x0000dead",
          channel + "config/description, get-config: status 0x0000dead",
          channel + "config/admin-state, edit: no platform takes the value that is tried",
          channel + "state/description, filled-by: reads come down, and nothing that was tried fills it",
          std::string("ocmap: 6 cells of the matrix cannot be worked out")})
        EXPECT_EQ(std::erase(lines, line), 1U) << line;
    EXPECT_EQ(lines, std::vector<std::string>{});
    EXPECT_EQ(run_host({"matrix", "--plugin", LIBRARY_WITHOUT_ROOTS}).status, 2);
}

// The host by itself has nothing to draw a page with; where a browser is installed, it tells what it made of it.
class page : public testing::Test {
protected:
    static std::string browser() {
        for (const char *name : {"chromium", "chromium-browser", "google-chrome"})
            for (const char *place : {"/usr/bin/", "/usr/local/bin/", "/snap/bin/"})
                if (std::ifstream(std::string(place) + name))
                    return std::string(place) + name;
        return "";
    }

    static std::string drawn(const std::string &file, const std::string &filter) {
        const std::string into = file + ".dom";
        const std::string command = browser() +
                                    " --headless --no-sandbox --disable-gpu --virtual-time-budget=20000 --dump-dom "
                                    "'file://" +
                                    file + "#" + filter + "' >" + into + " 2>/dev/null";
        EXPECT_EQ(std::system(command.c_str()), 0);
        std::ostringstream dom;
        dom << std::ifstream(into).rdbuf();
        return dom.str();
    }
};

TEST_F(page, needs_nothing_else_and_shows_and_filters) {
    const outcome result = run_host({"matrix", "--format", "html"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.starts_with("<!DOCTYPE html>"));
    for (const char *outside : {"src=", "href=", "@import", "url("})
        EXPECT_EQ(result.out.find(outside), std::string::npos) << outside;

    if (browser().empty())
        GTEST_SKIP() << "no browser here";
    const std::string file = road::scratch_file("matrix.html", result.out);
    const std::string leaves = std::to_string(matrix()["leaves"].size());
    struct {
        const char *filter;
        std::string has, lacks;
    } const rows[] = {
        {"", leaves + " of " + leaves + " leaves", "param-value</div>"},
        {"search=optical-channel/config/frequency", "1 of " + leaves + " leaves", "param-value</div>"},
        {"search=optical-channel/config/frequency&legacy=yes", "optics-dwdm-carrier/param-value</div>",
         "/optical-channels/optical-channel/frequency</div>"},
        {"search=no-such-leaf", "0 of " + leaves + " leaves", "class=\"path\""},
    };
    for (const auto &row : rows) {
        const std::string dom = drawn(file, row.filter);
        EXPECT_NE(dom.find(row.has), std::string::npos) << row.filter;
        const std::string table = dom.substr(0, dom.find("id=\"counts\""));
        EXPECT_EQ(table.find(row.lacks), std::string::npos) << row.filter;
    }
}

} // namespace
