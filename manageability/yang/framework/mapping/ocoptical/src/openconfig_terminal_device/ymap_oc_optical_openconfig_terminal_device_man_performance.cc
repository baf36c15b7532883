// Requests for statistics: otn/state and ethernet/state of a channel, and the statistics of an optical channel's state.
//
// A leaf is asked of one native table: of the previous flex bin or, where the device has no flex bins, of the 30-second
// time line. What a device tells live is the same in both. To add a leaf: its row below, in the table of its container,
// and its function in the model's table and header.
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"

#include "engine/callback.h"
#include "engine/request.h"
#include "platform.h"
#include "utility/channel.h"
#include "utility/performance_paths.h"
#include "utility/text.h"

using namespace ocoptical;

OC_EXPORT uint32_t OC_OPTICAL_PM_IS_FLEXBIN_UNSUPPORTED = 0;

namespace {

bool has_history() {
    return OC_OPTICAL_PM_IS_FLEXBIN_UNSUPPORTED != 0;
}

constexpr target of_pmengine(const char *path) {
    return {ZMF_NS_PMENGINE_OPER, path};
}

// Where a statistic stands, by what the device keeps.
struct tables {
    target flex, history;

    const target &chosen() const { return has_history() ? history : flex; }
};

constexpr tables bins(const char *flex, const char *history) {
    return {of_pmengine(flex), of_pmengine(history)};
}
constexpr tables live(const char *ns, const char *path) {
    return {{ns, path}, {ns, path}};
}

#define FEC(leaf) bins(PM_OTU_FEC_FLEX leaf, PM_OTU_FEC_TIMELINE leaf)
#define FEC_INTERVAL bins(PM_OTU_FEC_FLEX "/flex-bin-interval", PM_OTU_FEC_TIMELINE "/valid")
#define OPTICS(leaf) bins(PM_OPTICS_FLEX leaf, PM_OPTICS_TIMELINE leaf)
#define OPTICS_INTERVAL bins(PM_OPTICS_FLEX "/flex-bin-interval", PM_OPTICS_TIMELINE "/valid")
#define PCS(leaf) bins(PM_ETHERNET_PCS_FLEX leaf, PM_ETHERNET_PCS_TIMELINE leaf)
#define OTU_INFO(leaf) live(ZMF_NS_OTU_OPER, NATIVE_OTU_CONTROLLER "/info" leaf)
#define OPTICS_PORT(leaf) live(ZMF_NS_OPTICS_OPER, NATIVE_OPTICS_PORT leaf)
#define ETHERNET_STATISTIC(leaf) live(ZMF_NS_MEDIA_ETH_OPER, NATIVE_ETHERNET_STATISTIC leaf)

// In which requests, and for which channels, a leaf is asked for.
enum class gate : uint8_t {
    otu,       // all channels, or one of an OTU controller
    coherent,  // all channels, or one of a coherent controller: an OTU4 stays out
    ethernet,  // all channels, or one of an Ethernet controller
    statistic, // where there is an optical terminal device: any channel
    get,       // without channel, in a get of operational data
    read,      // without channel, in any read
};

bool is_open(gate which, zmf_map_ctx ctx) {
    if (!is_read(ctx)) {
        return false;
    }
    switch (which) {
    case gate::get:
        return is_get(ctx);
    case gate::read:
        return true;
    default:
        break;
    }
    const channel_under_walk channel(ctx);
    switch (which) {
    case gate::otu:
        return channel.is_all() || is_otu_class(channel.itype);
    case gate::coherent:
        return channel.is_all() || channel.itype == ITYPE_COHERENT_DSP;
    case gate::ethernet:
        return channel.is_all() || channel.itype == ITYPE_ETHERNET;
    default:
        return hwinfo_has_optical_term_dev() && (channel.number >= 0 || channel.itype == ITYPE_ETHERNET);
    }
}

// What the added node bears.
enum class asked_value : uint8_t { raw, scientific, none };
using enum asked_value;

struct asked_row {
    gate who;
    tables at;
    asked_value value;
};

// A rate in scientific notation is converted before the node is looked at.
constexpr bool are_given(asked_value value, const zmf_datatree *node, const zmf_datatree *tree) {
    return tree != nullptr && (node != nullptr || value == scientific);
}

rcode ask(const asked_row &row, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    if (!is_open(row.who, ctx)) {
        return RC_OK;
    }
    const char *value = node != nullptr ? node->value : nullptr;
    switch (row.value) {
    case raw:
        return add(ctx, tree, row.at.chosen(), value);
    case scientific: {
        char text[text_size];
        oc_optical_convert_decimal_to_scientific_notation(value, text);
        return add(ctx, tree, row.at.chosen(), text);
    }
    case none:
        return add(ctx, tree, row.at.chosen(), nullptr);
    }
    return RC_OK;
}

} // namespace

