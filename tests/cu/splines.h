#pragma once
// Fits over plain lists, and splines put together by hand.

#include "cu/bspl.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace norva::test {

using brk_list = std::vector<std::pair<double, int>>;    // time, continuity
using dat_list = std::vector<std::pair<double, double>>; // x, y

inline espl_ptr fit(int ncoe, const dat_list& data, const brk_list& brks) {
    return bspl_fit(
        ncoe, static_cast<int>(data.size()), static_cast<int>(brks.size()),
        [&](int i, double& x, double& y) {
            std::tie(x, y) = data[static_cast<std::size_t>(i)];
            return true;
        },
        [&](int i, double& time, int& ncont) {
            std::tie(time, ncont) = brks[static_cast<std::size_t>(i)];
            return true;
        });
}

// Pieces by time and coefficients; continuity and flag count up from 10 and 20.
inline espl_ptr spline(int ncoe, const std::vector<std::pair<double, std::vector<double>>>& pieces) {
    std::vector<_brkpoint> brks;
    for (const auto& [time, coe] : pieces) {
        const int i = static_cast<int>(brks.size());
        brks.push_back({time, 10 + i, 20 + i, coe});
    }
    return espl_init_old(ncoe, std::move(brks));
}

} // namespace norva::test
