// Objects of known members, on top of json_writer.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json_writer.h"

namespace ocmap {

class json_fields {
public:
    explicit json_fields(output &out) : to_(out) {}

    template <typename action>
    void object(action members) {
        to_.open_object();
        members();
        to_.close_object();
    }

    void text(std::string_view name, std::string_view value) {
        member(name);
        to_.string(value);
    }
    void text_or_null(std::string_view name, const std::optional<std::string> &value) {
        if (value)
            return text(name, *value);
        member(name);
        to_.bare("null");
    }
    void number(std::string_view name, size_t value) {
        member(name);
        to_.bare(std::to_string(value));
    }
    void truth(std::string_view name, bool value) {
        member(name);
        to_.bare(value ? "true" : "false");
    }

    template <typename items, typename action>
    void array(std::string_view name, const items &all, action print_one) {
        member(name);
        if (all.empty())
            return to_.bare("[]");
        to_.open_array();
        for (const auto &each : all) {
            to_.item();
            print_one(each);
        }
        to_.close_array();
    }
    template <typename items, typename action>
    void objects(std::string_view name, const items &all, action members) {
        array(name, all, [&](const auto &each) { object([&] { members(each); }); });
    }
    void texts(std::string_view name, const std::vector<std::string> &all) {
        array(name, all, [&](const std::string &each) { to_.string(each); });
    }
    void numbers(std::string_view name, const std::vector<size_t> &all) {
        array(name, all, [&](size_t each) { to_.bare(std::to_string(each)); });
    }

    void finish() { to_.finish(); }

private:
    void member(std::string_view name) { to_.member("", "", name); }

    json_writer to_;
};

} // namespace ocmap
