#include "channels.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>

namespace bench {
std::string numbered(std::string_view text, uint32_t port) {
    std::string written;
    for (size_t at = text.find('#'); at != text.npos; at = text.find('#')) {
        written.append(text.substr(0, at));
        text.remove_prefix(at + 1);
        uint32_t more = 0;
        if (text.starts_with('+')) {
            const auto end = std::from_chars(text.data() + 1, text.data() + text.size(), more).ptr;
            text.remove_prefix(static_cast<size_t>(end - text.data()));
        }
        written.append(std::to_string(port + more));
    }
    return written.append(text);
}

std::string for_ports(std::string_view text, uint32_t ports) {
    std::string written;
    for (size_t begin = text.find("<<"); begin != text.npos; begin = text.find("<<")) {
        const size_t end = text.find(">>");
        written.append(text.substr(0, begin));
        for (uint32_t port = 1; port <= ports; ++port) {
            if (port != 1)
                written.append(",");
            written.append(numbered(text.substr(begin + 2, end - begin - 2), port));
        }
        text.remove_prefix(end + 2);
    }
    return written.append(text);
}

namespace {

constexpr told_node configured[] = {
    // clang-format off
    {0, "config",                 nullptr},
    {1,   "index",                "#"},
    {1,   "description",          "client # of ring 7"},
    {1,   "admin-state",          "ENABLED"},
    {1,   "logical-channel-type", "openconfig-transport-types:PROT_ETHERNET"},
    {1,   "loopback-mode",        "NONE"},
    {0, "otn",                    nullptr},
    {1,   "config",               nullptr},
    {2,     "tti-msg-transmit",   "to south #"},
    {2,     "tti-msg-expected",   "from south #"},
    {0, "ethernet",               nullptr},
    {1,   "config",               nullptr},
    {2,     "client-als",         "LASER_SHUTDOWN"},
    {2,     "als-delay",          "200"},
    {0, "ingress",                nullptr},
    {1,   "config",               nullptr},
    {2,     "transceiver",        "0/0-Optics0/0/#/1"},
    // clang-format on
};

constexpr const char *configuration = R"([<<{
    "channel-index": #,
    "description": "client # of ring 7",
    "admin-state": "enable",
    "logical-channel-type": "type-ethernet",
    "loopback-mode": "none",
    "otn": {"tti-msg-transmit": "to south #", "tti-msg-expected": "from south #"},
    "ethernet": {"client-als": "laser-shutdown", "als-delay": 200},
    "ingress-client-port": "Optics0/0/#/1"}>>])";

constexpr told_node live[] = {
    // clang-format off
    {0, "config",                        nullptr},
    {1,   "index",                       "#"},
    {1,   "description",                 "line # of ring 7"},
    {1,   "admin-state",                 "ENABLED"},
    {1,   "rate-class",                  "openconfig-transport-types:TRIB_RATE_100G"},
    {1,   "trib-protocol",               "openconfig-transport-types:PROT_OTU4"},
    {1,   "logical-channel-type",        "openconfig-transport-types:PROT_OTN"},
    {1,   "loopback-mode",               "NONE"},
    {0, "state",                         nullptr},
    {1,   "index",                       "#"},
    {1,   "description",                 "line # of ring 7"},
    {1,   "admin-state",                 "ENABLED"},
    {1,   "rate-class",                  "openconfig-transport-types:TRIB_RATE_100G"},
    {1,   "trib-protocol",               "openconfig-transport-types:PROT_OTU4"},
    {1,   "logical-channel-type",        "openconfig-transport-types:PROT_OTN"},
    {1,   "loopback-mode",               "NONE"},
    {1,   "link-state",                  "UP"},
    {0, "otn",                           nullptr},
    {1,   "state",                       nullptr},
    {2,     "tti-msg-recv",              "from south #"},
    {2,     "errored-seconds",           "4"},
    {2,     "severely-errored-seconds",  "1"},
    {2,     "unavailable-seconds",       "2"},
    {2,     "fec-uncorrectable-words",   "3"},
    {2,     "fec-corrected-bits",        "51333"},
    {2,     "background-block-errors",   "17"},
    {2,     "pre-fec-ber",               nullptr},
    {3,       "instant",                 "0.00134"},
    {3,       "avg",                     "0.00135"},
    {3,       "min",                     "0.00131"},
    {3,       "max",                     "0.0014"},
    {3,       "interval",                "30000000000"},
    {3,       "min-time",                "1763856033000000000"},
    {3,       "max-time",                "1763856051000000000"},
    {2,     "post-fec-ber",              nullptr},
    {3,       "instant",                 "0.000000000000002"},
    {3,       "avg",                     "0.000000000000003"},
    {3,       "min",                     "0.000000000000001"},
    {3,       "max",                     "0.000000000000004"},
    {3,       "interval",                "30000000000"},
    {3,       "min-time",                "1763856033000000000"},
    {3,       "max-time",                "1763856051000000000"},
    {2,     "q-value",                   nullptr},
    {3,       "instant",                 "9.32"},
    {3,       "avg",                     "9.31"},
    {3,       "min",                     "9.25"},
    {3,       "max",                     "9.34"},
    {3,       "interval",                "30000000000"},
    {3,       "min-time",                "1763856033000000000"},
    {3,       "max-time",                "1763856051000000000"},
    // clang-format on
};

