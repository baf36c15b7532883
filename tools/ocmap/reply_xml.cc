// Replies in XML.
#include <cstring>
#include <string>

#include "reply.h"
#include "xml_writer.h"

namespace ocmap {
namespace {

class xml_reply : public reply_writer {
public:
    explicit xml_reply(output &out) : to_(out) {
        to_.open("data");
        to_.attribute("xmlns", netconf_base);
    }

    void finish() {
        to_.close();
        to_.finish();
    }

    void open(const reply_name &name) override {
        begin(name);
        around_.push_back(name.ns);
    }

    void close() override {
        to_.close();
        around_.pop_back();
    }

    void open_list(const reply_name &) override {}
    void close_list() override {}

    void leaf(const reply_name &name, schema::type, const reply_value &value) override {
        begin(name);
        std::string text = value.text;
        if (value.ns != nullptr) {
            const char *module = schema::module_of_ns(value.ns);
            const std::string prefix = module == nullptr ? "identity" : module;
            to_.attribute(("xmlns:" + prefix).c_str(), value.ns);
            text.insert(0, prefix + ':');
        }
        to_.text(name.tag, text);
        to_.close();
    }

private:
    void begin(const reply_name &name) {
        to_.open(name.tag);
        if (std::strcmp(around_.back(), name.ns) != 0)
            to_.attribute("xmlns", name.ns);
    }

    xml_writer to_;
    std::vector<const char *> around_{netconf_base}; // namespaces
};

} // namespace

void print_reply_xml(const zmf::output_tree &reply, const selection &told, output &out) {
    xml_reply writer(out);
    tell_reply(reply, told, writer);
    writer.finish();
}

} // namespace ocmap
