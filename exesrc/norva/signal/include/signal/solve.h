#pragma once
// Small dense systems of equations and polynomial fits. Matrices are stored by columns: element (i, j) of a
// matrix with leading dimension nn at a[(j-1)*nn + (i-1)].

namespace norva {

// Solves A x = b by elimination with column pivots. a is overwritten, b receives x. flag: 0.0, or 1.0 when
// the matrix is singular (b is then undefined). n by n, leading dimension nn >= n.
void simeq(float* a, float* b, int n, int nn, float* flag);
void dsimeq(double* a, double* b, int n, int nn, double* flag);

// Determinant of the norder by norder matrix, which is overwritten.
double determ(double* array, int norder);

// Least-squares polynomial y = sum j=1..nterms of a(j) x^(j-1) through npts points. mode 1: weights
// 1/sigmay^2; 0: weights 1; -1: weights 1/y (1/|y| below zero, 1 at zero). chisqr: reduced chi-square, 0
// without degrees of freedom. A singular system gives a = 0.
void polfit(const float* x, const float* y, const float* sigmay, int npts, int nterms, int mode, float* a,
            float* chisqr);

constexpr int BSTFIT_MAX_M = 10;
constexpr int BSTFIT_MAX_N = 16000;

// Least-squares polynomial of m coefficients through n equally spaced samples; the variable is the sample
// number counted from 0, the constant comes first. "STOP IN BSTFIT...M>10", "STOP IN BSTFIT...N>16000".
void bstfit(const float* x, int n, int m, float* a);

} // namespace norva
