// Application of one delay history to the raw data.
#include "mocomp/mocomp.h"

#include "zuvsys/stop.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace norva {
namespace {

// Weights of the cubic through positions -1, 0, 1, 2 at p:
//   -p(p-1)(p-2)/6, (pp-1)(p-2)/2, -p(p+1)(p-2)/2, p(pp-1)/6
std::array<double, 4> cubic_weights(double p) {
    return {-p * (p - 1) * (p - 2) / 6, (p * p - 1) * (p - 2) / 2, -p * (p + 1) * (p - 2) / 2,
            p * (p * p - 1) / 6};
}

// Delays at the records j-1, j, j+1, j+2 (from 0), carried on beyond the ends by a parabola.
std::array<double, 4> delays_around(const double* d, int j, int nt) {
    if (nt == 1) return {2 * d[0] - d[1], d[0], d[1], 2 * d[1] - d[0]};
    double before = j > 0 ? d[j - 1] : 3 * d[0] - 3 * d[1] + d[2];
    double after = j < nt - 1 ? d[j + 2] : 3 * d[nt] - 3 * d[nt - 1] + d[nt - 2];
    return {before, d[j], d[j + 1], after};
}

} // namespace

void mocomp(float* x, int nf, int nt, float f1, float df, float rh, const double* d) {
    if (!(rh >= 0 && rh <= 1)) stop("STOP IN MOCOMP");
    if (nf < 1) return;
    std::vector<std::array<double, 4>> weights(nf);
    for (int i = 0; i < nf; i++) weights[i] = cubic_weights(static_cast<double>(i) * rh / nf);
    for (int j = 0; j < nt; j++) {
        const std::array<double, 4> a = delays_around(d, j, nt);
        float* row = x + 2 * static_cast<std::size_t>(j) * nf;
        for (int i = 0; i < nf; i++) {
            double f = i * static_cast<double>(df) + f1;
            const std::array<double, 4>& w = weights[i];
            double dd = w[0] * a[0] + w[1] * a[1] + w[2] * a[2] + w[3] * a[3];
            auto cycles = static_cast<float>(std::fmod(dd * f, 1.0));
            float c = std::cos(2 * std::numbers::pi_v<float> * cycles);
            float s = std::sin(2 * std::numbers::pi_v<float> * cycles);
            float re = row[2 * i], im = row[2 * i + 1];
            row[2 * i] = re * c - im * s;
            row[2 * i + 1] = re * s + im * c;
        }
    }
}

} // namespace norva
