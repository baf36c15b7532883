// Choice of the reader, and what holds for the bytes of either form.
#include "request.h"

#include "device/text.h"
#include "input.h"
#include "request_json.h"
#include "request_xml.h"

namespace ocmap {

zmf::fixed_tree read_request(std::string_view bytes, format form, purpose what) {
    if (bytes.size() > (what == purpose::native ? largest_native : largest_request))
        throw input_error{1, 1, what == purpose::native ? "larger than 2 GiB" : "larger than 64 MiB"};
    if (const size_t bad = text::first_bad_byte(bytes); bad != std::string_view::npos) {
        const text::position place = text::position_of(bytes, bad);
        throw input_error{place.line, place.column, bytes[bad] == 0 ? "a zero byte" : "not UTF-8"};
    }
    return form == format::xml ? read_request_xml(bytes, what) : read_request_json(bytes, what);
}

} // namespace ocmap
