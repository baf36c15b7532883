// Reading and writing of the state store.
#include "device/state_json.h"

#include "device/native_json.h"

namespace device {
namespace {

std::string quoted(std::string_view written) {
    return '"' + text::shortened(written) + '"';
}

pouch::value::kind kind_of(json_text::scalar what) {
    switch (what) {
    case json_text::scalar::boolean:
        return pouch::value::kind::boolean;
    case json_text::scalar::number:
        return pouch::value::kind::number;
    case json_text::scalar::string:
        return pouch::value::kind::text;
    case json_text::scalar::null:
        break;
    }
    return pouch::value::kind::null;
}

} // namespace

pouch::place state_reader::place_of(size_t at) {
    const text::position found = places_.position_of(at);
    return {found.line, found.column};
}

void state_reader::refuse(size_t at) const {
    switch (place_) {
    case place::items:
        throw json_text::refusal{at, "item " + quoted(path_) + R"( takes an object of "record" and "fields")"};
    case place::record:
        throw json_text::refusal{at, R"("record" takes the name of a record)"};
    default:
        throw json_text::refusal{at, R"("fields" takes an object of fields)"};
    }
}

void state_reader::open_object(size_t at) {
    switch (place_) {
    case place::outside:
        place_ = place::items;
        return;
    case place::items:
        place_ = place::item;
        item_ = &into_[path_];
        item_->fields.what = pouch::value::kind::record;
        item_->fields.at = place_of(at);
        return;
    case place::fields:
        if (open_.empty())
            open_.push_back(&item_->fields);
        else
            open_.push_back(&add_value(pouch::value::kind::record, at));
        return;
    default:
        refuse(at);
    }
}

void state_reader::member(std::string_view name, size_t at) {
    if (place_ == place::items) {
        if (!name.starts_with('/'))
            throw json_text::refusal{at, "path " + quoted(name) + " of an item does not begin with \"/\""};
        path_ = name;
    } else if (place_ == place::fields && !open_.empty()) {
        open_.back()->members.push_back({std::string(name), {}, place_of(at)});
    } else if (name == "record") {
        place_ = place::record;
    } else if (name == "fields") {
        place_ = place::fields;
    } else {
        throw json_text::refusal{at, "unknown member " + quoted(name) + " in item " + quoted(path_)};
    }
}

void state_reader::close_object(size_t at) {
    if (place_ == place::items) {
        place_ = place::outside;
    } else if (place_ == place::item) {
        if (item_->record.empty())
            throw json_text::refusal{at, "item " + quoted(path_) + R"( without its "record")"};
        place_ = place::items;
    } else {
        open_.pop_back();
        place_ = open_.empty() ? place::item : place::fields;
    }
}

void state_reader::open_array(size_t at) {
    if (place_ != place::fields || open_.empty())
        refuse(at);
    open_.push_back(&add_value(pouch::value::kind::list, at));
}

void state_reader::close_array(size_t) {
    open_.pop_back();
}

void state_reader::value(json_text::scalar what, std::string_view text, size_t at) {
    if (place_ == place::fields && !open_.empty()) {
        add_value(kind_of(what), at).text = text;
        return;
    }
    if (place_ != place::record || what != json_text::scalar::string || text.empty())
        refuse(at);
    item_->record = text;
    item_->record_at = place_of(at);
    place_ = place::item;
}

// In a list its next entry, else the value of the member that was named last.
pouch::value &state_reader::add_value(pouch::value::kind what, size_t at) {
    pouch::value &holder = *open_.back();
    pouch::value &added =
        holder.what == pouch::value::kind::list ? holder.entries.emplace_back() : holder.members.back().what;
    added.what = what;
    added.at = place_of(at);
    return added;
}

namespace {

void append_value(std::string &json, const pouch::value &what) {
    const char *between = "";
    switch (what.what) {
    case pouch::value::kind::null:
        json.append("null");
        return;
    case pouch::value::kind::boolean:
    case pouch::value::kind::number:
        json.append(what.text);
        return;
    case pouch::value::kind::text:
        append_text(json, what.text);
        return;
    case pouch::value::kind::list:
        json.push_back('[');
        for (const pouch::value &each : what.entries) {
            json.append(between);
            append_value(json, each);
            between = ", ";
        }
        json.push_back(']');
        return;
    case pouch::value::kind::record:
        json.push_back('{');
        for (const pouch::member &each : what.members) {
            json.append(between);
            append_text(json, each.name);
            json.append(": ");
            append_value(json, each.what);
            between = ", ";
        }
        json.push_back('}');
        return;
    }
}

} // namespace

void append_state_items(std::string &json, const state_items &items, size_t indent) {
    const std::string line = "\n" + std::string(indent * 2, ' ');
    const char *between = "";
    json.push_back('{');
    for (const auto &[path, item] : items) {
        json.append(between).append(line).append("  ");
        append_text(json, path);
        json.append(": {\"record\": ");
        append_text(json, item.record);
        json.append(", \"fields\": ");
        append_value(json, item.fields);
        json.push_back('}');
        between = ",";
    }
    json.append(items.empty() ? "" : line).push_back('}');
}

} // namespace device
