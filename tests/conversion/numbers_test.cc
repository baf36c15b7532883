// Numbers between notations: what is lost and what overflows is as operators know it.
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "exported.h"
#include "utility/numbers.h"
#include "utility/scan.h"
#include "zmf/session.h"

namespace {

constexpr uint64_t top_bit = UINT64_C(1) << 63;

TEST(numbers, notations) {
    struct {
        rcode (*convert)(const char *, char *);
        const char *text;
        const char *expected;
    } const rows[] = {
        {oc_optical_convert_decimal_to_scientific_notation, "0", "0E-15"},
        {oc_optical_convert_decimal_to_scientific_notation, "0.0", "0E-15"},
        {oc_optical_convert_decimal_to_scientific_notation, "unreadable", "0E-15"},
        {oc_optical_convert_decimal_to_scientific_notation, "0.0000012", "1.2E-06"},
        {oc_optical_convert_decimal_to_scientific_notation, "1E-15", "1.0E-15"},
        {oc_optical_convert_decimal_to_scientific_notation, "1E-300", "1.0E-300"},
        {oc_optical_convert_decimal_to_scientific_notation, nullptr, ""},
        {oc_optical_convert_scientific_to_decimal_notation, "1.2E-06", "0.0000012"},
        {oc_optical_convert_scientific_to_decimal_notation, "0E-15", "0.0"},
        {oc_optical_convert_scientific_to_decimal_notation, "5", "5.0"},
        {oc_optical_convert_scientific_to_decimal_notation, "unreadable", "0.0"},
        {oc_optical_convert_scientific_to_decimal_notation, "1.5 dB", "1.5"},
        {oc_optical_convert_scientific_to_decimal_notation, "infin", "0.0"}, // half a word is no number
        {oc_optical_convert_scientific_to_decimal_notation, "", "0.0"},
        {oc_optical_convert_scientific_to_decimal_notation, nullptr, ""},
    };
    for (const auto &row : rows) {
        char out[200] = "before";
        EXPECT_EQ(row.convert(row.text, out), RC_OK);
        EXPECT_STREQ(out, row.expected) << (row.text != nullptr ? row.text : "(null)");
    }
}

// What stands for snprintf prints the same digits: of ties, of what is all but 1, and of what is too small to show.
TEST(numbers, fractions_are_those_of_printf) {
    std::vector<double> all{0.0,     -0.0,    0.5,   1.0,   0.1,   1.0 / 3, std::nextafter(1.0, 0.0),
                            4.5e-18, 1.5e-18, 5e-19, 4e-19, 1e-30, 1e-40,   DBL_MIN,
                            5e-324,  -0.25};
    for (int power = 1; power < 130; ++power) {
        all.push_back(std::ldexp(1.0, -power));
        all.push_back(std::ldexp(3.0, -power - 2));
    }
    std::mt19937_64 source(1);
    for (int i = 0; i < 10000; ++i) {
        all.push_back(std::ldexp(static_cast<double>(source() >> 11), -53 - static_cast<int>(source() % 64)));
    }
    for (const double number : all) {
        char text[64], expected[64], out[200];
        snprintf(text, sizeof text, "%.17g", number);
        snprintf(expected, sizeof expected, "%.18f", number);
        oc_optical_truncate_trail_zeroes(expected);
        EXPECT_EQ(oc_optical_convert_scientific_to_decimal_notation(text, out), RC_OK);
        EXPECT_STREQ(out, expected) << text;
    }
}

TEST(numbers, trailing_zeroes) {
    struct {
        const char *text, *expected;
    } const rows[] = {
        {"0.000100000000000000", "0.0001"}, {"5.000", "5.0"}, {"0.000", "0.0"}, {"12.5", "12.5"}, {"000", ""}, {"", ""},
    };
    for (const auto &row : rows) {
        char text[64];
        strcpy(text, row.text);
        oc_optical_truncate_trail_zeroes(text);
        EXPECT_STREQ(text, row.expected);
    }
}

TEST(numbers, scaled_frequency) {
    struct {
        const char *text;
        uint64_t expected;
    } const rows[] = {
        {"193.1", 193100000},
        {"193.1234", 193123400},
        {"193.123456", 193123456},
        {"193.01", 193010000},
        {"193", 193000000},
        {"193.", 193000000},
        {"193.1234567", 193000000}, // a longer fraction is lost as a whole
        {"193.0000000", 193000000 + top_bit},
        {"-1.5", 500000},
        {".5", 5000000},
        {"", 0},
    };
    for (const auto &row : rows) {
        char text[64];
        strcpy(text, row.text);
        EXPECT_EQ(float_string_to_int(text, 6), row.expected) << row.text;
    }
}

TEST(numbers, unsigned_conversion) {
    EXPECT_EQ(ocoptical::to_unsigned(1.99), 1u);
    EXPECT_EQ(ocoptical::to_unsigned(9223372036854775808.0), top_bit);
    EXPECT_EQ(ocoptical::to_unsigned(18446744073709549568.0), UINT64_C(18446744073709549568));
    EXPECT_EQ(ocoptical::to_unsigned(18446744073709551616.0), 0u);
    EXPECT_EQ(ocoptical::to_unsigned(INFINITY), 0u);
    EXPECT_EQ(ocoptical::to_unsigned(NAN), top_bit);
}

TEST(numbers, static_buffers) {
    zmf::session session(OP_GET);
    zmf_datatree node{};
    struct {
        zmf_value_fn convert;
        const char *buffer;
    } const rows[] = {{oc_optical_sopmd_str_to_decimal, sopmd_str},
                      {oc_optical_pdl_str_to_decimal, pdl_str},
                      {oc_optical_inpower_str_to_decimal, inpower_str}};
    for (const auto &row : rows) {
        node.value = "-3.456";
        const char *first = row.convert(session.context(), &node, nullptr);
        EXPECT_EQ(first, row.buffer);
        EXPECT_STREQ(first, "-3.46");
        node.value = "7";
        row.convert(session.context(), &node, nullptr);
        EXPECT_STREQ(first, "7.00"); // the text behind the first pointer changes
        node.value = nullptr;
        EXPECT_EQ(row.convert(session.context(), &node, nullptr), nullptr);
        EXPECT_STREQ(row.buffer, "");
    }
}

TEST(numbers, scans) {
    struct {
        const char *text;
        bool read;
        int32_t number;
    } const rows[] = {
        {"5x", true, 5},
        {" -7", true, -7},
        {"+3", true, 3},
        {"", false, 42},
        {"x5", false, 42},
        {"2147483647", true, INT32_MAX},
        {"2147483648", true, INT32_MAX},
        {"-99999999999999999999", true, INT32_MIN},
    };
    for (const auto &row : rows) {
        int32_t number = 42;
        EXPECT_EQ(ocoptical::scan_number(row.text, &number), row.read) << row.text;
        EXPECT_EQ(number, row.number) << row.text;
    }
}

} // namespace
