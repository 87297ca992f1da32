// Contour lines against surfaces whose level lines are known.
#include "contour_labels.h"
#include "contours.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

namespace norva {
namespace {

std::vector<float> surface(int nx, int ny, const std::function<double(double, double)>& f) {
    std::vector<float> v;
    for (int j = 0; j < ny; j++)
        for (int i = 0; i < nx; i++) v.push_back(static_cast<float>(f(i, j)));
    return v;
}

using line = std::span<const contour_lines::point>;
line line_of(const contour_lines& lines, std::size_t k) {
    return std::span(lines.pts).subspan(lines.begin(k), lines.ends[k] - lines.begin(k));
}
bool closed(line l) {
    return l.front().x == l.back().x && l.front().y == l.back().y;
}
double area(line l) { // positive counterclockwise
    double sum = 0;
    for (std::size_t i = 1; i < l.size(); i++)
        sum += (static_cast<double>(l[i - 1].x) * l[i].y - static_cast<double>(l[i].x) * l[i - 1].y) / 2;
    return sum;
}

TEST(contours, circles_of_a_cone) {
    contour_lines lines;
    for (bool peak : {true, false}) {
        const double sign = peak ? -1 : 1;
        const auto v =
            surface(60, 50, [&](double x, double y) { return sign * std::hypot(x - 29.3, y - 24.6); });
        for (double r : {3.0, 11.0, 20.0}) {
            trace_contours(v, 60, 50, static_cast<float>(sign * r), lines);
            ASSERT_EQ(lines.ends.size(), 1u);
            const line l = line_of(lines, 0);
            EXPECT_TRUE(closed(l));
            for (const auto p : l) // a chord of a circle of radius r sags by up to 1/(8r)
                EXPECT_NEAR(std::hypot(p.x - 29.3, p.y - 24.6), r, 1 / (7 * r));
            EXPECT_NEAR(area(l), -sign * M_PI * r * r, 2 * M_PI / 7) << "the high ground is to the left";
        }
    }
}

TEST(contours, lines_of_a_plane_and_of_a_saddle_are_exact) {
    contour_lines lines;
    trace_contours(surface(9, 7, [](double x, double y) { return 2 * x + y; }), 9, 7, 9.5f, lines);
    ASSERT_EQ(lines.ends.size(), 1u);
    for (const auto p : lines.pts) EXPECT_NEAR(2 * p.x + p.y, 9.5, 1e-5);
    const auto ends = std::minmax(lines.pts.front().y, lines.pts.back().y);
    EXPECT_EQ(ends.first, 0) << "from border to border";
    EXPECT_EQ(ends.second, 6);

    // xy - c is linear along the sides of every cell.
    const auto saddle = surface(21, 21, [](double x, double y) { return (x - 10.5) * (y - 9.5); });
    for (float level : {-30.0f, -2.0f, 3.0f, 40.0f}) {
        trace_contours(saddle, 21, 21, level, lines);
        EXPECT_EQ(lines.ends.size(), 2u) << level;
        for (const auto p : lines.pts) EXPECT_NEAR((p.x - 10.5) * (p.y - 9.5), level, 1e-4);
    }
}

TEST(contours, a_cell_that_can_be_cut_in_two_ways_follows_its_mean) {
    // High corners 00 and 11. With a low middle they are cut off, with a high one they are joined.
    const struct {
        float level;
        double ends[2][2]; // x + y at both ends of a line
    } cases[] = {{0.6f, {{0.4, 0.4}, {1.6, 1.6}}}, {0.4f, {{0.6, 1.4}, {0.6, 1.4}}}};
    contour_lines lines;
    for (const auto& c : cases) {
        trace_contours(std::vector<float>{1, 0, 0, 1}, 2, 2, c.level, lines);
        ASSERT_EQ(lines.ends.size(), 2u);
        for (std::size_t k = 0; k < 2; k++) {
            const line l = line_of(lines, k);
            ASSERT_EQ(l.size(), 2u);
            const double a = l[0].x + l[0].y, b = l[1].x + l[1].y;
            const bool joined = c.level < 0.5f;
            EXPECT_EQ((a < 1) != (b < 1), joined) << c.level;
            EXPECT_NEAR(std::min(a, b), joined ? 0.6 : std::min(a, b) < 1 ? 0.4 : 1.6, 1e-6);
        }
    }
}

// Noise: each side with its ends on both sides of the level is crossed once and no other; lines close or run
// from border to border. At level 2 many samples stand right on it.
TEST(contours, every_crossing_belongs_to_one_line) {
    std::mt19937 random(5);
    for (int nx : {2, 3, 17, 64})
        for (int ny : {2, 5, 33}) {
            std::vector<float> v(static_cast<std::size_t>(nx * ny));
            for (float& x : v) x = static_cast<float>(random() % 5);
            std::size_t crossings = 0;
            for (int j = 0; j < ny; j++)
                for (int i = 0; i < nx; i++) {
                    const bool in = v[j * nx + i] >= 2;
                    if (i + 1 < nx) crossings += in != (v[j * nx + i + 1] >= 2);
                    if (j + 1 < ny) crossings += in != (v[(j + 1) * nx + i] >= 2);
                }
            const auto on_border = [&](contour_lines::point p) {
                return p.x == 0 || p.y == 0 || p.x == static_cast<float>(nx - 1) ||
                       p.y == static_cast<float>(ny - 1);
            };
            for (float level : {1.5f, 2.0f}) {
                contour_lines lines;
                trace_contours(v, nx, ny, level, lines);
                std::size_t loops = 0;
                for (std::size_t k = 0; k < lines.ends.size(); k++) {
                    const line l = line_of(lines, k);
                    ASSERT_GE(l.size(), 2u);
                    for (std::size_t i = 1; i < l.size(); i++)
                        ASSERT_LE(std::hypot(l[i].x - l[i - 1].x, l[i].y - l[i - 1].y), 1.4143f);
                    loops += closed(l);
                    EXPECT_TRUE(closed(l) || (on_border(l.front()) && on_border(l.back())));
                }
                EXPECT_GE(lines.pts.size(), crossings);
                EXPECT_LE(lines.pts.size(), crossings + loops);
                if (level == 1.5f) {
                    EXPECT_EQ(lines.pts.size(), crossings + loops) << nx << " x " << ny;
                }
            }
        }
    contour_lines none;
    trace_contours(std::vector<float>{1, 2, 3}, 3, 1, 2, none);
    EXPECT_TRUE(none.ends.empty());
}

TEST(contours, labels_stand_on_their_lines_and_in_gaps) {
    const _vgrect box{1, 1, 5, 5};
    std::vector<plot_level> levels(3);
    for (int k = 0; k < 3; k++) { // two sets of circles
        levels[k].text = std::to_string(-10 * (k + 1));
        for (float cx : {2.0f, 4.0f}) {
            for (int i = 0; i <= 90; i++) {
                const double t = 2 * M_PI * i / 90, r = 0.3 + 0.3 * k;
                levels[k].pts.push_back(
                    {static_cast<float>(cx + r * std::cos(t)), static_cast<float>(3 + r * std::sin(t))});
            }
            levels[k].ends.push_back(levels[k].pts.size());
        }
    }
    EXPECT_TRUE(place_labels(box, levels, 0).empty());
    EXPECT_EQ(place_labels(box, levels, 1).size(), 3u);
    const std::vector<contour_label> labels = place_labels(box, levels, 5);
    EXPECT_EQ(labels.size(), 6u) << "one a line";
    for (const contour_label& l : labels) {
        double nearest = 9;
        for (const plot_level& level : levels)
            for (plot_point p : level.pts)
                if (level.text == l.text)
                    nearest = std::min(nearest, std::hypot<double>(p.x - l.middle.x, p.y - l.middle.y));
        EXPECT_LT(nearest, 0.05) << l.text;
        EXPECT_GE(l.cos, 0) << "not upside down";
        for (const contour_label& o : labels)
            if (&o != &l) {
                EXPECT_GT(std::hypot(o.middle.x - l.middle.x, o.middle.y - l.middle.y), l.half + o.half);
            }
    }
    vgobject_ptr obj = vg_new_object();
    gapped_lines out(*obj, labels);
    for (const plot_level& level : levels)
        for (std::size_t k = 0; k < level.ends.size(); k++) out.draw(level.line(k));
    EXPECT_LT(obj->veclst.size(), 6u * 91);
    EXPECT_GT(obj->veclst.size(), 6u * 45) << "most of the lines stays";
    for (const _vgvec& v : obj->veclst)
        for (const contour_label& l : labels)
            EXPECT_GT(std::hypot(v.x - l.middle.x, v.y - l.middle.y), 0.035f)
                << "half the height of the text";
}

} // namespace
} // namespace norva
