// What a simulated device holds: its description, answers from the native data in it, and edits of the configuration.
// Requests and edits come as the native trees that a walk down made; answers are native trees to be walked up.
#pragma once

#include <optional>
#include <string>

#include "device/device.h"
#include "zmf/tree.h"

namespace device {

// Why an edit was refused, in the words of NETCONF.
struct edit_failure {
    std::string error_tag; // "data-missing", "missing-element", "invalid-value", "unknown-element",
                           // "operation-not-supported"
    std::string path;      // native, with keys: "/logical-channels/channel[channel-index='5']/admin-state"
    std::string leaf;      // last step of `path` without keys: the leaf, list or container that was refused
    std::string ns;        // namespace of that node
    std::string text;      // a sentence
};

class store {
public:
    explicit store(description held);
    const description &held() const noexcept; // the native configuration as it is now is part of it

    // The native nodes that a read asks for, one top node for each native top container that has something of it.
    // Operational modules are asked only if `with_operational`, flex bins only of a device that keeps them.
    //
    // Keys that are not empty restrict; every other leaf is a selection, whatever its value. An entry with nothing but
    // keys selects all below it, as do an empty container and a leaf-list; an entry without anything selects nothing.
    // Several entries of a list are a union. Entries come with all their keys, these first, and with the leaves that
    // the schema has told of each entry; they are ordered by key (numbers by value), or stand as they were described
    // where they have none, all other nodes in model order.
    zmf::fixed_tree answer(const zmf::output_tree &native_request, bool with_operational) const;

    // Does what the nodes of an edit ask, in their order, or nothing at all and says why.
    //
    // - A node that came without source asks nothing. An entry comes into being if something below it is merged or
    //   replaced, or if it has nothing but keys and these came with a source.
    // - A delete or remove takes all that stands below its target, with the nodes in it that carry no operation of
    // their
    //   own; what is merged there later makes it again. A delete
    //   of what is not there is refused ("data-missing"), a remove is silent. Without keys it means all entries.
    // - A delete or remove of a leaf with a value writes that value, of a leaf-list it takes that value away; below a
    //   removed node it does nothing.
    // - A merge or replace without value is refused ("invalid-value") with the leaf's name.
    std::optional<edit_failure> apply(const zmf::output_tree &native_edit);

    // Writes the description with its configuration to a file, as write_file does.
    void save(const std::string &file) const;

private:
    description held_;
};

} // namespace device
