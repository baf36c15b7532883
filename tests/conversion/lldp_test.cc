// LLDP: what requests for state and neighbours add, and what native interfaces and neighbours become.
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "corvane_ethernet_lldp_oper/ymap_oc_optical_corvane_ethernet_lldp_oper.h"
#undef OC_MODEL
#undef OC_TABLE
#include "../walk/request_text.h"
#include "exported.h"
#include "hardware/hardware.h"
#include "openconfig_terminal_device/ymap_oc_optical_openconfig_terminal_device.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

bool calloc_fails = false;

} // namespace

// The linker leads calls of calloc here.
extern "C" void *__real_calloc(size_t count, size_t size);
extern "C" void *__wrap_calloc(size_t count, size_t size);
extern "C" void *__wrap_calloc(size_t count, size_t size) {
    return calloc_fails ? nullptr : __real_calloc(count, size);
}

namespace {

constexpr uint32_t cfg = OP_GET_CONFIG, get = OP_GET, edit = OP_EDIT;

using letters = std::vector<std::pair<std::string, std::string>>;

// Heads of paths as the logs show them.
const letters native_heads = {
    {"/lldp/nodes/node/neighbors/details/detail/lldp-neighbor/mib/org-def-tlv-list/lldp-org-def-tlv-entry", "TLV"},
    {"/lldp/nodes/node/neighbors/details/detail/lldp-neighbor/detail/network-addresses/lldp-addr-entry/address", "A"},
    {"/lldp/nodes/node/neighbors/details/detail/lldp-neighbor", "N"},
    {"/lldp/nodes/node/neighbors/details/detail", "D"},
    {"/lldp/nodes/node/interfaces/interface", "I"},
    {"/ethernet-interface/statistics/statistic", "S"},
};
const letters oc_heads = {
    {"/terminal-device/logical-channels/channel/ethernet/lldp/neighbors/neighbor/custom-tlvs/tlv", "TLV"},
    {"/terminal-device/logical-channels/channel/ethernet/lldp/neighbors/neighbor", "N"},
    {"/terminal-device/logical-channels/", ""},
};

std::string shortened(std::string path, const letters &heads) {
    for (const auto &[head, letter] : heads) {
        if (path.starts_with(head)) {
            return path.replace(0, head.size(), letter);
        }
    }
    return path;
}

// One request or answer. Its log has the adds as "N/hold-time=5 @ list", the keyed paths as "set PATH=VALUE" and
// "stitch PATH", each with its failure; lines of level "ERR" as "! text", the error mark as "mark".
struct run {
    run(uint32_t kind, const letters &heads) : session(kind) {
        session.record([this, &heads](const zmf::call &c) { note(c, heads); });
        session.debug(
            1, [this](std::string_view line) { log += "! " + std::string(line.substr(line.find(',') + 1)) + "\n"; });
    }

    void note(const zmf::call &c, const letters &heads) {
        const std::string value = c.value != nullptr ? "=" + std::string(c.value) : "";
        if (c.op == zmf::operation::add_path) {
            if (strchr(c.path, '/') == nullptr) {
                return; // the key of all entries, which the walker itself adds
            }
            const bool is_oc = strcmp(c.ns, ZMF_NS_OC_TERMINAL_DEVICE) == 0;
            const bool is_lldp = strcmp(c.ns, ZMF_NS_LLDP_OPER) == 0;
            log += shortened(c.path, heads) + value + (c.source != nullptr ? " @" : "") + (c.list_flag ? " list" : "") +
                   (c.cross_module_flag ? " cross" : "") + (is_oc || is_lldp ? "" : std::string(" ") + c.ns);
        } else if (c.op == zmf::operation::xpath || c.op == zmf::operation::stitch) {
            log += (c.op == zmf::operation::xpath ? "set " : "stitch ") + shortened(c.path, heads) + value;
        } else {
            log += c.op == zmf::operation::error_path ? "mark\n" : "";
            return;
        }
        log += c.result != RC_OK ? " -> " + zmf::status_name(c.result) + "\n" : "\n";
    }

