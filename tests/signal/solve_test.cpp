// Solvers and polynomial fits against systems and curves whose solution is known.
#include "signal/solve.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace norva {
namespace {

TEST(solve, systems_and_determinants) {
    for (int n : {1, 2, 5, 12}) {
        const int nn = n + 2;
        std::vector<float> values = test::noise(nn * n + n, n);
        std::vector<double> a(nn * n), b(n);
        std::vector<float> af(nn * n), bf(n);
        for (int i = 0; i < n; i++) {
            for (int j = 0; j < n; j++) {
                a[j * nn + i] = i == j && i < n - 1 ? 0 : values[j * nn + i]; // zeros on the diagonal
                b[i] += a[j * nn + i] * values[nn * n + j];
            }
        }
        if (n == 1) a[0] = values[0], b[0] = a[0] * values[nn];
        for (int k = 0; k < nn * n; k++) af[k] = static_cast<float>(a[k]);
        for (int k = 0; k < n; k++) bf[k] = static_cast<float>(b[k]);
        double flag = 9;
        dsimeq(a.data(), b.data(), n, nn, &flag);
        EXPECT_EQ(flag, 0.0);
        float flagf = 9;
        simeq(af.data(), bf.data(), n, nn, &flagf);
        EXPECT_EQ(flagf, 0.0F);
        for (int k = 0; k < n; k++) {
            EXPECT_NEAR(b[k], values[nn * n + k], 1e-10) << n;
            EXPECT_NEAR(bf[k], values[nn * n + k], 2e-4) << n;
        }
    }
    float bad[] = {NAN, 2, 2, 4}, with_bad[] = {1, 1}, told = 9;
    simeq(bad, with_bad, 2, 2, &told);
    EXPECT_EQ(told, 1.0F);
    simeq(bad, with_bad, 0, 2, &told); // nothing to solve
    EXPECT_EQ(told, 0.0F);
    double singular[] = {1, 2, 2, 4}, b[] = {1, 1}, flag = 9;
    dsimeq(singular, b, 2, 2, &flag);
    EXPECT_EQ(flag, 1.0);
    double m[] = {0, 2, 1, 3, 0, 4, 5, 6, 0}; // columns (0,2,1), (3,0,4), (5,6,0)
    EXPECT_NEAR(determ(m, 3), 3 * 6 * 1 + 5 * 2 * 4, 1e-12);
    double zero[] = {1, 1, 1, 1};
    EXPECT_EQ(determ(zero, 2), 0);
}

TEST(solve, polynomials_through_samples) {
    const std::vector<float> odd = {1, 3, 5};
    float a[10], chisqr = 9;
    bstfit(odd.data(), 3, 2, a);
    EXPECT_NEAR(a[0], 1, 1e-6);
    EXPECT_NEAR(a[1], 2, 1e-6);
    // 2 - 0.1 u + 1e-6 u^3 over the longest row.
    std::vector<float> cubic(16000);
    for (int u = 0; u < 16000; u++) cubic[u] = static_cast<float>(2 - 0.1 * u + 1e-9 * u * u * u);
    bstfit(cubic.data(), 16000, 4, a);
    EXPECT_NEAR(a[0], 2, 0.01);
    EXPECT_NEAR(a[1], -0.1, 1e-5);
    EXPECT_NEAR(a[2], 0, 2e-9);
    EXPECT_NEAR(a[3], 1e-9, 1e-13);
    bstfit(odd.data(), 1, 2, a); // too few
    EXPECT_EQ(a[1], 0);
    EXPECT_DEATH(bstfit(odd.data(), 3, 11, a), "STOP IN BSTFIT...M>10");
    EXPECT_DEATH(bstfit(odd.data(), 16001, 2, a), "STOP IN BSTFIT...N>16000");

    // A line by weights: of the points (0,0), (1,1), (2,5), the last counts little, or as much as the others.
    const std::vector<float> x = {0, 1, 2}, y = {0, 1, 5}, sigma = {1, 1, 1e4F};
    polfit(x.data(), y.data(), sigma.data(), 3, 2, 1, a, &chisqr);
    EXPECT_NEAR(a[0], 0, 1e-6);
    EXPECT_NEAR(a[1], 1, 1e-6);
    polfit(x.data(), y.data(), sigma.data(), 3, 2, 0, a, &chisqr);
    EXPECT_NEAR(a[0], -0.5, 1e-6);              // mean 2 less 2.5
    EXPECT_NEAR(a[1], 2.5, 1e-6);               // (5 - 0) / 2
    EXPECT_NEAR(chisqr, 0.25 + 1 + 0.25, 1e-5); // residuals 1/2, -1, 1/2 with one degree of freedom
    // Weights 1/y: 1, 1, 1/5. Normal equations 2.2 a + 1.4 b = 2, 1.4 a + 1.8 b = 3, solved by hand.
    polfit(x.data(), y.data(), nullptr, 3, 2, -1, a, &chisqr);
    EXPECT_NEAR(a[0], -0.3, 1e-6);
    EXPECT_NEAR(a[1], 1.9, 1e-6);
    EXPECT_NEAR(chisqr, 0.09 + 0.36 + 2.25 / 5, 1e-5); // residuals 0.3, -0.6, 1.5
    polfit(x.data(), y.data(), nullptr, 1, 2, 0, a, &chisqr);
    EXPECT_EQ(a[0], 0);
    EXPECT_EQ(chisqr, 0);
}

} // namespace
} // namespace norva
