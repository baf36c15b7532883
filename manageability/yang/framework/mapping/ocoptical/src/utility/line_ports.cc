// Line ports: which optics ports and controllers are, and whether a line port lies on its optical channel.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "engine/export.h"
#include "exported.h"
#include "namespaces.h"
#include "platform.h"
#include "utility/paths.h"
#include "utility/scan.h"
#include "utility/text.h"

using namespace ocoptical;

namespace {

struct location {
    int32_t r = absent, s = absent, i = absent, p = absent;

    bool is_complete() const { return r != absent && s != absent && i != absent && p != absent; }
    bool operator==(const location &) const = default;
};

// A location, and the two numbers that may stand in front of a name.
struct prefixed_location {
    int32_t a = absent, b = absent;
    location at;
};

location scan_location(const char *name, const char *format) {
    location at;
    if (name != nullptr) {
        sscanf(name, format, &at.r, &at.s, &at.i, &at.p);
    }
    return at;
}

prefixed_location scan_either(const char *name, const char *plain, const char *prefixed) {
    prefixed_location found;
    if (name == nullptr) {
        return found;
    }
    if (strchr(name, '-') != nullptr) {
        sscanf(name, prefixed, &found.a, &found.b, &found.at.r, &found.at.s, &found.at.i, &found.at.p);
    } else {
        found.at = scan_location(name, plain);
    }
    return found;
}

// On routers that have components for them, a line port is one whose optical channel stands among these.
uint32_t has_component(const char *name, zmf_map_ctx ctx, zmf_datatree *tree) {
    char channel[text_size] = "";
    if (oc_optical_convert_interface_to_opticalchannel(name, channel) != RC_OK || ctx == nullptr) {
        return 0;
    }
    zmf_datatree *entry = nullptr;
    return zmf_map_search_list(ctx, tree, &entry, OC_COMPONENT, channel, "name", ZMF_NS_OC_PLATFORM) == RC_OK ? 1 : 0;
}

bool asks_components(uint32_t router_type) {
    return router_type == 18 || router_type == 19;
}

// Controllers have no 26 and 27.
constexpr int32_t interface_ports[] = {5, 6, 12, 13, 19, 20, 26, 27};
constexpr int32_t controller_ports[] = {5, 6, 12, 13, 19, 20};

template <size_t count>
bool is_one_of(const int32_t (&ports)[count], int32_t port) {
    return std::find(std::begin(ports), std::end(ports), port) != std::end(ports);
}

constexpr uint32_t slots = 20;
constexpr uint32_t ports_of_a_slot = 128;

} // namespace

OC_EXPORT uint32_t oc_optical_is_interface_line_port(const char *name, zmf_map_ctx ctx, zmf_datatree *tree) {
    const uint32_t type = hwinfo_get_router_type();
    if (asks_components(type)) {
        return has_component(name, ctx, tree);
    }
    const location at = scan_location(name, "Optics%d/%d/%d/%d");
    if (type == 7) {
        return at.is_complete() && is_one_of(interface_ports, at.p) ? 1 : 0;
    }
    const bool on_a_slot = at.r != absent && static_cast<uint32_t>(at.s) < slots;
    return on_a_slot && at.i != absent && static_cast<uint32_t>(at.p) < ports_of_a_slot ? 1 : 0;
}

OC_EXPORT uint32_t oc_optical_is_controller_line_port(const char *name, zmf_map_ctx ctx, zmf_datatree *tree) {
    if (asks_components(hwinfo_get_router_type())) {
        return has_component(name, ctx, tree); // which knows no controller by its name
    }
    (void)hwinfo_get_router_type(); // asked once more and not heeded
    const location at = scan_location(name, "CoherentDSP%d/%d/%d/%d");
    return at.is_complete() && is_one_of(controller_ports, at.p) ? 1 : 0;
}

OC_EXPORT rcode oc_optical_check_lineport_rsip(const char *component, const char *line_port) {
    const prefixed_location of = scan_either(component, "OpticalChannel%d/%d/%d/%d", "%d/%d-OpticalChannel%d/%d/%d/%d");
    const prefixed_location port = scan_either(line_port, "Optics%d/%d/%d/%d", "%d/%d-Optics%d/%d/%d/%d");
    if (strchr(line_port, '-') == nullptr) {
        return of.at == port.at ? RC_OK : RC_SUBTREE_ERROR;
    }
    // A prefixed port is held against the component's prefix, which has to agree with the component's own location.
    const location prefix_of_all{of.a, of.b, of.at.i, of.at.p};
    const bool all_agree = of.at == prefix_of_all && port.at == prefix_of_all && of.a == port.a && of.b == port.b;
    return all_agree ? RC_OK : RC_SUBTREE_ERROR;
}

OC_EXPORT uint32_t is_valid_channel_for_esnr(const char *name, zmf_map_ctx ctx, zmf_datatree *tree,
                                             uint32_t restriction) {
    if (!hwinfo_has_optical_term_dev()) {
        return restriction == 0 ? 1 : 0;
    }
    const uint32_t line_port = oc_optical_is_interface_line_port(name, ctx, tree);
    return restriction == 0 || line_port != 0 ? 1 : 0;
}
