// One-dimensional amplitude weights.
#include "signal/weight.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace norva {

using std::numbers::pi;

void ham(float* w, int n) {
    double dx = 1.0 / n;
    for (int i = 0; i < n; i++) {
        double x = -0.5 * (1 - dx) + i * dx;
        w[i] = static_cast<float>(0.54 + 0.46 * std::cos(2 * pi * x));
    }
}

void hamwt(float* w, int n, int) {
    if (n == 1) w[0] = 1.0F;
    if (n < 2) return;
    for (int i = 1; i <= n; i++) {
        w[i - 1] = static_cast<float>(0.54 + 0.46 * std::cos(2 * pi * (i - (n + 1) * 0.5) / n));
    }
}

// The constant is part of the definition.
float taylor(int n, int ncap) {
    constexpr double two_pi = 6.28318;
    constexpr double f[] = {0.585312, -0.031568, -0.004362};
    double sum = 1;
    for (int m = 1; m <= 3; m++) sum += f[m - 1] * std::cos(two_pi * m * (n - (ncap + 1) * 0.5) / ncap);
    return static_cast<float>(sum);
}

float asarwt(int index, int ntotal) {
    constexpr int nweights = 100;
    // The first half of a symmetric table.
    static constexpr float rising[nweights / 2] = {
        0.116872F,  0.1303526F, 0.1446261F, 0.1597536F, 0.175674F,  0.1923875F, 0.2103208F, 0.2281932F,
        0.2472246F, 0.2669879F, 0.2874832F, 0.3085885F, 0.3303038F, 0.352629F,  0.3754422F, 0.3987435F,
        0.4224716F, 0.4465658F, 0.470965F,  0.4956082F, 0.5204343F, 0.5453215F, 0.5702696F, 0.5952178F,
        0.6200439F, 0.6446871F, 0.6690863F, 0.6931195F, 0.7167256F, 0.7399048F, 0.7624741F, 0.7844333F,
        0.8056606F, 0.8261559F, 0.8457363F, 0.8644626F, 0.882152F,  0.8988655F, 0.9144199F, 0.9288154F,
        0.941991F,  0.9539465F, 0.9645602F, 0.9738929F, 0.9817616F, 0.9882884F, 0.9934122F, 0.9970721F,
        0.999268F,  1.0F};
    auto weights = [](int i) { return rising[i <= nweights / 2 ? i - 1 : nweights - i]; };

    float factor = ntotal > 1 ? static_cast<float>(index - 1) / static_cast<float>(ntotal - 1) : 0.0F;
    float place = (nweights - 1) * std::clamp(factor, 0.0F, 1.0F) + 1;
    auto ipl = static_cast<int>(place);
    if (ipl >= nweights) return weights(nweights);
    float xfac = place - static_cast<float>(ipl);
    return weights(ipl) + (weights(ipl + 1) - weights(ipl)) * xfac;
}

// Cosines of equal steps by their recurrence, c(k+8) = 2 cos(8 step) c(k) - c(k-8), eight apart so that they
// do not wait for each other: exact enough by far.
static void fill_from_cosines(float* w, int n, double start, double step, double a0, double a1, double a2) {
    constexpr int LANES = 8;
    std::array<double, LANES> before, c;
    for (int j = 0; j < LANES; j++) {
        before[j] = std::cos(start + (j - LANES) * step);
        c[j] = std::cos(start + j * step);
    }
    const double twice = 2 * std::cos(LANES * step);
    for (int k = 0; k < n; k += LANES) {
        std::array<float, LANES> eight;
        for (int j = 0; j < LANES; j++) {
            // The double angle: cos 2x = 2 cos^2 x - 1.
            eight[j] = static_cast<float>(a0 + a1 * c[j] + a2 * (2 * c[j] * c[j] - 1));
            const double next = twice * c[j] - before[j];
            before[j] = c[j];
            c[j] = next;
        }
        std::copy_n(eight.begin(), std::min(LANES, n - k), w + k);
    }
}

static double sum_of(const float* w, int n) {
    std::array<double, 4> sums{}; // four, so that they do not wait for each other
    int k = 0;
    for (; k + 4 <= n; k += 4) {
        for (int j = 0; j < 4; j++) sums[j] += w[k + j];
    }
    for (; k < n; k++) sums[0] += w[k];
    return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

void weight(float* w, float* dw, int nw, int lw) {
    if (nw < 1) return;
    const int l = lw % 10;
    const double dx = 1.0 / nw;
    const double x1 = lw < 10 && nw % 2 == 1 ? -(1 - dx) / 2 : -0.5;
    // Both grids are symmetric about the middle sample: what follows it is what comes before it, backwards.
    const bool mirrored = lw < 10;
    const int n = mirrored ? nw / 2 + 1 : nw;
    if (l <= 0)
        std::fill_n(w, n, 1.0F);
    else if (l == 1)
        diawght(2 * x1, 2 * dx, n, w);
    else if (l == 2)
        fill_from_cosines(w, n, 2 * pi * x1, 2 * pi * dx, 0.54, 0.46, 0);
    else if (l == 3)
        fill_from_cosines(w, n, 2 * pi * x1, 2 * pi * dx, 0.42, 0.5, 0.08);
    if (mirrored) std::reverse_copy(w + n - (nw - n) - 1, w + n - 1, w + n);
    if (l == 2 || l == 4) w[0] = w[nw - 1] = 0.005F;
    if (lw >= 10) {
        w[0] *= 0.5F;
        if (nw > 1) w[nw - 1] *= 0.5F;
    }
    const double sum = sum_of(w, nw);
    if (sum != 0) {
        const double scale = 1 / sum;
        for (int k = 0; k < nw; k++) w[k] = static_cast<float>(w[k] * scale);
    }
    const float centre = w[nw / 2];
    for (int k = 0; k < nw; k++) dw[k] = centre / (w[k] > 0 ? w[k] : std::numeric_limits<float>::infinity());
}

} // namespace norva
