#include "gen/unwrap.h"

#include <cmath>

namespace norva {

void unwrap(float* x, int n, float c) {
    const int count = n < 0 ? -n : n;
    if (count <= 1) return;
    float amb = 0; // periods to add
    float pl = 0;  // the sample before, as it came
    for (int k = 0; k < count; k++) {
        float& value = x[n > 0 ? k : count - 1 - k];
        const float step = value - pl;
        if (std::fabs(step) > c / 2) amb -= step >= 0 ? 1.0F : -1.0F;
        pl = value;
        value += amb * c;
    }
}

} // namespace norva
