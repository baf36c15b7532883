#include "json_writer.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace ocmap {
namespace {

bool is_plain(char letter) {
    return static_cast<unsigned char>(letter) >= 0x20 && static_cast<unsigned char>(letter) < 0x7f && letter != '"' &&
           letter != '\\';
}

} // namespace

void json_writer::open(char bracket) {
    out_.write({&bracket, 1});
    is_started_.push_back(false);
}

// An empty document still takes two lines.
void json_writer::close(char bracket) {
    const bool has_content = is_started_.back() || is_started_.size() == 1;
    is_started_.pop_back();
    if (has_content)
        line();
    out_.write({&bracket, 1});
}

void json_writer::line() {
    static constexpr std::string_view blanks = "\n                                                                ";
    size_t count = 2 * is_started_.size();
    out_.write(blanks.substr(0, 1 + count));
    for (count -= std::min(count, blanks.size() - 1); count != 0; --count)
        out_.write(" ");
}

void json_writer::item() {
    if (is_started_.back())
        out_.write(",");
    is_started_.back() = true;
    line();
}

void json_writer::member(std::string_view mark, std::string_view module, std::string_view tag) {
    item();
    out_.write("\"");
    escaped(mark);
    if (!module.empty()) {
        escaped(module);
        out_.write(":");
    }
    escaped(tag);
    out_.write("\": ");
}

void json_writer::string(std::string_view text) {
    out_.write("\"");
    escaped(text);
    out_.write("\"");
}

void json_writer::string(std::string_view module, std::string_view name) {
    out_.write("\"");
    escaped(module);
    out_.write(":");
    escaped(name);
    out_.write("\"");
}

// In pieces, since a value may be as long as a request; each ends where a character does.
void json_writer::escaped(std::string_view text) {
    using nlohmann::json;
    if (std::all_of(text.begin(), text.end(), is_plain))
        return out_.write(text);
    while (!text.empty()) {
        size_t length = std::min<size_t>(text.size(), 1 << 16);
        while (length > 1 && length < text.size() && (text[length] & 0xc0) == 0x80)
            --length;
        const std::string quoted = json(text.substr(0, length)).dump(-1, ' ', false, json::error_handler_t::replace);
        out_.write(std::string_view(quoted).substr(1, quoted.size() - 2));
        text.remove_prefix(length);
    }
}

bool is_json_integer(std::string_view text) {
    if (text.starts_with('-'))
        text.remove_prefix(1);
    return !text.empty() && (text.size() == 1 || text[0] != '0') &&
           std::ranges::all_of(text, [](char letter) { return letter >= '0' && letter <= '9'; });
}

} // namespace ocmap
