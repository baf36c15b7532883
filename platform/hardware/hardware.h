// The facts behind hwinfo_*, ocoptical_ifmap_* and the sibling module, settable as a whole.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform.h"
#include "zmf/text.h"

namespace hardware {

// Values by text, as lean as what is asked for each leaf of a long answer has to be.
template <typename Value>
class by_text {
public:
    by_text() = default;
    by_text(std::initializer_list<std::pair<std::string_view, Value>> all) {
        for (const auto &[text, value] : all)
            (*this)[text] = value;
    }

    Value &operator[](std::string_view text) {
        const uint32_t number = texts_.number(text);
        if (number > values_.size())
            values_.emplace_back();
        return values_[number - 1];
    }
    const Value *find(std::string_view text) const noexcept { // null: none
        uint32_t nothing_found = 0;
        return find(text, nothing_found);
    }
    // `last` is what the caller found last, from 0: most often it is the same again.
    const Value *find(std::string_view text, uint32_t &last) const noexcept {
        if (!texts_.is_text(last, text))
            last = texts_.find(text);
        return last == 0 ? nullptr : &values_[last - 1];
    }
    bool empty() const noexcept { return values_.empty(); }
    void clear() { *this = {}; }

private:
    zmf::text_table texts_;
    std::vector<Value> values_; // by number of the text, from 1
};

// Names by channel, likewise. Channels are numbered from 1 and without great gaps.
class by_channel {
public:
    by_channel() = default;
    by_channel(std::initializer_list<std::pair<uint32_t, const char *>> all) {
        for (const auto &[channel, name] : all)
            (*this)[channel] = name;
    }

    std::string &operator[](uint32_t channel) {
        if (channel >= names_.size())
            names_.resize(size_t{channel} + 1);
        return names_[channel];
    }
    const std::string *find(uint32_t channel) const noexcept { // null: none
        return channel < names_.size() && !names_[channel].empty() ? &names_[channel] : nullptr;
    }
    void clear() { names_.clear(); }

private:
    std::vector<std::string> names_;
};

struct facts {
    uint32_t router_type = 0;
    bool optical_terminal_device = false;
    bool legacy_optical_terminal_device = false;
    by_channel name_of;                                   // channel -> "_" form, at most 63 characters
    by_text<uint32_t> channel_of;                         // "_" form -> channel
    bool registry_reachable = true;                       // the interface registry answers
    std::unordered_map<std::string, uint32_t> interfaces; // internal form of a name -> handle, not 0
    bool state_store_installed = false;                   // its library is there
    by_text<std::string> state_items;                     // path -> encoded record
};

facts &current();
std::string internal_name(std::string_view name); // of the interface registry
uint64_t sibling_calls();                         // calls of tdmgr_ocoptical_dll_interaction since the process started

} // namespace hardware
