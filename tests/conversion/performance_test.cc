// Bins and 30-second history on the way up: native trees walked from their roots, and what the walk adds.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "../walk/request_text.h"
#include "corvane_pmengine_oper/ymap_oc_optical_corvane_pmengine_oper.h"
#include "hardware/hardware.h"
#include "pouch/fields.h"
#include "pouch/registry.h"
#include "records/catalogue.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

enum class from : uint8_t { bins, history };

constexpr char dsp[] = "CoherentDSP0/1/0/2", optics[] = "Optics0/1/0/2", odu[] = "ODU40/1/0/2",
               ethernet[] = "HundredGigECtrlr0/1/0/3";
constexpr char component[] = "0/1-OpticalChannel0/1/0/2";

// Native trees as text (request_text.h), by what a port's one bin holds.

std::string steps(const std::vector<std::string> &tags, const std::string &inside) {
    std::string text = inside;
    for (size_t i = tags.size(); i-- != 0;) {
        text = tags[i] + "{" + text + "}"; // NOLINT(performance-inefficient-string-concatenation)
    }
    return text;
}

std::string named(const std::string &port) {
    return port.empty() ? "" : "name=" + port + " ";
}

// "otu", "otu-port" of name P, and on to the list of bins that `kind` names, each of `bins`.
std::string bins_of(const std::string &type, const std::string &port, const std::string &lists, const std::string &list,
                    const std::vector<std::string> &bins, const std::string &key = "number") {
    std::string entries;
    for (size_t i = 0; i < bins.size(); ++i) {
        entries += list + "{" + key + "=" + std::to_string(i + 1) + " " + bins[i] + "} ";
    }
    const std::string prev = type + "-prev";
    return steps({type, type + "-ports", type + "-port"},
                 named(port) + steps({prev, prev + "-flex-interval", prev + "-flex-interval-" + lists}, entries));
}

std::string history_of(const std::string &type, const std::string &port, const std::string &table,
                       const std::vector<std::string> &bins) {
    std::string entries;
    for (size_t i = 0; i < bins.size(); ++i) {
        entries += table + "-time-line-instance{number=" + std::to_string(i + 1) + " " + bins[i] + "} ";
    }
    return steps({type + "-history", type + "-port-histories", type + "-port-history"},
                 named(port) + steps({type + "-second30-history", table + "-histories", table + "-history"},
                                     "number=0 " + steps({table + "-time-line-instances"}, entries)));
}

using bins = std::vector<std::string>;

std::string fec(from tree, const std::string &port, const bins &held) {
    return tree == from::bins ? bins_of("otu", port, "fecs", "otu-prev-flex-interval-fec", held)
                              : history_of("otu", port, "otu-second30fec", held);
}
std::string otn(from tree, const std::string &port, const bins &held) {
    return tree == from::bins ? bins_of("otu", port, "otns", "otu-prev-flex-interval-otn", held)
                              : history_of("otu", port, "otu-second30otn", held);
}
std::string optical(from tree, const std::string &port, const bins &held) {
    return tree == from::bins ? bins_of("optics", port, "optics", "optics-prev-flex-interval-optic", held)
                              : history_of("optics", port, "optics-second30-optics", held);
}
std::string pcs(from tree, const std::string &port, const bins &held) {
    return tree == from::bins
               ? bins_of("ethernet", port, "pcses", "ethernet-prev-flex-interval-pcs", held, "slot-number")
               : history_of("ethernet", port, "second30pcs", held);
}
std::string odu_otn(const std::string &port, const bins &held) {
    return bins_of("odu", port, "otns", "odu-prev-flex-interval-otn", held);
}

// A walk from the root of a tree. The log has one line for each entry ("channel 1", "component ..."), add and keyed
// set, with these heads: "C" a channel's, "S" an optical channel's state, "[1]" the channel of that number.
struct walk {
    explicit walk(from tree, uint32_t kind = OP_GET) : from_(tree), session(kind) {
        session.record([this](const zmf::call &c) { note(c); });
    }

