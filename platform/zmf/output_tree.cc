// Output trees: steps of a path are found or made under the entries that are current, and values, operations and
// namespaces of repeated adds are settled. How nodes are stored stands in output_body.h.
#include <algorithm>
#include <cstring>
#include <functional>

#include "output_body.h"
#include "session.h"

namespace zmf {

namespace {

// What a list entry known by its keys and a node that was handed out cost beside their nodes.
constexpr size_t entry_cost = 24;
constexpr size_t handed_cost = sizeof(handed_node) + 16;
constexpr size_t fewest_slots = 64;
constexpr size_t most_namespaces = UINT16_MAX;

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
        tree_->places[note.place].current = note.current;
        tree_->places[note.place].noted_at = note.noted_at;
        notes_.pop_back();
        tree_->forget_way();
    }
}

void entry_notes::keep_apart() noexcept {
    if (tree_ != nullptr)
        tree_->keep_apart();
}

void entry_notes::note(uint32_t entry, uint32_t level) {
    const node_record &node = tree_->at(entry);
    const uint32_t number = tree_->keep_place(node.parent, node.path_class);
    kept_place &place = tree_->places[number];
    if (place.noted_at != level + 1) {
        notes_.push_back({number, place.current, place.noted_at});
        place.noted_at = level + 1;
    }
    place.current = entry;
    tree_->forget_way();
}

output_tree::body::body() : place_slots(fewest_slots), key_slots(fewest_slots) {
    classes.push_back({});
    chunks.push_back(std::make_unique<node_record[]>(chunk_nodes));
    node_count = 1;
    hand_out(0);
}

output_tree::body::~body() {
    if (noted_by != nullptr)
        noted_by->forget();
    for (const handed_node &each : handed)
        if (each.node.has_value_ns) // the plug-in's copy
            kvo_named_free(each.node.value_ns);
}

std::string output_tree::body::path_of(uint32_t cls) const {
    std::string path;
    for (; cls != 0; cls = classes[cls].parent)
        path.insert(0, classes[cls].tag).insert(0, 1, '/');
    return path;
}

uint32_t output_tree::body::class_of(uint32_t parent, std::string_view tag) {
    const uint32_t tag_number = tags.number(tag);
    const auto [known, is_new] =
        class_numbers.try_emplace(pair(parent, tag_number), static_cast<uint32_t>(classes.size()));
    const uint32_t number = known->second;
    if (is_new) {
        path_class &made = classes.emplace_back();
        made.parent = parent;
        made.tag = tags.text(tag_number);
        consult_schema(number);
    }
    return number;
}

