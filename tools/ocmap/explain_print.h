// Explanations as text for people and as JSON for programs.
#pragma once

#include <string>
#include <vector>

#include "output.h"
#include "survey/survey.h"

namespace ocmap {

// An OpenConfig node that comes down to a native one.
struct native_use {
    std::string verb; // "asks", "merges"...
    std::string path;
    std::vector<std::string> deeds;
};

struct native_story {
    const schema::native_node *node;
    std::vector<native_use> uses;
    std::vector<const filling *> fills;
};

struct explanation {
    std::vector<story> nodes;
    std::vector<native_story> native;
};

void print_text(const explanation &told, output &out);
void print_json(const explanation &told, output &out);

} // namespace ocmap
