// Rounding to the nearest integer.
#include "zuvsys/bestint.h"

#include <limits>

namespace norva {

int bestint(double x) {
    constexpr double least = std::numeric_limits<int>::min();
    constexpr double most = std::numeric_limits<int>::max();
    if (x != x) return 0;
    double y = x + (x < 0.0 ? -0.5 : 0.5);
    if (y <= least) return std::numeric_limits<int>::min();
    if (y >= most) return std::numeric_limits<int>::max();
    return static_cast<int>(y);
}

} // namespace norva
