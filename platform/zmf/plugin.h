// Loads the plug-in as a device's framework does, and runs requests through its roots.
#pragma once

#include <memory>
#include <string>

#include "zmf.h"
#include "session.h"
#include "tree.h"

namespace zmf {

class plugin {
public:
    // Throws plugin_error with the file and the loader's words.
    explicit plugin(const std::string &file);
    ~plugin();

    void *symbol(const char *name) const noexcept; // null: not exported
    zmf_node_fn node_function(const std::string &name) const; // throws plugin_error naming the missing function

    // Walks each top node by the root of its model, in order, and stops at the first status that is not 0. Top nodes
    // are those of schema::root_of; others are refused before the walk (throws plugin_error).
    rcode down(session &s, const fixed_tree &request, output_tree &out) const;

private:
    void *handle_;
};

struct plugin_error {
    std::string text;
};

} // namespace zmf
