// The script language beside plain loops: arithmetic on arrays of a million elements, sorting, peak search,
// and the cost of a formula and of a script line.
#include "trelva/eval.h"
#include "trelva/script.h"

#include <benchmark/benchmark.h>

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

// The same as a loop with a new array for its result.
template <class F> void plain_loop(benchmark::State& state, F f) {
    sp_language context = with_arrays();
    sp_value va = sp_var_getval(context, "A"), vb = sp_var_getval(context, "B");
    const double *a = va.ary.data(), *b = vb.ary.data();
    for (auto _ : state) {
        std::vector<double> c(million);
        for (std::size_t i = 0; i < million; i++) c[i] = f(a[i], b[i]);
        benchmark::DoNotOptimize(c.data());
        benchmark::ClobberMemory();
    }
}

// The same into an array that stands already.
template <class F> void loop_in_place(benchmark::State& state, F f) {
    sp_language context = with_arrays();
    sp_value va = sp_var_getval(context, "A"), vb = sp_var_getval(context, "B");
    const double *a = va.ary.data(), *b = vb.ary.data();
    std::vector<double> c(million);
    for (auto _ : state) {
        for (std::size_t i = 0; i < million; i++) c[i] = f(a[i], b[i]);
        benchmark::DoNotOptimize(c.data());
        benchmark::ClobberMemory();
    }
}

constexpr auto plus = [](double a, double b) { return a + b; };
constexpr auto divide = [](double a, double b) { return a / b; };
constexpr auto mixed = [](double a, double b) { return a * b + a * 2.0 - b; };

BENCHMARK_CAPTURE(formula, A_plus_B, "A+B")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plain_loop, A_plus_B, plus)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(loop_in_place, A_plus_B, plus)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(formula, A_by_B, "A/B")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plain_loop, A_by_B, divide)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(formula, mixed, "A*B+A*2-B")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plain_loop, mixed, mixed)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(formula, SIN, "SIN(A)")->Unit(benchmark::kMillisecond);
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
