// Requests for statistics: what each leaf and container adds, by what the device keeps (flex bins or history), channel,
// platform and kind of request.
#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "exported.h"
#include "hardware/hardware.h"
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

// Native lists, by the letters that logs show them under.
const std::string otu_port = "/performance-management/otu/otu-ports/otu-port";
const std::string otu_prev = otu_port + "/otu-prev/otu-prev-flex-interval/otu-prev-flex-interval-";
const std::string odu_prev = "/performance-management/odu/odu-ports/odu-port/odu-prev/odu-prev-flex-interval";
const std::string optics_prev = "/performance-management/optics/optics-ports/optics-port/optics-prev/"
                                "optics-prev-flex-interval";
const std::string ethernet_prev = "/performance-management/ethernet/ethernet-ports/ethernet-port/ethernet-prev/"
                                  "ethernet-prev-flex-interval";
const std::string periodic = "/performance-management-history/global/periodic";
const std::string otu_history = periodic + "/otu-history/otu-port-histories/otu-port-history";
const std::string otu_30 = otu_history + "/otu-second30-history/otu-second30";
const std::string otn_history = otu_30 + "otn-histories/otu-second30otn-history";
const std::string fec_history = otu_30 + "fec-histories/otu-second30fec-history";
const std::string optics_history = periodic + "/optics-history/optics-port-histories/optics-port-history";
const std::string ethernet_history = periodic + "/ethernet-history/ethernet-port-histories/ethernet-port-history/"
                                                "ethernet-second30-history/second30pcs-histories/second30pcs-history";
const std::pair<std::string, std::string> letters[] = {
    // longest first
    {otu_prev + "otns/otu-prev-flex-interval-otn", "otn-bin"},
    {otu_prev + "fecs/otu-prev-flex-interval-fec", "fec-bin"},
    {odu_prev + "/odu-prev-flex-interval-otns/odu-prev-flex-interval-otn", "odu-bin"},
    {optics_prev + "/optics-prev-flex-interval-optics/optics-prev-flex-interval-optic", "optics-bin"},
    {ethernet_prev + "/ethernet-prev-flex-interval-pcses/ethernet-prev-flex-interval-pcs", "pcs-bin"},
    {otu_port, "otu"},
    {otn_history + "/otu-second30otn-time-line-instances/otu-second30otn-time-line-instance", "otn-line"},
    {otn_history, "otn-history"},
    {fec_history + "/otu-second30fec-time-line-instances/otu-second30fec-time-line-instance", "fec-line"},
    {fec_history, "fec-history"},
    {otu_history, "otu-history"},
    {optics_history + "/optics-second30-history/optics-second30-optics-histories/optics-second30-optics-history/"
                      "optics-second30-optics-time-line-instances/optics-second30-optics-time-line-instance",
     "optics-line"},
    {optics_history, "optics-history"},
    {ethernet_history + "/second30pcs-time-line-instances/second30pcs-time-line-instance", "pcs-line"},
};
const std::pair<std::string, std::string> modules[] = {
    {"urn:corvane:yang:Corvane-pmengine-oper", ""},
    {"urn:corvane:yang:Corvane-controller-otu-oper", "otu-oper:"},
    {"urn:corvane:yang:Corvane-controller-optics-oper", "optics-oper:"},
    {"urn:corvane:yang:Corvane-drivers-media-eth-oper", "eth-oper:"},
};

// "fec-bin/q/average=1" of an add.
std::string shown(const zmf::call &c) {
    std::string path = c.path;
    for (const auto &[head, letter] : letters) {
        if (path.starts_with(head)) {
            path.replace(0, head.size(), letter);
            break;
        }
    }
    std::string module = "?:";
    for (const auto &[ns, prefix] : modules) {
        module = ns == c.ns ? prefix : module;
    }
    return module + path + (c.value != nullptr ? "=" + std::string(c.value) : "") + (c.list_flag ? " list" : "") +
           (c.source != nullptr || c.cross_module_flag ? " SOURCE OR CROSS" : "") + "\n";
}

