// Requests in NETCONF XML: one top node, or several inside a `filter` or `config` element of the NETCONF base
// namespace.
#pragma once

#include <string_view>

#include "request.h"
#include "zmf/tree.h"

namespace ocmap {

// `bytes` is UTF-8. Throws input_error.
zmf::fixed_tree read_request_xml(std::string_view bytes, purpose what);

} // namespace ocmap
