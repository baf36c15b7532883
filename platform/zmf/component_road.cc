// The walk of components: see component_road.h. To add a child that the plug-in walks: its entry in `walk_child`.
#include "component_road.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "namespaces.h"
#include "session_body.h"

namespace zmf {

namespace {

constexpr char list_path[] = "/components/component";
constexpr char channel_entry[] = "ymap_ox_oc_optical_openconfigterminaldevice_augment_lvla_component";
constexpr char channel_delete[] = "ymap_oc_optical_delete_component_optical_channel";

bool is_named(const zmf_datatree &node, std::string_view tag, std::string_view ns) {
    return node.tag != nullptr && node.ns != nullptr && tag == node.tag && ns == node.ns;
}

bool is_own(const zmf_datatree &node, std::string_view tag) {
    return is_named(node, tag, ZMF_NS_OC_PLATFORM);
}

bool has_operation(const zmf_datatree &node, uint32_t op) {
    return node.op_explicit && node.op == op;
}

bool is_deleted(const zmf_datatree &node) {
    return has_operation(node, OP_DELETE) || has_operation(node, OP_REMOVE);
}

class walk {
public:
    walk(const plugin &by, session &s, output_tree &out) : by_(by), s_(s), ctx_(s.context()), out_(out) {}

    rcode all(zmf_datatree &components) {
        if (is_deleted(components) || has_operation(components, OP_REPLACE)) {
            say(components.tag);
            return RC_UNSUPPORTED_NODE;
        }
        const child_range below = children_of(&components);
        if (below.count == 0 && is_read())
            return component(components, meant(s_.internals()->meant_entry, "component", ZMF_NS_OC_PLATFORM));
        rcode status = RC_OK;
        for (uint32_t i = 0; i < below.count && status == RC_OK; ++i) {
            zmf_datatree &child = components.children[i];
            if (is_own(child, "component"))
                status = component(components, child);
            else if (!is_read())
                status = refuse_below(components, child);
        }
        return status;
    }

private:
    bool is_read() const {
        const uint32_t kind = s_.request().request->op_type;
        return kind == OP_GET || kind == OP_GET_CONFIG;
    }

    // A node that a read means without naming it. It stands in the session, since a failure may be told of it.
    static zmf_datatree &meant(zmf_datatree &node, const char *tag, const char *ns) {
        node = {};
        node.tag = tag;
        node.ns = ns;
        return node;
    }

    void say(const char *text) {
        zmf_req_ctx &request = s_.request();
        kvo_named_free(request.err_msg);
        request.err_msg = zmf_strdup(text, "components");
        zmf_oc_error_path(ctx_);
    }

    rcode refuse_below(zmf_datatree &parent, const zmf_datatree &child) {
        zmf_map_add_to_node_hierarchy(ctx_, &parent, ZMF_HIER_CONTAINER);
        say(child.tag);
        zmf_map_remove_from_node_hierarchy(ctx_, &parent);
        return RC_UNSUPPORTED_NODE;
    }

    // Each entry starts afresh, and nothing that it adds falls under what another one opened.
    rcode component(zmf_datatree &components, zmf_datatree &entry) {
        s_.reset();
        s_.internals()->walked_top = &components;
        out_.internals()->keep_apart();
        zmf_map_add_to_node_hierarchy(ctx_, &components, ZMF_HIER_CONTAINER);
        zmf_map_add_to_node_hierarchy(ctx_, &entry, ZMF_HIER_LIST);
        rcode status = zmf_map_update_current_list_node(ctx_, list_path);
        bool is_there = false;
        if (status == RC_OK)
            status = take_name(entry, is_there);
        if (status == RC_OK && is_there)
            status = is_deleted(entry) ? erase_alone(entry) : walk_entry(entry);
        zmf_map_remove_from_node_hierarchy(ctx_, &entry);
        zmf_map_remove_from_node_hierarchy(ctx_, &components);
        return status;
    }

