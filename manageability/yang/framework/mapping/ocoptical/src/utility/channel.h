// Classes of the carriers of logical channels (ITYPE_*), and the sibling module.
#pragma once

#include <cstdint>

#include "utility/text.h"
#include "zmf.h"

namespace ocoptical {

// ITYPE_COHERENT_DSP and ITYPE_OTU4: both are carried by an OTU controller.
constexpr bool is_otu_class(uint32_t itype) {
    return (itype & ~2u) == ITYPE_COHERENT_DSP;
}

// The channel under walk, and the name and class of what carries it.
struct channel_under_walk {
    explicit channel_under_walk(zmf_map_ctx ctx);

    int32_t number; // 0: the request names none, so that all are meant
    char carrier_name[text_size] = "";
    uint32_t itype;

    bool is_all() const { return number == 0; }
};

// The sibling module takes part in an edit where there is no optical terminal device.
bool wants_sibling(zmf_map_ctx ctx);

} // namespace ocoptical
