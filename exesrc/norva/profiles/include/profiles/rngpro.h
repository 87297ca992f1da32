#pragma once
// Range profiles: the transform of each record of the raw data across frequency.

namespace norva {

constexpr int RNGPRO_MAX_NR = 4096;
constexpr int RNGPRO_MAX_NF = 1024;

// One profile per record, unscaled:
//   B(j,r) = sum k=1..NF of W(k) A(j,k) exp(IS 2 pi i (k-1)(r-1)/NR),  W = ham(NF),
// after which the halves of each row are exchanged: range 0 stands at gate NR/2+1.
//   a   in   nt records of nf complex samples, frequency fastest
//   nr  in   gates per profile after padding, at least nf; above 4096: "STOP #2 IN RNGPRO"
//   nf  in   frequencies; above 1024: "STOP #3 IN RNGPRO"
//   is  in   exponent sign, +1 or -1
//   r1  out  range of gate 1, in gates: -nf/2 (for an odd nr the value that puts range 0 at gate nr/2+1)
//   dr  out  spacing, in gates: nf/nr
//   b   out  nt rows of 2*nr floats
//   p   out  when given, the power re*re + im*im of each sample of b: nt rows of nr floats
// One gate is the delay 1/(nf df) microseconds, df in MHz. Progress is reported for every record i with
// i mod (nt/50) = 1.
void rngpro(const float* a, int nf, int nt, int nr, int is, float* r1, float* dr, float* b,
            float* p = nullptr);

} // namespace norva
