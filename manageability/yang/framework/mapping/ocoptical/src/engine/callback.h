// Callbacks: the mapping column of a model table, the default body of each form, and the makers of hand-written
// functions.
//
// A maker supplies what every function of the plug-in has around its work: the assertion of the context, "Start", the
// argument test, "End". It owns the trace statements of that frame; the work is told once, in ordinary functions.
#pragma once

#include "engine/add.h"
#include "engine/export.h"
#include "engine/model.h"
#include "engine/trace.h"
#include "engine/up.h"
#include "zmf.h"

namespace ocoptical {

enum class form : uint8_t { nothing, refuse, path, list, edit_rule, read_only, up, convert };

struct mapping {
    form how = form::nothing;
    target at = {nullptr, nullptr};
    zmf_node_fn node = nullptr;
    zmf_cont_fn container = nullptr;
    zmf_value_fn value = nullptr; // null: the node's own value
    up_leaf up = {};
};

// The mapping column.
consteval mapping nothing() {
    return {};
}
// A leaf that is not supported: its tag goes to the client.
consteval mapping refuse() {
    return {.how = form::refuse};
}
// A leaf without a target: refused in an OpenConfig model, left out in a native one.
consteval mapping no_leaf(side s) {
    return s == side::high ? refuse() : nothing();
}
// One path with the node's own value. A container asks for it where the request has nothing below it.
consteval mapping to_path(const char *ns, const char *path) {
    return {.how = form::path, .at = {ns, path}};
}
// One native list.
consteval mapping to_list(const char *ns, const char *path) {
    return {.how = form::list, .at = {ns, path}};
}
// One native path by the rule of a plain leaf.
consteval mapping to_leaf(const char *ns, const char *path, zmf_value_fn value = nullptr) {
    return {.how = form::edit_rule, .at = {ns, path}, .value = value};
}
// One native path that a read asks for; nothing in any other request.
consteval mapping to_read(const char *ns, const char *path, zmf_value_fn value = nullptr) {
    return {.how = form::read_only, .at = {ns, path}, .value = value};
}
// A native leaf up to its OpenConfig leaves.
consteval mapping up(const up_leaf &to, zmf_value_fn value = nullptr) {
    return {.how = form::up, .value = value, .up = to};
}
// A conversion, called with the callback's own arguments.
consteval mapping convert(zmf_node_fn conversion) {
    return {.how = form::convert, .node = conversion};
}
consteval mapping convert(zmf_cont_fn conversion) {
    return {.how = form::convert, .container = conversion};
}

// The trace statements of a frame. They bear the line of the maker: there is no other line in the source.
struct frame {
    const char *function;
    int line;
    uint32_t filter_words[3] = {fresh_filter_word, fresh_filter_word, fresh_filter_word};