constexpr int32_t coherent = 300, otu4 = 310, odu = 200, ethernet = 100, unknown = 999;

struct device {
    bool terminal_device = true;
    bool history = false;
};

void set_up(const device &d) {
    hardware::current() = {};
    hardware::current().optical_terminal_device = d.terminal_device;
    for (const auto &[number, name] : {std::pair(coherent, "CoherentDSP0_1_0_2"), std::pair(otu4, "OTU40_1_0_3"),
                                       std::pair(odu, "ODU40_1_0_2"), std::pair(ethernet, "HundredGigECtrlr0_1_0_4")}) {
        hardware::current().name_of[static_cast<uint32_t>(number)] = name;
    }
    OC_OPTICAL_PM_IS_FLEXBIN_UNSUPPORTED = d.history ? 1 : 0;
}

struct outcome {
    std::string log;
    rcode status = RC_OK;
    uint64_t error_marks = 0;
};

template <typename Call>
outcome run(uint32_t kind, int32_t channel, Call call, uint64_t failing_call = 0) {
    zmf::session session(kind);
    zmf::output_tree output;
    outcome result;
    session.request().logical_index = channel;
    snprintf(session.request().component_name, sizeof session.request().component_name, "0/1-OpticalChannel0/1/0/2");
    session.record([&](const zmf::call &c) {
        if (c.op == zmf::operation::add_path) {
            result.log += shown(c);
        }
    });
    if (failing_call != 0) {
        session.fail_call(failing_call, 0x5eed01);
    }
    result.status = call(session.context(), output.root());
    result.error_marks = session.error_marks();
    return result;
}

outcome leaf(zmf_node_fn convert, uint32_t kind, int32_t channel, const char *value) {
    zmf_datatree node{};
    node.tag = "leaf";
    node.value = value;
    return run(kind, channel, [&](zmf_map_ctx ctx, zmf_datatree *tree) { return convert(ctx, &node, tree); });
}

std::string container(zmf_cont_fn convert, uint32_t kind, int32_t channel) {
    zmf_datatree node{};
    node.tag = "state";
    return run(kind, channel, [&](zmf_map_ctx ctx, zmf_datatree *tree) { return convert(ctx, &node, 0, tree); }).log;
}

// Which leaves are asked for which channels.
struct gate {
    bool all, of_coherent, of_otu4, of_odu, of_ethernet, of_unknown;
    bool needs_terminal_device;
    bool in_configuration_read;

    bool is_open(uint32_t kind, int32_t channel, bool terminal_device) const {
        const bool of_channel = channel == 0          ? all
                                : channel == coherent ? of_coherent
                                : channel == otu4     ? of_otu4
                                : channel == odu      ? of_odu
                                : channel == ethernet ? of_ethernet
                                                      : of_unknown;
        const bool of_kind = kind == OP_GET || (kind == OP_GET_CONFIG && in_configuration_read);
        return of_channel && of_kind && (terminal_device || !needs_terminal_device);
    }
};
//                        all    coh.   OTU4   ODU    Eth.   other  device config
constexpr gate g2{true, true, true, false, false, false, false, true};
constexpr gate g3{true, true, false, false, false, false, false, true};
constexpr gate g4{true, false, false, false, true, false, false, true};
constexpr gate g5{true, true, true, true, true, true, true, true};
constexpr gate g6{true, true, true, true, true, true, false, false};
constexpr gate g7{true, true, true, true, true, true, false, true};

enum class sent { as_it_is, scientific, none };
using enum sent;

struct leaf_row {
    zmf_node_fn convert;
    const gate &open;
    std::string flex, history;
    sent value = as_it_is;
};

const char fec_bin[] = "fec-bin/flex-bin-interval", fec_line[] = "fec-line/valid";
const char optics_bin[] = "optics-bin/flex-bin-interval", optics_line[] = "optics-line/valid";

