// Replies in OpenConfig, as a client sees them: what a selection holds of a tree, keys first and the rest in model
// order; what no table knows comes behind, in order of creation. A form of replies more: a reply_writer.
#pragma once

#include <vector>

#include "narrow.h"
#include "output.h"
#include "schema/schema.h"
#include "zmf/tree.h"

namespace ocmap {

struct reply_name {
    const char *tag;
    const char *module; // the namespace itself where no module is known by it
    const char *ns;
};

struct reply_value {
    const char *text;
    const char *ns; // of an identity; null: none
};

// Told a reply piece by piece. The entries of a list come between open_list and close_list, each as an object, the
// values of a leaf-list likewise, each as a leaf.
class reply_writer {
public:
    virtual ~reply_writer() = default;
    virtual void open(const reply_name &name) = 0;
    virtual void close() = 0;
    virtual void open_list(const reply_name &name) = 0;
    virtual void close_list() = 0;
    virtual void leaf(const reply_name &name, schema::type type, const reply_value &value) = 0;
};

void tell_reply(const zmf::output_tree &reply, const selection &told, reply_writer &to);

// A `data` element of the NETCONF base namespace around the top nodes. Throws print_error.
void print_reply_xml(const zmf::output_tree &reply, const selection &told, output &out);

// RFC 7951.
void print_reply_json(const zmf::output_tree &reply, const selection &told, output &out);

} // namespace ocmap