    rcode up(const std::string &text) {
        const std::string whole = from_ == from::bins
                                      ? "performance-management{" + text + "}"
                                      : "performance-management-history{global{periodic{" + text + "}}}";
        request_text native(whole, ZMF_NS_PMENGINE_OPER);
        const auto root = from_ == from::bins
                              ? ymap_xo_oc_optical_corvanepmengineoper_lvla_performancemanagement
                              : ymap_xo_oc_optical_corvanepmengineoper_lvla_performancemanagementhistory;
        const rcode status = root(session.context(), native.top(), output.root());
        EXPECT_EQ(session.hierarchy_depth(), 0u);
        return status;
    }

    void note(const zmf::call &c) {
        const std::string value = c.value != nullptr ? c.value : "(null)";
        if (c.op == zmf::operation::search_or_add_list) {
            EXPECT_EQ(c.path, c.key == std::string("index") ? channels : std::string("/components/component"));
            log += (c.key == std::string("index") ? "channel " : "component ") + value + "\n";
        } else if (c.op == zmf::operation::add_path) {
            EXPECT_STREQ(c.ns, c.path == config_name ? ZMF_NS_OC_PLATFORM : ZMF_NS_OC_TERMINAL_DEVICE);
            EXPECT_EQ(c.cross_module_flag, std::string(c.path).starts_with("/components")) << c.path;
            EXPECT_TRUE(c.source == nullptr && !c.list_flag);
            log += shortened(c.path) + "=" + value + "\n";
        } else if (c.op == zmf::operation::xpath) {
            EXPECT_STREQ(c.ns, ZMF_NS_OC_TERMINAL_DEVICE);
            log += shortened(c.path) + "=" + value + (c.result == RC_LEAF_EXISTS ? " is there" : "") + "\n";
        }
    }

    std::string shortened(std::string path) const {
        const std::string state = "/components/component/optical-channel/state";
        if (path == config_name) {
            return "config/name";
        }
        if (path.starts_with(state)) {
            return path.replace(0, state.size(), "S");
        }
        EXPECT_TRUE(path.starts_with(channels)) << path;
        const size_t number = path.find("index=");
        return number == std::string::npos ? path.replace(0, channels.size(), "C")
                                           : path.replace(0, number + std::string("index=").size(), "[");
    }

    std::string value(const std::string &path) {
        const zmf::output_node found = output.find(path.c_str());
        return !found ? "none" : found.value() != nullptr ? found.value() : "(null)";
    }

    const std::string channels = "/terminal-device/logical-channels/channel";
    const std::string config_name = "/components/component/config/name";
    from from_;
    zmf::session session;
    zmf::output_tree output;
    std::string log;
};

// A device with one channel of each class; its line port is coherent, a grey one or of a colour that nobody knows.
enum class colour : uint8_t { coherent, grey, unknown };

void become(from tree, colour of_line_port = colour::coherent, uint32_t router_type = 5) {
    static const rcode registered = pouch_register_all_optics_ui_pouchs();
    ASSERT_EQ(registered, RC_OK);
    hardware::current() = {};
    hardware::current().router_type = router_type;
    hardware::current().optical_terminal_device = true;
    hardware::current().state_store_installed = true;
    const auto map = [](uint32_t channel, const std::string &name) {
        hardware::current().name_of[channel] = name;
        hardware::current().channel_of[name] = channel;
    };
    map(1, "CoherentDSP0_1_0_2");
    map(3, "HundredGigECtrlr0_1_0_3");
    map(5, "ODU40_1_0_2");
    map(6, "OTU40_1_0_4");
    map(7, "CoherentDSP0_0_0_4");
    statedb_available = 1;
    if (of_line_port != colour::unknown) {
        pouch::value record;
        record.what = pouch::value::kind::record;
        pouch::member type;
        type.name = "OpticsType";
        type.what.what = pouch::value::kind::number;
        type.what.text = of_line_port == colour::grey ? "1" : "2";
        record.members.push_back(type);
        hardware::current().state_items["/oper/optics/if/Optics0_1_0_2/optics_info"] =
            pouch::encode_fields(*pouch::find_type("optics_edm_info"), record);
    }
    OC_OPTICAL_PM_IS_FLEXBIN_UNSUPPORTED = tree == from::history ? 1 : 0;
}

