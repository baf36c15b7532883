// Names of ports, controllers, channels and components, on the router types that tell their forms apart.
#include <cstdlib>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "exported.h"
#include "hardware/hardware.h"

namespace {

constexpr rcode bad = OCOPTICAL_BAD_NAME;
constexpr char untouched[] = "untouched";

using conversion = rcode (*)(const char *, char *);

struct row {
    conversion convert;
    uint32_t router_type;
    const char *name;
    rcode result;
    const char *written; // null: nothing
};

void check(const row &expected) {
    hardware::current().router_type = expected.router_type;
    char out[200];
    strcpy(out, untouched);
    const char *name = expected.name != nullptr ? expected.name : "(null)";
    EXPECT_EQ(expected.convert(expected.name, out), expected.result) << name;
    EXPECT_STREQ(out, expected.written != nullptr ? expected.written : untouched) << name;
}

constexpr auto to_interface = oc_optical_convert_opticalchannel_to_interface;
constexpr auto to_controller = oc_optical_convert_opticalchannel_to_controller;
constexpr auto from_controller = oc_optical_convert_controller_to_opticalchannel;
constexpr auto from_interface = oc_optical_convert_interface_to_opticalchannel;
constexpr auto trans_to_interface = oc_optical_convert_trans_to_interface;
constexpr auto interface_to_trans = oc_optical_convert_interface_to_trans;
constexpr auto dsp_to_interface = oc_optical_convert_coherentDSP_to_interface;
constexpr auto optics_to_controller = oc_optical_convert_optics_to_controller;
constexpr auto optics_to_key = oc_optical_convert_optics_interface_to_statedb_interface;

TEST(names, locations) {
    const row rows[] = {
        {dsp_to_interface, 5, "CoherentDSP0/1/0/2", 0, "Optics0/1/0/2"},
        {dsp_to_interface, 5, "CoherentDSP0/1/0/2 behind", 0, "Optics0/1/0/2"},
        {dsp_to_interface, 5, "CoherentDSP0/1/0", bad, nullptr},
        {dsp_to_interface, 5, "Optics0/1/0/2", bad, nullptr},
        {dsp_to_interface, 5, nullptr, bad, nullptr},
        {optics_to_controller, 5, "Optics0/1/0/2", 0, "CoherentDSP0/1/0/2"},
        {optics_to_controller, 5, "Optics0/1/0/-1", bad, nullptr}, // -1 says that a number is missing
        {optics_to_controller, 5, "Optics0/1/0/-2", 0, "CoherentDSP0/1/0/-2"},
        {optics_to_key, 5, "Optics0/1/0/2", 0, "Optics0_1_0_2"},
        {optics_to_key, 5, "Optics0/1/0", bad, nullptr},
        {to_interface, 5, "0/1-OpticalChannel0/1/0/2", 0, "Optics0/1/0/2"},
        {to_interface, 5, "OpticalChannel0/1/0/2", 0, "Optics0/1/0/2"},
        {to_interface, 5, "0/9-OpticalChannel0/1/0/2", 0, "Optics0/1/0/2"}, // the prefix slot is not looked at
        {to_interface, 5, "1/1-OpticalChannel0/1/0/2", bad, nullptr},
        {to_controller, 5, "0/1-OpticalChannel0/1/0/2", 0, "CoherentDSP0/1/0/2"},
        {to_controller, 5, "OpticalChannel0/1/0/2", bad, nullptr},
        {from_controller, 18, "CoherentDSP0/1/0/2", 0, "0/1-OpticalChannel0/1/0/2"},
        {from_controller, 19, "CoherentDSP0/1/0/2", 0, "OpticalChannel0/1/0/2"},
        {from_controller, 19, "CoherentDSP0/1/0", bad, nullptr},
        {from_interface, 7, "Optics3/1/0/2", 0, "0/1-OpticalChannel3/1/0/2"},
        {from_interface, 19, "Optics3/1/0/2", 0, "OpticalChannel3/1/0/2"},
        {from_interface, 5, "CoherentDSP3/1/0/2", bad, nullptr},
        {trans_to_interface, 5, "0/1-Optics0/1/0/2", 0, "Optics0/1/0/2"},
        {trans_to_interface, 5, "Optics0/1/0/2", 0, "Optics0/1/0/2"},
        {trans_to_interface, 5, "Optics0/1/0", 0, nullptr}, // bad names are no failure here
        {trans_to_interface, 5, nullptr, 0, nullptr},
        {interface_to_trans, 18, "Optics0/1/0/2", 0, "0/1-Optics0/1/0/2"},
        {interface_to_trans, 19, "Optics0/1/0/2", 0, "Optics0/1/0/2"},
        {interface_to_trans, 19, "FooBar", 0, nullptr},
    };
    for (const row &expected : rows) {
        check(expected);
    }
}

TEST(names, state_store) {
    constexpr auto otu = oc_optical_convert_otu_cntrlr_to_statedb_interface;
    constexpr auto odu = oc_optical_convert_odu_cntrlr_to_statedb_interface;
    constexpr auto ethernet = oc_optical_convert_ethernet_cntrlr_to_statedb_interface;
    const row rows[] = {
        {otu, 5, "CoherentDSP0/1/0/2", 0, "CoherentDSP0_1_0_2"},
        {otu, 5, "OTU40/1/0/2", 0, "OTU40_1_0_2"},
        {otu, 5, "OTU2E0/1/0/2/3", 0, "OTU2E0_1_0_2_3"},
        {otu, 5, "OTU20/1/0/2/3", 0, "OTU20_1_0_2_3"},
        {otu, 5, "OTU20/1/0/2", bad, nullptr},
        {otu, 5, "CoherentDSP0/1/0", bad, nullptr},
        {otu, 5, "FooBar0/1/0/2", 0, nullptr},
        {otu, 5, nullptr, 0, nullptr},
        {odu, 5, "ODU40/1/0/2/3", 0, "ODU40_1_0_2_3"},
        {odu, 5, "ODU40/1/0/2", 0, "ODU40_1_0_2"},
        {odu, 5, "ODU40/1/0", bad, nullptr},
        {odu, 5, "ODU2E0/1/0/2/3/4", 0, "ODU2E0_1_0_2_3_4"},
        {odu, 5, "ODU2E0/1/0/2/3", 0, "ODU2E0_1_0_2_3"},
        {odu, 5, "ODU20/1/0/2/3/4", 0, "ODU20_1_0_2_3_4"},
        {odu, 5, "ODU20/1/0/2/3", 0, "ODU20_1_0_2_3"},
        {odu, 5, "ODU-FLEX0/1/0/2/3", 0, "ODU-FLEX0_1_0_2_3"},
        {odu, 5, "ODUC40/1/0/2", 0, "ODUC40_1_0_2"},
        {odu, 5, "ODUC30/1/0/2", 0, "ODUC30_1_0_2"},
        {odu, 5, "ODUC20/1/0/2", 0, "ODUC20_1_0_2"},
        {odu, 5, "ODUC10/1/0/2", 0, "ODUC10_1_0_2"},
        {odu, 5, "ODU50/1/0/2", 0, nullptr},
        {ethernet, 5, "HundredGigECtrlr0/1/0/2", 0, "HundredGigECtrlr0_1_0_2"},
        {ethernet, 5, "TenGigECtrlr0/1/0/2/7", 0, "TenGigECtrlr0_1_0_2_7"},
        {ethernet, 5, "TenGigECtrlr0/1/0/2", 0, "TenGigECtrlr0_1_0_2_-1"},
        {ethernet, 5, "FortyGigECtrlr0/1/0/2", 0, "FortyGigECtrlr0_1_0_2"},
        {ethernet, 5, "FourHundredGigECtrlr0/1/0/2", 0, "FourHundredGigECtrlr0_1_0_2"},
        {ethernet, 5, "MgmtEth0/RP0/CPU0/1", 0, "MgmtEth0_RP0_CPU0_1"},
        {ethernet, 5, "HundredGigECtrlr0/1/0", bad, nullptr},
        {ethernet, 5, "CoherentDSP0/1/0/2", bad, nullptr},
        {ethernet, 5, nullptr, bad, nullptr},
    };
    for (const row &expected : rows) {
        check(expected);
    }
}

TEST(names, swaps_and_channel_numbers) {
    hardware::current().channel_of = {{"HundredGigE0_1_0_2", 12}, {"Zero0_0", 0}};
    hardware::current().name_of = {{12, "HundredGigE0_1_0_2"}};
    const std::string too_long(200, '/');
    const row rows[] = {
        {oc_optical_convert_compname_to_optname, 5, "0/1-OpticalChannel0/1/0/2", 0, "0_1-OpticalChannel0_1_0_2"},
        {oc_optical_convert_optname_to_compname, 5, "0_1-OpticalChannel0_1_0_2", 0, "0/1-OpticalChannel0/1/0/2"},
        {oc_optical_convert_compname_to_optname, 5, too_long.c_str(), 0, ""},
        {oc_optical_convert_interface_to_logical_id, 5, "HundredGigE0/1/0/2", 0, "12"},
        {oc_optical_convert_interface_to_logical_id, 5, "HundredGigE0/1/0/3", bad, nullptr},
        {oc_optical_convert_interface_to_logical_id, 5, "Zero0/0", bad, nullptr},
        {oc_optical_convert_interface_to_logical_id, 5, nullptr, bad, nullptr},
    };
    for (const row &expected : rows) {
        check(expected);
    }
    EXPECT_EQ(oc_optical_is_interface_ethernet_controller("FourHundredGigECtrlr0/1/0/2"), 1u);
    EXPECT_EQ(oc_optical_is_interface_ethernet_controller("HundredGigE0/1/0/2"), 0u);
    EXPECT_EQ(oc_optical_is_interface_ethernet_controller(nullptr), 0u);
    hardware::current().router_type = 19;
    EXPECT_EQ(is_prefix_required(), 0u);
    hardware::current().router_type = 18;
    EXPECT_EQ(is_prefix_required(), 1u);
}

TEST(names, optical_channel_agrees_with_its_prefix) {
    EXPECT_EQ(oc_optical_check_opt_chnl_rsip("0/1-OpticalChannel0/1/0/2"), RC_OK);
    EXPECT_EQ(oc_optical_check_opt_chnl_rsip("0/1-OpticalChannel0/2/0/0"), RC_SUBTREE_ERROR);
    EXPECT_EQ(oc_optical_check_opt_chnl_rsip("1/1-OpticalChannel0/1/0/0"), RC_SUBTREE_ERROR);
    EXPECT_EQ(oc_optical_check_opt_chnl_rsip("OpticalChannel0/2/0/0"), RC_OK);
    EXPECT_EQ(oc_optical_check_opt_chnl_rsip("anything"), RC_OK);
    EXPECT_EQ(oc_optical_check_opt_chnl_rsip(nullptr), RC_OK);
}

TEST(names, operations_for_other_modules) {
    hardware::current().name_of = {{12, "HundredGigE0_1_0_2"}};
    char internal[64] = "";
    convert_ifname_imentry(internal, "Optics0/1/0/2");
    EXPECT_STREQ(internal, "Optics0_1_0_2");
    convert_ifname_imentry(nullptr, "Optics0/1/0/2");
    convert_ifname_imentry(internal, nullptr);

    uint64_t number = 0;
    EXPECT_EQ(string_to_uint32("4294967297x", &number), RC_OK);
    EXPECT_EQ(number, UINT64_C(4294967297));

    char *name = nullptr;
    EXPECT_EQ(index_string_to_interface_name(nullptr, "12", &name), RC_OK);
    EXPECT_STREQ(name, "HundredGigE0_1_0_2");
    free(name);
    EXPECT_NE(index_string_to_interface_name(nullptr, "13", &name), RC_OK);
    free(name);

    struct {
        uint32_t n;
        const char *token;
    } const tokens[] = {{0, "a"}, {1, "b"}, {2, "c"}, {3, untouched}};
    for (const auto &expected : tokens) {
        char text[] = "a/b//c";
        char standing[] = "untouched";
        char *token = standing;
        EXPECT_EQ(get_token(text, "/", expected.n, &token), RC_OK);
        EXPECT_STREQ(token, expected.token);
        if (token != standing) {
            free(token);
        }
    }
}

} // namespace
