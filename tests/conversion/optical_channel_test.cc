// Optical channels and their extension on the way down: what each conversion adds, by platform, request kind and value.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "adds.h"
#include "corvane_openconfig_terminal_device_ext/ymap_oc_optical_corvane_openconfig_terminal_device_ext.h"
#include "exported.h"
#undef OC_MODEL
#undef OC_TABLE
#include "hardware/hardware.h"
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

constexpr uint32_t cfg = OP_GET_CONFIG, get = OP_GET, edit = OP_EDIT;
constexpr char channel[] = "0/1-OpticalChannel0/1/0/2";

// A request for one leaf or container.
struct request {
    zmf::session session;
    zmf::output_tree output;
    zmf_datatree node{};
    add_log log{session};

    request(uint32_t kind, const char *component, const char *value, uint32_t op) : session(kind) {
        node.tag = "leaf";
        node.value = value;
        node.has_value = value != nullptr;
        node.op = op;
        node.op_explicit = op != OP_MERGE;
        snprintf(session.request().component_name, sizeof session.request().component_name, "%s", component);
    }
};

struct leaf_row {
    zmf_node_fn convert;
    uint32_t router_type;
    bool legacy;
    uint32_t kind;
    uint32_t op;
    const char *value;
    const char *log;
    const char *refused = nullptr;    // err_msg
    const char *first_mark = nullptr; // err_msg at an error mark before that of the refusal
};

void check(const leaf_row &row) {
    hardware::current() = {};
    hardware::current().router_type = row.router_type;
    hardware::current().legacy_optical_terminal_device = row.legacy;
    request r(row.kind, channel, row.value, row.op);
    const rcode status = row.convert(r.session.context(), &r.node, r.output.root());
    const std::string about = std::string(row.value != nullptr ? row.value : "(null)") + " kind " +
                              std::to_string(row.kind) + " op " + std::to_string(row.op);
    EXPECT_EQ(status, row.refused != nullptr ? RC_VALUE_OUT_OF_RANGE : RC_OK) << about;
    EXPECT_EQ(r.log.text, row.log) << about;
    EXPECT_STREQ(r.session.request().err_msg, row.refused) << about;
    std::vector<std::string> marks;
    for (const char *text : {row.first_mark, row.refused}) {
        if (text != nullptr) {
            marks.emplace_back(text);
        }
    }
    EXPECT_EQ(r.log.marks, marks) << about;
}

constexpr char frequency_refused[] = "Frequency is not within the allowed range: 186100000 - 196137500";
constexpr char power_refused[] = "Target Output Power is not within the allowed range: -1900 - 500";
constexpr char cd_refused[] = "CD-MAX is not within the allowed range: -350000 - 350000";
constexpr char roll_refused[] = "FILTER_ROLL_OFF_FACTOR is not within the allowed range: 0 - 1";
constexpr char low_refused[] = "Input Signal Power Lower Threshold is not within the allowed range: -4000 - 3000";
constexpr char high_refused[] = "Input Signal Power Upper Threshold is not within the allowed range: -4000 - 3000";

// The list's path has a trailing slash but in a delete.
std::string threshold_entry(const std::string &list, const std::string &type, const std::string &value,
                            const std::string &source) {
    const std::string at = "O/rx-thresholds/rx-threshold";
    return at + list + source + " list cross\n" + at + "/rx-threshold-type=" + type + source + " cross\n" + at +
           "/rx-threshold" + value + source + " cross\n";
}
std::string threshold_adds(const std::string &type, const std::string &value, const std::string &source) {
    return threshold_entry("/", type, value, source);
}
std::string threshold_erased(const std::string &type) {
    return threshold_entry("", type, "", " @");
}

