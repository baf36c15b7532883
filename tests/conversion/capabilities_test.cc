// What a device's two capabilities decide, on every router type: one of them a row, the other changes nothing. A case
// more: a row.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "adds.h"
#include "corvane_ifmgr_cfg/ymap_oc_optical_corvane_ifmgr_cfg.h"
#undef OC_MODEL
#undef OC_TABLE
#include "corvane_terminal_device_cfg/ymap_oc_optical_corvane_terminal_device_cfg.h"
#undef OC_MODEL
#undef OC_TABLE
#include "exported.h"
#include "hardware/hardware.h"
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"
#include "walk/request_text.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

enum class capability : uint8_t { terminal_device, legacy_terminal_device };
constexpr capability T = capability::terminal_device, L = capability::legacy_terminal_device;

// `with` and `without` are adds (adds.h); "sibling" stands for a call of the sibling module, "!" and err_msg for a
// refusal, "$" for the component's name.
struct decision {
    capability by;
    zmf_node_fn ask;
    std::vector<uint32_t> kinds;
    std::string request;
    std::string with, without;
    const char *component = "0/1-OpticalChannel0/1/0/2";
};

// The namespaces of a request: its own, and that of nodes "x:...".
struct spoken {
    const char *ns, *foreign;
};

std::string answer_to(const decision &row, uint32_t kind, const spoken &names) {
    const uint64_t sibling_calls = hardware::sibling_calls();
    zmf::session session(kind);
    add_log log(session);
    snprintf(session.request().component_name, sizeof session.request().component_name, "%s", row.component);
    request_text request(row.request, names.ns, names.foreign);
    zmf::output_tree output;
    const rcode status = row.ask(session.context(), request.top(), output.root());
    const char *message = session.request().err_msg;
    if (status != RC_OK) {
        EXPECT_EQ(status, RC_VALUE_OUT_OF_RANGE);
        EXPECT_EQ(session.error_marks(), 1u);
    }
    return (hardware::sibling_calls() != sibling_calls ? "sibling\n" : "") + log.text + (status != RC_OK ? "!" : "") +
           (message != nullptr ? message : "");
}

// What stands for "$", where names have the form of that router type.
std::string on_router(std::string expected, uint32_t router_type) {
    const std::string name = router_type == 19 ? "OpticalChannel0/1/0/2" : "0/1-OpticalChannel0/1/0/2";
    for (size_t at = expected.find('$'); at != std::string::npos; at = expected.find('$')) {
        expected.replace(at, 1, name);
    }
    return expected;
}

void check(const std::vector<decision> &rows, const spoken &names) {
    for (const decision &row : rows) {
        for (const uint32_t router_type : {5u, 7u, 18u, 19u}) {
            for (const bool terminal_device : {false, true}) {
                for (const bool legacy : {false, true}) {
                    hardware::current() = {};
                    hardware::current().router_type = router_type;
                    hardware::current().optical_terminal_device = terminal_device;
                    hardware::current().legacy_optical_terminal_device = legacy;
                    const bool has_it = row.by == T ? terminal_device : legacy;
                    for (const uint32_t kind : row.kinds) {
                        EXPECT_EQ(answer_to(row, kind, names), on_router(has_it ? row.with : row.without, router_type))
                            << row.request << " kind " << kind << " router " << router_type << " T " << terminal_device
                            << " L " << legacy;
                    }
                }
            }
        }
    }
}

constexpr uint32_t cfg = OP_GET_CONFIG, get = OP_GET, edit = OP_EDIT, full = OP_EDIT_FULL, checked = OP_EDIT_CHECKED;

