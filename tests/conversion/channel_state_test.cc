// Requests for a channel's live state, and for the operational modes: what each leaf asks, by carrier and platform.
#include <string>

#include <gtest/gtest.h>

#include "../walk/request_text.h"
#include "exported.h"
#include "hardware/hardware.h"
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

constexpr int32_t ethernet = 3, coherent = 4, odu = 5, otu4 = 6, unmapped = 9, other = 8;

void set_up(bool terminal_device) {
    hardware::current() = {};
    hardware::current().optical_terminal_device = terminal_device;
    const std::pair<int32_t, const char *> names[] = {{ethernet, "HundredGigECtrlr0_1_0_3"},
                                                      {coherent, "CoherentDSP0_1_0_2"},
                                                      {odu, "ODU40_1_0_2"},
                                                      {otu4, "OTU40_1_0_4"},
                                                      {other, "Loopback0"}};
    for (const auto &[number, name] : names) {
        hardware::current().name_of[static_cast<uint32_t>(number)] = name;
    }
}

// "eth/admin-state=disabled", one add a line, with these heads; "list" behind an entry.
std::string shown(const zmf::call &c) {
    const struct {
        std::string ns, head, letter;
    } rows[] = {
        {ZMF_NS_MEDIA_ETH_OPER, "/ethernet-interface/interfaces/interface", "eth"},
        {ZMF_NS_MEDIA_ETH_OPER, "ethernet-interface/interfaces/interface", "rel-eth"},
        {ZMF_NS_OTU_OPER, "/otu/controllers/controller", "otu"},
        {ZMF_NS_ODU_OPER, "/odu/controllers/controller", "odu"},
        {ZMF_NS_TERMINAL_DEVICE_CFG, "/logical-channels/channel", "cfg"},
        {ZMF_NS_TERMINAL_DEVICE_OPER, "/optical-interface/operational-modes/operational-mode", "mode"},
    };
    const std::string path = c.path;
    const std::string rest = std::string(c.value != nullptr ? "=" + std::string(c.value) : "") +
                             (c.list_flag ? " list" : "") +
                             (c.source != nullptr || c.cross_module_flag ? " OTHER" : "");
    for (const auto &row : rows) {
        if (row.ns == c.ns && path.starts_with(row.head)) {
            return row.letter + path.substr(row.head.size()) + rest + "\n";
        }
    }
    return c.ns + (" " + path) + rest + "\n";
}

struct outcome {
    std::string log;
    rcode status = RC_OK;
    uint64_t error_marks = 0;
    int32_t logical_index = 0;
};

outcome run(zmf_node_fn callback, int32_t channel, const char *value, uint32_t kind = OP_GET) {
    zmf::session session(kind);
    zmf::output_tree output;
    outcome result;
    session.request().logical_index = channel;
    session.record([&](const zmf::call &c) {
        if (c.op == zmf::operation::add_path) {
            result.log += shown(c);
        }
    });
    zmf_datatree node{};
    node.tag = "leaf";
    node.value = value;
    result.status = callback(session.context(), &node, output.root());
    result.error_marks = session.error_marks();
    result.logical_index = session.request().logical_index;
    return result;
}

struct leaf {
    const char *name;
    zmf_node_fn callback;
    const char *eth, *controller;      // behind each carrier
    const char *eth_value, *otu_value; // of a plain selection
};
const leaf leaves[] = {
    {"admin-state", oc_optical_state_admin_state_to_low, "/admin-state", "/info/state", "disabled", "disabled"},
    {"loopback-mode", oc_optical_state_loopback_to_low, "/phy-info/loopback", "/info/loopback-mode", "none", "none"},
    {"link-state", oc_optical_state_link_state_to_low, "/oper-state-up", "/info/state", "", ""},
};

TEST(channel_state, one_channel) {
    for (const leaf &row : leaves) {
        const std::string eth = std::string("eth") + row.eth + "=" + row.eth_value + "\n";
        const auto controller = [&](const char *kind) {
            return std::string(kind) + row.controller + "=" + row.otu_value + "\n";
        };
        const struct {
            int32_t channel;
            bool terminal_device;
            std::string log; // empty: refused
        } channels[] = {
            {ethernet, true, eth},
            {ethernet, false, eth},
            {coherent, true, controller("otu")},
            {coherent, false, controller("otu")},
            {otu4, true, controller("otu")},
            {otu4, false, controller("otu")},
            {odu, true, controller("odu")},
            {odu, false, ""},
            {unmapped, true, ""},
            {other, true, ""},
        };
        for (const auto &of : channels) {
            set_up(of.terminal_device);
            const outcome got = run(row.callback, of.channel, nullptr);
            EXPECT_EQ(got.log, of.log) << row.name << of.channel;
            EXPECT_EQ(got.status, of.log.empty() ? RC_INVALID_ARGUMENTS : RC_OK) << row.name << of.channel;
            EXPECT_EQ(got.error_marks, of.log.empty() ? 1u : 0u) << row.name << of.channel;
            EXPECT_EQ(run(row.callback, of.channel, nullptr, OP_GET_CONFIG).log, "");
        }
    }
}