constexpr const char *live_configuration = R"([<<{
    "channel-index": #,
    "description": "line # of ring 7",
    "admin-state": "enable",
    "rate-class": "trib-rate100g",
    "trib-protocol": "trib-proto-type-otu4",
    "logical-channel-type": "type-otn",
    "loopback-mode": "none"}>>])";

constexpr const char *otu_controllers = R"([<<{
    "controller-name": "CoherentDSP0/0/#/1",
    "info": {
        "state": "up",
        "loopback-mode": "none",
        "qfactor": "9.32",
        "tti-mode": {"rec": {"full-tti-ascii-string": "from south #"}},
        "otu-fec-satistics": {"pre-fec-ber": "1.34E-03", "post-fec-ber": "2E-15"}}}>>])";

constexpr const char *optics_ports = R"([<<{
    "name": "Optics0/0/#/1",
    "optics-info": {
        "cd": "1341",
        "second-order-polarization-mode-dispersion": "47.00",
        "polarization-dependent-loss": "0.79",
        "snr": "19.30"},
    "optics-lanes": {"optics-lane": [{"number": 1, "receive-signal-power": "-360"}]}}>>])";

// What says of a controller that it is not in maintenance, and of a port that it is not grey.
constexpr const char *state_store = R"({
    <<"/oper/otu/if/CoherentDSP0_0_#_1/otu_port_info": {"record": "otu_per_port_info"},
      "/oper/optics/if/Optics0_0_#_1/optics_info": {"record": "optics_edm_info"}>>})";

// Descriptions are put together of members: of a value below a path, and of several.
std::string member(std::string_view path, const std::string &value) {
    const size_t step = path.find('/');
    const std::string rest = step == path.npos ? value : "{" + member(path.substr(step + 1), value) + "}";
    return "\"" + std::string(path.substr(0, step)) + "\": " + rest;
}

std::string object(std::initializer_list<std::string> members) {
    std::string written;
    for (const std::string &each : members)
        written.append(written.empty() ? "{" : ", ").append(each);
    return written + "}";
}

std::string text(const char *tag, const char *value) {
    return std::string("\"") + tag + "\": \"" + value + "\"";
}

std::string entry(std::initializer_list<std::string> members) {
    return "[" + object(members) + "]";
}

std::string for_each_port(const char *name, const std::string &below) {
    return "[<<" + object({text("name", name), below}) + ">>]";
}

std::string counter(const char *tag, const char *value) {
    return member(tag, object({text("data", value)}));
}

std::string count(const char *tag, const char *value) {
    return member(tag + std::string("/count"), entry({text("data", value)}));
}

std::string statistic(const char *tag, const char *low, const char *middle, const char *high) {
    return member(tag, object({text("minimum", low), text("average", middle), text("maximum", high),
                               text("min-time", "1763856033000000000"), text("max-time", "1763856051000000000")}));
}

constexpr const char *first = R"("number": 1)";
constexpr const char *coherent_port = "CoherentDSP0/0/#/1";
constexpr const char *optics_port = "Optics0/0/#/1";
constexpr const char *odu_controller = "ODU40/0/#/1";
constexpr const char *ethernet_controller = "HundredGigECtrlr0/0/#/1";

std::string fec_bin() {
    return entry({first, counter("ec-bits", "51333"), counter("uc-words", "3"),
                  statistic("pre-fec-ber", "1.31E-03", "1.35E-03", "1.40E-03"),
                  statistic("post-fec-ber", "1E-15", "3E-15", "4E-15"), statistic("q", "9.25", "9.31", "9.34"),
                  text("flex-bin-interval", "30"), text("valid", "true")});
}

std::string otn_bin() {
    return entry(
        {first, counter("es-ne", "4"), counter("ses-ne", "1"), counter("uas-ne", "2"), counter("bbe-ne", "17")});
}

std::string optics_bin() {
    return entry({first, statistic("cd", "1339", "1340", "1342"), statistic("pmd", "46.316", "47.004", "48.499"),
                  statistic("pdl", "0.7449", "0.7912", "0.8251"), statistic("rx-sig-pow", "-3.661", "-3.602", "-3.549"),
                  statistic("snr", "19.10", "19.30", "19.50"), text("flex-bin-interval", "30"), text("valid", "true")});
}

