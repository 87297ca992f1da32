#pragma once
// Changing the size of a two-dimensional complex data set, in place, through its transform.

namespace norva {

// Zero fill of a spectrum whose origin stands at element 1: ny rows of nx samples become my rows of mx,
// corners kept in the corners. The array must hold mx*my samples. "STOP IN ZFIL2D" when mx < nx or my < ny.
void zfil2d(float* a, int nx, int ny, int mx, int my);

// Reduces nt rows of nf samples to mt rows of mf by cutting the transform to its low frequencies. A direction
// whose size does not change is not transformed; the result is always scaled by 1/(nf*nt). "STOP IN DECIMATE"
// when a new size is above the old or not positive. Sizes limited as in fft2d.
void decimate(float* a, int nf, int nt, int mf, int mt);

} // namespace norva
