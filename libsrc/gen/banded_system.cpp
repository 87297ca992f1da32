#include "gen/banded_system.h"

#include "gen/band.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace norva {

bool solve_banded_system(const double* q, const double* b, double* a, int n, int lower, int upper) {
    if (n < 1 || lower < 0 || upper < 0) return false;
    const auto order = static_cast<std::size_t>(n);
    const int lda = 2 * lower + upper + 1;
    std::vector<double> abd(order * static_cast<std::size_t>(lda));
    for (int i = 0; i < n; i++) {
        const double* row = q + static_cast<std::ptrdiff_t>(i) * (lower + upper + 1);
        const int last = std::min(upper, n - 1 - i);
        for (int d = -std::min(lower, i); d <= last; d++)
            abd[static_cast<std::size_t>(i + d) * static_cast<std::size_t>(lda) +
                static_cast<std::size_t>(lower + upper - d)] = row[lower + d];
    }
    std::vector<int> pivots(order);
    int info = 0;
    dgbfa(abd.data(), lda, n, lower, upper, pivots.data(), &info);
    if (info != 0) return false;
    std::copy_n(b, order, a);
    dgbsl(abd.data(), lda, n, lower, upper, pivots.data(), a, 0);
    return true;
}

} // namespace norva