class performance : public testing::Test {
protected:
    void TearDown() override {
        OC_OPTICAL_PM_IS_FLEXBIN_UNSUPPORTED = 0;
        statedb_available = 0;
    }
};

// Five values that follow `before`, and what comes of them.
std::string statistic(const std::string &tag, int before) {
    std::string text = tag + "{";
    for (const char *leaf : {"minimum", "average", "maximum", "min-time", "max-time"}) {
        text += std::string(leaf) + "=" + std::to_string(++before) + " ";
    }
    return text + "} ";
}

std::string reported(const std::string &path, int before, const std::string &decimals = "") {
    std::string log;
    for (const std::string leaf : {"min", "avg", "max", "min-time", "max-time"}) {
        log += path + "/" + leaf + "=" + std::to_string(++before) + (leaf.ends_with("time") ? "" : decimals) + "\n";
    }
    return log;
}

const std::string otn_counters = "es-ne{data=11} ses-ne{data=12} uas-ne{data=13} bbe-ne{data=14}";
const std::string otn_reported = "C/otn/state/errored-seconds=11\nC/otn/state/severely-errored-seconds=12\n"
                                 "C/otn/state/unavailable-seconds=13\nC/otn/state/background-block-errors=14\n";
const std::string fec_figures = "ec-bits{data=1} uc-words{data=2} " + statistic("pre-fec-ber", 20) +
                                statistic("post-fec-ber", 30) + statistic("q", 40);
const std::string fec_reported = "C/otn/state/fec-corrected-bits=1\nC/otn/state/fec-uncorrectable-words=2\n" +
                                 reported("C/otn/state/pre-fec-ber", 20, ".0") +
                                 reported("C/otn/state/post-fec-ber", 30, ".0") + reported("C/otn/state/q-value", 40);
const std::string pcs_counters =
    "cumulative-bip=81 es-ne{count{data=82}} ses-ne{count{data=83}} uas-ne{count{data=84}}";
const std::string pcs_reported =
    "C/ethernet/state/in-pcs-bip-errors=81\nC/ethernet/state/in-pcs-errored-seconds=82\n"
    "C/ethernet/state/in-pcs-severely-errored-seconds=83\nC/ethernet/state/in-pcs-unavailable-seconds=84\n";
const std::string optical_figures =
    statistic("cd", 100) + statistic("pmd", 200) + statistic("pdl", 300) + statistic("rx-sig-pow", 400);
const std::string optical_reported =
    reported("S/chromatic-dispersion", 100) + reported("S/second-order-polarization-mode-dispersion", 200, ".00") +
    reported("S/polarization-dependent-loss", 300, ".00") + reported("S/input-power", 400, ".00");
const std::string component_opened =
    "component " + std::string(component) + "\nconfig/name=" + std::string(component) + "\n";

std::string otu_intervals(const std::string &length, bool coherent = true) {
    return "C/otn/state/post-fec-ber/interval=" + length + "\nC/otn/state/pre-fec-ber/interval=" + length + "\n" +
           (coherent ? "C/otn/state/q-value/interval=" + length + "\n" : "");
}

std::string component_intervals(const std::string &length) {
    std::string log;
    for (const char *figure : {"chromatic-dispersion", "polarization-dependent-loss",
                               "second-order-polarization-mode-dispersion", "input-power"}) {
        log += std::string("S/") + figure + "/interval=" + length + "\n";
    }
    return log;
}

