#pragma once
// Choice of an axis step and of the values that get a tic. Numbers alone; drawing is in axis.cpp.

#include "vgph/vggph.h"

#include <array>
#include <string>

namespace norva {

// val = frac * mult with frac in 1 to 10 and mult = +-10^tens. Zero and what is no finite number have no such
// form: frac is 0 and tens beyond 990.
struct val_parts {
    double frac = 0, mult = 1;
    int tens = 999;
};
val_parts getfm(double val);

// `val` moved up (dir above 0) or down by one unit in digit `dig` of its fraction. Zero stays.
double adj_precision(double val, int dig, int dir);

// The multiples of `inc` from t0 to t1, ends included, in that order: at most 50, the count is returned. A
// zero step gives the middle. `inc` has the sign of t1 - t0.
int cal_tics(double t0, double t1, double inc, std::array<double, 50>& vals);

// Chooses the step 1, 2 or 5 times a power of ten that gives a number of major values closest to `nreqlabs`
// (held to 2 to 45); of two as close, the smaller step. Fills lim0j, lim1j, inctype, inctens, incval,
// incsign, labvals, nlabs, or nospan with one value, where the limits are equal or differ too little (the
// average at 1e+11 spans or more). Numbers that cannot be split set axiserr and errstr as well.
void cal_inc(_vgaxisparm& a, int nreqlabs);

// The text of a tic label, edge blanks cut: as many decimals as the step has, or "%13.7lE" where that is
// long. Never
// "-0".
std::string tic_text(double value, int inctens);

} // namespace norva
