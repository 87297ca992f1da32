// See angle_kernels.h. Written so that a compiler works on several samples at once: no calls, no branches.
#include "angle_kernels.h"

namespace norva {
namespace {

inline float magnitude(float v) {
    return __builtin_fabsf(v);
}

// atan2(im, re)/(2 pi), within 2e-8 cycles before rounding; 0 for the origin. atan(t)/(2 pi) by a polynomial
// of least greatest error for |t| <= tan(pi/8), after the octant has been turned to the axis.
inline float cycles_of(float re, float im) {
    const float ax = magnitude(re), ay = magnitude(im);
    const float larger = ax > ay ? ax : ay, smaller = ax > ay ? ay : ax;
    const bool beyond = smaller > 0.41421356F * larger;
    const float above = beyond ? smaller - larger : smaller;
    const float below = beyond ? smaller + larger : larger;
    const float t = above / (below > 0 ? below : 1.0F);
    const float z = t * t;
    float c =
        t * (0.15915494F + z * (-0.053050798F + z * (0.031790357F + z * (-0.022046282F + z * 0.012711284F))));
    c += beyond ? 0.125F : 0.0F;
    c = ay > ax ? 0.25F - c : c;
    c = re < 0 ? 0.5F - c : c;
    return im < 0 ? -c : c;
}

// What |x| < 2^22 is when a number this large was added and taken away: rounded to a whole number.
constexpr float ROUNDER = 12582912.0F;
constexpr float ROUNDS_BELOW = 4194304.0F; // an angle beyond holds no part of a cycle worth keeping

struct phasor {
    float re, im;
};

// exp(2 pi i cycles), within 2e-7. The angle is brought to an eighth of a cycle from an axis.
inline phasor phasor_of(float cycles) {
    const float whole = (cycles + ROUNDER) - ROUNDER;
    const float part = magnitude(cycles) < ROUNDS_BELOW ? cycles - whole : cycles - cycles;
    const float quarter = (4 * part + ROUNDER) - ROUNDER;
    const float f = part - 0.25F * quarter, z = f * f;
    const float s = f * (6.2831853F + z * (-41.341661F + z * (81.592354F + z * -75.393563F)));
    const float c = 1.0F + z * (-19.739209F + z * (64.939309F + z * (-85.442314F + z * 59.203281F)));
    // quarter is -2..2: the axis that f is counted from.
    const bool upright = quarter == 1.0F || quarter == -1.0F;
    const float re = upright ? s : c, im = upright ? c : s;
    const bool back = quarter == 2.0F || quarter == -2.0F;
    return {back || quarter == 1.0F ? -re : re, back || quarter == -1.0F ? -im : im};
}

inline int bits_of(float v) {
    int bits;
    __builtin_memcpy(&bits, &v, sizeof bits);
    return bits & 0x7fffffff;
}

void polar(const float* x, int n, float sign, float* am, float* ph) {
    for (int k = 0; k < n; k++) {
        const float re = x[2 * k], im = x[2 * k + 1];
        am[k] = __builtin_sqrtf(re * re + im * im);
        ph[k] = sign * cycles_of(re, im);
    }
}

void parts(const float* x, int n, float range, float unit, float sign, float* __restrict am,
           float* __restrict ph, float* __restrict re, float* __restrict im) {
    for (int k = 0; k < n; k++) {
        const float a = x[2 * k] * range * unit, b = x[2 * k + 1] * range * unit;
        re[k] = a;
        im[k] = b;
        am[k] = __builtin_sqrtf(a * a + b * b);
        ph[k] = sign * cycles_of(a, b);
    }
}

void amplitudes(const float* x, int n, float* am) {
    for (int k = 0; k < n; k++) am[k] = __builtin_sqrtf(x[2 * k] * x[2 * k] + x[2 * k + 1] * x[2 * k + 1]);
}

void cartesian(const float* am, const float* ph, int n, float sign, float* x) {
    for (int k = 0; k < n; k++) {
        const phasor e = phasor_of(sign * ph[k]);
        x[2 * k] = am[k] * e.re;
        x[2 * k + 1] = am[k] * e.im;
    }
}

void turn_each(float* x, int n, float sign, const float* ph) {
    for (int k = 0; k < n; k++) {
        const phasor e = phasor_of(sign * ph[k]);
        const float re = x[2 * k], im = x[2 * k + 1];
        x[2 * k] = re * e.re - im * e.im;
        x[2 * k + 1] = re * e.im + im * e.re;
    }
}

int largest_power(const float* x, int n, float range) {
    int largest = 0;
    for (int k = 0; k < n; k++) {
        const float re = x[2 * k] * range, im = x[2 * k + 1] * range;
        const int bits = bits_of(re * re + im * im);
        largest = bits > largest ? bits : largest;
    }
    return largest;
}

int largest_bits(const float* x, int n) {
    int largest = 0;
    for (int k = 0; k < n; k++) {
        const int bits = bits_of(x[k]);
        largest = bits > largest ? bits : largest;
    }
    return largest;
}

void multiply(float* x, int n, float range, float unit) {
    for (int k = 0; k < n; k++) x[k] = x[k] * range * unit;
}

constexpr angle_kernels all_kernels = {polar,     parts,         amplitudes,   cartesian,
                                       turn_each, largest_power, largest_bits, multiply};

} // namespace
} // namespace norva
