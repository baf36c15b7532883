// The model Corvane-ethernet-lldp-oper: its table, and the declarations of its callbacks and hooks.
#pragma once

#include "engine/export.h"
#include "exported.h"
#include "namespaces.h"
#include "utility/paths.h"
#include "zmf.h"

#define OC_MODEL ymap_xo_oc_optical_corvaneethernetlldpoper
#define OC_TABLE "corvane_ethernet_lldp_oper/ymap_oc_optical_corvane_ethernet_lldp_oper.def"

#include "engine/readings/declarations.inc"

// Conversions that the rows name.
extern "C" {
zmf_node_shape oc_optical_lldp_mgmt_addr_type_to_high;
zmf_node_shape oc_optical_lldp_ipv4_addr_to_high;
zmf_node_shape oc_optical_lldp_ipv6_addr_to_high;
zmf_node_shape oc_optical_lldp_port_desc_to_high;
zmf_node_shape oc_optical_lldp_sys_name_to_high;
zmf_node_shape oc_optical_lldp_sys_desc_to_high;
zmf_node_shape oc_optical_lldp_custom_tlv_high;
zmf_node_shape oc_optical_lldp_custom_tlv_oui_to_high;
zmf_node_shape oc_optical_lldp_custom_tlv_oui_subtype_to_high;
zmf_node_shape oc_optical_lldp_custom_tlv_value_to_high;
zmf_node_shape oc_optical_chassis_id_type_to_high;
zmf_node_shape oc_optical_lldp_port_id_type_to_high;
zmf_node_shape oc_optical_lldp_nbr_id_to_high;
zmf_node_shape oc_optical_lldp_chassis_id_to_high;
zmf_node_shape oc_optical_lldp_port_id_to_high;
zmf_node_shape oc_optical_lldp_ttl_to_high;
zmf_node_shape ocoptical_lldp_enabled_to_high;
}
