// The Doppler profile window: what its controls and the pointer do.
#include "doppler_fixture.h"

#include "signal/numbers.h"

namespace norva::test {
namespace {

TEST_F(doppler_test, opens_empty_and_waits_for_initialize) {
    load(16, 60, 1, {{0}});
    parameters(16, 4, 2);
    user.dpdata.reset(5);
    open_doppler();
    EXPECT_EQ(dpwinon, 1);
    EXPECT_EQ(rec.window(top()).text, "NORVA: Doppler profile");
    EXPECT_EQ(rec.window(top()).rect.x, 160);
    EXPECT_EQ(rec.window(top()).rect.y, 10);
    EXPECT_FALSE(user.dpdata);
    EXPECT_EQ(value(0), 16);
    EXPECT_EQ(value(1), 4);
    EXPECT_EQ(value(2), 2);
    for (const char* idle : {"Rmv Drift", "Center"}) EXPECT_FALSE(usable(idle)) << idle;
    for (const char* idle : {"Peaks", "HELP"}) EXPECT_EQ(control(idle), 0) << idle;
    for (int tag : {1, 4, 7, 8, 10, 13, 14, 15, -4, -5}) xdp_cb(tag > 0 ? xdp_window() : nullptr, tag);
    press_at(1, 0.1);
    EXPECT_FALSE(user.dpdata);
    EXPECT_FALSE(dp.picture.frame);
    EXPECT_EQ(user.mc.ptr, 0);
    EXPECT_EQ(steps(), (std::vector<int>{0, 29}));

    EXPECT_TRUE(press("INITIALIZE"));
    EXPECT_EQ(steps(), (std::vector<int>{0, 29, 30}));
    EXPECT_TRUE(dp.picture.frame);
    EXPECT_EQ(user.dp_nc, 30);
    EXPECT_EQ(dp.nf, 64);
    EXPECT_EQ(user.dpdata.size(), 64u * 30);
    EXPECT_NEAR(user.dp_t0, 1.005, 1e-6);
    EXPECT_FLOAT_EQ(user.dp_w[0], 2 / 16.0f);
    EXPECT_EQ(row_peak(15), 0);
    for (const char* now : {"Rmv Drift", "Center", "Plot"}) EXPECT_TRUE(usable(now)) << now;
    dp_gate gate;
    ASSERT_TRUE(strongest_doppler_gate(gate));
    EXPECT_EQ(gate.doppler, 0);

    // Opened again it is empty again.
    xdp();
    EXPECT_FALSE(dp.picture.frame);
    EXPECT_FALSE(strongest_doppler_gate(gate));
    press("INITIALIZE");
    EXPECT_TRUE(press("DISMISS"));
    EXPECT_EQ(dpwinon, 0);
    EXPECT_FALSE(rec.visible(top()));
    EXPECT_EQ(steps(), (std::vector<int>{0, 29, 30, 29, 30, 1}));

    // Profiles can be formed behind a closed window, by the record's parameters.
    parameters(8, 2, 5);
    xdp_cb(nullptr, -1);
    EXPECT_EQ(user.dp_ni, 8);
    EXPECT_EQ(user.dp_nc, 12);
    EXPECT_TRUE(strongest_doppler_gate(gate));
    EXPECT_FALSE(rec.visible(top()));

    // With a peak editor and a help library there are two buttons more.
    xdp_reset_for_tests();
    static int mode;
    dp_hooks.xpk_init = [](int m) { mode = m; };
    wi_hooks.help = [](const std::string&) {};
    xdp();
    rec.run_pending();
    press("INITIALIZE");
    EXPECT_NE(control("HELP"), 0);
    press("Center");
    EXPECT_TRUE(press("Peaks"));
    EXPECT_EQ(mode, 2);
    EXPECT_EQ(pkswinon, 1);
    EXPECT_EQ(dp.m_mode, DP_MODE_NONE);
    // The editor leaves three buttons alive.
    for (const char* idle : {"DISMISS", "INITIALIZE", "Plot"}) EXPECT_FALSE(usable(idle)) << idle;
    xdp_cb(xdp_window(), 0);
    xdp_cb(xdp_window(), 7);
    EXPECT_EQ(dpwinon, 1);
    EXPECT_EQ(dp.izoom, 0);
    EXPECT_TRUE(press("Center"));
    EXPECT_EQ(dp.m_mode, DP_MODE_CENTER);
    EXPECT_TRUE(press("Rmv Drift"));
    EXPECT_EQ(user.mc.ptr, 1);
}

TEST_F(doppler_test, parameters_stay_within_their_limits) {
    load(4, 600, 1, {{0}});
    parameters(0, 99, -3);
    open_doppler();
    const auto shows = [&](int wdw, int ifact, int lag) {
        return value(0) == wdw && value(1) == ifact && value(2) == lag;
    };
    EXPECT_TRUE(shows(1, 16, 1));
    const struct {
        int tag, wdw, ifact, lag;
    } arrows[] = {{2, 1, 16, 1}, {1, 2, 16, 1}, {4, 2, 16, 1}, {5, 2, 8, 1}, {5, 2, 4, 1}, {5, 2, 2, 1},
                  {5, 2, 1, 1},  {5, 2, 1, 1},  {4, 2, 2, 1},  {8, 2, 2, 1}, {7, 2, 2, 2}};
    for (const auto& a : arrows) {
        xdp_ok(xdp_window(), a.tag);
        EXPECT_TRUE(shows(a.wdw, a.ifact, a.lag)) << a.tag;
    }
    rec.enter(field(0), "9999");
    rec.enter(field(1), "3");
    rec.enter(field(2), "1e30");
    EXPECT_EQ(value(0), 512);
    EXPECT_EQ(value(1), 3);
    xdp_ok(xdp_window(), 4);
    xdp_ok(xdp_window(), 4);
    xdp_ok(xdp_window(), 4);
    EXPECT_EQ(value(1), 16);
    for (const char* nonsense : {"", "-", "x", "nan", "-1e999", "0"}) {
        for (int k = 0; k < 3; k++) rec.enter(field(k), nonsense);
        EXPECT_TRUE(shows(1, 1, 1)) << nonsense;
    }
}

TEST_F(doppler_test, parameters_that_give_no_profiles) {
    const struct {
        int nf, nt, wdw, ifact, lag;
        const char* message; // null: accepted
    } cases[] = {
        {4, 600, 512, 16, 1, "FFT size (WDW)*(IFACT) must be <= 2048!"},
        {4, 600, 129, 16, 1, "FFT size (WDW)*(IFACT) must be <= 2048!"},
        {4, 600, 128, 16, 1, nullptr},
        {4, 40, 41, 1, 1, "WDW=41 must be <= NT=40"},
        {4, 40, 40, 1, 1, nullptr},
        {4, 40, 7, 1, 1 << 30, nullptr},
        {4, 2, 1, 1, 1, "Doppler profiles need more records, or a WDW of 2."},
        {4, 2, 2, 1, 1, nullptr},
        {1, 150000, 128, 16, 1, "149999 Doppler profiles of 2048 samples are too many: raise LAG."},
        {1, 150000, 128, 16, 100, nullptr},
    };
    load(4, 40, 1, {{0}});
    parameters(8, 1, 1);
    open_doppler();
    managing = 1;
    for (const auto& c : cases) {
        load(4, 40, 1, {{0}});
        parameters(8, 1, 1);
        xdp_ok(nullptr, 0);
        ASSERT_TRUE(dp.picture.frame);
        load(c.nf, c.nt, 1, {{0}});
        parameters(c.wdw, c.ifact, c.lag);
        messages.clear();
        xdp_ok(nullptr, 0);
        EXPECT_EQ(messages, c.message ? std::vector<std::string>{c.message} : std::vector<std::string>{})
            << c.wdw;
        EXPECT_EQ(dp.okset, c.message == nullptr) << c.wdw;
        EXPECT_EQ(dp.picture.frame != nullptr, c.message == nullptr) << c.wdw;
        if (!c.message) {
            EXPECT_EQ(dp.nf, mynino(c.wdw * c.ifact));
        }
    }
    managing = 0;
    // A refusal is no step; the controls of the picture rest until the parameters are accepted.
    rec.enter(field(0), "512");
    rec.enter(field(1), "16");
    const std::size_t before = steps().size();
    press("INITIALIZE");
    EXPECT_EQ(steps().size(), before);
    EXPECT_FALSE(usable("Center"));
    xdp_cb(nullptr, -1);
    EXPECT_FALSE(dp.okset);
    // Too many range gates: there is no signal at range 0 to look at.
    messages.clear();
    load(600, 40, 1, {{0}});
    rec.enter(field(0), "8");
    rec.enter(field(1), "1");
    plotwin_put_interpolation(16);
    press("INITIALIZE");
    EXPECT_EQ(messages, (std::vector<std::string>{"user.nr>4096 -- xrp!"}));
    EXPECT_FALSE(dp.okset);
}

TEST_F(doppler_test, zoom_cuts_the_profiles_about_doppler_zero) {
    const struct {
        int wdw, ifact, nf, steps; // steps: largest k with 2^k <= wdw*ifact, as long as samples are left
    } cases[] = {{16, 4, 64, 6}, {7, 1, 8, 2}, {15, 1, 15, 3}, {25, 3, 75, 6}, {1, 1, 2, 0}};
    scene s;
    s.nf = 8;
    s.nt = 50;
    s.noise = 1;
    for (const auto& c : cases) {
        load_scene(s, 1);
        managing = 1;
        parameters(c.wdw, c.ifact, 3);
        xdp();
        xdp_ok(nullptr, 0);
        ASSERT_EQ(dp.nf, c.nf);
        const std::vector<float> whole = shown();
        const int row = user.dp_nc / 2;
        for (int k = 0; k <= c.steps + 1; k++) {
            const int zooms = std::min(k, c.steps);
            ASSERT_EQ(dp.izoom, zooms) << c.wdw;
            ASSERT_EQ(dp.nf, c.nf >> zooms) << c.wdw;
            for (int d = 0; d < dp.nf; d++) {
                const double t = user.dp_t0 / s.dt + 3 * row; // centre, in records from 0
                const int from = static_cast<int>(std::lround(t - 0.5 * (c.wdw - 1)));
                ASSERT_NEAR(user.dpdata[static_cast<std::size_t>(row) * dp.nf + d],
                            direct_power(from, c.wdw, dp.d1 + d * dp.dd), 1e-4 * c.wdw * c.wdw * 64)
                    << c.wdw << " zoom " << k << " element " << d;
            }
            xdp_cb(nullptr, 7);
        }
        for (int k = c.steps; k-- > 0;) {
            xdp_cb(nullptr, 8);
            EXPECT_EQ(dp.nf, c.nf >> k);
        }
        EXPECT_EQ(shown(), whole);
        xdp_cb(nullptr, 8);
        EXPECT_EQ(dp.izoom, 0);
        // A refresh keeps the zoom, a new opening does not.
        if (c.steps == 0) continue;
        xdp_cb(nullptr, 7);
        for (int tag : {-1, -4, -5, -3}) {
            xdp_cb(nullptr, tag);
            EXPECT_EQ(dp.izoom, 1) << tag;
            EXPECT_EQ(dp.nf, c.nf / 2) << tag;
        }
    }
}

TEST_F(doppler_test, plot_controls) {
    static int narrowed;
    narrowed = 0;
    rp_hooks.downsize = [](int, int, int) { return ++narrowed; };
    load(8, 200, 1, {{0}}); // 1 s to 3 s
    def.dp_pkht = 2;
    show(16, 2, 5); // 40 rows, 0.05 s apart
    ASSERT_EQ(user.dp_nc, 40);
    EXPECT_NEAR(dp.picture.stime, user.dp_t0, 1e-6);
    EXPECT_NEAR(dp.picture.etime, user.dp_t0 + 40 * 0.05, 1e-6);
    EXPECT_EQ(dp.picture.height, 2);
    press("Plot");
    EXPECT_TRUE(rec.visible(plot_top()));
    plotwin_put_times(0.8, plotwin_centre());
    plotwin_cb(plotwin_window(), 12);
    EXPECT_NEAR(dp.picture.etime - dp.picture.stime, 0.8, 1e-4);
    const double stime = dp.picture.stime, etime = dp.picture.etime;

    // Another scaling recomputes and keeps the span; values are squared.
    const std::vector<float> power = shown();
    rec.select(rec.all(port_kind::combo, plot_top()).at(0), 1);
    ASSERT_EQ(plotwin_settings().scaling, PLOT_POWER);
    for (std::size_t i = 0; i < power.size(); i += 7) EXPECT_FLOAT_EQ(user.dpdata[i], power[i] * power[i]);
    EXPECT_NEAR(dp.picture.peak, std::pow(*std::max_element(power.begin(), power.end()), 2),
                1e-3 * dp.picture.peak);
    EXPECT_NEAR(dp.picture.stime, stime, 1e-4);
    rec.select(rec.all(port_kind::combo, plot_top()).at(0), 0);
    EXPECT_EQ(shown(), power);
    EXPECT_NEAR(dp.picture.etime, etime, 1e-4);

    // Both profile windows keep their own heights.
    plotwin_cb(plotwin_window(), 20);
    EXPECT_NEAR(dp.picture.height, 2.1, 1e-6);
    xrp(3);
    EXPECT_NEAR(plotwin_settings().height, 1, 1e-6);
    xdp_cb(nullptr, -1);
    EXPECT_NEAR(dp.picture.height, 2.1, 1e-6);

    xdp_cb(xdp_window(), 1);
    ASSERT_EQ(rec.pages.size(), 1u);
    for (const record_call& call : rec.pages[0].calls)
        for (const port_point& p : call.points)
            ASSERT_TRUE(p.x >= 150 && p.x <= 6600 - 150 && p.y >= 150 && p.y <= 5100 - 150);

    // Downsizing needs a part of the time.
    messages.clear();
    rec.click("Downsize");
    EXPECT_EQ(messages.size(), 1u);
    EXPECT_EQ(narrowed, 0);
    dp.span = {1.5, 2, 1.75};
    rec.click("Downsize");
    EXPECT_EQ(narrowed, 1);
    EXPECT_EQ(user.nt0, 51);
    EXPECT_EQ(user.nt, 50);
    EXPECT_EQ(dpwinon, 0);
    EXPECT_EQ(steps().back(), 9);
}

TEST_F(doppler_test, a_press_in_the_control_box_moves_the_journal) {
    load(8, 40, 1, {{0}});
    show(8, 1, 1);
    press("Center");
    press("Center"); // a second press leaves it down
    EXPECT_TRUE(rec.window(control("Center")).checked);
    static std::vector<int> moves;
    moves.clear();
    journal_hooks.mng_jrnl = [](wi_obj*, int tag) { moves.push_back(tag); };
    const float high = dp.disp->ysize - 0.15f;
    for (int button : {0, 1, 2}) press_inches(0.4f, high, button);
    EXPECT_EQ(moves, (std::vector<int>{1, 2, 0}));
    EXPECT_EQ(user.count, 0);
    press_inches(1.0f, high, 0); // beside it, and outside the frame
    for (int* up : {&msgwinon, &pkswinon}) {
        *up = 1;
        press_inches(0.4f, high, 0);
        press_at(0, 1.1);
        xdp();
        *up = 0;
    }
    EXPECT_EQ(moves.size(), 3u);
    EXPECT_EQ(user.mc.ptr, 0);
    press("INITIALIZE");
    EXPECT_FALSE(rec.window(control("Center")).checked);
}

TEST_F(doppler_test, a_message_holds_every_control) {
    load(8, 40, 1, {{0}});
    show(8, 1, 1);
    msgwinon = 1;
    xdp_refresh_controls();
    for (const char* text : {"DISMISS", "INITIALIZE", "Rmv Drift", "Center", "Plot"})
        EXPECT_FALSE(usable(text)) << text;
    const std::size_t before = steps().size();
    for (int tag : {0, 7, 13, 15}) xdp_cb(xdp_window(), tag);
    xdp_ok(xdp_window(), 0);
    xdp();
    EXPECT_EQ(steps().size(), before);
    EXPECT_TRUE(dp.okset && dpwinon == 1 && dp.izoom == 0 && dp.m_mode == DP_MODE_NONE);
    xdp_cb(nullptr, 0); // the replay passes
    EXPECT_EQ(dpwinon, 0);
}

} // namespace
} // namespace norva::test
