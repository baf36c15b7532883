// The record codec: what it makes of every form, what it refuses, and that nothing that comes as data harms it.
// A form more: a field in `every_form`, and rows of payloads.
#include <array>
#include <cstddef>
#include <cstring>
#include <deque>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "device/device.h"
#include "made_record.h"
#include "pouch/encode.h"
#include "pouch/fields.h"
#include "pouch/registry.h"
#include "pouch/status.h"
#include "pouch/wire.h"

namespace {

struct counted {
    uint64_t count;
    void *entries;
};

// As a compiler lays them out.
struct nested {
    uint32_t number;
    char *text;
};
struct every_form {
    int8_t c;
    uint8_t C;
    uint16_t I;
    int32_t d;
    uint32_t D;
    int64_t h;
    uint64_t H;
    uint32_t b, packed_b;
    char *s;
    uint32_t e;
    nested by_value;
    nested *optional_record;
    uint16_t *optional_number;
    counted records, bytes, none, texts;
    std::array<uint16_t, 3> numbers;
    std::array<nested, 2> pair;
    std::array<char, 8> field;
    std::array<uint8_t, 6> mac;
    std::array<uint8_t, 3> opaque;
    uint32_t INFO_TYPE;
    union {
        nested as_record;
        uint32_t as_number;
        char *as_text;
    } chosen;
};

#define AT(name) offsetof(every_form, name)

std::unique_ptr<made::record> make_every_form() {
    auto made = std::make_unique<made::record>();
    made->name = "every_form";
    made->full = "$1={c}c{C}C{I}I{d}d{D}D{h}h{H}H{b}b{Pb}Pb{s}s{e}[a_type]e{by_value}$22{optional_record}p($22)"
                 "{optional_number}p(PI){records}a($22){bytes}a(C){none}a(D){texts}Pa(s){numbers}3A(I){pair}2A($22)"
                 "{field}8x%S{mac}6x%m{opaque}3x{INFO_TYPE}[info]e"
                 "?(<INFO_TYPE,info>,1:{as_record}$22,2:{as_number}D,-3:{as_text}s,4:v,?:v);$22={number}D{}s;";
    made->packed = "$1=cCIdDhHbPbse$22.p($22)p(PI)a($22)a(C)a(D)Pa(s)3A(I)2A($22)8x%S6x%m3xe"
                   "?(<23>,1:$22,2:D,-3:s,4:v,?:v);$22=Ds;";
    made->add_member(1, sizeof(every_form),
                     {AT(c),
                      AT(C),
                      AT(I),
                      AT(d),
                      AT(D),
                      AT(h),
                      AT(H),
                      AT(b),
                      AT(packed_b),
                      AT(s),
                      AT(e),
                      AT(by_value),
                      AT(optional_record),
                      AT(optional_number),
                      AT(records),
                      AT(bytes),
                      AT(none),
                      AT(texts),
                      AT(numbers),
                      AT(pair),
                      AT(field),
                      AT(mac),
                      AT(opaque),
                      AT(INFO_TYPE),
                      AT(chosen)});
    made->add_member(22, sizeof(nested), {offsetof(nested, number), offsetof(nested, text)});
    made->describe();
    return made;
}

// A record of one field of a form, beside $1 and what it may refer to: $2 of a number and a text, $3 that may go on.
std::unique_ptr<made::record> make_one(const std::string &form, const std::string &packed, size_t size) {
    auto made = std::make_unique<made::record>();
    made->name = "one";
    made->full = "$1={x}" + form + ";$2={n}D{t}s;$3={next}p($3);$4={first}e;";
    made->full.replace(made->full.rfind("e;"), 2, "[t]e;");
    made->packed = "$1=" + packed + ";$2=Ds;$3=p($3);$4=e;";
    made->add_member(1, size, {0});
    made->add_member(2, 16, {0, 8});
    made->add_member(3, 8, {0});
    made->add_member(4, 4, {0});
    made->describe();
    return made;
}

pouch::value fields_of(const std::string &json) {
    return device::parse(R"({"state-store": {"/": {"record": "r", "fields": )" + json + "}}}", "fields")
        .state_store.at("/")
        .fields;
}

// An encoded record of whatever is behind the header.
std::string sealed(const pouch_descriptor &type, const std::string &payload) {
    const auto *const bytes = reinterpret_cast<const uint8_t *>(payload.data());
    const uint64_t fingerprint = pouch::find_type(&type)->fingerprint();
    const pouch::wire::header header{pouch::wire::magic, static_cast<uint32_t>(payload.size()), fingerprint,
                                     pouch::wire::seal_of(bytes, payload.size(), fingerprint)};
    return std::string(reinterpret_cast<const char *>(&header), sizeof header) + payload;
}

constexpr size_t header_size = sizeof(pouch::wire::header);

// Decodes over a record full of rubbish, in memory of exactly the data's length.
rcode decode(const pouch_descriptor &type, const std::string &data, std::vector<uint64_t> &record) {
    const std::vector<char> exact(data.begin(), data.end());
    record.assign((type.top_size + 7) / 8, 0x5555555555555555u);
    return pouch_decode(exact.data(), exact.size(), record.data(), &type);
}

bool is_zero(const pouch_descriptor &type, const std::vector<uint64_t> &record) {
    const std::string zeros(type.top_size, '\0');
    return std::memcmp(record.data(), zeros.data(), zeros.size()) == 0;
}

TEST(codec, fills_every_form_where_a_compiler_has_it) {
    const auto made = make_every_form();
    const pouch_descriptor &type = made->descriptor;
    ASSERT_EQ(made::register_alone(type), RC_OK) << pouch::last_refusal();
    const std::string encoded = pouch::encode_fields(*pouch::find_type(&type), fields_of(R"({
        "c": -128, "C": 255, "I": 65535, "d": -2147483648, "D": 4294967295, "h": -9223372036854775808,
        "H": 18446744073709551615, "b": true, "Pb": false, "s": "text \u00e4", "e": -7,
        "by_value": {"number": 5, "": "five"}, "optional_record": {"number": 6}, "optional_number": 0,
        "records": [{"number": 1, "": "one"}, {}], "bytes": [1, 2, 255], "none": [], "texts": ["", null, "x"],
        "numbers": [7, 8, 65535], "pair": [{"number": 9}, {"": "ten"}], "field": "seven77",
        "mac": "00:1B:2c:fe:dc:09", "opaque": "01:00:ff", "as_text": "chosen", "INFO_TYPE": -3})"));

    every_form read;
    ASSERT_EQ(pouch_decode(encoded.data(), encoded.size(), &read, &type), RC_OK);
    EXPECT_EQ(read.c, -128);
    EXPECT_EQ(read.C, 255);
    EXPECT_EQ(read.I, 65535);
    EXPECT_EQ(read.d, std::numeric_limits<int32_t>::min());
    EXPECT_EQ(read.D, 4294967295u);
    EXPECT_EQ(read.h, std::numeric_limits<int64_t>::min());
    EXPECT_EQ(read.H, 18446744073709551615u);
    EXPECT_TRUE(read.b == 1 && read.packed_b == 0);
    EXPECT_STREQ(read.s, "text \xc3\xa4");
    EXPECT_EQ(static_cast<int32_t>(read.e), -7);
    EXPECT_EQ(read.by_value.number, 5u);
    EXPECT_STREQ(read.by_value.text, "five");
    ASSERT_TRUE(read.optional_record != nullptr && read.optional_number != nullptr);
    EXPECT_EQ(read.optional_record->number, 6u);
    EXPECT_EQ(read.optional_record->text, nullptr);
    EXPECT_EQ(*read.optional_number, 0);
    ASSERT_EQ(read.records.count, 2u);
    const auto *records = static_cast<const nested *>(read.records.entries);
    EXPECT_EQ(records[0].number, 1u);
    EXPECT_STREQ(records[0].text, "one");
    EXPECT_TRUE(records[1].number == 0 && records[1].text == nullptr);
    ASSERT_EQ(read.bytes.count, 3u);
    EXPECT_EQ(std::memcmp(read.bytes.entries, "\x01\x02\xff", 3), 0);
    EXPECT_TRUE(read.none.count == 0 && read.none.entries == nullptr);
    ASSERT_EQ(read.texts.count, 3u);
    char *const *texts = static_cast<char **>(read.texts.entries);
    EXPECT_STREQ(texts[0], "");
    EXPECT_EQ(texts[1], nullptr);
    EXPECT_STREQ(texts[2], "x");
    EXPECT_EQ(read.numbers, (std::array<uint16_t, 3>{7, 8, 65535}));
    EXPECT_EQ(read.pair[0].number, 9u);
    EXPECT_STREQ(read.pair[1].text, "ten");
    EXPECT_STREQ(read.field.data(), "seven77");
    EXPECT_EQ(read.mac, (std::array<uint8_t, 6>{0, 0x1b, 0x2c, 0xfe, 0xdc, 9}));
    EXPECT_EQ(read.opaque, (std::array<uint8_t, 3>{1, 0, 255}));
    EXPECT_EQ(static_cast<int32_t>(read.INFO_TYPE), -3);
    EXPECT_STREQ(read.chosen.as_text, "chosen");

    EXPECT_EQ(pouch_free_indirections(&read, &type), RC_OK);
    EXPECT_TRUE(read.s == nullptr && read.optional_record == nullptr && read.records.count == 0 &&
                read.records.entries == nullptr && read.chosen.as_text == nullptr);
    EXPECT_EQ(pouch_free_indirections(&read, &type), RC_OK);
}

TEST(codec, chooses_by_the_enumeration_alone) {
    const auto made = make_every_form();
    const pouch_descriptor &type = made->descriptor;
    ASSERT_EQ(made::register_alone(type), RC_OK);
    const struct {
        const char *fields;
        uint64_t first_word; // of what was chosen
    } rows[] = {
        {R"({"INFO_TYPE": 1, "as_record": {"number": 77}})", 77},
        {R"({"INFO_TYPE": 2, "as_number": 78})", 78},
        {R"({"INFO_TYPE": 2})", 0},
        {R"({"INFO_TYPE": 4})", 0},
        {R"({"INFO_TYPE": 99})", 0},
        {"{}", 0},
    };
    for (const auto &row : rows) {
        const std::string encoded = pouch::encode_fields(*pouch::find_type(&type), fields_of(row.fields));
        every_form read;
        ASSERT_EQ(pouch_decode(encoded.data(), encoded.size(), &read, &type), RC_OK) << row.fields;
        uint64_t word = 0;
        std::memcpy(&word, &read.chosen, sizeof word);
        EXPECT_EQ(word, row.first_word) << row.fields;
        EXPECT_EQ(pouch_free_indirections(&read, &type), RC_OK);
    }
}

TEST(codec, has_one_encoding_for_a_value) {
    const struct {
        const char *form, *packed;
        size_t size;
        const char *value;
        std::string payload;
    } rows[] = {
        {"c", "c", 1, "-1", "\xff"},
        {"I", "I", 2, "127", "\x7f"},
        {"I", "I", 2, "300", "\xac\x02"},
        {"d", "d", 4, "-1", "\x01"},
        {"d", "d", 4, "64", {"\x80\x01", 2}},
        {"D", "D", 4, "4294967295", "\xff\xff\xff\xff\x0f"},
        {"h", "h", 8, "-9223372036854775808", "\xff\xff\xff\xff\xff\xff\xff\xff\xff\x01"},
        {"[t]e", "e", 4, "3", "\x06"},
        {"b", "b", 4, "true", "\x01"},
        {"s", "s", 8, "null", {"\0", 1}},
        {"s", "s", 8, "\"\"", "\x01"},
        {"s", "s", 8, "\"ab\"",
         "\x03"
         "ab"},
        {"4x%S", "4x%S", 4, "\"ab\"",
         "\x02"
         "ab"},
        {"2x%m", "2x%m", 2, "\"0a:00\"", {"\x0a\0", 2}},
        {"p(D)", "p(D)", 8, "null", {"\0", 1}},
        {"p(D)", "p(D)", 8, "5", "\x01\x05"},
        {"a(I)", "a(I)", 16, "[1, 300]", {"\x02\x01\xac\x02", 4}},
        {"2A(D)", "2A(D)", 8, "[1, 2]", "\x01\x02"},
        {"$2", "$2.", 16, R"({"t": "x"})", {"\0\x02x", 3}},
    };
    for (const auto &row : rows) {
        const auto made = make_one(row.form, row.packed, row.size);
        ASSERT_EQ(made::register_alone(made->descriptor), RC_OK) << row.form << pouch::last_refusal();
        const pouch::value fields = fields_of(R"({"x": )" + std::string(row.value) + "}");
        const std::string encoded = pouch::encode_fields(*pouch::find_type("one"), fields);
        EXPECT_EQ(encoded.substr(header_size), row.payload) << row.form << " " << row.value;
        EXPECT_EQ(encoded, sealed(made->descriptor, row.payload));
    }
}

TEST(codec, refuses_payloads_that_no_record_has) {
    const std::string zeros(3u << 20, '\0');
    const struct {
        const char *form, *packed;
        size_t size;
        std::string payload;
        rcode status;
    } rows[] = {
        {"D", "D", 4, "", pouch::rc_cut_short},
        {"D", "D", 4, "\x80", pouch::rc_cut_short},
        {"D", "D", 4, {"\x80\x00", 2}, pouch::rc_bad_number},
        {"D", "D", 4, "\xff\xff\xff\xff\x1f", pouch::rc_bad_number},
        {"d", "d", 4, "\xff\xff\xff\xff\x1f", pouch::rc_bad_number},
        {"[t]e", "e", 4, "\xff\xff\xff\xff\x1f", pouch::rc_bad_number},
        {"I", "I", 2, "\x80\x80\x04", pouch::rc_bad_number},
        {"H", "H", 8, "\xff\xff\xff\xff\xff\xff\xff\xff\xff\x02", pouch::rc_bad_number},
        {"H", "H", 8, "\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\x01", pouch::rc_bad_number},
        {"C", "C", 1, "", pouch::rc_cut_short},
        {"b", "b", 4, "\x02", pouch::rc_bad_flag},
        {"p(D)", "p(D)", 8, "\x02\x05", pouch::rc_bad_flag},
        {"p(D)", "p(D)", 8, "\x01", pouch::rc_cut_short},
        {"D", "D", 4, "\x05\x05", pouch::rc_left_over},
        {"s", "s", 8, "\x04xy", pouch::rc_cut_short},
        {"s", "s", 8, "\xff\xff\xff\xff\xff\xff\xff\xff\xff\x01", pouch::rc_cut_short},
        {"s",
         "s",
         8,
         {"\x04"
          "a\0b",
          4},
         pouch::rc_bad_text},
        {"4x%S", "4x%S", 4,
         "\x04"
         "abcd",
         pouch::rc_bad_text},
        {"4x%S",
         "4x%S",
         4,
         {"\x03"
          "a\0b",
          4},
         pouch::rc_bad_text},
        {"4x%S", "4x%S", 4,
         "\x03"
         "ab",
         pouch::rc_cut_short},
        {"6x%m", "6x%m", 6, "12345", pouch::rc_cut_short},
        {"a(D)", "a(D)", 16, "\x03\x01\x01", pouch::rc_too_many},
        {"a(D)", "a(D)", 16, "\xff\xff\xff\xff\xff\xff\xff\xff\xff\x01", pouch::rc_too_many},
        {"a($2)",
         "a($2)",
         16,
         {"\x02\0\x03"
          "ab",
          5},
         pouch::rc_cut_short},
        {"a(8A(C))", "a(8A(C))", 16,
         "\x01"
         "1234567",
         pouch::rc_too_many},
        {"3A(D)", "3A(D)", 12, "\x01\x01", pouch::rc_cut_short},
        {"$3", "$3.", 8, std::string(40, '\x01'), pouch::rc_too_deep},
        {"a(s)", "a(s)", 16, "\x80\x80\xc0\x01" + zeros, pouch::rc_too_big},
    };
    for (const auto &row : rows) {
        const auto made = make_one(row.form, row.packed, row.size);
        ASSERT_EQ(made::register_alone(made->descriptor), RC_OK) << row.form << pouch::last_refusal();
        std::vector<uint64_t> record;
        EXPECT_EQ(decode(made->descriptor, sealed(made->descriptor, row.payload), record), row.status)
            << row.form << " " << testing::PrintToString(row.payload.substr(0, 40));
        EXPECT_TRUE(is_zero(made->descriptor, record)) << row.form;
    }
}

TEST(codec, goes_exactly_as_deep_and_as_far_as_it_says) {
    // A $3 in $1 is one deeper, behind an optional two; each next one takes an optional and a record more. So they end
    // at 32 and at 31.
    std::vector<uint64_t> record;
    for (const auto &[form, packed] : {std::pair("$3", "$3."), std::pair("p($3)", "p($3)")}) {
        const auto chain = make_one(form, packed, 8);
        ASSERT_EQ(made::register_alone(chain->descriptor), RC_OK);
        const std::string fits = std::string(15, '\x01') + '\0';
        EXPECT_EQ(decode(chain->descriptor, sealed(chain->descriptor, fits), record), RC_OK) << form;
        EXPECT_EQ(pouch_free_indirections(record.data(), &chain->descriptor), RC_OK);
        EXPECT_EQ(decode(chain->descriptor, sealed(chain->descriptor, '\x01' + fits), record), pouch::rc_too_deep)
            << form;
    }

    // 2097152 pointers are 16 MiB.
    const auto wide = make_one("a(s)", "a(s)", 16);
    ASSERT_EQ(made::register_alone(wide->descriptor), RC_OK);
    const std::string zeros(2097152, '\0');
    EXPECT_EQ(decode(wide->descriptor, sealed(wide->descriptor, "\x80\x80\x80\x01" + zeros), record), RC_OK);
    EXPECT_EQ(pouch_free_indirections(record.data(), &wide->descriptor), RC_OK);
    EXPECT_EQ(decode(wide->descriptor, sealed(wide->descriptor, "\x81\x80\x80\x01" + zeros + '\0'), record),
              pouch::rc_too_big);
}

TEST(codec, refuses_every_cut_and_every_flipped_bit) {
    const auto made = make_every_form();
    const pouch_descriptor &type = made->descriptor;
    ASSERT_EQ(made::register_alone(type), RC_OK);
    made::random source(1);
    const pouch::record_type &known = *pouch::find_type(&type);
    const std::string good = pouch::encode_fields(known, made::random_value(known.top(), source, {100, 3}));
    std::vector<uint64_t> record;
    for (size_t length = 0; length < good.size(); ++length) {
        EXPECT_NE(decode(type, good.substr(0, length), record), RC_OK) << length;
        EXPECT_TRUE(is_zero(type, record));
        if (length < header_size)
            continue;
        EXPECT_NE(decode(type, sealed(type, good.substr(header_size, length - header_size)), record), RC_OK) << length;
        EXPECT_TRUE(is_zero(type, record));
    }
    for (size_t bit = 0; bit < good.size() * 8; ++bit) {
        std::string flipped = good;
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << bit % 8));
        EXPECT_NE(decode(type, flipped, record), RC_OK) << bit;
        EXPECT_TRUE(is_zero(type, record));
    }
    EXPECT_NE(decode(type, good + '\0', record), RC_OK);
    EXPECT_EQ(decode(type, good, record), RC_OK);
    EXPECT_EQ(pouch_free_indirections(record.data(), &type), RC_OK);
}

