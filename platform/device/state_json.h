// The state store in a device description: an object of items by path, each with its record type and the fields of the
// record, as in {"/oper/otu/if/...": {"record": "otu_per_port_info", "fields": {"ConfigSecState": 1}}}. What a record
// takes is known only when its type has been registered; until then fields are kept as they stand.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "device/json_text.h"
#include "device/text.h"
#include "pouch/value.h"

namespace device {

struct state_item {
    std::string record;
    pouch::place record_at{};
    pouch::value fields; // a record
    bool operator==(const state_item &) const = default;
};
using state_items = std::map<std::string, state_item>; // by path

// Is told what stands from the opening of the object to its end, both included.
class state_reader : public json_text::visitor {
public:
    // `whole`: the text that the offsets are of.
    state_reader(state_items &into, std::string_view whole) : into_(into), places_(whole) {}
    bool is_open() const noexcept { return place_ != place::outside; }

    void open_object(size_t at) override;
    void member(std::string_view name, size_t at) override;
    void close_object(size_t at) override;
    void open_array(size_t at) override;
    void close_array(size_t at) override;
    void value(json_text::scalar what, std::string_view text, size_t at) override;

private:
    enum class place { outside, items, item, record, fields };

    [[noreturn]] void refuse(size_t at) const;
    pouch::place place_of(size_t at);
    pouch::value &add_value(pouch::value::kind what, size_t at);

    state_items &into_;
    text::place_counter places_;
    place place_ = place::outside;
    std::string path_;
    state_item *item_ = nullptr;
    std::vector<pouch::value *> open_; // values that go on, the fields first
};

// Appends the state store as an object that begins in a line indented this much.
void append_state_items(std::string &json, const state_items &items, size_t indent);

} // namespace device
