// Telling a client where and why a walk failed. The plug-in hands up a status only: the place is read off the walk
// record as it stood at the last error mark or match of names, whichever came later, and the text off err_msg and
// err_info.
#include <algorithm>
#include <cstring>

#include "schema/schema.h"
#include "session_body.h"

namespace zmf {

namespace {

constexpr size_t most_keys_shown = 8;

// The row of a node in the OpenConfig tables, as far as it is known there.
struct cursor {
    const schema::model *model = nullptr;
    const schema::node *node = nullptr;
};

cursor top_cursor(const zmf_datatree &top) {
    const schema::model *model = schema::root_of(top.tag, top.ns == nullptr ? "" : top.ns);
    return model == nullptr ? cursor{} : cursor{model, schema::child(nullptr, *model, top.tag)};
}

cursor child_cursor(const cursor &parent, const char *tag) {
    if (parent.node == nullptr)
        return {};
    const schema::node *node = schema::child(parent.node, *parent.model, tag);
    return node == nullptr ? cursor{} : cursor{parent.model, node};
}

bool is_key(const zmf_datatree &child, const cursor &list) {
    if (child.tag == nullptr || !child.has_value || child.value == nullptr)
        return false;
    cursor row = child_cursor(list, child.tag);
    return child.is_key || (row.node != nullptr && row.node->is_key);
}

// The keys of a list node, the first of each name.
std::vector<const zmf_datatree *> keys_of(const zmf_datatree &list, const cursor &row) {
    std::vector<const zmf_datatree *> keys;
    child_range children = children_of(&list);
    for (uint32_t i = 0; i < children.count && keys.size() < most_keys_shown; ++i) {
        const zmf_datatree &child = children.nodes[i];
        bool is_new = is_key(child, row) && std::none_of(keys.begin(), keys.end(), [&](const zmf_datatree *key) {
                          return std::strcmp(key->tag, child.tag) == 0;
                      });
        if (is_new)
            keys.push_back(&child);
    }
    return keys;
}

class path_writer {
public:
    explicit path_writer(failure &out) : out_(out) {}

    // A node of the walk record, or a child of the last one.
    void step(const zmf_datatree &node, bool is_list) {
        if (node.tag == nullptr)
            return;
        row_ = at_top_ ? top_cursor(node) : child_cursor(row_, node.tag);
        at_top_ = false;
        name(node.tag);
        out_.ns = node.ns == nullptr ? "" : node.ns;
        out_.value = node.has_value && node.value != nullptr ? node.value : "";
        if (is_list || (row_.node != nullptr && row_.node->what == schema::kind::list))
            for (const zmf_datatree *key : keys_of(node, row_))
                predicate(*key);
    }

    void name(const std::string &tag) {
        out_.path += '/' + tag;
        out_.leaf_or_tag = tag;
        out_.value.clear();
    }

private:
    void predicate(const zmf_datatree &key) {
        char quote = std::strchr(key.value, '\'') == nullptr ? '\'' : '"';
        out_.path += std::string("[") + key.tag + '=' + quote + key.value + quote + ']';
    }

    failure &out_;
    cursor row_;
    bool at_top_ = true;
};

const zmf_datatree *child_named(const zmf_datatree *node, const char *tag) {
    child_range children = children_of(node);
    for (uint32_t i = 0; tag != nullptr && i < children.count; ++i)
        if (children.nodes[i].tag != nullptr && std::strcmp(children.nodes[i].tag, tag) == 0)
            return &children.nodes[i];
    return nullptr;
}

// A text that was stored before the last match belongs to an earlier refusal, one inside a fall-through that went on.
bool text_is_fresh(const session::body &s) {
    return s.last_text > s.last_match.event;
}

const zmf_datatree *failing_child(const session::body &s, size_t depth) {
    if (depth == 0)
        return nullptr;
    const zmf_datatree *top = s.frames[depth - 1].node;
    bool marked = s.last_mark.event > s.last_match.event;
    const zmf_datatree *child = marked && text_is_fresh(s) ? child_named(top, s.req.err_msg) : nullptr;
    if (child == nullptr && s.last_match.depth == depth)
        child = child_named(top, s.last_match.text);
    return child;
}

void write_place(const session::body &s, rcode status, failure &out) {
    path_writer path(out);
    bool at_leafref = status == rc_leafref_mismatch && !s.last_leafref.leaf.empty();
    size_t depth = at_leafref                               ? s.last_leafref.depth
                   : s.last_mark.event > s.last_match.event ? s.last_mark.depth
                                                            : s.last_match.depth;
    for (size_t i = 0; i < depth; ++i)
        if (s.frames[i].node != nullptr)
            path.step(*s.frames[i].node, s.frames[i].kind == ZMF_HIER_LIST);
    if (depth == 0 && s.walked_top != nullptr)
        path.step(*s.walked_top, false);
    if (at_leafref) {
        path.name(s.last_leafref.container);
        path.name(s.last_leafref.leaf);
    } else if (const zmf_datatree *child = failing_child(s, depth)) {
        path.step(*child, false);
    }
}

std::string client_text(const session::body &s, rcode status) {
    if (status == rc_leafref_mismatch)
        return s.last_leafref.message;
    if (status == RC_NAMESPACE_MISSING && s.req.err_info != nullptr)
        return s.req.err_info;
    if (!text_is_fresh(s))
        return {};
    const char *text = s.req.err_msg != nullptr ? s.req.err_msg : s.req.err_info;
    return text == nullptr ? "" : text;
}

} // namespace

failure session::describe(rcode status) const {
    failure out;
    out.status = status;
    write_place(*body_, status, out);
    out.message = client_text(*body_, status);
    return out;
}

} // namespace zmf
