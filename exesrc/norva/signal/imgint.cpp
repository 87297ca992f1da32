// Values of a complex image between its samples.
#include "image_kernel.h"
#include "signal/interp.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace norva {
namespace {

int wrap(int k, int n) {
    k %= n;
    return k < 0 ? k + n : k;
}

} // namespace

image_kernel make_image_kernel(int n, int nt, int per_sample) {
    const int ntr = std::clamp(nt, 0, IMGINT_MAX_TAPS);
    const bool exact = n % 2 == 1 && n <= 2 * ntr;
    image_kernel k;
    k.n = n;
    k.m = std::min(ntr, n / 2);
    k.per_sample = per_sample;
    k.table.resize(std::max(per_sample / 2 * n * exact, per_sample * (k.m + 1)) + 2);
    if (exact)
        periodic_kernel(k.table.data(), n, per_sample);
    else
        tapered_sinc(k.table.data(), k.m, per_sample);
    return k;
}

// Taps XP-M..XP+M-2 about the integer part of the position: the window that the kernel is defined with. All
// taps on one side lie the same part of a sample beyond their whole distance, so that they read the table at
// the same phase.
void place_taps(const image_kernel& kernel, float position, image_taps& taps) {
    const float xp = position - 1;
    const auto ixp = static_cast<int>(xp);
    const float part = xp - static_cast<float>(ixp); // below 0 for a position before the first sample
    taps.first = ixp - kernel.m;
    taps.count = std::max(0, 2 * kernel.m - 1);
    taps.centre = part < 0 ? kernel.m - 1 : kernel.m;
    taps.gap = part == 0 ? 0 : 1;
    auto weigh = [&](int from, int to, float beyond) { // taps from..to-1
        const float h = beyond * static_cast<float>(kernel.per_sample);
        const auto phase = static_cast<int>(h);
        const float rest = h - static_cast<float>(phase);
        for (int k = from; k < to; k++) {
            const float* entry = &kernel.table[phase + kernel.per_sample * taps.distance(k)];
            taps.w[2 * k] = taps.w[2 * k + 1] = (1 - rest) * entry[0] + rest * entry[1];
        }
    };
    const int right = std::min(taps.centre + 1, taps.count);
    weigh(0, right, part < 0 ? 1 + part : part);
    weigh(right, taps.count, part > 0 ? 1 - part : -part);
}

void sum_taps(const float* a, int nx, int ny, const image_taps& x, const image_taps& y, float* c) {
    two_samples total = {0, 0, 0, 0};
    const int ix0 = wrap(x.first, nx);
    int iy = wrap(y.first, ny);
    for (int j = 0; j < y.count; j++) {
        const float* row = a + 2 * static_cast<std::size_t>(iy) * nx;
        // Fewer taps than samples: the row ends once at most.
        const int low = x.begin(y.distance(j)), high = x.end(y.distance(j));
        const int end = std::clamp(nx - ix0, low, high);
        two_samples sum = sum_run(row + 2 * (ix0 + low), &x.w[2 * low], end - low);
        if (end < high) sum += sum_run(row + 2 * (ix0 + end - nx), &x.w[2 * end], high - end);
        total += sum * y.w[2 * j];
        if (++iy == ny) iy = 0;
    }
    c[0] = total[0] + total[2];
    c[1] = total[1] + total[3];
}

void imgint(const float* a, int nx, int ny, float x0, float y0, int nt, float* c) {
    c[0] = c[1] = 0;
    if (nx < 1 || ny < 1) return;
    if (!(std::fabs(x0) < 1e9F && std::fabs(y0) < 1e9F)) {
        c[0] = c[1] = std::numeric_limits<float>::quiet_NaN();
        return;
    }
    // Kept by length alone: the first taps of a length hold until the length changes.
    static thread_local image_kernel kx, ky;
    if (kx.n != nx) kx = make_image_kernel(nx, nt, TABLE_PER_SAMPLE);
    if (ky.n != ny) ky = make_image_kernel(ny, nt, TABLE_PER_SAMPLE);
    static thread_local image_taps tx, ty;
    place_taps(kx, x0, tx);
    place_taps(ky, y0, ty);
    sum_taps(a, nx, ny, tx, ty, c);
}

} // namespace norva
