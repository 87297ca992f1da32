// Amplitude and phase of complex curves.
#include "cut/curve.h"

#include "angle_kernels.h"
#include "signal/processor.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <complex>
#include <cstdint>
#include <limits>
#include <numbers>
#include <vector>

namespace norva {

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

namespace {

// Magnitudes compare like the whole numbers that their bits spell; beyond the largest number come infinity
// and what is no number.
constexpr std::int32_t INFINITE_BITS = 0x7f800000;

// Squares of numbers beyond these bounds may leave the range of a float.
constexpr float SMALL = 0x1p-50F, LARGE = 0x1p50F, FAR = 0x1p90F;

// Unwraps the phases of the samples above the level and lays all others on lines: between them, and beyond
// the first and the last one through these and the nearest ones to them.
void join_phases(const float* am, float level, int n, float* ph) {
    static thread_local std::vector<float> room;
    int first = 0, last = n - 1;
    while (first < n && !(am[first] > level)) first++;
    if (first >= n) {
        std::fill_n(ph, n, 0.0F);
        return;
    }
    while (!(am[last] > level)) last--;
    if (std::ssize(room) < n) room.resize(n);
    kernels().join(am + first, level, last - first + 1, ph + first, room.data());

    // Whatever lies between the first and the second is on their line already.
    const float rise = last > first ? ph[first + 1] - ph[first] : 0.0F;
    const float fall = last > first ? ph[last] - ph[last - 1] : 0.0F;
    for (int k = 0; k < first; k++) ph[k] = ph[first] + static_cast<float>(k - first) * rise;
    for (int k = last + 1; k < n; k++) ph[k] = ph[last] + static_cast<float>(k - last) * fall;
}

} // namespace

curve_scale scale_of(const float* x, int n) {
    curve_extent largest = kernels().extent(x, n, 1);
    curve_scale s;
    s.amplitude = std::bit_cast<float>(std::min<std::int32_t>(largest.part, INFINITE_BITS));
    if (largest.part == 0 || largest.part >= INFINITE_BITS) return s;
    if (s.amplitude < SMALL || s.amplitude > LARGE) {
        s.range = s.amplitude < SMALL ? FAR : 1 / FAR;
        largest = kernels().extent(x, n, s.range);
    }
    const float amplitude = std::sqrt(std::bit_cast<float>(largest.power));
    s.unit = 1 / amplitude;
    s.amplitude = std::min(amplitude / s.range, std::numeric_limits<float>::max());
    return s;
}

void ampscl(float* x, int n, float* scale) {
    const curve_scale s = scale_of(x, n);
    *scale = s.amplitude;
    if (s.amplitude > 0 && std::isfinite(s.amplitude)) kernels().multiply(x, 2 * n, s.range, s.unit);
}

static float sign_of(int ks) {
    return ks < 0 ? -1.0F : 1.0F;
}

// The samples' amplitudes and phases, not unwrapped, and their parts. Returns the largest amplitude.
static float read_curve(const float* x, int n, const curve_scale& scale, int ks, const curve_arrays& to) {
    return std::bit_cast<float>(static_cast<std::int32_t>(
        kernels().parts(x, n, scale.range, scale.unit, sign_of(ks), to.am, to.ph, to.re, to.im)));
}

int curve_parts(const float* x, int n, const curve_scale& scale, int ks, const curve_arrays& to) {
    const float peak = read_curve(x, n, scale, ks, to);
    join_phases(to.am, AMPHS_LEVEL * peak, n, to.ph);
    return kernels().place(to.am, n, peak);
}

void curve_split(const float* x, int n, const curve_scale& scale, float* re, float* im) {
    kernels().split(x, n, scale.range, scale.unit, re, im);
}

void rectify(float* x, int n) {
    const float range = scale_of(x, n).range;
    kernels().rectify(x, n, range, 1 / range);
}

void reweigh(float* x, const float* deweight, const float* w, int n, float factor) {
    kernels().reweigh(x, deweight, w, n, factor);
}

void equalize(float* x, const float* w, int n, const curve_scale& scale, float level) {
    kernels().equalize(x, w, n, scale.range, level);
}

void amphs(const float* x, int n, int ks, float* am, float* ph) {
    float peak = read_curve(x, n, curve_scale(), ks, {am, ph});
    if (!(peak > SMALL && peak < LARGE)) {
        const curve_scale s = scale_of(x, n);
        if (s.amplitude > 0 && std::isfinite(s.amplitude)) {
            read_curve(x, n, s, ks, {am, ph});
            kernels().multiply(am, n, s.amplitude, 1);
            peak = s.amplitude;
        }
    }
    join_phases(am, AMPHS_LEVEL * peak, n, ph);
}

void aptocx(const float* am, const float* ph, int n, int ks, float* x) {
    kernels().cartesian(am, ph, n, sign_of(ks), x);
}

void turn(float* x, int n, int sign, const float* ph) {
    kernels().turn(x, n, sign_of(sign), ph);
}

void weigh(const float* x, const float* w, int n, float* y) {
    kernels().weigh(x, w, n, y);
}

// A run of samples shares one exponential; the steps within it come from a table. Both are exact to single
// precision, and so is their product but for its last bits. Those of the runs follow from each other: in
// double precision some hundred products cost nothing that a float would show.
void turn_line(float* x, int n, double step, double start) {
    constexpr int RUN = 32;
    const auto at = [](double cycles) {
        return std::polar(1.0, 2 * std::numbers::pi * (cycles - std::floor(cycles)));
    };
    std::array<float, RUN> cosine, sine;
    for (int j = 0; j < RUN; j++) {
        const std::complex<double> e = at(j * step);
        cosine[j] = static_cast<float>(e.real());
        sine[j] = static_cast<float>(e.imag());
    }
    const std::complex<double> onward = at(RUN * step);
    double c = at(start).real(), s = at(start).imag();
    for (int k = 0; k < n; k += RUN) {
        kernels().turn_run(x + 2 * k, std::min(RUN, n - k), static_cast<float>(c), static_cast<float>(s),
                           cosine.data(), sine.data());
        const double next = c * onward.real() - s * onward.imag();
        s = c * onward.imag() + s * onward.real();
        c = next;
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