TEST(codec, takes_what_it_makes_of_any_schema_and_nothing_breaks_it) {
    made::random source(7);
    size_t taken = 0, refused = 0;
    for (int round = 0; round < 400; ++round) {
        made::record made;
        made.name = "random";
        made::random_schema(source, made);
        ASSERT_EQ(made::register_alone(made.descriptor), RC_OK) << pouch::last_refusal() << "\n" << made.full;
        const pouch::record_type &type = *pouch::find_type(&made.descriptor);
        const pouch::held_record original(type, made::random_value(type.top(), source, {70, 4}));
        std::string encoded;
        ASSERT_EQ(pouch::encode(original.data(), type, encoded), RC_OK) << made.full;
        std::vector<uint64_t> record;
        ASSERT_EQ(decode(made.descriptor, encoded, record), RC_OK) << made.full;
        ASSERT_TRUE(made::are_same(type.top(), original.data(), record.data())) << made.full;
        ASSERT_EQ(pouch_free_indirections(record.data(), &made.descriptor), RC_OK);
        ASSERT_EQ(pouch_free_indirections(record.data(), &made.descriptor), RC_OK);

        for (int damage = 0; damage < 20 && encoded.size() > header_size; ++damage) {
            std::string payload = encoded.substr(header_size);
            for (int flips = static_cast<int>(source() % 3); flips >= 0; --flips) {
                char &byte = payload[source() % payload.size()];
                byte = static_cast<char>(byte ^ (1 << source() % 8));
            }
            if (source() % 4 == 0)
                payload.resize(source() % payload.size());
            if (decode(made.descriptor, sealed(made.descriptor, payload), record) == RC_OK) {
                ++taken;
                pouch_free_indirections(record.data(), &made.descriptor);
            } else {
                ++refused;
                ASSERT_TRUE(is_zero(made.descriptor, record));
            }
        }
    }
    EXPECT_GT(taken, 100u); // both ends of a decode were seen
    EXPECT_GT(refused, 100u);
}

