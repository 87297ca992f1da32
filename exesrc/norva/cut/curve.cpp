// Amplitude and phase of complex curves.
#include "cut/curve.h"

#include "angle_kernels.h"
#include "signal/processor.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace norva {

namespace {

// Magnitudes compare like the whole numbers that their bits spell; beyond the largest number come infinity
// and what is no number.
constexpr std::int32_t INFINITE_BITS = 0x7f800000;

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
    // Samples from..to-1. Whole cycles are counted without a branch: where they come nobody can foretell.
    auto unwrap_run = [&](int from, int to) {
        std::array<float, 257> before_run;
        std::array<int, 256> turns;
        for (; from < to; from += static_cast<int>(turns.size())) {
            const int length = std::min(to - from, static_cast<int>(turns.size()));
            before_run[0] = raw;
            std::copy_n(ph + from, length, before_run.begin() + 1);
            raw = before_run[length];
            for (int k = 0; k < length; k++) {
                const float step = before_run[k + 1] - before_run[k];
                turns[k] = static_cast<int>(step < -0.5F) - static_cast<int>(step > 0.5F);
            }
            for (int k = 0; k < length; k++) turns[k] = wraps += turns[k];
            for (int k = 0; k < length; k++) ph[from + k] += static_cast<float>(turns[k]);
        }
    };
    for (int k = 0; k < n; k++) {
        if (!(am[k] > level)) continue;
        const int run = k; // of samples that all have a phase
        while (k + 1 < n && am[k + 1] > level) k++;
        unwrap_run(run, k + 1);
        if (last >= 0 && last < run - 1) fill_between(ph, last, run);
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

const angle_kernels& kernels_of_this_machine() {
#if defined(__x86_64__)
    if (has_avx2()) return angle_kernels_avx2;
#endif
    return angle_kernels_base;
}

static const angle_kernels& kernels() {
    static const angle_kernels& k = kernels_of_this_machine();
    return k;
}

curve_scale scale_of(const float* x, int n) {
    const angle_kernels& of = kernels();
    const std::int32_t bits = of.largest_bits(x, 2 * n);
    curve_scale s;
    s.amplitude = std::bit_cast<float>(std::min(bits, INFINITE_BITS));
    if (bits == 0 || bits >= INFINITE_BITS) return s;
    s.range = s.amplitude < SMALL ? FAR : s.amplitude > LARGE ? 1 / FAR : 1.0F;
    const float amplitude = std::sqrt(std::bit_cast<float>(of.largest_power(x, n, s.range)));
    s.unit = 1 / amplitude;
    s.amplitude = std::min(amplitude / s.range, std::numeric_limits<float>::max());
    return s;
}

void ampscl(float* x, int n, float* scale) {
    const curve_scale s = scale_of(x, n);
    *scale = s.amplitude;
    if (s.amplitude > 0 && std::isfinite(s.amplitude)) kernels().multiply(x, 2 * n, s.range, s.unit);
}

void curve_parts(const float* x, int n, const curve_scale& scale, int ks, float* am, float* ph, float* re,
                 float* im) {
    kernels().parts(x, n, scale.range, scale.unit, ks < 0 ? -1.0F : 1.0F, am, ph, re, im);
    join_phases(am, AMPHS_LEVEL * std::bit_cast<float>(kernels().largest_bits(am, n)), n, ph);
}

void amplitudes(const float* x, int n, float* am) {
    kernels().amplitudes(x, n, am);
}

void amphs(const float* x, int n, int ks, float* am, float* ph) {
    kernels().polar(x, n, ks < 0 ? -1.0F : 1.0F, am, ph);
    join_phases(am, AMPHS_LEVEL * std::bit_cast<float>(kernels().largest_bits(am, n)), n, ph);
}

void aptocx(const float* am, const float* ph, int n, int ks, float* x) {
    kernels().cartesian(am, ph, n, ks < 0 ? -1.0F : 1.0F, x);
}

void turn(float* x, int n, int sign, const float* ph) {
    kernels().turn(x, n, sign < 0 ? -1.0F : 1.0F, ph);
}

// A run of samples shares one exponential; the steps within it come from a table. Both are exact to single
// precision, and so is their product but for its last bits.
void turn_line(float* x, int n, double step, double start) {
    constexpr int RUN = 32;
    std::array<float, RUN> cosine, sine;
    auto phase = [&](double cycles) { return 2 * std::numbers::pi * (cycles - std::floor(cycles)); };
    for (int j = 0; j < RUN; j++) {
        cosine[j] = static_cast<float>(std::cos(phase(j * step)));
        sine[j] = static_cast<float>(std::sin(phase(j * step)));
    }
    for (int k0 = 0; k0 < n; k0 += RUN) {
        const double arg = phase(k0 * step + start);
        const auto c0 = static_cast<float>(std::cos(arg)), s0 = static_cast<float>(std::sin(arg));
        float* run = x + 2 * k0;
        const int length = std::min(RUN, n - k0);
        for (int j = 0; j < length; j++) {
            const float c = c0 * cosine[j] - s0 * sine[j], s = c0 * sine[j] + s0 * cosine[j];
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
