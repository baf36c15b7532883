// The encoded form of a record, little-endian: a header, then the fields in the order of the schema.
//
//   signed and wide unsigned numbers, enumerations   the number in groups of 7 bits, low ones first, the sign in bit 0
//   8-bit numbers, truth values                      one byte
//   text                                             0 for none, else its length and 1, and its bytes
//   text in a field                                  its length and its bytes
//   MAC address, opaque bytes                        as they are
//   optional                                         0, or 1 and the value
//   list                                             count and entries; an array has entries only
//   record, choice                                   what they hold
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace pouch::wire {

inline constexpr uint32_t magic = 0x01484350u; // "PCH" and the version of the form

struct header {
    uint32_t magic;
    uint32_t length;      // of what follows the header
    uint64_t fingerprint; // of the record type
    uint64_t seal;        // of what follows
};
static_assert(sizeof(header) == 24);

// Differs whenever two texts of one length differ within one group of eight bytes: each step can be undone.
inline uint64_t seal_of(const uint8_t *bytes, size_t length, uint64_t start) {
    constexpr uint64_t odd = 0x9e3779b97f4a7c15u;
    uint64_t sum = start ^ length;
    for (size_t at = 0; at < length; at += sizeof sum) {
        uint64_t group = 0;
        std::memcpy(&group, bytes + at, length - at < sizeof group ? length - at : sizeof group);
        sum = (sum ^ group) * odd;
        sum ^= sum >> 32;
    }
    return sum;
}

// A sign in bit 0, so that small negative numbers are short.
inline uint64_t folded(int64_t number) {
    return static_cast<uint64_t>(number) << 1 ^ static_cast<uint64_t>(number >> 63);
}
inline int64_t unfolded(uint64_t number) {
    return static_cast<int64_t>(number >> 1 ^ (0 - (number & 1)));
}

} // namespace pouch::wire
