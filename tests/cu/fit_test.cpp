// The least-squares fit: what it reproduces, how its pieces join, that no other spline of its kind is closer
// to the data, and when it refuses.
#include "bspl_int.h"
#include "splines.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>

namespace norva::test {
namespace {

// Derivative `der` at t of the polynomial sum c[j] * (t-at)^j.
double polynomial(const std::vector<double>& c, double at, double t, int der) {
    long double value = 0;
    for (std::size_t j = c.size(); j-- > static_cast<std::size_t>(der);) {
        long double factor = 1;
        for (int d = 0; d < der; d++) factor *= static_cast<long double>(j) - d;
        value = value * (static_cast<long double>(t) - at) + factor * c[j];
    }
    return static_cast<double>(value);
}

dat_list sample(double from, double to, int n, auto f) {
    dat_list data;
    for (int i = 0; i < n; i++) {
        const double x = i + 1 < n ? from + (to - from) * i / (n - 1) : to;
        data.emplace_back(x, f(x, i));
    }
    return data;
}

// Orders 1 to 10 with every continuity, breakpoints at odd distances, far from time 0.
TEST(fit, reproduces_a_polynomial_of_its_own_degree) {
    const double at = 1000, times[] = {at - 2, at - 1.3, at + 0.1, at + 0.4, at + 2};
    for (int ncoe = 1; ncoe <= 10; ncoe++) {
        std::vector<double> c;
        for (float x : noise(static_cast<std::size_t>(ncoe), 7)) c.push_back(static_cast<double>(x) + 0.5);
        for (int ncont = -1; ncont <= std::max(ncoe - 2, -1); ncont++) {
            SCOPED_TRACE("ncoe " + std::to_string(ncoe) + " ncont " + std::to_string(ncont));
            brk_list brks;
            for (double t : times) brks.emplace_back(t, ncont);
            const espl_ptr e =
                fit(ncoe, sample(at - 2, at + 2, 400, [&](double x, int) { return polynomial(c, at, x, 0); }),
                    brks);
            ASSERT_TRUE(e) << bspl_get_error();
            for (int der = 0; der < std::min(ncoe, 4); der++) {
                double worst = 0, scale = 0;
                auto error = [&](double t) {
                    return std::fabs(espl(e.get(), t, der) - polynomial(c, at, t, der));
                };
                for (double t = at - 2; t < at + 2; t += 0.013) {
                    scale = std::max(scale, std::fabs(polynomial(c, at, t, der)));
                    worst = std::max(worst, error(t));
                }
                worst = std::max({worst, error(at - 2.1) / 100, error(at + 2.1) / 100}); // it goes on outside
                // Differentiation makes rounding on the narrowest piece, 0.3 wide, worse by up to 30 each
                // time.
                EXPECT_LT(worst / scale, 1e-13 * std::pow(30.0, der)) << "derivative " << der;
            }
        }
    }
}

// Across a breakpoint of continuity c the derivatives 0 to c agree and the next one jumps.
TEST(fit, is_as_smooth_as_asked) {
    for (int ncoe : {2, 4, 6, 10}) {
        brk_list brks = {{0, 0}};
        for (int c = -1; c <= ncoe - 2; c++) brks.emplace_back(c + 2, c);
        brks.emplace_back(ncoe + 1, 5); // the ends' continuities do not count
        const espl_ptr e =
            fit(ncoe, sample(0, ncoe + 1, 600, [](double x, int) { return std::fabs(std::sin(7 * x * x)); }),
                brks);
        ASSERT_TRUE(e) << bspl_get_error();
        for (int c = -1; c <= ncoe - 2; c++) {
            const auto i = static_cast<std::size_t>(c + 2);
            std::vector<double> before = e->brks[i - 1].coe;
            tranpp(before.data(), ncoe, e->brks[i].time - e->brks[i - 1].time);
            for (int j = 0; j <= c + 1; j++) {
                const double left = before[static_cast<std::size_t>(j)];
                const double right = e->brks[i].coe[static_cast<std::size_t>(j)];
                if (j <= c)
                    EXPECT_NEAR(right / left, 1, 1e-7) << ncoe << " c " << c << " derivative " << j;
                else
                    EXPECT_GT(std::fabs(right / left - 1), 1e-3) << ncoe << " c " << c << " derivative " << j;
            }
        }
    }
}

// The residuals are orthogonal to each function of the space: powers, and truncated powers at the
// breakpoints.
TEST(fit, no_spline_of_the_space_is_closer) {
    const brk_list brks = {{0, 0}, {1, 2}, {2.5, 0}, {3, -1}, {5, 1}, {6, 0}};
    const int ncoe = 4;
    const std::vector<float> wild = noise(300, 3);
    const dat_list data = sample(0, 6, 300, [&](double x, int i) {
        return x + static_cast<double>(wild[static_cast<std::size_t>(i)]);
    });
    const espl_ptr e = fit(ncoe, data, brks);
    ASSERT_TRUE(e) << bspl_get_error();
    auto product = [&](double from, int power) {
        double sum = 0;
        for (auto [x, y] : data)
            if (x >= from) sum += (y - espl(e.get(), x, 0)) * std::pow((x - from) / 6, power);
        return sum;
    };
    for (int power = 0; power < ncoe; power++) EXPECT_NEAR(product(0, power), 0, 1e-10) << power;
    for (std::size_t i = 1; i + 1 < brks.size(); i++)
        for (int power = brks[i].second + 1; power < ncoe; power++)
            EXPECT_NEAR(product(brks[i].first, power), 0, 1e-10) << i << " " << power;
    double sum = 0;
    for (auto [x, y] : data) sum += std::pow(y - espl(e.get(), x, 0), 2);
    EXPECT_NEAR(sum / 300, 1.0 / 3, 0.05); // the noise stays, and nothing but the noise
}

// Entries that the callbacks skip and data outside the breakpoints leave the fit as it is without them; a
// datum at the last breakpoint counts.
TEST(fit, passes_over_what_is_skipped_or_outside) {
    const dat_list data = {{-3, 99}, {-9, 99}, {0, 1}, {1, 77}, {2, 5}, {3, 4}, {8, 99}, {7, 99}};
    const brk_list brks = {{0, 0}, {1, 0}, {3, 0}};
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const espl_ptr e = bspl_fit(
        2, 8, 3,
        [&](int i, double& x, double& y) {
            std::tie(x, y) = data[static_cast<std::size_t>(i)];
            if (i == 1) x = nan;
            return i != 3;
        },
        [&](int i, double& time, int& ncont) {
            std::tie(time, ncont) = brks[static_cast<std::size_t>(i)];
            return i != 1;
        });
    ASSERT_TRUE(e) << bspl_get_error();
    ASSERT_EQ(e->nbrks, 2);
    // Line through (0,1), (2,5), (3,4): mean 5/3, 10/3; slope (10/3 - 5/3 + ...) = 8/7, 22/21... by hand:
    // sxx = 14/3, sxy = (-5/3)(-7/3) + (1/3)(5/3) + (4/3)(2/3) = 48/9, slope 8/7, at 0: 10/3 - 8/7*5/3 =
    // 10/7.
    EXPECT_NEAR(e->brks[0].coe[0], 10.0 / 7, 1e-14);
    EXPECT_NEAR(e->brks[0].coe[1], 8.0 / 7, 1e-14);
    EXPECT_NEAR(e->brks[1].coe[0], 10.0 / 7 + 3 * 8.0 / 7, 1e-14);
    EXPECT_EQ(e->t0, 0);
    EXPECT_EQ(e->t1, 3);
}

TEST(fit, order_one_gives_means) {
    const espl_ptr e = fit(1, {{0, 1}, {0.5, 3}, {1, 7}, {2, 9}}, {{0, 0}, {1, -1}, {2, 0}});
    ASSERT_TRUE(e) << bspl_get_error();
    EXPECT_NEAR(espl(e.get(), 0.7, 0), 2, 1e-15); // of 1 and 3
    EXPECT_NEAR(espl(e.get(), 1.0, 0), 8, 1e-15); // of 7 and 9: the datum at the end is in
    EXPECT_NEAR(espl(e.get(), 2.0, 0), 8, 1e-15);
}

TEST(fit, says_why_it_refuses) {
    const double inf = std::numeric_limits<double>::infinity(), nan = inf - inf;
    const int least = std::numeric_limits<int>::min();
    const dat_list line = sample(0, 4, 50, [](double x, int) { return x; });
    const brk_list ends = {{0, 0}, {4, 0}};
    const char* const brks_order = "Breakpoint times out of order.";
    const char* const continuity = "Invalid breakpoint continuity at    2.50000000000E-01.";
    const char* const singular = "Fit failure! (Singular matrix)";
    const struct {
        int ncoe;
        dat_list data;
        brk_list brks;
        const char* text;
    } cases[] = {
        {0, line, ends, "NCOE must be larger than zero."},
        {least, line, ends, "NCOE must be larger than zero."},
        {11, line, ends, "NCOE is too Large."},
        {3, line, {{0, 0}, {2, 0}, {2, 0}, {4, 0}}, brks_order},
        {3, line, {{0, 0}, {2, 0}, {1, 0}}, brks_order},
        {3, line, {{-2e30, 0}, {2, 0}}, brks_order},
        {3, line, {{0, 0}, {nan, 0}, {4, 0}}, brks_order},
        {3, line, {{0, 0}, {inf, 0}}, brks_order},
        {3, line, {{0, 0}, {0.25, 2}, {4, 0}}, continuity},
        {3, line, {{0, 0}, {0.25, -2}, {4, 0}}, continuity},
        {3, line, {{0, 0}, {0.25, least}, {4, 0}}, continuity},
        {1, line, {{0, 0}, {0.25, 0}, {4, 0}}, continuity},
        {3, {{0, 0}, {1, 0}, {1, 0}, {4, 0}}, ends, "X values out of order."},
        {3, {{0, 0}, {2, 0}, {1, 0}, {4, 0}}, ends, "X values out of order."},
        {3, {}, ends, singular},
        {3, {{0, 0}, {4, 0}}, ends, singular},
        {10, sample(0, 4, 9, [](double x, int) { return x; }), ends, singular},
        {3, {{0, 0}, {1, nan}, {4, 0}}, ends, singular},
        {3, line, {}, "Unknown error in B-spline fit."},
        {3, line, {{0, 0}}, "Unknown error in B-spline fit."},
    };
    for (const auto& c : cases) {
        EXPECT_FALSE(fit(c.ncoe, c.data, c.brks)) << c.text;
        EXPECT_EQ(bspl_get_error(), c.text);
        EXPECT_EQ(bspl_get_error(), ""); // handed over
    }
    EXPECT_FALSE(bspl_fit(3, 0, -1, {}, {}));
    EXPECT_TRUE(fit(3, line, ends)); // leaves the text of the failure before it
    EXPECT_EQ(bspl_get_error(), "Unable to init espl (internal prob?).");
}

// Cubics over three intervals, joined smoothly: six unknowns. Which data determine them is known: the j-th
// basis function needs one inside its own support (the intervals j-3 to j).
TEST(fit, data_must_determine_every_piece) {
    const brk_list brks = {{0, 0}, {1, 2}, {2, 2}, {3, 0}};
    const struct {
        std::vector<double> x;
        bool determined;
    } cases[] = {
        {{0, 0.5, 1, 2, 2.5, 3}, true},
        {{0.1, 0.2, 0.3, 0.4, 1.5, 2.5}, true},  // basis 4 lives on 1..3, basis 5 on 2..3
        {{0.1, 0.2, 0.3, 0.4, 0.5, 2.5}, false}, // nothing for basis 4 but what basis 5 needs
        {{0.1, 0.2, 0.3, 0.4, 1.5, 1.6}, false}, // nothing on 2..3
        {{0, 0.1, 0.2, 0.3, 1, 2.5}, false},     // basis 4 is 0 at its first knot
        {{0, 0.1, 0.2, 0.3, 1.1, 2.5}, true},
        {{0.1, 1.1, 1.2, 1.3, 2.1, 2.9}, true},
        {{1.1, 1.2, 1.3, 1.4, 1.5, 1.6, 1.7, 2.5}, false}, // basis 0 lives on 0..1
        {{0, 0.5, 1, 2, 3}, false},
    };
    for (const auto& c : cases) {
        dat_list data;
        for (double x : c.x) data.emplace_back(x, std::cos(x));
        const espl_ptr e = fit(4, data, brks);
        EXPECT_EQ(e != nullptr, c.determined) << c.x[4] << " " << c.x.back();
        EXPECT_EQ(bspl_get_error(), e ? "" : "Fit failure! (Singular matrix)");
        if (!e || c.x.size() > 6) continue;
        for (auto [x, y] : data) EXPECT_NEAR(espl(e.get(), x, 0), y, 1e-7) << x; // as many as unknowns
    }
}

TEST(tranpp, moves_the_origin) {
    std::array<double, 3> c = {1, 2, 3}; // 1 + 2t + 3tt at 2: 17, slope 14, half the curvature 3
    tranpp(c.data(), 3, 2);
    EXPECT_EQ(c, (std::array<double, 3>{17, 14, 3}));
    std::array<double, 14> high{};
    EXPECT_DEATH(tranpp(high.data(), 14, 0.5), "Error in tranpp -- ncoe too large.");
}

} // namespace
} // namespace norva::test
