// Loads the plug-in as a device's framework does, and runs requests through its roots.
#pragma once

#include <memory>
#include <string>

#include "session.h"
#include "tree.h"
#include "zmf.h"

namespace zmf {

enum class performance { flex_bins, history };

class plugin {
public:
    // Registers the record types of the plug-in, as a loader does. Throws plugin_error with the file and the loader's
    // words, or the record that is refused.
    explicit plugin(const std::string &file);

    void *symbol(const char *name) const noexcept;            // null: not exported
    zmf_node_fn node_function(const std::string &name) const; // throws plugin_error naming the missing function

    // Tells the plug-in which tables of performance the device keeps.
    void serve(performance kept) const noexcept;

    // Walks each top node by the root of its model, `components` and `interfaces` entry by entry (component_road.h,
    // interface_road.h), in order, and stops at the first status that is not 0. Top nodes are those of
    // schema::root_of; others are refused before the walk (throws plugin_error).
    rcode down(session &s, const fixed_tree &request, output_tree &out) const;

    // Walks native top nodes up, root by root in the order that replies rely on: components before logical channels. A
    // root that the plug-in does not export is passed over, as are top nodes that no root takes. The request record
    // stays that of the walk down; all walk words are zero before each root. Stops at the first status that is not 0.
    rcode up(session &s, const fixed_tree &native, output_tree &out, bool with_operational) const;
    bool takes_up(const zmf_datatree &top) const; // whether a root is there for a native top node

private:
    zmf_node_fn up_function(const char *name) const;
    void register_records() const;

    struct unload {
        void operator()(void *handle) const;
    };

    std::string file_;
    std::unique_ptr<void, unload> handle_;
};

struct plugin_error {
    std::string text;
};

} // namespace zmf
