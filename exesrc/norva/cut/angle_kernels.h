#pragma once
// The loops over angles that curve.cpp stands on, for this processor: compiled once for all and once for
// those with AVX2, with the same arithmetic, so that every processor gives the same bits. Free of the
// standard library on purpose: what is compiled for one processor must not leave inline code behind for
// others.

namespace norva {

struct angle_kernels {
    // am(k) = |x(k)|, ph(k) = sign atan2(im, re)/(2 pi) cycles, for n complex samples.
    void (*polar)(const float* x, int n, float sign, float* am, float* ph);
    // The same of x(k)*range*unit, with its real and imaginary parts.
    void (*parts)(const float* x, int n, float range, float unit, float sign, float* am, float* ph, float* re,
                  float* im);
    // am(k) = |x(k)|.
    void (*amplitudes)(const float* x, int n, float* am);
    // x(k) = am(k) exp(sign 2 pi i ph(k)).
    void (*cartesian)(const float* am, const float* ph, int n, float sign, float* x);
    // x(k) *= exp(sign 2 pi i ph(k)).
    void (*turn)(float* x, int n, float sign, const float* ph);
    // The largest re*re + im*im of x(k)*range, as bits.
    int (*largest_power)(const float* x, int n, float range);
    // The largest |x(k)| of n floats, as bits, which compare like the magnitudes.
    int (*largest_bits)(const float* x, int n);
    // x(k) = x(k)*range*unit for n floats.
    void (*multiply)(float* x, int n, float range, float unit);
};
extern const angle_kernels angle_kernels_base, angle_kernels_avx2;

const angle_kernels& kernels_of_this_machine();

} // namespace norva
