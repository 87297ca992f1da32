#include "cu/bspline.h"

#include <cstddef>
#include <vector>

namespace norva {
namespace {

// All functions of order 1 at x, then raised in place to order NC; with their derivatives at the last step.
// N has a place for each of the NB+NC-1 intervals: function I of one order needs I and I+1 of the order
// below.
void raise(double x, const double* B, int NB, int NC, double* N, double* D) {
    for (int i = 0; i < NB + NC - 1; i++) N[i] = B[i] <= x && x < B[i + 1] ? 1.0 : 0.0;
    for (int i = 0; i < NB; i++) D[i] = 0.0;
    for (int k = 2; k <= NC; k++) {
        for (int i = 0; i < NB + NC - k; i++) {
            if (!(B[i] <= x && x < B[i + k])) continue;
            const double below = N[i], next = N[i + 1];
            const double span = B[i + k - 1] - B[i], next_span = B[i + k] - B[i + 1];
            N[i] = (span != 0 ? (x - B[i]) / span * below : 0.0) +
                   (next_span != 0 ? (B[i + k] - x) / next_span * next : 0.0);
            if (k == NC && i < NB)
                D[i] =
                    (NC - 1) * ((span != 0 ? below / span : 0.0) - (next_span != 0 ? next / next_span : 0.0));
        }
    }
}

} // namespace

void bspline(const double* X, int NX, const double* B, int NB, int NC, double* S, double* D) {
    if (NX < 1 || NB < 1 || NC < 1) return;
    const auto nx = static_cast<std::size_t>(NX), nb = static_cast<std::size_t>(NB);
    std::vector<double> values(nb + static_cast<std::size_t>(NC)), slopes(nb);
    for (std::size_t j = 0; j < nx; j++) {
        raise(X[j], B, NB, NC, values.data(), slopes.data());
        for (std::size_t i = 0; i < nb; i++) {
            S[i * nx + j] = values[i];
            D[i * nx + j] = slopes[i];
        }
    }
}

} // namespace norva
