#include "made_record.h"

#include <algorithm>
#include <cstring>

#include "pouch/memory.h"

namespace made {
namespace {

uint32_t below(random &source, uint32_t limit) {
    return static_cast<uint32_t>(source() % limit);
}

struct piece {
    std::string full, packed;
    size_t size, alignment;
    bool is_record = false;
};

struct known_record {
    uint32_t number;
    size_t size, alignment;
};

constexpr size_t largest_nested = 2000; // bytes

class schema_maker {
public:
    schema_maker(random &source, record &into) : source_(source), into_(into) {}

    // Records refer to those before them, by pointer also to themselves. The last one is the top.
    void make() {
        const uint32_t count = 1 + below(source_, 5);
        std::vector<piece> definitions;
        for (uint32_t made = 0; made < count; ++made)
            definitions.push_back(definition(7 * made + below(source_, 7)));
        std::rotate(definitions.begin(), definitions.end() - 1, definitions.end());
        std::rotate(into_.members.begin(), into_.members.end() - 1, into_.members.end());
        for (const piece &each : definitions) {
            into_.full += each.full;
            into_.packed += each.packed;
        }
        into_.describe();
    }

private:
    piece definition(uint32_t number) {
        own_number_ = number;
        const std::string begin = "$" + std::to_string(number) + "=";
        piece made{begin, begin, 0, 1};
        std::vector<uint64_t> offsets;
        int chooser = -1; // index of an enumeration
        const uint32_t count = 1 + below(source_, 9);
        for (uint32_t at = 0; at < count; ++at) {
            const std::string name = "f" + std::to_string(at);
            const bool is_choice = chooser >= 0 && below(source_, 4) == 0;
            const piece field = is_choice ? choice(name, chooser) : form(0);
            made.full += is_choice ? field.full : "{" + name + "}" + field.full;
            made.packed += field.packed + (field.is_record ? "." : "");
            offsets.push_back((made.size + field.alignment - 1) / field.alignment * field.alignment);
            made.size = offsets.back() + field.size;
            made.alignment = std::max(made.alignment, field.alignment);
            if (is_choice || field.packed == "e")
                chooser = is_choice ? -1 : static_cast<int>(at);
        }
        made.size = (made.size + made.alignment - 1) / made.alignment * made.alignment;
        made.full += ";";
        made.packed += ";";
        into_.add_member(number, made.size, std::move(offsets));
        if (made.size <= largest_nested)
            known_.push_back({number, made.size, made.alignment});
        return made;
    }

    piece form(int depth) {
        static const piece scalars[] = {
            {"c", "c", 1, 1},       {"C", "C", 1, 1}, {"I", "I", 2, 2},
            {"d", "d", 4, 4},       {"D", "D", 4, 4}, {"[some_type]e", "e", 4, 4},
            {"h", "h", 8, 8},       {"H", "H", 8, 8}, {"b", "b", 4, 4},
            {"Pb", "Pb", 4, 4},     {"s", "s", 8, 8}, {"PD", "PD", 4, 4},
            {"6x%m", "6x%m", 6, 1},
        };
        const uint32_t drawn = below(source_, depth < 3 ? 20 : 15);
        if (drawn < std::size(scalars))
            return scalars[drawn];
        const std::string count = std::to_string(1 + below(source_, 20));
        const size_t size = std::stoul(count);
        if (drawn == 13)
            return {count + "x", count + "x", size, 1};
        if (drawn == 14)
            return {count + "x%S", count + "x%S", size, 1};
        if (drawn == 15 && !known_.empty()) {
            const known_record &one = known_[below(source_, static_cast<uint32_t>(known_.size()))];
            const std::string reference = "$" + std::to_string(one.number);
            return {reference, reference, one.size, one.alignment, true};
        }
        const piece inner = below(source_, 6) == 0 && drawn >= 18 ? itself() : form(depth + 1);
        if (drawn <= 16)
            return size * inner.size > largest_nested ? inner
                                                      : around(count + "A(", inner, size * inner.size, inner.alignment);
        return drawn <= 18 ? around("p(", inner, 8, 8) : around("a(", inner, 16, 8);
    }

    static piece around(const std::string &with, const piece &inner, size_t size, size_t alignment) {
        return {with + inner.full + ")", with + inner.packed + ")", size, alignment};
    }

