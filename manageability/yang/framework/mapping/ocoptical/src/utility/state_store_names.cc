// Names of controllers in the form of the state store.
#include <cstdio>
#include <cstring>
#include <span>

#include "engine/export.h"
#include "exported.h"
#include "utility/scan.h"
#include "utility/text.h"

using namespace ocoptical;

namespace {

constexpr int most_numbers = 6;

struct numbers {
    int32_t n[most_numbers] = {absent, absent, absent, absent, absent, absent};

    void scan(const char *name, const char *format) { sscanf(name, format, &n[0], &n[1], &n[2], &n[3], &n[4], &n[5]); }
    bool has(int count) const {
        for (int at = 0; at < count; ++at) {
            if (n[at] == absent) {
                return false;
            }
        }
        return true;
    }
    // A format takes the leading numbers that it names.
    void print(char *out, const char *format) const {
        snprintf(out, state_store_name_size, format, n[0], n[1], n[2], n[3], n[4], n[5]);
    }
};

struct name_form {
    const char *scan;
    const char *print;
    int count; // numbers that are required
};

// A kind is known by a part of the name; its forms are tried in order.
struct controller_row {
    const char *part;
    name_form forms[2] = {};
};

constexpr controller_row otu_rows[] = {
    {"CoherentDSP", {{"CoherentDSP%d/%d/%d/%d", "CoherentDSP%d_%d_%d_%d", 4}}},
    {"OTU4", {{"OTU4%d/%d/%d/%d", "OTU4%d_%d_%d_%d", 4}}},
    {"OTU2E", {{"OTU2E%d/%d/%d/%d/%d", "OTU2E%d_%d_%d_%d_%d", 5}}},
    {"OTU2", {{"OTU2%d/%d/%d/%d/%d", "OTU2%d_%d_%d_%d_%d", 5}}},
};

constexpr controller_row odu_rows[] = {
    {"ODU4", {{"ODU4%d/%d/%d/%d/%d", "ODU4%d_%d_%d_%d_%d", 5}, {"ODU4%d/%d/%d/%d", "ODU4%d_%d_%d_%d", 4}}},
    {"ODU2E",
     {{"ODU2E%d/%d/%d/%d/%d/%d", "ODU2E%d_%d_%d_%d_%d_%d", 6}, {"ODU2E%d/%d/%d/%d/%d", "ODU2E%d_%d_%d_%d_%d", 5}}},
    {"ODU2", {{"ODU2%d/%d/%d/%d/%d/%d", "ODU2%d_%d_%d_%d_%d_%d", 6}, {"ODU2%d/%d/%d/%d/%d", "ODU2%d_%d_%d_%d_%d", 5}}},
    {"ODU-FLEX", {{"ODU-FLEX%d/%d/%d/%d/%d", "ODU-FLEX%d_%d_%d_%d_%d", 5}}},
    {"ODUC4", {{"ODUC4%d/%d/%d/%d", "ODUC4%d_%d_%d_%d", 4}}},
    {"ODUC3", {{"ODUC3%d/%d/%d/%d", "ODUC3%d_%d_%d_%d", 4}}},
    {"ODUC2", {{"ODUC2%d/%d/%d/%d", "ODUC2%d_%d_%d_%d", 4}}},
    {"ODUC1", {{"ODUC1%d/%d/%d/%d", "ODUC1%d_%d_%d_%d", 4}}},
};

rcode convert_controller(std::span<const controller_row> rows, const char *name, char *out) {
    if (name == nullptr) {
        return RC_OK;
    }
    for (const controller_row &row : rows) {
        if (strstr(name, row.part) == nullptr) {
            continue;
        }
        for (const name_form &form : row.forms) {
            if (form.scan == nullptr) {
                break;
            }
            numbers found;
            found.scan(name, form.scan);
            if (found.has(form.count)) {
                found.print(out, form.print);
                return RC_OK;
            }
        }
        return OCOPTICAL_BAD_NAME;
    }
    return RC_OK; // a name of no kind
}

// Ethernet kinds do not exclude one another: all that stand in the name are scanned, then all are printed.
struct ethernet_form {
    const char *part;
    const char *format;
};

constexpr ethernet_form ethernet_scans[] = {
    {"HundredGigECtrlr", "HundredGigECtrlr%d/%d/%d/%d"},
    {"TenGigECtrlr", "TenGigECtrlr%d/%d/%d/%d/%d"},
    {"FourHundredGigECtrlr", "FourHundredGigECtrlr%d/%d/%d/%d"},
    {"FortyGigECtrlr", "FortyGigECtrlr%d/%d/%d/%d"},
    {"MgmtEth", "MgmtEth%d/RP%d/CPU%d/%d"},
};

// The name of a four hundred gigabit controller is first printed as one of a hundred, then over it.
constexpr ethernet_form ethernet_prints[] = {
    {"HundredGigECtrlr", "HundredGigECtrlr%d_%d_%d_%d"},
    {"TenGigECtrlr", "TenGigECtrlr%d_%d_%d_%d_%d"},
    {"FortyGigECtrlr", "FortyGigECtrlr%d_%d_%d_%d"},
    {"FourHundredGigECtrlr", "FourHundredGigECtrlr%d_%d_%d_%d"},
    {"MgmtEth", "MgmtEth%d_RP%d_CPU%d_%d"},
};

} // namespace

OC_EXPORT rcode oc_optical_convert_otu_cntrlr_to_statedb_interface(const char *name, char *out) {
    return convert_controller(otu_rows, name, out);
}

OC_EXPORT rcode oc_optical_convert_odu_cntrlr_to_statedb_interface(const char *name, char *out) {
    return convert_controller(odu_rows, name, out);
}

OC_EXPORT rcode oc_optical_convert_ethernet_cntrlr_to_statedb_interface(const char *name, char *out) {
    if (name == nullptr) {
        return OCOPTICAL_BAD_NAME;
    }
    numbers found;
    for (const ethernet_form &row : ethernet_scans) {
        if (strstr(name, row.part) != nullptr) {
            found.scan(name, row.format);
        }
    }
    if (!found.has(4)) { // a fifth number is printed as -1 where it is missing
        return OCOPTICAL_BAD_NAME;
    }
    for (const ethernet_form &row : ethernet_prints) {
        if (strstr(name, row.part) != nullptr) {
            found.print(out, row.format);
        }
    }
    return RC_OK;
}
