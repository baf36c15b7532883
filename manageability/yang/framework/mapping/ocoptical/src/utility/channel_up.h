// Native leaves up to the logical channel of their carrier. An operation reads the carrier of its entry, and adds its
// leaf in a get of operational data if the carrier has a channel:
//
//     //         Function                            Carrier      Leaf                                     Value
//     CHANNEL_UP(oc_optical_q_value_instant_to_high, controllers, OC_CHANNEL "/otn/state/q-value/instant", raw())
#pragma once

#include "engine/callback.h"
#include "engine/trace.h"
#include "utility/logical_channels.h"
#include "utility/up_value.h"
#include "zmf.h"

namespace ocoptical {

struct channel_row {
    carrier_list list;
    const char *path;
    up_value value;       // converted before the arguments are tested
    log_text found = {};  // takes carrier, channel, native text
    log_text values = {}; // takes native text and value
};

struct channel_frame {
    frame around;
    uint32_t filter_words[2] = {fresh_filter_word, fresh_filter_word};
};

rcode add_to_channel(channel_frame &f, const channel_row &row, zmf_map_ctx ctx, const zmf_datatree *node,
                     zmf_datatree *tree);

#define CHANNEL_UP(function, ...)                                                                                      \
    extern "C" OC_EXPORT rcode function(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {               \
        assert(NULL != ctx);                                                                                           \
        static constinit ocoptical::channel_frame f = {OC_FRAME};                                                      \
        static constexpr ocoptical::channel_row row = {__VA_ARGS__};                                                   \
        return ocoptical::add_to_channel(f, row, ctx, node, tree);                                                     \
    }

// The leaf of a channel that has been looked up; `otherwise` where there is nothing to add.
rcode add_channel_leaf(zmf_map_ctx ctx, zmf_datatree *tree, const carrier &from, const char *path, const char *value,
                       rcode otherwise);
inline rcode add_channel_leaf(zmf_map_ctx ctx, zmf_datatree *tree, const carrier &from, const char *path,
                              const char *value) {
    return add_channel_leaf(ctx, tree, from, path, value, from.name_read);
}

} // namespace ocoptical
