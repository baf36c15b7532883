// LLDP neighbours read through the whole road, by the host as a program. A case more: a row. Quotes are written as ' in
// requests, devices and replies; blanks do not count in replies.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host.h"
#include "written_json.h"

namespace {

using road::outcome;
using road::run_host;
using road::scratch_file;

std::string of_channel(const std::string &channel, const std::string &below) {
    return json_of("{'openconfig-terminal-device:terminal-device':{'logical-channels':{'channel':[{'index':" + channel +
                   below + "}]}}}");
}
std::string in_lldp(const std::string &channel, const std::string &lldp) {
    return of_channel(channel, ",'ethernet':{'lldp':{" + lldp + "}}");
}
std::string in_neighbors(const std::string &channel, const std::string &neighbors) {
    return in_lldp(channel, "'neighbors':{'neighbor':[" + neighbors + "]}");
}
std::string neighbor(const std::string &id, const std::string &below) {
    return "{'id':'" + id + "'," + below + "}";
}
std::string ttl(const std::string &value) {
    return "'state':{'ttl':" + value + "}";
}

outcome get(const std::string &request, const std::string &command = "get", const std::string &device = "") {
    std::vector<std::string> arguments{command};
    if (!device.empty()) {
        arguments.insert(arguments.end(), {"--device", device});
    }
    arguments.push_back(scratch_file("request.json", request));
    return run_host(arguments);
}

void expect_reply(const outcome &result, const std::string &reply) {
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(without_blanks(result.out), reply);
    EXPECT_EQ(result.err, "");
}

const std::string tap = "DISABLED#circuit-9", third = "edge-7.lab#eth1/0/3", fourth = "edge-7.lab#eth1/0/4";

TEST(neighbors, of_the_lab_device) {
    const std::string asked = ttl("null");
    const std::string none = of_channel("101", "");
    const auto by_key = [&](const std::string &id) { return in_neighbors("101", neighbor(id, asked)); };
    const struct {
        std::string request, reply;
    } rows[] = {
        {in_neighbors("101", "{" + asked + "}"),
         in_neighbors("101", neighbor(tap, ttl("30")) + "," + neighbor(third, ttl("120")) + "," +
                                 neighbor(fourth, ttl("100")))},
        {in_neighbors("101", "{'id':null}"),
         in_neighbors("101", "{'id':'" + tap + "'},{'id':'" + third + "'},{'id':'" + fourth + "'}")},
        {by_key(fourth), in_neighbors("101", neighbor(fourth, ttl("100")))},
        // Of several keys the last one counts, and an entry without key asks for all.
        {in_neighbors("101", neighbor(fourth, asked) + "," + neighbor("[DISABLED]#circuit-9", asked)),
         in_neighbors("101", neighbor("[DISABLED]#circuit-9", ttl("30")))},
        {in_neighbors("101", neighbor(fourth, asked) + ",{" + asked + "}"),
         in_neighbors("101", neighbor(tap, ttl("30")) + "," + neighbor(third, ttl("120")) + "," +
                                 neighbor(fourth, ttl("100")))},
        {in_neighbors("101", neighbor(third, "'custom-tlvs':{'tlv':[{'state':{'value':null}}]}")),
         in_neighbors("101", neighbor(third, "'custom-tlvs':{'tlv':[{'oui':'00-12-0f','oui-subtype':'4','type':127,"
                                             "'state':{'value':'2400'}},{'oui':'00-80-c2','oui-subtype':'1',"
                                             "'type':127,'state':{'value':'0064'}}]}"))},
        {by_key("edge-7.lab#eth1/0/5"), none},
        {by_key("edge-7.lab"), none},
        {by_key("edge-9.lab#eth1/0/4"), none},
        // Without a device part any device matches; a device that hides its id is known by the native one alone.
        {by_key("#eth1/0/4"), in_neighbors("101", neighbor("#eth1/0/4", ttl("100")))},
        {by_key(tap), none},
        {by_key("[DISABLED]#circuit-9"), in_neighbors("101", neighbor("[DISABLED]#circuit-9", ttl("30")))},
        // A neighbour of another channel.
        {by_key("edge-8.lab#00:1b:2c:3d:4e:08"), none},
        {in_lldp("102", "'neighbors':{}"),
         in_neighbors("102", neighbor("edge-8.lab#00:1b:2c:3d:4e:08",
                                      "'state':{'system-name':'edge-8','chassis-id':'mgmt0','chassis-id-type':"
                                      "'INTERFACE_NAME','id':'edge-8.lab#00:1b:2c:3d:4e:08','ttl':120,'port-id':"
                                      "'00:1b:2c:3d:4e:08','port-id-type':'MAC_ADDRESS','management-address':"
                                      "'2001:db8::8','management-address-type':'ipv6'}"))},
        // The first address stays; a TLV without value lacks its type and is none.
        {in_neighbors("101", neighbor(third, "'state':{'management-address':null,'management-address-type':null},"
                                             "'custom-tlvs':{'tlv':[{'oui':'00-80-c2'}]}")),
         in_neighbors("101",
                      neighbor(third, "'state':{'management-address':'192.0.2.7','management-address-type':'ipv4'},"
                                      "'custom-tlvs':{'tlv':[{'oui':'00-80-c2','oui-subtype':'1','type':127,'state':{"
                                      "'type':127,'oui':'00-80-c2','oui-subtype':'1','value':'0064'}}]}"))},
        // An interface that neither transmits nor receives.
        {in_lldp("100", ""), in_lldp("100", "'state':{'enabled':true,'snooping':true}")},
        {in_lldp("102", "'state':{}"), in_lldp("102", "'state':{'enabled':true}")},
        {in_lldp("301", ""), of_channel("301", "")},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.request);
        expect_reply(get(row.request), row.reply);
    }
    expect_reply(get(in_lldp("101", "'neighbors':{}"), "get-config"), none);
}

