// The exported columns of all enumeration tables, the mode label catalogues, and the plain look-ups.
#include "utility/enumerations.h"

#include <iterator>

#include "engine/callback.h"
#include "engine/export.h"
#include "exported.h"
#include "utility/safe_text.h"

#define TABLE(name) const char *const name##_low_data[] = {
#define ROW(low, high) low,
#define END                                                                                                            \
    }                                                                                                                  \
    ;
#include "utility/enumerations.def"
#undef TABLE
#undef ROW

#define TABLE(name) const char *const name##_high_data[] = {
#define ROW(low, high) high,
#include "utility/enumerations.def"
#undef TABLE
#undef ROW
#undef END

// Labels of modes whose leaves pass as plain numbers: for the modules that load the plug-in.
const char *const cpr_ext_win_mode_high_data[] = {
    "160-symbols : 0", "64-symbols  : 1", "65-symbols  : 2", "66-symbols  : 3", "69-symbols  : 4",
    "75-symbols  : 5", "96-symbols  : 6", "160-symbols : 7", "288-symbols : 8", "544-symbols : 9",
};
const char *const cpr_win_mode_high_data[] = {
    "4-symbols : 0", "8-symbols : 1", "16-symbols : 2", "32-symbols : 3", "160-symbols : 4",
};
const char *const enh_colorless_mode_high_data[] = {
    "DISABLED : 0",
    "WEAK : 1",
    "MEDIUM : 2",
    "STRONG : 3",
};
const char *const enh_sop_tol_mode_high_data[] = {
    "DISABLED : 0",
    "MODE A : 1",
    "MODE B : 2",
    "MODE C : 3",
};
const char *const nleq_comp_mode_high_data[] = {
    "DEFAULT : 0",
    "D+ HIGH <60-72>GHZ : 1",
    "D+ HIGH <30-72>GHZ : 2",
    "D+ LOW DISPERSION : 3",
    "D+ LOW DISPERSION LONG DISTANCE : 4",
};

namespace ocoptical {

#define TABLE(name)                                                                                                    \
    constinit const enumeration name = {name##_low_data, name##_high_data,                                             \
                                        static_cast<int>(std::size(name##_low_data))};
#define ROW(low, high)
#define END
#include "utility/enumerations.def"
#undef TABLE
#undef ROW
#undef END

namespace {

const char *const *searched(const enumeration &table, direction to) {
    return to == direction::to_high ? table.low : table.high;
}

const char *const *answered(const enumeration &table, direction to) {
    return to == direction::to_high ? table.high : table.low;
}

const char *value_of(const zmf_datatree *node) {
    return node != nullptr ? node->value : nullptr;
}

} // namespace

const char *look_up(const char *caller, const enumeration &table, direction to, const char *text, pick which) {
    const char *found = nullptr;
    for (int row = 0; row < table.rows && (found == nullptr || which == pick::last); ++row) {
        if (framework_texts_match(caller, text, searched(table, to)[row])) {
            found = answered(table, to)[row];
        }
    }
    return found;
}

namespace {

// A null value is not searched for, or it is and matches no row.
enum class null_value : uint8_t { skipped, searched };

const char *plain_look_up(const char *caller, const enumeration &table, direction to, null_value null,
                          const char *text) {
    return text == nullptr && null == null_value::skipped ? nullptr : look_up(caller, table, to, text);
}

} // namespace

const char *look_up_traced(zmf_map_ctx ctx, const traced_enumeration &by, const char *low, const trace_point &tried,
                           const trace_point &matched) {
    for (int row = 0; row < by.table.rows; ++row) {
        const text_comparison compared = compare_texts(low, by.table.low[row]);
        log_statement(ctx, tried, by.tried, row, shown(low), compared.result, compared.indicator);
        if (compared.match()) {
            log_statement(ctx, matched, by.matched, low, by.table.high[row]);
            return by.table.high[row];
        }
    }
    return nullptr;
}

} // namespace ocoptical

using namespace ocoptical;

#define LOOK_UP(function, table, to, null)                                                                             \
    VALUE_CONVERSION(function) {                                                                                       \
        return plain_look_up(oc_self, table, direction::to, null_value::null, value_of(node));                         \
    }

// clang-format off
LOOK_UP(oc_optical_convert_logical_channel_type_to_high,          logical_channel_type, to_high, skipped)
LOOK_UP(oc_optical_convert_logical_channel_type_to_low,           logical_channel_type, to_low,  skipped)
LOOK_UP(oc_optical_convert_logical_channel_rate_class_to_high,    rate_class,           to_high, skipped)
LOOK_UP(oc_optical_convert_rate_class_to_low,                     rate_class,           to_low,  skipped)
LOOK_UP(oc_optical_convert_logical_channel_trib_protocol_to_high, trib_protocol,        to_high, skipped)
LOOK_UP(oc_optical_convert_trib_protocol_to_low,                  trib_protocol,        to_low,  skipped)
LOOK_UP(oc_optical_admin_state_data_to_high,                      admin_state,          to_high, searched)
LOOK_UP(oc_optical_admin_state_data_to_low,                       admin_state,          to_low,  skipped)
LOOK_UP(oc_optical_loopback_mode_to_high,                         loopback_mode,        to_high, searched)
LOOK_UP(oc_optical_loopback_mode_to_low,                          loopback_mode,        to_low,  skipped)
LOOK_UP(oc_optical_LCA_assign_type_to_high,                       assignment_type,      to_high, searched)
LOOK_UP(oc_optical_LCA_assign_type_to_low,                        assignment_type,      to_low,  skipped)
LOOK_UP(oc_optical_eth_client_als_high_to_low,                    client_als,           to_low,  skipped)
// clang-format on

VALUE_CONVERSION(oc_optical_eth_client_als_low_to_high) {
    const char *low = value_of(node);
    TRACE(ctx, TRC("CLIENT ALS Configured VALUE: %s "), low != nullptr ? low : "(null)");
    const char *high = look_up(oc_self, client_als, direction::to_high, low);
    if (high != nullptr) {
        TRACE(ctx, TRC("CLIENT ALS Configured VALUE LOW:%s, HIGH: %s "), low, high);
    }
    return high;
}

#define TRACED_LOOK_UP(function, table, tried, matched)                                                                \
    VALUE_CONVERSION(function) {                                                                                       \
        static constexpr traced_enumeration row = {table, TRC(tried), TRC(matched)};                                   \
        static uint32_t words[] = {fresh_filter_word, fresh_filter_word};                                              \
        const char *low = value_of(node);                                                                              \
        return low == nullptr                                                                                          \
                   ? nullptr                                                                                           \
                   : look_up_traced(ctx, row, low, {oc_self, __LINE__, &words[0]}, {oc_self, __LINE__, &words[1]});    \
    }

TRACED_LOOK_UP(oc_optical_convert_oper_client_als_to_high, oper_client_als, "OC_OPT : i %d CLIENT ALS %s ret %d ind %d",
               "CLIENT ALS VALUE LOW:%s, HIGH: %s ")
TRACED_LOOK_UP(oc_optical_convert_oper_loopback_mode_to_high, oper_loopback,
               "OC_OPT : i %d LOOPBACK MODE %s ret %d ind %d", "LOOPBACK VALUE  LOw:%s, HIGH: %s ")
