// Hand-written callbacks and conversions of Corvane-controller-otu-oper.
//
// To add a leaf: a row of CHANNEL_UP, named in the model's table and declared beside it.
#include "corvane_controller_otu_oper/ymap_oc_optical_corvane_controller_otu_oper.h"

#include <cstring>

#include "engine/callback.h"
#include "engine/request.h"
#include "utility/admin_state.h"
#include "utility/channel_up.h"
#include "utility/enumerations.h"
#include "utility/keyed_path.h"
#include "utility/logical_channels.h"

using namespace ocoptical;

namespace {

constexpr carrier_list controllers{NATIVE_OTU_CONTROLLER, "controller-name"};

const char *link_state(zmf_map_ctx /*ctx*/, const zmf_datatree *node, zmf_datatree * /*tree*/) {
    const bool is_up = node != nullptr && node->value != nullptr && strcmp(node->value, "up") == 0;
    return is_up ? "UP" : "DOWN";
}

} // namespace

CONVERSION(ymap_xo_oc_optical_corvanecontrollerotuoper_list_lvla_otu_controllers_controller) {
    const carrier at(ctx, controllers);
    if (!at.has_channel()) {
        return at.name_read;
    }
    TRACE(ctx, TRC("LINK: intf_name = %s, logical_id = %s"), at.name, static_cast<const char *>(at.logical_id));
    return open_channel(ctx, tree, at.logical_id);
}

rcode ocoptical::otu_state_to_high(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    (void)oc_optical_otu_fec_state_to_link_state_to_high(ctx, node, tree);
    return oc_optical_otu_admin_state_to_high(ctx, node, tree);
}

// clang-format off
ADMIN_STATE_UP(oc_optical_otu_admin_state_to_high, controllers,
               {otu_admin_state, TRC("OC_OPT : i %d ,ADMIN STATE %s ret %d ind %d"), TRC(" ADMIN STATE  Low:%s, HIGH: %s ")},
               get_otu_maint_mode,
               TRC("FINAL IP VALUE %s"), TRC("OC_OPT: ADMIN: intf_name: %s, logical_id: %s"),
               TRC("OC_OPT: ADMIN values low data : %s high data: %s"))
// clang-format on

// clang-format off
CHANNEL_UP(oc_optical_otu_fec_state_to_link_state_to_high,            controllers, OC_CHANNEL "/state/link-state",               converted(link_state))
CHANNEL_UP(oc_optical_otu_oper_loopback_to_high,                      controllers, OC_CHANNEL "/state/loopback-mode",            converted(oc_optical_convert_oper_loopback_mode_to_high),
           TRC("OC_OPT: LOOPBACK: intf_name: %s, logical_id: %s"), TRC("OC_OPT: LOOPBACK values low data : %s high data: %s"))
CHANNEL_UP(oc_optical_tti_msg_recv_to_tti_ascii_string_low_to_high,   controllers, OC_CHANNEL "/otn/state/tti-msg-recv",         raw(),
           TRC("TTI-MSG-RECV: intf_name = %s, logical_id = %s"))
CHANNEL_UP(oc_optical_post_fec_ber_instant_to_high,                   controllers, OC_CHANNEL "/otn/state/post-fec-ber/instant", decimal(),
           TRC("POST-FEC-BER: intf_name = %s, logical_id = %s"))
CHANNEL_UP(oc_optical_pre_fec_ber_instant_to_high,                    controllers, OC_CHANNEL "/otn/state/pre-fec-ber/instant",  decimal(),
           TRC("PRE-FEC-BER: intf_name = %s, logical_id = %s"))
CHANNEL_UP(oc_optical_q_value_instant_to_high,                        controllers, OC_CHANNEL "/otn/state/q-value/instant",      raw(),
           TRC("Q-VALUE: intf_name = %s, logical_id = %s, q_value = %s"))
// clang-format on

// A leaf of a component, out of the walk of a controller.
CONVERSION(oc_optical_state_oper_mode_to_high) {
    const char *name = nullptr;
    const rcode read = zmf_map_get_node_info(ctx, controllers.path, controllers.key, &name);
    if (oc_optical_is_controller_line_port(name, ctx, tree) == 0 || !is_get(ctx)) {
        return read;
    }
    char component[text_size] = "";
    (void)oc_optical_convert_controller_to_opticalchannel(name, component);
    TRACE(ctx, TRC("OC_OPT: cont_name: %s  comp_name: %s"), shown(name), static_cast<const char *>(component));
    return set_leaf(ctx, tree, ZMF_NS_OC_PLATFORM, OC_COMPONENT "[name=%s]/optical-channel/state/operational-mode",
                    component, node->value, oc_self);
}