std::vector<leaf_row> leaf_rows() {
    const auto live = [](zmf_node_fn f, const gate &g, const char *path, sent value = as_it_is) {
        return leaf_row{f, g, path, path, value};
    };
    const auto kept = [](zmf_node_fn f, const gate &g, const std::string &table, const std::string &path,
                         sent value = as_it_is) {
        return leaf_row{f, g, table + "-bin" + path, table + "-line" + path, value};
    };
    std::vector<leaf_row> rows = {
        kept(oc_optical_otn_fec_uc_words_to_fec_uc_words, g2, "fec", "/uc-words/data"),
        kept(oc_optical_otn_fec_corr_bits_to_fec_ec_bits, g2, "fec", "/ec-bits/data"),
        live(oc_optical_pre_fec_ber_instant_to_low, g2,
             "otu-oper:/otu/controllers/controller/info/otu-fec-satistics/pre-fec-ber", scientific),
        kept(oc_optical_pre_fec_avg_to_low, g2, "fec", "/pre-fec-ber/average", scientific),
        kept(oc_optical_pre_fec_min_to_low, g2, "fec", "/pre-fec-ber/minimum", scientific),
        kept(oc_optical_pre_fec_max_to_low, g2, "fec", "/pre-fec-ber/maximum", scientific),
        kept(oc_optical_pre_fec_min_time_to_low, g2, "fec", "/pre-fec-ber/min-time"),
        kept(oc_optical_pre_fec_max_time_to_low, g2, "fec", "/pre-fec-ber/max-time"),
        {oc_optical_pre_fec_interval_to_low, g2, fec_bin, fec_line},
        live(oc_optical_post_fec_ber_instant_to_low, g2,
             "otu-oper:/otu/controllers/controller/info/otu-fec-satistics/post-fec-ber", scientific),
        kept(oc_optical_post_fec_avg_to_low, g2, "fec", "/post-fec-ber/average", scientific),
        kept(oc_optical_post_fec_min_to_low, g2, "fec", "/post-fec-ber/minimum", scientific),
        kept(oc_optical_post_fec_max_to_low, g2, "fec", "/post-fec-ber/maximum", scientific),
        kept(oc_optical_post_fec_min_time_to_low, g2, "fec", "/post-fec-ber/min-time"),
        kept(oc_optical_post_fec_max_time_to_low, g2, "fec", "/post-fec-ber/max-time"),
        {oc_optical_post_fec_interval_to_low, g2, fec_bin, fec_line},
        live(oc_optical_q_value_instant_to_low, g2, "otu-oper:/otu/controllers/controller/info/qfactor"),
        kept(oc_optical_q_value_avg_to_low, g2, "fec", "/q/average"),
        kept(oc_optical_q_value_min_to_low, g2, "fec", "/q/minimum"),
        kept(oc_optical_q_value_max_to_low, g2, "fec", "/q/maximum"),
        kept(oc_optical_q_value_min_time_to_low, g2, "fec", "/q/min-time"),
        kept(oc_optical_q_value_max_time_to_low, g2, "fec", "/q/max-time"),
        {oc_optical_q_value_interval_to_low, g3, fec_bin, fec_line},
        live(oc_optical_esnr_instant_to_low, g2, "optics-oper:/optics-oper/optics-ports/optics-port/optics-info/snr"),
        kept(oc_optical_esnr_avg_to_low, g2, "optics", "/snr/average"),
        kept(oc_optical_esnr_min_to_low, g2, "optics", "/snr/minimum"),
        kept(oc_optical_esnr_max_to_low, g2, "optics", "/snr/maximum"),
        kept(oc_optical_esnr_min_time_to_low, g2, "optics", "/snr/min-time"),
        kept(oc_optical_esnr_max_time_to_low, g3, "optics", "/snr/max-time"),
        {oc_optical_esnr_interval_to_low, g3, optics_bin, optics_line},
        kept(oc_optical_in_pcs_bip_errors_to_low, g4, "pcs", "/cumulative-bip"),
        kept(oc_optical_in_pcs_es_to_low, g4, "pcs", "/es-ne/count/data"),
        kept(oc_optical_in_pcs_ses_to_low, g4, "pcs", "/ses-ne/count/data"),
        kept(oc_optical_in_pcs_us_to_low, g4, "pcs", "/uas-ne/count/data"),
    };
    const std::pair<zmf_node_fn, const char *> statistics[] = {
        {oc_optical_in_pause_frame_to_rx_pause_frame_high_to_low, "received-pause-frames"},
        {oc_optical_in_oversize_frame_to_rx_octet_frame_1519_to_max_high_to_low,
         "received-total-octet-frames-from1519-to-max"},
        {oc_optical_in_jabber_frames_to_dropped_jabber_pkts_high_to_low, "dropped-jabbers-packets-greaterthan-mru"},
        {oc_optical_in_fragment_frames_to_dropped_fragments_high_to_low, "dropped-ether-stats-fragments"},
        {oc_optical_in_crc_errors_to_dropped_pkts_with_crc_align_errors_high_to_low,
         "dropped-packets-with-crc-align-errors"},
        {oc_optical_out_pause_frames_to_tx_pause_frames_high_to_low, "transmitted-total-pause-frames"},
    };
    for (const auto &[f, name] : statistics) {
        rows.push_back(live(f, g5, (std::string("eth-oper:/ethernet-interface/statistics/statistic/") + name).c_str()));
    }
    const struct {
        const char *name, *instant;
        zmf_node_fn at_once, avg, min, max, min_time, max_time, interval;
    } families[] = {
        {"cd", "optics-info/cd", oc_optical_cd_instant_to_low, oc_optical_cd_avg_to_low, oc_optical_cd_min_to_low,
         oc_optical_cd_max_to_low, oc_optical_cd_min_time_to_low, oc_optical_cd_max_time_to_low,
         oc_optical_cd_interval_to_low},
        {"pmd", "optics-info/second-order-polarization-mode-dispersion", oc_optical_sopmd_instant_to_low,
         oc_optical_sopmd_avg_to_low, oc_optical_sopmd_min_to_low, oc_optical_sopmd_max_to_low,
         oc_optical_sopmd_min_time_to_low, oc_optical_sopmd_max_time_to_low, oc_optical_sopmd_interval_to_low},
        {"pdl", "optics-info/polarization-dependent-loss", oc_optical_pdl_instant_to_low, oc_optical_pdl_avg_to_low,
         oc_optical_pdl_min_to_low, oc_optical_pdl_max_to_low, oc_optical_pdl_min_time_to_low,
         oc_optical_pdl_max_time_to_low, oc_optical_pdl_interval_to_low},
        {"rx-sig-pow", "optics-lanes/optics-lane/receive-signal-power", oc_optical_inpower_instant_to_low,
         oc_optical_inpower_avg_to_low, oc_optical_inpower_min_to_low, oc_optical_inpower_max_to_low,
         oc_optical_inpower_min_time_to_low, oc_optical_inpower_max_time_to_low, oc_optical_inpower_interval_to_low},
    };
    for (const auto &f : families) {
        const std::string at = std::string("/") + f.name;
        rows.push_back(live(f.at_once, g6,
                            (std::string("optics-oper:/optics-oper/optics-ports/optics-port/") + f.instant).c_str()));
        rows.push_back(kept(f.avg, g6, "optics", at + "/average"));
        rows.push_back(kept(f.min, g6, "optics", at + "/minimum"));
        rows.push_back(kept(f.max, g6, "optics", at + "/maximum"));
        rows.push_back(kept(f.min_time, g6, "optics", at + "/min-time"));
        rows.push_back(kept(f.max_time, g6, "optics", at + "/max-time"));
        rows.push_back({f.interval, g7, optics_bin, optics_line, none});
    }
    return rows;
}

