#include "support/reference.h"

#include <cmath>
#include <cstdint>
#include <numbers>

namespace norva::test {

std::vector<float> noise(std::size_t n, unsigned seed) {
    std::vector<float> values(n);
    std::uint64_t state = seed * 2654435761ULL + 88172645463325252ULL;
    for (float& v : values) {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        v = static_cast<float>(static_cast<double>(state >> 40) / (1 << 23) - 1.0);
    }
    return values;
}

std::vector<std::complex<double>> direct_transform(const float* x, int n) {
    std::vector<double> c(n), s(n);
    for (int k = 0; k < n; k++) {
        c[k] = std::cos(2 * std::numbers::pi * k / n);
        s[k] = std::sin(2 * std::numbers::pi * k / n);
    }
    std::vector<std::complex<double>> sums(n);
    for (int k = 0; k < n; k++) {
        double re = 0, im = 0;
        for (int i = 0, at = 0; i < n; i++) {
            re += x[2 * i] * c[at] - x[2 * i + 1] * s[at];
            im += x[2 * i] * s[at] + x[2 * i + 1] * c[at];
            at += k;
            if (at >= n) at -= n;
        }
        sums[k] = {re, im};
    }
    return sums;
}

} // namespace norva::test
