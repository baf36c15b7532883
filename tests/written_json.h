// JSON as tests write it: quotes as ', so that it stands in a literal, and blanks as it suits the eye.
#pragma once

#include <algorithm>
#include <cctype>
#include <string>

inline std::string json_of(std::string text) {
    std::replace(text.begin(), text.end(), '\'', '"');
    return text;
}

inline std::string without_blanks(std::string text) {
    text.erase(std::remove_if(text.begin(), text.end(), [](unsigned char c) { return std::isspace(c) != 0; }),
               text.end());
    return text;
}