namespace {

struct openconfig_place {
    const schema::model *model = nullptr;
    const schema::node *node = nullptr;
};

openconfig_place top_of_models(std::string_view tag) {
    for (const schema::model &model : schema::models())
        if (const schema::node *top = schema::child(nullptr, model, tag))
            return {&model, top};
    return {};
}

openconfig_place openconfig_child(const path_class &parent, std::string_view tag) {
    if (parent.tag == nullptr)
        return top_of_models(tag);
    if (parent.openconfig == nullptr)
        return {};
    const schema::node *node = schema::child(parent.openconfig, *parent.model, tag);
    return node == nullptr ? openconfig_place{} : openconfig_place{parent.model, node};
}

std::vector<const char *> key_names(const path_class &list) {
    if (list.native != nullptr)
        return {list.native->keys.begin(), list.native->keys.end()};
    std::vector<const char *> names;
    if (!list.is_openconfig_list)
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
    made.is_openconfig_list = place.node != nullptr && place.node->what == schema::kind::list;
    const schema::native_node *native = schema::native_at(path_of(number));
    const auto is_a = [&](schema::kind what) {
        return (native != nullptr && native->what == what) || (place.node != nullptr && place.node->what == what);
    };
    made.is_leaf_list = is_a(schema::kind::leaf_list);
    made.is_list = is_a(schema::kind::list);
    made.is_key = std::find(parent.keys.begin(), parent.keys.end(), number) != parent.keys.end();
    std::vector<uint32_t> keys;
    for (const char *name : key_names(made)) {
        uint32_t key = class_of(number, name); // may move all classes
        classes[key].is_key = true;
        keys.push_back(key);
    }
    classes[number].keys = std::move(keys);
}

bool output_tree::body::read_into(known_path &path, uint32_t start_class, const char *text) {
    path.text = text;
    if (!read_path(path.text, path.steps))
        return false;
    path.classes.resize(path.steps.size());
    uint32_t cls = start_class;
    for (size_t i = 0; i < path.steps.size(); ++i) {
        // The path that was read before has often the same steps.
        const bool is_known = path.classes[i] != 0 && is_class(path.classes[i], cls, path.steps[i].name);
        cls = is_known ? path.classes[i] : class_of(cls, path.steps[i].name);
        path.classes[i] = cls;
    }
    return true;
}

bool output_tree::body::is_class(uint32_t cls, uint32_t parent, std::string_view tag) const noexcept {
    return classes[cls].parent == parent && tag == classes[cls].tag;
}

known_path *output_tree::body::read_to_change(uint32_t start, const char *path) {
    const known_path *known = read(start, path);
    if (known != nullptr && known != &path_with_keys) {
        path_with_keys.steps = known->steps;
        path_with_keys.classes = known->classes;
    }
    return known != nullptr ? &path_with_keys : nullptr;
}

// Most paths are constants of the plug-in, told again and again. What stands at an address may have changed.
const known_path *output_tree::body::read(uint32_t start, const char *path) {
    if (path == nullptr)
        return nullptr;
    const uint32_t start_class = at(start).path_class;
    size_t slot = mix(reinterpret_cast<uintptr_t>(path) + start_class) % paths.size();
    while (paths[slot] != nullptr && (paths[slot]->address != path || paths[slot]->start_class != start_class))
        slot = (slot + 1) % paths.size();
    if (paths[slot] != nullptr && std::strcmp(paths[slot]->text.c_str(), path) == 0)
        return paths[slot].get();
    if (std::strchr(path, '[') != nullptr)
        return read_into(path_with_keys, start_class, path) ? &path_with_keys : nullptr;
    return keep_path(slot, start_class, path);
}

const known_path *output_tree::body::keep_path(size_t slot, uint32_t start_class, const char *path) {
    auto made = std::make_unique<known_path>();
    if (!read_into(*made, start_class, path))
        return nullptr;
    if (paths[slot] == nullptr && ++paths_kept > paths.size() / 2) {
        paths = {};
        paths_kept = 1;
    }
    made->address = path;
    made->start_class = start_class;
    paths[slot] = std::move(made);
    return paths[slot].get();
}

size_t output_tree::body::place_slot(uint32_t parent, uint32_t cls) const noexcept {
    const size_t mask = place_slots.size() - 1;
    size_t slot = mix(pair(parent, cls)) & mask;
    while (place_slots[slot] != 0 &&
           (places[place_slots[slot]].parent != parent || places[place_slots[slot]].path_class != cls))
        slot = (slot + 1) & mask;
    return slot;
}

uint32_t output_tree::body::find_place(uint32_t parent, uint32_t cls) noexcept {
    path_class &of = classes[cls];
    const kept_place &last = places[of.last_place];
    if (of.last_place != 0 && last.parent == parent && last.path_class == cls)
        return of.last_place;
    const uint32_t found = place_slots[place_slot(parent, cls)];
    if (found != 0)
        of.last_place = found;
    return found;
}

void output_tree::body::grow_place_slots() {
    place_slots.assign(place_slots.size() * 2, 0);
    for (uint32_t number = 1; number < places.size(); ++number)
        place_slots[place_slot(places[number].parent, places[number].path_class)] = number;
}

uint32_t output_tree::body::keep_place(uint32_t parent, uint32_t cls) {
    if (const uint32_t known = find_place(parent, cls))
        return known;
    const uint32_t last = newest(parent, cls);
    if (too_full(places.size(), place_slots.size()))
        grow_place_slots();
    const auto number = static_cast<uint32_t>(places.size());
    place_slots[place_slot(parent, cls)] = number;
    places.push_back({parent, cls, last, 0, 0});
    classes[cls].has_places = true;
    return classes[cls].last_place = number;
}

void output_tree::body::keep_children(uint32_t parent) {
    for (uint32_t child = at(parent).first_child; child != 0; child = at(child).next_sibling)
        places[keep_place(parent, at(child).path_class)].newest = child;
}

// Of a parent whose places are not kept, so its children are few.
uint32_t output_tree::body::newest_child(const node_record &parent, uint32_t cls) const noexcept {
    uint32_t found = 0;
    for (uint32_t child = parent.first_child; child != 0; child = at(child).next_sibling)
        if (at(child).path_class == cls)
            found = child;
    return found;
}

// 0: nothing at this place.
uint32_t output_tree::body::newest(uint32_t parent, uint32_t cls) noexcept {
    path_class &of = classes[cls];
    if (of.last_node != 0 && at(of.last_node).parent == parent)
        return of.last_node;
    const node_record &above = at(parent);
    uint32_t found = 0;
    if (above.children == few_children)
        found = places[find_place(parent, cls)].newest;
    else
        found = newest_child(above, cls);
    if (found != 0)
        of.last_node = found;
    return found;
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
        const uint32_t leaf = newest(entry, key.path_class);
        const char *value = leaf == 0 ? nullptr : value_of(at(leaf));
        return value != nullptr && key.value == value;
    });
}

