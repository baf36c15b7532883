// Time of a walk against the framework calls that it is bound to make: the walk's calls are recorded once and made
// again, with the same arguments, by a plain loop. Log tests, matches, walk record, positions and adds are in both;
// what is left is the walk's own.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "namespaces.h"
#include "zmf/plugin.h"
#include "zmf/session.h"
#include "zmf/tree.h"

namespace {

constexpr uint32_t channels = 1000;
constexpr int repetitions = 5;
constexpr uint32_t level_err = 0, level_trc = 3;

// A recorded call, kept small so that the loop is not one over memory. Calls with more arguments stand in a list of
// their own, `number` is their place there.
struct step {
    enum kind : uint8_t { log_test, match, is_delete, is_add, push, pop, wide } what;
    uint16_t times;  // log tests at one level that follow one another
    uint32_t number; // level of a log test, kind of a push
    const void *a;   // node; first text
    const void *b;   // second text
};

step step_of(const zmf::call &c, std::vector<zmf::call> &wide_calls) {
    switch (c.op) {
    case zmf::operation::match:
        return {step::match, 1, 0, c.path, c.ns};
    case zmf::operation::is_delete:
        return {step::is_delete, 1, 0, c.node, nullptr};
    case zmf::operation::is_add:
        return {step::is_add, 1, 0, c.node, nullptr};
    case zmf::operation::add_to_hierarchy:
        return {step::push, 1, c.number, c.node, nullptr};
    case zmf::operation::remove_from_hierarchy:
        return {step::pop, 1, 0, c.node, nullptr};
    default:
        wide_calls.push_back(c);
        return {step::wide, 1, static_cast<uint32_t>(wide_calls.size() - 1), nullptr, nullptr};
    }
}

using named_leaves = std::vector<std::pair<const char *, const char *>>;

// Channels with their keys and the leaves of `config`; without leaves the keys stand alone.
zmf::fixed_tree channel_request(const named_leaves &config) {
    zmf::tree_builder build;
    const auto open = [&build](const char *tag) { build.open(tag, ZMF_NS_OC_TERMINAL_DEVICE); };
    const auto leaf = [&](const char *tag, const std::string &value) {
        open(tag);
        build.value(value);
        build.close();
    };
    open("terminal-device");
    open("logical-channels");
    for (uint32_t number = 1; number <= channels; ++number) {
        open("channel");
        leaf("index", std::to_string(number));
        if (!config.empty()) {
            open("config");
            leaf("index", std::to_string(number));
            for (const auto &[tag, value] : config) {
                leaf(tag, value);
            }
            build.close();
        }
        build.close();
    }
    build.close();
    build.close();
    return build.finish();
}

bool starts_callback(std::string_view line) {
    const auto holds = [line](const char *part) { return line.find(part) != std::string_view::npos; };
    return line.ends_with(",Start") && (holds("device_cont_") || holds("device_list_") || holds("device_leaf_"));
}

class measured_walk {
public:
    measured_walk(uint32_t kind, const named_leaves &config)
        : session_(kind), request_(channel_request(config)),
          root_(plugin().node_function("ymap_ox_oc_optical_openconfigterminaldevice_lvla_terminaldevice")) {
        record();
    }

    double walk_seconds() {
        return seconds([this](zmf::output_tree &out) {
            benchmark::DoNotOptimize(root_(session_.context(), request_.tops(), out.root()));
        });
    }
    double calls_seconds() {
        return seconds([this](zmf::output_tree &out) {
            for (const step &s : steps_) {
                make(s, out.root());
            }
        });
    }
    uint64_t nodes() const { return nodes_; }

private:
    static const zmf::plugin &plugin() {
        static const zmf::plugin loaded(OCOPTICAL_PLUGIN);
        return loaded;
    }

    void record() {
        session_.record([this](const zmf::call &c) { steps_.push_back(step_of(c, wide_calls_)); });
        session_.ring([this](std::string_view line) {
            record_log_test(line.find(": ERR: ") != std::string_view::npos ? level_err : level_trc);
            nodes_ += starts_callback(line);
        });
        zmf::output_tree out;
        if (root_(session_.context(), request_.tops(), out.root()) != RC_OK) {
            fprintf(stderr, "the request is refused\n");
            std::exit(1);
        }
        session_.record(nullptr);
        session_.ring(nullptr);
    }

    void record_log_test(uint32_t level) {
        if (!steps_.empty() && steps_.back().what == step::log_test && steps_.back().number == level) {
            ++steps_.back().times;
        } else {
            steps_.push_back({step::log_test, 1, level, nullptr, nullptr});
        }
    }

    template <typename Work>
    double seconds(Work work) {
        zmf::output_tree out;
        session_.reset();
        const auto begin = std::chrono::steady_clock::now();
        work(out);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    }

