// Native leaves up to the logical channel of their carrier.
#include "utility/channel_up.h"

#include "engine/add.h"
#include "engine/request.h"
#include "namespaces.h"

namespace ocoptical {

namespace {

rcode look_up_and_add(channel_frame &f, const channel_row &row, zmf_map_ctx ctx, const zmf_datatree *node,
                      zmf_datatree *tree, const char *value) {
    const carrier from(ctx, row.list);
    const char *native = node != nullptr ? node->value : nullptr;
    const auto log = [&](const log_text &text, uint32_t *filter_word, auto... arguments) {
        if (text.text != nullptr) {
            log_statement(ctx, {f.around.function, f.around.line, filter_word}, text, arguments...);
        }
    };
    log(row.found, &f.filter_words[0], shown(from.name), static_cast<const char *>(from.logical_id), shown(native));
    log(row.values, &f.filter_words[1], shown(native), shown(value));
    return add_channel_leaf(ctx, tree, from, row.path, value);
}

} // namespace

rcode add_channel_leaf(zmf_map_ctx ctx, zmf_datatree *tree, const carrier &from, const char *path, const char *value,
                       rcode otherwise) {
    if (!from.has_channel() || !is_get(ctx)) {
        return otherwise;
    }
    return add(ctx, tree, {ZMF_NS_OC_TERMINAL_DEVICE, path}, value);
}

rcode add_to_channel(channel_frame &f, const channel_row &row, zmf_map_ctx ctx, const zmf_datatree *node,
                     zmf_datatree *tree) {
    char decimal_text[text_size] = "";
    const char *value = nullptr;
    const auto convert_and_test = [&] {
        value = value_of(row.value, ctx, node, decimal_text);
        return are_given(row.value, node, tree);
    };
    return in_frame(f.around, ctx, convert_and_test, [&] { return look_up_and_add(f, row, ctx, node, tree, value); });
}

} // namespace ocoptical
