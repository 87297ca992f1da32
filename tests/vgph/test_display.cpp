// Displays on the recording port: scale, runs of points, exclusive-or, palette.
#include "draw_area_test.h"

#include "vgph/vggph.h"
#include "vgph/vgsym.h"

#include <cmath>
#include <limits>

using namespace norva;
using namespace norva::test;

namespace {

class vg_display : public draw_area_test {};

TEST_F(vg_display, OneScaleServesBothAxesFromTheLowerLeftCorner) {
    auto d = display(800, 300, 8, 6); // 100 pixels per inch would fit in x, 50 in y
    EXPECT_EQ(d->xpinch, 50);
    EXPECT_EQ(d->ypinch, 50);
    EXPECT_EQ(vg_to_pixel(*d, 0, 0), (port_point{0, 299}));
    EXPECT_EQ(vg_to_pixel(*d, 2, 1), (port_point{100, 249}));
    EXPECT_EQ(vg_to_pixel(*d, 1.019f, 0), (port_point{50, 299})) << "truncated";

    vg_resize(*d, 8, 6, 1); // turned: 300/8 against 800/6
    EXPECT_EQ(d->xpinch, 37.5f);
    EXPECT_EQ(vg_to_pixel(*d, 0, 0), (port_point{799, 299}));
    EXPECT_EQ(vg_to_pixel(*d, 2, 0), (port_point{799, 224})) << "x runs upward";
    EXPECT_EQ(vg_to_pixel(*d, 0, 2), (port_point{724, 299})) << "y runs to the left";
}

TEST_F(vg_display, PixelsComeBackAsInches) {
    for (int invxy : {0, 1}) {
        auto d = display(437, 291, 5, 3, invxy);
        for (float x : {0.0f, 0.4f, 4.9f})
            for (float y : {0.0f, 1.7f, 2.9f}) {
                const port_point p = vg_to_pixel(*d, x, y);
                float xback, yback;
                vg_xy_pos(*d, p.x, p.y, xback, yback);
                EXPECT_NEAR(xback, x, 1 / d->xpinch) << invxy << ' ' << x << ' ' << y;
                EXPECT_NEAR(yback, y, 1 / d->xpinch) << invxy << ' ' << x << ' ' << y;
            }
    }
}

TEST_F(vg_display, FarPointsAreHeldAndNotDropped) {
    auto d = display(100, 100, 1, 1);
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(vg_to_pixel(*d, 1e9f, -1e9f), (port_point{32766, 32766}));
    EXPECT_EQ(vg_to_pixel(*d, -inf, inf), (port_point{-32767, -32767}));
    EXPECT_EQ(vg_to_pixel(*d, std::nanf(""), 0).x, -32767);
}

TEST_F(vg_display, ABadScaleDrawsNothing) {
    auto d = display(100, 100, 0, 5);
    float x = 7, y = 7;
    vg_xy_pos(*d, 50, 50, x, y);
    EXPECT_EQ(x, 0);
    EXPECT_EQ(y, 0);
    rec.log.clear();
    vg_render_object(*d, line({{0, 0}, {1, 1}}).get());
    vg_unrender_object(*d, line({{0, 0}, {1, 1}}).get());
    EXPECT_TRUE(rec.log.empty());
    // An area that has no size yet must not divide by zero either.
    _vgdisplay unknown;
    vg_resize(unknown, 5, 5, 0);
    vg_xy_pos(unknown, 50, 50, x, y);
    EXPECT_EQ(x, 0);
}

TEST_F(vg_display, LongLinesGoOutInRunsThatShareEndPoints) {
    auto d = display(600, 400, 6, 4);
    for (int n : {1, 2, 99, 100, 101, 199, 200, 250}) {
        std::vector<std::pair<float, float>> points;
        for (int i = 0; i < n; i++) points.emplace_back(i * 0.02f, (i % 7) * 0.3f);
        rec.log.clear();
        vg_render_object(*d, line(points).get());
        const auto runs = calls("polyline_to", area);
        // The first run takes up to 100 points, each later one 99 new ones.
        ASSERT_EQ(static_cast<int>(runs.size()), n < 2 ? 0 : n <= 100 ? 1 : 1 + (n - 100 + 98) / 99) << n;
        EXPECT_EQ(calls("move_to", area).size(), n < 2 ? 0u : 1u) << "one stroke: the dashes must run on";
        std::size_t i = 0;
        for (const record_call& run : runs) { // the port notes the shared point first
            EXPECT_LE(run.points.size(), 100u);
            if (i > 0) i--;
            for (port_point p : run.points) {
                EXPECT_EQ(p, vg_to_pixel(*d, points[i].first, points[i].second)) << i;
                i++;
            }
        }
        EXPECT_EQ(static_cast<int>(i), n > 1 ? n : 0);
    }
}

TEST_F(vg_display, ALineGoesOnFromWhereACircleStands) {
    auto d = display(400, 400, 4, 4);
    auto obj = vg_new_object();
    vg_plot_object(*obj, 1, 2, 0);
    vg_plot_obj(*obj, 0.5f, 0, vg_pen_circle);
    vg_plot_object(*obj, 3, 2, 1);
    rec.log.clear();
    vg_render_object(*d, obj.get());
    const auto runs = calls("polyline_to", area);
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[1].points, (std::vector<port_point>{vg_to_pixel(*d, 1, 2), vg_to_pixel(*d, 3, 2)}));
}

