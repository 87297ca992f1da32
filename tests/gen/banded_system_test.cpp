// Banded systems kept by rows, against the product of the matrix with a known solution.
#include "gen/banded_system.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace norva {
namespace {

TEST(banded_system, solution_is_found_for_any_band) {
    const int bands[][3] = {{1, 0, 0}, {1, 3, 3}, {6, 0, 2}, {6, 2, 0}, {7, 1, 3}, {9, 4, 2}, {3, 5, 5}};
    for (auto [n, lower, upper] : bands) {
        const int w = lower + upper + 1;
        // Places outside the matrix must not be read.
        std::vector<double> q(n * w, std::numeric_limits<double>::quiet_NaN()), b(n), a(n, -1), x(n);
        const std::vector<float> values = test::noise(n * n + n, n + lower);
        for (int i = 0; i < n; i++) x[i] = values[n * n + i];
        for (int i = 0; i < n; i++) {
            for (int j = std::max(0, i - lower); j <= std::min(n - 1, i + upper); j++) {
                q[i * w + lower + j - i] = values[i * n + j] + (i == j ? 3 : 0);
                b[i] += q[i * w + lower + j - i] * x[j];
            }
        }
        ASSERT_TRUE(solve_banded_system(q.data(), b.data(), a.data(), n, lower, upper));
        for (int i = 0; i < n; i++) EXPECT_NEAR(a[i], x[i], 1e-12) << n << " " << lower << " " << upper;
    }
}

TEST(banded_system, singular_and_empty_systems_are_refused) {
    const double q[] = {0, 1, 2, 1, 2, 0}, b[] = {1, 1}; // rows (1 2) and (1 2)
    double a[] = {7, 7};
    EXPECT_FALSE(solve_banded_system(q, b, a, 2, 1, 1));
    EXPECT_EQ(a[0], 7);
    EXPECT_FALSE(solve_banded_system(q, b, a, 0, 1, 1));
    EXPECT_FALSE(solve_banded_system(q, b, a, 2, -1, 1));
}

} // namespace
} // namespace norva
