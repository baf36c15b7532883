// LLDP on the way up: interfaces, neighbours and their TLVs, below the logical channel of the interface.
//
// The walk never enters a channel: a neighbour's entry is made by its keyed path, and what is added afterwards falls
// under it. To add a leaf: a row of NEIGHBOR_LEAVES, named in the model's table and declared beside it.
#include "corvane_ethernet_lldp_oper/ymap_oc_optical_corvane_ethernet_lldp_oper.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>

#include "engine/callback.h"
#include "engine/request.h"
#include "exported.h"
#include "utility/keyed_path.h"
#include "utility/logical_channels.h"
#include "utility/safe_text.h"
#include "utility/scan.h"

using namespace ocoptical;

namespace {

constexpr char oc[] = ZMF_NS_OC_TERMINAL_DEVICE;
constexpr carrier_list interfaces{NATIVE_LLDP_INTERFACE, "interface-name"};
constexpr carrier_list neighbors{NATIVE_LLDP_DETAIL, "interface-name"};

const char *read_leaf(zmf_map_ctx ctx, const char *list, const char *leaf) {
    const char *text = nullptr;
    (void)zmf_map_get_node_info(ctx, list, leaf, &text);
    return text;
}

bool has_channel(zmf_map_ctx ctx) {
    return carrier(ctx, neighbors).has_channel();
}

} // namespace

// An interface with a channel reads enabled, whatever it transmits and receives: both leaves are read, neither counts.

namespace {

rcode add_interface(zmf_map_ctx ctx, zmf_datatree *tree, const char *oc_self) {
    if (!is_get(ctx)) {
        return RC_OK;
    }
    const char *name = read_leaf(ctx, interfaces.path, interfaces.key);
    (void)read_leaf(ctx, NATIVE_LLDP_INTERFACE, "tx-enabled");
    (void)read_leaf(ctx, NATIVE_LLDP_INTERFACE, "rx-enabled");
    char logical_id[text_size] = "";
    if (oc_optical_convert_interface_to_logical_id(name, logical_id) != RC_OK) {
        return RC_OK;
    }
    return set_leaf(ctx, tree, oc, OC_CHANNEL "[index=%s]/ethernet/lldp/state/enabled", logical_id, "true", oc_self);
}

} // namespace

// By hand down to its frame: the refusal of its arguments has words and a status of its own.
extern "C" OC_EXPORT rcode ymap_xo_oc_optical_corvaneethernetlldpoper_list_lvla_lldp_interfaces_interface(
    zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    OC_SELF;
    assert(NULL != ctx);
    TRACE(ctx, TRC("Start"));
    if (!are_given(node, tree)) {
        TRACE(ctx, ERR("NULL arguments passed"));
        return RC_SUBTREE_ERROR;
    }
    const rcode status = add_interface(ctx, tree, oc_self);
    TRACE(ctx, TRC("End"));
    return status;
}

CONVERSION_WHERE(true, ocoptical_lldp_enabled_to_high) {
    return RC_OK;
}

// The id of a neighbour, "<device>#<port>".

namespace {

constexpr size_t id_size = 255;

struct neighbor_id {
    char text[id_size] = "";

    bool is_empty() const { return text[0] == '\0'; }
};

// The device part of a neighbour that hides its own reads without the brackets.
neighbor_id frame_id(const char *device, const char *port) {
    neighbor_id id;
    const bool is_hidden = compare_texts(device, "[DISABLED]").match();
    snprintf(id.text, sizeof id.text, "%s#%s", is_hidden ? "DISABLED" : device, port);
    return id;
}

// The client's key where its port part is this one; the device has looked after the other part.
neighbor_id client_id(const char *port) {
    neighbor_id id;
    if (gl_neigh_dev_id != nullptr) {
        snprintf(id.text, sizeof id.text, "%s", gl_neigh_dev_id);
        const char *hash = strchr(id.text, '#');
        if (hash == nullptr || strcmp(hash + 1, port) != 0) {
            return {};
        }
    }
    return id;
}

rcode make_neighbor(zmf_map_ctx ctx, zmf_datatree *tree, const char *logical_id, const neighbor_id &id,
                    const char *oc_self) {
    zmf_map_xpath_op op;
    prepare_keyed_path(&op, tree, ZMF_XPATH_FIND_LIST, oc, OC_CHANNEL "[index=%s]/ethernet/lldp/neighbors/neighbor",
                       logical_id);
    const size_t length = strlen(op.xpath);
    snprintf(op.xpath + length, sizeof op.xpath - length, "[id=%s]/", id.text);
    snprintf(op.list_path, sizeof op.list_path, "%s", OC_NEIGHBOR);
    return settle_keyed_add(ctx, zmf_map_stitch_list_to_list(ctx, &op), oc_self);
}

// The first neighbour found spends the key: there is one of each.
void spend_client_key() {
    free(gl_neigh_dev_id);
    gl_neigh_dev_id = nullptr;
}

} // namespace

