// Where trees and sessions keep their texts: an arena of terminated texts, and a table that keeps each distinct text
// once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace zmf {

// Texts that live as long as the arena. Chunks grow, so that a small tree stays small.
class text_arena {
public:
    const char *keep(std::string_view text); // a terminated copy
    size_t bytes() const noexcept { return bytes_; }

private:
    std::vector<std::unique_ptr<char[]>> chunks_;
    char *free_ = nullptr;
    size_t left_ = 0;
    size_t next_chunk_ = 1024;
    size_t bytes_ = 0;
};

// Distinct texts, numbered from 1; number 0 is "no text".
class text_table {
public:
    uint32_t number(std::string_view text);              // finds or adds
    uint32_t find(std::string_view text) const noexcept; // 0: not there
    const char *text(uint32_t number) const noexcept;    // null for 0
    bool is_text(uint32_t number, std::string_view text) const noexcept {
        return number != 0 && number <= texts_.size() && texts_[number - 1] == text;
    }
    size_t size() const noexcept { return texts_.size(); }            // distinct texts
    void forget_look_up() noexcept;                                   // from here on only text() works
    text_arena release_texts() noexcept { return std::move(arena_); } // keeps what text() handed out

private:
    size_t slot_of(std::string_view text) const noexcept;
    void grow();

    text_arena arena_;
    std::vector<std::string_view> texts_;
    std::vector<uint32_t> slots_; // open addressing, a power of two
};

} // namespace zmf
