// A wide-angle turntable, blurred in the plain image and focused by polar formatting.
#include "driver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <complex>
#include <utility>

namespace norva::test {
namespace {

constexpr double half_turn = 0.2; // radians, to each side
constexpr double far_x = 18, far_y = -13;

struct wide_turntable {
    scene s;
    double gate = 0.1; // metres, both ways
    wide_turntable(int ksx, int ksy, double rc) {
        const double fc = scene_light / (4 * half_turn * gate), bw = scene_light / (2 * gate);
        s.nf = s.nt = 64;
        s.df = ksy * bw / s.nf;
        s.f0 = fc - 0.5 * (s.nf - 1) * s.df;
        s.table = {.da = -ksx * 2 * half_turn / s.nt, .de = 0.1, .rc = rc};
        s.points = {{.x = 0, .y = 0}, {.x = far_x * gate, .y = far_y * gate}};
    }
    record plain(formation how = {.ifx = 2, .ify = 2}) const {
        how.ksx = s.table.da > 0 ? -1 : 1;
        how.ksy = s.df > 0 ? 1 : -1;
        return init_record(scene_data(s), s.nf, s.nt, how);
    }
    record init(double xex = 5, double yex = 4, int itp = 1, formation how = {.ifx = 2, .ify = 2}) const {
        record r = plain(how), polar = record(itp).f(xex).f(yex).f(s.f0).f(s.df);
        polar.f(s.table.rc > 0 ? s.table.rc : 1e6).f(s.table.da).f(0).f(0).f(s.table.de);
        r.words[0] = PI_POLAR;
        r.words.insert(r.words.begin() + PI_DATA_WORD, polar.words.begin(), polar.words.end());
        return r;
    }
};

float largest_near(const pi_result& r, double x, double y, double reach) {
    float largest = 0;
    for (int j = 0; j < r.ny; j++) {
        for (int i = 0; i < r.nx; i++) {
            const double away = std::max(std::fabs(i * r.dx + r.x1 - x), std::fabs(j * r.dy + r.y1 - y));
            if (away <= reach) largest = std::max(largest, r.a[static_cast<std::size_t>(j) * r.nx + i]);
        }
    }
    return largest;
}

// Width between half powers of the peak at the pivot, gates.
double width(double x, double y, double angle) {
    const pi_result r = act(record(PI_CUT).f(6).f(1 / 32.0).f(x).f(y).f(angle));
    const auto n = static_cast<int>(r.cut.size() / 2);
    auto power = [&](int k) { return std::norm(std::complex<float>(r.cut[2 * k], r.cut[2 * k + 1])); };
    int low = n / 2, high = n / 2;
    while (power(low) > 0.5F * power(n / 2)) low--;
    while (power(high) > 0.5F * power(n / 2)) high++;
    return (high - low - 1) * r.dc;
}

TEST(image_polar, a_wide_angle_is_focused_where_the_plain_image_is_blurred) {
    for (double rc : {0.0, 160.0}) { // far away; near enough for a curved wave front
        for (auto [ksx, ksy] : {std::pair{-1, 1}, {1, 1}, {-1, -1}, {1, -1}}) {
            SCOPED_TRACE(testing::Message() << ksx << ' ' << ksy << " from " << rc);
            const wide_turntable t(ksx, ksy, rc);
            const float blurred = largest_near(act(t.plain()), far_x, far_y * std::cos(0.1), 6);
            const pi_result r = act(t.init());
            ASSERT_EQ(r.what, pi_result::IMAGE) << r.message;
            EXPECT_EQ(r.mode, PI_POLAR);
            EXPECT_EQ(r.nx, 128);
            EXPECT_EQ(r.dx, 0.5F);
            EXPECT_GT(largest_near(r, far_x, far_y, 1), 2 * blurred);
            EXPECT_NEAR(largest_near(r, far_x, far_y, 1), 1, 0.035); // 0.3 dB
            const pi_result peak = act(record(PI_PEAK_PARAMETERS).f(far_x).f(far_y));
            EXPECT_NEAR(peak.xpk, far_x, 0.1);
            EXPECT_NEAR(peak.ypk, far_y, 0.1);
            // The circular weight's main lobe.
            EXPECT_NEAR(width(peak.xpk, peak.ypk, 0), 1.299, 0.13);
            EXPECT_NEAR(width(peak.xpk, peak.ypk, 90), 1.299, 0.13);
        }
    }
}

TEST(image_polar, replays_checks_and_target_extent) {
    const wide_turntable t(-1, 1, 15);
    act(t.init());
    act(record(PI_STEP).i(0));
    const std::uint64_t formed = digest();
    act(record(PI_INTERPOLATE).i(8).i(4));
    act(record(PI_FLOP).i(3));
    EXPECT_EQ(act(record(PI_GO).i(-5)).mode, PI_POLAR);
    EXPECT_EQ(digest(), formed);

    const struct {
        double xex, yex;
        int itp;
        formation how;
        const char* message;
    } cases[] = {{5, 4, 1, {.ifx = 16, .ify = 32}, "***Error 110a...Insufficient memory"},
                 {5, 4, 1, {.npmx = 1001}, "***Error 110b...Too many peaks specified"},
                 {5, 4, 1, {.kscl = 9}, "***Error 110c...Improper scaling"},
                 {5, 4, 2, {}, "***Error 110d...Rail geometry is not implemented yet"},
                 {6.5, 4, 1, {}, "***Error 110e...Target is larger than ambiguity"},
                 {5, 6.5, 1, {}, "***Error 110e...Target is larger than ambiguity"},
                 {0, 4, 1, {}, "***Error 110f...Improper geometry"},
                 {5, 0.01, 1, {}, "***Error 110f...Improper geometry"}, // less than a sample
                 {5, NAN, 1, {}, "***Error 110f...Improper geometry"}};
    for (const auto& c : cases) EXPECT_EQ(act(t.init(c.xex, c.yex, c.itp, c.how)).message, c.message);
    EXPECT_EQ(act(record(PI_STEP).i(1)).mode, PI_INTERPOLATE); // all of them left the image as it was

    // A quarter more than the target is formed, the rest of the image is empty.
    const pi_result r = act(t.init(2, 3));
    for (int j = 0; j < r.ny; j++) {
        for (int i = 0; i < r.nx; i++) {
            const double x = std::fabs(i * r.dx + r.x1), y = std::fabs(j * r.dy + r.y1);
            const bool outside = x > 12.8 || y > 19;
            EXPECT_EQ(outside ? r.a[static_cast<std::size_t>(j) * r.nx + i] : 0, 0) << x << ' ' << y;
        }
    }
}

} // namespace
} // namespace norva::test
