// Enumeration texts that differ between the models, and the look-up between their columns.
#pragma once

#include "engine/trace.h"
#include "zmf.h"

namespace ocoptical {

// Two exported columns of equal length.
struct enumeration {
    const char *const *low;
    const char *const *high;
    int rows;
};

extern const enumeration logical_channel_type;
extern const enumeration assignment_type;
extern const enumeration admin_state;
extern const enumeration loopback_mode;
extern const enumeration oper_loopback;
extern const enumeration client_als;
extern const enumeration oper_client_als;
extern const enumeration rate_class;
extern const enumeration trib_protocol;
extern const enumeration otu_admin_state;
extern const enumeration odu_admin_state;
extern const enumeration ethernet_admin_state;

enum class direction : uint8_t { to_high, to_low };
enum class pick : uint8_t { first, last };

// The text of the other column, or null where no row matches; a null text matches none. The text is static.
const char *look_up(const char *caller, const enumeration &table, direction to, const char *text,
                    pick which = pick::first);

// Operational values are compared by the C library extensions, and each row that is tried leaves a line.
struct traced_enumeration {
    const enumeration &table;
    log_text tried;   // takes row, value, result, indicator
    log_text matched; // takes low, high
};

// The high text of the first row that matches, or null: a null text is tried and matches none. The statements bear
// `tried` and `matched`.
const char *look_up_traced(zmf_map_ctx ctx, const traced_enumeration &by, const char *low, const trace_point &tried,
                           const trace_point &matched);

} // namespace ocoptical
