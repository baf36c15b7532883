// The operations of the framework that a walk from OpenConfig to native paths uses.
#include <algorithm>
#include <cstring>

#include "operation.h"
#include "zmf.h"

using namespace zmf;

namespace {

using body = session::body;

bool is_plain_name(const char *path) {
    return *path != '\0' && std::strpbrk(path, "/[]") == nullptr;
}

// A key that is added to a node of the request goes to the end of its children.
rcode add_to_request(body &s, zmf_datatree *node, const char *path, const char *ns, const char *value,
                     const zmf_datatree *source, zmf_datatree **node_out) {
    const char *tag = *path == '/' ? path + 1 : path;
    if (!is_plain_name(tag))
        return rc_bad_path;
    child_range children = children_of(node);
    auto *child = const_cast<zmf_datatree *>(s.children.find(children, tag));
    if (child == nullptr) {
        zmf_datatree *grown = s.added_keys.with_one_more(children);
        if (grown == nullptr)
            return rc_too_big;
        child = &grown[children.count];
        child->tag = s.added_tags.text(s.added_tags.number(tag));
        child->ns = ns == nullptr ? nullptr : s.added_tags.text(s.added_tags.number(ns));
        node->children = grown;
        node->child_count = children.count + 1;
        node->has_children = 1;
    }
    if (value != nullptr && (!child->has_value || source != nullptr)) {
        child->value = s.added_values.keep(value);
        child->has_value = 1;
    }
    if (source != nullptr) {
        child->op = source->op;
        child->op_explicit = source->op_explicit;
    }
    if (node_out != nullptr)
        *node_out = child;
    return RC_OK;
}

rcode add_path(body &s, zmf_datatree *tree, const char *path, const char *ns, const char *value,
               const zmf_datatree *source, zmf_datatree **node_out, bool list_flag) {
    if (tree == nullptr || path == nullptr)
        return rc_bad_path;
    if (tree->framework == nullptr)
        return add_to_request(s, tree, path, ns, value, source, node_out);
    output_tree::body &out = *tree_of(tree);
    const known_path *steps = ns == nullptr ? nullptr : out.read(number_of(tree), path);
    if (steps == nullptr)
        return rc_bad_path;
    uint32_t added = 0;
    const rcode status =
        out.add(number_of(tree), {steps, steps->steps.size(), ns, value, source, list_flag, s.list_depth},
                s.current_entries, added);
    if (status == RC_OK && node_out != nullptr)
        *node_out = out.hand_out(added);
    return status;
}

rcode update_namespace(zmf_datatree *tree, const char *path, const char *ns) {
    if (tree == nullptr || ns == nullptr || tree->framework == nullptr)
        return rc_bad_path;
    output_tree::body &out = *tree_of(tree);
    const known_path *steps = out.read(number_of(tree), path);
    if (steps == nullptr)
        return rc_bad_path;
    if (const uint32_t found = out.find(number_of(tree), *steps))
        out.set_namespace(found, ns);
    return RC_OK;
}

rcode update_current_list(body &s, const char *list_path) {
    if (list_path == nullptr)
        return rc_bad_path;
    const zmf_datatree *node = s.top();
    if (node == nullptr)
        return rc_no_position;
    uint32_t path = s.paths.number(list_path);
    child_range children = children_of(node);
    list_position position{path, s.list_depth, node, children.nodes, children.count};
    for (size_t i = s.positions.size(); i != 0 && s.positions[i - 1].level == s.list_depth; --i) {
        if (s.positions[i - 1].path == path) {
            s.positions[i - 1] = position;
            return RC_OK;
        }
    }
    s.positions.push_back(position);
    return RC_OK;
}

const list_position *current_entry(const body &s, const char *list_path) {
    const auto is_of_list = [&](const list_position &each) {
        return std::strcmp(s.paths.text(each.path), list_path) == 0;
    };
    const auto found = std::find_if(s.positions.rbegin(), s.positions.rend(), is_of_list);
    return found == s.positions.rend() ? nullptr : &*found;
}

rcode get_node_info(body &s, const char *list_path, const char *key_name, const char **text) {
    if (list_path == nullptr || key_name == nullptr || text == nullptr)
        return rc_bad_path;
    const list_position *entry = current_entry(s, list_path);
    if (entry == nullptr)
        return rc_no_such_entry;
    child_range children = children_of(entry->node);
    if (children.count == 0)
        children = {entry->children, entry->child_count};
    const zmf_datatree *key = s.children.find(children, key_name);
    if (key == nullptr || !key->has_value || key->value == nullptr)
        return rc_no_such_entry;
    *text = key->value;
    return RC_OK;
}

const char *value_of(const zmf_datatree *leaf) {
    return leaf != nullptr && leaf->has_value ? leaf->value : nullptr;
}

rcode check_leafref(body &s, const char *container, const char *key_tag, const zmf_datatree *list_node) {
    if (container == nullptr || key_tag == nullptr || list_node == nullptr)
        return rc_bad_path;
    child_range children = children_of(list_node);
    const char *key = value_of(s.children.find(children, key_tag));
    const zmf_datatree *below = s.children.find(children, container);
    const char *leaf = value_of(s.children.find(children_of(below), key_tag));
    if (key == nullptr || leaf == nullptr || std::strcmp(key, leaf) == 0)
        return RC_OK;
    s.last_leafref = {s.depth, container, key_tag, {}};
    s.last_leafref.message = std::string("the key ") + key_tag + " is \"" + key + "\", but " + container + "/" +
                             key_tag + " is \"" + leaf + "\"";
    return rc_leafref_mismatch;
}

bool is_delete(const zmf_datatree *node) {
    return node != nullptr && (node->op == OP_DELETE || node->op == OP_REMOVE);
}

} // namespace

