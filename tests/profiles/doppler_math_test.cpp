// Doppler profiles against direct sums over windows placed by hand, and the Doppler rate on chirps.
#include "profiles/dopdft.h"
#include "profiles/dopprof.h"
#include "signal/numbers.h"
#include "signal/parallel.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
#include <thread>
#include <vector>

namespace norva {
namespace {

using test::noise;

struct stack {
    int nc = -1;
    float t1 = 0;
    std::vector<float> b, w;
};

stack profiles(const std::vector<float>& a, int ni, int nf, int lg, int is) {
    const int nt = static_cast<int>(a.size() / 2);
    stack s;
    const std::size_t rows = dopprof_count(nt, ni, lg);
    s.b.assign(rows * nf + 1, -1);
    s.w.assign(rows + 1, -1);
    dopprof(a.data(), nt, ni, nf, lg, is, &s.nc, s.b.data(), s.w.data(), &s.t1);
    EXPECT_EQ(s.b.back(), -1);
    EXPECT_EQ(s.w.back(), -1);
    return s;
}

TEST(dopprof, direct_sums) {
    const struct {
        int nt, ni, nf, lg;
    } cases[] = {{40, 8, 8, 1},   {40, 8, 32, 3},  {41, 7, 8, 1},   {41, 7, 15, 2},
                 {12, 12, 12, 1}, {13, 13, 45, 5}, {5, 2, 4, 100},  {9, 3, 3, 1000},
                 {30, 1, 2, 4},   {3, 1, 2, 1},    {100, 25, 25, 7}};
    for (const auto& c : cases) {
        for (int is : {1, -1}) {
            const std::vector<float> a = noise(2 * static_cast<std::size_t>(c.nt), c.nt + c.ni);
            const stack s = profiles(a, c.ni, c.nf, c.lg, is);
            ASSERT_GE(s.nc, 1);
            // What is left over at both ends is the same, or one record more at the later one.
            const double last = s.t1 + static_cast<double>(s.nc - 1) * c.lg, spare = c.nt - last - (s.t1 - 1);
            EXPECT_TRUE(spare >= 0 && spare <= 1) << c.nt << " " << c.ni << " " << c.lg << ": " << spare;
            for (int i = 0; i < s.nc; i++) {
                // The widest window of the right parity around the centre that lies in the data.
                const double t = s.t1 + static_cast<double>(i) * c.lg;
                int nw = c.ni;
                while (t - 0.5 * (nw - 1) < 1 || t + 0.5 * (nw - 1) > c.nt) nw -= 2;
                EXPECT_FLOAT_EQ(s.w[i], static_cast<float>(nw) / c.ni);
                const int first = static_cast<int>(t - 0.5 * (nw - 1)) - 1;
                for (int d = 0; d < c.nf; d++) {
                    std::complex<double> sum;
                    for (int m = 0; m < nw; m++) {
                        const double h = 0.54 + 0.46 * std::cos(2 * M_PI * ((m + 0.5) / nw - 0.5));
                        const float* x = &a[2 * static_cast<std::size_t>(first + m)];
                        sum += h * std::complex<double>(x[0], x[1]) *
                               std::polar(1.0, is * 2 * M_PI * m * static_cast<double>(d - c.nf / 2) / c.nf);
                    }
                    ASSERT_NEAR(s.b[static_cast<std::size_t>(i) * c.nf + d], std::norm(sum),
                                1e-5 * c.ni * c.ni)
                        << c.nt << " " << c.ni << " " << c.nf << " row " << i << " element " << d;
                }
            }
        }
    }
}

TEST(dopprof, count_and_ends) {
    const struct {
        int nt, ni, lg, nc;
        double t1;
        float w1;
    } cases[] = {{100, 8, 1, 99, 1.5, 0.25f}, // the first window holds records 1 and 2
                 {100, 7, 1, 98, 2, 3 / 7.0f}, {100, 8, 10, 10, 5.5, 1}, {2, 2, 1, 1, 1.5, 1},
                 {2, 1, 1, 0, 2, -1},          {1, 1, 1, 0, 2, -1},      {8, 2, 1 << 30, 1, 4.5, 1}};
    for (const auto& c : cases) {
        const stack s =
            profiles(std::vector<float>(2 * static_cast<std::size_t>(c.nt), 1.0f), c.ni, 8, c.lg, 1);
        EXPECT_EQ(s.nc, c.nc) << c.nt << " " << c.ni << " " << c.lg;
        if (c.nc > 0) {
            EXPECT_EQ(s.t1, c.t1) << c.nt << " " << c.ni << " " << c.lg;
        }
        EXPECT_FLOAT_EQ(s.w[0], c.w1);
    }
    // A window of one sample has a flat spectrum.
    const stack flat = profiles(noise(60, 3), 1, 16, 1, -1);
    for (std::size_t i = 0; i + 1 < flat.b.size(); i++)
        EXPECT_NEAR(flat.b[i], flat.b[i / 16 * 16], 1e-6) << i;
}

TEST(dopprof, same_bits_with_any_number_of_threads) {
    const std::vector<float> a = noise(2 * 3000, 5);
    const int before = parallel_limit(1);
    const stack one = profiles(a, 64, 300, 1, -1);
    parallel_limit(4);
    const stack many = profiles(a, 64, 300, 1, -1);
    std::vector<stack> at_once(3);
    std::vector<std::thread> callers;
    for (stack& s : at_once) callers.emplace_back([&] { s = profiles(a, 64, 300, 1, -1); });
    for (std::thread& t : callers) t.join();
    parallel_limit(before);
    EXPECT_TRUE(one.b == many.b && one.w == many.w);
    for (const stack& s : at_once) EXPECT_TRUE(one.b == s.b);
}

TEST(dopprof, stops) {
    std::vector<float> a(2000), b(5000), w(1000);
    int nc;
    float t1;
    const auto form = [&](int ni, int nf) {
        dopprof(a.data(), 1000, ni, nf, 1000, 1, &nc, b.data(), w.data(), &t1);
    };
    form(512, 2048);
    EXPECT_DEATH(form(16, 2049), "STOP #2 IN DOPPROF");
    EXPECT_DEATH(form(513, 1024), "STOP #3 IN DOPPROF");
    EXPECT_DEATH(form(16, 15), "STOP #4 IN DOPPROF");
}

double measured_rate(const std::vector<float>& x, int nt) {
    const int nft = mynino(4 * nt);
    std::vector<float> work(2 * static_cast<std::size_t>(nft), 7.0f);
    float dft = 9;
    dopdft(x.data(), work.data(), nt, nft, &dft);
    return dft;
}

std::vector<float> chirp(int nt, double offset, double rate, double amplitude) {
    std::vector<float> x(2 * static_cast<std::size_t>(nt));
    for (int i = 0; i < nt; i++) {
        const std::complex<double> v =
            std::polar(amplitude, 2 * M_PI * std::fmod(offset * i + 0.5 * rate * i * i, 1.0));
        x[2 * static_cast<std::size_t>(i)] = static_cast<float>(v.real());
        x[2 * static_cast<std::size_t>(i) + 1] = static_cast<float>(v.imag());
    }
    return x;
}

TEST(dopdft, rate_of_a_chirp) {
    for (int nt : {8, 100, 2500}) {
        for (double rate : {0.0, 1e-4, -1e-4, 0.0173, -0.25, 0.49, -0.49}) {
            for (double amplitude : {1.0, 1e15, 1e-15}) {
                // A tenth of a cell of the products' transform.
                EXPECT_NEAR(measured_rate(chirp(nt, 0.31, rate, amplitude), nt), rate, 0.025 / nt)
                    << nt << " " << rate << " " << amplitude;
            }
        }
    }
    EXPECT_NEAR(measured_rate(chirp(64, 0, 0.7, 1), 64), -0.3, 4e-4); // folds
}

TEST(dopdft, nothing_to_measure) {
    const float nan = std::nanf(""), inf = std::numeric_limits<float>::infinity();
    for (float v : {0.0f, nan, inf}) EXPECT_EQ(measured_rate(std::vector<float>(80, v), 40), 0) << v;
    EXPECT_EQ(measured_rate({1, 2}, 1), 0);
    std::vector<float> holes = chirp(100, 0.1, 0.02, 1);
    holes[31] = nan;
    holes[120] = inf;
    EXPECT_NEAR(measured_rate(holes, 100), 0.02, 2.5e-4);
}

} // namespace
} // namespace norva
