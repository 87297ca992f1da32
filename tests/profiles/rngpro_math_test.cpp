// Range profiles and the estimates of drift and centroid, on point targets and against direct sums.
#include "profiles/rngdft.h"
#include "profiles/rngpro.h"
#include "signal/parallel.h"
#include "signal/progress.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstring>
#include <thread>
#include <vector>

namespace norva {
namespace {

using test::noise;

// nt records of a unit target at range x gates that moves drift gates per record, as the exponent sign `is`
// sees it.
std::vector<float> target(int nf, int nt, double x, double drift, int is) {
    std::vector<float> a(2 * static_cast<std::size_t>(nf) * nt);
    for (int j = 0; j < nt; j++) {
        for (int k = 0; k < nf; k++) {
            double arg = -is * 2 * M_PI * k * (x + drift * j) / nf;
            a[2 * (static_cast<std::size_t>(j) * nf + k)] = static_cast<float>(std::cos(arg));
            a[2 * (static_cast<std::size_t>(j) * nf + k) + 1] = static_cast<float>(std::sin(arg));
        }
    }
    return a;
}

TEST(rngpro, direct_sums) {
    // B(j, r) at the range rho = r1 + (r-1) dr gates is the sum of W(k) A(j,k) exp(is 2 pi i k rho / nf), k
    // from 0.
    const int sizes[][2] = {{1, 2},     {2, 2},     {5, 5},    {64, 64},    {45, 45},
                            {100, 300}, {101, 108}, {75, 225}, {512, 2048}, {30, 120}};
    for (auto [nf, nr] : sizes) {
        for (int is : {+1, -1}) {
            const int nt = 3;
            std::vector<float> a = noise(2 * nf * nt, nf), b(2 * nr * nt), p(nr * nt);
            float r1 = 0, dr = 0;
            rngpro(a.data(), nf, nt, nr, is, &r1, &dr, b.data(), p.data());
            EXPECT_FLOAT_EQ(dr, static_cast<float>(nf) / nr);
            EXPECT_FLOAT_EQ(r1, -(nr / 2) * static_cast<float>(nf) / nr); // range 0 is element nr/2
            for (int j = 0; j < nt; j++) {
                for (int r = 0; r < nr; r++) {
                    std::complex<double> sum;
                    for (int k = 0; k < nf; k++) {
                        double w = 0.54 + 0.46 * std::cos(2 * M_PI * ((k + 0.5) / nf - 0.5));
                        double gate = r - static_cast<double>(nr / 2); // gates of the padded transform
                        sum += w * std::complex<double>(a[2 * (j * nf + k)], a[2 * (j * nf + k) + 1]) *
                               std::polar(1.0, is * 2 * M_PI * k * gate / nr);
                    }
                    const float* got = &b[2 * (j * nr + r)];
                    ASSERT_NEAR(got[0], sum.real(), 2e-6 * nf) << nf << " " << nr << " " << r;
                    ASSERT_NEAR(got[1], sum.imag(), 2e-6 * nf) << nf << " " << nr << " " << r;
                    ASSERT_FLOAT_EQ(p[j * nr + r], got[0] * got[0] + got[1] * got[1]);
                }
            }
        }
    }
}

TEST(rngpro, large_results_are_those_of_small_ones) {
    // What no longer fits the cache is written past it; even and odd numbers of gates, rows off the vectors'
    // boundaries.
    for (auto [nf, nr] : {std::pair(200, 400), {75, 225}}) {
        const int nt = 1 + (1 << 21) / (2 * nr);
        const std::size_t row = 2 * static_cast<std::size_t>(nr);
        std::vector<float> a = noise(2 * nf * nt, nr), b(row * nt), p(row / 2 * nt), b1(row), p1(row / 2);
        float r1 = 0, dr = 0;
        rngpro(a.data(), nf, nt, nr, -1, &r1, &dr, b.data(), p.data());
        for (int j = 0; j < nt; j++) {
            rngpro(&a[2 * static_cast<std::size_t>(nf) * j], nf, 1, nr, -1, &r1, &dr, b1.data(), p1.data());
            ASSERT_EQ(0, std::memcmp(&b[row * j], b1.data(), row * sizeof(float))) << nr << " " << j;
            ASSERT_EQ(0, std::memcmp(&p[row / 2 * j], p1.data(), row / 2 * sizeof(float))) << nr << " " << j;
        }
    }
}

TEST(rngpro, bad_samples_stay_in_their_record) {
    for (float bad : {NAN, INFINITY}) {
        std::vector<float> a = noise(2 * 30 * 5, 3), b(2 * 64 * 5), p(64 * 5);
        a[2 * 30 * 2 + 9] = bad;
        float r1 = 0, dr = 0;
        rngpro(a.data(), 30, 5, 64, 1, &r1, &dr, b.data(), p.data());
        for (int k = 0; k < 64 * 5; k++) ASSERT_EQ(std::isfinite(p[k]), k / 64 != 2) << k;
    }
    float r1 = 0, dr = 0;
    rngpro(nullptr, 30, 0, 64, 1, &r1, &dr, nullptr, nullptr); // no record
    EXPECT_EQ(r1, -15);
}

std::vector<int> reported;
std::thread::id reporting_thread;

TEST(rngpro, reports_about_fifty_times_in_order) {
    signal_hooks.progress = [](int indx, int) {
        reported.push_back(indx);
        reporting_thread = std::this_thread::get_id();
    };
    for (auto [nt, calls, step] : {std::tuple(49, 0, 0), {99, 0, 0}, {100, 50, 2}, {2048, 52, 40}}) {
        std::vector<float> a(2 * 8 * nt), b(2 * 16 * nt);
        float r1 = 0, dr = 0;
        reported.clear();
        rngpro(a.data(), 8, nt, 16, 1, &r1, &dr, b.data());
        ASSERT_EQ(reported.size(), static_cast<std::size_t>(calls)) << nt;
        for (int i = 0; i < calls; i++) EXPECT_EQ(reported[i], 1 + i * step);
        if (calls > 0) {
            EXPECT_EQ(reporting_thread, std::this_thread::get_id());
        }
    }
    signal_hooks.progress = [](int, int) {};
}

TEST(rngpro, same_bits_with_any_number_of_threads) {
    const int nf = 100, nt = 700, nr = 400;
    std::vector<float> a = noise(2 * nf * nt, 9), one(2 * nr * nt), many(2 * nr * nt), p1(nr * nt),
                       p2(nr * nt);
    float r1 = 0, dr = 0;
    int before = parallel_limit(1);
    rngpro(a.data(), nf, nt, nr, 1, &r1, &dr, one.data(), p1.data());
    float dft1 = 0, slr1 = 0, dft2 = 0, slr2 = 0;
    rngdft(a.data(), nf, nt, 1, &dft1, &slr1);
    parallel_limit(0);
    rngpro(a.data(), nf, nt, nr, 1, &r1, &dr, many.data(), p2.data());
    rngdft(a.data(), nf, nt, 1, &dft2, &slr2);
    parallel_limit(before);
    EXPECT_EQ(0, std::memcmp(one.data(), many.data(), one.size() * sizeof(float)));
    EXPECT_EQ(0, std::memcmp(p1.data(), p2.data(), p1.size() * sizeof(float)));
    EXPECT_EQ(dft1, dft2);
    EXPECT_EQ(slr1, slr2);
}

TEST(rngpro_stops, limits) {
    std::vector<float> a(2 * 1025), b(2 * 4100);
    float r1 = 0, dr = 0;
    rngpro(a.data(), 1024, 1, 4096, 1, &r1, &dr, b.data());
    EXPECT_DEATH(rngpro(a.data(), 8, 1, 4097, 1, &r1, &dr, b.data()), "STOP #2 IN RNGPRO");
    EXPECT_DEATH(rngpro(a.data(), 1025, 1, 4096, 1, &r1, &dr, b.data()), "STOP #3 IN RNGPRO");
    float dft = 0, slr = 0;
    rngdft(a.data(), 1024, 1, 1, &dft, &slr);
    EXPECT_EXIT(rngdft(a.data(), 1025, 1, 1, &dft, &slr), testing::ExitedWithCode(1), "^\n$");
    EXPECT_EXIT(rngdft(a.data(), 8, 1, 0, &dft, &slr), testing::ExitedWithCode(1), "^\n$");
    EXPECT_EXIT(rngdft(a.data(), 8, 1, 11, &dft, &slr), testing::ExitedWithCode(1), "^\n$");
}

TEST(rngdft, drift_of_a_target) {
    // Positive and negative, over more than one record, and folded beyond nf/2.
    const int nf = 64, nt = 20;
    for (int lag : {1, 3, 10}) {
        for (double drift : {0.0, 0.37, -1.25, 3.0}) {
            std::vector<float> a = target(nf, nt, 5, drift, +1);
            float dft = 99, slr = 99;
            rngdft(a.data(), nf, nt, lag, &dft, &slr);
            EXPECT_NEAR(dft, drift, 0.01) << lag;
            EXPECT_NEAR(10 * std::log10(slr), -43, 1.5); // sidelobes of the Hamming weight
        }
    }
    std::vector<float> a = target(nf, nt, 5, 40, +1);
    float dft = 99, slr = 99;
    rngdft(a.data(), nf, nt, 1, &dft, &slr);
    EXPECT_NEAR(dft, 40 - nf, 0.01);
    rngdft(a.data(), nf, 4, 4, &dft, &slr);
    EXPECT_EQ(dft, 0);
    EXPECT_EQ(slr, 0);
}

TEST(rngcen, range_of_a_target) {
    for (double x : {0.0, 4.25, -20.0}) {
        std::vector<float> a = target(64, 3, x, 0, +1);
        EXPECT_NEAR(rngcen(a.data(), 64, 3), x, 1e-4);
    }
}

} // namespace
} // namespace norva
