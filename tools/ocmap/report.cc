// Messages on standard error. A status with an error-tag of its own: a row in `tags`.
#include "report.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <new>

#include "device/device.h"
#include "input.h"
#include "output.h"
#include "print.h"
#include "road.h"
#include "schema/schema.h"
#include "zmf/plugin.h"

namespace ocmap {
namespace {

struct tag_row {
    rcode status;
    const char *tag;
    const char *message = ""; // where the plug-in leaves none
};

constexpr std::array tags{
    tag_row{RC_UNSUPPORTED_AUGMENT, "unknown-namespace"},
    tag_row{RC_LIST_KEY_ERROR, "missing-element"},
    tag_row{RC_INVALID_ARGUMENTS, "operation-failed", "a container is deleted as a whole, with no nodes in it"},
    tag_row{RC_KEY_DELETE, "operation-not-supported", "a key cannot be deleted: delete its entry"},
    tag_row{RC_VALUE_OUT_OF_RANGE, "invalid-value"},
    tag_row{RC_NAMESPACE_MISSING, "invalid-value"},
    tag_row{RC_SUBTREE_ERROR, "missing-element", "an entry without its key"},
    tag_row{RC_NO_MEMORY, "resource-denied"},
    tag_row{zmf::rc_leafref_mismatch, "invalid-value"},
    tag_row{zmf::rc_no_such_entry, "missing-element", "an entry without its key"},
    tag_row{zmf::rc_too_big, "too-big"},
};

// The next step of a path without its module prefix and keys, taken off the front. Keys are quoted by '.
std::string_view take_step(std::string_view &path) {
    size_t end = 1;
    for (bool quoted = false; end < path.size() && (quoted || path[end] != '/'); ++end)
        quoted ^= path[end] == '\'';
    std::string_view step = path.substr(1, end - 1);
    path.remove_prefix(end);
    step = step.substr(0, step.find('['));
    return step.substr(step.find(':') + 1);
}

const schema::model *model_of_top(std::string_view tag) {
    for (const schema::model &model : schema::models())
        if (!model.nodes.empty() && tag == model.nodes.front().tag)
            return &model;
    return nullptr;
}

bool is_known(std::string_view path) {
    if (!path.starts_with('/'))
        return false;
    const schema::model *model = model_of_top(take_step(path));
    const schema::node *node = model ? &model->nodes.front() : nullptr;
    while (node && path.starts_with('/'))
        node = schema::child(node, *model, take_step(path));
    return node != nullptr;
}

std::string position(const device::description_error &error) {
    if (error.line == 0)
        return error.file;
    return error.file + ":" + std::to_string(error.line) + ":" + std::to_string(error.column);
}

const tag_row &row_of(rcode status) {
    static constexpr tag_row other{RC_OK, "operation-failed"};
    const auto *const found = std::ranges::find(tags, status, &tag_row::status);
    return found == tags.end() ? other : *found;
}

void row(const char *name, std::string_view text) {
    if (!text.empty())
        std::fprintf(stderr, "  %-11s %s\n", name, one_line(text).c_str());
}

} // namespace

std::string one_line(std::string_view text) {
    std::string safe;
    safe.reserve(text.size());
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        if (letter == '\n') {
            safe += "\\n";
        } else if (byte < 0x20 || byte == 0x7f) {
            constexpr std::string_view digits = "0123456789abcdef";
            safe += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
        } else {
            safe += letter;
        }
    }
    return safe;
}

void complain(std::string_view text) {
    std::fprintf(stderr, "ocmap: %s\n", one_line(text).c_str());
}

const char *error_tag(const zmf::failure &failure) {
    if (failure.status == RC_UNSUPPORTED_NODE)
        return is_known(failure.path) ? "operation-not-supported" : "unknown-element";
    if (failure.status == RC_SUBTREE_ERROR && !failure.value.empty()) // of a reply, that is
        return "operation-failed";
    return row_of(failure.status).tag;
}

void report(const zmf::failure &failure) {
    complain(zmf::status_name(failure.status));
    row("error-tag:", error_tag(failure));
    row("error-path:", failure.path);
    row("message:", failure.message.empty() ? row_of(failure.status).message : failure.message);
}

void report(const device::edit_failure &failure) {
    complain("the device refuses the edit");
    row("error-tag:", failure.error_tag);
    row("error-path:", failure.path);
    row("leaf:", failure.leaf);
    row("message:", failure.text);
}

int run_command(const std::function<int()> &command) {
    try {
        return command();
    } catch (const walk_failure &error) {
        report(error.what);
        return exit_refused;
    } catch (const device::edit_failure &failure) {
        report(failure);
        return exit_refused;
    } catch (const print_error &error) {
        complain(error.text);
        return exit_refused;
    } catch (const bad_input &error) {
        complain(error.text);
        return exit_bad_input;
    } catch (const device::description_error &error) {
        complain(position(error) + ": " + error.text);
        return exit_bad_input;
    } catch (const zmf::plugin_error &error) {
        complain(error.text);
        return exit_bad_input;
    } catch (const output_error &error) {
        complain(error.text);
        return exit_output;
    } catch (const std::bad_alloc &) {
        complain("out of memory");
        return exit_refused;
    } catch (const std::exception &error) {
        complain(error.what());
        return exit_refused;
    }
}

} // namespace ocmap
