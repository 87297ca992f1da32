// Interpolators of one-dimensional functions, and the kernel tables of the image interpolator.
#include "signal/interp.h"

#include "image_kernel.h"
#include "signal/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace norva {

using std::numbers::pi;

float sinc(float x) {
    if (std::fabs(x) <= 0.0001F) return 1.0F;
    const float arg = std::numbers::pi_v<float> * x;
    return std::sin(arg) / arg;
}

void tapered_sinc(float* r, int m, int per_sample) {
    auto precise_sinc = [](double x) { return std::sin(pi * x) / (pi * x); };
    if (m > 0) r[0] = 1.0F;
    for (int i = 1; i < per_sample * m; i++) {
        const double x = static_cast<double>(i) / per_sample, u = 0.5 * x / m;
        r[i] = static_cast<float>(std::cos(pi * u) * precise_sinc(x) / precise_sinc(u));
    }
}

void periodic_kernel(float* r, int n, int per_sample) {
    if (n > 0) r[0] = 1.0F;
    for (int i = 1; i < per_sample / 2 * n; i++) {
        const double x = static_cast<double>(i) / per_sample / n;
        r[i] = static_cast<float>(std::sin(n * pi * x) / (n * std::sin(pi * x)));
    }
}

void tsinc(float* r, int m) {
    tapered_sinc(r, m, TABLE_PER_SAMPLE);
}

void samp(float* r, int n) {
    periodic_kernel(r, n, TABLE_PER_SAMPLE);
}

float rint(const float* r, float x) {
    float h = x * TABLE_PER_SAMPLE;
    const auto i = static_cast<int>(h);
    h -= static_cast<float>(i);
    return (1 - h) * r[i] + h * r[i + 1];
}

// P(P-1)/2 A(I-1) + (1-PP) A(I) + P(P+1)/2 A(I+1)
float cubint(const float* a, int n, float u) {
    if (n < 3) return n > 0 ? a[0] : 0.0F;
    const int i = std::clamp(nint(u), 2, n - 1);
    const float p = u - static_cast<float>(i);
    const float* at = a + (i - 1);
    return p * 0.5F * ((p - 1) * at[-1] + (p + 1) * at[1]) + (1 - p * p) * at[0];
}

void resamp(const float* a, int na, int nb, float b1, float db, float* b) {
    for (int i = 0; i < nb; i++) {
        const double u = b1 + static_cast<double>(i) * db;
        if (na < 2) {
            b[i] = na > 0 ? a[0] : 0.0F;
        } else if (!(u >= 1)) {
            b[i] = static_cast<float>(a[0] - (1 - u) * (static_cast<double>(a[1]) - a[0]));
        } else if (u >= na) {
            b[i] = static_cast<float>(a[na - 1] + (u - na) * (static_cast<double>(a[na - 1]) - a[na - 2]));
        } else {
            const auto k = static_cast<int>(u);
            const double h = u - k;
            b[i] = static_cast<float>((1 - h) * a[k - 1] + h * a[k]);
        }
    }
}

void drint(const double* dr, const double* t, int n, double* d) {
    if (n < 1) return;
    double before = dr[0];
    d[0] = 0;
    for (int k = 1; k < n; k++) {
        const double here = dr[k];
        d[k] = d[k - 1] + 0.5 * (t[k] - t[k - 1]) * (before + here);
        before = here;
    }
    const double middle = 0.5 * (d[n / 2] + d[n - n / 2 - 1]);
    for (int k = 0; k < n; k++) d[k] -= middle;
}

} // namespace norva
