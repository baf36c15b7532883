// Output trees: steps of a path are found or made under the entries that are current, and values, operations and
// namespaces of repeated adds are settled. How nodes are stored stands in output_body.h.
#include <algorithm>
#include <cstring>
#include <functional>

#include "output_body.h"
#include "session.h"

namespace zmf {

namespace {

// What a node and a list entry known by its keys cost, with their share of the look-up tables.
constexpr size_t node_cost = sizeof(output_node) + 12;
constexpr size_t entry_cost = 24;
constexpr size_t fewest_slots = 64;
static_assert(sizeof(output_node) == 112);

size_t mix(uint64_t key) noexcept {
    key *= UINT64_C(0x9e3779b97f4a7c15);
    return static_cast<size_t>(key ^ (key >> 29));
}
uint64_t pair(uint32_t high, uint32_t low) noexcept {
    return uint64_t{high} << 32 | low;
}

bool too_full(size_t used, size_t slots) noexcept {
    return (used + 1) * 10 > slots * 7;
}

} // namespace

void entry_notes::enter(output_tree::body &tree) {
    if (tree_ == &tree)
        return;
    leave();
    if (tree.noted_by != nullptr)
        tree.noted_by->leave();
    tree_ = &tree;
    tree.noted_by = this;
}

void entry_notes::leave() noexcept {
    if (tree_ == nullptr)
        return;
    give_back(dropped_);
    tree_->noted_by = nullptr;
    tree_ = nullptr;
}

void entry_notes::forget() noexcept {
    dropped_ += notes_.size();
    notes_.clear();
    tree_ = nullptr;
}

void entry_notes::give_back(size_t size) noexcept {
    while (!notes_.empty() && dropped_ + notes_.size() > size) {
        const note_record &note = notes_.back();
        output_node &place = *tree_->newest(note.parent, note.path_class);
        place.current = note.current;
        place.noted_at = note.noted_at & 0x3fffffff;
        notes_.pop_back();
    }
}

void entry_notes::note(uint32_t parent, uint32_t place_class, uint32_t entry, uint32_t level) {
    output_node &place = *tree_->newest(parent, place_class);
    uint32_t mark = (level + 1) & 0x3fffffff;
    if (place.noted_at != mark) {
        notes_.push_back({parent, place_class, place.current, place.noted_at});
        place.noted_at = mark;
    }
    place.current = entry;
}

output_tree::body::body() {
    classes.push_back({0, nullptr, false, false, {}, nullptr, nullptr, nullptr});
    places.assign(fewest_slots, 0);
    key_slots.assign(fewest_slots, {});
    chunks.push_back(std::make_unique<output_node[]>(chunk_nodes));
    at(0).node.framework = this;
    node_count = 1;
}

output_tree::body::~body() {
    if (noted_by != nullptr)
        noted_by->forget();
    for (uint32_t i = 0; i < node_count; ++i)
        if (at(i).node.has_value_ns) // the plug-in's copy
            kvo_named_free(at(i).node.value_ns);
}

std::string output_tree::body::path_of(uint32_t cls) const {
    std::string path;
    for (; cls != 0; cls = classes[cls].parent)
        path.insert(0, classes[cls].tag).insert(0, 1, '/');
    return path;
}

uint32_t output_tree::body::class_of(uint32_t parent, std::string_view tag) {
    uint32_t tag_number = names.number(tag);
    auto [known, is_new] = class_numbers.try_emplace(pair(parent, tag_number), static_cast<uint32_t>(classes.size()));
    uint32_t number = known->second;
    if (is_new) {
        classes.push_back({parent, names.text(tag_number), false, false, {}, nullptr, nullptr, nullptr});
        consult_schema(number);
    }
    return number;
}

namespace {

struct openconfig_place {
    const schema::model *model = nullptr;
    const schema::node *node = nullptr;
};

openconfig_place top_of_models(bool roots, std::string_view tag) {
    for (const schema::model &model : schema::models())
        if (model.is_root == roots)
            if (const schema::node *top = schema::child(nullptr, model, tag))
                return {&model, top};
    return {};
}

openconfig_place openconfig_child(const path_class &parent, std::string_view tag) {
    if (parent.tag == nullptr)
        return top_of_models(true, tag);
    if (parent.openconfig == nullptr)
        return {};
    if (const schema::node *node = schema::child(parent.openconfig, *parent.model, tag))
        return {parent.model, node};
    return top_of_models(false, tag); // where another model augments this one
}

std::vector<const char *> key_names(const path_class &list) {
    if (list.native != nullptr)
        return {list.native->keys.begin(), list.native->keys.end()};
    std::vector<const char *> names;
    if (list.openconfig == nullptr || list.openconfig->what != schema::kind::list)
        return names;
    auto rows = list.model->nodes;
    for (size_t i = static_cast<size_t>(list.openconfig - rows.data()) + 1; i < list.openconfig->end; ++i)
        if (rows[i].is_key && rows[i].parent == list.openconfig)
            names.push_back(rows[i].tag);
    return names;
}

} // namespace

void output_tree::body::consult_schema(uint32_t number) {
    path_class &made = classes[number];
    const path_class &parent = classes[made.parent];
    made.native = schema::native_list_at(path_of(number));
    openconfig_place place = openconfig_child(parent, made.tag);
    made.model = place.model;
    made.openconfig = place.node;
    const schema::native_node *native = schema::native_at(path_of(number));
    made.is_leaf_list = (native != nullptr && native->what == schema::kind::leaf_list) ||
                        (place.node != nullptr && place.node->what == schema::kind::leaf_list);
    made.is_key = std::find(parent.keys.begin(), parent.keys.end(), number) != parent.keys.end();
    std::vector<uint32_t> keys;
    for (const char *name : key_names(made)) {
        uint32_t key = class_of(number, name); // may move all classes
        classes[key].is_key = true;
        keys.push_back(key);
    }
    classes[number].keys = std::move(keys);
}

size_t output_tree::body::place_slot(uint32_t parent, uint32_t cls) noexcept {
    size_t mask = places.size() - 1;
    size_t slot = mix(pair(parent, cls)) & mask;
    while (places[slot] != 0 && (at(places[slot]).parent != parent || at(places[slot]).path_class != cls))
        slot = (slot + 1) & mask;
    return slot;
}

output_node *output_tree::body::newest(uint32_t parent, uint32_t cls) noexcept {
    uint32_t number = places[place_slot(parent, cls)];
    return number == 0 ? nullptr : &at(number);
}

void output_tree::body::grow_places() {
    std::vector<uint32_t> old(places.size() * 2, 0);
    old.swap(places);
    for (uint32_t number : old)
        if (number != 0)
            places[place_slot(at(number).parent, at(number).path_class)] = number;
}

uint32_t output_tree::body::key_hash(uint32_t parent, uint32_t cls,
                                     const std::vector<resolved_key> &keys) const noexcept {
    uint64_t hash = mix(pair(parent, cls));
    for (const resolved_key &key : keys) // a sum, since keys may come in any order
        hash += mix(std::hash<std::string_view>{}(key.value) + key.path_class);
    return static_cast<uint32_t>(mix(hash));
}

bool output_tree::body::has_keys(uint32_t entry, const std::vector<resolved_key> &keys) noexcept {
    return std::all_of(keys.begin(), keys.end(), [&](const resolved_key &key) {
        const output_node *leaf = newest(entry, key.path_class);
        return leaf != nullptr && leaf->node.value != nullptr && key.value == leaf->node.value;
    });
}

output_node *output_tree::body::entry_with_keys(uint32_t parent, uint32_t cls, const std::vector<resolved_key> &keys) {
    uint32_t hash = key_hash(parent, cls, keys);
    size_t mask = key_slots.size() - 1;
    for (size_t slot = hash & mask; key_slots[slot].entry != 0; slot = (slot + 1) & mask) {
        output_node &entry = at(key_slots[slot].entry);
        if (key_slots[slot].hash == hash && entry.parent == parent && entry.path_class == cls &&
            has_keys(entry.number, keys))
            return &entry;
    }
    return nullptr;
}

void output_tree::body::grow_key_slots() {
    std::vector<key_slot> old(key_slots.size() * 2);
    old.swap(key_slots);
    size_t mask = key_slots.size() - 1;
    for (const key_slot &kept : old) {
        if (kept.entry == 0)
            continue;
        size_t slot = kept.hash & mask;
        while (key_slots[slot].entry != 0)
            slot = (slot + 1) & mask;
        key_slots[slot] = kept;
    }
}

// The first entry with these keys is the one that is found later.
void output_tree::body::remember_keys(output_node &entry, const std::vector<resolved_key> &keys) {
    if (entry_with_keys(entry.parent, entry.path_class, keys) != nullptr)
        return;
    if (too_full(keys_used, key_slots.size()))
        grow_key_slots();
    uint32_t hash = key_hash(entry.parent, entry.path_class, keys);
    size_t mask = key_slots.size() - 1;
    size_t slot = hash & mask;
    while (key_slots[slot].entry != 0)
        slot = (slot + 1) & mask;
    key_slots[slot] = {hash, entry.number};
    ++keys_used;
}

void output_tree::body::key_was_set(const output_node &leaf) {
    output_node &entry = at(leaf.parent);
    std::vector<resolved_key> keys;
    for (uint32_t cls : classes[entry.path_class].keys) {
        const output_node *key = newest(entry.number, cls);
        if (key == nullptr || key->node.value == nullptr)
            return;
        keys.push_back({cls, key->node.value});
    }
    if (!keys.empty())
        remember_keys(entry, keys);
}

std::vector<output_tree::body::resolved_key> output_tree::body::resolve(uint32_t cls,
                                                                        const std::vector<path_key> &keys) {
    std::vector<resolved_key> resolved;
    resolved.reserve(keys.size());
    for (const path_key &key : keys)
        resolved.push_back({class_of(cls, key.name), key.value});
    return resolved;
}

output_node *output_tree::body::existing_step(uint32_t parent, uint32_t cls, const path_step &step, bool new_entry) {
    if (!step.keys.empty())
        return entry_with_keys(parent, cls, resolve(cls, step.keys));
    output_node *last = newest(parent, cls);
    if (last == nullptr)
        return nullptr;
    output_node *current = last->current == 0 ? nullptr : &at(last->current);
    if (new_entry)
        return current != nullptr && current->first_child == 0 ? current : nullptr;
    if (current != nullptr || !is_openconfig_list(cls))
        return current != nullptr ? current : last;
    // What has no current entry in an OpenConfig list belongs to none of the real ones.
    return has_any_key(*last) ? nullptr : last;
}

bool output_tree::body::is_openconfig_list(uint32_t cls) const noexcept {
    return classes[cls].openconfig != nullptr && classes[cls].openconfig->what == schema::kind::list;
}

bool output_tree::body::has_any_key(const output_node &entry) noexcept {
    const std::vector<uint32_t> &keys = classes[entry.path_class].keys;
    return std::any_of(keys.begin(), keys.end(), [&](uint32_t key) { return newest(entry.number, key) != nullptr; });
}

// A leaf-list has one node for each value; the same value added again is the same node.
output_node *output_tree::body::existing_value(uint32_t parent, uint32_t leaf_list, const char *value) {
    output_node *last = newest(parent, leaf_list);
    if (last == nullptr || (last->node.value == nullptr) != (value == nullptr))
        return nullptr;
    return value == nullptr || std::strcmp(last->node.value, value) == 0 ? last : nullptr;
}

output_node &output_tree::body::create(uint32_t parent, uint32_t cls, const char *ns) {
    if (node_count % chunk_nodes == 0)
        chunks.push_back(std::make_unique<output_node[]>(chunk_nodes));
    if (too_full(places_used, places.size()))
        grow_places();
    uint32_t number = node_count++;
    output_node &made = at(number);
    made.number = number;
    made.parent = parent;
    made.path_class = cls;
    made.node.tag = classes[cls].tag;
    made.node.ns = names.text(names.number(ns));
    made.node.framework = this;

    output_node &above = at(parent);
    (above.first_child == 0 ? above.first_child : at(above.last_child).next_sibling) = number;
    above.last_child = number;

    uint32_t &slot = places[place_slot(parent, cls)];
    if (slot == 0) {
        ++places_used;
    } else { // what is noted of a place moves with the newest node
        made.current = at(slot).current;
        made.noted_at = at(slot).noted_at;
    }
    slot = number;
    return made;
}

output_node &output_tree::body::create_step(uint32_t parent, uint32_t cls, const path_step &step, const char *ns) {
    output_node &made = create(parent, cls, ns);
    if (!step.keys.empty()) {
        std::vector<resolved_key> keys = resolve(cls, step.keys);
        made.list_entry = 1;
        for (const resolved_key &key : keys) {
            output_node &leaf = create(made.number, key.path_class, ns);
            leaf.node.value = values.keep(key.value);
            leaf.node.has_value = 1;
        }
        remember_keys(made, keys);
    }
    return made;
}

// Whether an add stores its value: a key holds what it has against an add without value.
bool output_tree::body::takes_value(const output_node *node, const char *value, const zmf_datatree *source) const {
    if (value == nullptr || node == nullptr || node->node.value == nullptr)
        return value != nullptr;
    return source != nullptr && std::strcmp(node->node.value, value) != 0;
}

void output_tree::body::set_value(output_node &node, const char *value, const zmf_datatree *source) {
    bool is_key = classes[node.path_class].is_key;
    bool stores = takes_value(&node, value, source);
    if (stores)
        node.node.value = values.keep(value);
    else if (value == nullptr && source != nullptr && !is_key)
        node.node.value = nullptr;
    node.node.has_value = node.node.value != nullptr;
    if (source != nullptr) {
        node.has_source = 1;
        if (!is_key) {
            node.node.op = source->op;
            node.node.op_explicit = source->op_explicit;
        }
    }
    if (is_key && stores)
        key_was_set(node);
}

size_t output_tree::body::bytes() const noexcept {
    return (node_count - 1) * node_cost + keys_used * entry_cost + values.bytes();
}

size_t output_tree::body::bytes_needed(const addition &what, size_t first_missing, const output_node *last) const {
    size_t need = takes_value(last, what.value, what.source) ? std::strlen(what.value) + 1 + entry_cost : 0;
    for (size_t i = first_missing; i < what.steps->size(); ++i) {
        need += node_cost;
        for (const path_key &key : (*what.steps)[i].keys)
            need += node_cost + entry_cost + key.value.size() + 1;
    }
    return need;
}

rcode output_tree::body::add(uint32_t start, const addition &what, entry_notes &notes, output_node *&added) {
    const std::vector<path_step> &steps = *what.steps;
    step_classes.clear();
    for (const path_step &step : steps)
        step_classes.push_back(class_of(step_classes.empty() ? at(start).path_class : step_classes.back(), step.name));

    size_t known = 0;
    output_node *place = &at(start);
    while (known < steps.size()) {
        bool is_last = known + 1 == steps.size();
        output_node *next =
            is_last && classes[step_classes[known]].is_leaf_list
                ? existing_value(place->number, step_classes[known], what.value)
                : existing_step(place->number, step_classes[known], steps[known], is_last && what.list_flag);
        if (next == nullptr)
            break;
        place = next;
        ++known;
    }
    size_t need = bytes_needed(what, known, known == steps.size() ? place : nullptr);
    if (need > limit || bytes() > limit - need)
        return rc_too_big;

    for (; known < steps.size(); ++known)
        place = &create_step(place->number, step_classes[known], steps[known], what.ns);
    set_value(*place, what.value, what.source);
    if (what.list_flag && !classes[place->path_class].is_leaf_list) {
        place->list_entry = 1;
        notes.enter(*this);
        notes.note(place->parent, place->path_class, place->number, what.level);
    }
    added = place;
    return RC_OK;
}

output_node *output_tree::body::find(uint32_t start, const std::vector<path_step> &steps) {
    output_node *place = &at(start);
    for (const path_step &step : steps) {
        place = existing_step(place->number, class_of(place->path_class, step.name), step, false);
        if (place == nullptr)
            return nullptr;
    }
    return place;
}

void output_tree::body::set_namespace(output_node &node, const char *ns) {
    node.node.ns = names.text(names.number(ns));
}

output_tree::output_tree() : body_(std::make_unique<body>()) {}
output_tree::~output_tree() = default;

zmf_datatree *output_tree::root() noexcept {
    return &body_->at(0).node;
}
const zmf_datatree *output_tree::root() const noexcept {
    return &body_->at(0).node;
}
size_t output_tree::nodes() const noexcept {
    return body_->node_count - 1;
}
size_t output_tree::bytes() const noexcept {
    return body_->bytes();
}
void output_tree::limit(size_t bytes) {
    body_->limit = bytes;
}

namespace {
const zmf_datatree *numbered(const zmf_datatree *of, uint32_t number) noexcept {
    return number == 0 ? nullptr : &tree_of(of)->at(number).node;
}
} // namespace

const zmf_datatree *output_tree::first_child(const zmf_datatree *node) noexcept {
    return numbered(node, record_of(node)->first_child);
}
const zmf_datatree *output_tree::next_sibling(const zmf_datatree *node) noexcept {
    return numbered(node, record_of(node)->next_sibling);
}
const zmf_datatree *output_tree::parent(const zmf_datatree *node) noexcept {
    const output_node *record = record_of(node);
    return record->number == 0 ? nullptr : &tree_of(node)->at(record->parent).node;
}
bool output_tree::is_list_entry(const zmf_datatree *node) noexcept {
    return record_of(node)->list_entry;
}
bool output_tree::is_key(const zmf_datatree *node) noexcept {
    return tree_of(node)->class_at(record_of(node)->path_class).is_key;
}
bool output_tree::has_source(const zmf_datatree *node) noexcept {
    return record_of(node)->has_source;
}
bool output_tree::is_leaf_list(const zmf_datatree *node) noexcept {
    return tree_of(node)->class_at(record_of(node)->path_class).is_leaf_list;
}
uint32_t output_tree::number(const zmf_datatree *node) noexcept {
    return record_of(node)->number;
}
const schema::node *output_tree::schema_node(const zmf_datatree *node) noexcept {
    return tree_of(node)->class_at(record_of(node)->path_class).openconfig;
}
const zmf_datatree *output_tree::find(const char *path) {
    std::vector<path_step> steps;
    output_node *found = read_path(path, steps) ? body_->find(0, steps) : nullptr;
    return found == nullptr ? nullptr : &found->node;
}

} // namespace zmf
