// The colours of the colour map, looked at from outside: screen colours back to CIELAB.
#include "draw/image_picture.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

namespace norva {
namespace {

using rgb3 = std::array<double, 3>;

rgb3 linear(std::uint32_t word) {
    rgb3 out;
    for (int i = 0; i < 3; i++) {
        const double c = (word >> 8 * i & 255) / 255.0;
        out[i] = c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    }
    return out;
}

struct lab {
    double l, a, b;
};
lab to_lab(const rgb3& c) {
    const double x = (0.4124564 * c[0] + 0.3575761 * c[1] + 0.1804375 * c[2]) / 0.95047;
    const double y = 0.2126729 * c[0] + 0.7151522 * c[1] + 0.0721750 * c[2];
    const double z = (0.0193339 * c[0] + 0.1191920 * c[1] + 0.9503041 * c[2]) / 1.08883;
    const auto f = [](double t) { return t > 216.0 / 24389 ? std::cbrt(t) : t * 841 / 108 + 4.0 / 29; };
    return {116 * f(y) - 16, 500 * (f(x) - f(y)), 200 * (f(y) - f(z))};
}

std::vector<std::uint32_t> all_colors() {
    std::vector<std::uint32_t> out;
    for (int k = 0; k < get_ncolors(); k++) out.push_back(get_img_color((k + 0.5) / get_ncolors()));
    return out;
}

TEST(img_color, lightness_rises_in_equal_steps_of_colour) {
    const std::vector<std::uint32_t> colors = all_colors();
    ASSERT_GE(colors.size(), 128u);
    const lab dark = to_lab(linear(colors.front())), light = to_lab(linear(colors.back()));
    EXPECT_LT(dark.l, 10);
    EXPECT_GT(light.l, 90);
    for (std::size_t k = 1; k < colors.size(); k++)
        EXPECT_GT(to_lab(linear(colors[k])).l, to_lab(linear(colors[k - 1])).l - 0.2) << k; // 8 bit rounding
    constexpr std::size_t stride = 15;
    std::vector<double> steps;
    for (std::size_t k = stride; k < colors.size(); k += stride) {
        const lab p = to_lab(linear(colors[k - stride])), q = to_lab(linear(colors[k]));
        EXPECT_GT(q.l, p.l + 1);
        steps.push_back(std::hypot(q.l - p.l, q.a - p.a, q.b - p.b));
    }
    double mean = 0;
    for (double s : steps) mean += s / static_cast<double>(steps.size());
    for (std::size_t k = 0; k < steps.size(); k++) EXPECT_NEAR(steps[k] / mean, 1, 0.06) << k;
}

// Dichromats as simulated by Vienot, Brettel and Mollon (1999): a linear map of linear light.
TEST(img_color, lightness_rises_without_seeing_red_or_green) {
    const double kinds[2][3][3] = {{{0.11238, 0.88762, 0}, {0.11238, 0.88762, 0}, {0.00401, -0.00401, 1}},
                                   {{0.29275, 0.70725, 0}, {0.29275, 0.70725, 0}, {-0.02234, 0.02234, 1}}};
    for (const auto& m : kinds) {
        double before = -1;
        for (int k = 0; k <= 16; k++) {
            const rgb3 c = linear(get_img_color(k / 16.0));
            rgb3 seen;
            for (int i = 0; i < 3; i++)
                seen[i] = std::max(0.0, m[i][0] * c[0] + m[i][1] * c[1] + m[i][2] * c[2]);
            const double l = to_lab(seen).l;
            EXPECT_GT(l, before + 1.5) << k;
            before = l;
        }
    }
}

TEST(img_color, values_outside_take_the_ends) {
    EXPECT_EQ(col_indx(-3), 0);
    EXPECT_EQ(col_indx(NAN), 0);
    EXPECT_EQ(col_indx(0.9999), get_ncolors() - 1);
    EXPECT_EQ(col_indx(INFINITY), get_ncolors() - 1);
    EXPECT_EQ(col_indx(0.5), get_ncolors() / 2);
}

} // namespace
} // namespace norva
