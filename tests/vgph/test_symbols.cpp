// Stroke text, circles and spots.
#include "font.h"
#include "vgph/vggph.h"
#include "vgph/vgsym.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <string>

using namespace norva;

namespace {

TEST(stroke_font, EveryPrintableCharacterIsDrawnInsideItsCellAndUnlikeTheOthers) {
    std::set<std::string> shapes;
    for (int code = 0; code < 256; code++) {
        const auto glyph = font_glyph(static_cast<unsigned char>(code));
        ASSERT_EQ(glyph.empty(), code < 32 || code > 126) << code;
        if (glyph.empty()) continue;
        vgobject_ptr obj = vg_symbol(0, 0, 21, 0, std::string(1, static_cast<char>(code))); // an inch a unit
        float x0, y0, x1, y1;
        vg_obj_extent(*obj, x0, y0, x1, y1);
        EXPECT_GE(x0, 0) << char(code);
        EXPECT_LE(x1, vg_symlen(21, std::string(1, static_cast<char>(code)))) << char(code);
        EXPECT_GE(y0, -6) << char(code);
        EXPECT_LE(y1, 26) << char(code);
        EXPECT_EQ(obj->veclst.empty(), code == ' ');
        std::string shape;
        for (const _vgvec& v : obj->veclst)
            shape += std::to_string(v.pen) + std::to_string(v.x) + ',' + std::to_string(v.y) + ' ';
        EXPECT_TRUE(shapes.insert(shape).second) << char(code);
        EXPECT_TRUE(obj->veclst.empty() || obj->veclst[0].pen == 0);
    }
}

// "I" is one stem: 3 units in, from the foot (half a unit up) 21 units high, 3 units on.
TEST(vg_obj_sym, PlacesAndTurns) {
    auto expect_stem = [](const _vgobject& obj, float ax, float ay, float bx, float by) {
        ASSERT_EQ(obj.veclst.size(), 2u);
        EXPECT_EQ(obj.veclst[0].pen, 0);
        EXPECT_EQ(obj.veclst[1].pen, 1);
        EXPECT_NEAR(obj.veclst[0].x, ax, 1e-5);
        EXPECT_NEAR(obj.veclst[0].y, ay, 1e-5);
        EXPECT_NEAR(obj.veclst[1].x, bx, 1e-5);
        EXPECT_NEAR(obj.veclst[1].y, by, 1e-5);
    };
    expect_stem(*vg_symbol(10, 20, 21, 0, "I"), 13, 20.5f, 13, 41.5f);
    expect_stem(*vg_symbol(10, 20, 42, 0, "I"), 16, 21, 16, 63);
    expect_stem(*vg_symbol(10, 20, 21, 90, "I"), 9.5f, 23, -11.5f, 23);
    expect_stem(*vg_symbol(10, 20, 21, 180, "I"), 7, 19.5f, 7, -1.5f);
    expect_stem(*vg_symbol(0, 0, 21, 0, " I"), 15, 0.5f, 15, 21.5f);
    expect_stem(*vg_symbol(0, 0, 21, 0, "\n\xc3\xa4I\x7f"), 3, 0.5f, 3, 21.5f);
}

TEST(vg_symlen, AddsTheAdvances) {
    EXPECT_EQ(vg_symlen(0.1f, ""), 0);
    EXPECT_FLOAT_EQ(vg_symlen(21, "I"), 6);
    EXPECT_FLOAT_EQ(vg_symlen(0.07f, "I I"), (6 + 12 + 6) / 300.0f);
    for (char c : std::string("123456789-+")) // columns of numbers stand in line
        EXPECT_EQ(vg_symlen(1, std::string(1, c)), vg_symlen(1, "0")) << c;
    EXPECT_EQ(vg_symlen(1, "\xff\x80\t"), 0);
}

double radius_of(const _vgvec& v, double x, double y) {
    return std::hypot(v.x - x, v.y - y);
}

TEST(vg_vecgen, CirclesAreCloseToTheTruth) {
    for (float r : {0.0f, 0.001f, 1 / 300.0f, 0.01f, 0.05f, 0.3f, 1.0f, 5.0f}) {
        std::vector<_vgvec> out;
        vg_vecgen_circle(2, 3, r, out);
        const double drawn = std::max(r, 1 / 300.0f);
        ASSERT_GE(out.size(), 3u) << r;
        EXPECT_EQ(out.front().pen, 0);
        EXPECT_EQ(out.front().x, out.back().x) << "closed, " << r;
        EXPECT_EQ(out.front().y, out.back().y);
        for (std::size_t i = 0; i < out.size(); i++) {
            EXPECT_NEAR(radius_of(out[i], 2, 3), drawn, 1e-5);
            if (i == 0) continue;
            EXPECT_EQ(out[i].pen, 1);
            const double half = std::hypot(out[i].x - out[i - 1].x, out[i].y - out[i - 1].y) / 2;
            const double sagitta = drawn - std::sqrt(std::max(0.0, drawn * drawn - half * half));
            EXPECT_LE(sagitta, (r < 0.02 ? 2.0 : 1.25) / 300) << r; // the number of chords is a truncated one
        }
    }
    vg_vecgen_dotdensity(0); // changes nothing
    std::vector<_vgvec> none;
    vg_vecgen_circle(0, 0, std::nanf(""), none);
    vg_vecgen_spot(0, std::numeric_limits<float>::infinity(), 1, none);
    EXPECT_TRUE(none.empty());
}

TEST(vg_vecgen, SpotsAreFilled) {
    const float r = 0.2f;
    std::vector<_vgvec> out;
    vg_vecgen_spot(1, 1, r, out);
    for (const _vgvec& v : out) EXPECT_LE(radius_of(v, 1, 1), r + 1e-5);
    // Every place inside lies close to a stroke.
    for (double y = 1 - r + 0.004; y < 1 + r - 0.004; y += 0.00137)
        for (double across : {-0.9, 0.0, 0.9}) {
            const double x = 1 + across * std::sqrt(r * r - (y - 1) * (y - 1));
            double nearest = 1;
            for (std::size_t i = 1; i < out.size(); i++) {
                const _vgvec &a = out[i - 1], &b = out[i];
                if (b.pen == 0 || std::abs(a.y - b.y) > 1e-7) continue;
                if (std::min(a.x, b.x) <= x && x <= std::max(a.x, b.x))
                    nearest = std::min(nearest, std::abs(y - a.y));
            }
            EXPECT_LE(nearest, 0.5 / 300 + 1e-6) << y;
        }
}

TEST(vg_vecgen, ClippedShapesStayInsideTheBoxAndLoseNothingThere) {
    const _vgrect box{0.9f, 0.8f, 1.1f, 1.9f};
    std::vector<_vgvec> whole, cut;
    vg_vecgen_circle(1, 1, 0.15f, whole);
    vg_vecgen_circle_clip(1, 1, 0.15f, {1.1f, 1.9f, 0.9f, 0.8f}, cut); // corners in any order
    // The length of what is inside, chord by chord.
    auto length = [](const std::vector<_vgvec>& v) {
        double sum = 0;
        for (std::size_t i = 1; i < v.size(); i++)
            if (v[i].pen == 1) sum += std::hypot(v[i].x - v[i - 1].x, v[i].y - v[i - 1].y);
        return sum;
    };
    double inside = 0;
    for (std::size_t i = 1; i < whole.size(); i++) {
        _vgrect part;
        if (vg_clip(box, {whole[i - 1].x, whole[i - 1].y, whole[i].x, whole[i].y}, part))
            inside += std::hypot(part.x1 - part.x0, part.y1 - part.y0);
    }
    EXPECT_GT(inside, 0.3);
    EXPECT_NEAR(length(cut), inside, 1e-5);

    std::vector<_vgvec> far, spot;
    vg_vecgen_circle_clip(5, 5, 0.15f, box, far);
    EXPECT_TRUE(far.empty());
    vg_vecgen_spot_clip(1, 1, 0.15f, box, spot);
    vg_vecgen_spot_clip(1, 1, 1e30f, box, spot); // covers the box, in reasonable time
    EXPECT_LT(spot.size(), 3000u);
    for (const auto* list : {&cut, &spot})
        for (const _vgvec& v : *list) EXPECT_TRUE(vg_inrect(box, v.x, v.y)) << v.x << ' ' << v.y;
}

} // namespace
