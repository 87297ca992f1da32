#pragma once
// Where a scene's energy lies, found by direct sums over its samples.

#include "scene/scene.h"

#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

namespace norva::test {

using cplx = std::complex<double>;

inline cplx turns(double cycles) {
    return std::polar(1.0, 2.0 * std::numbers::pi * cycles);
}

inline cplx sample_of(const std::vector<float>& data, int nf, int row, int column) {
    auto k = 2 * static_cast<std::size_t>(row * nf + column);
    return {data[k], data[k + 1]};
}

// The position, in units of 1/8, at which |sum over k of z(k) exp(sign 2 pi i (k) m / (8 n))| is largest,
// with positions from -n/2 on. For range profiles these are gates, for Doppler profiles cells.
template <class Sample> double strongest(int n, int sign, Sample z) {
    double best = -1.0, where = 0.0;
    for (int m = -4 * n; m < 4 * n; m++) {
        cplx sum = 0.0;
        for (int k = 0; k < n; k++)
            sum += z(k) * turns(sign * std::remainder(static_cast<double>(k) * m / (8.0 * n), 1.0));
        if (std::norm(sum) > best) {
            best = std::norm(sum);
            where = m / 8.0;
        }
    }
    return where;
}

inline double range_of_row(const std::vector<float>& data, int nf, int row, int ksy) {
    return strongest(nf, ksy, [&](int k) { return sample_of(data, nf, row, k); });
}

inline double doppler_of_column(const std::vector<float>& data, int nf, int nt, int column, int ksx) {
    return strongest(nt, ksx, [&](int k) { return sample_of(data, nf, k, column); });
}

} // namespace norva::test
