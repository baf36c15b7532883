// The inside of a session, shared by the operations of zmf.h.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "output_body.h"
#include "path.h"
#include "session.h"
#include "text.h"

namespace zmf {

// What err_log, trc_log and ring_log point to.
struct log_channel {
    uint32_t level;
    const std::function<void(std::string_view)> *sink;
};

// A node on the walk record. A list node remembers how far lists had their positions when it was pushed.
struct record_frame {
    const zmf_datatree *node;
    uint32_t kind;
    uint32_t list_positions;
    size_t output_entries;
};

// The current entry of a list of the request. A walker hides an entry's children while it falls through them, and the
// key is asked for below: the children as they were when the entry became current then answer.
struct list_position {
    uint32_t path; // number in `paths`
    uint32_t level;
    const zmf_datatree *node;
    const zmf_datatree *children;
    uint32_t child_count;
};

struct child_range {
    const zmf_datatree *nodes;
    uint32_t count;
};
inline child_range children_of(const zmf_datatree *node) noexcept {
    if (node == nullptr || !node->has_children || node->children == nullptr)
        return {nullptr, 0};
    return {node->children, node->child_count};
}

// Children by tag. The last answers for long arrays are kept, so that asking for each of their elements stays linear.
class child_finder {
public:
    const zmf_datatree *find(child_range children, const char *tag);
    void forget() noexcept { answers_ = {}; }

private:
    struct answer {
        child_range children{nullptr, 0};
        std::string tag;
        const zmf_datatree *found = nullptr;
    };
    std::array<answer, 8> answers_; // more than one entry of a list can ask about at a time
    size_t next_ = 0;
};

// Arrays that a request node got when a key was added to it.
class grown_arrays {
public:
    // `children` with one more, zeroed, at the end; null when `limit` bytes would be passed. Extends the array where it
    // stands if nothing was allocated since.
    zmf_datatree *with_one_more(child_range children);
    size_t limit = SIZE_MAX;

private:
    static constexpr size_t chunk_nodes = 256;
    std::vector<std::unique_ptr<zmf_datatree[]>> chunks_;
    zmf_datatree *last_ = nullptr; // the array allocated last
    zmf_datatree *free_ = nullptr;
    size_t left_ = 0, bytes_ = 0;
};

// Nodes that a road of entries makes beside those of the request. They stand here, since a failure may be told of them.
struct made_nodes {
    zmf_datatree top{}, entry{}, child{};
    zmf_datatree part[2]{}; // children of `entry`
};

struct session::body {
    explicit body(uint32_t op_type);
    ~body();
    body(const body &) = delete;
    body &operator=(const body &) = delete;

    void reset() noexcept;
    bool refuses() noexcept { return ++calls == failing_call; }

    void push(const zmf_datatree *node, uint32_t kind);
    void pop(const zmf_datatree *node) noexcept;
    const zmf_datatree *top() const noexcept { return depth == 0 ? nullptr : frames[depth - 1].node; }
    void note_match(const char *text) noexcept { last_match = {text, depth, ++events}; }

    zmf_request request{};
    zmf_req_ctx req{};
    zmf_map_ctx_rec ctx{};

    std::function<void(const call &)> sink;
    std::function<void(std::string_view)> debug_sink, ring_sink;
    log_channel err{0, &debug_sink}, trc{3, &debug_sink}, ring{0, &ring_sink};

    uint64_t calls = 0, failing_call = 0;
    rcode failing_status = RC_OK;

    // The walk record. What stood above its top stays readable until it is overwritten, so that a failure can be
    // described after everything was popped.
    std::vector<record_frame> frames;
    size_t depth = 0;
    uint32_t list_depth = 0;
    uint64_t imbalances = 0;
    const zmf_datatree *walked_top = nullptr; // the node that a root walker was handed

    std::vector<list_position> positions;
    text_table paths;
    entry_notes current_entries;
    std::deque<zmf_itree_frame> itree; // frames keep their address
    child_finder children;

    grown_arrays added_keys;
    made_nodes made;
    text_table added_tags;
    text_arena added_values;

    // Events are numbered, so that describe() can tell which came last.
    struct match_event {
        const char *text = nullptr;
        size_t depth = 0;
        uint64_t event = 0;
    };
    struct mark_event {
        size_t depth = 0;
        uint64_t event = 0;
    };
    struct leafref_event {
        size_t depth = 0;
        std::string container, leaf, message;
    };
    uint64_t events = 0, marks = 0;
    match_event last_match;
    mark_event last_mark;
    leafref_event last_leafref;
    uint64_t last_text = 0; // event of the last zmf_strdup

private:
    void pop_top() noexcept;
};

// The session whose operations run on this thread: for operations that get no context.
#if defined(__GNUC__)
extern thread_local session::body *active_session __attribute__((tls_model("initial-exec")));
#else
extern thread_local session::body *active_session;
#endif

inline session::body *session_of(zmf_map_ctx ctx) noexcept {
    if (ctx == nullptr)
        return nullptr;
    return active_session = static_cast<session::body *>(ctx->framework);
}

} // namespace zmf
