// The device description: what kind of router it is, what stands on it, and what it is configured to. Kept in a JSON
// file (docs/device-file.md).
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "device/native_data.h"
#include "device/state_json.h"

namespace device {

struct description {
    uint32_t router_type = 0;
    bool optical_terminal_device = false;
    bool legacy_optical_terminal_device = false;
    bool flex_bins = true;                    // performance is kept in flex bins; else as 30-second history
    std::map<uint32_t, std::string> channels; // logical channel number -> native name, "CoherentDSP0/0/0/1"
    bool interface_registry = true;           // it answers
    std::vector<std::string> interfaces;      // that the registry knows; their handles count from 1
    record config;                            // native configuration
    record operational;                       // native data that it reports
    bool state_store_installed = false;       // the library of the state store is there
    state_items state_store;                  // what it holds
    bool operator==(const description &) const = default;
};

// What is wrong with a description, and where.
struct description_error {
    std::string file;
    size_t line = 0, column = 0; // 0: no position (a file that cannot be read)
    std::string text;
};

// Both throw description_error. Unknown members, wrong types, duplicate members and numbers out of range are errors.
description read_file(const std::string &file);
description parse(std::string_view json, const std::string &name_for_errors);
const description &lab(); // examples/lab.json, compiled in

// What parse() makes the same description of.
std::string to_json(const description &d);

// Replaces a file, or makes it: whole, or not at all. Throws description_error, and the file is as it was.
void write_file(const description &d, const std::string &file);

// Makes `d` what hardware facts and the interface map answer from, until the next call. Not thread-safe. The state
// store is empty until the second call, which needs the record types that the plug-in registers when it is loaded; it
// throws description_error for an item that is no such record.
void install(const description &d);
void install_state_store(const description &d, const std::string &name_for_errors);

} // namespace device
