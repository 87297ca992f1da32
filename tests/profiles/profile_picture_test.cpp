// The picture of a stack of profiles, and the arithmetic of its time span.
#include "profiles/draw_vg_rp.h"
#include "stack_lines.h"
#include "time_span.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace norva {
namespace {

_vgdisplay display(float xsize = 8, float ysize = 5, float pixels_per_inch = 100) {
    _vgdisplay disp;
    disp.xsize = xsize;
    disp.ysize = ysize;
    disp.xpinch = disp.ypinch = pixels_per_inch;
    disp.nx = static_cast<int>(xsize * pixels_per_inch);
    disp.ny = static_cast<int>(ysize * pixels_per_inch);
    disp.badscale = 0;
    return disp;
}

rp_picture picture_of(std::span<const float> power, int nr, double dt = 0.5) {
    rp_picture p;
    p.r1 = -nr / 2.0f;
    p.dr = 1;
    p.nr = nr;
    p.dt = dt;
    p.rpdata = power;
    p.gate_metres = 0.3;
    p.stime = 0;
    p.etime = dt * static_cast<double>(power.size()) / nr;
    return p;
}

// The curves are the frame's first object.
std::vector<_vgvec> curves(const rp_picture& p) {
    return p.frame->objptr.front()->veclst;
}

TEST(profile_stack, reduction_keeps_every_peak) {
    for (int n : {1, 7, 640, 2048, 4096}) {
        for (int ncol : {1, 2, 7, 639, 1000}) {
            if (ncol > n) continue;
            for (int peak : {0, n / 3, n / 2, n - 1}) {
                std::vector<float> row(n, 1.0f), columns(ncol);
                row[peak] = 9;
                reduce_row(row, columns);
                const auto at = std::find(columns.begin(), columns.end(), 9.0f);
                ASSERT_NE(at, columns.end()) << n << " " << ncol << " " << peak;
                EXPECT_EQ(std::count(columns.begin(), columns.end(), 9.0f), 1);
                const double centre = column_centre(static_cast<int>(at - columns.begin()), ncol, n);
                EXPECT_LE(std::fabs(centre - peak), 0.5 * n / ncol);
            }
        }
    }
    const float inf = std::numeric_limits<float>::infinity(), nan = std::nanf("");
    const std::vector<float> bad{nan, inf, 3, -inf, nan, 2};
    EXPECT_EQ(largest_power(bad), 3);
    EXPECT_EQ(largest_power({}), 0);
}

// A curve must be drawn exactly where it rises above all earlier ones: compared column by column with the
// running maximum of the curves.
TEST(profile_stack, hidden_lines_show_what_rises_above_earlier_curves) {
    std::mt19937 gen(7);
    std::uniform_real_distribution<float> value(0, 1);
    const int ncol = 40, ncurve = 25;
    std::vector<float> x(ncol);
    for (int c = 0; c < ncol; c++) x[c] = static_cast<float>(c);
    vgobject_ptr obj = vg_new_object();
    const float top = 2.2f;
    hidden_lines lines(*obj, x, top);
    std::vector<float> highest(ncol, -1);
    for (int j = 0; j < ncurve; j++) {
        std::vector<float> y(ncol);
        for (float& v : y) v = 0.07f * j + value(gen) * value(gen);
        const std::size_t from = obj->veclst.size();
        lines.add(y);
        std::vector<bool> drawn(ncol);
        for (std::size_t i = from; i < obj->veclst.size(); i++) {
            const _vgvec& v = obj->veclst[i];
            EXPECT_LE(v.y, top + 1e-5f);
            const int c = static_cast<int>(std::lround(v.x));
            if (v.x != static_cast<float>(c)) continue; // a crossing between two columns
            EXPECT_GE(v.y, highest[c] - 1e-5f);
            EXPECT_FLOAT_EQ(v.y, y[c]);
            drawn[c] = true;
        }
        for (int c = 0; c < ncol; c++) {
            EXPECT_EQ(drawn[c], y[c] >= highest[c] && y[c] <= top) << "curve " << j << " column " << c;
            highest[c] = std::max(highest[c], y[c]);
        }
    }
}

TEST(range_picture, a_target_stands_at_its_range_and_time) {
    // One strong sample, in gate 700 of 2048 and record 31 of 64, on a display of far fewer columns.
    const int nr = 2048, nrec = 64;
    std::vector<float> power(nr * nrec, 0.0f);
    power[31 * nr + 700] = 16;
    rp_picture p = picture_of(power, nr);
    draw_vg_rp(display(8, 5, 160), p);
    EXPECT_EQ(p.peak, 4);
    EXPECT_EQ(p.every, 1);
    const auto drawn = curves(p);
    const float tip_height = 0.4f; // plot inches
    const float foot = vg_y_loc(p.rp_df, 31 * p.dt);
    const auto tip = std::find_if(drawn.begin(), drawn.end(), [&](const _vgvec& v) {
        return std::fabs(v.y - (foot + tip_height)) < 1 / 160.0f;
    });
    ASSERT_NE(tip, drawn.end());
    EXPECT_NEAR(vg_x_val(p.rp_df, tip->x), p.r1 + 700 * p.dr, 0.5 * 2048 / (7 * 160));
    // Elsewhere every curve lies on its own time, to a pixel of the eight between two curves.
    std::vector<int> seen(nrec);
    for (const _vgvec& v : drawn) {
        const double record = vg_y_val(p.rp_df, v.y) / p.dt;
        const double nearest = std::round(record);
        if (std::fabs(record - nearest) < 0.2 && nearest < nrec) seen[static_cast<int>(nearest)] = 1;
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), 1), nrec);

    rp_picture as_power = picture_of(power, nr);
    as_power.scaling = PLOT_POWER;
    draw_vg_rp(display(), as_power);
    EXPECT_EQ(as_power.peak, 16);
}

