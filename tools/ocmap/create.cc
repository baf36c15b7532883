#include "create.h"

#include <cstring>
#include <string>
#include <utility>

#include "request_tree.h"
#include "schema/schema.h"

namespace ocmap {
namespace {

using zmf::output_node;
using zmf::output_tree;

const char *ns_of(const zmf_datatree &node) {
    return node.ns == nullptr ? "" : node.ns;
}

// Calls `run` with each node to be created and the path to it, keys included.
template <typename action>
class create_finder {
public:
    explicit create_finder(action run) : run_(run) {}

    void look_at(zmf_datatree &top) {
        if (const schema::model *model = schema::root_of(top.tag, ns_of(top)))
            visit(top, *model, &model->nodes.front());
    }

private:
    // What the models do not know is not looked at: the walk refuses it.
    void visit(zmf_datatree &node, const schema::model &model, const schema::node *row) {
        const size_t length = path_.size();
        path_.append("/").append(node.tag);
        for (uint32_t i = 0; row->what == schema::kind::list && i < node.child_count; ++i)
            append_key(node.children[i], model, row);
        if (node.op == op_create)
            run_(node, *row, std::as_const(path_));
        for (uint32_t i = 0; i < node.child_count; ++i)
            if (const schema::node *child = schema::child(row, model, node.children[i].tag))
                visit(node.children[i], model, child);
        path_.resize(length);
    }

    void append_key(const zmf_datatree &child, const schema::model &model, const schema::node *list) {
        const schema::node *row = schema::child(list, model, child.tag);
        if (row != nullptr && row->is_key && child.value != nullptr)
            path_.append("[").append(child.tag).append("='").append(comparable(row, child.value)).append("']");
    }

    action run_;
    std::string path_;
};

void find_creates(const request_file &request, auto run) {
    create_finder finder(run);
    for (uint32_t i = 0; i < request.tree.count(); ++i)
        finder.look_at(request.tree.tops()[i]);
}

bool has_creates(const request_file &request) {
    bool is_any = false;
    find_creates(request, [&](auto &, auto &, auto &) { is_any = true; });
    return is_any;
}

// All that the device has below the request's top nodes.
void read_tops(road &road, const request_file &request, output_tree &reply) {
    const request_file tops = tops_of(request);
    zmf::session session(OP_GET_CONFIG);
    road.read(session, tops, 0, reply);
}

output_node same_value(output_node above, const zmf_datatree &wanted, const schema::node &row) {
    if (!above || wanted.value == nullptr)
        return {};
    for (output_node node = above.first_child(); node; node = node.next_sibling())
        if (std::strcmp(node.tag(), wanted.tag) == 0 && node.value() != nullptr &&
            comparable(&row, node.value()) == comparable(&row, wanted.value))
            return node;
    return {};
}

// A container is in the reply if something stands in it; of a leaf-list it is the value that counts.
output_node existing(output_tree &held, const zmf_datatree &wanted, const schema::node &row, const std::string &path) {
    const output_node found = held.find(path.c_str());
    if (!found || row.what != schema::kind::leaf_list)
        return found;
    return same_value(found.parent(), wanted, row);
}

} // namespace

request_file tops_of(const request_file &request) {
    zmf::tree_builder tops;
    for (uint32_t i = 0; i < request.tree.count(); ++i) {
        tops.open(request.tree.tops()[i].tag, ns_of(request.tree.tops()[i]));
        tops.close();
    }
    return {tops.finish(), request.form, request.bytes};
}

void settle_creates(road &road, request_file &request) {
    if (!has_creates(request))
        return;
    output_tree held;
    read_tops(road, request, held);
    find_creates(request, [&](zmf_datatree &node, const schema::node &row, const std::string &path) {
        if (existing(held, node, row, path))
            throw device::edit_failure{"data-exists", path, node.tag, ns_of(node),
                                       "what is to be created is there already"};
        node.op = OP_MERGE;
    });
}

} // namespace ocmap
