// Look-ups in the model tables.
#include <map>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "schema/schema.h"

namespace {

#define TERMINAL_DEVICE "http://openconfig.net/yang/terminal-device"

// The node at "terminal-device/logical-channels", or null.
const schema::node *node_at(const std::string &path) {
    const schema::model &model = schema::models()[path.starts_with("components")   ? 1
                                                  : path.starts_with("interfaces") ? 2
                                                                                   : 0];
    const schema::node *found = nullptr;
    std::istringstream steps(path);
    for (std::string step; std::getline(steps, step, '/');) {
        found = schema::child(found, model, step);
        if (found == nullptr)
            return nullptr;
    }
    return found;
}

#define CHANNEL "terminal-device/logical-channels/channel"
#define OPTICAL "components/component/optical-channel"

TEST(schema, finds_nodes_by_path_and_knows_what_they_are) {
    using schema::kind, schema::type;
    struct {
        const char *path;
        kind what;
        bool is_key;
        bool is_config;
        type value;
    } const rows[] = {
        {"terminal-device", kind::container, false, true, type::none},
        {CHANNEL, kind::list, false, true, type::none},
        {CHANNEL "/index", kind::leaf, true, true, type::integer},
        {CHANNEL "/config/index", kind::leaf, false, true, type::integer},
        {CHANNEL "/config/rate-class", kind::leaf, false, true, type::identity},
        {CHANNEL "/state", kind::container, false, false, type::none},
        {CHANNEL "/state/link-state", kind::leaf, false, false, type::enumeration},
        {CHANNEL "/otn/state/esnr/max-time", kind::leaf, false, false, type::integer64},
        {CHANNEL "/ethernet/lldp/neighbors/neighbor", kind::list, false, false, type::none},
        {CHANNEL "/ethernet/lldp/neighbors/neighbor/config", kind::container, false, false, type::none},
        {CHANNEL "/ethernet/lldp/neighbors/neighbor/custom-tlvs/tlv/type", kind::leaf, true, false, type::integer},
        {CHANNEL "/ethernet/lldp/neighbors/neighbor/custom-tlvs/tlv/state/type", kind::leaf, false, false,
         type::integer},
        {CHANNEL "/ingress/config/physical-channel", kind::leaf_list, false, true, type::integer},
        {CHANNEL "/logical-channel-assignments/assignment/config/allocation", kind::leaf, false, true, type::decimal64},
        {"components/component/properties/property/name", kind::leaf, true, true, type::string},
        {"components/component/state/temperature/alarm-severity", kind::leaf, false, false, type::identity},
        {"components/component/transceiver/config/enabled", kind::leaf, false, true, type::boolean},
        {"interfaces/interface/state/physical-channel", kind::leaf_list, false, false, type::integer},
        {"interfaces/interface/ethernet/state/counters", kind::container, false, false, type::none},
        {"terminal-device/operational-modes", kind::container, false, true, type::none},
        {"terminal-device/operational-modes/mode/config", kind::container, false, false, type::none},
    };
    for (const auto &row : rows) {
        const schema::node *node = node_at(row.path);
        ASSERT_NE(node, nullptr) << row.path;
        EXPECT_EQ(node->what, row.what) << row.path;
        EXPECT_EQ(node->is_key, row.is_key) << row.path;
        EXPECT_EQ(node->is_config, row.is_config) << row.path;
        EXPECT_EQ(node->value, row.value) << row.path;
    }
    for (const char *path : {"optical-channel", "terminal-device/channel", CHANNEL "/rate-class",
                             CHANNEL "/state/mode-id", CHANNEL "/index/index"})
        EXPECT_EQ(node_at(path), nullptr) << path;
}

TEST(schema, has_what_other_models_add_in_its_place) {
    const struct {
        const char *path, *module, *ns, *callback;
    } rows[] = {
        {"components/component/name", "openconfig-platform", "http://openconfig.net/yang/platform",
         "openconfigplatform_leaf_lvla_components_component_name"},
        {OPTICAL "/config/line-port", "openconfig-terminal-device", TERMINAL_DEVICE,
         "openconfigterminaldevice_leaf_lvla_opticalchannel_config_lineport"},
        {OPTICAL "/state/polarization-dependent-loss/avg", "openconfig-terminal-device", TERMINAL_DEVICE,
         "openconfigterminaldevice_leaf_lvla_opticalchannel_polarizationdependentloss_avg"},
        {OPTICAL "/extended/thresholds/state/input-signal-power-upper", "Corvane-openconfig-terminal-device-ext",
         "urn:corvane:yang:Corvane-openconfig-terminal-device-ext",
         "corvaneopenconfigterminaldeviceext_leaf_lvla_extended_state_inputsignalpowerupper"},
        {"components/component/transceiver/physical-channels/channel/state/output-power/avg",
         "openconfig-platform-transceiver", "http://openconfig.net/yang/platform/transceiver",
         "openconfigplatformtransceiver_leaf_lvlb_transceiver_outputpower_avg"},
        {"interfaces/interface/state/transceiver", "openconfig-platform-transceiver",
         "http://openconfig.net/yang/platform/transceiver", "openconfigplatformtransceiver_leaf_lvla_transceiver"},
        {"interfaces/interface/ethernet/config/port-speed", "openconfig-if-ethernet",
         "http://openconfig.net/yang/interfaces/ethernet", "openconfigifethernet_leaf_lvla_ethernet_config_portspeed"},
    };
    for (const auto &row : rows) {
        const schema::node *node = node_at(row.path);
        ASSERT_NE(node, nullptr) << row.path;
        EXPECT_STREQ(node->module, row.module);
        EXPECT_STREQ(node->ns, row.ns);
        EXPECT_STREQ(node->callback, row.callback);
    }
    EXPECT_TRUE(node_at("components/component/name") < node_at(OPTICAL) &&
                node_at(OPTICAL "/state") < node_at(OPTICAL "/extended"));
}

TEST(schema, spans_subtrees_and_links_parents) {
    for (const schema::model &model : schema::models()) {
        EXPECT_EQ(model.nodes.front().end, model.nodes.size());
        for (const schema::node &node : model.nodes.subspan(1)) {
            const auto index = static_cast<size_t>(&node - model.nodes.data());
            const auto parent = static_cast<size_t>(node.parent - model.nodes.data());
            EXPECT_LT(parent, index);
            EXPECT_LE(node.end, node.parent->end) << node.callback;
            EXPECT_EQ(node.depth, node.parent->depth + 1) << node.callback;
            EXPECT_EQ(schema::child(node.parent, model, node.tag), &node) << node.callback;
        }
    }
}

TEST(schema, knows_roots_modules_and_native_lists) {
    EXPECT_EQ(schema::root_of("terminal-device", TERMINAL_DEVICE), &schema::models()[0]);
    EXPECT_EQ(schema::root_of("terminal-device", "urn:x"), nullptr);
    EXPECT_EQ(schema::root_of("optical-channel", TERMINAL_DEVICE), nullptr);

    EXPECT_STREQ(schema::ns_of_module("openconfig-terminal-device"), TERMINAL_DEVICE);
    EXPECT_STREQ(schema::ns_of_module("Corvane-ifmgr-cfg"), "urn:corvane:yang:Corvane-ifmgr-cfg");
    EXPECT_STREQ(schema::module_of_ns("urn:ietf:params:xml:ns:netconf:base:1.0"), "ietf-netconf");
    EXPECT_EQ(schema::ns_of_module("Corvane"), nullptr);
    EXPECT_EQ(schema::module_of_ns("openconfig-terminal-device"), nullptr);

    const schema::native_list *controllers = schema::native_list_at("/otu/controllers/controller");
    ASSERT_NE(controllers, nullptr);
    EXPECT_STREQ(controllers->module, "Corvane-controller-otu-oper");
    ASSERT_EQ(controllers->keys.size(), 1u);
    EXPECT_STREQ(controllers->keys[0], "controller-name");
    const schema::native_list *history = schema::native_list_at(
        "/performance-management-history/global/periodic/otu-history/otu-port-histories/"
        "otu-port-history/otu-second30-history/otu-second30fec-histories/otu-second30fec-history");
    ASSERT_NE(history, nullptr);
    EXPECT_TRUE(history->keys.empty());
    EXPECT_EQ(schema::native_list_at("/otu/controllers"), nullptr);
    EXPECT_EQ(schema::native_list_at("otu/controllers/controller"), nullptr);
}

#define ETHERNET_BIN                                                                                                   \
    "/performance-management/ethernet/ethernet-ports/ethernet-port/ethernet-prev/ethernet-prev-flex-interval/"         \
    "ethernet-prev-flex-interval-pcses/ethernet-prev-flex-interval-pcs"

TEST(schema, links_native_nodes) {
    using schema::kind, schema::type;
    std::map<kind, int> count;
    for (const schema::native_node &node : schema::native_nodes()) {
        EXPECT_EQ(schema::native_child(node.parent, node.tag), &node) << node.tag;
        if (node.parent == nullptr) {
            EXPECT_NE(schema::ns_of_module(node.module), nullptr) << node.module;
        } else {
            EXPECT_TRUE(node.parent < &node && node.end <= node.parent->end) << node.tag;
            // By another module.
            const bool is_added = node.tag == std::string_view("optics") &&
                                  node.parent->tag == std::string_view("interface-configuration");
            EXPECT_NE(std::string_view(node.module) == node.parent->module, is_added) << node.tag;
        }
        count[node.what] += std::string_view(node.module) == "Corvane-terminal-device-cfg";
    }
    EXPECT_EQ(count[kind::container], 6);
    EXPECT_EQ(count[kind::list], 4);
    EXPECT_EQ(count[kind::leaf] + count[kind::leaf_list], 39);

    const struct {
        const char *path;
        kind what;
        bool is_key, is_config;
        type value;
    } rows[] = {
        {"/logical-channels", kind::container, false, true, type::none},
        {"/logical-channels/channel/logical-channel-assignments/logical-channel-assignment", kind::list, false, true,
         type::none},
        {"/logical-channels/channel/channel-index", kind::leaf, true, true, type::integer},
        {"/logical-channels/channel/ingress-physical-channel", kind::leaf_list, false, true, type::integer},
        {"/optical-channels/optical-channel/cd-high-threshold", kind::leaf, false, true, type::string},
        {"/otu/controllers/controller", kind::list, false, false, type::none},
        {"/interface-configurations/interface-configuration/interface-name", kind::leaf, true, true, type::string},
        {"/interface-configurations/interface-configuration/optics/rx-thresholds/rx-threshold/rx-threshold", kind::leaf,
         false, true, type::integer},
        {"/optics-oper/optics-ports/optics-port/name", kind::leaf, true, false, type::string},
        {ETHERNET_BIN, kind::list, false, false, type::none},
        {ETHERNET_BIN "/slot-number", kind::leaf, true, false, type::integer},
        {ETHERNET_BIN "/uas-ne/count/data", kind::leaf, false, false, type::string},
    };
    for (const auto &row : rows) {
        const schema::native_node *node = schema::native_at(row.path);
        ASSERT_NE(node, nullptr) << row.path;
        EXPECT_EQ(node->what, row.what) << row.path;
        EXPECT_EQ(node->is_key, row.is_key) << row.path;
        EXPECT_EQ(node->is_config, row.is_config) << row.path;
        EXPECT_EQ(node->value, row.value) << row.path;
    }
    for (const char *path : {"", "/", "logical-channels", "/logical-channels/", "/channel", "/otu/channel"})
        EXPECT_EQ(schema::native_at(path), nullptr) << path;
}

} // namespace
