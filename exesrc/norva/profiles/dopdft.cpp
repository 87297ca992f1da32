// Doppler rate of a time series.
#include "profiles/dopdft.h"

#include "signal/fft.h"
#include "signal/peak.h"
#include "signal/vector.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace norva {

// Largest finite component as a power of two: dividing by it changes no digit, and keeps the fourth power of
// strong samples in range.
static int exponent(const float* x, std::size_t n) {
    float largest = 0;
    for (std::size_t i = 0; i < n; i++)
        if (std::isfinite(x[i])) largest = std::max(largest, std::fabs(x[i]));
    return largest > 0 ? std::ilogb(largest) : 0;
}

void dopdft(const float* x, float* y, int nt, int nft, float* dft) {
    *dft = 0;
    std::fill(y, y + 2 * static_cast<std::size_t>(nft), 0.0F);
    const int down = -exponent(x, 2 * static_cast<std::size_t>(std::max(nt, 0)));
    for (int i = 0; i + 1 < nt; i++) {
        const float* r = x + 2 * static_cast<std::size_t>(i);
        const float re0 = std::scalbn(r[0], down), im0 = std::scalbn(r[1], down);
        const float re1 = std::scalbn(r[2], down), im1 = std::scalbn(r[3], down);
        const float re = re1 * re0 + im1 * im0, im = im1 * re0 - re1 * im0;
        if (!std::isfinite(re) || !std::isfinite(im)) continue;
        y[2 * static_cast<std::size_t>(i)] = re;
        y[2 * static_cast<std::size_t>(i) + 1] = im;
    }
    gfft(y, nft, -1);
    powrc(nft, y, y);
    const float peak = pklocr(y, nft);
    if (peak == 0) return; // nothing above 0
    float rate = (peak - 1) / static_cast<float>(nft);
    if (rate > 0.5F) rate -= 1;
    *dft = rate;
}

} // namespace norva
