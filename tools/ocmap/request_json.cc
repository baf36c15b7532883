// The reader of JSON requests. Annotations may stand behind the members that they annotate, so an edit that has any is
// read twice: first for its annotations, then for its nodes.
#include "request_json.h"

#include <algorithm>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "device/json_text.h"
#include "device/text.h"
#include "request.h"
#include "request_tree.h"
#include "schema/schema.h"
#include "zmf.h"

namespace ocmap {
namespace {

using json_text::scalar;
using place = uint32_t; // offset in a request

[[noreturn]] void refuse(size_t at, const std::string &why) {
    throw json_text::refusal{at, why};
}

std::string quoted(std::string_view name) {
    return '"' + text::shortened(name) + '"';
}

constexpr uint32_t whole_member = std::numeric_limits<uint32_t>::max();

// An operation on a member of the object at `object`, or on one entry of a leaf-list; the empty name is the object
// itself.
struct annotation {
    place object;
    std::string name;
    uint32_t entry;
    place at;
    uint32_t operation;
    bool is_used;
};

auto order_of(const annotation &each) {
    return std::tuple(each.object, std::string_view(each.name), each.entry);
}

class annotations {
public:
    void add(annotation &&found) { all_.push_back(std::move(found)); }

    void sort() { std::ranges::sort(all_, std::less(), order_of); }

    // Null: the member has none.
    annotation *find(place object, std::string_view name, uint32_t entry) {
        const auto found = std::ranges::lower_bound(all_, std::tuple(object, name, entry), std::less(), order_of);
        const bool is_there = found != all_.end() && order_of(*found) == std::tuple(object, name, entry);
        return is_there ? &*found : nullptr;
    }

    // Tells each annotation of an object that no member has asked for.
    template <typename action>
    void unused(place object, action tell) {
        auto each = std::ranges::lower_bound(all_, object, std::less(), &annotation::object);
        for (; each != all_.end() && each->object == object; ++each)
            if (!each->is_used)
                tell(*each);
    }

private:
    std::vector<annotation> all_;
};

// Collects the annotations of a request and passes over everything else.
class annotation_reader : public json_text::visitor {
public:
    annotations found;

    void open_object(size_t at) override {
        if (state_ == state::nodes)
            objects_.push_back(static_cast<place>(at));
        else if (state_ == state::value || state_ == state::entries)
            state_ = state::operation;
        else
            refuse_shape(at);
    }

    void member(std::string_view name, size_t at) override {
        if (state_ == state::operation) {
            if (name != "ietf-netconf:operation")
                refuse(at, "unknown annotation " + quoted(name));
        } else if (name.starts_with('@')) {
            if (objects_.size() == 1 && name.size() == 1)
                refuse(at, "an operation on the request itself");
            name_ = name.substr(1);
            entry_ = whole_member;
            state_ = state::value;
        }
    }

    void close_object(size_t) override {
        if (state_ == state::nodes)
            objects_.pop_back();
        else
            leave();
    }

    void open_array(size_t at) override {
        if (state_ == state::nodes)
            return;
        if (state_ != state::value || name_.empty())
            refuse_shape(at);
        entry_ = 0;
        state_ = state::entries;
    }

    void close_array(size_t) override {
        if (state_ == state::entries)
            state_ = state::nodes;
    }

    void value(scalar what, std::string_view text, size_t at) override {
        if (state_ == state::nodes)
            return;
        if (state_ == state::entries && what == scalar::null) {
            ++entry_;
            return;
        }
        if (state_ != state::operation || what != scalar::string)
            refuse_shape(at);
        try {
            found.add({objects_.back(), name_, entry_, static_cast<place>(at), operation_code(text), false});
        } catch (const refusal &refused) {
            refuse(at, refused.text);
        }
    }

private:
    // Where the reader stands: among nodes, before the value of an annotation, in its list of entries, in its object.
    enum class state { nodes, value, entries, operation };

    void leave() {
        if (entry_ == whole_member) {
            state_ = state::nodes;
        } else {
            ++entry_;
            state_ = state::entries;
        }
    }

    [[noreturn]] void refuse_shape(size_t at) const {
        refuse(at, "annotation " + quoted('@' + name_) + " is no object with an operation");
    }

    state state_ = state::nodes;
    std::vector<place> objects_;
    std::string name_;
    uint32_t entry_ = whole_member;
};

// A member's name resolved: "module:name", or "name" in the module of what it stands in.
struct member_name {
    std::string written;
    size_t tag_start = 0;
    const char *ns = nullptr;
    size_t at = 0;

    std::string_view tag() const { return std::string_view(written).substr(tag_start); }
};

class node_reader : public json_text::visitor {
public:
    node_reader(purpose what, annotations &found) : tree_(what), annotations_(found) {}

