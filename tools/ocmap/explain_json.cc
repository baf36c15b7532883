// Stories for programs.
#include "explain_print.h"

#include "json_fields.h"
#include "report.h"

namespace ocmap {
namespace {

constexpr std::array kind_names{"container", "list", "leaf", "leaf-list"};
constexpr std::array type_names{"",          "string",    "name",      "boolean",     "integer",
                                "integer64", "decimal64", "decimal64", "enumeration", "identity"};

class printer {
public:
    explicit printer(output &out) : to_(out) {}

    void print(const explanation &told) {
        to_.object([&] {
            to_.objects("nodes", told.nodes, [&](const story &each) { print(each); });
            to_.objects("native", told.native, [&](const native_story &each) { print(each); });
        });
        to_.finish();
    }

private:
    void print(const story &told) {
        const schema::node &node = *told.node;
        to_.text("path", path_of(node));
        to_.text("module", node.module);
        to_.text("kind", kind_names[static_cast<size_t>(node.what)]);
        if (node.value != schema::type::none)
            to_.text("type", type_names[static_cast<size_t>(node.value)]);
        to_.truth("key", node.is_key);
        to_.truth("config", node.is_config);
        to_.text("callback", std::string("ymap_ox_oc_optical_") + node.callback);
        for (const deed what : all_deeds)
            to_.objects(name_of(what), told.fates[static_cast<size_t>(what)], [&](const fate &each) { print(each); });
        to_.objects("filled-by", told.filled_by, [&](const filling *each) { print(*each); });
    }

    void print(const native_story &told) {
        to_.text("path", path_of(*told.node));
        to_.text("module", told.node->module);
        to_.text("kind", kind_names[static_cast<size_t>(told.node->what)]);
        to_.truth("config", told.node->is_config);
        to_.objects("used-by", told.uses, [&](const native_use &use) {
            to_.text("path", use.path);
            to_.text("verb", use.verb);
            to_.texts("operations", use.deeds);
        });
        to_.objects("fills", told.fills, [&](const filling *each) { print(*each); });
    }

    void print(const fate &told) {
        const finding &found = told.what;
        to_.objects("of", told.whose, [&](const subject &each) { print(each); });
        to_.text("outcome", name_of(outcome_of(found)));
        to_.truth("reached", found.is_reached);
        to_.text("status", zmf::status_name(found.status));
        if (found.status != RC_OK) {
            to_.text("error-tag", error_tag(found.failure));
            to_.text("error-path", found.failure.path);
            to_.text("message", found.failure.message);
        }
        to_.texts("conversions", found.conversions);
        to_.objects("calls", found.calls, [&](const native_call &each) { print(each); });
    }

    void print(const subject &whose) {
        to_.text("name", whose.name);
        to_.objects("keys", whose.keys, [&](const chosen_key &each) {
            to_.text("list", each.list);
            to_.text("name", each.name);
            to_.text("value", each.value);
        });
    }

    void print(const native_call &call) {
        to_.text("verb", call.verb);
        to_.text("path", call.path);
        to_.text("module", call.module);
        to_.text_or_null("value", call.value);
        to_.truth("entry", call.is_list);
        if (call.status != RC_OK)
            to_.text("status", zmf::status_name(call.status));
    }

    void print(const filling &told) {
        to_.text("path", told.path);
        to_.text("native", told.native);
        to_.text("module", told.module);
        to_.text("operation", told.operation);
        to_.truth("asked", told.is_asked);
        to_.text("callback", told.callback);
        to_.texts("conversions", told.conversions);
        to_.text_or_null("from", told.from);
        to_.text_or_null("to", told.to);
    }

    json_fields to_;
};

} // namespace

void print_json(const explanation &told, output &out) {
    printer(out).print(told);
}

} // namespace ocmap
