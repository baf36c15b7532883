// The plug-in with callbacks replaced by ones that a matrix cannot be made of.
#include "zmf.h"

#define ODD(name, status)                                                                                              \
    extern "C" __attribute__((visibility("default"))) rcode name(zmf_map_ctx, const zmf_datatree *, zmf_datatree *);   \
    rcode name(zmf_map_ctx, const zmf_datatree *, zmf_datatree *) {                                                    \
        return status;                                                                                                 \
    }

// A status that nobody has, a leaf that takes no value, and a native leaf that fills nothing.
ODD(ymap_ox_oc_optical_openconfigterminaldevice_leaf_lvla_terminaldevice_config_description, 0xdead)
ODD(ymap_ox_oc_optical_openconfigterminaldevice_leaf_lvla_terminaldevice_config_adminstate, RC_VALUE_OUT_OF_RANGE)
ODD(ymap_xo_oc_optical_corvaneterminaldevicecfg_leaf_lvla_logicalchannels_channel_description, RC_OK)
