// Hand-written callbacks and conversions of Corvane-pmengine-oper: what bins and history report of channels and of
// components.
//
// A figure stands in both trees, so a row of a family makes both functions, for the bin and for the history; they
// differ in the port list that names their carrier. To add a figure: a row of its family, and both functions in the
// model's table and header.
#include "corvane_pmengine_oper/ymap_oc_optical_corvane_pmengine_oper.h"

#include <cstdio>
#include <cstdlib>

#include "engine/callback.h"
#include "engine/config_gate.h"
#include "engine/request.h"
#include "utility/components.h"
#include "utility/keyed_path.h"
#include "utility/logical_channels.h"
#include "utility/paths.h"
#include "utility/text.h"
#include "utility/up_value.h"

using namespace ocoptical;

namespace {

constexpr carrier_list otu_port{PM_OTU_PORT, "name"}, otu_port_history{PM_OTU_PORT_HISTORY, "name"};
constexpr carrier_list optics_port{PM_OPTICS_PORT, "name"}, optics_port_history{PM_OPTICS_PORT_HISTORY, "name"};
constexpr carrier_list ethernet_port{PM_ETHERNET_PORT, "name"}, ethernet_port_history{PM_ETHERNET_PORT_HISTORY, "name"};
constexpr carrier_list odu_port{PM_ODU_PORT, "name"};

// The port under walk. A port that is none of a channel, or of a component, reports nothing there: the status is that
// of reading its name.
struct optics_name {
    optics_name(zmf_map_ctx ctx, zmf_datatree *tree, const carrier_list &ports)
        : read(zmf_map_get_node_info(ctx, ports.path, ports.key, &text)),
          is_line_port(oc_optical_is_interface_line_port(text, ctx, tree) != 0) {}

    const char *text = nullptr; // null where the read failed
    rcode read;
    bool is_line_port;
};

rcode open_port_channel(zmf_map_ctx ctx, zmf_datatree *tree, const carrier_list &ports) {
    const carrier port(ctx, ports);
    return port.has_channel() ? open_channel(ctx, tree, port.logical_id) : port.name_read;
}

rcode open_port_component(zmf_map_ctx ctx, zmf_datatree *tree, const carrier_list &ports) {
    static constexpr target config_name{ZMF_NS_OC_PLATFORM, OC_COMPONENT "/config/name"};
    const optics_name port(ctx, tree, ports);
    rcode status = port.read;
    if (!port.is_line_port) {
        return status;
    }
    char component[text_size] = "";
    (void)oc_optical_convert_interface_to_opticalchannel(port.text, component);
    if (is_get(ctx)) {
        status = open_component(ctx, tree, component);
    }
    return config_gate_is_open(ctx) ? add_across(ctx, tree, config_name, component) : status;
}

} // namespace

