#pragma once
// Peaks of curves and images, measured to a fraction of a sample. Positions and indices count from 1; a peak
// that cannot be measured is 0.0. The circular search with indices from 0 (pksearch) is in gen/pksearch.h.

namespace norva {

// Index of the largest of a(1..n) that exceeds 0; the first of equals, and 1 when none exceeds 0.
int kpeak(const float* a, int n);

// Position of the largest element, refined by the parabola through its neighbours. pkloc: 0.0 when it is the
// first or last; pklocr: the neighbours wrap around. 0.0 when no element exceeds 0.
float pkloc(const float* a, int n);
float pklocr(const float* a, int n);

// Refined position of the peak reached by climbing from element k.
float pkpos(const float* a, int n, int k);

// Width of the peak at element ip, at the fraction a0 of its height; wl and wr are the parts left and right
// of its refined position, written only on success.
float pkwdth(const float* a, int n, int ip, float a0, float* wl, float* wr);

// Local maxima above amn of a real image of ny rows of nx, periodic both ways: samples strictly greater than
// their eight neighbours. lp receives the linear indices (j-1)*nx + i in falling order of height, np their
// count, at most npm; of equals the later one comes first. lp must have room for npm + 1.
void peaks(const float* a, int nx, int ny, int npm, float amn, int* lp, int* np);

// Position and amplitude of a peak of the complex image c, from the linear index k0: a climb over the samples
// that stays inside the image, then ni halvings of a grid of 3 by 3 interpolated values (the sum of imgint
// with 15 taps), which gives the position within 0.5^ni of a sample, for ni up to 7. The kernel is tabulated
// eight times as finely as by imgint, whose straight lines between the entries draw a peak to the nearest
// sixteenth of a sample.
void pk2dpos(const float* c, int nx, int ny, int k0, int ni, float* xp, float* yp, float* ap);

} // namespace norva
