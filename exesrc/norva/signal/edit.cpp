// Keeping marked parts of a signal: what lies outside becomes zero.
#include "signal/vector.h"

#include <algorithm>
#include <cstddef>

namespace norva {
namespace {

// Samples of `words` floats each.
void keep_marked(float* x, int words, int nx, const int* ich, int nch) {
    auto zero = [&](int first, int last) { // samples first..last, from 1
        if (first <= last)
            std::fill(x + static_cast<std::ptrdiff_t>(words) * (first - 1),
                      x + static_cast<std::ptrdiff_t>(words) * last, 0.0F);
    };
    auto halve = [&](int k) {
        if (k <= 1 || k >= nx) return;
        for (int w = 0; w < words; w++) x[static_cast<std::ptrdiff_t>(words) * (k - 1) + w] *= 0.5F;
    };
    // Stretch m lies before the kept part m: between the indices 2m and 2m+1, with the array's ends outside.
    for (int m = 0; 2 * m <= nch; m++) {
        int before = m == 0 ? 0 : ich[2 * m - 1];
        int after = 2 * m < nch ? ich[2 * m] : nx + 1;
        if (after - before < 2) continue;
        zero(before + 1, after - 1);
        halve(before);
        halve(after);
    }
}

} // namespace

void edatc(float* x, int nx, const int* ich, int nch) {
    keep_marked(x, 2, nx, ich, nch);
}
void edata(float* x, int nx, const int* ich, int nch) {
    keep_marked(x, 1, nx, ich, nch);
}

} // namespace norva
