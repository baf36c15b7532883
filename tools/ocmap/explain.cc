#include "explain.h"

#include <algorithm>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

#include <CLI/CLI.hpp>

#include "explain_print.h"
#include "report.h"
#include "road.h"
#include "survey/path_pattern.h"

namespace ocmap {
namespace {

struct explain_options {
    road_options road;
    std::vector<std::string> paths;
    bool only_list = false;
};

std::vector<std::string> known_paths(const zmf::plugin &by) {
    std::vector<std::string> all;
    for (const schema::model &model : schema::models())
        for (const schema::node &node : model.nodes)
            if (is_of_plugin(by, node))
                all.push_back(path_of(node));
    for (const schema::native_node &node : schema::native_nodes())
        all.push_back(path_of(node));
    return all;
}

[[noreturn]] void refuse(const std::string &written, const path_pattern &path, const zmf::plugin &by) {
    constexpr size_t some = 3;
    std::string text = "no model has " + written + "; nearest are:";
    for (const std::string &each : nearest(path.bare(), known_paths(by), some))
        text += " " + each;
    throw bad_input{text};
}

path_pattern read_path(const std::string &written) {
    try {
        return path_pattern(written);
    } catch (const pattern_error &error) {
        throw bad_input{written + ": " + error.text};
    }
}

// A key of a list that has none of that name is a slip of the pen.
void check_keys(const std::string &written, const path_pattern &path, const std::vector<const schema::node *> &found) {
    for (const chosen_key &key : path.keys()) {
        const bool is_known = std::ranges::any_of(found, [&](const schema::node *node) {
            for (; node != nullptr; node = node->parent)
                if (key.list == node->tag)
                    for (const schema::node *row = node + 1; row->is_key; ++row)
                        if (key.name == row->tag)
                            return true;
            return false;
        });
        if (!is_known)
            throw bad_input{written + ": " + key.list + " has no key " + key.name};
    }
}

std::vector<const schema::node *> openconfig_nodes(const path_pattern &path, const zmf::plugin &by) {
    std::vector<const schema::node *> found;
    for (const schema::model &model : schema::models())
        for (const schema::node &node : model.nodes)
            if (path.matches(tags_of(node)) && is_of_plugin(by, node))
                found.push_back(&node);
    return found;
}

std::vector<const schema::native_node *> native_nodes(const path_pattern &path) {
    std::vector<const schema::native_node *> found;
    for (const schema::native_node &node : schema::native_nodes())
        if (path.matches(tags_of(node)))
            found.push_back(&node);
    return found;
}

// Adds what the fates of a node have with native paths.
class use_finder {
public:
    explicit use_finder(std::vector<native_story> &into) : into_(into) {
        for (native_story &each : into)
            paths_.push_back(path_of(*each.node));
    }

    void look_at(const story &told) {
        for (const deed what : all_deeds)
            for (const fate &each : told.fates[static_cast<size_t>(what)])
                for (const native_call &call : each.what.calls)
                    note(told, what, call);
    }

private:
    void note(const story &told, deed what, const native_call &call) {
        for (size_t i = 0; i < paths_.size(); ++i)
            if (paths_[i] == call.path)
                note(into_[i].uses, path_of(*told.node), what, call.verb);
    }

    static void note(std::vector<native_use> &uses, const std::string &path, deed what, const std::string &verb) {
        auto use =
            std::ranges::find_if(uses, [&](const native_use &each) { return each.path == path && each.verb == verb; });
        if (use == uses.end())
            use = uses.insert(uses.end(), {verb, path, {}});
        if (std::ranges::find(use->deeds, name_of(what)) == use->deeds.end())
            use->deeds.emplace_back(name_of(what));
    }

    std::vector<native_story> &into_;
    std::vector<std::string> paths_;
};

// Of all nodes, or only the reads of leaves, which is what settles the way back.
std::vector<story> all_stories(const survey &of, const zmf::plugin &by, bool is_whole) {
    std::vector<story> all;
    for (const schema::model &model : schema::models())
        for (const schema::node &node : model.nodes)
            if (is_of_plugin(by, node) && (is_whole || is_leaf(node)))
                all.push_back(is_whole ? of.tell(node) : of.tell_reads(node));
    return all;
}

void tell_native(const std::vector<story> &all, const ascent &up, std::vector<native_story> &stories) {
    use_finder finder(stories);
    for (const story &each : all)
        finder.look_at(each);
    for (native_story &each : stories)
        for (const filling &made : up.fillings)
            if (made.native == path_of(*each.node))
                each.fills.push_back(&made);
}

// What a path names. Throws bad_input if that is nothing.
struct named {
    path_pattern path;
    std::vector<const schema::node *> nodes;
    std::vector<const schema::native_node *> native;

    named(const std::string &written, const zmf::plugin &by)
        : path(read_path(written)), nodes(openconfig_nodes(path, by)), native(native_nodes(path)) {
        if (nodes.empty() && native.empty())
            refuse(written, path, by);
        if (!nodes.empty())
            check_keys(written, path, nodes);
    }
};

int list(const explain_options &options) {
    const zmf::plugin plugin(plugin_of(options.road));
    output out(STDOUT_FILENO);
    for (const std::string &written : options.paths) {
        const named found(written, plugin);
        for (const schema::node *node : found.nodes)
            out.write(path_of(*node) + "\n");
        for (const schema::native_node *node : found.native)
            out.write(path_of(*node) + "\n");
    }
    out.finish();
    return exit_done;
}

int explain(const explain_options &options) {
    road road(options.road);
    survey of(road.plugin, road.device.held());
    explanation told;
    for (const std::string &written : options.paths) {
        const named found(written, road.plugin);
        for (const schema::node *node : found.nodes)
            told.nodes.push_back(of.tell(*node, found.path.keys()));
        for (const schema::native_node *node : found.native)
            told.native.push_back({node, {}, {}});
    }
    const std::vector<story> all = all_stories(of, road.plugin, !told.native.empty());
    of.settle(all);
    tell_native(all, of.up(), told.native);
    if (options.road.form == "json")
        print_json(told, road.out);
    else
        print_text(told, road.out);
    road.out.finish();
    return exit_done;
}

} // namespace

void add_explain(CLI::App &app, std::function<int()> &chosen) {
    auto options = std::make_shared<explain_options>();
    CLI::App *command = app.add_subcommand("explain", "Tell what becomes of a node on a device, and why");
    add_device_options(*command, options->road);
    command->add_option("--format", options->road.form, "Form of the output: text, json (default: text)")
        ->check(CLI::IsMember({"text", "json"}))
        ->type_name("FORM");
    command
        ->add_option("paths", options->paths,
                     "OpenConfig or native paths, with or without keys; * stands for any letters of a step, ** for any "
                     "steps")
        ->required();
    command->add_flag("--list", options->only_list, "Print the paths that are named, and no more");
    command->footer("Examples:\n"
                    "  ocmap explain /components/component/optical-channel/config/frequency\n"
                    "  ocmap explain '/terminal-device/logical-channels/channel[index=300]/otn/state/pre-fec-ber/avg'\n"
                    "  ocmap explain --device examples/legacy.json '/**/optics-dwdm-carrier/*'");
    command->callback(
        [options, &chosen] { chosen = [options] { return options->only_list ? list(*options) : explain(*options); }; });
}

} // namespace ocmap
