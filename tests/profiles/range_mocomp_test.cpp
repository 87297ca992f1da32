// Corrections read off the range profiles: the test of each is that it flattens or centres a known target,
// for both signs of range.
#include "range_fixture.h"

namespace norva::test {
namespace {

class range_sign_test : public range_test, public testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(both_signs, range_sign_test, testing::Values(1, -1));

// Corrections are stored with the window of data that they were made for.
void expect_record(int i) {
    EXPECT_EQ(user.mc.ptr, i + 1);
    EXPECT_EQ(user.mc.nrecs, i + 1);
    EXPECT_EQ(user.mc.flag[i], MC_DELAY);
    EXPECT_EQ(user.mc.nf[i], user.nf);
    EXPECT_EQ(user.mc.nt[i], user.nt);
    EXPECT_EQ(user.mc.nf0[i], user.nf0);
    EXPECT_EQ(user.mc.nt0[i], user.nt0);
    EXPECT_EQ(user.mc.t[i].size(), static_cast<std::size_t>(user.nt) + 1);
}

TEST_P(range_sign_test, centre_moves_the_pressed_range_to_zero) {
    load(64, 40, GetParam(), {{7.5}});
    user.nf0 = 3;
    user.nt0 = 11;
    open();
    press_button("Center");
    press_at(7.5, 1.2);
    expect_record(0);
    // One gate is 1/|bw| microseconds; bw carries the sign of df.
    const double x = user.mc.t[0][0] * user.bw * user.ksy;
    EXPECT_NEAR(x, 7.5, gates_per_pixel());
    for (double t : user.mc.t[0]) EXPECT_EQ(t, user.mc.t[0][0]);
    for (int j : {0, 20, 39}) EXPECT_NEAR(peak_range(j), 7.5 - x, 0.13);
    EXPECT_EQ(steps(), (std::vector<int>{0, 3, 5}));
    EXPECT_EQ(rp.m_mode, MODE_CENTER);

    // Elsewhere, and with other buttons, nothing happens.
    press_at(7.5, 1.2, 1);
    press_at(7.5, 1.2, 2);
    rec.press(area(), 5, 300, 0);
    EXPECT_EQ(user.mc.ptr, 1);
}

TEST_P(range_sign_test, drift_is_measured_and_removed) {
    const double drift = 0.37;
    load(64, 40, GetParam(), {{-8, drift}, {2, drift, 0.5}});
    open();
    EXPECT_NEAR(peak_range(39) - peak_range(0), 39 * drift, 0.3);
    press_button("Rmv Drift");
    expect_record(0);
    for (int j = 0; j < 40; j++) EXPECT_NEAR(peak_range(j), -8, 0.3);
    EXPECT_EQ(steps(), (std::vector<int>{0, 3, 4}));
}

TEST_P(range_sign_test, a_drawn_line_is_made_upright) {
    // The time between records is three waveform intervals, as after a decimation.
    const double drift = 0.25;
    load(64, 40, GetParam(), {{-6, drift}});
    user.dt = 0.03f;
    user.dwell = user.nt * user.dt;
    open();
    press_button("Rmv Line");
    const double y1 = 1 + 4 * 0.03, y2 = 1 + 36 * 0.03;
    press_at(-6 + 4 * drift, y1);
    move_to(0, 1.3);
    press_at(-6 + 36 * drift, y2);
    EXPECT_EQ(rp.nclick, 2);
    const double slack = 2 * (gates_per_pixel() + drift / 0.03 * seconds_per_pixel()) / 32;
    EXPECT_NEAR(rp.dft, drift, slack);
    EXPECT_NEAR(rp.dft_off, rp.xpv - rp.dft * rp.ypv, 1e-12);
    press_at(0, 1.5, 2); // anywhere: the right button applies the line
    expect_record(0);
    EXPECT_EQ(rp.nclick, 0);
    EXPECT_FALSE(rp.line);
    EXPECT_EQ(steps(), (std::vector<int>{0, 3, 7}));
    // The slope is removed and the offset is not: the target stays at its first range.
    for (int j = 0; j < 40; j++) EXPECT_NEAR(peak_range(j), -6, 40 * slack + 0.13);
    for (int i = 0; i <= 40; i++) {
        const double gates = user.mc.t[0][i] * user.bw * user.ksy;
        EXPECT_NEAR(gates, i * rp.dft, 1e-5 * 40) << i; // dft is that of the line, still
    }
}

TEST_P(range_sign_test, ambiguities_turn_the_phase_by_whole_cycles_per_record) {
    load(64, 40, GetParam(), {{5}});
    open();
    press_button("Rmv Ambs");
    const port_win dialog = rec.find(port_kind::top, "Remove Doppler Ambs");
    ASSERT_TRUE(rec.visible(dialog));
    rec.enter(rec.all(port_kind::field, dialog).at(0), "-2"); // return applies too
    expect_record(0);
    EXPECT_FALSE(rec.visible(dialog));
    const double fc = user.f0 + 0.5 * (user.nf - 1) * user.df;
    for (int i = 0; i <= 40; i++) EXPECT_NEAR(user.mc.t[0][i], -2.0 * GetParam() * i / fc, 1e-12);
    EXPECT_EQ(steps(), (std::vector<int>{0, 3, 8}));

    press_button("Rmv Ambs");
    EXPECT_TRUE(rec.click(rec.find(port_kind::button, "Cancel", dialog)));
    EXPECT_FALSE(rec.visible(dialog));
    EXPECT_EQ(user.mc.ptr, 1);

    // From the peak editor, with the range window closed, it is another step and nothing is drawn.
    xrp_cb(nullptr, 0);
    static int redrawn;
    redrawn = 0;
    rp_hooks.xpk_draw_init = [] { redrawn++; };
    pkswinon = 1;
    const std::size_t lines = rec.count("polyline_to");
    xrp_cb(xrp_window(), 130);
    EXPECT_EQ(rec.count("polyline_to"), lines);
    EXPECT_EQ(redrawn, 1);
    EXPECT_EQ(steps(), (std::vector<int>{0, 3, 8, 16}));
    EXPECT_NEAR(user.rpdata[0], direct_power(0, rp.r1), 1);
}

TEST_F(range_test, the_rubber_line_leaves_no_trace) {
    rec.rasters = true;
    load(64, 40, 1, {{5, 0.1}});
    open();
    press_button("Rmv Line");
    const auto picture = [&] { return rec.window(area()).pixels; };
    const auto clean = picture();
    const auto draw = [&](int points) {
        press_at(-10, 1.05);
        move_to(3, 1.2);
        move_to(8, 1.3);
        if (points == 2) press_at(-4, 1.35);
        EXPECT_NE(picture(), clean);
    };
    draw(1);
    press_at(0, 1.1, 2); // one point: the right button only starts over
    EXPECT_EQ(picture(), clean);
    EXPECT_EQ(user.mc.ptr, 0);
    move_to(3, 1.2); // no line follows any more
    EXPECT_EQ(picture(), clean);

    draw(2);
    press_button("Center"); // any button takes the line away
    EXPECT_EQ(picture(), clean);
    EXPECT_EQ(rp.nclick, 0);

    press_button("Rmv Line");
    draw(2);
    rec.expose(area()); // erased and drawn again, with the line
    EXPECT_NE(picture(), clean);
    draw(2); // a third point begins another line
    xrp_cb(nullptr, -1);
    EXPECT_EQ(picture(), clean);

    draw(2);
    rec.resize(top(), 1000, 800);
    rec.run_pending();
    ASSERT_TRUE(rp.line);
    const auto resized = picture();
    xrp_cb(nullptr, -5);
    EXPECT_NE(picture(), resized);
    rec.resize(top(), 837, 750);
    rec.run_pending();
    EXPECT_EQ(picture(), clean);
}

TEST_F(range_test, a_level_line_waits_for_another_point) {
    load(64, 40, 1, {{5}});
    open();
    press_button("Rmv Line");
    press_at(-10, 1.2);
    press_at(10, 1.2);
    EXPECT_EQ(rp.nclick, 1);
    press_at(-10, 1.2, 2);
    EXPECT_EQ(user.mc.ptr, 0);
    press_at(-10, 1.2, 1); // the middle button does nothing
    EXPECT_EQ(rp.nclick, 0);
}

TEST_F(range_test, corrections_that_cannot_be_made_are_refused) {
    const struct {
        const char* what;
        int nf, nt, ptr, tag;
        bool refused;
    } cases[] = {
        {"the 64th", 16, 40, 63, 0, true},        {"the 64th", 16, 40, 63, 2, true},
        {"the 63rd", 16, 40, 62, 0, false},       {"drift of 9 records", 16, 9, 0, 1, true},
        {"line of 9 records", 16, 9, 0, 2, true}, {"drift of 10", 16, 10, 0, 1, false},
        {"line of 10", 16, 10, 0, 2, false},      {"line of 8191", 2, 8191, 0, 2, false},
        {"line of 8192", 2, 8192, 0, 2, true},    {"drift of 8192", 2, 8192, 0, 1, true},
        {"centre of 8192", 2, 8192, 0, 0, false}, {"centre of 2", 16, 2, 0, 0, false},
        {"centre of 1", 16, 1, 0, 0, true},       {"drift of 1024 frequencies", 1024, 10, 0, 1, false},
    };
    managing = 1; // the journal is not looked at
    for (const auto& c : cases) {
        load(c.nf, c.nt, 1, {{1, 0.01}});
        user.mc = {};
        user.mc.ptr = user.mc.nrecs = c.ptr;
        messages.clear();
        const jbuf<float> before = user.pfdata;
        xrp_mocomp(c.tag, 0.5);
        EXPECT_EQ(messages.size(), c.refused ? 1u : 0u) << c.what;
        EXPECT_EQ(user.mc.ptr, c.refused ? c.ptr : c.ptr + 1) << c.what;
        const bool same = std::equal(before.begin(), before.end(), user.pfdata.begin());
        EXPECT_EQ(same, c.refused) << c.what;
    }
    load(16, 40, 1, {{1}});
    user.mc = {};
    user.mc.ptr = 63;
    messages.clear();
    xrp_mocomp(0, 1);
    EXPECT_EQ(messages, (std::vector<std::string>{"No more memory for user.mc (maxrecs=20)"}));

    // A drawn line is refused before it is drawn.
    user.mc.ptr = 0;
    load(16, 9, 1, {{1}});
    xrp(2);
    rec.run_pending();
    messages.clear();
    press_button("Rmv Line");
    EXPECT_EQ(messages.size(), 1u);
    EXPECT_EQ(rp.m_mode, MODE_NONE);
    EXPECT_FALSE(rec.window(toggle("Rmv Line")).checked);
}

} // namespace
} // namespace norva::test
