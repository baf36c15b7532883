// What the codec is given: schema texts, member tables, and the order of registration. Texts and offsets are worked out
// by hand. To add a record or an odd form: a row in the table that it belongs to.
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "records/catalogue.h"

namespace {

using std::string;
using std::string_view;

// A codec that notes its calls, and fails at the one told.
struct codec {
    std::vector<string> calls;
    std::vector<const pouch_descriptor *> records;
    size_t fails_at = static_cast<size_t>(-1);

    rcode note(const string &call) {
        calls.push_back(call);
        return calls.size() - 1 == fails_at ? failure : RC_OK;
    }

    static constexpr rcode failure = 0x77;
};
codec current;

} // namespace

rcode pouch_register_start() {
    return current.note("start");
}

rcode pouch_register(const pouch_descriptor *descriptor) {
    current.records.push_back(descriptor);
    return current.note(descriptor->name);
}

void pouch_register_abort() {
    current.note("abort");
}

rcode pouch_register_end() {
    return current.note("end");
}

namespace {

struct named_descriptor {
    string name;
    const pouch_descriptor *exported;
    const pouch_descriptor *answered;
};

const named_descriptor all[] = {
#define GROUP(name, table, file, version_high, version_low)
#define RECORD(name, number, fields, definitions) NAMED(name)
#define NAMED(name) {#name, &name##_pouch, name##_pouch_getfn()},
#define END_GROUP
#include "records/catalogue.def"
#undef GROUP
#undef RECORD
#undef NAMED
#undef END_GROUP
};

const pouch_descriptor &named(string_view name) {
    for (const named_descriptor &each : all) {
        if (each.name == name) {
            return *each.exported;
        }
    }
    ADD_FAILURE() << "no record " << name;
    return optics_edm_info_pouch;
}

TEST(records, descriptors) {
    size_t with_fields = 0;
    for (const auto &[name, exported, answered] : all) {
        EXPECT_EQ(exported, answered) << name;
        EXPECT_EQ(exported->format, 1U) << name;
        EXPECT_EQ(exported->name, name);
        if (exported->members != nullptr) {
            ++with_fields;
            EXPECT_EQ(exported->members->size, exported->top_size) << name;
            continue;
        }
        EXPECT_STREQ(exported->schema, "") << name;
        EXPECT_STREQ(exported->packed_schema, "") << name;
        EXPECT_EQ(exported->member_count, 0U) << name;
        EXPECT_EQ(exported->top_size, 0U) << name;
    }
    EXPECT_EQ(std::size(all), 87U);
    EXPECT_EQ(with_fields, 62U);
}

TEST(records, whole_schemas) {
    const struct {
        string_view record;
        const char *full;
        const char *packed;
    } rows[] = {
        {"lane_alarm_detail", "$1={IsDetected}b{Counter}p(D);", "$1=bp(D);"},
        // The record itself stands first, what it refers to behind it, and nothing else.
        {"lane_edm_alarm_info",
         "$2={HighRxPower}$1{LowRxPower}$1{HighTxPower}$1{LowTxPower}$1{HighLBC}$1;$1={IsDetected}b{Counter}p(D);",
         "$2=$1.$1.$1.$1.$1.;$1=bp(D);"},
        {"optics_edm_network_srlg_info", "$7={NetworkSrlgArray}a($6);$6={SetNumber}D{NetworkSrlg}a(D);",
         "$7=a($6);$6=Da(D);"},
        {"otu_flexo_info",
         "$10={FlexoMode}p([OTU_FLEXOMode]e){TXGID}p(D){FlexoTxIIDInformation}p($9){RXGID}p(D)"
         "{FlexoRxIIDInformation}p($9){FlexoPeersInformation}p($7);"
         "$6={OTUCnRate}[OTUCn_RATE]e{InterfaceName}s;$7={Flexo_Peers}a($6);$8={IID}D;$9={IID_Array}a($8);",
         "$10=p(e)p(D)p($9)p(D)p($9)p($7);$6=es;$7=a($6);$8=D;$9=a($8);"},
        {"odu_child_ts_info", "$13={intf_name}64x%S{TPN_value}C{TS_Bitmap}256x%S;", "$13=64x%SC256x%S;"},
        // A union: the field that decides stands before it, and the packed text gives that field's place.
        {"otm_optical_rm_ctxt_data",
         "$4={GmplsReqTime}D{CTXT_TYPE}[otm_optical_rm_ctxt_type]e{RM_TYPE}[otm_optical_rm_ctxt_rm_type]e"
         "{TE_TUNNEL_INFO}$3;"
         "$1={S2L_FEC_SUBGROUP_ID}I{S2L_FEC_LSP_ID}I{S2L_FEC_TUNNEL_ID}I{EXT_TUNNEL_ID}D{FEC_SOURCE}D{FEC_DEST}D"
         "{S2L_FEC_P2MP_ID}D{SUBGROUP_ORIGINATOR}D{FEC_CTYPE}[otm_mpls_lib_ctype]e;"
         "$2={SRC_TID}I{SRC_RID}D;"
         "$3={INFO_TYPE}[otm_te_tunnel_info_type]e"
         "?(<INFO_TYPE,otm_te_tunnel_info_type>,1:{LB_CTXT}$1,2:{TUNNEL_ID}D,3:{PASSIVE_MATCH}$2,?:v);",
         "$4=Dee$3.;$1=IIIDDDDDe;$2=ID;$3=e?(<0>,1:$1.,2:D,3:$2.,?:v);"},
    };
    for (const auto &[record, full, packed] : rows) {
        EXPECT_STREQ(named(record).schema, full);
        EXPECT_STREQ(named(record).packed_schema, packed);
    }
}

TEST(records, pieces_of_schemas) {
    constexpr string_view ethernet = "ethernet_controller_driver_pouch_v2_type";
    const struct {
        string_view record;
        string_view full;
        string_view packed;
    } rows[] = {
        {"optics_edm_info", "{PolarizationDataValid}Pb{OpticsAlarmInfo}$10{OtsAlarmInfo}$11{CfgTXPower}d",
         "Pb$10.$11.d"},
        {"optics_edm_info", "{ChannelCentralFreq}p(H){RxPsd}16x%S{TxPsd}16x%S{SubmarineInfo}p($21){SNR}s",
         "p(H)16x%S16x%Sp($21)s"},
        {"optics_edm_info",
         "{LaneData}a($3){ControllerState}[OpticsControllerState]e{FormFactor}p([OpticsFormFactor]e)", "a($3)ep(e)"},
        {"optics_edm_info", ";$16={LoSNR}$8", ";$17=ddddddhhddddddhhhhhhhh;"},
        {"otu_per_port_info", "{PreFECVal}d{PreFECMantissa}c{EC_value}b", "dcb"},
        {"odu_per_port_info", "{flex_bw}D{flex_tolerence}I{Option}C",
         "DICCCe256x%S256x%S256x%S64x%SDsDD$14.a($13)$16."},
        {ethernet, "$145={AdminState}[ethernet_port_enable_]e{OperStateUp}C{PhyInfo}p($140)",
         "$145=eCp($140)p($141)p($142)p($143)p($144);$16=dDeeede;"},
        {ethernet, ";$85={}6x%m;$86={MACAddress}6x%m{Mask}6x%m;", ";$85=6x%m;$86=6x%m6x%m;"},
        {ethernet, "{availability_flag}PD{ControllerStatsStartTimestamp}p($125)", ";$129=eHHPDp($125)p($127);"},
        {ethernet, ";$138={Mode}3A([ether_pfc_wd_]e){Interval}3A(D)", ";$137=eC8A(H)8A(H)HH8A(H)HCC;$138=3A(e)3A(D)"},
        {ethernet, "{DroppedPackets}8A(H){WatchdogState}8x{WatchdogTrafficClassEnableMask}C;", "8A(H)8xC;"},
        {ethernet, ";$142={MTU}D{MRU}D{BurnedInMACAddress}6x%m{OperationalMACAddress}p($85)",
         ";$142=DD6x%mp($85)p($123)p($124);$143=p(C)p(e)p(D)p(D);$144="},
    };
    for (const auto &[record, full, packed] : rows) {
        EXPECT_NE(string_view(named(record).schema).find(full), string_view::npos) << full;
        EXPECT_NE(string_view(named(record).packed_schema).find(packed), string_view::npos) << packed;
    }
}

const pouch_member *member(const pouch_descriptor &descriptor, uint64_t number) {
    for (size_t at = 0; at < descriptor.member_count; ++at) {
        if (descriptor.members[at].number == number) {
            return descriptor.members + at;
        }
    }
    return nullptr;
}

TEST(records, members) {
    const struct {
        string_view record;
        size_t count;
        uint64_t number;
        uint64_t size;
        std::vector<std::pair<size_t, uint64_t>> offsets; // of some fields, counted from 0
    } rows[] = {
        {"optics_edm_info", 26, 34, 3976, {{0, 0}, {2, 8}, {3, 16}, {5, 32}, {9, 64}, {21, 120}, {40, 264}, {41, 280}}},
        {"optics_edm_info", 26, 8, 16, {{0, 0}, {1, 8}}},
        {"optics_edm_info", 26, 10, 1312, {{1, 16}, {81, 1296}}},
        {"optics_edm_info", 26, 17, 128, {{5, 20}, {6, 24}, {8, 40}, {14, 64}, {21, 120}}},
        {"optics_ext_threshold_param", 1, 18, 416, {{12, 48}, {20, 112}, {31, 156}, {32, 160}, {63, 408}}},
        {"otu_per_port_info", 16, 16, 864, {{4, 25}, {5, 28}, {13, 140}, {15, 152}, {18, 176}, {19, 704}}},
        {"otu_per_port_info", 16, 16, 864, {{20, 708}, {21, 744}, {24, 764}, {25, 768}, {31, 792}, {39, 856}}},
        {"otu_per_port_info", 16, 12, 32, {{4, 16}, {5, 20}, {8, 23}, {9, 24}, {10, 28}}},
        {"otu_edm_alarm", 1, 5, 24, {{2, 8}, {3, 16}}},
        {"odu_per_port_info", 20, 27, 3400, {{1, 8}, {2, 16}, {4, 20}, {7, 40}, {10, 352}, {12, 360}}},
        {"odu_per_port_info", 20, 3, 36, {{0, 0}, {1, 4}}},
        {"otm_optical_rm_ctxt_data", 4, 4, 48, {{2, 8}, {3, 12}}},
        {"odu_child_ts_info", 1, 13, 321, {{1, 64}, {2, 65}}},
        {"otm_s2l_fec", 1, 1, 32, {{1, 2}, {2, 4}, {3, 8}, {8, 28}}},
        {"ethernet_controller_driver_pouch_v2_type", 34, 145, 48, {{1, 4}, {2, 8}, {5, 32}, {6, 40}}},
        {"ethernet_controller_driver_pouch_v2_type", 34, 143, 32, {{0, 0}, {3, 24}}},
        {"ethernet_controller_driver_pouch_v2_type", 34, 85, 6, {{0, 0}}},
        {"ethernet_controller_driver_pouch_v2_type", 34, 113, 136, {{8, 64}, {9, 80}, {10, 96}, {14, 128}}},
        {"ethernet_controller_driver_pouch_v2_type", 34, 137, 232, {{2, 8}, {3, 72}, {4, 136}, {6, 152}, {9, 225}}},
        {"ethernet_controller_driver_pouch_v2_type", 34, 138, 624, {{4, 48}, {5, 60}, {6, 96}, {14, 608}, {15, 616}}},
        {"ethernet_controller_driver_pouch_v2_type", 34, 142, 40, {{2, 8}, {3, 16}, {5, 32}}},
    };
    for (const auto &row : rows) {
        const pouch_descriptor &descriptor = named(row.record);
        const string where = string(row.record) + " R" + std::to_string(row.number);
        EXPECT_EQ(descriptor.member_count, row.count) << where;
        const pouch_member *found = member(descriptor, row.number);
        ASSERT_NE(found, nullptr) << where;
        EXPECT_EQ(found->size, row.size) << where;
        for (const auto &[field, offset] : row.offsets) {
            EXPECT_EQ(found->offsets[field], offset) << where << " field " << field;
        }
    }
}

// A record that is a definition of another one has that definition's number, and these rise as the group goes on.
void check_rising_numbers(const std::vector<const pouch_descriptor *> &records) {
    uint64_t last = 0;
    for (const pouch_descriptor *record : records) {
        if (record->members != nullptr) {
            EXPECT_GT(record->members[0].number, last) << record->name;
            last = record->members[0].number;
        }
    }
}

TEST(registration, groups) {
    const struct {
        rcode (*register_group)();
        size_t records;
        uint64_t version;
        const char *file;
        std::vector<std::pair<size_t, string>> calls; // some of them; call 0 opens the registration
    } rows[] = {
        {pouch_register_all_optics_ui_pouchs,
         35,
         0x10000000a,
         "lib_optics_ui_pouch_desc.dll",
         {{1, "lane_alarm_detail"}, {9, "optics_db_info"}, {32, "optics_edm_info"}, {35, "optics_fec_thresh_info"}}},
        {pouch_register_all_otu_ma_pouchs,
         17,
         4,
         "libotu_defs_pouch_desc.dll",
         {{1, "otu_ains_hw_info"}, {7, "OTU_FlexoPeersInfo"}, {16, "otu_per_port_info"}, {17, "otu_prbs_info"}}},
        {pouch_register_all_odu_ma_pouchs,
         25,
         0x100000004,
         "libcontroller_odu_defs_pouch_desc.dll",
         {{1, "odu_ains_hw_info"}, {8, "far_end_child_info"}, {23, "odu_per_port_info"}, {25, "odu_prbs_info"}}},
        {pouch_register_all_otn_te_common_pouchs,
         3,
         0x100000002,
         "libcontroller_common_defs_pouch_desc.dll",
         {{1, "otm_s2l_fec"}, {3, "otm_optical_rm_ctxt_data"}}},
        {pouch_register_all_ethernet_show_controller_pouchs,
         7,
         5,
         "libethernet_show_controller_pouch_desc.dll",
         {{1, "eth_ctrlr_phy_100gbase_r10_pouch_type"},
          {4, "ethernet_controller_driver_pouch_v2_type"},
          {7, "ethernet_l2_controller_stats"}}},
    };
    for (const auto &row : rows) {
        current = {};
        EXPECT_EQ(row.register_group(), RC_OK);
        ASSERT_EQ(current.calls.size(), row.records + 2) << row.file;
        EXPECT_EQ(current.calls.front(), "start");
        EXPECT_EQ(current.calls.back(), "end");
        for (const auto &[call, name] : row.calls) {
            EXPECT_EQ(current.calls[call], name);
        }
        for (const pouch_descriptor *record : current.records) {
            EXPECT_EQ(record->version, row.version) << record->name;
            EXPECT_STREQ(record->group_file, row.file) << record->name;
        }
        check_rising_numbers(current.records);
    }
}

TEST(registration, failures) {
    const struct {
        size_t fails_at;
        std::vector<string> calls;
    } rows[] = {
        {0, {"start"}},
        {1, {"start", "otm_s2l_fec", "abort"}},
        {2, {"start", "otm_s2l_fec", "otm_mte_vif_passive_match_info", "abort"}},
        {3, {"start", "otm_s2l_fec", "otm_mte_vif_passive_match_info", "otm_optical_rm_ctxt_data", "abort"}},
        {4, {"start", "otm_s2l_fec", "otm_mte_vif_passive_match_info", "otm_optical_rm_ctxt_data", "end"}},
    };
    for (const auto &row : rows) {
        current = {};
        current.fails_at = row.fails_at;
        EXPECT_EQ(pouch_register_all_otn_te_common_pouchs(), codec::failure) << row.fails_at;
        EXPECT_EQ(current.calls, row.calls) << row.fails_at;
    }
}

} // namespace
