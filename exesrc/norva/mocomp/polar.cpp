// Polar formatting by direct summation.
#include "mocomp/polar.h"

#include "polar_sum.h"
#include "signal/parallel.h"
#include "signal/processor.h"
#include "signal/weight.h"
#include "state/calls.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <utility>
#include <vector>

namespace norva {
namespace {

// Samples times points that are worth another thread, and those between two reports of progress, a tenth of a
// second: as much work in one loop as that allows, for a worker whose core is busy needs time to begin.
constexpr double steps_of_a_chunk = 1e5, steps_of_a_loop = 2e8;

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
    if (has_avx2()) return polar_sum_avx2;
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
            const int k = std::isfinite(a) ? static_cast<int>(std::round(a)) : 0;
            const float c = record.cycle[2 * k], s = record.cycle[2 * k + 1];
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
    float steepest = 0; // largest of con1, without sign

    void take(const float* s, int nf, float f1, float df, float c, float sth, float cth, const aperture& a) {
        steepest = 0;
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
            steepest = std::max(steepest, std::fabs(con1.back()));
            re.push_back(w * s[2 * i]);
            im.push_back(w * s[2 * i + 1]);
        }
    }
    int n() const { return static_cast<int>(con1.size()); }
};

struct grid {
    int nx, ny;
    float dx, dy;

    float x(int ix) const { return -static_cast<float>(nx / 2) * dx + static_cast<float>(ix) * dx; }
    float y(int iy) const { return -static_cast<float>(ny / 2) * dy + static_cast<float>(iy) * dy; }
};

// Differences of the ranges to the points of a row and to the centre: dr in, corrected ni - 1 times for the
// curvature of the wave front by dr (dr + 2 rc) = rr.
struct row_of_ranges {
    std::vector<float> dr, rr;

    void refine(float rc2, int ni) {
        for (int k = 1; k < std::min(ni, 5); k++)
            for (std::size_t i = 0; i < dr.size(); i++) dr[i] = rr[i] / (dr[i] + rc2);
    }
    // Infinite or no number when one of them is.
    float farthest() const {
        std::int32_t bits = 0; // of numbers without sign; they have the order of the numbers
        for (const float d : dr) bits = std::max(bits, std::bit_cast<std::int32_t>(std::fabs(d)));
        return std::bit_cast<float>(bits);
    }
};

// Sums all records into z. record(j, samples) gives the samples of record j; ranges(j, x, y0, row) the ranges
// to the points (x, y0).
template <class Record, class Ranges>
void sum_records(int na, int nf, const grid& g, float fc, float c, float* z, Record&& record,
                 Ranges&& ranges) {
    std::fill_n(z, 2 * static_cast<std::size_t>(g.nx) * g.ny, 0.0F);
    static const polar_runner near = runner_of_this_machine();
    const float* cycle = cycle_table();
    const int padded = (g.nx + polar_step - 1) / polar_step * polar_step;
    std::vector<float> x(static_cast<std::size_t>(padded));
    for (int ix = 0; ix < padded; ix++) x[ix] = g.x(std::min(ix, g.nx - 1));
    const double row_steps = std::max(1.0, static_cast<double>(padded) * nf);
    const int together = static_cast<int>(std::clamp(steps_of_a_loop / (row_steps * g.ny), 1.0, 16.0));
    const int rows = static_cast<int>(std::clamp(steps_of_a_chunk / (row_steps * together), 1.0, 1e5));
    std::vector<weighted_record> samples(static_cast<std::size_t>(together));
    for (int begin = 0; begin < na; begin += together) {
        const int end = std::min(begin + together, na);
        for (int j = begin; j < end; j++) {
            rpt_progress(j + 1, na);
            record(j, samples[j - begin]);
        }
        parallel_chunks(g.ny, rows, [&](int first, int last) {
            row_of_ranges row = {x, x};
            std::vector<float> sums(2 * x.size());
            for (int iy = first; iy < last; iy++) {
                const float y0 = g.y(iy), con2 = 16000 * fc * y0 / c;
                float* to = z + 2 * static_cast<std::size_t>(iy) * g.nx;
                std::copy_n(to, 2 * g.nx, sums.begin());
                for (int j = begin; j < end; j++) {
                    const weighted_record& w = samples[j - begin];
                    if (w.n() == 0) continue;
                    ranges(j, x, y0, row);
                    const bool is_near = row.farthest() * w.steepest + std::fabs(con2) < polar_phase_limit;
                    (is_near ? near : polar_sum_far)({w.n(), w.con1.data(), w.re.data(), w.im.data(), cycle},
                                                     row.dr.data(), con2, sums.data(), padded);
                }
                std::copy_n(sums.begin(), 2 * g.nx, to);
            }
        });
    }
}

} // namespace

void polarfor1(const float* s, int nf, int na, float f1, float df, float rc, float de, float da, int nx,
               int ny, float dx, float dy, int ni, float c, float* z) {
    const aperture a = aperture_of(nf, na, f1, df, da);
    const float rc2 = 2 * rc, cde = std::cos(de);
    const auto direction = [&](int j) {
        const double th = (j + 1 - 0.5 * (na + 1)) * da;
        return std::pair(static_cast<float>(std::sin(th)), static_cast<float>(std::cos(th)));
    };
    const auto record = [&](int j, weighted_record& samples) {
        const auto [sth, cth] = direction(j);
        samples.take(s + 2 * static_cast<std::size_t>(j) * nf, nf, f1, df, c, sth, cth, a);
    };
    const auto ranges = [&](int j, const std::vector<float>& x, float y0, row_of_ranges& row) {
        const auto [sth, cth] = direction(j);
        for (std::size_t i = 0; i < x.size(); i++) {
            const float x0 = x[i], dr = cde * (cth * y0 - sth * x0);
            row.dr[i] = dr;
            row.rr[i] = rc2 * dr + x0 * x0 + y0 * y0;
        }
        row.refine(rc2, ni);
    };
    sum_records(na, nf, {nx, ny, dx, dy}, a.centre, c, z, record, ranges);
}

void polarfor2(const float* s, int nf, int nt, float f1, float df, float rc, float du, float sa, int nx,
               int ny, float dx, float dy, int ni, float c, float* z) {
    const float along = std::sin(sa) * du, across = std::cos(sa) * du, da = across / rc, rc2 = 2 * rc;
    const aperture a = aperture_of(nf, nt, f1, df, da);
    const auto record = [&](int j, weighted_record& samples) {
        const double th = (j + 1 - 0.5 * (nt + 1)) * da;
        samples.take(s + 2 * static_cast<std::size_t>(j) * nf, nf, f1, df, c,
                     static_cast<float>(std::sin(th)), static_cast<float>(std::cos(th)), a);
    };
    const auto ranges = [&](int j, const std::vector<float>& x, float y0, row_of_ranges& row) {
        const double m = j + 1 - 0.5 * (nt + 1);
        const float us = static_cast<float>(m * along), uc = static_cast<float>(m * across), dr = y0 - us;
        for (std::size_t i = 0; i < x.size(); i++) {
            const float x0 = x[i];
            row.dr[i] = dr;
            row.rr[i] = rc2 * dr - 2 * (x0 * uc + y0 * us) + x0 * x0 + y0 * y0 + (us * us + uc * uc);
        }
        row.refine(rc2, ni);
        for (float& d : row.dr) d += rc;
    };
    sum_records(nt, nf, {nx, ny, dx, dy}, a.centre, c, z, record, ranges);
}

} // namespace norva
