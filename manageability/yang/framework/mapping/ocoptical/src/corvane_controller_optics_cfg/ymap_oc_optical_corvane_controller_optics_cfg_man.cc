// Conversions of Corvane-controller-optics-cfg: the configuration that a legacy platform keeps below its interfaces.
//
// To add a leaf: a CONVERSION, named in the model's table and declared beside it.
#include "corvane_controller_optics_cfg/ymap_oc_optical_corvane_controller_optics_cfg.h"

#include <cstdio>
#include <cstring>

#include "engine/callback.h"
#include "utility/components.h"
#include "utility/range.h"
#include "utility/scan.h"
#include "utility/text.h"

using namespace ocoptical;

namespace {

// clang-format off
#define OPTICAL_CONFIG(leaf) {ZMF_NS_OC_TERMINAL_DEVICE, OC_OPTICAL_CHANNEL "/config/" leaf, nullptr, 1}
#define EXTENDED(container, leaf) {ZMF_NS_OPTICAL_CHANNEL_EXT, OC_OPTICAL_CHANNEL "/extended/" container leaf, nullptr, 1}
// clang-format on

// What a carrier's value may be on this platform beside a frequency: such a value is dropped.
constexpr range dropped_carriers{19115, 19610};

} // namespace

CONVERSION(oc_optical_cfg_freq_to_high) {
    static constexpr up_leaf to = OPTICAL_CONFIG("frequency");
    char frequency[text_size] = "";
    if (node->value != nullptr) {
        zmf_strcpy_s(oc_self, frequency, sizeof frequency, node->value);
        int32_t number = 0;
        (void)scan_number(frequency, &number);
        TRACE(ctx, TRC("SIL: Native Frequency = %s * 100MHZ"), static_cast<const char *>(frequency));
        scale_text(frequency, 100);
        TRACE(ctx, TRC("SIL: Terminal-Device Frequency = %s * 1MHZ"), static_cast<const char *>(frequency));
        if (is_within(dropped_carriers, number)) {
            return RC_OK;
        }
    }
    return add_text_up(ctx, tree, to, frequency);
}

CONVERSION(oc_optical_cfg_opt_power_to_high) {
    static constexpr up_leaf to = OPTICAL_CONFIG("target-output-power");
    char power[text_size] = "";
    if (node->value != nullptr) {
        zmf_strcpy_s(oc_self, power, sizeof power, node->value);
        scale_text(power, 10);
    }
    return add_text_up(ctx, tree, to, power);
}

CONVERSION(oc_optical_ext_cfg_baud_rate_to_high) {
    static constexpr up_leaf to = EXTENDED("config/", "baud-rate");
    char rate[text_size] = "";
    if (node->value != nullptr) {
        double number = 0.0;
        sscanf(node->value, "%lf", &number);
        snprintf(rate, sizeof rate, "%.7f", number);
    }
    return add_text_up(ctx, tree, to, rate);
}

// Both thresholds, by the key of the entry that holds the leaf; one without a key is neither.
CONVERSION(oc_optical_cfg_input_power_lower_threshold_to_high) {
    static constexpr up_leaf lower = EXTENDED("thresholds/config/", "input-signal-power-lower");
    static constexpr up_leaf upper = EXTENDED("thresholds/config/", "input-signal-power-upper");
    char threshold[text_size] = "";
    if (node->value != nullptr) {
        zmf_strcpy_s(oc_self, threshold, sizeof threshold, node->value);
        scale_text(threshold, 10);
        TRACE(ctx, TRC("SIL: Terminal-Device Input Power Threshold: %s in 0.01 dBm"),
              static_cast<const char *>(threshold));
    }
    const char *type = nullptr;
    (void)zmf_map_get_node_info(ctx, NATIVE_RX_THRESHOLD, "rx-threshold-type", &type);
    if (type != nullptr && strcmp(type, "low") == 0) {
        (void)add_text_up(ctx, tree, lower, threshold);
    }
    if (type != nullptr && strcmp(type, "high") == 0) {
        (void)add_text_up(ctx, tree, upper, threshold);
    }
    return repair_optical_channel_namespace(ctx, tree);
}

CONVERSION(oc_optical_cfg_fastpoll_sop_enable_to_high) {
    static constexpr up_leaf to = {ZMF_NS_OPTICAL_CHANNEL_EXT,
                                   OC_OPTICAL_CHANNEL "/extended/config/fastpoll-sop-enable",
                                   OC_OPTICAL_CHANNEL "/extended/state/fastpoll-sop-enable", 1};
    (void)add_up(ctx, node, tree, to, nullptr, nullptr);
    return repair_optical_channel_namespace(ctx, tree);
}
