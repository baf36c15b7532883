// Loading the plug-in and running a request through its roots: see plugin.h.
// To add a root of the way up: its row in `up_roots`, where its turn is; a group of records: its name in
// `record_groups`.
#include "plugin.h"

#include <dlfcn.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "component_road.h"
#include "interface_road.h"
#include "pouch/registry.h"
#include "schema/schema.h"
#include "session_body.h"

namespace zmf {

namespace {

struct up_root {
    const char *tag, *module;
    const char *function; // behind "ymap_xo_oc_optical_"
    bool is_config;
};

constexpr up_root up_roots[] = {
    // clang-format off
    {"optical-channels",               "Corvane-terminal-device-cfg",    "corvaneterminaldevicecfg_lvla_opticalchannels",           true},
    {"transceivers",                   "Corvane-terminal-device-cfg",    "corvaneterminaldevicecfg_lvla_transceivers",              true},
    {"interface-configurations",       "Corvane-ifmgr-cfg",              "corvaneifmgrcfg_lvla_interfaceconfigurations",            true},
    {"optics-oper",                    "Corvane-controller-optics-oper", "corvanecontrolleropticsoper_lvla_opticsoper",             false},
    {"otu",                            "Corvane-controller-otu-oper",    "corvanecontrollerotuoper_lvla_otu",                       false},
    {"odu",                            "Corvane-controller-odu-oper",    "corvanecontrolleroduoper_lvla_odu",                       false},
    {"ethernet-interface",             "Corvane-drivers-media-eth-oper", "corvanedriversmediaethoper_lvla_ethernetinterface",       false},
    {"optical-interface",              "Corvane-terminal-device-oper",   "corvaneterminaldeviceoper_lvla_opticalinterface",         false},
    {"performance-management",         "Corvane-pmengine-oper",          "corvanepmengineoper_lvla_performancemanagement",          false},
    {"performance-management-history", "Corvane-pmengine-oper",          "corvanepmengineoper_lvla_performancemanagementhistory",   false},
    {"lldp",                           "Corvane-ethernet-lldp-oper",     "corvaneethernetlldpoper_lvla_lldp",                       false},
    {"logical-channels",               "Corvane-terminal-device-cfg",    "corvaneterminaldevicecfg_lvla_logicalchannels",           true},
    // clang-format on
};

constexpr const char *record_groups[] = {
    "pouch_register_all_optics_ui_pouchs",
    "pouch_register_all_otu_ma_pouchs",
    "pouch_register_all_odu_ma_pouchs",
    "pouch_register_all_otn_te_common_pouchs",
    "pouch_register_all_ethernet_show_controller_pouchs",
};

std::string_view text_or_empty(const char *text) {
    return text == nullptr ? std::string_view() : text;
}

const schema::model &root_for(const zmf_datatree &top) {
    if (const schema::model *model = schema::root_of(text_or_empty(top.tag), text_or_empty(top.ns)))
        return *model;
    throw plugin_error{"no root for top node \"" + std::string(text_or_empty(top.tag)) + "\" of namespace \"" +
                       std::string(text_or_empty(top.ns)) + "\""};
}

using road_fn = rcode (*)(const plugin &, session &, zmf_datatree &, output_tree &);

// Top nodes that are walked entry by entry; null: by its root as it stands.
road_fn road_of(std::string_view top_tag) {
    return top_tag == "components" ? walk_components : top_tag == "interfaces" ? walk_interfaces : nullptr;
}

bool takes(const up_root &root, const zmf_datatree &top) {
    const char *ns = schema::ns_of_module(root.module);
    return ns != nullptr && text_or_empty(top.tag) == root.tag && text_or_empty(top.ns) == ns;
}

} // namespace

void plugin::unload::operator()(void *handle) const {
    dlclose(handle);
}

plugin::plugin(const std::string &file) : file_(file), handle_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr) {
        const char *reason = dlerror();
        throw plugin_error{"plug-in \"" + file + "\" does not load: " + (reason == nullptr ? "no reason" : reason)};
    }
    register_records();
}

// A group that is not exported is left out.
void plugin::register_records() const {
    for (const char *name : record_groups) {
        const auto register_group = reinterpret_cast<rcode (*)()>(symbol(name));
        if (register_group != nullptr && register_group() != RC_OK)
            throw plugin_error{"plug-in \"" + file_ + "\": " + name + " fails: " + pouch::last_refusal()};
    }
}

void *plugin::symbol(const char *name) const noexcept {
    return dlsym(handle_.get(), name);
}

zmf_node_fn plugin::node_function(const std::string &name) const {
    void *found = symbol(name.c_str());
    if (found == nullptr)
        throw plugin_error{"plug-in \"" + file_ + "\" lacks " + name};
    return reinterpret_cast<zmf_node_fn>(found);
}

void plugin::serve(performance kept) const noexcept {
    if (auto *word = static_cast<uint32_t *>(symbol("OC_OPTICAL_PM_IS_FLEXBIN_UNSUPPORTED")))
        *word = kept == performance::history ? 1 : 0;
}

rcode plugin::down(session &s, const fixed_tree &request, output_tree &out) const {
    std::vector<zmf_node_fn> roots;
    for (uint32_t i = 0; i < request.count(); ++i)
        roots.push_back(node_function(root_for(request.tops()[i]).entry));
    for (uint32_t i = 0; i < request.count(); ++i) {
        if (i != 0)
            s.reset();
        zmf_datatree &top = request.tops()[i];
        s.internals()->walked_top = &top;
        const auto by_entries = road_of(top.tag);
        const rcode status =
            by_entries != nullptr ? by_entries(*this, s, top, out) : roots[i](s.context(), &top, out.root());
        if (status != RC_OK)
            return status;
    }
    return RC_OK;
}

zmf_node_fn plugin::up_function(const char *name) const {
    return reinterpret_cast<zmf_node_fn>(symbol((std::string("ymap_xo_oc_optical_") + name).c_str()));
}

bool plugin::takes_up(const zmf_datatree &top) const {
    return std::any_of(std::begin(up_roots), std::end(up_roots),
                       [&](const up_root &root) { return takes(root, top) && up_function(root.function) != nullptr; });
}

rcode plugin::up(session &s, const fixed_tree &native, output_tree &out, bool with_operational) const {
    for (const up_root &root : up_roots) {
        zmf_node_fn walk = up_function(root.function);
        if (walk == nullptr || (!root.is_config && !with_operational))
            continue;
        for (uint32_t i = 0; i < native.count(); ++i) {
            zmf_datatree &top = native.tops()[i];
            if (!takes(root, top))
                continue;
            s.reset();
            s.internals()->walked_top = &top;
            rcode status = walk(s.context(), &top, out.root());
            if (status != RC_OK && status != RC_NOT_MAPPED)
                return status;
        }
    }
    return RC_OK;
}

} // namespace zmf
