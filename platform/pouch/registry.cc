// Registration. A group becomes known as a whole, when it is closed; registering it once more takes its place.
#include "pouch/registry.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "pouch/status.h"

namespace pouch {
namespace {

struct registered {
    const pouch_descriptor *descriptor;
    pouch_descriptor words; // of the descriptor
    std::shared_ptr<const record_type> type;
};

struct registry {
    std::unordered_map<const pouch_descriptor *, registered> by_descriptor;
    std::unordered_map<std::string, std::shared_ptr<const record_type>> by_name;
    std::optional<std::vector<registered>> open; // the group that is being registered
    std::string refusal;
};

registry &all() {
    static registry the_registry;
    return the_registry;
}

rcode refuse(rcode status, const pouch_descriptor *descriptor, const std::string &why) {
    const bool has_name = descriptor != nullptr && descriptor->name != nullptr;
    all().refusal = has_name ? std::string("record \"") + descriptor->name + "\": " : std::string();
    all().refusal += why.empty() ? rcode_strerror(status) : why;
    return status;
}

bool is_complete(const pouch_descriptor &descriptor) {
    return descriptor.format == 1 && descriptor.name != nullptr && *descriptor.name != '\0' &&
           descriptor.group_file != nullptr && descriptor.schema != nullptr && descriptor.packed_schema != nullptr;
}

// The descriptor's plug-in may be gone, and another one stand in its place.
bool is_still(const pouch_descriptor &now, const registered &then) {
    return now.packed_schema == then.words.packed_schema && now.members == then.words.members &&
           now.top_size == then.words.top_size && now.name == then.words.name && then.type->name() == now.name;
}

} // namespace

const record_type *find_type(const pouch_descriptor *descriptor) {
    const auto found = all().by_descriptor.find(descriptor);
    return found != all().by_descriptor.end() && is_still(*descriptor, found->second) ? found->second.type.get()
                                                                                      : nullptr;
}

const record_type *find_type(std::string_view name) {
    const auto found = all().by_name.find(std::string(name));
    return found == all().by_name.end() ? nullptr : found->second.get();
}

const std::string &last_refusal() {
    return all().refusal;
}

} // namespace pouch

using pouch::all;
using pouch::refuse;

rcode pouch_register_start(void) {
    if (all().open)
        return refuse(pouch::rc_already_open, nullptr, "");
    all().open.emplace();
    return RC_OK;
}

rcode pouch_register(const pouch_descriptor *descriptor) {
    if (!all().open)
        return refuse(pouch::rc_not_open, descriptor, "");
    if (descriptor == nullptr || !pouch::is_complete(*descriptor))
        return refuse(pouch::rc_bad_descriptor, descriptor, "");
    const std::string name = descriptor->name;
    const auto has_name = [&](const pouch::registered &each) { return each.type->name() == name; };
    if (std::ranges::any_of(*all().open, has_name))
        return refuse(pouch::rc_registered_twice, descriptor, "");
    try {
        all().open->push_back({descriptor, *descriptor, std::make_shared<const pouch::record_type>(*descriptor)});
    } catch (const pouch::type_fault &fault) {
        return refuse(fault.status, descriptor, fault.text);
    } catch (const std::bad_alloc &) {
        return refuse(RC_NO_MEMORY, descriptor, "");
    }
    return RC_OK;
}

void pouch_register_abort(void) {
    all().open.reset();
}

rcode pouch_register_end(void) {
    if (!all().open)
        return refuse(pouch::rc_not_open, nullptr, "");
    auto offered = std::exchange(all().open, std::nullopt); // outlives the loop
    for (pouch::registered &each : *offered) {
        all().by_name[each.type->name()] = each.type;
        all().by_descriptor.insert_or_assign(each.descriptor, std::move(each));
    }
    return RC_OK;
}
