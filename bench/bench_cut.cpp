// Single actions of the cut processor on 8192 points beside one transform of that length and a pass over the
// arrays that a result carries.
#include "anchors.h"
#include "cut/procut.h"
#include "pair.h"
#include "signal/fft.h"
#include "state/image_cut.h"

#include <bit>
#include <string>

namespace norva::bench {
namespace {

constexpr int N = PC_MAX_SAMPLES;

using words = std::vector<std::int32_t>;

void put(words& w, int v) {
    w.push_back(v);
}
void put(words& w, double v) {
    w.push_back(std::bit_cast<std::int32_t>(static_cast<float>(v)));
}
template <class... Values> words record(Values... values) {
    words w;
    (put(w, values), ...);
    return w;
}

words cut_of_noise() {
    words w = record(PC_INIT, 1, 2, N, -N / 4.0, 0.5);
    for (float v : noise(2UL * N)) put(w, static_cast<double>(v));
    return w;
}

words series_of_noise() {
    const int n = N / 4;
    words w = record(PC_INIT_1D, 2, 1, n, 0.0, 0.01);
    for (float v : noise(2UL * n)) put(w, static_cast<double>(v));
    return w;
}

words spline(int domain) {
    words w =
        domain == 1 ? record(PC_SPLINE, 1, 0, N, -1.0, 2.0 / N) : record(PC_SPLINE, 0, 0, N, -N / 4.0, 0.5);
    for (float v : noise(N)) put(w, static_cast<double>(v));
    return w;
}

struct task {
    words record, before; // before: a step that must have been made
};

const std::vector<task>& tasks() {
    static const std::vector<task> all = {
        {cut_of_noise(), {}},
        {series_of_noise(), {}},
        {record(PC_WEIGHT, 3, 0), {}},
        {record(PC_EDIT, 0, 2, -1000.0, 1000.0), {}},
        {record(PC_EDIT, 1, 2, -0.999, 0.999), {}},
        {record(PC_SUB_SLOPE, 1, -0.4, 0.4, 0.0, 9.7), {}},
        {record(PC_SUB_SLOPE, 0, -100.0, 100.0, 0.0, 9.7), {}},
        {record(PC_SUB_SPLINE), spline(1)},
        {record(PC_SUB_SPLINE), spline(0)},
        {record(PC_PHASE_JUMP, -0.1, 0.1, 0.3), {}},
        {record(PC_ZERO_PHASE, -0.4, 0.4), {}},
        {record(PC_UNIT_AMPLITUDE, -0.999, 0.999), {}},
        {record(PC_DIFFERENTIATE, 1, 2, 3), {}},
        {record(PC_RESTORE), {}},
        {record(PC_DEWEIGHT, 1), {}},
        {record(PC_PEAKS, 2, -100.0, 100.0), {}},
        {record(PC_SLOPE, 1, -0.5, 0.5), {}},
        {spline(1), {}},
        {record(PC_TSA, -0.2, 0.2, -0.3, 0.3, 0.2), record(PC_DEWEIGHT, 1)},
        {record(PC_SHIFT, 1.0, 9000.0, 500.0, 0), {}},
    };
    return all;
}

void cut_action(benchmark::State& state) {
    const task& t = tasks()[static_cast<std::size_t>(state.range(0))];
    const words initial = cut_of_noise();
    words out(PC_RESULT_WORDS);
    kss = 1;
    img = {};
    img.nt = 512;
    img.ksx = img.ksy = 1;
    floats x(2UL * N), arrays(10UL * N);
    const std::vector<float> samples = noise(2UL * N), shown = noise(10UL * N);
    contest c;
    c.work = "`procut` on 8192 points, " + std::string(pc_action_name(t.record[0]));
    c.prepare = [&] {
        x.fill(samples);
        cutj.jf = 0;
        procut(initial, out);
        if (!t.before.empty()) procut(t.before, out);
        benchmark::DoNotOptimize(out.data());
    };
    c.anchor = [&] {
        fft2(x.data(), x.data() + 1, N, 2);
        for (std::size_t k = 0; k < arrays.size(); k++) arrays.data()[k] = 0.5F * shown[k];
        benchmark::DoNotOptimize(arrays.data());
    };
    c.product = [&] {
        procut(t.record, out);
        benchmark::DoNotOptimize(out.data());
    };
    c.goal = 4;
    measure(state, c);
}
BENCHMARK(cut_action)->UseManualTime()->Iterations(101)->DenseRange(0, 19);

} // namespace
} // namespace norva::bench
