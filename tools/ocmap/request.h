// Requests of a client, NETCONF XML or RFC 7951 JSON, read into a tree that the walkers can take.
//
// Both forms give the same tree. A node carries its local name and namespace URI; its own operation where the client
// wrote one, and nothing where not (create counts as merge); and its text as it was written, byte for byte, but that
// white space around what an XML read matches is left out. Nodes that the models do not know are taken in either shape:
// it is the walk that refuses or ignores them.
//
// In XML an element with text has a value. Without text a leaf has none: a read selects it, a delete needs no more.
// White space alone counts as no text. Only an edit that does not delete takes both as the value of a leaf of type
// string.
//
// In JSON every scalar but null is a value. In a read null stands for a leaf that is only selected, and {} for a
// container; in an edit [null] stands for a leaf of the empty type. An annotation without its leaf deletes that leaf.
//
// In values of identities the XML prefix, or the module name in JSON, is split off into the namespace of the value.
//
// A power in dBm, "-3.5", becomes whole hundredths, "-350", which is what a walk takes.
//
// A request has at most 64 MiB and 1,000,000 nodes, 64 inside one another. An XML tag has at most 100 attributes, and
// an XML request 100,000 different names, since the parser's time grows with their squares.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "zmf/tree.h"

namespace ocmap {

enum class format { xml, json };

inline constexpr size_t largest_request = size_t{64} << 20;
inline constexpr size_t largest_native = (size_t{1} << 31) - 1;

// A request that cannot be used. Lines and columns count from 1, columns in characters.
struct input_error {
    size_t line, column;
    std::string text;
};

// What the bytes are for. In all but edits operations are refused and leaves may stand without value.
enum class purpose {
    read,
    edit,               // create counts as merge
    edit_after_creates, // create stays op_create, for who can tell what is there already
    native              // native data: any top node, of any size
};
inline constexpr uint32_t op_create = 2; // beside the operations of zmf.h

zmf::fixed_tree read_request(std::string_view bytes, format form, purpose what); // throws input_error
inline zmf::fixed_tree read_request(std::string_view bytes, format form, bool is_read) {
    return read_request(bytes, form, is_read ? purpose::read : purpose::edit);
}

} // namespace ocmap