    zmf::fixed_tree finish() { return tree_.finish(); }

    void open_object(size_t at) override {
        if (skip_in())
            return;
        if (frames_.empty()) {
            frames_.push_back({shape::request, static_cast<place>(at), nullptr, {}, {}, 0, false});
            return;
        }
        frame &holder = frames_.back();
        refuse_operation_outside();
        refuse_kind(schema::kind::leaf, "takes no object", at);
        if (holder.what == shape::array) {
            refuse_kind(schema::kind::leaf_list, "takes no object", at);
            count_entry(at);
        } else {
            refuse_kind(schema::kind::list, "takes an array of objects", at);
            refuse_kind(schema::kind::leaf_list, "takes an array", at);
        }
        const char *const ns = holder.member.ns;
        open_node(holder.member, holder.what == shape::array ? at : holder.member.at);
        apply(annotations_.find(static_cast<place>(at), "", whole_member));
        frames_.push_back({shape::object, static_cast<place>(at), ns, {}, {}, 0, false});
    }

    void member(std::string_view name, size_t at) override {
        if (skipped_ > 0)
            return;
        if (name.starts_with('@')) {
            if (tree_.is_read())
                refuse(at, tree_.no_operation());
            is_annotation_ = true;
        } else {
            take_member(name, at);
        }
    }

    void close_object(size_t) override {
        if (skip_out())
            return;
        annotations_.unused(frames_.back().at, [this](annotation &each) { delete_unnamed(each); });
        if (frames_.back().what == shape::object)
            tree_.close();
        frames_.pop_back();
    }

    void open_array(size_t at) override {
        if (skip_in())
            return;
        refuse_outside(at);
        if (frames_.back().what == shape::array)
            refuse(at, "an array in an array");
        refuse_kind(schema::kind::leaf, "takes no array", at);
        refuse_kind(schema::kind::container, "takes no array", at);
        member_name name = frames_.back().member;
        frames_.push_back({shape::array, static_cast<place>(at), nullptr, std::move(name), {}, 0, false});
    }

    void close_array(size_t) override {
        if (skip_out())
            return;
        if (frames_.back().entries == 0 && tree_.is_read() && !tree_.is_native())
            refuse(frames_.back().at, "an empty array selects nothing");
        frames_.pop_back();
    }

    void value(scalar what, std::string_view text, size_t at) override {
        if (skipped_ > 0)
            return;
        refuse_outside(at);
        const member_name &name = frames_.back().member;
        const schema::node *known = tree_.known(name.tag(), name.ns);
        refuse_kind(schema::kind::container, "takes an object", at);
        refuse_kind(schema::kind::list, "takes an array of objects", at);
        annotation *own = nullptr;
        if (frames_.back().what == shape::array) {
            refuse_operation_outside();
            const uint32_t entry = count_entry(at);
            if (what == scalar::null)
                take_empty_type(known, entry, at);
            own = annotations_.find(object_around(), name.written, entry);
            open_node(name, at);
        } else {
            if (what == scalar::null && !tree_.is_read())
                refuse(at, "null in an edit");
            if (what != scalar::null)
                refuse_kind(schema::kind::leaf_list, "takes an array", at);
            own = annotations_.find(object_around(), name.written, whole_member);
            open_node(name, name.at);
        }
        apply(own);
        if (what != scalar::null)
            set_value(known, text, at);
        tree_.close();
    }

private:
    enum class shape { request, object, array };

    struct frame {
        shape what;
        place at;
        const char *ns;                          // of an object's members without module
        member_name member;                      // the one whose value comes; of an array, whose value it is
        std::vector<const schema::node *> known; // an edit's members that have come, by whichever name
        uint32_t entries;
        bool is_empty_type; // [null]
    };

    // Values of annotations are passed over here.
    bool skip_in() {
        if (skipped_ == 0 && !is_annotation_)
            return false;
        is_annotation_ = false;
        ++skipped_;
        return true;
    }

    bool skip_out() {
        if (skipped_ == 0)
            return false;
        --skipped_;
        return true;
    }

    void take_member(std::string_view name, size_t at) {
        frame &holder = frames_.back();
        resolve(holder, name, at);
        const schema::node *known = tree_.known(holder.member.tag(), holder.member.ns);
        if (known == nullptr || tree_.is_read())
            return;
        if (std::ranges::find(holder.known, known) != holder.known.end())
            refuse(at, quoted(name) + " stands in its object under another name, too");
        holder.known.push_back(known);
    }

