// Conversions of the vendor's extension: ranged configuration, thresholds, and the state leaves that a read asks for.
//
// To add a leaf: a row of the family that it belongs to, named in the model's table and declared beside it. The words
// of the texts are uneven, and clients know them so.
#include "corvane_openconfig_terminal_device_ext/ymap_oc_optical_corvane_openconfig_terminal_device_ext.h"

#include <cstdio>
#include <cstdlib>

#include "engine/callback.h"
#include "engine/client_text.h"
#include "engine/request.h"
#include "platform.h"
#include "utility/components.h"
#include "utility/range.h"
#include "utility/scan.h"
#include "utility/text.h"

using namespace ocoptical;

CONTAINER_CONVERSION(oc_optical_channel_ext_to_low) {
    if (!is_get(ctx)) {
        return RC_OK;
    }
    static constexpr target port{ZMF_NS_OPTICS_OPER, NATIVE_OPTICS_PORT};
    static constexpr target port_name{ZMF_NS_OPTICS_OPER, NATIVE_OPTICS_PORT "/name"};
    const component_names names(ctx, oc_self);
    TRACE(ctx, TRC("OC_OPT: Comp name = %s, intf name = %s, "), names.component, names.interface);
    if (!names.has_interface) {
        return add(ctx, tree, port, nullptr); // all ports
    }
    (void)add_list(ctx, tree, port);
    return add(ctx, tree, port_name, names.interface);
}

// Ranged configuration: tested on every platform and in every request, mapped on two router types.

namespace {

struct ranged_row {
    range allowed;
    target at;
    log_text failure; // takes the value
    const char *sentence;
};

bool has_extended_configuration() {
    const uint32_t type = hwinfo_get_router_type();
    return type == 18 || type == 19;
}

rcode add_ranged(const ranged_row &row, bool within, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree,
                 const trace_point &failed) {
    if (!within) {
        log_statement(ctx, failed, row.failure, node->value);
        return refuse_range(ctx, row.sentence, row.allowed);
    }
    return has_extended_configuration() ? add_by_edit_rule(ctx, node, tree, row.at, node->value) : RC_OK;
}

// A text without a number counts as 0.
bool is_integer_within(const range &allowed, const zmf_datatree *node, const char *oc_self) {
    char copy[text_size] = "";
    int32_t number = 0;
    return node->value == nullptr || ((void)scan_copy(oc_self, node->value, copy, &number), is_within(allowed, number));
}

} // namespace

#define CONFIG_RANGED(function, low, high, leaf, failure, sentence)                                                    \
    CONVERSION(function) {                                                                                             \
        static constexpr ranged_row row = {                                                                            \
            {low, high}, {ZMF_NS_TERMINAL_DEVICE_CFG, NATIVE_OPTICAL_CHANNEL leaf}, ERR(failure), sentence};           \
        static uint32_t filter_word = fresh_filter_word;                                                               \
        const bool within = is_integer_within(row.allowed, node, oc_self);                                             \
        return add_ranged(row, within, ctx, node, tree, {oc_self, __LINE__, &filter_word});                            \
    }

// clang-format off
CONFIG_RANGED(oc_optical_optics_cd_max_to_low,            -350000, 350000, "/cd-max",               "CD-MAX is not allowed = %s * 1MHZ",
              "CD-MAX is not within the allowed range: %d - %d")
CONFIG_RANGED(oc_optical_optics_cd_min_to_low,            -350000, 350000, "/cd-min",               "CD-MIN is not allowed = %s * 1MHZ",
              "CD-MIN is not within the allowed range: %d - %d")
CONFIG_RANGED(oc_optical_optics_cd_low_threshold_to_low,  -350000, 350000, "/cd-low-threshold",     "CD-LOW_THRESHOLD is not allowed = %s ",
              "CD-LOW-THRESHOLD is not within the allowed range: %d - %d")
