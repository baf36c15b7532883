// A property more: its row in `properties`, and the combinations in `all_platforms`.
#include "survey/platforms.h"

#include <vector>

namespace ocmap {
namespace {

constexpr std::array<uint32_t, 4> router_types{5, 7, 18, 19};

constexpr std::array<platform, platform_count> all_platforms() {
    std::array<platform, platform_count> all{};
    for (size_t i = 0; i < all.size(); ++i)
        all[i] = {router_types[i / 8], (i & 4) != 0, (i & 2) != 0, (i & 1) != 0};
    return all;
}
constexpr auto every = all_platforms();

// A property as a number, and what its values are called.
struct property {
    uint32_t (*of)(const platform &);
    std::array<uint32_t, 4> values;
    size_t count;
    std::array<const char *, 4> names;
    const char *before = ""; // a name, once
};

constexpr std::array properties{
    property{[](const platform &p) { return uint32_t{p.has_terminal_device}; },
             {1, 0},
             2,
             {"optical terminal device", "no optical terminal device"}},
    property{[](const platform &p) { return uint32_t{p.is_legacy}; }, {1, 0}, 2, {"legacy", "not legacy"}},
    property{[](const platform &p) { return uint32_t{p.has_history}; }, {0, 1}, 2, {"flex bins", "history"}},
    property{[](const platform &p) { return p.router_type; }, router_types, 4, {"5", "7", "18", "19"}, "router type "},
};

platform_set with_value(const platform_set &those, const property &which, uint32_t value) {
    platform_set kept;
    for (size_t i = 0; i < every.size(); ++i)
        kept[i] = those[i] && which.of(every[i]) == value;
    return kept;
}

// The values that a property has among those.
std::vector<size_t> values_in(const platform_set &those, const property &which) {
    std::vector<size_t> found;
    for (size_t v = 0; v < which.count; ++v)
        if (with_value(those, which, which.values[v]).any())
            found.push_back(v);
    return found;
}

// Whether those are all that have certain values of each property, whatever the others are.
bool is_box(const platform_set &those) {
    size_t volume = 1;
    for (const property &each : properties)
        volume *= values_in(those, each).size();
    return volume == those.count();
}

std::string told_box(const platform_set &those) {
    std::string text;
    for (const property &each : properties) {
        const std::vector<size_t> values = values_in(those, each);
        if (values.size() == each.count)
            continue;
        text.append(text.empty() ? "" : ", ").append(each.before);
        for (const size_t v : values)
            text.append(v == values.front() ? "" : " or ").append(each.names[v]);
    }
    return text;
}

// Parted into boxes, along those properties first that give the shortest text.
std::string tell(const platform_set &those) {
    if (is_box(those))
        return told_box(those);
    std::string shortest;
    for (const property &each : properties) {
        const std::vector<size_t> values = values_in(those, each);
        if (values.size() < 2)
            continue;
        std::string text;
        for (const size_t v : values)
            text += (text.empty() ? "" : "; ") + tell(with_value(those, each, each.values[v]));
        if (shortest.empty() || text.size() < shortest.size())
            shortest = text;
    }
    return shortest;
}

} // namespace

const std::array<platform, platform_count> &platforms() {
    return every;
}

device::description device_of(const platform &kind) {
    device::description made = device::lab();
    made.router_type = kind.router_type;
    made.optical_terminal_device = kind.has_terminal_device;
    made.legacy_optical_terminal_device = kind.is_legacy;
    made.flex_bins = !kind.has_history;
    return made;
}

std::string told(const platform_set &those) {
    return tell(those);
}

} // namespace ocmap