    void make(const step &s, zmf_datatree *out) {
        zmf_map_ctx ctx = session_.context();
        const auto *node = static_cast<const zmf_datatree *>(s.a);
        switch (s.what) {
        case step::log_test:
            for (uint32_t n = s.times; n != 0; --n) {
                benchmark::DoNotOptimize(zmf_debug_should_log(&ctx->log_state, static_cast<int>(s.number)));
            }
            break;
        case step::match:
            benchmark::DoNotOptimize(
                zmf_map_do_these_match(static_cast<const char *>(s.a), static_cast<const char *>(s.b)));
            break;
        case step::is_delete:
            benchmark::DoNotOptimize(zmf_map_is_request_delete(node));
            break;
        case step::is_add:
            benchmark::DoNotOptimize(zmf_map_is_request_add(ctx, node));
            break;
        case step::push:
            zmf_map_add_to_node_hierarchy(ctx, node, s.number);
            break;
        case step::pop:
            zmf_map_remove_from_node_hierarchy(ctx, node);
            break;
        case step::wide:
            make(wide_calls_[s.number], out);
            break;
        }
    }

    void make(const zmf::call &c, zmf_datatree *out) {
        zmf_map_ctx ctx = session_.context();
        zmf_itree_frame *frame = nullptr;
        const char *text = nullptr;
        switch (c.op) {
        case zmf::operation::add_path:
            zmf_map_datatree_add_path_flagged(ctx, out, c.path, c.ns, c.value, c.source, nullptr, c.list_flag,
                                              c.cross_module_flag);
            break;
        case zmf::operation::update_current_list:
            zmf_map_update_current_list_node(ctx, c.path);
            break;
        case zmf::operation::get_node_info:
            zmf_map_get_node_info(ctx, c.path, c.key, &text);
            break;
        case zmf::operation::stack_push:
            zmf_map_util_itree_stack_push(ctx, nullptr, c.number, nullptr);
            break;
        case zmf::operation::stack_pop:
            zmf_map_util_itree_stack_pop(ctx);
            break;
        case zmf::operation::stack_peak:
            zmf_map_util_itree_stack_peak(ctx, &frame);
            break;
        case zmf::operation::stack_size:
            benchmark::DoNotOptimize(zmf_map_util_itree_stack_size(ctx));
            break;
        case zmf::operation::check_leafref:
            zmf_map_check_oc_leafref(ctx, c.path, "config", c.key, c.node);
            break;
        case zmf::operation::error_path:
            zmf_oc_error_path(ctx);
            break;
        default:
            fprintf(stderr, "no road for a call of %s\n", zmf::operation_name(c.op));
            std::exit(1);
        }
    }

    zmf::session session_;
    zmf::fixed_tree request_;
    zmf_node_fn root_;
    std::vector<step> steps_;
    std::vector<zmf::call> wide_calls_;
    uint64_t nodes_ = 0;
};

struct request_row {
    const char *name;
    uint32_t kind;
    named_leaves config;
    std::vector<double> ratios = {}; // one a repetition
};

std::array requests = {
    request_row{"edit", OP_EDIT, {{"description", "west"}, {"admin-state", "ENABLED"}, {"loopback-mode", "NONE"}}},
    request_row{"read", OP_GET_CONFIG, {}}, // falls through everything below the key
};

void walk_and_calls(benchmark::State &state, request_row &row) {
    measured_walk measured(row.kind, row.config);
    double walking = 0, calling = 0;
    for (auto iteration : state) {
        (void)iteration;
        const double seconds = measured.walk_seconds();
        state.SetIterationTime(seconds);
        walking += seconds;
        calling += measured.calls_seconds();
    }
    const double nodes = static_cast<double>(measured.nodes());
    state.counters["nodes"] = nodes;
    state.counters["ns_per_node"] = walking / static_cast<double>(state.iterations()) / nodes * 1e9;
    state.counters["ratio"] = walking / calling;
    row.ratios.push_back(walking / calling);
}

void settings(benchmark::internal::Benchmark *benchmark) {
    benchmark->UseManualTime()->Unit(benchmark::kMicrosecond)->Repetitions(repetitions);
}
BENCHMARK_CAPTURE(walk_and_calls, edit, requests[0])->Apply(settings);
BENCHMARK_CAPTURE(walk_and_calls, read, requests[1])->Apply(settings);

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    for (const request_row &row : requests) {
        if (!row.ratios.empty()) {
            const size_t last = std::min<size_t>(repetitions, row.ratios.size());
            const std::vector<double> counted(row.ratios.end() - static_cast<ptrdiff_t>(last), row.ratios.end());
            printf("walk / framework calls: %.2f (median of %zu, %s)\n", median(counted), counted.size(), row.name);
        }
    }
}
