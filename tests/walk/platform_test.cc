// Components, transceivers and the Ethernet of an interface: models that are walked and refused by name, and add
// nothing. To add a case: a row. Requests as in request_text.h.
#include <gtest/gtest.h>

#include <cstring>

#include "namespaces.h"
#include "request_text.h"
#include "schema/schema.h"
#include "zmf/plugin.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

constexpr uint32_t cfg = OP_GET_CONFIG, get = OP_GET, edit = OP_EDIT, checked = OP_EDIT_CHECKED, full = OP_EDIT_FULL;
constexpr uint32_t other_write = 5;

const zmf::plugin &loaded() {
    static const zmf::plugin plugin(OCOPTICAL_PLUGIN);
    return plugin;
}

struct entry_point {
    const char *name; // behind "ymap_ox_oc_optical_"
    const char *ns;
};
constexpr entry_point root{"openconfigplatform_lvla_components", ZMF_NS_OC_PLATFORM};
constexpr entry_point of_component{"openconfigplatformtransceiver_augment_lvla_component",
                                   ZMF_NS_OC_PLATFORM_TRANSCEIVER};
constexpr entry_point of_state{"openconfigplatformtransceiver_augment_lvla_state", ZMF_NS_OC_PLATFORM_TRANSCEIVER};
constexpr entry_point of_state_too{"openconfigplatformtransceiver_augment_lvlb_state", ZMF_NS_OC_PLATFORM_TRANSCEIVER};
constexpr entry_point of_interface{"openconfigifethernet_augment_lvla_interface", ZMF_NS_OC_IF_ETHERNET};

struct result {
    rcode status;
    std::string text;   // err_msg, where the status is a failure
    std::string checks; // list positions and key checks, one a line
    std::string marks;
};

// Walks one node, and holds it to what every walk of these models keeps.
result walk(const entry_point &at, uint32_t kind, const std::string &text) {
    request_text request(text, at.ns);
    zmf::session session(kind);
    zmf::output_tree output;
    result found;
    session.record([&found](const zmf::call &c) {
        if (c.op == zmf::operation::update_current_list)
            found.checks += std::string("at ") + c.path + "\n";
        if (c.op == zmf::operation::check_leafref)
            found.checks += std::string("check ") + c.path + " " + c.key + "\n";
    });
    found.status = loaded().node_function(std::string("ymap_ox_oc_optical_") + at.name)(session.context(),
                                                                                        request.top(), output.root());
    if (found.status != RC_OK && session.request().err_msg != nullptr)
        found.text = session.request().err_msg;
    found.marks = request.marks();
    EXPECT_EQ(output.nodes(), 0u) << text;
    EXPECT_EQ(session.hierarchy_depth() + session.stack_size() + session.imbalances(), 0u) << text;
    EXPECT_EQ(session.request().walk_all + session.request().delete_walk, 0u) << text;
    return found;
}

std::string component(const std::string &children) {
    return "components{component{name=x " + children + "}}";
}

