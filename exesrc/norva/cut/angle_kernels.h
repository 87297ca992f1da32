#pragma once
// The loops over angles that curve.cpp stands on, for this processor: compiled once for all and once for
// those with AVX2, with the same arithmetic, so that every processor gives the same bits. Free of the
// standard library on purpose: what is compiled for one processor must not leave inline code behind for
// others.

namespace norva {

// Largest of a curve, as bits, which compare like the magnitudes.
struct curve_extent {
    int power; // re*re + im*im of x(k)*range
    int part;  // real or imaginary part of x(k)
};

struct angle_kernels {
    // am(k) = |v|, ph(k) = sign arg(v)/(2 pi) cycles, re(k) + i im(k) = v = x(k)*range*unit for n complex
    // samples; re and im may both be null. Returns the largest amplitude, as bits.
    int (*parts)(const float* x, int n, float range, float unit, float sign, float* am, float* ph, float* re,
                 float* im);
    // re(k) + i im(k) = x(k)*range*unit.
    void (*split)(const float* x, int n, float range, float unit, float* re, float* im);
    // Unwraps the phases of the samples above the level, of which the first and the last one of n are, and
    // lays those of the others on lines between them. `from` is room for n numbers.
    void (*join)(const float* am, float level, int n, float* ph, float* from);
    // The first of n samples with the value, from 0; 0 when there is none.
    int (*place)(const float* a, int n, float value);
    // x(k) = |x(k)*range|*back.
    void (*rectify)(float* x, int n, float range, float back);
    // x(k) = factor w(k) y/|y|, y = x(k)*range; 0 stays.
    void (*equalize)(float* x, const float* w, int n, float range, float factor);
    // x(k) = am(k) exp(sign 2 pi i ph(k)).
    void (*cartesian)(const float* am, const float* ph, int n, float sign, float* x);
    // x(k) *= exp(sign 2 pi i ph(k)).
    void (*turn)(float* x, int n, float sign, const float* ph);
    // x(k) *= (c0 + i s0) (cosine(k) + i sine(k)).
    void (*turn_run)(float* x, int n, float c0, float s0, const float* cosine, const float* sine);
    curve_extent (*extent)(const float* x, int n, float range);
    // x(k) = x(k)*range*unit for n floats.
    void (*multiply)(float* x, int n, float range, float unit);
    // y(k) = x(k) w(k) for n complex samples; y may be x.
    void (*weigh)(const float* x, const float* w, int n, float* y);
    // x(k) *= from(k)*factor*to(k).
    void (*reweigh)(float* x, const float* from, const float* to, int n, float factor);
};
extern const angle_kernels angle_kernels_base, angle_kernels_avx2;

const angle_kernels& kernels_of_this_machine();

} // namespace norva