TEST(performance_request, every_leaf_by_mode_channel_platform_and_kind) {
    const auto rows = leaf_rows();
    EXPECT_EQ(rows.size(), 30u + 10u + 28u);
    for (const bool history : {false, true}) {
        for (const bool terminal_device : {false, true}) {
            set_up({terminal_device, history});
            for (const leaf_row &row : rows) {
                for (const uint32_t kind : {OP_GET + 0u, OP_GET_CONFIG + 0u, OP_EDIT + 0u}) {
                    for (const int32_t channel : {0, coherent, otu4, odu, ethernet, unknown}) {
                        const std::string &path = history ? row.history : row.flex;
                        const bool open = row.open.is_open(kind, channel, terminal_device);
                        const char *bare = row.value == scientific ? "=\n" : "\n";
                        const char *valued = row.value == scientific ? "=1.0E-05\n" : "=0.00001\n";
                        const std::string about =
                            path + " kind " + std::to_string(kind) + " channel " + std::to_string(channel);
                        EXPECT_EQ(leaf(row.convert, kind, channel, nullptr).log, open ? path + bare : "") << about;
                        EXPECT_EQ(leaf(row.convert, kind, channel, "0.00001").log,
                                  !open ? "" : path + (row.value == none ? "\n" : valued))
                            << about;
                    }
                }
            }
        }
    }
    EXPECT_EQ(leaf(oc_optical_pre_fec_avg_to_low, OP_GET, coherent, "0").log, "fec-line/pre-fec-ber/average=0E-15\n");
}

