// Replies on one line: "name(...)" for what has children, in the order of the reply, a leaf as "name=value".
#pragma once

#include <string>

#include "reply.h"

namespace shown {

class reply : public ocmap::reply_writer {
public:
    std::string text;

    void open(const ocmap::reply_name &name) override { item(std::string(name.tag) + '('); }
    void close() override { text += ')'; }
    void open_list(const ocmap::reply_name &) override {}
    void close_list() override {}
    void leaf(const ocmap::reply_name &name, schema::type, const ocmap::reply_value &value) override {
        item(std::string(name.tag) + '=' + value.text);
    }

private:
    void item(const std::string &what) { text += (text.empty() || text.ends_with('(') ? "" : " ") + what; }
};

} // namespace shown