uint32_t output_tree::body::entry_with_keys(uint32_t parent, uint32_t cls, const std::vector<resolved_key> &keys) {
    const uint32_t hash = key_hash(parent, cls, keys);
    const size_t mask = key_slots.size() - 1;
    for (size_t slot = hash & mask; key_slots[slot].entry != 0; slot = (slot + 1) & mask) {
        const uint32_t entry = key_slots[slot].entry;
        if (key_slots[slot].hash == hash && at(entry).parent == parent && at(entry).path_class == cls &&
            has_keys(entry, keys))
            return entry;
    }
    return 0;
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

// No entry with these keys is known yet.
void output_tree::body::remember_keys(uint32_t entry, const std::vector<resolved_key> &keys) {
    if (too_full(keys_used, key_slots.size()))
        grow_key_slots();
    const uint32_t hash = key_hash(at(entry).parent, at(entry).path_class, keys);
    const size_t mask = key_slots.size() - 1;
    size_t slot = hash & mask;
    while (key_slots[slot].entry != 0)
        slot = (slot + 1) & mask;
    key_slots[slot] = {hash, entry};
    ++keys_used;
}

// The first entry with its keys is the one that is found later.
void output_tree::body::key_was_set(uint32_t leaf) {
    forget_way();
    const uint32_t entry = at(leaf).parent;
    resolved.clear();
    for (const uint32_t cls : class_of(at(entry)).keys) {
        const uint32_t key = newest(entry, cls);
        const char *value = key == 0 ? nullptr : value_of(at(key));
        if (value == nullptr)
            return;
        resolved.push_back({cls, value});
    }
    if (!resolved.empty() && entry_with_keys(at(entry).parent, at(entry).path_class, resolved) == 0)
        remember_keys(entry, resolved);
}

const std::vector<output_tree::body::resolved_key> &output_tree::body::resolve(uint32_t cls,
                                                                               const std::vector<path_key> &keys) {
    resolved.clear();
    for (const path_key &key : keys) {
        const std::vector<uint32_t> &known = classes[cls].keys;
        const auto found =
            std::find_if(known.begin(), known.end(), [&](uint32_t each) { return key.name == classes[each].tag; });
        resolved.push_back({found != known.end() ? *found : class_of(cls, key.name), key.value});
    }
    return resolved;
}

uint32_t output_tree::body::existing_step(uint32_t parent, uint32_t cls, const path_step &step, bool new_entry) {
    if (!step.keys.empty())
        return entry_with_keys(parent, cls, resolve(cls, step.keys));
    const uint32_t last = newest(parent, cls);
    if (last == 0)
        return 0;
    const uint32_t current = classes[cls].has_places ? places[find_place(parent, cls)].current : 0;
    if (new_entry)
        return current != 0 && at(current).first_child == 0 ? current : 0;
    if (current != 0)
        return current;
    if (!classes[cls].is_openconfig_list)
        return classes[cls].native != nullptr && last < apart_from ? 0 : last;
    // What has no current entry in an OpenConfig list belongs to none of the real ones.
    return has_any_key(last) ? 0 : last;
}

bool output_tree::body::has_any_key(uint32_t entry) noexcept {
    const std::vector<uint32_t> &keys = class_of(at(entry)).keys;
    return std::any_of(keys.begin(), keys.end(), [&](uint32_t key) { return newest(entry, key) != 0; });
}

// A leaf-list has one node for each value; the same value added again is the same node.
uint32_t output_tree::body::existing_value(uint32_t parent, uint32_t leaf_list, const char *value) {
    const uint32_t last = newest(parent, leaf_list);
    const char *held = last == 0 ? nullptr : value_of(at(last));
    if (last == 0 || (held == nullptr) != (value == nullptr))
        return 0;
    return value == nullptr || std::strcmp(held, value) == 0 ? last : 0;
}

uint16_t output_tree::body::namespace_number(const char *ns) {
    if (ns != last_ns || std::strcmp(ns, namespace_texts[last_ns_number]) != 0) {
        last_ns = ns;
        last_ns_number = static_cast<uint16_t>(namespaces.number(ns));
        if (last_ns_number == namespace_texts.size())
            namespace_texts.push_back(namespaces.text(last_ns_number));
    }
    return last_ns_number;
}

uint32_t output_tree::body::create(uint32_t parent, uint32_t cls, uint16_t ns) {
    if (node_count % chunk_nodes == 0)
        chunks.push_back(std::make_unique<node_record[]>(chunk_nodes));
    const uint32_t number = node_count++;
    node_record &made = at(number);
    made.parent = parent;
    made.path_class = cls;
    made.ns = ns;

    node_record &above = at(parent);
    (above.first_child == 0 ? above.first_child : at(above.last_child).next_sibling) = number;
    above.last_child = number;
    if (above.children < few_children) {
        if (const uint32_t place = classes[cls].has_places ? find_place(parent, cls) : 0)
            places[place].newest = number;
        if (++above.children == few_children)
            keep_children(parent);
    } else {
        places[keep_place(parent, cls)].newest = number;
    }
    classes[cls].last_node = number;
    return number;
}

uint32_t output_tree::body::create_step(uint32_t parent, uint32_t cls, const path_step &step, uint16_t ns) {
    const uint32_t made = create(parent, cls, ns);
    if (!step.keys.empty()) {
        at(made).list_entry = 1;
        for (const resolved_key &key : resolve(cls, step.keys))
            at(create(made, key.path_class, ns)).value = values.keep(key.value);
        remember_keys(made, resolved);
    }
    return made;
}

// Whether an add stores its value: a key holds what it has against an add without value.
bool output_tree::body::takes_value(uint32_t node, const char *value, const zmf_datatree *source) const {
    const char *held = node == 0 ? nullptr : value_of(at(node));
    if (value == nullptr || held == nullptr)
        return value != nullptr;
    return source != nullptr && std::strcmp(held, value) != 0;
}

void output_tree::body::store(node_record &node, const char *value) noexcept {
    if (node.is_handed) {
        node.handed->node.value = value;
        node.handed->node.has_value = value != nullptr;
    } else {
        node.value = value;
    }
}

void output_tree::body::set_value(uint32_t number, const char *value, const zmf_datatree *source) {
    node_record &node = at(number);
    const bool is_key = class_of(node).is_key;
    const bool stores = takes_value(number, value, source);
    if (stores)
        store(node, values.keep(value));
    else if (value == nullptr && source != nullptr && !is_key)
        store(node, nullptr);
    if (source != nullptr) {
        node.has_source = 1;
        if (!is_key) {
            node.op = source->op & 0x7f;
            node.op_explicit = source->op_explicit;
            if (node.is_handed) {
                node.handed->node.op = node.op;
                node.handed->node.op_explicit = node.op_explicit;
            }
        }
    }
    if (is_key && stores)
        key_was_set(number);
}

size_t output_tree::body::bytes() const noexcept {
    return (node_count - 1) * sizeof(node_record) + keys_used * entry_cost + handed.size() * handed_cost +
           places.size() * sizeof(kept_place) + values.bytes();
}

size_t output_tree::body::bytes_needed(const addition &what, size_t first_missing, uint32_t last) const {
    constexpr size_t node_cost = sizeof(node_record) + sizeof(kept_place) / 2;
    size_t need = takes_value(last, what.value, what.source) ? std::strlen(what.value) + 1 + entry_cost : 0;
    for (size_t i = first_missing; i < what.steps; ++i) {
        need += node_cost;
        for (const path_key &key : what.path->steps[i].keys)
            need += node_cost + entry_cost + key.value.size() + 1;
    }
    return need;
}

bool output_tree::body::exceeds_limit(size_t need) const noexcept {
    return need > limit || bytes() > limit - need;
}

void output_tree::body::make_current(uint32_t entry, uint32_t level, entry_notes &notes) {
    notes.enter(*this);
    notes.note(entry, level);
}

// How many steps of a path, `most` at most, are those of the last add. Nodes of a class have the same classes above
// them.
size_t output_tree::body::follow_way(uint32_t start, const known_path &path, size_t most,
                                     uint32_t &place) const noexcept {
    if (way_end == 0 || way_start != start || &path == &path_with_keys)
        return 0;
    uint32_t node = way_end;
    size_t steps = way_steps;
    for (; steps != 0 && (steps > most || at(node).path_class != path.classes[steps - 1]); --steps)
        node = at(node).parent;
    place = node;
    return steps;
}

rcode output_tree::body::add(uint32_t start, const addition &what, entry_notes &notes, uint32_t &added) {
    const std::vector<path_step> &steps = what.path->steps;
    const std::vector<uint32_t> &step_classes = what.path->classes;
    uint32_t place = start;
    size_t known = follow_way(start, *what.path, what.steps - 1, place);
    for (; known < what.steps; ++known) {
        const uint32_t cls = step_classes[known];
        const bool is_last = known + 1 == what.steps;
        const uint32_t next = is_last && classes[cls].is_leaf_list
                                  ? existing_value(place, cls, what.value)
                                  : existing_step(place, cls, steps[known], is_last && what.list_flag);
        if (next == 0)
            break;
        place = next;
    }
    const uint16_t ns = namespace_number(what.ns);
    if (namespaces.size() > most_namespaces ||
        (limit != SIZE_MAX && exceeds_limit(bytes_needed(what, known, known == what.steps ? place : 0))))
        return rc_too_big;

    for (; known < what.steps; ++known) {
        place = create_step(place, step_classes[known], steps[known], ns);
        if (classes[step_classes[known]].native != nullptr)
            make_current(place, what.level, notes);
    }
    way_end = what.path == &path_with_keys ? 0 : place;
    way_start = start;
    way_steps = what.steps;
    set_value(place, what.value, what.source);
    if (what.list_flag && !class_of(at(place)).is_leaf_list) {
        at(place).list_entry = 1;
        make_current(place, what.level, notes);
    }
    added = place;
    return RC_OK;
}

uint32_t output_tree::body::find(uint32_t start, const known_path &path) {
    uint32_t place = start;
    for (size_t i = follow_way(start, path, path.steps.size(), place); i < path.steps.size(); ++i) {
        place = existing_step(place, path.classes[i], path.steps[i], false);
        if (place == 0)
            return 0;
    }
    return place;
}

void output_tree::body::set_namespace(uint32_t number, const char *ns) {
    node_record &node = at(number);
    node.ns = namespace_number(ns);
    if (node.is_handed)
        node.handed->node.ns = namespace_of(node);
}

zmf_datatree *output_tree::body::hand_out(uint32_t number) {
    node_record &record = at(number);
    if (record.is_handed)
        return &record.handed->node;
    handed_node &made = handed.emplace_back();
    made.number = number;
    made.node.tag = class_of(record).tag;
    made.node.value = record.value;
    made.node.has_value = record.value != nullptr;
    made.node.ns = namespace_of(record);
    made.node.op = record.op;
    made.node.op_explicit = record.op_explicit;
    made.node.framework = this;
    record.handed = &made;
    record.is_handed = 1;
    return &made.node;
}

output_tree::output_tree() : body_(std::make_unique<body>()) {}
output_tree::~output_tree() = default;

zmf_datatree *output_tree::root() noexcept {
    return body_->hand_out(0);
}
output_node output_tree::top() const noexcept {
    return {body_.get(), 0};
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
output_node output_tree::find(const char *path) {
    const known_path *steps = body_->read(0, path);
    const uint32_t found = steps == nullptr ? 0 : body_->find(0, *steps);
    return found == 0 ? output_node() : output_node(body_.get(), found);
}

} // namespace zmf
