#pragma once
// The inner loop of motion compensation: one record turned by the phases of its delays. Free of the standard
// library on purpose: phase_kernel.h is compiled for several processors, and must not leave behind inline
// code that others could pick up.

namespace norva {

// Samples are taken eight at a time; the tables of a record are padded to whole eights.
constexpr int phase_step = 8;

struct phase_tables {
    int nf;                   // samples of a record
    const double* frequency;  // of each sample, MHz
    const double* weights[4]; // of the four delays around the record, for each sample
};

// Multiplies nf interleaved samples by exp(2 pi i f D), D = sum of weights times the four delays a,
// microseconds. f D is formed in double precision and brought to one cycle before the phase goes on in
// single.
using phase_runner = void (*)(const phase_tables& tables, const double* a, float* x);
void turn_record_avx2(const phase_tables& tables, const double* a, float* x);
void turn_record_base(const phase_tables& tables, const double* a, float* x);

} // namespace norva
