// The framework of the walk tests: see fake.h.
#include "fake.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <stdexcept>

#include "request_text.h"

namespace fake {

namespace {

framework *current = nullptr; // for calls that bear no context

rcode frame_function(zmf_map_ctx ctx, zmf_datatree *entry, zmf_datatree *tree, unsigned int zero) {
    if (tree != &of(ctx).output || zero != 0) {
        of(ctx).faults.push_back("arguments of a frame's function");
    }
    of(ctx).log.push_back("fn(" + name_of(entry) + of(ctx).words() + ")");
    return of(ctx).answer("fn");
}

// "#7: ERR: walker:12 ctx=0x1234,text" gives "text", and nothing for a line of another level.
std::string text_of_error_line(const std::string &line) {
    const size_t level = line.find(": ERR: ");
    return level != std::string::npos ? line.substr(line.find(',') + 1) : "";
}

} // namespace

framework &of(zmf_map_ctx ctx) {
    return *static_cast<framework *>(ctx->framework);
}

framework::framework(uint32_t op_type) {
    request.op_type = op_type;
    req.request = &request;
    ctx.req_ctx = &req;
    ctx.framework = this;
    ctx.err_log = &ctx.err_log;
    ctx.trc_log = &ctx.trc_log;
    ctx.ring_log = this;
    ctx.ring_trace_on = 1;
    current = this;
}

framework::~framework() {
    kvo_named_free(req.err_msg);
    current = nullptr;
}

void framework::script(const std::string &text) {
    std::istringstream in(text);
    std::string rule;
    while (in >> rule) {
        const size_t colon = rule.find(':');
        std::istringstream answers(rule.substr(colon + 1));
        std::string one;
        while (std::getline(answers, one, ',')) {
            script_[rule.substr(0, colon)].push_back(one);
        }
    }
}

std::string framework::joined_log() const {
    std::string text;
    for (const std::string &event : log) {
        text += event + "\n";
    }
    return text;
}

std::string framework::words() const {
    std::string text;
    if (req.walk_all != 0) {
        text += req.walk_all == 1 ? " all" : " all=" + std::to_string(req.walk_all);
    }
    if (req.delete_walk != 0) {
        text += " dw" + std::to_string(req.delete_walk);
    }
    text += (req.pass_flags & PASS_DELETE) != 0 ? " PD" : "";
    text += (req.pass_flags & PASS_ADD) != 0 ? " PA" : "";
    if (req.filter_bits != 0) {
        std::ostringstream bits;
        bits << std::hex << req.filter_bits;
        text += " f" + bits.str();
    }
    return text;
}

rcode framework::answer(const std::string &caller) {
    if (++status_calls == fail_at) {
        failed_in_fall_through = req.walk_all == 1;
        return injected;
    }
    const auto found = script_.find(caller);
    if (found == script_.end()) {
        return RC_OK;
    }
    const std::string action = found->second.front();
    if (found->second.size() > 1) {
        found->second.pop_front();
    }
    play(action);
    if (action == "nm") {
        return RC_NOT_MAPPED;
    }
    return action.ends_with("bad") ? bad : RC_OK;
}

void framework::play(const std::string &action) {
    if (action == "null-frame") {
        frames.push_back({nullptr, 2, nullptr});
    } else if (action.starts_with("frame")) {
        frames.push_back(
            {entries->data(), static_cast<uint32_t>(entries->size()), action == "frame+fn" ? frame_function : nullptr});
    }
}

std::string name_of(const zmf_datatree *node) {
    std::string text = node->tag != nullptr ? node->tag : "-";
    if (node->ns != nullptr && strcmp(node->ns, foreign_ns) == 0) {
        text = "x:" + text;
    }
    return node->op_explicit ? text + " !" + op_name(node->op) : text;
}

rcode called(zmf_map_ctx ctx, const char *name, const zmf_datatree *node, int count) {
    framework &f = of(ctx);
    std::string who = name;
    who.erase(who.find("lvla_"), strlen("lvla_"));
    f.log.push_back(who + (count >= 0 ? "/" + std::to_string(count) : "") + "(" + name_of(node) + f.words() + ")");
    return f.answer(who);
}

} // namespace fake

using fake::of;

