// Stories for people.
#include "explain_print.h"

#include <algorithm>

#include "paint.h"
#include "report.h"

namespace ocmap {
namespace {

constexpr std::array kind_names{"container", "list", "leaf", "leaf-list"};
constexpr std::array type_names{"",          "string",           "name",        "boolean", "integer", "integer64",
                                "decimal64", "decimal64 in dBm", "enumeration", "identity"};

std::string quoted(const std::optional<std::string> &value) {
    return value ? '"' + one_line(*value) + '"' : "no value";
}

std::string joined(const std::vector<std::string> &texts) {
    std::string all;
    for (const std::string &text : texts)
        all.append(all.empty() ? "" : ", ").append(text);
    return all;
}

std::string those_of(const fate &told) {
    std::vector<std::string> names;
    for (const subject &each : told.whose)
        if (!each.told.empty())
            names.push_back(each.told);
    return joined(names);
}

colour colour_of(outcome what) {
    return what == outcome::mapped ? colour::green : what == outcome::refused ? colour::red : colour::yellow;
}

// Functions bear their direction and model in front, which the path says already.
class printer {
public:
    printer(output &out) : out_(out), paint_(STDOUT_FILENO) {}

    void print(const story &told) {
        head(told);
        for (const deed what : all_deeds)
            print_deed(told, what);
        print_way_back(told.filled_by);
    }

    void print(const native_story &told) {
        const schema::native_node &node = *told.node;
        line(0, paint_(colour::bold, path_of(node)));
        line(1, std::string(kind_names[static_cast<size_t>(node.what)]) + " of " + node.module +
                    (node.is_config ? ", configuration" : ", operational"));
        for (const native_use &use : told.uses)
            line(1, use.verb, use.path + paint_(colour::faint, "  in " + joined(use.deeds)));
        for (const filling *each : told.fills)
            line(1, "fills", each->path + "  " + values(*each));
        if (told.uses.empty() && told.fills.empty())
            line(1, "Nothing comes down to it, and nothing comes up of it.");
        out_.write("\n");
    }

private:
    void head(const story &told) {
        const schema::node &node = *told.node;
        line(0, paint_(colour::bold, path_of(node)));
        std::string kind = kind_names[static_cast<size_t>(node.what)];
        if (node.is_key)
            kind = "key";
        if (node.value != schema::type::none)
            kind += std::string(", ") + type_names[static_cast<size_t>(node.value)];
        line(1, kind + ", " + (node.is_config ? "configuration" : "state") + ", of " + node.module);
        line(1, "callback", std::string("ymap_ox_oc_optical_") + node.callback);
        out_.write("\n");
    }

    void print_deed(const story &told, deed what) {
        const auto &fates = told.fates[static_cast<size_t>(what)];
        std::string_view label = name_of(what);
        for (const fate &each : fates) {
            const outcome came = outcome_of(each.what);
            line(1, label, paint_(colour_of(came), name_of(came)) + paint_(colour::faint, about(each)));
            print_finding(each.what);
            label = "";
        }
    }

    static std::string about(const fate &told) {
        const std::string whose = those_of(told);
        return whose.empty() ? "" : "  " + whose;
    }

    void print_finding(const finding &found) {
        for (const native_call &call : found.calls)
            print_call(call);
        if (found.status != RC_OK) {
            line(2, "status", zmf::status_name(found.status) + " (" + error_tag(found.failure) + ")");
            line(2, "at", found.failure.path);
            if (!found.failure.message.empty())
                line(2, "message", one_line(found.failure.message));
        } else if (!found.is_reached) {
            line(2, "", paint_(colour::faint, "the walk does not come to its callback"));
        }
        if (!found.conversions.empty())
            line(2, "by", paint_(colour::faint, joined(found.conversions)));
    }

    void print_call(const native_call &call) {
        std::string text = call.path;
        if (call.is_list)
            text += "  (an entry)";
        else if (call.value)
            text += "  " + quoted(call.value);
        text += paint_(colour::faint, "  " + call.module);
        if (call.status != RC_OK)
            text += " -> " + zmf::status_name(call.status);
        line(2, call.verb, text);
    }

    void print_way_back(const std::vector<const filling *> &fillings) {
        std::string_view label = "filled by";
        for (const filling *each : fillings) {
            line(1, label, each->native + paint_(colour::faint, about(*each)));
            line(2, each->operation, values(*each));
            line(2, "by", paint_(colour::faint, joined(functions(*each))));
            label = "";
        }
        if (fillings.empty())
            line(1, label, "nothing");
        out_.write("\n");
    }

    static std::string about(const filling &told) {
        return "  " + told.module + (told.is_asked ? "" : "; no read on this device asks for it");
    }

    static std::string values(const filling &told) { return quoted(told.from) + " -> " + quoted(told.to); }

    static std::vector<std::string> functions(const filling &told) {
        std::vector<std::string> all{told.callback};
        all.insert(all.end(), told.conversions.begin(), told.conversions.end());
        return all;
    }

    // A line of its own, or one under a label; labels are padded, so that what they name stands in a column.
    void line(size_t depth, std::string_view text) {
        out_.write(std::string(2 * depth, ' '));
        out_.write(text);
        out_.write("\n");
    }

    void line(size_t depth, std::string_view label, std::string_view text) {
        constexpr size_t width = 12;
        line(depth, std::string(label) + std::string(label.size() < width ? width - label.size() : 1, ' ') +
                        std::string(text));
    }

    output &out_;
    const paint paint_;
};

} // namespace

void print_text(const explanation &told, output &out) {
    printer printer(out);
    for (const story &each : told.nodes)
        printer.print(each);
    for (const native_story &each : told.native)
        printer.print(each);
}

} // namespace ocmap
