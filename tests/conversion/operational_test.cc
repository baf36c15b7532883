// Operational models on the way up: native trees walked from their roots, and what the walk adds.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "../walk/request_text.h"
#include "exported.h"
#include "hardware/hardware.h"
#include "namespaces.h"
#include "state_store_items.h"
#include "zmf/session.h"
#include "zmf/tree.h"

extern "C" {
zmf_node_shape ymap_xo_oc_optical_corvanecontrolleropticsoper_lvla_opticsoper;
zmf_node_shape ymap_xo_oc_optical_corvanecontrollerotuoper_lvla_otu;
zmf_node_shape ymap_xo_oc_optical_corvanecontrolleroduoper_lvla_odu;
zmf_node_shape ymap_xo_oc_optical_corvanedriversmediaethoper_lvla_ethernetinterface;
zmf_node_shape ymap_xo_oc_optical_corvaneterminaldeviceoper_lvla_opticalinterface;
zmf_node_shape oc_optical_otu_oper_loopback_to_high;
zmf_node_shape oc_optical_otu_fec_state_to_link_state_to_high;
zmf_node_shape oc_optical_post_fec_ber_instant_to_high;
zmf_node_shape oc_optical_pre_fec_ber_instant_to_high;
zmf_node_shape oc_optical_eth_state_client_als_to_high;
zmf_node_shape oc_optical_eth_oper_loopback_to_high;
zmf_node_shape oc_optical_q_value_instant_to_high;
zmf_node_shape oc_optical_otu_admin_state_to_high;
zmf_node_shape oc_optical_state_freq_to_high;
zmf_node_shape oc_optical_esnr_instant_to_high;
}

namespace {

using namespace state_store_items;

struct model {
    zmf_node_fn root;
    const char *ns;
};
constexpr model optics{ymap_xo_oc_optical_corvanecontrolleropticsoper_lvla_opticsoper, ZMF_NS_OPTICS_OPER};
constexpr model otu{ymap_xo_oc_optical_corvanecontrollerotuoper_lvla_otu, ZMF_NS_OTU_OPER};
constexpr model odu{ymap_xo_oc_optical_corvanecontrolleroduoper_lvla_odu, ZMF_NS_ODU_OPER};
constexpr model ethernet{ymap_xo_oc_optical_corvanedriversmediaethoper_lvla_ethernetinterface, ZMF_NS_MEDIA_ETH_OPER};
constexpr model modes{ymap_xo_oc_optical_corvaneterminaldeviceoper_lvla_opticalinterface, ZMF_NS_TERMINAL_DEVICE_OPER};

// One line for each entry ("channel 1", "component ..."), add and keyed set. Heads: "C" a channel, "O" an optical
// channel, "E" its extended container, "M" an operational mode, "[1]" the channel of that number. Null: "(null)".
class walk {
public:
    explicit walk(uint32_t kind = OP_GET, bool gate_open = true) : session(kind) {
        session.request().request->scope_word = gate_open ? 0 : 2;
        session.request().request->scope_flags_4 = 1;
        session.record([this](const zmf::call &c) { note(c); });
    }

    rcode up(const model &from, const std::string &native) {
        request_text tree(native, from.ns);
        const rcode status = from.root(session.context(), tree.top(), output.root());
        EXPECT_EQ(session.hierarchy_depth(), 0u);
        return status;
    }

    zmf::session session;
    zmf::output_tree output;
    std::string log;

private:
    void note(const zmf::call &c) {
        const std::string value = c.value != nullptr ? c.value : "(null)";
        if (c.op == zmf::operation::search_or_add_list) {
            log += (c.key == std::string("index") ? "channel " : "component ") + value + "\n";
        } else if (c.op == zmf::operation::add_path || c.op == zmf::operation::xpath) {
            const bool is_component = std::string(c.path).starts_with("/components");
            EXPECT_STREQ(c.ns, module_of(c)) << c.path;
            EXPECT_EQ(c.cross_module_flag, is_component && c.op == zmf::operation::add_path) << c.path;
            EXPECT_EQ(c.source, nullptr);
            log += (c.list_flag ? "list " : "") + shortened(c.path) + (c.list_flag ? "" : "=" + value) +
                   (c.result == RC_LEAF_EXISTS ? " is there" : "") + "\n";
        }
    }

