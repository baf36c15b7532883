// Hand-written callback and hook of Corvane-ifmgr-cfg: which interfaces are optical channels, and the road to their
// optics.
#include "corvane_ifmgr_cfg/ymap_oc_optical_corvane_ifmgr_cfg.h"

#include "engine/callback.h"
#include "engine/request.h"
#include "platform.h"
#include "utility/components.h"
#include "utility/text.h"

using namespace ocoptical;

namespace {

// The first child of that tag; one without a tag ends the search.
bool has_optics(zmf_map_ctx ctx, const zmf_datatree *entry, const char *oc_self) {
    const uint32_t count = entry->has_children ? entry->child_count : 0;
    for (uint32_t at = 0; at < count; ++at) {
        if (entry->children[at].tag == nullptr) {
            TRACE(ctx, ERR("Tag name is not available!"));
            return false;
        }
        if (zmf_map_do_these_match(entry->children[at].tag, "optics")) {
            return true;
        }
    }
    return false;
}

} // namespace

CONVERSION(interface_configuration_component_component_to_high) {
    const char *name = nullptr;
    const rcode status = zmf_map_get_node_info(ctx, NATIVE_INTERFACE_CONFIGURATION, "interface-name", &name);
    if (status != RC_OK) {
        return status;
    }
    char component[text_size] = "";
    if (oc_optical_convert_interface_to_opticalchannel(name, component) != RC_OK) {
        return RC_OK; // of no interest here
    }
    TRACE(ctx, TRC("OCOP: intf_name: %s, comp_name: %s"), name, static_cast<const char *>(component));
    if (!is_read(ctx)) {
        return RC_OK;
    }
    if (node->has_children && node->child_count != 0 && node->children == nullptr) {
        TRACE(ctx, ERR("Failed to get subtrees!"));
        return RC_SUBTREE_ERROR;
    }
    if (!has_optics(ctx, node, oc_self)) {
        TRACE(ctx, TRC("Comp: %s reduced"), static_cast<const char *>(component));
        return RC_NOT_MAPPED;
    }
    TRACE(ctx, TRC("Optical configuration found"));
    if (!hwinfo_has_optical_term_dev()) {
        TRACE(ctx, TRC("Comp: %s reduced"), static_cast<const char *>(component));
        return RC_NOT_MAPPED;
    }
    return open_component_config(ctx, tree, component);
}

CONVERSION(ymap_xo_oc_optical_corvaneifmgrcfg_lvla_interfaceconfigurations_interfaceconfiguration_parse_augments) {
    const bool is_optics = zmf_map_do_these_match(node->ns, ZMF_NS_OPTICS_CFG) && hwinfo_has_optical_term_dev();
    return is_optics
               ? ymap_xo_oc_optical_corvanecontrolleropticscfg_augment_lvla_interface_configuration(ctx, node, tree)
               : RC_OK;
}