TEST(codec, encodes_nothing_that_it_would_not_take) {
    const auto made = make_every_form();
    ASSERT_EQ(made::register_alone(made->descriptor), RC_OK);
    const pouch::record_type &type = *pouch::find_type(&made->descriptor);
    const auto status_of = [&type](auto change) {
        pouch::held_record record(type);
        auto &fields = *static_cast<every_form *>(record.data());
        change(fields);
        std::string encoded;
        const rcode status = pouch::encode(record.data(), type, encoded);
        fields.records = {};
        return status;
    };
    EXPECT_EQ(status_of([](every_form &) {}), RC_OK);
    EXPECT_EQ(status_of([](every_form &fields) { fields.b = 2; }), pouch::rc_bad_flag);
    EXPECT_EQ(status_of([](every_form &fields) { fields.field.fill('x'); }), pouch::rc_bad_text);
    EXPECT_EQ(status_of([](every_form &fields) { fields.records.count = 1; }), pouch::rc_bad_list);
    EXPECT_EQ(status_of([](every_form &fields) { fields.records = {1u << 21, &fields}; }), pouch::rc_too_big);
}

struct registration_row {
    const char *full, *packed;
    rcode status;
    const char *words;
};

TEST(registration, refuses_faulty_schemas) {
    // The member table is that of three records of 8 bytes with three fields each.
    const registration_row rows[] = {
        {"$1={a}D{b}D;$2={a}C{b}H;", "$1=DD;$2=CH;", pouch::rc_bad_members, "2 definitions"},
        {"$1={a}D{b}D;$2={a}C;$3={a}Pb{b}s;", "$1=DD;$2=C;$3=Pbs;", pouch::rc_bad_members, "offset 4 does not fit"},
        {"$1={a}D{b}H;$2={a}C;$3={a}C;", "$1=DH;$2=C;$3=C;", pouch::rc_bad_members, "\"b\": offset 4"},
        {"$1={a}D{b}D{c}D;$2={a}C;$3={a}C;", "$1=DDD;$2=C;$3=C;", pouch::rc_bad_members, "\"c\": offset 8"},
        {"$1={a}H{b}D;$2={a}C;$3={a}C;", "$1=HD;$2=C;$3=C;", pouch::rc_bad_members, "\"b\": offset 4"},
        {"$1={a}D;$2={a}C;$4={a}C;", "$1=D;$2=C;$4=C;", pouch::rc_bad_members, "no row of record $4"},
        {"$2={a}D;$1={a}C;$3={a}C;", "$2=D;$1=C;$3=C;", RC_OK, ""},
        {"$1={a}D;$2={a}C;$3={a}I;", "$1=D;$2=C;$3=C;", pouch::rc_schemas_differ, "definition 3"},
        {"$1={a}D;$2={a}C;$3={a}b;", "$1=D;$2=C;$3=Pb;", pouch::rc_schemas_differ, "definition 3"},
        {"$1={a}D;$2={a}C;", "$1=D;$2=C;$3=C;", pouch::rc_schemas_differ, "definition 3"},
        {"$1={a}D;", "", pouch::rc_bad_schema, "packed schema, byte 0: no definition"},
        {"", "$1=D;", pouch::rc_bad_schema, "full schema, byte 0"},
        {"$1={a}D;", "$1=D", pouch::rc_bad_schema, "byte 4: the end within a record"},
        {"", "$1=;", pouch::rc_bad_schema, "byte 4: a record without fields"},
        {"", "$=D;", pouch::rc_bad_schema, "byte 1: no number"},
        {"", "$99999999999=D;", pouch::rc_bad_schema, "byte 1: no number"},
        {"", "1=D;", pouch::rc_bad_schema, "byte 0: '$' is missing"},
        {"", "$1=D;$1=D;", pouch::rc_bad_schema, "byte 5: $1 is defined twice"},
        {"", "$1=Z;", pouch::rc_bad_schema, "byte 3: unknown form"},
        {"", "$1=$2D;", pouch::rc_bad_schema, "byte 5: '.' is missing"},
        {"", "$1=p($2.);", pouch::rc_bad_schema, "byte 7: ')' is missing"},
        {"", "$1=PPb;", pouch::rc_bad_schema, "'P' stands twice"},
        {"", "$1=p();", pouch::rc_bad_schema, "unknown form"},
        {"", "$1=a(D;", pouch::rc_bad_schema, "')' is missing"},
        {"", "$1=0A(D);", pouch::rc_bad_schema, "from 1 to"},
        {"", "$1=99999999x;", pouch::rc_bad_schema, "from 1 to"},
        {"", "$1=5Z;", pouch::rc_bad_schema, "'x' is missing"},
        {"", "$1=[t]e;", pouch::rc_bad_schema, "unknown form"},
        {"", "$1=?(<0>,1:D,?:v);", pouch::rc_bad_schema, "byte 6: no enumeration before it chooses"},
        {"", "$1=D?(<0>,1:D,?:v);", pouch::rc_bad_schema, "no enumeration before it chooses"},
        {"", "$1=e?(<1>,1:D,?:v);", pouch::rc_bad_schema, "no enumeration before it chooses"},
        {"", "$1=e?(<0>,1:D,1:C,?:v);", pouch::rc_bad_schema, "value 1 stands twice"},
        {"", "$1=e?(<0>,1:D);", pouch::rc_bad_schema, "',' is missing"},
        {"", "$1=p(?(<0>,?:v));", pouch::rc_bad_schema, "unknown form"},
        {"$1={a}$2;$2={a}$1;$3={a}C;", "$1=$2.;$2=$1.;$3=C;", pouch::rc_bad_schema, "$1 holds itself"},
        {"$1={a}$7;$2={a}C;$3={a}C;", "$1=$7.;$2=C;$3=C;", pouch::rc_bad_schema, "$7 is not defined"},
        {"$1={a}D;$2=D;$3={a}C;", "$1=D;$2=D;$3=C;", pouch::rc_bad_schema, "full schema, byte 11: '{' is missing"},
        {"$1={a}e;", "$1=e;", pouch::rc_bad_schema, "an enumeration without its type"},
        {"$1={a}[t]e?(<b,t>,1:D,?:v);", "$1=e?(<0>,1:D,?:v);", pouch::rc_bad_schema, "no enumeration before it"},
    };
    std::deque<made::record> all; // each in a place of its own
    for (const registration_row &row : rows) {
        made::record &made = all.emplace_back();
        made.name = "faulty";
        made.full = row.full;
        made.packed = row.packed;
        for (const uint64_t number : {1u, 2u, 3u})
            made.add_member(number, 8, {0, 4, 8});
        made.describe();
        made.descriptor.member_count = std::string(row.packed).find("$2=") == std::string::npos ? 1 : 3;
        EXPECT_EQ(made::register_alone(made.descriptor), row.status) << row.packed;
        EXPECT_TRUE(row.status == RC_OK || pouch::last_refusal().find("record \"faulty\": ") == 0);
        EXPECT_NE(pouch::last_refusal().find(row.words), std::string::npos) << row.packed << pouch::last_refusal();
        EXPECT_EQ(pouch::find_type(&made.descriptor) != nullptr, row.status == RC_OK);
    }
    std::string deep = "$1=";
    deep.append(80, '(');
    for (size_t at = 0; at < 40; ++at)
        deep[3 + 2 * at] = 'p';
    made::record made;
    made.name = "faulty";
    made.packed = deep;
    made.add_member(1, 8, {0});
    made.describe();
    EXPECT_EQ(made::register_alone(made.descriptor), pouch::rc_bad_schema);
    EXPECT_NE(pouch::last_refusal().find("nested deeper than 32"), std::string::npos);
}