CONVERSION(ymap_xo_oc_optical_corvaneethernetlldpoper_list_lvla_lldp_detail_lldpneighbor) {
    const char *name = read_leaf(ctx, neighbors.path, neighbors.key);
    const char *device_id = read_leaf(ctx, NATIVE_LLDP_DETAIL, "device-id");
    const char *port_id = read_leaf(ctx, NATIVE_LLDP_NEIGHBOR, "port-id-detail");
    if (name == nullptr || ctx->req_ctx == nullptr) {
        TRACE(ctx, ERR("intf_name or ctx->req_ctx is NULL, return here"));
        return RC_SUBTREE_ERROR;
    }
    char logical_id[text_size] = "";
    if (oc_optical_convert_interface_to_logical_id(name, logical_id) != RC_OK) {
        TRACE(ctx, TRC("Invalid logical_id intf:%s"), name);
        return RC_OK;
    }
    if (!is_read(ctx) || device_id == nullptr || port_id == nullptr) {
        return RC_OK;
    }
    const bool by_key = is_get_with_key == 1;
    const neighbor_id id = by_key ? client_id(port_id) : frame_id(device_id, port_id);
    if (id.is_empty()) {
        return RC_OK;
    }
    const rcode status = make_neighbor(ctx, tree, logical_id, id, oc_self);
    if (by_key) {
        spend_client_key();
    }
    return status;
}

CONVERSION(ymap_xo_oc_optical_corvaneethernetlldpoper_leaf_lvla_lldp_lldpneighbor_deviceid) {
    static constexpr target to{oc, OC_NEIGHBOR "/state/id"};
    if (!has_channel(ctx) || !is_read(ctx)) {
        return RC_OK;
    }
    const char *port_id = read_leaf(ctx, NATIVE_LLDP_NEIGHBOR, "port-id-detail");
    if (node->value == nullptr || port_id == nullptr) {
        return RC_OK;
    }
    const neighbor_id id = frame_id(node->value, port_id);
    if (id.is_empty()) {
        TRACE(ctx, TRC("Failed to frame OC lldp peer state/id"));
        return RC_OK;
    }
    return add(ctx, tree, to, id.text);
}

// Leaves of a neighbour, added where its interface has a channel.

namespace {

struct neighbor_leaf {
    const char *path;
    const char *value = nullptr; // null: that of the native leaf
};

// One add does not wait for another.
rcode add_leaves(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, std::span<const neighbor_leaf> leaves) {
    if (!has_channel(ctx)) {
        return RC_OK;
    }
    rcode first_failure = RC_OK;
    for (const neighbor_leaf &leaf : leaves) {
        const rcode status = add(ctx, tree, {oc, leaf.path}, leaf.value != nullptr ? leaf.value : node->value);
        if (first_failure == RC_OK) {
            first_failure = status;
        }
    }
    return first_failure;
}

constexpr char organisation_specific[] = "127"; // the type of every TLV that has an OUI

} // namespace

#define NEIGHBOR_LEAVES(function, ...)                                                                                 \
    CONVERSION(function) {                                                                                             \
        static constexpr neighbor_leaf leaves[] = {__VA_ARGS__};                                                       \
        return add_leaves(ctx, node, tree, leaves);                                                                    \
    }

// clang-format off
NEIGHBOR_LEAVES(oc_optical_lldp_port_desc_to_high,             {OC_NEIGHBOR "/state/port-description"})
NEIGHBOR_LEAVES(oc_optical_lldp_sys_name_to_high,              {OC_NEIGHBOR "/state/system-name"})
NEIGHBOR_LEAVES(oc_optical_lldp_sys_desc_to_high,              {OC_NEIGHBOR "/state/system-description"})
NEIGHBOR_LEAVES(oc_optical_lldp_chassis_id_to_high,            {OC_NEIGHBOR "/state/chassis-id"})
NEIGHBOR_LEAVES(oc_optical_lldp_port_id_to_high,               {OC_NEIGHBOR "/state/port-id"})
NEIGHBOR_LEAVES(oc_optical_lldp_ttl_to_high,                   {OC_NEIGHBOR "/state/ttl"})
NEIGHBOR_LEAVES(oc_optical_lldp_mgmt_addr_type_to_high,        {OC_NEIGHBOR "/state/management-address-type"})
NEIGHBOR_LEAVES(oc_optical_lldp_ipv4_addr_to_high,             {OC_NEIGHBOR "/state/management-address"})
NEIGHBOR_LEAVES(oc_optical_lldp_ipv6_addr_to_high,             {OC_NEIGHBOR "/state/management-address"})

