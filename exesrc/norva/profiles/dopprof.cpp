// Doppler profiles.
#include "profiles/dopprof.h"

#include "signal/fft.h"
#include "signal/parallel.h"
#include "signal/progress.h"
#include "signal/vector.h"
#include "signal/weight.h"
#include "zuvsys/stop.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace norva {
namespace {

// Centres are kept as twice their record, which is a whole number: even for an odd window, odd for an even
// one.
struct window_place {
    int nw = 0;    // samples
    int first = 0; // first of them, from 0
};

window_place place_window(long long twice_t, int nt, int ni) {
    const long long nw = std::min({twice_t - 1, 2LL * nt - twice_t + 1, static_cast<long long>(ni)});
    return {static_cast<int>(nw), static_cast<int>((twice_t - nw - 1) / 2)};
}

} // namespace

int dopprof_count(int nt, int ni, int lg) {
    return static_cast<int>(std::max(0LL, (static_cast<long long>(nt) + lg - ni % 2 - 2) / lg));
}

void dopprof(const float* a, int nt, int ni, int nf, int lg, int is, int* nc, float* b, float* w, float* t1) {
    if (nf > DOPPROF_MAX_NF) stop("STOP #2 IN DOPPROF");
    if (ni > DOPPROF_MAX_NI) stop("STOP #3 IN DOPPROF");
    if (ni > nf) stop("STOP #4 IN DOPPROF");
    const int rows = *nc = dopprof_count(nt, ni, lg);
    const long long left_over =
        static_cast<long long>(nt) + lg - ni % 2 - 2 - static_cast<long long>(rows) * lg;
    const long long twice_t1 = 2 * (left_over / 2) + (ni % 2 == 0 ? 3 : 4);
    *t1 = static_cast<float>(0.5 * static_cast<double>(twice_t1));

    const int chunk = std::max(1, rows / 50);
    signal_hooks.progress(1, rows);
    parallel_chunks(
        rows, chunk,
        [&](int begin, int end) {
            std::vector<float> h(ni), work(2 * static_cast<std::size_t>(nf)), power(nf);
            int nwl = 0; // weights in hand
            for (int i = begin; i < end; i++) {
                const window_place at = place_window(twice_t1 + 2LL * i * lg, nt, ni);
                w[i] = static_cast<float>(at.nw) / static_cast<float>(ni);
                if (at.nw != nwl) ham(h.data(), nwl = at.nw);
                const float* x = a + 2 * static_cast<std::size_t>(at.first);
                for (int m = 0; m < at.nw; m++) {
                    work[2 * m] = h[m] * x[2 * m];
                    work[2 * m + 1] = h[m] * x[2 * m + 1];
                }
                std::fill(work.begin() + 2 * at.nw, work.end(), 0.0F);
                gfft(work.data(), nf, is);
                powrc(nf, work.data(), power.data());
                std::rotate_copy(power.begin(), power.end() - nf / 2, power.end(),
                                 b + static_cast<std::size_t>(i) * nf);
            }
        },
        [&](int done) { signal_hooks.progress(done, rows); });
}

} // namespace norva
