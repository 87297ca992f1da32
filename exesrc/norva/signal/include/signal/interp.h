#pragma once
// Reading a sampled function between its samples. Positions count from 1; complex samples are interleaved
// floats.

namespace norva {

constexpr int IMGINT_TAPS = 15;      // what every caller of imgint passes as nt
constexpr int IMGINT_MAX_TAPS = 64;  // more act as 64
constexpr int TABLE_PER_SAMPLE = 16; // table values per sample of the grid

// sin(pi x)/(pi x), and exactly 1 for |x| <= 0.0001.
float sinc(float x);

// Kernel tables with 16 values per sample, r[0] = 1 for distance 0:
//   tsinc   cos(pi x/(2m)) sinc(x)/sinc(x/(2m)), a tapered sinc that reaches 0 at x = m; writes 16*m values
//   samp    sin(n pi x)/(n sin(pi x)), exact for n samples of a periodic function, n odd; writes 8*n values
void tsinc(float* r, int m);
void samp(float* r, int n);

// Value of such a table at the distance x >= 0 samples, linear between its entries.
float rint(const float* r, float x);

// Value c (real, imaginary) of a complex image of ny rows of nx samples, periodic both ways, at the position
// (x0, y0), from nt samples to each side. Even sizes, and odd ones above 2*nt, use the tapered sinc; smaller
// odd ones the exact kernel. Products of far taps (distances that multiply to more than 40) are left out. The
// tables are kept by size: a later call in the same thread with the same size keeps the taps of the first.
void imgint(const float* a, int nx, int ny, float x0, float y0, int nt, float* c);

// Value of a(1..n), n >= 3, at the position u: the parabola through the three nearest samples.
float cubint(const float* a, int n, float u);

// b(i) = a at b1 + (i-1)*db, i = 1..nb: linear between samples, and along the line of the first or last two
// samples outside. na >= 2.
void resamp(const float* a, int na, int nb, float b1, float db, float* b);

// Running integral d of the rate dr over the times t, n values, by trapezoids, less its value at the middle.
// d may be dr.
void drint(const double* dr, const double* t, int n, double* d);

} // namespace norva
