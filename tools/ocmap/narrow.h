// What of a reply a client sees. The walks bring up more than was asked for, and nodes that no reply may hold.
//
// Never told are leaves without value, or with an empty text for what is no string (each is reported to `missing`, if
// it was asked for), entries without their keys, and containers with nothing in them. The request chooses among the
// rest as RFC 6241 tells in section 6, keys being content matches like others: what is named without content is
// selected with all below it; a leaf with content is a test of its siblings, which all have to hold; where nothing but
// tests is named, all siblings are selected. Nodes named more than once, list entries too, are a union. An entry of
// which anything is told comes with its keys.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "zmf/tree.h"

namespace ocmap {

// A read request, made fit for looking up. Made before the walk, which adds keys to the request; texts of the request
// are borrowed.
class client_filter {
public:
    explicit client_filter(const zmf::fixed_tree &request);
    ~client_filter();
    client_filter(const client_filter &) = delete;
    client_filter &operator=(const client_filter &) = delete;

    size_t bytes() const noexcept; // storage in use

    struct body;
    const body &internals() const noexcept { return *body_; }

private:
    std::unique_ptr<body> body_;
};

// The nodes of a tree that are told.
class selection {
public:
    explicit selection(const zmf::output_tree &tree) : told_(tree.nodes() + 1) {}
    bool holds(zmf::output_node node) const { return told_[node.number()]; }
    void add(zmf::output_node node) { told_[node.number()] = true; }

private:
    std::vector<bool> told_;
};

using missing_value = std::function<void(zmf::output_node leaf)>;
selection whole(const zmf::output_tree &reply, const missing_value &missing);
selection narrowed(const zmf::output_tree &reply, const client_filter &asked, const missing_value &missing);

} // namespace ocmap
