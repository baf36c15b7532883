// Laying a schema over a member table. What the codec later relies on is checked here: every field lies inside its
// record, aligned, behind the one before it, and no record holds itself.
#include "pouch/layout.h"

#include <algorithm>
#include <cstring>

#include "pouch/status.h"

namespace pouch {
namespace {

struct width_row {
    kind what;
    size_t size;
    size_t alignment;
    bool owns;
};

constexpr size_t pointer = sizeof(void *);
constexpr size_t counted_pointer = sizeof(uint64_t) + pointer;

constexpr width_row widths[] = {
    {kind::signed_8, 1, 1, false},
    {kind::unsigned_8, 1, 1, false},
    {kind::unsigned_16, 2, 2, false},
    {kind::signed_32, 4, 4, false},
    {kind::unsigned_32, 4, 4, false},
    {kind::signed_64, 8, 8, false},
    {kind::unsigned_64, 8, 8, false},
    {kind::boolean, 4, 4, false},
    {kind::enumeration, 4, 4, false},
    {kind::text, pointer, pointer, true},
    {kind::optional, pointer, pointer, true},
    {kind::list, counted_pointer, pointer, true},
};

uint64_t fnv(uint64_t hash, std::string_view bytes) {
    constexpr uint64_t prime = 0x100000001b3u;
    for (const char byte : bytes)
        hash = (hash ^ static_cast<uint8_t>(byte)) * prime;
    return hash * prime; // a zero byte behind it
}

uint64_t fingerprint_of(const pouch_descriptor &from) {
    constexpr uint64_t basis = 0xcbf29ce484222325u;
    return fnv(fnv(fnv(basis, from.name), std::to_string(from.version & 0xffffffffu)), from.packed_schema);
}

bool is_nothing_filled(const pouch_descriptor &from) {
    return *from.packed_schema == '\0' && *from.schema == '\0' && from.members == nullptr && from.member_count == 0 &&
           from.top_size == 0;
}

schema read(const pouch_descriptor &from, notation how) {
    const char *text = how == notation::full ? from.schema : from.packed_schema;
    try {
        return read_schema(text, how);
    } catch (const schema_fault &fault) {
        throw type_fault{rc_bad_schema, std::string(how == notation::full ? "full" : "packed") + " schema, byte " +
                                            std::to_string(fault.at) + ": " + fault.text};
    }
}

std::string record_words(uint32_t number) {
    return "record $" + std::to_string(number);
}

bool say_the_same(const definition &a, const definition &b) {
    return a.number == b.number && std::ranges::equal(a.fields, b.fields, {}, &field::what, &field::what);
}

void check_same(const schema &packed, const schema &named) {
    for (size_t at = 0; at < std::max(packed.size(), named.size()); ++at)
        if (at >= packed.size() || at >= named.size() || !say_the_same(packed[at], named[at]))
            throw type_fault{rc_schemas_differ, "they part at definition " + std::to_string(at + 1)};
}

const pouch_member &row_of(const pouch_descriptor &from, uint32_t number) {
    const pouch_member *end = from.members + from.member_count;
    const auto *const found = std::find_if(from.members, end, [number](auto &row) { return row.number == number; });
    if (found == end)
        throw type_fault{rc_bad_members, "no row of " + record_words(number)};
    if (found->offsets == nullptr || found->size == 0 || found->size > largest)
        throw type_fault{rc_bad_members, "row of " + record_words(number) + " without offsets, or of a wrong size"};
    return *found;
}

// Takes the names of the full schema over to the shape, which is of the packed one.
void name_alternatives(shape &choice, const form &named) {
    for (size_t at = 0; at < choice.alternatives.size(); ++at)
        choice.alternatives[at].name = named.alternatives[at].name;
}

} // namespace

const chosen_shape *shape::chosen(const uint8_t *of_record) const {
    int32_t value = 0;
    std::memcpy(&value, of_record + chooser, sizeof value);
    const auto found = std::ranges::find(alternatives, value, &chosen_shape::value);
    return found == alternatives.end() || found->what->what == kind::nothing ? nullptr : &*found;
}

// What is known of which records and shapes while sizes are taken together.
struct record_type::layout_work {
    std::unordered_map<const record_shape *, progress> records;
    std::vector<shape *> apart; // behind pointers: measured when all records are
};

record_type::record_type(const pouch_descriptor &from) : name_(from.name), fingerprint_(fingerprint_of(from)) {
    if (is_nothing_filled(from))
        return;
    const schema packed = read(from, notation::packed);
    const schema named = read(from, notation::full);
    check_same(packed, named);
    if (from.members == nullptr || from.member_count != packed.size())
        throw type_fault{rc_bad_members, std::to_string(from.member_count) + " rows for " +
                                             std::to_string(packed.size()) + " definitions"};
    for (const definition &each : packed) {
        record_shape &record = records_.emplace_back();
        record.number = each.number;
        record_of_.emplace(each.number, &record);
    }
    for (size_t at = 0; at < packed.size(); ++at)
        place_fields(packed[at], named[at], row_of(from, packed[at].number));
    layout_work work;
    for (record_shape &each : records_)
        measure(each, work, 1);
    for (size_t at = 0; at < work.apart.size(); ++at)
        measure(*work.apart[at], work, 1);
    for (const record_shape &each : records_)
        check_places(each);
    if (records_.front().size != from.top_size)
        throw type_fault{rc_bad_members, "the size of the top record is not that of its row"};
    top_ = &records_.front();
}

shape *record_type::add_shape(const form &what) {
    shape made = shape_of(what);
    return &shapes_.emplace_back(std::move(made));
}

shape record_type::shape_of(const form &what) {
    shape made;
    made.what = what.what;
    made.count = what.number;
    if (!what.inner.empty())
        made.inner = add_shape(what.inner.front());
    if (what.what == kind::record) {
        const auto found = record_of_.find(what.number);
        if (found == record_of_.end())
            throw type_fault{rc_bad_schema, record_words(what.number) + " is not defined"};
        made.record = found->second;
    }
    for (const alternative &each : what.alternatives)
        made.alternatives.push_back({each.value, "", add_shape(each.what)});
    return made;
}

void record_type::place_fields(const definition &packed, const definition &named, const pouch_member &row) {
    record_shape &record = *record_of_.at(packed.number);
    record.size = row.size;
    for (size_t at = 0; at < packed.fields.size(); ++at) {
        shape made = shape_of(packed.fields[at].what);
        if (made.what == kind::choice) {
            made.chooser = record.fields[made.count].offset;
            name_alternatives(made, named.fields[at].what);
        }
        record.fields.push_back({row.offsets[at], &shapes_.emplace_back(std::move(made)), named.fields[at].name});
    }
}

void record_type::measure(record_shape &record, layout_work &work, size_t depth) {
    progress &state = work.records[&record];
    if (state == progress::done)
        return;
    if (state == progress::under_way)
        throw type_fault{rc_bad_schema, record_words(record.number) + " holds itself"};
    if (depth > deepest)
        throw type_fault{rc_bad_schema, record_words(record.number) + " is nested deeper than 32"};
    state = progress::under_way;
    for (const placed_field &each : record.fields) {
        shape &what = *each.what;
        measure(what, work, depth);
        record.alignment = std::max(record.alignment, what.alignment);
        record.least = std::min(record.least + what.least, largest);
        record.owns |= what.owns;
    }
    work.records[&record] = progress::done;
}

void record_type::measure(shape &each, layout_work &work, size_t depth) {
    const auto *const width = std::ranges::find(widths, each.what, &width_row::what);
    if (width != std::end(widths)) {
        each.size = width->size;
        each.alignment = width->alignment;
        each.owns = width->owns;
        each.least = 1;
        if (each.inner != nullptr)
            work.apart.push_back(each.inner);
        return;
    }
    switch (each.what) {
    case kind::record:
        measure(*each.record, work, depth + 1);
        each.size = each.record->size;
        each.alignment = each.record->alignment;
        each.least = each.record->least;
        each.owns = each.record->owns;
        return;
    case kind::array:
        measure(*each.inner, work, depth);
        each.size = each.count * each.inner->size;
        each.alignment = each.inner->alignment;
        each.least = std::min(each.count * each.inner->least, largest);
        each.owns = each.inner->owns;
        if (each.size > largest)
            throw type_fault{rc_bad_members, "an array takes more than 16 MiB"};
        return;
    case kind::choice:
        for (const chosen_shape &one : each.alternatives) {
            measure(*one.what, work, depth);
            each.size = std::max(each.size, one.what->size);
            each.alignment = std::max(each.alignment, one.what->alignment);
            each.owns |= one.what->owns;
        }
        return;
    case kind::text_field:
        each.size = each.count;
        each.least = 1;
        return;
    default: // bytes as they stand, or nothing
        each.size = each.least = each.count;
        return;
    }
}

void record_type::check_places(const record_shape &record) const {
    size_t end = 0;
    for (const placed_field &each : record.fields) {
        if (each.offset < end || each.offset % each.what->alignment != 0 || each.offset > record.size ||
            each.what->size > record.size - each.offset)
            throw type_fault{rc_bad_members, record_words(record.number) + ", field \"" + each.name + "\": offset " +
                                                 std::to_string(each.offset) + " does not fit"};
        end = each.offset + each.what->size;
    }
    if (record.size % record.alignment != 0)
        throw type_fault{rc_bad_members,
                         record_words(record.number) + ": size " + std::to_string(record.size) + " is not aligned"};
}

} // namespace pouch
