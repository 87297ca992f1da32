// Least-squares polynomials through the normal equations.
#include "signal/solve.h"

#include "zuvsys/stop.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace norva {
namespace {

double fit_weight(int mode, double y, double sigma) {
    if (mode > 0) return 1 / (sigma * sigma);
    if (mode == 0 || y == 0) return 1;
    return 1 / std::fabs(y);
}

} // namespace

// Normal equations: sum j of S(i+j-1) A(j) = T(i),  S(m) = sum w x^(m-1),  T(i) = sum w y x^(i-1); by
// Cramer's rule.
void polfit(const float* x, const float* y, const float* sigmay, int npts, int nterms, int mode, float* a,
            float* chisqr) {
    *chisqr = 0;
    if (nterms < 1) return;
    std::fill_n(a, nterms, 0.0F);
    std::vector<double> s(2 * nterms - 1), t(nterms);
    for (int k = 0; k < npts; k++) {
        const double w = fit_weight(mode, y[k], mode > 0 ? sigmay[k] : 1);
        double power = w;
        for (int m = 0; m < 2 * nterms - 1; m++, power *= x[k]) {
            s[m] += power;
            if (m < nterms) t[m] += power * y[k];
        }
    }
    // The determinant with column `replaced` taken by the right side.
    auto determinant = [&](int replaced) {
        std::vector<double> matrix(static_cast<std::size_t>(nterms) * nterms);
        for (int j = 0; j < nterms; j++) {
            for (int i = 0; i < nterms; i++) matrix[j * nterms + i] = j == replaced ? t[i] : s[i + j];
        }
        return determ(matrix.data(), nterms);
    };
    const double delta = determinant(-1);
    if (delta == 0) return;
    for (int j = 0; j < nterms; j++) a[j] = static_cast<float>(determinant(j) / delta);

    const int free = npts - nterms;
    if (free <= 0) return;
    double sum = 0;
    for (int k = 0; k < npts; k++) {
        double value = 0;
        for (int j = nterms - 1; j >= 0; j--) value = value * x[k] + a[j];
        sum += fit_weight(mode, y[k], mode > 0 ? sigmay[k] : 1) * (y[k] - value) * (y[k] - value);
    }
    *chisqr = static_cast<float>(sum / free);
}

// The variable runs from 0 to 1 inside, which keeps the powers in range, and is stretched back at the end.
void bstfit(const float* x, int n, int m, float* a) {
    if (m > BSTFIT_MAX_M) stop("STOP IN BSTFIT...M>10");
    if (n > BSTFIT_MAX_N) stop("STOP IN BSTFIT...N>16000");
    if (m < 1) return;
    std::fill_n(a, m, 0.0F);
    const double span = std::max(n - 1, 1);
    std::vector<double> s(2 * m - 1), b(m), c(static_cast<std::size_t>(m) * m);
    for (int k = 0; k < n; k++) {
        double power = 1;
        for (int i = 0; i < 2 * m - 1; i++, power *= k / span) {
            s[i] += power;
            if (i < m) b[i] += power * x[k];
        }
    }
    for (int j = 0; j < m; j++) {
        for (int i = 0; i < m; i++) c[j * m + i] = s[i + j];
    }
    double flag = 0;
    dsimeq(c.data(), b.data(), m, m, &flag);
    if (flag != 0) return;
    for (int j = 0; j < m; j++) a[j] = static_cast<float>(b[j] / std::pow(span, j));
}

} // namespace norva
