// Cuts of images of a turntable, and what they do to the raw data.
#include "../image/driver.h"
#include "cut/pc_apply.h"
#include "mocomp/mocomp.h"
#include "state/image_cut.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace norva::test {
namespace {

constexpr int signs[][2] = {{-1, 1}, {1, 1}, {-1, -1}, {1, -1}};
constexpr int SIZE = 32;
constexpr double px = 6.1, py = -4.8; // the point that is wanted

// One cut in a window without a display.
struct open_cut {
    xhairs x;
    procut_parms pc;
    pc_session session;
    pc_surroundings around;
    pc_outcome last;

    open_cut(const turntable& t, const pi_result& cut) {
        around.f0 = static_cast<float>(t.s.f0);
        around.df = static_cast<float>(t.s.df);
        around.nf = t.s.nf;
        around.bw = static_cast<float>(t.s.nf * t.s.df);
        pc.xhrs = &x;
        pc.lw = 1;
        pc.kc = cut.kc;
        pc.n = static_cast<int>(cut.cut.size() / 2);
        pc.c1 = cut.c1;
        pc.dc = cut.dc;
        pc.data = cut.cut.data();
        act(PC_INIT);
        pc.data = nullptr;
    }
    const pc_result& act(int mode, std::vector<float> crosshairs = {}, int domain = 0, int invert = 0) {
        pc.mode = mode;
        x.cnt = static_cast<int>(crosshairs.size());
        std::ranges::copy(crosshairs, x.xval.begin());
        x.domain = domain;
        x.invert = invert;
        last = pc_perform(pc, session, around);
        EXPECT_EQ(last.message, "");
        return last.result;
    }
};

struct scenario {
    int ksx, ksy, flop;
    double angle;
};

// The image of the data again after a correction: where its strongest point is.
pi_result compensated(const turntable& t, std::vector<float> data, const std::vector<double>& delays,
                      formation how) {
    mocomp(data.data(), t.s.nf, t.s.nt, static_cast<float>(t.s.f0), static_cast<float>(t.s.df), 0,
           delays.data());
    test::act(init_record(data, t.s.nf, t.s.nt, how));
    return test::act(record(PI_PEAK_PARAMETERS).f(0).f(0));
}

// A cut whose pivot lies 2 gates beside the point, on the line through it.
pi_result cut_through(double x, double y, double angle) {
    const double rad = angle * M_PI / 180;
    return act(record(PI_CUT).f(20).f(0.25).f(x + 2 * std::cos(rad)).f(y + 2 * std::sin(rad)).f(angle));
}

TEST(cut_of_image, the_point_moves_to_the_origin_of_the_next_image) {
    for (auto [ksx, ksy] : signs) {
        for (double angle : {0.0, 180.0, 90.0, -90.0, 30.0, 120.0, -150.0}) {
            for (int flop : {0, 3}) {
                SCOPED_TRACE(testing::Message() << ksx << ' ' << ksy << ' ' << angle << " flop " << flop);
                turntable t(SIZE, SIZE, ksx, ksy);
                t.add(px, py);
                t.add(-3.5, 8.2, 0.6, 0.3);
                t.add(-9, -9, 0.5, 0.1);
                const std::vector<float> data = t.data();
                const formation how{.ksx = ksx, .ksy = ksy, .ifx = 4, .ify = 4};
                act(init_record(data, SIZE, SIZE, how));
                if (flop) act(record(PI_FLOP).i(flop));
                const double x = flop ? -px : px, y = flop ? -py : py;
                const pi_result cut = cut_through(x, y, angle);
                ASSERT_EQ(cut.mode, PI_CUT) << cut.message;
                open_cut w(t, cut);
                // The point stands 2 gates before the pivot.
                const pc_result& shift = w.act(PC_SHIFT, {-1.8F}, 0, 1);
                ASSERT_EQ(shift.delays.size(), SIZE + 1U);
                const pi_result moved = compensated(t, data, shift.delays, how);
                EXPECT_NEAR(moved.xpk, 0, 0.1);
                EXPECT_NEAR(moved.ypk, 0, 0.1);
                EXPECT_GT(moved.apk, 0.9 * moved.ascl);

                // The same by its phase: isolated, measured, subtracted. The old image must come back first.
                act(init_record(data, SIZE, SIZE, how));
                if (flop) act(record(PI_FLOP).i(flop));
                open_cut v(t, cut_through(x, y, angle));
                v.act(PC_EDIT, {-4, 0});
                const pc_result slope = v.act(PC_SLOPE, {-0.3F, 0.3F}, 1);
                EXPECT_NEAR((slope.p2 - slope.p1) / (slope.crosshairs[1] - slope.crosshairs[0]), -2, 0.05);
                v.act(PC_SUB_SLOPE, slope.crosshairs, 1);
                v.act(PC_SLOPE, {-0.3F, 0.3F}, 1); // a look at what is left changes nothing
                const pi_result centred = compensated(t, data, v.act(PC_MOCOMP).delays, how);
                EXPECT_NEAR(centred.xpk, 0, 0.1);
                EXPECT_NEAR(centred.ypk, 0, 0.1);
            }
        }
    }
}

TEST(cut_of_image, a_phase_spline_focuses_a_point_that_moves) {
    for (auto [ksx, ksy] : signs) {
        for (double angle : {0.0, 180.0}) {
            SCOPED_TRACE(testing::Message() << ksx << ' ' << ksy << ' ' << angle);
            turntable t(SIZE, 64, ksx, ksy);
            t.add(0, 3);
            // A delay bent by 1.2 cycles of phase between the middle and the ends, skewed so that a spline
            // backwards in time would not do.
            t.s.motion = [&t](double time) {
                const double u = 2 * time / (t.s.dt * t.s.nt) - 1;
                return (1.2 * u * u + 0.4 * u * u * u) / 9000;
            };
            const std::vector<float> data = t.data();
            const formation how{.ksx = ksx, .ksy = ksy, .ifx = 4, .ify = 4};
            const pi_result blurred = act(init_record(data, SIZE, 64, how));
            open_cut w(t, act(record(PI_CUT).f(64).f(0.25).f(0).f(3).f(angle)));
            w.act(PC_WEIGHT);
            const pc_curve& c = w.last.result.transform;
            const auto step = c.u[1] - c.u[0];
            const auto first = static_cast<std::size_t>(std::lround((-0.46 - c.u[0]) / step));
            const auto n = static_cast<std::size_t>(std::lround(0.92 / step));
            pc_spline spline;
            spline.domain = 1;
            spline.x1 = c.u[first];
            spline.dx = step;
            spline.ph = std::span(c.p).subspan(first, n);
            const std::vector<float> phases(spline.ph.begin(), spline.ph.end());
            spline.ph = phases;
            w.around.spline = &spline;
            w.act(PC_SPLINE);
            w.act(PC_SUB_SPLINE);
            compensated(t, data, w.act(PC_MOCOMP).delays, how);
            const pi_result sharp = act(record(PI_PEAK_PARAMETERS).f(0).f(3));
            EXPECT_NEAR(sharp.xpk, 0, 0.1);
            EXPECT_GT(sharp.ascl, 1.5F * blurred.ascl);
            t.s.motion = {};
            EXPECT_NEAR(sharp.ascl / act(t.init({.ifx = 4, .ify = 4})).ascl, 1, 0.01);
        }
    }
}

TEST(cut_of_image, new_cuts_run_beside_and_across) {
    turntable t(SIZE, SIZE, -1, 1);
    t.add(px, py);
    for (double angle : {0.0, 90.0, 30.0, 120.0, -150.0}) {
        SCOPED_TRACE(angle);
        act(t.init({.ifx = 4, .ify = 4}));
        open_cut w(t, cut_through(px, py, angle));
        const double rad = angle * M_PI / 180;
        w.pc.c1 = 3; // to the left of the cut's direction
        const pc_result beside = w.act(PC_PARALLEL);
        EXPECT_NEAR(beside.xpv, px + 2 * std::cos(rad) - 3 * std::sin(rad), 1e-3);
        EXPECT_NEAR(beside.ypv, py + 2 * std::sin(rad) + 3 * std::cos(rad), 1e-3);
        EXPECT_NEAR(beside.agl, angle, 1e-3);
        EXPECT_NEAR(beside.wct, 20, 1e-3);
        EXPECT_EQ(beside.dct, 0.25F);
        const pc_result across = w.act(PC_PERPENDICULAR, {-1.7F}, 0, 1);
        EXPECT_NEAR(across.crosshairs[0], -2, 0.05);
        EXPECT_NEAR(across.xpv, px, 0.05);
        EXPECT_NEAR(across.ypv, py, 0.05);
        const double turn = across.agl - angle;
        EXPECT_NEAR(std::fabs(std::remainder(turn, 180.0)), 90, 1e-3);
        EXPECT_LE(across.agl, 135);
        EXPECT_FLOAT_EQ(w.act(PC_PERPENDICULAR, {-1.7F}, 0, 0).crosshairs[0], -1.7F);
    }
}

// The work in the cut window is part of the image's step, and comes back with it.
TEST(cut_of_image, the_image_keeps_a_cut_and_gives_it_back) {
    turntable t(SIZE, SIZE, -1, 1);
    t.add(px, py);
    act(t.init({.ifx = 4, .ify = 4}));
    act(record(PI_STATUS));
    open_cut w(t, cut_through(px, py, 30));
    EXPECT_EQ(w.last.result.step, 200);
    w.act(PC_WEIGHT, {-0.2F, 0.3F}, 1);
    w.act(PC_SLOPE, {-0.1F, 0.1F}, 1);
    const pc_result weighted = w.act(PC_RESTORE);
    w.act(PC_EXIT);
    ASSERT_EQ(act(record(PI_STORE_CUT)).what, pi_result::CUT_STORED);
    act(record(PI_FLOP).i(1));
    // Back to before the cut, on to it, and through its stored steps.
    act(record(PI_GO).i(1));
    const pi_result again = act(record(PI_STEP).i(1));
    open_cut v(t, again);
    EXPECT_EQ(v.last.result.step, 200);
    EXPECT_EQ(v.act(PC_FORWARD).mode, PC_WEIGHT);
    EXPECT_EQ(v.act(PC_FORWARD).what, pc_result::SLOPE);
    const pc_result same = v.act(PC_FORWARD);
    EXPECT_EQ(same.cut.a, weighted.cut.a);
    EXPECT_EQ(same.transform.p, weighted.transform.p);
    // Back to the measurement: it comes with the signal that it belongs to.
    v.act(PC_BACKUP);
    EXPECT_EQ(v.last.result.what, pc_result::SLOPE);
    EXPECT_EQ(v.last.display.what, pc_result::COMMON);
    EXPECT_EQ(v.last.display.transform.a, weighted.transform.a);
    // Left unchanged, the image keeps the flop behind it.
    v.act(PC_EXIT);
    act(record(PI_STORE_CUT));
    EXPECT_EQ(act(record(PI_STEP).i(1)).mode, PI_FLOP);
    // Played to its end and changed, it does not.
    act(record(PI_GO).i(2));
    act(record(PI_GO).i(1));
    open_cut u(t, act(record(PI_STEP).i(1)));
    EXPECT_EQ(u.act(PC_ABORT).what, pc_result::ENDED);
    EXPECT_TRUE(u.session.playback);
    act(record(PI_GO).i(1));
    open_cut z(t, act(record(PI_STEP).i(1)));
    z.act(PC_WEIGHT);
    z.act(PC_EXIT);
    act(record(PI_STORE_CUT));
    EXPECT_EQ(act(record(PI_STEP).i(1)).message, "***Error 116...Cannot advance any further");
}

} // namespace
} // namespace norva::test
