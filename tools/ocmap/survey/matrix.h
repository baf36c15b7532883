// Every leaf of the OpenConfig models on every platform: mapped, refused or dropped, and the native leaves.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "survey/platforms.h"
#include "survey/survey.h"

namespace ocmap {

inline constexpr size_t up_column = all_deeds.size();
inline constexpr size_t column_count = all_deeds.size() + 1;
const char *column_name(size_t column); // those of deeds, and "filled-by"

struct native_target {
    std::string verb; // of a native_call; "fills"
    std::string path, module;
    bool operator==(const native_target &) const = default;
};

// What entries of some classes come to.
struct cell_part {
    std::vector<std::string> whose; // names of subjects; empty where there is nothing to choose
    outcome what;
    std::vector<native_target> targets;
    std::string error_tag, message;
    bool operator==(const cell_part &) const = default;
};

// A cell is mapped if one of its parts is, else refused if one of them is. Of the way up: mapped or dropped.
struct cell {
    std::vector<cell_part> parts;
    outcome what() const;
    bool operator==(const cell &) const = default;
};

struct cell_group {
    platform_set where;
    cell what;
};

struct matrix_row {
    const schema::node *leaf;
    std::array<std::vector<cell_group>, column_count> columns;

    const cell &at(size_t column, size_t platform) const;
    bool is_ever(size_t first_column, size_t columns_behind, outcome what) const;
};

struct matrix {
    std::vector<matrix_row> rows;       // in model order
    std::vector<std::string> unsettled; // cells that cannot be worked out, and why
};

// `progress` hears of each platform before its turn. The device that was installed is another afterwards.
matrix make_matrix(const zmf::plugin &by, const std::function<void(size_t platform)> &progress);

struct model_count {
    std::string model;
    size_t leaves = 0;
    size_t down = 0;    // an operation comes down to something native, on some platform
    size_t up = 0;      // something native fills it, on some platform
    size_t refused = 0; // never down, and refused in a read of state
    size_t dropped = 0; // never down, and never refused in it
};
std::vector<model_count> counts(const matrix &of); // by module, in order of appearance, the sum last

} // namespace ocmap
