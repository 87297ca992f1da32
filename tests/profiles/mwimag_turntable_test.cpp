// Moving window images of a target that turns: in every window each scatterer stands where the turned target
// has it at the middle of the window, and amplitudes compare across windows.
#include "profiles/mwimag.h"
#include "scene/scene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace norva {
namespace {

TEST(mwimag_turntable, every_window_shows_the_target_as_it_stands_then) {
    const struct {
        double x, y, amplitude; // metres
    } points[] = {{6, -2, 1}, {-5, 3, 0.7}, {1.5, 8, 0.5}};
    constexpr int NTI = 32, LAG = 8, NPK = 3;
    for (const double turn : {3e-4, -3e-4}) { // radians a record
        for (const double step : {5.0, -5.0}) {
            scene s;
            s.nf = 64;
            s.nt = 200;
            s.df = step;
            s.table.da = turn;
            for (const auto& p : points) s.points.push_back({.amplitude = p.amplitude, .x = p.x, .y = p.y});
            const std::vector<float> data = scene_data(s);
            const int images = (s.nt - NTI) / LAG + 1;
            std::vector<float> a(NPK * images), x(a), y(a);
            int nto = 0;
            mwimag(data.data(), s.nf, s.nt, NTI, LAG, turn > 0 ? -1 : 1, step > 0 ? 1 : -1, 2, 2, NPK, &nto,
                   a.data(), x.data(), y.data());
            ASSERT_EQ(nto, images);
            // Metres to gates: a Doppler of 2 X da / wavelength in windows of NTI records, and c / 2
            // bandwidth.
            const double across = 2 * std::abs(turn) * NTI * scene_centre(s) / scene_light;
            const double along = 2 * scene_bandwidth(s) / scene_light;
            for (int i = 0; i < images; i++) {
                const double angle = turn * (i * LAG + 0.5 * (NTI - 1) - 0.5 * (s.nt - 1));
                for (int k = 0; k < NPK; k++) { // by falling amplitude
                    SCOPED_TRACE(testing::Message()
                                 << turn << " " << step << " image " << i << " peak " << k);
                    const auto& p = points[k];
                    const int l = NPK * i + k;
                    EXPECT_NEAR(x[l], across * (p.x * std::cos(angle) + p.y * std::sin(angle)), 0.1);
                    EXPECT_NEAR(y[l], along * (p.y * std::cos(angle) - p.x * std::sin(angle)), 0.1);
                    EXPECT_NEAR(a[l], p.amplitude, 0.03);
                }
            }
        }
    }
}

} // namespace
} // namespace norva
