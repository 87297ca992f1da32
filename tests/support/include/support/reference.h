#pragma once
// Independent truth for numeric tests: noise, and transforms summed directly in double precision.

#include <complex>
#include <cstddef>
#include <vector>

namespace norva::test {

// n floats evenly spread over -1..1, the same ones for the same seed.
std::vector<float> noise(std::size_t n, unsigned seed);

// sum n=0..N-1 of x(n) exp(+2 pi i n k / N) for every k, summed directly; x is N interleaved complex samples.
// The transform by the other sign has these values at N-k.
std::vector<std::complex<double>> direct_transform(const float* x, int n);

} // namespace norva::test