TEST(registration, refuses_places_that_no_compiler_gives) {
    const struct {
        const char *full, *packed;
        uint64_t size;
        std::vector<uint64_t> offsets;
        const char *words;
    } rows[] = {
        {"$1={a}C{b}I;", "$1=CI;", 4, {0, 2}, nullptr},
        {"$1={a}C{b}I;", "$1=CI;", 4, {0, 1}, "\"b\": offset 1 does not fit"},
        {"$1={a}I{b}C;", "$1=IC;", 3, {0, 2}, "size 3 is not aligned"},
        {"$1={a}C;", "$1=C;", 0, {0}, "of a wrong size"},
        {"$1={a}C;", "$1=C;", (16u << 20) + 1, {0}, "of a wrong size"},
        {"$1={a}9999A(9999x);", "$1=9999A(9999x);", 16u << 20, {0}, "an array takes more than 16 MiB"},
    };
    for (const auto &row : rows) {
        made::record made;
        made.name = "places";
        made.full = row.full;
        made.packed = row.packed;
        made.add_member(1, row.size, row.offsets);
        made.describe();
        EXPECT_EQ(made::register_alone(made.descriptor), row.words == nullptr ? RC_OK : pouch::rc_bad_members);
        EXPECT_TRUE(row.words == nullptr || pouch::last_refusal().find(row.words) != std::string::npos)
            << pouch::last_refusal();
    }
}