TEST_F(performance, all_figures_of_bins) {
    become(from::bins);
    walk w(from::bins);
    EXPECT_EQ(w.up(fec(from::bins, dsp, {fec_figures + "flex-bin-interval=10 valid=true"}) +
                   otn(from::bins, dsp, {otn_counters}) +
                   optical(from::bins, optics,
                           {optical_figures + statistic("snr", 500) + "flex-bin-interval=10 valid=true"}) +
                   pcs(from::bins, ethernet, {pcs_counters}) + odu_otn(odu, {otn_counters})),
              RC_OK);
    EXPECT_EQ(w.log, "channel 1\n" + fec_reported + otu_intervals("10000000000") + "channel 1\n" + otn_reported +
                         component_opened + optical_reported + reported("[1]/otn/state/esnr", 500) +
                         component_intervals("10000000000") + "channel 3\n" + pcs_reported + "channel 5\n" +
                         otn_reported);
    EXPECT_EQ(w.value("/terminal-device/logical-channels/channel[index=1]/otn/state/pre-fec-ber/avg"), "22.0");
    EXPECT_EQ(w.value("/terminal-device/logical-channels/channel[index=1]/otn/state/esnr/min"), "501");
    EXPECT_EQ(w.value("/terminal-device/logical-channels/channel[index=5]/otn/state/errored-seconds"), "11");
    EXPECT_EQ(w.value("/terminal-device/logical-channels/channel[index=3]/otn/state/errored-seconds"), "none");
    EXPECT_EQ(w.value("/components/component[name=0/1-OpticalChannel0/1/0/2]/optical-channel/state/input-power/max"),
              "403.00");
}

TEST_F(performance, all_figures_of_history) {
    become(from::history);
    walk w(from::history);
    EXPECT_EQ(w.up(pcs(from::history, ethernet, {pcs_counters}) +
                   fec(from::history, dsp, {fec_figures + "flex-bin-interval=10 valid=true"}) +
                   otn(from::history, dsp, {otn_counters}) +
                   optical(from::history, optics,
                           {optical_figures + statistic("snr", 500) + "flex-bin-interval=10 valid=true"})),
              RC_OK);
    // The minimum of the last figure is the length of the bin.
    EXPECT_EQ(w.log, "channel 3\n" + pcs_reported + "channel 1\n" + fec_reported + otu_intervals("30000000000") +
                         "channel 1\n" + otn_reported + component_opened + optical_reported +
                         "[1]/otn/state/esnr/min=30000000000\n[1]/otn/state/esnr/avg=502\n[1]/otn/state/esnr/max=503\n"
                         "[1]/otn/state/esnr/min-time=504\n[1]/otn/state/esnr/max-time=505\n" +
                         component_intervals("30000000000") + "[1]/otn/state/esnr/interval=30000000000\n");
    EXPECT_EQ(w.value("/terminal-device/logical-channels/channel[index=1]/otn/state/severely-errored-seconds"), "12");
}

TEST_F(performance, texts_of_values) {
    const struct {
        std::string native, log;
    } rows[] = {
        {fec(from::bins, dsp, {"pre-fec-ber{minimum=1.2E-05}"}), "channel 1\nC/otn/state/pre-fec-ber/min=0.000012\n"},
        {fec(from::bins, dsp, {"post-fec-ber{maximum=0E-15}"}), "channel 1\nC/otn/state/post-fec-ber/max=0.0\n"},
        {fec(from::bins, dsp, {"pre-fec-ber{average}"}), "channel 1\nC/otn/state/pre-fec-ber/avg=\n"},
        {fec(from::bins, dsp, {"q{average}"}), "channel 1\nC/otn/state/q-value/avg=(null)\n"},
        {optical(from::bins, optics, {"pmd{minimum=3.456}"}),
         component_opened + "S/second-order-polarization-mode-dispersion/min=3.46\n"},
        {optical(from::bins, optics, {"pdl{average}"}),
         component_opened + "S/polarization-dependent-loss/avg=(null)\n"},
        {optical(from::bins, optics, {"rx-sig-pow{maximum=-12.345678 max-time=12.345678}"}),
         component_opened + "S/input-power/max=-12.35\nS/input-power/max-time=12.345678\n"},
        {optical(from::bins, optics, {"cd{minimum=-120}"}), component_opened + "S/chromatic-dispersion/min=-120\n"},
        {fec(from::bins, dsp, {"flex-bin-interval=30"}), "channel 1\n" + otu_intervals("30000000000")},
        {fec(from::bins, dsp, {"flex-bin-interval=0"}), "channel 1\n" + otu_intervals("0")},
        {fec(from::bins, dsp, {"flex-bin-interval"}), "channel 1\n" + otu_intervals("(null)")},
    };
    for (const auto &row : rows) {
        become(from::bins);
        walk w(from::bins);
        EXPECT_EQ(w.up(row.native), RC_OK) << row.native;
        EXPECT_EQ(w.log, row.log) << row.native;
    }
}

