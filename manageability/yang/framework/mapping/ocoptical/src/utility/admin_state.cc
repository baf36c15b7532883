// The administrative state of a channel.
#include "utility/admin_state.h"

#include <cstring>

#include "utility/channel_up.h"
#include "utility/paths.h"

namespace ocoptical {

const char *in_mode(uint32_t mode, const char *state) {
    constexpr uint32_t maintenance = 1;
    constexpr char enabled[] = "ENABLED";
    const bool would_be_enabled = state != nullptr && strncmp(state, enabled, sizeof enabled - 1) == 0;
    return mode == maintenance && would_be_enabled ? "MAINT" : state;
}

namespace {

rcode look_up_and_add(admin_state_frame &f, const admin_state_row &row, zmf_map_ctx ctx, const zmf_datatree *node,
                      zmf_datatree *tree) {
    uint32_t *word = f.filter_words;
    const auto next_point = [&] { return trace_point{f.around.function, f.around.line, word++}; };
    const auto log = [&](const log_text &text, auto... arguments) {
        if (text.text != nullptr) {
            log_statement(ctx, next_point(), text, arguments...);
        }
    };
    const trace_point tried = next_point();
    const trace_point matched = next_point();
    const char *state = look_up_traced(ctx, row.states, node->value, tried, matched);
    const carrier at(ctx, row.list);
    uint32_t mode = 0;
    const rcode status = row.read_mode(ctx, at.name, &mode);
    state = in_mode(mode, state);
    log(row.shown_state, shown(state));
    log(row.carrier_found, shown(at.name), static_cast<const char *>(at.logical_id));
    log(row.values, shown(node->value), shown(state));
    return add_channel_leaf(ctx, tree, at, OC_CHANNEL "/state/admin-state", state, status);
}

} // namespace

rcode add_admin_state(admin_state_frame &f, const admin_state_row &row, zmf_map_ctx ctx, const zmf_datatree *node,
                      zmf_datatree *tree) {
    return in_frame(
        f.around, ctx, [&] { return are_given(node, tree); }, [&] { return look_up_and_add(f, row, ctx, node, tree); });
}

} // namespace ocoptical
