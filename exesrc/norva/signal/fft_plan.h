#pragma once
// How the transform of one length is done: its passes with their tables, or a convolution over a longer
// transform.

#include "aligned_buffer.h"
#include "fft_pass.h"

#include <vector>

namespace norva {

struct fft_plan {
    int n = 0;
    fft_schedule schedule{};
    fft_runner run = nullptr;
    std::vector<fft_pass> passes; // the schedule points to them
    aligned_buffer tables;

    // Lengths with a large prime factor: convolution with a chirp (Bluestein 1970),
    //   X(k) = c(k) sum n of x(n) c(n) conj(c(k-n)),   c(n) = exp(-pi i n n / N)
    const fft_plan* inner = nullptr; // the longer transform, null for lengths done by passes
    aligned_buffer chirp;            // c(0..N-1), interleaved
    aligned_buffer spectrum; // transform of conj(c), indices of both signs, divided by the inner length
};

// The plan of a length, n >= 2: made at the first call, kept for the life of the program. Any thread.
const fft_plan& plan_for(int n);

// Transform of n complex samples by the exponent sign of `sign`, unscaled, in place. n < 2 does nothing.
void transform(float* a, int n, int sign);

// The same with the plan in hand, from one array to another, or in place.
void transform(const fft_plan& plan, const float* in, float* out, int sign);

} // namespace norva