// Everything that can be in an object, with lines long enough for several runs.
vgobject_ptr busy_object(int color, int linetype, int linethick) {
    vgobject_ptr obj = vg_new_object();
    vg_attr_object(*obj, color, linetype, linethick);
    for (int i = 0; i < 330; i++)
        vg_plot_object(*obj, 2 + 2 * std::cos(0.3f * i) * i / 330, 2 + 2 * std::sin(0.3f * i), i > 0);
    vg_plot_object(*obj, 1, 1, 0);
    vg_plot_obj(*obj, 0.6f, 0, vg_pen_circle);
    vg_plot_obj(*obj, 0.3f, 0, vg_pen_spot);
    vg_circle_clip(*obj, 1.5f, 3, 3, 1, 2, 4, 3.3f);
    vg_spot_clip(*obj, 0.5f, 3, 3, 3, 2, 4, 3.3f);
    vg_obj_sym(*obj, 0.3f, 3, 0.2f, 20, "Overlay 12.5");
    return obj;
}

TEST_F(vg_display, AnOverlayDrawnTwiceRestoresEveryPixel) {
    auto d = display(400, 400, 4, 4);
    vg_render_object(*d, busy_object(2, 0, 3).get());
    const auto before = pixels();
    for (int linethick : {0, 2, 4}) {
        auto over = busy_object(vg_overlay_color, 1, linethick);
        vg_move_object(*over, 0.03f, 0.1f);
        vg_render_object(*d, over.get());
        EXPECT_NE(pixels(), before);
        vg_unrender_object(*d, over.get());
        EXPECT_EQ(pixels(), before) << linethick;
    }
    rec.log.clear();
    vg_render_object(*d, line({{0, 0}, {1, 1}}).get());
    for (const record_call& run : calls("polyline_to", area)) EXPECT_EQ(run.rop, port_rop::copy);
}

TEST_F(vg_display, OverlaysShowTheOverlayColourAndLeaveNoHoles) {
    auto d = display(300, 100, 3, 1);
    // A level line of 299 points, one a pixel: three runs.
    std::vector<std::pair<float, float>> points;
    for (int i = 0; i < 299; i++) points.emplace_back(i * 0.01f + 0.001f, 0.5f);
    vg_set_overcolor(1, 0, 1);
    vg_render_object(*d, line(points, vg_overlay_color).get());
    EXPECT_EQ(pixels_of(0xff00ff), 298);
    vg_unrender_object(*d, line(points, vg_overlay_color).get());
    vg_set_overcolor(0, 1, 0);
    vg_render_object(*d, line(points, vg_overlay_color).get());
    EXPECT_EQ(pixels_of(0x00ff00), 298);
    EXPECT_EQ(vg_get_palette(15), 0x00ff00u);
}

