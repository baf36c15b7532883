// One request under way: the context that the plug-in is handed, the walk record, list positions, the error mark, and
// the record of framework calls. A session is used on one thread; the operations of zmf.h find it through the context.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "zmf.h"

namespace zmf {

// Statuses of the stand-in's own, beside those of zmf.h.
inline constexpr rcode rc_leafref_mismatch = 0x5a460100u; // a list key and its leaf under `config` differ
inline constexpr rcode rc_no_such_entry = 0x5a460200u;    // no current entry, or the entry lacks the leaf
inline constexpr rcode rc_bad_path = 0x5a460300u;         // a path that cannot be read
inline constexpr rcode rc_too_big = 0x5a460400u;          // the output tree reached its limit
inline constexpr rcode rc_no_position = 0x5a460500u;      // nothing stands on the walk record
inline constexpr rcode rc_bad_text = 0x5a460600u;         // a text that is missing or does not fit

// Symbolic name of a status ("RC_VALUE_OUT_OF_RANGE", "RC_ZMF_TOO_BIG"), "status 0x%08x" for others.
std::string status_name(rcode status);

enum class operation : uint8_t {
    add_path,
    update_namespace,
    search_or_add_list,
    search_list,
    xpath,
    stitch, // the tree
    add_to_hierarchy,
    remove_from_hierarchy,
    update_current_list,
    get_node_info, // the walk
    add_to_output_list,
    remove_from_output_list,
    stack_push,
    stack_pop,
    stack_peak,
    stack_size,
    match,
    is_delete,
    is_add,
    check_leafref,
    validate_ns, // questions
    error_path,
};
const char *operation_name(operation op) noexcept; // "add_path"

// One call as it was made and what it answered. Texts are borrowed, valid during the sink's call only.
struct call {
    operation op = operation::add_path;
    const char *path = nullptr;           // path, list path; first text of a match
    const char *ns = nullptr;             // namespace; second text of a match
    const char *value = nullptr;          // value, key value, text handed out by get_node_info
    const char *key = nullptr;            // key name
    const zmf_datatree *node = nullptr;   // node asked about, pushed or popped; list node of a leafref check
    const zmf_datatree *source = nullptr; // source node of an add
    uint32_t number = 0;                  // kind of a push, count of a stack push
    bool list_flag = false, cross_module_flag = false, node_out = false;
    uint32_t result = 0; // status, or the answer of a question
};

// "add /logical-channels/channel/channel-index ns=Corvane-terminal-device-cfg value="5" source=merge list": one line,
// no line end. Native namespaces are shown by module name; flags that are 0, a null value and a null source are left
// out; the source shows its operation (merge, replace, delete, remove, or none where op_explicit is clear).
std::string to_line(const call &c);

// Where and why a walk failed.
struct failure {
    rcode status = RC_OK;
    std::string path;        // "/terminal-device/logical-channels/channel[index='0']/config/index", as far as known
    std::string leaf_or_tag; // last step of `path`
    std::string
        message;    // err_msg, or err_info, or what the stand-in itself knows (both values of a leafref); may be empty
    std::string ns; // namespace of the last step, may be empty
    std::string value; // of the last step, may be empty
};

class session {
public:
    explicit session(uint32_t op_type);
    ~session();
    session(const session &) = delete;
    session &operator=(const session &) = delete;

    zmf_map_ctx context() noexcept;
    zmf_req_ctx &request() noexcept; // walk words are zero at first and stay as the plug-in leaves them

    // Between two roots of one request: zeroes the walk words, drops both texts, the walk record and all positions.
    void reset();

    // Every framework call is told to the sink, in order. None by default; a call costs one test then.
    void record(std::function<void(const call &)> sink);

    // Trace channels. Levels: bit 0 "ERR", bit 3 "TRC". The ring is on while it has a sink.
    void debug(uint32_t levels, std::function<void(std::string_view)> sink);
    void ring(std::function<void(std::string_view)> sink);

    // Storage for keys that a walk adds to the request: an add that would need more answers rc_too_big. No limit at
    // first.
    void limit(size_t bytes) noexcept;

    // For tests: the n-th call of the session, from 1, among those of zmf_map_... that return a status and zmf_strdup
    // answers with `status` (zmf_strdup: null) and does nothing else.
    void fail_call(uint64_t n, rcode status);
    uint64_t status_calls() const noexcept; // such calls so far

    // For tests.
    size_t hierarchy_depth() const noexcept;
    uint32_t stack_size() const noexcept;
    uint64_t error_marks() const noexcept; // calls of zmf_oc_error_path
    uint64_t imbalances() const noexcept;  // pops of a node that was not the top, pops of an empty itree stack

    // What to tell the client about `status`, which a root returned. The tree that it walked must still be there.
    failure describe(rcode status) const;

    struct body;
    body *internals() noexcept { return body_.get(); }

private:
    std::unique_ptr<body> body_;
};

} // namespace zmf
