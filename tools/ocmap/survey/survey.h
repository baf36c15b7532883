// What becomes of the nodes of the OpenConfig models on one device, and of its native leaves on the way back.
#pragma once

#include <array>
#include <vector>

#include "survey/ascent.h"
#include "survey/probe.h"
#include "survey/samples.h"

namespace ocmap {

enum class outcome : uint8_t {
    mapped,  // its callback adds to the native tree
    refused, // the walk fails
    dropped, // the walk succeeds, and nothing native comes of it
};
inline constexpr size_t outcomes = 3;
const char *name_of(outcome what); // "mapped", "refused", "dropped"
outcome outcome_of(const finding &found);

// What those have in common that are alike but for values.
struct fate {
    finding what;
    std::vector<subject> whose;
};

struct story {
    const schema::node *node;
    std::array<std::vector<fate>, all_deeds.size()> fates; // by deed
    std::vector<const filling *> filled_by;
};

bool is_leaf(const schema::node &node);

// Whether the plug-in has a callback for a node; else it is one of the tree around its models.
bool is_of_plugin(const zmf::plugin &by, const schema::node &node);

class survey {
public:
    // Of the device that is installed. `by` outlives the survey.
    survey(const zmf::plugin &by, const device::description &on);
    survey(const survey &) = delete;
    survey &operator=(const survey &) = delete;

    // What fills a node is told without `is_asked`.
    story tell(const schema::node &node, const std::vector<chosen_key> &given = {}) const;
    story tell_reads(const schema::node &node) const; // those of state alone
    // With the stories of all leaves, or of their reads, it is known which native nodes a read asks for.
    void settle(const std::vector<story> &all);
    const ascent &up() const { return up_; }

private:
    void probe(story &told, deed what, const std::vector<subject> &subjects) const;

    const samples tries_;
    const prober prober_;
    ascent up_;
};

} // namespace ocmap
