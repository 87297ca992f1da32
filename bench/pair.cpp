#include "pair.h"

#include "signal/parallel.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <vector>

namespace norva::bench {
namespace {

double now(bool by_clock) {
    if (by_clock)
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
}

double median(std::vector<double> v) {
    std::nth_element(v.begin(), v.begin() + static_cast<std::ptrdiff_t>(v.size() / 2), v.end());
    return v[v.size() / 2];
}

} // namespace

void measure(benchmark::State& state, const contest& c) {
    const bool by_clock = c.threads > 1;
    const int before = parallel_limit(c.threads);
    std::vector<double> anchor, product, ratio;
    auto timed = [&](const std::function<void()>& run) {
        if (c.prepare) c.prepare();
        const double begin = now(by_clock);
        run();
        return now(by_clock) - begin;
    };
    timed(c.anchor); // tables, pages, threads
    timed(c.product);
    for ([[maybe_unused]] auto round : state) {
        anchor.push_back(timed(c.anchor));
        product.push_back(timed(c.product));
        ratio.push_back(product.back() / anchor.back());
        state.SetIterationTime(product.back());
    }
    parallel_limit(before);
    const double us = 1e6 / c.runs;
    state.counters["anchor_us"] = median(anchor) * us;
    state.counters["product_us"] = median(product) * us;
    state.counters["ratio"] = median(ratio);
    state.counters["goal"] = c.goal;
}

} // namespace norva::bench
