// Polar formatting by direct summation.
#include "mocomp/polar.h"

#include "polar_sum.h"
#include "signal/parallel.h"
#include "signal/weight.h"
#include "state/calls.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace norva {
namespace {

constexpr int steps_of_a_chunk = 400000; // samples times points that are worth another thread

const float* cycle_table() {
    static const std::vector<float> table = [] {
        std::vector<float> pairs(2 * (polar_cycle + 1));
        for (int k = 0; k <= polar_cycle; k++) {
            const double angle = 2 * std::numbers::pi * k / polar_cycle;
            pairs[2 * k] = static_cast<float>(std::cos(angle));
            pairs[2 * k + 1] = static_cast<float>(std::sin(angle));
        }
        return pairs;
    }();
    return table.data();
}

polar_runner runner_of_this_machine() {
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2")) return polar_sum_avx2;
#endif
    return polar_sum_base;
}

// The same sum where phases are beyond what the kernels reduce, or no numbers.
void polar_sum_far(const polar_record& record, const float* range, float con2, float* z, int n) {
    for (int ix = 0; ix < n; ix++) {
        for (int i = 0; i < record.n; i++) {
            const float phase = range[ix] * record.con1[i] - con2;
            float a = std::fmod(phase, static_cast<float>(polar_cycle));
            if (a < 0) a += polar_cycle;
            const double angle = std::isfinite(a) ? 2 * std::numbers::pi * std::round(a) / polar_cycle : 0;
            const float c = static_cast<float>(std::cos(angle)), s = static_cast<float>(std::sin(angle));
            z[2 * ix] += c * record.re[i] - s * record.im[i];
            z[2 * ix + 1] += s * record.re[i] + c * record.im[i];
        }
    }
}

// The part of the plane of spatial frequencies that is summed: the largest ellipse in band and aperture.
struct aperture {
    float centre;     // of the band, MHz
    float half_band;  // MHz
    float half_width; // across, MHz
};

aperture aperture_of(int nf, int na, float f1, float df, float da) {
    const double b = 0.5 * df * nf, fc = f1 + b - 0.5 * df, half_angle = 0.5 * na * static_cast<double>(da);
    return {static_cast<float>(fc), static_cast<float>(b),
            static_cast<float>(std::sqrt(fc * fc - b * b) * std::tan(half_angle))};
}

// The samples of one record that lie inside the aperture, weighted.
struct weighted_record {
    std::vector<float> con1, re, im;

    void take(const float* s, int nf, float f1, float df, float c, float sth, float cth, const aperture& a) {
        con1.clear();
        re.clear();
        im.clear();
        for (int i = 0; i < nf; i++) {
            const float f = f1 + static_cast<float>(i) * df;
            const float across = f * sth / a.half_width, along = (f * cth - a.centre) / a.half_band;
            const float dsq = across * across + along * along;
            if (!(dsq < 1)) continue;
            const float w = f / a.centre * cirwght(dsq);
            con1.push_back(16000 * f / c);
            re.push_back(w * s[2 * i]);
            im.push_back(w * s[2 * i + 1]);
        }
    }
};

// Twice the range to the centre, corrected ni - 1 times for the curvature of the wave front: the difference
// dr of the ranges satisfies dr (dr + 2 rc) = rr.
float refined(float dr, float rr, float rc2, int ni) {
    for (int k = 1; k < std::min(ni, 5); k++) dr = rr / (dr + rc2);
    return dr;
}

struct grid {
    int nx, ny;
    float dx, dy;

