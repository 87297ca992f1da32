// The scaling windows, the factors, the display types, paper, and what belongs to cuts.
#include "image_fixture.h"

namespace norva {
namespace {

using scaling = test::image_test;

TEST_F(scaling, peaks) {
    open_three();
    const std::size_t before = digest();
    ASSERT_TRUE(click("Plot Scaling"));
    EXPECT_EQ(field_text("Scaling of dot:"), "sqrt of amplitude");
    step_field("Scaling of dot:", true);
    EXPECT_EQ(field_text("Scaling of dot:"), "power");
    step_field("Scaling of dot:", false);
    step_field("Scaling of dot:", false);
    EXPECT_EQ(field_text("Scaling of dot:"), "amplitude");
    EXPECT_EQ(field("# of peaks:"), 100);
    step_field("# of peaks:", true);
    EXPECT_EQ(field("# of peaks:"), 110);
    set_field("# of peaks:", "5000"); // at most the default allows
    set_field("Low amplitude threshold:", "0.5");
    set_field("High amplitude threshold:", "0.2");
    set_field("Diam highest peak:", "77");
    ASSERT_TRUE(click("APPLY"));
    EXPECT_EQ(field("# of peaks:"), def.pi_npmx_max);
    EXPECT_NEAR(field("High amplitude threshold:"), 0.51, 1e-4);
    EXPECT_EQ(field("Diam highest peak:"), def.pi_diam_max);
    EXPECT_EQ(xi.pip.count, 1);
    EXPECT_NE(digest(), before);
    // Relative to the noise: shown as what it comes to.
    ASSERT_TRUE(click("Low clip to this factor * (avg noise):"));
    ASSERT_TRUE(click("APPLY"));
    const double low = field("Low amplitude threshold:");
    EXPECT_GT(low, 0);
    EXPECT_LT(low, 0.2);
    // A step back shows the settings that were in force.
    press_control_box(RIGHT_BUTTON);
    EXPECT_EQ(digest(), before);
    EXPECT_EQ(xi.pip.npmx, 100);
    EXPECT_FLOAT_EQ(xi.pip.diam, def.pi_diam);
    EXPECT_FLOAT_EQ(xi.hclip, 1);
}

TEST_F(scaling, contours_and_colours_clamp_and_relabel) {
    open_three();
    const std::size_t peaks = digest();
    choose_style("Contours");
    const std::size_t contours = digest();
    EXPECT_NE(contours, peaks);
    ASSERT_TRUE(click("Plot Scaling"));
    set_field("delta dB:", "0.1");
    EXPECT_EQ(field("delta dB:"), 1);
    set_field("# of contours:", "1000");
    EXPECT_EQ(field("# of contours:"), 50);
    set_field("labels:", "-3");
    EXPECT_EQ(field("labels:"), 0);
    EXPECT_NE(digest(), contours);
    set_field("delta dB:", "6");
    set_field("# of contours:", "5");
    EXPECT_EQ(digest(), contours);

    choose_style("Color Intensity");
    EXPECT_FALSE(rec->visible(rec->find(port_kind::label, "# of contours:")));
    const std::size_t colours = digest();
    ASSERT_TRUE(click("Plot Scaling"));
    EXPECT_EQ(field("low clip (0. - 1.):"), 0.05);
    EXPECT_FALSE(rec->visible(rec->find(port_kind::label, "delta dB:", rec->raised())));
    step_field("low clip (0. - 1.):", true);
    EXPECT_NEAR(field("low clip (0. - 1.):"), 0.1, 1e-6);
    for (int i = 0; i < 4; i++) step_field("low clip (0. - 1.):", false);
    EXPECT_EQ(field("low clip (0. - 1.):"), 0);
    set_field("low clip (0. - 1.):", "1");
    digest();
    ASSERT_TRUE(click("Scale in dB"));
    EXPECT_EQ(field("low clip (dB):"), -20);
    step_field("low clip (dB):", false);
    EXPECT_EQ(field("low clip (dB):"), -25);
    set_field("low clip (dB):", "12");
    EXPECT_EQ(field("low clip (dB):"), 0);
    set_field("delta dB:", "1");
    EXPECT_EQ(field("delta dB:"), 3);
    ASSERT_TRUE(click("Scale in dB"));
    EXPECT_EQ(field("low clip (0. - 1.):"), 1); // as it was left
    set_field("low clip (0. - 1.):", "0.05");
    EXPECT_EQ(digest(), colours);
    choose_style("Peaks");
    EXPECT_EQ(digest(), peaks);
    EXPECT_EQ(xi.pip.count, 0);
    EXPECT_TRUE(messages.empty()) << messages[0];
}

TEST_F(scaling, factors_and_axes) {
    open_three();
    const char* const label = "Factor in C/r:";
    for (int expected : {4, 8, 8}) {
        step_field(label, true);
        EXPECT_EQ(field(label), expected);
    }
    for (int expected : {4, 2, 1, 1}) {
        step_field(label, false);
        EXPECT_EQ(field(label), expected);
    }
    ASSERT_TRUE(click("Interpolate"));
    EXPECT_EQ(messages, std::vector<std::string>{"***Error 105a...Interpolation cannot be reversed"});
    EXPECT_EQ(field(label), 2); // the factor in force
    messages.clear();
    set_field(label, "8");
    set_field("Factor in Range:", "16");
    ASSERT_TRUE(click("Interpolate"));
    EXPECT_EQ(messages, std::vector<std::string>{"pi_apply.c: Not enough memory for specified image!"});
    EXPECT_EQ(field("Factor in Range:"), 2);
    EXPECT_EQ(xi.pip.count, 0);

    const std::size_t before = digest();
    step_field("Axis Scaling:", true);
    EXPECT_EQ(field("Axis Scaling:"), 2);
    EXPECT_NE(digest(), before);
    step_field("Axis Scaling:", false);
    EXPECT_EQ(digest(), before);
    step_field("Axis Scaling:", false);
    EXPECT_NEAR(field("Axis Scaling:"), 0.9, 1e-6);
    set_field("Axis Scaling:", "1e9");
    EXPECT_EQ(field("Axis Scaling:"), 100);
    set_field("Axis Scaling:", "0");
    EXPECT_NEAR(field("Axis Scaling:"), 0.01, 1e-9);
    set_field("Axis Scaling:", "1");
    EXPECT_EQ(digest(), before);
}

TEST_F(scaling, paper_carries_the_picture_and_its_parameters) {
    open_three();
    vg_hc_presets().ask = false;
    for (int style : {0, 1, 2}) {
        style_cb(nullptr, style);
        const std::size_t before = digest();
        const std::size_t pages = rec->pages.size();
        ximag_bttn(nullptr, XI_HARDCOPY);
        ASSERT_EQ(rec->pages.size(), pages + 1);
        std::size_t images = 0;
        const record_page& page = rec->pages.back();
        const auto inside = [&](const port_point& p) {
            return p.x >= 0 && p.y >= 0 && p.x <= rec->caps.paper.w && p.y <= rec->caps.paper.h;
        };
        for (const record_call& call : page.calls) {
            images += call.op == "image";
            EXPECT_TRUE(std::ranges::all_of(call.points, inside)) << to_text(call);
        }
        // The colour map and its scale bar are images; nothing else is.
        EXPECT_EQ(images > 0, style == 2);
        EXPECT_LE(images, 2u);
        EXPECT_EQ(digest(), before);
    }
}

static cut_request opened;

TEST_F(scaling, cuts_once_their_window_stands) {
    xi_hooks.xproc = [](const cut_request& cut) { opened = cut; };
    open_three();
    ASSERT_TRUE(click("Compute Cut"));
    press(4, 5);
    move(12, 5);
    press(14, 5);
    EXPECT_NEAR(field("Angle (deg):"), 0, 1);
    EXPECT_NEAR(field("C/r pivot pt.:"), 4, slack());
    EXPECT_NEAR(field("Length of cut (gates):"), 20, 2 * slack() + 1);
    step_field("Angle (deg):", true);
    EXPECT_EQ(field("Angle (deg):"), 18);
    set_field("Angle (deg):", "0");
    set_field("C/r pivot pt.:", "10");
    set_field("Range pivot pt.:", "5");
    ASSERT_TRUE(click("End Points"));
    EXPECT_EQ(ximag_twopt_status(), 1);
    EXPECT_NEAR(field("C/r 2:") - field("C/r 1:"), 20, 1.5);
    set_field("C/r 1:", "5");
    set_field("C/r 2:", "15");
    set_field("Range 1:", "5");
    set_field("Range 2:", "5");
    EXPECT_EQ(field("Length of cut (gates):"), 10);
    press(0, 0, RIGHT_BUTTON);
    EXPECT_TRUE(messages.empty()) << messages[0];
    ASSERT_EQ(opened.mode, 0);
    ASSERT_GT(opened.n, 10);
    ASSERT_EQ(opened.data.size(), 2u * static_cast<unsigned>(opened.n));
    // The point stands in the middle of the cut.
    int peak = 0;
    const auto amplitude = [&](int i) { return std::hypot(opened.data[2 * i], opened.data[2 * i + 1]); };
    for (int i = 0; i < opened.n; i++)
        if (amplitude(i) > amplitude(peak)) peak = i;
    EXPECT_NEAR(opened.c1 + static_cast<float>(peak) * opened.dc, 0, 0.26);
    EXPECT_EQ(opened.kc, 2);

    // A fresh cut, passed and gone back over: a single step back does not stop at it.
    const int step = xi.pip.count;
    ximag_bttn(nullptr, PI_STORE_CUT);
    ASSERT_TRUE(click("Flop (h)"));
    press_control_box(MIDDLE_BUTTON);
    EXPECT_EQ(xi.pip.count, step - 1);

    proimag_parms block{};
    for (auto [ang, shown, turned] : {std::tuple{170.0f, -10.0f, 1},
                                      {90.0f, 90.0f, 0},
                                      {-45.0f, 135.0f, 1},
                                      {135.0f, -45.0f, 1},
                                      {400.0f, 40.0f, 0}}) {
        block.nx = 4;
        block.dx = 1;
        block.ang = ang;
        EXPECT_EQ(ximag_new_ang(&block), turned) << ang;
        EXPECT_FLOAT_EQ(block.ang, shown);
    }
}

} // namespace
} // namespace norva
