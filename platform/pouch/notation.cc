// Reading of schemas, by recursive descent.
#include "pouch/notation.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

namespace pouch {
namespace {

constexpr uint32_t largest_number = 1u << 24; // of bytes in a field, elements in an array

struct letter_row {
    char letter;
    kind what;
};

constexpr letter_row letters[] = {
    {'c', kind::signed_8},    {'C', kind::unsigned_8},  {'I', kind::unsigned_16},
    {'d', kind::signed_32},   {'D', kind::unsigned_32}, {'h', kind::signed_64},
    {'H', kind::unsigned_64}, {'b', kind::boolean},     {'s', kind::text},
};

class reader {
public:
    reader(std::string_view text, notation how) : text_(text), how_(how) {}

    schema whole() {
        schema read;
        while (at_ < text_.size()) {
            const size_t begin = at_;
            definition next = one_definition();
            if (std::ranges::find(read, next.number, &definition::number) != read.end())
                throw schema_fault{begin, "$" + std::to_string(next.number) + " is defined twice"};
            read.push_back(std::move(next));
        }
        if (read.empty())
            refuse("no definition");
        return read;
    }

private:
    [[noreturn]] void refuse(const std::string &what) const { throw schema_fault{at_, what}; }

    char next() const { return at_ < text_.size() ? text_[at_] : '\0'; }
    bool is_digit() const { return next() >= '0' && next() <= '9'; }
    bool take(char wanted) {
        const bool is_there = at_ < text_.size() && text_[at_] == wanted;
        at_ += is_there ? 1 : 0;
        return is_there;
    }
    void expect(char wanted) {
        if (!take(wanted))
            refuse(std::string("'") + wanted + "' is missing");
    }

    template <typename integer>
    integer number(const char *of) {
        integer value = 0;
        const char *begin = text_.data() + at_;
        const auto [end, error] = std::from_chars(begin, text_.data() + text_.size(), value);
        if (error != std::errc())
            refuse(std::string("no number of ") + of);
        at_ += static_cast<size_t>(end - begin);
        return value;
    }

    std::string name_until(char closing) {
        const size_t end = text_.find(closing, at_);
        if (end == std::string_view::npos)
            refuse(std::string("'") + closing + "' is missing");
        std::string name(text_.substr(at_, end - at_));
        if (const size_t odd = name.find_first_of("{}[]()<>,;$"); odd != std::string::npos)
            throw schema_fault{at_ + odd, std::string("'") + name[odd] + "' in a name"};
        at_ = end + 1;
        return name;
    }

    definition one_definition() {
        expect('$');
        definition read{number<uint32_t>("a record"), {}};
        expect('=');
        while (!take(';'))
            read.fields.push_back(one_field(read.fields));
        if (read.fields.empty())
            refuse("a record without fields");
        return read;
    }

    field one_field(const std::vector<field> &before) {
        field read;
        if (how_ == notation::full && next() != '?') {
            expect('{');
            read.name = name_until('}');
        }
        const bool is_choice = next() == '?';
        read.what = is_choice ? one_choice(before) : one_form(1);
        if (how_ == notation::packed && read.what.what == kind::record)
            expect('.');
        return read;
    }

    form one_form(size_t depth) {
        if (depth > deepest)
            refuse("nested deeper than " + std::to_string(deepest));
        if (take('P')) {
            if (next() == 'P')
                refuse("'P' stands twice");
            form read = one_form(depth);
            read.is_packed = true;
            return read;
        }
        if (is_digit())
            return counted_form(depth);
        if (take('$'))
            return {kind::record, false, number<uint32_t>("a record"), {}, {}};
        if (take('p'))
            return nesting(kind::optional, 0, depth);
        if (take('a'))
            return nesting(kind::list, 0, depth);
        return letter_form();
    }

    form letter_form() {
        if (how_ == notation::full && take('[')) {
            name_until(']');
            if (next() != 'e')
                refuse("'e' is missing");
        } else if (how_ == notation::full && next() == 'e') {
            refuse("an enumeration without its type");
        }
        if (take('e'))
            return {kind::enumeration, false, 0, {}, {}};
        const auto *const found = std::ranges::find(letters, next(), &letter_row::letter);
        if (found == std::end(letters))
            refuse(at_ < text_.size() ? "unknown form" : "the end within a record");
        ++at_;
        return {found->what, false, 0, {}, {}};
    }

    form nesting(kind what, uint32_t count, size_t depth) {
        form read{what, false, count, {}, {}};
        expect('(');
        read.inner.push_back(one_form(depth + 1));
        expect(')');
        return read;
    }

    form counted_form(size_t depth) {
        const auto count = number<uint32_t>("elements or bytes");
        if (count == 0 || count > largest_number)
            refuse("a number of elements or bytes is not from 1 to 16777216");
        if (take('A'))
            return nesting(kind::array, count, depth);
        expect('x');
        const kind what = text_.substr(at_).starts_with("%S")   ? kind::text_field
                          : text_.substr(at_).starts_with("%m") ? kind::mac_field
                                                                : kind::bytes;
        at_ += what == kind::bytes ? 0 : 2;
        return {what, false, count, {}, {}};
    }

    // "?(<field,prefix>," or packed "?(<index>,", its alternatives, "?:v)".
    form one_choice(const std::vector<field> &before) {
        form read{kind::choice, false, 0, {}, {}};
        expect('?');
        expect('(');
        expect('<');
        read.number = chooser(before);
        expect(',');
        while (!take('?')) {
            const size_t begin = at_;
            alternative next = one_alternative();
            if (std::ranges::find(read.alternatives, next.value, &alternative::value) != read.alternatives.end())
                throw schema_fault{begin, "value " + std::to_string(next.value) + " stands twice in a choice"};
            read.alternatives.push_back(std::move(next));
            expect(',');
        }
        expect(':');
        expect('v');
        expect(')');
        return read;
    }

    uint32_t chooser(const std::vector<field> &before) {
        const size_t begin = at_;
        size_t index = 0;
        if (how_ == notation::packed) {
            index = number<uint32_t>("a field");
            expect('>');
        } else {
            const std::string name = name_until(',');
            name_until('>');
            index = static_cast<size_t>(std::ranges::find(before, name, &field::name) - before.begin());
        }
        if (index >= before.size() || before[index].what.what != kind::enumeration)
            throw schema_fault{begin, "no enumeration before it chooses"};
        return static_cast<uint32_t>(index);
    }

    alternative one_alternative() {
        alternative read{number<int32_t>("a choice"), {}, {}};
        expect(':');
        if (how_ == notation::full && take('{'))
            read.name = name_until('}');
        if (take('v'))
            return read;
        read.what = one_form(1);
        if (read.what.what == kind::record)
            take('.');
        return read;
    }

    std::string_view text_;
    notation how_;
    size_t at_ = 0;
};

} // namespace

bool operator==(const alternative &a, const alternative &b) {
    return a.value == b.value && a.what == b.what;
}

bool operator==(const form &a, const form &b) {
    return a.what == b.what && a.is_packed == b.is_packed && a.number == b.number && a.inner == b.inner &&
           a.alternatives == b.alternatives;
}

schema read_schema(std::string_view text, notation how) {
    return reader(text, how).whole();
}

} // namespace pouch
