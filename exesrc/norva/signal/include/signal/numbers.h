#pragma once
// Small whole-number and frequency helpers that the numeric kernels and the windows share.

namespace norva {

// Nearest whole number, halves away from zero; outside the range of int the nearest int, and 0 for NaN.
int nint(double x);

// Smallest power of two not below n, and never less than 2: the transform length for n samples. The result is
// limited to 2^30.
int iradx2(int n);

// The next length made of small factors: the first integer not below num whose only prime factors are 2, 3
// and 5; 2 for a num below 3. niceno is the same under the name that the imaging routines use.
int mynino(int num);
int niceno(int num);

// num has no prime factor other than 2, 3 and 5 (and is one of these, or a product of them).
bool gnum(int num);

// Centre frequency of nf samples from f0 in steps of df, in their unit: f0 + 0.5*(nf-1)*df.
float cfreq(float f0, float df, int nf);

// Greatest common divisor; igcd(m, 0) is |m|.
int igcd(int m, int n);

} // namespace norva
