#pragma once
// The inner loop of polar formatting: the samples of one record summed into one row of image points. Free of
// the standard library on purpose: polar_sum_kernel.h is compiled for several processors, and must not leave
// behind inline code that others could pick up.

namespace norva {

constexpr int polar_cycle = 8000; // steps of a cycle
constexpr int polar_step = 16;    // points are taken sixteen at a time; rows are padded to whole sixteens

// Phases (eight-thousandths of a cycle, before the remainder) up to which the kernels reduce exactly.
constexpr float polar_phase_limit = 1e9F;

struct polar_record {
    int n;              // samples inside the aperture
    const float* con1;  // of each, 16000 F / C: the phase of a metre, both ways
    const float* re;    // weighted samples
    const float* im;    //
    const float* cycle; // pairs of cosine and sine of 2 pi k / 8000 for k = 0..8000
};

// Adds sample times exp(2 pi i A / 8000) to each of n points z (interleaved), sample after sample. A = range
// times con1 minus con2, in single precision with a rounding after each operation, brought to 0..8000 and
// rounded to the nearest whole number, halves up. n is a multiple of polar_step.
using polar_runner = void (*)(const polar_record& record, const float* range, float con2, float* z, int n);
void polar_sum_avx2(const polar_record& record, const float* range, float con2, float* z, int n);
void polar_sum_base(const polar_record& record, const float* range, float con2, float* z, int n);

} // namespace norva
