// Requests in RFC 7951 JSON, with operations as RFC 7952 annotations.
#pragma once

#include <string_view>

#include "request.h"
#include "zmf/tree.h"

namespace ocmap {

// `bytes` is UTF-8. Throws input_error.
zmf::fixed_tree read_request_json(std::string_view bytes, purpose what);

} // namespace ocmap
