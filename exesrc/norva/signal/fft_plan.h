#pragma once
// How the transform of one length is done: its passes with their tables, or a convolution over a longer
// transform.

#include "fft_pass.h"
#include "signal/aligned_buffer.h"

#include <cstddef>
#include <vector>

namespace norva {

struct fft_plan {
    int n = 0;
    fft_schedule schedule{};
    fft_runner run = nullptr;
    fft_column_runner run_columns = nullptr;
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

// The plan for eight columns at once, 2 <= n <= longest_column.
constexpr int longest_column = 8192;
const fft_plan& column_plan_for(int n);

// Transform of n complex samples by the exponent sign of `sign`, unscaled, in place. n < 2 does nothing.
void transform(float* a, int n, int sign);

// The same with the plan in hand, from one array of n samples to another, or in place; samples from `used` on
// must be zero.
void transform(const fft_plan& plan, const float* in, int used, float* out, int sign);

// Transforms the columns first..last-1 of n rows of interleaved samples, `row` floats apart, in place. Which
// columns are taken together makes no difference to the result.
void transform_adjacent_columns(float* a, std::ptrdiff_t row, int n, int first, int last, int sign);

} // namespace norva
