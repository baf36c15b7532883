// Files that the plug-in asks for by name: the program that loads it answers for them.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "device/device.h"
#include "hardware/hardware.h"
#include "host.h"
#include "pouch/status.h"
#include "statedb/state_store.h"
#include "zmf/plugin.h"
#include "zmf/session.h"

namespace {

TEST(device_files, are_there_as_the_device_says) {
    // As a library finds it that asks for the name.
    const auto access_of_library = reinterpret_cast<int (*)(const char *, int)>(dlsym(RTLD_DEFAULT, "access"));
    const std::string file = road::scratch_file("plain", "x");
    for (const bool is_installed : {true, false}) {
        device::description described;
        described.state_store_installed = is_installed;
        device::install(described);
        errno = 0;
        EXPECT_EQ(access_of_library("/pkg/lib/libstatedb.so", R_OK), is_installed ? 0 : -1);
        EXPECT_EQ(errno, is_installed ? 0 : ENOENT);
        EXPECT_EQ(access_of_library(file.c_str(), R_OK), 0);
        EXPECT_EQ(access_of_library((file + "/").c_str(), R_OK), -1);
        EXPECT_EQ(errno, ENOTDIR);
    }
}

// A reader of the plug-in, from the library's file to the field of a record in a device file.
TEST(device_files, lead_to_the_records_of_the_state_store) {
    const zmf::plugin plugin(OCOPTICAL_PLUGIN);
    const auto is_grey =
        reinterpret_cast<rcode (*)(zmf_map_ctx, const char *)>(plugin.symbol("oc_optical_is_lineport_grey"));
    auto *const available = static_cast<int32_t *>(plugin.symbol("statedb_available"));
    ASSERT_TRUE(is_grey != nullptr && available != nullptr);
    const std::string items = R"("state-store": {
        "/oper/optics/if/Optics0_0_0_1/optics_info": {"record": "optics_edm_info", "fields": {
            "OpticsType": 1, "DerivedOpticsType": "100G", "LaneData": [{"LaneIndex": 1}, {"DacRate": "1x1.25"}],
            "NetworkSRLGInfo": {"NetworkSrlgArray": [{"NetworkSrlg": [1, 2]}]}, "RxPsd": "-3.5"}},
        "/oper/optics/if/Optics0_0_0_2/optics_info": {"record": "optics_edm_info"},
        "/oper/optics/if/Optics0_0_0_3/optics_info": {"record": "otu_per_port_info"}})";
    const auto become = [&items](bool is_installed) {
        const std::string json = "{" + items + (is_installed ? ", \"state-store-installed\": true}" : "}");
        const device::description described = device::parse(json, "store");
        device::install(described);
        device::install_state_store(described, "store");
    };
    zmf::session session(OP_GET);
    *available = 0;
    become(false);
    EXPECT_EQ(is_grey(session.context(), "Optics0/0/0/1"), RC_STATEDB_UNAVAILABLE);
    become(true);
    const size_t open_before = statedb::open_bindings();
    EXPECT_EQ(is_grey(session.context(), "Optics0/0/0/1"), 1u);
    EXPECT_EQ(is_grey(session.context(), "Optics0/0/0/2"), 0u);
    EXPECT_EQ(is_grey(session.context(), "Optics0/0/0/3"), pouch::rc_other_record);
    EXPECT_EQ(is_grey(session.context(), "Optics0/0/0/4"), statedb::rc_no_item);
    hardware::current().state_items["/oper/optics/if/Optics0_0_0_1/optics_info"].pop_back();
    EXPECT_EQ(is_grey(session.context(), "Optics0/0/0/1"), pouch::rc_wrong_length);
    EXPECT_EQ(statedb::open_bindings(), open_before);
    EXPECT_EQ(*available, 1);
    become(false); // the plug-in keeps that the library is there
    EXPECT_EQ(is_grey(session.context(), "Optics0/0/0/1"), statedb::rc_not_installed);
    *available = 0;
}

// The lab's client ports are grey, its line ports are not, and there is no record of others.
TEST(device_files, say_which_ports_of_the_lab_are_grey) {
    const zmf::plugin plugin(OCOPTICAL_PLUGIN);
    const auto is_grey =
        reinterpret_cast<rcode (*)(zmf_map_ctx, const char *)>(plugin.symbol("oc_optical_is_lineport_grey"));
    const device::description lab = device::read_file(EXAMPLES "/lab.json");
    EXPECT_TRUE(lab == device::lab());
    device::install(lab);
    device::install_state_store(lab, "lab.json");
    const std::map<std::string, rcode> expected = {
        {"Optics0/0/0/1", 1},  {"Optics0/0/0/2", 1},  {"Optics0/0/0/3", statedb::rc_no_item},
        {"Optics0/0/0/12", 0}, {"Optics0/0/0/13", 0},
    };
    for (const auto &[port, answer] : expected) {
        zmf::session session(OP_GET);
        EXPECT_EQ(is_grey(session.context(), port.c_str()), answer) << port;
    }
}

TEST(device_files, let_the_log_go_nowhere) {
    const bool was_there = ::access("/var/log/ocoptical.log", F_OK) == 0;
    const zmf::plugin plugin(OCOPTICAL_PLUGIN);
    const auto log = reinterpret_cast<void (*)(const char *, ...)>(plugin.symbol("oc_log_file"));
    auto *const opened = static_cast<FILE **>(plugin.symbol("fp"));
    ASSERT_TRUE(log != nullptr && opened != nullptr);
    log("%s\n", "somewhere");
    ASSERT_NE(*opened, nullptr);
    struct stat what {};
    EXPECT_EQ(fstat(fileno(*opened), &what), 0);
    EXPECT_TRUE(S_ISCHR(what.st_mode));
    EXPECT_EQ(::access("/var/log/ocoptical.log", F_OK) == 0, was_there);
    fclose(*opened);
    *opened = nullptr;

    const std::string file = road::scratch_file("plain", "kept");
    FILE *plain = fopen(file.c_str(), "r");
    ASSERT_NE(plain, nullptr);
    char read[8] = "";
    EXPECT_EQ(fread(read, 1, sizeof read, plain), 4u);
    EXPECT_STREQ(read, "kept");
    fclose(plain);
}

} // namespace