CONFIG_RANGED(oc_optical_cd_high_threshold_to_low,        -350000, 350000, "/cd-high-threshold",    "CD-HIGH-THRESHOLD is not allowed = %s ",
              "CD-HIGH_THRESHOLD is not within the allowed range: %d - %d")
CONFIG_RANGED(oc_optical_rx_voa_target_pwr_to_low,           -190,     30, "/rx-voa-target-power",  "RX VOA TARGET POWER : %s is not allowed ",
              "RX-VOA-TARGET-POWER is not within the allowed range: %d - %d")
CONFIG_RANGED(oc_optical_rx_voa_fixed_ratio_to_low,          -100,   1700, "/rx-voa-fixed-ratio",   "RX VOA FIXED RATIO : %s is not allowed ",
              "RX-VOA-FIXED_RATIO is not within the allowed range: %d - %d")
CONFIG_RANGED(oc_optical_enh_colorless_mode_to_low,             1,      3, "/enh-colorless-mode",   "ENH COLORLESS MODE : %s is not allowed ",
              "ENH-COLORLESS-MODE is not within the allowed range: %d - %d")
CONFIG_RANGED(oc_optical_sop_tol_mode_to_low,                   1,      3, "/enh-sop-tol-mode",     "ENH SOP TOL MODE : %s is not allowed ",
              "ENH-SOP-TOL-MODE is not within the allowed range: %d - %d")
CONFIG_RANGED(oc_optical_nleq_comp_mode_to_low,                 1,      5, "/nleq-comp-mode",       "NLEQ COMP MODE : %s is not allowed ",
              "NLEQ-COMP-MODE is not within the allowed range: %d - %d")
CONFIG_RANGED(oc_optical_cross_pol_gain_to_low,                 1,     15, "/cross-pol-gain-mode",  "CROSS POL GAIN MODE : %s is not allowed ",
              "CROSS-POL-GAIN-MODE is not within the allowed range: %d - %d")
CONFIG_RANGED(oc_optical_cross_pol_weight_to_low,               1,      7, "/cross-pol-weight-mode", "CROSS POL WEIGHT MODE : %s is not allowed ",
              "CROSS-POL-WEIGHT-MODE is not within the allowed range: %d - %d")
CONFIG_RANGED(oc_optical_cpr_win_mode_to_low,                   1,      4, "/cpr-win-mode",         "CPR WIN MODE : %s is not allowed ",
              "CPR-WIN-MODE is not within the allowed range: %d - %d")
CONFIG_RANGED(oc_optical_cpr_ext_win_to_low,                    1,      9, "/cpr-ext-win-mode",     "CPR EXT WIN MODE : %s is not allowed ",
              "CPR-EXT-WIN-MODE is not within the allowed range: %d - %d")
// clang-format on

CONVERSION(oc_optical_filter_rolloff_to_low) {
    static constexpr ranged_row row = {{0, 1},
                                       {ZMF_NS_TERMINAL_DEVICE_CFG, NATIVE_OPTICAL_CHANNEL "/filter-roll-off-factor"},
                                       ERR("FILTER ROLL OFF FACTOR : %s is not allowed "),
                                       "FILTER_ROLL_OFF_FACTOR is not within the allowed range: %d - %d"};
    bool within = true;
    if (node->value != nullptr) {
        char copy[text_size] = "";
        zmf_strcpy_s(oc_self, copy, sizeof copy, node->value);
        const double factor = atof(copy);
        TRACE(ctx, TRC("FILTER ROLL OFF :%s FACTOR INT : %f :"), node->value, factor);
        within = factor >= row.allowed.low && factor <= row.allowed.high; // what is no number is neither
    }
    static uint32_t filter_word = fresh_filter_word;
    return add_ranged(row, within, ctx, node, tree, {oc_self, __LINE__, &filter_word});
}

// Configuration without a range, on every router type.

namespace {

constexpr target baud_rate{ZMF_NS_OPTICS_CFG, NATIVE_OPTICS "/optics-baud-rate"};
constexpr target fastpoll{ZMF_NS_OPTICS_CFG, NATIVE_OPTICS "/optics-fastpoll"};

} // namespace

