// What the record codec and the state store answer when something is wrong. A status more: its line here, its sentence
// in status.cc.
#pragma once

#include "zmf.h"

namespace pouch {

const char *sentence(rcode status); // those of zmf.h too; null: unknown
const char *name(rcode status);     // of those below: "RC_POUCH_BAD_TEXT"; null: another
bool is_of_item(rcode status);      // it is about one item of the state store, which is missing or cannot be decoded

// Registration.
inline constexpr rcode rc_already_open = 0x5a490100u;
inline constexpr rcode rc_not_open = 0x5a490200u;
inline constexpr rcode rc_bad_descriptor = 0x5a490300u;
inline constexpr rcode rc_registered_twice = 0x5a490400u;
inline constexpr rcode rc_bad_schema = 0x5a490500u;
inline constexpr rcode rc_schemas_differ = 0x5a490600u;
inline constexpr rcode rc_bad_members = 0x5a490700u;

// Decoding; encoding shares those that a record can be wrong by.
inline constexpr rcode rc_bad_call = 0x5a4a0100u;
inline constexpr rcode rc_not_registered = 0x5a4a0200u;
inline constexpr rcode rc_no_schema = 0x5a4a0300u;
inline constexpr rcode rc_not_encoded = 0x5a4a0400u;
inline constexpr rcode rc_other_record = 0x5a4a0500u;
inline constexpr rcode rc_wrong_length = 0x5a4a0600u;
inline constexpr rcode rc_damaged = 0x5a4a0700u;
inline constexpr rcode rc_cut_short = 0x5a4a0800u;
inline constexpr rcode rc_left_over = 0x5a4a0900u;
inline constexpr rcode rc_bad_number = 0x5a4a0a00u;
inline constexpr rcode rc_bad_flag = 0x5a4a0b00u;
inline constexpr rcode rc_bad_text = 0x5a4a0c00u;
inline constexpr rcode rc_too_many = 0x5a4a0d00u;
inline constexpr rcode rc_too_deep = 0x5a4a0e00u;
inline constexpr rcode rc_too_big = 0x5a4a0f00u;
inline constexpr rcode rc_bad_list = 0x5a4a1000u;

} // namespace pouch

namespace statedb {

inline constexpr rcode rc_not_installed = 0x5a4b0100u;
inline constexpr rcode rc_bad_call = 0x5a4b0200u;
inline constexpr rcode rc_not_bound = 0x5a4b0300u;
inline constexpr rcode rc_no_item = 0x5a4b0400u;

} // namespace statedb
