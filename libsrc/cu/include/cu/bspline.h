#pragma once
// A B-spline basis over a knot list of the caller's own making.

namespace norva {

// Values and first derivatives of basis functions at many points, by the recurrence
//   N(I,1) = 1 for B(I) <= x < B(I+1), 0 elsewhere
//   N(I,K) = (x-B(I))/(B(I+K-1)-B(I)) N(I,K-1) + (B(I+K)-x)/(B(I+K)-B(I+1)) N(I+1,K-1)
// in which a term over equal knots is left out.
//   X    in   NX points
//   B    in   NB+NC knots that do not fall
//   NC   in   order, degree + 1
//   S    out  value of function I at point J: S[(I-1)*NX + J-1], I = 1..NB, J = 1..NX
//   D    out  its first derivative, likewise; 0 for order 1
// The intervals are open at the right: at the last knot every value is 0. Does nothing for an NX, NB or NC
// below 1.
void bspline(const double* X, int NX, const double* B, int NB, int NC, double* S, double* D);

} // namespace norva