TEST_F(performance, a_history_has_one_length) {
    become(from::history);
    walk bin(from::bins), line(from::history);
    EXPECT_EQ(bin.up(fec(from::bins, dsp, {"flex-bin-interval=10"})), RC_OK);
    EXPECT_EQ(bin.log, "channel 1\n" + otu_intervals("30000000000"));
    EXPECT_EQ(line.up(fec(from::history, dsp, {"valid"})), RC_OK);
    EXPECT_EQ(line.log, "channel 1\n" + otu_intervals("30000000000"));
}

// Which ports report what: of an OTU port by its class, of an optics port by place, colour and channel.
TEST_F(performance, ports) {
    const std::string held = "cd{minimum=1} snr{average=2} flex-bin-interval=10 valid=true";
    const std::string seen = component_opened + "S/chromatic-dispersion/min=1\n[1]/otn/state/esnr/avg=2\n";
    const std::string ten = "10000000000", thirty = "30000000000";
    const std::string not_of_a_line = "Optics0/0/0/4", without_channel = "Optics0/0/0/5"; // of router type 7
    const std::string opened_5 =
        "component 0/0-OpticalChannel0/0/0/5\nconfig/name=0/0-OpticalChannel0/0/0/5\nS/chromatic-dispersion/min=1\n";
    const struct {
        const char *about;
        from tree;
        colour of_line_port;
        uint32_t router_type;
        std::string native, log;
    } rows[] = {
        {"OTU4", from::bins, colour::coherent, 5, fec(from::bins, "OTU40/1/0/4", {"flex-bin-interval=10"}),
         "channel 6\n" + otu_intervals(ten, false)},
        {"OTU4", from::history, colour::coherent, 5, fec(from::history, "OTU40/1/0/4", {"valid=true"}),
         "channel 6\n" + otu_intervals(thirty, false)},
        {"no channel", from::bins, colour::coherent, 5,
         fec(from::bins, "CoherentDSP0/1/0/9", {fec_figures + "flex-bin-interval=10"}), ""},
        {"no channel", from::history, colour::coherent, 5,
         fec(from::history, "CoherentDSP0/1/0/9", {fec_figures + "valid=true"}), ""},
        {"no channel", from::bins, colour::coherent, 5, odu_otn("ODU40/1/0/9", {otn_counters}), ""},
        {"no channel", from::history, colour::coherent, 5, pcs(from::history, "TenGigECtrlr0/1/0/9/1", {pcs_counters}),
         ""},
        {"coherent", from::bins, colour::coherent, 5, optical(from::bins, optics, {held}),
         seen + component_intervals(ten)},
        {"coherent", from::history, colour::coherent, 5, optical(from::history, optics, {held}),
         seen + component_intervals(thirty) + "[1]/otn/state/esnr/interval=" + thirty + "\n"},
        {"grey", from::bins, colour::grey, 5, optical(from::bins, optics, {held}),
         seen + "[1]/otn/state/esnr/interval=" + ten + "\n"},
        {"grey", from::history, colour::grey, 5, optical(from::history, optics, {held}),
         seen + component_intervals(thirty) + "[1]/otn/state/esnr/interval=" + thirty + "\n"},
        {"unknown", from::bins, colour::unknown, 5, optical(from::bins, optics, {held}),
         seen + "[1]/otn/state/esnr/interval=" + ten + "\n"},
        {"other", from::bins, colour::coherent, 7, optical(from::bins, not_of_a_line, {held}),
         "[7]/otn/state/esnr/avg=2\n[7]/otn/state/esnr/interval=" + ten + "\n"},
        {"other", from::history, colour::coherent, 7, optical(from::history, not_of_a_line, {held}),
         "[7]/otn/state/esnr/avg=2\n"},
        {"neither", from::bins, colour::coherent, 7, optical(from::bins, "Optics0/0/0/8", {held}), ""},
        {"neither", from::history, colour::coherent, 7, optical(from::history, "Optics0/0/0/8", {held}), ""},
        // A figure of a line port without channel is set nowhere.
        {"line port", from::bins, colour::coherent, 7, optical(from::bins, without_channel, {held}),
         opened_5 + "[]/otn/state/esnr/avg=2\n"},
        {"no component", from::bins, colour::coherent, 18, optical(from::bins, optics, {held}),
         "[1]/otn/state/esnr/avg=2\n[1]/otn/state/esnr/interval=" + ten + "\n"},
    };
    for (const auto &row : rows) {
        become(row.tree, row.of_line_port, row.router_type);
        walk w(row.tree);
        EXPECT_EQ(w.up(row.native), RC_OK) << row.about;
        EXPECT_EQ(w.log, row.log) << row.about << " " << row.native;
    }
}

