// The script language beside plain loops: arithmetic on arrays of a million elements, sorting, peak search,
// and the cost of a formula and of a script line.
#include "pair.h"
#include "trelva/eval.h"
#include "trelva/script.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace norva {
namespace {

constexpr std::size_t million = 1000000;

sp_language with_arrays() {
    sp_language context;
    for (const char* line : {"A = RAND(1000000)", "B = RAND(1000000)+0.5", "ORDER = RANK(A)"}) {
        std::istringstream script(line);
        s_process(context, script);
    }
    return context;
}

void formula(benchmark::State& state, const std::string& text) {
    sp_language context = with_arrays();
    for (auto _ : state) {
        sp_value val = sp_eval_formula(context, text);
        benchmark::DoNotOptimize(val.ary.data());
    }
}

// A formula of one operation beside a plain loop that makes a new array, too.
template <class F> void operation(benchmark::State& state, const std::string& text, F f) {
    sp_language context = with_arrays();
    sp_value va = sp_var_getval(context, "A"), vb = sp_var_getval(context, "B");
    const double *a = va.ary.data(), *b = vb.ary.data();
    bench::measure(state, {.prepare = {},
                           .anchor =
                               [&] {
                                   std::vector<double> c(million);
                                   for (std::size_t i = 0; i < million; i++) c[i] = f(a[i], b[i]);
                                   benchmark::DoNotOptimize(c.data());
                                   benchmark::ClobberMemory();
                               },
                           .product =
                               [&] {
                                   sp_value val = sp_eval_formula(context, text);
                                   benchmark::DoNotOptimize(val.ary.data());
                               },
                           .goal = 2});
}

BENCHMARK_CAPTURE(operation, A_plus_B, "A+B", [](double a, double b) { return a + b; })->UseManualTime();
BENCHMARK_CAPTURE(operation, A_minus_B, "A-B", [](double a, double b) { return a - b; })->UseManualTime();
BENCHMARK_CAPTURE(operation, A_times_B, "A*B", [](double a, double b) { return a * b; })->UseManualTime();
BENCHMARK_CAPTURE(operation, A_by_B, "A/B", [](double a, double b) { return a / b; })->UseManualTime();
BENCHMARK_CAPTURE(operation, A_plus_2, "A+2", [](double a, double) { return a + 2.0; })->UseManualTime();
BENCHMARK_CAPTURE(operation, A_by_3, "A/3", [](double a, double) { return a / 3.0; })->UseManualTime();
BENCHMARK_CAPTURE(operation, 2_minus_A, "2-A", [](double a, double) { return 2.0 - a; })->UseManualTime();
BENCHMARK_CAPTURE(operation, 2_by_B, "2/B", [](double, double b) { return 2.0 / b; })->UseManualTime();
BENCHMARK_CAPTURE(operation, SQRT, "SQRT(A)", [](double a, double) { return std::sqrt(a); })->UseManualTime();
BENCHMARK_CAPTURE(operation, SIN, "SIN(A)", [](double a, double) { return std::sin(a); })->UseManualTime();
BENCHMARK_CAPTURE(operation, POW, "POW(A,B)", [](double a, double b) {
    return std::pow(a, b);
})->UseManualTime();
BENCHMARK_CAPTURE(operation, CLIPTOP, "CLIPTOP(A,0.5)", [](double a, double) {
    return a > 0.5 ? 0.5 : a;
})->UseManualTime();
BENCHMARK_CAPTURE(formula, SORT, "SORT(A)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(formula, RANK, "RANK(A)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(formula, SHUFFLE, "SHUFFLE(A,ORDER)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(formula, FIND2DPKS, "FIND2DPKS(A,1000)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(formula, MAX, "MAX(A)")->Unit(benchmark::kMillisecond);

// A formula of a megabyte, deep brackets, a script of ten thousand lines.
void long_formula(benchmark::State& state) {
    sp_language context;
    std::string text = "0";
    while (text.size() < 1000000) text += "+1*1";
    for (auto _ : state) benchmark::DoNotOptimize(sp_eval_formula(context, text).scaler);
}
BENCHMARK(long_formula)->Unit(benchmark::kMillisecond);

void deep_brackets(benchmark::State& state) {
    sp_language context;
    std::string text = std::string(10000, '(') + "1" + std::string(10000, ')');
    for (auto _ : state) benchmark::DoNotOptimize(sp_eval_formula(context, text).scaler);
}
BENCHMARK(deep_brackets)->Unit(benchmark::kMillisecond);

void long_script(benchmark::State& state) {
    std::string text;
    for (int i = 1; i <= 10000; i++)
        text += "graph_" + std::to_string(i) + "_yorigin = 1. + " + std::to_string(i) + "*2.3 ; a comment\n";
    for (auto _ : state) {
        sp_language context;
        std::istringstream script(text);
        s_process(context, script);
    }
}
BENCHMARK(long_script)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace norva