TEST(platform_models, refuse_what_is_named_and_pass_over_the_rest) {
    const struct {
        const entry_point &at;
        uint32_t kind;
        std::string request;
        rcode status;
        const char *text = "";
    } rows[] = {
        {root, get, "components", RC_OK},
        {root, cfg, "components", RC_OK},
        {root, get, "components{component}", RC_OK},
        {root, get, component(""), RC_OK},
        {root, get, component("state"), RC_OK},
        {root, get, component("state{temperature memory}"), RC_OK},
        {root, get, component("properties subcomponents chassis{config state}"), RC_OK},
        {root, get, component("properties{property{name=p}}"), RC_OK},
        {root, get, component("state{serial-no}"), RC_UNSUPPORTED_NODE, "serial-no"},
        {root, get, component("state{serial-no=7}"), RC_UNSUPPORTED_NODE, "state"}, // said last, for all siblings
        {root, get, component("state{temperature{max-time}}"), RC_UNSUPPORTED_NODE, "max-time"},
        {root, cfg, component("state{serial-no}"), RC_OK},
        {root, cfg, component("config{name}"), RC_UNSUPPORTED_NODE, "name"},
        {root, edit, component("config{name=x}"), RC_UNSUPPORTED_NODE, "name"},
        {root, edit, component("state{oper-status=7}"), RC_UNSUPPORTED_NODE, "state"},
        {root, other_write, component("oper-status=7"), RC_UNSUPPORTED_NODE, "oper-status"},
        {root, edit, component("config{name!delete}"), RC_UNSUPPORTED_NODE, "name"},
        {root, edit, "components{component!replace{name=x config{name=x}}}", RC_UNSUPPORTED_NODE, "name"},
        {root, edit, "components{component!delete{name=x}}", RC_OK},
        {root, edit, component("config!delete"), RC_OK},
        {root, edit, component("properties!delete{property{name=p}}"), RC_INVALID_ARGUMENTS, "name"}, // of the key
        // Containers without a child of their own.
        {root, edit, component("backplane{config{size=1}}"), RC_UNSUPPORTED_NODE, "size"},
        {root, get, component("backplane{state{size}}"), RC_OK},
        {root, edit, component("fan{config{x:speed=1}}"), RC_UNSUPPORTED_AUGMENT, "speed"},
        {root, edit, component("fan{config{x:speed!remove}}"), RC_OK},
        {root, get, component("fan{state{x:speed}}"), RC_OK},
        // What augments a component is not known to its own walk.
        {root, edit, component("x:transceiver"), RC_UNSUPPORTED_AUGMENT, "transceiver"},
        {root, get, component("x:transceiver{vendor}"), RC_OK},
        {root, edit, "components{rack}", RC_UNSUPPORTED_NODE, "rack"},

        {of_component, get, "transceiver", RC_OK},
        {of_component, cfg, "transceiver{config}", RC_OK},
        {of_component, edit, "transceiver!delete", RC_OK},
        {of_component, get, "transceiver{state{vendor}}", RC_UNSUPPORTED_NODE, "vendor"},
        {of_component, get, "transceiver{state{output-power{min-time}}}", RC_UNSUPPORTED_NODE, "min-time"},
        {of_component, cfg, "transceiver{config{enabled}}", RC_UNSUPPORTED_NODE, "enabled"},
        {of_component, edit, "transceiver{config{fec-mode=1}}", RC_UNSUPPORTED_NODE, "fec-mode"},
        {of_component, edit, "transceiver{config{fec-mode!delete}}", RC_UNSUPPORTED_NODE, "fec-mode"},
        {of_component, get, "transceiver{physical-channels{channel{index=1}}}", RC_OK},
        {of_component, get, "transceiver{physical-channels{channel{index=1 state{input-power{avg}}}}}",
         RC_UNSUPPORTED_NODE, "avg"},
        {of_component, edit, "transceiver{physical-channels{channel{index=1 config{tx-laser=true}}}}",
         RC_UNSUPPORTED_NODE, "tx-laser"},
        {of_component, get, "physical-channel", RC_OK},
        {of_component, edit, "physical-channel=1", RC_UNSUPPORTED_NODE, "physical-channel"},
        {of_component, get, "x:foo", RC_OK},
        {of_component, edit, "x:foo", RC_UNSUPPORTED_AUGMENT, "foo"},

        {of_state, get, "transceiver", RC_UNSUPPORTED_NODE, "transceiver"},
        {of_state, get, "other", RC_OK},
        {of_state, edit, "transceiver=t", RC_UNSUPPORTED_NODE, "transceiver"},
        {of_state, edit, "physical-channel=1", RC_UNSUPPORTED_NODE, "physical-channel"},
        {of_state, edit, "x:foo=t", RC_UNSUPPORTED_AUGMENT, "foo"},
        {of_state_too, get, "physical-channel", RC_UNSUPPORTED_NODE, "physical-channel"},
        {of_state_too, edit, "transceiver=t", RC_UNSUPPORTED_NODE, "transceiver"},
        {of_state_too, edit, "x:foo=1", RC_UNSUPPORTED_AUGMENT, "foo"},
        {of_state_too, edit, "x:foo!delete", RC_OK},

        {of_interface, get, "ethernet", RC_OK},
        {of_interface, cfg, "ethernet{config}", RC_OK},
        {of_interface, get, "ethernet{state{counters}}", RC_OK},
        {of_interface, edit, "ethernet{config{port-speed=1}}", RC_UNSUPPORTED_NODE, "port-speed"},
        {of_interface, get, "ethernet{state{counters{in-crc-errors}}}", RC_UNSUPPORTED_NODE, "in-crc-errors"},
        {of_interface, cfg, "ethernet{state{counters{in-crc-errors}}}", RC_OK},
        {of_interface, edit, "ethernet{state{mac-address=1}}", RC_UNSUPPORTED_NODE, "state"},
        {of_interface, edit, "ethernet!replace{config{duplex-mode=1}}", RC_UNSUPPORTED_NODE, "duplex-mode"},
        {of_interface, edit, "config", RC_UNSUPPORTED_NODE, "config"},
        {of_interface, get, "config", RC_OK},
        {of_interface, edit, "x:foo", RC_UNSUPPORTED_AUGMENT, "foo"},
        {of_interface, cfg, "x:foo", RC_OK},
    };
    for (const auto &row : rows) {
        const result found = walk(row.at, row.kind, row.request);
        EXPECT_EQ(zmf::status_name(found.status), zmf::status_name(row.status)) << row.kind << " " << row.request;
        EXPECT_EQ(found.text, row.text) << row.kind << " " << row.request;
    }
    EXPECT_EQ(walk(of_state, get, "transceiver").marks, "transceiver:1");
    EXPECT_EQ(walk(of_state_too, get, "physical-channel").marks, "physical-channel:2");
}

