#pragma once
// One call for a banded system of equations kept row by row, on top of the routines of gen/band.h.

namespace norva {

// Solves A a = b for a matrix of order n with `lower` diagonals below the main one and `upper` above.
//   q   in   n rows of w = lower+upper+1 values: element (i, j) of A, from 0, stands at q[i*w + lower + j -
//   i].
//            Places of a row that lie outside the matrix are not read.
//   b   in   n values
//   a   out  n values; as it was on failure
// False when a pivot is exactly zero, or n < 1, or lower or upper is negative.
bool solve_banded_system(const double* q, const double* b, double* a, int n, int lower, int upper);

} // namespace norva