    float x(int ix) const { return -static_cast<float>(nx / 2) * dx + static_cast<float>(ix) * dx; }
    float y(int iy) const { return -static_cast<float>(ny / 2) * dy + static_cast<float>(iy) * dy; }
};

// Sums all records into z. record(j, samples) gives the samples of record j; range(j, x0, y0) the difference
// of the range to the point and to the centre.
template <class Record, class Range>
void sum_records(int na, const grid& g, float fc, float c, float* z, Record&& record, Range&& range) {
    std::fill_n(z, 2 * static_cast<std::size_t>(g.nx) * g.ny, 0.0F);
    static const polar_runner near = runner_of_this_machine();
    const int padded = (g.nx + polar_step - 1) / polar_step * polar_step;
    weighted_record samples;
    for (int j = 0; j < na; j++) {
        rpt_progress(j + 1, na);
        record(j, samples);
        const int n = static_cast<int>(samples.con1.size());
        if (n == 0) continue;
        const polar_record one = {n, samples.con1.data(), samples.re.data(), samples.im.data(),
                                  cycle_table()};
        const float steepest = *std::ranges::max_element(
            samples.con1, [](float a, float b) { return std::fabs(a) < std::fabs(b); });
        const int rows = std::max(1, steps_of_a_chunk / std::max(1, padded * n));
        parallel_chunks(g.ny, rows, [&](int first, int last) {
            std::vector<float> ranges(static_cast<std::size_t>(padded)), row(2 * ranges.size());
            for (int iy = first; iy < last; iy++) {
                const float y0 = g.y(iy), con2 = 16000 * fc * y0 / c;
                float farthest = 0;
                for (int ix = 0; ix < g.nx; ix++) {
                    ranges[ix] = range(j, g.x(ix), y0);
                    farthest = std::fmax(farthest, std::fabs(ranges[ix]));
                    if (std::isnan(ranges[ix])) farthest = INFINITY;
                }
                const bool is_near = farthest * std::fabs(steepest) + std::fabs(con2) < polar_phase_limit;
                float* to = z + 2 * static_cast<std::size_t>(iy) * g.nx;
                std::copy_n(to, 2 * g.nx, row.begin());
                (is_near ? near : polar_sum_far)(one, ranges.data(), con2, row.data(), padded);
                std::copy_n(row.begin(), 2 * g.nx, to);
            }
        });
    }
}

} // namespace

void polarfor1(const float* s, int nf, int na, float f1, float df, float rc, float de, float da, int nx,
               int ny, float dx, float dy, int ni, float c, float* z) {
    const aperture a = aperture_of(nf, na, f1, df, da);
    const float rc2 = 2 * rc, cde = std::cos(de);
    float sth = 0, cth = 1;
    const auto record = [&](int j, weighted_record& samples) {
        const double th = (j + 1 - 0.5 * (na + 1)) * da;
        sth = static_cast<float>(std::sin(th));
        cth = static_cast<float>(std::cos(th));
        samples.take(s + 2 * static_cast<std::size_t>(j) * nf, nf, f1, df, c, sth, cth, a);
    };
    sum_records(na, {nx, ny, dx, dy}, a.centre, c, z, record, [&](int, float x0, float y0) {
        const float dr = cde * (cth * y0 - sth * x0);
        return refined(dr, rc2 * dr + x0 * x0 + y0 * y0, rc2, ni);
    });
}

void polarfor2(const float* s, int nf, int nt, float f1, float df, float rc, float du, float sa, int nx,
               int ny, float dx, float dy, int ni, float c, float* z) {
    const float along = std::sin(sa) * du, across = std::cos(sa) * du, da = across / rc, rc2 = 2 * rc;
    const aperture a = aperture_of(nf, nt, f1, df, da);
    float us = 0, uc = 0;
    const auto record = [&](int j, weighted_record& samples) {
        const double m = j + 1 - 0.5 * (nt + 1);
        us = static_cast<float>(m * along);
        uc = static_cast<float>(m * across);
        samples.take(s + 2 * static_cast<std::size_t>(j) * nf, nf, f1, df, c,
                     static_cast<float>(std::sin(m * da)), static_cast<float>(std::cos(m * da)), a);
    };
    sum_records(nt, {nx, ny, dx, dy}, a.centre, c, z, record, [&](int, float x0, float y0) {
        const float dr = y0 - us;
        const float rr = rc2 * dr - 2 * (x0 * uc + y0 * us) + x0 * x0 + y0 * y0 + (us * us + uc * uc);
        return refined(dr, rr, rc2, ni) + rc;
    });
}

} // namespace norva
