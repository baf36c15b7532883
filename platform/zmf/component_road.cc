// The walk of components: see component_road.h. To add what the plug-in has for a component: its row in `added`.
#include "component_road.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "entry_road.h"
#include "namespaces.h"
#include "session_body.h"

namespace zmf {

namespace {

constexpr entry_list component_list{"component", ZMF_NS_OC_PLATFORM, "/components/component"};

// What other models add to a component.
struct added_child {
    const char *tag, *ns, *entry;
};
constexpr added_child added[] = {
    {"optical-channel", ZMF_NS_OC_TERMINAL_DEVICE,
     "ymap_ox_oc_optical_openconfigterminaldevice_augment_lvla_component"},
    {"transceiver", ZMF_NS_OC_PLATFORM_TRANSCEIVER,
     "ymap_ox_oc_optical_openconfigplatformtransceiver_augment_lvla_component"},
};
constexpr const added_child &optical_channel = added[0];

constexpr char own_root[] = "ymap_ox_oc_optical_openconfigplatform_lvla_components";
constexpr char channel_delete[] = "ymap_oc_optical_delete_component_optical_channel";

const added_child *added_as(const zmf_datatree &node) {
    const auto *const found = std::find_if(std::begin(added), std::end(added),
                                           [&](const added_child &each) { return is_named(node, each.tag, each.ns); });
    return found == std::end(added) ? nullptr : found;
}

class component_road final : public entry_road {
public:
    component_road(const plugin &by, session &s, output_tree &out) : entry_road(by, s, out, component_list) {}

private:
    rcode walk_entry(zmf_datatree &top, zmf_datatree &entry) override {
        bool is_there = false;
        const char *name = "";
        const rcode status = at_entry(top, entry, [&](const char *given) {
            name = given;
            return walk_named(entry, name, is_there);
        });
        return status == RC_OK && is_there ? walk_rest(top, entry, name) : status;
    }

    rcode walk_stranger(zmf_datatree &top, zmf_datatree &child) override { return walk_own(top, child, ""); }

    rcode walk_named(zmf_datatree &entry, const char *name, bool &is_there) {
        const bool can_be = std::strlen(name) < ZMF_COMPONENT_NAME_SIZE;
        if (!can_be)
            return is_read() ? RC_OK : refuse("the name of a component has at most 200 characters", RC_LIST_KEY_ERROR);
        tell(name);
        is_there = !is_deleted(entry);
        return is_there ? walk_added(entry) : erase_alone(entry);
    }

    // The plug-in asks for the name of the component, the empty one for all of a read.
    void tell(const char *name) { std::copy_n(name, std::strlen(name) + 1, s_.request().component_name); }

    rcode erase_alone(zmf_datatree &entry) {
        const child_range below = children_of(&entry);
        const bool has_more = std::any_of(below.nodes, below.nodes + below.count,
                                          [&](const zmf_datatree &child) { return !is_own(child, "name"); });
        return has_more ? refuse("a component is deleted by its key alone", RC_INVALID_ARGUMENTS) : erase(entry);
    }

    // Nothing of it has to be there.
    rcode erase(zmf_datatree &entry) {
        const uint32_t op = entry.op;
        entry.op = OP_REMOVE;
        const rcode status = call(channel_delete, entry);
        entry.op = op;
        s_.request().delete_walk = 0;
        return status;
    }

    rcode walk_added(zmf_datatree &entry) {
        rcode status = is_replaced(entry) ? erase(entry) : RC_OK;
        bool has_channel = false;
        const child_range below = children_of(&entry);
        for (uint32_t i = 0; i < below.count && status == RC_OK; ++i) {
            const added_child *known = added_as(entry.children[i]);
            has_channel |= known == &optical_channel;
            if (known != nullptr)
                status = call(known->entry, entry.children[i]);
        }
        if (status == RC_OK && is_read() && !has_channel)
            status =
                call(optical_channel.entry, meant(s_.internals()->made.child, optical_channel.tag, optical_channel.ns));
        return status;
    }

    // What is neither the key nor added by others, and does not just repeat the key, one by one.
    rcode walk_rest(zmf_datatree &top, zmf_datatree &entry, const char *name) {
        rcode status = RC_OK;
        const child_range below = children_of(&entry);
        for (uint32_t i = 0; i < below.count && status == RC_OK; ++i) {
            zmf_datatree &child = entry.children[i];
            if (is_own(child, "name") || added_as(child) != nullptr)
                continue;
            const bool has_leaves = children_of(&child).count != 0;
            status = is_own(child, "config") && has_leaves && !is_deleted(child) ? walk_config(top, entry, child, name)
                                                                                 : walk_part(top, entry, child, name);
        }
        return status;
    }

    rcode walk_config(zmf_datatree &top, zmf_datatree &entry, zmf_datatree &config, const char *name) {
        rcode status = RC_OK;
        const child_range below = children_of(&config);
        for (uint32_t i = 0; i < below.count && status == RC_OK; ++i)
            if (!repeats(below.nodes[i], name))
                status = walk_part(top, entry, with_children(config, &config.children[i], 1), name);
        return status;
    }

    bool repeats(const zmf_datatree &leaf, const char *name) const {
        const bool has_value = leaf.has_value && leaf.value != nullptr;
        return is_own(leaf, "name") && !is_deleted(leaf) && has_value && std::strcmp(leaf.value, name) == 0;
    }

    // One child, in an entry that has nothing else but its key.
    rcode walk_part(zmf_datatree &top, zmf_datatree &entry, const zmf_datatree &child, const char *name) {
        made_nodes &made = s_.internals()->made;
        zmf_datatree &key = meant(made.part[0], "name", ZMF_NS_OC_PLATFORM);
        key.value = *name == '\0' ? nullptr : name;
        key.has_value = key.value != nullptr;
        made.part[1] = child;
        made.entry = with_children(entry, made.part, 2);
        return walk_own(top, made.entry, name);
    }

    static zmf_datatree with_children(zmf_datatree node, zmf_datatree *children, uint32_t count) {
        node.children = children;
        node.child_count = count;
        node.has_children = 1;
        return node;
    }

    // By the model of components itself.
    rcode walk_own(zmf_datatree &top, zmf_datatree &child, const char *name) {
        zmf_datatree &alone = s_.internals()->made.top;
        alone = with_children(top, &child, 1);
        start(alone);
        tell(name);
        return call(own_root, alone);
    }
};

} // namespace

rcode walk_components(const plugin &by, session &s, zmf_datatree &components, output_tree &out) {
    return component_road(by, s, out).walk(components);
}

} // namespace zmf
