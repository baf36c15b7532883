// The reader of XML requests, on the parser's events; no document is built.
#include "request_xml.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include "device/text.h"
#include "request.h"
#include "request_tree.h"

namespace ocmap {
namespace {

constexpr std::string_view netconf_base = "urn:ietf:params:xml:ns:netconf:base:1.0";

struct release_parser {
    void operator()(xmlParserCtxt *parser) const { xmlFreeParserCtxt(parser); }
};

std::string_view to_view(const xmlChar *text) {
    return text == nullptr ? std::string_view() : reinterpret_cast<const char *>(text);
}

std::string quoted(std::string_view name) {
    return '"' + text::shortened(name) + '"';
}

struct attribute {
    std::string_view name, ns, value;
};

constexpr size_t most_attributes = 100; // of one tag, namespaces included

// End of a quoted text, comment or the like whose beginning lies before `from`.
size_t past(std::string_view mark, std::string_view bytes, size_t from) {
    const size_t found = bytes.find(mark, from);
    return found == std::string_view::npos ? bytes.size() : found + mark.size();
}

// The parser takes all attributes of a tag together, and each costs it time with every other: a tag with too many is
// found before it gets there.
size_t first_crowded_tag(std::string_view bytes) {
    struct passage {
        std::string_view begin, end;
    };
    constexpr passage without_tags[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    for (size_t tag = bytes.find('<'); tag != std::string_view::npos;) {
        const std::string_view rest = bytes.substr(tag);
        const auto *const passed =
            std::ranges::find_if(without_tags, [rest](const passage &each) { return rest.starts_with(each.begin); });
        size_t at = tag + 1;
        if (passed != std::end(without_tags)) {
            at = past(passed->end, bytes, tag + passed->begin.size());
        } else {
            size_t attributes = 0;
            while ((at = bytes.find_first_of("\"'<>", at)) < bytes.size() && bytes[at] != '<' && bytes[at] != '>') {
                if (++attributes > most_attributes)
                    return tag;
                at = past(bytes.substr(at, 1), bytes, at + 1);
            }
        }
        tag = bytes.find('<', at);
    }
    return std::string_view::npos;
}

class xml_reader {
public:
    xml_reader(std::string_view bytes, purpose what) : bytes_(bytes), tree_(what) {}

    zmf::fixed_tree read() {
        if (const size_t crowded = first_crowded_tag(bytes_); crowded != std::string_view::npos)
            refuse(crowded, "more than " + std::to_string(most_attributes) + " attributes");
        xmlSAXHandler events = handlers();
        parser_.reset(
            xmlCreateIOParserCtxt(&events, this, &xml_reader::next_piece, nullptr, this, XML_CHAR_ENCODING_NONE));
        if (parser_ == nullptr)
            throw std::bad_alloc();
        xmlCtxtUseOptions(parser_.get(), XML_PARSE_NONET | XML_PARSE_HUGE);
        xmlParseDocument(parser_.get());
        parser_.reset();
        if (failure_)
            std::rethrow_exception(failure_);
        zmf::fixed_tree result;
        at(0, [&] { result = tree_.finish(); });
        return result;
    }

private:
    struct element {
        bool is_wrapper;
        bool has_children;
        size_t namespaces; // in scope outside
    };

    struct binding {
        std::string prefix, ns;
    };

    static xmlSAXHandler handlers() {
        xmlSAXHandler made{};
        made.initialized = XML_SAX2_MAGIC;
        made.startDocument = [](void *self) { static_cast<xml_reader *>(self)->guarded(&xml_reader::start_document); };
        made.internalSubset = [](void *self, const xmlChar *, const xmlChar *, const xmlChar *) {
            static_cast<xml_reader *>(self)->guarded(&xml_reader::refuse_document_type);
        };
        made.startElementNs = [](void *self, const xmlChar *name, const xmlChar *, const xmlChar *ns, int bindings,
                                 const xmlChar **bound, int attributes, int, const xmlChar **given) {
            static_cast<xml_reader *>(self)->guarded(&xml_reader::start_element, to_view(name), to_view(ns),
                                                     std::span(bound, static_cast<size_t>(bindings) * 2),
                                                     std::span(given, static_cast<size_t>(attributes) * 5));
        };
        made.endElementNs = [](void *self, const xmlChar *, const xmlChar *, const xmlChar *) {
            static_cast<xml_reader *>(self)->guarded(&xml_reader::end_element);
        };
        made.characters = [](void *self, const xmlChar *text, int length) {
            static_cast<xml_reader *>(self)->guarded(&xml_reader::characters, text, static_cast<size_t>(length));
        };
        made.ignorableWhitespace = made.characters;
        made.cdataBlock = made.characters;
        made.serror = [](void *self, xmlErrorPtr error) {
            static_cast<xml_reader *>(self)->guarded(&xml_reader::parser_error, error);
        };
        return made;
    }

    // Nothing more is there to be parsed once something has failed.
    static int next_piece(void *self, char *to, int room) {
        auto &reader = *static_cast<xml_reader *>(self);
        if (reader.failure_)
            return 0;
        const size_t length = reader.bytes_.copy(to, static_cast<size_t>(room), reader.handed_out_);
        reader.handed_out_ += length;
        return static_cast<int>(length);
    }

    // The first failure ends the reading; nothing may be thrown through the parser.
    template <typename... arguments>
    void guarded(void (xml_reader::*event)(arguments...), std::type_identity_t<arguments>... given) noexcept {
        if (failure_)
            return;
        try {
            (this->*event)(given...);
        } catch (...) {
            failure_ = std::current_exception();
        }
    }

    [[noreturn]] void refuse(size_t offset, const std::string &why) const {
        const text::position place = text::position_of(bytes_, offset);
        throw input_error{place.line, place.column, why};
    }

    // Runs what may refuse, and gives the refusal its place.
    template <typename action>
    void at(size_t offset, action run) const {
        try {
            run();
        } catch (const refusal &refused) {
            refuse(offset, refused.text);
        }
    }

    size_t offset() const {
        if (parser_->input == nullptr)
            return bytes_.size();
        const xmlParserInput &input = *parser_->input;
        return std::min<size_t>(bytes_.size(), input.consumed + static_cast<size_t>(input.cur - input.base));
    }

    // Within a tag's events the parser stands at its end, and no "<" can stand in a tag but the first.
    size_t tag_offset() const {
        const size_t found = bytes_.rfind('<', offset());
        return found == std::string_view::npos ? 0 : found;
    }

    void start_document() {
        const std::string_view encoding = to_view(parser_->input->encoding);
        const auto is_same = [](char a, char b) { return a == b || (a >= 'a' && a <= 'z' && a - 'a' + 'A' == b); };
        if (!encoding.empty() && !std::ranges::equal(encoding, std::string_view("UTF-8"), is_same))
            refuse(0, "encoding " + quoted(encoding) + ": requests are UTF-8");
    }

    void refuse_document_type() { refuse(tag_offset(), "a document type"); }

    void parser_error(xmlErrorPtr error) {
        std::string_view words = error->message == nullptr ? "malformed" : error->message;
        while (words.ends_with('\n'))
            words.remove_suffix(1);
        std::string reason = text::shortened(words, 200);
        std::ranges::replace(reason, '\n', ' ');
        const bool is_of_tag = error->domain == XML_FROM_NAMESPACE || error->code == XML_ERR_ATTRIBUTE_REDEFINED ||
                               error->code == XML_ERR_TAG_NAME_MISMATCH;
        refuse(is_of_tag ? tag_offset() : offset(), reason);
    }

    // Here a name that is new costs time with all that came before it.
    void refuse_crowd_of_names(size_t place) const {
        constexpr int most_names = 100000;
        if (xmlDictSize(parser_->dict) > most_names)
            refuse(place, "more than " + std::to_string(most_names) + " different names");
    }

    void start_element(std::string_view name, std::string_view ns, std::span<const xmlChar *> bound,
                       std::span<const xmlChar *> given) {
        const size_t place = tag_offset();
        refuse_mixed_text();
        refuse_crowd_of_names(place);
        drop_text();
        const size_t outside = bindings_.size();
        for (size_t i = 0; i < bound.size(); i += 2)
            bindings_.push_back({std::string(to_view(bound[i])), std::string(to_view(bound[i + 1]))});
        const bool is_wrapper = elements_.empty() && ns == netconf_base && is_wrapper_name(name);
        if (!elements_.empty())
            elements_.back().has_children = true;
        elements_.push_back({is_wrapper, false, outside});
        at(place, [&] {
            if (!is_wrapper)
                tree_.open(name, ns);
            for (size_t i = 0; i < given.size(); i += 5)
                take_attribute(
                    name, is_wrapper,
                    {to_view(given[i]),
                     to_view(given[i + 2]),
                     {reinterpret_cast<const char *>(given[i + 3]), static_cast<size_t>(given[i + 4] - given[i + 3])}});
        });
    }

    bool is_wrapper_name(std::string_view name) const {
        return tree_.is_native() ? name == "data" || name == "config" : name == "filter" || name == "config";
    }

    void take_attribute(std::string_view holder, bool is_wrapper, const attribute &given) {
        if (is_wrapper && holder == "filter" && given.ns.empty() && given.name == "type") {
            if (given.value != "subtree")
                throw refusal{"filter of type " + quoted(given.value)};
        } else if (given.name != "operation" || is_wrapper) {
            throw refusal{"unknown attribute " + quoted(given.name)};
        } else if (given.ns != netconf_base) {
            throw refusal{"attribute \"operation\" is not of the NETCONF base namespace"};
        } else {
            tree_.operation(operation_code(given.value));
        }
    }

    void end_element() {
        const element closed = elements_.back();
        if (!closed.is_wrapper) {
            if (!closed.has_children)
                take_text();
            tree_.close();
        }
        drop_text();
        elements_.pop_back();
        bindings_.erase(bindings_.begin() + static_cast<std::ptrdiff_t>(closed.namespaces), bindings_.end());
    }

    void characters(const xmlChar *text, size_t length) {
        const std::string_view piece(reinterpret_cast<const char *>(text), length);
        const size_t black = piece.find_first_not_of(white);
        if (black != std::string_view::npos && !black_) {
            // A piece lies in the parser's buffer, or elsewhere when it stands for a reference.
            const xmlParserInput &input = *parser_->input;
            const bool is_in_place = text >= input.base && text < input.end;
            black_ = is_in_place ? input.consumed + static_cast<size_t>(text - input.base) + black : offset();
        }
        text_ += piece;
        if (!elements_.empty() && (elements_.back().has_children || elements_.back().is_wrapper))
            refuse_mixed_text();
    }

    void refuse_mixed_text() const {
        if (black_)
            refuse(*black_, "text beside elements");
    }

    void drop_text() {
        text_.clear();
        black_.reset();
    }

    void take_text() {
        const schema::node *known = tree_.node();
        if (black_)
            at(*black_, [&] { take_value(known); });
        else if (is_leaf(known) && known->value == schema::type::string && !tree_.is_read() && !tree_.is_deleted())
            tree_.value(text_);
    }

    // White space around what a read matches does not count.
    void take_value(const schema::node *known) {
        const std::string_view text = tree_.is_read() && !tree_.is_native() ? trimmed(text_) : text_;
        const std::optional<prefixed> identity = split_identity(known, text);
        if (!identity)
            return tree_.value(text);
        const auto found = std::find_if(bindings_.rbegin(), bindings_.rend(),
                                        [&](const binding &each) { return each.prefix == identity->prefix; });
        if (identity->prefix.empty() || found == bindings_.rend())
            throw refusal{"prefix " + quoted(identity->prefix) + " is not declared"};
        tree_.value(identity->name, found->ns);
    }

    std::string_view bytes_;
    size_t handed_out_ = 0; // bytes that the parser has been given
    request_tree tree_;
    std::unique_ptr<xmlParserCtxt, release_parser> parser_;
    std::exception_ptr failure_;
    std::vector<element> elements_;
    std::vector<binding> bindings_;
    std::string text_;            // of the innermost element, since its last child
    std::optional<size_t> black_; // where in it the first character stands that is not white
};

} // namespace

zmf::fixed_tree read_request_xml(std::string_view bytes, purpose what) {
    return xml_reader(bytes, what).read();
}

} // namespace ocmap
