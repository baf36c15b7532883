// Requests of walk tests, written as text:  top{box!replace{a=1 x:b} entry{id=7}}
//
//   tag  x:tag  _:tag  -     a node of the model's namespace, of a foreign one, of none; a node without tag
//   !delete (merge, replace, remove)  its own operation
//   =5                       its value; "=" alone is the empty text
//   {...}                    its children; {?3} claims 3 of them and has no array, {#3} counts 3 but has the flag clear
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "zmf.h"

inline constexpr char foreign_ns[] = "urn:foreign";

class request_text {
public:
    request_text(const std::string &text, const char *ns, const char *foreign = foreign_ns);

    zmf_datatree *top() { return tops_.data(); }
    std::vector<zmf_datatree> &tops() { return tops_; }

    // What differs from the request as it was read, but for the marks that walkers leave: "box!merge; entry children".
    std::string changes() const;
    // Schema kind and marks of each node in document order: "box:3 a:6 id:1ks" (k key, s key_seen).
    std::string marks() const;

private:
    std::vector<zmf_datatree> read_nodes(const char *&at);
    zmf_datatree read_node(const char *&at);
    const char *keep(const std::string &text);
    void remember(std::vector<zmf_datatree> &nodes);

    const char *ns_, *foreign_;
    std::deque<std::string> texts_;
    std::deque<std::vector<zmf_datatree>> arrays_;
    std::vector<zmf_datatree> tops_;
    std::vector<std::pair<const zmf_datatree *, zmf_datatree>> as_read_;
};

const char *op_name(uint32_t op); // "merge"
