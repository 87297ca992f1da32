// Objects and frames.
#include "vgph/vgph.h"

#include <gtest/gtest.h>

using namespace norva;

TEST(vg_object, AttributesHoldTheColourToThePalette) {
    vgobject_ptr obj = vg_new_object();
    vg_attr_object(*obj, 99, 3, 5);
    EXPECT_EQ(obj->color, 15);
    vg_attr_object(*obj, -1, 0, 0);
    EXPECT_EQ(obj->color, 0);
}

TEST(vg_object, RadiiScaleByXAloneAndDoNotMove) {
    vgobject_ptr obj = vg_new_object();
    vg_plot_object(*obj, 1, 2, 0);
    EXPECT_EQ(obj->extended, 0);
    vg_plot_obj(*obj, 0.5f, 9, vg_pen_circle);
    vg_plot_obj(*obj, 3, 4, vg_pen_clip_high);
    EXPECT_NE(obj->extended, 0);
    vg_scale_object(*obj, 2, 10, 100, 200);
    vg_move_object(*obj, 1, -1);
    const auto& v = obj->veclst;
    const std::pair<float, float> expected[] = {{103, 219}, {1, 9}, {107, 239}}; // the radius: 0.5 * 2
    for (std::size_t i = 0; i < 3; i++) EXPECT_EQ(std::pair(v[i].x, v[i].y), expected[i]) << i;
}

TEST(vg_object, ExtentBoxAndMerge) {
    float x0, y0, x1, y1;
    vgobject_ptr obj = vg_new_object();
    vg_obj_extent(*obj, x0, y0, x1, y1);
    EXPECT_EQ(x0 + y0 + x1 + y1, 0);
    vg_plot_object(*obj, 2, -3, 0);
    vg_plot_object(*obj, 5, -1, 1);
    vg_box_obj(*obj, 0.5f);
    vg_obj_extent(*obj, x0, y0, x1, y1);
    EXPECT_EQ(x0, 1.5f);
    EXPECT_EQ(y0, -3.5f);
    EXPECT_EQ(x1, 5.5f);
    EXPECT_EQ(y1, -0.5f);
    ASSERT_EQ(obj->veclst.size(), 7u);
    EXPECT_EQ(obj->veclst[2].pen, 0) << "the box is a stroke of its own";
    EXPECT_EQ(obj->veclst[2].x, obj->veclst[6].x) << "and closed";
    EXPECT_EQ(obj->veclst[2].y, obj->veclst[6].y);

    vgobject_ptr spot = vg_new_object();
    vg_plot_obj(*spot, 7, 0, vg_pen_spot);
    vg_obj_extent(*spot, x0, y0, x1, y1);
    EXPECT_EQ(x1, 7) << "a radius counts as if it were a point";
    vg_merge_object(*obj, std::move(spot));
    vg_merge_object(*obj, nullptr);
    EXPECT_EQ(obj->veclst.size(), 8u);
    EXPECT_NE(obj->extended, 0) << "the spot must still be drawn as one";
}
