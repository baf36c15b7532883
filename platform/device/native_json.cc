// Reading and writing of native data.
#include "device/native_json.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>

#include "device/text.h"

namespace device {
namespace {

using schema::native_node;

std::string quoted(std::string_view written) {
    return '"' + text::shortened(written) + '"';
}

const native_node *top_at(std::string_view name, native_kind takes, size_t at) {
    const size_t colon = name.find(':');
    if (colon == std::string_view::npos)
        throw json_text::refusal{at, quoted(name) + " is named without its module"};
    const std::string_view module = name.substr(0, colon);
    const auto nodes = schema::native_nodes();
    const auto of_module = std::ranges::find(nodes, module, &native_node::module);
    if (of_module == nodes.end())
        throw json_text::refusal{at, "unknown module " + quoted(module)};
    if (of_module->is_config != (takes == native_kind::configuration))
        throw json_text::refusal{at, "module " + quoted(module) + " holds no " +
                                         (of_module->is_config ? "operational data" : "configuration")};
    const native_node *top = schema::native_child(nullptr, name.substr(colon + 1));
    if (top == nullptr || top->module != module)
        throw json_text::refusal{at, "unknown container " + quoted(name)};
    return top;
}

[[noreturn]] void refuse_shape(const native_node &node, size_t at) {
    const char *wanted = node.what == schema::kind::container   ? "an object"
                         : node.what == schema::kind::list      ? "an array of objects"
                         : node.what == schema::kind::leaf_list ? "an array of values"
                                                                : "a value";
    throw json_text::refusal{at, quoted(node.tag) + " takes " + wanted};
}

// A member bears the name of its module where that is another than around it, and nowhere else.
const native_node *child_named(const native_node *parent, std::string_view name) {
    const size_t colon = name.find(':');
    const bool is_plain = colon == std::string_view::npos;
    const native_node *child = schema::native_child(parent, is_plain ? name : name.substr(colon + 1));
    if (child == nullptr || is_plain != (std::string_view(child->module) == parent->module))
        return nullptr;
    return is_plain || name.substr(0, colon) == child->module ? child : nullptr;
}

} // namespace

record &native_reader::target() noexcept {
    const auto entry = std::find_if(open_.rbegin(), open_.rend(), [](const frame &each) {
        return each.node != nullptr && each.node->what == schema::kind::list && !each.is_array;
    });
    return entry == open_.rend() ? *into_ : entry->entry;
}

void native_reader::open_object(size_t at) {
    if (open_.empty()) {
        open_.push_back({nullptr, false, at, {}, {}});
        return;
    }
    const native_node &node = open_.back().is_array ? *inner() : *named_;
    if (node.what != (open_.back().is_array ? schema::kind::list : schema::kind::container))
        refuse_shape(node, at);
    open_.push_back({&node, false, at, {}, {}});
    if (node.what == schema::kind::list)
        open_.back().keys.resize(schema::native_keys(&node).size());
}

void native_reader::member(std::string_view name, size_t at) {
    named_ = inner() == nullptr ? top_at(name, takes_, at) : child_named(inner(), name);
    if (named_ == nullptr)
        throw json_text::refusal{at, "unknown member " + quoted(name) + " in " + quoted(inner()->tag)};
}

void native_reader::close_object(size_t) {
    frame closed = std::move(open_.back());
    open_.pop_back();
    if (closed.node != nullptr && closed.node->what == schema::kind::list)
        take_entry(closed);
}

void native_reader::open_array(size_t at) {
    if (open_.back().is_array)
        refuse_shape(*inner(), at);
    if (named_->what != schema::kind::list && named_->what != schema::kind::leaf_list)
        refuse_shape(*named_, at);
    open_.push_back({named_, true, at, {}, {}});
}

void native_reader::close_array(size_t) {
    open_.pop_back();
}

void native_reader::value(json_text::scalar what, std::string_view written, size_t at) {
    const native_node &node = open_.back().is_array ? *inner() : *named_;
    const bool is_value_of_list = open_.back().is_array && node.what == schema::kind::leaf_list;
    if (what == json_text::scalar::null || !(is_value_of_list || node.what == schema::kind::leaf))
        refuse_shape(node, at);
    std::string kept;
    if (!to_canonical(node, written, kept))
        throw json_text::refusal{at, quoted(written) + " is no value of " + quoted(node.tag)};
    if (node.is_key)
        return set_key(std::move(kept), at);
    if (!is_value_of_list)
        return set_leaf(target(), node, std::move(kept));
    if (!add_value(target(), node, kept))
        throw json_text::refusal{at, "value " + quoted(kept) + " stands twice in " + quoted(node.tag)};
}

void native_reader::set_key(std::string value, size_t at) {
    if (value.empty())
        throw json_text::refusal{at, "key " + quoted(named_->tag) + " is empty"};
    open_.back().keys[static_cast<size_t>(named_ - schema::native_keys(inner()).data())] = std::move(value);
}

void native_reader::take_entry(frame &entry) {
    entry_key key;
    std::string named;
    for (size_t i = 0; i < entry.keys.size(); ++i) {
        const char *tag = schema::native_keys(entry.node)[i].tag;
        if (entry.keys[i].empty())
            throw json_text::refusal{entry.at,
                                     "an entry of " + quoted(entry.node->tag) + " without its key " + quoted(tag)};
        append_key(key, entry.keys[i]);
        named.append("[").append(tag).append("='").append(text::shortened(entry.keys[i])).append("']");
    }
    list_data &list = list_of(target(), *entry.node);
    if (entry.keys.empty()) // known by its place
        append_key(key, std::to_string(list.entries.size()));
    const bool is_new = list.entries.try_emplace(std::move(key), std::move(entry.entry)).second;
    if (!is_new)
        throw json_text::refusal{entry.at, "entry " + std::string(entry.node->tag) + named + " stands twice"};
}

void append_text(std::string &json, std::string_view text) {
    json.push_back('"');
    for (const char byte : text) {
        if (byte == '"' || byte == '\\') {
            json.append({'\\', byte});
        } else if (static_cast<unsigned char>(byte) < ' ') {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(byte));
            json.append(escaped);
        } else {
            json.push_back(byte);
        }
    }
    json.push_back('"');
}

