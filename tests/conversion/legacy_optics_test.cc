// The optics of a legacy platform on the way up: native interface configurations walked from their root.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "adds.h"
#include "corvane_ifmgr_cfg/ymap_oc_optical_corvane_ifmgr_cfg.h"
#include "hardware/hardware.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

// Optics leaves by path below `optics`, as {"optics-dwdm-carrier/param-value", "1931000"}; an empty path is `optics`
// itself.
using leaves = std::vector<std::pair<std::string, std::string>>;

zmf::fixed_tree interface_with(const char *name, bool has_optics, const leaves &below) {
    zmf::tree_builder builder;
    const auto leaf = [&](const std::string &tag, const std::string &value, const char *ns) {
        builder.open(tag, ns);
        builder.value(value);
        builder.close();
    };
    builder.open("interface-configurations", ZMF_NS_IFMGR_CFG);
    builder.open("interface-configuration", ZMF_NS_IFMGR_CFG);
    leaf("active", "act", ZMF_NS_IFMGR_CFG);
    leaf("interface-name", name, ZMF_NS_IFMGR_CFG);
    if (has_optics) {
        builder.open("optics", ZMF_NS_OPTICS_CFG);
        for (const auto &[path, value] : below) {
            const size_t slash = path.find('/');
            if (slash == std::string::npos) {
                leaf(path, value, ZMF_NS_OPTICS_CFG);
            } else {
                builder.open(path.substr(0, slash), ZMF_NS_OPTICS_CFG);
                leaf(path.substr(slash + 1), value, ZMF_NS_OPTICS_CFG);
                builder.close();
            }
        }
        builder.close();
    }
    builder.close();
    builder.close();
    return builder.finish();
}

std::string walk_up(uint32_t kind, bool gate_open, const zmf::fixed_tree &native) {
    zmf::session session(kind);
    session.request().request->scope_word = gate_open ? 0 : 2;
    session.request().request->scope_flags_4 = 1;
    const add_log log(session);
    zmf::output_tree output;
    const zmf_datatree *top = native.tops();
    EXPECT_EQ(ymap_xo_oc_optical_corvaneifmgrcfg_lvla_interfaceconfigurations(session.context(), top, output.root()),
              RC_OK);
    EXPECT_EQ(session.hierarchy_depth(), 0u);
    return log.text;
}

constexpr char entry[] = "entry 0/1-OpticalChannel0/1/0/2\nname=0/1-OpticalChannel0/1/0/2 cross\n";

void platform(bool optical_terminal_device) {
    hardware::current() = {};
    hardware::current().router_type = 5;
    hardware::current().optical_terminal_device = optical_terminal_device;
}

TEST(legacy_optics, which_interfaces_are_optical_channels) {
    const struct {
        bool terminal_device;
        const char *name;
        bool has_optics;
        uint32_t kind;
        std::string log;
    } rows[] = {
        {true, "Optics0/1/0/2", true, OP_GET_CONFIG, std::string(entry) + "name=Optics0/1/0/2\n"},
        {true, "Optics0/1/0/2", false, OP_GET_CONFIG, ""},
        {false, "Optics0/1/0/2", true, OP_GET_CONFIG, ""},
        {true, "MgmtEth0/RP0/CPU0/0", true, OP_GET_CONFIG, "name=MgmtEth0/RP0/CPU0/0\n"},
        {true, "Optics0/1/0/2", true, OP_EDIT, "name=Optics0/1/0/2 @\n"},
    };
    for (const auto &row : rows) {
        platform(row.terminal_device);
        EXPECT_EQ(walk_up(row.kind, true, interface_with(row.name, row.has_optics, {})), row.log) << row.name;
    }
}

TEST(legacy_optics, leaves) {
    const struct {
        const char *path, *value;
        const char *log;
    } rows[] = {
        {"optics-dwdm-carrier/param-value", "1931000", "C/config/frequency=193100000 cross\n"},
        {"optics-dwdm-carrier/param-value", "19115", ""},
        {"optics-dwdm-carrier/param-value", "19610", ""},
        {"optics-dwdm-carrier/param-value", "19114", "C/config/frequency=1911400 cross\n"},
        {"optics-dwdm-carrier/param-value", "19611", "C/config/frequency=1961100 cross\n"},
        {"optics-dwdm-carrier/grid-type", "100mhz-grid", ""},
        {"optics-transmit-power", "-35", "C/config/target-output-power=-350 cross\n"},
        {"optics-transmit-power", "none", "C/config/target-output-power=0 cross\n"},
        {"optics-baud-rate", "69.4", "C/extended/config/baud-rate=69.4000000 cross\n"},
        {"optics-fastpoll", "true", "C/extended/config/fastpoll-sop-enable=true cross\nrepair\n"},
        {"unknown", "1", ""},
    };
    platform(true);
    for (const auto &row : rows) {
        EXPECT_EQ(walk_up(OP_GET_CONFIG, true, interface_with("Optics0/1/0/2", true, {{row.path, row.value}})),
                  std::string(entry) + "name=Optics0/1/0/2\n" + row.log)
            << row.path << " " << row.value;
    }
}

TEST(legacy_optics, gate_and_state) {
    platform(true);
    const zmf::fixed_tree native = interface_with("Optics0/1/0/2", true, {{"optics-fastpoll", "true"}});
    EXPECT_EQ(walk_up(OP_GET, true, native),
              std::string(entry) + "name=Optics0/1/0/2\nC/extended/config/fastpoll-sop-enable=true cross\n"
                                   "C/extended/state/fastpoll-sop-enable=true cross\nrepair\n");
    // The component and its first name stand before the gate.
    const zmf::fixed_tree again = interface_with("Optics0/1/0/2", true, {{"optics-fastpoll", "true"}});
    EXPECT_EQ(walk_up(OP_GET, false, again),
              std::string(entry) + "C/extended/state/fastpoll-sop-enable=true cross\nrepair\n");
}

TEST(legacy_optics, thresholds_by_their_key) {
    const struct {
        const char *type;
        const char *log;
    } rows[] = {
        {"low", "C/extended/thresholds/config/input-signal-power-lower=-2300 cross\nrepair\n"},
        {"high", "C/extended/thresholds/config/input-signal-power-upper=-2300 cross\nrepair\n"},
        {nullptr, "repair\n"},
    };
    platform(true);
    for (const auto &row : rows) {
        zmf::tree_builder builder;
        const auto leaf = [&](const char *tag, const char *value, const char *ns) {
            builder.open(tag, ns);
            builder.value(value);
            builder.close();
        };
        builder.open("interface-configurations", ZMF_NS_IFMGR_CFG);
        builder.open("interface-configuration", ZMF_NS_IFMGR_CFG);
        leaf("interface-name", "Optics0/1/0/2", ZMF_NS_IFMGR_CFG);
        builder.open("optics", ZMF_NS_OPTICS_CFG);
        builder.open("rx-thresholds", ZMF_NS_OPTICS_CFG);
        builder.open("rx-threshold", ZMF_NS_OPTICS_CFG);
        if (row.type != nullptr) {
            leaf("rx-threshold-type", row.type, ZMF_NS_OPTICS_CFG);
        }
        leaf("rx-threshold", "-230", ZMF_NS_OPTICS_CFG);
        for (int open = 0; open < 5; ++open) {
            builder.close();
        }
        EXPECT_EQ(walk_up(OP_GET_CONFIG, true, builder.finish()),
                  std::string(entry) + "name=Optics0/1/0/2\n" + row.log);
    }
}

} // namespace
