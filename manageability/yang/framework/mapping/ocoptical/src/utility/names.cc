// Names of optics ports, coherent controllers, optical channels and transceivers: pairs of scan and print formats.
//
// To add a conversion: its row, and its prototype in exported.h.
#include <cstdio>
#include <cstring>
#include <iterator>

#include "engine/export.h"
#include "exported.h"
#include "platform.h"
#include "utility/scan.h"
#include "utility/text.h"

using namespace ocoptical;

namespace {

constexpr uint32_t router_without_prefix = 19;

// R/S/I/P: rack, slot, instance, port.
struct location {
    int32_t prefix = absent, r = absent, s = absent, i = absent, p = absent;

    bool is_complete() const { return r != absent && s != absent && i != absent && p != absent; }
};

// Formats take R, S, I, P; with a prefix one number more, in front: any number when scanned, S when printed.
struct name_row {
    const char *scan;           // null: `scan_prefixed` serves every name
    const char *scan_prefixed;  // serves a name with "-"; null: there is one form only
    const char *print;          //
    const char *print_prefixed; // router types other than 19; null: `print` serves all
    rcode bad_name;             // result where a number is missing; nothing is written then
};

constexpr char optics[] = "Optics%d/%d/%d/%d";
constexpr char coherent_dsp[] = "CoherentDSP%d/%d/%d/%d";
constexpr char optical_channel[] = "OpticalChannel%d/%d/%d/%d";
constexpr char prefixed_optics[] = "0/%d-Optics%d/%d/%d/%d";
constexpr char prefixed_optical_channel[] = "0/%d-OpticalChannel%d/%d/%d/%d";

location scan_location(const name_row &row, const char *name) {
    location at;
    const bool prefixed = row.scan == nullptr || (row.scan_prefixed != nullptr && strchr(name, '-') != nullptr);
    if (prefixed) {
        sscanf(name, row.scan_prefixed, &at.prefix, &at.r, &at.s, &at.i, &at.p);
    } else {
        sscanf(name, row.scan, &at.r, &at.s, &at.i, &at.p);
    }
    return at;
}

rcode convert_name(const name_row &row, const char *name, char *out) {
    if (name == nullptr) {
        return row.bad_name;
    }
    const location at = scan_location(row, name);
    if (!at.is_complete()) {
        return row.bad_name;
    }
    if (row.print_prefixed != nullptr && is_prefix_required() != 0) {
        snprintf(out, text_size, row.print_prefixed, at.s, at.r, at.s, at.i, at.p);
    } else {
        snprintf(out, text_size, row.print, at.r, at.s, at.i, at.p);
    }
    return RC_OK;
}

void replace(char *text, char from, char to) {
    for (char *at = strchr(text, from); at != nullptr; at = strchr(at, from)) {
        *at = to;
    }
}

// A name that does not fit leaves the output empty.
void copy_replacing(const char *caller, const char *name, char *out, char from, char to) {
    zmf_strcpy_s(caller, out, text_size, name);
    replace(out, from, to);
}

} // namespace

#define NAME(function, ...)                                                                                            \
    OC_EXPORT rcode function(const char *name, char *out) {                                                            \
        static constexpr name_row row = {__VA_ARGS__};                                                                 \
        return convert_name(row, name, out);                                                                           \
    }

// clang-format off
//   function                                                scan             with "-"                  print                 with prefix               bad name
NAME(oc_optical_convert_coherentDSP_to_interface,            coherent_dsp,    nullptr,                  optics,               nullptr,                  OCOPTICAL_BAD_NAME)
NAME(oc_optical_convert_optics_to_controller,                optics,          nullptr,                  coherent_dsp,         nullptr,                  OCOPTICAL_BAD_NAME)
NAME(oc_optical_convert_optics_interface_to_statedb_interface, optics,        nullptr,                  "Optics%d_%d_%d_%d",  nullptr,                  OCOPTICAL_BAD_NAME)
NAME(oc_optical_convert_opticalchannel_to_interface,         optical_channel, prefixed_optical_channel, optics,               nullptr,                  OCOPTICAL_BAD_NAME)
NAME(oc_optical_convert_opticalchannel_to_controller,        nullptr,         prefixed_optical_channel, coherent_dsp,         nullptr,                  OCOPTICAL_BAD_NAME)
NAME(oc_optical_convert_trans_to_interface,                  optics,          prefixed_optics,          optics,               nullptr,                  RC_OK)
NAME(oc_optical_convert_controller_to_opticalchannel,        coherent_dsp,    nullptr,                  optical_channel,      prefixed_optical_channel, OCOPTICAL_BAD_NAME)
NAME(oc_optical_convert_interface_to_opticalchannel,         optics,          nullptr,                  optical_channel,      prefixed_optical_channel, OCOPTICAL_BAD_NAME)
NAME(oc_optical_convert_interface_to_trans,                  optics,          nullptr,                  optics,               prefixed_optics,          RC_OK)
// clang-format on

OC_EXPORT uint32_t is_prefix_required(void) {
    return hwinfo_get_router_type() != router_without_prefix ? 1 : 0;
}

OC_EXPORT rcode oc_optical_convert_compname_to_optname(const char *name, char *out) {
    copy_replacing(__func__, name, out, '/', '_');
    return RC_OK;
}

OC_EXPORT rcode oc_optical_convert_optname_to_compname(const char *name, char *out) {
    copy_replacing(__func__, name, out, '_', '/');
    return RC_OK;
}

OC_EXPORT rcode oc_optical_convert_interface_to_logical_id(const char *name, char *out) {
    if (name == nullptr) {
        return OCOPTICAL_BAD_NAME;
    }
    char mapped[text_size];
    char *at = mapped;
    for (; *name != '\0' && at != std::end(mapped) - 1; ++name) { // a longer name is cut
        *at++ = *name == '/' ? '_' : *name;
    }
    *at = '\0';
    uint32_t channel = 0;
    if (ocoptical_ifmap_c_find_ifindex(mapped, &channel) != RC_OK || channel == 0) {
        return OCOPTICAL_BAD_NAME;
    }
    print_number(out, channel);
    return RC_OK;
}

OC_EXPORT uint32_t oc_optical_is_interface_ethernet_controller(const char *name) {
    static constexpr const char *kinds[] = {"TenGigECtrlr", "FortyGigECtrlr", "HundredGigECtrlr"};
    for (const char *kind : kinds) {
        if (name != nullptr && strstr(name, kind) != nullptr) {
            return 1;
        }
    }
    return 0;
}
