// Hand-written callbacks and conversions of Corvane-controller-odu-oper.
//
// To add a leaf: a row of CHANNEL_UP, named in the model's table and declared beside it.
#include "corvane_controller_odu_oper/ymap_oc_optical_corvane_controller_odu_oper.h"

#include <cstring>

#include "engine/callback.h"
#include "engine/request.h"
#include "utility/admin_state.h"
#include "utility/channel_up.h"
#include "utility/enumerations.h"
#include "utility/logical_channels.h"

using namespace ocoptical;

namespace {

constexpr carrier_list controllers{NATIVE_ODU_CONTROLLER, "controller-name"};

} // namespace

CONVERSION(ymap_xo_oc_optical_corvanecontrolleroduoper_list_lvla_odu_controllers_controller) {
    const carrier at(ctx, controllers);
    if (!at.has_channel() || !is_get(ctx)) {
        return at.name_read;
    }
    TRACE(ctx, TRC("LINK: intf_name = %s, logical_id = %s"), at.name, static_cast<const char *>(at.logical_id));
    return open_channel(ctx, tree, at.logical_id);
}

rcode ocoptical::odu_state_to_high(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    (void)oc_optical_odu_oper_state_up_to_link_state_to_high(ctx, node, tree);
    return oc_optical_odu_admin_state_to_high(ctx, node, tree);
}

CONVERSION(oc_optical_odu_oper_state_up_to_link_state_to_high) {
    const carrier at(ctx, controllers);
    TRACE(ctx, TRC("to high odu called for link state"));
    TRACE(ctx, TRC("intf name %s and logical id %s"), shown(at.name), static_cast<const char *>(at.logical_id));
    if (node->value == nullptr || strcmp(node->value, "up") != 0) {
        TRACE(ctx, TRC("native to open state down set"));
        return add_channel_leaf(ctx, tree, at, OC_CHANNEL "/state/link-state", "DOWN");
    }
    TRACE(ctx, TRC("native to open state up set"));
    return add_channel_leaf(ctx, tree, at, OC_CHANNEL "/state/link-state", "UP");
}

// clang-format off
ADMIN_STATE_UP(oc_optical_odu_admin_state_to_high, controllers,
               {odu_admin_state, TRC("OC_OPT : i %d ,ADMIN STATE %s ret %d ind %d"), TRC(" ADMIN STATE  Low:%s, HIGH: %s ")},
               get_odu_maint_mode,
               TRC("FINAL IP VALUE %s"), TRC("OC_OPT: ADMIN: intf_name: %s, logical_id: %s"))
// clang-format on

// clang-format off
CHANNEL_UP(oc_optical_odu_oper_loopback_to_high, controllers, OC_CHANNEL "/state/loopback-mode", converted(oc_optical_convert_oper_loopback_mode_to_high),
           TRC("OC_OPT: LOOPBACK: intf_name: %s, logical_id: %s"), TRC("OC_OPT: LOOPBACK values low data : %s high data: %s"))
// clang-format on