    zmf::session session;
    zmf::output_tree output;
    std::string log;
};

class lldp : public testing::Test {
protected:
    void SetUp() override {
        hardware::current() = {};
        hardware::current().optical_terminal_device = true;
        carries("HundredGigECtrlr0_0_0_1", 100);
        carries("HundredGigECtrlr0_0_0_2", 200);
        key_is(false, nullptr);
    }
    void TearDown() override {
        calloc_fails = false;
        key_is(false, nullptr);
        hardware::current() = {};
    }

    static void carries(const std::string &name, uint32_t channel) {
        hardware::current().name_of[channel] = name;
        hardware::current().channel_of[name] = channel;
    }
    static void key_is(bool given, const char *key) {
        is_get_with_key = given ? 1 : 0;
        free(gl_neigh_dev_id);
        gl_neigh_dev_id = key != nullptr ? strdup(key) : nullptr;
    }
};

// The way down.

std::string in_lldp(const std::string &below) {
    return "terminal-device{logical-channels{channel{ethernet{lldp" + below + "}}}}";
}

struct asked {
    rcode status;
    std::string log, err_msg;
};

asked ask(uint32_t kind, const std::string &request) {
    run r(kind, native_heads);
    request_text text(request, ZMF_NS_OC_TERMINAL_DEVICE);
    const rcode status = ymap_ox_oc_optical_openconfigterminaldevice_lvla_terminaldevice(r.session.context(),
                                                                                         text.top(), r.output.root());
    EXPECT_EQ(r.session.hierarchy_depth(), 0u);
    const char *message = r.session.request().err_msg;
    // The channel's own lists, and what the walkers trace, are told elsewhere.
    std::string log;
    for (size_t at = 0; at < r.log.size();) {
        const size_t end = r.log.find('\n', at) + 1;
        const std::string line = r.log.substr(at, end - at);
        const bool is_channel = line.starts_with("/logical-channels/") || line.starts_with("/otu/") ||
                                line.starts_with("/ethernet-interface/interfaces/");
        const bool is_walk = line.starts_with("! No keys") || line.starts_with("! Unsupported tag");
        log += is_channel || is_walk ? "" : line;
        at = end;
    }
    return {status, log, message != nullptr ? message : ""};
}

// Refused leaves of a fall-through leave their mark.
const std::string all_state = "N/detail/system-name\nN/detail/system-description\nN/chassis-id\n"
                              "N/mib/chassis-id-sub-type\nN/device-id\nmark\nmark\nN/hold-time\nN/port-id-detail\n"
                              "N/mib/port-id-sub-type\nN/detail/port-description\nA/ipv4-address\nA/ipv6-address\n"
                              "A/address-type\n";
const std::string all_tlvs = "N/mib/org-def-tlv-list\nTLV list\nTLV/oui\nTLV/tlv-subtype\nmark\n"
                             "mark\nTLV/oui\nTLV/tlv-subtype\nTLV/tlv-value\n";

TEST_F(lldp, requests) {
    const struct {
        uint32_t kind;
        const char *below;
        std::string log;
        const char *key = nullptr; // gl_neigh_dev_id afterwards
        rcode status = RC_OK;
        const char *err_msg = "";
    } rows[] = {
        // Without a key all neighbours of all interfaces; `state` comes last in an entry without children.
        {get, "{neighbors{neighbor}}", "N list\n" + all_tlvs + all_state},
        {get, "{neighbors{neighbor{id state{system-name}}}}", "N list\nN/detail/system-name\n"},
        {get, "{neighbors{neighbor{state{system-name port-id-type=INTERFACE_NAME}}}}",
         "N list\nN/detail/system-name\nN/mib/port-id-sub-type=INTERFACE_NAME\n"},
        // A key: its device part goes down, and all of it is kept.
        {get, "{neighbors{neighbor{id=r1#p1}}}", "N list\nD/device-id=r1\n" + all_state + all_tlvs, "r1#p1"},
        {get, "{neighbors{neighbor{id=r1#p1#p2 state{ttl}}}}", "N list\nD/device-id=r1\nN/hold-time\n", "r1#p1#p2"},
        {get, "{neighbors{neighbor{id=r1 state{ttl}}}}", "N list\nD/device-id=r1\nN/hold-time\n", "r1"},
        {get, "{neighbors{neighbor{id=#p1 state{ttl}}}}", "N list\nD/device-id=\nN/hold-time\n", "#p1"},
        {get, "{neighbors{neighbor{id=DISABLED#p1 state{ttl}}}}", "N list\nD/device-id=DISABLED\nN/hold-time\n",
         "DISABLED#p1"},
        {get, "{neighbors{neighbor{id=r1#p1 state{ttl}} neighbor{id=r2#p2 state{ttl}}}}",
         "N list\nD/device-id=r1\nN/hold-time\nN list\nD/device-id=r2\nN/hold-time\n", "r2#p2"},
        // TLVs.
        {get, "{neighbors{neighbor{id=r1#p1 custom-tlvs}}}", "N list\nD/device-id=r1\n" + all_tlvs, "r1#p1"},
        {get, "{neighbors{neighbor{id=r1#p1 custom-tlvs{tlv{oui=00:1b:2c oui-subtype state{value}}}}}}",
         "N list\nD/device-id=r1\nTLV list\nTLV/oui=00:1b:2c\nTLV/tlv-subtype\nTLV/tlv-value\n", "r1#p1"},
        {get, "{neighbors{neighbor{id=r1#p1 custom-tlvs{tlv{oui=00:1b:2c oui-subtype=1 type=127}}}}}",
         "N list\nD/device-id=r1\nTLV list\nTLV/oui=00:1b:2c\nTLV/tlv-subtype=1\nmark\n", "r1#p1", RC_UNSUPPORTED_NODE,
         "type"},
        // The interface's own state.
        {get, "{state{enabled snooping}}",
         "I/tx-enabled\nI/rx-enabled\nS/received-total-bytes urn:corvane:yang:Corvane-drivers-media-eth-oper\n"},
        {get, "{state{enabled=false snooping}}",
         "I/tx-enabled=false\nI/rx-enabled=false\nS/received-total-bytes "
         "urn:corvane:yang:Corvane-drivers-media-eth-oper\n"},
        // Named, a leaf that is mapped to nothing refuses the request.
        {get, "{state{counters{frame-in}}}", "mark\n", nullptr, RC_UNSUPPORTED_NODE, "frame-in"},
        {get, "{neighbors{neighbor{state{ttl age}}}}", "N list\nN/hold-time\nmark\n", nullptr, RC_UNSUPPORTED_NODE,
         "age"},
        {get, "{config{enabled}}", "mark\n", nullptr, RC_UNSUPPORTED_NODE, "enabled"},
        {cfg, "{config{enabled}}", "mark\n", nullptr, RC_UNSUPPORTED_NODE, "enabled"},
        // Only a get of operational data walks neighbours and state.
        {cfg, "{neighbors{neighbor{id=r1#p1}} state{enabled}}", ""},
        {edit, "{neighbors{neighbor{id=r1#p1}}}", "mark\n", nullptr, RC_UNSUPPORTED_NODE, "neighbors"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.below);
        key_is(true, nullptr);
        std::string request = in_lldp(row.below);
        if (row.kind == edit) {
            request.replace(request.find("channel{"), sizeof "channel{" - 1, "channel{index=100 config{index=100} ");
        }
        const asked a = ask(row.kind, request);
        EXPECT_EQ(a.status, row.status);
        EXPECT_EQ(a.log, row.log);
        if (row.status != RC_OK) {
            EXPECT_EQ(a.err_msg, row.err_msg);
        }
        EXPECT_STREQ(gl_neigh_dev_id, row.key);
        if (row.log.starts_with("N list")) {
            EXPECT_EQ(is_get_with_key, row.key != nullptr ? 1 : 0);
        }
    }
}

TEST_F(lldp, without_optical_terminal_device_a_request_asks_for_what_is_mapped_by_path_and_for_the_hold_time) {
    hardware::current().optical_terminal_device = false;
    const asked a = ask(get, in_lldp("{neighbors{neighbor{id=r1#p1}} state{enabled snooping}}"));
    EXPECT_EQ(a.status, RC_OK);
    EXPECT_EQ(a.log, "mark\nmark\nN/hold-time\nN/mib/org-def-tlv-list\nTLV/oui\nTLV/tlv-subtype\nmark\nmark\n");
    EXPECT_EQ(gl_neigh_dev_id, nullptr);
}

// One call of one conversion.
asked call(zmf_node_fn convert, uint32_t kind, const char *value, uint32_t op = OP_MERGE) {
    run r(kind, native_heads);
    zmf_datatree node{};
    node.tag = "leaf";
    node.value = value;
    node.has_value = value != nullptr;
    node.op = op;
    const rcode status = convert(r.session.context(), &node, r.output.root());
    return {status, r.log, ""};
}

TEST_F(lldp, only_reads_ask_but_for_snooping_and_tlv_entries) {
    const struct {
        zmf_node_fn convert;
        uint32_t kind, op;
        const char *value;
        const char *log;
    } rows[] = {
        {oc_optical_lldp_sys_name_to_low, cfg, OP_MERGE, "r1", "N/detail/system-name=r1\n"},
        {oc_optical_lldp_sys_name_to_low, edit, OP_MERGE, "r1", ""},
        {oc_optical_lldp_ttl_to_low, edit, OP_MERGE, "120", ""},
        {ocoptical_lldp_enabled_to_low, edit, OP_MERGE, "true", ""},
        {oc_optical_lldp_snooping_to_low, edit, OP_DELETE, "true",
         "S/received-total-bytes=true urn:corvane:yang:Corvane-drivers-media-eth-oper\n"},
        {oc_optical_lldp_custom_tlv_to_low, edit, OP_MERGE, nullptr, "TLV list\n"},
        {oc_optical_lldp_custom_tlv_to_low, edit, OP_REMOVE, nullptr, "TLV @ list\n"},
        {ymap_ox_oc_optical_openconfigterminaldevice_leaf_lvla_terminaldevice_neighbor_id, edit, OP_MERGE, "r1#p1", ""},
        {ymap_ox_oc_optical_openconfigterminaldevice_leaf_lvla_terminaldevice_neighbor_id, cfg, OP_MERGE, "r1#p1",
         "D/device-id=r1\n"},
        {ymap_ox_oc_optical_openconfigterminaldevice_list_lvla_terminaldevice_neighbors_neighbor, edit, OP_DELETE,
         nullptr, ""},
    };
    for (const auto &row : rows) {
        const asked a = call(row.convert, row.kind, row.value, row.op);
        EXPECT_EQ(a.status, RC_OK);
        EXPECT_EQ(a.log, row.log);
    }
    EXPECT_EQ(is_get_with_key, 0); // the deleted list forgot the key before it
}

TEST_F(lldp, null_arguments_of_requests) {
    constexpr auto key = ymap_ox_oc_optical_openconfigterminaldevice_leaf_lvla_terminaldevice_neighbor_id;
    const struct {
        zmf_node_fn convert;
        bool terminal_device;
        bool refused;
    } rows[] = {
        {oc_optical_lldp_chassis_id_to_low, true, true},
        {oc_optical_lldp_chassis_id_to_low, false, false},
        {oc_optical_lldp_ttl_to_low, true, true},
        {oc_optical_lldp_ttl_to_low, false, true},
        {oc_optical_lldp_custom_tlv_to_low, true, true},
        {oc_optical_lldp_custom_tlv_to_low, false, false},
        {key, true, true},
        {key, false, false},
        {oc_optical_lldp_port_desc_to_low, false, false},
        {oc_optical_lldp_snooping_to_low, false, false},
    };
    for (const auto &row : rows) {
        hardware::current().optical_terminal_device = row.terminal_device;
        run r(get, native_heads);
        EXPECT_EQ(row.convert(r.session.context(), nullptr, nullptr), row.refused ? RC_INVALID_ARGUMENTS : RC_OK);
        EXPECT_EQ(r.log, row.refused ? "! Invalid arguments passed!\nmark\n" : "");
    }
}

TEST_F(lldp, key_without_memory) {
    constexpr auto key = ymap_ox_oc_optical_openconfigterminaldevice_leaf_lvla_terminaldevice_neighbor_id;
    key_is(true, "old#key");
    run r(get, native_heads);
    zmf_datatree node{};
    node.tag = "id";
    node.value = "r1#p1";
    node.has_value = 1;
    calloc_fails = true;
    const rcode status = key(r.session.context(), &node, r.output.root());
    calloc_fails = false;
    EXPECT_EQ(status, RC_NO_MEMORY);
    EXPECT_EQ(r.log, "! gl_neigh_dev_id malloc failed\n");
    EXPECT_EQ(gl_neigh_dev_id, nullptr);
    EXPECT_EQ(is_get_with_key, 0);

    // Without a copy to cut, the key is kept and not asked for.
    run again(get, native_heads);
    again.session.fail_call(1, RC_NO_MEMORY);
    EXPECT_EQ(key(again.session.context(), &node, again.output.root()), RC_OK);
    EXPECT_EQ(again.log, "");
    EXPECT_STREQ(gl_neigh_dev_id, "r1#p1");
    EXPECT_EQ(is_get_with_key, 0);
}

// The way up.

std::string on(const std::string &interface, const std::string &device, const std::string &neighbors) {
    return "detail{interface-name=" + interface + " device-id=" + device + " " + neighbors + "}";
}
std::string neighbor(const std::string &port, const std::string &more = "") {
    return "lldp-neighbor{port-id-detail=" + port + " " + more + "}";
}

constexpr char mapped[] = "HundredGigECtrlr0/0/0/1", other[] = "HundredGigECtrlr0/0/0/2",
               unmapped[] = "HundredGigECtrlr0/0/0/9";

asked answer(uint32_t kind, const std::string &below_node) {
    run r(kind, oc_heads);
    request_text native("lldp{nodes{node{node-name=0/RP0/CPU0 " + below_node + "}}}", ZMF_NS_LLDP_OPER);
    const rcode status =
        ymap_xo_oc_optical_corvaneethernetlldpoper_lvla_lldp(r.session.context(), native.top(), r.output.root());
    EXPECT_EQ(r.session.hierarchy_depth(), 0u);
    EXPECT_EQ(r.session.imbalances(), 0u);
    return {status, r.log, ""};
}

asked answer_details(const std::string &details) {
    return answer(get, "neighbors{details{" + details + "}}");
}

TEST_F(lldp, interfaces_with_a_channel_read_enabled) {
    const std::string enabled = "set channel[index=100]/ethernet/lldp/state/enabled=true";
    const struct {
        uint32_t kind;
        const char *interfaces;
        std::string log;
    } rows[] = {
        {get, "interface{interface-name=HundredGigECtrlr0/0/0/1 tx-enabled=1 rx-enabled=1}", enabled + "\n"},
        {get, "interface{interface-name=HundredGigECtrlr0/0/0/1 tx-enabled=0 rx-enabled=0}", enabled + "\n"},
        {get, "interface{interface-name=HundredGigECtrlr0/0/0/1}", enabled + "\n"},
        {get, "interface{interface-name=HundredGigECtrlr0/0/0/9 tx-enabled=1}", ""},
        {get, "interface{tx-enabled=1}", ""},
        {cfg, "interface{interface-name=HundredGigECtrlr0/0/0/1 tx-enabled=1}", ""},
        {get,
         "interface{interface-name=HundredGigECtrlr0/0/0/1 tx-enabled=1} "
         "interface{interface-name=HundredGigECtrlr0/0/0/1 tx-enabled=1}",
         enabled + "\n" + enabled + " -> RC_LEAF_EXISTS\n"},
    };
    for (const auto &row : rows) {
        const asked a = answer(row.kind, std::string("interfaces{") + row.interfaces + "}");
        EXPECT_EQ(a.status, RC_OK) << row.interfaces;
        EXPECT_EQ(a.log, row.log) << row.interfaces;
    }
}

std::string made(const char *channel, const std::string &id) {
    return std::string("stitch channel[index=") + channel + "]/ethernet/lldp/neighbors/neighbor[id=" + id + "]/\n";
}

TEST_F(lldp, which_neighbours_get_an_entry) {
    const std::string long_device(300, 'd');
    const std::string two_ports = on(mapped, "r1", neighbor("p1")) + on(mapped, "r1", neighbor("p2"));
    const std::string p1 = "N/state/port-id=p1\n", p2 = "N/state/port-id=p2\n";
    const struct {
        const char *key; // of the request; null: none
        std::string details, log;
        const char *key_left = nullptr;
    } rows[] = {
        {nullptr, two_ports, made("100", "r1#p1") + p1 + made("100", "r1#p2") + p2},
        {nullptr, on(mapped, "[DISABLED]", neighbor("p1")), made("100", "DISABLED#p1") + p1},
        {nullptr, on(mapped, "", neighbor("p1")), made("100", "#p1") + p1},
        {nullptr, on(mapped, "r1", neighbor("")), made("100", "r1#") + "N/state/port-id=\n"},
        {nullptr, on(mapped, "r1", neighbor("p1")) + on(other, "r1", neighbor("p1")),
         made("100", "r1#p1") + p1 + made("200", "r1#p1") + p1},
        {nullptr, on(mapped, long_device, neighbor("p1")), made("100", long_device.substr(0, 254)) + p1},
        // Dropped: no channel, no device id, no port.
        {nullptr, on(unmapped, "r1", neighbor("p1")), ""},
        {nullptr, std::string("detail{interface-name=") + mapped + " " + neighbor("p1") + "}", p1},
        {nullptr, on(mapped, "r1", "lldp-neighbor{hold-time=120}"), "N/state/ttl=120\n"},
        // By key: the port decides, and the first match spends the key.
        {"r1#p2", two_ports, p1 + made("100", "r1#p2") + p2},
        {"r1#p1", two_ports + on(other, "r1", neighbor("p1")), made("100", "r1#p1") + p1 + p2 + p1},
        {"r1#p9", two_ports, p1 + p2, "r1#p9"},
        {"r1", two_ports, p1 + p2, "r1"},
        {"r1", on(mapped, "r1", neighbor("")), "N/state/port-id=\n", "r1"},
        {"#p1", two_ports, made("100", "#p1") + p1 + p2},
        {"r1#p1#p2", on(mapped, "r1", neighbor("p1#p2")), made("100", "r1#p1#p2") + "N/state/port-id=p1#p2\n"},
        {"DISABLED#p1", on(mapped, "[DISABLED]", neighbor("p1")), made("100", "DISABLED#p1") + p1},
        {"", two_ports, p1 + p2, ""},
        {"r1#p1", on(unmapped, "r1", neighbor("p1")), "", "r1#p1"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.key != nullptr ? row.key : row.log);
        key_is(row.key != nullptr, row.key);
        const asked a = answer_details(row.details);
        EXPECT_EQ(a.status, RC_OK);
        EXPECT_EQ(a.log, row.log);
        EXPECT_STREQ(gl_neigh_dev_id, row.key_left);
        EXPECT_EQ(is_get_with_key, row.key != nullptr ? 1 : 0);
    }
    // A key that was spent before the answer.
    key_is(true, nullptr);
    EXPECT_EQ(answer_details(two_ports).log, p1 + p2);
    // An interface without a name.
    key_is(false, nullptr);
    const asked nameless = answer_details("detail{device-id=r1 " + neighbor("p1") + "}");
    EXPECT_EQ(nameless.status, RC_SUBTREE_ERROR);
    EXPECT_EQ(nameless.log, "! intf_name or ctx->req_ctx is NULL, return here\n");
}

TEST_F(lldp, an_entry_that_stands_is_used_again) {
    const asked a = answer_details(on(mapped, "r1", neighbor("p1")) + on(mapped, "r1", neighbor("p1", "hold-time=7")));
    EXPECT_EQ(a.status, RC_OK);
    std::string again = made("100", "r1#p1");
    again.insert(again.size() - 1, " -> RC_LEAF_EXISTS");
    EXPECT_EQ(a.log, made("100", "r1#p1") + "N/state/port-id=p1\n" + again + "N/state/port-id=p1\nN/state/ttl=7\n");
}

TEST_F(lldp, leaves_of_a_neighbour) {
    const std::string all = neighbor("p1", "device-id=r1 chassis-id=00:1b hold-time=120 "
                                           "detail{network-addresses{lldp-addr-entry{address{address-type=ipv4 "
                                           "ipv4-address=10.0.0.1}} "
                                           "lldp-addr-entry{address{address-type=ipv6 ipv6-address=2001:db8::1}}} "
                                           "port-description=to_lab system-name=r1.lab system-description=router} "
                                           "mib{org-def-tlv-list{lldp-org-def-tlv-entry{oui=00-12-0f tlv-subtype=1 "
                                           "tlv-value=03} lldp-org-def-tlv-entry{oui=00-80-c2 tlv-subtype=3}} "
                                           "chassis-id-sub-type=4 port-id-sub-type=5}");
    EXPECT_EQ(answer_details(on(unmapped, "r1", all)).log, "");
    const asked a = answer_details(on(mapped, "r1", all));
    EXPECT_EQ(a.status, RC_OK);
    EXPECT_EQ(a.log, made("100", "r1#p1") +
                         "N/state/port-id=p1\nN/state/id=r1#p1\nN/state/chassis-id=00:1b\nN/state/ttl=120\n"
                         "N/state/management-address-type=ipv4\nN/state/management-address=10.0.0.1\n"
                         "N/state/management-address-type=ipv6\nN/state/management-address=2001:db8::1\n"
                         "N/state/port-description=to_lab\nN/state/system-name=r1.lab\n"
                         "N/state/system-description=router\n"
                         "TLV list\nTLV/oui=00-12-0f\nTLV/state/oui=00-12-0f\nTLV/oui-subtype=1\n"
                         "TLV/state/oui-subtype=1\nTLV/state/value=03\nTLV/state/type=127\nTLV/type=127\n"
                         "TLV list\nTLV/oui=00-80-c2\nTLV/state/oui=00-80-c2\nTLV/oui-subtype=3\n"
                         "TLV/state/oui-subtype=3\n"
                         "N/state/chassis-id-type=MAC_ADDRESS\nN/state/port-id-type=INTERFACE_NAME\n");
    // The id leaf bears the neighbour's own name, whatever the key says; a TLV list without entries is a container.
    key_is(true, "x#p1");
    EXPECT_EQ(answer_details(on(mapped, "r1", neighbor("p1", "device-id=[DISABLED] mib{org-def-tlv-list}"))).log,
              made("100", "x#p1") + "N/state/port-id=p1\nN/state/id=DISABLED#p1\nN/custom-tlvs\n");
}

TEST_F(lldp, subtypes) {
    const struct {
        const char *subtype;
        const char *chassis, *port; // null: refused
    } rows[] = {
        {"1", "CHASSIS_COMPONENT", "INTERFACE_ALIAS"},
        {"2", "INTERFACE_ALIAS", "PORT_COMPONENT"},
        {"3", "PORT_COMPONENT", "MAC_ADDRESS"},
        {"4", "MAC_ADDRESS", "NETWORK_ADDRESS"},
        {"5", "NETWORK_ADDRESS", "INTERFACE_NAME"},
        {"6", "INTERFACE_NAME", "AGENT_CIRCUIT_ID"},
        {"7", "LOCAL", "LOCAL"},
        {"7local", "LOCAL", "LOCAL"},
        {"0", nullptr, nullptr},
        {"8", nullptr, nullptr},
        {"-1", nullptr, nullptr},
        {"local", nullptr, nullptr},
        {"", nullptr, nullptr},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.subtype);
        for (const bool of_port : {false, true}) {
            const std::string mib =
                std::string("mib{") + (of_port ? "port" : "chassis") + "-id-sub-type=" + row.subtype + "}";
            const char *expected = of_port ? row.port : row.chassis;
            const asked a = answer_details(on(mapped, "r1", "lldp-neighbor{" + mib + "}"));
            EXPECT_EQ(a.status, expected != nullptr ? RC_OK : RC_SUBTREE_ERROR);
            const std::string refused = of_port ? "" : "! Invalid Chassis id type\n";
            EXPECT_EQ(a.log, expected != nullptr ? std::string("N/state/") + (of_port ? "port" : "chassis") +
                                                       "-id-type=" + expected + "\n"
                                                 : refused);
            const asked dropped = answer_details(on(unmapped, "r1", "lldp-neighbor{" + mib + "}"));
            EXPECT_EQ(dropped.status, RC_OK);
            EXPECT_EQ(dropped.log, "");
        }
    }
}

