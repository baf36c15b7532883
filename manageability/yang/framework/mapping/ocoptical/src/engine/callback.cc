// The bodies behind the mapping column. To add a form: its maker in callback.h, its line in run().
#include "engine/callback.h"

#include "engine/client_text.h"
#include "engine/request.h"

namespace ocoptical {

namespace {

rcode refuse_leaf(zmf_map_ctx ctx, const zmf_datatree *node) {
    zmf_oc_error_path(ctx);
    set_err_msg(ctx, node->tag);
    return RC_UNSUPPORTED_NODE;
}

// The source node follows every request that is not a read, a merge too.
rcode add_path(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const target &at, const char *value) {
    return add(ctx, tree, at, value, is_read(ctx) ? nullptr : node);
}

rcode run(const mapping &m, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    const auto value = [&] { return m.value != nullptr ? m.value(ctx, node, tree) : node->value; };
    switch (m.how) {
    case form::nothing:
        return RC_OK;
    case form::refuse:
        return refuse_leaf(ctx, node);
    case form::path:
        return add_path(ctx, node, tree, m.at, value());
    case form::list:
        return add_list(ctx, tree, m.at, zmf_map_is_request_delete(node) ? node : nullptr);
    case form::edit_rule:
        return add_by_edit_rule(ctx, node, tree, m.at, value());
    case form::read_only:
        return is_read(ctx) ? add(ctx, tree, m.at, value()) : RC_OK;
    case form::up:
        return add_up(ctx, node, tree, m.up, m.value, is_read(ctx) ? nullptr : node);
    case form::convert:
        return m.node(ctx, node, tree);
    }
    return RC_OK;
}

// A container whose children are walked is mapped by them.
rcode add_container(const frame &f, const mapping &m, zmf_map_ctx ctx, const zmf_datatree *node, unsigned int count,
                    zmf_datatree *tree) {
    if (count != 0) {
        static uint32_t filter_word = fresh_filter_word;
        log_statement(ctx, {f.function, f.line, &filter_word}, TRC("No mapping done for this node"));
        return RC_OK;
    }
    static uint32_t filter_word = fresh_filter_word;
    log_statement(ctx, {f.function, f.line, &filter_word}, TRC("No subtrees"));
    return add_path(ctx, node, tree, m.at, node->value);
}

} // namespace

// A container without mapping tests its arguments on the high side; a list or leaf without mapping does not.
rcode default_container(frame &f, side s, const mapping &m, zmf_map_ctx ctx, const zmf_datatree *node,
                        unsigned int count, zmf_datatree *tree) {
    const bool untested = s == side::low && m.how == form::nothing;
    return in_frame(
        f, ctx, [&] { return untested || are_given(node, tree); },
        [&] {
            if (m.container != nullptr) {
                return m.container(ctx, node, count, tree);
            }
            return m.how == form::path ? add_container(f, m, ctx, node, count, tree) : run(m, ctx, node, tree);
        });
}

rcode default_node(frame &f, const mapping &m, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    const bool untested = m.how == form::nothing;
    return in_frame(
        f, ctx, [&] { return untested || are_given(node, tree); }, [&] { return run(m, ctx, node, tree); });
}

rcode default_hook_ox(frame &f, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    return in_frame(
        f, ctx, [&] { return are_given(node, tree); },
        [&] {
            if (!zmf_map_is_request_add(ctx, node)) {
                return RC_OK;
            }
            set_err_msg(ctx, node->tag);
            zmf_oc_error_path(ctx);
            return RC_UNSUPPORTED_AUGMENT;
        });
}

rcode default_hook_xo(frame &f, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    return in_frame(
        f, ctx, [&] { return are_given(node, tree); }, [] { return RC_OK; });
}

rcode framed_where(bool given, frame &f, body_fn body, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    return in_frame(
        f, ctx, [&] { return given; }, [&] { return body(ctx, node, tree, f.function); });
}

rcode framed(frame &f, body_fn body, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {
    return framed_where(are_given(node, tree), f, body, ctx, node, tree);
}

rcode framed_if(bool (*applies)(zmf_map_ctx), frame &f, body_fn body, zmf_map_ctx ctx, const zmf_datatree *node,
                zmf_datatree *tree) {
    bool runs = false;
    const auto are_sound = [&] {
        runs = applies(ctx);
        return !runs || are_given(node, tree);
    };
    return in_frame(f, ctx, are_sound, [&] { return runs ? body(ctx, node, tree, f.function) : RC_OK; });
}

const char *framed_value(frame &f, value_body_fn body, zmf_map_ctx ctx, const zmf_datatree *node) {
    const char *text = nullptr;
    (void)in_frame(
        f, ctx, [] { return true; },
        [&] {
            text = body(ctx, node, f.function);
            return RC_OK;
        });
    return text;
}

} // namespace ocoptical