// Counters of the OTU come from the time line of its FEC; the history has none of an ODU.
TEST(performance_request, counters) {
    const std::pair<zmf_node_fn, std::string> counters[] = {
        {oc_optical_otn_es_to_otn_es_ne, "/es-ne/data"},
        {oc_optical_otn_ses_to_otn_ses_ne, "/ses-ne/data"},
        {oc_optical_otn_uas_to_otn_uas_ne, "/uas-ne/data"},
        {oc_optical_otn_bbe_to_otn_bbe_ne, "/bbe-ne/data"},
    };
    const struct {
        int32_t channel;
        device on;
        const char *first, *second;
    } rows[] = {
        {0, {true, false}, "otn-bin", "odu-bin"},      {0, {false, false}, "otn-bin", nullptr},
        {0, {true, true}, "fec-line", nullptr},        {0, {false, true}, "fec-line", nullptr},
        {coherent, {true, false}, "otn-bin", nullptr}, {coherent, {false, false}, "otn-bin", nullptr},
        {coherent, {true, true}, "fec-line", nullptr}, {otu4, {false, true}, "fec-line", nullptr},
        {otu4, {true, false}, "otn-bin", nullptr},     {odu, {true, false}, "odu-bin", nullptr},
        {odu, {false, false}, nullptr, nullptr},       {odu, {true, true}, nullptr, nullptr},
        {ethernet, {true, false}, nullptr, nullptr},   {unknown, {true, true}, nullptr, nullptr},
    };
    for (const auto &[convert, path] : counters) {
        for (const auto &row : rows) {
            set_up(row.on);
            std::string expected;
            for (const char *table : {row.first, row.second}) {
                expected += table != nullptr ? table + path + "=7\n" : "";
            }
            const std::string about = path + " channel " + std::to_string(row.channel);
            EXPECT_EQ(leaf(convert, OP_GET, row.channel, "7").log, expected) << about;
            EXPECT_EQ(leaf(convert, OP_GET_CONFIG, row.channel, "7").log, expected) << about;
            EXPECT_EQ(leaf(convert, OP_EDIT, row.channel, "7").log, "") << about;
        }
    }
}

