// Small operations for the modules that load the plug-in, which itself calls none of them.
#include <cstdlib>
#include <cstring>

#include "engine/export.h"
#include "exported.h"
#include "platform.h"
#include "utility/text.h"

using namespace ocoptical;

OC_EXPORT void convert_ifname_imentry(char *out, const char *name) {
    if (out != nullptr && name != nullptr) {
        ifreg_internal_namestring(name, out, internal_name_size);
    }
}

OC_EXPORT rcode string_to_uint32(const char *text, uint64_t *out) {
    *out = strtoul(text, nullptr, 10); // 64 bits, in spite of the name
    return RC_OK;
}

OC_EXPORT rcode index_string_to_interface_name(zmf_map_ctx /*ctx*/, const char *text, char **out) {
    const unsigned long channel = strtoul(text, nullptr, 10);
    *out = static_cast<char *>(malloc(internal_name_size));
    if (*out == nullptr) {
        return RC_OK;
    }
    **out = '\0';
    return ocoptical_ifmap_c_find_ifname(static_cast<uint32_t>(channel), *out);
}

OC_EXPORT rcode get_token(char *text, const char *delimiters, uint32_t n, char **out) {
    char *token = strtok(text, delimiters);
    for (; token != nullptr && n != 0; --n) {
        token = strtok(nullptr, delimiters);
    }
    if (token != nullptr) {
        *out = strdup(token);
    }
    return RC_OK;
}
