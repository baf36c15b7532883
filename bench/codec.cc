// Throughput of the record codec on the four records that the plug-in decodes, in encoded bytes, with every field there
// and lists of up to four entries; decoding is that of a reader: the record is released again. And the time of a
// reader's whole way, from its binding to the answer whether a line port is grey.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>

#include "hardware/hardware.h"
#include "made_record.h"
#include "pouch/encode.h"
#include "pouch/fields.h"
#include "pouch/registry.h"
#include "zmf/plugin.h"
#include "zmf/session.h"

namespace {

void *symbol(const std::string &name) {
    static const zmf::plugin loaded(OCOPTICAL_PLUGIN);
    void *found = loaded.symbol(name.c_str());
    return found != nullptr ? found : throw zmf::plugin_error{"the plug-in lacks " + name};
}

const pouch_descriptor &descriptor_of(const std::string &record) {
    return *reinterpret_cast<const pouch_descriptor *(*)()>(symbol(record + "_pouch_getfn"))();
}

pouch::value full_value(const pouch::record_type &type) {
    made::random source(1);
    return made::random_value(type.top(), source, {100, 4});
}

void encode(benchmark::State &state, const char *record) {
    const pouch::record_type &type = *pouch::find_type(&descriptor_of(record));
    const pouch::held_record held(type, full_value(type));
    std::string encoded;
    for (auto _ : state)
        if (pouch::encode(held.data(), type, encoded) != RC_OK)
            return state.SkipWithError("not encoded");
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * encoded.size()));
    state.counters["bytes"] = static_cast<double>(encoded.size());
}

void decode(benchmark::State &state, const char *record) {
    const pouch_descriptor &descriptor = descriptor_of(record);
    const pouch::record_type &type = *pouch::find_type(&descriptor);
    const std::string encoded = pouch::encode_fields(type, full_value(type));
    const auto into = std::make_unique<uint64_t[]>(descriptor.top_size / sizeof(uint64_t) + 1);
    for (auto _ : state) {
        if (pouch_decode(encoded.data(), encoded.size(), into.get(), &descriptor) != RC_OK)
            return state.SkipWithError("not decoded");
        pouch_free_indirections(into.get(), &descriptor);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * encoded.size()));
    state.counters["bytes"] = static_cast<double>(encoded.size());
}

void grey_test(benchmark::State &state) {
    const pouch::record_type &type = *pouch::find_type(&descriptor_of("optics_edm_info"));
    hardware::current().state_store_installed = true;
    hardware::current().state_items["/oper/optics/if/Optics0_0_0_1/optics_info"] =
        pouch::encode_fields(type, full_value(type));
    const auto is_grey = reinterpret_cast<rcode (*)(zmf_map_ctx, const char *)>(symbol("oc_optical_is_lineport_grey"));
    zmf::session session(OP_EDIT);
    for (auto _ : state)
        if (is_grey(session.context(), "Optics0/0/0/1") > 1)
            return state.SkipWithError("no answer");
}
BENCHMARK(grey_test);

#define BENCH_RECORD(record)                                                                                           \
    BENCHMARK_CAPTURE(encode, record, #record);                                                                        \
    BENCHMARK_CAPTURE(decode, record, #record)

BENCH_RECORD(optics_edm_info);
BENCH_RECORD(otu_per_port_info);
BENCH_RECORD(odu_per_port_info);
BENCH_RECORD(ethernet_controller_driver_pouch_v2_type);

} // namespace

int main(int count, char **words) {
    benchmark::Initialize(&count, words);
    if (benchmark::ReportUnrecognizedArguments(count, words))
        return 64;
    try {
        benchmark::RunSpecifiedBenchmarks();
    } catch (const zmf::plugin_error &error) {
        std::fprintf(stderr, "%s\n", error.text.c_str());
        return 1;
    }
    benchmark::Shutdown();
    return 0;
}
