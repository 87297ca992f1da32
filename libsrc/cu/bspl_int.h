#pragma once
// The working record of one fit and the steps between its data and its pieces.

#include "cu/bspl.h"

#include <array>
#include <string>
#include <vector>

namespace norva {

struct bspltype {
    int ncoe = 0;                        // order, 1..BSPL_MAX_NCOE
    int nbrks = 0;                       // breakpoints accepted, at least 2
    int nknots = 0;                      // length of knots
    int nequ = 0;                        // B-spline coefficients: nknots - ncoe
    int mxbrk = 0;                       // breakpoints to ask for
    int mxdat = 0;                       // data points to ask for
    const bspl_brk_cb* brk_cb = nullptr; // gives breakpoint i
    const bspl_dat_cb* dat_cb = nullptr; // gives data point i
    std::vector<double> knots;           // each breakpoint as often as its continuity asks
    std::vector<double> qary;            // nequ rows of 2*ncoe-1: the normal matrix by diagonals
    std::vector<double> bary;            // nequ: the right side
    std::vector<double> aary;            // nequ: the coefficients of the basis functions
    std::vector<double> adif;            // ncoe columns of nequ: those of the spline and its derivatives
    std::string errstr;                  // why the fit failed
    espl_ptr espl;                       // the result
};

// What bspl_vn keeps from one call to the next: the order it has reached and the distances of x to the knots.
struct bspl_basis {
    int order = 0;
    std::array<double, BSPL_MAX_NCOE> deltal{}, deltar{};
};

// The jhigh basis functions of order jhigh that do not vanish on knots[ileft] <= x < knots[ileft+1], those of
// index ileft-jhigh+1 and up, into b. index 1 starts afresh at order 1; 2 goes on from the order and the b of
// the last call, and raises it by one at least.
void bspl_vn(bspl_basis& state, const double* knots, int jhigh, int index, double x, int ileft, double* b);

// Coefficients of the spline and of its derivatives below nderiv, from aary into the columns of adif.
void bspl_dr(bspltype& fit, int nderiv);

// Value of the spline and of its derivatives below nderiv (held to 1..ncoe) at x, from the columns of adif.
// All 0 outside the breakpoints.
void bspl_ev(const bspltype& fit, double x, int nderiv, double* out);

} // namespace norva
