// Where scatterers stand in an image, and what the actions make of it.
#include "driver.h"
#include "mocomp/mocomp.h"
#include "state/image_cut.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <complex>

namespace norva::test {
namespace {

constexpr int signs[][2] = {{-1, 1}, {1, 1}, {-1, -1}, {1, -1}};

struct planted {
    double x, y, amplitude;
};
constexpr planted truth[] = {
    {0, 0, 1}, {6.1, -9.8, 0.8}, {-11.3, 4.4, 0.7}, {-5.6, -13.9, 0.5}, {12.7, 11.2, 0.9}};

turntable five_points(int ksx, int ksy) {
    turntable t(32, 32, ksx, ksy);
    for (const planted& p : truth) t.add(p.x, p.y, p.amplitude, p.x);
    return t;
}

// All planted points are in the peak list, turned by fx, fy.
void expect_points(const pi_result& r, int fx, int fy) {
    ASSERT_EQ(r.what, pi_result::IMAGE) << r.message;
    for (const planted& p : truth) {
        double best = 1e9, db = 0;
        for (int k = 0; k < r.npk; k++) {
            const double away = std::hypot(r.xp[k] - fx * p.x, r.yp[k] - fy * p.y);
            if (away < best) best = away, db = 20 * std::log10(r.dp[k] / r.dp[0] / p.amplitude);
        }
        EXPECT_LT(best, 0.1) << p.x << ' ' << p.y;
        EXPECT_NEAR(db, 0, 0.3) << p.x << ' ' << p.y;
    }
}

TEST(image_geometry, scatterers_stand_where_they_are_for_all_signs_before_and_after_flops) {
    for (auto [ksx, ksy] : signs) {
        SCOPED_TRACE(testing::Message() << ksx << ' ' << ksy);
        expect_points(act(five_points(ksx, ksy).init({.ifx = 8, .ify = 8})), 1, 1);
        expect_points(act(record(PI_FLOP).i(1)), -1, 1);
        expect_points(act(record(PI_FLOP).i(3)), 1, -1);
        expect_points(act(record(PI_FLOP).i(2)), 1, 1);
    }
}

TEST(image_geometry, interpolation_refines_what_a_coarse_image_holds) {
    act(five_points(-1, 1).init());
    pi_result r = act(record(PI_INTERPOLATE).i(8).i(8));
    expect_points(r, 1, 1);
    EXPECT_EQ(r.nx, 256);
    EXPECT_FLOAT_EQ(r.dx, 0.125F);
    // A box keeps the coordinates, also through a further interpolation and the turned sign of a flop.
    act(record(PI_FLOP).i(3));
    r = act(record(PI_EDIT).f(4).f(13).f(-12).f(-3));
    EXPECT_FLOAT_EQ(r.x1, 4);
    for (int pass = 0; pass < 2; pass++) {
        const auto at = static_cast<std::size_t>(std::max_element(r.a.begin(), r.a.end()) - r.a.begin());
        EXPECT_NEAR(static_cast<float>(at % r.nx) * r.dx + r.x1, 11.3, 0.1);
        EXPECT_NEAR(static_cast<float>(at / r.nx) * r.dy + r.y1, -4.4, 0.1);
        r = act(record(PI_INTERPOLATE).i(16).i(8));
    }
}

// The delays of Center Image, taken out of the raw data, put the point to the origin of the next image.
TEST(image_geometry, centring_brings_the_point_to_the_origin_for_all_signs) {
    for (auto [ksx, ksy] : signs) {
        for (int flop : {0, 1, 2, 3}) {
            SCOPED_TRACE(testing::Message() << ksx << ' ' << ksy << " flop " << flop);
            const turntable t = five_points(ksx, ksy);
            std::vector<float> data = t.data();
            const formation how{.ksx = ksx, .ksy = ksy, .ifx = 4, .ify = 4};
            act(init_record(data, 32, 32, how));
            act(record(PI_FLOP).i(flop));
            const int fx = flop & 1 ? -1 : 1, fy = flop & 2 ? -1 : 1;
            const double fc = t.s.f0 + 0.5 * 31 * t.s.df, bw = 32 * t.s.df;
            const pi_result r = act(record(PI_CENTER).f(fx * 6.5).f(fy * -9.5).f(fc).f(bw).i(1));
            ASSERT_EQ(r.mode, PI_CENTER) << r.message;
            EXPECT_NEAR(r.xc, fx * 6.1, 0.05);
            EXPECT_NEAR(r.yc, fy * -9.8, 0.05);
            const std::vector<double> delays(r.delays.begin(), r.delays.end());
            ASSERT_EQ(delays.size(), 33U);
            mocomp(data.data(), 32, 32, static_cast<float>(t.s.f0), static_cast<float>(t.s.df), 0,
                   delays.data());
            act(init_record(data, 32, 32, how));
            const pi_result again = act(record(PI_PEAK_PARAMETERS).f(0).f(0));
            EXPECT_GT(again.apk, 0.5 * again.ascl);
            EXPECT_NEAR(again.xpk, 0, 0.1);
            EXPECT_NEAR(again.ypk, 0, 0.1);
        }
    }
    // The point itself, when no peak is asked for.
    EXPECT_FLOAT_EQ(act(record(PI_CENTER).f(6.5).f(-9.5).f(9000).f(150).i(0)).xc, 6.5F);
}

// Samples along a line of the grid are those of the image, whatever way the line runs.
TEST(image_geometry, a_cut_through_samples_reads_them) {
    const turntable t = five_points(1, -1);
    const pi_result start = act(t.init({.ifx = 2, .ify = 2}));
    act(record(PI_EDIT).f(-10).f(13.5).f(-14).f(9)); // odd height
    const pi_result box = act(record(PI_PEAK_SCALING).i(10).i(2).f(0.1).f(1));
    struct line {
        double x, y, angle, length;
        int kc;
        bool inside;
    };
    const line lines[] = {{2, 1, 90, 16, 1, true}, {2, 1, -90, 16, 1, true},   {-3.5, 4, 0, 9, 2, true},
                          {1, 2, 180, 5, 2, true}, {0, 0, 60, 8, 3, true},     {0, 0, 30, 8, 4, true},
                          {0, 0, 45, 8, 4, true},  {0, 0, 135, 8, 3, true},    {0, 0, -135, 8, 4, true},
                          {12, 0, 0, 8, 2, false}, {0, -13, 270, 6, 1, false}, {12, 0, 180, 8, 2, false}};
    for (const line& l : lines) {
        SCOPED_TRACE(testing::Message() << l.x << ' ' << l.y << ' ' << l.angle);
        const pi_result r = act(record(PI_CUT).f(l.length).f(0.5).f(l.x).f(l.y).f(l.angle));
        ASSERT_EQ(r.mode, PI_CUT) << r.message;
        EXPECT_EQ(r.kc, l.kc);
        EXPECT_EQ(r.kwr > 0, !l.inside);
        EXPECT_EQ(kss, l.kc == 1 || l.kc == 3 ? -1 : 1);
        const auto n = static_cast<int>(r.cut.size() / 2);
        EXPECT_EQ(n, 2 * l.length);
        EXPECT_FLOAT_EQ(r.c1, -static_cast<float>(n / 2) * 0.5F);
        if (l.kc > 2 || !l.inside) continue;
        for (int k = 0; k < n; k++) {
            const double along = r.c1 + k * r.dc, rad = l.angle * M_PI / 180;
            const auto i = static_cast<int>(std::lround((l.x + along * std::cos(rad) - box.x1) / box.dx));
            const auto j = static_cast<int>(std::lround((l.y + along * std::sin(rad) - box.y1) / box.dy));
            EXPECT_NEAR(std::hypot(r.cut[2 * k], r.cut[2 * k + 1]) / box.ascl, box.a[j * box.nx + i], 1e-4)
                << k;
        }
    }
    float used[6];
    proimagpar(used);
    EXPECT_EQ(used[0], 8.0F); // rounded to whole samples
    EXPECT_EQ(used[4], 180.0F);
    act(record(PI_CUT).f(8).f(0.3).f(0).f(0).f(30));
    proimagpar(used);
    EXPECT_EQ(used[1], 0.25F); // the reciprocal of a power of two
    EXPECT_EQ(act(record(PI_CUT).f(1000).f(0.5).f(0).f(0).f(0)).cut.size(), 2U * box.nx); // the image's width
    EXPECT_EQ(start.nx, 64);
}

// Data written from an image form the same image again.
TEST(image_geometry, data_written_after_an_edit_form_the_same_picture) {
    for (auto [ksx, ksy] : signs) {
        const turntable t = five_points(ksx, ksy);
        act(t.init());
        pi_result data = act(record(PI_WRITE));
        ASSERT_EQ(data.what, pi_result::DATA) << data.message;
        ASSERT_EQ(data.nfp * data.ntp, 32 * 32);
        // Unedited: the raw data times the image's number of samples, but where the weight is nothing.
        const std::vector<float> raw = t.data();
        for (int time : {1, 7, 16, 25}) {
            for (int f : {9, 16, 20}) {
                const std::size_t at = 2 * (time * 32UL + f);
                const bool kept = std::hypot(time - 16, f - 16) < 16;
                EXPECT_NEAR(data.data[at], kept ? 1024 * raw[at] : 0, 0.05 * 1024) << time << ' ' << f;
            }
        }
        // A box about a point moves it to the middle, odd and even sizes alike.
        for (int width : {26, 27}) {
            act(t.init());
            act(record(PI_INTERPOLATE).i(4).i(4));
            pi_result box = act(record(PI_EDIT).f(6 - 3.25).f(6 - 3.25 + 0.25 * (width - 1)).f(-13).f(-7));
            const double cx = 6.1 - (box.x1 + 0.25 * (box.nx / 2)),
                         cy = -9.8 - (box.y1 + 0.25 * (box.ny / 2));
            data = act(record(PI_WRITE));
            EXPECT_EQ(data.ntp, 27);
            act(init_record(data.data, data.nfp, data.ntp,
                            {.ksx = data.ksx, .ksy = data.ksy, .ifx = 4, .ify = 4}));
            const pi_result peak = act(record(PI_PEAK_PARAMETERS).f(0).f(0));
            EXPECT_NEAR(0.25 * peak.xpk, cx, 0.1); // gates of the new data are the samples of the box
            EXPECT_NEAR(0.25 * peak.ypk, cy, 0.1);
        }
    }
}

} // namespace
} // namespace norva::test
