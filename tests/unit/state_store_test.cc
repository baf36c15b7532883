// The state store: items of a device description as the plug-in reads them, and descriptions that are refused.
#include <array>
#include <cstdlib>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "device/device.h"
#include "hardware/hardware.h"
#include "made_record.h"
#include "pouch/registry.h"
#include "pouch/status.h"
#include "statedb.h"
#include "statedb/state_store.h"
#include "zmf/plugin.h"

namespace {

struct port_info {
    uint32_t state;
    uint8_t level;
    char *name;
    uint64_t *counter;
};

const made::record &port_record() {
    static made::record made;
    if (made.name.empty()) {
        made.name = "port_info";
        made.full = "$1={State}[s]e{Level}C{Name}s{Counter}p(H);";
        made.packed = "$1=eCsp(H);";
        made.add_member(1, sizeof(port_info),
                        {offsetof(port_info, state), offsetof(port_info, level), offsetof(port_info, name),
                         offsetof(port_info, counter)});
        made.describe();
    }
    EXPECT_EQ(made::register_alone(made.descriptor), RC_OK) << pouch::last_refusal();
    return made;
}

const made::record &odd_record() {
    static made::record made;
    if (made.name.empty()) {
        made.name = "odd_info";
        made.full = "$1={Kind}[k]e?(<Kind,k>,1:{One}D,2:{Two}$2,?:v){Pair}2A(c){List}a($2){Mac}6x%m{Field}4x%S"
                    "{Big}h;$2={Flag}b;";
        made.packed = "$1=e?(<0>,1:D,2:$2.,?:v)2A(c)a($2)6x%m4x%Sh;$2=b;";
        made.add_member(1, 56, {0, 4, 8, 16, 32, 38, 48});
        made.add_member(2, 4, {0});
        made.describe();
    }
    EXPECT_EQ(made::register_alone(made.descriptor), RC_OK) << pouch::last_refusal();
    return made;
}

std::string item(const std::string &record, const std::string &fields) {
    return R"({"state-store": {"/a": {"record": ")" + record + R"(", "fields": )" + fields + "}}}";
}

std::string refusal_of(const std::string &json) {
    try {
        const device::description parsed = device::parse(json, "a.json");
        device::install(parsed);
        device::install_state_store(parsed, "a.json");
        return "taken";
    } catch (const device::description_error &error) {
        EXPECT_EQ(error.file, "a.json");
        return std::to_string(error.line) + ":" + std::to_string(error.column) + ": " + error.text;
    }
}

TEST(state_store, gives_items_under_their_exact_paths) {
    const made::record &made = port_record();
    const device::description installed = device::parse(R"({"state-store-installed": true, "state-store": {
        "/oper/otu/if/OTU40_0_0_1/port": {"record": "port_info", "fields": {"Level": 3, "Counter": 7, "Name": "x"}},
        "/oper/otu/if/": {"record": "port_info"}}})",
                                                        "a.json");
    device::install(installed);
    device::install_state_store(installed, "a.json");

    const size_t open_before = statedb::open_bindings();
    void *otu = nullptr, *root = nullptr, *data = nullptr;
    size_t length = 0;
    ASSERT_EQ(_statedb_bind(&otu, "/oper/otu/if/", 4), RC_OK);
    ASSERT_EQ(_statedb_bind(&root, "", 0), RC_OK);
    const struct {
        void *binding;
        const char *path;
        rcode status;
    } rows[] = {
        {otu, "OTU40_0_0_1/port", RC_OK},
        {root, "/oper/otu/if/OTU40_0_0_1/port", RC_OK},
        {otu, "", RC_OK},
        {otu, "OTU40_0_0_1/port/", statedb::rc_no_item},
        {otu, "OTU40_0_0_1", statedb::rc_no_item},
        {otu, "/OTU40_0_0_1/port", statedb::rc_no_item},
        {root, "", statedb::rc_no_item},
        {otu, nullptr, statedb::rc_bad_call},
        {nullptr, "OTU40_0_0_1/port", statedb::rc_not_bound},
        {&root, "OTU40_0_0_1/port", statedb::rc_not_bound},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(statedb_item_get(row.binding, row.path, &data, &length, 7), row.status) << row.path;
        EXPECT_TRUE(row.status == RC_OK || row.status > 1); // 1 means grey to a reader
        std::free(data);
        data = nullptr;
    }
    ASSERT_EQ(statedb_item_get(otu, "OTU40_0_0_1/port", &data, &length, 0), RC_OK);
    port_info read;
    ASSERT_EQ(pouch_decode(data, length, &read, &made.descriptor), RC_OK);
    EXPECT_TRUE(read.state == 0 && read.level == 3 && read.counter != nullptr && *read.counter == 7);
    EXPECT_STREQ(read.name, "x");
    pouch_free_indirections(&read, &made.descriptor);
    std::free(data);

    EXPECT_EQ(statedb::open_bindings(), open_before + 2);
    EXPECT_EQ(_statedb_unbind(root), RC_OK);
    EXPECT_EQ(_statedb_unbind(root), statedb::rc_not_bound);
    EXPECT_EQ(_statedb_unbind(nullptr), statedb::rc_not_bound);

    // Whoever keeps a binding meets the next device with it.
    device::install(device::parse("{}", "a.json"));
    EXPECT_EQ(statedb_item_get(otu, "OTU40_0_0_1/port", &data, &length, 0), statedb::rc_not_installed);
    EXPECT_EQ(_statedb_bind(&root, "/", 0), statedb::rc_not_installed);
    device::install(device::parse(R"({"state-store-installed": true})", "a.json"));
    EXPECT_EQ(statedb_item_get(otu, "OTU40_0_0_1/port", &data, &length, 0), statedb::rc_no_item);
    EXPECT_EQ(_statedb_unbind(otu), RC_OK);
    EXPECT_EQ(statedb::open_bindings(), open_before);
}

