// Logs of adds: see adds.h.
#include "adds.h"

#include <gtest/gtest.h>

#include "namespaces.h"

namespace {

struct head {
    std::string path;
    const char *shown; // in its place; null: the head itself
    const char *ns;    // of what stands at the head or below it
};

// The first that fits.
const head heads[] = {
    {"/interface-configurations/interface-configuration/optics", "O", ZMF_NS_OPTICS_CFG},
    {"/interface-configurations/interface-configuration", "I", ZMF_NS_IFMGR_CFG},
    {"/optical-channels/optical-channel", "T", ZMF_NS_TERMINAL_DEVICE_CFG},
    {"/logical-channels/channel", "N", ZMF_NS_TERMINAL_DEVICE_CFG},
    {"/optics-oper/optics-ports/optics-port", "P", ZMF_NS_OPTICS_OPER},
    {"/components/component/optical-channel/extended", "C/extended", ZMF_NS_OPTICAL_CHANNEL_EXT},
    {"/components/component/optical-channel", "C", ZMF_NS_OC_TERMINAL_DEVICE},
    {"/components/component/config/name", "name", ZMF_NS_OC_PLATFORM},
    {"/performance-management-history", nullptr, ZMF_NS_PMENGINE_OPER},
    {"interface-configurations/interface-configuration/optics", nullptr, ZMF_NS_OPTICS_CFG},
    {"optics-oper", nullptr, ZMF_NS_OPTICS_OPER},
};

const head *head_of(const std::string &path) {
    for (const head &each : heads) {
        if (path == each.path || path.starts_with(each.path + "/")) {
            return &each;
        }
    }
    return nullptr;
}

} // namespace

add_log::add_log(zmf::session &session) {
    session.record([this, &session](const zmf::call &call) { note(call, session.request().err_msg); });
}

void add_log::note(const zmf::call &call, const char *err_msg) {
    switch (call.op) {
    case zmf::operation::add_path:
        note_add(call);
        break;
    case zmf::operation::search_or_add_list:
        text += std::string("entry ") + call.value + "\n";
        break;
    case zmf::operation::update_namespace:
        text += "repair\n";
        break;
    case zmf::operation::error_path:
        marks.emplace_back(err_msg != nullptr ? err_msg : "");
        break;
    default:
        break;
    }
}

void add_log::note_add(const zmf::call &call) {
    std::string path = call.path;
    const head *found = head_of(path);
    if (found == nullptr) {
        ADD_FAILURE() << "add at " << path;
        return;
    }
    EXPECT_STREQ(call.ns, found->ns) << path;
    if (found->shown != nullptr) {
        path.replace(0, found->path.size(), found->shown);
    }
    text += path + (call.value != nullptr ? "=" + std::string(call.value) : "") + (call.source != nullptr ? " @" : "") +
            (call.list_flag ? " list" : "") + (call.cross_module_flag ? " cross" : "") + "\n";
}
