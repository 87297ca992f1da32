// Peaks of an image, and a whole moving window image.
#include "anchors.h"
#include "mocomp/trnpos.h"
#include "pair.h"
#include "profiles/mwimag.h"
#include "signal/numbers.h"
#include "signal/peak.h"
#include "signal/resize.h"
#include "signal/vector.h"
#include "signal/weight.h"

#include <algorithm>
#include <array>
#include <string>

namespace norva::bench {
namespace {

// 20 peaks of a 512 by 512 image, 7 steps each.
void peak_positions(benchmark::State& state) {
    const int n = 512;
    const std::vector<float> image = noise(2UL * n * n);
    std::vector<int> places;
    for (int k = 1; k <= 20; k++) places.push_back(k * 13007 % (n * n) + 1);
    float x = 0, y = 0, a = 0;
    contest c;
    c.work = "`pk2dpos`, 20 peaks, 7 steps, 512 x 512";
    c.anchor = [&] {
        for (int k : places) plain_pk2dpos(image.data(), n, n, k, 7, &x, &y, &a);
        benchmark::DoNotOptimize(a);
    };
    c.product = [&] {
        for (int k : places) pk2dpos(image.data(), n, n, k, 7, &x, &y, &a);
        benchmark::DoNotOptimize(a);
    };
    c.goal = 0.08;
    measure(state, c);
}
BENCHMARK(peak_positions)->UseManualTime()->Iterations(101);

// Every step as told, one after another, the transform by FFTW.
void told_mwimag(const float* q, int nf, int nt, int nti, int lag, int npk, float* a, float* b, fftw& plan,
                 float* ap, float* xp, float* yp) {
    const int nx = niceno(2 * nti), ny = niceno(2 * nf), nto = (nt - nti) / lag + 1;
    const float dx = static_cast<float>(nti) / nx, dy = static_cast<float>(nf) / ny;
    const float x1 = -static_cast<float>(nx / 2) * dx, y1 = -static_cast<float>(ny / 2) * dy;
    std::array<int, MWIMAG_MAX_NPK + 1> lp{};
    for (int i = 0; i < nto; i++) {
        trnpoc(q + 2UL * i * lag * nf, nf, nti, a);
        arrext(a, 2 * nti, nf, 2 * (nf / 2) * nti + 2 * (nti / 2) + 1, 2 * nti, nf, b);
        for (int j = 0; j < nf; j++) {
            const float y = static_cast<float>(j) / nf - (2 * j > nf ? 1.0F : 0.0F);
            for (int k = 0; k < nti; k++) {
                const float x = static_cast<float>(k) / nti - (2 * k > nti ? 1.0F : 0.0F);
                const float w = cirwght(4 * (x * x + y * y));
                b[2 * (j * nti + k)] *= w;
                b[2 * (j * nti + k) + 1] *= w;
            }
        }
        zfil2d(b, nti, nf, nx, ny);
        plan.run(); // on b
        arrext(b, 2 * nx, ny, 2 * (ny / 2) * nx + 2 * (nx / 2) + 1, 2 * nx, ny, a);
        xmit(2 * nx * ny, a, b);
        powrg(nx * ny, a, a + 2, a + 1, a + 3, a, a + 1);
        asqrt(nx * ny, a, a);
        benchmark::DoNotOptimize(zmax(nx * ny, a));
        int np = 0;
        plain_peaks(a, nx, ny, npk, 0, lp.data(), &np);
        for (int k = 0; k < np; k++, ap++, xp++, yp++) {
            plain_pk2dpos(b, nx, ny, lp[k], MWIMAG_STEPS, xp, yp, ap);
            *xp = (*xp - 1) * dx + x1;
            *yp = (*yp - 1) * dy + y1;
        }
    }
}

// 512 records of 128 frequencies, windows of 32 records, 4 apart, 10 peaks each.
void moving_window(benchmark::State& state) {
    const std::string title = "`mwimag` 512 records, 128 frequencies";
    if (!fftw::available()) return skip(state, title);
    const int nt = 512, nf = 128, nti = 32, lag = 4, npk = 10;
    const int nx = niceno(2 * nti), ny = niceno(2 * nf), most = npk * ((nt - nti) / lag + 1);
    const std::vector<float> raw = noise(2UL * nt * nf);
    std::vector<float> ap(most), xp(most), yp(most);
    floats a(2UL * nx * ny), b(2UL * nx * ny);
    fftw plan(nx, ny, -1, b.data());
    int nto = 0;
    contest c;
    c.work = title;
    c.anchor = [&] {
        told_mwimag(raw.data(), nf, nt, nti, lag, npk, a.data(), b.data(), plan, ap.data(), xp.data(),
                    yp.data());
    };
    c.product = [&] {
        mwimag(raw.data(), nf, nt, nti, lag, -1, -1, 2, 2, npk, &nto, ap.data(), xp.data(), yp.data());
    };
    c.threads = static_cast<int>(state.range(0));
    c.goal = c.threads == 1 ? 0.5 : 0.3;
    measure(state, c);
}
BENCHMARK(moving_window)->UseManualTime()->Iterations(9)->Arg(1)->Arg(2);

} // namespace
} // namespace norva::bench