TEST(state_store, is_refused_with_its_place) {
    port_record();
    odd_record();
    const pouch_descriptor empty{1, "empty_info", 1, "made.dll", nullptr, "", "", 0, 0};
    ASSERT_EQ(made::register_alone(empty), RC_OK);
    const struct {
        std::string json;
        const char *place_and_words;
    } rows[] = {
        {R"({"state-store-installed": 1})", "1:27: \"state-store-installed\" takes true or false"},
        {R"({"state-store": []})", "1:17: \"state-store\" takes an object of paths and items"},
        {R"({"state-store": {"a/b": {}}})", "1:18: path \"a/b\" of an item does not begin with \"/\""},
        {R"({"state-store": {"/a": 5}})", "1:24: item \"/a\" takes an object"},
        {R"({"state-store": {"/a": []}})", "1:24: item \"/a\" takes an object"},
        {R"({"state-store": {"/a": {}}})", "1:25: item \"/a\" without its \"record\""},
        {R"({"state-store": {"/a": {"fields": {}}}})", "1:37: item \"/a\" without its \"record\""},
        {R"({"state-store": {"/a": {"recrod": "x"}}})", "1:25: unknown member \"recrod\" in item \"/a\""},
        {R"({"state-store": {"/a": {"record": 5}}})", "1:35: \"record\" takes the name of a record"},
        {R"({"state-store": {"/a": {"record": {}}}})", "1:35: \"record\" takes the name of a record"},
        {R"({"state-store": {"/a": {"record": ""}}})", "1:35: \"record\" takes the name of a record"},
        {R"({"state-store": {"/a": {"record": "x", "fields": 5}}})", "1:50: \"fields\" takes an object"},
        {R"({"state-store": {"/a": {"record": "x", "fields": []}}})", "1:50: \"fields\" takes an object"},
        {R"({"state-store": {"/a": {"record": "port_info"}, "/a": {}}})", "1:49: member \"/a\" stands twice"},
        {item("port_info", R"({"Level": 1, "Level": 2})"), "1:71: member \"Level\" stands twice"},
        // known only when the record types are
        {item("pot_info", "{}"), "1:35: unknown record \"pot_info\""},
        {item("empty_info", "{}"), "1:35: record \"empty_info\" has no schema"},
        {item("port_info", "{\n \"\xc3\xa4\": 1, \"level\": 1}"),
         "2:2: unknown field \"\xc3\xa4\" in record \"port_info\""},
        {item("port_info", "{\n  \"State\": 1, \"Level\": 256}"), "2:24: \"Level\" takes a number from 0 to 255"},
        {item("port_info", R"({"Level": -1})"), "1:68: \"Level\" takes a number from 0 to 255"},
        {item("port_info", R"({"Level": 1.0})"), "1:68: \"Level\" takes a number from 0 to 255"},
        {item("port_info", R"({"Level": "1"})"), "1:68: \"Level\" takes a number from 0 to 255"},
        {item("port_info", R"({"Level": true})"), "1:68: \"Level\" takes a number from 0 to 255"},
        {item("port_info", R"({"Level": null})"), "1:68: \"Level\" takes a number from 0 to 255"},
        {item("port_info", R"({"State": 2147483648})"),
         "1:68: \"State\" takes a number from -2147483648 to 2147483647"},
        {item("port_info", R"({"Name": 5})"), "1:67: \"Name\" takes a text or null"},
        {item("port_info", R"({"Name": "a\u0000"})"), "1:67: \"Name\" takes a text or null"},
        {item("port_info", R"({"Counter": "x"})"), "1:70: \"Counter\" takes a number from 0 to 18446744073709551615"},
        {item("port_info", R"({"Counter": [5]})"), "1:70: \"Counter\" takes a number"},
        {item("odd_info", R"({"Big": 9223372036854775808})"),
         "1:65: \"Big\" takes a number from -9223372036854775808 to"},
        {item("odd_info", R"({"Pair": [1]})"), "1:66: \"Pair\" takes an array of 2"},
        {item("odd_info", R"({"Pair": [1, 128]})"), "1:70: \"Pair\" takes a number from -128 to 127"},
        {item("odd_info", R"({"List": {}})"), "1:66: \"List\" takes an array"},
        {item("odd_info", R"({"List": [{}, 5]})"), "1:71: \"List\" takes an object of fields"},
        {item("odd_info", R"({"List": [{"Flag": 1}]})"), "1:76: \"Flag\" takes true or false"},
        {item("odd_info", R"({"List": [{"Flags": true}]})"), "1:68: unknown field \"Flags\" in \"List\""},
        {item("odd_info", R"({"Mac": "00:11:22:33:44"})"),
         "1:65: \"Mac\" takes 6 bytes as a text of hexadecimal pairs"},
        {item("odd_info", R"({"Mac": "00:11:22:33:44:5g"})"), "1:65: \"Mac\" takes 6 bytes"},
        {item("odd_info", R"({"Mac": "00:11:22:33:44-55"})"), "1:65: \"Mac\" takes 6 bytes"},
        {item("odd_info", R"({"Field": "four"})"), "1:67: \"Field\" takes a text of at most 3 bytes"},
        {item("odd_info", R"({"One": 5})"), "1:58: \"One\" is not what was chosen"},
        {item("odd_info", R"({"Kind": 2, "One": 5})"), "1:69: \"One\" is not what was chosen"},
        {item("odd_info", R"({"One": 5, "Two": {}, "Kind": 2})"), "1:68: \"Two\" and \"One\" are the same field"},
        {item("odd_info", R"({"Two": {"Flag": 5}, "Kind": 2})"), "1:74: \"Flag\" takes true or false"},
    };
    for (const auto &row : rows) {
        const std::string said = refusal_of(row.json);
        EXPECT_TRUE(said.starts_with(row.place_and_words)) << row.json << "\n  " << said;
    }
    EXPECT_TRUE(hardware::current().state_items.empty());
}

