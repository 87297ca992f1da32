// Derivatives of measured data by local least squares.
#include "local_fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace norva {

namespace {

// Sums of w u^k, k = 0..4, and of w y u^k, k = 0..2, with u the time from the centre in units of `half`.
struct moments {
    std::array<double, 5> u{};
    std::array<double, 3> y{};

    void add(double w, double at, double value) {
        double power = w;
        for (std::size_t k = 0; k < 5; k++, power *= at) {
            u[k] += power;
            if (k < 3) y[k] += value * power;
        }
    }
};

double determinant(double a, double b, double c, double d, double e, double f, double g, double h, double i) {
    return a * (e * i - f * h) - b * (d * i - f * g) + c * (d * h - e * g);
}

// Coefficient `order` of the parabola c0 + c1 u + c2 u^2, by Cramer's rule.
double coefficient(const moments& m, int order) {
    const auto& u = m.u;
    const auto& y = m.y;
    const double whole = determinant(u[0], u[1], u[2], u[1], u[2], u[3], u[2], u[3], u[4]);
    if (!(whole > 1e-12 * u[0] * u[2] * u[4])) return std::numeric_limits<double>::quiet_NaN();
    switch (order) {
    case 0: return determinant(y[0], u[1], u[2], y[1], u[2], u[3], y[2], u[3], u[4]) / whole;
    case 1: return determinant(u[0], y[0], u[2], u[1], y[1], u[3], u[2], y[2], u[4]) / whole;
    default: return determinant(u[0], u[1], y[0], u[1], u[2], y[1], u[2], u[3], y[2]) / whole;
    }
}

} // namespace

void sp_local_fit(std::span<const double> t, std::span<const double> y, std::span<const double> mask,
                  int navg, bool taper, int order, std::span<double> out) {
    const std::size_t n = t.size();
    const std::size_t count = std::min(static_cast<std::size_t>(std::clamp(navg, 3, SP_MAX_NAVG)), n);
    for (std::size_t i = 0; i < n; i++) {
        const std::size_t first = std::min(i - std::min(i, count / 2), n - count), last = first + count - 1;
        // A little more than the longest distance, so that no weight is 0.
        const double half = std::max(t[last] - t[i], t[i] - t[first]) * 1.01;
        moments m;
        for (std::size_t k = first; k <= last; k++) {
            if (!mask.empty() && mask[k] == 0.0) continue;
            const double u = (t[k] - t[i]) / half;
            const double cosine = taper ? std::cos(0.5 * std::numbers::pi * u) : 1.0;
            m.add(cosine * cosine, u, y[k] - y[i]);
        }
        const double c = coefficient(m, order);
        out[i] = order == 0 ? y[i] + c : order == 1 ? c / half : 2.0 * c / (half * half);
    }
}

} // namespace norva
