// The grey test of a line port: the library that may be missing, the item that may be, and bytes that do not decode.
#include <string>

#include <gtest/gtest.h>

#include "exported.h"
#include "hardware/hardware.h"
#include "state_store_items.h"
#include "statedb/state_store.h"
#include "zmf/session.h"

namespace {

using namespace state_store_items;

constexpr char item[] = "/oper/optics/if/Optics0_1_0_2/optics_info";
constexpr char port[] = "Optics0/1/0/2";

std::string record_with(const char *optics_type) {
    return state_store_items::record_with("optics_edm_info", "OpticsType", optics_type);
}

class grey_port : public testing::Test {
protected:
    void SetUp() override {
        register_records();
        bindings_ = statedb::open_bindings();
        hardware::current() = {};
        hardware::current().state_store_installed = true;
        statedb_available = 0;
        library_is_there = true;
    }
    void TearDown() override { EXPECT_EQ(statedb::open_bindings(), bindings_); }

    size_t bindings_ = 0;

    rcode ask(const char *name = port) {
        zmf::session session(OP_GET);
        return oc_optical_is_lineport_grey(session.context(), name);
    }
};

TEST_F(grey_port, type) {
    const struct {
        const char *type;
        rcode answer;
    } rows[] = {{"0", 0}, {"1", 1}, {"2", 0}, {"3", 0}};
    for (const auto &row : rows) {
        hardware::current().state_items[item] = record_with(row.type);
        EXPECT_EQ(ask(), row.answer) << row.type;
    }
}

TEST_F(grey_port, library_is_asked_for_until_it_is_there) {
    hardware::current().state_items[item] = record_with("1");
    library_is_there = false;
    times_asked = 0;
    EXPECT_EQ(ask(), RC_STATEDB_UNAVAILABLE);
    EXPECT_EQ(ask(), RC_STATEDB_UNAVAILABLE);
    EXPECT_EQ(times_asked, 2);
    library_is_there = true;
    EXPECT_EQ(ask(), 1u);
    library_is_there = false; // once found, found for good
    EXPECT_EQ(ask(), 1u);
    EXPECT_EQ(times_asked, 3);
    EXPECT_EQ(statedb_available, 1);
}

TEST_F(grey_port, failures_are_neither_grey_nor_not) {
    hardware::current().state_items[item] = record_with("1");
    EXPECT_EQ(ask("CoherentDSP0/1/0/2"), OCOPTICAL_BAD_NAME);
    EXPECT_EQ(ask(nullptr), OCOPTICAL_BAD_NAME);
    EXPECT_GT(ask("Optics0/1/0/3"), 1u); // no such item
    const std::string sound = record_with("1");
    for (size_t length = 0; length < sound.size(); ++length) {
        hardware::current().state_items[item] = sound.substr(0, length);
        EXPECT_GT(ask(), 1u) << length;
    }
    hardware::current().state_store_installed = false;
    EXPECT_GT(ask(), 1u);
}

TEST_F(grey_port, unbinding) {
    zmf::session session(OP_GET);
    uint64_t lines = 0;
    session.ring([&](std::string_view line) { lines += line.find("statedb_unbind failed 0x") != line.npos; });
    check_and_unbind(session.context(), nullptr);
    EXPECT_EQ(lines, 0u);
    library_is_there = false;
    void *binding = nullptr;
    check_and_unbind(session.context(), &binding);
    EXPECT_EQ(lines, 1u);
}

} // namespace