namespace {

class native_writer {
public:
    native_writer(std::string &json, size_t indent) : json_(json), indent_(indent) {}

    void object(const record &from, const native_node *base, std::string_view key) {
        open('{');
        if (base != nullptr)
            for (const native_node &each : schema::native_keys(base)) {
                member(each);
                value(each, next_key_value(key));
            }
        container_steps steps(base);
        const auto leave = [this](const native_node &) { close('}'); };
        const auto enter = [this](const native_node &container) {
            member(container);
            open('{');
        };
        auto list = from.lists.begin();
        const auto write_lists_before = [&](const native_node *node) {
            for (; list != from.lists.end() && (node == nullptr || list->node < node); ++list) {
                steps.go_to(list->node, leave, enter);
                list->node->what == schema::kind::leaf_list ? values(*list) : entries(*list);
            }
        };
        for (const leaf_value &leaf : from.leaves) {
            write_lists_before(leaf.node);
            steps.go_to(leaf.node, leave, enter);
            member(*leaf.node);
            value(*leaf.node, leaf.value);
        }
        write_lists_before(nullptr);
        steps.leave_all(leave);
        close('}');
    }

private:
    void values(const list_data &leaf_list) {
        member(*leaf_list.node);
        json_.push_back('[');
        const char *between = "";
        for (const auto &[key, empty] : leaf_list.entries) {
            std::string_view rest = key;
            json_.append(std::exchange(between, ", "));
            value(*leaf_list.node, next_key_value(rest));
        }
        json_.push_back(']');
    }

    void entries(const list_data &list) {
        member(*list.node);
        open('[');
        for (const auto &[key, entry] : list.entries) {
            next_line();
            object(entry, list.node, key);
        }
        close(']');
    }

    void member(const native_node &node) {
        next_line();
        json_.push_back('"');
        if (node.parent == nullptr || std::string_view(node.parent->module) != node.module)
            json_.append(node.module).push_back(':');
        json_.append(node.tag).append("\": ");
    }

    void value(const native_node &node, std::string_view text) {
        if (node.value == schema::type::integer)
            json_.append(text);
        else
            append_text(json_, text);
        is_first_ = false;
    }

    void open(char bracket) {
        json_.push_back(bracket);
        ++indent_;
        is_first_ = true;
    }

    void close(char bracket) {
        --indent_;
        if (!is_first_)
            json_.append("\n").append(indent_ * 2, ' ');
        json_.push_back(bracket);
        is_first_ = false;
    }

    void next_line() {
        json_.append(is_first_ ? "\n" : ",\n").append(indent_ * 2, ' ');
        is_first_ = false;
    }

    std::string &json_;
    size_t indent_;
    bool is_first_ = true;
};

} // namespace

void append_native(std::string &json, const record &data, size_t indent) {
    native_writer(json, indent).object(data, nullptr, {});
}

} // namespace device
