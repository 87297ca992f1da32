#pragma once
// Solution of banded systems of equations in double precision, with the calling lists and conventions of the
// published LINPACK routines of these names (Dongarra, Bunch, Moler, Stewart, LINPACK Users' Guide, 1979,
// chapter 2), and the four vector operations they stand on (Lawson et al., Basic Linear Algebra Subprograms,
// 1979).

namespace norva {

// Factors a matrix of order n with ml diagonals below the main one and mu above, by elimination with row
// exchanges.
//   abd   in   element (i, j) of the matrix in row ml+mu+1+i-j (from 1) of column j; columns are lda apart,
//   lda at least
//              2*ml+mu+1, the first ml rows of a column need not be set
//         out  the upper triangular factor and the multipliers
//   ipvt  out  n pivot rows, counted from 1
//   info  out  0, or the last k whose pivot is exactly zero: dgbsl would divide by it
void dgbfa(double* abd, int lda, int n, int ml, int mu, int* ipvt, int* info);

// Solves A x = b (job = 0) or transpose(A) x = b (any other job) with the factors of dgbfa; b receives x.
void dgbsl(const double* abd, int lda, int n, int ml, int mu, const int* ipvt, double* b, int job);

// On n elements, incx and incy apart; a negative increment walks from the far end.
double ddot(int n, const double* dx, int incx, const double* dy, int incy);     // sum of dx*dy
void daxpy(int n, double da, const double* dx, int incx, double* dy, int incy); // dy += da*dx
void dscal(int n, double da, double* dx, int incx);                             // dx *= da, incx above 0
int idamax(int n, const double* dx,
           int incx); // first index, from 1, of the largest |dx|; 0 for n < 1 or incx < 1

} // namespace norva