TEST(optical_channel, leaves) {
    constexpr auto f = oc_optical_cfg_freq_to_low, p = oc_optical_cfg_op_power_to_low;
    const std::string long_frequency = "193100000" + std::string(200, ' '), long_power = "5" + std::string(200, ' ');
    const leaf_row rows[] = {
        {f, 5, false, edit, OP_MERGE, "193100050", "T/frequency=193100050 @ cross\n"},
        {f, 5, false, edit, OP_MERGE, "no number", "", frequency_refused},
        {f, 5, false, edit, OP_MERGE, long_frequency.c_str(), "", frequency_refused},
        {f, 5, false, edit, OP_DELETE, nullptr, "T/frequency @ cross\n"},
        {f, 5, false, get, OP_MERGE, nullptr, "T/frequency= cross\n"},
        {f, 18, true, edit, OP_MERGE, "193100050",
         "O/optics-dwdm-carrier/param-value=1931000 @ cross\nO/optics-dwdm-carrier/param-type=frequency @ cross\n"
         "O/optics-dwdm-carrier/grid-type=100mhz-grid @ cross\n"},
        {f, 18, true, edit, OP_REMOVE, nullptr, "O/optics-dwdm-carrier @ cross\n"},
        {f, 18, true, get, OP_MERGE, nullptr, "O/optics-dwdm-carrier/param-value= cross\n"},

        {p, 5, false, edit, OP_MERGE, "no number", "", power_refused, "target-output-power"},
        {p, 5, false, edit, OP_MERGE, nullptr, "", power_refused, "target-output-power"},
        {p, 5, false, edit, OP_MERGE, long_power.c_str(), "", power_refused, "target-output-power"},
        {p, 5, false, edit, OP_MERGE, "-350.75", "T/power=-350 @ cross\n"},
        {p, 5, false, get, OP_MERGE, nullptr, "T/power= cross\n"},
        {p, 18, true, get, OP_MERGE, "-1905", "O/optics-transmit-power=-190 cross\n"},
        {p, 18, true, get, OP_MERGE, "1999", "O/optics-transmit-power=199 cross\n"},
        {p, 18, true, edit, OP_MERGE, "-39", "O/optics-transmit-power=-3 @ cross\n"},

        {oc_optical_cfg_oper_mode_to_low, 5, true, edit, OP_MERGE, "7", "T/operational-mode=7 @\n"},
        {oc_optical_cfg_oper_mode_to_low, 5, false, get, OP_MERGE, nullptr, "T/operational-mode\n"},
        {oc_optical_cfg_line_port_to_low, 5, false, edit, OP_MERGE, "0/1-Optics0/1/0/2",
         "T/line-port=Optics0/1/0/2 @\n"},
        {oc_optical_cfg_line_port_to_low, 5, false, edit, OP_MERGE, "nonsense", "T/line-port= @\n"},
        {oc_optical_state_freq_to_low, 5, false, get, OP_MERGE, "1", "P/optics-info/dwdm-carrier-frequency cross\n"},
        {oc_optical_state_op_power_to_low, 5, false, get, OP_MERGE, "1",
         "P/optics-lanes/optics-lane/transmit-power=1\n"},
        {oc_optical_state_oper_mode_to_low, 5, false, get, OP_MERGE, "1", "T/operational-mode\n"},
        {oc_optical_state_line_port_to_low, 5, false, edit, OP_MERGE, "1", ""},
    };
    for (const leaf_row &row : rows) {
        check(row);
    }
}

