#pragma once
// Discrete Fourier transforms of complex samples in single precision, unscaled unless said otherwise:
//
//   C(k) = sum n=0..N-1 of A(n) exp(sign 2 pi i n k / N)
//
// Complex arrays are interleaved floats (real, imaginary). The error of a transform of N points stays below
// 4 * 1.2e-7 * log2(N) of its largest value. All routines are reentrant; a bad length or sign is a fault of
// the calling code and ends the program with the text given.

#include "signal/numbers.h"

namespace norva {

constexpr int GFFT_MAX_MIXED = 10000; // longest transform of gfft whose length is not a power of two
constexpr int FFT2D_MAX_NY = 8192;    // longest column of fft2d

// Transform of n complex samples in place, exponent sign is (+1 or -1). Every power of two, and any other
// length up to 10000. "STOP IN GFFT" for another sign or a longer mixed length. n < 1 does nothing.
void gfft(float* a, int n, int is);

// The same from one array of n samples to another, where the samples of `in` are zero from sample `used` on,
// counted from 0. Faster the more there are of them. The stops of gfft.
void gfft_padded(const float* in, int used, float* out, int n, int is);

// In place, n a power of two, else "STOP IN CFFT". key >= 0 is exponent sign +, key < 0 is -.
void cfft(float* a, int n, int key);

// In place, element i of the sequence at a[i*|key|] and b[i*|key|], i from 0: interleaved data are passed as
// fft2(a, a + 1, nx, 2*is), separate arrays as fft2(re, im, nx, is). The sign of key is the exponent sign.
// nx <= 1 returns at once; another nx that is no power of two is "STOP IN FFT2".
void fft2(float* a, float* b, int nx, int key);

// Any length nn[0], real and imaginary parts in separate arrays, in place. ifrwd 0 is exponent sign +, any
// other is -. ndim < 1 returns with nothing done; only ndim = 1 and icplx = 1 are served ("STOP IN FOURT"
// otherwise). workr, worki are not needed any more and may be null.
void fourt(float* datar, float* datai, const int* nn, int ndim, int ifrwd, int icplx, float* workr,
           float* worki);

// Two-dimensional transform in place: ny rows of nx samples; isx is the sign along the rows, isy along the
// columns, and 0 leaves out that direction. "STOP IN FFT2D" for ny above 8192, and the stops of gfft.
void fft2d(float* a, int nx, int ny, int isx, int isy);

// Centred transform of a into c (n complex samples each, n a power of two, not the same array). Sample n/2
// of a counts as the origin; zero frequency comes to sample idc of c, counted from 0. Exponent sign -1, or
// kss where that is not 0.
void transf(const float* a, int n, int idc, float* c, int kss = 0);

// Inverse of transf, from c into a, scaled by 1/n. Exponent sign +1, or -kss where kss is not 0.
void transi(float* a, int n, int idc, const float* c, int kss = 0);

} // namespace norva