struct keyed_list {
    const entry_point &at;
    std::string before, tag, key, after; // a request for an entry: before, the entry, after
    const char *path, *checked_path;
    const char *outer; // what the lists around it are asked for
};

const keyed_list lists[] = {
    {root, "components{", "component", "name", "}", "/components/component", "/components/component", ""},
    {root, "components{component{name=x properties{", "property", "name", "}}}",
     "/components/component/properties/property", "/components/component/properties/property",
     "at /components/component\ncheck /components/component name\n"},
    {root, "components{component{name=x subcomponents{", "subcomponent", "name", "}}}",
     "/components/component/subcomponents/subcomponent", "/components/component/subcomponents/subcomponent",
     "at /components/component\ncheck /components/component name\n"},
    {of_component, "transceiver{physical-channels{", "channel", "index", "}}",
     "/oc-platform:components/oc-platform:component/transceiver/physical-channels/channel",
     "/components/component/transceiver/physical-channels/channel", ""},
};

// In the requests K stands for the key.
std::string with_key(std::string text, const std::string &key) {
    for (size_t at = text.find('K'); at != std::string::npos; at = text.find('K', at))
        text.replace(at, 1, key);
    return text;
}

TEST(platform_models, check_the_keys_of_each_list) {
    const struct {
        uint32_t kind;
        const char *entry; // behind the tag
        rcode status;
        const char *text = "";
    } rows[] = {
        {edit, "{K=1}", RC_OK},
        {edit, "", RC_SUBTREE_ERROR},
        {edit, "{config}", RC_LIST_KEY_ERROR, "K"},
        {checked, "{config}", RC_LIST_KEY_ERROR, "K"},
        {full, "{config}", RC_LIST_KEY_ERROR, "K"},
        {other_write, "{config}", RC_OK},
        {edit, "{K}", RC_LIST_KEY_ERROR, "K"},
        {edit, "{K=1 K=1}", RC_LIST_KEY_ERROR, "K"},
        {get, "{K=1 K=1}", RC_LIST_KEY_ERROR, "K"},
        {get, "{K}", RC_OK},
        {get, "", RC_OK},
        {edit, "{K!delete=1}", RC_KEY_DELETE},
        {edit, "!delete{K=1}", RC_OK},
        {edit, "!delete", RC_SUBTREE_ERROR},
        {edit, "!replace{K=1}", RC_OK},
        {full, "{K=1 config{K=2}}", zmf::rc_leafref_mismatch},
        {edit, "{K=1 config{K=1}}", RC_UNSUPPORTED_NODE, "K"},
        {other_write, "{K=1 config{K=2}}", RC_UNSUPPORTED_NODE, "K"},
    };
    for (const keyed_list &list : lists)
        for (const auto &row : rows) {
            const std::string request = list.before + list.tag + with_key(row.entry, list.key) + list.after;
            const result found = walk(list.at, row.kind, request);
            EXPECT_EQ(zmf::status_name(found.status), zmf::status_name(row.status)) << row.kind << " " << request;
            if (*row.text != '\0') { // else that of a key which was passed over may stand there
                EXPECT_EQ(found.text, with_key(row.text, list.key)) << row.kind << " " << request;
            }
        }
}

