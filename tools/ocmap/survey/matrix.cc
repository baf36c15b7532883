#include "survey/matrix.h"

#include <algorithm>
#include <map>
#include <set>

#include "report.h"

namespace ocmap {
namespace {

constexpr size_t get_column = static_cast<size_t>(deed::get);
constexpr size_t edit_column = static_cast<size_t>(deed::edit);

// The native leaves, each once; lists, which are opened on the way to them, only where there are no leaves.
std::vector<native_target> leaves_first(const std::vector<native_target> &all) {
    std::vector<native_target> lists, others;
    for (const native_target &each : all) {
        const schema::native_node *node = schema::native_at(each.path);
        auto &into = node != nullptr && node->what == schema::kind::list ? lists : others;
        if (std::ranges::find(into, each) == into.end())
            into.push_back(each);
    }
    return others.empty() ? lists : others;
}

std::vector<native_target> targets_of(const finding &found) {
    std::vector<native_target> all;
    all.reserve(found.calls.size());
    for (const native_call &call : found.calls)
        all.push_back({call.verb, call.path, call.module});
    return leaves_first(all);
}

cell_part part_of(const fate &told) {
    cell_part part;
    for (const subject &each : told.whose)
        if (!each.name.empty())
            part.whose.push_back(each.name);
    part.what = outcome_of(told.what);
    part.targets = targets_of(told.what);
    if (part.what == outcome::refused) {
        part.error_tag = error_tag(told.what.failure);
        part.message = told.what.failure.message;
    }
    return part;
}

// Parts that differ in nothing that a cell tells are one.
cell cell_of(const std::vector<fate> &fates) {
    cell made;
    for (const fate &each : fates) {
        cell_part part = part_of(each);
        const auto same = std::ranges::find_if(made.parts, [&](const cell_part &other) {
            return other.what == part.what && other.targets == part.targets && other.error_tag == part.error_tag &&
                   other.message == part.message;
        });
        if (same == made.parts.end())
            made.parts.push_back(std::move(part));
        else
            same->whose.insert(same->whose.end(), part.whose.begin(), part.whose.end());
    }
    return made;
}

cell way_back(const story &told) {
    std::vector<native_target> from;
    for (const filling *each : told.filled_by)
        if (each->is_asked)
            from.push_back({"fills", each->native, each->module});
    cell_part part;
    part.targets = leaves_first(from);
    part.what = part.targets.empty() ? outcome::dropped : outcome::mapped;
    return {{part}};
}

void put(std::vector<cell_group> &groups, cell made, size_t platform) {
    const auto same = std::ranges::find(groups, made, &cell_group::what);
    if (same != groups.end())
        same->where.set(platform);
    else
        groups.push_back({platform_set().set(platform), std::move(made)});
}

void put(matrix_row &row, const story &told, size_t platform) {
    for (size_t column = 0; column < all_deeds.size(); ++column)
        put(row.columns[column], cell_of(told.fates[column]), platform);
    put(row.columns[up_column], way_back(told), platform);
}

// An edit that comes down without a value: what was tried did not convert.
bool lacks_value(const finding &found) {
    return std::ranges::any_of(found.calls, [](const native_call &call) {
        const schema::native_node *node = schema::native_at(call.path);
        const bool is_native_leaf = node == nullptr || node->value != schema::type::none;
        return call.verb == "merges" && !call.value && is_native_leaf;
    });
}

// A status that no plug-in gives is the framework's own: the request was not what it should have been.
bool is_foreign(const finding &found) {
    const std::string name = zmf::status_name(found.status);
    return !name.starts_with("RC_") || name.starts_with("RC_ZMF_");
}

using faults = std::map<std::string, platform_set>; // what cannot be worked out, and where

void look_for_faults(const story &told, size_t platform, faults &found) {
    for (const deed what : all_deeds)
        for (const fate &each : told.fates[static_cast<size_t>(what)]) {
            const std::string where = path_of(*told.node) + ", " + name_of(what) + ": ";
            if (is_foreign(each.what))
                found[where + zmf::status_name(each.what.status)].set(platform);
            else if (what == deed::edit && each.what.status == RC_OK && lacks_value(each.what))
                found[where + "the value that is tried does not convert"].set(platform);
        }
}

// A value that no platform takes says nothing of the leaf.
void look_for_refused_value(const matrix_row &row, faults &found) {
    const bool is_always = std::ranges::all_of(row.columns[edit_column], [](const cell_group &group) {
        return std::ranges::all_of(group.what.parts,
                                   [](const cell_part &part) { return part.error_tag == "invalid-value"; });
    });
    if (is_always)
        found[path_of(*row.leaf) + ", edit: no platform takes the value that is tried"].set();
}

// What is read must come back: else the native answer that was tried lacks something.
void look_for_unfilled(const matrix_row &row, faults &found) {
    if (row.is_ever(0, edit_column, outcome::mapped) && !row.is_ever(up_column, column_count, outcome::mapped))
        found[path_of(*row.leaf) + ", filled-by: reads come down, and nothing that was tried fills it"].set();
}

// Leaves of the modules that the plug-in maps; what stands around these trees is the framework's.
std::vector<matrix_row> empty_rows(const zmf::plugin &by, faults &found) {
    std::vector<matrix_row> rows;
    std::set<std::string_view> modules;
    for (const schema::model &model : schema::models())
        for (const schema::node &node : model.nodes)
            if (is_of_plugin(by, node))
                modules.insert(node.module);
    for (const schema::model &model : schema::models())
        for (const schema::node &node : model.nodes) {
            if (!is_leaf(node) || !modules.contains(node.module))
                continue;
            rows.push_back({&node, {}});
            if (!is_of_plugin(by, node))
                found[path_of(node) + ": the plug-in has no callback for it"].set();
        }
    return rows;
}

void add_platform(const zmf::plugin &by, size_t number, std::vector<matrix_row> &rows, faults &found) {
    const device::description on = device_of(platforms()[number]);
    device::install(on);
    device::install_state_store(on, "lab.json");
    by.serve(on.flex_bins ? zmf::performance::flex_bins : zmf::performance::history);
    survey of(by, on);
    if (of.up().status != RC_OK)
        found["the way up, " + of.up().failure.path + ": " + zmf::status_name(of.up().status)].set(number);
    std::vector<story> stories;
    stories.reserve(rows.size());
    for (const matrix_row &row : rows)
        stories.push_back(of.tell(*row.leaf));
    of.settle(stories);
    for (size_t i = 0; i < rows.size(); ++i) {
        look_for_faults(stories[i], number, found);
        put(rows[i], stories[i], number);
    }
}

void count(const matrix_row &row, model_count &into) {
    ++into.leaves;
    const bool is_down = row.is_ever(0, all_deeds.size(), outcome::mapped);
    into.down += is_down;
    into.up += row.is_ever(up_column, column_count, outcome::mapped);
    const bool is_refused = row.is_ever(get_column, get_column + 1, outcome::refused);
    into.refused += !is_down && is_refused;
    into.dropped += !is_down && !is_refused;
}

void add(const model_count &part, model_count &sum) {
    for (const auto member :
         {&model_count::leaves, &model_count::down, &model_count::up, &model_count::refused, &model_count::dropped})
        sum.*member += part.*member;
}

} // namespace

const char *column_name(size_t column) {
    return column == up_column ? "filled-by" : name_of(all_deeds[column]);
}

outcome cell::what() const {
    const auto has = [&](outcome one) { return std::ranges::find(parts, one, &cell_part::what) != parts.end(); };
    return has(outcome::mapped) ? outcome::mapped : has(outcome::refused) ? outcome::refused : outcome::dropped;
}

const cell &matrix_row::at(size_t column, size_t platform) const {
    return std::ranges::find_if(columns[column], [&](const cell_group &each) { return each.where[platform]; })->what;
}

bool matrix_row::is_ever(size_t first_column, size_t columns_behind, outcome what) const {
    for (size_t column = first_column; column < columns_behind; ++column)
        for (const cell_group &each : columns[column])
            if (each.what.what() == what)
                return true;
    return false;
}

matrix make_matrix(const zmf::plugin &by, const std::function<void(size_t platform)> &progress) {
    faults found;
    matrix made{empty_rows(by, found), {}};
    if (made.rows.empty())
        throw zmf::plugin_error{"the plug-in has no callbacks"};
    for (size_t number = 0; number < platform_count; ++number) {
        progress(number);
        add_platform(by, number, made.rows, found);
    }
    for (const matrix_row &row : made.rows) {
        look_for_refused_value(row, found);
        look_for_unfilled(row, found);
    }
    for (const auto &[what, where] : found)
        made.unsettled.push_back(what + (where.all() ? "" : " (on " + told(where) + ")"));
    return made;
}

std::vector<model_count> counts(const matrix &of) {
    std::vector<model_count> all;
    for (const matrix_row &row : of.rows) {
        auto model = std::ranges::find(all, row.leaf->module, &model_count::model);
        if (model == all.end())
            model = all.insert(all.end(), {row.leaf->module});
        count(row, *model);
    }
    model_count sum{"all"};
    for (const model_count &each : all)
        add(each, sum);
    all.push_back(sum);
    return all;
}

} // namespace ocmap