CONVERSION(oc_optical_ext_cfg_baud_rate_to_low) {
    char text[text_size] = "";
    if (node->value != nullptr) {
        snprintf(text, sizeof text, "%.7f", atof(node->value));
    }
    return add_across_by_edit_rule(ctx, node, tree, baud_rate, text);
}

CONVERSION(oc_optical_cfg_fastpoll_sop_enable_to_low) {
    return add_across_by_edit_rule(ctx, node, tree, fastpoll, node->value);
}

// Input power thresholds: one leaf is one entry of a keyed list.

namespace {

constexpr range threshold_range{-4000, 3000}; // 0.01 dBm
constexpr int32_t native_threshold_unit = 10; // 0.01 dBm

struct threshold_row {
    const char *type; // key of the entry
    const char *leaf;
    const char *sentence;
};

// The list path has a trailing slash but in a delete.
constexpr target threshold_entry{ZMF_NS_OPTICS_CFG, NATIVE_RX_THRESHOLD "/"};
constexpr target deleted_threshold_entry{ZMF_NS_OPTICS_CFG, NATIVE_RX_THRESHOLD};
constexpr target threshold_type{ZMF_NS_OPTICS_CFG, NATIVE_RX_THRESHOLD "/rx-threshold-type"};
constexpr target threshold_value{ZMF_NS_OPTICS_CFG, NATIVE_RX_THRESHOLD "/rx-threshold"};

rcode add_threshold_entry(const threshold_row &row, const target &entry, zmf_map_ctx ctx, zmf_datatree *tree,
                          const char *value, const zmf_datatree *source) {
    (void)add_list_across(ctx, tree, entry, source);
    (void)add_across(ctx, tree, threshold_type, row.type, source);
    return add_across(ctx, tree, threshold_value, value, source);
}

struct threshold_points {
    trace_point value, failed;
};

rcode add_threshold(const threshold_row &row, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree,
                    const threshold_points &at) {
    char text[text_size] = "";
    int32_t number = 0;
    const bool is_number = node->value != nullptr && scan_number(node->value, &number);
    if (node->value != nullptr) {
        snprintf(text, sizeof text, "%d", number / native_threshold_unit);
        // One text for both thresholds.
        log_statement(ctx, at.value, TRC("SIL: Terminal-Device Input Power Lower Threshold: %s in 0.01 dBm"),
                      static_cast<const char *>(text));
    }
    if (is_read(ctx)) {
        return add_threshold_entry(row, threshold_entry, ctx, tree, text, nullptr);
    }
    if (zmf_map_is_request_delete(node)) {
        return add_threshold_entry(row, deleted_threshold_entry, ctx, tree, nullptr, node);
    }
    if (!(is_number && is_within(threshold_range, number))) {
        log_statement(ctx, at.failed, ERR("Invalid range of threshold power"));
        set_err_msg(ctx, row.leaf);
        zmf_oc_error_path(ctx);
        return refuse_range(ctx, row.sentence, threshold_range);
    }
    return add_threshold_entry(row, threshold_entry, ctx, tree, text, node);
}

} // namespace

#define THRESHOLD(function, type, leaf, sentence)                                                                      \
    CONVERSION(function) {                                                                                             \
        static constexpr threshold_row row = {type, leaf, sentence};                                                   \
        static uint32_t words[] = {fresh_filter_word, fresh_filter_word};                                              \
        return add_threshold(row, ctx, node, tree, {{oc_self, __LINE__, &words[0]}, {oc_self, __LINE__, &words[1]}});  \
    }

THRESHOLD(oc_optical_cfg_input_power_lower_threshold_to_low, "low", "input-signal-power-lower",
          "Input Signal Power Lower Threshold is not within the allowed range: %d - %d")
