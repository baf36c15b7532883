// Reading requests of walk tests: see request_text.h.
#include "request_text.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace {

constexpr const char *op_names[] = {"merge", "replace", "op2", "delete", "remove"};

std::string word(const char *&at) {
    const size_t length = strcspn(at, " !={}");
    std::string text(at, length);
    at += length;
    return text;
}

void skip_blanks(const char *&at) {
    at += strspn(at, " \n");
}

uint32_t op_of(const std::string &name) {
    for (uint32_t op = 0; op < std::size(op_names); ++op) {
        if (name == op_names[op]) {
            return op;
        }
    }
    throw std::invalid_argument("no operation: " + name);
}

} // namespace

const char *op_name(uint32_t op) {
    return op < std::size(op_names) ? op_names[op] : "?";
}

request_text::request_text(const std::string &text, const char *ns, const char *foreign) : ns_(ns), foreign_(foreign) {
    const char *at = text.c_str();
    tops_ = read_nodes(at);
    if (*at != '\0') {
        throw std::invalid_argument("request not read from: " + std::string(at));
    }
    remember(tops_);
}

const char *request_text::keep(const std::string &text) {
    return texts_.emplace_back(text).c_str();
}

std::vector<zmf_datatree> request_text::read_nodes(const char *&at) {
    std::vector<zmf_datatree> nodes;
    for (skip_blanks(at); *at != '\0' && *at != '}'; skip_blanks(at)) {
        nodes.push_back(read_node(at));
    }
    return nodes;
}

zmf_datatree request_text::read_node(const char *&at) {
    zmf_datatree node{};
    std::string name = word(at);
    node.ns = ns_;
    if (name.starts_with("x:") || name.starts_with("_:")) {
        node.ns = name[0] == 'x' ? foreign_ : nullptr;
        name.erase(0, 2);
    }
    node.tag = name == "-" ? nullptr : keep(name);
    if (*at == '!') {
        node.op = op_of(word(++at));
        node.op_explicit = 1;
    }
    if (*at == '=') {
        node.value = keep(word(++at));
        node.has_value = 1;
    }
    if (*at == '{') {
        ++at;
        if (*at == '?' || *at == '#') {
            node.has_children = *at++ == '?';
            node.child_count = static_cast<uint32_t>(std::stoul(word(at)));
        } else {
            arrays_.push_back(read_nodes(at));
            node.children = arrays_.back().data();
            node.child_count = static_cast<uint32_t>(arrays_.back().size());
            node.has_children = 1;
        }
        ++at;
    }
    return node;
}

void request_text::remember(std::vector<zmf_datatree> &nodes) {
    struct level {
        zmf_datatree *nodes;
        uint32_t count;
    };
    const auto visit = [this](const auto &self, level here) -> void {
        for (uint32_t i = 0; i < here.count; ++i) {
            zmf_datatree *node = &here.nodes[i];
            as_read_.emplace_back(node, *node);
            if (node->has_children && node->children != nullptr) {
                self(self, {node->children, node->child_count});
            }
        }
    };
    visit(visit, {nodes.data(), static_cast<uint32_t>(nodes.size())});
}

std::string request_text::changes() const {
    std::string text;
    for (const auto &[now, before] : as_read_) {
        const std::string tag = before.tag != nullptr ? before.tag : "-";
        if (now->op != before.op || now->op_explicit != before.op_explicit) {
            text += "; " + tag + "!" + op_name(now->op);
        }
        if (now->children != before.children || now->child_count != before.child_count ||
            now->has_children != before.has_children) {
            text += "; " + tag + " children";
        }
        if (now->tag != before.tag || now->value != before.value || now->ns != before.ns ||
            now->has_value != before.has_value) {
            text += "; " + tag + " texts";
        }
    }
    return text.empty() ? text : text.substr(2);
}

std::string request_text::marks() const {
    std::string text;
    for (const auto &[now, before] : as_read_) {
        text += text.empty() ? "" : " ";
        text += std::string(before.tag != nullptr ? before.tag : "-") + ":";
        text += now->schema_kind_set ? std::to_string(now->schema_kind) : "";
        text += std::string(now->is_key ? "k" : "") + (now->key_seen ? "s" : "") + (now->added_key ? "a" : "");
    }
    return text;
}
