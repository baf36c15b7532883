// Requests under `components`, entry by entry. The plug-in knows what is added to a component, not the component
// itself: its key, and what else a client may say of it, is seen to here.
#pragma once

#include "plugin.h"
#include "session.h"
#include "tree.h"
#include "zmf.h"

namespace zmf {

// `components` is the top node. Stops at the first status that is not 0.
//
// The optical channel of an entry goes to the plug-in; a read that names none has a whole one, of the entry's name or
// of all. An entry that is deleted goes through the plug-in's delete of a whole optical channel; one that is replaced,
// too, and then through the walk. Of the rest an edit may say `config/name`, equal to the key; all else is refused by
// its name.
rcode walk_components(const plugin &by, session &s, zmf_datatree &components, output_tree &out);

} // namespace zmf
