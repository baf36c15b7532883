// Encoding by schema. What a decode would refuse is refused here, too.
#include "pouch/encode.h"

#include <cstring>
#include <limits>

#include "pouch/memory.h"
#include "pouch/status.h"
#include "pouch/wire.h"

namespace pouch {
namespace {

class encoder {
public:
    explicit encoder(std::string &out) : out_(out) {}

    rcode record(const record_shape &what, const uint8_t *from, size_t depth) {
        if (depth > deepest)
            return rc_too_deep;
        for (const placed_field &each : what.fields) {
            const shape *field = each.what;
            if (field->what == kind::choice) {
                const chosen_shape *chosen = field->chosen(from);
                if (chosen == nullptr)
                    continue;
                field = chosen->what;
            }
            if (const rcode status = value(*field, from + each.offset, depth); status != RC_OK)
                return status;
        }
        return RC_OK;
    }

private:
    rcode value(const shape &what, const uint8_t *from, size_t depth) {
        switch (what.what) {
        case kind::signed_8:
        case kind::unsigned_8:
            return bytes(from, 1);
        case kind::unsigned_16:
            return number(load<uint16_t>(from));
        case kind::unsigned_32:
            return number(load<uint32_t>(from));
        case kind::signed_32:
        case kind::enumeration:
            return number(wire::folded(load<int32_t>(from)) & std::numeric_limits<uint32_t>::max());
        case kind::unsigned_64:
            return number(load<uint64_t>(from));
        case kind::signed_64:
            return number(wire::folded(load<int64_t>(from)));
        case kind::boolean:
            return flag(load<uint32_t>(from));
        case kind::text:
            return text(load<const char *>(from));
        case kind::record:
            return record(*what.record, from, depth + 1);
        case kind::optional:
            return optional(*what.inner, load<const uint8_t *>(from), depth + 1);
        case kind::list:
            return list(*what.inner, load<list_words>(from), depth + 1);
        case kind::array:
            return entries(*what.inner, what.count, from, depth + 1);
        case kind::text_field:
            return text_field(what.count, from);
        case kind::mac_field:
        case kind::bytes:
            return bytes(from, what.count);
        case kind::choice: // its record looks after it
        case kind::nothing:
            break;
        }
        return RC_OK;
    }

    rcode number(uint64_t value) {
        for (; value >= 0x80; value >>= 7)
            out_.push_back(static_cast<char>(value | 0x80));
        out_.push_back(static_cast<char>(value));
        return RC_OK;
    }

    rcode flag(uint32_t value) {
        out_.push_back(static_cast<char>(value));
        return value <= 1 ? RC_OK : rc_bad_flag;
    }

    rcode bytes(const uint8_t *from, size_t count) {
        out_.append(reinterpret_cast<const char *>(from), count);
        return RC_OK;
    }

    rcode text(const char *text) {
        if (text == nullptr)
            return number(0);
        const size_t length = std::strlen(text);
        number(length + 1);
        out_.append(text, length);
        return allow(length + 1);
    }

    rcode text_field(size_t size, const uint8_t *from) {
        const auto *const end = static_cast<const uint8_t *>(std::memchr(from, 0, size));
        if (end == nullptr)
            return rc_bad_text;
        number(static_cast<size_t>(end - from));
        return bytes(from, static_cast<size_t>(end - from));
    }

    rcode optional(const shape &inner, const uint8_t *held, size_t depth) {
        flag(held != nullptr ? 1 : 0);
        if (held == nullptr)
            return RC_OK;
        if (depth > deepest)
            return rc_too_deep;
        const rcode status = allow(inner.size);
        return status == RC_OK ? value(inner, held, depth) : status;
    }

    rcode list(const shape &inner, const list_words &words, size_t depth) {
        number(words.count);
        if (words.count == 0)
            return RC_OK;
        if (words.entries == nullptr)
            return rc_bad_list;
        if (words.count > largest)
            return rc_too_big;
        const rcode status = allow(words.count * inner.size);
        return status == RC_OK ? entries(inner, words.count, words.entries, depth) : status;
    }

    rcode entries(const shape &inner, size_t count, const uint8_t *from, size_t depth) {
        if (depth > deepest)
            return rc_too_deep;
        if (inner.what == kind::unsigned_8 || inner.what == kind::signed_8)
            return bytes(from, count);
        for (; count > 0; --count, from += inner.size)
            if (const rcode status = value(inner, from, depth); status != RC_OK)
                return status;
        return RC_OK;
    }

    // Counts what a decode will allocate.
    rcode allow(size_t size) {
        if (size > allowance_)
            return rc_too_big;
        allowance_ -= size;
        return RC_OK;
    }

    std::string &out_;
    size_t allowance_ = largest;
};

} // namespace

rcode encode(const void *record, const record_type &type, std::string &encoded) {
    wire::header header{wire::magic, 0, type.fingerprint(), 0};
    encoded.assign(sizeof header, '\0');
    const rcode status = encoder(encoded).record(type.top(), static_cast<const uint8_t *>(record), 1);
    if (status != RC_OK)
        return status;
    header.length = static_cast<uint32_t>(encoded.size() - sizeof header);
    const auto *const payload = reinterpret_cast<const uint8_t *>(encoded.data()) + sizeof header;
    header.seal = wire::seal_of(payload, header.length, header.fingerprint);
    std::memcpy(encoded.data(), &header, sizeof header);
    return RC_OK;
}

} // namespace pouch
