// The band solver against the matrix it was given, and unwrapping against a straight phase.
#include "gen/band.h"
#include "gen/unwrap.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace norva {
namespace {

TEST(band, solution_gives_the_right_side_back) {
    const int bands[][3] = {{1, 0, 0}, {6, 0, 0},  {6, 1, 1}, {9, 2, 3},
                            {9, 3, 1}, {20, 4, 4}, {5, 4, 4}, {8, 0, 2}};
    for (auto [n, ml, mu] : bands) {
        const int lda = 2 * ml + mu + 1;
        std::vector<double> full(n * n), abd(lda * n, -777.0), b(n), x(n);
        std::vector<float> values = test::noise(n * n + n, n + ml);
        for (int j = 0; j < n; j++) {
            x[j] = values[n * n + j];
            for (int i = std::max(0, j - mu); i <= std::min(n - 1, j + ml); i++) {
                // A weak diagonal, so that rows have to change places.
                full[i * n + j] =
                    i == j && ml > 0 ? 1e-3 * values[i * n + j] : values[i * n + j] + (i == j ? 2 : 0);
                abd[j * lda + ml + mu + i - j] = full[i * n + j];
            }
        }
        std::vector<int> pivots(n);
        int info = -1;
        dgbfa(abd.data(), lda, n, ml, mu, pivots.data(), &info);
        ASSERT_EQ(info, 0);
        for (int job : {0, 1}) {
            for (int i = 0; i < n; i++) {
                b[i] = 0;
                for (int j = 0; j < n; j++) b[i] += (job == 0 ? full[i * n + j] : full[j * n + i]) * x[j];
            }
            dgbsl(abd.data(), lda, n, ml, mu, pivots.data(), b.data(), job);
            for (int i = 0; i < n; i++)
                EXPECT_NEAR(b[i], x[i], 1e-9) << n << " " << ml << " " << mu << " " << job;
        }
    }
}

TEST(band, zero_pivot_is_told) {
    // Column 2 of 3 is zero; 1 diagonal on each side.
    std::vector<double> abd = {0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0};
    int pivots[3], info = -1;
    dgbfa(abd.data(), 4, 3, 1, 1, pivots, &info);
    EXPECT_EQ(info, 2);
}

TEST(band, vector_operations_walk_their_increments) {
    std::vector<double> x = {1, -2, 3, -4}, y = {10, 20, 30, 40};
    EXPECT_EQ(ddot(2, x.data(), 2, y.data(), 1), 1 * 10 + 3 * 20);
    EXPECT_EQ(ddot(2, x.data(), -1, y.data(), 1), -2 * 10 + 1 * 20);
    daxpy(2, 2.0, x.data(), 1, y.data(), -2); // y[2] += 2*1, y[0] += 2*-2
    EXPECT_EQ(y, (std::vector<double>{6, 20, 32, 40}));
    dscal(2, -1.0, x.data(), 3);
    EXPECT_EQ(x, (std::vector<double>{-1, -2, 3, 4}));
    EXPECT_EQ(idamax(4, x.data(), 1), 4);
    EXPECT_EQ(idamax(2, x.data(), 2), 2);
    EXPECT_EQ(idamax(0, x.data(), 1), 0);
}

TEST(unwrap, straight_phase_comes_back) {
    for (float c : {1.0F, 0.25F}) {
        for (int way : {+1, -1}) {
            const int n = 50;
            std::vector<float> want(n), x(n);
            for (int i = 0; i < n; i++) {
                want[i] = c * (0.3F * static_cast<float>(i) - 4.0F);
                x[i] = want[i] - c * std::round(want[i] / c);
            }
            unwrap(x.data(), way * n, c);
            // Equal up to one number of periods for all.
            for (int i = 0; i < n; i++) EXPECT_NEAR(x[i] - want[i], x[0] - want[0], 1e-5) << i;
            EXPECT_NEAR(std::remainder(x[0] - want[0], c), 0, 1e-5);
        }
    }
    float pair[] = {0.6F, 0.7F};
    unwrap(pair, 2, 1);
    EXPECT_FLOAT_EQ(pair[0], -0.4F);
    EXPECT_FLOAT_EQ(pair[1], -0.3F);
    float one[] = {0.9F};
    unwrap(one, 1, 1);
    EXPECT_EQ(one[0], 0.9F);
}

} // namespace
} // namespace norva
