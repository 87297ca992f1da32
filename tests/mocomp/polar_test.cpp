// Polar formatting: the table's entries, the sums against exact geometry, points brought to their places.
#include "mocomp/polar.h"

#include "polar_sum.h"
#include "signal/parallel.h"
#include "signal/weight.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstring>
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

// The kernels against remainder, rounding and table look-up written out; ties, borders of a cycle and large
// phases of both signs are among the phases.
TEST(polar_sum, uses_the_nearest_entry_and_the_same_bits_everywhere) {
    std::vector<float> table;
    for (int k = 0; k <= polar_cycle; k++) {
        table.push_back(static_cast<float>(std::cos(2 * std::numbers::pi * k / polar_cycle)));
        table.push_back(static_cast<float>(std::sin(2 * std::numbers::pi * k / polar_cycle)));
    }
    std::mt19937 random(7);
    std::uniform_real_distribution<float> uniform(-1, 1);
    constexpr int n = 48, samples = 300;
    std::vector<float> con1(samples), re(samples), im(samples), range(n);
    for (int i = 0; i < samples; i++) {
        con1[i] = i < 20 ? static_cast<float>(i + 1) : std::exp2(15 * std::fabs(uniform(random)));
        re[i] = uniform(random);
        im[i] = uniform(random);
    }
    const float chosen[] = {0,       0.5F,     1.5F, -0.5F, -1.5F,      3999.5F,   4000,  -4000,
                            7999.5F, -7999.5F, 8000, -8000, 7999.9995F, -0.00001F, 16000, 12000.25F};
    for (int i = 0; i < n; i++) range[i] = i < 16 ? chosen[i] : 3000 * uniform(random);
    for (const float con2 : {0.0F, 1234.5F, -7.5e6F}) {
        std::vector<float> expected(2 * n, 0.25F);
        for (int x = 0; x < n; x++) {
            for (int i = 0; i < samples; i++) {
                const float product = range[x] * con1[i];
                const float phase = product - con2;
                float a = std::fmod(phase, 8000.0F);
                if (a < 0) a += 8000.0F;
                const long k = std::lround(a);
                const float c = table[2 * k], s = table[2 * k + 1];
                const float cr = c * re[i], si = s * im[i], sr = s * re[i], ci = c * im[i];
                expected[2 * x] += cr - si;
                expected[2 * x + 1] += sr + ci;
            }
        }
        const polar_record record = {samples, con1.data(), re.data(), im.data(), table.data()};
        std::vector<polar_runner> runners = {polar_sum_base};
#if defined(__x86_64__)
        if (__builtin_cpu_supports("avx2")) runners.push_back(polar_sum_avx2);
#endif
        for (const polar_runner run : runners) {
            std::vector<float> z(2 * n, 0.25F);
            run(record, range.data(), con2, z.data(), n);
            EXPECT_EQ(0, std::memcmp(z.data(), expected.data(), z.size() * sizeof(float))) << con2;
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
