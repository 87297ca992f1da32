// Clipping and data frames.
#include "vgph/vggph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace norva;

namespace {

// The same question answered by parameters along the segment.
bool liang_barsky(const _vgdrect& box, const _vgdrect& s, _vgdrect& out) {
    double t0 = 0, t1 = 1;
    const double dx = s.x1 - s.x0, dy = s.y1 - s.y0;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {s.x0 - box.x0, box.x1 - s.x0, s.y0 - box.y0, box.y1 - s.y0};
    for (int i = 0; i < 4; i++) {
        if (p[i] == 0 && q[i] < 0) return false;
        if (p[i] < 0) t0 = std::max(t0, q[i] / p[i]);
        if (p[i] > 0) t1 = std::min(t1, q[i] / p[i]);
    }
    out = {s.x0 + t0 * dx, s.y0 + t0 * dy, s.x0 + t1 * dx, s.y0 + t1 * dy};
    return t0 <= t1;
}

TEST(vg_clip, AgreesWithAnotherMethod) {
    const _vgdrect box{-1, -2, 3, 1};
    std::mt19937 gen(7);
    std::uniform_real_distribution<double> any(-6, 6);
    std::uniform_int_distribution<int> grid(-4, 4); // many segments along edges and through corners
    int kept = 0;
    for (int i = 0; i < 40000; i++) {
        const bool on_grid = i % 2;
        auto number = [&] { return on_grid ? static_cast<double>(grid(gen)) : any(gen); };
        const _vgdrect s{number(), number(), number(), number()};
        _vgdrect part, expected;
        const bool some = vg_clip(box, s, part);
        const bool some_expected = liang_barsky(box, s, expected);
        if (some != some_expected) { // may differ where the segment only touches a corner
            const _vgdrect& touch = some ? part : expected;
            const double len = std::hypot(touch.x1 - touch.x0, touch.y1 - touch.y0);
            EXPECT_LT(len, 1e-9) << s.x0 << ' ' << s.y0 << ' ' << s.x1 << ' ' << s.y1;
            continue;
        }
        if (!some) continue;
        kept++;
        EXPECT_TRUE(vg_indrect(box, part.x0, part.y0) && vg_indrect(box, part.x1, part.y1));
        EXPECT_NEAR(part.x0, expected.x0, 1e-9);
        EXPECT_NEAR(part.y0, expected.y0, 1e-9);
        EXPECT_NEAR(part.x1, expected.x1, 1e-9);
        EXPECT_NEAR(part.y1, expected.y1, 1e-9);
    }
    EXPECT_GT(kept, 5000);
}

TEST(vg_clip, ASegmentFromInsideIsNeverLost) {
    const _vgdrect box{0, 0, 0.1, 0.3};
    std::mt19937 gen(3);
    std::uniform_real_distribution<double> far(1, 1e6);
    _vgdrect part;
    for (int i = 0; i < 5000; i++) { // out through the upper right corner, as nearly as numbers allow
        const double t = far(gen);
        const _vgdrect s{0.05, 0.15, 0.05 + t * 0.05, 0.15 + t * 0.15};
        ASSERT_TRUE(vg_clip(box, s, part));
        EXPECT_NEAR(part.x1, 0.1, 1e-12);
        EXPECT_NEAR(part.y1, 0.3, 1e-12);
    }
}

_vgdataframe frame(double x0, double x1, double y0, double y1) {
    _vgdataframe df;
    vg_init_default_df(df, x0, x1, y0, y1, "x", "y");
    vg_gph_init(df);
    return df;
}

struct vec {
    int pen;
    float x, y;
};
void expect_vectors(const _vgobject& obj, const std::vector<vec>& expected) {
    ASSERT_EQ(obj.veclst.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); i++) {
        EXPECT_EQ(obj.veclst[i].pen, expected[i].pen) << i;
        EXPECT_NEAR(obj.veclst[i].x, expected[i].x, 1e-6) << i;
        EXPECT_NEAR(obj.veclst[i].y, expected[i].y, 1e-6) << i;
    }
}

