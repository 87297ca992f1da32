#pragma once
// Derivatives of measured data by local least squares.

#include <span>

namespace norva {

constexpr int SP_MAX_NAVG = 1000; // elements of a local fit

// For each element, the derivative of that order (0 to 2) at its time of the parabola through the navg
// elements around it, at the ends of the data through the navg first or last ones.
//   t, y    in   times, rising, and values
//   mask    in   elements that do not count have 0; an empty mask lets all count
//   navg    in   held to 3 .. SP_MAX_NAVG
//   taper   in   weights fall off to the ends of the fit as a squared cosine; else all are 1
//   out     out  not-a-number where fewer than three different times count
void sp_local_fit(std::span<const double> t, std::span<const double> y, std::span<const double> mask,
                  int navg, bool taper, int order, std::span<double> out);

} // namespace norva