TEST(performance_request, otn_state_opens_its_lists) {
    const std::string flex = "otn-bin\notn-bin/number=1\nfec-bin\nfec-bin/number=1\n";
    const std::string with_optics = "optics-oper:/optics-oper/optics-ports/optics-port/name=Optics0/1/0/2\n"
                                    "otu/name=Optics0/1/0/2\n";
    const auto history = [](const std::string &head, const std::string &time_line) {
        return head + "otn-history\notn-history/number=0\notn-bin\notn-bin/number=1\n" + time_line +
               "fec-history\nfec-history/number=0\nfec-bin\nfec-bin/number=1\nfec-line\nfec-line/number=1\n";
    };
    const std::string time_line = "otn-line\notn-line/number=1\n";
    const struct {
        bool history;
        int32_t channel;
        std::string log;
    } rows[] = {
        {false, 0, "otu list\n" + flex},
        {false, coherent, "otu list\notu/name=CoherentDSP0/1/0/2\n" + flex + with_optics},
        {false, otu4, "otu list\notu/name=OTU40/1/0/3\n" + flex},
        {true, 0, history("otu list\notu-history list\n", "")},
        {true, coherent,
         history("otu list\notu/name=CoherentDSP0/1/0/2\notu-history list\notu-history/name=CoherentDSP0/1/0/2\n",
                 time_line) +
             with_optics + "optics-history/name=Optics0/1/0/2\n"},
        {true, otu4,
         history("otu list\notu/name=OTU40/1/0/3\notu-history list\notu-history/name=OTU40/1/0/3\n", time_line)},
    };
    for (const auto &row : rows) {
        set_up({false, row.history});
        EXPECT_EQ(container(oc_optical_otn_state_to_low, OP_GET, row.channel), row.log) << row.channel;
        EXPECT_EQ(container(oc_optical_otn_state_to_low, OP_GET_CONFIG, row.channel), "");
        for (const int32_t channel : {odu, ethernet, unknown}) {
            EXPECT_EQ(container(oc_optical_otn_state_to_low, OP_GET, channel), "") << channel;
        }
    }
}

// A channel of any class is asked for its statistics, under its own name.
TEST(performance_request, ethernet_state_opens_its_list) {
    const std::string list = "eth-oper:/ethernet-interface/statistics/statistic";
    set_up({});
    for (const auto &[channel, name] :
         {std::pair(0, ""), std::pair(ethernet, "HundredGigECtrlr0/1/0/4"), std::pair(coherent, "CoherentDSP0/1/0/2"),
          std::pair(odu, "ODU40/1/0/2"), std::pair(unknown, "")}) {
        const std::string log = list + " list\n" + list + "/interface-name=" + name + "\n";
        EXPECT_EQ(container(oc_optical_ethernet_state_to_low, OP_GET, channel), log);
        EXPECT_EQ(container(oc_optical_ethernet_state_to_low, OP_GET_CONFIG, channel), log);
        EXPECT_EQ(container(oc_optical_ethernet_state_to_low, OP_EDIT, channel), "");
    }
    EXPECT_EQ(container(oc_optical_ethernet_state_to_low, OP_GET, -1), "");
}

TEST(performance_request, statistic_containers) {
    const std::pair<zmf_cont_fn, const char *> containers[] = {
        {oc_optical_chromatic_dispersion_to_low, "cd"},
        {oc_optical_sopmd_to_low, "pmd"},
        {oc_optical_pdl_to_low, "pdl"},
        {oc_optical_inpower_to_low, "rx-sig-pow"},
    };
    for (const bool history : {false, true}) {
        set_up({false, history});
        for (const auto &[convert, name] : containers) {
            EXPECT_EQ(container(convert, OP_GET, 0),
                      std::string(history ? "optics-line/" : "optics-bin/") + name + "\n");
            EXPECT_EQ(container(convert, OP_GET_CONFIG, 0), "");
        }
    }
}