extern "C" {

rcode zmf_map_datatree_add_path_flagged(zmf_map_ctx ctx, struct zmf_datatree *tree, const char *path, const char *ns,
                                        const char *value, const struct zmf_datatree *source,
                                        struct zmf_datatree **node_out, unsigned int list_flag,
                                        unsigned int cross_module_flag) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return rc_bad_path;
    rcode status = answer(*s, [&] { return add_path(*s, tree, path, ns, value, source, node_out, list_flag != 0); });
    tell(*s, operation::add_path, status, [&](call &made) {
        made.path = path;
        made.ns = ns;
        made.value = value;
        made.source = source;
        made.list_flag = list_flag != 0;
        made.cross_module_flag = cross_module_flag != 0;
        made.node_out = node_out != nullptr;
    });
    return status;
}

rcode zmf_map_datatree_update_namespace(zmf_map_ctx ctx, struct zmf_datatree *tree, const char *path, const char *ns,
                                        unsigned int) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return rc_bad_path;
    rcode status = answer(*s, [&] { return update_namespace(tree, path, ns); });
    tell(*s, operation::update_namespace, status, [&](call &made) {
        made.path = path;
        made.ns = ns;
    });
    return status;
}

void zmf_map_add_to_node_hierarchy(zmf_map_ctx ctx, const struct zmf_datatree *node, unsigned int kind) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return;
    s->push(node, kind);
    tell(*s, operation::add_to_hierarchy, 0, [&](call &made) {
        made.node = node;
        made.number = kind;
    });
}

void zmf_map_remove_from_node_hierarchy(zmf_map_ctx ctx, const struct zmf_datatree *node) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return;
    s->pop(node);
    tell(*s, operation::remove_from_hierarchy, 0, [&](call &made) { made.node = node; });
}

rcode zmf_map_update_current_list_node(zmf_map_ctx ctx, const char *list_path) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return rc_bad_path;
    rcode status = answer(*s, [&] { return update_current_list(*s, list_path); });
    tell(*s, operation::update_current_list, status, [&](call &made) {
        made.path = list_path;
        made.node = s->top();
    });
    return status;
}

