// Filling of records by field name. To add a form of value: its row in `wanted`, and how it is taken in
// `filler::value`.
#include "pouch/fields.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <system_error>

#include "device/text.h"
#include "pouch/encode.h"
#include "pouch/memory.h"
#include "pouch/status.h"

namespace pouch {
namespace {

std::string quoted(std::string_view written) {
    return '"' + text::shortened(written) + '"';
}

template <typename integer>
std::string range_of() {
    return "a number from " + std::to_string(std::numeric_limits<integer>::min()) + " to " +
           std::to_string(std::numeric_limits<integer>::max());
}

std::string wanted_by(const shape &what) {
    switch (what.what) {
    case kind::signed_8:
        return range_of<int8_t>();
    case kind::unsigned_8:
        return range_of<uint8_t>();
    case kind::unsigned_16:
        return range_of<uint16_t>();
    case kind::unsigned_32:
        return range_of<uint32_t>();
    case kind::signed_32:
    case kind::enumeration:
        return range_of<int32_t>();
    case kind::unsigned_64:
        return range_of<uint64_t>();
    case kind::signed_64:
        return range_of<int64_t>();
    case kind::boolean:
        return "true or false";
    case kind::text:
        return "a text or null";
    case kind::text_field:
        return "a text of at most " + std::to_string(what.count - 1) + " bytes";
    case kind::mac_field:
    case kind::bytes:
        return std::to_string(what.count) + " bytes as a text of hexadecimal pairs with \":\" between them";
    case kind::list:
        return "an array";
    case kind::array:
        return "an array of " + std::to_string(what.count);
    default:
        return "an object of fields";
    }
}

// A field of a choice is known by the names of what can be chosen.
bool has_name(const placed_field &field, const std::string &name) {
    const auto is_named = [&](const chosen_shape &each) { return each.name == name; };
    return field.name == name || std::ranges::any_of(field.what->alternatives, is_named);
}

class filler {
public:
    explicit filler(const std::string &record) : record_(record) {}

    // The enumeration that chooses has to be there before what is chosen.
    void record(const record_shape &what, uint8_t *into, const pouch::value &given, const std::string &name) {
        std::vector<const member *> of_field(what.fields.size());
        for (const member &each : given.members) {
            const auto field = std::ranges::find_if(what.fields, [&](auto &one) { return has_name(one, each.name); });
            if (field == what.fields.end())
                throw field_fault{each.at, "unknown field " + quoted(each.name) + " in " + name};
            const member *&known = of_field[static_cast<size_t>(field - what.fields.begin())];
            if (known != nullptr)
                throw field_fault{each.at, quoted(each.name) + " and " + quoted(known->name) + " are the same field"};
            known = &each;
        }
        for (size_t at = 0; at < what.fields.size(); ++at)
            if (of_field[at] != nullptr)
                field(what.fields[at], into, *of_field[at]);
    }

private:
    void field(const placed_field &field, uint8_t *record, const member &given) {
        const shape *what = field.what;
        if (what->what == kind::choice) {
            const chosen_shape *chosen = what->chosen(record);
            if (chosen == nullptr || given.name != (chosen->name.empty() ? field.name : chosen->name))
                throw field_fault{given.at, quoted(given.name) + " is not what was chosen"};
            what = chosen->what;
        }
        value(*what, record + field.offset, given.what, given.name);
    }

    [[noreturn]] static void refuse(const shape &what, const pouch::value &given, const std::string &name) {
        throw field_fault{given.at, quoted(name) + " takes " + wanted_by(what)};
    }

