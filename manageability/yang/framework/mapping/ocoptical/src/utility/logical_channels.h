// Native entries of an answer and the logical channels that they carry.
#pragma once

#include "utility/text.h"
#include "zmf.h"

namespace ocoptical {

// A native list, and the leaf that names its carrier.
struct carrier_list {
    const char *path;
    const char *key;
};

// The carrier of the entry under walk and its logical channel, if it has one.
struct carrier {
    carrier(zmf_map_ctx ctx, const carrier_list &list);

    const char *name = nullptr; // null where the read failed
    rcode name_read;
    char logical_id[text_size] = "";
    rcode channel_found; // 0, or what the look-up of the number answered
    bool has_channel() const { return channel_found == RC_OK; }
};

// The entry of a channel becomes the one that later adds fall under; it is made where it is missing.
rcode open_channel(zmf_map_ctx ctx, zmf_datatree *tree, const char *logical_id);

// The logical channel of the controller behind an optics port; 0, or what the look-up of the number answered.
rcode find_controller_channel(const char *optics, char *logical_id);

// An optics port and the logical channel of the controller behind it, to which figures that are read at the port
// belong.
struct optics_carrier {
    optics_carrier(zmf_map_ctx ctx, zmf_datatree *tree, const carrier_list &ports);

    const char *name = nullptr;
    rcode name_read;
    char logical_id[text_size] = ""; // empty for a line port without a channel, valid as it is
    bool has_channel;                // the number was found
    bool is_valid;                   // the figures may be reported
};

} // namespace ocoptical
