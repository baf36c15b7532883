// XML text as it is written, by libxml2's writer.
#pragma once

#include <memory>
#include <string_view>

#include "output.h"

extern "C" {
struct _xmlTextWriter;
}

namespace ocmap {

inline constexpr const char *netconf_base = "urn:ietf:params:xml:ns:netconf:base:1.0";

class xml_writer {
public:
    explicit xml_writer(output &out);
    ~xml_writer();
    xml_writer(const xml_writer &) = delete;
    xml_writer &operator=(const xml_writer &) = delete;

    void open(const char *tag);
    void attribute(const char *name, const char *value); // of the element opened last
    // Content of the element opened last, `tag`. Throws print_error for what XML cannot carry.
    void text(const char *tag, std::string_view value);
    void close();
    void finish();

private:
    struct release {
        void operator()(_xmlTextWriter *writer) const;
    };
    std::unique_ptr<_xmlTextWriter, release> writer_;
};

} // namespace ocmap
