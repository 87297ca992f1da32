// See polar_sum.h. Compiled more than once. The phase is rounded after each operation everywhere, so that
// every processor uses the same entries; their values and the sums may differ in the last bits, because
// products and sums are fused where the processor can.
#include "polar_sum.h"

#if defined(__AVX2__)
#include <immintrin.h>
#endif

namespace norva {
namespace {

#if defined(__AVX2__)
constexpr int lanes = 8;
#else
constexpr int lanes = 4; // a vector wider than the processor's would be taken apart by way of memory
#endif
typedef float vf __attribute__((vector_size(4 * lanes)));
typedef int vi __attribute__((vector_size(4 * lanes)));
typedef float vf_anywhere __attribute__((vector_size(4 * lanes), aligned(4), may_alias));

// a * b + c; parts of interleaved samples, and back.
#if defined(__AVX2__)
[[gnu::always_inline]] inline vf fused(vf a, vf b, vf c) {
    return _mm256_fmadd_ps(a, b, c);
}
[[gnu::always_inline]] inline void part(vf low, vf high, vf& re, vf& im) {
    re = __builtin_shufflevector(low, high, 0, 2, 4, 6, 8, 10, 12, 14);
    im = __builtin_shufflevector(low, high, 1, 3, 5, 7, 9, 11, 13, 15);
}
[[gnu::always_inline]] inline void join(vf re, vf im, vf& low, vf& high) {
    low = __builtin_shufflevector(re, im, 0, 8, 1, 9, 2, 10, 3, 11);
    high = __builtin_shufflevector(re, im, 4, 12, 5, 13, 6, 14, 7, 15);
}
#else
[[gnu::always_inline]] inline vf fused(vf a, vf b, vf c) {
    return a * b + c;
}
[[gnu::always_inline]] inline void part(vf low, vf high, vf& re, vf& im) {
    re = __builtin_shufflevector(low, high, 0, 2, 4, 6);
    im = __builtin_shufflevector(low, high, 1, 3, 5, 7);
}
[[gnu::always_inline]] inline void join(vf re, vf im, vf& low, vf& high) {
    low = __builtin_shufflevector(re, im, 0, 4, 1, 5);
    high = __builtin_shufflevector(re, im, 2, 6, 3, 7);
}
#endif

// Adding and taking away 3/2 of the largest power of two rounds to whole numbers.
constexpr float whole = 12582912.0F; // 1.5 * 2^23
constexpr float below_half = 0.49999997F;

[[gnu::always_inline]] inline vf load(const float* p) {
    return *reinterpret_cast<const vf_anywhere*>(p);
}

[[gnu::always_inline]] inline void store(float* p, vf v) {
    *reinterpret_cast<vf_anywhere*>(p) = v;
}

[[gnu::always_inline]] inline vf all(float v) {
    return v - vf{}; // not vf{} + v, which is an operation: it turns -0 into 0
}

constexpr float unit = 2048; // steps; keeps powers of what is counted in it away from the limits of a float

// Steps of the phases, 0..8000, less half a cycle, in units. The number of cycles may be off by one near a
// half; whichever is taken off, the remainder is exact, fused or not, and is brought to 0..8000 by the one
// addition that the remainder of a negative phase needs anyway. That addition rounds; the half for the
// nearest step is in it already, which changes nothing about the rounding. The last bit of the numbers from
// 2 units of steps, 4096, on is worth 1/2048: added to it, the step is there as so many units.
[[gnu::always_inline]] inline vf steps(vf phase) {
    constexpr float base = 2 * unit;
    vf cycles = fused(phase, all(1.0F / polar_cycle), all(whole)) - whole;
    vf r = fused(cycles, all(-polar_cycle), phase);
    vf up = reinterpret_cast<vi>(r) < 0 ? all(polar_cycle + 0.5F) : all(below_half);
    vi k = __builtin_convertvector(r + up, vi);
    return reinterpret_cast<vf>(k + reinterpret_cast<vi>(all(base))) - (base + polar_cycle / 2 / unit);
}

// Cosine and sine of half a cycle and m, over their scales. With x = |m| less a quarter of a cycle the cosine
// is sin(pi x/4000 steps) and the sine -sign(m) cos(pi x/4000 steps), both for at most a quarter of a cycle
// to either side: polynomials of least greatest error. They are divided by the last coefficient, which saves
// a multiplication each. Times the scales, entries deviate by less than 1.2e-7, the coefficients' and all
// roundings included.
constexpr float cosine_scale = 1.86716905e-4F, sine_scale = -1.03749975e-3F;

[[gnu::always_inline]] inline void entry(vf m, vf& c, vf& s) {
    constexpr int sign = -0x7fffffff - 1;
    vi bits = reinterpret_cast<vi>(m);
    vf x = reinterpret_cast<vf>(bits & ~sign) - polar_cycle / 4 / unit;
    vf u = x * x;
    vf odd = u - 29.5421391F, even = u - 23.1258297F;
    odd = fused(fused(fused(odd, u, all(480.520355F)), u, all(-3714.70312F)), u, all(8614.62109F));
    even = fused(fused(fused(even, u, all(268.811584F)), u, all(-1246.86902F)), u, all(963.855591F));
    c = odd * x;
    s = reinterpret_cast<vf>(reinterpret_cast<vi>(even) ^ (bits & sign));
}

// A block of samples at a time. All steps first: two short chains of operations overlap better than one long
// one. Several vectors of points share what is loaded for a sample.
[[gnu::always_inline]] inline void polar_sum(const polar_record& record, const float* range, float con2,
                                             float* z, int n) {
    constexpr int block = 64, vectors = 2;
    static_assert(polar_step % (vectors * lanes) == 0);
    for (int begin = 0; begin < record.n; begin += block) {
        const int count = record.n - begin < block ? record.n - begin : block;
        float scaled[block][4];
        for (int i = 0; i < count; i++) {
            const float re = record.re[begin + i], im = record.im[begin + i];
            scaled[i][0] = cosine_scale * re;
            scaled[i][1] = cosine_scale * im;
            scaled[i][2] = sine_scale * re;
            scaled[i][3] = -sine_scale * im;
        }
        for (int ix = 0; ix < n; ix += vectors * lanes) {
            vf r[vectors], zr[vectors], zi[vectors];
            for (int v = 0; v < vectors; v++) {
                const float* from = z + 2 * (ix + v * lanes);
                part(load(from), load(from + lanes), zr[v], zi[v]);
                r[v] = load(range + ix + v * lanes);
            }
            vf m[block][vectors];
            for (int i = 0; i < count; i++)
                for (int v = 0; v < vectors; v++) m[i][v] = steps(r[v] * record.con1[begin + i] - con2);
            for (int i = 0; i < count; i++) {
                for (int v = 0; v < vectors; v++) {
                    vf c, s;
                    entry(m[i][v], c, s);
                    zr[v] = fused(s, all(scaled[i][3]), fused(c, all(scaled[i][0]), zr[v]));
                    zi[v] = fused(s, all(scaled[i][2]), fused(c, all(scaled[i][1]), zi[v]));
                }
            }
            for (int v = 0; v < vectors; v++) {
                float* to = z + 2 * (ix + v * lanes);
                vf low, high;
                join(zr[v], zi[v], low, high);
                store(to, low);
                store(to + lanes, high);
            }
        }
    }
}

} // namespace
} // namespace norva