TEST(registration, refuses_descriptors_that_are_not_whole) {
    const struct {
        void (*spoil)(pouch_descriptor &);
        rcode status;
    } rows[] = {
        {[](pouch_descriptor &) {}, RC_OK},
        {[](pouch_descriptor &d) { d.format = 2; }, pouch::rc_bad_descriptor},
        {[](pouch_descriptor &d) { d.name = nullptr; }, pouch::rc_bad_descriptor},
        {[](pouch_descriptor &d) { d.name = ""; }, pouch::rc_bad_descriptor},
        {[](pouch_descriptor &d) { d.group_file = nullptr; }, pouch::rc_bad_descriptor},
        {[](pouch_descriptor &d) { d.schema = nullptr; }, pouch::rc_bad_descriptor},
        {[](pouch_descriptor &d) { d.packed_schema = nullptr; }, pouch::rc_bad_descriptor},
        {[](pouch_descriptor &d) { d.members = nullptr; }, pouch::rc_bad_members},
        {[](pouch_descriptor &d) { d.member_count = 1; }, pouch::rc_bad_members},
        {[](pouch_descriptor &d) { d.top_size += 8; }, pouch::rc_bad_members},
    };
    for (const auto &row : rows) {
        const auto made = make_every_form();
        row.spoil(made->descriptor);
        EXPECT_EQ(made::register_alone(made->descriptor), row.status) << pouch::last_refusal();
    }
    EXPECT_EQ(pouch_register_start(), RC_OK);
    EXPECT_EQ(pouch_register(nullptr), pouch::rc_bad_descriptor);
    pouch_register_abort();
}