TEST(capabilities, decide_the_way_down) {
    constexpr auto channel =
        ymap_ox_oc_optical_openconfigterminaldevice_list_lvla_terminaldevice_logicalchannels_channel;
    constexpr auto erase = ymap_oc_optical_delete_component_optical_channel;
    constexpr auto transmit = oc_optical_otn_tti_transmit_to_low, expected = oc_optical_otn_tti_expected_to_low;
    constexpr auto transceiver = oc_optical_trans_to_client, transceiver_state = oc_optical_trans_to_client_state;
    constexpr auto frequency = oc_optical_cfg_freq_to_low, power = oc_optical_cfg_op_power_to_low;
    constexpr auto augment = ymap_ox_oc_optical_openconfigterminaldevice_lvla_opticalchannel_parse_augments;
    const std::vector<uint32_t> reads = {cfg, get}, edits = {edit, full, checked};
    const std::string no_transmit = "!TTI_transmit is not supported", no_expected = "!TTI_expected  is not supported";
    const std::string carrier = "O/optics-dwdm-carrier";
    const std::string port = "P list\nP/name=Optics0/1/0/2\n";
    check(
        {
            {T, channel, {edit, full}, "channel", "N list\n", "sibling\nN list\n"},
            {T, channel, {edit, full}, "channel!delete", "N @ list\n", "N @ list\n"},
            {T, channel, {cfg, checked}, "channel", "N list\n", "N list\n"},

            {T, erase, {edit, full}, "component!delete", "", "sibling\n", ""},
            {T, erase, {checked}, "component!delete", "", "", ""},

            {T, transmit, edits, "leaf=west", "N/otn/tti-msg-transmit=west @\n", no_transmit},
            {T, transmit, edits, "leaf!delete", "N/otn/tti-msg-transmit @\n", no_transmit},
            {T, transmit, reads, "leaf", "N/otn/tti-msg-transmit\n", no_transmit},
            {T, expected, edits, "leaf=east", "N/otn/tti-msg-expected=east @\n", no_expected},
            {T, expected, edits, "leaf!remove", "N/otn/tti-msg-expected @\n", no_expected},
            {T, expected, reads, "leaf=east", "N/otn/tti-msg-expected=east\n", no_expected},

            {T, transceiver, edits, "leaf=0/1-Optics0/1/0/2", "N/ingress-client-port=Optics0/1/0/2 @\n", "!"},
            {T, transceiver, edits, "leaf!delete=0/1-Optics0/1/0/2", "N/ingress-client-port @\n", "!"},
            {T, transceiver, reads, "leaf", "N/ingress-client-port=\n", "!"},
            {T, transceiver_state, reads, "leaf=0/1-Optics0/1/0/2", "N/ingress-client-port\n", ""},
            {T, transceiver_state, edits, "leaf=0/1-Optics0/1/0/2", "", ""},

            {L, frequency, edits, "leaf=193100050",
             carrier + "/param-value=1931000 @ cross\n" + carrier + "/param-type=frequency @ cross\n" + carrier +
                 "/grid-type=100mhz-grid @ cross\n",
             "T/frequency=193100050 @ cross\n"},
            {L, frequency, edits, "leaf!delete", carrier + " @ cross\n", "T/frequency @ cross\n"},
            {L, frequency, reads, "leaf=193100050", carrier + "/param-value=1931000 cross\n",
             "T/frequency=193100050 cross\n"},
            {L, frequency, reads, "leaf", carrier + "/param-value= cross\n", "T/frequency= cross\n"},
            {L, power, edits, "leaf=-355", "O/optics-transmit-power=-35 @ cross\n", "T/power=-355 @ cross\n"},
            {L, power, edits, "leaf!remove=-355", "O/optics-transmit-power @ cross\n", "T/power @ cross\n"},
            {L, power, reads, "leaf=-355", "O/optics-transmit-power=-35 cross\n", "T/power=-355 cross\n"},

            {L, augment, edits, "x:extended{x:config{x:baud-rate=69.4}}", "",
             "O/optics-baud-rate=69.4000000 @ cross\n"},
            {L, augment, edits, "x:extended{x:config{x:baud-rate!delete}}", "", "O/optics-baud-rate @ cross\n"},
            {L, augment, {cfg}, "x:extended{x:config{x:baud-rate}}", "", "O/optics-baud-rate= cross\n"},
            {L, augment, {get}, "x:extended{x:config{x:baud-rate}}", "", port + "O/optics-baud-rate= cross\n"},
        },
        {ZMF_NS_OC_TERMINAL_DEVICE, ZMF_NS_OPTICAL_CHANNEL_EXT});
}

