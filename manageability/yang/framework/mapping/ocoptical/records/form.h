// What the field tables of records are made of: forms of fields, rows, definitions, and where the fields lie in the
// decoded record. Everything here is gone once it is compiled.
//
// The words of a field table, each with its meaning in the decoded structure (readings/structure.inc) and in the schema
// (readings/table.inc); a new word goes into both and into readings/end.inc:
//   NESTED(number) ... END, TOP(number) ... END    a definition, and its number in the schema
//   F(name, form), UNNAMED(form)                   a field
//   UNION(field, prefix) ... END_UNION             one CASE(value, name, form) each for values of an earlier field
//   BOOL, U8 U16 U32 U64, S8 S32 S64, TEXT, ENUM(type), REC(number), TEXT_FIELD(bytes), MAC_FIELD(bytes), BYTES(bytes)
//   OPT(form), LIST(form), ARRAY(length, form), PACKED(form)
#pragma once

#include <cstddef>
#include <cstdint>

namespace ocoptical::pouch {

// A list as the codec fills it; null when empty.
template <typename entry>
struct list {
    uint64_t count;
    entry *entries;
};

enum class container : uint8_t { none, optional, list, array };

struct form {
    const char *letters = "";
    const char *enumeration = nullptr; // name of its type
    uint16_t record = 0;               // number of the nested record
    uint16_t bytes = 0;                // of a field of bytes, which the notation gives before its letters
    uint16_t width = 0;                // decoded, without what is around it; of a record: see its definition
    bool packed = false;
    container around = container::none;
    uint16_t length = 0; // of an array
};

consteval form scalar(const char *letter, uint16_t width) {
    return {.letters = letter, .width = width};
}

consteval form enumeration(const char *type) {
    return {.letters = "e", .enumeration = type, .width = 4};
}

consteval form nested(uint16_t number) {
    return {.letters = "$", .record = number};
}

consteval form bytes(uint16_t count, const char *letters) {
    return {.letters = letters, .bytes = count, .width = count};
}

consteval form packed(form variant) {
    variant.packed = true;
    return variant;
}

consteval form within(container around, form entry, uint16_t length = 0) {
    entry.around = around;
    entry.length = length;
    return entry;
}

// A union is three kinds of rows: the choice, which is the field, its alternatives, and their end.
enum class row_kind : uint8_t { field, choice, alternative, end_of_choice };

struct row {
    row_kind kind = row_kind::field;
    const char *name = ""; // of a choice: the field that decides
    form shape = {};       // of a choice: an enumeration, the prefix of its values
    size_t offset = 0;     // in the decoded record; a choice lies where its first alternative lies
    uint32_t value = 0;    // of the deciding field, for an alternative
};

struct definition {
    uint16_t number = 0;
    size_t size = 0; // of the decoded record
    const row *rows = nullptr;
    size_t row_count = 0;
};

// Nested records stand before those that refer to them.
struct record_table {
    const definition *definitions;
    size_t count;
};

constexpr bool is_field(const row &r) {
    return r.kind == row_kind::field || r.kind == row_kind::choice;
}

consteval size_t offset_of(const row *r) {
    return r->kind == row_kind::choice ? r[1].offset : r->offset;
}

// Past the end: not a constant expression, so an unknown number does not compile.
constexpr size_t place_of(const record_table &table, uint16_t number) {
    size_t at = 0;
    while (table.definitions[at].number != number) {
        ++at;
    }
    return at;
}

constexpr const definition &definition_of(const record_table &table, uint16_t number) {
    return table.definitions[place_of(table, number)];
}

consteval size_t field_count(const record_table &table, uint16_t number) {
    const definition &d = definition_of(table, number);
    size_t count = 0;
    for (size_t at = 0; at < d.row_count; ++at) {
        count += is_field(d.rows[at]);
    }
    return count;
}

struct extent {
    size_t size;
    size_t alignment;
};

constexpr size_t aligned(size_t offset, size_t alignment) {
    return (offset + alignment - 1) / alignment * alignment;
}

constexpr extent larger(const extent &a, const extent &b) {
    return {a.size > b.size ? a.size : b.size, a.alignment > b.alignment ? a.alignment : b.alignment};
}

// Lays a definition out by the widths of the notation, and compares with the structure.
class layout {
public:
    consteval explicit layout(const record_table &table) : table_(table) {}

    consteval bool agrees(const definition &d) const {
        size_t end = 0;
        for (const row *r = d.rows; r != d.rows + d.row_count; ++r) {
            if (is_field(*r)) {
                const extent taken = extent_of(r);
                const size_t begin = aligned(end, taken.alignment);
                if (offset_of(r) != begin) {
                    return false;
                }
                end = begin + taken.size;
            }
        }
        return d.size == aligned(end, alignment_of(d));
    }

private:
    constexpr extent extent_of(const row *r) const {
        if (r->kind != row_kind::choice) {
            return extent_of(r->shape);
        }
        extent largest = {0, 1};
        while ((++r)->kind == row_kind::alternative) {
            largest = larger(largest, extent_of(r->shape));
        }
        return {aligned(largest.size, largest.alignment), largest.alignment};
    }

    constexpr extent extent_of(const form &f) const {
        switch (f.around) {
        case container::optional:
            return {sizeof(void *), alignof(void *)};
        case container::list:
            return {sizeof(list<char>), alignof(list<char>)};
        case container::array:
            return {f.length * bare(f).size, bare(f).alignment};
        case container::none:
            break;
        }
        return bare(f);
    }

    constexpr extent bare(const form &f) const {
        if (f.record == 0) {
            return {f.width, f.bytes > 0 ? 1U : f.width};
        }
        const definition &d = definition_of(table_, f.record);
        return {d.size, alignment_of(d)};
    }

    constexpr size_t alignment_of(const definition &d) const {
        extent all = {0, 1};
        for (const row *r = d.rows; r != d.rows + d.row_count; ++r) {
            all = is_field(*r) ? larger(all, extent_of(r)) : all;
        }
        return all.alignment;
    }

    const record_table &table_;
};

inline constexpr uint16_t no_misfit = 0;

// Number of the first definition whose structure is not what its forms say.
consteval uint16_t first_misfit(const record_table &table) {
    for (size_t at = 0; at < table.count; ++at) {
        if (!layout(table).agrees(table.definitions[at])) {
            return table.definitions[at].number;
        }
    }
    return no_misfit;
}

template <uint16_t number>
struct sound_layout {
    static_assert(number == no_misfit, "the structure of the definition of this number is not what its forms say");
    static constexpr bool value = true;
};

} // namespace ocoptical::pouch
