// Paths as people write them: "/terminal-device/logical-channels/channel[index=300]/otn/**", with or without keys,
// module prefixes and wildcards. "*" and "?" stand for letters of one step, "**" for any number of steps.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "survey/samples.h"

namespace ocmap {

struct pattern_error {
    std::string text;
};

class path_pattern {
public:
    explicit path_pattern(std::string_view text); // throws pattern_error

    bool matches(const std::vector<std::string_view> &tags) const;
    const std::vector<chosen_key> &keys() const { return keys_; }
    std::string bare() const; // without keys and prefixes

private:
    void take_step(std::string_view &text);
    void take_key(std::string_view &text);

    std::vector<std::string> steps_;
    std::vector<chosen_key> keys_;
};

std::vector<std::string_view> tags_of(const schema::node &node);
std::vector<std::string_view> tags_of(const schema::native_node &node);

// Those of `known` that are most like a path: as many of its steps as there are, then few letters changed.
std::vector<std::string> nearest(const std::string &path, const std::vector<std::string> &known, size_t most);

} // namespace ocmap