// A line port that is named by itself lies on its component, unless the walk falls through or deletes.
TEST(optical_channel, line_port_on_its_component) {
    const struct {
        const char *port;
        uint32_t walk_all, delete_walk;
        bool refused;
    } rows[] = {
        {"0/1-Optics0/1/0/2", 0, 0, false}, {"Optics0/1/0/2", 0, 0, false},     {"0/1-Optics0/1/0/3", 0, 0, true},
        {"0/2-Optics0/1/0/2", 0, 0, true},  {"0/1-Optics0/1/0/3", 1, 0, false}, {"0/1-Optics0/1/0/3", 0, 1, false},
    };
    for (const auto &row : rows) {
        request r(edit, channel, row.port, OP_MERGE);
        zmf_datatree key{};
        key.tag = "name";
        key.value = channel;
        key.has_value = 1;
        zmf_datatree component{};
        component.tag = "component";
        component.children = &key;
        component.child_count = 1;
        component.has_children = 1;
        zmf_map_add_to_node_hierarchy(r.session.context(), &component, ZMF_HIER_LIST);
        zmf_map_update_current_list_node(r.session.context(), "/components/component");
        r.session.request().walk_all = row.walk_all;
        r.session.request().delete_walk = row.delete_walk;
        const rcode status = oc_optical_cfg_line_port_to_low(r.session.context(), &r.node, r.output.root());
        EXPECT_EQ(status, row.refused ? RC_VALUE_OUT_OF_RANGE : RC_OK) << row.port;
        EXPECT_STREQ(r.session.request().err_msg,
                     row.refused ? "line-port should match with the component name" : nullptr);
        zmf_map_remove_from_node_hierarchy(r.session.context(), &component);
    }
}

constexpr char if_list[] = "I list\n";
constexpr char if_entry[] = "I list\n"
                            "I/interface-name=Optics0/1/0/2\n"
                            "I/active=act\n";
constexpr char td_entry[] = "T list\nT/ifname=0_1-OpticalChannel0_1_0_2\n";

TEST(optical_channel, containers) {
    const struct {
        zmf_cont_fn convert;
        uint32_t kind;
        const char *component;
        std::string log;
    } rows[] = {
        {oc_optical_optical_channel_to_low, edit, channel, std::string(if_entry) + td_entry},
        {oc_optical_optical_channel_to_low, cfg, channel, std::string(if_entry) + td_entry},
        {oc_optical_optical_channel_to_low, edit, "Rack0", "T list\nT/ifname=Rack0\n"},
        {oc_optical_optical_channel_to_low, get, "Rack0", std::string(if_list) + "T list\nT/ifname=Rack0\n"},
        {oc_optical_optical_channel_to_low, get, "", std::string(if_list) + "T list\n"},
        {oc_optical_optical_channel_to_low, edit, "", ""},
        {oc_optical_optical_channel_state_to_low, get, channel, "P list\nP/name=Optics0/1/0/2\n"},
        {oc_optical_optical_channel_state_to_low, get, "Rack0", "P\n"},
        {oc_optical_optical_channel_state_to_low, cfg, channel, ""},
        {oc_optical_channel_ext_to_low, get, channel, "P list\nP/name=Optics0/1/0/2\n"},
        {oc_optical_channel_ext_to_low, get, "Rack0", "P\n"},
        {oc_optical_channel_ext_to_low, edit, channel, ""},
    };
    hardware::current() = {};
    for (const auto &row : rows) {
        request r(row.kind, row.component, nullptr, OP_MERGE);
        EXPECT_EQ(row.convert(r.session.context(), &r.node, 0, r.output.root()), RC_OK);
        EXPECT_EQ(r.log.text, row.log) << row.component << " kind " << row.kind;
    }
}

TEST(optical_channel, state_opens_the_history_where_it_stands_for_flex_bins) {
    const std::string h = "/performance-management-history/global/periodic/optics-history/optics-port-histories/"
                          "optics-port-history";
    const std::string h2 = h + "/optics-second30-history/optics-second30-optics-histories/"
                               "optics-second30-optics-history";
    const std::string h3 = h2 + "/optics-second30-optics-time-line-instances/optics-second30-optics-time-line-instance";
    OC_OPTICAL_PM_IS_FLEXBIN_UNSUPPORTED = 1;
    request named(get, channel, nullptr, OP_MERGE);
    oc_optical_optical_channel_state_to_low(named.session.context(), &named.node, 0, named.output.root());
    EXPECT_EQ(named.log.text, "P list\nP/name=Optics0/1/0/2\n" + h + " list\n" + h + "/name=Optics0/1/0/2\n" + h2 +
                                  "\n" + h2 + "/number=1\n" + h3 + "\n" + h3 + "/number=1\n");
    request all(get, "Rack0", nullptr, OP_MERGE);
    oc_optical_optical_channel_state_to_low(all.session.context(), &all.node, 0, all.output.root());
    EXPECT_EQ(all.log.text, "P\n" + h + "\n" + h2 + "\n" + h3 + "\n" + h3 + "/number=1\n");
    OC_OPTICAL_PM_IS_FLEXBIN_UNSUPPORTED = 0;
}

