#pragma once
// Estimate of a Doppler rate from a complex time series.

namespace norva {

// Doppler rate of x, in cycles per record per record, from -0.5 up to 0.5: the frequency of the products of
// each sample with the conjugate of the one before it.
//   x    in    nt complex samples; what is not finite does not count
//   y    work  nft complex samples; nft is at least nt and a length that gfft takes
//   dft  out   0 when nothing can be measured
// A phase of pi r i^2 at record i has the rate r.
void dopdft(const float* x, float* y, int nt, int nft, float* dft);

} // namespace norva
