// Reading paths: see path.h.
#include "path.h"

#include <array>
#include <cstdint>

namespace zmf {

namespace {

enum class letter : uint8_t { other, inner, opening };

constexpr std::array<letter, 256> letters = [] {
    std::array<letter, 256> made{};
    for (const char c : std::string_view("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_"))
        made[static_cast<unsigned char>(c)] = letter::opening;
    for (const char c : std::string_view("0123456789-."))
        made[static_cast<unsigned char>(c)] = letter::inner;
    return made;
}();

bool opens_name(char c) {
    return letters[static_cast<unsigned char>(c)] == letter::opening;
}
bool in_name(char c) {
    return letters[static_cast<unsigned char>(c)] != letter::other;
}

// Length of the name, with or without prefix, that `text` begins with; 0 if it begins with none.
size_t name_length(std::string_view text) {
    size_t length = 0;
    for (;;) {
        if (length == text.size() || !opens_name(text[length]))
            return 0;
        while (length < text.size() && in_name(text[length]))
            ++length;
        if (length == text.size() || text[length] != ':')
            return length;
        ++length;
    }
}

std::string_view without_prefix(std::string_view name) {
    return name.substr(name.rfind(':') + 1);
}

bool opens_predicate(std::string_view text) {
    if (text.empty() || text.front() != '[')
        return false;
    size_t length = name_length(text.substr(1));
    return length != 0 && length + 1 < text.size() && text[length + 1] == '=';
}

// Plain steps, at least one, and then a step with keys.
bool leads_to_predicate(std::string_view text) {
    while (!text.empty() && text.front() == '/') {
        size_t length = name_length(text.substr(1));
        if (length == 0)
            return false;
        text.remove_prefix(length + 1);
        if (opens_predicate(text))
            return true;
    }
    return false;
}

// Length of a bare value that `text` begins with; npos when no "]" ends it.
size_t bare_value_length(std::string_view text) {
    size_t found = std::string_view::npos;
    for (size_t at = text.find(']'); at != std::string_view::npos; at = text.find(']', at + 1)) {
        std::string_view rest = text.substr(at + 1);
        if (opens_predicate(rest) || leads_to_predicate(rest))
            return at;
        if (rest.empty() || rest.front() == '/')
            found = at;
    }
    return found;
}

// A quoted value ends at its own quote; npos when it is not well quoted, and then it counts as bare.
size_t quoted_value_length(std::string_view text) {
    if (text.empty() || (text.front() != '\'' && text.front() != '"'))
        return std::string_view::npos;
    const char close[] = {text.front(), ']'};
    size_t at = text.find(std::string_view(close, 2), 1);
    while (at != std::string_view::npos && at + 2 < text.size() && text[at + 2] != '/' && text[at + 2] != '[')
        at = text.find(std::string_view(close, 2), at + 1);
    return at == std::string_view::npos ? at : at + 1;
}

bool read_key(std::string_view &path, path_step &step) {
    if (!opens_predicate(path))
        return false;
    path.remove_prefix(1);
    size_t name = name_length(path);
    path_key key{without_prefix(path.substr(0, name)), {}};
    path.remove_prefix(name + 1);
    size_t length = quoted_value_length(path);
    if (length != std::string_view::npos) {
        key.value = path.substr(1, length - 2);
    } else {
        length = bare_value_length(path);
        if (length == std::string_view::npos)
            return false;
        key.value = path.substr(0, length);
    }
    path.remove_prefix(length + 1);
    step.keys.push_back(key);
    return true;
}

bool read_step(std::string_view &path, path_step &step) {
    size_t length = name_length(path);
    if (length == 0)
        return false;
    step.name = without_prefix(path.substr(0, length));
    path.remove_prefix(length);
    while (!path.empty() && path.front() == '[')
        if (!read_key(path, step))
            return false;
    return true;
}

} // namespace

bool read_path(std::string_view path, std::vector<path_step> &steps) {
    steps.clear();
    if (!path.empty() && path.front() == '/')
        path.remove_prefix(1);
    while (!path.empty()) {
        if (!read_step(path, steps.emplace_back()))
            return false;
        if (path.empty())
            break;
        if (path.front() != '/')
            return false;
        path.remove_prefix(1);
    }
    return !steps.empty();
}

} // namespace zmf