TEST(optical_channel, delete_clears_both_homes_and_keeps_cd_min) {
    std::string expected = if_entry;
    expected += "O/optics-dwdm-carrier @ cross\nO/optics-transmit-power @ cross\nO/optics-fastpoll @ cross\n";
    expected += threshold_erased("low") + threshold_erased("high") + td_entry;
    for (const char *leaf : {"operational-mode", "line-port", "frequency", "power", "enh-colorless-mode",
                             "cross-pol-gain-mode", "cpr-ext-win-mode", "enh-sop-tol-mode", "cpr-win-mode",
                             "rx-voa-fixed-ratio", "rx-voa-target-power", "cd-low-threshold", "cd-high-threshold",
                             "cd-max", "cross-pol-weight-mode", "nleq-comp-mode", "filter-roll-off-factor"}) {
        expected += "T/" + std::string(leaf) + " @\n";
    }
    for (const bool legacy : {false, true}) {
        hardware::current() = {};
        hardware::current().legacy_optical_terminal_device = legacy;
        request r(edit, channel, nullptr, OP_DELETE);
        EXPECT_EQ(ymap_oc_optical_delete_component_optical_channel(r.session.context(), &r.node, r.output.root()),
                  RC_OK);
        EXPECT_EQ(r.log.text, expected);
        EXPECT_EQ(r.session.request().delete_walk, 1u);
    }
}

TEST(extension, leaves) {
    constexpr auto cd = oc_optical_optics_cd_max_to_low;
    constexpr auto low = oc_optical_cfg_input_power_lower_threshold_to_low;
    constexpr auto high = oc_optical_cfg_input_power_upper_threshold_to_low;
    const std::string low_cut = threshold_adds("low", "=-123", " @"), low_asked = threshold_adds("low", "=", "");
    const leaf_row rows[] = {
        {cd, 5, false, edit, OP_MERGE, "350001", "", cd_refused},
        {cd, 18, false, edit, OP_MERGE, "99999999999", "", cd_refused},
        {cd, 18, false, edit, OP_MERGE, "no number", "T/cd-max=no number @\n"}, // counts as 0
        {cd, 7, false, edit, OP_MERGE, "5", ""},
        {cd, 18, false, get, OP_MERGE, nullptr, "T/cd-max\n"},
        {oc_optical_enh_colorless_mode_to_low, 18, false, edit, OP_MERGE, "0", "",
         "ENH-COLORLESS-MODE is not within the allowed range: 1 - 3"},
        {oc_optical_filter_rolloff_to_low, 18, false, edit, OP_MERGE, "nan", "", roll_refused},
        {oc_optical_filter_rolloff_to_low, 18, false, edit, OP_MERGE, "0.50",
         "T/filter-roll-off-factor=0.50 @\n"}, // the client's text

        {oc_optical_ext_cfg_baud_rate_to_low, 5, false, edit, OP_MERGE, "69.4",
         "O/optics-baud-rate=69.4000000 @ cross\n"},
        {oc_optical_ext_cfg_baud_rate_to_low, 5, false, get, OP_MERGE, nullptr, "O/optics-baud-rate= cross\n"},
        {oc_optical_cfg_fastpoll_sop_enable_to_low, 5, false, edit, OP_MERGE, "true",
         "O/optics-fastpoll=true @ cross\n"},
        {oc_optical_cfg_fastpoll_sop_enable_to_low, 5, false, get, OP_MERGE, nullptr, "O/optics-fastpoll cross\n"},

        {low, 5, false, edit, OP_MERGE, "-1239", low_cut.c_str()},
        {low, 5, false, cfg, OP_MERGE, nullptr, low_asked.c_str()},
        {high, 5, false, edit, OP_MERGE, "no number", "", high_refused, "input-signal-power-upper"},
        {high, 5, false, edit, OP_MERGE, nullptr, "", high_refused, "input-signal-power-upper"},

        {oc_optical_state_sop_tol_mode_to_low, 5, false, get, OP_MERGE, "1",
         "P/optics-info/submarine-info/enhsop-tolerance-mode cross\n"},
        {oc_optical_state_fastpoll_sop_enable_to_low, 5, false, get, OP_MERGE, "true",
         "interface-configurations/interface-configuration/optics/optics-fastpoll=true cross\n"},
        {oc_optical_state_input_power_upper_threshold_to_low, 5, false, get, OP_MERGE, "1",
         "optics-oper/optics-ports/optics-port/optics-info/rx-high-threshold=1 cross\n"},
        {oc_optical_optics_state_cd_max_to_low, 5, false, edit, OP_MERGE, "1", ""},
    };
    for (const leaf_row &row : rows) {
        check(row);
    }
}