    static const char *module_of(const zmf::call &c) {
        const std::string path = c.path;
        const bool of_platform =
            path == "/components/component/config/name" || path.starts_with("/components/component[");
        return of_platform                                    ? ZMF_NS_OC_PLATFORM
               : path.find("/extended/") != std::string::npos ? ZMF_NS_OPTICAL_CHANNEL_EXT
                                                              : ZMF_NS_OC_TERMINAL_DEVICE;
    }

    static std::string shortened(std::string path) {
        const struct {
            std::string head;
            const char *letter;
        } heads[] = {{"/terminal-device/logical-channels/channel[index=", "["},
                     {"/terminal-device/logical-channels/channel", "C"},
                     {"/terminal-device/operational-modes/mode", "M"},
                     {"/components/component/optical-channel/extended", "E"},
                     {"/components/component/optical-channel", "O"}};
        for (const auto &row : heads) {
            if (path.starts_with(row.head)) {
                return path.replace(0, row.head.size(), row.letter);
            }
        }
        return path;
    }
};

std::string log_of(const model &from, const std::string &native, uint32_t kind = OP_GET, bool gate_open = true) {
    walk w(kind, gate_open);
    EXPECT_EQ(w.up(from, native), RC_OK) << native;
    return w.log;
}

// A device with a channel of each class and two optics ports, the first of which lies on the line.
class operational : public testing::Test {
protected:
    void SetUp() override {
        register_records();
        hardware::current() = {};
        hardware::current().router_type = 7;
        hardware::current().optical_terminal_device = true;
        hardware::current().state_store_installed = true;
        library_is_there = true;
        const auto map = [](uint32_t channel, const std::string &name) {
            hardware::current().name_of[channel] = name;
            hardware::current().channel_of[name] = channel;
        };
        map(1, "CoherentDSP0_1_0_5");
        map(3, "HundredGigECtrlr0_1_0_3");
        map(5, "ODU40_1_0_2");
        map(6, "OTU40_1_0_4");
        hardware::current().interfaces[hardware::internal_name("Optics0/1/0/5")] = 77;
        hold_grey_record("2");
    }

