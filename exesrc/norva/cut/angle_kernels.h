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

// The last phase, as it was, and the whole cycles that it was given.
struct unwrapping {
    float raw;
    int turns;
};

struct angle_kernels {
    // re + i im = v, am(k) = |v|, ph(k) = sign arg(v)/(2 pi) cycles, v = x(k)*range*unit, for n complex
    // samples. Returns the largest amplitude, as bits.
    int (*parts)(const float* x, int n, float range, float unit, float sign, float* am, float* ph, float* re,
                 float* im);
    // Adds whole cycles to n phases, so that each is within half a cycle of the one before.
    unwrapping (*unwrap)(float* ph, int n, unwrapping so_far);
    // The first sample behind `from` that is above the level and `from` is not, or the other way; n for none.
    int (*end_of_run)(const float* am, int from, int n, float level);
    // The first of n samples with the value, from 0; 0 when there is none.
    int (*place)(const float* a, int n, float value);
    // am(k) = |x(k)*range|*unit.
    void (*amplitudes)(const float* x, int n, float range, float unit, float* am);
    // x(k) = factor w(k) y/|y|, y = x(k)*range; 0 stays.
    void (*equalize)(float* x, const float* w, int n, float range, float factor);
    // x(k) = am(k)*scale exp(sign 2 pi i ph(k)).
    void (*cartesian)(const float* am, const float* ph, int n, float scale, float sign, float* x);
    // x(k) *= exp(sign 2 pi i ph(k)).
    void (*turn)(float* x, int n, float sign, const float* ph);
    // x(k) *= (c0 + i s0) (cosine(k) + i sine(k)).
    void (*turn_run)(float* x, int n, float c0, float s0, const float* cosine, const float* sine);
    curve_extent (*extent)(const float* x, int n, float range);
    // x(k) = x(k)*range*unit for n floats.
    void (*multiply)(float* x, int n, float range, float unit);
    // y(k) = x(k) w(k) for n complex samples; y may be x.
    void (*weigh)(const float* x, const float* w, int n, float* y);
};
extern const angle_kernels angle_kernels_base, angle_kernels_avx2;

const angle_kernels& kernels_of_this_machine();

} // namespace norva
