// The parser's events, with the places that it does not tell: they come from counting the bytes that it takes.
#include "device/json_text.h"

#include <cstdint>
#include <iterator>
#include <vector>

#include <nlohmann/json.hpp>

#include "device/text.h"

namespace json_text {
namespace {

// Steps through the text and counts the steps of all its copies.
class counting_iterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char *;
    using reference = const char &;

    counting_iterator(const char *at, size_t *taken) : at_(at), taken_(taken) {}
    reference operator*() const { return *at_; }
    pointer operator->() const { return at_; }
    counting_iterator &operator++() {
        ++at_;
        ++*taken_;
        return *this;
    }
    counting_iterator operator++(int) {
        counting_iterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const counting_iterator &other) const { return at_ == other.at_; }

private:
    const char *at_;
    size_t *taken_;
};

// The member names of one open object. Compact, since an object may hold a million of them.
class name_set {
public:
    // False: the name is there already.
    bool add(std::string_view name) {
        if ((ends_.size() + 1) * 2 > slots_.size())
            grow();
        uint32_t &slot = slots_[slot_of(name)];
        if (slot != 0)
            return false;
        names_ += name;
        ends_.push_back(names_.size());
        slot = static_cast<uint32_t>(ends_.size());
        return true;
    }

private:
    std::string_view name(uint32_t number) const {
        const size_t begin = number == 1 ? 0 : ends_[number - 2];
        return std::string_view(names_).substr(begin, ends_[number - 1] - begin);
    }

    size_t slot_of(std::string_view wanted) const {
        size_t at = std::hash<std::string_view>{}(wanted) & (slots_.size() - 1);
        while (slots_[at] != 0 && name(slots_[at]) != wanted)
            at = (at + 1) & (slots_.size() - 1);
        return at;
    }

    void grow() {
        slots_.assign(slots_.empty() ? 16 : slots_.size() * 2, 0);
        for (uint32_t number = 1; number <= ends_.size(); ++number)
            slots_[slot_of(name(number))] = number;
    }

    std::string names_;
    std::vector<size_t> ends_;
    std::vector<uint32_t> slots_; // number of a name from 1, 0 for none; a power of two of them
};

// "[json.exception...] parse error at line 1, column 2: syntax error while ...; last read: '...'; expected ..." without
// the library's own place, and without what it read last: it often shows much more than that.
std::string reason_of(std::string_view words) {
    for (const std::string_view mark : {"] ", ": "})
        if (const size_t found = words.find(mark); found != std::string_view::npos)
            words.remove_prefix(found + mark.size());
    std::string reason(words);
    const size_t read = reason.find("; last read: "), wanted = reason.rfind("; expected ");
    if (read != std::string::npos)
        reason.erase(read, wanted == std::string::npos || wanted < read ? std::string::npos : wanted - read);
    return text::shortened(reason, 200);
}

class events : public nlohmann::json::json_sax_t {
public:
    events(std::string_view whole, visitor &to) : whole_(whole), to_(to) {}

    counting_iterator begin() { return {whole_.data(), &taken_}; }
    counting_iterator end() { return {whole_.data() + whole_.size(), &taken_}; }

    bool null() override { return word(scalar::null); }
    bool boolean(bool) override { return word(scalar::boolean); }
    bool number_integer(number_integer_t) override { return number(); }
    bool number_unsigned(number_unsigned_t) override { return number(); }
    bool number_float(number_float_t, const string_t &written) override {
        // An integer comes as a double only when it is too big for anything else.
        if (written.find_first_of(".eE") == string_t::npos)
            refuse_number(start(), written);
        return number();
    }
    bool string(string_t &read) override {
        to_.value(scalar::string, read, start());
        end_ = taken_;
        return true;
    }
    bool binary(binary_t &) override { return false; }

    bool start_object(size_t) override {
        const size_t at = open();
        members_.emplace_back();
        to_.open_object(at);
        return true;
    }
    bool key(string_t &name) override {
        const size_t at = start();
        end_ = taken_;
        if (!members_.back().add(name))
            throw refusal{at, "member \"" + text::shortened(name) + "\" stands twice in its object"};
        to_.member(name, at);
        return true;
    }
    bool end_object() override {
        members_.pop_back();
        to_.close_object(close());
        return true;
    }
    bool start_array(size_t) override {
        to_.open_array(open());
        return true;
    }
    bool end_array() override {
        to_.close_array(close());
        return true;
    }
    bool parse_error(size_t, const std::string &, const nlohmann::json::exception &why) override {
        constexpr int number_overflow = 406;
        if (why.id == number_overflow)
            refuse_number(start(), whole_.substr(start(), end_of_word(start()) - start()));
        throw refusal{taken_ == 0 ? 0 : taken_ - 1, reason_of(why.what())};
    }

private:
    // Between two tokens there is nothing but white space and one separator.
    size_t start() const {
        const size_t found = whole_.find_first_not_of(" \t\r\n,:", end_ == 0 ? first_ : end_);
        return found == std::string_view::npos ? whole_.size() : found;
    }

    size_t end_of_word(size_t at) const {
        const size_t found = whole_.find_first_of(" \t\r\n,:]}", at);
        return found == std::string_view::npos ? whole_.size() : found;
    }

    bool word(scalar what) {
        const size_t at = start();
        end_ = end_of_word(at);
        to_.value(what, whole_.substr(at, end_ - at), at);
        return true;
    }

    bool number() { return word(scalar::number); }

    size_t open() {
        const size_t at = start();
        end_ = at + 1;
        if (++depth_ > deepest)
            throw refusal{at, "nesting deeper than " + std::to_string(deepest)};
        return at;
    }

    size_t close() {
        const size_t at = start();
        end_ = at + 1;
        --depth_;
        return at;
    }

    [[noreturn]] static void refuse_number(size_t at, std::string_view written) {
        throw refusal{at, "number " + text::shortened(written) + " does not fit"};
    }

    std::string_view whole_;
    visitor &to_;
    size_t first_ = whole_.starts_with("\xef\xbb\xbf") ? 3 : 0;
    size_t taken_ = 0; // bytes that the parser has taken
    size_t end_ = 0;   // where the last token ended
    size_t depth_ = 0;
    std::vector<name_set> members_; // one for each open object
};

} // namespace

void read(std::string_view whole, visitor &to) {
    events told(whole, to);
    try {
        if (const size_t bad = text::first_bad_byte(whole); bad != std::string_view::npos)
            throw refusal{bad, whole[bad] == 0 ? "a zero byte" : "not UTF-8"};
        nlohmann::json::sax_parse(told.begin(), told.end(), &told);
    } catch (const refusal &refused) {
        const text::position place = text::position_of(whole, refused.at);
        throw error{place.line, place.column, refused.text};
    }
}

} // namespace json_text
