/* What the plug-in exports under a name of its own and not in a standard shape. Walkers, callbacks and conversions have
 * the shapes of zmf.h and are found by name. */
#ifndef OCOPTICAL_EXPORTED_H
#define OCOPTICAL_EXPORTED_H

#include <stdint.h>
#include <stdio.h>

#include "zmf.h"

#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif
#ifdef __cplusplus
extern "C" {
#endif

/* Names. Output buffers hold 200 bytes, of the state store family 64 bytes. Result: 0, or OCOPTICAL_BAD_NAME and
 * nothing written; where a bad name gives 0 it is told. A null name is a bad one. */
rcode oc_optical_convert_coherentDSP_to_interface(const char *name, char *out);
rcode oc_optical_convert_optics_to_controller(const char *name, char *out);
rcode oc_optical_convert_optics_interface_to_statedb_interface(const char *name, char *out);
rcode oc_optical_convert_opticalchannel_to_interface(const char *name, char *out);
rcode oc_optical_convert_opticalchannel_to_controller(const char *name, char *out);
rcode oc_optical_convert_trans_to_interface(const char *name, char *out); /* bad name: 0, nothing written */
rcode oc_optical_convert_controller_to_opticalchannel(const char *name, char *out);
rcode oc_optical_convert_interface_to_opticalchannel(const char *name, char *out);
rcode oc_optical_convert_interface_to_trans(const char *name, char *out);      /* bad name: 0, nothing written */
rcode oc_optical_convert_compname_to_optname(const char *name, char *out);     /* "/" to "_"; always 0 */
rcode oc_optical_convert_optname_to_compname(const char *name, char *out);     /* "_" to "/"; always 0 */
rcode oc_optical_convert_interface_to_logical_id(const char *name, char *out); /* channel number as text */
rcode oc_optical_convert_otu_cntrlr_to_statedb_interface(const char *name, char *out); /* null, other kind: 0 */
rcode oc_optical_convert_odu_cntrlr_to_statedb_interface(const char *name, char *out); /* null, other kind: 0 */
rcode oc_optical_convert_ethernet_cntrlr_to_statedb_interface(const char *name, char *out);
uint32_t oc_optical_is_interface_ethernet_controller(const char *name); /* 0 or 1 */
uint32_t is_prefix_required(void);                                      /* 0 or 1 */

/* Channel number as text to the name of its carrier ("/" form; `out` holds 200 bytes and keeps its text for an unknown
 * number) and the class of that name, ITYPE_*. A null text gives ITYPE_NONE and touches nothing. */
uint32_t oc_optical_convert_logical_index_to_interface(const char *index_text, char *out);

/* Numbers. Output buffers hold 200 bytes; a null text gives "", an unreadable one counts as 0. Always 0. */
rcode oc_optical_convert_decimal_to_scientific_notation(const char *text, char *out);
rcode oc_optical_convert_scientific_to_decimal_notation(const char *text, char *out);
void oc_optical_truncate_trail_zeroes(char *text);           /* in place; "." keeps one zero behind it */
uint64_t float_string_to_int(char *text, int32_t precision); /* scaled by 10^precision; changes `text` */
zmf_value_shape oc_optical_sopmd_str_to_decimal;
zmf_value_shape oc_optical_pdl_str_to_decimal;
zmf_value_shape oc_optical_inpower_str_to_decimal;
extern char sopmd_str[200], pdl_str[200],
    inpower_str[200]; /* what the three before write; valid until their next call */

/* Look-ups between the columns of enumerations: static text, or null for a text in no row. */
zmf_value_shape oc_optical_convert_logical_channel_type_to_high;
zmf_value_shape oc_optical_convert_logical_channel_type_to_low;
zmf_value_shape oc_optical_convert_logical_channel_rate_class_to_high;
zmf_value_shape oc_optical_convert_rate_class_to_low;
zmf_value_shape oc_optical_convert_logical_channel_trib_protocol_to_high;
zmf_value_shape oc_optical_convert_trib_protocol_to_low;
zmf_value_shape oc_optical_admin_state_data_to_high;
zmf_value_shape oc_optical_admin_state_data_to_low;
zmf_value_shape oc_optical_loopback_mode_to_high;
zmf_value_shape oc_optical_loopback_mode_to_low;
zmf_value_shape oc_optical_LCA_assign_type_to_high;
zmf_value_shape oc_optical_LCA_assign_type_to_low;
zmf_value_shape oc_optical_eth_client_als_low_to_high;
zmf_value_shape oc_optical_eth_client_als_high_to_low;
zmf_value_shape oc_optical_convert_oper_client_als_to_high;
zmf_value_shape oc_optical_convert_oper_loopback_mode_to_high;

/* The columns: entries of one number are one row. The catalogues have a high column only, "LABEL : number". */
extern const char *const logical_channel_type_high_data[], *const logical_channel_type_low_data[];
extern const char *const assignment_type_high_data[], *const assignment_type_low_data[];
extern const char *const admin_state_high_data[], *const admin_state_low_data[];
extern const char *const loopback_mode_high_data[], *const loopback_mode_low_data[];
extern const char *const oper_loopback_high_data[], *const oper_loopback_low_data[];
extern const char *const client_als_high_data[], *const client_als_low_data[];
extern const char *const oper_client_als_high_data[], *const oper_client_als_low_data[];
extern const char *const rate_class_high_data[], *const rate_class_low_data[];
extern const char *const trib_protocol_high_data[], *const trib_protocol_low_data[];
extern const char *const otu_admin_state_high_data[], *const otu_admin_state_low_data[];
extern const char *const odu_admin_state_high_data[], *const odu_admin_state_low_data[];
extern const char *const ethernet_admin_state_high_data[], *const ethernet_admin_state_low_data[];
extern const char *const cpr_ext_win_mode_high_data[], *const cpr_win_mode_high_data[];
extern const char *const enh_colorless_mode_high_data[], *const enh_sop_tol_mode_high_data[];
extern const char *const nleq_comp_mode_high_data[];

/* Optical channels and their interfaces. */
rcode oc_optical_check_opt_chnl_rsip(const char *component); /* 0, or RC_SUBTREE_ERROR: prefix and R/S differ */
rcode zmf_ocoptical_ifmgr_init(zmf_map_ctx ctx);             /* binds the interface registry once */
uint32_t oc_optical_check_opt_chnl_ifhandle(zmf_map_ctx ctx, const char *name); /* 0: no such interface */
extern uint64_t ifreg_handle;                                                   /* 0: not bound */

/* Line ports. 1 or 0; `ctx` may be null. `tree` is searched for components on routers that have them. */
uint32_t oc_optical_is_interface_line_port(const char *name, zmf_map_ctx ctx, struct zmf_datatree *tree);
uint32_t oc_optical_is_controller_line_port(const char *name, zmf_map_ctx ctx, struct zmf_datatree *tree);
uint32_t is_valid_channel_for_esnr(const char *name, zmf_map_ctx ctx, struct zmf_datatree *tree, uint32_t restriction);
rcode oc_optical_check_lineport_rsip(const char *component, const char *line_port); /* 0, or RC_SUBTREE_ERROR */

/* 1 grey, 0 not, any other word a failure of state store or codec; read anew at each call. */
rcode oc_optical_is_lineport_grey(zmf_map_ctx ctx, const char *name);
void check_and_unbind(zmf_map_ctx ctx, void **binding); /* gives a state store binding back; null: nothing */
extern int32_t statedb_available;                       /* the store's library was found once */

/* Maintenance of a controller, from its record in the state store: the word keeps its value where the record does not
 * tell. Result: 0, or the failure of state store or codec. */
rcode get_otu_maint_mode(zmf_map_ctx ctx, const char *controller, uint32_t *mode);
rcode get_odu_maint_mode(zmf_map_ctx ctx, const char *controller, uint32_t *mode);
rcode get_maint_mode(zmf_map_ctx ctx, const char *controller, uint32_t *mode); /* an Ethernet controller */
zmf_node_shape oc_optical_ether_admin_state_to_high; /* for modules that load the plug-in: no row names it */

/* Clears an optical channel from both of its native homes; `component_name` is set and a delete under way. */
zmf_node_shape ymap_oc_optical_delete_component_optical_channel;
/* The augment entry of the vendor's extension, for the optical channel's hook. */
zmf_node_shape ymap_ox_oc_optical_corvaneopenconfigterminaldeviceext_augment_lvla_optical_channel;
/* The augment entry of an interface's optics, for the interface's hook. */
zmf_node_shape ymap_xo_oc_optical_corvanecontrolleropticscfg_augment_lvla_interface_configuration;

/* Statistics. */
extern uint32_t OC_OPTICAL_PM_IS_FLEXBIN_UNSUPPORTED; /* 0: flex bins; set from outside, never written here */
rcode oc_optical_interval_to_low(void);               /* 0; intervals are asked for elsewhere */
rcode oc_optical_otu_interval_to_low(void);           /* 0, likewise */

/* The neighbour that a request names by its key, "<device>#<port>": a copy that the next key or the first neighbour
 * found by it releases. */
extern int32_t is_get_with_key;
extern char *gl_neigh_dev_id;
rcode ymap_chassis_id_subtype_mapping_util(zmf_map_ctx ctx, const struct zmf_datatree *node,
                                           char *out); /* `out` holds 50 bytes; 0, or RC_SUBTREE_ERROR */

/* For modules that load the plug-in. */
void convert_ifname_imentry(char *out, const char *name); /* the registry's internal form; `out` holds 64 bytes */
rcode string_to_uint32(const char *text, uint64_t *out);
rcode index_string_to_interface_name(zmf_map_ctx ctx, const char *text, char **out); /* the caller frees */
rcode get_token(char *text, const char *delimiters, uint32_t n, char **out); /* the n-th from 0; the caller frees */

/* Appends a line to "/var/log/ocoptical.log": time stamp, then the caller's text, which brings its own line end. */
void oc_log_file(const char *format, ...) ZMF_PRINTF(1, 2);

extern FILE *fp;                            /* the log file, null until the first line */
extern void *oc_terminal_device_dll_handle; /* for the modules that load the plug-in, which itself never touches it */

#ifdef __cplusplus
}
#endif
#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#endif
