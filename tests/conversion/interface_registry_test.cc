// The interface registry: bound at first use, asked again while it does not answer, and what a look-up comes to.
#include <string>

#include <gtest/gtest.h>

#include "exported.h"
#include "hardware/hardware.h"
#include "zmf/session.h"

namespace {

class interface_registry : public testing::Test {
protected:
    void SetUp() override {
        hardware::current() = {};
        hardware::current().interfaces = {{"Optics0_1_0_2", 7}, {"Optics0_1_0_3", 8}};
        ifreg_handle = 0;
        session.ring([this](std::string_view line) { lines += std::string(line) + "\n"; });
    }

    bool is_traced(const std::string &text) const { return lines.find(text) != std::string::npos; }

    uint32_t look_up(const char *name) {
        lines.clear();
        return oc_optical_check_opt_chnl_ifhandle(session.context(), name);
    }

    zmf::session session{OP_GET};
    std::string lines;
};

constexpr char unbound[] = "TALM Connection to IM server failed";

TEST_F(interface_registry, is_bound_once) {
    hardware::current().registry_reachable = false;
    const rcode failure = zmf_ocoptical_ifmgr_init(session.context());
    EXPECT_NE(failure, RC_OK);
    EXPECT_TRUE(is_traced(unbound)) << lines;
    EXPECT_EQ(zmf_ocoptical_ifmgr_init(nullptr), failure); // without a context and without a trace
    EXPECT_EQ(ifreg_handle, 0u);

    hardware::current().registry_reachable = true;
    lines.clear();
    EXPECT_EQ(zmf_ocoptical_ifmgr_init(nullptr), RC_OK);
    const uint64_t bound = ifreg_handle;
    EXPECT_NE(bound, 0u);
    hardware::current().registry_reachable = false; // which a bound one does not ask
    EXPECT_EQ(zmf_ocoptical_ifmgr_init(session.context()), RC_OK);
    EXPECT_EQ(ifreg_handle, bound);
    EXPECT_FALSE(is_traced(unbound));
}

TEST_F(interface_registry, finds_interfaces_by_name) {
    const std::string too_long = "Optics0/1/0/2" + std::string(60, 'x');
    const struct {
        const char *name;
        uint32_t handle;
    } rows[] = {
        {"Optics0/1/0/2", 7},  {"Optics0/1/0/3", 8},  {"Optics0_1_0_2", 7}, {"Optics0/1/0/4", 0}, {"", 0},
        {"Optics0/1/0/22", 0}, {too_long.c_str(), 0}, {nullptr, 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name != nullptr ? row.name : "(null)");
        EXPECT_EQ(look_up(row.name), row.handle);
        const std::string found =
            "Get iftype: IM_FIND ifhandle :" + std::to_string(row.handle) + " found for interface";
        EXPECT_EQ(is_traced(found), row.handle != 0) << lines;
        EXPECT_EQ(is_traced("Get iftype: IM_FIND failed for interface"), row.handle == 0) << lines;
        EXPECT_TRUE(is_traced("ERR: oc_optical_check_opt_chnl_ifhandle")) << lines; // either way
    }
}

TEST_F(interface_registry, is_asked_again_while_it_does_not_answer) {
    hardware::current().registry_reachable = false;
    EXPECT_EQ(look_up("Optics0/1/0/2"), 0u);
    EXPECT_TRUE(is_traced(unbound)) << lines;
    EXPECT_EQ(ifreg_handle, 0u);
    EXPECT_EQ(look_up("Optics0/1/0/2"), 0u);
    EXPECT_TRUE(is_traced(unbound)) << lines;
    hardware::current().registry_reachable = true;
    EXPECT_EQ(look_up("Optics0/1/0/2"), 7u);
    EXPECT_FALSE(is_traced(unbound)) << lines;
    hardware::current().registry_reachable = false; // bound, and no answer
    EXPECT_EQ(look_up("Optics0/1/0/2"), 0u);
    EXPECT_FALSE(is_traced(unbound)) << lines;
}

} // namespace
