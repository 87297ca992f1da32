// Drift and centroid estimates from the raw data.
#include "profiles/rngdft.h"

#include "signal/fft.h"
#include "signal/weight.h"
#include "zuvsys/stop.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace norva {
namespace {

// Spectrum yy of n values: the sum over the records of the power of the transformed lag products.
std::vector<float> lag_spectrum(const float* x, int nf, int nt, int lag, int n) {
    std::vector<float> w(nf), yy(n), product(2 * static_cast<std::size_t>(n)), y(product.size());
    ham(w.data(), nf);
    for (int j = 0; j < nt - lag; j++) {
        const float* early = x + 2 * static_cast<std::size_t>(j) * nf;
        const float* late = early + 2 * static_cast<std::size_t>(lag) * nf;
        for (int i = 0; i < 2 * nf; i += 2) {
            product[i] = w[i / 2] * (late[i] * early[i] + late[i + 1] * early[i + 1]);
            product[i + 1] = w[i / 2] * (late[i + 1] * early[i] - late[i] * early[i + 1]);
        }
        gfft_padded(product.data(), nf, y.data(), n, +1);
        for (int i = 0; i < n; i++) yy[i] += y[2 * i] * y[2 * i] + y[2 * i + 1] * y[2 * i + 1];
    }
    return yy;
}

} // namespace

void rngdft(const float* x, int nf, int nt, int lag, float* dft, float* slr) {
    if (nf > RNGDFT_MAX_N / 8 || lag <= 0 || lag > RNGDFT_MAX_LAG) stop("");
    *dft = *slr = 0;
    const int n = iradx2(8 * nf);
    std::vector<float> yy = lag_spectrum(x, nf, nt, lag, n);
    const auto ipk = static_cast<int>(std::max_element(yy.begin(), yy.end()) - yy.begin());
    const float peak = yy[ipk];
    if (!(peak > 0)) return;
    for (float& v : yy) v /= peak;

    // Vertex of the parabola through the peak and its circular neighbours.
    const float y1 = yy[ipk == 0 ? n - 1 : ipk - 1], y3 = yy[ipk == n - 1 ? 0 : ipk + 1];
    float dd = -0.5F * (y3 - y1) / (y3 - 2 * yy[ipk] + y1);
    if (!(std::fabs(dd) <= 0.5F)) dd = 0;
    float drift = static_cast<float>(nf) * (static_cast<float>(ipk) + dd) / static_cast<float>(n);
    if (static_cast<float>(nf) * 0.5F < drift) drift -= static_cast<float>(nf);
    *dft = drift / static_cast<float>(lag);

    for (int i = 1; i <= n - 2; i++) {
        if (i != ipk && yy[i] >= yy[i - 1] && yy[i] >= yy[i + 1]) *slr = std::max(*slr, yy[i]);
    }
}

float rngcen(const float* a, int nf, int nt) {
    double re = 0, im = 0;
    for (int j = 0; j < nt; j++) {
        const float* r = a + 2 * static_cast<std::size_t>(j) * nf;
        for (int i = 0; i + 1 < nf; i++, r += 2) {
            re += static_cast<double>(r[0]) * r[2] + static_cast<double>(r[1]) * r[3];
            im += static_cast<double>(r[1]) * r[2] - static_cast<double>(r[0]) * r[3];
        }
    }
    return static_cast<float>(std::atan2(im, re) * nf / (2 * std::numbers::pi));
}

} // namespace norva
