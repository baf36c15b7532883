// The administrative state of a channel: what its carrier reports, and maintenance, which the state store knows.
#pragma once

#include "engine/callback.h"
#include "utility/enumerations.h"
#include "utility/logical_channels.h"
#include "zmf.h"

namespace ocoptical {

// What a channel that would show `state` shows in mode `mode`. A null text, of a carrier in no known state, stays.
const char *in_mode(uint32_t mode, const char *state);

// The state of a controller's channel.
struct admin_state_row {
    carrier_list list;
    traced_enumeration states;
    rcode (*read_mode)(zmf_map_ctx ctx, const char *carrier, uint32_t *mode);
    log_text shown_state;   // takes the state
    log_text carrier_found; // takes carrier and channel
    log_text values = {};   // takes native text and state
};

struct admin_state_frame {
    frame around;
    uint32_t filter_words[5] = {fresh_filter_word, fresh_filter_word, fresh_filter_word, fresh_filter_word,
                                fresh_filter_word};
};

// Adds state/admin-state where the carrier has a channel. A state in no row has no text. That the store cannot tell
// stops nothing; its answer is the status where there is nothing to add.
rcode add_admin_state(admin_state_frame &f, const admin_state_row &row, zmf_map_ctx ctx, const zmf_datatree *node,
                      zmf_datatree *tree);

#define ADMIN_STATE_UP(function, ...)                                                                                  \
    extern "C" OC_EXPORT rcode function(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {               \
        assert(NULL != ctx);                                                                                           \
        static constinit ocoptical::admin_state_frame f = {OC_FRAME};                                                  \
        static constexpr ocoptical::admin_state_row row = {__VA_ARGS__};                                               \
        return ocoptical::add_admin_state(f, row, ctx, node, tree);                                                    \
    }

} // namespace ocoptical
