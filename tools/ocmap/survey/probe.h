// What becomes of one OpenConfig node: a request with nothing but that node, and what it takes to get there, is walked
// down, and the calls are kept that its callback makes.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "schema/schema.h"
#include "survey/samples.h"
#include "zmf/plugin.h"
#include "zmf/session.h"

namespace ocmap {

enum class deed : uint8_t { get_config, get, edit, erase };
inline constexpr std::array all_deeds{deed::get_config, deed::get, deed::edit, deed::erase};
const char *name_of(deed what); // "get-config", "get", "edit", "delete"
bool is_read(deed what);

// A call that adds to the native tree.
struct native_call {
    std::string verb;   // "asks", "merges", "deletes"...
    std::string path;   // without keys
    std::string module; // "Corvane-terminal-device-cfg"
    std::optional<std::string> value;
    bool is_list = false; // opens an entry
    rcode status = RC_OK;
    bool operator==(const native_call &) const = default;
};

struct finding {
    bool is_reached = false;              // the walk came to the node's callback
    rcode status = RC_OK;                 // of the whole walk
    zmf::failure failure;                 // with a status that is not 0
    std::vector<std::string> conversions; // that the callback called
    std::vector<native_call> calls;
};

class prober {
public:
    prober(const zmf::plugin &by, const samples &tries) : by_(by), tries_(tries) {}

    finding probe(const schema::node &node, deed what, const subject &whose) const;

private:
    const zmf::plugin &by_;
    const samples &tries_;
};

} // namespace ocmap
