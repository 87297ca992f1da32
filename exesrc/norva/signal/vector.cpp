// Array kernels on contiguous elements.
#include "signal/vector.h"

#include <cstddef>
#include <cstring>

namespace norva {

void powrc(int n, const float* x, float* p) {
    for (int k = 0; k < n; k++) p[k] = x[2 * k] * x[2 * k] + x[2 * k + 1] * x[2 * k + 1];
}

} // namespace norva
