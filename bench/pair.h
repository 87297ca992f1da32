#pragma once
// Measuring the product beside its anchor: both run in turn in the same process, so that whatever else the
// machine does meets both. Reported are the medians and their ratio, with the goal that was set for it.

#include <benchmark/benchmark.h>

#include <functional>

namespace norva::bench {

struct contest {
    std::function<void()> prepare; // before each run of either, not measured
    std::function<void()> anchor;  // on one thread
    std::function<void()> product;
    int threads = 1; // the product's
    int runs = 1;    // transforms, calls, ... in one run of either
    double goal = 0; // of product / anchor
};

// One benchmark: as many rounds as the state wants. Times are those of the processor for one thread, and of
// the clock for more.
void measure(benchmark::State& state, const contest& c);

} // namespace norva::bench
