// Requests as they come in: read whole from a file or standard input, recognised as XML or JSON, and made a tree.
#pragma once

#include <cstddef>
#include <string>

#include "request.h"
#include "zmf/tree.h"

namespace ocmap {

// Input that cannot be used: "name:line:column: reason", or "name: reason" where there is no position.
struct bad_input {
    std::string text;
};

struct request_file {
    zmf::fixed_tree tree;
    format form;
    size_t bytes;
};

std::string name_of(const std::string &file); // for messages

// `name` is a path, or "-" for standard input. Throws bad_input.
request_file load_request(const std::string &name, purpose what);

// The same in two steps, for a request that is wanted more than once: a walk leaves its marks in the tree.
struct input_bytes {
    std::string name; // for messages
    std::string text;
};
input_bytes load_bytes(const std::string &name, purpose what);
request_file make_request(const input_bytes &input, purpose what);

} // namespace ocmap