// Both ends of a range and one beyond each, in every kind of request. In the adds "$" is what is written of the value.
TEST(ranges, hold_at_their_ends) {
    struct value {
        const char *client, *native;
    };
    const struct {
        zmf_node_fn convert;
        uint32_t router_type;
        bool legacy;
        value low, high, below, above;
        std::string read, merge, erase;
        bool is_tested_in_all; // in reads and deletes too
        const char *refused, *first_mark;
    } rows[] = {
        {oc_optical_cfg_freq_to_low,
         5,
         false,
         {"186100000", "186100000"},
         {"196137500", "196137500"},
         {"186099999", ""},
         {"196137501", ""},
         "T/frequency=$ cross\n",
         "T/frequency=$ @ cross\n",
         "T/frequency @ cross\n",
         true,
         frequency_refused,
         nullptr},
        {oc_optical_cfg_freq_to_low,
         18,
         true,
         {"186100000", "1861000"},
         {"196137500", "1961375"},
         {"186099999", ""},
         {"196137501", ""},
         "O/optics-dwdm-carrier/param-value=$ cross\n",
         "O/optics-dwdm-carrier/param-value=$ @ cross\nO/optics-dwdm-carrier/param-type=frequency @ cross\n"
         "O/optics-dwdm-carrier/grid-type=100mhz-grid @ cross\n",
         "O/optics-dwdm-carrier @ cross\n",
         true,
         frequency_refused,
         nullptr},
        {oc_optical_cfg_op_power_to_low,
         5,
         false,
         {"-1900", "-1900"},
         {"500", "500"},
         {"-1901", "-1901"},
         {"501", "501"},
         "T/power=$ cross\n",
         "T/power=$ @ cross\n",
         "T/power @ cross\n",
         false,
         power_refused,
         "target-output-power"},
        {oc_optical_cfg_op_power_to_low,
         18,
         true,
         {"-1900", "-190"},
         {"500", "50"},
         {"-1901", "-190"},
         {"501", "50"},
         "O/optics-transmit-power=$ cross\n",
         "O/optics-transmit-power=$ @ cross\n",
         "O/optics-transmit-power @ cross\n",
         false,
         power_refused,
         "target-output-power"},
        {oc_optical_cfg_input_power_lower_threshold_to_low,
         5,
         false,
         {"-4000", "-400"},
         {"3000", "300"},
         {"-4001", "-400"},
         {"3001", "300"},
         threshold_adds("low", "=$", ""),
         threshold_adds("low", "=$", " @"),
         threshold_erased("low"),
         false,
         low_refused,
         "input-signal-power-lower"},
        {oc_optical_cfg_input_power_upper_threshold_to_low,
         5,
         false,
         {"-4000", "-400"},
         {"3000", "300"},
         {"-4001", "-400"},
         {"3001", "300"},
         threshold_adds("high", "=$", ""),
         threshold_adds("high", "=$", " @"),
         threshold_erased("high"),
         false,
         high_refused,
         "input-signal-power-upper"},
        {oc_optical_optics_cd_max_to_low,
         18,
         false,
         {"-350000", "-350000"},
         {"350000", "350000"},
         {"-350001", ""},
         {"350001", ""},
         "T/cd-max=$\n",
         "T/cd-max=$ @\n",
         "T/cd-max @\n",
         true,
         cd_refused,
         nullptr},
        {oc_optical_filter_rolloff_to_low,
         19,
         false,
         {"0", "0"},
         {"1", "1"},
         {"-0.01", ""},
         {"1.01", ""},
         "T/filter-roll-off-factor=$\n",
         "T/filter-roll-off-factor=$ @\n",
         "T/filter-roll-off-factor @\n",
         true,
         roll_refused,
         nullptr},
    };
    const struct {
        uint32_t kind, op;
    } requests[] = {{cfg, OP_MERGE},    {get, OP_MERGE},   {edit, OP_MERGE},
                    {edit, OP_REPLACE}, {edit, OP_DELETE}, {edit, OP_REMOVE}};
    for (const auto &row : rows) {
        for (const value &each : {row.low, row.high, row.below, row.above}) {
            const bool is_outside = each.client == row.below.client || each.client == row.above.client;
            for (const auto &[kind, op] : requests) {
                const bool is_delete = op == OP_DELETE || op == OP_REMOVE, is_merge = kind == edit && !is_delete;
                std::string adds = is_delete ? row.erase : is_merge ? row.merge : row.read;
                if (const size_t at = adds.find('$'); at != std::string::npos) {
                    adds.replace(at, 1, each.native);
                }
                const bool refused = is_outside && (row.is_tested_in_all || is_merge);
                check({row.convert, row.router_type, row.legacy, kind, op, each.client, refused ? "" : adds.c_str(),
                       refused ? row.refused : nullptr, refused ? row.first_mark : nullptr});
            }
        }
    }
}

