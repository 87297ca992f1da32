// The range profile window: what its controls and the pointer do.
#include "range_fixture.h"

#include "signal/numbers.h"

namespace norva::test {
namespace {

TEST_F(range_test, opening_journals_once_and_shows_only_buttons_that_do_something) {
    load(64, 40, 1, {{5}});
    begin_journal();
    xrp(3);
    EXPECT_EQ(xrp_window(), nullptr);
    EXPECT_EQ(user.nr, 256); // interpolation 4
    EXPECT_NEAR(peak_range(0), 5, 1e-6);
    xrp(2);
    rec.run_pending();
    EXPECT_EQ(rpwinon, 1);
    EXPECT_EQ(steps(), (std::vector<int>{0}));
    xrp(1);
    rec.run_pending();
    EXPECT_EQ(steps(), (std::vector<int>{0, 3}));
    for (const char* shown : {"DISMISS", "Rmv Ambs", "Rmv Drift", "Plot"})
        EXPECT_NE(rec.find(port_kind::button, shown, top()), 0) << shown;
    for (const char* hidden : {"Peaks", "HELP"})
        EXPECT_EQ(rec.find(port_kind::button, hidden, top()), 0) << hidden;
    EXPECT_EQ(rec.window(top()).text, "NORVA: range profile");
    EXPECT_EQ(rec.window(top()).rect, (port_rect{160, 10, 837, 750}));
    EXPECT_NEAR(rp.span.stime, 1, 1e-6);
    EXPECT_NEAR(rp.span.etime, 1.4, 1e-6);

    EXPECT_TRUE(press_button("DISMISS"));
    EXPECT_EQ(rpwinon, 0);
    EXPECT_FALSE(rec.visible(top()));
    EXPECT_EQ(steps(), (std::vector<int>{0, 3, 1}));

    xrp_reset_for_tests();
    static int peaks_mode;
    rp_hooks.xpk_init = [](int mode) { peaks_mode = mode; };
    wi_hooks.help = [](const std::string&) {};
    xrp(1);
    rec.run_pending();
    EXPECT_NE(rec.find(port_kind::button, "HELP", top()), 0);
    EXPECT_TRUE(press_button("Peaks"));
    EXPECT_EQ(peaks_mode, 1);
    EXPECT_EQ(pkswinon, 1);
    EXPECT_FALSE(press_button("Center")) << "the peak editor is up";
    xrp_cb(xrp_window(), 16);
    EXPECT_EQ(rp.m_mode, MODE_NONE);
}

TEST_F(range_test, zoom_cuts_the_profiles_about_range_zero) {
    const struct {
        int nf;
        double interpolation;
        int nr, steps; // steps: largest k with 2^k <= nf
    } cases[] = {{64, 1, 64, 6},   {64, 4, 256, 6}, {100, 3, 300, 6},
                 {101, 1, 108, 6}, {45, 1, 45, 5},  {2, 1, 2, 1}};
    for (const auto& c : cases) {
        load(c.nf, 12, 1, {{0.2 * c.nf}, {-0.06 * c.nf, 0, 0.5}});
        plotwin_init();
        plotwin_put_interpolation(c.interpolation);
        xrp(3);
        ASSERT_EQ(user.nr, c.nr);
        for (int k = 0; k <= c.steps + 1; k++) {
            const int zooms = std::min(k, c.steps);
            EXPECT_EQ(rp.izoom, user.nr >= 1 ? zooms : rp.izoom);
            EXPECT_EQ(user.nr, c.nr >> zooms);
            for (int j : {0, 11}) {
                for (int r = 0; r < user.nr; r++) {
                    const double want = direct_power(j, rp.r1 + r * rp.dr);
                    ASSERT_NEAR(user.rpdata[static_cast<std::size_t>(j) * user.nr + r], want,
                                1e-4 * c.nf * c.nf)
                        << c.nf << " zoom " << k << " gate " << r;
                }
            }
            xrp_cb(nullptr, 7);
        }
        for (int k = c.steps; k-- > 0;) {
            xrp_cb(nullptr, 8);
            EXPECT_EQ(user.nr, c.nr >> k);
            EXPECT_NEAR(user.rpdata[0], direct_power(0, rp.r1), 1e-4 * c.nf * c.nf);
        }
    }
}

TEST_F(range_test, corrections_and_settings_keep_the_zoom_they_should) {
    load(64, 40, 1, {{5, 0.05}});
    open();
    const auto zoomed = [&] {
        while (rp.izoom < 2) xrp_cb(xrp_window(), 7);
    };
    const struct { int tag, izoom; } cases[] = {{-1, 2}, {-4, 2}, {-5, 2}, {13, 0}, {130, 0}, {8, 1}};
    for (const auto& c : cases) {
        zoomed();
        xrp_cb(nullptr, c.tag);
        EXPECT_EQ(rp.izoom, c.izoom) << c.tag;
        EXPECT_EQ(user.nr, 256 >> c.izoom) << c.tag;
        EXPECT_EQ(rp.picture.nr, user.nr) << c.tag;
    }
}

TEST_F(range_test, modes_press_and_release_buttons) {
    load(64, 40, 1, {{5}});
    open();
    const struct {
        const char* button;
        int mode;
    } presses[] = {{"Center", MODE_CENTER}, {"Center", MODE_CENTER}, {"Rmv Line", MODE_LINE},
                   {"Rmv Line", MODE_LINE}, {"Plot", MODE_NONE},     {"Center", MODE_CENTER},
                   {"Rmv Ambs", MODE_NONE}};
    for (const auto& p : presses) {
        EXPECT_TRUE(press_button(p.button));
        EXPECT_EQ(rp.m_mode, p.mode) << p.button;
        EXPECT_EQ(rec.window(toggle("Center")).checked, p.mode == MODE_CENTER) << p.button;
        EXPECT_EQ(rec.window(toggle("Rmv Line")).checked, p.mode == MODE_LINE) << p.button;
    }
    msgwinon = 1;
    EXPECT_TRUE(press_button("Center"));
    EXPECT_EQ(rp.m_mode, MODE_NONE);
    EXPECT_FALSE(rec.window(toggle("Center")).checked);
    EXPECT_TRUE(press_button("DISMISS"));
    EXPECT_EQ(rpwinon, 1);
    xrp_refresh_controls();
    for (const char* grey : {"DISMISS", "Center", "Rmv Drift"}) EXPECT_FALSE(press_button(grey)) << grey;
    xrp_cb(nullptr, 0); // the replay passes
    EXPECT_EQ(rpwinon, 0);
}

TEST_F(range_test, control_box_moves_the_journal) {
    load(64, 40, 1, {{5}});
    open();
    static std::vector<int> moves;
    moves.clear();
    journal_hooks.mng_jrnl = [](wi_obj* wo, int tag) { moves.push_back(wo ? -99 : tag); };
    const float high = rp.disp->ysize - 0.15f;
    for (int button : {0, 1}) press_inches(0.4f, high, button);
    EXPECT_EQ(user.count, 1);
    press_inches(0.4f, high, 2);
    EXPECT_EQ(user.count, 0);
    EXPECT_EQ(moves, (std::vector<int>{1, 2, 0}));
    press_inches(1.0f, high, 0); // beside it
    press_inches(0.4f, rp.disp->ysize - 0.35f, 0);
    EXPECT_EQ(moves.size(), 3u);
    msgwinon = 1;
    press_inches(0.4f, high, 0);
    EXPECT_EQ(moves.size(), 3u);
}

TEST_F(range_test, time_fields_and_downsize) {
    load(64, 200, 1, {{5}}); // 1 s to 3 s
    static int old[3];
    static bool works;
    rp_hooks.downsize = [](int nf0, int nt0, int nf) {
        old[0] = nf0, old[1] = nt0, old[2] = nf;
        return works ? 1 : 0;
    };
    open();
    press_button("Plot");
    const auto field = [&](const std::string& label) {
        for (port_win w : rec.all(port_kind::field, plot_top())) {
            // The label stands left of its field on the same line.
            for (port_win l : rec.all(port_kind::label, plot_top())) {
                const port_rect a = rec.window(l).rect, b = rec.window(w).rect;
                if (rec.window(l).text == label && std::abs(a.y + a.h / 2 - b.y - b.h / 2) < 4) return w;
            }
        }
        return 0;
    };
    const auto arrow = [&](const std::string& label, bool up) {
        const port_rect at = rec.window(field(label)).rect;
        for (port_win w : rec.all(port_kind::up_down, plot_top()))
            if (std::abs(rec.window(w).rect.y + rec.window(w).rect.h / 2 - at.y - at.h / 2) < 4)
                return rec.click_up_down(w, up);
        return false;
    };
    ASSERT_NE(field("Interpolation:"), 0);
    EXPECT_TRUE(rec.enter(field("Interpolation:"), "3"));
    EXPECT_EQ(user.nr, 192);
    EXPECT_TRUE(arrow("Interpolation:", true));
    EXPECT_EQ(user.nr, 384);
    EXPECT_TRUE(rec.enter(field("Interpolation:"), "1e9")); // held to the user's most, 16
    EXPECT_EQ(user.nr, 1024);

    EXPECT_TRUE(rec.enter(field("Time interval (sec):"), "0.8"));
    EXPECT_NEAR(rp.picture.etime - rp.picture.stime, 0.8, 1e-6);
    EXPECT_TRUE(arrow("Time interval (sec):", false)); // by the default of 0.1
    EXPECT_NEAR(rp.picture.etime - rp.picture.stime, 0.7, 1e-6);
    EXPECT_TRUE(rec.enter(field("Center time (sec):"), "1.5"));
    EXPECT_TRUE(arrow("Center time (sec):", true));
    EXPECT_NEAR(rp.picture.stime, 1.25, 1e-6);
    EXPECT_NEAR(rp.picture.etime, 1.95, 1e-6);
    for (const char* nonsense : {"", "e", "-", "1e999", "-1e999"}) {
        rec.enter(field("Center time (sec):"), nonsense);
        rec.enter(field("Profile height:"), nonsense);
        rec.enter(field("Profile truncation:"), nonsense);
        EXPECT_TRUE(std::isfinite(rp.picture.stime) && rp.picture.height > 0 && rp.picture.truncation > 0);
    }
    rec.enter(field("Time interval (sec):"), "0.5");
    rec.enter(field("Center time (sec):"), "1.5");

    works = false;
    EXPECT_TRUE(rec.click("Downsize"));
    EXPECT_EQ(rpwinon, 1);
    EXPECT_EQ(user.nt, 200);
    EXPECT_EQ(user.nt0, 1);
    works = true;
    EXPECT_TRUE(rec.click("Downsize"));
    EXPECT_EQ(old[0], 1);
    EXPECT_EQ(old[1], 1);
    EXPECT_EQ(old[2], 64);
    EXPECT_EQ(user.nt0, 26); // 1.25 s is record 26, and 50 records reach to 1.75 s
    EXPECT_EQ(user.nt, 50);
    EXPECT_EQ(rpwinon, 0);
    EXPECT_FALSE(rec.visible(plot_top()));
    EXPECT_EQ(steps(), (std::vector<int>{0, 3, 9}));
}

TEST_F(range_test, too_many_gates_leave_the_old_profiles) {
    load(512, 20, 1, {{5}});
    open();
    ASSERT_EQ(user.nr, 2048);
    plotwin_put_interpolation(16);
    xrp_cb(nullptr, -4);
    EXPECT_EQ(messages, (std::vector<std::string>{"user.nr>4096 -- xrp!"}));
    EXPECT_EQ(user.nr, 2048);
    EXPECT_NEAR(peak_range(3), 5, 1e-6);
    EXPECT_EQ(plotwin_settings().interpolation, 4);

    // Of another window of data nothing is left to show, and nothing is read beyond what there is.
    messages.clear();
    def.rp_if = 16;
    load(600, 30, 1, {{5}});
    xrp(1);
    rec.run_pending();
    EXPECT_EQ(messages, (std::vector<std::string>{"user.nr>4096 -- xrp!"}));
    rp_gate gate;
    EXPECT_FALSE(strongest_range_gate(gate));
    xrp_cb(nullptr, 7);
    xrp_cb(nullptr, 8);
    EXPECT_EQ(user.nr, 0);
}

TEST_F(range_test, internal_calls_never_journal) {
    load(64, 40, 1, {{5}});
    open();
    for (int tag : {4, 5, 6, 7, 8, 10, 11, 12, 15, 16, 101, -1, -2, -3, -4, -5, 0}) xrp_cb(nullptr, tag);
    xrp(2);
    managing = 1;
    xrp(1);
    managing = 0;
    EXPECT_EQ(steps(), (std::vector<int>{0, 3}));
}

TEST_F(range_test, hardcopy_fits_on_the_sheet) {
    load(64, 40, 1, {{5}});
    open();
    xrp_cb(nullptr, 18);
    ASSERT_EQ(rec.pages.size(), 1u);
    EXPECT_TRUE(rec.pages[0].ended);
    int lines = 0;
    for (const record_call& call : rec.pages[0].calls) {
        if (call.op != "polyline_to") continue;
        lines++;
        for (const port_point& p : call.points)
            ASSERT_TRUE(p.x >= 150 && p.x <= 6600 - 150 && p.y >= 150 && p.y <= 5100 - 150)
                << p.x << " " << p.y;
    }
    EXPECT_GT(lines, 100);
}

TEST_F(range_test, strongest_gate) {
    load(64, 40, -1, {{-7.25}, {3, 0, 0.9}});
    for (int k = 0; k < 2 * 64; k++) user.pfdata[2 * 64 * 17 + k] *= 2; // record 18
    rp_gate gate;
    EXPECT_FALSE(strongest_range_gate(gate));
    xrp(3);
    xrp_cb(nullptr, 7);
    ASSERT_TRUE(strongest_range_gate(gate));
    EXPECT_NEAR(gate.range, -7.25, 0.13);
    EXPECT_EQ(gate.record, 18);
}

} // namespace
} // namespace norva::test
