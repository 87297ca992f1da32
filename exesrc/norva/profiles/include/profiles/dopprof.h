#pragma once
// Doppler profiles: spectra of a complex time series in a Hamming window that slides along it.

namespace norva {

constexpr int DOPPROF_MAX_NF = 2048;
constexpr int DOPPROF_MAX_NI = 512;

// Positions of a window of ni samples that moves by lg along nt samples, which is the number of profiles that
// dopprof forms; 0 when the series is too short for one.
int dopprof_count(int nt, int ni, int lg);

// One power spectrum for each window position, unscaled:
//   B(i,d) = |sum m=1..NW of H(m) A(K+m-1) exp(IS 2 pi i (m-1)(d-1)/NF)|^2,  H = ham(NW),
// after which the halves of each row are exchanged: Doppler 0 stands at element NF/2+1. The window of row i
// has its centre at the record T = T1 + (i-1) LG. Near the ends of the series it is shortened to
// NW = min(2T-1, 2(NT-T)+1, NI) samples, so that its centre stays there.
//   a    in   nt complex samples
//   ni   in   samples of the window, at least 1; above 512: "STOP #3 IN DOPPROF"
//   nf   in   transform length; above 2048: "STOP #2 IN DOPPROF"; below ni: "STOP #4 IN DOPPROF"
//   lg   in   records from one position to the next, at least 1
//   is   in   exponent sign, +1 or -1
//   nc   out  number of rows, dopprof_count(nt, ni, lg)
//   b    out  nc rows of nf floats
//   w    out  nc values NW/NI
//   t1   out  centre of the first window, in records counted from 1: a half when ni is even. What the
//             positions leave over is spread evenly to both ends
// Element d (from 1) is the frequency (d-1-nf/2)/nf cycles per record, seen with exponent sign is. Progress
// is reported.
void dopprof(const float* a, int nt, int ni, int nf, int lg, int is, int* nc, float* b, float* w, float* t1);

} // namespace norva