rcode zmf_map_get_node_info(zmf_map_ctx ctx, const char *list_path, const char *key_name, const char **text) {
    body *s = session_of(ctx);
    if (text != nullptr)
        *text = nullptr;
    if (s == nullptr)
        return rc_bad_path;
    rcode status = answer(*s, [&] { return get_node_info(*s, list_path, key_name, text); });
    tell(*s, operation::get_node_info, status, [&](call &made) {
        made.path = list_path;
        made.key = key_name;
        made.value = text == nullptr ? nullptr : *text;
    });
    return status;
}

void zmf_map_util_itree_stack_push(zmf_map_ctx ctx, struct zmf_datatree *nodes, uint32_t count, zmf_itree_fn fn) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return;
    s->itree.push_back({nodes, count, fn});
    tell(*s, operation::stack_push, 0, [&](call &made) { made.number = count; });
}

void zmf_map_util_itree_stack_pop(zmf_map_ctx ctx) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return;
    if (s->itree.empty())
        ++s->imbalances;
    else
        s->itree.pop_back();
    tell(*s, operation::stack_pop, 0, [](call &) {});
}

void zmf_map_util_itree_stack_peak(zmf_map_ctx ctx, struct zmf_itree_frame **frame) {
    body *s = session_of(ctx);
    if (s == nullptr || frame == nullptr)
        return;
    *frame = s->itree.empty() ? nullptr : &s->itree.back();
    tell(*s, operation::stack_peak, 0, [](call &) {});
}

uint32_t zmf_map_util_itree_stack_size(zmf_map_ctx ctx) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return 0;
    auto size = static_cast<uint32_t>(s->itree.size());
    tell(*s, operation::stack_size, size, [](call &) {});
    return size;
}

bool zmf_map_do_these_match(const char *a, const char *b) {
    bool same = a != nullptr && b != nullptr && *a == *b && std::strcmp(a, b) == 0;
    if (body *s = active_session) {
        if (same)
            s->note_match(a);
        tell(*s, operation::match, same, [&](call &made) {
            made.path = a;
            made.ns = b;
        });
    }
    return same;
}

bool zmf_map_is_request_delete(const struct zmf_datatree *node) {
    bool result = is_delete(node);
    if (body *s = active_session)
        tell(*s, operation::is_delete, result, [&](call &made) { made.node = node; });
    return result;
}

bool zmf_map_is_request_add(zmf_map_ctx ctx, const struct zmf_datatree *node) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return false;
    uint32_t kind = s->req.request->op_type;
    bool result = node != nullptr && kind != OP_GET_CONFIG && kind != OP_GET && !is_delete(node);
    tell(*s, operation::is_add, result, [&](call &made) { made.node = node; });
    return result;
}

rcode zmf_map_check_oc_leafref(zmf_map_ctx ctx, const char *list_path, const char *container, const char *key_tag,
                               const struct zmf_datatree *list_node) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return rc_bad_path;
    rcode status = answer(*s, [&] { return check_leafref(*s, container, key_tag, list_node); });
    tell(*s, operation::check_leafref, status, [&](call &made) {
        made.path = list_path;
        made.key = key_tag;
        made.node = list_node;
    });
    return status;
}

rcode zmf_map_validate_data_ns(zmf_map_ctx ctx, const struct zmf_datatree *node, const char *ns, unsigned int) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return rc_bad_path;
    rcode status = answer(*s, [&] {
        bool valid = node != nullptr && ns != nullptr && node->has_value_ns && node->value_ns != nullptr &&
                     std::strcmp(node->value_ns, ns) == 0;
        return valid ? RC_OK : RC_NAMESPACE_MISSING;
    });
    tell(*s, operation::validate_ns, status, [&](call &made) {
        made.ns = ns;
        made.node = node;
    });
    return status;
}

void zmf_oc_error_path(zmf_map_ctx ctx) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return;
    ++s->marks;
    s->last_mark = {s->depth, ++s->events};
    tell(*s, operation::error_path, 0, [](call &) {});
}

} // extern "C"
