// The state store as the plug-in's objects meet it in these tests.
#include "state_store_items.h"

#include <cstring>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "hardware/hardware.h"
#include "pouch/fields.h"
#include "pouch/registry.h"
#include "records/catalogue.h"

namespace state_store_items {

bool library_is_there = false;
int times_asked = 0;

namespace {

pouch::value record_of(const std::string &field, const std::string &number) {
    const size_t slash = field.find('/');
    pouch::member member;
    member.name = field.substr(0, slash);
    if (slash == std::string::npos) {
        member.what.what = pouch::value::kind::number;
        member.what.text = number;
    } else {
        member.what = record_of(field.substr(slash + 1), number);
    }
    pouch::value record;
    record.what = pouch::value::kind::record;
    record.members.push_back(member);
    return record;
}

} // namespace

std::string record_with(const char *record, const std::string &field, const std::string &number) {
    return pouch::encode_fields(*pouch::find_type(record), record_of(field, number));
}

void hold(const std::string &path, const std::string &encoded) {
    hardware::current().state_items[path] = encoded;
}

void register_records() {
    static const rcode registered[] = {
        pouch_register_all_optics_ui_pouchs(),
        pouch_register_all_otu_ma_pouchs(),
        pouch_register_all_odu_ma_pouchs(),
        pouch_register_all_ethernet_show_controller_pouchs(),
    };
    for (const rcode status : registered) {
        ASSERT_EQ(status, RC_OK);
    }
}

} // namespace state_store_items

// The plug-in's objects stand in this program, so their question for the library comes here.
extern "C" int access(const char *name, int mode) noexcept {
    if (std::strcmp(name, "/pkg/lib/libstatedb.so") != 0) {
        return faccessat(AT_FDCWD, name, mode, 0);
    }
    ++state_store_items::times_asked;
    return state_store_items::library_is_there && mode == R_OK ? 0 : -1;
}
