// Paths of the framework: "/a/mod:b[key='value']/c". A leading "/" may miss and a trailing one may stand; module
// prefixes are dropped, since nodes are found by local name.
#pragma once

#include <string_view>
#include <vector>

namespace zmf {

struct path_key {
    std::string_view name;
    std::string_view value; // without quotes
};

struct path_step {
    std::string_view name;
    std::vector<path_key> keys;
};

// Fills `steps`, whose texts point into `path`. False for a path without steps or with a step that cannot be read.
//
// A value may be quoted or bare. A bare one may hold "/", "#", "[" and "]": it ends at the last "]" that is followed by
// "/" or the end, but before a following step that has keys of its own.
bool read_path(std::string_view path, std::vector<path_step> &steps);

} // namespace zmf
