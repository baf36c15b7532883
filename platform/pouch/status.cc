// Statuses in words.
#include "pouch/status.h"

#include <algorithm>
#include <iterator>

#include "pouch.h"

namespace {

struct sentence_row {
    rcode status;
    const char *sentence;
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
    {pouch::rc_already_open, "a registration of records is open already"},
    {pouch::rc_not_open, "no registration of records is open"},
    {pouch::rc_bad_descriptor, "the record's descriptor lacks a text or has another format"},
    {pouch::rc_registered_twice, "the record stands twice in its registration"},
    {pouch::rc_bad_schema, "the record's schema cannot be read"},
    {pouch::rc_schemas_differ, "the record's full and packed schema do not say the same"},
    {pouch::rc_bad_members, "the record's member table does not fit its schema"},
    {pouch::rc_bad_call, "the codec was called without data, record or descriptor"},
    {pouch::rc_not_registered, "the record was never registered: its registration function has to be called first"},
    {pouch::rc_no_schema, "the record was registered without a schema"},
    {pouch::rc_not_encoded, "the data is no encoded record of this version"},
    {pouch::rc_other_record, "the data is of another record, or of another schema of this one"},
    {pouch::rc_wrong_length, "the data is shorter or longer than it says"},
    {pouch::rc_damaged, "the data was damaged"},
    {pouch::rc_cut_short, "the data ends within the record"},
    {pouch::rc_left_over, "data is left over behind the record"},
    {pouch::rc_bad_number, "a number does not fit its field"},
    {pouch::rc_bad_flag, "a truth value is neither 0 nor 1"},
    {pouch::rc_bad_text, "a text holds a zero byte or does not fit its field"},
    {pouch::rc_too_many, "a list has more entries than can be in the data"},
    {pouch::rc_too_deep, "the record is nested deeper than 32"},
    {pouch::rc_too_big, "the record takes more than 16 MiB"},
    {pouch::rc_bad_list, "a list of the record has a count and no entries"},
    {statedb::rc_not_installed, "the state store is not installed"},
    {statedb::rc_bad_call, "the state store was called without path, binding or place for the answer"},
    {statedb::rc_not_bound, "the binding to the state store is not open"},
    {statedb::rc_no_item, "the state store has no such item"},
};

} // namespace

const char *pouch::sentence(rcode status) {
    const auto *const found = std::ranges::find(sentences, status, &sentence_row::status);
    return found == std::end(sentences) ? nullptr : found->sentence;
}

const char *rcode_strerror(rcode status) {
    const char *known = pouch::sentence(status);
    return known == nullptr ? "unknown status" : known;
}
