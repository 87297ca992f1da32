// The circular peak search, on curves whose peaks are known.
#include "gen/pksearch.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace norva {
namespace {

TEST(pksearch, finds_and_refines_in_falling_order) {
    // Two parabolas of height 3 and 5 whose vertices lie at 4.25 and, around the end, 19.6.
    const int n = 20;
    std::vector<float> y(n), x(5), h(5);
    auto hump = [&](float at, float height) {
        for (int i = 0; i < n; i++) {
            float d = std::remainder(static_cast<float>(i) - at, static_cast<float>(n));
            y[i] = std::fmax(y[i], height - 0.25F * d * d);
        }
    };
    hump(4.25F, 3);
    hump(19.6F, 5);
    ASSERT_EQ(pksearch(y.data(), n, 5, 0, n - 1, x.data(), h.data()), 2);
    EXPECT_NEAR(x[0] < 0 ? x[0] + n : x[0], 19.6, 1e-4);
    EXPECT_NEAR(h[0], 5, 1e-4);
    EXPECT_NEAR(x[1], 4.25, 1e-4);
    EXPECT_NEAR(h[1], 3, 1e-4);
    EXPECT_EQ(pksearch(y.data(), n, 1, n - 1, 0, x.data(), h.data()), 1); // backward, room for one
    EXPECT_NEAR(h[0], 5, 1e-4);
    EXPECT_EQ(pksearch(y.data(), n, 5, 1, 10, x.data(), h.data()), 1); // only part of the curve
    EXPECT_NEAR(x[0], 4.25, 1e-4);
    EXPECT_EQ(pksearch(y.data(), n, 5, -3, 2000000000, x.data(), h.data()), 2); // never more than once around
    EXPECT_EQ(pksearch(y.data(), 3, 5, 0, 2, x.data(), h.data()), 0);
}

TEST(pksearch, plateaus_count_once) {
    struct row {
        std::vector<float> y;
        std::vector<float> at; // expected positions
    };
    const row table[] = {
        {{0, 0, 1, 1, 1, 0, 0}, {3}},         // odd plateau: its middle
        {{0, 0, 1, 1, 0, 0}, {2.5F}},         // even one: between its samples
        {{1, 0, 0, 0, 2, 1}, {4 + 1 / 6.0F}}, // sample 0 lies on its slope
        {{0, 2, 0, 2, 0, 0}, {1, 3}},         // equal peaks in the order met
        {{1, 1, 1, 1, 1}, {}},                // flat
        {{1, 0, 0, 0, 0, 1}, {5.5F}},         // plateau across the end
        {{NAN, 1, 0, 0, 3, 0, 1}, {4}},       // no number is no peak
    };
    for (const row& r : table) {
        std::vector<float> x(8), h(8);
        int n = static_cast<int>(r.y.size());
        int count = pksearch(r.y.data(), n, 8, 0, n - 1, x.data(), h.data());
        ASSERT_EQ(count, static_cast<int>(r.at.size())) << r.y[0] << r.y[1] << r.y[2];
        for (int i = 0; i < count; i++) EXPECT_NEAR(x[i], r.at[i], 1e-6);
    }
}

TEST(peakfit3, vertex_and_width) {
    struct row {
        float y[3];
        int result;
        float xoff, ypk, width;
    };
    const row table[] = {
        {{1, 2, 1}, 1, 0, 2, 2},                               // 2 - x^2 is 1 at +-1
        {{0, 3.75F, 3.5F}, 1, 0.4375F, 4.1328125F, 2.032932F}, // 3.75 + 1.75 x - 2 x^2: 2 sqrt(ypk/4)
        {{1, 2, 3}, -1, 0, 2, 0},
        {{3, 2, 3}, 1, 0, 2, 0}, // a dip that stays above half of its value: 2 + x^2 = 1 has no solution
    };
    for (const row& r : table) {
        float xoff = 9, ypk = 9, width = 9;
        EXPECT_EQ(peakfit3(r.y, &xoff, &ypk, &width), r.result);
        EXPECT_FLOAT_EQ(xoff, r.xoff);
        EXPECT_FLOAT_EQ(ypk, r.ypk);
        EXPECT_NEAR(width, r.width, 1e-5);
    }
}

} // namespace
} // namespace norva
