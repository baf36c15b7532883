// The way back: a native answer that has every native leaf is walked up, and the calls are kept that each of them
// makes.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "survey/samples.h"
#include "zmf/plugin.h"

namespace ocmap {

struct filling {
    std::string path;      // OpenConfig, without keys
    std::string native;    // the leaf or entry that the walk stood on
    std::string module;    // of that
    std::string operation; // "add", "search-or-add", "xpath", "stitch"
    std::string callback;  // of the native node
    bool is_asked = true;  // some read on this device comes down to it
    std::vector<std::string> conversions;
    std::optional<std::string> from, to; // values
};

struct ascent {
    rcode status = RC_OK;
    zmf::failure failure;
    std::vector<filling> fillings; // in order of the walk, each once
};

ascent walk_up(const zmf::plugin &by, const samples &tries);

} // namespace ocmap
