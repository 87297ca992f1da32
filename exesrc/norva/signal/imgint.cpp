// Values of a complex image between its samples.
#include "image_kernel.h"
#include "signal/interp.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace norva {
namespace {

// Products of integer distances above this leave a tap out: the corners of the square contribute little.
constexpr int far_product = 40;

int wrap(int k, int n) {
    k %= n;
    return k < 0 ? k + n : k;
}

} // namespace

image_kernel make_image_kernel(int n, int nt) {
    const int ntr = std::clamp(nt, 0, IMGINT_MAX_TAPS);
    const bool exact = n % 2 == 1 && n <= 2 * ntr;
    image_kernel k;
    k.n = n;
    k.m = std::min(ntr, n / 2);
    k.table.resize(std::max(8 * n * exact, TABLE_PER_SAMPLE * (k.m + 1)) + 2);
    if (exact)
        samp(k.table.data(), n);
    else
        tsinc(k.table.data(), k.m);
    return k;
}

// C = sum over X = IXP-MX .. IXP+MX-2, Y likewise, of RX(|XP-X|) RY(|YP-Y|) A(X, Y), both wrapped.
void interpolate_image(const float* a, const image_kernel& kx, const image_kernel& ky, float x0, float y0,
                       float* c) {
    const float xp = x0 - 1, yp = y0 - 1;
    if (!(std::fabs(xp) < 1e9F && std::fabs(yp) < 1e9F)) {
        c[0] = c[1] = std::numeric_limits<float>::quiet_NaN();
        return;
    }
    const int x1 = static_cast<int>(xp) - kx.m, y1 = static_cast<int>(yp) - ky.m;
    float cr = 0, ci = 0;
    int iy = wrap(y1, ky.n);
    for (int j = 0; j < 2 * ky.m - 1; j++) {
        const float ay = std::fabs(yp - static_cast<float>(y1 + j)), gy = rint(ky.table.data(), ay);
        const float* row = a + 2 * static_cast<std::size_t>(iy) * kx.n;
        int ix = wrap(x1, kx.n);
        for (int i = 0; i < 2 * kx.m - 1; i++) {
            const float ax = std::fabs(xp - static_cast<float>(x1 + i));
            if (static_cast<int>(ax) * static_cast<int>(ay) <= far_product) {
                const float g = gy * rint(kx.table.data(), ax);
                cr += g * row[2 * ix];
                ci += g * row[2 * ix + 1];
            }
            if (++ix == kx.n) ix = 0;
        }
        if (++iy == ky.n) iy = 0;
    }
    c[0] = cr;
    c[1] = ci;
}

void imgint(const float* a, int nx, int ny, float x0, float y0, int nt, float* c) {
    c[0] = c[1] = 0;
    if (nx < 1 || ny < 1) return;
    // Kept by length alone: the first taps of a length hold until the length changes.
    static thread_local image_kernel kx, ky;
    if (kx.n != nx) kx = make_image_kernel(nx, nt);
    if (ky.n != ny) ky = make_image_kernel(ny, nt);
    interpolate_image(a, kx, ky, x0, y0, c);
}

} // namespace norva
