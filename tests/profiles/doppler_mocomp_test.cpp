// Doppler profiles of scenes with known motion, and the corrections that bring them to rest.
#include "doppler_fixture.h"

#include <limits>

namespace norva::test {
namespace {

// Crossrange sign, frequency step, part of the interval that a record's sweep takes.
struct set_up {
    int ksx;
    double df, duty;
};
class doppler_scene_test : public doppler_test, public testing::WithParamInterface<set_up> {
protected:
    // X band with a fractional bandwidth of 0.2 %: a correction at the centre frequency serves all of them.
    scene base() const {
        scene s;
        s.nf = 16;
        s.nt = 256;
        s.f0 = 9000;
        s.df = GetParam().df;
        s.dt = 0.005;
        s.t0 = 2;
        s.duty = GetParam().duty;
        return s;
    }
    // Gates of Doppler for a frequency in Hz.
    static double gates(double hertz, int wdw) { return -GetParam().ksx * hertz * 0.005 * wdw; }
};
INSTANTIATE_TEST_SUITE_P(signs, doppler_scene_test,
                         testing::Values(set_up{-1, 1, 0}, set_up{1, 1, 0}, set_up{-1, -1, 0.9},
                                         set_up{1, 1, 0.5}));

TEST_P(doppler_scene_test, points_of_a_turntable_stand_at_their_doppler) {
    scene s = base();
    s.table.da = 1e-4; // so slow that no point leaves range 0
    const double xs[] = {-9, 2.5, 12};
    for (double x : xs) {
        scene_point p;
        p.x = x;
        p.amplitude = x > 0 ? 1 : 0.8;
        s.points.push_back(p);
    }
    load_scene(s, GetParam().ksx);
    show(64, 4, 8);
    ASSERT_EQ(dp.nf, 256);
    ASSERT_EQ(user.dp_nc, 32);
    EXPECT_NEAR(user.dp_t0, 2 + 3.5 * 0.005, 1e-6); // 249 = 31*8+1 intervals: 3 and 4 are left over
    for (double x : xs) {
        // 2 x w / wavelength, w = da/dt.
        const double at = gates(2 * x * 1e-4 / 0.005 * scene_centre(s) / scene_light, 64);
        const int i = static_cast<int>(std::lround((at - dp.d1) / dp.dd));
        const float* row = &user.dpdata[static_cast<std::size_t>(16) * dp.nf];
        // A maximum within a sample, as high as the sum of the weights allows.
        int top = i;
        for (int k : {i - 1, i + 1})
            if (row[k] > row[top]) top = k;
        EXPECT_GT(row[top], row[top - 1]);
        EXPECT_GT(row[top], row[top + 1]);
        EXPECT_NEAR(std::sqrt(row[top]) / (0.54 * 16 * 0.54 * 64), x > 0 ? 1 : 0.8, 0.06) << x;
    }
}

TEST_P(doppler_scene_test, centre_brings_a_moving_target_to_rest) {
    scene s = base();
    scene_point p;
    p.doppler = 37;
    s.points = {p};
    load_scene(s, GetParam().ksx);
    user.nt0 = 11;
    show(64, 8, 4);
    const double at = gates(37, 64);
    EXPECT_NEAR(row_peak(30), at, 0.6 * dp.dd);
    press_at(at, 2.5);
    EXPECT_EQ(user.mc.ptr, 0) << "before Center is pressed";
    EXPECT_TRUE(press("Center"));
    for (int button : {1, 2}) press_at(at, 2.5, button);
    EXPECT_EQ(user.mc.ptr, 0);
    press_at(at, 2.5);
    ASSERT_EQ(user.mc.ptr, 1);
    EXPECT_EQ(user.mc.nrecs, 1);
    EXPECT_EQ(user.mc.flag[0], MC_DELAY);
    EXPECT_EQ(user.mc.nt0[0], 11);
    ASSERT_EQ(user.mc.t[0].size(), 257u);
    const double pixel = 1 / (dp.picture.dp_df.xscale * dp.disp->xpinch);
    EXPECT_NEAR(dp.x, at, pixel);
    // The rest is what the pointer could not resolve.
    for (int first : {0, 90, 192}) EXPECT_NEAR(direct_peak(first, 64), at - dp.x, 0.02) << first;
    EXPECT_LT(pixel, 0.1);
    // No delay at mid-run: what stood at range 0 stays there.
    EXPECT_NEAR(user.mc.t[0][128], 0, 1e-12);
    EXPECT_EQ(dp.m_mode, DP_MODE_CENTER);
    EXPECT_EQ(steps(), (std::vector<int>{0, 29, 30, 32}));

    // Once more, without a pointer.
    xdp_set_position(direct_peak(90, 64));
    xdp_mocomp(0);
    EXPECT_NEAR(direct_peak(90, 64), 0, 2e-3);
}

TEST_P(doppler_scene_test, drift_is_measured_and_removed) {
    for (double rate : {4.0, -11.0, 0.3}) { // Hz per second
        scene s = base();
        s.points.resize(2);
        s.points[0].doppler = 5;
        s.points[1].doppler = 20;
        s.points[1].amplitude = 0.3;
        const double fc = scene_centre(s);
        s.motion = [=](double t) { return -0.5 * rate * (t - 2) * (t - 2) / fc; };
        load_scene(s, GetParam().ksx);
        user.mc = {};
        show(64, 4, 4);
        const int n = (256 - 64) / 4; // windows from the first to the last full one
        const double before = (direct_peak(192, 64) - direct_peak(0, 64)) / n;
        EXPECT_NEAR(before, gates(rate * 4 * 0.005, 64), 0.004);
        EXPECT_TRUE(press("Rmv Drift"));
        ASSERT_EQ(user.mc.ptr, 1);
        EXPECT_NEAR((direct_peak(192, 64) - direct_peak(0, 64)) / n, 0, 0.01) << rate;
        const double per_record = rate * 0.005 * 0.005; // cycles
        for (int i : {0, 1, 100, 256})
            EXPECT_NEAR(user.mc.t[0][i], -0.5 * i * i * per_record / fc, 0.5 * i * i * 0.03 / 1024 / fc) << i;
        EXPECT_EQ(steps(), (std::vector<int>{0, 29, 30, 31}));
        xdp_cb(xdp_window(), 0);
        std::vector<std::int32_t> out;
        journal(std::vector<std::int32_t>{95}, out);
        eoj = user.count = 0;
    }
}

TEST_F(doppler_test, corrections_that_cannot_be_made_are_refused) {
    const struct {
        const char* what;
        int nt, ptr, tag, izoom;
        const char* message; // null: it is made
    } cases[] = {
        {"the 64th", 40, 63, 0, 0, "No more memory for user.mc (maxrecs=64)"},
        {"the 64th", 40, 63, 1, 0, "No more memory for user.mc (maxrecs=64)"},
        {"the 63rd", 40, 62, 0, 0, nullptr},
        {"drift of 2501", 2501, 0, 1, 0, "nft must be < 10000 for gfft()!"},
        {"drift of 2500", 2500, 0, 1, 0, nullptr},
        {"centre of 2501", 2501, 0, 0, 0, nullptr},
        {"drift of 2", 2, 0, 1, 0, nullptr},
        {"centre while zoomed", 40, 0, 0, 2, nullptr},
    };
    for (const auto& c : cases) {
        load(8, c.nt, 1, {{0}});
        user.mc = {};
        user.mc.ptr = user.mc.nrecs = c.ptr;
        managing = 1; // the journal is not looked at
        parameters(2, 8, 2);
        xdp();
        xdp_ok(nullptr, 0);
        while (dp.izoom < c.izoom) xdp_cb(nullptr, 7);
        messages.clear();
        const jbuf<float> before = user.pfdata;
        xdp_set_position(0.5);
        xdp_mocomp(c.tag);
        EXPECT_EQ(messages, c.message ? std::vector<std::string>{c.message} : std::vector<std::string>{})
            << c.what;
        EXPECT_EQ(user.mc.ptr, c.message ? c.ptr : c.ptr + 1) << c.what;
        if (c.message) {
            EXPECT_TRUE(std::equal(before.begin(), before.end(), user.pfdata.begin())) << c.what;
        }
        EXPECT_EQ(dp.izoom, c.izoom);
    }
    // While zoomed the drift button does nothing, and shows it.
    load(8, 40, 1, {{0}});
    user.mc = {};
    xdp();
    xdp_ok(nullptr, 0);
    EXPECT_TRUE(usable("Rmv Drift"));
    xdp_cb(nullptr, 7);
    EXPECT_FALSE(usable("Rmv Drift"));
    xdp_cb(xdp_window(), 13);
    EXPECT_EQ(user.mc.ptr, 0);
    xdp_cb(nullptr, 8);
    EXPECT_TRUE(usable("Rmv Drift"));
}

TEST_F(doppler_test, data_without_a_signal_are_safe) {
    const float nan = std::nanf("");
    for (float v : {0.0f, nan, std::numeric_limits<float>::infinity()}) {
        load(8, 40, 1, {{0}});
        std::fill(user.pfdata.begin(), user.pfdata.end(), v);
        user.mc = {};
        managing = 1;
        parameters(8, 2, 1);
        xdp();
        xdp_ok(nullptr, 0);
        EXPECT_TRUE(dp.okset);
        dp_gate gate;
        EXPECT_FALSE(strongest_doppler_gate(gate));
        for (int tag : {13, 7, 8, 15, -1, -2, -4, -5}) xdp_cb(nullptr, tag);
        for (double x : {1.0, std::nan(""), 1e300 * 1e10}) {
            xdp_set_position(x);
            xdp_mocomp(0);
        }
        for (int i = 0; i < user.mc.ptr; i++)
            for (double t : user.mc.t[i]) ASSERT_TRUE(std::isfinite(t));
        EXPECT_EQ(user.mc.ptr, 2);
    }
    // One bad record leaves the rate of the others.
    scene s;
    s.nf = 8;
    s.nt = 200;
    s.points.resize(1);
    s.motion = scene_motion(s, 0, 1e-4);
    load_scene(s, -1);
    const double rate = -1e-4 * scene_gate(s) * scene_centre(s); // cycles per record per record
    for (int k = 0; k < 16; k++) user.pfdata[16 * 77 + k] = nan;
    user.mc = {};
    xdp_ok(nullptr, 0);
    xdp_mocomp(1);
    ASSERT_EQ(user.mc.ptr, 1);
    EXPECT_NEAR(user.mc.t[0][100] * scene_centre(s), -0.5 * 1e4 * rate, 0.5 * 1e4 * 0.05 / 800);
}

TEST_F(doppler_test, typed_parameters_count_from_the_next_correction_on) {
    load(16, 100, 1, {{0}});
    show(16, 4, 2);
    rec.enter(field(0), "24"); // and not initialised
    EXPECT_EQ(user.dp_ni, 16);
    press("Rmv Drift");
    EXPECT_EQ(user.dp_ni, 24);
    // A replay of the step shows the parameters that it had.
    std::vector<std::int32_t> words;
    journal(std::vector<std::int32_t>{JOURNAL_GOTO, 2}, words);
    managing = 1;
    std::copy_n(&words[8], 3, user.doppler());
    xdp_ok(nullptr, 0);
    managing = 0;
    EXPECT_EQ(value(0), 16);
}

} // namespace
} // namespace norva::test
