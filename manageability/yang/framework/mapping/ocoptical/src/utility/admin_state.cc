// The administrative state of a channel.
#include "utility/admin_state.h"

#include <cstring>

#include "engine/add.h"
#include "engine/request.h"
#include "namespaces.h"
#include "utility/paths.h"

namespace ocoptical {

namespace {

constexpr uint32_t maintenance = 1;
constexpr char enabled[] = "ENABLED";

} // namespace

const char *in_maintenance(uint32_t mode, const char *high) {
    const bool would_be_enabled = high != nullptr && strncmp(high, enabled, sizeof enabled - 1) == 0;
    return mode == maintenance && would_be_enabled ? "MAINT" : high;
}

rcode add_admin_state(zmf_map_ctx ctx, zmf_datatree *tree, const carrier &at, const char *high, rcode status) {
    static constexpr target admin_state{ZMF_NS_OC_TERMINAL_DEVICE, OC_CHANNEL "/state/admin-state"};
    return at.has_channel() && is_get(ctx) ? add(ctx, tree, admin_state, high) : status;
}

} // namespace ocoptical
