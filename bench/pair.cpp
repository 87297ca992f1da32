#include "pair.h"

#include "signal/parallel.h"

#include <algorithm>
#include <ctime>
#include <vector>

namespace norva::bench {
namespace {

double seconds(clockid_t clock) {
    timespec t{};
    clock_gettime(clock, &t);
    return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
}

double median(std::vector<double> v) {
    std::nth_element(v.begin(), v.begin() + static_cast<std::ptrdiff_t>(v.size() / 2), v.end());
    return v[v.size() / 2];
}

} // namespace

void measure(benchmark::State& state, const contest& c) {
    const clockid_t clock = c.threads > 1 ? CLOCK_MONOTONIC : CLOCK_THREAD_CPUTIME_ID;
    const int before = parallel_limit(c.threads);
    struct times {
        double clock, processors;
    };
    auto timed = [&](const std::function<void()>& run) {
        if (c.prepare) c.prepare();
        const double all = seconds(CLOCK_PROCESS_CPUTIME_ID), begin = seconds(clock);
        run();
        return times{seconds(clock) - begin, seconds(CLOCK_PROCESS_CPUTIME_ID) - all};
    };
    timed(c.anchor); // tables, pages, threads
    timed(c.product);
    std::vector<double> anchor, product, ratio, shared;
    for ([[maybe_unused]] auto round : state) {
        const times a = timed(c.anchor), p = timed(c.product);
        anchor.push_back(a.clock);
        product.push_back(p.clock);
        ratio.push_back(p.clock / a.clock);
        shared.push_back(p.processors / c.threads / a.processors);
        state.SetIterationTime(p.clock);
    }
    parallel_limit(before);
    const double us = 1e6 / c.runs;
    state.SetLabel(c.work);
    state.counters["threads"] = c.threads;
    state.counters["anchor_us"] = median(anchor) * us;
    state.counters["product_us"] = median(product) * us;
    state.counters["ratio"] = median(ratio);
    state.counters["shared"] = median(shared);
    state.counters["goal"] = c.goal;
}

void skip(benchmark::State& state, const std::string& work) {
    state.SetLabel(work);
    state.SkipWithError("the anchor is not there");
}

} // namespace norva::bench
