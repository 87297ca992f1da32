// Polar formatting: the cycle's entries, the sums against exact geometry, points brought to their places.
#include "mocomp/polar.h"

#include "polar_sum.h"
#include "signal/parallel.h"
#include "signal/weight.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <functional>
#include <numbers>
#include <random>
#include <vector>

namespace norva {
namespace {

using complexd = std::complex<double>;

complexd turn(double cycles) {
    return std::polar(1.0, 2 * std::numbers::pi * (cycles - std::nearbyint(cycles)));
}

std::vector<polar_runner> runners() {
    std::vector<polar_runner> all = {polar_sum_base};
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) all.push_back(polar_sum_avx2);
#endif
    return all;
}

const std::vector<float>& cycle() {
    static const std::vector<float> pairs = [] {
        std::vector<float> v;
        for (int k = 0; k <= polar_cycle; k++) {
            const complexd e = std::polar(1.0, 2 * std::numbers::pi * k / polar_cycle);
            v.insert(v.end(), {static_cast<float>(e.real()), static_cast<float>(e.imag())});
        }
        return v;
    }();
    return pairs;
}

// The table's entry written out: remainder in single precision, nearest step with halves up.
complexd told_entry(float range, float con1, float con2) {
    const volatile float product = range * con1; // keeps the two operations apart
    float a = std::fmod(product - con2, 8000.0F);
    if (a < 0) a += 8000.0F;
    return std::polar(1.0, 2 * std::numbers::pi * static_cast<double>(std::lround(a)) / 8000);
}

// Greatest deviation of the entries that a kernel uses for one sample 1 with each of some ranges.
double worst_entry(polar_runner run, const std::vector<float>& ranges, float con1, float con2) {
    const int n = (static_cast<int>(ranges.size()) + polar_step - 1) / polar_step * polar_step;
    std::vector<float> padded = ranges, z(2 * n);
    padded.resize(n);
    const float one = 1, zero = 0;
    run({1, &con1, &one, &zero, cycle().data()}, padded.data(), con2, z.data(), n);
    double worst = 0;
    for (int x = 0; x < n; x++)
        worst =
            std::max(worst, std::abs(complexd(z[2 * x], z[2 * x + 1]) - told_entry(padded[x], con1, con2)));
    return worst;
}

// A step is 8e-4: any other than the told one shows. All whole steps of both signs, ties and their
// neighbours, and what an addition of 8000 rounds to a tie.
TEST(polar_sum, uses_the_nearest_entry) {
    std::vector<float> phases;
    for (int k = -8200; k <= 8200; k++) {
        const float tie = static_cast<float>(k) + 0.5F;
        for (const float p :
             {static_cast<float>(k), tie, std::nextafter(tie, -1e9F), std::nextafter(tie, 1e9F),
              tie - 1.0F / 4096, tie - 1.0F / 8192, tie - 3.0F / 8192, tie + 1.0F / 4096})
            phases.push_back(p);
    }
    std::mt19937 random(7);
    std::uniform_real_distribution<float> uniform(-1, 1);
    for (int i = 0; i < 50000; i++) { // borders of cycles among them
        const float p = uniform(random) * std::exp2(29.8F * std::fabs(uniform(random)));
        phases.insert(phases.end(), {p, 8000 * std::round(p / 8000), 4000 * std::round(p / 4000)});
    }
    std::vector<float> ranges(200);
    for (float& r : ranges) r = 3000 * uniform(random);
    for (const polar_runner run : runners()) {
        EXPECT_LT(worst_entry(run, phases, 1, 0), 1e-7);
        for (int i = 0; i < 100; i++) { // a product that is not rounded before con2 is taken off differs
            const float con1 = std::exp2(15 * std::fabs(uniform(random)));
            for (const float con2 : {0.0F, 1234.5F, -7.5e6F, ranges[0] * con1})
                EXPECT_LT(worst_entry(run, ranges, con1, con2), 1e-7) << con1 << ' ' << con2;
        }
    }
}

TEST(polar_sum, adds_every_sample_once) {
    std::mt19937 random(8);
    std::uniform_real_distribution<float> uniform(-1, 1);
    constexpr int n = 48;
    for (const int samples : {1, 2, 63, 64, 65, 300}) {
        std::vector<float> con1(samples), re(samples), im(samples), range(n);
        for (std::vector<float>* v : {&con1, &re, &im, &range})
            for (float& f : *v) f = uniform(random);
        for (float& f : con1) f *= 30000;
        std::vector<complexd> expected(n, {0.25, -0.5});
        for (int x = 0; x < n; x++)
            for (int i = 0; i < samples; i++)
                expected[x] += told_entry(range[x], con1[i], 77) * complexd(re[i], im[i]);
        for (const polar_runner run : runners()) {
            std::vector<float> z;
            for (int x = 0; x < n; x++) z.insert(z.end(), {0.25F, -0.5F});
            run({samples, con1.data(), re.data(), im.data(), cycle().data()}, range.data(), 77, z.data(), n);
            for (int x = 0; x < n; x++)
                EXPECT_LT(std::abs(complexd(z[2 * x], z[2 * x + 1]) - expected[x]), 3e-5)
                    << samples << ' ' << x;
        }
    }
}

struct radar {
    int nf = 64, na = 60;
    float f1 = 9000, df = 20, rc = 30, de = 0.1F, da = 0.008F;
};

// Samples of points (x, y) with amplitude 1: the exact way to a point of a turntable seen from the distance
// rc under the depression angle de, less the way to the axis.
std::vector<float> turntable(const radar& r, const std::vector<complexd>& points) {
    std::vector<float> s;
    for (int j = 0; j < r.na; j++) {
        const double th = (j - 0.5 * (r.na - 1)) * r.da;
        for (int i = 0; i < r.nf; i++) {
            complexd sum = 0;
            for (const complexd& p : points) {
                const double y = p.imag() * std::cos(th) - p.real() * std::sin(th);
                const double way = std::sqrt(static_cast<double>(r.rc) * r.rc +
                                             2.0 * r.rc * std::cos(r.de) * y + std::norm(p)) -
                                   r.rc;
                sum += turn(-2.0 * (r.f1 + i * static_cast<double>(r.df)) * way / 300);
            }
            s.push_back(static_cast<float>(sum.real()));
            s.push_back(static_cast<float>(sum.imag()));
        }
    }
    return s;
}

// A formed image of nx by ny places against the direct sum over all samples. The angle of a record, as a
// multiple of da from the middle one, gives its place in the weighting; `way` is the exact way from record
// `m` off the middle to a place.
double worst_of(const std::vector<float>& z, const std::vector<float>& s, const radar& r, double da, int nx,
                int ny, double dx, double dy, const std::function<double(double, double, double)>& way) {
    const double half_band = 0.5 * r.df * r.nf, centre = r.f1 + 0.5 * r.df * (r.nf - 1);
    const double half_width = std::sqrt(centre * centre - half_band * half_band) * std::tan(0.5 * r.na * da);
    double largest = 0, worst = 0;
    for (int iy = 0; iy < ny; iy++) {
        for (int ix = 0; ix < nx; ix++) {
            const double x = (ix - nx / 2) * dx, y = (iy - ny / 2) * dy;
            complexd sum = 0;
            for (int j = 0; j < r.na; j++) {
                const double m = j - 0.5 * (r.na - 1), there = way(m, x, y);
                for (int i = 0; i < r.nf; i++) {
                    const double f = r.f1 + i * static_cast<double>(r.df);
                    const double dsq = std::pow(f * std::sin(m * da) / half_width, 2) +
                                       std::pow((f * std::cos(m * da) - centre) / half_band, 2);
                    if (dsq >= 1) continue;
                    const int k = 2 * (j * r.nf + i);
                    sum += complexd(s[k], s[k + 1]) * (f / centre * cirwght(static_cast<float>(dsq))) *
                           turn(2 * f * there / 300 - 2 * centre * y / 300);
                }
            }
            const int k = 2 * (iy * nx + ix);
            worst = std::max(worst, std::abs(complexd(z[k], z[k + 1]) - sum));
            largest = std::max(largest, std::abs(sum));
        }
    }
    EXPECT_GT(largest, 20);
    return worst / largest;
}

TEST(polarfor1, agrees_with_exact_geometry) {
    const radar r;
    const std::vector<float> s = turntable(r, {{0.6, -0.5}, {-0.9, 0.8}});
    constexpr int nx = 37, ny = 22;
    const float dx = 0.05F, dy = 0.07F;
    std::vector<float> z(2 * nx * ny, 99);
    polarfor1(s.data(), r.nf, r.na, r.f1, r.df, r.rc, r.de, r.da, nx, ny, dx, dy, 5, 300, z.data());
    // A step of the table is 2 pi / 8000, and phases of 1e5 steps are known to 1/128 of one.
    EXPECT_LT(worst_of(z, s, r, r.da, nx, ny, dx, dy,
                       [&](double m, double x0, double y0) {
                           const double rc = r.rc, th = m * r.da;
                           const double y = y0 * std::cos(th) - x0 * std::sin(th);
                           return std::sqrt(rc * rc + 2 * rc * std::cos(r.de) * y + x0 * x0 + y0 * y0) - rc;
                       }),
              1e-3);
}

// A rail that points across, without squint: the way from a place on the rail to a point.
TEST(polarfor2, agrees_with_exact_geometry) {
    const radar r = {.nf = 32, .na = 40, .f1 = 9000, .df = 30, .rc = 25};
    const int nx = 16, ny = 13;
    const float du = 0.05F, sa = 0.2F, dx = 0.1F, dy = 0.08F;
    std::mt19937 random(3);
    std::normal_distribution<float> normal;
    std::vector<float> s(2 * r.nf * r.na), z(2 * nx * ny);
    for (float& v : s) v = normal(random);
    polarfor2(s.data(), r.nf, r.na, r.f1, r.df, r.rc, du, sa, nx, ny, dx, dy, 5, 300, z.data());
    // Single precision knows phases of 1e7 steps to one step.
    EXPECT_LT(worst_of(z, s, r, std::cos(sa) * du / r.rc, nx, ny, dx, dy,
                       [&](double m, double x, double y) {
                           return std::hypot(x - m * std::cos(sa) * du, r.rc + y - m * std::sin(sa) * du);
                       }),
              5e-3);
}

TEST(polarfor1, refines_the_range_once_for_each_iteration) {
    // Close to the axis the wave front is curved: each iteration brings a point far off the axis closer to
    // its full amplitude, and more than five change nothing.
    radar r;
    r.rc = 4;
    const std::vector<float> s = turntable(r, {{0.8, 0.4}});
    std::vector<double> peak;
    std::vector<float> last;
    for (int ni = 1; ni <= 6; ni++) {
        std::vector<float> z(2 * 81 * 41);
        polarfor1(s.data(), r.nf, r.na, r.f1, r.df, r.rc, r.de, r.da, 81, 41, 0.025F, 0.025F, ni, 300,
                  z.data());
        const int k = 2 * ((20 + 16) * 81 + 40 + 32);
        peak.push_back(std::hypot(z[k], z[k + 1]));
        EXPECT_TRUE(ni < 6 || last == z);
        last = z;
    }
    EXPECT_LT(peak[0], 0.5 * peak[4]);
    EXPECT_NEAR(peak[2], peak[4], 0.02 * peak[4]);
}

TEST(polarfor1, gives_the_same_bits_with_one_thread_and_many_and_survives_any_numbers) {
    const radar r;
    std::vector<float> s = turntable(r, {{0.2, 0.3}}), one(2 * 64 * 64), many = one;
    const auto form = [&](std::vector<float>& z, float rc, float dx) {
        polarfor1(s.data(), r.nf, r.na, r.f1, r.df, rc, r.de, r.da, 64, 64, dx, 0.02F, 3, 300, z.data());
    };
    const int limit = parallel_limit(1);
    form(one, r.rc, 0.02F);
    parallel_limit(0);
    form(many, r.rc, 0.02F);
    EXPECT_EQ(one, many);
    for (const float absurd : {0.0F, -1.0F, 1e-30F, 1e30F, INFINITY, NAN}) {
        form(many, absurd, 0.02F); // no result to compare: must end
        form(many, r.rc, absurd);
    }
    s[100] = NAN;
    form(many, r.rc, 0.02F);
    parallel_limit(limit);
}

} // namespace
} // namespace norva
