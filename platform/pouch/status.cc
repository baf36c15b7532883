// Statuses in words.
#include "pouch/status.h"

#include <algorithm>
#include <iterator>

#include "pouch.h"

namespace {

struct sentence_row {
    rcode status;
    const char *sentence;
    const char *name = nullptr; // of those that zmf.h has none for
};

constexpr sentence_row sentences[] = {
    {RC_OK, "success"},
    {RC_SUBTREE_ERROR, "a subtree does not fit"},
    {RC_INVALID_ARGUMENTS, "invalid arguments"},
    {RC_NO_MEMORY, "out of memory"},
    {RC_UNSUPPORTED_NODE, "the node is not supported"},
    {RC_LIST_KEY_ERROR, "a list key is missing or wrong"},
    {RC_KEY_DELETE, "a list key cannot be deleted"},
    {RC_NAMESPACE_MISSING, "a value has no namespace"},
    {RC_NOT_MAPPED, "the node is not mapped"},
    {RC_UNSUPPORTED_AUGMENT, "the augmenting node is not supported"},
    {RC_LEAF_EXISTS, "the leaf exists"},
    {RC_VALUE_OUT_OF_RANGE, "the value is out of range"},
    {RC_STATEDB_UNAVAILABLE, "the library of the state store is not there"},
    {OCOPTICAL_BAD_NAME, "the name does not convert"},
    {pouch::rc_already_open, "a registration of records is open already", "RC_POUCH_ALREADY_OPEN"},
    {pouch::rc_not_open, "no registration of records is open", "RC_POUCH_NOT_OPEN"},
    {pouch::rc_bad_descriptor, "the record's descriptor lacks a text or has another format", "RC_POUCH_BAD_DESCRIPTOR"},
    {pouch::rc_registered_twice, "the record stands twice in its registration", "RC_POUCH_REGISTERED_TWICE"},
    {pouch::rc_bad_schema, "the record's schema cannot be read", "RC_POUCH_BAD_SCHEMA"},
    {pouch::rc_schemas_differ, "the record's full and packed schema do not say the same", "RC_POUCH_SCHEMAS_DIFFER"},
    {pouch::rc_bad_members, "the record's member table does not fit its schema", "RC_POUCH_BAD_MEMBERS"},
    {pouch::rc_bad_call, "the codec was called without data, record or descriptor", "RC_POUCH_BAD_CALL"},
    {pouch::rc_not_registered, "the record was never registered: its registration function has to be called first",
     "RC_POUCH_NOT_REGISTERED"},
    {pouch::rc_no_schema, "the record was registered without a schema", "RC_POUCH_NO_SCHEMA"},
    {pouch::rc_not_encoded, "the data is no encoded record of this version", "RC_POUCH_NOT_ENCODED"},
    {pouch::rc_other_record, "the data is of another record, or of another schema of this one",
     "RC_POUCH_OTHER_RECORD"},
    {pouch::rc_wrong_length, "the data is shorter or longer than it says", "RC_POUCH_WRONG_LENGTH"},
    {pouch::rc_damaged, "the data was damaged", "RC_POUCH_DAMAGED"},
    {pouch::rc_cut_short, "the data ends within the record", "RC_POUCH_CUT_SHORT"},
    {pouch::rc_left_over, "data is left over behind the record", "RC_POUCH_LEFT_OVER"},
    {pouch::rc_bad_number, "a number does not fit its field", "RC_POUCH_BAD_NUMBER"},
    {pouch::rc_bad_flag, "a truth value is neither 0 nor 1", "RC_POUCH_BAD_FLAG"},
    {pouch::rc_bad_text, "a text holds a zero byte or does not fit its field", "RC_POUCH_BAD_TEXT"},
    {pouch::rc_too_many, "a list has more entries than can be in the data", "RC_POUCH_TOO_MANY"},
    {pouch::rc_too_deep, "the record is nested deeper than 32", "RC_POUCH_TOO_DEEP"},
    {pouch::rc_too_big, "the record takes more than 16 MiB", "RC_POUCH_TOO_BIG"},
    {pouch::rc_bad_list, "a list of the record has a count and no entries", "RC_POUCH_BAD_LIST"},
    {statedb::rc_not_installed, "the state store is not installed", "RC_STATEDB_NOT_INSTALLED"},
    {statedb::rc_bad_call, "the state store was called without path, binding or place for the answer",
     "RC_STATEDB_BAD_CALL"},
    {statedb::rc_not_bound, "the binding to the state store is not open", "RC_STATEDB_NOT_BOUND"},
    {statedb::rc_no_item, "the state store has no such item", "RC_STATEDB_NO_ITEM"},
};

} // namespace

const char *pouch::sentence(rcode status) {
    const auto *const found = std::ranges::find(sentences, status, &sentence_row::status);
    return found == std::end(sentences) ? nullptr : found->sentence;
}

const char *pouch::name(rcode status) {
    const auto *const found = std::ranges::find(sentences, status, &sentence_row::status);
    return found == std::end(sentences) ? nullptr : found->name;
}

bool pouch::is_of_item(rcode status) {
    constexpr rcode family = 0xffff0000u;
    return (status & family) == (rc_bad_call & family) || status == statedb::rc_no_item;
}

const char *rcode_strerror(rcode status) {
    const char *known = pouch::sentence(status);
    return known == nullptr ? "unknown status" : known;
}
