// Opening the image window: what comes up over which data, and what is refused.
#include "image_fixture.h"

#include <limits>

namespace norva {
namespace {

using opening = test::image_test;

TEST_F(opening, scatterers_stand_where_they_were_put) {
    open_three();
    EXPECT_GT(level(10, 5), 0.99);
    EXPECT_NEAR(level(-14, 12), 0.6, 0.03);
    EXPECT_NEAR(level(3, -17), 0.4, 0.02);
    EXPECT_LT(level(-10, -5), 0.05);
    EXPECT_EQ(xi.pip.nx, 128);
    EXPECT_FLOAT_EQ(xi.pip.dx, 0.5f);
    image_gate gate;
    ASSERT_TRUE(strongest_image_gate(gate));
    EXPECT_NEAR(gate.crossrange, 10, 0.26);
    EXPECT_NEAR(gate.range, 5, 0.26);
    EXPECT_EQ(user.count, 0); // nothing is stored before the window closes
    EXPECT_EQ(field("C/r of first sample:"), -32);
    EXPECT_EQ(field("C/r of last sample:"), 31.5);
}

TEST_F(opening, sizes_at_and_above_the_limit) {
    const struct {
        int nf, nt, factor, expected_factor;
        bool opens;
    } cases[] = {
        {256, 512, 1, 1, true},  // the largest image there is
        {256, 512, 2, 1, true},  // falls back to no interpolation
        {128, 256, 2, 2, true},  //
        {128, 257, 2, 1, true},  // 257 becomes 1024 samples with the factor
        {256, 513, 1, 0, false}, //
        {1024, 129, 1, 0, false},
    };
    for (const auto& c : cases) {
        load(make_scene({{10, 5, 1}}, c.nf, c.nt));
        def.pi_ifx = def.pi_ify = static_cast<float>(c.factor);
        xi.init = false;
        ASSERT_TRUE(click("Image"));
        EXPECT_EQ(imgwinon, c.opens) << c.nf << " x " << c.nt;
        if (c.opens) {
            EXPECT_EQ(xi.pip.ifx, c.expected_factor) << c.nf << " x " << c.nt;
            EXPECT_GT(level(10, 5), 0.95);
            ASSERT_TRUE(click("DISMISS"));
            click("SAVE");
        } else {
            EXPECT_EQ(messages, std::vector<std::string>{"Maximimum image size is 256x512"});
            messages.clear();
            EXPECT_TRUE(rec->click("Range Prof")); // the main window is free again
            click("DISMISS");
            click("SAVE");
        }
    }
}

TEST_F(opening, one_dimensional_data_get_a_message) {
    load(make_scene({{10, 5, 1}}));
    if (user.pstyle == 0) click("Input Parameter Style");
    wi_numfld_putval(main_window().numfld[3], 1);
    ASSERT_TRUE(click("Image"));
    EXPECT_EQ(imgwinon, 0);
    EXPECT_EQ(eoj, 0); // and no journal
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_NE(messages[0].find("single time"), std::string::npos) << messages[0];
    EXPECT_TRUE(rec->usable(rec->find(port_kind::button, "Image")));
}

TEST_F(opening, data_without_a_picture) {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    for (float bad : {0.0f, nan, inf}) {
        load(make_scene({{10, 5, 1}}, 16, 16));
        ASSERT_TRUE(click("Range Prof")); // brings the data into memory
        ASSERT_TRUE(click("DISMISS"));
        std::fill(user.pfdata.begin(), user.pfdata.end(), bad);
        filewin_cb(nullptr, 9);
        rec->run_pending();
        ASSERT_EQ(imgwinon, 1) << bad;
        image_gate gate;
        EXPECT_FALSE(strongest_image_gate(gate));
        for (const char* style : {"Contours", "Color Intensity", "Peaks"}) choose_style(style);
        ASSERT_TRUE(click("Flop (h)"));
        ASSERT_TRUE(click("Peak Parameters"));
        press(0, 0, RIGHT_BUTTON);
        ASSERT_TRUE(click("Interpolate"));
        ASSERT_TRUE(click("DISMISS"));
        click("SAVE");
    }
}

TEST_F(opening, absurd_defaults) {
    load(make_scene({{10, 5, 1}}));
    const std::pair<float defaults::*, float> cases[] = {
        {&defaults::pi_diam, 1e9f}, {&defaults::pi_diam, -4},   {&defaults::pi_npmx, 1e9f},
        {&defaults::pi_npmx, -3},   {&defaults::pi_kscl, 9},    {&defaults::pi_apmn, 7},
        {&defaults::pi_apmn, -5},   {&defaults::pi_ifx, 1e30f}, {&defaults::pi_ify, -1e30f},
        {&defaults::pi_wct, 1e30f}};
    for (const auto& [field, value] : cases) {
        norva_init_defaults(def);
        def.*field = value;
        xi.init = false;
        ASSERT_TRUE(click("Image"));
        for (int style : {1, 2, 0}) style_cb(nullptr, style);
        if (imgwinon) {
            ASSERT_TRUE(click("Flop (h)"));
            ASSERT_TRUE(click("DISMISS"));
        }
        EXPECT_FALSE(jary);
    }
    // Too many peaks, and a scaling that there is not, are told; the rest is held to what can be drawn.
    for (const std::string& text : messages) EXPECT_EQ(text.substr(0, 11), "***Error 10") << text;
}

TEST_F(opening, window_of_any_size) {
    open_three();
    const std::size_t as_opened = digest();
    const port_rect rect = rec->window(top()).rect;
    for (const port_size size :
         {port_size{60, 40}, port_size{4000, 200}, port_size{120, 3000}, port_size{1, 1}}) {
        rec->resize(top(), size.w, size.h);
        rec->run_pending();
        for (const char* style : {"Contours", "Color Intensity", "Peaks"})
            style_cb(nullptr, style[0] == 'C' ? 1 : 0);
        style_cb(nullptr, 2);
        style_cb(nullptr, 0);
    }
    rec->resize(top(), rect.w, rect.h);
    EXPECT_EQ(digest(), as_opened);
}

TEST_F(opening, a_message_that_is_up_holds_everything) {
    open_three();
    const std::size_t before = digest();
    msgwinon = 1;
    ximag_refresh_controls();
    for (const char* text : {"DISMISS", "Edit Image", "Zoom", "Flop (h)", "Interpolate", "Plot Scaling"})
        EXPECT_FALSE(rec->usable(rec->find(text == std::string("Edit Image") || text == std::string("Zoom")
                                               ? port_kind::toggle
                                               : port_kind::button,
                                           text, top())))
            << text;
    for (int button : {0, 1, 2}) {
        press(3, -17, button);
        press_control_box(button);
    }
    ximag_bttn(ximag_window(), PI_FLOP);
    ximag_fld_cb(nullptr, 12);
    rec->shortcut(top(), 'Z');
    EXPECT_EQ(digest(), before);
    EXPECT_EQ(imgwinon, 1);
    EXPECT_EQ(xi.pip.count, 0);
    msgwinon = 0;
    ximag_refresh_controls();
    EXPECT_TRUE(click("Flop (h)"));
    EXPECT_EQ(xi.pip.count, 1);
}

} // namespace
} // namespace norva
