// Transforms beside FFTW.
#include "anchors.h"
#include "pair.h"
#include "signal/fft.h"
#include "signal/resize.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace norva::bench {
namespace {

// One complex transform in place, again and again; the samples are renewed now and then, so that they stay
// numbers.
void fft(benchmark::State& state) {
    const auto n = static_cast<int>(state.range(0));
    const std::string title = "transform, N = " + std::to_string(n);
    if (!fftw::available()) return skip(state, title);
    const std::vector<float> samples = noise(2 * n);
    floats a(2 * n), b(2 * n);
    fftw plan(n, 1, -1, a.data());
    contest c;
    c.work = title;
    constexpr int between = 16;
    c.runs = std::max(1, 50000 / n / between) * between;
    c.anchor = [&] {
        for (int k = 0; k < c.runs; k++) {
            if (k % between == 0) a.fill(samples);
            plan.run();
        }
    };
    c.product = [&] {
        for (int k = 0; k < c.runs; k++) {
            if (k % between == 0) b.fill(samples);
            gfft(b.data(), n, -1);
        }
    };
    c.goal = n == 64 || n == 128 || n == 256 ? 0.6 : 0.8;
    measure(state, c);
}
BENCHMARK(fft)->UseManualTime()->Iterations(101)->Arg(64)->Arg(128)->Arg(256)->Arg(512)->Arg(1024)->Arg(2048);
BENCHMARK(fft)->UseManualTime()->Iterations(101)->Arg(4096)->Arg(8192)->Arg(100)->Arg(108)->Arg(300)->Arg(
    1000);
BENCHMARK(fft)->UseManualTime()->Iterations(101)->Arg(1080)->Arg(3000)->Arg(3600)->Arg(1001)->Arg(4093);

void grid(benchmark::State& state) {
    const auto nx = static_cast<int>(state.range(0)), ny = static_cast<int>(state.range(1));
    const std::string title = "`fft2d` " + std::to_string(nx) + " x " + std::to_string(ny);
    if (!fftw::available()) return skip(state, title);
    const std::vector<float> samples = noise(2 * static_cast<std::size_t>(nx) * ny);
    floats a(samples.size()), b(samples.size());
    fftw plan(nx, ny, -1, a.data());
    contest c;
    c.work = title;
    c.prepare = [&] {
        a.fill(samples);
        b.fill(samples);
    };
    c.anchor = [&] { plan.run(); };
    c.product = [&] { fft2d(b.data(), nx, ny, -1, -1); };
    c.threads = static_cast<int>(state.range(2));
    c.goal = c.threads == 1 ? 0.9 : 0.55;
    measure(state, c);
}
BENCHMARK(grid)->UseManualTime()->Iterations(201)->Args({256, 512, 1})->Args({256, 512, 2});
BENCHMARK(grid)->UseManualTime()->Iterations(41)->Args({1024, 1024, 1})->Args({1024, 1024, 2});

// Frequency by time data to a half and a quarter: forward, corners, scale, back.
void decimation(benchmark::State& state) {
    const std::string title = "`decimate` 512 x 4096 to 256 x 1024";
    if (!fftw::available()) return skip(state, title);
    const int nf = 512, nt = 4096, mf = 256, mt = 1024;
    const std::vector<float> samples = noise(2UL * nf * nt);
    floats a(samples.size()), b(samples.size());
    fftw forward(nf, nt, +1, a.data()), back(mf, mt, -1, a.data());
    contest c;
    c.work = title;
    c.prepare = [&] {
        a.fill(samples);
        b.fill(samples);
    };
    c.anchor = [&] {
        forward.run();
        for (int j = 0; j < mt; j++) {
            const float* from = a.data() + 2UL * (j < mt / 2 ? j : nt - mt + j) * nf;
            float* to = a.data() + 2UL * j * mf;
            std::memmove(to, from, mf * sizeof(float));
            std::memmove(to + mf, from + 2 * (nf - mf / 2), mf * sizeof(float));
        }
        const float scale = 1.0F / (static_cast<float>(nf) * nt);
        for (std::size_t k = 0; k < 2UL * mf * mt; k++) a.data()[k] *= scale;
        back.run();
    };
    c.product = [&] { decimate(b.data(), nf, nt, mf, mt); };
    c.threads = static_cast<int>(state.range(0));
    c.goal = c.threads == 1 ? 0.6 : 0.4;
    measure(state, c);
}
BENCHMARK(decimation)->UseManualTime()->Iterations(21)->Arg(1)->Arg(2);

} // namespace
} // namespace norva::bench
