#pragma once
// Arithmetic of motion compensation: a history of delays, one per record, taken out of the raw data. Delays
// are in microseconds and frequencies in MHz, so that delay times frequency is a number of cycles.

namespace norva {

constexpr int RNGCOR_MAX_NT = 8192;
constexpr int RNGCOR_MIN_NT = 7;

// Multiplies every sample by exp(+i 2 pi f D), in place.
//   x       nt records of nf complex samples, frequency fastest
//   f1, df  first frequency and step, MHz
//   rh      part of the record interval that the sweep over the nf frequencies takes: sample i (from 0) of a
//   record
//           is measured the fraction i*rh/nf of the interval after the record. "STOP IN MOCOMP" unless 0 <=
//           rh <= 1
//   d       nt + 1 delays, microseconds, the last one interval past the last record; interpolated by a cubic
// Delay and cycles are formed in double precision up to the remainder of one cycle. nt below 2 would need a
// third delay: nothing is done for nt < 1, and for nt = 1 the two delays are taken as a line.
void mocomp(float* x, int nf, int nt, float f1, float df, float rh, const double* d);

// The delay history t (nt values, microseconds, tr apart) moved by the first terms of the effect that a
// sample at a higher frequency is taken later: T + S, S = -(T/2+TS) * sum j=1..ndrv of (-TS)^(j-1) T^(j). b
// and nb have no effect. "STOP IN RNGCOR" for nt above 8192, "stop in rngcor" for nt below 7.
void rngcor(double* t, int nt, double tr, double ts, int ndrv, const double* b, int nb);

// Derivative b of order ndrv (1..7, else "stop in drv") of npts values a, spaced dt: central differences, and
// one-sided differences of the same order at the ends. npts must be above ndrv. b must not be a.
void drv(const double* a, double* b, double dt, int ndrv, int npts);

// The two time constants of rngcor, microseconds: the repetition interval wfri (seconds), and the delay of
// the centre frequency fc against a sweep of bandwidth bw (MHz) in the pulse length plen (seconds); 0 without
// a bandwidth.
void rngcor_get(float wfri, float bw, float fc, float plen, double* tr, double* ts);

} // namespace norva
