#include "side_by_side.h"

#include <algorithm>
#include <deque>
#include <unordered_map>

#include "operation_name.h"
#include "paint.h"
#include "reply.h"
#include "report.h"

namespace ocmap {
namespace {

using zmf::output_node;

std::string key_of(const std::string &tag, const std::string &value) {
    return "[" + tag + "='" + one_line(value) + "']";
}

std::string told_value(const char *text) {
    return *text == '\0' ? " = \"\"" : " = " + one_line(text);
}

std::string name_with_module(const char *tag, const char *ns, const std::string &ns_above) {
    if (ns == nullptr || ns == ns_above)
        return tag;
    const char *module = schema::module_of_ns(ns);
    return std::string(module == nullptr ? ns : module) + ":" + tag;
}

// The nodes of a native tree.
std::vector<shown_node> children_of(output_node node, const std::string &ns_above) {
    std::vector<shown_node> all;
    for (output_node child = node.first_child(); child; child = child.next_sibling()) {
        const std::string ns = child.ns() == nullptr ? ns_above : child.ns();
        shown_node made{name_with_module(child.tag(), child.ns(), ns_above), "", children_of(child, ns)};
        for (output_node key = child.first_child(); key; key = key.next_sibling())
            if (key.is_key() && key.value() != nullptr)
                made.name += key_of(key.tag(), key.value());
        if (child.is_leaf_list() && child.value() != nullptr)
            made.name += std::string(" ") + one_line(child.value());
        else if (child.value() != nullptr)
            made.value = told_value(child.value());
        if (const char *operation = operation_name(child))
            made.value += std::string(" (") + operation + ")";
        all.push_back(std::move(made));
    }
    return all;
}

// Builds the nodes of a reply as it is told.
class reply_reader final : public reply_writer {
public:
    std::vector<shown_node> take() { return std::move(open_.front().shown.children); }

    void open(const reply_name &name) override {
        const schema::node *above = open_.back().row;
        const schema::model *model = above == nullptr ? schema::root_of(name.tag, name.ns) : open_.back().model;
        const schema::node *row = model == nullptr ? nullptr : schema::child(above, *model, name.tag);
        open_.push_back({row, model, name.ns, {name_with_module(name.tag, name.ns, open_.back().ns), "", {}}});
    }
    void close() override {
        shown_node done = std::move(open_.back().shown);
        open_.pop_back();
        open_.back().shown.children.push_back(std::move(done));
    }
    void open_list(const reply_name &) override {}
    void close_list() override {}

    void leaf(const reply_name &name, schema::type, const reply_value &value) override {
        level &above = open_.back();
        const schema::node *row = above.row == nullptr ? nullptr : schema::child(above.row, *above.model, name.tag);
        const std::string text = value.text == nullptr ? "" : value.text;
        shown_node made{name_with_module(name.tag, name.ns, above.ns), told_value(text.c_str()), {}};
        if (row != nullptr && row->is_key)
            above.shown.name += key_of(name.tag, text);
        if (row != nullptr && row->what == schema::kind::leaf_list) {
            made.name += " " + one_line(text);
            made.value.clear();
        }
        above.shown.children.push_back(std::move(made));
    }

private:
    struct level {
        const schema::node *row = nullptr;
        const schema::model *model = nullptr;
        std::string ns;
        shown_node shown;
    };
    std::vector<level> open_{1};
};

struct row {
    std::string left, right;
    char mark;
};

class merger {
public:
    std::vector<row> rows;

    void merge(const std::vector<shown_node> &left, const std::vector<shown_node> &right, size_t depth) {
        // Of those that bear one name, the first stands beside the first, and so on.
        std::unordered_map<std::string_view, std::deque<const shown_node *>> others;
        for (const shown_node &each : right)
            others[each.name].push_back(&each);
        for (const shown_node &each : left) {
            const auto other = others.find(each.name);
            if (other == others.end() || other->second.empty()) {
                alone(each, depth, '<');
                continue;
            }
            both(each, *other->second.front(), depth);
            other->second.pop_front();
        }
        for (const shown_node &each : right)
            if (auto &rest = others[each.name]; !rest.empty() && rest.front() == &each) {
                alone(each, depth, '>');
                rest.pop_front();
            }
    }

private:
    static std::string text(const shown_node &node, size_t depth) {
        return std::string(2 * depth, ' ') + node.name + node.value;
    }

    void both(const shown_node &left, const shown_node &right, size_t depth) {
        rows.push_back({text(left, depth), text(right, depth), left.value == right.value ? ' ' : '|'});
        merge(left.children, right.children, depth + 1);
    }

    void alone(const shown_node &node, size_t depth, char mark) {
        rows.push_back({mark == '<' ? text(node, depth) : "", mark == '>' ? text(node, depth) : "", mark});
        for (const shown_node &each : node.children)
            alone(each, depth + 1, mark);
    }
};

colour colour_of(char mark) {
    return mark == ' ' ? colour::plain : mark == '|' ? colour::yellow : mark == '<' ? colour::red : colour::green;
}

} // namespace

std::vector<shown_node> shown(const zmf::output_tree &native) {
    return children_of(native.top(), "");
}

std::vector<shown_node> shown(const zmf::output_tree &reply, const selection &told) {
    reply_reader reader;
    tell_reply(reply, told, reader);
    return reader.take();
}

void print_beside(const side &left, const side &right, output &out) {
    merger merged;
    merged.rows.push_back({left.title, right.title, ' '});
    merged.merge(left.nodes, right.nodes, 0);
    size_t width = 0;
    for (const row &each : merged.rows)
        width = std::max(width, each.left.size());
    const paint painted(1);
    for (row &each : merged.rows) {
        each.left.resize(width, ' ');
        std::string line = each.left + " " + each.mark + " " + each.right;
        line.erase(line.find_last_not_of(' ') + 1);
        out.write(painted(colour_of(each.mark), line) + "\n");
    }
}

} // namespace ocmap
