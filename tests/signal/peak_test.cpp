// Peaks of curves and images that are known between their samples.
#include "signal/fft.h"
#include "signal/interp.h"
#include "signal/peak.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace norva {
namespace {

using floats = std::vector<float>;

// 9 samples of the parabola of height 10 around `at`, positions from 1.
floats parabola(float at) {
    floats a(9);
    for (int k = 0; k < 9; k++)
        a[k] = 10 - 0.5F * (static_cast<float>(k + 1) - at) * (static_cast<float>(k + 1) - at);
    return a;
}

TEST(peak, positions_on_curves) {
    for (float at : {2.0F, 4.3F, 5.5F, 7.8F}) {
        floats a = parabola(at);
        EXPECT_NEAR(pkloc(a.data(), 9), at, 1e-5);
        EXPECT_NEAR(pklocr(a.data(), 9), at, 1e-5);
        EXPECT_NEAR(pkpos(a.data(), 9, 1), at, 1e-5);
        EXPECT_NEAR(pkpos(a.data(), 9, 8), at, 1e-5); // down the other side
    }
    const floats two_tops = {1, 5, 5, 0, 3, 4, 2};
    EXPECT_EQ(kpeak(two_tops.data(), 7), 2);
    EXPECT_NEAR(pkpos(two_tops.data(), 7, 4), 5 + 1 - 0.5F * (2 - 3) / (2 - 8 + 3),
                1e-6); // the nearer, lower one
    EXPECT_EQ(pkpos(two_tops.data(), 7, 7), 0);
    EXPECT_EQ(pkpos(two_tops.data(), 1, 0), 0);
    const floats edge = {9, 5, 1, 2, 3};
    EXPECT_EQ(pkloc(edge.data(), 5), 0);
    EXPECT_NEAR(pklocr(edge.data(), 5), 1 - 0.5F * (5 - 3) / (5 - 18 + 3), 1e-6); // wraps to the last
    EXPECT_EQ(pkpos(edge.data(), 5, 2), 0);                                       // climbs down to the first
    const floats flat(6, 2.0F), none = {-1, -3, 0, NAN};
    EXPECT_EQ(pkpos(flat.data(), 6, 3), 0);
    EXPECT_EQ(kpeak(none.data(), 4), 1);
    EXPECT_EQ(pkloc(none.data(), 4), 0);
    EXPECT_EQ(pklocr(none.data(), 4), 0);
    EXPECT_EQ(pklocr(flat.data(), 6), 1);
}

TEST(peak, widths) {
    // A triangle of height 4 with its top at sample 6: crossings of the level A0 PK by straight lines. The
    // parabola through the top is flat, so that PK = 4: at half, 2 samples to each side.
    floats a = {0, 0, 1, 2, 3, 4, 3, 2, 1, 0, 0};
    float wl = -1, wr = -1;
    EXPECT_NEAR(pkwdth(a.data(), 11, 6, 0.5F, &wl, &wr), 4, 1e-6);
    EXPECT_NEAR(wl, 2, 1e-6);
    EXPECT_NEAR(pkwdth(a.data(), 11, 6, 0.7F, &wl, &wr), 2.4, 1e-5);
    // Half way down a sampled parabola of height 10 and curvature 1, at 5.3: 2 sqrt(10 (1 - 0.7)) but for the
    // chords.
    floats p = parabola(5.3F);
    EXPECT_NEAR(pkwdth(p.data(), 9, 5, 0.7F, &wl, &wr), 2 * std::sqrt(6.0), 0.1);
    EXPECT_NEAR(wr, std::sqrt(6.0), 0.06);
    for (float& v : p) v *= 1000; // the width knows no unit
    EXPECT_NEAR(pkwdth(p.data(), 9, 5, 0.7F, &wl, &wr), 2 * std::sqrt(6.0), 0.1);
    wl = wr = -1;
    EXPECT_EQ(pkwdth(a.data(), 11, 6, 0, &wl, &wr), 0);    // nothing is below 0
    EXPECT_EQ(pkwdth(a.data(), 11, 3, 0.5F, &wl, &wr), 0); // on the slope: no vertex within a sample
    EXPECT_EQ(pkwdth(a.data(), 11, 1, 0.5F, &wl, &wr), 0);
    EXPECT_EQ(pkwdth(a.data(), 11, 11, 0.5F, &wl, &wr), 0);
    EXPECT_EQ(wl, -1);
    EXPECT_EQ(wr, -1);
}

TEST(peak, image_maxima) {
    // Against the definition, on sizes with and without whole vectors; noise, and noise in steps of 1/6 with
    // its plateaus and equal peaks. Neighbours wrap around; of equal peaks the later comes first.
    for (auto [nx, ny] : {std::pair(40, 31), {7, 3}, {65, 5}, {32, 4}, {33, 2}, {1, 9}, {9, 1}})
        for (bool steps : {false, true})
            for (float least : {0.0F, 0.5F, 0.97F}) { // the threshold itself does not pass
                floats a = test::noise(nx * ny, nx);
                for (float& v : a) v = steps ? std::round(v * 6) / 6 : v;
                std::vector<int> want;
                for (int k = nx * ny - 1; k >= 0; k--) {
                    const int i = k % nx, j = k / nx;
                    bool top = a[k] > least;
                    for (int dj : {ny - 1, 0, 1})
                        for (int di : {nx - 1, 0, 1})
                            if ((di || dj) && !(a[k] > a[(j + dj) % ny * nx + (i + di) % nx])) top = false;
                    if (top) want.push_back(k + 1);
                }
                std::stable_sort(want.begin(), want.end(), [&](int p, int q) { return a[p - 1] > a[q - 1]; });
                for (int most : {nx * ny, 3, 1}) {
                    std::vector<int> lp(nx * ny + 1);
                    int np = 0;
                    peaks(a.data(), nx, ny, most, least, lp.data(), &np);
                    want.resize(std::min<std::size_t>(want.size(), most));
                    lp.resize(np);
                    EXPECT_EQ(lp, want) << nx << " " << ny << " " << steps << " " << least << " " << most;
                }
            }
    floats flat(12 * 9, 3.0F);
    int np = -1, lp[6];
    for (float odd : {3.0F, NAN}) {
        flat[40] = odd;
        peaks(flat.data(), 12, 9, 5, 0, lp, &np);
        EXPECT_EQ(np, 0);
    }
}

// nx by ny image of a point scatterer, twice oversampled from its transform.
struct scatterer {
    double x, y, amplitude, phase; // position in samples, from 1
};
floats scene(int nx, int ny, const scatterer& s) {
    floats a(2 * static_cast<std::size_t>(nx) * ny);
    for (int j = 0; j < ny / 2; j++) {
        for (int i = 0; i < nx / 2; i++) {
            double arg = s.phase - 2 * M_PI * ((i - nx / 4) * (s.x - 1) / nx + (j - ny / 4) * (s.y - 1) / ny);
            double wx = 0.54 - 0.46 * std::cos(4 * M_PI * (i + 0.5) / nx),
                   wy = 0.54 - 0.46 * std::cos(4 * M_PI * (j + 0.5) / ny);
            // The middle of the band at element 1.
            int jj = (j - ny / 4 + ny) % ny, ii = (i - nx / 4 + nx) % nx;
            a[2 * (static_cast<std::size_t>(jj) * nx + ii)] =
                static_cast<float>(s.amplitude * wx * wy * std::cos(arg));
            a[2 * (static_cast<std::size_t>(jj) * nx + ii) + 1] =
                static_cast<float>(s.amplitude * wx * wy * std::sin(arg));
        }
    }
    fft2d(a.data(), nx, ny, +1, +1);
    return a;
}

TEST(peak, position_within_a_hundredth_of_a_sample) {
    // All over a sample on several sizes, near the edges too, where the taps reach around.
    for (auto [nx, ny] : {std::pair(64, 48), {66, 50}, {128, 34}}) {
        const double level = 0.54 * 0.54 * (nx / 2) * (ny / 2);
        for (int k = 0; k < 12; k++) {
            const double at_x = k % 2 ? 20.0 : nx - 1.4, at_y = k % 3 ? 17.0 : 1.3;
            const scatterer s = {at_x + k / 12.0, at_y + k * 5 % 12 / 12.0, 2, 0.7 * k};
            floats image = scene(nx, ny, s);
            float x = 0, y = 0, a = 0, c[2];
            const int k0 = (static_cast<int>(s.y) - 1) * nx + static_cast<int>(s.x);
            pk2dpos(image.data(), nx, ny, k0, 7, &x, &y, &a);
            EXPECT_NEAR(x, s.x, 0.01) << nx << " " << k;
            EXPECT_NEAR(y, s.y, 0.01) << ny << " " << k;
            EXPECT_NEAR(20 * std::log10(a / (2 * level)), 0, 0.1) << nx << " " << k;
            imgint(image.data(), nx, ny, static_cast<float>(s.x), static_cast<float>(s.y), IMGINT_TAPS, c);
            EXPECT_NEAR(20 * std::log10(std::hypot(c[0], c[1]) / (2 * level)), 0, 0.1) << nx << " " << k;
            // Four halvings find the nearest sixteenth.
            pk2dpos(image.data(), nx, ny, k0, 4, &x, &y, &a);
            EXPECT_EQ(x * 16, std::round(x * 16)) << k;
            EXPECT_NEAR(x, s.x, 0.04) << k;
            EXPECT_NEAR(y, s.y, 0.04) << k;
        }
    }
}

TEST(peak, climb_stays_inside) {
    floats image = scene(32, 32, {1.0, 32.4, 1, 0});
    float x = 0, y = 0, a = 0;
    pk2dpos(image.data(), 32, 32, 31 * 32 + 1, 5, &x, &y, &a);
    EXPECT_NEAR(x, 1, 0.01);
    EXPECT_NEAR(y, 32.4, 0.01);
    pk2dpos(image.data(), 32, 32, 29 * 32 + 3, 0, &x, &y, &a); // from two samples away, without steps
    EXPECT_EQ(x, 1);
    EXPECT_EQ(y, 32);
    EXPECT_FLOAT_EQ(a, std::hypot(image[2 * 31 * 32], image[2 * 31 * 32 + 1]));
    floats dark(2 * 16), bad(2 * 16, NAN);
    pk2dpos(dark.data(), 4, 4, 6, 7, &x, &y, &a);
    EXPECT_EQ(x, 2);
    EXPECT_EQ(a, 0);
    pk2dpos(bad.data(), 4, 4, 16, 7, &x, &y, &a);
    pk2dpos(bad.data(), 4, 4, -5, 7, &x, &y, &a);
    pk2dpos(bad.data(), 0, 4, 1, 7, &x, &y, &a);
}

} // namespace
} // namespace norva
