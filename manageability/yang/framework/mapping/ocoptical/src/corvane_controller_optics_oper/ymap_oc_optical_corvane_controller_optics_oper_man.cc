// Conversions of Corvane-controller-optics-oper: ports to components, and their live figures to the optical channel.
//
// To add a leaf: a row of PORT_UP, named in the model's table and declared beside it.
#include "corvane_controller_optics_oper/ymap_oc_optical_corvane_controller_optics_oper.h"

#include <cstdio>

#include "engine/callback.h"
#include "engine/config_gate.h"
#include "engine/request.h"
#include "platform.h"
#include "utility/components.h"
#include "utility/keyed_path.h"
#include "utility/logical_channels.h"
#include "utility/scan.h"
#include "utility/text.h"

using namespace ocoptical;

namespace {

constexpr carrier_list ports{NATIVE_OPTICS_PORT, "name"};

rcode read_port(zmf_map_ctx ctx, const char **name) {
    return zmf_map_get_node_info(ctx, ports.path, ports.key, name);
}

} // namespace

CONVERSION(oc_optical_channel_state_ext_to_high) {
    const char *name = nullptr;
    rcode status = read_port(ctx, &name);
    if (oc_optical_is_interface_line_port(name, ctx, tree) == 0) {
        TRACE(ctx, TRC("OPTICS DOESNT EXIST "));
        return RC_NOT_MAPPED;
    }
    char component[text_size] = "";
    (void)oc_optical_convert_interface_to_opticalchannel(name, component);
    TRACE(ctx, TRC("OCOP: intf_name: %s, comp_name: %s"), shown(name), static_cast<const char *>(component));
    if (oc_optical_check_opt_chnl_ifhandle(ctx, name) == 0) {
        TRACE(ctx, TRC("OPTICS DOESNT EXIST "));
        return RC_NOT_MAPPED;
    }
    TRACE(ctx, TRC("Interface added intf_name: %s, comp_name: %s"), shown(name), static_cast<const char *>(component));
    if (is_get(ctx)) {
        status = open_component(ctx, tree, component);
    }
    if (config_gate_is_open(ctx)) {
        status = add_across(ctx, tree, {ZMF_NS_OC_PLATFORM, OC_COMPONENT "/config/name"}, component);
    }
    return status;
}

// Figures of a port.

namespace {

// A line port is asked for its own sake; any other port in a get of operational data.
enum class port_test : uint8_t { any, line_port };
enum class unit : uint8_t { as_told, hundredths_of_dbm, tenths_of_dbm };

struct port_row {
    const char *ns;
    const char *path;
    port_test test;
    unit native = unit::as_told;
    log_text value_read = {}; // takes the value
};

// A text without a number counts as 0; no text gives an empty one.
void print_dbm(const char *native, int32_t hundredths_each, char *out) {
    if (native == nullptr) {
        return;
    }
    int32_t number = 0;
    (void)scan_number(native, &number);
    const uint32_t hundredths = static_cast<uint32_t>(number) * static_cast<uint32_t>(hundredths_each);
    snprintf(out, text_size, "%.2f", static_cast<int32_t>(hundredths) / 100.0);
}

const char *in_client_unit(unit native, const char *value, char *out) {
    switch (native) {
    case unit::as_told:
        return value;
    case unit::hundredths_of_dbm:
        print_dbm(value, 1, out);
        return out;
    case unit::tenths_of_dbm:
        print_dbm(value, 10, out);
        return out;
    }
    return nullptr;
}

rcode add_port_figure(const port_row &row, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree,
                      const trace_point &value_read) {
    const char *name = nullptr;
    const rcode read = read_port(ctx, &name);
    if (row.value_read.text != nullptr) {
        log_statement(ctx, value_read, row.value_read, shown(node->value));
    }
    const bool wanted =
        row.test == port_test::line_port ? oc_optical_is_interface_line_port(name, ctx, tree) != 0 : is_get(ctx);
    if (!wanted) {
        return read;
    }
    char converted[text_size] = "";
    return add_across(ctx, tree, {row.ns, row.path}, in_client_unit(row.native, node->value, converted));
}

} // namespace

#define PORT_UP(function, ...)                                                                                         \
    CONVERSION(function) {                                                                                             \
        static constexpr port_row row = {__VA_ARGS__};                                                                 \
        static uint32_t filter_word = fresh_filter_word;                                                               \
        return add_port_figure(row, ctx, node, tree, {oc_self, __LINE__, &filter_word});                               \
    }
#define STATE(leaf) ZMF_NS_OC_TERMINAL_DEVICE, OC_OPTICAL_CHANNEL "/state/" leaf
#define EXTENDED(leaf) ZMF_NS_OPTICAL_CHANNEL_EXT, OC_OPTICAL_CHANNEL "/extended/" leaf

