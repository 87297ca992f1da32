#pragma once
// Amplitude weights that hold down the sidelobes of a transform, and their inverses. Positions count from 1.

namespace norva {

// Hamming weights at the centres of n equal cells: W(k) = 0.54 + 0.46 cos(2 pi x), x = -(1-1/n)/2, ..., in
// steps of 1/n. Symmetric, not normalised; n = 1 gives 1.
void ham(float* w, int n);

// The same values written about the centre: 0.54 + 0.46 cos(2 pi (k-(n+1)/2)/n). zf has no effect.
void hamwt(float* w, int n, int zf);

// Value n of ncap of a three-term Taylor weight: 1 + sum m=1..3 of F(m) cos(2 pi m (n-(ncap+1)/2)/ncap).
float taylor(int n, int ncap);

// Value index of ntotal of a tabulated weight, interpolated linearly from 100 values.
float asarwt(int index, int ntotal);

// Bessel function J0 by the polynomials of Abramowitz and Stegun, 9.4.1 and 9.4.3.
double besj0(double x);

// Circular Taylor weight after Taylor (1960): n radial samples from radius 0, where it is 1, to radius 1;
// sidelobe level slrdb in dB, nbar equal sidelobes. "STOP IN TAYCNB" for nbar above 15.
void taycnb(float slrdb, int nbar, int n, float* w);

// Circular Taylor weight (40 dB, nbar 5) at the squared radius rsq, 1 = edge of the aperture, 0 beyond. Two
// table look-ups with linear interpolation over 100 intervals.
float cirwght(float rsq);

// The circular weight projected on one axis, at the position r, 1 = edge; 0 from the edge on. Not normalised.
float diawght(float r);
// The same at n positions first + k*step, step >= 0.
void diawght(double first, double step, int n, float* w);

// Window w of nw values that sum to 1, and dw, the factors that restore the level of its centre (sample
// nw/2+1; 0 where the weight is not positive). lw mod 10: 0 or less uniform, 1 projected circular, 2 Hamming
// with 0.005 at both ends, 3 Blackman; above 3 w is taken as it stands. lw >= 10 halves both ends. The grid
// runs from -0.5 in steps of 1/nw, and is centred when lw < 10 and nw is odd.
void weight(float* w, float* dw, int nw, int lw);

// Multiply, or divide, ny rows of nx complex samples by the circular weight around sample 1, with wrap-around
// (the order of a transform's input): the aperture's edge is at half the extent. Division gives 0 where the
// weight is 0. kw = 0 does nothing; kw > 1 is "STOP IN WGHT2D" or "STOP IN DWGHT2D".
void wght2d(float* a, int nx, int ny, int kw);
void dwght2d(float* a, int nx, int ny, int kw);

// Largest amplitude after a Hamming weight has been taken out of amp, between the elements lt1 and lt2;
// startx and endx are the element numbers of amp's first and last value. The weight has lendw points from
// element limit1. Only a dewt that starts with "H" builds it; with any other the weights of the last call
// stay.
void deham2(int limit1, int limit2, int lendw, const float* amp, int startx, int endx, const char* dewt,
            int* ierr, int lt1, int lt2, float* ampmax);

// The same with the Taylor weight, or the tabulated one when dtype starts with "A" or "a". Divides without
// testing the weight for zero.
void detay2(int limit1, int limit2, int lendw, const float* amp, const char* dtype, int startx, int endx,
            int lt1, int lt2, float* ampmax);

} // namespace norva
