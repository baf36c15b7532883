// Running requests of walk tests: see run.h.
#include "run.h"

#include <cstring>

#include "test_model.h"

namespace {

constexpr std::pair<rcode, const char *> status_names[] = {
    {RC_OK, "ok"},
    {fake::bad, "bad"},
    {fake::injected, "injected"},
    {RC_INVALID_ARGUMENTS, "INVALID_ARGUMENTS"},
    {RC_SUBTREE_ERROR, "SUBTREE_ERROR"},
    {RC_UNSUPPORTED_NODE, "UNSUPPORTED_NODE"},
    {RC_LIST_KEY_ERROR, "LIST_KEY_ERROR"},
    {RC_KEY_DELETE, "KEY_DELETE"},
    {RC_NOT_MAPPED, "NOT_MAPPED"},
};

std::string status_name(rcode status) {
    for (const auto &[known, name] : status_names) {
        if (known == status) {
            return name;
        }
    }
    return std::to_string(status);
}

std::string left_behind(const fake::framework &f, const request_text &request) {
    std::string text = f.words();
    text += f.req.replace_armed != 0 ? " armed" : "";
    text += f.hierarchy.empty() ? "" : " hierarchy=" + std::to_string(f.hierarchy.size());
    text += f.frames.empty() ? "" : " frames=" + std::to_string(f.frames.size());
    const std::string changes = request.changes();
    text += changes.empty() ? "" : " " + changes;
    for (const std::string &fault : f.faults) {
        text += " fault: " + fault;
    }
    return text;
}

} // namespace

std::string run(fake::framework &f, const std::string &text) {
    request_text request(text, TEST_NS);
    const bool at_root = request.top()->tag != nullptr && strcmp(request.top()->tag, "top") == 0;
    const auto walk = at_root ? ymap_ox_oc_optical_testmodel_lvla_top : ymap_ox_oc_optical_testmodel_augment_lvla_host;
    const rcode status = walk(&f.ctx, request.top(), &f.output);
    std::string end = "= " + status_name(status);
    if (f.req.err_msg != nullptr) {
        end += std::string(" msg=") + f.req.err_msg;
    }
    f.log.push_back(end);
    const std::string left = left_behind(f, request);
    if (!left.empty()) {
        f.log.push_back("left" + left);
    }
    return request.marks();
}

std::string lines(const std::string &events) {
    std::string text;
    for (size_t at = 0; at < events.size();) {
        size_t end = events.find(';', at);
        end = end == std::string::npos ? events.size() : end;
        const size_t first = events.find_first_not_of(" \n", at);
        if (first < end) {
            const size_t last = events.find_last_not_of(" \n", end - 1);
            text += events.substr(first, last + 1 - first) + "\n";
        }
        at = end + 1;
    }
    return text;
}