// Link states ask ODU controllers on every device.
TEST(channel_state, all_channels) {
    const struct {
        zmf_node_fn callback;
        const char *log, *without_terminal_device;
    } rows[] = {
        {oc_optical_state_admin_state_to_low,
         "eth/admin-state=disabled\notu/info/state=disabled\nodu/info/state=disabled\n",
         "eth/admin-state=disabled\notu/info/state=disabled\n"},
        {oc_optical_state_loopback_to_low,
         "otu/info/loopback-mode=none\neth/phy-info/loopback=none\nodu/info/loopback-mode=none\n",
         "otu/info/loopback-mode=none\neth/phy-info/loopback=none\n"},
        {oc_optical_state_link_state_to_low, "otu/info/state=\neth/oper-state-up=\nodu/info/state=\n",
         "otu/info/state=\neth/oper-state-up=\nodu/info/state=\n"},
    };
    for (const auto &row : rows) {
        set_up(true);
        EXPECT_EQ(run(row.callback, 0, nullptr).log, row.log);
        set_up(false);
        EXPECT_EQ(run(row.callback, 0, nullptr).log, row.without_terminal_device);
    }
}

TEST(channel_state, values_that_a_client_filters_by) {
    set_up(true);
    const struct {
        zmf_node_fn callback;
        int32_t channel;
        const char *value;
        const char *log;
        uint64_t error_marks;
    } rows[] = {
        // Nothing is known of the channel yet where the value is converted: the mark is left, the add's status stands.
        {oc_optical_state_admin_state_to_low, ethernet, "ENABLED", "eth/admin-state=disabled\n", 1},
        {oc_optical_state_admin_state_to_low, coherent, "MAINT", "otu/info/state=disabled\n", 1},
        {oc_optical_state_loopback_to_low, ethernet, "TERMINAL", "eth/phy-info/loopback=none\n", 0},
        {oc_optical_state_link_state_to_low, ethernet, "DOWN", "eth/oper-state-up=false\n", 0},
        {oc_optical_state_link_state_to_low, ethernet, "UP", "eth/oper-state-up=true\n", 0},
        {oc_optical_state_link_state_to_low, ethernet, "up", "eth/oper-state-up=\n", 0},
        {oc_optical_state_link_state_to_low, otu4, "DOWN", "otu/info/state=down\n", 0},
        {oc_optical_state_link_state_to_low, odu, "UP", "odu/info/state=up\n", 0},
        {oc_optical_eth_state_client_als_to_low, ethernet, "LASER_SHUTDOWN",
         "rel-eth/layer1-info/laser-squelch-enabled=false\n", 0},
        {oc_optical_eth_state_als_delay_to_low, ethernet, "10", "rel-eth/phy-info/holdoff-time\n", 0},
        {oc_optical_tti_msg_recv_to_tti_ascii_string_high_to_low, coherent, "AB",
         "otu/info/tti-mode/rec/full-tti-ascii-string=AB\n", 0},
    };
    for (const auto &row : rows) {
        const outcome got = run(row.callback, row.channel, row.value);
        EXPECT_EQ(got.log, row.log) << row.value;
        EXPECT_EQ(got.status, RC_OK) << row.value;
        EXPECT_EQ(got.error_marks, row.error_marks) << row.value;
    }
    set_up(false);
    EXPECT_EQ(run(oc_optical_tti_msg_recv_to_tti_ascii_string_high_to_low, coherent, nullptr).log, "");
}

// The names that a carrier would have with the low text of each row: the last one that matches decides.
TEST(channel_state, a_number_without_carrier_hides_the_tables) {
    set_up(true);
    hardware::current().name_of[0] = "ODU40_0_0_0"; // no device maps it
    const struct {
        const char *value, *log;
    } rows[] = {{"DISABLED", "eth/admin-state=unknown\n"},
                {"ENABLED", "eth/admin-state=operational\n"},
                {"MAINT", "eth/admin-state=up\n"},
                {"__ignore__", "eth/admin-state=last\n"},
                {"OTHER", "eth/admin-state=disabled\n"}};
    for (const auto &row : rows) {
        EXPECT_EQ(run(oc_optical_state_admin_state_to_low, ethernet, row.value).log, row.log);
    }
    hardware::current().name_of[0] = "TenGigECtrlr0_0_0_0";
    EXPECT_EQ(run(oc_optical_state_admin_state_to_low, ethernet, "ENABLED").log, "eth/admin-state=enabled\n");
    EXPECT_EQ(run(oc_optical_state_admin_state_to_low, ethernet, "MAINT").log, "eth/admin-state=__ignore__\n");
}

