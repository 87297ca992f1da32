#pragma once
// The transform behind all routines of signal/fft.h: any length, in place, either sign.

namespace norva {

// Transform of n >= 1 complex samples by the exponent sign of `sign`, unscaled.
void transform(float* a, int n, int sign);

} // namespace norva
