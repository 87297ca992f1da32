// One-dimensional amplitude weights.
#include "signal/weight.h"

#include <cmath>
#include <numbers>
#include <vector>

namespace norva {

using std::numbers::pi;

void ham(float* w, int n) {
    double dx = 1.0 / n;
    for (int i = 0; i < n; i++) {
        double x = -0.5 * (1 - dx) + i * dx;
        w[i] = static_cast<float>(0.54 + 0.46 * std::cos(2 * pi * x));
    }
}

void hamwt(float* w, int n, int) {
    if (n == 1) w[0] = 1.0F;
    if (n < 2) return;
    for (int i = 1; i <= n; i++) {
        w[i - 1] = static_cast<float>(0.54 + 0.46 * std::cos(2 * pi * (i - (n + 1) * 0.5) / n));
    }
}

} // namespace norva
