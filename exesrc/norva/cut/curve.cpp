// Amplitude and phase of complex curves.
#include "cut/curve.h"

#include "angle.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace norva {

namespace {

// Magnitudes compare like the whole numbers that their bits spell; beyond the largest number come infinity and
// what is no number.
constexpr std::int32_t INFINITE_BITS = 0x7f800000;

std::int32_t largest_bits(const float* x, int n) {
    std::int32_t largest = 0;
    for (int k = 0; k < n; k++) {
        const std::int32_t bits = std::bit_cast<std::int32_t>(x[k]) & 0x7fffffff;
        largest = bits > largest ? bits : largest;
    }
    return largest;
}

float largest_magnitude(const float* x, int n) {
    return std::bit_cast<float>(largest_bits(x, n));
}

void multiply(float* x, int n, float factor) {
    for (int k = 0; k < n; k++) x[k] *= factor;
}

// Squares of numbers beyond these bounds may leave the range of a float.
constexpr float SMALL = 0x1p-50F, LARGE = 0x1p50F, FAR = 0x1p90F;

// Fills the phases between two samples that have one, a < b.
void fill_between(float* ph, int a, int b) {
    const float step = (ph[b] - ph[a]) / static_cast<float>(b - a);
    for (int k = a + 1; k < b; k++) ph[k] = ph[a] + static_cast<float>(k - a) * step;
}

// Unwraps the phases of the samples above the level and lays all others on lines between them.
void join_phases(const float* am, float level, int n, float* ph) {
    int first = -1, second = -1, before = -1, last = -1; // samples with a phase: the first two, the last two
    int wraps = 0;
    float raw = 0;
    // Whole cycles are counted without a branch: where they come nobody can foretell.
    auto unwrap_at = [&](int k) {
        const float value = ph[k], step = value - raw;
        wraps += static_cast<int>(step < -0.5F) - static_cast<int>(step > 0.5F);
        raw = value;
        ph[k] = value + static_cast<float>(wraps);
    };
    for (int k = 0; k < n; k++) {
        if (!(am[k] > level)) continue;
        unwrap_at(k);
        if (last >= 0 && last < k - 1) fill_between(ph, last, k);
        const int run = k; // of samples that all have a phase
        while (k + 1 < n && am[k + 1] > level) unwrap_at(++k);
        if (second < 0 && first >= 0) second = run;
        if (first < 0) first = run;
        if (second < 0 && k > first) second = first + 1;
        before = k > run ? k - 1 : last;
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
    const std::int32_t bits = largest_bits(x, 2 * n);
    *scale = std::bit_cast<float>(std::min(bits, INFINITE_BITS));
    if (bits == 0 || bits >= INFINITE_BITS) return;
    const float moved = *scale < SMALL ? FAR : *scale > LARGE ? 1 / FAR : 1.0F;
    if (moved != 1) multiply(x, 2 * n, moved);

    std::array<float, 512> power;
    float largest = 0;
    for (int from = 0; from < n; from += static_cast<int>(power.size())) {
        const int block = std::min(static_cast<int>(power.size()), n - from);
        for (int k = 0; k < block; k++) {
            const float re = x[2 * (from + k)], im = x[2 * (from + k) + 1];
            power[k] = re * re + im * im;
        }
        largest = std::max(largest, largest_magnitude(power.data(), block));
    }
    const float amplitude = std::sqrt(largest);
    multiply(x, 2 * n, 1 / amplitude);
    *scale = std::min(amplitude / moved, std::numeric_limits<float>::max());
}

void amphs(const float* x, int n, int ks, float* am, float* ph) {
    const float sign = ks < 0 ? -1.0F : 1.0F;
    for (int k = 0; k < n; k++) {
        const float re = x[2 * k], im = x[2 * k + 1];
        am[k] = std::sqrt(re * re + im * im);
        ph[k] = sign * cycles_of(re, im);
    }
    join_phases(am, AMPHS_LEVEL * largest_magnitude(am, n), n, ph);
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