TEST_F(performance, a_line_port_without_channel_reports_no_ratio_without_terminal_device) {
    become(from::bins, colour::coherent, 7);
    hardware::current().optical_terminal_device = false;
    walk w(from::bins);
    EXPECT_EQ(w.up(optical(from::bins, "Optics0/0/0/5", {"snr{average=2}"})), RC_OK);
    EXPECT_EQ(w.log, "component 0/0-OpticalChannel0/0/0/5\nconfig/name=0/0-OpticalChannel0/0/0/5\n");
}

TEST_F(performance, a_component_of_the_answer_makes_a_line_port) {
    become(from::history, colour::coherent, 19);
    walk w(from::history);
    zmf_map_search_or_add_list(w.session.context(), w.output.root(), &w.session.request().list_cursor,
                               "/components/component", "OpticalChannel0/1/0/2", "name", ZMF_NS_OC_PLATFORM);
    EXPECT_EQ(w.up(optical(from::history, optics, {"cd{minimum=1}"})), RC_OK);
    EXPECT_EQ(w.log, "component OpticalChannel0/1/0/2\ncomponent OpticalChannel0/1/0/2\n"
                     "config/name=OpticalChannel0/1/0/2\nS/chromatic-dispersion/min=1\n");
}

TEST_F(performance, several_bins_at_one_leaf) {
    become(from::bins);
    walk w(from::bins);
    EXPECT_EQ(w.up(odu_otn(odu, {"es-ne{data=1}", "es-ne{data=2}"}) +
                   optical(from::bins, optics, {"snr{minimum=3}", "snr{minimum=4 average=5}"})),
              RC_OK);
    EXPECT_EQ(w.log, "channel 5\nC/otn/state/errored-seconds=1\nC/otn/state/errored-seconds=2\n" + component_opened +
                         "[1]/otn/state/esnr/min=3\n[1]/otn/state/esnr/min=4 is there\n[1]/otn/state/esnr/avg=5\n");
    EXPECT_EQ(w.value("/terminal-device/logical-channels/channel[index=1]/otn/state/esnr/min"), "3");
}

TEST_F(performance, what_is_ignored) {
    const struct {
        from tree;
        std::string native;
        size_t ignored; // keys and the history's number among them
    } rows[] = {
        {from::history, fec(from::history, dsp, {"flex-bin-interval=10 " + otn_counters}), 3 + 4},
        {from::history, otn(from::history, dsp, {"ec-bits{data=1}"}), 3 + 1},
        {from::bins, fec(from::bins, dsp, {"valid=true x:other{data=1} unknown{data=1}"}), 2 + 1},
    };
    for (const auto &row : rows) {
        become(row.tree);
        walk w(row.tree);
        size_t ignored = 0;
        w.session.ring([&](std::string_view line) { ignored += line.ends_with("Unsupported tag. Ignoring."); });
        EXPECT_EQ(w.up(row.native), RC_OK);
        EXPECT_EQ(w.log, "channel 1\n") << row.native;
        EXPECT_EQ(ignored, row.ignored) << row.native;
    }
    // ODU has no history.
    walk w(from::history);
    EXPECT_EQ(w.up("odu-history{odu-port-histories{odu-port-history{" + named(odu) + "}}}"), RC_OK);
    EXPECT_EQ(w.log, "");
}

