// What a native leaf gives its OpenConfig leaf.
#include "utility/up_value.h"

#include "engine/callback.h"
#include "exported.h"

namespace ocoptical {

const char *value_of(const up_value &value, zmf_map_ctx ctx, const zmf_datatree *node, char *buffer) {
    const char *native = node != nullptr ? node->value : nullptr;
    switch (value.how) {
    case up_value::form::raw:
        return native;
    case up_value::form::converted:
        return value.convert(ctx, node, nullptr);
    case up_value::form::decimal:
        (void)oc_optical_convert_scientific_to_decimal_notation(native, buffer);
        return buffer;
    }
    return nullptr;
}

bool are_given(const up_value &value, const zmf_datatree *node, const zmf_datatree *tree) {
    return value.how == up_value::form::decimal ? tree != nullptr : are_given(node, tree);
}

} // namespace ocoptical