    void value(const shape &what, uint8_t *into, const pouch::value &given, const std::string &name) {
        bool is_taken = true;
        switch (what.what) {
        case kind::signed_8:
            is_taken = number<int8_t>(into, given);
            break;
        case kind::unsigned_8:
            is_taken = number<uint8_t>(into, given);
            break;
        case kind::unsigned_16:
            is_taken = number<uint16_t>(into, given);
            break;
        case kind::unsigned_32:
            is_taken = number<uint32_t>(into, given);
            break;
        case kind::signed_32:
        case kind::enumeration:
            is_taken = number<int32_t>(into, given);
            break;
        case kind::unsigned_64:
            is_taken = number<uint64_t>(into, given);
            break;
        case kind::signed_64:
            is_taken = number<int64_t>(into, given);
            break;
        case kind::boolean:
            is_taken = given.what == pouch::value::kind::boolean;
            store<uint32_t>(into, given.text == "true" ? 1 : 0);
            break;
        case kind::text:
            is_taken = given.what == pouch::value::kind::null || text(into, given);
            break;
        case kind::text_field:
            is_taken = text_field(what.count, into, given);
            break;
        case kind::mac_field:
        case kind::bytes:
            is_taken = pairs(what.count, into, given);
            break;
        case kind::record:
            is_taken = given.what == pouch::value::kind::record;
            if (is_taken)
                record(*what.record, into, given, quoted(name));
            break;
        case kind::optional:
            if (given.what != pouch::value::kind::null)
                optional(what, into, given, name);
            break;
        case kind::list:
            is_taken = given.what == pouch::value::kind::list;
            if (is_taken && !given.entries.empty())
                list(*what.inner, into, given, name);
            break;
        case kind::array:
            is_taken = given.what == pouch::value::kind::list && given.entries.size() == what.count;
            if (is_taken)
                entries(*what.inner, into, given, name);
            break;
        case kind::choice: // its record looks after it
        case kind::nothing:
            break;
        }
        if (!is_taken)
            refuse(what, given, name);
    }

    template <typename integer>
    bool number(uint8_t *into, const pouch::value &given) {
        integer read = 0;
        const char *end = given.text.data() + given.text.size();
        const auto [stopped, error] = std::from_chars(given.text.data(), end, read);
        store(into, read);
        return given.what == pouch::value::kind::number && error == std::errc() && stopped == end;
    }

    bool text(uint8_t *into, const pouch::value &given) {
        if (given.what != pouch::value::kind::text || given.text.find('\0') != std::string::npos)
            return false;
        uint8_t *made = allocate(given.text.size() + 1, given);
        store(into, made);
        std::memcpy(made, given.text.c_str(), given.text.size() + 1);
        return true;
    }

    bool text_field(size_t size, uint8_t *into, const pouch::value &given) {
        if (given.what != pouch::value::kind::text || given.text.size() >= size ||
            given.text.find('\0') != std::string::npos)
            return false;
        std::memcpy(into, given.text.c_str(), given.text.size() + 1);
        return true;
    }

    bool pairs(size_t count, uint8_t *into, const pouch::value &given) {
        const std::string &text = given.text;
        if (given.what != pouch::value::kind::text || text.size() != count * 3 - 1)
            return false;
        for (size_t at = 0; at < count; ++at) {
            const char *pair = text.data() + at * 3;
            const auto [stopped, error] = std::from_chars(pair, pair + 2, into[at], 16);
            if (error != std::errc() || stopped != pair + 2 || (at + 1 < count && pair[2] != ':'))
                return false;
        }
        return true;
    }

    void optional(const shape &what, uint8_t *into, const pouch::value &given, const std::string &name) {
        uint8_t *made = allocate(what.inner->size, given);
        store(into, made);
        value(*what.inner, made, given, name);
    }

    void list(const shape &inner, uint8_t *into, const pouch::value &given, const std::string &name) {
        const size_t count = given.entries.size();
        const list_words made{count, allocate(count * inner.size, given)};
        store(into, made);
        entries(inner, made.entries, given, name);
    }

    void entries(const shape &inner, uint8_t *into, const pouch::value &given, const std::string &name) {
        for (const pouch::value &each : given.entries) {
            value(inner, into, each, name);
            into += inner.size;
        }
    }

    uint8_t *allocate(size_t size, const pouch::value &given) {
        if (size > allowance_)
            throw field_fault{given.at, record_ + " takes more than 16 MiB"};
        allowance_ -= size;
        auto *made = static_cast<uint8_t *>(std::calloc(1, size));
        return made != nullptr ? made : throw std::bad_alloc();
    }

    const std::string &record_;
    size_t allowance_ = largest;
};

} // namespace

held_record::held_record(const record_type &type) : type_(type), bytes_(std::make_unique<uint8_t[]>(type.top().size)) {}

held_record::held_record(const record_type &type, const value &fields) : held_record(type) {
    const std::string name = "record " + quoted(type.name());
    filler(name).record(type.top(), bytes_.get(), fields, name);
}

held_record::~held_record() {
    release(type_.top(), bytes_.get());
}

std::string encode_fields(const record_type &type, const value &fields) {
    const held_record record(type, fields);
    std::string encoded;
    if (const rcode status = encode(record.data(), type, encoded); status != RC_OK)
        throw field_fault{fields.at, "record " + quoted(type.name()) + ": " + rcode_strerror(status)};
    return encoded;
}

} // namespace pouch
