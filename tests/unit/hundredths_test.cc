// Powers between a client's decimal dBm and whole hundredths. A case more: a row.
#include "hundredths.h"

#include <string>

#include <gtest/gtest.h>

#include "request.h"

namespace {

TEST(hundredths, are_what_a_client_writes_with_a_point) {
    const struct {
        const char *written, *hundredths; // "": no such number
    } rows[] = {
        {"-3.5", "-350"},    {"-3.50", "-350"},   {"-3.05", "-305"},
        {"0.05", "5"},       {"-0.05", "-5"},     {"-0.00", "0"},
        {"0", "0"},          {"5", "500"},        {"+5.1", "510"},
        {"0019.00", "1900"}, {" -3.5\n", "-350"}, {"99999999999999999999.99", "9999999999999999999999"},
        {"-3.505", ""},      {"-3.500", ""},      {"", ""},
        {"-", ""},           {".5", ""},          {"5.", ""},
        {"1e1", ""},         {"-3,5", ""},        {"3.5dBm", ""},
        {"1.-5", ""},        {"--1", ""},         {"1.2.3", ""},
    };
    for (const auto &row : rows)
        EXPECT_EQ(ocmap::to_hundredths(row.written).value_or(""), row.hundredths) << row.written;
}

TEST(hundredths, get_their_point_back) {
    const struct {
        const char *inside, *told;
    } rows[] = {
        {"-350", "-3.50"},   {"5", "0.05"},      {"-5", "-0.05"}, {"0", "0.00"}, {"-19", "-0.19"}, {"500", "5.00"},
        {"-1900", "-19.00"}, {"-3.50", "-3.50"}, {"", ""},        {"-", "-"},    {"-inf", "-inf"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(ocmap::from_hundredths(row.inside), row.told);
}

TEST(hundredths, that_a_request_has_too_fine_are_refused_where_they_stand) {
    const std::string xml = "<components xmlns='http://openconfig.net/yang/platform'><component><name>a</name>\n"
                            "<optical-channel xmlns='http://openconfig.net/yang/terminal-device'><config>\n"
                            "<target-output-power>-3.505</target-output-power></config></optical-channel>"
                            "</component></components>";
    const std::string json = "{\"openconfig-platform:components\":{\"component\":[{\"name\":\"a\",\n"
                             "\"openconfig-terminal-device:optical-channel\":{\"config\":{\n"
                             "\"target-output-power\": \"-3.505\"}}}]}}";
    const struct {
        const std::string &text;
        ocmap::format form;
        size_t column;
    } rows[] = {{xml, ocmap::format::xml, 22}, {json, ocmap::format::json, 24}};
    for (const auto &row : rows)
        for (const bool is_read : {true, false}) {
            try {
                ocmap::read_request(row.text, row.form, is_read);
                ADD_FAILURE() << row.text;
            } catch (const ocmap::input_error &error) {
                EXPECT_EQ(error.line, 3u);
                EXPECT_EQ(error.column, row.column);
                EXPECT_EQ(error.text, "\"-3.505\" is no decimal number with at most two decimals");
            }
        }
}

} // namespace