TEST(channel_state, index) {
    const struct {
        const char *value;
        int32_t logical_index;
        std::string carrier;
    } rows[] = {
        {"3", ethernet, "eth/interface-name=HundredGigECtrlr0/1/0/3\n"},
        {"4", coherent, "otu/controller-name=CoherentDSP0/1/0/2\n"},
        {"6", otu4, "otu/controller-name=OTU40/1/0/4\n"},
        {"5", odu, ""},
        {"0", 0, ""}, // in no range that anyone tests
        {"100001", 100001, ""},
        {"x", 0, ""},
        {nullptr, 0, ""},
    };
    const auto callback = ymap_ox_oc_optical_openconfigterminaldevice_leaf_lvla_terminaldevice_state_index;
    for (const auto &row : rows) {
        set_up(true);
        const outcome got = run(callback, 77, row.value);
        const std::string value = row.value != nullptr ? "=" + std::string(row.value) : "";
        EXPECT_EQ(got.log, "cfg/channel-index" + value + "\notu list\neth list\n" + row.carrier);
        EXPECT_EQ(got.status, RC_OK);
        EXPECT_EQ(got.logical_index, row.logical_index);
    }
}

// Requests walked from the root.
outcome walk(const std::string &text, uint32_t kind = OP_GET) {
    zmf::session session(kind);
    zmf::output_tree output;
    request_text request(text, ZMF_NS_OC_TERMINAL_DEVICE);
    outcome result;
    session.record([&](const zmf::call &c) {
        if (c.op == zmf::operation::add_path && std::string(c.ns) != ZMF_NS_OC_TERMINAL_DEVICE) {
            result.log += shown(c);
        }
    });
    result.status = ymap_ox_oc_optical_openconfigterminaldevice_lvla_terminaldevice(session.context(), request.top(),
                                                                                    output.root());
    return result;
}

TEST(channel_state, refused_leaves) {
    set_up(true);
    const std::string entry = "terminal-device{logical-channels{channel{index=4 ";
    for (const char *leaf : {"state{test-signal}", "otn{state{tti-msg-auto}}", "otn{state{tributary-slot-granularity}}",
                             "otn{state{rdi-msg}}", "otn{state{code-violations}}", "otn{state{errored-blocks}}",
                             "otn{state{fec-uncorrectable-blocks}}", "otn{state{fec-corrected-bytes}}"}) {
        EXPECT_EQ(walk(entry + leaf + "}}}").status, RC_UNSUPPORTED_NODE) << leaf;
    }
    EXPECT_EQ(walk(entry + "state}}}").status, RC_OK);
    EXPECT_EQ(walk(entry + "state{index=4 description rate-class link-state}}}}").log,
              "cfg list\notu list\ncfg/channel-index=4\notu list\neth list\notu/controller-name=CoherentDSP0/1/0/2\n"
              "cfg/channel-index=4\notu list\neth list\notu/controller-name=CoherentDSP0/1/0/2\n"
              "cfg/description\ncfg/rate-class\notu/info/state=\n");
}

TEST(operational_modes, requests) {
    set_up(true);
    const std::string of = "terminal-device{operational-modes{";
    const struct {
        uint32_t kind;
        std::string request, log;
        rcode status;
    } rows[] = {
        {OP_GET, of + "mode}}",
         "mode list\nmode/mode-id\nmode/mode-id\nmode/operational-mode-attributes/description\n"
         "mode/operational-mode-attributes/vendor-id\n",
         RC_OK},
        {OP_GET, of + "mode{mode-id=7 state{description}}}}",
         "mode list\nmode/mode-id=7\nmode/operational-mode-attributes/description\n", RC_OK},
        {OP_GET_CONFIG, of + "mode{mode-id=7}}}", "", RC_OK},
        {OP_GET_CONFIG, of + "}}", "", RC_OK},
        {OP_EDIT, of + "mode{mode-id=7 config}}}", "", RC_UNSUPPORTED_NODE},
    };
    for (const auto &row : rows) {
        const outcome got = walk(row.request, row.kind);
        EXPECT_EQ(got.log, row.log) << row.request << row.kind;
        EXPECT_EQ(got.status, row.status) << row.request << row.kind;
    }
}

} // namespace
