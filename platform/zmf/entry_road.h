// What the roads of `components` and of `interfaces` have in common: requests under a top node, entry by entry. The
// plug-in knows what is added to an entry, not the entry itself: its key is seen to here. To add a road: a class that
// says what becomes of an entry, and its row in plugin.cc.
#pragma once

#include <string_view>

#include "plugin.h"
#include "session.h"
#include "tree.h"
#include "zmf.h"

namespace zmf {

bool is_named(const zmf_datatree &node, std::string_view tag, std::string_view ns);
bool is_deleted(const zmf_datatree &node);  // by its own operation
bool is_replaced(const zmf_datatree &node); // by its own operation

// The list below a top node; its key is `name`.
struct entry_list {
    const char *tag, *ns, *path;
};

class entry_road {
public:
    entry_road(const plugin &by, session &s, output_tree &out, const entry_list &list)
        : by_(by), s_(s), ctx_(s.context()), out_(out), list_(list) {}
    virtual ~entry_road() = default;
    entry_road(const entry_road &) = delete;
    entry_road &operator=(const entry_road &) = delete;

    // Stops at the first status that is not 0. A read that names no entry has one of no name, which stands for all.
    rcode walk(zmf_datatree &top);

protected:
    virtual rcode walk_entry(zmf_datatree &top, zmf_datatree &entry) = 0;
    virtual rcode walk_stranger(zmf_datatree &top, zmf_datatree &child) = 0; // a child of `top` that is no entry

    // Work at an entry whose key is good: `work(name)` with the entry on the walk record. The name is "" where a read
    // gives none.
    template <typename action>
    rcode at_entry(zmf_datatree &top, zmf_datatree &entry, action work) {
        const char *name = "";
        rcode status = enter(top, entry, name);
        if (status == RC_OK)
            status = work(name);
        leave(top, entry);
        return status;
    }

    bool is_own(const zmf_datatree &node, std::string_view tag) const { return is_named(node, tag, list_.ns); }
    bool is_read() const;
    uint32_t kind() const { return s_.request().request->op_type; }

    // Each walk starts afresh, and nothing that it adds falls under what another one opened.
    void start(zmf_datatree &top);

    // A node that a read means without naming it. It stands in the session, since a failure may be told of it.
    static zmf_datatree &meant(zmf_datatree &node, const char *tag, const char *ns);

    rcode refuse(const char *text, rcode status = RC_UNSUPPORTED_NODE);     // at the top of the walk record
    rcode refuse_below(zmf_datatree &container, const zmf_datatree &child); // by the child's name
    rcode call(const char *entry_name, zmf_datatree &node);                 // an exported walker

    const plugin &by_;
    session &s_;
    zmf_map_ctx ctx_;
    output_tree &out_;

private:
    rcode enter(zmf_datatree &top, zmf_datatree &entry, const char *&name);
    rcode check_key(const zmf_datatree &entry, const char *&name);
    void leave(zmf_datatree &top, zmf_datatree &entry);

    const entry_list &list_;
};

} // namespace zmf
