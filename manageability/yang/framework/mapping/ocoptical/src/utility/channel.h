// Classes of the carriers of logical channels (ITYPE_*).
#pragma once

#include <cstdint>

#include "zmf.h"

namespace ocoptical {

// ITYPE_COHERENT_DSP and ITYPE_OTU4: both are carried by an OTU controller.
constexpr bool is_otu_class(uint32_t itype) {
    return (itype & ~2u) == ITYPE_COHERENT_DSP;
}

} // namespace ocoptical