    piece itself() const {
        const std::string reference = "$" + std::to_string(own_number_);
        return {reference, reference, 0, 1, true};
    }

    piece choice(const std::string &name, int chooser) {
        piece made{"?(<f" + std::to_string(chooser) + ",some_type>,", "?(<" + std::to_string(chooser) + ">,", 0, 1};
        for (uint32_t value = below(source_, 3), count = 1 + below(source_, 3); count > 0; --count, value += 2) {
            const std::string begin = std::to_string(value) + ":";
            const piece one = form(2);
            made.full.append(begin).append("{").append(name).append("_").append(std::to_string(value)).append("}");
            made.full.append(one.full).append(",");
            made.packed.append(begin).append(one.packed).append(one.is_record ? ".," : ",");
            made.size = std::max(made.size, one.size);
            made.alignment = std::max(made.alignment, one.alignment);
        }
        made.full += "?:v)";
        made.packed += "?:v)";
        return made;
    }

    random &source_;
    record &into_;
    std::vector<known_record> known_;
    uint32_t own_number_ = 0;
};

class value_maker {
public:
    value_maker(random &source, amount how_much) : source_(source), how_much_(how_much) {}

    pouch::value of_record(const pouch::record_shape &what, int depth) {
        pouch::value made;
        made.what = pouch::value::kind::record;
        for (const pouch::placed_field &each : what.fields)
            if (each.what->what == pouch::kind::choice)
                choose(what, each, made, depth);
            else if (!is_given(made, each.name))
                made.members.push_back({each.name, of(*each.what, depth)});
        return made;
    }

private:
    static bool is_given(const pouch::value &made, const std::string &name) {
        return std::ranges::find(made.members, name, &pouch::member::name) != made.members.end();
    }

    void choose(const pouch::record_shape &what, const pouch::placed_field &choice, pouch::value &made, int depth) {
        const auto chooser = std::ranges::find(what.fields, choice.what->chooser, &pouch::placed_field::offset);
        const auto given = std::ranges::find(made.members, chooser->name, &pouch::member::name);
        const auto &alternatives = choice.what->alternatives;
        if (below(source_, 4) != 0)
            given->what.text =
                std::to_string(alternatives[below(source_, static_cast<uint32_t>(alternatives.size()))].value);
        const auto chosen = std::ranges::find(alternatives, std::stoi(given->what.text), &pouch::chosen_shape::value);
        if (chosen != alternatives.end())
            made.members.push_back({chosen->name, of(*chosen->what, depth)});
    }

    pouch::value of(const pouch::shape &what, int depth) {
        switch (what.what) {
        case pouch::kind::signed_8:
            return number(static_cast<int8_t>(bits()));
        case pouch::kind::unsigned_8:
            return number(static_cast<uint8_t>(bits()));
        case pouch::kind::unsigned_16:
            return number(static_cast<uint16_t>(bits()));
        case pouch::kind::signed_32:
        case pouch::kind::enumeration:
            return number(static_cast<int32_t>(bits()));
        case pouch::kind::unsigned_32:
            return number(static_cast<uint32_t>(bits()));
        case pouch::kind::signed_64:
            return number(static_cast<int64_t>(bits()));
        case pouch::kind::unsigned_64:
            return number(bits());
        case pouch::kind::boolean:
            return {pouch::value::kind::boolean, below(source_, 2) == 0 ? "true" : "false", {}, {}, {}};
        case pouch::kind::text:
            return is_there() ? text(below(source_, 24)) : pouch::value();
        case pouch::kind::text_field:
            return text(below(source_, static_cast<uint32_t>(what.count)));
        case pouch::kind::mac_field:
        case pouch::kind::bytes:
            return pairs(what.count);
        case pouch::kind::record:
            return of_record(*what.record, depth + 1);
        case pouch::kind::optional:
            return depth < 6 && is_there() ? of(*what.inner, depth + 1) : pouch::value();
        case pouch::kind::list:
            return entries(*what.inner, depth < 6 ? below(source_, how_much_.longest + 1) : 0, depth);
        case pouch::kind::array:
            return entries(*what.inner, what.count, depth);
        default:
            return {};
        }
    }

    bool is_there() { return below(source_, 100) < how_much_.presence; }

