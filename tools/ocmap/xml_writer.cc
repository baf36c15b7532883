#include "xml_writer.h"

#include <algorithm>
#include <new>
#include <string>

#include <libxml/xmlwriter.h>

#include "print.h"

namespace ocmap {
namespace {

const xmlChar *bytes_of(const char *text) {
    return reinterpret_cast<const xmlChar *>(text);
}

int write_piece(void *context, const char *bytes, int length) {
    auto *out = static_cast<output *>(context);
    out->write({bytes, static_cast<size_t>(length)});
    return out->failed() ? -1 : length;
}

// XML 1.0 has no way to tell most control characters.
bool is_carried(std::string_view value) {
    return std::all_of(value.begin(), value.end(), [](char letter) {
        return static_cast<unsigned char>(letter) >= 0x20 || letter == '\t' || letter == '\n' || letter == '\r';
    });
}

} // namespace

void xml_writer::release::operator()(_xmlTextWriter *writer) const {
    xmlFreeTextWriter(writer);
}

xml_writer::xml_writer(output &out) {
    xmlOutputBufferPtr buffer = xmlOutputBufferCreateIO(write_piece, nullptr, &out, nullptr);
    writer_.reset(buffer ? xmlNewTextWriter(buffer) : nullptr);
    if (!writer_)
        throw std::bad_alloc();
    xmlTextWriterSetIndent(writer_.get(), 1);
    xmlTextWriterSetIndentString(writer_.get(), bytes_of("  "));
}

xml_writer::~xml_writer() = default;

void xml_writer::open(const char *tag) {
    xmlTextWriterStartElement(writer_.get(), bytes_of(tag));
}

void xml_writer::attribute(const char *name, const char *value) {
    xmlTextWriterWriteAttribute(writer_.get(), bytes_of(name), bytes_of(value));
}

// In pieces: the writer escapes into a copy, and a value may be as long as a request.
void xml_writer::text(const char *tag, std::string_view value) {
    if (!is_carried(value))
        throw print_error{std::string("the value of ") + tag +
                          " holds a control character that XML cannot carry; --format json can"};
    while (!value.empty()) {
        const std::string piece(value.substr(0, 1 << 16));
        xmlTextWriterWriteString(writer_.get(), bytes_of(piece.c_str()));
        value.remove_prefix(piece.size());
    }
}

void xml_writer::close() {
    xmlTextWriterEndElement(writer_.get());
}

void xml_writer::finish() {
    xmlTextWriterFlush(writer_.get());
}

} // namespace ocmap
