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

} // namespace
} // namespace norva::test
