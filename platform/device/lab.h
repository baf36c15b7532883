// The text of the built-in device, examples/lab.json.
#pragma once

#include <string_view>

namespace device {

extern const std::string_view lab_json;

} // namespace device
