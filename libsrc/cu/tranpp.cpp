// Moving a polynomial to another origin.
#include "cu/bspl.h"
#include "zuvsys/stop.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace norva {

void tranpp(double* coe, int ncoe, double dt) {
    if (ncoe > TRANPP_MAX_NCOE) stop("\nError in tranpp -- ncoe too large.");
    const auto n = static_cast<std::size_t>(std::max(ncoe, 0));
    std::array<double, TRANPP_MAX_NCOE> p{}; // derivative j of the polynomial
    std::copy_n(coe, n, p.begin());
    double factorial = 1.0;
    for (std::size_t j = 0; j < n; j++) {
        if (j > 1) factorial *= static_cast<double>(j);
        double value = 0.0;
        for (std::size_t i = n - j; i-- > 0;) value = value * dt + p[i];
        coe[j] = value / factorial;
        for (std::size_t i = 1; i < n - j; i++) p[i - 1] = static_cast<double>(i) * p[i];
    }
}

} // namespace norva
