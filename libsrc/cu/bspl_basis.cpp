// The B-spline basis of a fit: values by the stable recurrence, derivatives by differences of coefficients.
#include "bspl_int.h"

#include <algorithm>
#include <cstddef>

namespace norva {

void bspl_vn(bspl_basis& state, const double* knots, int jhigh, int index, double x, int ileft, double* b) {
    if (index == 1) {
        state.order = 1;
        b[0] = 1.0;
        if (jhigh <= 1) return;
    }
    do {
        const int j = state.order;
        auto& [order, deltal, deltar] = state;
        deltar[static_cast<std::size_t>(j - 1)] = knots[ileft + j] - x;
        deltal[static_cast<std::size_t>(j - 1)] = x - knots[ileft + 1 - j];
        double saved = 0.0;
        for (int i = 0; i < j; i++) {
            const double right = deltar[static_cast<std::size_t>(i)];
            const double left = deltal[static_cast<std::size_t>(j - 1 - i)];
            const double term = b[i] / (right + left);
            b[i] = saved + right * term;
            saved = left * term;
        }
        b[j] = saved;
        order++;
    } while (state.order < jhigh);
}

void bspl_dr(bspltype& fit, int nderiv) {
    const auto n = static_cast<std::size_t>(fit.nequ), k = static_cast<std::size_t>(fit.ncoe);
    fit.adif.assign(n * k, 0.0);
    std::copy(fit.aary.begin(), fit.aary.end(), fit.adif.begin());
    for (std::size_t j = 1; j < static_cast<std::size_t>(nderiv); j++) {
        const std::size_t km = k - j;
        const double* last = &fit.adif[(j - 1) * n];
        double* column = &fit.adif[j * n];
        for (std::size_t i = j; i < n; i++) {
            const double span = fit.knots[i + km] - fit.knots[i];
            if (span != 0.0) column[i] = static_cast<double>(km) * (last[i] - last[i - 1]) / span;
        }
    }
}

void bspl_ev(const bspltype& fit, double x, int nderiv, double* out) {
    const int k = fit.ncoe, n = fit.nequ;
    nderiv = std::clamp(nderiv, 1, k);
    std::fill_n(out, nderiv, 0.0);
    const double* knots = fit.knots.data();
    if (!(x >= knots[k - 1] && x <= knots[n])) return;
    // The last interval is closed at its right end.
    const int ileft = static_cast<int>(std::upper_bound(knots + k, knots + n, x) - knots) - 1;

    bspl_basis state;
    std::array<double, BSPL_MAX_NCOE> b{};
    for (int j = nderiv - 1; j >= 0; j--) {
        const int order = k - j; // of derivative j
        bspl_vn(state, knots, order, j == nderiv - 1 ? 1 : 2, x, ileft, b.data());
        const double* coefficient = &fit.adif[static_cast<std::size_t>(j) * static_cast<std::size_t>(n) +
                                              static_cast<std::size_t>(ileft + 1 - order)];
        for (int i = 0; i < order; i++) out[j] += b[static_cast<std::size_t>(i)] * coefficient[i];
    }
}

} // namespace norva
