// What people have of the host beside its answers: help, manual page, completion, colours, progress, an installed tree.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host.h"

namespace {

using road::outcome;
using road::run_host;
using road::scratch_file;

constexpr char frequency[] = "/components/component/optical-channel/config/frequency";

std::string content_of(const std::string &name) {
    std::ostringstream content;
    content << std::ifstream(name).rdbuf();
    return content.str();
}

std::vector<std::string> lines_of(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// Those between the heading and the first empty line.
std::vector<std::string> commands() {
    std::vector<std::string> found;
    bool is_below = false;
    for (const std::string &line : lines_of(run_host({"--help"}).out)) {
        if (line.empty())
            is_below = false;
        if (is_below)
            found.push_back(line.substr(2, line.find(' ', 2) - 2));
        is_below |= line == "Subcommands:";
    }
    return found;
}

std::vector<std::string> options_of(const std::string &command) {
    std::vector<std::string> found;
    for (const std::string &line : lines_of(run_host({command, "--help"}).out))
        if (const size_t at = line.find("--"); line.starts_with("  -") && at != std::string::npos)
            found.push_back(line.substr(at, line.find(' ', at) - at));
    return found;
}

TEST(help, has_an_example_of_every_command) {
    EXPECT_EQ(commands().size(), 8U);
    for (const std::string &command : commands()) {
        const outcome help = run_host({command, "--help"});
        EXPECT_EQ(help.status, 0);
        EXPECT_NE(help.out.find("\n  ocmap " + command + " "), std::string::npos) << help.out;
    }
}

TEST(help, is_in_the_manual_page) {
    std::string manual = content_of(MANUAL);
    std::erase(manual, '\\');
    EXPECT_NE(manual.find("ocoptical " VERSION), std::string::npos);
    for (const std::string &command : commands()) {
        EXPECT_NE(manual.find("\n.B " + command + "\n"), std::string::npos) << command;
        EXPECT_FALSE(options_of(command).empty());
        for (const std::string &option : options_of(command))
            EXPECT_NE(manual.find(option), std::string::npos) << command << " " << option;
    }
}

// What bash offers for the last word.
std::vector<std::string> completed(const std::vector<std::string> &words) {
    const std::string result = scratch_file("completed", "");
    std::string script = "source " COMPLETION "; COMP_WORDS=(ocmap";
    for (const std::string &word : words)
        script += " '" + word + "'";
    script += "); COMP_CWORD=" + std::to_string(words.size()) + "; _ocmap " OCMAP_HOST " '" + words.back() + "' '" +
              (words.size() > 1 ? words[words.size() - 2] : "ocmap") + R"('; printf '%s\n' "${COMPREPLY[@]}")";
    const std::string file = scratch_file("script", script);
    EXPECT_EQ(std::system(("bash " + file + " >" + result + " 2>/dev/null").c_str()), 0);
    std::vector<std::string> offered = lines_of(content_of(result));
    std::erase(offered, "");
    std::ranges::sort(offered);
    return offered;
}

TEST(completion, offers_what_fits) {
    using texts = std::vector<std::string>;
    struct {
        texts words, offered;
    } const rows[] = {
        {{"e"}, {"edit", "explain"}},
        {{"get-"}, {"get-config"}},
        {{"edit", "--s"}, {"--save", "--show"}},
        {{"matrix", "--format", ""}, {"csv", "html", "json", "text"}},
        {{"up", "--op", "get-"}, {"get-config"}},
        {{"get", "--device", ""}, {}},
        {{"explain", "/optical-channels/optical-channel/cd-m"},
         {"/optical-channels/optical-channel/cd-max", "/optical-channels/optical-channel/cd-min"}},
        {{"explain", "/optical-channels"}, {"/optical-channels", "/optical-channels/optical-channel"}},
        {{"explain", "/no-such"}, {}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(completed(row.words), row.offered) << row.words.back();
}

TEST(terminals, have_colours_unless_these_are_refused) {
    const std::vector<std::string> explain{"explain", frequency};
    const auto seen = [&](std::vector<std::string> environment) {
        road::wiring wires;
        wires.is_terminal = true;
        wires.environment = std::move(environment);
        return run_host(explain, wires).out;
    };
    EXPECT_NE(seen({"NO_COLOR=", "TERM=xterm"}).find("\x1b[32mmapped\x1b[0m"), std::string::npos);
    EXPECT_EQ(seen({"NO_COLOR=1", "TERM=xterm"}).find('\x1b'), std::string::npos);
    EXPECT_EQ(seen({"NO_COLOR=", "TERM=dumb"}).find('\x1b'), std::string::npos);
    EXPECT_EQ(run_host(explain, {.environment = {"NO_COLOR=", "TERM=xterm"}}).out.find('\x1b'), std::string::npos);
}

TEST(terminals, see_how_far_long_work_is) {
    const std::string channels =
        scratch_file("many.json", R"({"channels": {"1": "CoherentDSP0/0/0/1")", R"(  )", 1 << 20, "}}");
    const std::string request = EXAMPLES "/read-one-channel.xml";
    const road::wiring terminal{.is_terminal = true};
    const std::string seen = run_host({"get", "--device", channels, request}, terminal).out;
    for (const char *step :
         {"\rreading ", "\rwalking down...", "\rasking the device...", "\rwalking up...", "\r\x1b[K"})
        EXPECT_NE(seen.find(step), std::string::npos) << step;
    EXPECT_EQ(run_host({"get", request}, terminal).out.find("walking"), std::string::npos); // a small device
    EXPECT_EQ(run_host({"get", "--device", channels, request}).err, "");                    // no terminal

    const std::string matrix = run_host({"matrix", "--format", "csv"}, terminal).out;
    EXPECT_NE(matrix.find("\rplatform 32 of 32..."), std::string::npos);
}

TEST(installed, runs_from_where_it_stands) {
    const std::string prefix = scratch_file("installed", "") + ".d";
    const std::string log = scratch_file("install.log", "");
    ASSERT_EQ(std::system((CMAKE " --install " BUILD " --prefix " + prefix + " >" + log + " 2>&1").c_str()), 0)
        << content_of(log);
    for (const char *file : {"/include/ocoptical/zmf.h", "/share/man/man1/ocmap.1", "/share/doc/ocoptical/README.md",
                             "/share/bash-completion/completions/ocmap", "/share/doc/ocoptical/examples/lab.json"})
        EXPECT_TRUE(std::ifstream(prefix + file)) << file;
    const std::string ocmap = prefix + "/bin/ocmap", result = scratch_file("result", "");
    const auto run = [&](const std::string &arguments) {
        EXPECT_EQ(std::system((ocmap + " " + arguments + " >" + result).c_str()), 0) << arguments;
        return content_of(result);
    };
    EXPECT_EQ(run("--version"), "ocmap " VERSION "\n");
    // The device has no use for the link without version.
    EXPECT_EQ(std::system(("rm " + prefix + "/lib*/libocoptical.so").c_str()), 0);
    EXPECT_NE(run("get " + prefix + "/share/doc/ocoptical/examples/read-channel.xml").find("<index>"),
              std::string::npos);
}

} // namespace
