// What a native leaf gives its OpenConfig leaf.
#pragma once

#include "zmf.h"

namespace ocoptical {

struct up_value {
    enum class form : uint8_t { raw, converted, decimal };
    form how;
    zmf_value_fn convert = nullptr;
};

// The native text.
consteval up_value raw() {
    return {up_value::form::raw};
}
// What a conversion of the node gives, a null text too.
consteval up_value converted(zmf_value_fn by) {
    return {up_value::form::converted, by};
}
// A number in scientific notation as a decimal one.
consteval up_value decimal() {
    return {up_value::form::decimal};
}

// `buffer` holds text_size bytes, for a text that has no other home. A null node is one without a value.
const char *value_of(const up_value &value, zmf_map_ctx ctx, const zmf_datatree *node, char *buffer);

// Whether an operation has its arguments: one that makes a decimal does not look for its node.
bool are_given(const up_value &value, const zmf_datatree *node, const zmf_datatree *tree);

} // namespace ocoptical