TEST(registration, makes_a_group_known_when_it_is_closed) {
    const auto good = make_every_form(), again = make_every_form(), other = make_one("D", "D", 4);
    other->name = "not_seen_before";
    other->describe();
    EXPECT_EQ(pouch_register(&good->descriptor), pouch::rc_not_open);
    EXPECT_EQ(pouch_register_end(), pouch::rc_not_open);

    EXPECT_EQ(pouch_register_start(), RC_OK);
    EXPECT_EQ(pouch_register_start(), pouch::rc_already_open);
    EXPECT_EQ(pouch_register(&other->descriptor), RC_OK);
    EXPECT_EQ(pouch_register(&good->descriptor), RC_OK);
    EXPECT_EQ(pouch_register(&again->descriptor), pouch::rc_registered_twice);
    pouch_register_abort();
    uint64_t record[64];
    EXPECT_EQ(pouch_decode("", 0, record, &other->descriptor), pouch::rc_not_registered);
    EXPECT_EQ(pouch_free_indirections(record, &other->descriptor), pouch::rc_not_registered);
    EXPECT_EQ(pouch::find_type("not_seen_before"), nullptr);

    EXPECT_EQ(made::register_alone(other->descriptor), RC_OK);
    EXPECT_EQ(made::register_alone(other->descriptor), RC_OK); // the same loader, once more
    EXPECT_NE(pouch::find_type("not_seen_before"), nullptr);
}

