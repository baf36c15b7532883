// Requests under `interfaces`, entry by entry. The plug-in knows what is added to an interface; an interface itself
// belongs to a model that is not here.
#pragma once

#include "plugin.h"
#include "session.h"
#include "tree.h"
#include "zmf.h"

namespace zmf {

// `interfaces` is the top node. Stops at the first status that is not 0.
//
// The `ethernet` of an entry goes to its walker; a read that names nothing has a whole one. So do the transceiver and
// the physical channels that a get of operational data, or an edit, names in the entry's `state`. An edit of anything
// else is refused by its name, and a read has nothing of it.
rcode walk_interfaces(const plugin &by, session &s, zmf_datatree &interfaces, output_tree &out);

} // namespace zmf
