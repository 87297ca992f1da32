// Axis steps, tics and labels.
#include "axis_step.h"
#include "vgph/vgsym.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace norva;

namespace {

_vgaxisparm axis(double lim0, double lim1, float len = 6, int r90 = 0, int reverse = 0) {
    _vgaxisparm a;
    a.lim0 = lim0;
    a.lim1 = lim1;
    a.alen = len;
    a.r90 = r90;
    a.reverse = reverse;
    return a;
}

TEST(cal_inc, ChoosesRoundSteps) {
    const struct {
        double lim0, lim1;
        int want; // labels
        int inctype, inctens;
        std::vector<double> values;
    } cases[] = {
        {0, 10, 6, 2, 0, {0, 2, 4, 6, 8, 10}},
        {0, 1, 6, 2, -1, {0, 0.2, 0.4, 0.6, 0.8, 1}},
        {10, 0, 6, 2, 0, {10, 8, 6, 4, 2, 0}},
        {0, 3, 3, 1, 0, {0, 1, 2, 3}},     // step 1 gives one too many, step 2 one too few: the smaller stays
        {0, 38, 4, 1, 1, {0, 10, 20, 30}}, // ten times the step is one of the next power
        {-32, 31.5, 6, 1, 1, {-30, -20, -10, 0, 10, 20, 30}},
        {9288, 9911, 6, 1, 2, {9300, 9400, 9500, 9600, 9700, 9800, 9900}},
        {1000000, 1000001, 6, 2, -1, {1000000, 1000000.2, 1000000.4, 1000000.6, 1000000.8, 1000001}},
        {-0.3, 0.3, 3, 2, -1, {-0.2, 0, 0.2}},
        {0, 0.3, 3, 1, -1, {0, 0.1, 0.2, 0.3}}, // 3 * 0.1 exceeds 0.3 by rounding
        {2e-6, 4e-6, 3, 1, -6, {2e-6, 3e-6, 4e-6}},
        {0, 25, 1, 2, 1, {0, 20}}, // at least two are asked for
    };
    for (const auto& c : cases) {
        _vgaxisparm a = axis(c.lim0, c.lim1);
        cal_inc(a, c.want);
        SCOPED_TRACE(std::to_string(c.lim0) + " to " + std::to_string(c.lim1));
        EXPECT_EQ(a.inctype, c.inctype);
        EXPECT_EQ(a.inctens, c.inctens);
        EXPECT_EQ(a.incsign, c.lim1 < c.lim0);
        EXPECT_EQ(a.nospan, 0);
        ASSERT_EQ(a.nlabs, static_cast<int>(c.values.size()));
        for (int i = 0; i < a.nlabs; i++)
            EXPECT_NEAR(a.labvals[i], c.values[i], std::abs(a.incval) * 1e-6) << i;
        for (int i = 0; i < a.nlabs; i++) EXPECT_FALSE(a.labvals[i] == 0 && std::signbit(a.labvals[i]));
    }
}

TEST(cal_inc, LimitsWithoutAUsableSpan) {
    const double inf = std::numeric_limits<double>::infinity(), nan = std::nan("");
    const struct {
        double lim0, lim1;
        int axiserr;
    } cases[] = {{5, 5, 0},      {0, 0, 0},   {1e12, 1e12 + 1, 0},  {-1e12, -1e12 - 1, 0}, {0, inf, 1},
                 {-inf, inf, 1}, {0, nan, 1}, {-1e308, 1.7e308, 1}, {0, 5e-324, 1}};
    for (const auto& c : cases) {
        _vgaxisparm a = axis(c.lim0, c.lim1);
        vgobject_ptr obj = vg_new_object();
        vg_draw_axis(*obj, a);
        EXPECT_EQ(a.nospan, 1) << c.lim0 << ' ' << c.lim1;
        EXPECT_EQ(a.axiserr, c.axiserr) << c.lim0 << ' ' << c.lim1;
        EXPECT_EQ(a.errstr.empty(), c.axiserr == 0);
        EXPECT_EQ(a.nlabs, 1);
        ASSERT_EQ(obj->veclst.size(), 4u) << "the line and one tic in the middle";
        EXPECT_FLOAT_EQ(obj->veclst[2].x, 3);
    }
    // A long reach of usable sizes must neither fail nor loop.
    for (double size = 1e-300; size < 1e300; size *= 977) {
        _vgaxisparm a = axis(-size, 2.3 * size);
        cal_inc(a, 6);
        EXPECT_EQ(a.nospan, 0) << size;
        EXPECT_GE(a.nlabs, 4) << size;
        EXPECT_LE(a.nlabs, 8) << size;
    }
}

TEST(tic_text, HasTheDecimalsOfTheStep) {
    const struct {
        double value;
        int inctens;
        const char* text;
    } cases[] = {
        {0, 0, "0"},
        {2000, 3, "2000"},
        {-30, 1, "-30"},
        {1e8, 7, "100000000"},
        {2e8, 8, "2.0000000E+08"},
        {0.2, -1, "0.2"},
        {-1.25, -2, "-1.25"},
        {-1e-17, -1, "0.0"},
        {-0.4, 0, "0"},
        {4e-6, -6, "0.000004"},
        {1e-10, -10, "0.0000000001"},     // 2 + 10 characters still fit
        {-1e-10, -10, "-1.0000000E-10"},  // 3 + 10 do not
        {123456.5, -4, "123456.5000"},    // 6 + 2 + 4
        {1234567.5, -4, "1.2345675E+06"}, // 7 + 2 + 4
        {-0.0, -12, "0.0000000E+00"},
    };
    for (const auto& c : cases) EXPECT_EQ(tic_text(c.value, c.inctens), c.text);
}

// The labels that an axis drew, found again by their strokes.
struct found_label {
    std::string text;
    double u0, u1, value;
};

std::vector<found_label> labels_of(_vgaxisparm a) {
    a.dolabs = 0;
    vgobject_ptr bare = vg_new_object(), full = vg_new_object();
    vg_draw_axis(*bare, a);
    a.dolabs = 1;
    vg_draw_axis(*full, a);
    std::vector<found_label> found;
    std::size_t at = bare->veclst.size();
    int next = 0;
    while (at < full->veclst.size() && next < a.nlabs) {
        const std::string text = tic_text(a.labvals[next], a.inctens);
        vgobject_ptr sym = vg_symbol(0, 0, vg_tic_label_height, a.r90 ? 90.0f : 0.0f, text);
        const std::size_t n = sym->veclst.size();
        bool same = at + n <= full->veclst.size();
        const float dx = full->veclst[at].x - sym->veclst[0].x, dy = full->veclst[at].y - sym->veclst[0].y;
        for (std::size_t i = 0; same && i < n; i++)
            same = std::abs(full->veclst[at + i].x - sym->veclst[i].x - dx) < 1e-5 &&
                   std::abs(full->veclst[at + i].y - sym->veclst[i].y - dy) < 1e-5 &&
                   full->veclst[at + i].pen == sym->veclst[i].pen;
        if (same) {
            const double start = a.r90 ? dy - a.y0 : dx - a.x0;
            found.push_back({text, start, start + vg_symlen(vg_tic_label_height, text), a.labvals[next]});
            at += n;
        }
        next++;
    }
    EXPECT_EQ(at, full->veclst.size()) << "strokes that belong to no label";
    return found;
}

TEST(vg_draw_axis, LabelsStandAtTheirTicsAndNeverRunIntoEachOther) {
    const std::pair<double, double> limits[] = {
        {0, 10},        {0, 1},          {-32, 31.5}, {1e-6, 5e-6},   {9288, 9911},    {10, -7}, {-1e9, 2e9},
        {0, 1e-11},     {-0.3, 0.3},     {1e8, 3e8},  {0, 4.7e300},   {99.5, 100.5},   {-1, 1},  {0, 3e7},
        {1e6, 1e6 + 1}, {-2e-12, 2e-12}, {0, 7e4},    {360000, 0.25}, {-99999, 99999}, {0, 45}};
    for (auto [lim0, lim1] : limits)
        for (float len : {1.0f, 2.0f, 3.0f, 4.4f, 6.0f, 7.0f, 10.0f})
            for (int r90 : {0, 1}) {
                _vgaxisparm a = axis(lim0, lim1, len, r90);
                a.x0 = 1.5f;
                a.y0 = 0.5f;
                SCOPED_TRACE(std::to_string(lim0) + " to " + std::to_string(lim1) + " over " +
                             std::to_string(len));
                const auto labels = labels_of(a);
                EXPECT_GE(labels.size(), 1u);
                for (std::size_t i = 0; i < labels.size(); i++) {
                    const double tic = (labels[i].value - lim0) / (lim1 - lim0) * len;
                    EXPECT_GE(labels[i].u0, -0.1 - 1e-4);
                    EXPECT_LE(labels[i].u1, len + 0.1 + 1e-4);
                    EXPECT_LE(labels[i].u0, tic + 1e-4);
                    EXPECT_GE(labels[i].u1, tic - 1e-4);
                    if (i > 0) {
                        EXPECT_GT(labels[i].u0, labels[i - 1].u1 + 0.02) << labels[i].text;
                    }
                }
            }
}

TEST(vg_draw_axis, TicsLieOnTheToldSideAndHaveThreeLengths) {
    for (int r90 : {0, 1})
        for (int reverse : {0, 1}) {
            _vgaxisparm a = axis(0, 10, 6, r90, reverse); // step 2 on 6 inches, minor tics every 0.2
            a.x0 = 3;
            a.y0 = 2;
            vgobject_ptr obj = vg_new_object();
            vg_draw_axis(*obj, a);
            int count[3] = {};
            ASSERT_EQ(obj->veclst.size(), 2u + 2u * 51u);
            for (std::size_t i = 2; i < obj->veclst.size(); i += 2) {
                const _vgvec &foot = obj->veclst[i], &end = obj->veclst[i + 1];
                EXPECT_FLOAT_EQ(r90 ? foot.x : foot.y, r90 ? 3 : 2);
                const float out = (r90 ? end.x - foot.x : end.y - foot.y) * (reverse ? 1 : -1);
                const double value = (r90 ? foot.y - 2 : foot.x - 3) / 0.6;
                const int tenth = static_cast<int>(std::lround(value * 5));
                const int kind = tenth % 10 == 0 ? 0 : tenth % 5 == 0 ? 1 : 2;
                EXPECT_NEAR(out, kind == 0 ? 0.1 : kind == 1 ? 0.075 : 0.05, 1e-5) << value;
                count[kind]++;
            }
            EXPECT_EQ(count[0], 6);
            EXPECT_EQ(count[1], 5);
            EXPECT_EQ(count[2], 40);
        }
}

TEST(vg_draw_axis, AFallingAxisPutsItsTicsFromTheOtherEnd) {
    _vgaxisparm a = axis(9.5, -0.5, 5); // step 2 on 5 inches: 8 lies 1.5 units, 0.75 inches, along
    vgobject_ptr obj = vg_new_object();
    vg_draw_axis(*obj, a);
    std::vector<float> majors;
    for (std::size_t i = 3; i < obj->veclst.size(); i += 2)
        if (std::abs(obj->veclst[i].y + 0.1f) < 1e-5) majors.push_back(obj->veclst[i].x);
    ASSERT_EQ(majors.size(), 5u);
    for (std::size_t i = 0; i < majors.size(); i++) EXPECT_NEAR(majors[i], 0.75 + 1.0 * i, 1e-5);
}

// What lies off the line on the side of the tics, and behind it.
std::pair<float, float> reach(const _vgaxisparm& parms) {
    _vgaxisparm a = parms;
    vgobject_ptr obj = vg_new_object();
    vg_draw_axis(*obj, a);
    float x0, y0, x1, y1;
    vg_obj_extent(*obj, x0, y0, x1, y1);
    const float low = a.r90 ? x0 : y0, high = a.r90 ? x1 : y1;
    return a.reverse ? std::pair{high, -low} : std::pair{-low, high};
}

TEST(vg_draw_axis, LabelsTakeTheRoomThatIsKeptForThem) {
    for (int r90 : {0, 1})
        for (int reverse : {0, 1}) {
            _vgaxisparm a = axis(0, 10, 6, r90, reverse);
            a.dolabs = 1;
            EXPECT_NEAR(reach(a).first, 0.205, 0.004);
            EXPECT_NEAR(reach(a).second, 0, 1e-6);
            a.doendlabs = 1;
            const bool foot_out = r90 == reverse;
            EXPECT_NEAR(reach(a).first, foot_out ? 0.335 + 0.02 : 0.225 + 0.09, 0.004);
            a.dolabs = 0;
            EXPECT_NEAR(reach(a).first, foot_out ? 0.265 + 0.02 : 0.155 + 0.09, 0.004);
        }
}

} // namespace
