// The state store as the plug-in's objects meet it in these tests: its library, and items of one field.
#pragma once

#include <string>

namespace state_store_items {

// Whether the library is there, and how often it was asked for: the plug-in's `access` comes here.
extern bool library_is_there;
extern int times_asked;

// An encoded record with a number in one field, given as "OpticsType" or "TransportInfo/MaintenanceModeEnabled".
std::string record_with(const char *record, const std::string &field, const std::string &number);

void hold(const std::string &path, const std::string &encoded); // on the current device
void register_records();                                        // all five groups, once

} // namespace state_store_items
