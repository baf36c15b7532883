// Classes of the carriers of logical channels (ITYPE_*), and the sibling module.
#pragma once

#include <cstdint>

#include "zmf.h"

namespace ocoptical {

// ITYPE_COHERENT_DSP and ITYPE_OTU4: both are carried by an OTU controller.
constexpr bool is_otu_class(uint32_t itype) {
    return (itype & ~2u) == ITYPE_COHERENT_DSP;
}

// The sibling module takes part in an edit where there is no optical terminal device.
bool wants_sibling(zmf_map_ctx ctx);

} // namespace ocoptical