TEST(capabilities, decide_the_way_up) {
    constexpr auto interfaces = ymap_xo_oc_optical_corvaneifmgrcfg_lvla_interfaceconfigurations;
    constexpr auto augment =
        ymap_xo_oc_optical_corvaneifmgrcfg_lvla_interfaceconfigurations_interfaceconfiguration_parse_augments;
    constexpr auto frequency = oc_optical_term_device_cfg_freq_to_high;
    constexpr auto power = oc_optical_term_device_cfg_opt_power_to_high;
    const std::vector<uint32_t> reads = {cfg, get};
    check(
        {
            {T, interfaces, reads,
             "interface-configurations{interface-configuration{active=act interface-name=Optics0/1/0/2 "
             "x:optics{x:optics-transmit-power=-35}}}",
             "entry $\nname=$ cross\nname=Optics0/1/0/2\nC/config/target-output-power=-350 cross\n", ""},
            // The entry is not added in an edit, and nothing takes it back there.
            {T,
             interfaces,
             {edit},
             "interface-configurations{interface-configuration{active=act interface-name=Optics0/1/0/2 "
             "x:optics{x:optics-transmit-power=-35}}}",
             "name=Optics0/1/0/2 @\nC/config/target-output-power=-350 cross\n",
             "name=Optics0/1/0/2 @\n"},
            {T, augment, reads, "x:optics{x:optics-baud-rate=69.4}", "C/extended/config/baud-rate=69.4000000 cross\n",
             ""},
            {L, frequency, reads, "frequency=1931000", "C/config/frequency=193100000 cross\nrepair\n",
             "C/config/frequency=1931000 cross\nrepair\n"},
            {L, power, reads, "power=-35", "C/config/target-output-power=-350 cross\nrepair\n",
             "C/config/target-output-power=-35 cross\nrepair\n"},
        },
        {ZMF_NS_IFMGR_CFG, ZMF_NS_OPTICS_CFG});
}

// A line port stands among the components of a reply on two of the router types, and is known by its name on others.
TEST(capabilities, decide_which_channels_have_esnr) {
    for (const uint32_t router_type : {5u, 7u, 18u, 19u}) {
        for (const bool terminal_device : {false, true}) {
            for (const bool legacy : {false, true}) {
                hardware::current() = {};
                hardware::current().router_type = router_type;
                hardware::current().optical_terminal_device = terminal_device;
                hardware::current().legacy_optical_terminal_device = legacy;
                zmf::session session(OP_GET);
                zmf::output_tree output;
                const std::string component = on_router("$", router_type);
                zmf_map_search_or_add_list(session.context(), output.root(), nullptr, "/components/component",
                                           component.c_str(), "name", ZMF_NS_OC_PLATFORM);
                const auto is_valid = [&](const char *name, uint32_t restriction) {
                    return is_valid_channel_for_esnr(name, session.context(), output.root(), restriction) != 0;
                };
                const char *line_port = router_type == 7 ? "Optics0/1/0/5" : "Optics0/1/0/2";
                const char *other = router_type == 7 ? "Optics0/1/0/4" : "Optics0/1/1/200";
                EXPECT_EQ(is_valid(line_port, 7), terminal_device) << router_type << legacy;
                EXPECT_FALSE(is_valid(other, 7)) << router_type << terminal_device << legacy;
                EXPECT_TRUE(is_valid(other, 0)) << router_type << terminal_device << legacy;
            }
        }
    }
}

} // namespace
