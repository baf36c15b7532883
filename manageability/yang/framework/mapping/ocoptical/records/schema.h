// What the codec gets of a record: its schema in both notations, and the table of its members. Made from a field table
// when it is compiled, for any definition of the table together with those that it refers to.
#pragma once

#include <array>
#include <utility>

#include "engine/model.h"
#include "pouch.h"
#include "records/form.h"

namespace ocoptical::pouch {

inline constexpr size_t most_definitions = 64; // of one table; more do not compile

// The numbers of the definitions that a record needs: its own first, as a schema has them, the others as in the table.
struct selection {
    std::array<uint16_t, most_definitions> numbers = {};
    size_t count = 0;
};

consteval selection selected(const record_table &table, uint16_t number) {
    std::array<bool, most_definitions> needed = {};
    const size_t own = place_of(table, number);
    needed[own] = true;
    for (size_t at = own + 1; at-- > 0;) {
        const definition &d = table.definitions[at];
        for (size_t r = 0; needed[at] && r < d.row_count; ++r) {
            if (d.rows[r].shape.record != 0) {
                needed[place_of(table, d.rows[r].shape.record)] = true;
            }
        }
    }
    selection chosen = {.numbers = {number}, .count = 1};
    for (size_t at = 0; at < own; ++at) {
        if (needed[at]) {
            chosen.numbers[chosen.count++] = table.definitions[at].number;
        }
    }
    return chosen;
}

enum class notation : uint8_t { full, packed };

// Writes to `out`, or only counts where that is null.
class schema_writer {
public:
    consteval schema_writer(const record_table &table, notation which, char *out)
        : table_(table), which_(which), out_(out) {}

    consteval void write(uint16_t number) {
        const definition &d = definition_of(table_, number);
        put("$").put(number).put("=");
        for (size_t at = 0; at < d.row_count; ++at) {
            put_row(d, d.rows[at]);
        }
        put(";");
    }

    consteval size_t length() const { return length_; }

private:
    constexpr bool is_full() const { return which_ == notation::full; }

    constexpr schema_writer &put(const char *text) {
        for (; *text != '\0'; ++text, ++length_) {
            if (out_ != nullptr) {
                out_[length_] = *text;
            }
        }
        return *this;
    }

    constexpr schema_writer &put(uint32_t number) {
        char digits[11] = {};
        char *first = digits + 10;
        do {
            *--first = static_cast<char>('0' + number % 10);
            number /= 10;
        } while (number != 0);
        return put(first);
    }

    constexpr void put_row(const definition &d, const row &r) {
        switch (r.kind) {
        case row_kind::field:
            put_field(r);
            break;
        case row_kind::choice:
            put_choice(d, r);
            break;
        case row_kind::alternative:
            put(",").put(r.value).put(":");
            put_field(r);
            break;
        case row_kind::end_of_choice:
            put(",?:v)");
            break;
        }
    }

    constexpr void put_field(const row &r) {
        if (is_full()) {
            put("{").put(r.name).put("}");
        }
        put_form(r.shape);
    }

    // The deciding field by name, or by its place among the fields, counted from 0.
    constexpr void put_choice(const definition &d, const row &r) {
        put("?(<");
        if (is_full()) {
            put(r.name).put(",").put(r.shape.enumeration);
        } else {
            put(place_of_field(d, r.name));
        }
        put(">");
    }

    static constexpr uint32_t place_of_field(const definition &d, const char *name) {
        uint32_t place = 0;
        for (const row *r = d.rows; r->kind != row_kind::field || !same_text(r->name, name); ++r) {
            place += is_field(*r);
        }
        return place;
    }

    constexpr void put_form(const form &f) {
        put(f.packed ? "P" : "");
        switch (f.around) {
        case container::none:
            put_bare(f);
            put(f.record != 0 && !is_full() ? "." : "");
            return;
        case container::optional:
            put("p(");
            break;
        case container::list:
            put("a(");
            break;
        case container::array:
            put(f.length).put("A(");
            break;
        }
        put_bare(f);
        put(")");
    }

    constexpr void put_bare(const form &f) {
        if (is_full() && f.enumeration != nullptr) {
            put("[").put(f.enumeration).put("]");
        }
        if (f.bytes != 0) {
            put(f.bytes);
        }
        put(f.letters);
        if (f.record != 0) {
            put(f.record);
        }
    }

    const record_table &table_;
    notation which_;
    char *out_;
    size_t length_ = 0;
};

consteval size_t write_schema(const record_table &table, uint16_t number, notation which, char *out) {
    const selection chosen = selected(table, number);
    schema_writer writer(table, which, out);
    for (size_t at = 0; at < chosen.count; ++at) {
        writer.write(chosen.numbers[at]);
    }
    return writer.length();
}

template <typename table, uint16_t number, notation which>
consteval auto make_schema() {
    std::array<char, write_schema(table::all(), number, which, nullptr) + 1> text = {};
    write_schema(table::all(), number, which, text.data());
    return text;
}

template <typename table, uint16_t number>
consteval auto make_offsets() {
    const definition &d = definition_of(table::all(), number);
    std::array<uint64_t, field_count(table::all(), number)> offsets = {};
    size_t field = 0;
    for (size_t at = 0; at < d.row_count; ++at) {
        if (is_field(d.rows[at])) {
            offsets[field++] = offset_of(d.rows + at);
        }
    }
    return offsets;
}

template <typename table, uint16_t number, notation which>
inline constexpr auto schema_text = make_schema<table, number, which>();

template <typename table, uint16_t number>
inline constexpr auto field_offsets = make_offsets<table, number>();

template <typename table, uint16_t number>
inline constexpr selection definitions = selected(table::all(), number);

template <typename table, uint16_t number>
consteval pouch_member make_member() {
    return {number, definition_of(table::all(), number).size, field_offsets<table, number>.data()};
}

template <typename table, uint16_t number, size_t... at>
consteval auto make_members(std::index_sequence<at...>) {
    return std::array{make_member<table, definitions<table, number>.numbers[at]>()...};
}

template <typename table, uint16_t number>
inline constexpr auto
    members = make_members<table, number>(std::make_index_sequence<definitions<table, number>.count>());

struct group {
    const char *file;
    uint64_t version;
};

consteval uint64_t version(uint32_t high, uint32_t low) {
    return static_cast<uint64_t>(high) << 32 | low;
}

template <typename table, uint16_t number>
consteval pouch_descriptor describe(const char *name, const group &in) {
    return {.format = 1,
            .name = name,
            .version = in.version,
            .group_file = in.file,
            .members = members<table, number>.data(),
            .schema = schema_text<table, number, notation::full>.data(),
            .packed_schema = schema_text<table, number, notation::packed>.data(),
            .member_count = definitions<table, number>.count,
            .top_size = definition_of(table::all(), number).size};
}

consteval pouch_descriptor describe_without_fields(const char *name, const group &in) {
    return {.format = 1,
            .name = name,
            .version = in.version,
            .group_file = in.file,
            .members = nullptr,
            .schema = "",
            .packed_schema = "",
            .member_count = 0,
            .top_size = 0};
}

} // namespace ocoptical::pouch
