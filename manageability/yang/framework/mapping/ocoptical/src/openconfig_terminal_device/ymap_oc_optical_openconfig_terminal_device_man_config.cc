// Conversions of a channel's configuration: identities, ingress, assignments, client laser shutdown, trail trace.
//
// To add one: a row of the family that it belongs to, or a CONVERSION, named in the model's table and declared beside
// it.
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"

#include <cstdio>
#include <cstring>
#include <span>

#include "engine/callback.h"
#include "engine/client_text.h"
#include "engine/request.h"
#include "exported.h"
#include "platform.h"
#include "utility/enumerations.h"
#include "utility/range.h"
#include "utility/safe_text.h"
#include "utility/scan.h"
#include "utility/text.h"

using namespace ocoptical;

namespace {

constexpr target ingress_client_port{CFG, NATIVE_CHANNEL "/ingress-client-port"};
constexpr target ingress_physical_channel{CFG, NATIVE_CHANNEL "/ingress-physical-channel"};
constexpr target optical_channel_id{CFG, NATIVE_ASSIGNMENT "/optical-channel-id"};
constexpr target allocation{CFG, NATIVE_ASSIGNMENT "/allocation"};
constexpr target ethernet_client_als{CFG, NATIVE_CHANNEL "/ethernet/client-als"};
constexpr target ethernet_als_delay{CFG, NATIVE_CHANNEL "/ethernet/als-delay"};

rcode out_of_range(zmf_map_ctx ctx) {
    zmf_oc_error_path(ctx);
    return RC_VALUE_OUT_OF_RANGE;
}

// Identities of the transport types carry the namespace of their module.

struct identity_row {
    log_text failure;
    const char *missing; // err_info, takes the namespace
    target at;
    zmf_value_fn to_low;
};

rcode add_identity(const identity_row &row, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree,
                   const trace_point &failed) {
    if (node->has_value && zmf_map_validate_data_ns(ctx, node, ZMF_NS_OC_TRANSPORT_TYPES, 0)) {
        log_statement(ctx, failed, row.failure);
        char text[text_size];
        snprintf(text, sizeof text, row.missing, ZMF_NS_OC_TRANSPORT_TYPES);
        set_err_info(ctx, text);
        zmf_oc_error_path(ctx);
        return RC_NAMESPACE_MISSING;
    }
    return add_by_edit_rule(ctx, node, tree, row.at, row.to_low(ctx, node, tree));
}

} // namespace

#define IDENTITY(function, leaf, to_low)                                                                               \
    CONVERSION(function) {                                                                                             \
        static constexpr identity_row row = {ERR(leaf " node validation failed!"),                                     \
                                             "namespace %s is missing for " leaf " node",                              \
                                             {CFG, NATIVE_CHANNEL "/" leaf},                                           \
                                             to_low};                                                                  \
        static uint32_t filter_word = fresh_filter_word;                                                               \
        return add_identity(row, ctx, node, tree, {oc_self, __LINE__, &filter_word});                                  \
    }

IDENTITY(oc_optical_rate_class_to_low, "rate-class", oc_optical_convert_rate_class_to_low)
IDENTITY(oc_optical_trib_protocol_to_low, "trib-protocol", oc_optical_convert_trib_protocol_to_low)
IDENTITY(oc_optical_logical_channel_type_to_low, "logical-channel-type", oc_optical_convert_logical_channel_type_to_low)

// Ingress. A transceiver is mapped where there is an optical terminal device.

CONVERSION(oc_optical_trans_to_client) {
    if (!hwinfo_has_optical_term_dev()) {
        return out_of_range(ctx);
    }
    char interface[text_size] = "";
    oc_optical_convert_trans_to_interface(node->value, interface);
    return add_by_edit_rule(ctx, node, tree, ingress_client_port, interface);
}

CONVERSION(oc_optical_trans_to_client_state) {
    return hwinfo_has_optical_term_dev() && is_read(ctx) ? add(ctx, tree, ingress_client_port, nullptr) : RC_OK;
}

// One value of a leaf-list: a delete names the value that it takes away.
CONVERSION(oc_optical_phychan_to_ing_phychan) {
    (void)zmf_map_is_request_delete(node); // asked and not heeded
    return add_leaf_list(ctx, tree, ingress_physical_channel, node->value, is_read(ctx) ? nullptr : node);
}

CONVERSION(oc_optical_phychan_to_ing_phychan_state) {
    return is_read(ctx) ? add_leaf_list(ctx, tree, ingress_physical_channel, node->value) : RC_OK;
}

// Assignments.

CONVERSION(oc_optical_LCA_optical_channel_name_to_low) {
    char name[text_size] = "";
    if (node->value != nullptr) {
        if (oc_optical_check_opt_chnl_rsip(node->value) != RC_OK) {
            TRACE(ctx, ERR("Config Rejected : Wrong optical channel"));
            set_err_msg(ctx, "R/S not matched for Optical channel");
            return out_of_range(ctx);
        }
        oc_optical_convert_compname_to_optname(node->value, name);
    }
    return add_by_edit_rule(ctx, node, tree, optical_channel_id, name);
}

