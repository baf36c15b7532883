// Decoding by schema. A record is zero before it is filled, so that what a failed decode made so far is found and
// released like a whole record.
#include <cstdlib>
#include <cstring>
#include <limits>
#include <type_traits>

#include "pouch.h"
#include "pouch/layout.h"
#include "pouch/memory.h"
#include "pouch/registry.h"
#include "pouch/status.h"
#include "pouch/wire.h"

namespace pouch {
namespace {

class decoder {
public:
    decoder(const uint8_t *at, size_t length) : at_(at), end_(at + length) {}

    rcode whole(const record_shape &top, uint8_t *into) {
        const rcode status = record(top, into, 1);
        return status == RC_OK && at_ != end_ ? rc_left_over : status;
    }

private:
    size_t left() const { return static_cast<size_t>(end_ - at_); }

    rcode record(const record_shape &what, uint8_t *into, size_t depth) {
        if (depth > deepest)
            return rc_too_deep;
        for (const placed_field &each : what.fields) {
            const shape *field = each.what;
            if (field->what == kind::choice) {
                const chosen_shape *chosen = field->chosen(into);
                if (chosen == nullptr)
                    continue;
                field = chosen->what;
            }
            if (const rcode status = value(*field, into + each.offset, depth); status != RC_OK)
                return status;
        }
        return RC_OK;
    }

    rcode value(const shape &what, uint8_t *into, size_t depth) {
        switch (what.what) {
        case kind::signed_8:
        case kind::unsigned_8:
            return bytes(into, 1);
        case kind::unsigned_16:
            return number<uint16_t>(into);
        case kind::unsigned_32:
            return number<uint32_t>(into);
        case kind::signed_32:
        case kind::enumeration:
            return number<int32_t>(into);
        case kind::unsigned_64:
            return number<uint64_t>(into);
        case kind::signed_64:
            return number<int64_t>(into);
        case kind::boolean:
            return flag(into);
        default:
            return other_value(what, into, depth);
        }
    }

    // Apart, so that the many numbers of a record are read in its own loop.
    [[gnu::noinline]] rcode other_value(const shape &what, uint8_t *into, size_t depth) {
        switch (what.what) {
        case kind::text:
            return text(into);
        case kind::record:
            return record(*what.record, into, depth + 1);
        case kind::optional:
            return optional(*what.inner, into, depth + 1);
        case kind::list:
            return list(*what.inner, into, depth + 1);
        case kind::array:
            return entries(*what.inner, what.count, into, depth + 1);
        case kind::text_field:
            return text_field(what.count, into);
        case kind::mac_field:
        case kind::bytes:
            return bytes(into, what.count);
        default: // a choice is looked after by its record
            return RC_OK;
        }
    }

    // Numbers have one encoding only.
    rcode read_number(uint64_t &number) {
        if (at_ != end_ && *at_ < 0x80) { // most are short
            number = *at_++;
            return RC_OK;
        }
        constexpr unsigned group = 7, bits = 64;
        number = 0;
        for (unsigned shift = 0; at_ != end_; shift += group) {
            const uint64_t byte = *at_++;
            const uint64_t low = byte & 0x7f;
            if (shift + group > bits && low >> (bits - shift) != 0)
                return rc_bad_number;
            number |= low << shift;
            if (byte < 0x80)
                return byte == 0 && shift != 0 ? rc_bad_number : RC_OK;
            if (shift + group >= bits)
                return rc_bad_number;
        }
        return rc_cut_short;
    }

    template <typename integer>
    rcode number(uint8_t *into) {
        uint64_t read = 0;
        if (const rcode status = read_number(read); status != RC_OK)
            return status;
        if (read > std::numeric_limits<std::make_unsigned_t<integer>>::max())
            return rc_bad_number;
        return store(into, static_cast<integer>(std::is_signed_v<integer> ? wire::unfolded(read) : read));
    }

    rcode read_flag(bool &flag) {
        if (at_ == end_)
            return rc_cut_short;
        if (*at_ > 1)
            return rc_bad_flag;
        flag = *at_++ == 1;
        return RC_OK;
    }

    rcode flag(uint8_t *into) {
        bool read = false;
        const rcode status = read_flag(read);
        return status == RC_OK ? store<uint32_t>(into, read ? 1 : 0) : status;
    }

    rcode bytes(uint8_t *into, size_t count) {
        if (count > left())
            return rc_cut_short;
        std::memcpy(into, at_, count);
        at_ += count;
        return RC_OK;
    }

    rcode text_bytes(uint8_t *into, size_t length) {
        return std::memchr(at_, 0, length) == nullptr ? bytes(into, length) : rc_bad_text;
    }