    static void hold_grey_record(const char *optics_type) {
        hold("/oper/optics/if/Optics0_1_0_5/optics_info", record_with("optics_edm_info", "OpticsType", optics_type));
    }
};

std::string port(const std::string &inside, const std::string &name = "Optics0/1/0/5") {
    return "optics-oper{optics-ports{optics-port{name=" + name + " " + inside + "}}}";
}

constexpr char port_entry[] = "component 0/1-OpticalChannel0/1/0/5\n"
                              "/components/component/config/name=0/1-OpticalChannel0/1/0/5\n";

TEST_F(operational, whole_optics_port) {
    const std::string native = port(
        "optics-info{dwdm-carrier-frequency=193.1 cd=-12 second-order-polarization-mode-dispersion=91 "
        "polarization-dependent-loss=7 rx-low-threshold=-230 rx-high-threshold=35 baud-rate=34.72 cd-min=-1 cd-max=2 "
        "cd-low-threshold=-3 cd-high-threshold=4 snr=15.7 unknown=1 submarine-info{filter-roll-off-factor=0.2 "
        "rx-voa-target-power=-5 rx-voa-fixed-ratio=6 enh-colorless-mode=1 enhsop-tolerance-mode=2 "
        "nleq-compensation=3 cross-pol-gain-mode=4 cross-pol-weight-mode=5 cpr-win-mode=2 cpr-ext-win-mode=7}} "
        "optics-lanes{optics-lane{number=1 receive-signal-power=-350 transmit-power=-100}"
        " optics-lane{number=2 receive-signal-power=9 transmit-power=1205}}");
    const std::string figures = "O/state/frequency=193100000\n"
                                "O/state/chromatic-dispersion/instant=-12\n"
                                "O/state/second-order-polarization-mode-dispersion/instant=91\n"
                                "O/state/polarization-dependent-loss/instant=7\n"
                                "E/thresholds/state/input-signal-power-lower=-23.00\n"
                                "E/thresholds/state/input-signal-power-upper=3.50\n"
                                "E/state/baud-rate=34.72\n"
                                "E/state/optics-cd-min=-1\n"
                                "E/state/optics-cd-max=2\n"
                                "O=(null)\n"
                                "E/state/optics-cd-low-threshold=-3\n"
                                "O=(null)\n"
                                "E/state/optics-cd-high-threshold=4\n"
                                "[1]/otn/state/esnr/instant=15.7\n"
                                "E/state/filter-roll-off-factor=0.2\n"
                                "E/state/rx-voa-target-power=-5\n"
                                "E/state/rx-voa-fixed-ratio=6\n"
                                "E/state/enh-colorless-mode=1\n"
                                "E/state/enh-sop-tol-mode=2\n"
                                "E/state/nleq-compensation=3\n"
                                "E/state/cross-pol-gain-mode=4\n"
                                "E/state/cross-pol-weight-mode=5\n"
                                "E/state/cpr-win-mode=2\n"
                                "E/state/cpr-ext-win-mode=7\n"
                                "O/state/input-power/instant=-3.50\n"
                                "O/config/target-output-power=-1.00\n"
                                "O/state/target-output-power=-1.00\n"
                                "O/state/input-power/instant=0.09\n"
                                "O/config/target-output-power=12.05\n"
                                "O/state/target-output-power=12.05\n";
    EXPECT_EQ(log_of(optics, native), port_entry + figures);
    EXPECT_EQ(log_of(optics, native, OP_GET_CONFIG), "");
    EXPECT_EQ(log_of(optics, native, OP_EDIT), "");
}

TEST_F(operational, which_ports_are_components) {
    const std::string lane = "optics-lanes{optics-lane{number=1 transmit-power=0}}";
    EXPECT_EQ(log_of(optics, port(lane, "Optics0/1/0/4")), ""); // on the client side
    EXPECT_EQ(log_of(optics, port(lane, "Optics0/1/0/6")), ""); // on the line, without an interface
    EXPECT_EQ(log_of(optics, port("", "Optics0/1/0/5"), OP_GET, false), "component 0/1-OpticalChannel0/1/0/5\n");
    EXPECT_EQ(log_of(optics, "optics-oper{optics-ports{optics-port{optics-info{cd=1}}}}"), ""); // nameless
    // Where components decide, the port's has to stand in the reply.
    hardware::current().router_type = 18;
    EXPECT_EQ(log_of(optics, port(lane)), "");
}

TEST_F(operational, transmit_power) {
    const std::string native = port("optics-lanes{optics-lane{number=1 transmit-power=-350}}");
    const std::string both = "O/config/target-output-power=-3.50\nO/state/target-output-power=-3.50\n";
    const struct {
        const char *optics_type; // null: no record
        bool terminal_device, gate_open;
        std::string log;
    } rows[] = {
        {"2", true, true, both},      {"2", true, false, "O/state/target-output-power=-3.50\n"},
        {"1", true, true, ""},        {"1", false, true, both},
        {nullptr, true, true, ""}, // what cannot be told counts as grey
        {nullptr, false, true, both},
    };
    for (const auto &row : rows) {
        hardware::current().state_items.clear();
        hardware::current().optical_terminal_device = row.terminal_device;
        if (row.optics_type != nullptr) {
            hold_grey_record(row.optics_type);
        }
        const std::string entry = row.gate_open ? port_entry : "component 0/1-OpticalChannel0/1/0/5\n";
        EXPECT_EQ(log_of(optics, native, OP_GET, row.gate_open), entry + row.log) << (row.optics_type != nullptr);
    }
}

TEST_F(operational, values_of_optics) {
    const struct {
        const char *native, *log;
    } rows[] = {
        {"optics-info{dwdm-carrier-frequency=191.3500}", "O/state/frequency=191350000\n"},
        {"optics-info{dwdm-carrier-frequency}", "O/state/frequency=\n"},
        {"optics-info{dwdm-carrier-frequency=.}", "O/state/frequency=0\n"},
        {"optics-info{rx-low-threshold=none}", "E/thresholds/state/input-signal-power-lower=0.00\n"},
        {"optics-info{rx-low-threshold=214748365}", "E/thresholds/state/input-signal-power-lower=-21474836.46\n"},
        {"optics-info{rx-high-threshold}", "E/thresholds/state/input-signal-power-upper=\n"},
        {"optics-lanes{optics-lane{number=1 receive-signal-power=-7}}", "O/state/input-power/instant=-0.07\n"},
        {"optics-lanes{optics-lane{number=1 receive-signal-power}}", "O/state/input-power/instant=\n"},
        {"optics-info{cd}", "O/state/chromatic-dispersion/instant=(null)\n"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(log_of(optics, port(row.native)), std::string(port_entry) + row.log) << row.native;
    }
}

TEST_F(operational, esnr_goes_to_the_channel) {
    const std::string snr = port("optics-info{snr=15.7}");
    walk twice;
    EXPECT_EQ(twice.up(optics, snr), RC_OK);
    EXPECT_EQ(twice.up(optics, port("optics-info{snr=9}")), RC_OK); // the first stays
    const std::string entry = port_entry;
    EXPECT_EQ(twice.log,
              entry + "[1]/otn/state/esnr/instant=15.7\n" + entry + "[1]/otn/state/esnr/instant=9 is there\n");
    hardware::current().channel_of.clear();
    EXPECT_EQ(log_of(optics, snr), entry + "[]/otn/state/esnr/instant=15.7\n"); // the framework's to leave out
    hardware::current().optical_terminal_device = false;
    EXPECT_EQ(log_of(optics, snr), entry);
}

// Controllers.

std::string otu_controller(const std::string &inside, const std::string &name = "CoherentDSP0/1/0/5") {
    return "otu{controllers{controller{controller-name=" + name + " info{" + inside + "}}}}";
}
std::string odu_controller(const std::string &inside, const std::string &name = "ODU40/1/0/2") {
    return "odu{controllers{controller{controller-name=" + name + " info{" + inside + "}}}}";
}

TEST_F(operational, whole_otu_controllers) {
    const std::string native =
        "otu{controllers{controller{controller-name=CoherentDSP0/1/0/5 info{state=up loopback-mode=line "
        "tti-mode{rec{full-tti-ascii-string=AB}} otu-fec-satistics{post-fec-ber=1.5E-03 pre-fec-ber=0.0E+00} "
        "qfactor=8.1 "
        "fec-mode=mode-1}} controller{controller-name=OTU40/1/0/4 info{state=down fec-mode=standard}}"
        " controller{controller-name=CoherentDSP0/9/0/5 info{state=up qfactor=1}}}}";
    const std::string log =
        "channel 1\n"
        "C/state/link-state=UP\n"
        "C/state/admin-state=ENABLED\n"
        "C/state/loopback-mode=FACILITY\n"
        "C/otn/state/tti-msg-recv=AB\n"
        "C/otn/state/post-fec-ber/instant=0.0015\n"
        "C/otn/state/pre-fec-ber/instant=0.0\n"
        "C/otn/state/q-value/instant=8.1\n"
        "/components/component[name=0/1-OpticalChannel0/1/0/5]/optical-channel/state/operational-mode="
        "mode-1\n"
        "channel 6\n"
        "C/state/link-state=DOWN\n"
        "C/state/admin-state=ENABLED\n";
    hold("/oper/otu/if/CoherentDSP0_1_0_5/otu_port_info", record_with("otu_per_port_info", "ConfigSecState", "0"));
    hold("/oper/otu/if/OTU40_1_0_4/otu_port_info", record_with("otu_per_port_info", "ConfigSecState", "2"));
    // Without a channel only the store's answer is left, so a controller that the store lacks ends the walk.
    EXPECT_NE(walk().up(otu, native), RC_OK);
    hold("/oper/otu/if/CoherentDSP0_9_0_5/otu_port_info", record_with("otu_per_port_info", "ConfigSecState", "0"));
    EXPECT_EQ(log_of(otu, native), log);
    EXPECT_EQ(log_of(otu, native, OP_GET_CONFIG), "");
}

TEST_F(operational, mode_of_the_component_is_set_once) {
    walk w;
    const std::string path =
        "/components/component[name=0/1-OpticalChannel0/1/0/5]/optical-channel/state/operational-mode=";
    EXPECT_EQ(w.up(otu, otu_controller("fec-mode=first")), RC_OK);
    EXPECT_EQ(w.up(otu, otu_controller("fec-mode=second")), RC_OK);
    EXPECT_EQ(w.log, "channel 1\n" + path + "first\nchannel 1\n" + path + "second is there\n");
}

TEST_F(operational, whole_odu_controllers) {
    hold("/oper/odu/if/ODU40_1_0_2/port_info", record_with("odu_per_port_info", "ConfigSecState", "1"));
    const std::string native = odu_controller("state=up loopback-mode=external");
    EXPECT_EQ(log_of(odu, native), "channel 5\n"
                                   "C/state/link-state=UP\n"
                                   "C/state/admin-state=MAINT\n"
                                   "C/state/loopback-mode=NONE\n");
    EXPECT_EQ(log_of(odu, native, OP_GET_CONFIG), "");
    EXPECT_EQ(log_of(odu, odu_controller("loopback-mode=sideways")), "channel 5\nC/state/loopback-mode=(null)\n");
}

// Native state, what it shows, and what it shows in maintenance.
TEST_F(operational, administrative_states_of_controllers) {
    const struct {
        const char *native, *plain, *in_maintenance;
    } rows[] = {
        {"not-ready", "__ignore__", "__ignore__"},
        {"admin-down", "DISABLED", "DISABLED"},
        {"down", "ENABLED", "MAINT"},
        {"up", "ENABLED", "MAINT"},
        {"shutdown", "DISABLED", "DISABLED"},
        {"error-disable", "DISABLED", "DISABLED"},
        {"down-immediate", "ENABLED", "MAINT"},
        {"down-immediate-admin", "DISABLED", "DISABLED"},
        {"down-graceful", "DISABLED", "DISABLED"},
        {"begin-shutdown", "DISABLED", "DISABLED"},
        {"end-shutdown", "DISABLED", "DISABLED"},
        {"begin-error-disable", "DISABLED", "DISABLED"},
        {"end-error-disable", "DISABLED", "DISABLED"},
        {"begin-down-graceful", "DISABLED", "DISABLED"},
        {"reset", "ENABLED", "MAINT"},
        {"operational", "ENABLED", "MAINT"},
        {"not-operational", "DISABLED", "DISABLED"},
        {"unknown", "DISABLED", "DISABLED"},
        {"last", "__ignore__", "__ignore__"},
        {"Up", "(null)", "(null)"}, // in no row
    };
    for (const char *state : {"0", "1", "2"}) {
        hold("/oper/otu/if/CoherentDSP0_1_0_5/otu_port_info",
             record_with("otu_per_port_info", "ConfigSecState", state));
        hold("/oper/odu/if/ODU40_1_0_2/port_info", record_with("odu_per_port_info", "ConfigSecState", state));
        for (const auto &row : rows) {
            const std::string shows = std::string(*state == '1' ? row.in_maintenance : row.plain) + "\n";
            const std::string link = std::string(row.native) == "up" ? "UP\n" : "DOWN\n";
            const std::string leaves = "C/state/link-state=" + link + "C/state/admin-state=" + shows;
            const std::string set = std::string("state=") + row.native;
            EXPECT_EQ(log_of(otu, otu_controller(set)), "channel 1\n" + leaves) << row.native << state;
            EXPECT_EQ(log_of(odu, odu_controller(set)), "channel 5\n" + leaves) << row.native << state;
        }
    }
}

struct maintenance_source {
    rcode (*read)(zmf_map_ctx, const char *, uint32_t *);
    const char *controller, *item, *record, *field;
};

[[noreturn]] void read_from_a_store_that_comes_up() {
    register_records();
    hardware::current() = {};
    hardware::current().state_store_installed = true;
    const maintenance_source sources[] = {
        {get_otu_maint_mode, "CoherentDSP0/1/0/5", "/oper/otu/if/CoherentDSP0_1_0_5/otu_port_info", "otu_per_port_info",
         "ConfigSecState"},
        {get_odu_maint_mode, "ODU40/1/0/2", "/oper/odu/if/ODU40_1_0_2/port_info", "odu_per_port_info",
         "ConfigSecState"},
        {get_maint_mode, "HundredGigECtrlr0/1/0/3", "/oper/ethernet_drvr/oper/if/HundredGigECtrlr0_1_0_3",
         "ethernet_controller_driver_pouch_v2_type", "TransportInfo/MaintenanceModeEnabled"},
    };
    zmf::session session(OP_GET);
    for (const maintenance_source &from : sources) {
        uint32_t mode = 9;
        const auto read = [&](const char *controller) { return from.read(session.context(), controller, &mode); };
        library_is_there = false;
        times_asked = 0;
        EXPECT_EQ(read(from.controller), RC_STATEDB_UNAVAILABLE);
        EXPECT_EQ(read(from.controller), RC_STATEDB_UNAVAILABLE);
        EXPECT_EQ(times_asked, 2) << from.record;
        library_is_there = true;
        const rcode missing = read(from.controller);
        EXPECT_TRUE(missing != RC_OK && missing != RC_STATEDB_UNAVAILABLE);
        EXPECT_EQ(times_asked, 3) << from.record;
        const std::string sound = record_with(from.record, from.field, "1");
        for (size_t length = 0; length < sound.size(); length += 7) {
            hold(from.item, sound.substr(0, length));
            EXPECT_NE(read(from.controller), RC_OK) << from.record << length;
        }
        EXPECT_EQ(mode, 9u) << from.record;
        hold(from.item, sound);
        library_is_there = false; // found for good
        EXPECT_EQ(read(from.controller), RC_OK);
        EXPECT_EQ(mode, 1u) << from.record;
        EXPECT_NE(read("MgmtEth0"), RC_OK) << from.record;
        EXPECT_NE(read(nullptr), RC_OK) << from.record;
        EXPECT_EQ(mode, 1u) << from.record;
    }
    exit(testing::Test::HasFailure() ? 1 : 0);
}

// In a process of its own: once the library is found and the store bound, both are for good.
TEST(maintenance, the_store_may_be_missing) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(read_from_a_store_that_comes_up(), testing::ExitedWithCode(0), "");
}

TEST_F(operational, a_word_that_the_record_lacks_stays) {
    zmf::session session(OP_GET);
    uint32_t mode = 9;
    hold("/oper/ethernet_drvr/oper/if/HundredGigECtrlr0_1_0_3",
         record_with("ethernet_controller_driver_pouch_v2_type", "TransportInfo/AINSStatus", "1"));
    EXPECT_EQ(get_maint_mode(session.context(), "HundredGigECtrlr0/1/0/3", &mode), RC_OK);
    EXPECT_EQ(mode, 9u);
}

TEST_F(operational, whole_ethernet_interfaces) {
    const std::string native =
        "ethernet-interface{statistics{statistic{interface-name=HundredGigECtrlr0/1/0/3 received-total-bytes=0 "
        "received-pause-frames=2 received-total-octet-frames-from1519-to-max=3 "
        "dropped-jabbers-packets-greaterthan-mru=4 "
        "dropped-ether-stats-fragments=5 dropped-packets-with-crc-align-errors=6 transmitted-total-pause-frames=7}"
        " statistic{interface-name=HundredGigECtrlr0/9/0/3 received-total-bytes=1 received-pause-frames=2}} "
        "interfaces{interface{interface-name=HundredGigECtrlr0/1/0/3 oper-state-up=true admin-state=enabled "
        "phy-info{loopback=no-loopback holdoff-time=10} layer1-info{laser-squelch-enabled=false}}}}";
    EXPECT_EQ(log_of(ethernet, native), "channel 3\n"
                                        "[3]/ethernet/lldp/state/snooping=true\n"
                                        "C/ethernet/state/in-mac-pause-frames=2\n"
                                        "C/ethernet/state/in-oversize-frames=3\n"
                                        "C/ethernet/state/in-jabber-frames=4\n"
                                        "C/ethernet/state/in-fragment-frames=5\n"
                                        "C/ethernet/state/in-crc-errors=6\n"
                                        "C/ethernet/state/out-mac-pause-frames=7\n"
                                        "channel 3\n"
                                        "C/state/link-state=UP\n"
                                        "C/state/loopback-mode=NONE\n"
                                        "C/ethernet/state/als-delay=10\n"
                                        "C/ethernet/state/client-als=ETHERNET\n");
    EXPECT_EQ(log_of(ethernet, native, OP_GET_CONFIG), "");
}

TEST_F(operational, values_of_ethernet) {
    const struct {
        const char *native, *log;
    } rows[] = {
        {"oper-state-up=false", "C/state/link-state=DOWN\n"},
        {"oper-state-up=unknown", ""},
        {"oper-state-up", ""},
        {"phy-info{loopback=sideways}", "C/state/loopback-mode=(null)\n"},
        {"phy-info{loopback=none}", "C/state/loopback-mode=NONE\n"},
        {"layer1-info{laser-squelch-enabled=true}", "C/ethernet/state/client-als=LASER_SHUTDOWN\n"},
        {"layer1-info{laser-squelch-enabled=1}", "C/ethernet/state/client-als=(null)\n"},
    };
    for (const auto &row : rows) {
        const std::string native = std::string("ethernet-interface{interfaces{interface{interface-name="
                                               "HundredGigECtrlr0/1/0/3 ") +
                                   row.native + "}}}";
        EXPECT_EQ(log_of(ethernet, native), std::string("channel 3\n") + row.log) << row.native;
    }
}

// No row names it: it serves modules that load the plug-in.
TEST_F(operational, administrative_states_of_ethernet) {
    const struct {
        const char *native, *plain, *in_maintenance;
    } rows[] = {
        {"disabled", "DISABLED", "DISABLED"},      {"rx-enabled", "ENABLED", "MAINT"},
        {"tx-enabledenabled", "ENABLED", "MAINT"}, {"enabled", "ENABLED", "MAINT"},
        {"__ignore__", "MAINT", "MAINT"},          {"tx-enabled", "(null)", "(null)"},
    };
    for (const char *state : {"0", "1"}) {
        hold("/oper/ethernet_drvr/oper/if/HundredGigECtrlr0_1_0_3",
             record_with("ethernet_controller_driver_pouch_v2_type", "TransportInfo/MaintenanceModeEnabled", state));
        for (const auto &row : rows) {
            walk w;
            request_text native(
                "interface{interface-name=HundredGigECtrlr0/1/0/3 admin-state=" + std::string(row.native) + "}",
                ZMF_NS_MEDIA_ETH_OPER);
            const zmf_datatree *entry = native.top();
            zmf_map_add_to_node_hierarchy(w.session.context(), entry, ZMF_HIER_LIST);
            ASSERT_EQ(zmf_map_update_current_list_node(w.session.context(), "/ethernet-interface/interfaces/interface"),
                      RC_OK);
            EXPECT_EQ(oc_optical_ether_admin_state_to_high(w.session.context(), &entry->children[1], w.output.root()),
                      RC_OK);
            zmf_map_remove_from_node_hierarchy(w.session.context(), entry);
            EXPECT_EQ(w.log,
                      std::string("C/state/admin-state=") + (*state == '1' ? row.in_maintenance : row.plain) + "\n")
                << row.native;
        }
    }
}

TEST_F(operational, modes) {
    const std::string native = "optical-interface{operational-modes{operational-mode{mode-id=1 "
                               "operational-mode-attributes{description=d vendor-id=v}} operational-mode{mode-id=2}}}";
    EXPECT_EQ(log_of(modes, native),
              "list M\nM/mode-id=1\nM/state/mode-id=1\nM/state/description=d\nM/state/vendor-id=v\n"
              "list M\nM/mode-id=2\nM/state/mode-id=2\n");
    EXPECT_EQ(log_of(modes, native, OP_GET_CONFIG), "");
}

// Conversions run before the arguments are tested, so none may fall over a node that is not there.
TEST_F(operational, missing_arguments) {
    const struct {
        zmf_node_fn conversion;
        bool needs_node;
    } rows[] = {
        {oc_optical_otu_oper_loopback_to_high, true},
        {oc_optical_otu_fec_state_to_link_state_to_high, true},
        {oc_optical_post_fec_ber_instant_to_high, false},
        {oc_optical_pre_fec_ber_instant_to_high, false},
        {oc_optical_eth_state_client_als_to_high, true},
        {oc_optical_eth_oper_loopback_to_high, true},
        {oc_optical_q_value_instant_to_high, true},
        {oc_optical_otu_admin_state_to_high, true},
        {oc_optical_state_freq_to_high, true},
        {oc_optical_esnr_instant_to_high, true},
    };
    for (const auto &row : rows) {
        walk w;
        const zmf_datatree node{};
        EXPECT_EQ(row.conversion(w.session.context(), &node, nullptr), RC_INVALID_ARGUMENTS);
        EXPECT_EQ(w.session.error_marks(), 1u);
        const rcode status = row.conversion(w.session.context(), nullptr, w.output.root());
        EXPECT_EQ(status == RC_INVALID_ARGUMENTS, row.needs_node); // else: the failed read of the name
        EXPECT_NE(status, RC_OK);
        EXPECT_EQ(w.log, "");
    }
}

} // namespace