std::string pcs_bin(const char *key) {
    return entry(
        {key, text("cumulative-bip", "22"), count("es-ne", "17"), count("ses-ne", "18"), count("uas-ne", "19")});
}

std::string flex_bins() {
    const std::string otu =
        member("otu-prev/otu-prev-flex-interval",
               object({member("otu-prev-flex-interval-fecs/otu-prev-flex-interval-fec", fec_bin()),
                       member("otu-prev-flex-interval-otns/otu-prev-flex-interval-otn", otn_bin())}));
    const std::string optics = member("optics-prev/optics-prev-flex-interval/optics-prev-flex-interval-optics/"
                                      "optics-prev-flex-interval-optic",
                                      optics_bin());
    const std::string ethernet = member("ethernet-prev/ethernet-prev-flex-interval/ethernet-prev-flex-interval-pcses/"
                                        "ethernet-prev-flex-interval-pcs",
                                        pcs_bin(R"("slot-number": 1)"));
    const std::string odu = member("odu-prev/odu-prev-flex-interval/odu-prev-flex-interval-otns/"
                                   "odu-prev-flex-interval-otn",
                                   otn_bin());
    return object({member("otu/otu-ports/otu-port", for_each_port(coherent_port, otu)),
                   member("optics/optics-ports/optics-port", for_each_port(optics_port, optics)),
                   member("ethernet/ethernet-ports/ethernet-port", for_each_port(ethernet_controller, ethernet)),
                   member("odu/odu-ports/odu-port", for_each_port(odu_controller, odu))});
}

// Time lines stand in lists without keys, which are asked for by number.
std::string time_line(const char *path, const char *number, const std::string &below, const std::string &bin) {
    return member(path, entry({number, member(below, bin)}));
}

std::string history() {
    const char *zero = R"("number": 0)";
    const std::string otu =
        object({time_line("otu-second30fec-histories/otu-second30fec-history", zero,
                          "otu-second30fec-time-line-instances/otu-second30fec-time-line-instance", fec_bin()),
                time_line("otu-second30otn-histories/otu-second30otn-history", zero,
                          "otu-second30otn-time-line-instances/otu-second30otn-time-line-instance", otn_bin())});
    const std::string optics = object({time_line(
        "optics-second30-optics-histories/optics-second30-optics-history", first,
        "optics-second30-optics-time-line-instances/optics-second30-optics-time-line-instance", optics_bin())});
    const std::string ethernet =
        object({time_line("second30pcs-histories/second30pcs-history", first,
                          "second30pcs-time-line-instances/second30pcs-time-line-instance", pcs_bin(first))});
    return member("global/periodic",
                  object({member("ethernet-history/ethernet-port-histories/ethernet-port-history",
                                 for_each_port(ethernet_controller, member("ethernet-second30-history", ethernet))),
                          member("otu-history/otu-port-histories/otu-port-history",
                                 for_each_port(coherent_port, member("otu-second30-history", otu))),
                          member("optics-history/optics-port-histories/optics-port-history",
                                 for_each_port(optics_port, member("optics-second30-history", optics)))}));
}

constexpr const char *router = R"("router-type": 5, "optical-terminal-device": true)";

std::string configured_channels(const char *entries) {
    return member("config/Corvane-terminal-device-cfg:logical-channels/channel", entries);
}

} // namespace

std::string configured_device() {
    return object({router, R"("channels": {<<"#": "CoherentDSP0/0/#/1">>})", configured_channels(configuration)});
}

std::string live_device(performance kept) {
    const bool is_flex = kept == performance::flex_bins;
    const std::string performance_data =
        is_flex ? member("Corvane-pmengine-oper:performance-management", flex_bins())
                : member("Corvane-pmengine-oper:performance-management-history", "{" + history() + "}");
    const std::string operational =
        object({member("Corvane-controller-optics-oper:optics-oper/optics-ports/optics-port", optics_ports),
                member("Corvane-controller-otu-oper:otu/controllers/controller", otu_controllers), performance_data});
    return object({router, is_flex ? R"("flex-bins": true)" : R"("flex-bins": false)",
                   R"("channels": {<<"#": "CoherentDSP0/0/#/1", "#+20000": "ODU40/0/#/1",
                                     "#+40000": "HundredGigECtrlr0/0/#/1">>})",
                   R"("interfaces": [<<"Optics0/0/#/1">>])", configured_channels(live_configuration),
                   member("operational", operational), R"("state-store-installed": true)",
                   member("state-store", state_store)});
}

std::span<const told_node> configured_channel() {
    return configured;
}

std::span<const told_node> live_channel() {
    return live;
}

size_t leaves_of(std::span<const told_node> channel) {
    const auto is_leaf = [](const told_node &node) { return node.value != nullptr; };
    return 1 + static_cast<size_t>(std::ranges::count_if(channel, is_leaf));
}

} // namespace bench
