// The walk of interfaces: see interface_road.h.
#include "interface_road.h"

#include "entry_road.h"
#include "namespaces.h"
#include "schema/schema.h"
#include "session_body.h"

namespace zmf {

namespace {

constexpr entry_list interface_list{"interface", schema::interfaces_ns, "/interfaces/interface"};

constexpr char ethernet[] = "ethernet";
constexpr char ethernet_entry[] = "ymap_ox_oc_optical_openconfigifethernet_augment_lvla_interface";
constexpr char transceiver_entry[] = "ymap_ox_oc_optical_openconfigplatformtransceiver_augment_lvla_state";
constexpr char physical_channel_entry[] = "ymap_ox_oc_optical_openconfigplatformtransceiver_augment_lvlb_state";

class interface_road final : public entry_road {
public:
    interface_road(const plugin &by, session &s, output_tree &out) : entry_road(by, s, out, interface_list) {}

private:
    rcode walk_entry(zmf_datatree &top, zmf_datatree &entry) override {
        return at_entry(top, entry, [&](const char *) {
            return is_deleted(entry) || is_replaced(entry) ? refuse(entry.tag) : walk_children(entry);
        });
    }

    rcode walk_stranger(zmf_datatree &top, zmf_datatree &child) override {
        return is_read() ? RC_OK : refuse_below(top, child);
    }

    rcode walk_children(zmf_datatree &entry) {
        rcode status = RC_OK;
        bool names_a_child = false;
        const child_range below = children_of(&entry);
        for (uint32_t i = 0; i < below.count && status == RC_OK; ++i) {
            if (is_own(below.nodes[i], "name"))
                continue;
            names_a_child = true;
            status = walk_child(entry.children[i]);
        }
        if (is_read() && !names_a_child)
            status = call(ethernet_entry, meant(s_.internals()->made.child, ethernet, ZMF_NS_OC_IF_ETHERNET));
        return status;
    }

    rcode walk_child(zmf_datatree &child) {
        if (is_named(child, ethernet, ZMF_NS_OC_IF_ETHERNET))
            return call(ethernet_entry, child);
        if (is_own(child, "state") && kind() == OP_GET)
            return walk_state(child);
        if (is_own(child, "state") && !is_read())
            return edit_state(child);
        return is_read() ? RC_OK : refuse(child.tag);
    }

    rcode edit_state(zmf_datatree &state) {
        const bool is_empty = children_of(&state).count == 0;
        return is_empty || is_deleted(state) || is_replaced(state) ? refuse(state.tag) : walk_state(state);
    }

    rcode walk_state(zmf_datatree &state) {
        rcode status = RC_OK;
        zmf_map_add_to_node_hierarchy(ctx_, &state, ZMF_HIER_CONTAINER);
        const child_range below = children_of(&state);
        for (uint32_t i = 0; i < below.count && status == RC_OK; ++i)
            status = walk_leaf_of_state(state.children[i]);
        zmf_map_remove_from_node_hierarchy(ctx_, &state);
        return status;
    }

    rcode walk_leaf_of_state(zmf_datatree &leaf) {
        if (is_named(leaf, "transceiver", ZMF_NS_OC_PLATFORM_TRANSCEIVER))
            return call(transceiver_entry, leaf);
        if (is_named(leaf, "physical-channel", ZMF_NS_OC_PLATFORM_TRANSCEIVER))
            return call(physical_channel_entry, leaf);
        return is_read() ? RC_OK : refuse(leaf.tag);
    }
};

} // namespace

rcode walk_interfaces(const plugin &by, session &s, zmf_datatree &interfaces, output_tree &out) {
    return interface_road(by, s, out).walk(interfaces);
}

} // namespace zmf