// clang-format off
PORT_UP(oc_optical_cd_instant_to_high,                          STATE("chromatic-dispersion/instant"),                      port_test::line_port, unit::as_told,           TRC("OC_OPT: CD instant = %s "))
PORT_UP(oc_optical_sopmd_instant_to_high,                       STATE("second-order-polarization-mode-dispersion/instant"), port_test::line_port, unit::as_told,           TRC("OC_OPT: Second order pmd instant = %s "))
PORT_UP(oc_optical_pdl_instant_to_high,                         STATE("polarization-dependent-loss/instant"),               port_test::line_port, unit::as_told,           TRC("OC_OPT: pdl instant = %s "))
PORT_UP(oc_optical_inpower_instant_to_high,                     STATE("input-power/instant"),                               port_test::line_port, unit::hundredths_of_dbm, TRC("OC_OPT: INPOWER instant = %s "))
PORT_UP(oc_optical_state_input_power_lower_threshold_to_high,   EXTENDED("thresholds/state/input-signal-power-lower"),      port_test::any,       unit::tenths_of_dbm)
PORT_UP(oc_optical_state_input_power_upper_threshold_to_high,   EXTENDED("thresholds/state/input-signal-power-upper"),      port_test::any,       unit::tenths_of_dbm)
PORT_UP(oc_optical_ext_state_baud_rate_to_high,                 EXTENDED("state/baud-rate"),                                port_test::any)
PORT_UP(oc_optical_optics_state_cd_min_to_high,                 EXTENDED("state/optics-cd-min"),                            port_test::any)
PORT_UP(oc_optical_optics_state_cd_max_to_high,                 EXTENDED("state/optics-cd-max"),                            port_test::any)
PORT_UP(oc_optical_state_filter_rolloff_to_high,                EXTENDED("state/filter-roll-off-factor"),                   port_test::any)
PORT_UP(oc_optical_state_rx_voa_target_pwr_to_high,             EXTENDED("state/rx-voa-target-power"),                      port_test::any)
PORT_UP(oc_optical_state_rx_voa_fixed_ratio_to_high,            EXTENDED("state/rx-voa-fixed-ratio"),                       port_test::any)
PORT_UP(oc_optical_state_enh_colorless_mode_to_high,            EXTENDED("state/enh-colorless-mode"),                       port_test::any)
PORT_UP(oc_optical_state_sop_tol_mode_to_high,                  EXTENDED("state/enh-sop-tol-mode"),                         port_test::any)
PORT_UP(oc_optical_state_nleq_comp_mode_to_high,                EXTENDED("state/nleq-compensation"),                        port_test::any)
PORT_UP(oc_optical_state_cross_pol_gain_mode_to_high,           EXTENDED("state/cross-pol-gain-mode"),                      port_test::any)
PORT_UP(oc_optical_state_cross_pol_weight_to_high,              EXTENDED("state/cross-pol-weight-mode"),                    port_test::any)
PORT_UP(oc_optical_state_cpr_win_mode_to_high,                  EXTENDED("state/cpr-win-mode"),                             port_test::any)
PORT_UP(oc_optical_state_cpr_ext_win_to_high,                   EXTENDED("state/cpr-ext-win-mode"),                         port_test::any)
// clang-format on

// These two add the container as well, so that it keeps its own namespace.

namespace {

rcode add_dispersion_threshold(const port_row &row, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    const char *name = nullptr;
    const rcode read = read_port(ctx, &name);
    if (!is_get(ctx)) {
        return read;
    }
    (void)add_across(ctx, tree, {ZMF_NS_OC_TERMINAL_DEVICE, OC_OPTICAL_CHANNEL}, nullptr);
    return add_across(ctx, tree, {row.ns, row.path}, node->value);
}

} // namespace

CONVERSION(oc_optical_state_cd_low_threshold_to_high) {
    static constexpr port_row row = {EXTENDED("state/optics-cd-low-threshold"), port_test::any};
    return add_dispersion_threshold(row, ctx, node, tree);
}

CONVERSION(oc_optical_state_cd_high_threshold_to_high) {
    static constexpr port_row row = {EXTENDED("state/optics-cd-high-threshold"), port_test::any};
    return add_dispersion_threshold(row, ctx, node, tree);
}

CONVERSION(oc_optical_state_freq_to_high) {
    constexpr int32_t mhz_decimals = 6; // of a number of THz
    const char *name = nullptr;
    const rcode read = read_port(ctx, &name);
    char frequency[text_size] = "";
    if (node->value != nullptr) {
        TRACE(ctx, TRC("SIL:Native Frequency = %s * 1THZ"), node->value);
        char copy[text_size] = "";
        zmf_strcpy_s(oc_self, copy, sizeof copy, node->value);
        snprintf(frequency, sizeof frequency, "%llu",
                 static_cast<unsigned long long>(float_string_to_int(copy, mhz_decimals)));
        TRACE(ctx, TRC("SIL: Terminal-Device Frequency = %s * 1MHZ"), static_cast<const char *>(frequency));
    }
    if (!is_get(ctx)) {
        return read;
    }
    return add_across(ctx, tree, {STATE("frequency")}, frequency);
}

// One operational value is the configured power too.
CONVERSION(oc_optical_state_op_power_to_high) {
    const char *name = nullptr;
    rcode status = read_port(ctx, &name);
    // A port whose record cannot be read counts as grey.
    if (status == RC_OK && oc_optical_is_lineport_grey(ctx, name) != 0 && hwinfo_has_optical_term_dev()) {
        return RC_OK;
    }
    char power[text_size] = "";
    print_dbm(node->value, 1, power);
    if (config_gate_is_open(ctx)) {
        status =
            add_across(ctx, tree, {ZMF_NS_OC_TERMINAL_DEVICE, OC_OPTICAL_CHANNEL "/config/target-output-power"}, power);
    }
    if (is_get(ctx)) {
        status = add_across(ctx, tree, {STATE("target-output-power")}, power);
    }
    return status;
}

// The leaf belongs to a channel, which the walk of a port does not stand at.
CONVERSION(oc_optical_esnr_instant_to_high) {
    const optics_carrier at(ctx, tree, ports);
    if (!at.is_valid) {
        return at.name_read;
    }
    return set_leaf(ctx, tree, ZMF_NS_OC_TERMINAL_DEVICE, OC_CHANNEL "[index=%s]/otn/state/esnr/instant", at.logical_id,
                    node->value, oc_self);
}