TEST(range_picture, shows_what_the_span_holds) {
    const int nr = 8, nrec = 1000;
    std::vector<float> power(nr * nrec, 1.0f);
    power[5] = 1e6f; // in record 0, which the span leaves out
    rp_picture p = picture_of(power, nr, 0.01);
    p.t0 = 3;
    p.stime = 3 + 0.0349; // snaps to record 3
    p.etime = 3 + 9.0012; // snaps to record 900
    draw_vg_rp(display(), p);
    EXPECT_NEAR(p.stime, 3.03, 1e-9);
    EXPECT_NEAR(p.etime, 12.00, 1e-9);
    EXPECT_EQ(p.peak, 1);
    EXPECT_GT(p.every, 1); // 897 curves do not fit into 3.5 inches
    EXPECT_NEAR(vg_y_loc(p.rp_df, p.stime), p.rp_df.y0, 1e-6);
    EXPECT_LT(vg_y_loc(p.rp_df, p.etime), p.rp_df.y0 + p.rp_df.ylen);
}

TEST(range_picture, stays_finite_and_inside_the_display) {
    const float inf = std::numeric_limits<float>::infinity(), nan = std::nanf("");
    struct scene {
        const char* name;
        std::vector<float> power;
        int nr;
        double dt = 1, height = 1, truncation = 1;
    };
    std::vector<float> nasty(64 * 50, 1.0f), tiny(64 * 50, 1e-38f), huge(64 * 50, 3e38f);
    for (std::size_t i = 0; i < nasty.size(); i += 3) nasty[i] = i % 2 ? nan : inf;
    const scene scenes[] = {
        {"zeros", std::vector<float>(64 * 50), 64},
        {"no finite number", std::vector<float>(64 * 50, nan), 64},
        {"some not finite", nasty, 64},
        {"tiny", tiny, 64},
        {"huge", huge, 64, 1, 30, 0.5},
        {"one record", std::vector<float>(64, 2.0f), 64},
        {"one frequency", std::vector<float>(2 * 50, 2.0f), 2},
        {"one gate", std::vector<float>(50, 2.0f), 1},
        {"no data", {}, 64},
        {"no gates", {}, 0},
        {"no time step", std::vector<float>(64 * 50, 1.0f), 64, 0},
        {"no truncation to speak of", nasty, 64, 1, 100, 1e-9},
    };
    for (const scene& s : scenes) {
        for (const _vgdisplay& disp : {display(), display(6.4f, 5, 20), display(0.1f, 0.1f, 3)}) {
            rp_picture p = picture_of(s.power, std::max(s.nr, 1), s.dt);
            p.nr = s.nr;
            p.height = s.height;
            p.truncation = s.truncation;
            draw_vg_rp(disp, p);
            ASSERT_TRUE(p.frame) << s.name;
            EXPECT_TRUE(std::isfinite(p.stime) && std::isfinite(p.etime) && std::isfinite(p.peak)) << s.name;
            const bool roomy = disp.xsize > 1;
            for (const vgobject_ptr& obj : p.frame->objptr) {
                for (const _vgvec& v : obj->veclst) {
                    ASSERT_TRUE(std::isfinite(v.x) && std::isfinite(v.y)) << s.name;
                    if (!roomy) continue;
                    ASSERT_TRUE(v.x >= 0 && v.x <= disp.xsize && v.y >= 0 && v.y <= disp.ysize)
                        << s.name << " " << v.x << " " << v.y;
                }
            }
        }
    }
}