    // Short and long numbers alike.
    uint64_t bits() {
        const uint64_t all = static_cast<uint64_t>(source_()) << 32 | source_();
        return (below(source_, 2) == 0 ? all : ~uint64_t{0} ^ all) >> below(source_, 64);
    }

    template <typename integer>
    static pouch::value number(integer value) {
        return {pouch::value::kind::number, std::to_string(value), {}, {}, {}};
    }

    pouch::value text(size_t length) {
        std::string made;
        while (made.size() < length)
            made.push_back(static_cast<char>(1 + below(source_, 255)));
        return {pouch::value::kind::text, made, {}, {}, {}};
    }

    pouch::value pairs(size_t count) {
        std::string made;
        for (; count > 0; --count)
            made.append({"0123456789abcdef"[below(source_, 16)], "0123456789ABCDEF"[below(source_, 16)], ':'});
        made.pop_back();
        return {pouch::value::kind::text, made, {}, {}, {}};
    }

    pouch::value entries(const pouch::shape &inner, size_t count, int depth) {
        pouch::value made;
        made.what = pouch::value::kind::list;
        for (; count > 0; --count)
            made.entries.push_back(of(inner, depth + 1));
        return made;
    }

    random &source_;
    amount how_much_;
};

bool are_same(const pouch::shape &what, const uint8_t *a, const uint8_t *b) {
    const auto are_same_entries = [&](size_t count, const uint8_t *x, const uint8_t *y) {
        for (size_t at = 0; at < count; ++at)
            if (!are_same(*what.inner, x + at * what.inner->size, y + at * what.inner->size))
                return false;
        return true;
    };
    switch (what.what) {
    case pouch::kind::record:
        return made::are_same(*what.record, a, b);
    case pouch::kind::array:
        return are_same_entries(what.count, a, b);
    case pouch::kind::list: {
        const auto x = pouch::load<pouch::list_words>(a), y = pouch::load<pouch::list_words>(b);
        return x.count == y.count && (x.entries == nullptr) == (x.count == 0) &&
               (y.entries == nullptr) == (y.count == 0) && are_same_entries(x.count, x.entries, y.entries);
    }
    case pouch::kind::optional:
    case pouch::kind::text: {
        const auto *x = pouch::load<const uint8_t *>(a), *y = pouch::load<const uint8_t *>(b);
        if (x == nullptr || y == nullptr)
            return x == y;
        return what.what == pouch::kind::optional
                   ? are_same(*what.inner, x, y)
                   : std::strcmp(reinterpret_cast<const char *>(x), reinterpret_cast<const char *>(y)) == 0;
    }
    default:
        return std::memcmp(a, b, what.size) == 0;
    }
}

} // namespace

void record::add_member(uint64_t number, uint64_t size, std::vector<uint64_t> at) {
    offsets.push_back(std::move(at));
    members.push_back({number, size, offsets.back().data()});
}

void record::describe() {
    descriptor = {1,
                  name.c_str(),
                  1,
                  "made.dll",
                  members.data(),
                  full.c_str(),
                  packed.c_str(),
                  members.size(),
                  members.front().size};
}

void random_schema(random &source, record &into) {
    schema_maker(source, into).make();
}

pouch::value random_value(const pouch::record_shape &what, random &source, amount how_much) {
    return value_maker(source, how_much).of_record(what, 0);
}

bool are_same(const pouch::record_shape &what, const void *a, const void *b) {
    const auto *x = static_cast<const uint8_t *>(a), *y = static_cast<const uint8_t *>(b);
    return std::ranges::all_of(what.fields, [&](const pouch::placed_field &each) {
        const pouch::shape *field = each.what;
        if (field->what == pouch::kind::choice) {
            const pouch::chosen_shape *chosen = field->chosen(x);
            return chosen == field->chosen(y) &&
                   (chosen == nullptr || are_same(*chosen->what, x + each.offset, y + each.offset));
        }
        return are_same(*field, x + each.offset, y + each.offset);
    });
}

rcode register_alone(const pouch_descriptor &what) {
    if (const rcode status = pouch_register_start(); status != RC_OK)
        return status;
    if (const rcode status = pouch_register(&what); status != RC_OK) {
        pouch_register_abort();
        return status;
    }
    return pouch_register_end();
}

} // namespace made