TEST(line_ports, interfaces_and_controllers) {
    const struct {
        uint32_t (*question)(const char *, zmf_map_ctx, zmf_datatree *);
        uint32_t router_type;
        const char *name;
        uint32_t answer;
    } rows[] = {
        {oc_optical_is_interface_line_port, 7, "Optics0/0/0/5", 1},
        {oc_optical_is_interface_line_port, 7, "Optics0/0/0/26", 1},
        {oc_optical_is_interface_line_port, 7, "Optics0/0/0/27", 1},
        {oc_optical_is_interface_line_port, 7, "Optics0/0/0/4", 0},
        {oc_optical_is_interface_line_port, 7, "Optics0/0/0/28", 0},
        {oc_optical_is_interface_line_port, 7, "Optics0/0/0", 0},
        {oc_optical_is_interface_line_port, 5, "Optics0/19/0/127", 1},
        {oc_optical_is_interface_line_port, 5, "Optics0/20/0/0", 0},
        {oc_optical_is_interface_line_port, 5, "Optics0/0/0/128", 0},
        {oc_optical_is_interface_line_port, 5, "Optics0/0/0", 0},
        {oc_optical_is_interface_line_port, 5, nullptr, 0},
        {oc_optical_is_interface_line_port, 18, "Optics0/0/0/5", 0}, // no context
        {oc_optical_is_controller_line_port, 7, "CoherentDSP0/0/0/20", 1},
        {oc_optical_is_controller_line_port, 7, "CoherentDSP0/0/0/26", 0},
        {oc_optical_is_controller_line_port, 5, "CoherentDSP0/0/0/0", 0},
        {oc_optical_is_controller_line_port, 5, "Optics0/0/0/5", 0},
        {oc_optical_is_controller_line_port, 18, "CoherentDSP0/0/0/5", 0},
    };
    for (const auto &row : rows) {
        hardware::current().router_type = row.router_type;
        EXPECT_EQ(row.question(row.name, nullptr, nullptr), row.answer)
            << row.router_type << " " << (row.name != nullptr ? row.name : "(null)");
    }
}

