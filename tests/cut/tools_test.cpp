// Curves as amplitude and phase, phase jumps, axis limits, and two scatterers in closed form.
#include "angle_kernels.h"
#include "cut/curve.h"
#include "cut/scatterer.h"
#include "driver.h"
#include "signal/processor.h"
#include "support/reference.h"

#include <algorithm>

namespace norva {
namespace {

using namespace cut_test;
using test::noise;

TEST(curve, amplitude_and_phase_and_back) {
    const int n = 4099;
    std::vector<float> x = noise(2 * n, 3), am(n), ph(n), y(2 * n);
    x[0] = x[1] = 0; // the origin has no angle
    x[20] = -1, x[21] = 0;
    for (int ks : {1, -1}) {
        amphs(x.data(), n, ks, am.data(), ph.data());
        aptocx(am.data(), ph.data(), n, ks, y.data());
        const float peak = *std::max_element(am.begin(), am.end());
        for (int k = 0; k < n; k++) {
            EXPECT_NEAR(am[k], std::hypot(x[2 * k], x[2 * k + 1]), 1e-6);
            if (am[k] <= 0.01F * peak) continue;
            // Unwrapped phases reach some hundred cycles, of which a float keeps less.
            EXPECT_NEAR(y[2 * k], x[2 * k], 3e-4) << k;
            EXPECT_NEAR(y[2 * k + 1], x[2 * k + 1], 3e-4) << k;
            const double angle = ks * std::atan2(x[2 * k + 1], x[2 * k]) / (2 * M_PI);
            EXPECT_NEAR(std::remainder(ph[k] - angle, 1.0), 0, 3e-5) << k;
        }
    }
}

TEST(curve, angles_keep_single_precision) {
    for (int k = -4000; k <= 4000; k++) {
        const double turn = k / 8000.0 * 1.001;
        std::vector<float> x = {static_cast<float>(3 * std::cos(2 * M_PI * turn)),
                                static_cast<float>(3 * std::sin(2 * M_PI * turn))};
        float am = 0, ph = 0;
        amphs(x.data(), 1, 1, &am, &ph);
        EXPECT_NEAR(std::remainder(ph - turn, 1.0), 0, 6e-8) << turn;
        const float one = 1, cycles = static_cast<float>(turn * 9);
        float e[2];
        aptocx(&one, &cycles, 1, 1, e);
        EXPECT_NEAR(e[0], std::cos(2 * M_PI * cycles), 3e-7) << cycles;
        EXPECT_NEAR(e[1], std::sin(2 * M_PI * cycles), 3e-7) << cycles;
    }
}

TEST(curve, phases_of_weak_samples_lie_on_lines) {
    // 0.3 cycles a sample; samples 0, 1, 5, 6, 7 and 11 are too weak to have a phase.
    const int n = 12;
    std::vector<float> x(2 * n), am(n), ph(n);
    for (int k = 0; k < n; k++) {
        const bool weak = k < 2 || (k > 4 && k < 8) || k == 11;
        const auto v = std::polar(weak ? 1e-3 : 1.0, weak ? 1.0 : 2 * M_PI * 0.3 * k);
        x[2 * k] = static_cast<float>(v.real());
        x[2 * k + 1] = static_cast<float>(v.imag());
    }
    amphs(x.data(), n, 1, am.data(), ph.data());
    for (int k = 0; k < n; k++) {
        // Across the gap of four steps, 1.2 cycles, only the part of a cycle is known.
        const double line = k < 5 ? 0.3 * k - 1 : k < 8 ? 0.2 + 0.05 * (k - 4) : 0.3 * k - 2;
        EXPECT_NEAR(ph[k], line, 1e-6) << k;
    }
    std::fill(x.begin(), x.end(), 0.0F);
    amphs(x.data(), n, 1, am.data(), ph.data());
    EXPECT_EQ(ph, std::vector<float>(n, 0.0F));
}

// Steps of any size, and from no weak samples over runs and single ones to nothing but weak ones.
TEST(curve, phases_follow_the_strong_samples_one_by_one) {
    for (int n : {1, 2, 7, 8, 33, 64, 1001}) {
        for (double part_weak : {0.0, 0.02, 0.5, 0.98, 1.0}) {
            const std::vector<float> random = noise(3 * n, static_cast<unsigned>(n));
            std::vector<float> x(2 * n), am(n), ph(n);
            std::vector<int> strong;
            for (int k = 0; k < n; k++) {
                const bool weak = 0.5 * (random[k] + 1) < part_weak;
                const auto v = std::polar(weak ? 1e-4 : 1 + 0.5 * random[n + k], M_PI * random[2 * n + k]);
                x[2 * k] = static_cast<float>(v.real());
                x[2 * k + 1] = static_cast<float>(v.imag());
                if (!weak) strong.push_back(k);
            }
            if (strong.empty()) x[0] = 1, x[1] = 0, strong.assign(1, 0);
            amphs(x.data(), n, 1, am.data(), ph.data());
            std::vector<double> want(strong.size());
            double before = 0;
            for (std::size_t j = 0; j < strong.size(); j++) {
                const int k = strong[j];
                const double cycles = std::atan2(x[2 * k + 1], x[2 * k]) / (2 * M_PI);
                before += std::remainder(cycles - before, 1.0);
                want[j] = before;
            }
            for (int k = 0; k < n; k++) {
                // The strong samples on both sides, or the nearest two on one.
                const auto next = std::lower_bound(strong.begin(), strong.end(), k) - strong.begin();
                const auto last = std::ssize(strong) - 1;
                const auto a = std::clamp<std::ptrdiff_t>(next - 1, 0, std::max<std::ptrdiff_t>(last - 1, 0));
                const auto b = std::min(a + 1, last);
                const double slope = b > a ? (want[b] - want[a]) / (strong[b] - strong[a]) : 0;
                const double tolerance = 2e-5 * (1 + std::fabs(want[a]) + std::fabs((k - strong[a]) * slope));
                EXPECT_NEAR(ph[k], want[a] + (k - strong[a]) * slope, tolerance) << n << ' ' << k;
            }
        }
    }
}

TEST(curve, amplitudes_of_all_magnitudes) {
    for (float size : {1e-36F, 1.0F, 1e36F}) {
        std::vector<float> x = {3 * size, 4 * size, 0, 0, 0, -size}, w = {1, 2, 0.5F}, am(3), ph(3), back(6);
        amphs(x.data(), 3, 1, am.data(), ph.data());
        aptocx(am.data(), ph.data(), 3, 1, back.data());
        std::vector<float> real = x;
        rectify(real.data(), 3);
        for (int k = 0; k < 6; k++) {
            EXPECT_NEAR(back[k] / size, x[k] / size, 1e-5) << size;
            EXPECT_NEAR(real[k] / size, k % 2 == 0 ? std::hypot(x[k] / size, x[k + 1] / size) : 0, 1e-5)
                << size;
        }
        equalize(x.data(), w.data(), 3, scale_of(x.data(), 3), 10);
        const std::vector<float> want = {6, 8, 0, 0, 0, -5};
        for (int k = 0; k < 6; k++) EXPECT_NEAR(x[k], want[k], 1e-5) << size;
    }
}

TEST(curve, scale_survives_all_magnitudes) {
    for (float size : {1e-40F, 1e-30F, 1.0F, 1e30F, 3e38F}) {
        std::vector<float> x = {0, 0, 0.6F * size, 0.8F * size, -0.1F * size, 0};
        float scale = 0;
        ampscl(x.data(), 3, &scale);
        EXPECT_NEAR(scale / size, 1, 1e-4);
        EXPECT_NEAR(x[2], 0.6F, 1e-4F);
        EXPECT_NEAR(x[4], -0.1F, 1e-4F);
    }
    std::vector<float> zero(6), bad = {1, 2, NAN, 0, 1, 1}, infinite = {1, INFINITY, 0, 0, 0, 0};
    float scale = -1;
    ampscl(zero.data(), 3, &scale);
    EXPECT_EQ(scale, 0);
    for (auto* x : {&bad, &infinite}) {
        ampscl(x->data(), 3, &scale);
        EXPECT_EQ(scale, INFINITY);
    }
}

TEST(curve, turns_by_a_line_and_by_samples_agree_with_the_exponential) {
    const int n = 1000;
    const double step = 0.37123, start = -12.6;
    std::vector<float> x = noise(2 * n, 5), line = x, each = x, ph(n);
    for (int k = 0; k < n; k++) ph[k] = static_cast<float>(std::remainder(k * step + start, 1.0));
    turn_line(line.data(), n, step, start);
    turn(each.data(), n, 1, ph.data());
    for (int k = 0; k < n; k++) {
        const auto want =
            std::complex<double>(x[2 * k], x[2 * k + 1]) * std::polar(1.0, 2 * M_PI * (k * step + start));
        EXPECT_NEAR(line[2 * k], want.real(), 1e-6) << k;
        EXPECT_NEAR(line[2 * k + 1], want.imag(), 1e-6) << k;
        EXPECT_NEAR(each[2 * k], want.real(), 2e-6) << k;
        EXPECT_NEAR(each[2 * k + 1], want.imag(), 2e-6) << k;
    }
}

TEST(curve, every_processor_gives_the_same_bits) {
    if (!has_avx2()) GTEST_SKIP();
    const int n = 1003;
    const std::vector<float> x = noise(2 * n, 8);
    std::vector<std::vector<float>> results;
    for (const angle_kernels* of : {&angle_kernels_base, &angle_kernels_avx2}) {
        std::vector<float> r(10 * n), turned = x, level = x;
        float* at = r.data();
        of->parts(x.data(), n, 1, 0.7F, -1, at, at + n, at + 2 * n, at + 3 * n);
        at[0] = at[n - 1] = 1;
        std::vector<float> room(n);
        of->join(at, 0.5F, n, at + n, room.data());
        of->cartesian(at, at + n, n, -1, at + 4 * n);
        of->turn(turned.data(), n, 1, at + n);
        std::copy(turned.begin(), turned.end(), at + 6 * n);
        of->equalize(level.data(), at, n, 2, 0.3F);
        std::copy(level.begin(), level.end(), at + 8 * n);
        results.push_back(r);
    }
    EXPECT_EQ(results[0], results[1]);
}

TEST(curve, differences) {
    std::vector<float> a = {1, 4, 9, 16, 25};
    differ(a.data(), 5, a.data());
    EXPECT_EQ(a, (std::vector<float>{3, 4, 6, 8, 9}));
    std::vector<float> one = {7};
    differ(one.data(), 1, one.data());
    EXPECT_EQ(one[0], 0);
}

TEST(phsjmp, told_jumps_are_spread_over_the_interval) {
    std::vector<float> p(10, 1.0F);
    phsjmp(p.data(), 10, 4, 8, 0.4F);
    const std::vector<float> spread = {1, 1, 1, 1, 0.9F, 0.8F, 0.7F, 0.6F, 0.6F, 0.6F};
    for (int k = 0; k < 10; k++) EXPECT_NEAR(p[k], spread[k], 1e-6) << k;
    // Intervals too near the ends, or upside down, do nothing.
    for (auto [k1, k2] : {std::pair(2, 5), {5, 5}, {6, 5}, {4, 9}, {-3, 4}}) {
        std::vector<float> q(10, 1.0F);
        phsjmp(q.data(), 10, k1, k2, 0.4F);
        EXPECT_EQ(q, std::vector<float>(10, 1.0F)) << k1 << " " << k2;
    }
}

TEST(phsjmp, jumps_are_found_with_their_size) {
    for (float size : {0.45F, -0.45F, 0.1F}) {
        for (int width : {1, 2, 4}) { // samples that the jump takes
            for (int k1 : {18, 20, 23}) {
                std::vector<float> p(50), line(50);
                for (int k = 1; k <= 50; k++) {
                    line[k - 1] = 0.02F * static_cast<float>(k) - 3;
                    const float done =
                        std::clamp(static_cast<float>(k - 21) / static_cast<float>(width), 0.0F, 1.0F);
                    p[k - 1] = line[k - 1] + size * done;
                }
                phsjmp(p.data(), 50, k1, 24, 0);
                for (int k = 0; k < 50; k++)
                    EXPECT_NEAR(p[k], line[k], 2e-5) << size << " " << width << " " << k;
            }
        }
    }
    std::vector<float> flat(20, 0.5F);
    phsjmp(flat.data(), 20, 8, 12, 0);
    EXPECT_EQ(flat, std::vector<float>(20, 0.5F));
}

TEST(phslim, limits_hold_the_strong_samples) {
    const std::vector<float> a = {1, 0.5F, 0.06F, 0.04F, NAN};
    struct row {
        std::vector<float> p;
        float low, high;
    };
    const row rows[] = {
        {{0.1F, 0.2F, 0.3F, 99, 0}, 0, 0.5F},    {{-0.1F, 0.2F, 0.3F, 99, 0}, -0.5F, 0.5F},
        {{-0.6F, 1.2F, 0.3F, -99, 0}, -1, 1.5F}, {{-70.2F, -60.1F, -65, 0, 0}, -72, -60},
        {{3.1F, 40.2F, 0.3F, 0, 0}, 0, 45},
    };
    for (const row& r : rows) {
        float low = -9, high = -9;
        phslim(a.data(), r.p.data(), 5, &low, &high);
        EXPECT_EQ(low, r.low);
        EXPECT_EQ(high, r.high);
        EXPECT_LE(low, *std::min_element(r.p.begin(), r.p.begin() + 3));
    }
    float low = -9, high = -9;
    const std::vector<float> none(5, 0.0F), bad(5, INFINITY);
    phslim(none.data(), bad.data(), 5, &low, &high);
    EXPECT_LT(low, high);
}

TEST(readjp, takes_the_nearest_branch) {
    phase_estimate e;
    const double turns[] = {0.1, 0.5, 0.9, 1.3,
                            1.7, 2.1, 1.8, -0.3 + 2}; // each within half a turn of the last
    for (double t : turns) {
        const auto wrapped = static_cast<float>(2 * M_PI * std::remainder(t, 1.0));
        EXPECT_NEAR(readjp(wrapped, e) / (2 * M_PI), t, 1e-6);
    }
}

TEST(alpha, is_the_first_moment_of_the_added_phase) {
    // For small a the added phase is a sin(x t): the moment over -1..1 is 2 a (sin x / x^2 - cos x / x).
    const double x = 2.2, a = 1e-3;
    EXPECT_NEAR(alpha(1e-3F, 2.2F, 0, -1, 1, 1000), 2 * a * (std::sin(x) / (x * x) - std::cos(x) / x), 1e-7);
    EXPECT_EQ(alpha(0.5F, 1, 0, -1, 1, 0), 0);
}

struct pair_case {
    double strong, weak, ratio, shift; // places, gates; weaker over stronger; place of the first null
};

// Both at 128 samples of -0.5..0.5. The nulls stand where the two are opposite.
TEST(scatinta1, finds_two_scatterers_in_closed_form) {
    const int n = 128;
    const pair_case cases[] = {{0.3, 1.8, 0.7, -0.35}, {1.8, 0.3, 0.7, -0.35}, {-4, -5.4, 0.5, -0.4},
                               {12, 13.7, 0.9, -0.3},  {0, -1.25, 0.3, -0.42}, {-20, -18, 0.8, -0.2}};
    for (const pair_case& c : cases) {
        for (int itrans : {1, -1}) {
            const double separation = c.weak - c.strong, t1 = c.shift, t2 = t1 + 1 / std::fabs(separation);
            const double first = 0.8, second = first + M_PI - 2 * M_PI * separation * t1;
            std::vector<float> amp(n), phase(n);
            for (int k = 0; k < n; k++) {
                const double t = static_cast<double>(k) / n - 0.5;
                const auto v = std::polar(2.0, 2 * M_PI * c.strong * t + first) +
                               std::polar(2.0 * c.ratio, 2 * M_PI * c.weak * t + second);
                amp[k] = static_cast<float>(std::abs(v));
                phase[k] = static_cast<float>(itrans * std::arg(v));
            }
            auto number = [&](double t) { return static_cast<float>((t + 0.5) * n + 1); };
            const double margin = 0.12 * (t2 - t1);
            float f1, f2, a1, a2, p1, p2;
            int ierr = -1;
            scatinta1(amp.data(), phase.data(), n, 0, static_cast<int>(number(t1 + margin)),
                      static_cast<int>(number(t2 - margin)), 1 - 1.0F / n, "H", "Y", &ierr, -0.5F, itrans,
                      number(t1), number(t2), static_cast<float>(std::asin(c.ratio) / M_PI), &f1, &f2, &a1,
                      &a2, &p1, &p2);
            EXPECT_EQ(ierr, 0);
            EXPECT_NEAR(f1, c.strong, 0.03) << c.strong << " " << c.weak;
            EXPECT_NEAR(f2, c.weak, 0.03) << c.strong << " " << c.weak;
            EXPECT_NEAR(a1, 2, 0.02);
            EXPECT_NEAR(a2, 2 * c.ratio, 0.02);
            EXPECT_NEAR(std::remainder(p1 - first, 2 * M_PI), 0, 0.1);
            EXPECT_NEAR(std::remainder(p2 - second, 2 * M_PI), 0, 0.15);
        }
    }
}

TEST(scatinta1, odd_input) {
    const int n = 64;
    std::vector<float> amp(n, 1.0F), phase(n);
    for (int k = 0; k < n; k++)
        phase[k] = static_cast<float>(2 * M_PI * 3 * (static_cast<double>(k) / n - 0.5));
    float f1, f2, a1, a2, p1, p2;
    int ierr = -1;
    auto run = [&](int samples, int tau1, int tau2, float jump, const char* kind, const char* dew) {
        scatinta1(amp.data(), phase.data(), samples, 0, tau1, tau2, 1 - 1.0F / n, kind, dew, &ierr, -0.5F, 1,
                  10, 50, jump, &f1, &f2, &a1, &a2, &p1, &p2);
    };
    run(2, 1, 2, 0.3F, "H", "Y");
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(f1, 0);
    run(n, 12, 48, 0, "H", "Y"); // no jump: one scatterer
    EXPECT_EQ(ierr, 0);
    EXPECT_NEAR(f1, 3, 1e-3);
    EXPECT_EQ(a1, 1);
    EXPECT_EQ(a2, 0);
    run(n, 12, 12, 0, "H", "Y"); // an interval of one sample has no slope
    EXPECT_EQ(f1, 0);
    // A weighting that is still there is taken out; the factors are those of its mean.
    hamwt(amp.data(), n, 0);
    run(n, 12, 48, 0, "S", "N");
    EXPECT_NEAR(a1, 1, 1e-5);
    run(n, 12, 48, 0, "H", "N");
    EXPECT_NEAR(a1, 0.54, 1e-5);
    for (int k = 1; k <= n; k++) amp[k - 1] = taylor(k, n);
    run(n, 12, 48, 0, "T", "N");
    EXPECT_NEAR(a1, 1, 1e-5);
    for (int k = 1; k <= n; k++) amp[k - 1] = asarwt(k, n);
    run(n, 12, 48, 0, "a", "N");
    EXPECT_NEAR(a1, 0.61, 1e-5);
}

} // namespace
} // namespace norva
