// The basis over a free knot list, against hand-computed values and against integrals.
#include "cu/bspline.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace norva::test {
namespace {

struct basis {
    std::vector<double> s, d;
    std::size_t nx;
    double S(int i, int j) const { return s[static_cast<std::size_t>(i) * nx + static_cast<std::size_t>(j)]; }
    double D(int i, int j) const { return d[static_cast<std::size_t>(i) * nx + static_cast<std::size_t>(j)]; }
};

basis evaluate(const std::vector<double>& x, const std::vector<double>& knots, int order) {
    const int n = static_cast<int>(knots.size()) - order;
    basis b{{}, {}, x.size()};
    b.s.assign(x.size() * static_cast<std::size_t>(n), -7);
    b.d = b.s;
    bspline(x.data(), static_cast<int>(x.size()), knots.data(), n, order, b.s.data(), b.d.data());
    return b;
}

TEST(bspline, hand_values) {
    const basis step = evaluate({-1, 0, 0.5, 1, 2}, {0, 1, 2}, 1);
    for (int j = 0; j < 5; j++) {
        EXPECT_EQ(step.S(0, j), j == 1 || j == 2);
        EXPECT_EQ(step.S(1, j), j == 3); // open at the right: nothing at the last knot
        EXPECT_EQ(step.D(0, j), 0);
    }
    // Quadratics on even knots: 1/2 xx, 3/4 in the middle; slopes 1 and -1 at the inner knots.
    const basis even = evaluate({0, 0.5, 1, 1.5, 2, 2.5, 3}, {0, 1, 2, 3, 4}, 3);
    const double s[] = {0, 0.125, 0.5, 0.75, 0.5, 0.125, 0}, d[] = {0, 0.5, 1, 0, -1, -0.5, 0};
    for (int j = 0; j < 7; j++) {
        EXPECT_NEAR(even.S(0, j), s[j], 1e-15) << j;
        EXPECT_NEAR(even.D(0, j), d[j], 1e-15) << j;
        if (j >= 2) {
            EXPECT_NEAR(even.S(1, j), s[j - 2], 1e-15) << j; // the same, one knot on
        }
    }
    // Knots at the end repeated: the last function reaches it, with (1+x)/2 squared on -1..1.
    const basis end = evaluate({-1, 0, 0.999999}, {-1, -1, -1, 1, 1, 1}, 3);
    EXPECT_NEAR(end.S(2, 1), 0.25, 1e-15);
    EXPECT_NEAR(end.D(2, 1), 0.5, 1e-15);
    EXPECT_NEAR(end.S(0, 0), 1, 1e-15);
    EXPECT_NEAR(end.D(0, 0), -1, 1e-15);
    EXPECT_NEAR(end.S(2, 2), 1, 2e-6);
}

// Sum 1 and slopes that sum to 0 where a full set overlaps; the slope is the derivative of the value.
TEST(bspline, sums_to_one_and_slopes_fit) {
    const std::vector<double> knots = {0, 0, 0, 0, 0.7, 1, 1, 2.5, 4, 4, 4, 4};
    const double h = 1e-6;
    std::vector<double> x;
    for (double at = 0.05; at < 4; at += 0.1) x.insert(x.end(), {at - h, at, at + h});
    const basis b = evaluate(x, knots, 4);
    for (int j = 1; j < static_cast<int>(x.size()); j += 3) {
        double sum = 0, slopes = 0;
        for (int i = 0; i < 8; i++) {
            sum += b.S(i, j);
            slopes += b.D(i, j);
            EXPECT_GE(b.S(i, j), 0);
            EXPECT_NEAR(b.D(i, j), (b.S(i, j + 1) - b.S(i, j - 1)) / (2 * h), 1e-7) << i << " " << x[j];
        }
        EXPECT_NEAR(sum, 1, 1e-14);
        EXPECT_NEAR(slopes, 0, 1e-13);
    }
}

} // namespace
} // namespace norva::test
