#pragma once
// Transposition of two-dimensional arrays.

namespace norva {

// b(k, i) = a(i, k): ny rows of nx values become nx rows of ny. trnpoc moves interleaved complex samples. b
// must not overlap a.
void trnpos(const float* a, int nx, int ny, float* b);
void trnpoc(const float* a, int nx, int ny, float* b);

} // namespace norva