// A device with channels on its first two ports, of which two see a device each; `mib` is that of the second.
constexpr char port1[] = "HundredGigECtrlr0/0/0/1", port2[] = "HundredGigECtrlr0/0/0/2",
               without_channel[] = "HundredGigECtrlr0/0/0/9";

std::string device_with(const std::string &first, const std::string &second, const std::string &mib) {
    const auto detail = [](const std::string &interface, const std::string &more) {
        return "{'interface-name':'" + interface + "','device-id':'d','lldp-neighbor':[{'device-id':'d'," + more +
               "'port-id-detail':'p','hold-time':5}]}";
    };
    return scratch_file("device.json",
                        json_of("{'router-type':5,'optical-terminal-device':true,'channels':"
                                "{'1':'HundredGigECtrlr0/0/0/1','2':'HundredGigECtrlr0/0/0/2'},'operational':"
                                "{'Corvane-ethernet-lldp-oper:lldp':{'nodes':{'node':[{'node-name':'0',"
                                "'neighbors':{'details':{'detail':[" +
                                detail(first, "") + "," + detail(second, "'mib':{" + mib + "},") + "]}}}]}}}}"));
}

TEST(neighbors, a_key_is_spent_on_the_first_neighbour_that_it_fits) {
    const std::string device = device_with(port1, port2, "");
    const std::string asked = neighbor("d#p", ttl("null")), found = neighbor("d#p", ttl("5"));
    expect_reply(get(in_neighbors("1", asked), "get", device), in_neighbors("1", found));
    expect_reply(get(in_neighbors("2", asked), "get", device), "{}");
    expect_reply(get(in_neighbors("2", "{" + ttl("null") + "}"), "get", device), in_neighbors("2", found));
    // One without a channel does not spend it.
    expect_reply(get(in_neighbors("2", asked), "get", device_with(without_channel, port2, "")),
                 in_neighbors("2", found));
}

TEST(neighbors, what_ends_a_read) {
    const std::string device = device_with(port1, port2, "'chassis-id-sub-type':8");
    const struct {
        std::string request, device, status, place;
    } rows[] = {
        {in_lldp("2", "'neighbors':{}"), device, "RC_SUBTREE_ERROR",
         "chassis-id-sub-type\n  message:    nothing in OpenConfig stands for \"8\""},
        {in_neighbors("101",
                      neighbor(third, "'custom-tlvs':{'tlv':[{'oui':'00-80-c2','oui-subtype':'1','type':127}]}")),
         "", "RC_UNSUPPORTED_NODE", "/tlv[oui='00-80-c2'][oui-subtype='1'][type='127']/type"},
        {in_lldp("101", "'state':{'counters':{'frame-in':null}}"), "", "RC_UNSUPPORTED_NODE", "/counters/frame-in"},
    };
    for (const auto &row : rows) {
        const outcome result = get(row.request, "get", row.device);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err.find(row.status), std::string::npos) << result.err;
        EXPECT_NE(result.err.find(row.place), std::string::npos) << result.err;
    }
    // The same on an interface without a channel is nobody's.
    expect_reply(get(in_neighbors("1", "{" + ttl("null") + "}"), "get",
                     device_with(port1, without_channel, "'chassis-id-sub-type':8")),
                 in_neighbors("1", neighbor("d#p", ttl("5"))));
}

} // namespace
