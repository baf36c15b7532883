// The operations of the framework that a walk from native answers to OpenConfig uses beside those of operations.cc:
// list entries by key, and acts at keyed paths apart from the position.
#include <algorithm>
#include <cstring>

#include "operation.h"
#include "zmf.h"

using namespace zmf;

namespace {

using body = session::body;

bool is_output(const zmf_datatree *tree) {
    return tree != nullptr && tree->framework != nullptr;
}

// An entry without its key is none.
bool has_empty_key(const known_path &path) {
    return std::any_of(path.steps.begin(), path.steps.end(), [](const path_step &step) {
        return std::any_of(step.keys.begin(), step.keys.end(), [](const path_key &key) { return key.value.empty(); });
    });
}

// Adds the first `steps` of a path.
rcode add(body &s, zmf_datatree *tree, const known_path &path, size_t steps, const char *ns, const char *value,
          bool list_flag, uint32_t &added) {
    return tree_of(tree)->add(number_of(tree), {&path, steps, ns, value, nullptr, list_flag, s.list_depth},
                              s.current_entries, added);
}

// The list path with its key.
const known_path *read_entry(zmf_datatree *tree, const char *list_path, const char *key_value, const char *key_name,
                             const char *ns) {
    if (!is_output(tree) || key_value == nullptr || key_name == nullptr || ns == nullptr)
        return nullptr;
    known_path *path = tree_of(tree)->read_to_change(number_of(tree), list_path);
    if (path != nullptr)
        path->steps.back().keys = {{key_name, key_value}};
    return path;
}

rcode search_or_add(body &s, zmf_datatree *tree, const char *list_path, const char *key_value, const char *key_name,
                    const char *ns) {
    const known_path *path = read_entry(tree, list_path, key_value, key_name, ns);
    if (path == nullptr)
        return rc_bad_path;
    uint32_t entry = 0;
    return *key_value == '\0' ? RC_OK : add(s, tree, *path, path->steps.size(), ns, nullptr, true, entry);
}

rcode search(zmf_datatree *tree, zmf_datatree **entry_out, const char *list_path, const char *key_value,
             const char *key_name, const char *ns) {
    const known_path *path = read_entry(tree, list_path, key_value, key_name, ns);
    if (entry_out == nullptr || path == nullptr)
        return rc_bad_path;
    const uint32_t entry = tree_of(tree)->find(number_of(tree), *path);
    *entry_out = entry == 0 ? nullptr : tree_of(tree)->hand_out(entry);
    return entry == 0 ? rc_no_such_entry : RC_OK;
}

const known_path *read_xpath(const zmf_map_xpath_op *op) {
    return op != nullptr && is_output(op->tree) ? tree_of(op->tree)->read(number_of(op->tree), op->xpath) : nullptr;
}

rcode act_at_xpath(body &s, zmf_map_xpath_op *op) {
    const known_path *path = read_xpath(op);
    if (path == nullptr)
        return rc_bad_path;
    if (has_empty_key(*path))
        return RC_OK;
    const char *value = op->kind == ZMF_XPATH_SET_LEAF ? op->value : nullptr;
    uint32_t node = tree_of(op->tree)->find(number_of(op->tree), *path);
    const bool exists = node != 0;
    if (!exists || value != nullptr) { // a leaf without value is filled, another keeps what it has
        const rcode status = add(s, op->tree, *path, path->steps.size(), op->ns, value, false, node);
        if (status != RC_OK)
            return status;
    }
    if (op->kind == ZMF_XPATH_FIND_LIST)
        op->found_node = tree_of(op->tree)->hand_out(node);
    return exists ? RC_LEAF_EXISTS : RC_OK;
}

// Every entry along the path becomes the current one of its list.
rcode stitch(body &s, zmf_map_xpath_op *op) {
    const known_path *path = read_xpath(op);
    if (path == nullptr)
        return rc_bad_path;
    if (has_empty_key(*path))
        return RC_OK;
    output_tree::body &tree = *tree_of(op->tree);
    const bool ends_in_entry = !path->steps.back().keys.empty();
    const bool exists = !ends_in_entry && tree.find(number_of(op->tree), *path) != 0;
    const uint32_t nodes = tree.node_count;
    for (size_t steps = 1; steps <= path->steps.size(); ++steps) {
        if (path->steps[steps - 1].keys.empty())
            continue;
        uint32_t entry = 0;
        const rcode status = add(s, op->tree, *path, steps, op->ns, nullptr, true, entry);
        if (status != RC_OK)
            return status;
    }
    return exists || (ends_in_entry && tree.node_count == nodes) ? RC_LEAF_EXISTS : RC_OK;
}

// How far entries were chosen when the list node on top of the walk record was pushed.
bool entry_was_chosen(const body &s) {
    return s.depth != 0 && s.current_entries.size() > s.frames[s.depth - 1].output_entries;
}

} // namespace

