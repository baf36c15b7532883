// LLDP on the way down: the neighbour list, its key, and the leaves of state, neighbours and their TLVs.
//
// All of it is operational. A request names no interface, so it brings the neighbours of all; the answer places each on
// its own channel. To add a leaf: a row here, named in the model's table and declared beside it.
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"

#include <cstdlib>
#include <cstring>
#include <span>

#include "engine/callback.h"
#include "engine/request.h"
#include "exported.h"
#include "platform.h"

using namespace ocoptical;

OC_EXPORT int32_t is_get_with_key = 0;
OC_EXPORT char *gl_neigh_dev_id = nullptr;

namespace {

bool has_terminal_device(zmf_map_ctx /*ctx*/) {
    return hwinfo_has_optical_term_dev();
}

constexpr target neighbor{LLDP, NATIVE_LLDP_NEIGHBOR};
constexpr target device_id{LLDP, NATIVE_LLDP_DETAIL "/device-id"};
constexpr target tlv{LLDP, NATIVE_LLDP_TLV};
constexpr target received_bytes{ZMF_NS_MEDIA_ETH_OPER, NATIVE_ETHERNET_STATISTIC "/received-total-bytes"};

} // namespace

CONVERSION_IF(has_terminal_device,
              ymap_ox_oc_optical_openconfigterminaldevice_list_lvla_terminaldevice_neighbors_neighbor) {
    is_get_with_key = 0;
    if (zmf_map_is_request_delete(node)) {
        TRACE(ctx, TRC("Delete Request"));
        return RC_OK;
    }
    return add_list(ctx, tree, neighbor);
}

// The device is asked for the part of the key before "#"; the answer holds the rest against the neighbour's port.

namespace {

void forget_neighbor_key() {
    free(gl_neigh_dev_id);
    gl_neigh_dev_id = nullptr;
    is_get_with_key = 0;
}

// A key that no neighbour spent lives as long as the plug-in.
[[gnu::destructor]] void unload() {
    forget_neighbor_key();
}

bool keep_neighbor_key(const char *key) {
    gl_neigh_dev_id = static_cast<char *>(calloc(strlen(key) + 1, 1));
    if (gl_neigh_dev_id != nullptr) {
        memcpy(gl_neigh_dev_id, key, strlen(key));
    }
    return gl_neigh_dev_id != nullptr;
}

} // namespace

CONVERSION_IF(has_terminal_device, ymap_ox_oc_optical_openconfigterminaldevice_leaf_lvla_terminaldevice_neighbor_id) {
    if (!is_read(ctx) || node->value == nullptr) {
        return RC_OK;
    }
    forget_neighbor_key();
    if (!keep_neighbor_key(node->value)) {
        TRACE(ctx, ERR("gl_neigh_dev_id malloc failed"));
        return RC_NO_MEMORY;
    }
    char *device = zmf_strdup(node->value, "ZMF_OCLLDP_NS");
    if (device == nullptr) {
        return RC_OK;
    }
    device[strcspn(device, "#")] = '\0';
    is_get_with_key = 1;
    const rcode status = add(ctx, tree, device_id, device);
    kvo_named_free(device);
    return status;
}

// Leaves that a read asks for, with its value as it came.

namespace {

const char *value_of(const zmf_datatree *node) {
    return node != nullptr ? node->value : nullptr;
}

// One add does not wait for another.
rcode ask(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, std::span<const char *const> leaves) {
    rcode first_failure = RC_OK;
    for (const char *leaf : leaves) {
        const rcode status = is_read(ctx) ? add(ctx, tree, {LLDP, leaf}, value_of(node)) : RC_OK;
        if (first_failure == RC_OK) {
            first_failure = status;
        }
    }
    return first_failure;
}

} // namespace

#define OC_ASK(...)                                                                                                    \
    static constexpr const char *leaves[] = {__VA_ARGS__};                                                             \
    return ask(ctx, node, tree, leaves);
#define ASKED(function, ...)                                                                                           \
    CONVERSION_IF(has_terminal_device, function) {                                                                     \
        OC_ASK(__VA_ARGS__)                                                                                            \
    }
#define ASKED_ON_EVERY_PLATFORM(function, ...)                                                                         \
    CONVERSION(function) {                                                                                             \
        OC_ASK(__VA_ARGS__)                                                                                            \
    }
#define ASKED_UNTESTED(function, ...)                                                                                  \
    CONVERSION_WHERE(true, function) {                                                                                 \
        if (!has_terminal_device(ctx)) {                                                                               \
            return RC_OK;                                                                                              \
        }                                                                                                              \
        OC_ASK(__VA_ARGS__)                                                                                            \
    }

ASKED(ocoptical_lldp_enabled_to_low, NATIVE_LLDP_INTERFACE "/tx-enabled", NATIVE_LLDP_INTERFACE "/rx-enabled")

// No native leaf says whether an interface snoops: any row of its statistics does.
CONVERSION_WHERE(true, oc_optical_lldp_snooping_to_low) {
    return has_terminal_device(ctx) ? add(ctx, tree, received_bytes, value_of(node)) : RC_OK;
}

// clang-format off
ASKED(oc_optical_lldp_sys_name_to_low,                 NATIVE_LLDP_NEIGHBOR "/detail/system-name")
ASKED(oc_optical_lldp_sys_desc_to_low,                 NATIVE_LLDP_NEIGHBOR "/detail/system-description")
ASKED(oc_optical_lldp_chassis_id_to_low,               NATIVE_LLDP_NEIGHBOR "/chassis-id")
ASKED(oc_optical_chassis_id_type_to_low,               NATIVE_LLDP_NEIGHBOR "/mib/chassis-id-sub-type")
ASKED(oc_optical_lldp_nbr_id_to_low,                   NATIVE_LLDP_NEIGHBOR "/device-id")
ASKED_ON_EVERY_PLATFORM(oc_optical_lldp_ttl_to_low,    NATIVE_LLDP_NEIGHBOR "/hold-time")
ASKED(oc_optical_lldp_port_id_to_low,                  NATIVE_LLDP_NEIGHBOR "/port-id-detail")
ASKED(oc_optical_lldp_port_id_type_to_low,             NATIVE_LLDP_NEIGHBOR "/mib/port-id-sub-type")
ASKED_UNTESTED(oc_optical_lldp_port_desc_to_low,       NATIVE_LLDP_NEIGHBOR "/detail/port-description")
ASKED(oc_optical_lldp_ipv4_addr_to_low,                NATIVE_LLDP_ADDRESS "/ipv4-address",
                                                       NATIVE_LLDP_ADDRESS "/ipv6-address")
ASKED(oc_optical_lldp_mgmt_addr_type_to_low,           NATIVE_LLDP_ADDRESS "/address-type")
// clang-format on

CONVERSION_IF(has_terminal_device, oc_optical_lldp_custom_tlv_to_low) {
    return add_list(ctx, tree, tlv, zmf_map_is_request_delete(node) ? node : nullptr);
}

// clang-format off
ASKED(oc_optical_lldp_custom_tlv_oui_to_low,           NATIVE_LLDP_TLV "/oui")
ASKED(oc_optical_lldp_custom_tlv_oui_subtype_to_low,   NATIVE_LLDP_TLV "/tlv-subtype")
ASKED(oc_optical_lldp_custom_tlv_oui_value_to_low,     NATIVE_LLDP_TLV "/tlv-value")
// clang-format on
