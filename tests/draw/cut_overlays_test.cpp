// The figures of a phase slope, and the blocks of text of the cut window.
#include "draw/cut_overlays.h"
#include "draw/pen.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"
#include "vgph/vgsym.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace norva {
namespace {

struct figures : testing::Test {
    void SetUp() override { reset_run_state(); }
    void TearDown() override { reset_run_state(); }
};

// Phase 0.25 - 0.125 x with one sample that is off by -0.5 between the crosshairs, and others outside of
// them.
TEST_F(figures, distance_to_the_line_counts_from_crosshair_to_crosshair) {
    std::vector<float> phase;
    for (int i = 0; i < 41; i++) phase.push_back(0.25f - 0.125f * (-10 + 0.5f * i));
    phase[15] -= 0.5f;
    phase[3] += 7;
    phase[31] += 7;
    user.nf = user.nt = 8;
    // x = -7.5 is sample 5, x = 5 is sample 30: 26 samples.
    const phase_slope found = measure_phase_slope({-7.5, 5, 0.25 + 0.9375, 0.25 - 0.625, 1, -10, 0.5, phase});
    EXPECT_NEAR(found.slope, -0.125, 1e-12);
    EXPECT_NEAR(found.bias, 0.25, 1e-12);
    EXPECT_NEAR(found.pk_dev, -0.5, 1e-6);
    EXPECT_NEAR(found.rms, std::sqrt(0.25 / 26), 1e-6);
    const phase_slope nothing = measure_phase_slope({5, 5, 1, 1, 1, -10, 0.5, {}});
    EXPECT_EQ(nothing.slope, 0);
    EXPECT_EQ(nothing.rms, 0);
}

TEST_F(figures, slope_of_one_dimensional_data_stands_for_a_place) {
    user.f0 = 9000;
    user.bw = 100;
    user.t0 = 3;
    user.dwell = 2;
    const auto slope = [](int nf, int nt, int domain) {
        user.nf = nf;
        user.nt = nt;
        return measure_phase_slope({0, 4, 0, 1, domain, 0, 1, {}}).slope;
    };
    EXPECT_DOUBLE_EQ(slope(8, 8, 0), 0.25);
    EXPECT_DOUBLE_EQ(slope(8, 1, 1), 25);
    EXPECT_DOUBLE_EQ(slope(8, 1, 0), 9000 + 50 + 175);
    EXPECT_DOUBLE_EQ(slope(1, 8, 1), 0.5);
    EXPECT_DOUBLE_EQ(slope(1, 8, 0), 3 + 1 + 3.5);
}

// A line of text is made of the same strokes wherever it stands, so a block has the strokes of its texts.
std::size_t strokes(std::initializer_list<const char*> texts) {
    const vgobject_ptr obj = vg_new_object();
    for (const char* text : texts) vg_obj_sym(*obj, 0, 0, 0.1f, 0, text);
    return obj->veclst.size();
}

TEST_F(figures, blocks_hold_labels_and_values) {
    EXPECT_EQ(draw_vg_meas(1, 1, 0.1f, 1)->veclst.size(),
              strokes({"Measurements are relative to the image origin."}));
    const peak_shape peaks[] = {{1.5f, 1, 0.25f}, {-20, 2, 1}};
    EXPECT_EQ(draw_vg_ppsyms(1, 5, 0.1f, peaks)->veclst.size(),
              strokes({"Position", "Width", "Skewness", " 1.500", " 1.000", " 0.250", "-20.000", " 2.000",
                       " 1.000"}));
    EXPECT_EQ(draw_vg_tsa(1, 5, 0.1f, {1, 2, 3, 4})->veclst.size(),
              strokes({"TSA results:", "Location of strongest scatterer:", "   1.000",
                       "Amplitude of strongest scatterer:", "   2.000", "Location of weakest scatterer:",
                       "   3.000", "Amplitude of weakest scatterer:", "   4.000"}));
    draw_vg_ps(1, 5, 0.1f, {0, 2, 0.5, 1.5, 1, 0, 1, {}});
    EXPECT_FLOAT_EQ(xproc_bias, 0.5f);
}

TEST_F(figures, a_pen_that_is_neither_up_nor_down_draws_nothing) {
    static std::string said;
    app_hooks.popmsg = [](const std::string& text) { said = text; };
    const vgobject_ptr obj = vg_new_object();
    plot(*obj, 1, 1, PEN_UP);
    plot(*obj, 2, 1, PEN_DOWN);
    EXPECT_EQ(obj->veclst.size(), 2U);
    plot(*obj, 3, 1, 999);
    EXPECT_EQ(obj->veclst.size(), 2U);
    EXPECT_EQ(said, "Bad pen input to plot_()!");
    app_hooks = {};
}

} // namespace
} // namespace norva
