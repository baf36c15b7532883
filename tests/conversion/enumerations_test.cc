// Enumeration tables through their look-ups: the rows that are odd, and every pair there and back.
#include <cstring>

#include <gtest/gtest.h>

#include "exported.h"
#include "utility/enumerations.h"
#include "utility/safe_text.h"
#include "zmf/session.h"

namespace {

using namespace ocoptical;

const char *convert(zmf_value_fn look_up, const char *value) {
    zmf::session session(OP_GET);
    zmf_datatree node{};
    node.value = value;
    return look_up(session.context(), &node, nullptr);
}

TEST(enumerations, texts) {
    struct {
        zmf_value_fn convert;
        const char *text, *expected; // null: a miss
    } const rows[] = {
        {oc_optical_convert_rate_class_to_low, "TRIB_RATE_2.5G", "trib-rate2-5g"},
        {oc_optical_convert_logical_channel_rate_class_to_high, "trib-rate1200g", "TRIB_RATE_1200G"},
        {oc_optical_convert_logical_channel_rate_class_to_high, "trib-rate", nullptr},
        {oc_optical_convert_trib_protocol_to_low, "PROT_400GE", "trib-proto-type400ge"},
        {oc_optical_convert_trib_protocol_to_low, "prot_400ge", nullptr},
        {oc_optical_convert_logical_channel_trib_protocol_to_high, "trib-proto-type-otu-cn", "PROT_OTUCN"},
        {oc_optical_convert_logical_channel_type_to_low, "PROT_OTN", "type-otn"},
        {oc_optical_convert_logical_channel_type_to_high, "type-ethernet", "PROT_ETHERNET"},
        {oc_optical_admin_state_data_to_high, "enabled", nullptr}, // the operational spelling
        {oc_optical_admin_state_data_to_high, "enable", "ENABLED"},
        {oc_optical_admin_state_data_to_low, "MAINT", "maintenance"},
        {oc_optical_loopback_mode_to_low, "TERMINAL", "terminal"},
        {oc_optical_loopback_mode_to_high, "facility", "FACILITY"},
        {oc_optical_LCA_assign_type_to_low, "OPTICAL_CHANNEL", "type-optical-channel"},
        {oc_optical_LCA_assign_type_to_high, "type-logical-channel", "LOGICAL_CHANNEL"},
        {oc_optical_eth_client_als_low_to_high, "laser-shutdown", "LASER_SHUTDOWN"},
        {oc_optical_eth_client_als_high_to_low, "ETHERNET", "ethernet"},
        {oc_optical_convert_oper_client_als_to_high, "false", "ETHERNET"},
        {oc_optical_convert_oper_loopback_mode_to_high, "external", "NONE"},
        {oc_optical_convert_oper_loopback_mode_to_high, "no-loopback", "NONE"},
        {oc_optical_convert_oper_loopback_mode_to_high, "line", "FACILITY"},
        {oc_optical_convert_oper_loopback_mode_to_high, "facility", nullptr},
    };
    for (const auto &row : rows) {
        EXPECT_STREQ(convert(row.convert, row.text), row.expected) << row.text;
        EXPECT_EQ(convert(row.convert, nullptr), nullptr);
    }
}

TEST(enumerations, first_and_last_match) {
    struct {
        const enumeration &table;
        direction to;
        pick which;
        const char *text, *expected;
    } const rows[] = {
        {otu_admin_state, direction::to_high, pick::first, "up", "ENABLED"},
        {otu_admin_state, direction::to_high, pick::first, "not-ready", "__ignore__"},
        {otu_admin_state, direction::to_low, pick::last, "DISABLED", "unknown"},
        {otu_admin_state, direction::to_low, pick::last, "ENABLED", "operational"},
        {otu_admin_state, direction::to_low, pick::last, "MAINT", "up"},
        {otu_admin_state, direction::to_low, pick::last, "__ignore__", "last"},
        {odu_admin_state, direction::to_low, pick::last, "ENABLED", "operational"},
        {ethernet_admin_state, direction::to_high, pick::first, "tx-enabledenabled", "ENABLED"},
        {ethernet_admin_state, direction::to_high, pick::first, "tx-enabled", nullptr},
        {ethernet_admin_state, direction::to_high, pick::first, "__ignore__", "MAINT"},
        {ethernet_admin_state, direction::to_low, pick::last, "ENABLED", "enabled"},
        {ethernet_admin_state, direction::to_low, pick::last, "DISABLED", "disabled"},
        {ethernet_admin_state, direction::to_low, pick::last, "MAINT", "__ignore__"},
    };
    for (const auto &row : rows) {
        EXPECT_STREQ(look_up("test", row.table, row.to, row.text, row.which), row.expected) << row.text;
    }
}

TEST(enumerations, lengths_and_catalogues) {
    struct {
        const enumeration &table;
        int rows;
    } const tables[] = {{logical_channel_type, 2}, {assignment_type, 2},  {admin_state, 3},
                        {loopback_mode, 3},        {oper_loopback, 5},    {client_als, 2},
                        {oper_client_als, 2},      {rate_class, 18},      {trib_protocol, 26},
                        {otu_admin_state, 20},     {odu_admin_state, 20}, {ethernet_admin_state, 5}};
    for (const auto &row : tables) {
        EXPECT_EQ(row.table.rows, row.rows) << row.table.high[0];
    }
    EXPECT_STREQ(cpr_ext_win_mode_high_data[1], "64-symbols  : 1");
    EXPECT_STREQ(cpr_ext_win_mode_high_data[7], "160-symbols : 7");
    EXPECT_STREQ(cpr_win_mode_high_data[4], "160-symbols : 4");
    EXPECT_STREQ(nleq_comp_mode_high_data[2], "D+ HIGH <30-72>GHZ : 2");
}

// Short literals, whose sizes the compiler knows: an inlined call of the library would refuse the limit.
TEST(enumerations, comparison_of_short_literals) {
    EXPECT_TRUE(compare_texts("up", "up").match());
    EXPECT_FALSE(compare_texts("up", "upper").match());
    EXPECT_EQ(compare_texts("up", "upper").result, 0);
    EXPECT_FALSE(compare_texts(nullptr, "up").match());
    EXPECT_TRUE(framework_texts_match("test", "up", "up"));
    EXPECT_FALSE(framework_texts_match("test", nullptr, "up"));
    char text[] = "text";
    clear(text, sizeof text);
    EXPECT_EQ(std::memcmp(text, "\0\0\0\0\0", sizeof text), 0);
}

} // namespace