    rcode text(uint8_t *into) {
        uint64_t length = 0; // and 1
        if (const rcode status = read_number(length); status != RC_OK || length == 0)
            return status;
        if (length - 1 > left())
            return rc_cut_short;
        uint8_t *made = nullptr;
        const rcode status = allocate(length, made);
        if (status != RC_OK)
            return status;
        store(into, made);
        return text_bytes(made, length - 1);
    }

    rcode text_field(size_t size, uint8_t *into) {
        uint64_t length = 0;
        if (const rcode status = read_number(length); status != RC_OK)
            return status;
        if (length >= size)
            return rc_bad_text;
        return length > left() ? rc_cut_short : text_bytes(into, length);
    }

    rcode optional(const shape &inner, uint8_t *into, size_t depth) {
        bool is_there = false;
        if (const rcode status = read_flag(is_there); status != RC_OK || !is_there)
            return status;
        if (depth > deepest)
            return rc_too_deep;
        uint8_t *made = nullptr;
        if (const rcode status = allocate(inner.size, made); status != RC_OK)
            return status;
        store(into, made);
        return value(inner, made, depth);
    }

    rcode list(const shape &inner, uint8_t *into, size_t depth) {
        uint64_t count = 0;
        if (const rcode status = read_number(count); status != RC_OK || count == 0)
            return status;
        if (count > left() / inner.least)
            return rc_too_many;
        list_words made{count, nullptr};
        if (const rcode status = allocate(count * inner.size, made.entries); status != RC_OK)
            return status;
        store(into, made);
        return entries(inner, count, made.entries, depth);
    }

    rcode entries(const shape &inner, size_t count, uint8_t *into, size_t depth) {
        if (depth > deepest)
            return rc_too_deep;
        if (inner.what == kind::unsigned_8 || inner.what == kind::signed_8)
            return bytes(into, count);
        for (; count > 0; --count, into += inner.size)
            if (const rcode status = value(inner, into, depth); status != RC_OK)
                return status;
        return RC_OK;
    }

    rcode allocate(size_t size, uint8_t *&made) {
        if (size > allowance_)
            return rc_too_big;
        allowance_ -= size;
        made = static_cast<uint8_t *>(std::calloc(1, size));
        return made == nullptr ? RC_NO_MEMORY : RC_OK;
    }

    const uint8_t *at_;
    const uint8_t *end_;
    size_t allowance_ = largest;
};

// Everything about the data that can be said without reading the fields.
rcode check_header(const uint8_t *data, size_t length, const record_type &type) {
    if (length < sizeof(wire::header))
        return rc_not_encoded;
    const auto header = load<wire::header>(data);
    if (header.magic != wire::magic)
        return rc_not_encoded;
    if (header.fingerprint != type.fingerprint())
        return rc_other_record;
    if (header.length != length - sizeof header)
        return rc_wrong_length;
    return wire::seal_of(data + sizeof header, header.length, header.fingerprint) == header.seal ? RC_OK : rc_damaged;
}

} // namespace
} // namespace pouch

rcode pouch_decode(const void *data, size_t length, void *record, const pouch_descriptor *descriptor) {
    if (record == nullptr || descriptor == nullptr)
        return pouch::rc_bad_call;
    std::memset(record, 0, descriptor->top_size);
    const pouch::record_type *type = pouch::find_type(descriptor);
    if (type == nullptr)
        return pouch::rc_not_registered;
    if (!type->has_schema())
        return pouch::rc_no_schema;
    if (data == nullptr)
        return pouch::rc_bad_call;
    const auto *const bytes = static_cast<const uint8_t *>(data);
    if (const rcode status = pouch::check_header(bytes, length, *type); status != RC_OK)
        return status;
    pouch::decoder decoder(bytes + sizeof(pouch::wire::header), length - sizeof(pouch::wire::header));
    const rcode status = decoder.whole(type->top(), static_cast<uint8_t *>(record));
    if (status != RC_OK) {
        pouch::release(type->top(), static_cast<uint8_t *>(record));
        std::memset(record, 0, type->top().size);
    }
    return status;
}

rcode pouch_free_indirections(void *record, const pouch_descriptor *descriptor) {
    if (record == nullptr || descriptor == nullptr)
        return pouch::rc_bad_call;
    const pouch::record_type *type = pouch::find_type(descriptor);
    if (type == nullptr)
        return pouch::rc_not_registered;
    if (!type->has_schema())
        return pouch::rc_no_schema;
    pouch::release(type->top(), static_cast<uint8_t *>(record));
    return RC_OK;
}