// For modules that load the plug-in: the callbacks below stand before these.
NEIGHBOR_LEAVES(oc_optical_chassis_id_type_to_high,            {OC_NEIGHBOR "/state/chassis-id-type"})
NEIGHBOR_LEAVES(oc_optical_lldp_nbr_id_to_high,                {OC_NEIGHBOR "/state/id"})
// clang-format on

CONVERSION_WHERE(true, oc_optical_lldp_port_id_type_to_high) {
    return RC_OK;
}

// Custom TLVs.

CONVERSION(oc_optical_lldp_custom_tlv_high) {
    static constexpr target to{oc, OC_TLV};
    return has_channel(ctx) ? add_list(ctx, tree, to, zmf_map_is_request_delete(node) ? node : nullptr) : RC_OK;
}

// clang-format off
NEIGHBOR_LEAVES(oc_optical_lldp_custom_tlv_oui_to_high,         {OC_TLV "/oui"}, {OC_TLV "/state/oui"})
NEIGHBOR_LEAVES(oc_optical_lldp_custom_tlv_oui_subtype_to_high, {OC_TLV "/oui-subtype"}, {OC_TLV "/state/oui-subtype"})
NEIGHBOR_LEAVES(oc_optical_lldp_custom_tlv_value_to_high,       {OC_TLV "/state/value"},
                                                                {OC_TLV "/state/type", organisation_specific},
                                                                {OC_TLV "/type", organisation_specific})
// clang-format on

// Subtypes: native numbers from 1.

namespace {

constexpr const char *chassis_id_types[] = {
    "CHASSIS_COMPONENT", "INTERFACE_ALIAS", "PORT_COMPONENT", "MAC_ADDRESS",
    "NETWORK_ADDRESS",   "INTERFACE_NAME",  "LOCAL",
};
constexpr const char *port_id_types[] = {
    "INTERFACE_ALIAS", "PORT_COMPONENT",   "MAC_ADDRESS", "NETWORK_ADDRESS",
    "INTERFACE_NAME",  "AGENT_CIRCUIT_ID", "LOCAL",
};

constexpr size_t type_size = 50;

// Null for a text in no row.
const char *type_of(std::span<const char *const> types, const char *subtype) {
    int32_t number = 0;
    if (subtype != nullptr) {
        (void)scan_number(subtype, &number);
    }
    const uint32_t row = static_cast<uint32_t>(number) - 1;
    return row < types.size() ? types[row] : nullptr;
}

} // namespace

OC_EXPORT rcode ymap_chassis_id_subtype_mapping_util(zmf_map_ctx ctx, const zmf_datatree *node, char *out) {
    OC_SELF;
    assert(NULL != ctx);
    TRACE(ctx, TRC("Start"));
    if (node == nullptr || out == nullptr) {
        TRACE(ctx, ERR("NULL arguments passed"));
        return RC_SUBTREE_ERROR;
    }
    const char *type = type_of(chassis_id_types, node->value);
    if (type == nullptr) {
        TRACE(ctx, TRC("Invalid chassis id subtype"));
    } else {
        snprintf(out, type_size, "%s", type);
    }
    TRACE(ctx, TRC("End"));
    return type != nullptr ? RC_OK : RC_SUBTREE_ERROR;
}

CONVERSION_IF(has_channel, ymap_xo_oc_optical_corvaneethernetlldpoper_leaf_lvla_lldp_mib_chassisidsubtype) {
    static constexpr target to{oc, OC_NEIGHBOR "/state/chassis-id-type"};
    char type[type_size] = "";
    if (ymap_chassis_id_subtype_mapping_util(ctx, node, type) != RC_OK) {
        TRACE(ctx, ERR("Invalid Chassis id type"));
        return RC_SUBTREE_ERROR;
    }
    return add(ctx, tree, to, type);
}

CONVERSION(ymap_xo_oc_optical_corvaneethernetlldpoper_leaf_lvla_lldp_mib_portidsubtype) {
    static constexpr target to{oc, OC_NEIGHBOR "/state/port-id-type"};
    if (!has_channel(ctx)) {
        return RC_OK;
    }
    const char *type = type_of(port_id_types, node->value);
    if (type == nullptr) {
        TRACE(ctx, TRC("Invalid port id subtype"));
        return RC_SUBTREE_ERROR;
    }
    return add(ctx, tree, to, type);
}