TEST(vg_gph, ValuesToInchesAndBack) {
    _vgdataframe df = frame(10, -20, 0, 8); // 6 inches for -30, 4 inches for 8
    EXPECT_FLOAT_EQ(vg_x_loc(df, 10), 1);
    EXPECT_FLOAT_EQ(vg_x_loc(df, -5), 4);
    EXPECT_FLOAT_EQ(vg_y_loc(df, 2), 2);
    EXPECT_NEAR(vg_x_val(df, vg_x_loc(df, 3.7)), 3.7, 1e-5);
    EXPECT_NEAR(vg_y_val(df, vg_y_loc(df, 7.9)), 7.9, 1e-5);

    df = frame(5, 5, 1e300, -1e308);
    EXPECT_FLOAT_EQ(vg_x_loc(df, 5), 4) << "no span: the middle of the axis";
    EXPECT_FLOAT_EQ(vg_x_loc(df, -1e30), 4);
    EXPECT_EQ(vg_x_val(df, 2), 5);
    vgobject_ptr obj = vg_gph_line_xy_d(df, std::vector<double>{1, 5, 9}, std::vector<double>{0, 0, 0});
    for (const _vgvec& v : obj->veclst) EXPECT_FLOAT_EQ(v.x, 4);
}

// Frame at 1, 1; 6 by 4 inches; x 0..6, y 0..4, so that a value v lies at v + 1 inches.
TEST(vg_gph, LinesEndOnTheFramesEdge) {
    _vgdataframe df = frame(0, 6, 0, 4);
    auto curve = [&](std::vector<float> x, std::vector<float> y) { return vg_gph_line_xy(df, x, y); };
    expect_vectors(*curve({1, 2, 3}, {1, 2, 2}), {{0, 2, 2}, {1, 3, 3}, {1, 4, 3}});
    // Out through the top and in again from the right.
    expect_vectors(
        *curve({2, 2, 8, 4}, {2, 6, 2, 2}),
        {{0, 3, 3}, {0, 3, 3}, {1, 3, 5}, {0, 6, 5}, {1, 7, 4 + 1.0f / 3}, {0, 7, 3}, {1, 5, 3}, {0, 5, 3}});
    expect_vectors(*curve({-3, 9}, {2, 2}), {{0, 1, 3}, {1, 7, 3}});
    EXPECT_TRUE(curve({-3, 2, 9}, {5, 7, 5})->veclst.empty()) << "wholly outside";
    EXPECT_TRUE(curve({7, 8}, {-1, 5})->veclst.empty());
    EXPECT_TRUE(curve({}, {})->veclst.empty());
    // What is no number breaks the line.
    expect_vectors(*curve({1, std::nanf(""), 3, 4}, {1, 1, 1, 1}), {{0, 2, 2}, {0, 4, 2}, {1, 5, 2}});
}

TEST(vg_gph, AZoomedCurveStaysOnItsLine) {
    // y = x / 2 seen through a window of 1e-7 around 1/4: the ends of the segment lie 1e7 inches away.
    _vgdataframe df = frame(0.25 - 3e-7, 0.25 + 3e-7, 0.125 - 2e-7, 0.125 + 2e-7);
    vgobject_ptr obj = vg_gph_line_xy_d(df, std::vector<double>{-1, 1}, std::vector<double>{-0.5, 0.5});
    expect_vectors(*obj, {{0, 1, 1.5f}, {1, 7, 4.5f}});
}

TEST(vg_gph, OtherCurves) {
    _vgdataframe df = frame(0, 6, 0, 4);
    expect_vectors(*vg_gph_line_y_xdelt(df, std::vector<float>{1, 2, 3}, 2, 0.5),
                   {{0, 3, 2}, {1, 3.5f, 3}, {1, 4, 4}});
    expect_vectors(*vg_gph_horiz_scat_xy(df, std::vector<float>{1, 6}, std::vector<float>{1, 2}, 1),
                   {{0, 1.5f, 2}, {1, 2.5f, 2}, {0, 6.5f, 3}, {0, 6.5f, 3}, {1, 7, 3}});
    vgobject_ptr spots = vg_gph_spots_d(df, std::vector<double>{1, 7, 6}, std::vector<double>{1, 1, 4},
                                        std::vector<double>{0.1, 0.2, 0.3});
    expect_vectors(*spots, {{0, 2, 2}, {vg_pen_spot, 0.1f, 0}, {0, 7, 5}, {vg_pen_spot, 0.3f, 0}});
    EXPECT_NE(spots->extended, 0);
}

} // namespace