// What is tested first decides what a missing argument gives.
TEST(performance_request, missing_arguments) {
    const struct {
        zmf_node_fn convert;
        bool terminal_device;
        rcode without_node, without_tree;
    } rows[] = {
        {oc_optical_otn_es_to_otn_es_ne, true, RC_INVALID_ARGUMENTS, RC_INVALID_ARGUMENTS},
        {oc_optical_otn_es_to_otn_es_ne, false, RC_OK, RC_OK},
        {oc_optical_otn_ses_to_otn_ses_ne, false, RC_OK, RC_OK},
        {oc_optical_otn_uas_to_otn_uas_ne, false, RC_OK, RC_OK},
        {oc_optical_otn_bbe_to_otn_bbe_ne, false, RC_INVALID_ARGUMENTS, RC_INVALID_ARGUMENTS},
        {oc_optical_in_pause_frame_to_rx_pause_frame_high_to_low, false, RC_OK, RC_OK},
        {oc_optical_in_pause_frame_to_rx_pause_frame_high_to_low, true, RC_INVALID_ARGUMENTS, RC_INVALID_ARGUMENTS},
        {oc_optical_out_pause_frames_to_tx_pause_frames_high_to_low, false, RC_INVALID_ARGUMENTS, RC_INVALID_ARGUMENTS},
        {oc_optical_in_jabber_frames_to_dropped_jabber_pkts_high_to_low, false, RC_INVALID_ARGUMENTS,
         RC_INVALID_ARGUMENTS},
        {oc_optical_pre_fec_ber_instant_to_low, true, RC_OK, RC_INVALID_ARGUMENTS},
        {oc_optical_post_fec_max_to_low, true, RC_OK, RC_INVALID_ARGUMENTS},
        {oc_optical_pre_fec_min_time_to_low, true, RC_INVALID_ARGUMENTS, RC_INVALID_ARGUMENTS},
        {oc_optical_cd_interval_to_low, false, RC_INVALID_ARGUMENTS, RC_INVALID_ARGUMENTS},
    };
    zmf_datatree node{};
    for (const auto &row : rows) {
        set_up({row.terminal_device, false});
        const outcome nodeless =
            run(OP_GET, 0, [&](zmf_map_ctx ctx, zmf_datatree *tree) { return row.convert(ctx, nullptr, tree); });
        EXPECT_EQ(nodeless.status, row.without_node);
        EXPECT_EQ(nodeless.error_marks, row.without_node == RC_OK ? 0u : 1u);
        const outcome treeless =
            run(OP_GET, 0, [&](zmf_map_ctx ctx, zmf_datatree *) { return row.convert(ctx, &node, nullptr); });
        EXPECT_EQ(treeless.status, row.without_tree);
        EXPECT_EQ(treeless.log, "");
    }
}

// Containers go on after a failed add, and the last add decides; so it does of two counters.
TEST(performance_request, failures) {
    set_up({true, true});
    zmf_datatree node{};
    const auto otn = [&](zmf_map_ctx ctx, zmf_datatree *tree) {
        return oc_optical_otn_state_to_low(ctx, &node, 0, tree);
    };
    const std::string whole = run(OP_GET, coherent, otn).log;
    const auto adds = static_cast<uint64_t>(std::count(whole.begin(), whole.end(), '\n'));
    EXPECT_EQ(adds, 19u);
    for (uint64_t n = 1; n <= adds; ++n) {
        const outcome with_failure = run(OP_GET, coherent, otn, n);
        EXPECT_EQ(with_failure.log, whole);
        EXPECT_EQ(with_failure.status, n == adds ? 0x5eed01u : RC_OK) << n;
    }
    set_up({true, false});
    const auto es = [&](zmf_map_ctx ctx, zmf_datatree *tree) {
        return oc_optical_otn_es_to_otn_es_ne(ctx, &node, tree);
    };
    EXPECT_EQ(run(OP_GET, 0, es, 1).status, RC_OK);
    EXPECT_EQ(run(OP_GET, 0, es, 2).status, 0x5eed01u);
    EXPECT_EQ(oc_optical_interval_to_low() + oc_optical_otu_interval_to_low(), RC_OK);
}

} // namespace