#define ASKED(function, who, at, value)                                                                                \
    CONVERSION_WHERE(are_given(value, node, tree), function) {                                                         \
        static constexpr asked_row row = {gate::who, at, value};                                                       \
        return ask(row, ctx, node, tree);                                                                              \
    }

#define ASKED_CONTAINER(function, at)                                                                                  \
    CONTAINER_CONVERSION(function) {                                                                                   \
        static constexpr asked_row row = {gate::get, at, none};                                                        \
        return ask(row, ctx, node, tree);                                                                              \
    }

// otn/state: its lists.

namespace {

// When an add is made, and what it bears.
enum class opened_for : uint8_t { any_channel, one_channel };
enum class opened_in : uint8_t { any_mode, history };
enum class opened_as : uint8_t { list, node, zero, one, name };

struct opened_row {
    const char *path;
    opened_as what;
    opened_for who = opened_for::any_channel;
    opened_in mode = opened_in::any_mode;
};

// The inner history lists are asked for as "0", their time lines as "1"; the time line of the OTN for one channel only.
constexpr opened_row opened_otn[] = {
    {PM_OTU_PORT, opened_as::list},
    {PM_OTU_PORT "/name", opened_as::name, opened_for::one_channel},
    {PM_OTU_PORT_HISTORY, opened_as::list, opened_for::any_channel, opened_in::history},
    {PM_OTU_PORT_HISTORY "/name", opened_as::name, opened_for::one_channel, opened_in::history},
    {PM_OTU_OTN_HISTORY, opened_as::node, opened_for::any_channel, opened_in::history},
    {PM_OTU_OTN_HISTORY "/number", opened_as::zero, opened_for::any_channel, opened_in::history},
    {PM_OTU_OTN_FLEX, opened_as::node},
    {PM_OTU_OTN_FLEX "/number", opened_as::one},
    {PM_OTU_OTN_TIMELINE, opened_as::node, opened_for::one_channel, opened_in::history},
    {PM_OTU_OTN_TIMELINE "/number", opened_as::one, opened_for::one_channel, opened_in::history},
    {PM_OTU_FEC_HISTORY, opened_as::node, opened_for::any_channel, opened_in::history},
    {PM_OTU_FEC_HISTORY "/number", opened_as::zero, opened_for::any_channel, opened_in::history},
    {PM_OTU_FEC_FLEX, opened_as::node},
    {PM_OTU_FEC_FLEX "/number", opened_as::one},
    {PM_OTU_FEC_TIMELINE, opened_as::node, opened_for::any_channel, opened_in::history},
    {PM_OTU_FEC_TIMELINE "/number", opened_as::one, opened_for::any_channel, opened_in::history},
};

rcode open_row(zmf_map_ctx ctx, zmf_datatree *tree, const opened_row &row, const char *name) {
    const target at = of_pmengine(row.path);
    switch (row.what) {
    case opened_as::list:
        return add_list(ctx, tree, at);
    case opened_as::node:
        return add(ctx, tree, at, nullptr);
    case opened_as::zero:
        return add(ctx, tree, at, "0");
    case opened_as::one:
        return add(ctx, tree, at, "1");
    case opened_as::name:
        return add(ctx, tree, at, name);
    }
    return RC_OK;
}

// The optics port of a coherent controller. Its name goes to the OTU port too, which has one already.
rcode open_optics(zmf_map_ctx ctx, zmf_datatree *tree, const char *optics) {
    static constexpr target optics_name{ZMF_NS_OPTICS_OPER, NATIVE_OPTICS_PORT "/name"};
    (void)add(ctx, tree, optics_name, optics);
    const rcode status = add(ctx, tree, of_pmengine(PM_OTU_PORT "/name"), optics);
    return has_history() ? add(ctx, tree, of_pmengine(PM_OPTICS_PORT_HISTORY "/name"), optics) : status;
}

} // namespace

