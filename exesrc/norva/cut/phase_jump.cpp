// Removal of a phase jump, and limits of a phase axis.
#include "cut/scatterer.h"
#include "signal/solve.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace norva {

namespace {

// Spreads the jump pj over the samples k1..k2 and takes it off all that follow.
void take_off(float* p, int n, int k1, int k2, float pj) {
    const float dp = pj / static_cast<float>(k2 - k1);
    for (int k = k1 + 1; k < k2; k++) p[k - 1] -= static_cast<float>(k - k1) * dp;
    for (int k = k2; k <= n; k++) p[k - 1] -= pj;
}

} // namespace

void phsjmp(float* p, int n, int k1, int k2, float pj) {
    if (!(k2 > k1 && k1 > 2 && k2 < n - 1)) return;
    if (pj != 0) return take_off(p, n, k1, k2, pj);

    // The jump lies between the strongest bends.
    auto bend = [p](int k) { return 2 * p[k - 1] - p[k] - p[k - 2]; };
    const int from = std::max(k1 - 5, 3), to = std::min(k2 + 5, n - 2);
    int least = from, most = from;
    for (int k = from; k <= to; k++) {
        if (bend(k) < bend(least)) least = k;
        if (bend(k) > bend(most)) most = k;
    }
    const int kk1 = std::min(least, most), kk2 = std::max(least, most);
    if (kk1 == kk2) return; // no bend at all
    std::array<float, 2> left{}, right{};
    bstfit(&p[kk1 - 3], 3, 2, left.data());
    bstfit(&p[kk2 - 1], 3, 2, right.data());
    const auto width = static_cast<float>(kk2 - kk1);
    const float miss_right = p[kk2 - 1] - left[0] - (width + 2) * left[1]; // the left line's at kk2
    const float miss_left = p[kk1 - 1] - right[0] + width * right[1];      // the right line's at kk1
    take_off(p, n, kk1, kk2, 0.5F * (miss_right - miss_left));
}

void phslim(const float* a, const float* p, int n, float* pmin, float* pmax) {
    float peak = 0;
    for (int k = 0; k < n; k++) peak = std::max(peak, a[k]);
    bool any = false;
    float low = 0, high = 0;
    for (int k = 0; k < n; k++) {
        if (!(a[k] >= 0.05F * peak) || !std::isfinite(p[k])) continue;
        low = any ? std::min(low, p[k]) : p[k];
        high = any ? std::max(high, p[k]) : p[k];
        any = true;
    }
    // A phase next to a half cycle counts as being there.
    axset((std::floor(2 * low + 99.95F) - 100) * 0.5F, (std::floor(2 * high + 100.05F) - 99) * 0.5F, pmin,
          pmax);
}

void axset(float low, float high, float* tidy_low, float* tidy_high) {
    const double span = static_cast<double>(high) - low;
    double step = 0.5;
    for (int k = 0; std::isfinite(span) && step < span / 10; k++) step *= k % 3 == 2 ? 2.5 : 2;
    *tidy_low = static_cast<float>(step * std::floor(low / step));
    *tidy_high = static_cast<float>(step * std::ceil(high / step));
}

} // namespace norva
