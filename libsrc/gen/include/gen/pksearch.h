#pragma once
// Peaks of a circular curve. Indices count from 0.

namespace norva {

// Peaks of the circular curve y(0..n-1) among the samples from i0 towards i1 (either direction, at most n of
// them): xout receives the refined positions, yout the heights, at most mx each, in falling order of the
// samples' heights; returns their count. A plateau is one peak at its middle (or left of it). n < 4 gives 0.
int pksearch(const float* y, int n, int mx, int i0, int i1, float* xout, float* yout);

// Index i brought into 0..n-1.
int ixcir(int i, int n);

// Shape of a circular curve at sample i: the samples equal to it on each side (nl, nr), and whether the first
// that differs is lower (-1) or higher (+1) than it (sl, sr). All alike: +1, +1 and n, n.
void curveshape(const float* y, int n, int i, int* sl, int* sr, int* nl, int* nr);

// Parabola through y(0..2) at the positions -1, 0, 1: offset and height of its vertex, and its full width at
// half that height (0 when it has none). Returns 1, or -1 when the samples lie on a line (then 0, y(1), 0).
int peakfit3(const float* y, float* xoff, float* ypk, float* width);

} // namespace norva
