// Overlays of the analysis windows.
#include "draw/overlays.h"
#include "state/calls.h"
#include "state/defaults.h"
#include "state/run.h"

#include <gtest/gtest.h>

#include <cmath>

namespace norva {
namespace {

TEST(control_box, digits_stand_in_groups_and_bad_numbers_are_told) {
    const struct {
        int num;
        const char *front, *last;
    } cases[] = {{0, "00", ""},      {7, "07", ""},      {99, "99", ""},        {100, "01", "00"},
                 {1203, "12", "03"}, {9999, "99", "99"}, {10000, "0100", "00"}, {999999, "9999", "99"}};
    for (const auto& c : cases) {
        EXPECT_EQ(split_cbox_number(c.num).front, c.front) << c.num;
        EXPECT_EQ(split_cbox_number(c.num).last, c.last) << c.num;
    }

    reset_run_state();
    static std::string message;
    app_hooks.popmsg = [](const std::string& text) { message = text; };
    _vgdisplay disp;
    disp.xsize = 8;
    disp.ysize = 5;
    disp.xpinch = disp.ypinch = 100;
    vgframe_ptr box;
    draw_vg_cbox(disp, box, 999999);
    ASSERT_TRUE(box);
    for (const vgobject_ptr& obj : box->objptr) {
        float x0, y0, x1, y1;
        vg_obj_extent(*obj, x0, y0, x1, y1);
        EXPECT_GE(x0, 0);
        EXPECT_LE(x1, def.cbox_xsz);
        EXPECT_GE(y0, disp.ysize - def.cbox_ysz);
        EXPECT_LT(y1, disp.ysize);
    }
    const _vgframe* before = box.get();
    for (int bad : {-1, 1000000}) {
        message.clear();
        draw_vg_cbox(disp, box, bad);
        EXPECT_EQ(message, "ERROR: bad num in draw_cbox()");
        EXPECT_EQ(box.get(), before);
    }
    EXPECT_TRUE(in_cbox(disp, 0.5f, 4.9f));
    EXPECT_FALSE(in_cbox(disp, 1.0f, 4.9f));
    EXPECT_FALSE(in_cbox(disp, 0.5f, 4.6f));
}

TEST(drawn_line, ends_on_the_frame) {
    // The frame covers -10..10 gates on 4 inches and 0..2 s on 2 inches, from (1, 1) inches on.
    _vgdataframe df;
    vg_init_default_df(df, -10, 10, 0, 2, "", "");
    df.xlen = 4;
    df.ylen = 2;
    vg_gph_init(df);
    const auto angle = [](double dx, double dy) { return std::atan2(dy, dx) * 180 / M_PI; };
    const struct {
        double x, y, ang;
        float x0, y0, x1, y1; // inches, lower end first or left end for a level line
    } cases[] = {
        {0, 1, angle(10, 1), 1, 1, 5, 3},           // corner to corner
        {5, 0.5, 90, 4, 1, 4, 3},                   // one range
        {5, 0.5, 0, 1, 1.5f, 5, 1.5f},              // one time
        {5, 1, angle(-10, 1), 5, 1.5f, 2, 3},       // leaves through the right edge and the top
        {-2, 1.9, angle(1e-7, 2), 2.6f, 1, 2.6f, 3} // all but upright, far steeper than the frame
    };
    for (const auto& c : cases) {
        const vgobject_ptr line = draw_vg_line(df, c.x, c.y, c.ang);
        ASSERT_TRUE(line);
        EXPECT_EQ(line->color, vg_overlay_color);
        ASSERT_EQ(line->veclst.size(), 2u);
        _vgvec a = line->veclst[0], b = line->veclst[1];
        const bool swapped = a.y != b.y ? a.y > b.y : a.x > b.x;
        if (swapped) std::swap(a, b);
        EXPECT_NEAR(a.x, c.x0, 1e-5);
        EXPECT_NEAR(a.y, c.y0, 1e-5);
        EXPECT_NEAR(b.x, c.x1, 1e-5);
        EXPECT_NEAR(b.y, c.y1, 1e-5);
    }
    EXPECT_FALSE(draw_vg_line(df, 0, 3, 0)) << "wholly above";
    EXPECT_FALSE(draw_vg_line(df, 11, 1, 90)) << "wholly to the right";
    EXPECT_FALSE(draw_vg_line(df, NAN, 1, 45));
}

} // namespace
} // namespace norva
