// The scenes: that what they promise is what a direct sum over their samples finds.
#include "direct_sums.h"
#include "scene/scene.h"

#include <gtest/gtest.h>

#include <cmath>

namespace norva::test {
namespace {

scene small_scene(double df) {
    return {.nf = 32, .nt = 16, .f0 = 9000.0, .df = df, .t0 = 3.0, .dt = 0.01};
}

TEST(scene, a_point_peaks_at_its_gate_for_both_orders_of_frequency) {
    for (double df : {5.0, -5.0})
        for (double gate : {-16.0, -7.5, 0.0, 3.25, 15.0}) {
            scene s = small_scene(df);
            s.points = {{.amplitude = 2.0, .phase = 0.3, .delay = gate * scene_gate(s)}};
            EXPECT_EQ(range_of_row(scene_data(s), s.nf, 3, df > 0 ? 1 : -1), gate) << df;
        }
}

TEST(scene, drift_and_acceleration_move_the_gate) {
    for (double df : {5.0, -5.0}) {
        scene s = small_scene(df);
        s.points = {{.delay = -6.0 * scene_gate(s)}};
        s.motion = scene_motion(s, 0.5, 0.125);
        std::vector<float> data = scene_data(s);
        for (int i : {0, 1, 8, 15}) // to the eighth of a gate that the search resolves
            EXPECT_NEAR(range_of_row(data, s.nf, i, df > 0 ? 1 : -1), -6.0 + 0.5 * i + 0.0625 * i * i, 0.0626)
                << i;
    }
}

// Doppler position x is -ksx times the frequency, in cells of 1 / (nt dt) Hz: 6.25 Hz here.
TEST(scene, doppler_lines_stand_where_their_sign_says) {
    for (int ksx : {-1, 1}) {
        scene s = small_scene(5.0);
        s.points = {{.doppler = 18.75}};
        int middle = s.nf / 2; // the column next to the centre frequency
        EXPECT_EQ(doppler_of_column(scene_data(s), s.nf, s.nt, middle, ksx), -ksx * 3.0);
        s.points = {{}};
        s.motion = scene_motion(s, 0.001, 0.0); // 1 / 160000 of a microsecond a record away from the radar
        double cells = -scene_centre(s) * 0.001 * scene_gate(s) * s.nt;
        EXPECT_NEAR(doppler_of_column(scene_data(s), s.nf, s.nt, middle, ksx), -ksx * cells, 0.07);
    }
}

// exp(+2 pi i f D) with the delays of scene_correction gives what the target at rest would have given.
TEST(scene, the_correction_takes_the_motion_out) {
    for (double df : {5.0, -5.0}) {
        scene s = small_scene(df);
        s.points = {{.delay = 0.02}, {.amplitude = 0.5, .phase = 0.1, .delay = -0.04}};
        std::vector<float> at_rest = scene_data(s);
        s.motion = scene_motion(s, -0.7, 0.03);
        std::vector<float> moving = scene_data(s);
        std::vector<double> delays = scene_correction(s);
        ASSERT_EQ(delays.size(), 17U);
        for (int j = 0; j < s.nt; j++)
            for (int k = 0; k < s.nf; k++) {
                double f = s.f0 + k * s.df;
                cplx corrected =
                    sample_of(moving, s.nf, j, k) * turns(f * delays[static_cast<std::size_t>(j)]);
                ASSERT_LT(std::abs(corrected - sample_of(at_rest, s.nf, j, k)), 1e-6) << j << " " << k;
            }
    }
}

// With a duty of 1 the last frequency of a record is measured almost a record later.
TEST(scene, duty_spreads_the_frequencies_over_the_record) {
    scene s = small_scene(5.0);
    s.duty = 0.8;
    s.points = {{}};
    s.motion = scene_motion(s, 0.5, 0.0);
    std::vector<float> data = scene_data(s);
    for (int j : {0, 7})
        for (int k : {0, 1, 31}) {
            double tau = 0.5 * (j + 0.8 * k / 32) / 160.0;
            EXPECT_LT(std::abs(sample_of(data, 32, j, k) - turns(-(9000.0 + 5.0 * k) * tau)), 1e-5)
                << j << " " << k;
        }
}

// The turntable against plain geometry: the radar at (0, -rc), the point turned by th. Focused on its own
// place, a point adds up fully; focused on the mirrored place it does not.
TEST(scene, turntable_points_focus_where_they_stand) {
    for (double da : {1e-3, -1e-3})
        for (double rc : {50.0, 0.0}) {
            scene s{.nf = 32, .nt = 41, .f0 = 9000.0, .df = 10.0, .t0 = 1.0, .dt = 0.02};
            s.table = {.da = da, .de = 0.0, .rc = rc};
            s.points = {{.x = 2.0, .y = -1.5}};
            std::vector<float> data = scene_data(s);
            auto focused = [&](double x, double y) {
                cplx sum = 0.0;
                for (int j = 0; j < s.nt; j++) {
                    double th = (j - 20) * da;
                    double along = y * std::cos(th) - x * std::sin(th),
                           across = y * std::sin(th) + x * std::cos(th);
                    double range = rc > 0.0 ? std::hypot(rc + along, across) - rc : along;
                    for (int k = 0; k < s.nf; k++)
                        sum += sample_of(data, s.nf, j, k) * turns((9000.0 + 10.0 * k) * 2.0 * range / 300.0);
                }
                return std::abs(sum) / (s.nf * s.nt);
            };
            EXPECT_NEAR(focused(2.0, -1.5), 1.0, 1e-4);
            EXPECT_LT(focused(-2.0, -1.5), 0.3);
            EXPECT_LT(focused(2.0, 1.5), 0.3);
        }
}

// In an image formed with crossrange sign ksx, x > 0 is on the positive side when ksx is -sign(da). A cell is
// wavelength / (2 nt |da|): 0.5 * 300 / 9000 / 40 / 1e-3 m, so 2 m are 4.8 cells.
TEST(scene, crossrange_has_the_documented_side) {
    for (double da : {1e-3, -1e-3})
        for (int ksx : {-1, 1}) {
            scene s{.nf = 1, .nt = 40, .f0 = 9000.0, .df = 10.0, .t0 = 0.0, .dt = 0.02};
            s.table = {.da = da};
            s.points = {{.x = 2.0}};
            double expected = 4.8 * (da > 0.0 ? -ksx : ksx);
            EXPECT_NEAR(doppler_of_column(scene_data(s), 1, s.nt, 0, ksx), expected, 0.07)
                << da << " " << ksx;
        }
    // A line of sight from above shortens ranges by the cosine of the depression.
    scene s;
    s.table = {.da = 1e-3, .de = 1.0, .rc = 0.0};
    EXPECT_NEAR(scene_delay(s, {.y = 3.0}, s.t0 + 31.5 * s.dt), 2.0 * 3.0 * std::cos(1.0) / 300.0, 1e-12);
}

TEST(scene, noise_has_its_level_and_hangs_on_the_seed_alone) {
    scene s{.nf = 100, .nt = 100, .noise = 0.25, .seed = 42};
    std::vector<float> first = scene_data(s);
    double power = 0.0, mean = 0.0, cross = 0.0;
    for (std::size_t i = 0; i < first.size(); i += 2) {
        power += first[i] * first[i] + first[i + 1] * first[i + 1];
        mean += first[i] + first[i + 1];
        cross += first[i] * first[i + 1];
    }
    // The standard deviation of the mean power over 10000 samples is a hundredth of it.
    EXPECT_NEAR(power / 10000, 0.0625, 5 * 0.000625);
    EXPECT_NEAR(mean / 10000, 0.0, 5 * 0.0025);
    EXPECT_NEAR(cross / 10000, 0.0, 5 * 0.00032);
    EXPECT_EQ(scene_data(s), first);
    s.seed = 43;
    EXPECT_NE(scene_data(s), first);
}

} // namespace
} // namespace norva::test
