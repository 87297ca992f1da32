// Amplitude and phase of complex curves.
#include "cut/curve.h"

#include "angle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace norva {

namespace {

// The largest |component|; infinity when one is no number.
float largest_component(const float* x, int n) {
    float largest = 0;
    bool sound = true;
    for (int k = 0; k < 2 * n; k++) {
        const float v = std::fabs(x[k]);
        sound = sound && v <= std::numeric_limits<float>::max();
        largest = v > largest ? v : largest;
    }
    return sound ? largest : std::numeric_limits<float>::infinity();
}

// Fills the phases between two samples that have one, a < b.
void fill_between(float* ph, int a, int b) {
    const float step = (ph[b] - ph[a]) / static_cast<float>(b - a);
    for (int k = a + 1; k < b; k++) ph[k] = ph[a] + static_cast<float>(k - a) * step;
}

// Unwraps the phases of the samples above the level and lays all others on lines between them.
void join_phases(const float* am, float level, int n, float* ph) {
    int first = -1, second = -1, before = -1, last = -1; // samples with a phase: the first two, the last two
    float wraps = 0, raw = 0;
    for (int k = 0; k < n; k++) {
        if (!(am[k] > level)) continue;
        const float value = ph[k], step = value - raw;
        if (std::fabs(step) > 0.5F) wraps -= step >= 0 ? 1.0F : -1.0F;
        raw = value;
        ph[k] = value + wraps;
        if (last >= 0 && last < k - 1) fill_between(ph, last, k);
        if (first < 0)
            first = k;
        else if (second < 0)
            second = k;
        before = last;
        last = k;
    }
    if (first < 0) {
        std::fill_n(ph, n, 0.0F);
        return;
    }
    const float rise = second < 0 ? 0.0F : (ph[second] - ph[first]) / static_cast<float>(second - first);
    const float fall = before < 0 ? 0.0F : (ph[last] - ph[before]) / static_cast<float>(last - before);
    for (int k = 0; k < first; k++) ph[k] = ph[first] + static_cast<float>(k - first) * rise;
    for (int k = last + 1; k < n; k++) ph[k] = ph[last] + static_cast<float>(k - last) * fall;
}

} // namespace

void ampscl(float* x, int n, float* scale) {
    const float largest = largest_component(x, n);
    *scale = largest;
    if (!(largest > 0) || std::isinf(largest)) return;
    // Components at most 1 can be squared; those of the samples that count do not vanish.
    const double unit = 1.0 / largest;
    double power = 0;
    for (int k = 0; k < n; k++) {
        const double re = x[2 * k] * unit, im = x[2 * k + 1] * unit, p = re * re + im * im;
        power = p > power ? p : power;
    }
    const double amplitude = largest * std::sqrt(power);
    *scale = static_cast<float>(std::min<double>(amplitude, std::numeric_limits<float>::max()));
    const double factor = 1.0 / amplitude;
    for (int k = 0; k < 2 * n; k++) x[k] = static_cast<float>(x[k] * factor);
}

void amphs(const float* x, int n, int ks, float* am, float* ph) {
    const float sign = ks < 0 ? -1.0F : 1.0F;
    float peak = 0;
    for (int k = 0; k < n; k++) {
        const float re = x[2 * k], im = x[2 * k + 1];
        am[k] = std::sqrt(re * re + im * im);
        ph[k] = sign * cycles_of(re, im);
        peak = am[k] > peak ? am[k] : peak;
    }
    join_phases(am, AMPHS_LEVEL * peak, n, ph);
}

void aptocx(const float* am, const float* ph, int n, int ks, float* x) {
    const float sign = ks < 0 ? -1.0F : 1.0F;
    for (int k = 0; k < n; k++) {
        const phasor e = phasor_of(sign * ph[k]);
        x[2 * k] = am[k] * e.re;
        x[2 * k + 1] = am[k] * e.im;
    }
}

void turn(float* x, int n, int sign, const float* ph) {
    const float s = sign < 0 ? -1.0F : 1.0F;
    for (int k = 0; k < n; k++) {
        const phasor e = phasor_of(s * ph[k]);
        const float re = x[2 * k], im = x[2 * k + 1];
        x[2 * k] = re * e.re - im * e.im;
        x[2 * k + 1] = re * e.im + im * e.re;
    }
}

// A run of samples shares one exponential in double precision; the steps within it come from a table.
void turn_line(float* x, int n, double step, double start) {
    constexpr int RUN = 32;
    std::array<double, RUN> cosine, sine;
    auto phase = [&](double cycles) { return 2 * std::numbers::pi * (cycles - std::floor(cycles)); };
    for (int j = 0; j < RUN; j++) {
        cosine[j] = std::cos(phase(j * step));
        sine[j] = std::sin(phase(j * step));
    }
    for (int k0 = 0; k0 < n; k0 += RUN) {
        const double arg = phase(k0 * step + start), c0 = std::cos(arg), s0 = std::sin(arg);
        float* run = x + 2 * k0;
        const int length = std::min(RUN, n - k0);
        for (int j = 0; j < length; j++) {
            const auto c = static_cast<float>(c0 * cosine[j] - s0 * sine[j]);
            const auto s = static_cast<float>(c0 * sine[j] + s0 * cosine[j]);
            const float re = run[2 * j], im = run[2 * j + 1];
            run[2 * j] = re * c - im * s;
            run[2 * j + 1] = re * s + im * c;
        }
    }
}

void differ(const float* a, int n, float* b) {
    if (n < 1) return;
    if (n == 1) {
        b[0] = 0;
        return;
    }
    float before = a[0];
    b[0] = a[1] - a[0];
    for (int k = 1; k < n - 1; k++) {
        const float here = a[k];
        const float after = a[k + 1];
        b[k] = 0.5F * (after - before);
        before = here;
    }
    b[n - 1] = a[n - 1] - before;
}

} // namespace norva