TEST_F(performance, kinds_and_gate) {
    const std::string native = fec(from::bins, dsp, {fec_figures}) + optical(from::bins, optics, {"cd{minimum=1}"});
    for (const uint32_t kind : {OP_GET_CONFIG, OP_EDIT, OP_EDIT_FULL}) {
        become(from::bins);
        walk w(from::bins, kind);
        EXPECT_EQ(w.up(native), RC_OK);
        EXPECT_EQ(w.log, "") << kind;
    }
    become(from::history);
    walk shut(from::history);
    shut.session.request().request->scope_word = 2;
    shut.session.request().request->scope_flags_4 = 1;
    EXPECT_EQ(shut.up(optical(from::history, optics, {"cd{minimum=1}"})), RC_OK);
    EXPECT_EQ(shut.log, std::string("component ") + component + "\nS/chromatic-dispersion/min=1\n");
}

// A failed add of a bin's intervals stops nothing, and the last one is the status.
TEST_F(performance, failures) {
    become(from::bins);
    const std::string native = fec(from::bins, dsp, {"flex-bin-interval=10"});
    walk sound(from::bins);
    ASSERT_EQ(sound.up(native), RC_OK);
    const uint64_t calls = sound.session.status_calls();
    constexpr rcode failure = 0x12345;
    for (const auto &[nth, status] :
         {std::pair(calls, failure), std::pair(calls - 1, RC_OK), std::pair(calls - 2, RC_OK)}) {
        walk w(from::bins);
        w.session.fail_call(nth, failure);
        EXPECT_EQ(w.up(native), status) << nth;
        EXPECT_EQ(w.log, sound.log);
    }
    walk nameless(from::bins);
    EXPECT_NE(nameless.up(fec(from::bins, "", {fec_figures})), RC_OK);
    EXPECT_EQ(nameless.log, "");
}

TEST_F(performance, one_interval_each) {
    const struct {
        zmf_node_fn convert;
        const char *port, *log, *trace;
    } rows[] = {
        {oc_optical_pre_fec_interval_to_high, dsp, "C/otn/state/pre-fec-ber/interval=10000000000\n",
         "PRE FEC INTERVAL: intf_name = CoherentDSP0/1/0/2, logical_id = 1"},
        {oc_optical_post_fec_interval_to_high, dsp, "C/otn/state/post-fec-ber/interval=10000000000\n",
         "POST FEC INTERVAL: intf_name = CoherentDSP0/1/0/2, logical_id = 1"},
        {oc_optical_q_value_interval_to_high, dsp, "C/otn/state/q-value/interval=10000000000\n",
         "Q VALUE INTERVAL: intf_name = CoherentDSP0/1/0/2, logical_id = 1"},
        {oc_optical_q_value_interval_to_high, "OTU40/1/0/4", "C/otn/state/q-value/interval=10000000000\n",
         "Q VALUE INTERVAL: intf_name = OTU40/1/0/4, logical_id = 6"},
        {oc_optical_q_value_interval_to_high, "OTU40/1/0/9", "",
         "Q VALUE INTERVAL: intf_name = OTU40/1/0/9, logical_id = "},
    };
    for (const auto &row : rows) {
        become(from::bins);
        walk w(from::bins);
        bool traced = false;
        w.session.ring([&](std::string_view line) { traced = traced || line.ends_with(row.trace); });
        request_text native("otu-port{name=" + std::string(row.port) + " flex-bin-interval=10}", ZMF_NS_PMENGINE_OPER);
        zmf_datatree *port = native.top();
        zmf_map_add_to_node_hierarchy(w.session.context(), port, ZMF_HIER_LIST);
        ASSERT_EQ(zmf_map_update_current_list_node(w.session.context(), PM_OTU_PORT), RC_OK);
        EXPECT_EQ(row.convert(w.session.context(), &port->children[1], w.output.root()), RC_OK);
        EXPECT_EQ(row.convert(w.session.context(), nullptr, w.output.root()), RC_INVALID_ARGUMENTS);
        EXPECT_EQ(w.log, row.log) << row.trace;
        EXPECT_TRUE(traced) << row.trace;
    }
}

} // namespace