    // Tells the plug-in the name of the component, the empty one for all of a read. `is_there`: it can be.
    rcode take_name(zmf_datatree &entry, bool &is_there) {
        const zmf_datatree *key = nullptr;
        uint32_t keys = 0;
        const child_range below = children_of(&entry);
        for (uint32_t i = 0; i < below.count; ++i)
            if (is_own(below.nodes[i], "name")) {
                key = &below.nodes[i];
                ++keys;
            }
        const bool has_value = key != nullptr && key->has_value && key->value != nullptr;
        if (keys > 1 || (!is_read() && (!has_value || *key->value == '\0'))) {
            say("name");
            return RC_LIST_KEY_ERROR;
        }
        if (key != nullptr && is_deleted(*key)) {
            say("name");
            return RC_KEY_DELETE;
        }
        const size_t length = has_value ? std::strlen(key->value) : 0;
        is_there = length < ZMF_COMPONENT_NAME_SIZE;
        if (is_there) {
            std::copy_n(has_value ? key->value : "", length + 1, s_.request().component_name);
        } else if (!is_read()) {
            say("the name of a component has at most 200 characters");
            return RC_LIST_KEY_ERROR;
        }
        return is_read() ? RC_OK : zmf_map_check_oc_leafref(ctx_, list_path, "config", "name", &entry);
    }

    rcode erase_alone(zmf_datatree &entry) {
        const child_range below = children_of(&entry);
        const bool has_more = std::any_of(below.nodes, below.nodes + below.count,
                                          [](const zmf_datatree &child) { return !is_own(child, "name"); });
        if (has_more) {
            say("a component is deleted by its key alone");
            return RC_INVALID_ARGUMENTS;
        }
        return erase(entry);
    }

    // Nothing of it has to be there.
    rcode erase(zmf_datatree &entry) {
        const uint32_t op = entry.op;
        entry.op = OP_REMOVE;
        const rcode status = by_.node_function(channel_delete)(ctx_, &entry, out_.root());
        entry.op = op;
        s_.request().delete_walk = 0;
        return status;
    }

    rcode walk_entry(zmf_datatree &entry) {
        rcode status = has_operation(entry, OP_REPLACE) ? erase(entry) : RC_OK;
        bool has_channel = false;
        const child_range below = children_of(&entry);
        for (uint32_t i = 0; i < below.count && status == RC_OK; ++i) {
            zmf_datatree &child = entry.children[i];
            has_channel |= is_channel(child);
            status = walk_child(child);
        }
        if (status == RC_OK && is_read() && !has_channel)
            status = walk_child(meant(s_.internals()->meant_child, "optical-channel", ZMF_NS_OC_TERMINAL_DEVICE));
        return status;
    }

    static bool is_channel(const zmf_datatree &node) {
        return is_named(node, "optical-channel", ZMF_NS_OC_TERMINAL_DEVICE);
    }

    rcode walk_child(zmf_datatree &child) {
        if (is_channel(child))
            return by_.node_function(channel_entry)(ctx_, &child, out_.root());
        if (is_read() || is_own(child, "name"))
            return RC_OK;
        if (is_own(child, "config") && !is_deleted(child))
            return check_config(child);
        say(child.tag);
        return RC_UNSUPPORTED_NODE;
    }

    // The name has been held against the key by now.
    rcode check_config(zmf_datatree &config) {
        const child_range below = children_of(&config);
        for (uint32_t i = 0; i < below.count; ++i)
            if (!is_own(below.nodes[i], "name") || is_deleted(below.nodes[i]))
                return refuse_below(config, below.nodes[i]);
        return RC_OK;
    }

    const plugin &by_;
    session &s_;
    zmf_map_ctx ctx_;
    output_tree &out_;
};

} // namespace

rcode walk_components(const plugin &by, session &s, zmf_datatree &components, output_tree &out) {
    return walk(by, s, out).all(components);
}

} // namespace zmf
