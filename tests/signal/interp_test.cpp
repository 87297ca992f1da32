// Interpolation and changes of size, on functions that are known between their samples.
#include "signal/interp.h"
#include "signal/parallel.h"
#include "signal/resize.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstring>
#include <vector>

namespace norva {
namespace {

using floats = std::vector<float>;

// nx by ny samples of exp(2 pi i (mx x/nx + my y/ny)), x and y from 0.
floats wave(int nx, int ny, double mx, double my) {
    floats a(2 * static_cast<std::size_t>(nx) * ny);
    for (int j = 0; j < ny; j++) {
        for (int i = 0; i < nx; i++) {
            double arg = 2 * M_PI * (mx * i / nx + my * j / ny);
            a[2 * (static_cast<std::size_t>(j) * nx + i)] = static_cast<float>(std::cos(arg));
            a[2 * (static_cast<std::size_t>(j) * nx + i) + 1] = static_cast<float>(std::sin(arg));
        }
    }
    return a;
}

TEST(interp, kernels) {
    EXPECT_EQ(sinc(0.00005F), 1);
    EXPECT_NEAR(sinc(0.5F), 2 / M_PI, 1e-6);
    EXPECT_NEAR(sinc(-3), 0, 1e-6);
    floats t(16 * 15), s(8 * 33);
    tsinc(t.data(), 15);
    samp(s.data(), 33);
    EXPECT_EQ(t[0], 1);
    EXPECT_EQ(s[0], 1);
    for (int k = 1; k < 15; k++) EXPECT_NEAR(t[16 * k], 0, 1e-6) << k;
    for (int k = 1; k < 16; k++) EXPECT_NEAR(s[16 * k], 0, 1e-6) << k;
    // cos(pi x/30) sinc(x)/sinc(x/30) at x = 1/2; sin(33 u)/(33 sin u) at u = pi/66, half a sample away.
    EXPECT_NEAR(t[8], std::cos(M_PI / 60) * (2 / M_PI) / (std::sin(M_PI / 60) / (M_PI / 60)), 1e-6);
    EXPECT_NEAR(s[8], 1 / (33 * std::sin(M_PI / 66)), 1e-6);
    const floats ramp = {0, 16, 32, 48};
    EXPECT_FLOAT_EQ(rint(ramp.data(), 0), 0);
    EXPECT_FLOAT_EQ(rint(ramp.data(), 0.1F), 25.6F);
}

TEST(interp, image_kernel_is_the_told_sum) {
    // A sum over the taps in double precision, with the exact kernel of an odd size and the tapered one of an
    // even size.
    const int nx = 33, ny = 36;
    floats a = test::noise(2 * nx * ny, 5);
    auto exact = [](double d, int n) {
        return d == 0 ? 1 : std::sin(M_PI * d) / (n * std::sin(M_PI * d / n));
    };
    auto tapered = [](double d, int m) {
        if (d == 0) return 1.0;
        return std::cos(M_PI * d / (2 * m)) * std::sin(M_PI * d) / (M_PI * d) / std::sin(M_PI * d / (2 * m)) *
               (M_PI * d / (2 * m));
    };
    // Table values between the entries at multiples of 1/16 lie on chords; past the end of the table they are
    // 0.
    auto chord = [](double d, double end, auto kernel) {
        double lower = std::floor(d * 16) / 16, h = d * 16 - std::floor(d * 16);
        auto value = [&](double u) { return u < end ? kernel(u) : 0.0; };
        return (1 - h) * value(lower) + h * value(lower + 1.0 / 16);
    };
    for (auto [x0, y0] : {std::pair(7.3F, 20.8F), {1.0F, 1.0F}, {33.7F, 0.4F}, {16.0F, 35.97F}}) {
        double xp = static_cast<double>(x0) - 1, yp = static_cast<double>(y0) - 1;
        int ixp = static_cast<int>(xp), iyp = static_cast<int>(yp);
        std::complex<double> want;
        for (int j = -18; j < 17; j++) {
            for (int i = -16; i < 15; i++) {
                double ax = std::fabs(xp - (ixp + i)), ay = std::fabs(yp - (iyp + j));
                if (static_cast<int>(ax) * static_cast<int>(ay) > 40) continue;
                double g = chord(ax, 16.5, [&](double d) { return exact(d, nx); }) *
                           chord(ay, 18, [&](double d) { return tapered(d, 18); });
                const float* s = &a[2 * (((iyp + j + 2 * ny) % ny) * nx + (ixp + i + 2 * nx) % nx)];
                want += g * std::complex<double>(s[0], s[1]);
            }
        }
        float c[2], clipped[2];
        imgint(a.data(), nx, ny, x0, y0, 64, c);
        EXPECT_NEAR(c[0], want.real(), 3e-5) << x0;
        EXPECT_NEAR(c[1], want.imag(), 3e-5) << x0;
        imgint(a.data(), nx, ny, x0, y0, 100, clipped);
        EXPECT_EQ(clipped[0], c[0]);
    }
    float c[2];
    imgint(a.data(), nx, ny, NAN, 3, 15, c);
    EXPECT_TRUE(std::isnan(c[0]));
    imgint(a.data(), nx, ny, 1e30F, 3, 15, c);
    imgint(a.data(), 1, 1, 1, 1, 15, c);
    imgint(a.data(), 0, 0, 1, 1, 15, c);
}

TEST(interp, parabola_and_line) {
    floats square(9), line(6), out(12);
    for (int k = 0; k < 9; k++) square[k] = static_cast<float>((k + 1 - 4) * (k + 1 - 4));
    for (float u : {-1.0F, 1.2F, 4.0F, 4.5F, 8.9F, 11.0F}) {
        EXPECT_NEAR(cubint(square.data(), 9, u), (u - 4) * (u - 4), 1e-4) << u;
    }
    for (int k = 0; k < 6; k++) line[k] = 2.0F * static_cast<float>(k + 1) - 3;
    resamp(line.data(), 6, 12, -1.5F, 0.75F, out.data());
    for (int k = 0; k < 12; k++) EXPECT_NEAR(out[k], 2 * (-1.5 + 0.75 * k) - 3, 1e-5) << k;
    const floats bent = {1, 3, 0};
    resamp(bent.data(), 3, 5, 0, 1, out.data()); // ends carried on along the first and the last two samples
    EXPECT_EQ(floats(out.begin(), out.begin() + 5), (floats{-1, 1, 3, 0, -3}));
    resamp(bent.data(), 3, 4, 1.5F, 0, out.data());
    EXPECT_EQ(floats(out.begin(), out.begin() + 4), (floats{2, 2, 2, 2}));
    resamp(bent.data(), 3, 2, 1e30F, NAN, out.data());
}

TEST(interp, running_integral) {
    // 2 t integrates to t^2 exactly by trapezoids; the value at the middle is taken off.
    for (int n : {1, 2, 7, 8}) {
        std::vector<double> dr(n), t(n), d(n);
        for (int k = 0; k < n; k++) t[k] = 0.5 * k * k, dr[k] = 2 * t[k];
        drint(dr.data(), t.data(), n, d.data());
        double middle = 0.5 * (t[n / 2] * t[n / 2] + t[n - n / 2 - 1] * t[n - n / 2 - 1]);
        for (int k = 0; k < n; k++) EXPECT_NEAR(d[k], t[k] * t[k] - middle, 1e-12) << n << " " << k;
        drint(dr.data(), t.data(), n, dr.data());
        EXPECT_EQ(dr, d);
    }
}

TEST(resize, zero_fill_moves_the_corners) {
    for (auto [nx, ny, mx, my] :
         {std::tuple(4, 2, 6, 5), {5, 3, 5, 3}, {5, 3, 6, 3}, {1, 1, 3, 4}, {3, 5, 3, 9}, {6, 7, 11, 8}}) {
        floats in = test::noise(2 * nx * ny, nx), a(2 * mx * my, 7.0F);
        std::copy(in.begin(), in.end(), a.begin());
        zfil2d(a.data(), nx, ny, mx, my);
        floats want(2 * mx * my, 0.0F);
        for (int j = 0; j < ny; j++) {
            for (int i = 0; i < nx; i++) {
                // Frequencies keep their sign: those of the upper half stay as far from the end.
                int jj = j < (ny + 1) / 2 ? j : j - ny + my, ii = i < (nx + 1) / 2 ? i : i - nx + mx;
                want[2 * (jj * mx + ii)] = in[2 * (j * nx + i)];
                want[2 * (jj * mx + ii) + 1] = in[2 * (j * nx + i) + 1];
            }
        }
        EXPECT_EQ(a, want) << nx << " " << ny << " " << mx << " " << my;
    }
    floats a(32);
    EXPECT_DEATH(zfil2d(a.data(), 4, 4, 3, 4), "STOP IN ZFIL2D");
}

TEST(resize, decimation_keeps_what_the_band_holds) {
    const int sizes[][4] = {
        {64, 60, 32, 20}, {45, 64, 15, 64}, {30, 24, 30, 8}, {8, 100, 3, 25}, {16, 1, 4, 1}};
    for (auto [nf, nt, mf, mt] : sizes) {
        double kf = mf > 3 ? 1 : 0, kt = mt > 3 ? -2 : 0;
        floats a = wave(nf, nt, kf, kt), want = wave(mf, mt, kf, kt);
        decimate(a.data(), nf, nt, mf, mt);
        // Unscaled transforms cancel against 1/(nf nt) except along a direction that is left alone, or cut
        // short: the inverse over m of n samples restores only what 1/n took.
        double scale = (mf == nf ? 1.0 / nf : 1) * (mt == nt ? 1.0 / nt : 1);
        for (int k = 0; k < 2 * mf * mt; k++)
            ASSERT_NEAR(a[k], want[k] * scale, 2e-6) << nf << " " << nt << " " << k;
    }
    // A sum of waves that the smaller sizes hold is the same function on the coarser grid.
    floats sum(2 * 90 * 64), coarse(2 * 30 * 25);
    for (int m = -12; m <= 12; m++) {
        floats fine_wave = wave(90, 64, m, m * 5 % 12), coarse_wave = wave(30, 25, m, m * 5 % 12);
        for (std::size_t k = 0; k < sum.size(); k++) sum[k] += fine_wave[k];
        for (std::size_t k = 0; k < coarse.size(); k++) coarse[k] += coarse_wave[k];
    }
    decimate(sum.data(), 90, 64, 30, 25);
    for (std::size_t k = 0; k < coarse.size(); k++) ASSERT_NEAR(sum[k], coarse[k], 2e-5) << k;
    sum[7] = NAN; // comes through, and through all of it
    decimate(sum.data(), 30, 25, 15, 5);
    EXPECT_TRUE(std::isnan(sum[0]));
    // What lies outside the kept band is gone.
    floats a = wave(64, 64, 20, 3);
    decimate(a.data(), 64, 64, 32, 64);
    for (int k = 0; k < 2 * 32 * 64; k++) EXPECT_NEAR(a[k], 0, 1e-6);
    floats same = test::noise(2 * 12, 1), before = same;
    decimate(same.data(), 4, 3, 4, 3);
    EXPECT_EQ(same, before);
    for (auto [mf, mt] : {std::pair(5, 3), {4, 4}, {0, 3}, {4, -1}}) {
        EXPECT_DEATH(decimate(same.data(), 4, 3, mf, mt), "STOP IN DECIMATE");
    }
}

TEST(resize, decimation_has_the_same_bits_with_any_number_of_threads) {
    floats one = test::noise(2 * 128 * 512, 3), many = one;
    int before = parallel_limit(1);
    decimate(one.data(), 128, 512, 60, 100);
    parallel_limit(0);
    decimate(many.data(), 128, 512, 60, 100);
    parallel_limit(before);
    EXPECT_EQ(0, std::memcmp(one.data(), many.data(), sizeof(float) * 2 * 60 * 100));
}

} // namespace
} // namespace norva
