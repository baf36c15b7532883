#include "survey/probe.h"

#include <algorithm>
#include <array>

#include "survey/frames.h"

namespace ocmap {
namespace {

constexpr std::array deed_names{"get-config", "get", "edit", "delete"};
constexpr std::array<uint32_t, 4> op_types{OP_GET_CONFIG, OP_GET, OP_EDIT, OP_EDIT};

// Writes the request: the nodes from the top to the one that is tried, with the keys of the entries.
class request_writer {
public:
    request_writer(const samples &tries, deed what, const subject &whose) : tries_(tries), what_(what), whose_(whose) {}

    zmf::fixed_tree write(const schema::node &node) {
        open_above(node);
        write_target(node);
        for (const schema::node *above = node.parent; above != nullptr; above = above->parent)
            tree_.close();
        return tree_.finish();
    }

private:
    void open_above(const schema::node &node) {
        if (node.parent == nullptr)
            return;
        open_above(*node.parent);
        open_entry(*node.parent, node.is_key ? &node : nullptr);
    }

    void open_entry(const schema::node &node, const schema::node *left_out) {
        tree_.open(node.tag, node.ns);
        if (node.what == schema::kind::list)
            for (const schema::node *key = &node + 1; key->is_key; ++key)
                if (key != left_out)
                    write_key(*key);
    }

    void write_key(const schema::node &key) {
        if (whose_.is_all)
            return;
        tree_.open(key.tag, key.ns);
        tree_.value(tries_.key(key, whose_).value);
        tree_.close();
    }

    void write_target(const schema::node &node) {
        open_entry(node, nullptr);
        if (what_ == deed::erase)
            tree_.operation(OP_DELETE);
        const bool is_leaf = node.what == schema::kind::leaf || node.what == schema::kind::leaf_list;
        if (is_leaf && (what_ == deed::edit || (node.is_key && !whose_.is_all)))
            write_value(node);
        tree_.close();
    }

    void write_value(const schema::node &node) {
        const sample tried = tries_.value(node, whose_);
        tree_.value(tried.value);
        if (tried.module != nullptr)
            tree_.value_namespace(schema::ns_of_module(tried.module));
    }

    const samples &tries_;
    deed what_;
    const subject &whose_;
    zmf::tree_builder tree_;
};

const char *verb_of(const zmf::call &call, deed what) {
    if (call.op == zmf::operation::update_namespace)
        return "renames";
    if (call.source == nullptr)
        return is_read(what) ? "asks" : "sets";
    const uint32_t op = call.source->op_explicit ? call.source->op : uint32_t{OP_MERGE};
    return op == OP_DELETE ? "deletes" : op == OP_REMOVE ? "removes" : op == OP_REPLACE ? "replaces" : "merges";
}

// The framework takes a path without its first "/", and with one at its end.
std::string whole_path(std::string_view written) {
    if (written.ends_with('/'))
        written.remove_suffix(1);
    return (written.starts_with('/') ? "" : "/") + std::string(written);
}

native_call kept(const zmf::call &call, deed what) {
    native_call made;
    made.verb = verb_of(call, what);
    made.path = whole_path(call.path == nullptr ? "" : call.path);
    const char *module = call.ns == nullptr ? nullptr : schema::module_of_ns(call.ns);
    made.module = module != nullptr ? module : call.ns != nullptr ? call.ns : "";
    if (call.value != nullptr)
        made.value = call.value;
    made.is_list = call.list_flag;
    made.status = call.result;
    return made;
}

// Listens to a walk.
class listener {
public:
    listener(std::string callback, deed what, finding &into)
        : callback_(std::move(callback)), what_(what), into_(into) {}

    void line(std::string_view text) {
        frames_.take(text);
        if (!is_own())
            return;
        into_.is_reached = true;
        if (const size_t next = frames_.outer_callback() + 1; next < frames_.depth())
            keep_conversion(std::string(frames_[next]));
    }

    void call(const zmf::call &made) {
        const bool is_kept = made.op == zmf::operation::add_path || made.op == zmf::operation::update_namespace;
        if (is_kept && is_own())
            into_.calls.push_back(kept(made, what_));
    }

private:
    bool is_own() const {
        const size_t at = frames_.outer_callback();
        return at != frames::npos && frames_[at] == callback_;
    }

    void keep_conversion(const std::string &name) {
        if (std::ranges::find(into_.conversions, name) == into_.conversions.end())
            into_.conversions.push_back(name);
    }

    const std::string callback_;
    const deed what_;
    finding &into_;
    frames frames_;
};

} // namespace

const char *name_of(deed what) {
    return deed_names[static_cast<size_t>(what)];
}

bool is_read(deed what) {
    return what == deed::get_config || what == deed::get;
}

finding prober::probe(const schema::node &node, deed what, const subject &whose) const {
    finding found;
    listener to(std::string("ymap_ox_oc_optical_") + node.callback, what, found);
    const zmf::fixed_tree request = request_writer(tries_, what, whose).write(node);
    zmf::session session(op_types[static_cast<size_t>(what)]);
    session.ring([&](std::string_view line) { to.line(line); });
    session.record([&](const zmf::call &call) { to.call(call); });
    zmf::output_tree native;
    found.status = by_.down(session, request, native);
    if (found.status != RC_OK)
        found.failure = session.describe(found.status);
    return found;
}

} // namespace ocmap