    trace_point start() { return {function, line, &filter_words[0]}; }
    trace_point bad_arguments() { return {function, line, &filter_words[1]}; }
    trace_point end() { return {function, line, &filter_words[2]}; }
};

#define OC_FRAME                                                                                                       \
    ocoptical::frame {                                                                                                 \
        __func__, __LINE__                                                                                             \
    }

inline bool are_given(const zmf_datatree *node, const zmf_datatree *tree) {
    return node != nullptr && tree != nullptr;
}

// What every function has around its work.
template <typename Test, typename Work>
rcode in_frame(frame &f, zmf_map_ctx ctx, Test arguments_given, Work work) {
    log_statement(ctx, f.start(), TRC("Start"));
    if (!arguments_given()) {
        return refuse_arguments(ctx, f.bad_arguments());
    }
    const rcode status = work();
    log_statement(ctx, f.end(), TRC("End"));
    return status;
}

// Default bodies: of a container, and of a list or leaf.
rcode default_container(frame &f, side s, const mapping &m, zmf_map_ctx ctx, const zmf_datatree *node,
                        unsigned int count, zmf_datatree *tree);
rcode default_node(frame &f, const mapping &m, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree);

// A child of a foreign namespace: refused where the request adds it.
rcode default_hook_ox(frame &f, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree);

// A child of a foreign namespace in an answer: ignored.
rcode default_hook_xo(frame &f, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree);

// A body behind a maker: `oc_self` is the exported name.
using body_fn = rcode (*)(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree, const char *oc_self);
rcode framed(frame &f, body_fn body, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree);
rcode framed_where(bool given, frame &f, body_fn body, zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree);
rcode framed_if(bool (*applies)(zmf_map_ctx), frame &f, body_fn body, zmf_map_ctx ctx, const zmf_datatree *node,
                zmf_datatree *tree);

#define OC_BODY(name)                                                                                                  \
    static rcode OC_JOIN(name, _body)([[maybe_unused]] zmf_map_ctx ctx, [[maybe_unused]] const zmf_datatree *node,     \
                                      [[maybe_unused]] zmf_datatree *tree, [[maybe_unused]] const char *oc_self)

// An exported function in its frame `f`, around the body that follows.
#define OC_CONVERSION(name, ...)                                                                                       \
    OC_BODY(name);                                                                                                     \
    extern "C" OC_EXPORT rcode name(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree *tree) {                   \
        assert(NULL != ctx);                                                                                           \
        static constinit ocoptical::frame f = OC_FRAME;                                                                \
        return ocoptical::__VA_ARGS__;                                                                                 \
    }                                                                                                                  \
    OC_BODY(name)

// A hand-written callback or conversion: CONVERSION(name) { ... return status; }
#define CONVERSION(name) OC_CONVERSION(name, framed(f, OC_JOIN(name, _body), ctx, node, tree))

// A conversion with an argument test of its own: `given` is an expression of `node` and `tree`.
#define CONVERSION_WHERE(given, name) OC_CONVERSION(name, framed_where(given, f, OC_JOIN(name, _body), ctx, node, tree))

// A conversion that does nothing unless `applies`, a question about the context; only then its arguments are tested.
#define CONVERSION_IF(applies, name) OC_CONVERSION(name, framed_if(applies, f, OC_JOIN(name, _body), ctx, node, tree))

// A conversion of a container: CONTAINER_CONVERSION(name) { ... return status; }. Its child count says nothing to it.
#define CONTAINER_CONVERSION(name)                                                                                     \
    OC_BODY(name);                                                                                                     \
    extern "C" OC_EXPORT rcode name(zmf_map_ctx ctx, const zmf_datatree *node, unsigned int /*count*/,                 \
                                    zmf_datatree *tree) {                                                              \
        assert(NULL != ctx);                                                                                           \
        static constinit ocoptical::frame f = OC_FRAME;                                                                \
        return ocoptical::framed(f, OC_JOIN(name, _body), ctx, node, tree);                                            \
    }                                                                                                                  \
    OC_BODY(name)

// A value conversion: its text is static, or null.
using value_body_fn = const char *(*)(zmf_map_ctx ctx, const zmf_datatree *node, const char *oc_self);
const char *framed_value(frame &f, value_body_fn body, zmf_map_ctx ctx, const zmf_datatree *node);

#define OC_VALUE_BODY(name)                                                                                            \
    static const char *OC_JOIN(name, _body)([[maybe_unused]] zmf_map_ctx ctx,                                          \
                                            [[maybe_unused]] const zmf_datatree *node,                                 \
                                            [[maybe_unused]] const char *oc_self)

// VALUE_CONVERSION(name) { ... return text; }: a null node counts as one without a value.
#define VALUE_CONVERSION(name)                                                                                         \
    OC_VALUE_BODY(name);                                                                                               \
    extern "C" OC_EXPORT const char *name(zmf_map_ctx ctx, const zmf_datatree *node, zmf_datatree * /*tree*/) {        \
        assert(NULL != ctx);                                                                                           \
        static constinit ocoptical::frame f = OC_FRAME;                                                                \
        return ocoptical::framed_value(f, OC_JOIN(name, _body), ctx, node);                                            \
    }                                                                                                                  \
    OC_VALUE_BODY(name)

} // namespace ocoptical
