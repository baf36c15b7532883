// Keeping texts: see text.h.
#include "text.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace zmf {

namespace {
constexpr size_t largest_chunk = size_t{256} * 1024;
constexpr size_t fewest_slots = 16;
} // namespace

const char *text_arena::keep(std::string_view text) {
    size_t need = text.size() + 1;
    char *copy = nullptr;
    if (need > left_ && need > next_chunk_ / 4) {
        // A long text gets a chunk of its own, and the open chunk stays open.
        chunks_.push_back(std::make_unique_for_overwrite<char[]>(need));
        copy = chunks_.back().get();
    } else {
        if (need > left_) {
            chunks_.push_back(std::make_unique_for_overwrite<char[]>(next_chunk_));
            free_ = chunks_.back().get();
            left_ = next_chunk_;
            next_chunk_ = std::min(next_chunk_ * 2, largest_chunk);
        }
        copy = free_;
        free_ += need;
        left_ -= need;
    }
    if (!text.empty())
        std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    bytes_ += need;
    return copy;
}

size_t text_table::slot_of(std::string_view text) const noexcept {
    size_t mask = slots_.size() - 1;
    size_t slot = std::hash<std::string_view>{}(text)&mask;
    while (slots_[slot] != 0 && texts_[slots_[slot] - 1] != text)
        slot = (slot + 1) & mask;
    return slot;
}

void text_table::grow() {
    slots_.assign(std::max(slots_.size() * 2, fewest_slots), 0);
    for (size_t i = 0; i < texts_.size(); ++i)
        slots_[slot_of(texts_[i])] = static_cast<uint32_t>(i + 1);
}

uint32_t text_table::find(std::string_view text) const noexcept {
    return slots_.empty() ? 0 : slots_[slot_of(text)];
}

uint32_t text_table::number(std::string_view text) {
    if ((texts_.size() + 1) * 4 > slots_.size() * 3)
        grow();
    uint32_t &slot = slots_[slot_of(text)];
    if (slot == 0) {
        texts_.emplace_back(arena_.keep(text), text.size());
        slot = static_cast<uint32_t>(texts_.size());
    }
    return slot;
}

const char *text_table::text(uint32_t number) const noexcept {
    return number == 0 ? nullptr : texts_[number - 1].data();
}

void text_table::forget_look_up() noexcept {
    slots_ = {};
}

} // namespace zmf
