// What stands between the window's block and the processor.
#include "driver.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"

#include <algorithm>

namespace norva {
namespace {

using namespace cut_test;

struct cut_block : ::testing::Test {
    xhairs x;
    procut_parms pc;
    pc_session session;
    pc_surroundings around;
    std::vector<float> data;

    void SetUp() override {
        forget();
        img.nt = 16;
        pc.xhrs = &x;
        around.f0 = 9000;
        around.df = 2;
        around.nf = 101;
        around.bw = 202;
        around.nbu = 1;
    }
    void cross(std::vector<float> at, int domain = 0, int invert = -1) {
        x.cnt = static_cast<int>(at.size());
        std::ranges::copy(at, x.xval.begin());
        x.domain = domain;
        x.invert = invert;
    }
    pc_outcome apply(int mode) {
        pc.mode = mode;
        return pc_perform(pc, session, around);
    }
    void take(int mode, int n, float c1, float dc) {
        data.assign(2 * static_cast<std::size_t>(n), 0.0F);
        for (int k = 0; k < n; k++)
            data[2 * k] = std::exp(-0.005F * static_cast<float>((k - n / 2) * (k - n / 2)));
        pc.data = data.data();
        pc.n = n;
        pc.c1 = c1;
        pc.dc = dc;
        cutj.jf = 0;
        EXPECT_EQ(apply(mode).message, "");
    }
};

TEST_F(cut_block, packs_each_action) {
    pc.lw = 2;
    pc.id = 1;
    pc.c1 = 2.5F;
    pc.p1 = 0.25F;
    pc.p2 = 0.75F;
    pc.pjmp = 0.3F;
    pc.kflag = 3;
    pc.kd = 2;
    pc.dwt = 1;
    session.mc_ok = true;
    const std::vector<float> ph = {0.1F, 0.2F}, breaks = {7};
    const pc_spline spline{.domain = 1, .x1 = -0.5F, .dx = 0.125F, .ph = ph, .breaks = breaks};
    around.spline = &spline;
    struct row {
        int action;
        std::vector<float> crosshairs;
        cut_words words;
    };
    const float a = 0.25F, b = 0.5F, fc = 9100;
    const row rows[] = {
        {PC_WEIGHT, {b, a}, record(1, 2, 2, a, b)},
        {PC_WEIGHT, {}, record(1, 2, 0)},
        {PC_EDIT, {b, a}, record(2, 1, 2, a, b)},
        {PC_SUB_SLOPE, {b, a}, record(3, 1, a, b, 0.25, 0.75)},
        {PC_SUB_SPLINE, {}, record(4)},
        {PC_PHASE_JUMP, {b, a}, record(5, a, b, 0.3)},
        {PC_ZERO_PHASE, {b, a}, record(6, a, b)},
        {PC_UNIT_AMPLITUDE, {b, a}, record(7, a, b)},
        {PC_DIFFERENTIATE, {}, record(8, 1, 2, 3)},
        {PC_RESTORE, {}, record(9)},
        {PC_DEWEIGHT, {}, record(10, 1)},
        {PC_PREVIOUS, {}, record(11, 1)},
        {PC_PEAKS, {b, a, 9}, record(14, 3, a, b, 9.0)},
        {PC_PEAK_PAIR, {b, a}, record(15, a, b, 0)},
        {PC_SLOPE, {b, a}, record(16, 1, a, b)},
        {PC_SPLINE, {}, record(17, 1, 1, 2, -0.5, 0.125, ph, breaks)},
        {PC_TSA, {b, a}, record(18, a, b, 0.25, 0.75, 0.3)},
        {PC_PARALLEL, {}, record(19, 2.5)},
        {PC_PERPENDICULAR, {b}, record(20, b, 1)},
        {PC_SHIFT, {b}, record(21, b, fc, 202.0, 1)},
        {PC_MOCOMP, {}, record(22, fc, 202.0)},
        {PC_RESTART, {}, record(23)},
        {PC_BACKUP, {}, record(24, 1)},
        {PC_FORWARD, {}, record(25)},
        {PC_EXIT, {}, record(26)},
        {PC_REENTRY, {}, record(27)},
    };
    for (const row& r : rows) {
        pc.mode = r.action;
        cross(r.crosshairs, 1, r.action >= PC_PERPENDICULAR ? 1 : -1);
        const pc_packed packed = pc_pack(pc, session, around);
        EXPECT_EQ(packed.refusal, "") << r.action;
        EXPECT_EQ(packed.record, r.words) << r.action;
    }
}

TEST_F(cut_block, refuses_what_the_processor_need_not_see) {
    constexpr const char* interval = "Set two crosshairs to define an interval.";
    struct row {
        int action, crosshairs;
        const char* text;
    };
    const row rows[] = {
        {PC_EDIT, 1, "Set at least two crosshairs."},
        {PC_PHASE_JUMP, 3, "Set two crosshairs on either side of the jump."},
        {PC_PEAKS, 0, "Set at least one crosshair for peak parameters."},
        {PC_PEAK_PAIR, 1, interval},
        {PC_SLOPE, 0, interval},
        {PC_SUB_SLOPE, 1, interval},
        {PC_ZERO_PHASE, 0, interval},
        {PC_UNIT_AMPLITUDE, 3, interval},
        {PC_SPLINE, 0, "You must FIT SPLINE first!"},
        {PC_TSA, 1, "Set two crosshairs; one at each scatterer location!"},
        {PC_PERPENDICULAR, 0,
         "Set a blue crosshair to take a perpendicular cut at peak.  Set a red crosshair to take cut at "
         "crosshair position.  Use the middle mouse button to toggle between modes/colors."},
        {PC_SHIFT, 2,
         "Set a blue crosshair on a peak to shift the peak to the origin in the image.  Set a red crosshair "
         "to "
         "shift that point to the origin in the image.  Use the middle mouse button to toggle between "
         "modes/colors."},
        {PC_MOCOMP, 0, "Must subtract phase slope or phase spline first!"},
    };
    take(PC_INIT, 64, -8, 0.25F);
    apply(PC_RESTORE);
    for (const row& r : rows) {
        cross(std::vector<float>(r.crosshairs, 0.5F));
        EXPECT_EQ(apply(r.action).message, r.text);
        EXPECT_EQ(pc.mode, r.action);
        EXPECT_EQ(x.cnt, r.crosshairs); // one may only be missing
    }
    const std::vector<float> ph(3), many(401);
    pc_spline spline{.phase_curve = false, .ph = ph, .breaks = {}};
    around.spline = &spline;
    EXPECT_EQ(apply(PC_SPLINE).message, "You must use a different TRELVA style!");
    spline = {.ph = ph, .breaks = many};
    EXPECT_EQ(apply(PC_SPLINE).message, "Too many break points -- must be <=400");
    // A failure of the processor leads back to the last action.
    cross({0.5F, 0.5F});
    EXPECT_EQ(apply(PC_EDIT).message, "***Error 102b...Crosshairs not in sequence");
    EXPECT_EQ(pc.mode, PC_RESTORE);
    EXPECT_EQ(x.cnt, 0);

    pc.data = data.data();
    pc.n = 0;
    EXPECT_EQ(apply(PC_INIT).message, "Number of samples of a cut must be 1 to 8192.");
    pc.n = 2049;
    EXPECT_EQ(apply(PC_INIT_1D).message, "Number of samples of a cut must be 1 to 2048.");
}

TEST_F(cut_block, one_dimensional_data_enter_by_an_action_of_their_own) {
    pc.kc = -2;
    pc.lw = 2;
    take(PC_INIT_1D, 40, 9000, 2);
    EXPECT_EQ(pc.mode, PC_INIT); // as the block sees it
    EXPECT_EQ(pc.kc, 2);
    EXPECT_EQ(kss, -1);
    EXPECT_EQ(pc.n, 256);
    EXPECT_EQ(pc.xn, 256);
    EXPECT_EQ(pc.u0, -20);
    EXPECT_EQ(pc.xu0, 9000);
    EXPECT_FLOAT_EQ(pc.xdu, 2 * 255);
    EXPECT_LT(pc.lims.g1y0, pc.lims.g1y1);
    EXPECT_EQ(pc.lims.g3y0, -0.5F); // real samples: no phase
    EXPECT_EQ(pc.lims.g3y1, 0.5F);
    pc.lw = 1;
    EXPECT_EQ(apply(PC_WEIGHT).message, "Circular weighting not available for 1-D data!");
    // The block's weighting follows the processor; the refused one does not stay after the next action.
    EXPECT_EQ(apply(PC_RESTORE).message, "");
    EXPECT_EQ(pc.lw, 2);
    pc.dwt = 1;
    apply(PC_DEWEIGHT);
    apply(PC_RESTART);
    EXPECT_EQ(pc.dwt, 0);
}

TEST_F(cut_block, an_inverted_edit_keeps_what_lies_outside) {
    take(PC_INIT, 64, -8, 0.25F);
    for (int domain : {0, 1}) {
        const float low = domain ? -0.25F : -1, high = domain ? 0.25F : 1;
        cross({high, low}, domain, 1);
        const pc_outcome o = apply(PC_EDIT);
        ASSERT_EQ(o.message, "");
        const pc_curve& c = domain ? o.result.transform : o.result.cut;
        for (std::size_t k = 0; k < c.u.size(); k++) {
            if (c.u[k] > low && c.u[k] < high) {
                EXPECT_EQ(c.a[k], 0) << c.u[k];
            }
        }
        EXPECT_GT(c.a[c.a.size() / 2 - 6 - (domain ? 28 : 0)], 0);
        EXPECT_EQ(o.result.action[0], 4); // the edges count
        apply(PC_RESTART);
    }
    // With seven set, the edges make nine.
    cross({-3, -2, -1, 0, 1, 2, 3}, 0, 1);
    EXPECT_EQ(apply(PC_EDIT).message, "***Error 102a...Improper number of crosshairs");
}

TEST_F(cut_block, two_scatterers_in_a_cut) {
    // 1.5 gates apart, 0.6 : 1, the nulls within the band.
    for (int sign : {-1, 1}) {
        kss = sign;
        const double strong = 4, weak = 5.5, null = -0.4;
        const double turn = -sign * (weak - strong) * null + 0.5;
        const pc_result start = open(point_cut({{strong}, {weak, 0.6, turn}}, 4));
        ASSERT_EQ(start.message, "");
        act(PC_WEIGHT, 2, 0);
        act(PC_DEWEIGHT, 1);
        const double second = null + 1 / 1.5, jump = std::asin(0.6) / M_PI;
        const pc_result r = act(PC_TSA, null + 0.08, second - 0.08, null, second, jump);
        ASSERT_EQ(r.what, pc_result::TSA) << r.message;
        EXPECT_NEAR(r.f1, strong, 0.05) << sign;
        EXPECT_NEAR(r.f2, weak, 0.05) << sign;
        EXPECT_NEAR(r.a2 / r.a1, 0.6, 1e-3);
        // The model has the amplitude and the phase that are shown.
        const pc_result shown = act(PC_RESTORE);
        ASSERT_EQ(r.am.size(), shown.transform.a.size());
        for (std::size_t k = 0; k < r.am.size(); k++) {
            if (std::fabs(shown.transform.u[k]) > 0.45) continue;
            EXPECT_NEAR(r.am[k], shown.transform.a[k], 0.06) << shown.transform.u[k];
            const double off = r.phs[k] - shown.transform.p[k];
            EXPECT_NEAR(std::remainder(off, 1.0), 0, 0.06) << shown.transform.u[k];
        }
    }
}

TEST_F(cut_block, results_that_do_not_hold_together_are_refused) {
    pc_result r;
    EXPECT_FALSE(pc_unpack(std::vector<std::int32_t>{}, r));
    EXPECT_FALSE(pc_unpack(std::vector<std::int32_t>{-1, 9000}, r));
    for (int mode = 0; mode < 30; mode++) {
        for (int count : {-1, 1 << 30}) {
            std::vector<std::int32_t> out = {5, mode};
            out.resize(5, count);
            EXPECT_EQ(pc_unpack(out, r), mode == PC_EXIT || mode == PC_REENTRY) << mode;
        }
    }
}

TEST_F(cut_block, delays_correct_the_data_and_are_kept) {
    reset_run_state();
    std::vector<std::string> shown;
    static std::vector<std::string>* sink;
    sink = &shown;
    app_hooks.popmsg = [](const std::string& text) { sink->push_back(text); };
    user.nf = 2;
    user.nt = 3;
    user.f0 = 1;
    user.df = 1;
    user.pfdata.reset(12);
    std::ranges::fill(user.pfdata, 1.0F);
    pc_result r;
    r.what = pc_result::DELAYS;
    r.delays = {0.25, 0.25, 0.25, 0.25};
    EXPECT_TRUE(pc_correct_data(r));
    // A quarter turn at 1 MHz, half a turn at 2 MHz, of 1 + i.
    EXPECT_NEAR(user.pfdata[0], -1, 1e-6);
    EXPECT_NEAR(user.pfdata[1], 1, 1e-6);
    EXPECT_NEAR(user.pfdata[2], -1, 1e-6);
    EXPECT_EQ(user.mc.ptr, 1);
    EXPECT_EQ(user.mc.nrecs, 1);
    EXPECT_EQ(user.mc.flag[0], MC_DELAY);
    EXPECT_EQ(user.mc.values(0), 4);
    EXPECT_EQ(user.mc.t[0].size(), 4U);
    r.delays.pop_back();
    EXPECT_FALSE(pc_correct_data(r));
    user.mc.ptr = 63;
    EXPECT_FALSE(pc_correct_data(r));
    EXPECT_EQ(shown.back(), "No more memory for user.mc (maxrecs=)");
    EXPECT_EQ(user.mc.ptr, 63);
    reset_run_state();
    app_hooks.popmsg = [](const std::string&) {};
}

} // namespace
} // namespace norva
