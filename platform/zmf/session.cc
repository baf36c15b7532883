// Sessions: life, walk record and settings. What operations do stands in operations.cc, failures are told in
// describe.cc.
#include "session.h"

#include <algorithm>
#include <cstring>

#include "session_body.h"

namespace zmf {

thread_local session::body *active_session = nullptr;

namespace {
constexpr uint32_t short_array = 64;
constexpr size_t usual_depth = 72;
} // namespace

namespace {

const zmf_datatree *search(child_range children, const char *tag) {
    for (uint32_t i = 0; i < children.count; ++i)
        if (children.nodes[i].tag != nullptr && std::strcmp(children.nodes[i].tag, tag) == 0)
            return &children.nodes[i];
    return nullptr;
}

} // namespace

const zmf_datatree *child_finder::find(child_range children, const char *tag) {
    if (children.count <= short_array)
        return search(children, tag);
    for (const answer &known : answers_)
        if (known.children.nodes == children.nodes && known.children.count == children.count && known.tag == tag)
            return known.found;
    answer &kept = answers_[next_++ % answers_.size()];
    kept = {children, tag, search(children, tag)};
    return kept.found;
}

zmf_datatree *grown_arrays::with_one_more(child_range children) {
    bool extends = children.nodes != nullptr && children.nodes == last_ && left_ != 0;
    size_t taken = extends ? 1 : size_t{children.count} + 1;
    if (bytes_ + taken * sizeof(zmf_datatree) > limit)
        return nullptr;
    if (!extends) {
        if (taken > left_) {
            left_ = std::max(taken, chunk_nodes);
            chunks_.push_back(std::make_unique<zmf_datatree[]>(left_));
            free_ = chunks_.back().get();
        }
        last_ = free_;
        std::copy_n(children.nodes, children.count, last_);
    }
    free_ += taken;
    left_ -= taken;
    bytes_ += taken * sizeof(zmf_datatree);
    return last_;
}

session::body::body(uint32_t op_type) {
    request.op_type = op_type;
    req.request = &request;
    ctx.req_ctx = &req;
    ctx.err_log = &err;
    ctx.trc_log = &trc;
    ctx.ring_log = &ring;
    ctx.framework = this;
    req.framework = this;
    frames.resize(usual_depth);
    active_session = this;
}

session::body::~body() {
    reset();
    if (active_session == this)
        active_session = nullptr;
}

void session::body::reset() noexcept {
    kvo_named_free(req.err_msg);
    kvo_named_free(req.err_info);
    req = {};
    req.request = &request;
    req.framework = this;
    ctx.last_key_op = 0;
    depth = 0;
    list_depth = 0;
    walked_top = nullptr;
    positions.clear();
    current_entries.leave();
    itree.clear();
    children.forget();
    last_match = {};
    last_mark = {};
    last_leafref = {};
    last_text = 0;
}

void session::body::push(const zmf_datatree *node, uint32_t kind) {
    if (depth == frames.size())
        frames.resize(frames.size() * 2);
    frames[depth++] = {node, kind, static_cast<uint32_t>(positions.size()), current_entries.size()};
    list_depth += kind == ZMF_HIER_LIST;
}

void session::body::pop_top() noexcept {
    const record_frame &frame = frames[--depth];
    if (frame.kind != ZMF_HIER_LIST)
        return;
    --list_depth;
    positions.resize(frame.list_positions);
    current_entries.give_back(frame.output_entries);
    current_entries.keep_apart(); // the next entry that is walked has native entries of its own
}

void session::body::pop(const zmf_datatree *node) noexcept {
    if (depth != 0 && frames[depth - 1].node == node) {
        pop_top();
        return;
    }
    ++imbalances;
    size_t below = depth;
    while (below != 0 && frames[below - 1].node != node)
        --below;
    while (below != 0 && depth >= below)
        pop_top();
}

session::session(uint32_t op_type) : body_(std::make_unique<body>(op_type)) {}
session::~session() = default;

zmf_map_ctx session::context() noexcept {
    return &body_->ctx;
}
zmf_req_ctx &session::request() noexcept {
    return body_->req;
}
void session::reset() {
    body_->reset();
}
void session::record(std::function<void(const call &)> sink) {
    body_->sink = std::move(sink);
}
void session::limit(size_t bytes) noexcept {
    body_->added_keys.limit = bytes;
}

void session::debug(uint32_t levels, std::function<void(std::string_view)> sink) {
    body_->debug_sink = std::move(sink);
    body_->ctx.log_state = {};
    body_->ctx.log_state.words[0] = body_->debug_sink ? levels : 0;
}

void session::ring(std::function<void(std::string_view)> sink) {
    body_->ring_sink = std::move(sink);
    body_->ctx.ring_trace_on = body_->ring_sink ? 1 : 0;
}

void session::fail_call(uint64_t n, rcode status) {
    body_->failing_call = n;
    body_->failing_status = status;
}

uint64_t session::status_calls() const noexcept {
    return body_->calls;
}
size_t session::hierarchy_depth() const noexcept {
    return body_->depth;
}
uint32_t session::stack_size() const noexcept {
    return static_cast<uint32_t>(body_->itree.size());
}
uint64_t session::error_marks() const noexcept {
    return body_->marks;
}
uint64_t session::imbalances() const noexcept {
    return body_->imbalances;
}

} // namespace zmf