TEST(state_store, is_saved_as_it_was_read) {
    const char *json = R"({"state-store-installed": true, "state-store": {
        "/b": {"record": "odd_info", "fields": {"Kind": 2, "Two": {"Flag": true}, "Pair": [-1, 127], "List": [{}, {}],
               "Mac": "00:11:22:33:44:55", "Field": "\"\\\u0007", "Big": -9223372036854775808}},
        "/a": {"fields": {"Name": null, "Counter": 18446744073709551615}, "record": "port_info"},
        "/c": {"record": "of nobody here"}}})";
    const device::description read = device::parse(json, "a.json");
    const std::string saved = device::to_json(read);
    EXPECT_TRUE(device::parse(saved, "b.json") == read) << saved;
    EXPECT_EQ(device::to_json(device::parse(saved, "b.json")), saved);
    EXPECT_NE(saved.find("  \"state-store\": {\n"
                         "    \"/a\": {\"record\": \"port_info\", \"fields\": {\"Name\": null, \"Counter\": "
                         "18446744073709551615}},\n    \"/b\": "),
              std::string::npos)
        << saved;

    device::description other = read;
    other.state_store.at("/a").fields.members.back().what.text = "5";
    EXPECT_FALSE(other == read);
}

TEST(state_store, needs_records_that_the_codec_takes) {
    try {
        const zmf::plugin loaded(LIBRARY_WITH_BAD_RECORD);
        ADD_FAILURE() << "taken";
    } catch (const zmf::plugin_error &error) {
        EXPECT_NE(error.text.find("pouch_register_all_otu_ma_pouchs fails: record \"bad\": packed schema, byte 3"),
                  std::string::npos)
            << error.text;
    }
    EXPECT_EQ(pouch_register_start(), RC_OK); // nothing was left open
    pouch_register_abort();
}

} // namespace
