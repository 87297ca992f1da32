// Range profiles and motion compensation of a whole block of data.
#include "anchors.h"
#include "mocomp/mocomp.h"
#include "pair.h"
#include "profiles/rngpro.h"
#include "signal/weight.h"

#include <cstring>
#include <string>

namespace norva::bench {
namespace {

// 2048 records; the anchor weights and pads in one loop, and turns, copies and forms the power in another.
void range_profiles(benchmark::State& state) {
    const int nt = 2048, nf = static_cast<int>(state.range(0)), nr = static_cast<int>(state.range(1));
    const std::string title =
        "`rngpro` with power, 2048 records, " + std::to_string(nf) + " to " + std::to_string(nr);
    if (!fftw::available()) return skip(state, title);
    const std::vector<float> raw = noise(2UL * nt * nf);
    floats work(2UL * nr), b(2UL * nt * nr), p(1UL * nt * nr);
    fftw plan(nr, 1, -1, work.data());
    std::vector<float> w(nf);
    ham(w.data(), nf);
    float r1 = 0, dr = 0;
    contest c;
    c.work = title;
    c.anchor = [&] {
        float* x = work.data();
        for (int j = 0; j < nt; j++) {
            const float* record = &raw[2UL * j * nf];
            for (int k = 0; k < nf; k++) {
                x[2 * k] = w[k] * record[2 * k];
                x[2 * k + 1] = w[k] * record[2 * k + 1];
            }
            std::memset(x + 2 * nf, 0, 2 * sizeof(float) * (nr - nf));
            plan.run();
            float *row = b.data() + 2UL * j * nr, *power = p.data() + 1UL * j * nr;
            for (int half = 0; half < 2; half++) {
                const float* from = x + (half == 0 ? nr : 0);
                for (int k = 0; k < nr / 2; k++) {
                    const float re = from[2 * k], im = from[2 * k + 1];
                    *row++ = re;
                    *row++ = im;
                    *power++ = re * re + im * im;
                }
            }
        }
    };
    c.product = [&] { rngpro(raw.data(), nf, nt, nr, -1, &r1, &dr, b.data(), p.data()); };
    c.threads = static_cast<int>(state.range(2));
    c.goal = nf == 512 ? (c.threads == 1 ? 0.7 : 0.4) : (c.threads == 1 ? 0.6 : 0.35);
    measure(state, c);
}
BENCHMARK(range_profiles)->UseManualTime()->Iterations(31)->Args({512, 2048, 1})->Args({512, 2048, 2});
BENCHMARK(range_profiles)->UseManualTime()->Iterations(31)->Args({1000, 4000, 1})->Args({1000, 4000, 2});

// 4096 records of 512 frequencies.
void motion(benchmark::State& state) {
    const int nt = 4096, nf = 512;
    const std::vector<float> raw = noise(2UL * nt * nf);
    floats x(raw.size());
    x.fill(raw);
    std::vector<double> d(nt + 1);
    for (int j = 0; j <= nt; j++) d[j] = 1e-3 * j + 1e-7 * j * j;
    contest c;
    c.work = "`mocomp` 4096 x 512";
    c.anchor = [&] { plain_mocomp(x.data(), nf, nt, 9000, 1.5F, 0.5F, d.data()); };
    c.product = [&] { mocomp(x.data(), nf, nt, 9000, 1.5F, 0.5F, d.data()); };
    c.threads = static_cast<int>(state.range(0));
    c.goal = c.threads == 1 ? 0.035 : 0.02;
    measure(state, c);
}
BENCHMARK(motion)->UseManualTime()->Iterations(9)->Arg(1)->Arg(2);

} // namespace
} // namespace norva::bench
