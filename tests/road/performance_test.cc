// Statistics end to end: what a client sees of the lab device (examples/lab.json) while it serves its flex bins, and
// while it has its 30-second history alone. A read more: a row.
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "device_road.h"
#include "host.h"
#include "written_json.h"

namespace {

using road::device_road;

// Quotes are written as ' in these tests.
std::string channels(const std::string &entries) {
    return json_of("{'openconfig-terminal-device:terminal-device':{'logical-channels':{'channel':[" + entries + "]}}}");
}

std::string channel(int index, const std::string &below) {
    return channels("{'index':" + std::to_string(index) + ",'" + below + "}");
}

std::string line(const std::string &component, const std::string &state) {
    return json_of("{'openconfig-platform:components':{'component':[{'name':'" + component +
                   "','openconfig-terminal-device:optical-channel':{'state':{" + state + "}}}]}}");
}

std::string in_channels(const std::string &shown) {
    return "terminal-device(logical-channels(" + shown + "))";
}

std::string in_channel(int index, const std::string &container, const std::string &shown) {
    return in_channels("channel(index=" + std::to_string(index) + " " + container + "(state(" + shown + ")))");
}

std::string in_line(const std::string &component, const std::string &shown) {
    return "components(component(name=" + component + " optical-channel(state(" + shown + "))))";
}

// The seconds after the start of the lab's first bin, as the device tells times.
std::string at(int seconds) {
    return std::to_string(1763856000 + seconds) + "000000000";
}

std::string statistic(const std::string &name, const std::string &instant, const std::string &figures, bool interval,
                      int min_time, int max_time) {
    return name + "(" + (instant.empty() ? "" : "instant=" + instant + " ") + figures +
           (interval ? " interval=30000000000" : "") + " min-time=" + at(min_time) + " max-time=" + at(max_time) + ")";
}

device::description lab_with(bool flex_bins, bool line_port_is_grey = false) {
    device::description lab = device::lab();
    lab.flex_bins = flex_bins;
    if (line_port_is_grey)
        lab.state_store.erase("/oper/optics/if/Optics0_0_0_13/optics_info");
    return lab;
}

struct read_row {
    std::string request, bins, history;
};

void check(const read_row &row) {
    for (const bool flex_bins : {true, false}) {
        device_road device(lab_with(flex_bins));
        EXPECT_EQ(device.seen(row.request, OP_GET), flex_bins ? row.bins : row.history)
            << (flex_bins ? "bins: " : "history: ") << row.request;
        EXPECT_TRUE(device.leaves_without_value().empty()) << row.request;
    }
}

TEST(performance, of_a_channel) {
    const std::string trace = "tti-msg-transmit=west-13 tti-msg-expected=east-13 tti-msg-recv=east-13 ";
    const std::string no_errors = "avg=0.0 min=0.0 max=0.0";
    const std::string counters = "'otn':{'state':{'errored-seconds':null,'background-block-errors':null}}";
    const read_row rows[] = {
        // A coherent line port has no interval of its signal to noise ratio in a bin; in the history it has one, and
        // the lowest ratio is told as one.
        {channel(301, "otn':{'state':{}}"),
         in_channel(301, "otn",
                    trace +
                        "errored-seconds=4 severely-errored-seconds=1 unavailable-seconds=0 fec-uncorrectable-words=0 "
                        "fec-corrected-bits=48210 background-block-errors=17 " +
                        statistic("pre-fec-ber", "0.00125", "avg=0.00125 min=0.00121 max=0.0013", true, 3, 21) + " " +
                        statistic("post-fec-ber", "0.0", no_errors, true, 0, 0) + " " +
                        statistic("q-value", "9.40", "avg=9.40 min=9.35 max=9.44", true, 21, 3) + " " +
                        statistic("esnr", "19.40", "avg=19.40 min=19.20 max=19.60", false, 14, 6)),
         in_channel(301, "otn",
                    trace +
                        "errored-seconds=5 severely-errored-seconds=2 unavailable-seconds=1 fec-uncorrectable-words=1 "
                        "fec-corrected-bits=51333 background-block-errors=19 " +
                        statistic("pre-fec-ber", "0.00125", "avg=0.00135 min=0.00131 max=0.0014", true, 33, 51) + " " +
                        statistic("post-fec-ber", "0.0", no_errors, true, 30, 30) + " " +
                        statistic("q-value", "9.40", "avg=9.30 min=9.25 max=9.34", true, 51, 33) + " " +
                        statistic("esnr", "19.40", "avg=19.30 min=30000000000 max=19.50", true, 44, 36))},
        // An OTU4 has no interval of its quality, and no optics.
        {channel(310, "otn':{'state':{}}"),
         in_channel(
             310, "otn",
             "errored-seconds=6 severely-errored-seconds=5 unavailable-seconds=3 fec-uncorrectable-words=2 "
             "fec-corrected-bits=77 background-block-errors=2 " +
                 statistic("pre-fec-ber", "", "avg=0.00003 min=0.00002 max=0.00004", true, 9, 10) + " " +
                 statistic("post-fec-ber", "", "avg=0.000000000000001 min=0.0 max=0.000000000000003", true, 9, 10) +
                 " " + statistic("q-value", "", "avg=11.10 min=11.00 max=11.20", false, 9, 10)),
         in_channel(
             310, "otn",
             "errored-seconds=7 severely-errored-seconds=6 unavailable-seconds=4 fec-uncorrectable-words=3 "
             "fec-corrected-bits=78 background-block-errors=3 " +
                 statistic("pre-fec-ber", "", "avg=0.000031 min=0.000021 max=0.000041", true, 39, 40) + " " +
                 statistic("post-fec-ber", "", "avg=0.000000000000001 min=0.0 max=0.000000000000004", true, 39, 40) +
                 " " + statistic("q-value", "", "avg=11.11 min=11.01 max=11.21", false, 39, 40))},
        // An ODU has counters alone, and no history.
        {channel(201, "otn':{'state':{}}"),
         in_channel(201, "otn",
                    "errored-seconds=2 severely-errored-seconds=0 unavailable-seconds=0 background-block-errors=5"),
         in_channels("channel(index=201)")},
        {channel(101, "ethernet':{'state':{}}"),
         in_channel(101, "ethernet",
                    "client-als=LASER_SHUTDOWN als-delay=100 in-mac-pause-frames=12 in-oversize-frames=880014 "
                    "in-jabber-frames=3 in-fragment-frames=4 in-crc-errors=5 out-mac-pause-frames=6 "
                    "in-pcs-bip-errors=21 in-pcs-errored-seconds=7 in-pcs-severely-errored-seconds=8 "
                    "in-pcs-unavailable-seconds=9"),
         in_channel(101, "ethernet",
                    "client-als=LASER_SHUTDOWN als-delay=100 in-mac-pause-frames=12 in-oversize-frames=880014 "
                    "in-jabber-frames=3 in-fragment-frames=4 in-crc-errors=5 out-mac-pause-frames=6 "
                    "in-pcs-bip-errors=22 in-pcs-errored-seconds=17 in-pcs-severely-errored-seconds=18 "
                    "in-pcs-unavailable-seconds=19")},
        // Counters alone come with the time line that is asked for by its key.
        {channels("{'index':301," + counters + "}"),
         in_channel(301, "otn", "errored-seconds=4 background-block-errors=17"),
         in_channel(301, "otn", "errored-seconds=5 background-block-errors=19")},
        // Of all channels none is, so that the history has no counters.
        {channels("{" + counters + "}"),
         in_channels("channel(index=301 otn(state(errored-seconds=4 background-block-errors=17))) "
                     "channel(index=310 otn(state(errored-seconds=6 background-block-errors=2))) "
                     "channel(index=200 otn(state(errored-seconds=30 background-block-errors=0))) "
                     "channel(index=201 otn(state(errored-seconds=2 background-block-errors=5)))"),
         ""},
        {channels("{'otn':{'state':{'q-value':{'interval':null},'fec-corrected-bits':null}}}"),
         in_channels("channel(index=301 otn(state(fec-corrected-bits=48210 q-value(interval=30000000000)))) "
                     "channel(index=310 otn(state(fec-corrected-bits=77)))"),
         in_channels("channel(index=301 otn(state(fec-corrected-bits=51333 q-value(interval=30000000000)))) "
                     "channel(index=310 otn(state(fec-corrected-bits=78)))")},
    };
    for (const read_row &row : rows)
        check(row);
}

TEST(performance, of_an_optical_channel) {
    const std::string name = "0/0-OpticalChannel0/0/0/13", dark = "0/0-OpticalChannel0/0/0/12";
    const std::string power = "'input-power':{}", dispersion = "'chromatic-dispersion':{'interval':null,'avg':null}";
    const read_row rows[] = {
        {line(name, power + ",'chromatic-dispersion':{},'second-order-polarization-mode-dispersion':{},"
                            "'polarization-dependent-loss':{}"),
         in_line(name, statistic("input-power", "-3.50", "avg=-3.50 min=-3.56 max=-3.45", true, 1, 29) + " " +
                           statistic("chromatic-dispersion", "1350", "avg=1350 min=1349 max=1352", true, 2, 17) + " " +
                           statistic("second-order-polarization-mode-dispersion", "48.00",
                                     "avg=48.00 min=47.32 max=49.50", true, 5, 11) +
                           " " +
                           statistic("polarization-dependent-loss", "0.80", "avg=0.80 min=0.75 max=0.84", true, 8, 23)),
         in_line(name,
                 statistic("input-power", "-3.50", "avg=-3.60 min=-3.66 max=-3.55", true, 31, 59) + " " +
                     statistic("chromatic-dispersion", "1350", "avg=1340 min=1339 max=1342", true, 32, 47) + " " +
                     statistic("second-order-polarization-mode-dispersion", "48.00", "avg=47.00 min=46.32 max=48.50",
                               true, 35, 41) +
                     " " +
                     statistic("polarization-dependent-loss", "0.80", "avg=0.79 min=0.74 max=0.83", true, 38, 53))},
        {line(name, dispersion), in_line(name, "chromatic-dispersion(avg=1350 interval=30000000000)"),
         in_line(name, "chromatic-dispersion(avg=1340 interval=30000000000)")},
        // Nothing of it is in the history.
        {line(dark, power),
         in_line(dark, statistic("input-power", "-40.00", "avg=-40.00 min=-40.00 max=-40.00", true, 0, 0)),
         in_line(dark, "input-power(instant=-40.00)")},
    };
    for (const read_row &row : rows)
        check(row);
}

// "avg=9.40" of "... q-value(instant=9.40 avg=9.40 ...) ...", or nothing.
std::string shown_leaf(const std::string &whole, const std::string &container, const std::string &leaf) {
    const size_t from = container.empty() ? 0 : whole.find(container + "(");
    const size_t end = container.empty() ? whole.size() : whole.find(')', from);
    for (const char before : {' ', '('}) {
        const size_t place = whole.find(before + leaf + "=", from);
        if (from != std::string::npos && place < end)
            return whole.substr(place + 1, whole.find_first_of(" )", place + 1) - place - 1);
    }
    return "";
}

// Each leaf has its own way down: alone it tells what it tells among the others, or that it is not there.
TEST(performance, of_one_leaf) {
    const std::vector<std::string> figures = {"instant", "avg", "min", "max", "interval", "min-time", "max-time"};
    const std::string name = "0/0-OpticalChannel0/0/0/13";
    const auto of_line = [&](const std::string &state) { return line(name, state); };
    const auto in_this_line = [&](const std::string &shown) { return in_line(name, shown); };
    const auto of_channel = [](int index, const std::string &container) {
        return [=](const std::string &state) { return channel(index, container + "':{'state':{" + state + "}}"); };
    };
    const auto in_this_channel = [](int index, const std::string &container) {
        return [=](const std::string &shown) { return in_channel(index, container, shown); };
    };
    const struct {
        std::function<std::string(const std::string &)> request, reply;
        std::vector<std::string> containers, leaves;
    } rows[] = {
        {of_channel(301, "otn"),
         in_this_channel(301, "otn"),
         {""},
         {"errored-seconds", "severely-errored-seconds", "unavailable-seconds", "fec-uncorrectable-words",
          "fec-corrected-bits", "background-block-errors"}},
        {of_channel(301, "otn"),
         in_this_channel(301, "otn"),
         {"pre-fec-ber", "post-fec-ber", "q-value", "esnr"},
         figures},
        {of_channel(101, "ethernet"),
         in_this_channel(101, "ethernet"),
         {""},
         {"in-mac-pause-frames", "in-oversize-frames", "in-jabber-frames", "in-fragment-frames", "in-crc-errors",
          "out-mac-pause-frames", "in-pcs-bip-errors", "in-pcs-errored-seconds", "in-pcs-severely-errored-seconds",
          "in-pcs-unavailable-seconds"}},
        {of_line,
         in_this_line,
         {"input-power", "chromatic-dispersion", "second-order-polarization-mode-dispersion",
          "polarization-dependent-loss"},
         figures},
    };
    size_t told = 0;
    for (const bool flex_bins : {true, false}) {
        device_road device(lab_with(flex_bins));
        for (const auto &row : rows) {
            const std::string whole = device.seen(row.request(""), OP_GET);
            for (const std::string &container : row.containers) {
                for (const std::string &leaf : row.leaves) {
                    const std::string member = "'" + leaf + "':null";
                    const std::string request =
                        row.request(container.empty() ? member : "'" + container + "':{" + member + "}");
                    const std::string shown = shown_leaf(whole, container, leaf);
                    const std::string reply = device.seen(request, OP_GET);
                    told += !shown.empty();
                    if (shown.empty())
                        EXPECT_EQ(reply.find(leaf + "="), std::string::npos) << request;
                    else
                        EXPECT_EQ(reply, row.reply(container.empty() ? shown : container + "(" + shown + ")"));
                }
            }
        }
    }
    EXPECT_EQ(told, 2 * (6 + 28 + 10 + 28) - 1u); // a bin has no interval of esnr
}

// A grey port tells the interval of its signal to noise ratio, and in the history all the others beside it.
TEST(performance, of_a_grey_line_port) {
    const std::string name = "0/0-OpticalChannel0/0/0/13";
    const std::string of_channel = channels("{'index':301,'otn':{'state':{'esnr':{'interval':null}}}}");
    const std::string of_port = line(name, "'chromatic-dispersion':{'interval':null,'avg':null}");
    device_road bins(lab_with(true, true)), history(lab_with(false, true));
    EXPECT_EQ(bins.seen(of_channel, OP_GET), in_channel(301, "otn", "esnr(interval=30000000000)"));
    EXPECT_EQ(bins.seen(of_port, OP_GET), in_line(name, "chromatic-dispersion(avg=1350)"));
    EXPECT_EQ(history.seen(of_channel, OP_GET), in_channel(301, "otn", "esnr(interval=30000000000)"));
    EXPECT_EQ(history.seen(of_port, OP_GET), in_line(name, "chromatic-dispersion(avg=1340 interval=30000000000)"));
}

// The length of a bin is told in seconds, and is always 30 in the history.
TEST(performance, interval_of_a_bin) {
    const std::string request =
        channels("{'index':301,'otn':{'state':{'pre-fec-ber':{'interval':null},'q-value':{'interval':null}}}}");
    std::string json = device::to_json(device::lab());
    for (const std::string member : {"\"flex-bin-interval\": \"", "\"valid\": \""})
        for (size_t place = json.find(member); place != std::string::npos; place = json.find(member, place + 1)) {
            const size_t value = place + member.size();
            json.replace(value, json.find('"', value) - value, "10");
        }
    device::description lab = device::parse(json, "lab.json");
    for (const bool flex_bins : {true, false}) {
        lab.flex_bins = flex_bins;
        const std::string interval = flex_bins ? "interval=10000000000" : "interval=30000000000";
        device_road device(lab);
        EXPECT_EQ(device.seen(request, OP_GET),
                  in_channel(301, "otn", "pre-fec-ber(" + interval + ") q-value(" + interval + ")"));
    }
}

// Each of several channels has its own optics port asked for.
TEST(performance, of_several_channels) {
    const std::string below = "'otn':{'state':{'esnr':{'instant':null,'max':null},'q-value':{'min':null}}}";
    const std::string request = channels("{'index':300," + below + "},{'index':301," + below + "}");
    std::string json = device::to_json(device::lab());
    const std::string second = json_of("'dwdm-carrier-frequency': '193.5',");
    json.insert(json.find(second) + second.size(), json_of("'snr': '17.70',"));
    device::description lab = device::parse(json, "lab.json");
    const auto shown = [](const std::string &first, const std::string &of_301) {
        return in_channels("channel(index=300 otn(state(" + first + "))) channel(index=301 otn(state(" + of_301 +
                           ")))");
    };
    EXPECT_EQ(device_road(lab).seen(request, OP_GET),
              shown("esnr(instant=17.70 max=0)", "q-value(min=9.35) esnr(instant=19.40 max=19.60)"));
    lab.flex_bins = false;
    EXPECT_EQ(device_road(lab).seen(request, OP_GET),
              shown("esnr(instant=17.70)", "q-value(min=9.25) esnr(instant=19.40 max=19.50)"));
}

TEST(performance, is_kept_as_the_device_file_says) {
    const std::string request = road::scratch_file("q.json", channel(301, "otn':{'state':{'q-value':{}}}"));
    const std::string history = EXAMPLES "/history.json";
    const road::outcome of_lab = road::run_host({"get", "--calls", request});
    EXPECT_NE(of_lab.out.find("add /performance-management/otu/"), std::string::npos) << of_lab.out;
    EXPECT_EQ(of_lab.out.find("add /performance-management-history/"), std::string::npos) << of_lab.out;
    EXPECT_NE(of_lab.out.find("\"min\": \"9.35\""), std::string::npos) << of_lab.out;
    const road::outcome of_history = road::run_host({"get", "--calls", "--device", history, request});
    EXPECT_NE(of_history.out.find("add /performance-management-history/"), std::string::npos) << of_history.out;
    EXPECT_NE(of_history.out.find("\"min\": \"9.25\""), std::string::npos) << of_history.out;
    EXPECT_EQ(of_history.err, "");
    EXPECT_EQ(device::parse(device::to_json(device::read_file(history)), "again"), device::read_file(history));
}

} // namespace
