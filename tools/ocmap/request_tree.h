// What both readers of requests feed: holds the nodes against the models and the limits, and builds the tree.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "request.h"
#include "schema/schema.h"
#include "zmf/tree.h"

namespace ocmap {

inline constexpr size_t most_nodes = 1000000;
inline constexpr size_t deepest_node = 64;

// Why a node, value or operation is not taken. Thrown by request_tree; the readers know the place.
struct refusal {
    std::string text;
};

// Code of "merge", "replace", "create" (op_create), "delete" or "remove"; throws refusal.
uint32_t operation_code(std::string_view name);

class request_tree {
public:
    explicit request_tree(purpose what) : purpose_(what) {}

    bool is_read() const { return purpose_ == purpose::read || is_native(); }
    bool is_native() const { return purpose_ == purpose::native; }
    const char *no_operation() const { return is_native() ? "an operation in native data" : "an operation in a read"; }

    // What a child of the open node would be by the models; null where they do not know it.
    const schema::node *known(std::string_view tag, std::string_view ns) const;

    void open(std::string_view tag, std::string_view ns);
    void operation(uint32_t code); // of the open node
    void value(std::string_view text);
    // `ns` is what the prefix of an identity stands for.
    void value(std::string_view identity, std::string_view ns);
    void close();

    const schema::node *node() const { return open_.back().known; } // of the open node; null: not known
    bool is_deleted() const { return open_.back().is_deleted; }     // the open node's own operation

    zmf::fixed_tree finish(); // throws refusal when no node was opened

private:
    struct open_node {
        const schema::node *known;
        bool is_deleted;
    };

    purpose purpose_;
    const schema::model *model_ = nullptr;
    std::vector<open_node> open_;
    zmf::tree_builder builder_;
};

bool is_leaf(const schema::node *known);   // a leaf or leaf-list of the models
bool is_branch(const schema::node *known); // a container or list of the models

// Prefix and name of an identity value; no prefix: nullopt.
struct prefixed {
    std::string_view prefix, name;
};
std::optional<prefixed> split_identity(const schema::node *known, std::string_view text);

inline constexpr std::string_view white = " \t\r\n";
std::string_view trimmed(std::string_view text); // without white space at its ends

// Values are the same if this is: white space at the ends does not count, nor what does not change a number, "+05.50".
std::string_view comparable(const schema::node *known, std::string_view text);

} // namespace ocmap