extern "C" {

rcode zmf_map_datatree_add_path_flagged(zmf_map_ctx ctx, zmf_datatree *tree, const char *path, const char *ns,
                                        const char *value, const zmf_datatree *source, zmf_datatree **node_out,
                                        unsigned int list_flag, unsigned int cross_module_flag) {
    fake::framework &f = of(ctx);
    f.log.push_back(std::string("add ") + path + " " + ns + " into " + fake::name_of(tree));
    if (value != nullptr || source != nullptr || node_out == nullptr || list_flag != 0 || cross_module_flag != 0) {
        f.faults.push_back("arguments of an add");
    }
    const rcode status = f.answer("add");
    if (status == RC_OK) {
        f.added = {};
        *node_out = &f.added;
    }
    return status;
}

void zmf_map_add_to_node_hierarchy(zmf_map_ctx ctx, const zmf_datatree *node, unsigned int kind) {
    of(ctx).hierarchy.push_back(node);
    of(ctx).log.push_back("+" + std::to_string(kind) + " " + node->tag);
}

void zmf_map_remove_from_node_hierarchy(zmf_map_ctx ctx, const zmf_datatree *node) {
    fake::framework &f = of(ctx);
    if (f.hierarchy.empty() || f.hierarchy.back() != node) {
        f.faults.push_back("pop of a node that is not on top");
    } else {
        f.hierarchy.pop_back();
    }
    f.log.push_back(std::string("- ") + node->tag);
}

rcode zmf_map_update_current_list_node(zmf_map_ctx ctx, const char *list_path) {
    of(ctx).log.push_back(std::string("@ ") + list_path);
    return of(ctx).answer("@");
}

void zmf_map_util_itree_stack_push(zmf_map_ctx ctx, zmf_datatree *nodes, uint32_t count, zmf_itree_fn fn) {
    of(ctx).frames.push_back({nodes, count, fn});
    of(ctx).log.push_back("push " + std::to_string(count));
}

void zmf_map_util_itree_stack_pop(zmf_map_ctx ctx) {
    fake::framework &f = of(ctx);
    f.log.push_back("pop");
    if (f.frames.empty()) {
        f.faults.push_back("pop of an empty stack");
    } else {
        f.frames.pop_back();
    }
}

void zmf_map_util_itree_stack_peak(zmf_map_ctx ctx, zmf_itree_frame **frame) {
    *frame = of(ctx).frames.empty() ? nullptr : &of(ctx).frames.back();
}

uint32_t zmf_map_util_itree_stack_size(zmf_map_ctx ctx) {
    return static_cast<uint32_t>(of(ctx).frames.size());
}

bool zmf_map_do_these_match(const char *a, const char *b) {
    return a != nullptr && b != nullptr && strcmp(a, b) == 0;
}

bool zmf_map_is_request_delete(const zmf_datatree *node) {
    return node->op == OP_DELETE || node->op == OP_REMOVE;
}

bool zmf_map_is_request_add(zmf_map_ctx ctx, const zmf_datatree *node) {
    const uint32_t kind = ctx->req_ctx->request->op_type;
    return kind != OP_GET && kind != OP_GET_CONFIG && !zmf_map_is_request_delete(node);
}

rcode zmf_map_check_oc_leafref(zmf_map_ctx ctx, const char *list_path, const char *container, const char *key_tag,
                               const zmf_datatree *list_node) {
    of(ctx).log.push_back(std::string("leafref ") + list_path + " " + container + " " + key_tag + " " + list_node->tag);
    return of(ctx).answer("leafref");
}

void zmf_oc_error_path(zmf_map_ctx ctx) {
    ++of(ctx).error_marks;
    of(ctx).log.push_back("err");
}

char *zmf_strdup(const char *text, const char *memory_tag) {
    fake::framework &f = *fake::current;
    if (strcmp(memory_tag, "ZMF MAP") != 0) {
        f.faults.push_back("memory tag");
    }
    if (++f.strdups == f.null_strdup_at) {
        return nullptr;
    }
    char *copy = strdup(text);
    f.texts.insert(copy);
    return copy;
}

void kvo_named_free(void *text) {
    if (text != nullptr && fake::current->texts.erase(text) == 0) {
        fake::current->faults.push_back("release of a text twice");
        return;
    }
    free(text);
}

int zmf_debug_should_log(zmf_log_state *state, int level) {
    if (state != &fake::current->ctx.log_state) {
        fake::current->faults.push_back("log state");
    }
    return static_cast<int>((fake::current->debug_levels >> level) & 1u);
}

// NOLINTNEXTLINE(readability-non-const-parameter): the framework's own shape
void _kvo_dt_log_filter_adv(void *handle, int z1, int z2, int z3, int z4, int z5, uint32_t *filter_word,
                            const char *format, ...) {
    if ((z1 | z2 | z3 | z4 | z5) != 0) {
        fake::current->faults.push_back("zeros of a debug line");
    }
    char text[1000];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    fake::current->debug.push_back({handle, filter_word, *filter_word, text});
}

uint32_t ret_nc_zmf_trace_index_incr(void) {
    return ++fake::current->trace_index;
}

void _ringlog(void *ring_log, uint64_t flags, const char *line) {
    auto &f = *static_cast<fake::framework *>(ring_log);
    if (flags != 0x10101000000) {
        f.faults.push_back("flags of a ring line");
    }
    const std::string text = fake::text_of_error_line(line);
    if (f.logs_error_lines && !text.empty()) {
        f.log.push_back("! " + text);
    }
    f.ring.emplace_back(line);
}

} // extern "C"