THRESHOLD(oc_optical_cfg_input_power_upper_threshold_to_low, "high", "input-signal-power-upper",
          "Input Signal Power Upper Threshold is not within the allowed range: %d - %d")

// State leaves that a read asks for.

#define ASKED(function, path)                                                                                          \
    CONVERSION(function) {                                                                                             \
        static constexpr target at{ZMF_NS_OPTICS_OPER, path};                                                          \
        return is_read(ctx) ? add_across(ctx, tree, at, nullptr) : RC_OK;                                              \
    }

// These three pass the node's value, at paths without a leading slash.
#define ASKED_WITH_VALUE(function, ns, path)                                                                           \
    CONVERSION(function) {                                                                                             \
        static constexpr target at{ns, path};                                                                          \
        return is_read(ctx) ? add_across(ctx, tree, at, node->value) : RC_OK;                                          \
    }

// clang-format off
ASKED(oc_optical_optics_state_cd_max_to_low,             NATIVE_OPTICS_PORT "/optics-info/cd-max")
ASKED(oc_optical_optics_state_cd_min_to_low,             NATIVE_OPTICS_PORT "/optics-info/cd-min")
ASKED(oc_optical_state_cd_low_threshold_to_low,          NATIVE_OPTICS_PORT "/optics-info/cd-low-threshold")
ASKED(oc_optical_state_cd_high_threshold_to_low,         NATIVE_OPTICS_PORT "/optics-info/cd-high-threshold")
ASKED(oc_optical_ext_state_baud_rate_to_low,             NATIVE_OPTICS_PORT "/optics-info/baud-rate")
ASKED(oc_optical_state_filter_rolloff_to_low,            NATIVE_OPTICS_PORT "/optics-info/submarine-info/filter-roll-off-factor")
ASKED(oc_optical_state_rx_voa_target_pwr_to_low,         NATIVE_OPTICS_PORT "/optics-info/submarine-info/rx-voa-target-power")
ASKED(oc_optical_state_rx_voa_fixed_ratio_to_low,        NATIVE_OPTICS_PORT "/optics-info/submarine-info/rx-voa-fixed-ratio")
ASKED(oc_optical_state_enh_colorless_mode_to_low,        NATIVE_OPTICS_PORT "/optics-info/submarine-info/enh-colorless-mode")
ASKED(oc_optical_state_sop_tol_mode_to_low,              NATIVE_OPTICS_PORT "/optics-info/submarine-info/enhsop-tolerance-mode")
ASKED(oc_optical_state_nleq_comp_mode_to_low,            NATIVE_OPTICS_PORT "/optics-info/submarine-info/nleq-compensation")
ASKED(oc_optical_state_cross_pol_gain_mode_to_low,       NATIVE_OPTICS_PORT "/optics-info/submarine-info/cross-pol-gain-mode")
ASKED(oc_optical_state_cross_pol_weight_to_low,          NATIVE_OPTICS_PORT "/optics-info/submarine-info/cross-pol-weight-mode")
ASKED(oc_optical_state_cpr_win_mode_to_low,              NATIVE_OPTICS_PORT "/optics-info/submarine-info/cpr-win-mode")
ASKED(oc_optical_state_cpr_ext_win_to_low,               NATIVE_OPTICS_PORT "/optics-info/submarine-info/cpr-ext-win-mode")
ASKED_WITH_VALUE(oc_optical_state_fastpoll_sop_enable_to_low,         ZMF_NS_OPTICS_CFG,  "interface-configurations/interface-configuration/optics/optics-fastpoll")
ASKED_WITH_VALUE(oc_optical_state_input_power_lower_threshold_to_low, ZMF_NS_OPTICS_OPER, "optics-oper/optics-ports/optics-port/optics-info/rx-low-threshold")
ASKED_WITH_VALUE(oc_optical_state_input_power_upper_threshold_to_low, ZMF_NS_OPTICS_OPER, "optics-oper/optics-ports/optics-port/optics-info/rx-high-threshold")
// clang-format on