TEST_F(vg_display, RemovingAnOrdinaryObjectPaintsItInTheBackground) {
    auto d = display(100, 100, 1, 1);
    auto obj = line({{0, 0.5f}, {1, 0.5f}}, 2);
    vg_render_object(*d, obj.get());
    EXPECT_EQ(pixels_of(0x0000ff), 100);
    obj->visible = 0;
    vg_unrender_object(*d, obj.get());
    EXPECT_EQ(pixels_of(0x0000ff), 100) << "an invisible object is passed over";
    obj->visible = 1;
    vg_unrender_object(*d, obj.get());
    EXPECT_EQ(pixels_of(0xffffff), 100 * 100);
    vg_render_object(*d, obj.get());
    vg_clear(*d);
    EXPECT_EQ(pixels_of(0xffffff), 100 * 100);
}

TEST_F(vg_display, AStrokeWithinOnePixelShowsIt) {
    auto d = display(100, 100, 1, 1);
    auto obj = vg_new_object();
    vg_plot_object(*obj, 0.505f, 0.5f, 0);
    vg_plot_obj(*obj, 0.0001f, 0, vg_pen_circle);
    vg_render_object(*d, obj.get());
    EXPECT_GE(pixels_of(0), 1);
    EXPECT_LE(pixels_of(0), 4);
}

TEST_F(vg_display, ThePenFollowsTheObject) {
    auto d = display(100, 100, 1, 1);
    const struct { int thick, width; } cases[] = {{0, 1}, {1, 1}, {2, 1}, {3, 2}, {5, 4}};
    for (auto [thick, width] : cases) {
        auto obj = line({{0, 0}, {1, 1}}, 9);
        vg_attr_object(*obj, 9, 7, thick);
        rec.log.clear();
        vg_render_object(*d, obj.get());
        const auto pens = calls("pen", area);
        ASSERT_EQ(pens.size(), 1u);
        EXPECT_EQ(pens[0].width, width) << thick;
        EXPECT_EQ(pens[0].style, 7);
        EXPECT_EQ(pens[0].rgb, 0x0080ffu) << "orange: 255, 128, 0";
    }
}

TEST_F(vg_display, PaletteArgumentsAreSwitches) {
    auto d = display(100, 100, 1, 1);
    EXPECT_EQ(vg_get_palette(8), 0xff66ffu) << "pink: 255, 102, 255";
    vg_set_palette(3, 0.5, 0.5, 0.5);
    EXPECT_EQ(vg_get_palette(3), 0u);
    vg_set_palette(3, 1, 0.99, 1e300);
    EXPECT_EQ(vg_get_palette(3), 0xff00ffu);
    vg_set_palette(16, 0, 0, 0);
    vg_set_palette(-1, 0, 0, 0);
    EXPECT_EQ(vg_get_palette(17), 0xffffffu);
}

TEST_F(vg_display, CellsLieAsThePictureLies) {
    const std::vector<std::uint32_t> cells = {1, 2, 3,  // the upper row
                                              4, 5, 6}; // the lower one
    auto d = display(300, 200, 3, 2);
    vg_render_cells(*d, {0, 0, 3, 2}, cells, 3, 2);
    EXPECT_EQ(pixel(50, 50), 1u);
    EXPECT_EQ(pixel(250, 50), 3u);
    EXPECT_EQ(pixel(50, 150), 4u);
    vg_render_cells(*d, {0, 0, 3, 2}, cells, 4, 2); // too few
    EXPECT_EQ(rec.count("image"), 1u);

    auto turned = display(200, 300, 3, 2, 1); // x upward from the right, y to the left
    vg_render_cells(*turned, {0, 0, 3, 2}, cells, 3, 2);
    EXPECT_EQ(pixel(150, 250), 4u) << "the plot's lower left";
    EXPECT_EQ(pixel(150, 50), 6u) << "its lower right";
    EXPECT_EQ(pixel(50, 250), 1u) << "its upper left";
}

} // namespace
