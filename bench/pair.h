#pragma once
// Measuring the product beside its anchor: both run in turn in the same process, so that whatever else the
// machine does meets both. Reported are the medians and their ratio, with the goal that was set for it.

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace norva::bench {

struct contest {
    std::string work;              // as the table names it
    std::function<void()> prepare; // before each run of either, not measured
    std::function<void()> anchor;  // on one thread
    std::function<void()> product;
    int threads = 1; // the product's
    int runs = 1;    // transforms, calls, ... in one run of either
    double goal = 0; // of product / anchor
};

// One benchmark: as many rounds as the state wants. Times are those of the processor for one thread, and of
// the clock for more; there the time of all processors together is reported as well, as if they had shared it
// evenly, which is what the clock would show on an idle machine.
void measure(benchmark::State& state, const contest& c);

// Ends a benchmark whose anchor is not there.
void skip(benchmark::State& state, const std::string& work);

} // namespace norva::bench