    static void resolve(frame &holder, std::string_view name, size_t at) {
        member_name &member = holder.member;
        const size_t colon = name.find(':');
        member.written = name;
        member.at = at;
        if (colon == std::string_view::npos) {
            member.ns = holder.ns;
            member.tag_start = 0;
            if (holder.ns == nullptr)
                refuse(at, quoted(name) + " lacks the name of its module");
        } else {
            member.ns = ns_of(name.substr(0, colon), at);
            member.tag_start = colon + 1;
        }
    }

    static const char *ns_of(std::string_view module, size_t at) {
        const char *ns = schema::ns_of_module(module);
        if (ns == nullptr)
            refuse(at, "unknown module " + quoted(module));
        return ns;
    }

    void refuse_outside(size_t at) const {
        if (frames_.empty())
            refuse(at, "a request is an object");
    }

    void refuse_kind(schema::kind what, const char *why, size_t at) const {
        const member_name &name = frames_.back().member;
        const schema::node *known = tree_.known(name.tag(), name.ns);
        if (known != nullptr && known->what == what)
            refuse(at, quoted(name.tag()) + ' ' + why);
    }

    // An annotation beside a member annotates a leaf, and beside an array its entries one by one.
    void refuse_operation_outside() {
        const member_name &name = frames_.back().member;
        if (const annotation *outside = annotations_.find(object_around(), name.written, whole_member))
            refuse(outside->at, "the operation of " + quoted(name.tag()) + " stands beside it, not in it");
    }

    place object_around() const {
        const bool is_in_array = frames_.back().what == shape::array;
        return is_in_array ? frames_[frames_.size() - 2].at : frames_.back().at;
    }

    uint32_t count_entry(size_t at) {
        if (frames_.back().is_empty_type)
            refuse(at, "null beside another entry");
        return frames_.back().entries++;
    }

    void take_empty_type(const schema::node *known, uint32_t entry, size_t at) {
        if (known != nullptr || entry != 0)
            refuse(at,
                   known != nullptr ? quoted(known->tag) + " is not of the empty type" : "null beside another entry");
        frames_.back().is_empty_type = true;
    }

    void open_node(const member_name &name, size_t at) {
        guarded(at, [&] { tree_.open(name.tag(), name.ns); });
    }

    void apply(annotation *own) {
        if (own == nullptr)
            return;
        own->is_used = true;
        guarded(own->at, [&] { tree_.operation(own->operation); });
    }

    void set_value(const schema::node *known, std::string_view text, size_t at) {
        if (text.find('\0') != std::string_view::npos)
            refuse(at, "a zero character");
        guarded(at, [&] {
            if (const auto identity = split_identity(known, text))
                tree_.value(identity->name, ns_of(identity->prefix, at));
            else
                tree_.value(text);
        });
    }

    // An annotation without its leaf can only mean that the leaf is to go.
    void delete_unnamed(annotation &each) {
        if (each.entry != whole_member || (each.operation != OP_DELETE && each.operation != OP_REMOVE))
            refuse(each.at, "annotation " + quoted('@' + each.name) + " of what is not there");
        frame &holder = frames_.back();
        take_member(each.name, each.at);
        refuse_kind(schema::kind::container, "takes its operation inside", each.at);
        refuse_kind(schema::kind::list, "takes its operation inside", each.at);
        open_node(holder.member, each.at);
        apply(&each);
        tree_.close();
    }

    // Gives a refusal its place.
    template <typename action>
    static void guarded(size_t at, action run) {
        try {
            run();
        } catch (const refusal &refused) {
            refuse(at, refused.text);
        }
    }

    request_tree tree_;
    annotations &annotations_;
    std::vector<frame> frames_;
    bool is_annotation_ = false; // the next value is that of an annotation
    size_t skipped_ = 0;         // open objects and arrays of an annotation
};

bool may_hold_annotations(std::string_view bytes) {
    return bytes.find('@') != std::string_view::npos || bytes.find("\\u0040") != std::string_view::npos;
}

annotations annotations_of(std::string_view bytes) {
    annotation_reader reader;
    json_text::read(bytes, reader);
    reader.found.sort();
    return std::move(reader.found);
}

} // namespace

zmf::fixed_tree read_request_json(std::string_view bytes, purpose what) {
    try {
        annotations found;
        const bool is_edit = what == purpose::edit || what == purpose::edit_after_creates;
        if (is_edit && may_hold_annotations(bytes))
            found = annotations_of(bytes);
        node_reader reader(what, found);
        json_text::read(bytes, reader);
        return reader.finish();
    } catch (const json_text::error &error) {
        throw input_error{error.line, error.column, error.text};
    } catch (const refusal &refused) {
        throw input_error{1, 1, refused.text};
    }
}

} // namespace ocmap