// No failure ends it early; the last add made is the result.
CONTAINER_CONVERSION(oc_optical_otn_state_to_low) {
    if (!is_get(ctx)) {
        return RC_OK;
    }
    const channel_under_walk channel(ctx);
    if (!channel.is_all() && !is_otu_class(channel.itype)) {
        return RC_OK;
    }
    rcode status = RC_OK;
    for (const opened_row &row : opened_otn) {
        if ((row.who == opened_for::any_channel || !channel.is_all()) &&
            (row.mode == opened_in::any_mode || has_history())) {
            status = open_row(ctx, tree, row, channel.carrier_name);
        }
    }
    char optics[text_size] = "";
    const bool has_optics =
        !channel.is_all() && oc_optical_convert_coherentDSP_to_interface(channel.carrier_name, optics) == RC_OK;
    return has_optics ? open_optics(ctx, tree, optics) : status;
}

// otn/state: counters, of the OTU and of the ODU. The history has them for the OTU only.

namespace {

struct counter_row {
    target otu_flex, odu_flex, otu_history;
};

rcode ask_counter(const counter_row &row, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    if (!is_read(ctx)) {
        return RC_OK;
    }
    const channel_under_walk channel(ctx);
    rcode status = RC_OK;
    if (channel.is_all() || is_otu_class(channel.itype)) {
        status = add(ctx, tree, has_history() ? row.otu_history : row.otu_flex, node->value);
    }
    const bool of_odu = channel.is_all() || channel.itype == ITYPE_ODU;
    if (of_odu && !has_history() && hwinfo_has_optical_term_dev()) {
        status = add(ctx, tree, row.odu_flex, node->value);
    }
    return status;
}

// Where the optical terminal device is asked for first, null arguments are none of its business without one.
bool are_excused(const zmf_datatree *node, const zmf_datatree *tree) {
    return are_given(raw, node, tree) || !hwinfo_has_optical_term_dev();
}

} // namespace

#define COUNTER_WHERE(given, function, leaf)                                                                           \
    CONVERSION_WHERE(given, function) {                                                                                \
        static constexpr counter_row row = {of_pmengine(PM_OTU_OTN_FLEX leaf), of_pmengine(PM_ODU_OTN_FLEX leaf),      \
                                            of_pmengine(PM_OTU_FEC_TIMELINE leaf)};                                    \
        return are_given(raw, node, tree) ? ask_counter(row, ctx, node, tree) : RC_OK;                                 \
    }
#define COUNTER(function, leaf) COUNTER_WHERE(are_excused(node, tree), function, leaf)

// clang-format off
COUNTER(oc_optical_otn_es_to_otn_es_ne,   "/es-ne/data")
COUNTER(oc_optical_otn_ses_to_otn_ses_ne, "/ses-ne/data")
COUNTER(oc_optical_otn_uas_to_otn_uas_ne, "/uas-ne/data")
COUNTER_WHERE(are_given(raw, node, tree), oc_optical_otn_bbe_to_otn_bbe_ne, "/bbe-ne/data") // arguments come first

