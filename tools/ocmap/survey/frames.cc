#include "survey/frames.h"

namespace ocmap {
namespace {

constexpr std::string_view trc = ": TRC: ";
constexpr std::string_view err = ": ERR: ";

struct ring_text {
    std::string_view function, text;
};

// "#17: TRC: function:12 ctx=0x1234,Start"
ring_text split(std::string_view line) {
    size_t at = line.find(trc);
    if (at == std::string_view::npos)
        at = line.find(err);
    const size_t comma = line.find(',');
    if (at == std::string_view::npos || comma == std::string_view::npos)
        return {};
    const std::string_view head = line.substr(at + trc.size(), comma - at - trc.size());
    return {head.substr(0, head.find(':')), line.substr(comma + 1)};
}

// A callback has a kind before its level, "_leaf_lvla_"; a walker has none.
bool is_callback(std::string_view function) {
    const size_t level = function.find("lvl");
    if (level == std::string_view::npos || !function.starts_with("ymap_"))
        return false;
    const std::string_view front = function.substr(0, level);
    return front.ends_with("_leaf_") || front.ends_with("_list_") || front.ends_with("_cont_");
}

} // namespace

size_t frames::outer_callback() const {
    for (size_t i = 0; i < open_.size(); ++i)
        if (open_[i].is_callback)
            return i;
    return npos;
}

size_t frames::inner_callback() const {
    for (size_t i = open_.size(); i-- > 0;)
        if (open_[i].is_callback)
            return i;
    return npos;
}

void frames::take(std::string_view ring_line) {
    const ring_text told = split(ring_line);
    if (told.text == "Start")
        open_.push_back({std::string(told.function), is_callback(told.function)});
    else if (told.text == "End" || told.text == "Invalid arguments passed!")
        leave(told.function);
}

size_t frames::find(std::string_view function) const {
    for (size_t i = open_.size(); i-- > 0;)
        if (open_[i].function == function)
            return i;
    return npos;
}

// A walker that stops early has no end: those above the one that ended are gone, too.
void frames::leave(std::string_view function) {
    if (const size_t at = find(function); at != npos)
        open_.resize(at);
}

} // namespace ocmap
