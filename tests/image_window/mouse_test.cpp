// The pointer in the image: boxes, the crosshair, the control box.
#include "image_fixture.h"

namespace norva {
namespace {

using mouse = test::image_test;

TEST_F(mouse, box_of_an_edit_is_sorted_and_snapped_outward) {
    open_three();
    ASSERT_TRUE(click("Edit Image"));
    EXPECT_TRUE(button_down("Edit Image"));
    press(16.3, 13.1); // the upper right corner first
    move(0, 0);
    press(-6.2, -3.2);
    EXPECT_EQ(xi.pip.count, 0); // nothing is done before the third press
    const double near = slack() + 0.5;
    for (auto [label, value] : {std::pair{"C/r of first sample:", -6.2},
                                {"C/r of last sample:", 16.3},
                                {"Range of first sample:", -3.2},
                                {"Range of last sample:", 13.1}})
        EXPECT_NEAR(field(label), value, near) << label;
    EXPECT_LE(field("C/r of first sample:"), -6.2 + slack()); // the box takes in what was drawn
    EXPECT_GE(field("Range of last sample:"), 13.1 - slack());
    const double first = field("C/r of first sample:"), last = field("C/r of last sample:");
    press(0, 0);
    EXPECT_EQ(xi.pip.count, 1);
    EXPECT_FLOAT_EQ(xi.pip.x1, static_cast<float>(first));
    EXPECT_FLOAT_EQ(static_cast<float>(image_x2()), static_cast<float>(last));
    EXPECT_GT(level(10, 5), 0.99);
    EXPECT_EQ(image_amplitude(-14, 12), 0); // outside
    EXPECT_FALSE(xi.zmbox);
    EXPECT_TRUE(button_down("Edit Image"));
}

TEST_F(mouse, box_given_up_typed_and_refused) {
    open_three();
    const std::size_t before = digest();
    ASSERT_TRUE(click("Edit Image"));
    press(0, 0);
    move(9, 9);
    EXPECT_NE(digest(), before);
    press(9, 9, MIDDLE_BUTTON);
    EXPECT_EQ(digest(), before);
    // Too small: the message, and the box stays armed with the image as it was.
    press(0, 0);
    press(1, 1);
    press(0, 0);
    EXPECT_EQ(messages, std::vector<std::string>{"***Error 104b...Box is too small"});
    EXPECT_TRUE(button_down("Edit Image"));
    EXPECT_EQ(xi.pip.count, 0);
    press(0, 0, MIDDLE_BUTTON);
    EXPECT_EQ(digest(), before);
    // Typed corners, held to the image; the right button does it at once.
    set_field("C/r of first sample:", "-1e9");
    set_field("C/r of last sample:", "20");
    set_field("Range of first sample:", "-20.25");
    set_field("Range of last sample:", "99999");
    EXPECT_EQ(field("C/r of first sample:"), -32);
    EXPECT_EQ(field("Range of last sample:"), 31.5);
    press(0, 0, RIGHT_BUTTON);
    EXPECT_EQ(xi.pip.count, 1);
    EXPECT_FLOAT_EQ(xi.pip.x1, -32);
    EXPECT_FLOAT_EQ(static_cast<float>(image_x2()), 20);
    EXPECT_NEAR(xi.pip.y1, -20.25, 0.26);
}

TEST_F(mouse, box_dragged_out_of_the_frame_is_held_to_it) {
    open_three();
    ASSERT_TRUE(click("Edit Image"));
    const _vgrect box = xi_picture.xy_df.pltbox;
    press_pixel(vg_to_pixel(*xi.disp, box.x0 - 0.2f, box.y0 - 0.2f), LEFT_BUTTON);
    press(5, 3);
    EXPECT_EQ(field("C/r of first sample:"), -32);
    EXPECT_EQ(field("Range of first sample:"), -32);
    // Outside, other modes hear nothing.
    ASSERT_TRUE(click("Peak Parameters"));
    press_pixel(vg_to_pixel(*xi.disp, box.x0 - 0.2f, box.y0 - 0.2f), RIGHT_BUTTON);
    EXPECT_EQ(xi.pip.count, 0);
}

TEST_F(mouse, zoom_through_all_levels_and_back) {
    open_three();
    std::vector<std::size_t> pictures{digest()};
    double half = 30;
    for (int i = 1; i < IMG_ZOOM_LEVELS; i++) {
        ASSERT_TRUE(click("Zoom"));
        half = std::max(half * 0.8, 3.0 - 0.1 * i);
        press(10 - half, 5 + half * 0.9);
        press(10 + half, 5 - half);
        press(10, 5);
        EXPECT_EQ(xi_picture.izoom, i);
        pictures.push_back(digest());
    }
    EXPECT_TRUE(messages.empty()) << messages[0];
    press(9, 4);
    press(11, 6);
    press(10, 5);
    EXPECT_EQ(messages, std::vector<std::string>{"Cannot zoom any further!"});
    EXPECT_EQ(digest(), pictures.back());
    EXPECT_EQ(xi.pip.count, 0); // no step is used
    for (int i = IMG_ZOOM_LEVELS - 2; i >= 0; i--) {
        ASSERT_TRUE(click("Unzoom"));
        EXPECT_EQ(digest(), pictures[static_cast<std::size_t>(i)]) << i;
    }
    messages.clear();
    ASSERT_TRUE(click("Unzoom"));
    EXPECT_EQ(messages, std::vector<std::string>{"Cannot unzoom any further!"});
    EXPECT_EQ(digest(), pictures[0]);
}

TEST_F(mouse, peak_is_measured_where_the_pointer_is) {
    load(make_scene({{10.3, 5.2, 1}, {-14, 12, 0.6}}));
    ASSERT_TRUE(click("Image"));
    const std::size_t before = digest();
    ASSERT_TRUE(click("Peak Parameters"));
    for (int i = 0; i < 30; i++) move(-30 + 2 * i, -25 + 1.7 * i); // to the edges, where the readout turns
    EXPECT_NE(digest(), before);
    ASSERT_TRUE(click("Zoom")); // the crosshair goes
    EXPECT_EQ(digest(), before);
    ASSERT_TRUE(click("Peak Parameters"));
    press(11, 4.5, RIGHT_BUTTON);
    EXPECT_EQ(xi.pip.count, 1);
    EXPECT_NEAR(xi.pip.xc, 10.3, 0.05);
    EXPECT_NEAR(xi.pip.yc, 5.2, 0.05);
    EXPECT_EQ(xi.xhr_x, xi.pip.xc); // and the crosshair stands there
    move(-20, -20);
    EXPECT_EQ(xi.xhr_x, xi.pip.xc);
    press(-14.5, 12.5, RIGHT_BUTTON);
    EXPECT_NEAR(xi.pip.xc, -14, 0.05);
    press(0, 0); // follows again
    move(4, 4);
    EXPECT_NEAR(xi.xhr_x, 4, slack());
    // No peak within two gates: nothing is told, all is zero.
    press(-2, -25, RIGHT_BUTTON);
    EXPECT_TRUE(messages.empty()) << messages[0];
    EXPECT_EQ(xi.pip.count, 3);
}

class centering : public test::image_test, public testing::WithParamInterface<std::pair<int, bool>> {};

// For both crossrange signs, with the peak near the pointer and with the exact point.
TEST_P(centering, moves_the_point_to_the_origin) {
    const auto [ksx, exact] = GetParam();
    scene s = make_scene({{10, 5, 1}, {-14, 12, 0.6}});
    for (scene_point& p : s.points) p.doppler *= -ksx;
    scene_file options;
    options.ksx = ksx;
    ASSERT_EQ(write_scene(s, options, "raw.pfx"), 1);
    open("raw.pfx");
    ASSERT_TRUE(click("Image"));
    ASSERT_GT(level(10, 5), 0.95);
    const double x = exact ? 10 : -14, y = exact ? 5 : 12;
    ASSERT_TRUE(click("Center Image"));
    move(0, 0);
    if (exact) {
        press(x, y, MIDDLE_BUTTON);
        move(20, 20); // it holds
        EXPECT_NEAR(xi.xhr_x, x, slack());
        press(-20, -20, RIGHT_BUTTON);
    } else {
        press(x + 0.6, y - 0.6, RIGHT_BUTTON);
    }
    EXPECT_EQ(imgwinon, 0); // the data are others now
    EXPECT_EQ(journal_tags(), (std::vector<int>{0, 28, 27}));
    EXPECT_EQ(user.mc.ptr, 1);
    ASSERT_TRUE(click("Image"));
    const double off = exact ? slack() : 0;
    EXPECT_GT(level(10 - x, 5 - y), exact ? 0.9 : 0.95);
    EXPECT_NEAR(level(-14 - x, 12 - y), 0.6, 0.08);
    ASSERT_TRUE(click("Peak Parameters"));
    press(0.4, 0.4, RIGHT_BUTTON);
    EXPECT_NEAR(xi.pip.xc, 0, 0.1 + off);
    EXPECT_NEAR(xi.pip.yc, 0, 0.1 + off);
    EXPECT_TRUE(messages.empty()) << messages[0];
}
INSTANTIATE_TEST_SUITE_P(signs, centering,
                         testing::Values(std::pair{-1, false}, std::pair{-1, true}, std::pair{1, false},
                                         std::pair{1, true}));

TEST_F(mouse, centering_that_cannot_be) {
    open_three();
    user.mc.ptr = user.mc.nrecs = MC_LAST_PTR;
    ASSERT_TRUE(click("Center Image"));
    press(10, 5, RIGHT_BUTTON);
    EXPECT_EQ(messages, std::vector<std::string>{"No more memory for user.mc (maxrecs=20)"});
    EXPECT_EQ(imgwinon, 1);
    EXPECT_FALSE(button_down("Center Image"));
    user.mc.ptr = user.mc.nrecs = 0;
    messages.clear();
    ASSERT_TRUE(click("Center Image"));
    press(-31.8, 0, RIGHT_BUTTON);
    EXPECT_EQ(messages, std::vector<std::string>{"***Error 109a...Point must be within image"});
    EXPECT_EQ(imgwinon, 1);
    EXPECT_EQ(xi.pip.count, 0);
    EXPECT_EQ(user.mc.ptr, 0);
}

} // namespace
} // namespace norva