// Gbit/s: the integer part of the decimal number.
CONVERSION(oc_optical_LCA_alloc_to_low) {
    char whole[text_size] = "";
    if (node->value != nullptr) {
        zmf_strcpy_s(oc_self, whole, sizeof whole, node->value);
        whole[strcspn(whole, ".")] = '\0';
    }
    return add_by_edit_rule(ctx, node, tree, allocation, whole);
}

// State leaves that a read asks for without a value.
#define ASKED(function, leaf)                                                                                          \
    CONVERSION(function) {                                                                                             \
        return is_read(ctx) ? add(ctx, tree, leaf, nullptr) : RC_OK;                                                   \
    }

ASKED(oc_optical_LCA_optical_channel_name_to_low_state, optical_channel_id)
ASKED(oc_optical_LCA_alloc_to_low_state, allocation)

// Automatic laser shutdown of the client.

CONVERSION(oc_optical_eth_client_als_to_low) {
    if (node->value != nullptr && !framework_texts_match(oc_self, node->value, "ETHERNET") &&
        !framework_texts_match(oc_self, node->value, "LASER_SHUTDOWN")) {
        TRACE(ctx, ERR("Client Als Value %s is not allowed"), node->value);
        char text[text_size];
        snprintf(text, sizeof text, "Client Als Value %s is not allowed", node->value);
        set_err_msg(ctx, text);
        return out_of_range(ctx);
    }
    if (is_read(ctx)) {
        return add(ctx, tree, ethernet_client_als, oc_optical_eth_client_als_high_to_low(ctx, node, tree));
    }
    // A delete writes the default back.
    constexpr int ethernet_row = 1;
    const char *low = zmf_map_is_request_delete(node) ? client_als.low[ethernet_row]
                                                      : oc_optical_eth_client_als_high_to_low(ctx, node, tree);
    return add(ctx, tree, ethernet_client_als, low, node);
}

namespace {

struct als_delay_row {
    uint32_t router_type;
    range allowed; // ms
};

// Other router types have no range.
constexpr als_delay_row als_delays[] = {
    {7, {10, 3000}},
    {18, {0, 3000}},
    {19, {0, 3000}},
};

const range *als_delay_range() {
    const uint32_t type = hwinfo_get_router_type();
    for (const als_delay_row &row : als_delays) {
        if (row.router_type == type) {
            return &row.allowed;
        }
    }
    return nullptr;
}

} // namespace

CONVERSION(oc_optical_eth_als_delay_to_low) {
    if (node->value != nullptr) {
        const range *allowed = als_delay_range();
        int32_t delay = 0;
        if (allowed != nullptr && !(scan_number(node->value, &delay) && is_within(*allowed, delay))) {
            TRACE(ctx, ERR("Als Delay is not allowed = %s"), node->value);
            return refuse_range(ctx, "Als Delay is not within the allowed range: %d - %d", *allowed);
        }
    }
    return add_by_edit_rule(ctx, node, tree, ethernet_als_delay, node->value);
}

// Trail trace: texts that a device without optical terminal device refuses, in a read too.

namespace {

struct trail_trace_row {
    target at;
    const char *unsupported;
    const char *too_long; // takes the longest length
    log_text failure;     // takes the length
};

constexpr size_t longest_trail_trace = 64;
constexpr char trail_trace_tag[] = "ZMF_MAP";

rcode refuse_trail_trace(zmf_map_ctx ctx, const char *text) {
    set_err_msg(ctx, text, trail_trace_tag);
    return out_of_range(ctx);
}

rcode add_trail_trace(const trail_trace_row &row, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree,
                      const trace_point &failed) {
    if (!hwinfo_has_optical_term_dev()) {
        return refuse_trail_trace(ctx, row.unsupported);
    }
    const size_t length = node->value != nullptr ? strlen(node->value) : 0;
    if (length > longest_trail_trace) {
        log_statement(ctx, failed, row.failure, length);
        char text[text_size];
        snprintf(text, sizeof text, row.too_long, static_cast<int>(longest_trail_trace));
        return refuse_trail_trace(ctx, text);
    }
    return add_by_edit_rule(ctx, node, tree, row.at, node->value);
}

} // namespace

#define TRAIL_TRACE(function, path, unsupported, too_long, failure)                                                    \
    CONVERSION(function) {                                                                                             \
        static constexpr trail_trace_row row = {{CFG, path}, unsupported, too_long, ERR(failure)};                     \
        static uint32_t filter_word = fresh_filter_word;                                                               \
        return add_trail_trace(row, ctx, node, tree, {oc_self, __LINE__, &filter_word});                               \
    }

TRAIL_TRACE(oc_optical_otn_tti_transmit_to_low, NATIVE_CHANNEL "/otn/tti-msg-transmit", "TTI_transmit is not supported",
            "TTI_transmit length is not within the allowed range: %d", "TTI_TRANSMIT Length is not allowed = %zu")
TRAIL_TRACE(oc_optical_otn_tti_expected_to_low, NATIVE_CHANNEL "/otn/tti-msg-expected",
            "TTI_expected  is not supported", "TTI_expected length is not within the allowed range: %d",
            "TTI_EXPECTED Length is not allowed = %zu")