extern "C" {

rcode zmf_map_search_or_add_list(zmf_map_ctx ctx, struct zmf_datatree *tree, struct zmf_list_cursor *,
                                 const char *list_path, const char *key_value, const char *key_name, const char *ns) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return rc_bad_path;
    rcode status = answer(*s, [&] { return search_or_add(*s, tree, list_path, key_value, key_name, ns); });
    tell(*s, operation::search_or_add_list, status, [&](call &made) {
        made.path = list_path;
        made.ns = ns;
        made.key = key_name;
        made.value = key_value;
    });
    return status;
}

rcode zmf_map_search_list(zmf_map_ctx ctx, struct zmf_datatree *tree, struct zmf_datatree **entry_out,
                          const char *list_path, const char *key_value, const char *key_name, const char *ns) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return rc_bad_path;
    rcode status = answer(*s, [&] { return search(tree, entry_out, list_path, key_value, key_name, ns); });
    tell(*s, operation::search_list, status, [&](call &made) {
        made.path = list_path;
        made.ns = ns;
        made.key = key_name;
        made.value = key_value;
    });
    return status;
}

rcode zmf_map_tree_xpath_operations(zmf_map_ctx ctx, struct zmf_map_xpath_op *op) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return rc_bad_path;
    rcode status = answer(*s, [&] { return act_at_xpath(*s, op); });
    tell(*s, operation::xpath, status, [&](call &made) {
        made.path = op == nullptr ? nullptr : op->xpath;
        made.ns = op == nullptr ? nullptr : op->ns;
        made.value = op == nullptr || op->kind != ZMF_XPATH_SET_LEAF ? nullptr : op->value;
    });
    return status;
}

rcode zmf_map_stitch_list_to_list(zmf_map_ctx ctx, struct zmf_map_xpath_op *op) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return rc_bad_path;
    rcode status = answer(*s, [&] { return stitch(*s, op); });
    tell(*s, operation::stitch, status, [&](call &made) {
        made.path = op == nullptr ? nullptr : op->xpath;
        made.ns = op == nullptr ? nullptr : op->ns;
    });
    return status;
}

void zmf_add_to_output_list_ctx(zmf_map_ctx ctx, const struct zmf_datatree *node, struct zmf_datatree *) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return;
    if (entry_was_chosen(*s))
        ++s->req.output_list_depth;
    tell(*s, operation::add_to_output_list, s->req.output_list_depth, [&](call &made) { made.node = node; });
}

void zmf_remove_from_output_list_ctx(zmf_map_ctx ctx, const struct zmf_datatree *node, struct zmf_datatree *) {
    body *s = session_of(ctx);
    if (s == nullptr)
        return;
    if (s->req.output_list_depth == 0)
        ++s->imbalances;
    else
        --s->req.output_list_depth;
    tell(*s, operation::remove_from_output_list, s->req.output_list_depth, [&](call &made) { made.node = node; });
}

} // extern "C"