// otn/state: forward error correction, quality, signal to noise.
//    Function                                     Gate      Table and leaf                               Value
ASKED(oc_optical_otn_fec_uc_words_to_fec_uc_words, otu,      FEC("/uc-words/data"),                       raw)
ASKED(oc_optical_otn_fec_corr_bits_to_fec_ec_bits, otu,      FEC("/ec-bits/data"),                        raw)
ASKED(oc_optical_pre_fec_ber_instant_to_low,       otu,      OTU_INFO("/otu-fec-satistics/pre-fec-ber"),  scientific)
ASKED(oc_optical_pre_fec_avg_to_low,               otu,      FEC("/pre-fec-ber/average"),                 scientific)
ASKED(oc_optical_pre_fec_min_to_low,               otu,      FEC("/pre-fec-ber/minimum"),                 scientific)
ASKED(oc_optical_pre_fec_max_to_low,               otu,      FEC("/pre-fec-ber/maximum"),                 scientific)
ASKED(oc_optical_pre_fec_min_time_to_low,          otu,      FEC("/pre-fec-ber/min-time"),                raw)
ASKED(oc_optical_pre_fec_max_time_to_low,          otu,      FEC("/pre-fec-ber/max-time"),                raw)
ASKED(oc_optical_pre_fec_interval_to_low,          otu,      FEC_INTERVAL,                                raw)
ASKED(oc_optical_post_fec_ber_instant_to_low,      otu,      OTU_INFO("/otu-fec-satistics/post-fec-ber"), scientific)
ASKED(oc_optical_post_fec_avg_to_low,              otu,      FEC("/post-fec-ber/average"),                scientific)
ASKED(oc_optical_post_fec_min_to_low,              otu,      FEC("/post-fec-ber/minimum"),                scientific)
ASKED(oc_optical_post_fec_max_to_low,              otu,      FEC("/post-fec-ber/maximum"),                scientific)
ASKED(oc_optical_post_fec_min_time_to_low,         otu,      FEC("/post-fec-ber/min-time"),               raw)
ASKED(oc_optical_post_fec_max_time_to_low,         otu,      FEC("/post-fec-ber/max-time"),               raw)
ASKED(oc_optical_post_fec_interval_to_low,         otu,      FEC_INTERVAL,                                raw)
ASKED(oc_optical_q_value_instant_to_low,           otu,      OTU_INFO("/qfactor"),                        raw)
ASKED(oc_optical_q_value_avg_to_low,               otu,      FEC("/q/average"),                           raw)
ASKED(oc_optical_q_value_min_to_low,               otu,      FEC("/q/minimum"),                           raw)
ASKED(oc_optical_q_value_max_to_low,               otu,      FEC("/q/maximum"),                           raw)
ASKED(oc_optical_q_value_min_time_to_low,          otu,      FEC("/q/min-time"),                          raw)
ASKED(oc_optical_q_value_max_time_to_low,          otu,      FEC("/q/max-time"),                          raw)
ASKED(oc_optical_q_value_interval_to_low,          coherent, FEC_INTERVAL,                                raw)
ASKED(oc_optical_esnr_instant_to_low,              otu,      OPTICS_PORT("/optics-info/snr"),             raw)
ASKED(oc_optical_esnr_avg_to_low,                  otu,      OPTICS("/snr/average"),                      raw)
ASKED(oc_optical_esnr_min_to_low,                  otu,      OPTICS("/snr/minimum"),                      raw)
ASKED(oc_optical_esnr_max_to_low,                  otu,      OPTICS("/snr/maximum"),                      raw)
ASKED(oc_optical_esnr_min_time_to_low,             otu,      OPTICS("/snr/min-time"),                     raw)
ASKED(oc_optical_esnr_max_time_to_low,             coherent, OPTICS("/snr/max-time"),                     raw)
ASKED(oc_optical_esnr_interval_to_low,             coherent, OPTICS_INTERVAL,                             raw)
// clang-format on

// ethernet/state. A channel of any class has its statistics asked for.

CONTAINER_CONVERSION(oc_optical_ethernet_state_to_low) {
    static constexpr target statistic{ZMF_NS_MEDIA_ETH_OPER, NATIVE_ETHERNET_STATISTIC};
    static constexpr target interface_name{ZMF_NS_MEDIA_ETH_OPER, NATIVE_ETHERNET_STATISTIC "/interface-name"};
    if (!is_read(ctx)) {
        return RC_OK;
    }
    const channel_under_walk channel(ctx);
    if (channel.number >= 0 || channel.itype == ITYPE_ETHERNET) {
        (void)add_list(ctx, tree, statistic);
        return add(ctx, tree, interface_name, channel.carrier_name);
    }
    if (is_get(ctx) && channel.itype == ITYPE_COHERENT_DSP) {
        TRACE(ctx, TRC("OC_OPT_TERM: COHERENTDSP_CONTROLLER"));
    }
    return RC_OK;
}

