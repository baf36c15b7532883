// Values to try a node with: keys of entries that a device has, and values that a leaf takes.
// To add one: a leaf that refuses the sample of its type needs a row in samples.cc.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "device/device.h"
#include "schema/schema.h"

namespace ocmap {

// A key of the entry of a list that is meant, the list by its tag.
struct chosen_key {
    std::string list, name, value;
    bool operator==(const chosen_key &) const = default;
};

// Whose leaf is tried: an entry, or all of them, which only a read can name.
struct subject {
    std::string name; // "all", "ethernet", "one"; "given" by a client; empty where there is nothing to choose
    std::string told; // for people: "ethernet channel 100"
    std::vector<chosen_key> keys;
    bool is_all = false;
};

struct sample {
    std::string value;
    const char *module = nullptr; // of an identity
};

class samples {
public:
    explicit samples(const device::description &on);

    // All of them first, then one channel of each class that the device has. Keys that a client gave, of lists above
    // the node, leave one to choose.
    std::vector<subject> subjects(const schema::node &node, const std::vector<chosen_key> &given = {}) const;

    sample value(const schema::node &leaf, const subject &whose) const;
    sample key(const schema::node &key, const subject &whose) const;

    std::string native_value(const schema::native_node &leaf) const;
    // Values of a list's one key, or of its first where it has several; an entry for each.
    std::vector<std::string> native_keys(const schema::native_node &key) const;

private:
    std::string component(const subject &whose) const;

    std::vector<subject> channels_;
    std::string ethernet_, coherent_, otu_, odu_;
    std::string port_;      // "0/0/0/12", that of the coherent controller
    std::string component_; // "0/0-OpticalChannel0/0/0/12"
};

std::string path_of(const schema::node &node);
std::string path_of(const schema::native_node &node);

} // namespace ocmap
