// Requests under `components`, entry by entry. What is added to a component goes to the walkers of those models, and
// the rest to the component's own.
#pragma once

#include "plugin.h"
#include "session.h"
#include "tree.h"
#include "zmf.h"

namespace zmf {

// `components` is the top node. Stops at the first status that is not 0.
//
// The optical channel and the transceiver of an entry go to their walkers; a read that names no optical channel has a
// whole one, of the entry's name or of all. An entry that is deleted goes through the plug-in's delete of a whole
// optical channel; one that is replaced, too, and then through the walk. What else there is but the key, and a
// `config/name` equal to it, goes to the walker of all components, which refuses it by its name.
rcode walk_components(const plugin &by, session &s, zmf_datatree &components, output_tree &out);

} // namespace zmf
