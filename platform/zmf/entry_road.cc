// Entries of a list and their keys: see entry_road.h.
#include "entry_road.h"

#include "session_body.h"

namespace zmf {

namespace {

bool has_operation(const zmf_datatree &node, uint32_t op) {
    return node.op_explicit && node.op == op;
}

} // namespace

bool is_named(const zmf_datatree &node, std::string_view tag, std::string_view ns) {
    return node.tag != nullptr && node.ns != nullptr && tag == node.tag && ns == node.ns;
}

bool is_deleted(const zmf_datatree &node) {
    return has_operation(node, OP_DELETE) || has_operation(node, OP_REMOVE);
}

bool is_replaced(const zmf_datatree &node) {
    return has_operation(node, OP_REPLACE);
}

rcode entry_road::walk(zmf_datatree &top) {
    if (is_deleted(top) || is_replaced(top))
        return refuse(top.tag);
    const child_range below = children_of(&top);
    if (below.count == 0 && is_read())
        return walk_entry(top, meant(s_.internals()->made.entry, list_.tag, list_.ns));
    rcode status = RC_OK;
    for (uint32_t i = 0; i < below.count && status == RC_OK; ++i) {
        zmf_datatree &child = top.children[i];
        status = is_own(child, list_.tag) ? walk_entry(top, child) : walk_stranger(top, child);
    }
    return status;
}

bool entry_road::is_read() const {
    return kind() == OP_GET || kind() == OP_GET_CONFIG;
}

void entry_road::start(zmf_datatree &top) {
    s_.reset();
    s_.internals()->walked_top = &top;
    out_.internals()->keep_apart();
}

zmf_datatree &entry_road::meant(zmf_datatree &node, const char *tag, const char *ns) {
    node = {};
    node.tag = tag;
    node.ns = ns;
    return node;
}

rcode entry_road::refuse(const char *text, rcode status) {
    zmf_req_ctx &request = s_.request();
    kvo_named_free(request.err_msg);
    request.err_msg = zmf_strdup(text, "entries");
    zmf_oc_error_path(ctx_);
    return status;
}

rcode entry_road::refuse_below(zmf_datatree &container, const zmf_datatree &child) {
    zmf_map_add_to_node_hierarchy(ctx_, &container, ZMF_HIER_CONTAINER);
    const rcode status = refuse(child.tag);
    zmf_map_remove_from_node_hierarchy(ctx_, &container);
    return status;
}

rcode entry_road::call(const char *entry_name, zmf_datatree &node) {
    return by_.node_function(entry_name)(ctx_, &node, out_.root());
}

rcode entry_road::enter(zmf_datatree &top, zmf_datatree &entry, const char *&name) {
    start(top);
    zmf_map_add_to_node_hierarchy(ctx_, &top, ZMF_HIER_CONTAINER);
    zmf_map_add_to_node_hierarchy(ctx_, &entry, ZMF_HIER_LIST);
    const rcode status = zmf_map_update_current_list_node(ctx_, list_.path);
    return status == RC_OK ? check_key(entry, name) : status;
}

void entry_road::leave(zmf_datatree &top, zmf_datatree &entry) {
    zmf_map_remove_from_node_hierarchy(ctx_, &entry);
    zmf_map_remove_from_node_hierarchy(ctx_, &top);
}

rcode entry_road::check_key(const zmf_datatree &entry, const char *&name) {
    const child_range below = children_of(&entry);
    const zmf_datatree *key = nullptr;
    uint32_t keys = 0;
    for (uint32_t i = 0; i < below.count; ++i)
        if (is_own(below.nodes[i], "name")) {
            key = &below.nodes[i];
            ++keys;
        }
    if (key != nullptr && key->has_value && key->value != nullptr)
        name = key->value;
    if (below.count == 0 && !is_read()) {
        zmf_oc_error_path(ctx_);
        return RC_SUBTREE_ERROR;
    }
    const bool has_name = *name != '\0';
    if (!is_read() && has_name) {
        const rcode status = zmf_map_check_oc_leafref(ctx_, list_.path, "config", "name", &entry);
        if (status != RC_OK)
            return status;
    }
    if (keys > 1 || (!is_read() && !has_name))
        return refuse("name", RC_LIST_KEY_ERROR);
    if (key != nullptr && is_deleted(*key)) {
        zmf_oc_error_path(ctx_);
        return RC_KEY_DELETE;
    }
    return RC_OK;
}

} // namespace zmf
