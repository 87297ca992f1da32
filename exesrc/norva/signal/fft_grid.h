#pragma once
// The two directions of a two-dimensional transform by themselves, over all cores. ny rows of nx complex
// samples.

namespace norva {

// The stops of fft2d. A sign of 0 stands for a direction that is left out.
void check_grid(int nx, int ny, int isx, int isy);

void transform_rows(float* a, int nx, int ny, int sign);

// Only the columns first..last-1, counted from 0.
void transform_columns(float* a, int nx, int ny, int first, int last, int sign);

} // namespace norva