#define PORT(list, open, ports)                                                                                        \
    CONVERSION(OC_JOIN(OC_MODEL, _list_##list)) {                                                                      \
        return open(ctx, tree, ports);                                                                                 \
    }

// clang-format off
PORT(lvla_performancemanagement_otuports_otuport,                                  open_port_channel,   otu_port)
PORT(lvla_performancemanagement_oduports_oduport,                                  open_port_channel,   odu_port)
PORT(lvla_performancemanagement_ethernetports_ethernetport,                        open_port_channel,   ethernet_port)
PORT(lvla_performancemanagement_opticsports_opticsport,                            open_port_component, optics_port)
PORT(lvla_performancemanagementhistory_otuporthistories_otuporthistory,            open_port_channel,   otu_port_history)
PORT(lvla_performancemanagementhistory_ethernetporthistories_ethernetporthistory,  open_port_channel,   ethernet_port_history)
PORT(lvla_performancemanagementhistory_opticsporthistories_opticsporthistory,      open_port_component, optics_port_history)
// clang-format on

// Figures of channels and components.

namespace {

struct figure {
    carrier_list ports;
    target at;
    up_value value;
};

// The port's channel is the current one since its list entry: its number is looked up to know that there is one.
rcode add_to_channel(const figure &row, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    char buffer[text_size] = "";
    const char *value = value_of(row.value, ctx, node, buffer);
    const carrier port(ctx, row.ports);
    return port.has_channel() ? add(ctx, tree, row.at, value) : port.name_read;
}

rcode add_to_component(const figure &row, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    char buffer[text_size] = "";
    const optics_name port(ctx, tree, row.ports);
    return port.is_line_port ? add_across(ctx, tree, row.at, value_of(row.value, ctx, node, buffer)) : port.read;
}

} // namespace

#define FIGURE_UP(function, add_figure, ports, path, value)                                                            \
    CONVERSION_WHERE(are_given(value, node, tree), function) {                                                         \
        static constexpr figure row{ports, {ZMF_NS_OC_TERMINAL_DEVICE, path}, value};                                  \
        return add_figure(row, ctx, node, tree);                                                                       \
    }
#define CHANNEL_UP(function, ports, leaf, value) FIGURE_UP(function, add_to_channel, ports, OC_CHANNEL leaf, value)
#define CHANNEL_PAIR(function, history, port, leaf, value)                                                             \
    CHANNEL_UP(function, port##_port, leaf, value)                                                                     \
    CHANNEL_UP(history, port##_port_history, leaf, value)
#define COMPONENT_UP(function, ports, leaf, value)                                                                     \
    FIGURE_UP(function, add_to_component, ports, OC_OPTICAL_CHANNEL "/state" leaf, value)
#define COMPONENT_PAIR(function, history, leaf, value)                                                                 \
    COMPONENT_UP(function, optics_port, leaf, value)                                                                   \
    COMPONENT_UP(history, optics_port_history, leaf, value)

// clang-format off
//           bin                                              history                                                     port      leaf                                                     value
CHANNEL_PAIR(oc_optical_fec_ec_bits_to_otn_fec_corr_bits,     oc_optical_pm_history_fec_ec_bits_to_otn_fec_corr_bits,     otu,      "/otn/state/fec-corrected-bits",                         raw())
CHANNEL_PAIR(oc_optical_fec_uc_words_to_otn_fec_uc_words,     oc_optical_pm_history_fec_uc_words_to_otn_fec_uc_words,     otu,      "/otn/state/fec-uncorrectable-words",                    raw())
CHANNEL_PAIR(oc_optical_pre_fec_min_to_high,                  oc_optical_pm_history_pre_fec_min_to_high,                  otu,      "/otn/state/pre-fec-ber/min",                            decimal())
CHANNEL_PAIR(oc_optical_pre_fec_avg_to_high,                  oc_optical_pm_history_pre_fec_avg_to_high,                  otu,      "/otn/state/pre-fec-ber/avg",                            decimal())
CHANNEL_PAIR(oc_optical_pre_fec_max_to_high,                  oc_optical_pm_history_pre_fec_max_to_high,                  otu,      "/otn/state/pre-fec-ber/max",                            decimal())
CHANNEL_PAIR(oc_optical_pre_fec_min_time_to_high,             oc_optical_pm_history_pre_fec_min_time_to_high,             otu,      "/otn/state/pre-fec-ber/min-time",                       raw())
CHANNEL_PAIR(oc_optical_pre_fec_max_time_to_high,             oc_optical_pm_history_pre_fec_max_time_to_high,             otu,      "/otn/state/pre-fec-ber/max-time",                       raw())
CHANNEL_PAIR(oc_optical_post_fec_min_to_high,                 oc_optical_pm_history_post_fec_min_to_high,                 otu,      "/otn/state/post-fec-ber/min",                           decimal())
CHANNEL_PAIR(oc_optical_post_fec_avg_to_high,                 oc_optical_pm_history_post_fec_avg_to_high,                 otu,      "/otn/state/post-fec-ber/avg",                           decimal())
CHANNEL_PAIR(oc_optical_post_fec_max_to_high,                 oc_optical_pm_history_post_fec_max_to_high,                 otu,      "/otn/state/post-fec-ber/max",                           decimal())
CHANNEL_PAIR(oc_optical_post_fec_min_time_to_high,            oc_optical_pm_history_post_fec_min_time_to_high,            otu,      "/otn/state/post-fec-ber/min-time",                      raw())
CHANNEL_PAIR(oc_optical_post_fec_max_time_to_high,            oc_optical_pm_history_post_fec_max_time_to_high,            otu,      "/otn/state/post-fec-ber/max-time",                      raw())
CHANNEL_PAIR(oc_optical_q_value_min_to_high,                  oc_optical_pm_history_q_value_min_to_high,                  otu,      "/otn/state/q-value/min",                                raw())
CHANNEL_PAIR(oc_optical_q_value_avg_to_high,                  oc_optical_pm_history_q_value_avg_to_high,                  otu,      "/otn/state/q-value/avg",                                raw())
CHANNEL_PAIR(oc_optical_q_value_max_to_high,                  oc_optical_pm_history_q_value_max_to_high,                  otu,      "/otn/state/q-value/max",                                raw())
CHANNEL_PAIR(oc_optical_q_value_min_time_to_high,             oc_optical_pm_history_q_value_min_time_to_high,             otu,      "/otn/state/q-value/min-time",                           raw())
CHANNEL_PAIR(oc_optical_q_value_max_time_to_high,             oc_optical_pm_history_q_value_max_time_to_high,             otu,      "/otn/state/q-value/max-time",                           raw())
CHANNEL_PAIR(otn_es_ne_to_otn_es,                             pm_history_otu_es_ne_to_otn_es,                             otu,      "/otn/state/errored-seconds",                            raw())
CHANNEL_PAIR(oc_optical_otn_ses_ne_to_otn_ses,                oc_optical_pm_history_otn_ses_ne_to_otn_ses,                otu,      "/otn/state/severely-errored-seconds",                   raw())
CHANNEL_PAIR(oc_optical_otn_uas_ne_to_otn_uas,                oc_optical_pm_history_otn_uas_ne_to_otn_uas,                otu,      "/otn/state/unavailable-seconds",                        raw())
CHANNEL_PAIR(oc_optical_otn_bbe_ne_to_otn_bbe,                oc_optical_pm_history_otn_bbe_ne_to_otn_bbe,                otu,      "/otn/state/background-block-errors",                    raw())
CHANNEL_UP(oc_optical_odu_es_ne_to_otn_es,                                                                                odu_port, "/otn/state/errored-seconds",                            raw())
CHANNEL_UP(oc_optical_odu_ses_ne_to_otn_ses,                                                                              odu_port, "/otn/state/severely-errored-seconds",                   raw())
CHANNEL_UP(oc_optical_odu_uas_ne_to_otn_uas,                                                                              odu_port, "/otn/state/unavailable-seconds",                        raw())
CHANNEL_UP(oc_optical_odu_bbe_ne_to_otn_bbe,                                                                              odu_port, "/otn/state/background-block-errors",                    raw())
CHANNEL_PAIR(oc_optical_in_pcs_bip_errors_to_high,            oc_optical_pm_history_in_pcs_bip_errors_to_high,            ethernet, "/ethernet/state/in-pcs-bip-errors",                     raw())
CHANNEL_PAIR(oc_optical_in_pcs_es_to_high,                    oc_optical_pm_history_in_pcs_es_to_high,                    ethernet, "/ethernet/state/in-pcs-errored-seconds",                raw())
CHANNEL_PAIR(oc_optical_in_pcs_ses_to_high,                   oc_optical_pm_history_in_pcs_ses_to_high,                   ethernet, "/ethernet/state/in-pcs-severely-errored-seconds",       raw())
CHANNEL_PAIR(oc_optical_in_pcs_us_to_high,                    oc_optical_pm_history_in_pcs_us_to_high,                    ethernet, "/ethernet/state/in-pcs-unavailable-seconds",            raw())

COMPONENT_PAIR(oc_optical_cd_min_to_high,                     oc_optical_pm_history_cd_min_to_high,                       "/chromatic-dispersion/min",                             raw())
COMPONENT_PAIR(oc_optical_cd_avg_to_high,                     oc_optical_pm_history_cd_avg_to_high,                       "/chromatic-dispersion/avg",                             raw())
COMPONENT_PAIR(oc_optical_cd_max_to_high,                     oc_optical_pm_history_cd_max_to_high,                       "/chromatic-dispersion/max",                             raw())
COMPONENT_PAIR(oc_optical_cd_min_time_to_high,                oc_optical_pm_history_cd_min_time_to_high,                  "/chromatic-dispersion/min-time",                        raw())
COMPONENT_PAIR(oc_optical_cd_max_time_to_high,                oc_optical_pm_history_cd_max_time_to_high,                  "/chromatic-dispersion/max-time",                        raw())
COMPONENT_PAIR(oc_optical_sopmd_min_to_high,                  oc_optical_pm_history_sopmd_min_to_high,                    "/second-order-polarization-mode-dispersion/min",        converted(oc_optical_sopmd_str_to_decimal))
COMPONENT_PAIR(oc_optical_sopmd_avg_to_high,                  oc_optical_pm_history_sopmd_avg_to_high,                    "/second-order-polarization-mode-dispersion/avg",        converted(oc_optical_sopmd_str_to_decimal))
COMPONENT_PAIR(oc_optical_sopmd_max_to_high,                  oc_optical_pm_history_sopmd_max_to_high,                    "/second-order-polarization-mode-dispersion/max",        converted(oc_optical_sopmd_str_to_decimal))
COMPONENT_PAIR(oc_optical_sopmd_min_time_to_high,             oc_optical_pm_history_sopmd_min_time_to_high,               "/second-order-polarization-mode-dispersion/min-time",   raw())
COMPONENT_PAIR(oc_optical_sopmd_max_time_to_high,             oc_optical_pm_history_sopmd_max_time_to_high,               "/second-order-polarization-mode-dispersion/max-time",   raw())
COMPONENT_PAIR(oc_optical_pdl_min_to_high,                    oc_optical_pm_history_pdl_min_to_high,                      "/polarization-dependent-loss/min",                      converted(oc_optical_pdl_str_to_decimal))
COMPONENT_PAIR(oc_optical_pdl_avg_to_high,                    oc_optical_pm_history_pdl_avg_to_high,                      "/polarization-dependent-loss/avg",                      converted(oc_optical_pdl_str_to_decimal))
COMPONENT_PAIR(oc_optical_pdl_max_to_high,                    oc_optical_pm_history_pdl_max_to_high,                      "/polarization-dependent-loss/max",                      converted(oc_optical_pdl_str_to_decimal))
COMPONENT_PAIR(oc_optical_pdl_min_time_to_high,               oc_optical_pm_history_pdl_min_time_to_high,                 "/polarization-dependent-loss/min-time",                 raw())
COMPONENT_PAIR(oc_optical_pdl_max_time_to_high,               oc_optical_pm_history_pdl_max_time_to_high,                 "/polarization-dependent-loss/max-time",                 raw())
COMPONENT_PAIR(oc_optical_inpower_min_to_high,                oc_optical_inpower_min_his_to_high,                         "/input-power/min",                                      converted(oc_optical_inpower_str_to_decimal))
COMPONENT_PAIR(oc_optical_inpower_avg_to_high,                oc_optical_inpower_avg_his_to_high,                         "/input-power/avg",                                      converted(oc_optical_inpower_str_to_decimal))
COMPONENT_PAIR(oc_optical_inpower_max_to_high,                oc_optical_inpower_max_his_to_high,                         "/input-power/max",                                      converted(oc_optical_inpower_str_to_decimal))
COMPONENT_PAIR(oc_optical_inpower_min_time_to_high,           oc_optical_inpower_min_time_his_to_high,                    "/input-power/min-time",                                 raw())
COMPONENT_PAIR(oc_optical_inpower_max_time_to_high,           oc_optical_inpower_max_time_his_to_high,                    "/input-power/max-time",                                 raw())
// clang-format on

// The length of a bin, in nanoseconds; a history has one length only.

VALUE_CONVERSION(oc_optical_interval_to_high) {
    static char text[text_size];
    constexpr int64_t nanoseconds = 1000000000;
    constexpr int64_t history_seconds = 30;
    text[0] = '\0';
    if (OC_OPTICAL_PM_IS_FLEXBIN_UNSUPPORTED != 0) {
        print_number(text, history_seconds * nanoseconds);
        return text;
    }
    if (node == nullptr || node->value == nullptr) {
        return nullptr;
    }
    const auto seconds = static_cast<uint64_t>(strtol(node->value, nullptr, 10));
    print_number(text, static_cast<int64_t>(seconds * nanoseconds)); // wraps
    return text;
}

// Electrical signal to noise: read at an optics port, reported by the channel of the controller behind it. Of several
// bins the first stays.

namespace {

rcode set_at_channel(zmf_map_ctx ctx, zmf_datatree *tree, const optics_carrier &port, const char *path,
                     const char *text, const char *oc_self) {
    return port.is_valid ? set_leaf(ctx, tree, ZMF_NS_OC_TERMINAL_DEVICE, path, port.logical_id, text, oc_self)
                         : port.name_read;
}

} // namespace

#define ESNR OC_CHANNEL "[index=%s]/otn/state/esnr"
#define ESNR_UP(function, ports, leaf)                                                                                 \
    CONVERSION(function) {                                                                                             \
        return set_at_channel(ctx, tree, optics_carrier(ctx, tree, ports), ESNR leaf, node->value, oc_self);           \
    }
#define ESNR_PAIR(function, history, leaf)                                                                             \
    ESNR_UP(function, optics_port, leaf)                                                                               \
    ESNR_UP(history, optics_port_history, leaf)
#define ESNR_INTERVAL_UP(function, ports, leaf)                                                                        \
    CONVERSION(function) {                                                                                             \
        const optics_carrier port(ctx, tree, ports);                                                                   \
        TRACE(ctx, TRC("SNR INTERVAL: intf_name = %s, mapped logical_id = %s"), shown(port.name),                      \
              static_cast<const char *>(port.logical_id));                                                             \
        return set_at_channel(ctx, tree, port, ESNR leaf, oc_optical_interval_to_high(ctx, node, tree), oc_self);      \
    }

// clang-format off
ESNR_UP(oc_optical_esnr_min_to_high,                         optics_port,                                "/min")
ESNR_INTERVAL_UP(oc_optical_pm_history_esnr_min_to_high,     optics_port_history,                        "/min") // the length of the bin, and not the minimum
ESNR_PAIR(oc_optical_esnr_avg_to_high,                       oc_optical_pm_history_esnr_avg_to_high,      "/avg")
ESNR_PAIR(oc_optical_esnr_max_to_high,                       oc_optical_pm_history_esnr_max_to_high,      "/max")
ESNR_PAIR(oc_optical_esnr_min_time_to_high,                  oc_optical_pm_history_esnr_min_time_to_high, "/min-time")
ESNR_PAIR(oc_optical_esnr_max_time_to_high,                  oc_optical_pm_history_esnr_max_time_to_high, "/max-time")
ESNR_INTERVAL_UP(oc_optical_esnr_interval_to_high,            optics_port,                                "/interval")
ESNR_INTERVAL_UP(oc_optical_pm_history_esnr_interval_to_high, optics_port_history,                        "/interval")
// clang-format on

// The intervals of one bin: those of all figures that it holds.

namespace {

constexpr target post_fec_interval{ZMF_NS_OC_TERMINAL_DEVICE, OC_CHANNEL "/otn/state/post-fec-ber/interval"};
constexpr target pre_fec_interval{ZMF_NS_OC_TERMINAL_DEVICE, OC_CHANNEL "/otn/state/pre-fec-ber/interval"};
constexpr target q_value_interval{ZMF_NS_OC_TERMINAL_DEVICE, OC_CHANNEL "/otn/state/q-value/interval"};

#define COMPONENT_INTERVAL(statistic)                                                                                  \
    { ZMF_NS_OC_TERMINAL_DEVICE, OC_OPTICAL_CHANNEL "/state" statistic "/interval" }
constexpr target component_intervals[] = {
    COMPONENT_INTERVAL("/chromatic-dispersion"),
    COMPONENT_INTERVAL("/polarization-dependent-loss"),
    COMPONENT_INTERVAL("/second-order-polarization-mode-dispersion"),
    COMPONENT_INTERVAL("/input-power"),
};

uint32_t class_of(const carrier &port) {
    char name[text_size] = ""; // a number that the map does not name leaves the port's own name
    snprintf(name, sizeof name, "%s", port.name);
    return oc_optical_convert_logical_index_to_interface(port.logical_id, name);
}

// The last add made is the result. Only a coherent channel has the interval of the Q value.
rcode add_otu_intervals(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const carrier_list &ports) {
    const carrier port(ctx, ports);
    if (!port.has_channel()) {
        return port.name_read;
    }
    const uint32_t itype = class_of(port);
    (void)add(ctx, tree, post_fec_interval, oc_optical_interval_to_high(ctx, node, tree));
    const rcode status = add(ctx, tree, pre_fec_interval, oc_optical_interval_to_high(ctx, node, tree));
    return itype == ITYPE_COHERENT_DSP ? add(ctx, tree, q_value_interval, oc_optical_interval_to_high(ctx, node, tree))
                                       : status;
}

rcode add_component_intervals(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    rcode status = RC_OK;
    for (const target &interval : component_intervals) {
        status = add_across(ctx, tree, interval, oc_optical_interval_to_high(ctx, node, tree));
    }
    return status;
}

} // namespace

CONVERSION(oc_optical_otu_interval_to_high) {
    return add_otu_intervals(ctx, node, tree, otu_port);
}

CONVERSION(oc_optical_pm_history_interval_to_high) {
    return add_otu_intervals(ctx, node, tree, otu_port_history);
}

// Of bins a coherent line port reports the component's intervals, any other port with a channel that of the channel. A
// port whose colour is not known counts as grey.
CONVERSION(oc_optical_optics_interval_to_high) {
    const char *name = nullptr;
    char logical_id[text_size] = "";
    const rcode name_read = zmf_map_get_node_info(ctx, optics_port.path, optics_port.key, &name);
    const rcode channel_found = find_controller_channel(name, logical_id);
    const bool grey = oc_optical_is_lineport_grey(ctx, name) != 0;
    const bool line_port = oc_optical_is_interface_line_port(name, ctx, tree) != 0;
    if (line_port && !grey) {
        return add_component_intervals(ctx, node, tree);
    }
    return channel_found == RC_OK ? oc_optical_esnr_interval_to_high(ctx, node, tree) : name_read;
}

// Of history a line port of any colour reports both, any other port nothing.
CONVERSION(oc_optical_optics_pm_history_interval_to_high) {
    const optics_name port(ctx, tree, optics_port_history);
    if (!port.is_line_port) {
        return port.read;
    }
    (void)add_component_intervals(ctx, node, tree);
    return oc_optical_pm_history_esnr_interval_to_high(ctx, node, tree);
}

#define INTERVAL_UP(function, at, text)                                                                                \
    CONVERSION(function) {                                                                                             \
        const carrier port(ctx, otu_port);                                                                             \
        TRACE(ctx, TRC(text ": intf_name = %s, logical_id = %s"), shown(port.name),                                    \
              static_cast<const char *>(port.logical_id));                                                             \
        return port.has_channel() ? add(ctx, tree, at, oc_optical_interval_to_high(ctx, node, tree)) : port.name_read; \
    }

INTERVAL_UP(oc_optical_pre_fec_interval_to_high, pre_fec_interval, "PRE FEC INTERVAL")
INTERVAL_UP(oc_optical_post_fec_interval_to_high, post_fec_interval, "POST FEC INTERVAL")
INTERVAL_UP(oc_optical_q_value_interval_to_high, q_value_interval, "Q VALUE INTERVAL")
