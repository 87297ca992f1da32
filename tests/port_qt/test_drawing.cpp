// What reaches the screen from pens, modes, runs, fills and pictures.
#include "fixture.h"

#include <algorithm>
#include <random>
#include <set>

namespace norva::test {

class drawing : public port_test {
protected:
    drawing() {
        area = make(port_kind::draw, {5, 7, 200, 150});
        show_all();
    }

    void polyline(const std::vector<port_point>& points, std::size_t run) {
        p().move_to(area, points.front());
        for (std::size_t i = 1; i < points.size(); i += run)
            p().polyline_to(area, std::span(points).subspan(i, std::min(run, points.size() - i)));
    }

    std::vector<port_point> random_points(int n, int span) {
        std::uniform_int_distribution<int> x(-span, 200 + span), y(-span, 150 + span);
        std::vector<port_point> points;
        for (int i = 0; i < n; i++) points.push_back({x(random), y(random)});
        return points;
    }

    void clear() { p().erase(area, {0, 0, 200, 150}); }

    port_win area = 0;
    std::mt19937 random{7};
};

TEST_F(drawing, exclusive_or_twice_restores_the_screen) {
    std::vector<std::uint32_t> noise(50 * 40);
    for (auto& word : noise) word = random() & 0xffffff;
    p().image(area, {0, 0, 200, 150}, noise, 50, 40);
    const QImage before = shot(area);
    for (int trial = 0; trial < 200; trial++) {
        const int style = trial % 10, width = 1 + trial / 10 % 4;
        const auto points = random_points(2 + trial % 30, trial % 3 == 0 ? 32000 : 40);
        const std::size_t run = 1 + random() % 10;
        p().pen(area, random() & 0xffffff, style, width);
        p().rop(area, port_rop::exclusive_or);
        polyline(points, run);
        if (trial == 1) {
            EXPECT_NE(shot(area), before);
        }
        polyline(points, run);
        p().rop(area, port_rop::copy);
        ASSERT_EQ(shot(area), before) << "style " << style << " width " << width << " run " << run;
    }
}

TEST_F(drawing, dashes_run_on_from_run_to_run) {
    // A curve in steps of a few pixels, as plots are drawn: the same pixels whatever the cut into runs.
    std::vector<port_point> curve, steep;
    for (int i = 0; i < 60; i++) curve.push_back({5 + 3 * i, 75 + (i - 30) * (i - 30) / 40});
    for (int i = 0; i < 60; i++) steep.push_back({5 + 3 * i, 75 + (i % 6 - 3) * 20});
    const auto dark = [](const QImage& image) {
        int n = 0;
        for (int y = 0; y < image.height(); y++)
            for (int x = 0; x < image.width(); x++) n += image.pixel(x, y) == 0xff000000;
        return n;
    };
    for (int style = 1; style < 10; style++) {
        p().pen(area, 0, style, 1);
        clear();
        polyline(curve, 1000);
        const QImage whole = shot(area);
        clear();
        polyline(steep, 1000);
        const int steep_dark = dark(shot(area));
        for (std::size_t run : {1, 2, 7}) {
            clear();
            polyline(curve, run);
            EXPECT_EQ(shot(area), whole) << "style " << style << " run " << run;
            // On lines that go up steeply the platform itself is a pixel off at the corners.
            clear();
            polyline(steep, run);
            EXPECT_NEAR(dark(shot(area)), steep_dark, 0.05 * steep_dark)
                << "style " << style << " run " << run;
        }
    }
    // A new start restarts the dashes: the same stroke twice falls on itself.
    p().pen(area, 0, 3, 1);
    clear();
    polyline({{5, 5}, {100, 5}}, 1);
    const QImage once = shot(area);
    polyline({{5, 5}, {100, 5}}, 1);
    EXPECT_EQ(shot(area), once);
}

TEST_F(drawing, wide_dashes_keep_their_gaps_over_runs) {
    p().pen(area, 0, 1, 3);
    polyline({{5, 50}, {195, 50}}, 1);
    const QImage whole = shot(area);
    clear();
    std::vector<port_point> steps;
    for (int x = 5; x <= 195; x += 2) steps.push_back({x, 50});
    polyline(steps, 5);
    EXPECT_EQ(shot(area), whole);
}

TEST_F(drawing, styles_can_be_told_apart) {
    std::set<std::string> rows;
    for (int style = 0; style < 10; style++) {
        clear();
        p().pen(area, 0, style, 1);
        polyline({{0, 10}, {200, 10}}, 1);
        const QImage image = shot(area);
        std::string row;
        for (int x = 0; x < 200; x++) row += image.pixel(x, 10) == 0xff000000 ? '#' : '.';
        rows.insert(row);
        EXPECT_EQ(row.find('.') == std::string::npos, style == 0) << row;
    }
    EXPECT_EQ(rows.size(), 10u);
}

TEST_F(drawing, edges_and_colours) {
    p().fill(area, {10, 20, 30, 40}, 0x0000ff); // red stands in the low byte
    const QImage filled = shot(area);
    EXPECT_EQ(filled.pixel(10, 20), 0xffff0000);
    EXPECT_EQ(filled.pixel(39, 59), 0xffff0000);
    EXPECT_EQ(filled.pixel(40, 30), 0xffffffff); // right and bottom edge exclusive
    EXPECT_EQ(filled.pixel(20, 60), 0xffffffff);

    clear();
    const std::uint32_t four[] = {0x0000ff, 0x00ff00, 0xff0000, 0x123456};
    p().image(area, {100, 100, 4, 6}, four, 2, 2);
    const QImage pictured = shot(area);
    EXPECT_EQ(pictured.pixel(101, 102), 0xffff0000);
    EXPECT_EQ(pictured.pixel(102, 102), 0xff00ff00);
    EXPECT_EQ(pictured.pixel(101, 103), 0xff0000ff);
    EXPECT_EQ(pictured.pixel(103, 105), 0xff563412);
    EXPECT_EQ(pictured.pixel(104, 105), 0xffffffff);

    // The last pixel of a run is left out, so that no pixel of a line is touched twice by exclusive-or.
    clear();
    p().pen(area, 0xff00ff, 0, 1);
    p().rop(area, port_rop::exclusive_or);
    polyline({{10, 10}, {20, 10}, {30, 10}}, 1);
    const QImage line = shot(area);
    for (int x = 10; x < 30; x++) EXPECT_EQ(line.pixel(x, 10), 0xff00ff00) << x;
    EXPECT_EQ(line.pixel(30, 10), 0xffffffff);
    // Fills and erasing copy whatever the mode.
    p().fill(area, {0, 0, 200, 150}, 0x0000ff);
    EXPECT_EQ(shot(area).pixel(15, 10), 0xffff0000);
    p().erase(area, {0, 0, 200, 150});
    EXPECT_EQ(shot(area).pixel(15, 10), 0xffffffff);
}

TEST_F(drawing, nonsense_is_harmless) {
    constexpr int big = 2147483647;
    const std::uint32_t one[] = {0};
    const port_point far[] = {{big, -big}, {-big, big}, {big, big}};
    for (port_win dc : {area, top, port_page, 0, 999}) {
        p().pen(dc, 0, -5, -5);
        p().pen(dc, 0xff, 77, big);
        p().pen(dc, 0, 4, 1);
        p().move_to(dc, {-big, -big});
        p().polyline_to(dc, far);
        p().polyline_to(dc, {});
        p().fill(dc, {big, big, big, big}, 0);
        p().fill(dc, {3, 3, -3, -3}, 0);
        p().image(dc, {0, 0, 9, 9}, one, 2, 1); // fewer pixels than told
        p().image(dc, {0, 0, 9, 9}, one, big, big);
        p().image(dc, {0, 0, 9, 9}, one, 0, 1);
        p().request_paint(dc);
    }
    spin();
    EXPECT_EQ(shot(area).width(), 200);
    EXPECT_EQ(p().page_end(), port_page_result::error);
    EXPECT_EQ(p().client_rect(999), port_rect{});
    EXPECT_EQ(p().get_text(999), "");
    EXPECT_EQ(p().create(port_kind::label, 999, 0, "orphan"), 0);
}

} // namespace norva::test