TEST(range_picture, ordinal_suffixes) {
    const struct {
        int n;
        const char* suffix;
    } cases[] = {{1, "st"},  {2, "nd"},  {3, "rd"},  {4, "th"},  {10, "th"},  {11, "th"},  {12, "th"},
                 {13, "th"}, {21, "st"}, {22, "nd"}, {23, "rd"}, {111, "th"}, {112, "th"}, {101, "st"}};
    for (const auto& c : cases) EXPECT_EQ(nsuf(c.n), c.suffix) << c.n;
}

TEST(time_span, fields_are_held_to_the_data) {
    const record_times rec{10, 0.5, 20}; // 10 s to 20 s
    const struct {
        const char* what;
        time_span got;
        double stime, etime, ctime;
    } cases[] = {
        {"whole", whole_span(rec), 10, 20, 15},
        {"centre", centred_span(rec, 13, 4), 11, 15, 13},
        {"centre near the start shrinks the interval", centred_span(rec, 11, 4), 10, 12, 11},
        {"centre near the end likewise", centred_span(rec, 19.5, 4), 19, 20, 19.5},
        {"centre before the data", centred_span(rec, -5, 4), 10, 10, 10},
        {"centre beyond the data", centred_span(rec, 99, 4), 20, 20, 20},
        {"interval", interval_span(rec, 15, 4), 13, 17, 15},
        {"interval too small: three records", interval_span(rec, 15, 0.1), 14.25, 15.75, 15},
        {"interval negative", interval_span(rec, 15, -3), 14.25, 15.75, 15},
        {"interval too large: all", interval_span(rec, 12, 1e9), 10, 20, 15},
        {"interval shifted up", interval_span(rec, 11, 4), 10, 14, 12},
        {"interval shifted down", interval_span(rec, 19.5, 4), 16, 20, 18},
        {"drawable as it is", drawable_span(rec, {12, 15, 13.5}), 12, 15, 13.5},
        {"no width at the start", drawable_span(rec, {10, 10, 10}), 10, 11.5, 10.75},
        {"no width in the middle", drawable_span(rec, {15, 15, 15}), 13.5, 15, 14.25},
        {"no width at the end", drawable_span(rec, {20, 20, 20}), 18.5, 20, 19.25},
        {"beyond the end", drawable_span(rec, {19, 25, 22}), 18.5, 20, 19.25},
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(c.got.stime, c.stime, 1e-9) << c.what;
        EXPECT_NEAR(c.got.etime, c.etime, 1e-9) << c.what;
        EXPECT_NEAR(c.got.ctime, c.ctime, 1e-9) << c.what;
    }
}

} // namespace
} // namespace norva
