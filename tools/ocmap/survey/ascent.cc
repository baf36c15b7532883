#include "survey/ascent.h"

#include <algorithm>
#include <cstring>

#include "survey/frames.h"

namespace ocmap {
namespace {

// Writes an answer with every leaf of the native models, the entries of a list by the keys that the samples have.
class answer_writer {
public:
    explicit answer_writer(const samples &tries) : tries_(tries) {}

    zmf::fixed_tree write() {
        const auto nodes = schema::native_nodes();
        for (const schema::native_node *top = nodes.data(); top != nodes.data() + nodes.size(); top = top->end)
            write(*top);
        return tree_.finish();
    }

private:
    void write(const schema::native_node &node) {
        if (node.what == schema::kind::list)
            return write_entries(node);
        open(node);
        if (node.what == schema::kind::container)
            write_children(node, 0);
        else
            tree_.value(tries_.native_value(node));
        tree_.close();
    }

    void open(const schema::native_node &node) { tree_.open(node.tag, schema::ns_of_module(node.module)); }

    void write_children(const schema::native_node &node, size_t left_out) {
        for (const schema::native_node *child = &node + 1 + left_out; child != node.end; child = child->end)
            write(*child);
    }

    void write_entries(const schema::native_node &list) {
        const auto keys = schema::native_keys(&list);
        const std::vector<std::string> first =
            keys.empty() ? std::vector<std::string>{""} : tries_.native_keys(keys[0]);
        for (const std::string &value : first) {
            open(list);
            for (size_t i = 0; i < keys.size(); ++i)
                write_key(keys[i], i == 0 ? value : tries_.native_keys(keys[i]).front());
            write_children(list, keys.size());
            tree_.close();
        }
    }

    void write_key(const schema::native_node &key, const std::string &value) {
        open(key);
        tree_.value(value);
        tree_.close();
    }

    const samples &tries_;
    zmf::tree_builder tree_;
};

std::string without_keys(std::string_view path) {
    std::string bare;
    size_t depth = 0;
    for (const char letter : path) {
        depth += letter == '[';
        if (depth == 0)
            bare += letter;
        depth -= letter == ']' && depth != 0;
    }
    if (bare.ends_with('/'))
        bare.pop_back();
    return bare;
}

struct key_value {
    std::string name, value;
};

// The keys that a path ends in, "/a[k=1]/b[l=2]/".
std::vector<key_value> last_keys(std::string_view path) {
    if (path.ends_with('/'))
        path.remove_suffix(1);
    std::vector<key_value> keys;
    while (path.ends_with(']')) {
        const size_t open = path.rfind('[');
        const size_t equals = path.find('=', open);
        if (open == std::string_view::npos || equals == std::string_view::npos)
            break;
        keys.push_back({std::string(path.substr(open + 1, equals - open - 1)),
                        std::string(path.substr(equals + 1, path.size() - equals - 2))});
        path = path.substr(0, open);
    }
    return keys;
}

// The same but for the values: each entry of a list tells it again.
bool is_same(const filling &left, const filling &right) {
    return left.path == right.path && left.native == right.native && left.operation == right.operation &&
           left.callback == right.callback;
}

// Listens to the walk: where it stands by what it pushes and matches, who is at work by the log lines.
class listener {
public:
    explicit listener(std::vector<filling> &into) : into_(into) {}

    void line(std::string_view text) { frames_.take(text); }

    void call(const zmf::call &made) {
        switch (made.op) {
        case zmf::operation::add_to_hierarchy:
            open_.push_back(made.node);
            break;
        case zmf::operation::remove_from_hierarchy:
            open_.pop_back();
            break;
        case zmf::operation::match:
            if (made.result != 0)
                matched_ = made.path;
            break;
        case zmf::operation::add_path:
        case zmf::operation::search_or_add_list:
        case zmf::operation::xpath:
        case zmf::operation::stitch:
            keep(made);
            break;
        default:
            break;
        }
    }

private:
    void keep(const zmf::call &made) {
        filling kept;
        const size_t at = frames_.inner_callback();
        if (at != frames::npos) {
            kept.callback = frames_[at];
            for (size_t i = at + 1; i < frames_.depth(); ++i)
                kept.conversions.emplace_back(frames_[i]);
        }
        take_place(kept, kept.callback.find("_leaf_lvl") != std::string::npos);
        kept.path = without_keys(made.path == nullptr ? "" : made.path);
        kept.operation = zmf::operation_name(made.op);
        if (made.key != nullptr)
            keep_key(kept, made.key, made.value);
        else if (made.value != nullptr)
            kept.to = made.value;
        for (const auto &[name, value] : last_keys(made.path == nullptr ? "" : made.path))
            keep_key(kept, name, value.c_str());
        put(std::move(kept));
    }

    // An entry that is made by its key has that leaf, too.
    void keep_key(filling entry, const std::string &name, const char *value) {
        entry.path += "/" + name;
        if (value != nullptr)
            entry.to = value;
        put(std::move(entry));
    }

    void put(filling kept) {
        if (std::ranges::none_of(into_, [&](const filling &each) { return is_same(each, kept); }))
            into_.push_back(std::move(kept));
    }

    void take_place(filling &kept, bool is_leaf) const {
        const zmf_datatree *leaf = nullptr;
        for (const zmf_datatree *node : open_)
            kept.native.append("/").append(node->tag);
        if (is_leaf && !open_.empty())
            leaf = child(*open_.back());
        if (leaf != nullptr) {
            kept.native.append("/").append(leaf->tag);
            if (leaf->value != nullptr)
                kept.from = leaf->value;
        }
        const zmf_datatree *last = leaf != nullptr || open_.empty() ? leaf : open_.back();
        const char *module = last == nullptr || last->ns == nullptr ? nullptr : schema::module_of_ns(last->ns);
        kept.module = module == nullptr ? "" : module;
    }

    const zmf_datatree *child(const zmf_datatree &above) const {
        for (uint32_t i = 0; above.has_children && i < above.child_count; ++i)
            if (matched_ == above.children[i].tag)
                return &above.children[i];
        return nullptr;
    }

    std::vector<filling> &into_;
    std::vector<const zmf_datatree *> open_;
    std::string matched_;
    frames frames_;
};

} // namespace

ascent walk_up(const zmf::plugin &by, const samples &tries) {
    ascent made;
    listener to(made.fillings);
    const zmf::fixed_tree answer = answer_writer(tries).write();
    zmf::session session(OP_GET);
    session.ring([&](std::string_view line) { to.line(line); });
    session.record([&](const zmf::call &call) { to.call(call); });
    zmf::output_tree reply;
    made.status = by.up(session, answer, reply, true);
    if (made.status != RC_OK)
        made.failure = session.describe(made.status);
    return made;
}

} // namespace ocmap