TEST(registration, takes_records_without_schema_that_nothing_decodes) {
    const pouch_descriptor empty{1, "empty", 4, "made.dll", nullptr, "", "", 0, 0};
    EXPECT_EQ(made::register_alone(empty), RC_OK);
    uint64_t record = 5;
    EXPECT_EQ(pouch_decode("x", 1, &record, &empty), pouch::rc_no_schema);
    EXPECT_EQ(record, 5u); // it has no size
    EXPECT_EQ(pouch_free_indirections(&record, &empty), pouch::rc_no_schema);
}

TEST(codec, refuses_calls_and_data_of_another_record) {
    const auto one = make_one("D", "D", 4), other = make_one("d", "d", 4);
    ASSERT_EQ(made::register_alone(one->descriptor), RC_OK);
    ASSERT_EQ(made::register_alone(other->descriptor), RC_OK);
    std::vector<uint64_t> record;
    EXPECT_EQ(decode(other->descriptor, sealed(one->descriptor, "\x05"), record), pouch::rc_other_record);
    std::string later = sealed(one->descriptor, "\x05");
    later[3] = 2;
    EXPECT_EQ(decode(one->descriptor, later, record), pouch::rc_not_encoded);
    EXPECT_TRUE(is_zero(one->descriptor, record));
    EXPECT_EQ(pouch_decode(nullptr, 0, record.data(), &one->descriptor), pouch::rc_bad_call);
    EXPECT_EQ(pouch_decode("", 0, nullptr, &one->descriptor), pouch::rc_bad_call);
    EXPECT_EQ(pouch_decode("", 0, record.data(), nullptr), pouch::rc_bad_call);
    EXPECT_EQ(pouch_free_indirections(nullptr, &one->descriptor), pouch::rc_bad_call);
}

TEST(status, has_a_sentence_of_its_own) {
    std::set<std::string> sentences{rcode_strerror(0x12345678u)};
    const rcode all[] = {RC_OK,
                         RC_NO_MEMORY,
                         RC_STATEDB_UNAVAILABLE,
                         OCOPTICAL_BAD_NAME,
                         pouch::rc_bad_list,
                         statedb::rc_not_installed,
                         statedb::rc_bad_call,
                         statedb::rc_not_bound,
                         statedb::rc_no_item};
    for (const rcode status : all)
        EXPECT_TRUE(sentences.insert(rcode_strerror(status)).second) << rcode_strerror(status);
    for (rcode status = pouch::rc_already_open; status <= pouch::rc_bad_members; status += 0x100u)
        EXPECT_TRUE(sentences.insert(rcode_strerror(status)).second) << rcode_strerror(status);
    for (rcode status = pouch::rc_bad_call; status <= pouch::rc_too_big; status += 0x100u)
        EXPECT_TRUE(sentences.insert(rcode_strerror(status)).second) << rcode_strerror(status);
}

} // namespace
