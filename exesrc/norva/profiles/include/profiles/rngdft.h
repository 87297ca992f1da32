#pragma once
// Estimates of the motion in a block of raw data: drift from record to record, and the range centroid.

namespace norva {

constexpr int RNGDFT_MAX_N = 8192;
constexpr int RNGDFT_MAX_LAG = 10;

// Drift per record, in gates, from the summed power spectrum of the products of each record with the one lag
// records before it.
//   x    in   nt records of nf complex samples, frequency fastest
//   dft  out  drift, gates per record; a drift above nf/2 over lag records folds to a negative value
//   slr  out  largest sidelobe of that spectrum relative to its peak, in power; 0 when there is none
// nt <= lag gives 0 and 0. Stops with an empty text when iradx2(8*nf) is above 8192 (nf above 1024) or lag is
// outside 1..10.
void rngdft(const float* x, int nf, int nt, int lag, float* dft, float* slr);

// Range centroid in gates, nf/(2 pi) times the angle of the summed products of each sample with the conjugate
// of the next frequency: positive for a phase that falls with frequency.
float rngcen(const float* a, int nf, int nt);

} // namespace norva
