// The application of delays, their correction and the transpositions, against closed forms.
#include "mocomp/mocomp.h"
#include "mocomp/trnpos.h"
#include "phase.h"
#include "signal/parallel.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <vector>

namespace norva {
namespace {

using test::noise;

// Largest difference between mocomp's result on noise and exp(2 pi i f d(t)) at the time t = j + i*rh/nf of
// each sample, over the records first..nt-1-last.
double delay_error(int nf, int nt, float f1, float df, float rh, const std::function<double(double)>& d,
                   int margin = 0) {
    std::vector<double> delays(nt + 1);
    for (int j = 0; j <= nt; j++) delays[j] = d(j);
    std::vector<float> in = noise(2 * nf * nt, nf), x = in;
    mocomp(x.data(), nf, nt, f1, df, rh, delays.data());
    double error = 0;
    for (int j = margin; j < nt - margin; j++) {
        for (int i = 0; i < nf; i++) {
            double f = f1 + static_cast<double>(df) * i;
            double cycles = f * d(j + static_cast<double>(rh) * i / nf);
            double arg = 2 * M_PI * (cycles - std::floor(cycles));
            const float *a = &in[2 * (j * nf + i)], *b = &x[2 * (j * nf + i)];
            error = std::fmax(error, std::fabs(b[0] - (a[0] * std::cos(arg) - a[1] * std::sin(arg))));
            error = std::fmax(error, std::fabs(b[1] - (a[0] * std::sin(arg) + a[1] * std::cos(arg))));
        }
    }
    return error;
}

TEST(mocomp, turns_each_sample_by_its_delay) {
    auto constant = [](double) { return -0.0375; };
    auto line = [](double t) { return 0.25 - 0.003 * t; };
    auto parabola = [](double t) { return 1e-4 * t * t - 0.01 * t + 0.3; };
    auto cubic = [](double t) { return 1e-5 * t * t * t - 2e-4 * t * t; };
    for (int nf : {1, 7, 8, 64, 101}) {
        for (float rh : {0.0F, 0.3F, 1.0F}) {
            EXPECT_LT(delay_error(nf, 12, 9288, 1.4713F, rh, constant), 2e-6) << nf << " " << rh;
            EXPECT_LT(delay_error(nf, 12, 9288, 1.4713F, rh, line), 2e-6) << nf << " " << rh;
            EXPECT_LT(delay_error(nf, 2, 300, -0.5F, rh, line), 2e-6) << nf << " " << rh;
            EXPECT_LT(delay_error(nf, 1, 100, 1, rh, line), 2e-6) << nf << " " << rh;
            EXPECT_LT(delay_error(nf, 3, 100, 1, rh, parabola), 2e-6) << nf << " " << rh;
            EXPECT_LT(delay_error(nf, 12, 9288, 1.4713F, rh, parabola), 2e-6) << nf << " " << rh;
            EXPECT_LT(delay_error(nf, 12, 9288, 1.4713F, rh, cubic, 1), 2e-6) << nf << " " << rh;
        }
    }
}

TEST(mocomp, keeps_the_phase_at_many_cycles) {
    // 3e7 microseconds at 16 GHz are 5e11 cycles, of which double precision resolves 1e-4: the delay's own
    // rounding.
    EXPECT_LT(delay_error(16, 4, 16384, 1, 0, [](double) { return 1024.0 + 1.0 / 1024; }), 2e-6);
    EXPECT_LT(delay_error(16, 4, 16384, 1, 0, [](double t) { return -3e4 - t; }), 2e-6);
}

TEST(mocomp, bad_numbers_pass_through) {
    // An infinite or immense delay spoils the records whose cubic it enters, and no other.
    for (double bad : {static_cast<double>(INFINITY), static_cast<double>(NAN), 1e308}) {
        std::vector<float> x(2 * 16 * 8, 1.0F);
        std::vector<double> d(9, 0.0);
        d[5] = bad;
        mocomp(x.data(), 16, 8, 1e10F, 1, 0, d.data());
        EXPECT_FALSE(std::isfinite(x[2 * 16 * 5 + 3]));
        for (int k : {0, 16, 31}) {
            EXPECT_EQ(x[k], 1.0F);
            EXPECT_EQ(x[2 * 16 * 7 + k], 1.0F);
        }
    }
}

TEST(mocomp, same_bits_with_any_number_of_threads) {
    std::vector<double> d(1001);
    for (int j = 0; j <= 1000; j++) d[j] = std::sin(0.01 * j);
    std::vector<float> one = noise(2 * 300 * 1000, 1), many = one;
    int before = parallel_limit(1);
    mocomp(one.data(), 300, 1000, 9000, 1.5F, 0.9F, d.data());
    parallel_limit(0);
    mocomp(many.data(), 300, 1000, 9000, 1.5F, 0.9F, d.data());
    parallel_limit(before);
    EXPECT_EQ(0, std::memcmp(one.data(), many.data(), one.size() * sizeof(float)));
}

TEST(mocomp, same_bits_on_every_processor) {
    if (!__builtin_cpu_supports("avx2")) GTEST_SKIP() << "one kind of code only";
    for (int nf : {1, 8, 13, 300}) {
        std::vector<double> tables(5 * 304);
        for (int i = 0; i < nf; i++) {
            for (int k = 0; k < 5; k++) tables[k * 304 + i] = 1.7 * k + std::sin(0.3 * i * (k + 1));
        }
        const double* t = tables.data();
        const phase_tables record = {nf, t + 4 * 304, {t, t + 304, t + 2 * 304, t + 3 * 304}};
        const double delays[] = {0.1, -20.5, 300.25, 1e6};
        std::vector<float> one = noise(2 * nf, nf), other = one;
        turn_record_avx2(record, delays, one.data());
        turn_record_base(record, delays, other.data());
        EXPECT_EQ(one, other) << nf;
    }
}

TEST(mocomp_stops, limits) {
    std::vector<float> x(8);
    std::vector<double> d(9000), b(9000);
    EXPECT_DEATH(mocomp(x.data(), 1, 4, 1, 1, 1.01F, d.data()), "STOP IN MOCOMP");
    EXPECT_DEATH(mocomp(x.data(), 1, 4, 1, 1, -0.01F, d.data()), "STOP IN MOCOMP");
    EXPECT_DEATH(mocomp(x.data(), 1, 4, 1, 1, NAN, d.data()), "STOP IN MOCOMP");
    rngcor(d.data(), 8192, 1, 0, 7, nullptr, 0);
    rngcor(d.data(), 7, 1, 0, 7, nullptr, 0);
    EXPECT_DEATH(rngcor(d.data(), 8193, 1, 0, 7, nullptr, 0), "STOP IN RNGCOR");
    EXPECT_DEATH(rngcor(d.data(), 6, 1, 0, 7, nullptr, 0), "stop in rngcor");
    EXPECT_DEATH(drv(d.data(), b.data(), 1, 0, 100), "stop in drv");
    EXPECT_DEATH(drv(d.data(), b.data(), 1, 8, 100), "stop in drv");
}

TEST(drv, powers_have_their_derivatives) {
    // Order n of t^n is n! everywhere. Order n of t^(n+1) is (n+1)! t; central differences find it exactly,
    // one-sided ones give the value half their extent, n dt/2, further in.
    const int npts = 20;
    const double dt = 0.5;
    const int edge_points[] = {1, 1, 2, 2, 3, 3, 4};
    for (int n = 1; n <= 7; n++) {
        std::vector<double> same(npts), next(npts), b(npts);
        for (int i = 0; i < npts; i++) {
            double t = dt * (i - 8);
            same[i] = std::pow(t, n);
            next[i] = std::pow(t, n + 1);
        }
        double factorial = std::tgamma(n + 1);
        drv(same.data(), b.data(), dt, n, npts);
        for (int i = 0; i < npts; i++) EXPECT_NEAR(b[i], factorial, 1e-7 * factorial) << n << " " << i;
        drv(next.data(), b.data(), dt, n, npts);
        for (int i = 0; i < npts; i++) {
            double t = dt * (i - 8);
            if (i < edge_points[n - 1]) t += 0.5 * n * dt;
            if (i >= npts - edge_points[n - 1]) t -= 0.5 * n * dt;
            EXPECT_NEAR(b[i], factorial * (n + 1) * t, 1e-6 * factorial * (n + 1)) << n << " " << i;
        }
    }
}

TEST(rngcor, parabola_in_closed_form) {
    // T = c t^2: T' = 2 c t (one-sided at the ends: c (2t +- tr)), T'' = 2 c, the rest 0.
    const int n = 12;
    const double tr = 2.0, c = 3e-3;
    for (double ts : {0.0, 0.7}) {
        std::vector<double> t(n);
        for (int i = 0; i < n; i++) t[i] = c * (tr * i) * (tr * i);
        std::vector<double> before = t;
        rngcor(t.data(), n, tr, ts, 7, nullptr, 0);
        for (int i = 0; i < n; i++) {
            double slope = c * (2 * tr * i + (i == 0 ? tr : i == n - 1 ? -tr : 0));
            double want = before[i] - (before[i] / 2 + ts) * (slope - ts * 2 * c);
            EXPECT_NEAR(t[i], want, 1e-9) << i << " " << ts;
        }
    }
    double tr_us = 0, ts_us = 0;
    rngcor_get(0.25F, 500, 9750, 0.125F, &tr_us, &ts_us); // (9750/500 + 0.5) * 0.125 s
    EXPECT_DOUBLE_EQ(tr_us, 250000);
    EXPECT_DOUBLE_EQ(ts_us, 2.5e6);
    rngcor_get(0.25F, 0, 9750, 0.125F, &tr_us, &ts_us);
    EXPECT_EQ(ts_us, 0);
}

TEST(trnpos, rows_become_columns) {
    for (auto [nx, ny] : {std::pair(1, 1), {1, 9}, {5, 3}, {33, 70}, {128, 64}}) {
        std::vector<float> a = noise(2 * nx * ny, nx), b(2 * nx * ny), back(2 * nx * ny);
        trnpos(a.data(), nx, ny, b.data());
        for (int k = 0; k < ny; k++) {
            for (int i = 0; i < nx; i++) ASSERT_EQ(b[i * ny + k], a[k * nx + i]);
        }
        trnpoc(a.data(), nx, ny, b.data());
        EXPECT_EQ(b[2 * (nx - 1) * ny + 1], a[2 * (nx - 1) + 1]);
        trnpoc(b.data(), ny, nx, back.data());
        EXPECT_EQ(back, a);
    }
}

} // namespace
} // namespace norva
