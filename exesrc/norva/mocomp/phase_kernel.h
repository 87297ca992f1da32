// See phase.h. Compiled more than once, with the same arithmetic: products and sums are never fused here, so
// that every processor gives the same bits.
#include "phase.h"

namespace norva {
namespace {

typedef float v8 __attribute__((vector_size(32)));
typedef float v4 __attribute__((vector_size(16)));
typedef int i8 __attribute__((vector_size(32)));
typedef double d4 __attribute__((vector_size(32)));
typedef float v8_anywhere __attribute__((vector_size(32), aligned(4), may_alias));
typedef double d4_anywhere __attribute__((vector_size(32), aligned(8), may_alias));

[[gnu::always_inline]] inline d4 load(const double* p) {
    return *reinterpret_cast<const d4_anywhere*>(p);
}

[[gnu::always_inline]] inline v8 load(const float* p) {
    return *reinterpret_cast<const v8_anywhere*>(p);
}
[[gnu::always_inline]] inline void store(float* p, v8 v) {
    *reinterpret_cast<v8_anywhere*>(p) = v;
}

// Adding and taking away 3/2 of the largest power of two rounds to whole numbers. Beyond 2^52 every number is
// whole.
constexpr double whole = 6755399441055744.0; // 1.5 * 2^52
constexpr float whole_single = 12582912.0F;  // 1.5 * 2^23

// Cycles of four samples, less a whole number of them: -1/2..1/2, in single precision.
[[gnu::always_inline]] inline v4 cycles(const phase_tables& t, const double* a, int i) {
    d4 dd = load(t.weights[0] + i) * a[0] + load(t.weights[1] + i) * a[1] + load(t.weights[2] + i) * a[2] +
            load(t.weights[3] + i) * a[3];
    d4 turns = dd * load(t.frequency + i);
    return __builtin_convertvector(turns - ((turns + whole) - whole), v4);
}

// Cosine and sine of 2 pi x. With the nearest quarter q/4 taken off, |y| <= 1/8, polynomials in u = y*y that
// deviate by less than 3e-9; then a quarter turn q times.
[[gnu::always_inline]] inline void cos_sin(v8 x, v8& c, v8& s) {
    v8 quarters = x * 4.0F + whole_single;
    i8 q = reinterpret_cast<i8>(quarters);
    v8 y = x - (quarters - whole_single) * 0.25F;
    v8 u = y * y;
    v8 sy = y * (6.2831852878F + u * (-41.341662571F + u * (81.592542871F + u * -75.401612703F)));
    v8 cy = 1.0F + u * (-19.739208790F + u * (64.939369051F + u * (-85.448820090F + u * 59.424105982F)));
    i8 odd = -(q & 1); // all bits set for an odd number of quarters: cosine and sine change places
    i8 cb = (reinterpret_cast<i8>(sy) & odd) | (reinterpret_cast<i8>(cy) & ~odd);
    i8 sb = (reinterpret_cast<i8>(cy) & odd) | (reinterpret_cast<i8>(sy) & ~odd);
    c = reinterpret_cast<v8>(cb ^ (((q + 1) & 2) << 30));
    s = reinterpret_cast<v8>(sb ^ ((q & 2) << 30));
}

// Cycles of eight samples in the order 0 1 4 5 2 3 6 7, in which two vectors of interleaved samples are
// split.
[[gnu::always_inline]] inline void cycles_of_eight(const phase_tables& t, const double* a, int i, float* to) {
    v4 first = cycles(t, a, i), second = cycles(t, a, i + 4);
    v4 early = __builtin_shufflevector(first, second, 0, 1, 4, 5);
    v4 late = __builtin_shufflevector(first, second, 2, 3, 6, 7);
    store(to, __builtin_shufflevector(early, late, 0, 1, 2, 3, 4, 5, 6, 7));
}

[[gnu::always_inline]] inline void turn_eight(v8 x, float* a) {
    v8 c, s;
    cos_sin(x, c, s);
    v8 lo = load(a), hi = load(a + 8);
    v8 re = __builtin_shufflevector(lo, hi, 0, 2, 8, 10, 4, 6, 12, 14);
    v8 im = __builtin_shufflevector(lo, hi, 1, 3, 9, 11, 5, 7, 13, 15);
    v8 new_re = re * c - im * s, new_im = re * s + im * c;
    store(a, __builtin_shufflevector(new_re, new_im, 0, 8, 1, 9, 4, 12, 5, 13));
    store(a + 8, __builtin_shufflevector(new_re, new_im, 2, 10, 3, 11, 6, 14, 7, 15));
}

// A block at a time, the cycles first and then the turning: two short chains of operations overlap better
// than one long one.
[[gnu::always_inline]] inline void turn_record(const phase_tables& t, const double* a, float* x) {
    constexpr int block = 256;
    float x_cycles[block];
    for (int i = 0; i < t.nf; i += block) {
        const int n = t.nf - i < block ? t.nf - i : block;
        for (int k = 0; k < n; k += phase_step) cycles_of_eight(t, a, i + k, x_cycles + k);
        int k = 0;
        for (; k + phase_step <= n; k += phase_step) turn_eight(load(x_cycles + k), x + 2 * (i + k));
        if (k == n) continue;
        const unsigned long rest = 2 * sizeof(float) * (n - k);
        float last[2 * phase_step] = {};
        __builtin_memcpy(last, x + 2 * (i + k), rest);
        turn_eight(load(x_cycles + k), last);
        __builtin_memcpy(x + 2 * (i + k), last, rest);
    }
}

} // namespace
} // namespace norva