TEST_F(lldp, null_arguments_of_answers) {
    const std::string refused = "! Invalid arguments passed!\nmark\n", null = "! NULL arguments passed\n";
    const struct {
        zmf_node_fn convert;
        rcode status;
        std::string log;
    } rows[] = {
        {oc_optical_lldp_ttl_to_high, RC_INVALID_ARGUMENTS, refused},
        {oc_optical_lldp_custom_tlv_high, RC_INVALID_ARGUMENTS, refused},
        {ymap_xo_oc_optical_corvaneethernetlldpoper_list_lvla_lldp_detail_lldpneighbor, RC_INVALID_ARGUMENTS, refused},
        {ymap_xo_oc_optical_corvaneethernetlldpoper_leaf_lvla_lldp_mib_portidsubtype, RC_INVALID_ARGUMENTS, refused},
        // The interface comes first here, and there is none.
        {ymap_xo_oc_optical_corvaneethernetlldpoper_leaf_lvla_lldp_mib_chassisidsubtype, RC_OK, ""},
        {ymap_xo_oc_optical_corvaneethernetlldpoper_list_lvla_lldp_interfaces_interface, RC_SUBTREE_ERROR, null},
        {oc_optical_lldp_port_id_type_to_high, RC_OK, ""},
        {ocoptical_lldp_enabled_to_high, RC_OK, ""},
    };
    for (const auto &row : rows) {
        run r(get, oc_heads);
        EXPECT_EQ(row.convert(r.session.context(), nullptr, nullptr), row.status);
        EXPECT_EQ(r.log, row.log);
    }
    run r(get, oc_heads);
    zmf_datatree node{};
    EXPECT_EQ(ymap_chassis_id_subtype_mapping_util(r.session.context(), &node, nullptr), RC_SUBTREE_ERROR);
    EXPECT_EQ(r.log, null);
}

// Nothing follows a neighbour that was dropped, and two neighbours keep their leaves apart.
TEST_F(lldp, leaves_stand_below_their_neighbour) {
    key_is(true, "r2#p2");
    run r(get, oc_heads);
    request_text native("lldp{nodes{node{neighbors{details{" + on(mapped, "r1", neighbor("p1", "hold-time=1")) +
                            on(other, "r2", neighbor("p2", "hold-time=2")) + "}}}}}",
                        ZMF_NS_LLDP_OPER);
    EXPECT_EQ(ymap_xo_oc_optical_corvaneethernetlldpoper_lvla_lldp(r.session.context(), native.top(), r.output.root()),
              RC_OK);
    const std::string neighbors = "/terminal-device/logical-channels/channel[index=200]/ethernet/lldp/neighbors";
    const zmf::output_node ttl = r.output.find((neighbors + "/neighbor[id=r2#p2]/state/ttl").c_str());
    ASSERT_TRUE(ttl);
    EXPECT_STREQ(ttl.value(), "2");
    EXPECT_FALSE(r.output.find("/terminal-device/logical-channels/channel[index=100]"));
}

} // namespace
