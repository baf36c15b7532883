#include "survey/survey.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace ocmap {
namespace {

constexpr std::array outcome_names{"mapped", "refused", "dropped"};

bool is_alike(const native_call &left, const native_call &right) {
    return left.verb == right.verb && left.path == right.path && left.module == right.module &&
           left.value.has_value() == right.value.has_value() && left.is_list == right.is_list &&
           left.status == right.status;
}

bool is_alike(const finding &left, const finding &right) {
    return left.is_reached == right.is_reached && left.status == right.status &&
           left.failure.message == right.failure.message && left.conversions == right.conversions &&
           std::ranges::equal(left.calls, right.calls,
                              [](const native_call &l, const native_call &r) { return is_alike(l, r); });
}

void put(std::vector<fate> &fates, finding found, const subject &whose) {
    const auto same = std::ranges::find_if(fates, [&](const fate &each) { return is_alike(each.what, found); });
    if (same != fates.end())
        same->whose.push_back(whose);
    else
        fates.push_back({std::move(found), {whose}});
}

// Which native nodes reads ask for: by name, with all that is above them, or with all that is below them.
class asked_nodes {
public:
    void add(const schema::node &by, const finding &found) {
        for (const native_call &call : found.calls) {
            if (is_leaf(by))
                wanted_.insert(call.path);
            for (size_t end = call.path.size(); end != 0 && end != std::string::npos;
                 end = call.path.rfind('/', end - 1))
                above_.insert(call.path.substr(0, end));
        }
    }

    bool has(const std::string &native) const {
        const schema::native_node *node = schema::native_at(native);
        if (node != nullptr && node->is_key)
            return above_.contains(path_of(*node->parent));
        if (above_.contains(native))
            return true;
        for (size_t end = native.rfind('/'); end != 0 && end != std::string::npos; end = native.rfind('/', end - 1))
            if (wanted_.contains(native.substr(0, end)))
                return true;
        return false;
    }

private:
    std::unordered_set<std::string> above_, wanted_;
};

} // namespace

const char *name_of(outcome what) {
    return outcome_names[static_cast<size_t>(what)];
}

outcome outcome_of(const finding &found) {
    if (found.status != RC_OK)
        return outcome::refused;
    return found.calls.empty() ? outcome::dropped : outcome::mapped;
}

bool is_leaf(const schema::node &node) {
    return node.value != schema::type::none;
}

bool is_of_plugin(const zmf::plugin &by, const schema::node &node) {
    return by.symbol((std::string("ymap_ox_oc_optical_") + node.callback).c_str()) != nullptr;
}

survey::survey(const zmf::plugin &by, const device::description &on)
    : tries_(on), prober_(by, tries_), up_(walk_up(by, tries_)) {}

void survey::settle(const std::vector<story> &all) {
    asked_nodes asked;
    for (const story &told : all)
        for (const fate &each : told.fates[static_cast<size_t>(deed::get)])
            asked.add(*told.node, each.what);
    for (filling &each : up_.fillings)
        each.is_asked = asked.has(each.native);
}

void survey::probe(story &told, deed what, const std::vector<subject> &subjects) const {
    for (const subject &whose : subjects)
        if (is_read(what) || !whose.is_all)
            put(told.fates[static_cast<size_t>(what)], prober_.probe(*told.node, what, whose), whose);
}

story survey::tell(const schema::node &node, const std::vector<chosen_key> &given) const {
    story told{&node, {}, {}};
    const std::vector<subject> subjects = tries_.subjects(node, given);
    for (const deed what : all_deeds)
        probe(told, what, subjects);
    const std::string path = path_of(node);
    for (const filling &each : up_.fillings)
        if (each.path == path)
            told.filled_by.push_back(&each);
    return told;
}

story survey::tell_reads(const schema::node &node) const {
    story told{&node, {}, {}};
    probe(told, deed::get, tries_.subjects(node));
    return told;
}

} // namespace ocmap