TEST(platform_models, stand_at_one_path_and_check_keys_at_another) {
    for (const keyed_list &list : lists) {
        const std::string entry = list.tag + "{" + list.key + "=1}";
        const std::string checks =
            std::string("at ") + list.path + "\ncheck " + list.checked_path + " " + list.key + "\n";
        EXPECT_EQ(walk(list.at, edit, list.before + entry + list.after).checks, list.outer + checks);
    }
}

// All nodes of these models, as the host knows them.

bool is_platform_module(const schema::node &node) {
    const std::string_view module = node.module;
    return module == "openconfig-platform" || module == "openconfig-platform-transceiver" ||
           module == "openconfig-if-ethernet";
}

TEST(platform_models, have_callbacks_that_refuse_leaves_and_take_all_else) {
    int leaves = 0;
    for (const schema::model &model : schema::models())
        for (const schema::node &node : model.nodes) {
            if (!is_platform_module(node))
                continue;
            zmf::session session(OP_GET);
            zmf::output_tree output;
            zmf_datatree given{};
            given.tag = "given";
            void *callback = loaded().symbol((std::string("ymap_ox_oc_optical_") + node.callback).c_str());
            ASSERT_NE(callback, nullptr) << node.callback;
            const auto call = [&](const zmf_datatree *at) {
                return node.what == schema::kind::container
                           ? reinterpret_cast<zmf_cont_fn>(callback)(session.context(), at, 0, output.root())
                           : reinterpret_cast<zmf_node_fn>(callback)(session.context(), at, output.root());
            };
            const bool is_leaf = node.value != schema::type::none;
            EXPECT_EQ(call(&given), is_leaf ? RC_UNSUPPORTED_NODE : RC_OK) << node.callback;
            EXPECT_STREQ(session.request().err_msg, is_leaf ? "given" : nullptr) << node.callback;
            EXPECT_EQ(call(nullptr), node.what == schema::kind::list ? RC_OK : RC_INVALID_ARGUMENTS) << node.callback;
            leaves += is_leaf;
        }
    EXPECT_EQ(leaves, 41 + 93 + 25);
}

// A request for one node, with keys above it; all values are "k".
zmf::fixed_tree request_for(const schema::model &model, const schema::node &wanted, bool has_value) {
    std::vector<const schema::node *> path;
    for (const schema::node *node = &wanted; node != nullptr; node = node->parent)
        path.insert(path.begin(), node);
    zmf::tree_builder builder;
    for (const schema::node *node : path) {
        builder.open(node->tag, node->ns);
        const schema::node *key = &model.nodes[static_cast<size_t>(node - model.nodes.data()) + 1];
        if (node->what == schema::kind::list && key != &wanted) {
            builder.open(key->tag, key->ns);
            builder.value("k");
            builder.close();
        }
    }
    if (has_value)
        builder.value("k");
    for (size_t i = 0; i < path.size(); ++i)
        builder.close();
    return builder.finish();
}

// The leaf that stops the walk; "" if none does.
std::string refused_leaf(uint32_t kind, const schema::model &model, const schema::node &leaf) {
    const zmf::fixed_tree request = request_for(model, leaf, kind == edit || leaf.is_key);
    zmf::session session(kind);
    zmf::output_tree native;
    const rcode status = loaded().down(session, request, native);
    EXPECT_EQ(status, status == RC_OK ? RC_OK : RC_UNSUPPORTED_NODE) << leaf.callback;
    return status == RC_OK ? "" : session.describe(status).leaf_or_tag;
}

TEST(platform_models, are_refused_leaf_by_leaf_on_the_road_of_a_request) {
    for (const schema::model &model : schema::models())
        for (const schema::node &leaf : model.nodes) {
            if (!is_platform_module(leaf) || leaf.value == schema::type::none)
                continue;
            const std::string tag = leaf.is_key ? "" : leaf.tag;
            const bool repeats_the_key =
                std::strcmp(leaf.callback, "openconfigplatform_leaf_lvla_components_config_name") == 0;
            const bool is_of_interface = std::strcmp(leaf.parent->module, "openconfig-interfaces") == 0;
            EXPECT_EQ(refused_leaf(get, model, leaf), tag) << leaf.callback;
            EXPECT_EQ(refused_leaf(cfg, model, leaf), leaf.is_config ? tag : "") << leaf.callback;
            EXPECT_EQ(refused_leaf(edit, model, leaf), repeats_the_key                     ? ""
                                                       : leaf.is_config || is_of_interface ? tag
                                                                                           : "state")
                << leaf.callback;
        }
}

} // namespace