// Asks for the optical terminal device before it looks at its arguments.
CONVERSION_WHERE(are_excused(node, tree), oc_optical_in_pause_frame_to_rx_pause_frame_high_to_low) {
    static constexpr asked_row row = {gate::statistic, ETHERNET_STATISTIC("/received-pause-frames"), raw};
    return hwinfo_has_optical_term_dev() ? ask(row, ctx, node, tree) : RC_OK;
}

// clang-format off
//    Function                                                                    Gate       Leaf                                                                Value
ASKED(oc_optical_in_oversize_frame_to_rx_octet_frame_1519_to_max_high_to_low,     statistic, ETHERNET_STATISTIC("/received-total-octet-frames-from1519-to-max"), raw)
ASKED(oc_optical_in_jabber_frames_to_dropped_jabber_pkts_high_to_low,             statistic, ETHERNET_STATISTIC("/dropped-jabbers-packets-greaterthan-mru"),     raw)
ASKED(oc_optical_in_fragment_frames_to_dropped_fragments_high_to_low,             statistic, ETHERNET_STATISTIC("/dropped-ether-stats-fragments"),               raw)
ASKED(oc_optical_in_crc_errors_to_dropped_pkts_with_crc_align_errors_high_to_low, statistic, ETHERNET_STATISTIC("/dropped-packets-with-crc-align-errors"),       raw)
ASKED(oc_optical_out_pause_frames_to_tx_pause_frames_high_to_low,                 statistic, ETHERNET_STATISTIC("/transmitted-total-pause-frames"),              raw)
ASKED(oc_optical_in_pcs_bip_errors_to_low,                                        ethernet,  PCS("/cumulative-bip"),                                             raw)
ASKED(oc_optical_in_pcs_es_to_low,                                                ethernet,  PCS("/es-ne/count/data"),                                           raw)
ASKED(oc_optical_in_pcs_ses_to_low,                                               ethernet,  PCS("/ses-ne/count/data"),                                          raw)
ASKED(oc_optical_in_pcs_us_to_low,                                                ethernet,  PCS("/uas-ne/count/data"),                                          raw)

// Statistics of an optical channel: for each the container and its seven leaves.
#define STATISTIC(container, family, native, instant)                                                                  \
    ASKED_CONTAINER(container,                  OPTICS("/" native))                                                    \
    ASKED(oc_optical_##family##_instant_to_low,  get,  OPTICS_PORT(instant),            raw)                           \
    ASKED(oc_optical_##family##_avg_to_low,      get,  OPTICS("/" native "/average"),  raw)                            \
    ASKED(oc_optical_##family##_min_to_low,      get,  OPTICS("/" native "/minimum"),  raw)                            \
    ASKED(oc_optical_##family##_max_to_low,      get,  OPTICS("/" native "/maximum"),  raw)                            \
    ASKED(oc_optical_##family##_min_time_to_low, get,  OPTICS("/" native "/min-time"), raw)                            \
    ASKED(oc_optical_##family##_max_time_to_low, get,  OPTICS("/" native "/max-time"), raw)                            \
    ASKED(oc_optical_##family##_interval_to_low, read, OPTICS_INTERVAL,                none)

STATISTIC(oc_optical_chromatic_dispersion_to_low, cd, "cd", "/optics-info/cd")
STATISTIC(oc_optical_sopmd_to_low, sopmd, "pmd", "/optics-info/second-order-polarization-mode-dispersion")
STATISTIC(oc_optical_pdl_to_low, pdl, "pdl", "/optics-info/polarization-dependent-loss")
STATISTIC(oc_optical_inpower_to_low, inpower, "rx-sig-pow", "/optics-lanes/optics-lane/receive-signal-power")
// clang-format on

// Exported for other modules; nothing is asked by them.
OC_EXPORT rcode oc_optical_interval_to_low(void) {
    return RC_OK;
}
OC_EXPORT rcode oc_optical_otu_interval_to_low(void) {
    return RC_OK;
}
