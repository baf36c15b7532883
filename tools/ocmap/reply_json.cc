// Replies in JSON.
#include <cstring>

#include "json_writer.h"
#include "reply.h"

namespace ocmap {
namespace {

class json_reply : public reply_writer {
public:
    explicit json_reply(output &out) : to_(out) { to_.open_object(); }

    void finish() {
        to_.close_object();
        to_.finish();
    }

    void open(const reply_name &name) override {
        begin(name);
        to_.open_object();
        around_.push_back({name.module, false});
    }

    void close() override {
        to_.close_object();
        around_.pop_back();
    }

    void open_list(const reply_name &name) override {
        begin(name);
        to_.open_array();
        around_.push_back({name.module, true});
    }

    void close_list() override {
        to_.close_array();
        around_.pop_back();
    }

    void leaf(const reply_name &name, schema::type type, const reply_value &value) override {
        begin(name);
        const std::string_view text = value.text;
        const char *identity = module_of(value.ns);
        if (identity != nullptr)
            to_.string(identity, text);
        else if (is_bare(type, text))
            to_.bare(text);
        else
            to_.string(text);
    }

private:
    struct holder {
        const char *module;
        bool is_list;
    };

    void begin(const reply_name &name) {
        const holder &around = around_.back();
        if (around.is_list)
            to_.item();
        else
            to_.member({}, is_same(around.module, name.module) ? std::string_view() : name.module, name.tag);
    }

    static bool is_same(const char *a, const char *b) { return a == b || std::strcmp(a, b) == 0; }

    static const char *module_of(const char *ns) {
        const char *module = ns == nullptr ? nullptr : schema::module_of_ns(ns);
        return module == nullptr ? ns : module;
    }

    // A text that is no value of its type stays a string, so that the document is one.
    static bool is_bare(schema::type type, std::string_view value) {
        return (type == schema::type::integer && is_json_integer(value)) ||
               (type == schema::type::boolean && (value == "true" || value == "false"));
    }

    json_writer to_;
    std::vector<holder> around_{{"", false}};
};

} // namespace

void print_reply_json(const zmf::output_tree &reply, const selection &told, output &out) {
    json_reply writer(out);
    tell_reply(reply, told, writer);
    writer.finish();
}

} // namespace ocmap
