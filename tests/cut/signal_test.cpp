// What the actions do to cuts whose transform is known in closed form.
#include "driver.h"

#include <algorithm>

namespace norva {
namespace {

using namespace cut_test;

struct cut_signal : ::testing::Test {
    void SetUp() override {
        forget();
        img.nt = 64;
    }
};

// Index from 0 of the transform sample at x.
int at(const pc_result& r, double x) {
    const auto& u = r.transform.u;
    return static_cast<int>(std::lround((x - u[0]) / (u[1] - u[0])));
}

// The slope of a measurement, cycles a unit of its axis.
double slope_of(const pc_result& r) {
    return (static_cast<double>(r.p2) - r.p1) / (static_cast<double>(r.crosshairs[1]) - r.crosshairs[0]);
}

float largest_outside(const pc_result& r, double low, double high) {
    float a = 0;
    for (std::size_t k = 0; k < r.transform.u.size(); k++) {
        if (r.transform.u[k] < low || r.transform.u[k] > high) a = std::max(a, r.transform.a[k]);
    }
    return a;
}

TEST_F(cut_signal, transform_is_the_data_in_its_band) {
    for (int sign : {-1, 1}) {
        kss = sign;
        for (int ls : {2, 4, 8}) {
            const std::vector<cut_point> points = {{10.3}, {-4, 0.5, 0.2}};
            const pc_result r = open(point_cut(points, ls, 1));
            ASSERT_EQ(r.what, pc_result::COMMON) << r.message;
            EXPECT_EQ(r.cut.a.size(), static_cast<std::size_t>(BAND * ls));
            EXPECT_FLOAT_EQ(r.transform.u.front(), -ls / 2.0F);
            EXPECT_LT(largest_outside(r, -0.5, 0.5), 1e-5F) << ls;
            for (double x : {-0.5, -0.25, 0.0, 0.125, 0.4921875}) {
                const std::complex<double> want = data_at(x, points, 1) / (1.0 * BAND);
                const int k = at(r, x);
                EXPECT_NEAR(r.transform.r[k] * r.transform.scale, want.real(), 1e-6) << ls << " " << x;
                EXPECT_NEAR(r.transform.q[k] * r.transform.scale, want.imag(), 1e-6) << ls << " " << x;
            }
        }
    }
}

TEST_F(cut_signal, a_point_is_one_main_lobe_wide_under_all_weights) {
    for (double where : {0.0, -20.4}) {
        open(point_cut({{where}}, 8, 1));
        for (int lw : {0, 1, 2, 3, 1}) {
            ASSERT_EQ(message(PC_WEIGHT, lw, 0), "");
            const pc_result n = act(PC_PEAKS, 1, where + 0.2), pair = act(PC_PEAK_PAIR, where - 1, where + 1);
            for (const pc_result* r : {&n, &pair}) {
                ASSERT_EQ(r->peaks.size(), 1U) << r->message;
                EXPECT_NEAR(r->peaks[0].position, where, 0.005) << lw;
                EXPECT_NEAR(r->peaks[0].width, 1, 0.02) << lw;
                EXPECT_NEAR(r->peaks[0].skewness, 1, 0.02) << lw;
            }
        }
    }
}

TEST_F(cut_signal, a_new_weighting_keeps_the_level_at_the_centre_and_takes_the_old_one_out) {
    const pc_result before = open(point_cut({{3}}, 4));
    const float centre = before.transform.a[at(before, 0)] * before.transform.scale;
    for (int lw : {3, 2, 0, 1}) {
        const pc_result r = act(PC_WEIGHT, lw, 0);
        EXPECT_NEAR(r.transform.a[at(r, 0)] * r.transform.scale, centre, 1e-6 * centre) << lw;
        const pc_result flat = act(PC_DEWEIGHT, 1);
        for (double x = -0.48; x < 0.48; x += 0.04)
            EXPECT_NEAR(flat.transform.a[at(flat, x)], 1, 2e-3) << lw << " " << x;
        act(PC_DEWEIGHT, 0);
    }
    // A narrower support: the resolution falls by as much.
    const pc_result half = act(PC_WEIGHT, 0, 2, -0.25, 0.25);
    EXPECT_LT(largest_outside(half, -0.2505, 0.2505), 1e-6F);
    EXPECT_NEAR(act(PC_PEAKS, 1, 3.0).peaks[0].width, 2, 0.05);
}

TEST_F(cut_signal, a_slope_measured_and_subtracted_is_gone) {
    for (int sign : {-1, 1}) {
        kss = sign;
        for (int ls : {2, 8}) {
            // The transform of a point at 17.37 gates: subtracting the slope brings it to the origin.
            const pc_result first = open(point_cut({{17.37, 1, 0.3}}, ls));
            const pc_result slope = act(PC_SLOPE, 1, -0.4, 0.4);
            ASSERT_EQ(slope.crosshairs.size(), 2U) << slope.message;
            EXPECT_NEAR(slope_of(slope), 17.37, 1e-4);
            const float x0 = slope.crosshairs[0], x1 = slope.crosshairs[1];
            const pc_result r = act(PC_SUB_SLOPE, 1, x0, x1, slope.p1, slope.p2);
            ASSERT_EQ(r.action.size(), 4U);
            EXPECT_NEAR(std::bit_cast<float>(r.action[2]), 17.37, 1e-3);
            const pc_result rest = act(PC_SLOPE, 1, -0.4, 0.4);
            EXPECT_NEAR(slope_of(rest), 0, 1e-4);
            EXPECT_NEAR(rest.p1, 0, 1e-4);
            EXPECT_NEAR(act(PC_PEAKS, 1, 0.0).peaks[0].position, 0, 1e-3);
        }
    }
}

TEST_F(cut_signal, a_slope_of_the_image_moves_band_and_weighting_together) {
    for (int sign : {-1, 1}) {
        kss = sign;
        open(point_cut({{0}}, 8));
        act(PC_DEWEIGHT, 1);
        const double own = slope_of(act(PC_SLOPE, 0, -0.5, 0.5));
        // 1.25 cycles a gate: the band moves down by that.
        const pc_result r = act(PC_SUB_SLOPE, 0, 0.0, 8.0, 0.0, 10.0);
        ASSERT_EQ(r.what, pc_result::COMMON) << r.message;
        for (double x = -0.45; x < 0.46; x += 0.05) EXPECT_NEAR(r.transform.a[at(r, x - 1.25)], 1, 2e-3) << x;
        EXPECT_EQ(message(PC_WEIGHT, 0, 0), "***Error 101c...Cannot change weighting");
        EXPECT_EQ(message(PC_MOCOMP, 9000.0, 500.0), "***Error 122b...M/C slope must be in transform domain");
        // Back again, the slope that is left is none.
        act(PC_SUB_SLOPE, 0, 0.0, 8.0, 0.0, -10.0);
        EXPECT_NEAR(slope_of(act(PC_SLOPE, 0, -0.5, 0.5)), own, 1e-4);
    }
}

TEST_F(cut_signal, a_spline_takes_a_bent_phase_out) {
    for (int sign : {-1, 1}) {
        kss = sign;
        for (int domain : {1, 0}) {
            const pc_result r = open(point_cut({{-6.5}}, 4));
            // The shown phase itself as the spline: what is left has no phase.
            const pc_curve& c = domain ? r.transform : r.cut;
            const int first = static_cast<int>(c.u.size()) * 3 / 8, n = static_cast<int>(c.u.size()) / 4;
            const std::vector<float> ph(c.p.begin() + first, c.p.begin() + first + n);
            const float step = c.u[1] - c.u[0];
            const pc_result echo =
                act(PC_SPLINE, domain, 2, n, c.u[first], step, ph, std::vector<float>{c.u[first], 0.25F});
            EXPECT_EQ(echo.ph, ph) << echo.message;
            EXPECT_EQ(echo.breaks, (std::vector<float>{c.u[first], 0.25F}));
            const pc_result s = act(PC_SUB_SPLINE);
            ASSERT_EQ(s.what, pc_result::COMMON) << s.message;
            const pc_curve& d = domain ? s.transform : s.cut;
            for (int k = first; k < first + n; k++) {
                if (d.a[k] > 0.02F) {
                    EXPECT_NEAR(d.p[k], 0, 1e-5) << k;
                }
            }
            for (int k = 0; k < first; k++) EXPECT_EQ(d.a[k], 0) << k;
            EXPECT_EQ(message(PC_SUB_SPLINE), "***Error 104a...Spline not defined");
        }
    }
}

TEST_F(cut_signal, jumps_of_the_plotted_phase_are_removed) {
    for (int sign : {-1, 1}) {
        kss = sign;
        for (float size : {0.0F, 0.3F}) { // found, and told
            // A phase line with a step of 0.3 cycles at 0.1, put in by a spline.
            const pc_result r = open(point_cut({{2}}, 4));
            const auto& u = r.transform.u;
            std::vector<float> bend(u.size());
            for (std::size_t k = 0; k < u.size(); k++) bend[k] = u[k] > 0.1F ? -0.3F : 0.0F;
            act(PC_SPLINE, 1, 0, static_cast<int>(u.size()), u[0], u[1] - u[0], bend);
            act(PC_SUB_SPLINE);
            EXPECT_GT(std::fabs(slope_of(act(PC_SLOPE, 1, -0.4, 0.4)) - 2), 0.3);
            ASSERT_EQ(message(PC_PHASE_JUMP, 0.09, 0.11, size), "") << size;
            EXPECT_NEAR(slope_of(act(PC_SLOPE, 1, -0.4, 0.4)), 2, size == 0 ? 1e-3 : 0.02) << size;
            // The same line in both parts.
            const pc_result left = act(PC_SLOPE, 1, -0.4, 0.05), right = act(PC_SLOPE, 1, 0.15, 0.4);
            EXPECT_NEAR(right.p1 - left.p1, 2 * (right.crosshairs[0] - left.crosshairs[0]), 1e-3);
        }
    }
}

TEST_F(cut_signal, phase_can_be_set_to_zero_and_amplitude_to_one) {
    open(point_cut({{9}, {5, 0.4}}, 4));
    const pc_result zero = act(PC_ZERO_PHASE, -0.3, 0.3);
    EXPECT_LT(largest_outside(zero, -0.301, 0.301), 1e-6F);
    for (double x = -0.29; x < 0.3; x += 0.02) EXPECT_NEAR(zero.transform.p[at(zero, x)], 0, 1e-5);
    EXPECT_EQ(message(PC_SHIFT, 1.0, 9000.0, 500.0, 0), "***Error 121a...Cannot perform M/C on this data");
    EXPECT_EQ(message(PC_MOCOMP, 9000.0, 500.0), "***Error 122a...Cannot perform M/C on this data");

    const pc_result before = open(point_cut({{9}, {5, 0.4}}, 4));
    float largest = 0;
    for (int k = at(before, -0.25); k <= at(before, 0.25); k++)
        largest = std::max(largest, before.transform.a[k]);
    const pc_result unit = act(PC_UNIT_AMPLITUDE, -0.25, 0.25);
    EXPECT_LT(largest_outside(unit, -0.2505, 0.2505), 1e-6F);
    EXPECT_NEAR(unit.transform.scale, largest * before.transform.scale, 1e-5 * unit.transform.scale);
    const pc_result flat = act(PC_DEWEIGHT, 1);
    for (double x = -0.24; x < 0.25; x += 0.02) {
        EXPECT_NEAR(flat.transform.a[at(flat, x)], 1, 1e-3) << x;
        // Whole cycles apart, the phase is what it was.
        const double turn = flat.transform.p[at(flat, x)] - before.transform.p[at(before, x)];
        EXPECT_NEAR(turn, std::round(turn), 1e-3) << x;
    }
}

TEST_F(cut_signal, data_edits_keep_what_the_pairs_of_crosshairs_bound) {
    // In the image: one of two points goes, the other stays as it was.
    const pc_result before = open(point_cut({{10}, {-10, 0.5}}, 4));
    const pc_result one = act(PC_EDIT, 0, 2, -30.0, 0.0);
    const auto& u = one.cut.u;
    for (std::size_t k = 0; k < u.size(); k++) {
        const double expected = u[k] < -30 || u[k] > 0 ? 0 : before.cut.a[k] * before.cut.scale;
        const bool edge = u[k] == -30 || u[k] == 0; // halved
        EXPECT_NEAR(one.cut.a[k] * one.cut.scale, edge ? expected / 2 : expected, 1e-6) << u[k];
    }
    const pc_result slope = act(PC_SLOPE, 1, -0.3, 0.3);
    EXPECT_NEAR(slope_of(slope), -10, 0.02);

    // In the transform: a band with a gap, weighted anew over its whole width; an odd crosshair keeps the
    // rest.
    open(point_cut({{0}}, 4));
    const pc_result gap = act(PC_EDIT, 1, 4, -0.4, -0.1, 0.1, 0.4);
    EXPECT_LT(largest_outside(gap, -0.4005, 0.4005), 1e-6F);
    EXPECT_EQ(gap.transform.a[at(gap, 0)], 0);
    EXPECT_GT(gap.transform.a[at(gap, 0.15)], 0.9F);
    const cut_words echo = record(4, -0.4, -0.1, 0.1, 0.4);
    EXPECT_TRUE(std::equal(echo.begin(), echo.end(), gap.action.begin()));
    const pc_result rest = act(PC_EDIT, 0, 1, 0.0);
    EXPECT_EQ(rest.cut.a[0], 0);
    EXPECT_GT(rest.cut.a.back(), 0);
}

TEST_F(cut_signal, derivatives_are_those_of_the_shown_curves) {
    const pc_result r = open(point_cut({{2}}, 4));
    // The phase of the transform rises by 2 cycles a unit.
    const pc_result phase = act(PC_DIFFERENTIATE, 1, 1, 1);
    ASSERT_EQ(phase.what, pc_result::DERIVATIVE);
    EXPECT_EQ(phase.axis, r.transform.u);
    for (double x = -0.4; x < 0.41; x += 0.1) EXPECT_NEAR(phase.first[at(r, x)], 2, 1e-2);
    // Order 0 is the curve itself; order 2 of the real part is that of a cosine.
    const pc_result same = act(PC_DIFFERENTIATE, 0, 0, 2);
    EXPECT_EQ(same.first, r.cut.a);
    EXPECT_EQ(same.second, r.cut.p);
    act(PC_WEIGHT, 0, 0);
    const pc_result flat = act(PC_RESTORE), bend = act(PC_DIFFERENTIATE, 1, 2, 3);
    const double omega2 = std::pow(2 * M_PI * 2, 2);
    for (double x = -0.4; x < 0.41; x += 0.03) {
        EXPECT_NEAR(bend.first[at(r, x)], -omega2 * flat.transform.r[at(r, x)], 0.01 * omega2) << x;
        EXPECT_NEAR(bend.second[at(r, x)], -omega2 * flat.transform.q[at(r, x)], 0.01 * omega2) << x;
    }
    EXPECT_EQ(act(PC_RESTORE).what, pc_result::COMMON);
}

TEST_F(cut_signal, shown_phases_stand_next_to_zero_at_the_peak) {
    for (double turn : {0.0, 0.37, -0.49, 0.25}) {
        const pc_result r = open(point_cut({{-31.5, 1, turn}}, 4));
        for (const pc_curve* c : {&r.cut, &r.transform}) {
            const auto peak = std::max_element(c->a.begin(), c->a.end()) - c->a.begin();
            EXPECT_FLOAT_EQ(c->a[peak], 1);
            EXPECT_LE(std::fabs(c->p[peak]), 0.5F);
            for (std::size_t k = 0; k < c->u.size(); k++) {
                EXPECT_NEAR(c->a[k] * std::cos(2 * M_PI * c->p[k]), c->r[k], c->a[k] > 0.02F ? 1e-5 : 0.05);
            }
        }
        EXPECT_NEAR(std::remainder(r.cut.p[BAND * 2 - 126] - turn, 1.0), 0, 1e-4) << turn;
    }
}

// One-dimensional data: a sweep over 200 frequencies from 9000 MHz in steps of -2.5 MHz.
TEST_F(cut_signal, a_raw_signal_is_its_own_transform) {
    const int nw = 200;
    for (int kc : {2, -2, 1, -1}) {
        cut_words w = record(PC_INIT_1D, 0, kc, nw, 9000.0, -2.5);
        const int sign = kc < 0 ? -1 : 1;
        for (int k = 0; k < nw; k++) {
            const auto v = std::polar(2.0F, static_cast<float>(-sign * 2 * M_PI * 21.6 * k / nw));
            put(w, v.real());
            put(w, v.imag());
        }
        const pc_result r = open(w);
        ASSERT_EQ(r.what, pc_result::COMMON) << r.message;
        ASSERT_EQ(r.cut.u.size(), 1024U);
        EXPECT_NEAR(r.cut.scale, 2, 0.04); // next to the peak
        EXPECT_EQ(r.transform.u[199], 9000 - 199 * 2.5F);
        EXPECT_NEAR(r.transform.scale, 2.0 / nw, 1e-6);
        const pc_result peak = act(PC_PEAK_PAIR, -60.0, 60.0);
        EXPECT_NEAR(peak.peaks[0].position, 21.6, 0.01) << kc;
        EXPECT_NEAR(peak.peaks[0].width, 1, 0.02);
        const pc_result weighted = act(PC_WEIGHT, 2, 0);
        EXPECT_NEAR(act(PC_PEAKS, 1, 21.6).peaks[0].width, 1, 0.02) << weighted.message;
        for (int action : {PC_PARALLEL, PC_PERPENDICULAR, PC_SHIFT, PC_MOCOMP})
            EXPECT_EQ(message(action, 1.0, 9000.0, 500.0, 0), "***Action not activated");
        EXPECT_EQ(message(PC_WEIGHT, 1, 0), "***Error 130a");
    }
}

} // namespace
} // namespace norva
