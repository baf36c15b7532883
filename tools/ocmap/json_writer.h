// JSON text as it is written: commas, line ends and indentation, and the forms of scalars.
#pragma once

#include <string_view>

#include "output.h"

namespace ocmap {

class json_writer {
public:
    explicit json_writer(output &out) : out_(out) {}

    void open_object() { open('{'); }
    void close_object() { close('}'); }
    void open_array() { open('['); }
    void close_array() { close(']'); }

    // What comes next: a member by its name, "mark" + "module:" + "tag" with the first two possibly empty, or an item.
    // Tags are names of nodes, in which nothing needs an escape.
    void member(std::string_view mark, std::string_view module, std::string_view tag);
    void item();

    void string(std::string_view text);
    void string(std::string_view module, std::string_view name); // an identity
    void bare(std::string_view text) { out_.write(text); }

    void finish() { out_.write('\n'); }

private:
    void open(char bracket);
    void close(char bracket);
    void line(bool is_after_comma);
    bool put_plain_member(std::string_view tag);
    bool put_plain_string(std::string_view text);
    void escaped(std::string_view text);

    output &out_;
    size_t depth_ = 0;        // open objects and arrays
    bool is_started_ = false; // the innermost holds something
};

// A whole number of 32 bits as JSON writes it: those that are wider are texts there.
bool is_json_integer(std::string_view text);

} // namespace ocmap