TEST(line_ports, by_the_components_of_a_reply) {
    hardware::current().router_type = 19;
    hardware::current().optical_terminal_device = true;
    zmf::session session(OP_GET);
    zmf::output_tree output;
    zmf_map_search_or_add_list(session.context(), output.root(), nullptr, "/components/component",
                               "OpticalChannel0/1/0/2", "name", ZMF_NS_OC_PLATFORM);
    EXPECT_EQ(oc_optical_is_interface_line_port("Optics0/1/0/2", session.context(), output.root()), 1u);
    EXPECT_EQ(oc_optical_is_interface_line_port("Optics0/1/0/3", session.context(), output.root()), 0u);
    EXPECT_EQ(oc_optical_is_controller_line_port("CoherentDSP0/1/0/2", session.context(), output.root()), 0u);
    EXPECT_EQ(is_valid_channel_for_esnr("Optics0/1/0/3", session.context(), output.root(), 0), 1u);
    EXPECT_EQ(is_valid_channel_for_esnr("Optics0/1/0/3", session.context(), output.root(), 7), 0u);
    EXPECT_EQ(is_valid_channel_for_esnr("Optics0/1/0/2", session.context(), output.root(), 7), 1u);
    hardware::current().optical_terminal_device = false;
    EXPECT_EQ(is_valid_channel_for_esnr("Optics0/1/0/2", session.context(), output.root(), 7), 0u);
}

// R, S, I, P of a line port are those of its channel; a prefixed one wants both prefixes right as well.
TEST(line_ports, lie_on_their_channels) {
    constexpr char prefixed[] = "0/1-OpticalChannel0/1/0/2", plain[] = "OpticalChannel0/1/0/2";
    constexpr char own_slot_wrong[] = "0/1-OpticalChannel0/2/0/2", own_rack_wrong[] = "1/2-OpticalChannel0/2/0/2";
    const struct {
        const char *component, *port;
        bool agrees;
    } rows[] = {
        {prefixed, "0/1-Optics0/1/0/2", true},
        {prefixed, "1/1-Optics0/1/0/2", false},
        {prefixed, "0/2-Optics0/1/0/2", false},
        {prefixed, "0/1-Optics1/1/0/2", false},
        {prefixed, "0/1-Optics0/2/0/2", false},
        {prefixed, "0/1-Optics0/1/1/2", false},
        {prefixed, "0/1-Optics0/1/0/3", false},
        {prefixed, "Optics0/1/0/2", true},
        {prefixed, "Optics1/1/0/2", false},
        {prefixed, "Optics0/2/0/2", false},
        {prefixed, "Optics0/1/1/2", false},
        {prefixed, "Optics0/1/0/3", false},
        {prefixed, "0/1-Optics0/1/0", false},
        {prefixed, "", false},
        {plain, "Optics0/1/0/2", true},
        {plain, "0/1-Optics0/1/0/2", false},
        {own_slot_wrong, "0/1-Optics0/2/0/2", false},
        {own_slot_wrong, "0/1-Optics0/1/0/2", false},
        {own_slot_wrong, "Optics0/2/0/2", true}, // a short form does not look at the prefix
        {own_rack_wrong, "1/2-Optics0/2/0/2", false},
        {nullptr, "Optics0/1/0/2", false},
        {nullptr, "no-port", true},
        {"no channel", "no port", true}, // nothing against nothing
    };
    for (const auto &row : rows) {
        EXPECT_EQ(oc_optical_check_lineport_rsip(row.component, row.port), row.agrees ? RC_OK : RC_SUBTREE_ERROR)
            << (row.component != nullptr ? row.component : "(null)") << " " << row.port;
    }
}

} // namespace
