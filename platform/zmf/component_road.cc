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
        bool has_rest = false;
        const char *name = "";
        const rcode status = at_entry(top, entry, [&](const char *given) {
            name = given;
            return walk_named(top, entry, name, has_rest);
        });
        return status == RC_OK && has_rest ? walk_own(name) : status;
    }

    rcode walk_stranger(zmf_datatree &top, zmf_datatree &child) override {
        made_nodes &made = s_.internals()->made;
        made.top = top;
        made.top.children = &child;
        made.top.child_count = 1;
        return walk_own("");
    }

    // `has_rest`: something is left for the model's own walk.
    rcode walk_named(zmf_datatree &top, zmf_datatree &entry, const char *name, bool &has_rest) {
        if (std::strlen(name) >= ZMF_COMPONENT_NAME_SIZE) // there is no such component
            return is_read() ? RC_OK : refuse("the name of a component has at most 200 characters", RC_LIST_KEY_ERROR);
        tell(name);
        if (is_deleted(entry))
            return erase_alone(entry);
        has_rest = take_rest(top, entry, name);
        return walk_added(entry);
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

    // Copies the entry without what others add to it, and without a `config/name` that repeats the key.
    bool take_rest(const zmf_datatree &top, const zmf_datatree &entry, const char *name) {
        made_nodes &made = s_.internals()->made;
        made.arrays.clear();
        std::vector<zmf_datatree> rest;
        bool has_more = false;
        const child_range below = children_of(&entry);
        for (uint32_t i = 0; i < below.count; ++i) {
            zmf_datatree child = below.nodes[i];
            if (added_as(child) != nullptr || (is_own(child, "config") && repeats_key(child, name)))
                continue;
            has_more |= !is_own(child, "name");
            rest.push_back(child);
        }
        made.entry = entry;
        give_children(made.entry, std::move(rest));
        made.top = top;
        made.top.children = &made.entry;
        made.top.child_count = 1;
        made.top.has_children = 1;
        return has_more;
    }

    // Whether it says nothing else. What else it says stays in it.
    bool repeats_key(zmf_datatree &config, const char *name) {
        const child_range below = children_of(&config);
        if (is_deleted(config) || below.count == 0)
            return false;
        std::vector<zmf_datatree> rest;
        std::copy_if(below.nodes, below.nodes + below.count, std::back_inserter(rest), [&](const zmf_datatree &leaf) {
            const bool has_value = leaf.has_value && leaf.value != nullptr;
            return !is_own(leaf, "name") || is_deleted(leaf) || !has_value || std::strcmp(leaf.value, name) != 0;
        });
        const bool is_all = rest.empty();
        give_children(config, std::move(rest));
        return is_all;
    }

    void give_children(zmf_datatree &node, std::vector<zmf_datatree> children) {
        std::vector<zmf_datatree> &kept = s_.internals()->made.arrays.emplace_back(std::move(children));
        node.children = kept.data();
        node.child_count = static_cast<uint32_t>(kept.size());
        node.has_children = kept.empty() ? 0 : 1;
    }

    // By the model of components itself: what stands in made.top.
    rcode walk_own(const char *name) {
        start(s_.internals()->made.top);
        tell(name);
        return call(own_root, s_.internals()->made.top);
    }
};

} // namespace

rcode walk_components(const plugin &by, session &s, zmf_datatree &components, output_tree &out) {
    return component_road(by, s, out).walk(components);
}

} // namespace zmf
