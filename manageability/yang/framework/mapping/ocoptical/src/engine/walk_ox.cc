// The walkers of requests: one function for each idea of the descent. To add a kind of node, add its walker to walk_ox.
#include "engine/walk_ox.h"

#include "engine/client_text.h"
#include "engine/request.h"
#include "engine/trace.h"
#include "engine/walk.h"

namespace ocoptical {

namespace {

// What a list walker knows of the keys of an entry.
struct key_findings {
    uint32_t nodes = 0;         // key nodes that the first scan found
    bool with_value = false;    // a key node with a value
    bool without_value = false; // a key node without one
    bool non_key_child = false; // any child that is no key

    bool only_keys() const { return with_value && !without_value && !non_key_child; }
    void note_value(const zmf_datatree *key) { (key->has_value ? with_value : without_value) = true; }
};

bool falls_through(zmf_map_ctx ctx) {
    return ctx->req_ctx->walk_all == 1;
}

bool is_read_or_delete(zmf_map_ctx ctx, const zmf_datatree *node) {
    return is_read(ctx) || zmf_map_is_request_delete(node);
}

void write_op(zmf_datatree *node, uint32_t op) {
    node->op = op;
    node->op_explicit = 1;
}

// An operation that is written for a while.
struct kept_op {
    uint32_t op;
    uint32_t op_explicit : 1;
};

kept_op keep_op(const zmf_datatree *node) {
    return {node->op, node->op_explicit};
}

void restore_op(zmf_datatree *node, const kept_op &kept) {
    node->op = kept.op;
    node->op_explicit = kept.op_explicit;
}

// Below a delete the targets may be missing. True if the node gets its delete back afterwards.
bool soften_delete(zmf_datatree *node) {
    const bool softened = node->op == OP_DELETE;
    if (softened) {
        write_op(node, OP_REMOVE);
    }
    return softened;
}

void restore_delete(zmf_datatree *node, bool softened) {
    if (softened) {
        write_op(node, OP_DELETE);
    }
}

subtree hide_children(zmf_datatree *node) {
    const subtree hidden = {node->children, node->child_count, node->has_children != 0};
    if (hidden.present) {
        node->children = nullptr;
        node->child_count = 0;
        node->has_children = 0;
    }
    return hidden;
}

// All of them, also where a fall-through counted none.
void give_back_children(zmf_datatree *node, const subtree &hidden) {
    if (hidden.present) {
        node->children = hidden.children;
        node->child_count = hidden.count;
        node->has_children = 1;
    }
}

void set_schema_kind(zmf_datatree *node, uint32_t kind) {
    node->schema_kind = kind;
    node->schema_kind_set = 1;
}

void mark_key(zmf_datatree *node) {
    node->is_key = 1;
    node->key_seen = 1;
}

bool is_key(const model_node &model) {
    return model.kind == node_kind::key;
}

// Nodes of operational data are neither matched nor fallen through in any other request.
bool is_walked(zmf_map_ctx ctx, const model_node &model) {
    return !model.only_get || is_get(ctx);
}

const model_node *match(zmf_map_ctx ctx, const model_node &model, const char *tag) {
    for (const model_node &child : children_of(model)) {
        if (is_walked(ctx, child) && zmf_map_do_these_match(tag, child.tag)) {
            return &child;
        }
    }
    return nullptr;
}

const model_node *match_key(const model_node &model, const char *tag) {
    for (const model_node &child : children_of(model)) {
        if (!is_key(child)) {
            break;
        }
        if (zmf_map_do_these_match(tag, child.tag)) {
            return &child;
        }
    }
    return nullptr;
}

// A child that the model does not know: an error of the client in its own namespace, the hook's matter in another.
rcode walk_unknown(zmf_map_ctx ctx, const model_node &model, zmf_datatree *child, zmf_datatree *tree) {
    if (!zmf_map_do_these_match(child->ns, model.ns)) {
        return model.augments(ctx, child, tree);
    }
    if (model.names_unknown_tag) {
        WALK_TRACE(ERR("Unsupported tag `%s` is specified in the request."), shown(child->tag));
    } else {
        WALK_TRACE(ERR("Unsupported tag is specified in the request."));
    }
    if (is_read(ctx)) {
        return RC_OK;
    }
    set_err_msg(ctx, child->tag);
    zmf_oc_error_path(ctx);
    return RC_UNSUPPORTED_NODE;
}

// Pushes the node on the walk record and begins a level of the subtree filter.
void enter(zmf_map_ctx ctx, zmf_datatree *node, unsigned int hierarchy, uint32_t schema_kind) {
    zmf_map_add_to_node_hierarchy(ctx, node, hierarchy);
    set_schema_kind(node, schema_kind);
    if (is_read(ctx)) {
        ctx->req_ctx->filter_bits &= FILTER_ENTRY_MASK;
    }
}

// The two halves of a replace.

void begin_replace(zmf_map_ctx ctx, zmf_datatree *node) {
    write_op(node, OP_REMOVE);
    ctx->req_ctx->pass_flags |= PASS_DELETE;
    ctx->req_ctx->replace_armed = 1;
}

void end_delete_pass(zmf_map_ctx ctx, zmf_datatree *node) {
    write_op(node, OP_MERGE);
    ctx->req_ctx->pass_flags &= ~static_cast<uint32_t>(PASS_DELETE);
}

// An inner replace has disarmed an outer one by then; the outer node does not get its operation back.
void end_replace(zmf_map_ctx ctx, zmf_datatree *node) {
    zmf_req_ctx *request = ctx->req_ctx;
    request->pass_flags &= ~static_cast<uint32_t>(PASS_DELETE | PASS_ADD);
    if (request->replace_armed == 1) {
        write_op(node, OP_REPLACE);
    }
    request->replace_armed = 0;
}

// Falling through: the node stands for all of its children.

// What a list walker tells the fall-through of an entry.
struct entry_delete {
    bool wanted; // the request node is a delete
    bool by_key; // and its callback was told so beforehand: the entry goes by its keys alone
};

// True if this call began it, so that only the outermost walker ends it.
bool begin_fall_through(zmf_map_ctx ctx) {
    if (falls_through(ctx)) {
        return false;
    }
    ctx->req_ctx->walk_all = 1;
    return true;
}

void end_fall_through(zmf_map_ctx ctx, bool begun_here) {
    if (begun_here) {
        ctx->req_ctx->walk_all = 0;
    }
    ctx->req_ctx->filter_bits &= FILTER_ENTRY_MASK;
    ctx->req_ctx->filter_bits &= ~(FILTER_CONTENT | FILTER_SELECTION);
}

enum class which_children : uint8_t { keys, non_keys, non_keys_but_state, state };

bool takes_part(const model_node &child, which_children which) {
    switch (which) {
    case which_children::keys:
        return is_key(child);
    case which_children::non_keys:
        return !is_key(child);
    case which_children::non_keys_but_state:
        return !is_key(child) && !child.is_state;
    case which_children::state:
        return child.is_state;
    }
    return false;
}

// Statuses are dropped: what a fall-through cannot map, the client did not ask for by name.
void fall_to(zmf_map_ctx ctx, const model_node &model, which_children which, zmf_datatree *node, zmf_datatree *tree) {
    for (const model_node &child : children_of(model)) {
        if (takes_part(child, which) && is_walked(ctx, child)) {
            (void)walk_ox(ctx, child, node, tree);
        }
    }
}

void fall_through_container(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree) {
    const bool begun_here = begin_fall_through(ctx);
    const bool softened = soften_delete(node);
    fall_to(ctx, model, which_children::non_keys_but_state, node, tree);
    restore_delete(node, softened);
    fall_to(ctx, model, which_children::state, node, tree);
    (void)model.augments(ctx, node, tree);
    end_fall_through(ctx, begun_here);
}

// An entry named by its keys alone: all that is below it.
void fall_through_keyed_entry(zmf_map_ctx ctx, const model_node &model, zmf_datatree *entry, const subtree &below,
                              const entry_delete &deleted, zmf_datatree *tree) {
    const bool begun_here = begin_fall_through(ctx);
    const uint32_t delete_walk = ctx->req_ctx->delete_walk;
    if (deleted.by_key) {
        ctx->req_ctx->delete_walk = 1;
    }
    const kept_op kept = keep_op(entry);
    if (deleted.wanted) {
        write_op(entry, OP_REMOVE);
    }
    zmf_map_util_itree_stack_push(ctx, below.children, below.count, nullptr);
    const subtree hidden = hide_children(entry);
    fall_to(ctx, model, which_children::non_keys, entry, tree);
    (void)model.augments(ctx, entry, tree);
    end_fall_through(ctx, begun_here);
    ctx->req_ctx->delete_walk = delete_walk;
    give_back_children(entry, hidden);
    zmf_map_util_itree_stack_pop(ctx);
    if (deleted.wanted) {
        restore_op(entry, kept);
        entry->op_explicit = 1;
    }
}

// An entry with nothing in it, not even a key: all entries.
void fall_through_empty_entry(zmf_map_ctx ctx, const model_node &model, zmf_datatree *entry,
                              const entry_delete &deleted, zmf_datatree *tree) {
    const bool begun_here = begin_fall_through(ctx);
    const uint32_t delete_walk = ctx->req_ctx->delete_walk;
    if (deleted.wanted && delete_walk == 0) {
        ctx->req_ctx->delete_walk = 1;
    }
    const bool softened = deleted.wanted && soften_delete(entry);
    fall_to(ctx, model, which_children::keys, entry, tree);
    fall_to(ctx, model, which_children::non_keys_but_state, entry, tree);
    restore_delete(entry, softened);
    fall_to(ctx, model, which_children::state, entry, tree);
    (void)model.augments(ctx, entry, tree);
    end_fall_through(ctx, begun_here);
    ctx->req_ctx->delete_walk = delete_walk;
}

// Leaves.

rcode walk_leaf(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree) {
    const rcode status = model.callback.node(ctx, node, tree);
    zmf_req_ctx *request = ctx->req_ctx;
    if (request->walk_all != 1 && request->delete_walk == 0) {
        set_schema_kind(node, model.kind == node_kind::leaf_list ? ZMF_KIND_LEAF_LIST : ZMF_KIND_LEAF);
        if (is_read(ctx) && !is_key(model)) {
            if (node->has_value) {
                request->filter_bits |= FILTER_CONTENT | FILTER_CONTENT_SEEN;
                set_schema_kind(node, ZMF_KIND_CONTENT_MATCH);
            } else {
                request->filter_bits |= FILTER_SELECTION;
            }
        }
    }
    WALK_TRACE(TRC("End"));
    return model.is_unmapped_key && status == RC_UNSUPPORTED_NODE ? RC_OK : status;
}

// Containers.

rcode walk_children(zmf_map_ctx ctx, const model_node &model, const subtree &below, zmf_datatree *tree) {
    rcode status = RC_OK;
    for (uint32_t at = 0; at < below.count && status == RC_OK; ++at) {
        zmf_datatree *child = &below.children[at];
        if (child->tag == nullptr) {
            status = note_missing_tag(ctx, model);
        } else if (const model_node *known = match(ctx, model, child->tag)) {
            status = walk_ox(ctx, *known, child, tree);
        } else {
            status = walk_unknown(ctx, model, child, tree);
        }
    }
    return status;
}

// A level with content matches and no selection wants all siblings.
void take_content_match(zmf_req_ctx *request) {
    if ((request->filter_bits & (FILTER_CONTENT | FILTER_SELECTION)) == FILTER_CONTENT) {
        request->filter_bits |= FILTER_ALL_SIBLINGS;
        request->filter_bits &= ~(FILTER_CONTENT | FILTER_SELECTION);
    }
}

// The work of one pass after a callback that did not refuse the subtree.
rcode walk_container_body(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, const subtree &below,
                          uint32_t count, rcode status, zmf_datatree *tree) {
    if (status == RC_OK && count != 0) {
        status = walk_children(ctx, model, below, tree);
    }
    take_content_match(ctx->req_ctx);
    const bool wants_all = count == 0 || (ctx->req_ctx->filter_bits & FILTER_ALL_SIBLINGS) != 0;
    if (wants_all && is_read_or_delete(ctx, node)) {
        fall_through_container(ctx, model, node, tree);
    }
    return status;
}

// The delete half of a replace: the node without its children.
rcode walk_container_delete_half(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree) {
    begin_replace(ctx, node);
    const subtree hidden = hide_children(node);
    rcode status = model.callback.container(ctx, node, 0, tree);
    if (status == RC_NOT_MAPPED) {
        status = RC_OK;
    } else {
        status = walk_container_body(ctx, model, node, {}, 0, status, tree);
    }
    end_delete_pass(ctx, node);
    ctx->req_ctx->pass_flags |= PASS_ADD;
    give_back_children(node, hidden);
    return status;
}

rcode walk_container(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree) {
    zmf_req_ctx *request = ctx->req_ctx;
    subtree below;
    rcode status = take_subtree(ctx, model, node, &below);
    if (status != RC_OK) {
        WALK_TRACE(TRC("End"));
        return status;
    }
    const bool outer = !falls_through(ctx);
    if (outer && below.count != 0 && request->delete_walk == 0 && zmf_map_is_request_delete(node)) {
        WALK_TRACE(ERR("Delete request with subtree present"));
        zmf_oc_error_path(ctx);
        WALK_TRACE(TRC("End"));
        return RC_INVALID_ARGUMENTS;
    }
    if (!outer && (request->filter_bits & FILTER_ALL_SIBLINGS) != 0) {
        below.count = 0;
    }
    if (outer) {
        enter(ctx, node, ZMF_HIER_CONTAINER, ZMF_KIND_CONTAINER);
    }
    const bool split = node->op == OP_REPLACE;
    if (split) {
        status = walk_container_delete_half(ctx, model, node, tree);
    }
    if (status == RC_OK) {
        status = model.callback.container(ctx, node, below.count, tree);
    }
    const bool not_mapped = status == RC_NOT_MAPPED;
    if (not_mapped && (request->pass_flags & PASS_DELETE) == 0) {
        // Stops the descent at once: a replace is left as it stands.
        if (outer) {
            zmf_map_remove_from_node_hierarchy(ctx, node);
        }
        return RC_OK;
    }
    status = not_mapped ? RC_OK : walk_container_body(ctx, model, node, below, below.count, status, tree);
    if (split) {
        end_replace(ctx, node);
    }
    if (outer) {
        zmf_map_remove_from_node_hierarchy(ctx, node);
    }
    WALK_TRACE(TRC("End"));
    return status;
}

// Lists.

rcode refuse_key(zmf_map_ctx ctx, const char *text) {
    set_err_msg(ctx, text);
    zmf_oc_error_path(ctx);
    return RC_LIST_KEY_ERROR;
}

rcode scan_keys(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, const subtree &below,
                key_findings *found) {
    for (uint32_t at = 0; at < below.count; ++at) {
        if (falls_through(ctx) || ctx->req_ctx->delete_walk != 0) {
            break;
        }
        zmf_datatree *child = &below.children[at];
        const model_node *key = match_key(model, child->tag);
        if (key == nullptr) {
            found->non_key_child = true;
            continue;
        }
        if (needs_keys(ctx)) {
            const rcode status = zmf_map_check_oc_leafref(ctx, model.leafref_path, "config", key->tag, node);
            if (status != RC_OK) {
                WALK_TRACE(ERR("leafref value check fail"));
                return status;
            }
        }
        mark_key(child);
        ++found->nodes;
        found->note_value(child);
    }
    return RC_OK;
}

// Only a list with one key is counted.
rcode check_key_count(zmf_map_ctx ctx, const model_node &model, const subtree &below, const key_findings &found) {
    if (model.keys != 1 || below.count == 0 || falls_through(ctx) || ctx->req_ctx->delete_walk != 0) {
        return RC_OK;
    }
    if (needs_keys(ctx) ? found.nodes == 1 && !found.without_value : found.nodes <= 1) {
        return RC_OK;
    }
    WALK_TRACE(ERR("List key node error."));
    return refuse_key(ctx, first_child(model).tag);
}

rcode walk_entry_key(zmf_map_ctx ctx, const model_node &model, const model_node &key, zmf_datatree *child,
                     key_findings *found, zmf_datatree *tree) {
    if (needs_keys(ctx) && !child->has_value) {
        WALK_TRACE(ERR("Empty list key specified."));
        return refuse_key(ctx, child->tag);
    }
    if (zmf_map_is_request_delete(child)) {
        WALK_TRACE(ERR("The key node should not have delete operation."));
        zmf_oc_error_path(ctx);
        return RC_KEY_DELETE;
    }
    const rcode status = walk_ox(ctx, key, child, tree);
    mark_key(child);
    found->note_value(child);
    return status;
}

// In the delete half of a replace only the keys of the entry are walked.
rcode walk_entry_children(zmf_map_ctx ctx, const model_node &model, const subtree &below, key_findings *found,
                          zmf_datatree *tree) {
    rcode status = RC_OK;
    for (uint32_t at = 0; at < below.count && status == RC_OK; ++at) {
        zmf_datatree *child = &below.children[at];
        if (child->tag == nullptr) {
            status = note_missing_tag(ctx, model);
            continue;
        }
        const model_node *known = match(ctx, model, child->tag);
        if (known != nullptr && is_key(*known)) {
            status = walk_entry_key(ctx, model, *known, child, found, tree);
        } else if ((ctx->req_ctx->pass_flags & PASS_DELETE) != 0) {
            continue;
        } else if (known != nullptr) {
            found->non_key_child = true;
            status = walk_ox(ctx, *known, child, tree);
        } else {
            status = walk_unknown(ctx, model, child, tree);
        }
    }
    return status;
}

// A list node under walk.
struct list_walk {
    zmf_datatree *node;
    subtree below;
    key_findings keys;
};

// One pass over it: entries that the callback put in place of the request node, and what a delete came to.
struct list_pass {
    bool framed = false;
    zmf_itree_frame frame = {}; // a copy: walking an entry pushes on the framework's stack
    bool deletes_by_key = false;
    bool deletes_all = false;
};

// Calls the list callback. An entry that is deleted by its keys alone, or all entries at once, are told it beforehand.
rcode call_list(zmf_map_ctx ctx, const model_node &model, const list_walk &list, list_pass *pass, zmf_datatree *tree) {
    zmf_req_ctx *request = ctx->req_ctx;
    if (request->delete_walk == 0 && zmf_map_is_request_delete(list.node)) {
        if (!list.keys.non_key_child && list.keys.nodes != 0) {
            request->delete_walk = 2;
            pass->deletes_by_key = true;
        } else if (list.below.count == 0 && falls_through(ctx)) {
            request->delete_walk = 1;
            pass->deletes_all = true;
        }
    }
    const rcode status = model.callback.node(ctx, list.node, tree);
    if (pass->deletes_by_key) {
        request->delete_walk = 0;
    }
    return status;
}

// What stands below an entry, walked by what the client named there.
rcode walk_entry_subtree(zmf_map_ctx ctx, const model_node &model, const list_walk &list, const list_pass &pass,
                         zmf_datatree *entry, zmf_datatree *tree) {
    subtree below = list.below;
    key_findings found = list.keys;
    rcode status = RC_OK;
    if (pass.framed) {
        below = {};
        found = {};
        status = take_subtree(ctx, model, entry, &below);
    }
    if (status == RC_OK) {
        status = walk_entry_children(ctx, model, below, &found, tree);
    }
    if (status != RC_OK || !(found.only_keys() || below.count == 0) || !is_read_or_delete(ctx, list.node)) {
        return status;
    }
    const entry_delete deleted = {zmf_map_is_request_delete(list.node), pass.deletes_by_key};
    if (below.count == 0) {
        fall_through_empty_entry(ctx, model, entry, deleted, tree);
    } else {
        fall_through_keyed_entry(ctx, model, entry, below, deleted, tree);
    }
    return RC_OK;
}

// One entry of a frame, or the request node itself.
rcode walk_entry(zmf_map_ctx ctx, const model_node &model, const list_walk &list, const list_pass &pass,
                 zmf_datatree *entry, zmf_datatree *tree) {
    if (!pass.framed || pass.frame.fn == nullptr) {
        return walk_entry_subtree(ctx, model, list, pass, entry, tree);
    }
    const kept_op kept = keep_op(entry);
    if (zmf_map_is_request_delete(list.node)) {
        write_op(entry, OP_REMOVE);
    }
    rcode status = pass.frame.fn(ctx, entry, tree, 0);
    if (status == RC_OK) {
        status = walk_entry_subtree(ctx, model, list, pass, entry, tree);
    }
    restore_op(entry, kept);
    return status;
}

rcode walk_entries(zmf_map_ctx ctx, const model_node &model, const list_walk &list, const list_pass &pass,
                   zmf_datatree *tree) {
    if (!pass.framed) {
        return walk_entry(ctx, model, list, pass, list.node, tree);
    }
    const uint32_t count = pass.frame.nodes != nullptr ? pass.frame.count : 0;
    rcode status = RC_OK;
    for (uint32_t at = 0; at < count && status == RC_OK; ++at) {
        zmf_datatree *entry = &pass.frame.nodes[at];
        if (at != 0) { // the first stands where the request node was pushed
            zmf_map_add_to_node_hierarchy(ctx, entry, ZMF_HIER_LIST);
            status = zmf_map_update_current_list_node(ctx, model.list_path);
        }
        if (status == RC_OK) {
            status = walk_entry(ctx, model, list, pass, entry, tree);
        }
        if (at != 0) {
            zmf_map_remove_from_node_hierarchy(ctx, entry);
        }
    }
    return status;
}

// A read of leaves of all entries gets each entry's keys with them.
rcode ask_for_keys(zmf_map_ctx ctx, const model_node &model, const list_walk &list) {
    if (!is_read(ctx) || falls_through(ctx) || !list.keys.non_key_child || list.keys.nodes != 0) {
        return RC_OK;
    }
    rcode status = RC_OK;
    for (const model_node &key : children_of(model)) {
        if (status != RC_OK || !is_key(key)) {
            break;
        }
        zmf_datatree *added = nullptr;
        status =
            zmf_map_datatree_add_path_flagged(ctx, list.node, key.tag, list.node->ns, nullptr, nullptr, &added, 0, 0);
        if (status == RC_OK && added != nullptr) {
            added->is_key = 1;
            added->added_key = 1;
        }
    }
    return status;
}

uint16_t frames_on_stack(zmf_map_ctx ctx) {
    return static_cast<uint16_t>(zmf_map_util_itree_stack_size(ctx));
}

void take_frame(zmf_map_ctx ctx, list_pass *pass) {
    zmf_itree_frame *top = nullptr;
    zmf_map_util_itree_stack_peak(ctx, &top);
    if (top != nullptr) {
        pass->framed = true;
        pass->frame = *top;
    }
}

rcode walk_list_pass(zmf_map_ctx ctx, const model_node &model, const list_walk &list, zmf_datatree *tree) {
    list_pass pass;
    const uint16_t frames_before = frames_on_stack(ctx);
    rcode status = call_list(ctx, model, list, &pass, tree);
    if (status == RC_NOT_MAPPED) {
        status = RC_OK;
    } else {
        if (frames_on_stack(ctx) > frames_before) {
            take_frame(ctx, &pass);
        }
        if (status == RC_OK) {
            ctx->last_key_op = list.node->op_explicit ? list.node->op : 0;
            status = walk_entries(ctx, model, list, pass, tree);
        }
        if (status == RC_OK) {
            status = ask_for_keys(ctx, model, list);
        }
    }
    if (pass.deletes_all) {
        ctx->req_ctx->delete_walk = 0;
    }
    if (pass.frame.nodes != nullptr) { // each half of a replace gives back its own
        zmf_map_util_itree_stack_pop(ctx);
    }
    return status;
}

rcode walk_list_passes(zmf_map_ctx ctx, const model_node &model, list_walk *list, zmf_datatree *tree) {
    const bool split = list->node->op == OP_REPLACE;
    rcode status = RC_OK;
    if (split) {
        begin_replace(ctx, list->node);
        list->keys.without_value = false;
        list->keys.non_key_child = false;
        status = walk_list_pass(ctx, model, *list, tree);
        end_delete_pass(ctx, list->node);
    }
    if (status == RC_OK) {
        status = walk_list_pass(ctx, model, *list, tree);
    }
    if (split) {
        end_replace(ctx, list->node);
    }
    return status;
}

rcode walk_list(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree) {
    list_walk list{.node = node, .below = {}, .keys = {}};
    rcode status = take_subtree(ctx, model, node, &list.below);
    const bool outer = !falls_through(ctx);
    if (status == RC_OK && list.below.count == 0) {
        WALK_TRACE(ERR("No keys specified with a list node."));
        if (outer && ctx->req_ctx->delete_walk == 0 && needs_keys(ctx)) {
            WALK_TRACE(ERR("No keys specified with a list node."));
            status = RC_SUBTREE_ERROR;
        }
    }
    if (status != RC_OK) {
        WALK_TRACE(TRC("End"));
        return status;
    }
    if (outer) {
        enter(ctx, node, ZMF_HIER_LIST, ZMF_KIND_LIST);
    }
    status = zmf_map_update_current_list_node(ctx, model.list_path);
    if (status == RC_OK) {
        status = scan_keys(ctx, model, node, list.below, &list.keys);
    }
    if (status == RC_OK) {
        status = check_key_count(ctx, model, list.below, list.keys);
    }
    if (status == RC_OK) { // a replace whose keys are refused is not begun
        status = walk_list_passes(ctx, model, &list, tree);
    }
    if (outer) {
        zmf_map_remove_from_node_hierarchy(ctx, node);
    }
    WALK_TRACE(TRC("End"));
    return status;
}

} // namespace

rcode walk_ox(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree) {
    const rcode status = begin_walk(ctx, model, node, tree);
    if (status != RC_OK) {
        return status;
    }
    switch (model.kind) {
    case node_kind::container:
        return walk_container(ctx, model, node, tree);
    case node_kind::list:
        return walk_list(ctx, model, node, tree);
    default:
        return walk_leaf(ctx, model, node, tree);
    }
}

rcode enter_augment_ox(zmf_map_ctx ctx, const model_node &model, zmf_datatree *node, zmf_datatree *tree) {
    rcode status = begin_walk(ctx, model, node, tree);
    if (status != RC_OK) {
        return status;
    }
    subtree below;
    status = take_subtree(ctx, model, node, &below);
    if (status != RC_OK) {
        WALK_TRACE(TRC("End"));
        return status;
    }
    WALK_TRACE(TRC("Processing tag '%s'"), shown(node->tag));
    if (node->tag == nullptr) {
        status = note_missing_tag(ctx, model);
    } else if (const model_node *known = match(ctx, model, node->tag)) {
        status = walk_ox(ctx, *known, node, tree);
    } else {
        status = walk_unknown(ctx, model, node, tree);
    }
    // An empty augmenting node means all of it.
    if (status == RC_OK && below.count == 0 && is_read_or_delete(ctx, node)) {
        const bool softened = soften_delete(node);
        fall_to(ctx, model, which_children::non_keys, node, tree);
        restore_delete(node, softened);
        (void)model.augments(ctx, node, tree);
    }
    WALK_TRACE(TRC("End"));
    return status;
}

} // namespace ocoptical
