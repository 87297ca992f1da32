#pragma once
// Least-squares fit of a piecewise polynomial through B-splines: the caller chooses the order, the
// breakpoints and how smooth the pieces join at each. Banded normal equations over a basis built by the
// stable recurrence; the result is turned into polynomial pieces (C. de Boor, A Practical Guide to Splines,
// 1978, chapters IX, X and XIV).
//
// The continuity ncont of a breakpoint is the number of continuous derivatives: -1 a jump in value, 0 a
// continuous value with a kink, up to ncoe-2, the smoothest. It counts at inner breakpoints only.

#include "cu/espl.h"

#include <functional>
#include <string>

namespace norva {

constexpr int BSPL_MAX_NCOE = 10;   // highest order of a fit
constexpr int TRANPP_MAX_NCOE = 13; // most coefficients that tranpp moves

// Breakpoint i or data point i, from 0. False when there is none of that number: the entry is skipped.
using bspl_brk_cb = std::function<bool(int i, double& time, int& ncont)>;
using bspl_dat_cb = std::function<bool(int i, double& x, double& y)>;

// Fits pieces of ncoe coefficients (degree ncoe-1) to the data points 0..mxdat-1 with the breakpoints
// 0..mxbrk-1. Both must come in strictly rising order; data outside the breakpoints are passed over; every
// point has weight 1. The last breakpoint carries on the polynomial of the last interval. Null on failure,
// with a text for bspl_get_error; no callback is called after the first failure.
//   "NCOE must be larger than zero."          "NCOE is too Large."
//   "Breakpoint times out of order."          "X values out of order."
//   "Invalid breakpoint continuity at %20.11E." with the time of an inner breakpoint
//   "Fit failure! (Singular matrix)"          the data do not determine every piece
//   "Unable to init espl (internal prob?)."   mxbrk negative or beyond memory
//   "Unknown error in B-spline fit."          fewer than two breakpoints
espl_ptr bspl_fit(int ncoe, int mxdat, int mxbrk, const bspl_dat_cb& dat_cb, const bspl_brk_cb& brk_cb);

// The text of the last fit that failed, handed over: a second call gives an empty text.
std::string bspl_get_error();

// Moves a polynomial, sum of coe[j] * t^j for j below ncoe, to the origin dt: sum of coe[j] * (t - dt)^j.
// Ends the program above TRANPP_MAX_NCOE.
void tranpp(double* coe, int ncoe, double dt);

} // namespace norva
