// See angle_kernels.h. Selections are written for eight samples at once: left to the compiler, each of their
// ways would be gone in full.
#include "angle_kernels.h"

namespace norva {
namespace {

typedef float v8 __attribute__((vector_size(32)));
typedef int i8 __attribute__((vector_size(32)));
typedef float v8_anywhere __attribute__((vector_size(32), aligned(4), may_alias));

[[gnu::always_inline]] inline v8 load(const float* p) {
    return *reinterpret_cast<const v8_anywhere*>(p);
}
[[gnu::always_inline]] inline void store(float* p, v8 v) {
    *reinterpret_cast<v8_anywhere*>(p) = v;
}
[[gnu::always_inline]] inline v8 floats(i8 bits) {
    return reinterpret_cast<v8>(bits);
}
// The value where the mask is set, 0 elsewhere.
[[gnu::always_inline]] inline v8 where(i8 mask, v8 v) {
    return floats(mask & reinterpret_cast<i8>(v));
}
// Magnitudes as bits, which compare like them.
[[gnu::always_inline]] inline i8 bits_of(v8 v) {
    return reinterpret_cast<i8>(v) & 0x7fffffff;
}
[[gnu::always_inline]] inline i8 larger_of(i8 a, i8 b) {
    return a > b ? a : b;
}
inline int largest_of(i8 v) {
    int largest = 0;
    for (int k = 0; k < 8; k++) largest = v[k] > largest ? v[k] : largest;
    return largest;
}

// Eight complex samples, parts apart. Those behind the last of n are zeros, and are not stored.
struct eight {
    v8 re, im;
};
[[gnu::always_inline]] inline v8 load_some(const float* p, int n) {
    if (n >= 8) return load(p);
    float some[8] = {};
    __builtin_memcpy(some, p, sizeof(float) * static_cast<unsigned long>(n));
    return load(some);
}
[[gnu::always_inline]] inline void store_some(float* p, v8 v, int n) {
    if (n >= 8)
        store(p, v);
    else
        __builtin_memcpy(p, &v, sizeof(float) * static_cast<unsigned long>(n));
}
[[gnu::always_inline]] inline eight load_pairs(const float* x, int n) {
    const v8 lo = load_some(x, 2 * n), hi = n > 4 ? load_some(x + 8, 2 * n - 8) : v8{};
    return {__builtin_shufflevector(lo, hi, 0, 2, 4, 6, 8, 10, 12, 14),
            __builtin_shufflevector(lo, hi, 1, 3, 5, 7, 9, 11, 13, 15)};
}
[[gnu::always_inline]] inline void store_pairs(float* x, const eight& v, int n) {
    store_some(x, __builtin_shufflevector(v.re, v.im, 0, 8, 1, 9, 2, 10, 3, 11), 2 * n);
    if (n > 4) store_some(x + 8, __builtin_shufflevector(v.re, v.im, 4, 12, 5, 13, 6, 14, 7, 15), 2 * n - 8);
}
[[gnu::always_inline]] inline eight product(const eight& a, const eight& b) {
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

// f(k, count) for each vector of samples: whole ones, then the rest.
template <class F> [[gnu::always_inline]] inline void by_eights(int n, F f) {
    int k = 0;
    for (; k + 8 <= n; k += 8) f(k, 8);
    if (k < n) f(k, n - k);
}

// atan2(im, re)/(2 pi), within 2e-8 cycles before rounding; 0 for the origin. atan(t)/(2 pi) by a polynomial
// of least greatest error for |t| <= tan(pi/8), after the octant has been turned to the axis.
[[gnu::always_inline]] inline v8 cycles_of(v8 re, v8 im) {
    const v8 ax = floats(bits_of(re)), ay = floats(bits_of(im));
    const i8 steep = ay > ax;
    const v8 larger = steep ? ay : ax, smaller = steep ? ax : ay;
    const i8 beyond = smaller > 0.41421356F * larger;
    const v8 above = smaller - where(beyond, larger), sum = larger + where(beyond, smaller);
    const v8 below = floats(reinterpret_cast<i8>(sum) | ((sum == 0) & reinterpret_cast<i8>(v8{} + 1.0F)));
    const v8 t = above / below, z = t * t;
    v8 c =
        t * (0.15915494F + z * (-0.053050798F + z * (0.031790357F + z * (-0.022046282F + z * 0.012711284F))));
    c += where(beyond, v8{} + 0.125F);
    c = steep ? 0.25F - c : c;
    c = re < 0 ? 0.5F - c : c;
    return im < 0 ? -c : c;
}

// What |x| < 2^22 is when a number this large was added and taken away: rounded to a whole number.
constexpr float ROUNDER = 12582912.0F;
constexpr float ROUNDS_BELOW = 4194304.0F; // an angle beyond holds no part of a cycle worth keeping

// exp(2 pi i cycles), within 2e-7. The angle is brought to an eighth of a cycle from an axis.
[[gnu::always_inline]] inline eight phasor_of(v8 cycles) {
    const v8 whole = (cycles + ROUNDER) - ROUNDER;
    const v8 part = cycles - (floats(bits_of(cycles)) < ROUNDS_BELOW ? whole : cycles);
    const v8 quarter = (4 * part + ROUNDER) - ROUNDER;
    const v8 f = part - 0.25F * quarter, z = f * f;
    const v8 s = f * (6.2831853F + z * (-41.341661F + z * (81.592354F + z * -75.393563F)));
    const v8 c = 1.0F + z * (-19.739209F + z * (64.939309F + z * (-85.442314F + z * 59.203281F)));
    // quarter is -2..2: the axis that f is counted from.
    const v8 distance = floats(bits_of(quarter));
    const i8 upright = distance == 1.0F, opposite = distance == 2.0F;
    const v8 re = upright ? s : c, im = upright ? c : s;
    return {opposite | (quarter == 1.0F) ? -re : re, opposite | (quarter == -1.0F) ? -im : im};
}

// Two loops: the language has no root of a vector, which is left to the compiler, and two short chains of
// operations overlap better than a long one.
int parts(const float* x, int n, float range, float unit, float sign, float* __restrict am,
          float* __restrict ph, float* __restrict re, float* __restrict im) {
    for (int k = 0; k < n; k++) {
        const float a = x[2 * k] * range * unit, b = x[2 * k + 1] * range * unit;
        re[k] = a;
        im[k] = b;
        am[k] = __builtin_sqrtf(a * a + b * b);
    }
    i8 largest = {};
    by_eights(n, [&](int k, int count) {
        store_some(ph + k, sign * cycles_of(load_some(re + k, count), load_some(im + k, count)), count);
        largest = larger_of(largest, bits_of(load_some(am + k, count)));
    });
    return largest_of(largest);
}

// The sum of the lanes up to each.
[[gnu::always_inline]] inline i8 running_sum(i8 t) {
    const i8 none = {};
    t += __builtin_shufflevector(none, t, 0, 8, 9, 10, 11, 12, 13, 14);
    t += __builtin_shufflevector(none, t, 0, 0, 8, 9, 10, 11, 12, 13);
    return t + __builtin_shufflevector(none, t, 0, 0, 0, 0, 8, 9, 10, 11);
}

// Where a whole cycle comes nobody can foretell: they are counted without a branch, eight samples at once.
unwrapping unwrap(float* ph, int n, unwrapping so_far) {
    v8 before = v8{} + so_far.raw;
    i8 turns = i8{} + so_far.turns;
    int k = 0;
    for (; k + 8 <= n; k += 8) {
        const v8 here = load(ph + k);
        const v8 step = here - __builtin_shufflevector(before, here, 7, 8, 9, 10, 11, 12, 13, 14);
        turns += running_sum((step > 0.5F) - (step < -0.5F)); // true is -1
        store(ph + k, here + __builtin_convertvector(turns, v8));
        turns = __builtin_shufflevector(turns, turns, 7, 7, 7, 7, 7, 7, 7, 7);
        before = here;
    }
    so_far = {before[7], turns[7]};
    for (; k < n; k++) {
        const float step = ph[k] - so_far.raw;
        so_far = {ph[k], so_far.turns + (step < -0.5F) - (step > 0.5F)};
        ph[k] += static_cast<float>(so_far.turns);
    }
    return so_far;
}

int end_of_run(const float* am, int from, int n, float level) {
    constexpr int BLOCK = 32;
    const bool above = am[from] > level;
    int k = from + 1;
    for (int end = k + 4 < n ? k + 4 : n; k < end; k++) { // most runs are short, or very long
        if ((am[k] > level) != above) return k;
    }
    for (; k + BLOCK <= n; k += BLOCK) {
        int count = 0;
        for (int j = 0; j < BLOCK; j++) count += am[k + j] > level ? 1 : 0;
        if (count != (above ? BLOCK : 0)) break;
    }
    while (k < n && (am[k] > level) == above) k++;
    return k;
}

int place(const float* a, int n, float value) {
    constexpr int BLOCK = 64;
    for (int k = 0; k < n; k += BLOCK) {
        const int end = n - k < BLOCK ? n : k + BLOCK;
        int count = 0;
        for (int j = k; j < end; j++) count += a[j] == value ? 1 : 0;
        if (count == 0) continue;
        while (a[k] != value) k++;
        return k;
    }
    return 0;
}

void amplitudes(const float* x, int n, float range, float unit, float* am) {
    for (int k = 0; k < n; k++) {
        const float re = x[2 * k] * range, im = x[2 * k + 1] * range;
        am[k] = __builtin_sqrtf(re * re + im * im) * unit;
    }
}

void equalize(float* x, const float* w, int n, float range, float factor) {
    for (int k = 0; k < n; k++) {
        const float re = x[2 * k] * range, im = x[2 * k + 1] * range;
        const float amplitude = __builtin_sqrtf(re * re + im * im);
        const float gain = factor * w[k] / (amplitude > 0 ? amplitude : 1.0F);
        x[2 * k] = gain * re;
        x[2 * k + 1] = gain * im;
    }
}

void cartesian(const float* am, const float* ph, int n, float scale, float sign, float* x) {
    by_eights(n, [&](int k, int count) {
        const eight e = phasor_of(sign * load_some(ph + k, count));
        const v8 a = load_some(am + k, count) * scale;
        store_pairs(x + 2 * k, {a * e.re, a * e.im}, count);
    });
}

void turn_each(float* x, int n, float sign, const float* ph) {
    by_eights(n, [&](int k, int count) {
        const eight e = phasor_of(sign * load_some(ph + k, count));
        store_pairs(x + 2 * k, product(load_pairs(x + 2 * k, count), e), count);
    });
}

void turn_run(float* x, int n, float c0, float s0, const float* cosine, const float* sine) {
    for (int k = 0; k < n; k++) {
        const float c = c0 * cosine[k] - s0 * sine[k], s = c0 * sine[k] + s0 * cosine[k];
        const float re = x[2 * k], im = x[2 * k + 1];
        x[2 * k] = re * c - im * s;
        x[2 * k + 1] = re * s + im * c;
    }
}

curve_extent extent(const float* x, int n, float range) {
    i8 power = {}, part = {};
    by_eights(2 * n, [&](int k, int count) {
        const v8 v = load_some(x + k, count), scaled = v * range, squares = scaled * scaled;
        part = larger_of(part, bits_of(v));
        power = larger_of(
            power, bits_of(squares + __builtin_shufflevector(squares, squares, 1, 0, 3, 2, 5, 4, 7, 6)));
    });
    return {largest_of(power), largest_of(part)};
}

void multiply(float* x, int n, float range, float unit) {
    for (int k = 0; k < n; k++) x[k] = x[k] * range * unit;
}

void weigh(const float* x, const float* w, int n, float* y) {
    for (int k = 0; k < n; k++) {
        y[2 * k] = x[2 * k] * w[k];
        y[2 * k + 1] = x[2 * k + 1] * w[k];
    }
}

constexpr angle_kernels all_kernels = {parts,     unwrap,    end_of_run, place,  amplitudes, equalize,
                                       cartesian, turn_each, turn_run,   extent, multiply,   weigh};

} // namespace
} // namespace norva
