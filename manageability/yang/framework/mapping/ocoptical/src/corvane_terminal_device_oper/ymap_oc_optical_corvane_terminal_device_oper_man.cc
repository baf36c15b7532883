// The one conversion of Corvane-terminal-device-oper.
#include "corvane_terminal_device_oper/ymap_oc_optical_corvane_terminal_device_oper.h"

#include "engine/add.h"

rcode ocoptical::mode_id_to_high(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    (void)add(ctx, tree, {ZMF_NS_OC_TERMINAL_DEVICE, OC_OPERATIONAL_MODE "/mode-id"}, node->value);
    return add(ctx, tree, {ZMF_NS_OC_TERMINAL_DEVICE, OC_OPERATIONAL_MODE "/state/mode-id"}, node->value);
}
