// See angle_kernels.h. Selections are written for several samples at once: left to the compiler, each of
// their ways would be gone in full.
#include "angle_kernels.h"
#include "signal/lanes.h"

namespace norva {
namespace {

[[gnu::always_inline]] inline vf floats(vi bits) {
    return reinterpret_cast<vf>(bits);
}
// The value where the mask is set, 0 elsewhere.
[[gnu::always_inline]] inline vf where(vi mask, vf v) {
    return floats(mask & reinterpret_cast<vi>(v));
}
// Magnitudes as bits, which compare like them.
[[gnu::always_inline]] inline vi bits_of(vf v) {
    return reinterpret_cast<vi>(v) & 0x7fffffff;
}
[[gnu::always_inline]] inline vi larger_of(vi a, vi b) {
    return a > b ? a : b;
}
inline int largest_of(vi v) {
    int largest = 0;
    for (int k = 0; k < LANES; k++) largest = v[k] > largest ? v[k] : largest;
    return largest;
}

// Up to a vector of floats; those behind the last of n are zeros, and are not stored.
[[gnu::always_inline]] inline vf load_some(const float* p, int n) {
    if (n >= LANES) return load(p);
    float some[LANES] = {};
    __builtin_memcpy(some, p, sizeof(float) * static_cast<unsigned long>(n));
    return load(some);
}
[[gnu::always_inline]] inline void store_some(float* p, vf v, int n) {
    if (n >= LANES)
        store(p, v);
    else
        __builtin_memcpy(p, &v, sizeof(float) * static_cast<unsigned long>(n));
}

// The same of complex samples, parts apart.
struct samples {
    vf re, im;
};
[[gnu::always_inline]] inline samples load_pairs(const float* x, int n) {
    const vf low = load_some(x, 2 * n);
    const vf high = 2 * n > LANES ? load_some(x + LANES, 2 * n - LANES) : vf{};
    return {even_of(low, high), odd_of(low, high)};
}
[[gnu::always_inline]] inline void store_pairs(float* x, const samples& v, int n) {
    store_some(x, first_pairs(v.re, v.im), 2 * n);
    if (2 * n > LANES) store_some(x + LANES, last_pairs(v.re, v.im), 2 * n - LANES);
}
[[gnu::always_inline]] inline samples product(const samples& a, const samples& b) {
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

// f(k, count) for each vector of samples: whole ones, then the rest.
template <class F> [[gnu::always_inline]] inline void by_vectors(int n, F f) {
    int k = 0;
    for (; k + LANES <= n; k += LANES) f(k, LANES);
    if (k < n) f(k, n - k);
}

constexpr int SIGN = -0x7fffffff - 1;

// atan2(im, re)/(2 pi), within 2e-8 cycles before rounding; 0 for the origin. atan(t)/(2 pi) by a polynomial
// of least greatest error for |t| <= tan(pi/8), after the octant has been turned to the axis.
[[gnu::always_inline]] inline vf cycles_of(vf re, vf im) {
    const vf ax = floats(bits_of(re)), ay = floats(bits_of(im));
    const vi steep = ay > ax;
    const vf larger = steep ? ay : ax, smaller = steep ? ax : ay;
    const vi beyond = smaller > 0.41421356F * larger;
    const vf above = smaller - where(beyond, larger), sum = larger + where(beyond, smaller);
    const vf below = sum > 1e-37F ? sum : vf{} + 1e-37F;
    const vf t = above / below, z = t * t;
    vf c =
        t * (0.15915494F + z * (-0.053050798F + z * (0.031790357F + z * (-0.022046282F + z * 0.012711284F))));
    c += where(beyond, vf{} + 0.125F);
    c = steep ? 0.25F - c : c;
    c = re < 0 ? 0.5F - c : c;
    return floats(reinterpret_cast<vi>(c) ^ ((im < 0) & SIGN));
}

// What |x| < 2^22 is when a number this large was added and taken away: rounded to a whole number, whose last
// bits are those of the sum.
constexpr float ROUNDER = 12582912.0F;
constexpr float ROUNDS_BELOW = 1048576.0F; // cycles: an angle beyond holds no part of one worth keeping

// exp(2 pi i cycles), within 2e-7. The angle is counted from the nearest axis.
[[gnu::always_inline]] inline samples phasor_of(vf cycles) {
    cycles = floats(bits_of(cycles)) < ROUNDS_BELOW ? cycles : cycles - cycles;
    const vf rounded = 4 * cycles + ROUNDER;
    const vf f = cycles - 0.25F * (rounded - ROUNDER), z = f * f;
    const vf s = f * (6.2831853F + z * (-41.341661F + z * (81.592354F + z * -75.393563F)));
    const vf c = 1.0F + z * (-19.739209F + z * (64.939309F + z * (-85.442314F + z * 59.203281F)));
    const vi quarter = reinterpret_cast<vi>(rounded);
    const vi upright = (quarter & 1) == 1;
    const vf re = upright ? s : c, im = upright ? c : s;
    return {floats(reinterpret_cast<vi>(re) ^ (((quarter + 1) & 2) << 30)),
            floats(reinterpret_cast<vi>(im) ^ ((quarter & 2) << 30))};
}

// Amplitude and phase, and the parts where somebody wants them. Two loops: the language has no root of a
// vector, which is left to the compiler, and two short chains of operations overlap better than a long one.
template <bool with_parts>
inline int curve(const float* x, int n, float range, float unit, float sign, float* __restrict am,
                 float* __restrict ph, float* re, float* im) {
    constexpr int BLOCK = 512;
    float own_re[BLOCK], own_im[BLOCK];
    vi largest = {};
    for (int begin = 0; begin < n; begin += BLOCK) {
        const int length = n - begin < BLOCK ? n - begin : BLOCK;
        const float* from = x + 2 * begin;
        float_anywhere* __restrict const r = with_parts ? re + begin : own_re;
        float_anywhere* __restrict const q = with_parts ? im + begin : own_im;
        for (int k = 0; k < length; k++) {
            const float a = from[2 * k] * range * unit, b = from[2 * k + 1] * range * unit;
            r[k] = a;
            q[k] = b;
            am[begin + k] = __builtin_sqrtf(a * a + b * b);
        }
        by_vectors(length, [&](int k, int count) {
            store_some(ph + begin + k, cycles_of(load_some(r + k, count), sign * load_some(q + k, count)),
                       count);
            largest = larger_of(largest, bits_of(load_some(am + begin + k, count)));
        });
    }
    return largest_of(largest);
}

void split(const float* x, int n, float range, float unit, float* re, float* im) {
    by_vectors(n, [&](int k, int count) {
        const samples v = load_pairs(x + 2 * k, count);
        store_some(re + k, v.re * range * unit, count);
        store_some(im + k, v.im * range * unit, count);
    });
}

int parts(const float* x, int n, float range, float unit, float sign, float* am, float* ph, float* re,
          float* im) {
    return re ? curve<true>(x, n, range, unit, sign, am, ph, re, im)
              : curve<false>(x, n, range, unit, sign, am, ph, re, im);
}

// The lanes moved up or down by some places; what comes in is taken from the other vector.
template <int places, class V> [[gnu::always_inline]] inline V moved_up(V in, V v) {
    if constexpr (LANES == 8 && places == 1)
        return __builtin_shufflevector(in, v, 0, 8, 9, 10, 11, 12, 13, 14);
    if constexpr (LANES == 8 && places == 2)
        return __builtin_shufflevector(in, v, 0, 1, 8, 9, 10, 11, 12, 13);
    if constexpr (LANES == 8 && places == 4) return __builtin_shufflevector(in, v, 0, 1, 2, 3, 8, 9, 10, 11);
    if constexpr (LANES == 4 && places == 1) return __builtin_shufflevector(in, v, 0, 4, 5, 6);
    if constexpr (LANES == 4 && places == 2) return __builtin_shufflevector(in, v, 0, 1, 4, 5);
}
template <int places, class V> [[gnu::always_inline]] inline V moved_down(V v, V in) {
    if constexpr (LANES == 8 && places == 1) return __builtin_shufflevector(v, in, 1, 2, 3, 4, 5, 6, 7, 8);
    if constexpr (LANES == 8 && places == 2) return __builtin_shufflevector(v, in, 2, 3, 4, 5, 6, 7, 8, 9);
    if constexpr (LANES == 8 && places == 4) return __builtin_shufflevector(v, in, 4, 5, 6, 7, 8, 9, 10, 11);
    if constexpr (LANES == 4 && places == 1) return __builtin_shufflevector(v, in, 1, 2, 3, 4);
    if constexpr (LANES == 4 && places == 2) return __builtin_shufflevector(v, in, 2, 3, 4, 5);
}
template <class V> [[gnu::always_inline]] inline V swapped_pairs(V v) {
    if constexpr (LANES == 8) return __builtin_shufflevector(v, v, 1, 0, 3, 2, 5, 4, 7, 6);
    if constexpr (LANES == 4) return __builtin_shufflevector(v, v, 1, 0, 3, 2);
}
template <class V> [[gnu::always_inline]] inline V first_everywhere(V v) {
    if constexpr (LANES == 8) return __builtin_shufflevector(v, v, 0, 0, 0, 0, 0, 0, 0, 0);
    if constexpr (LANES == 4) return __builtin_shufflevector(v, v, 0, 0, 0, 0);
}
template <class V> [[gnu::always_inline]] inline V last_everywhere(V v) {
    if constexpr (LANES == 8) return __builtin_shufflevector(v, v, 7, 7, 7, 7, 7, 7, 7, 7);
    if constexpr (LANES == 4) return __builtin_shufflevector(v, v, 3, 3, 3, 3);
}

// The sum of the lanes up to each.
[[gnu::always_inline]] inline vi running_sum(vi t) {
    t += moved_up<1>(vi{}, t);
    t += moved_up<2>(vi{}, t);
    if constexpr (LANES > 4) t += moved_up<4>(vi{}, t);
    return t;
}

// Phases and their samples.
struct phase_point {
    vf phase, at;
};

// What is not known takes the nearest phase that is, below or above: in this vector, else beyond it.
template <int places> [[gnu::always_inline]] inline void take_up(phase_point& v, vi& known) {
    v.phase = known ? v.phase : moved_up<places>(vf{}, v.phase);
    v.at = known ? v.at : moved_up<places>(vf{}, v.at);
    known |= moved_up<places>(vi{}, known);
}
template <int places> [[gnu::always_inline]] inline void take_down(phase_point& v, vi& known) {
    v.phase = known ? v.phase : moved_down<places>(v.phase, vf{});
    v.at = known ? v.at : moved_down<places>(v.at, vf{});
    known |= moved_down<places>(known, vi{});
}
[[gnu::always_inline]] inline phase_point from_below(phase_point v, vi known, const phase_point& beyond) {
    take_up<1>(v, known);
    take_up<2>(v, known);
    if constexpr (LANES > 4) take_up<4>(v, known);
    return {known ? v.phase : beyond.phase, known ? v.at : beyond.at};
}
[[gnu::always_inline]] inline phase_point from_above(phase_point v, vi known, const phase_point& beyond) {
    take_down<1>(v, known);
    take_down<2>(v, known);
    if constexpr (LANES > 4) take_down<4>(v, known);
    return {known ? v.phase : beyond.phase, known ? v.at : beyond.at};
}

bool all_above(const float* am, int n, float level) {
    int count = 0;
    for (int k = 0; k < n; k++) count += am[k] > level ? 1 : 0;
    return count == n;
}

// Which samples are strong, and where a whole cycle comes, nobody can foretell: all is done without a branch,
// several samples at once; only blocks that are strong throughout are spared the lines. First each sample
// takes the phase of the nearest strong one before it, unwrapped, then the line to the next one.
void join(const float* am, float level, int n, float* ph, float* from) {
    constexpr int BLOCK = 64;
    vf lanes;
    for (int k = 0; k < LANES; k++) lanes[k] = static_cast<float>(k);
    phase_point last = {vf{} + ph[0], vf{}};
    vi turns = {};
    // The phases k..k+7 with their turns, of which `last` is the newest before.
    const auto unwrap = [&](int k, int count, vf phase) {
        const vf step = phase - moved_up<1>(last.phase, phase);
        turns += running_sum((step > 0.5F) - (step < -0.5F)); // true is -1
        store_some(ph + k, phase + __builtin_convertvector(turns, vf), count);
        turns = last_everywhere(turns);
        last.phase = last_everywhere(phase);
    };
    for (int begin = 0; begin < n; begin += BLOCK) {
        if (begin + BLOCK <= n && all_above(am + begin, BLOCK, level)) {
            for (int k = begin; k < begin + BLOCK; k += LANES) unwrap(k, LANES, load(ph + k));
            last.at = vf{} + static_cast<float>(begin + BLOCK - 1);
            from[begin] = -1; // no lines here
            continue;
        }
        by_vectors(n - begin < BLOCK ? n - begin : BLOCK, [&](int j, int count) {
            const int k = begin + j;
            const vi strong = load_some(am + k, count) > level;
            const phase_point v =
                from_below({load_some(ph + k, count), lanes + static_cast<float>(k)}, strong, last);
            unwrap(k, count, v.phase);
            store_some(from + k, v.at, count);
            last.at = last_everywhere(v.at);
        });
    }
    phase_point next = {vf{} + ph[n - 1], vf{} + static_cast<float>(n - 1)};
    for (int begin = (n - 1) / BLOCK * BLOCK; begin >= 0; begin -= BLOCK) {
        if (from[begin] < 0) {
            next = {vf{} + ph[begin], vf{} + static_cast<float>(begin)};
            continue;
        }
        const int end = n - begin < BLOCK ? n : begin + BLOCK;
        for (int k = begin + (end - begin - 1) / LANES * LANES; k >= begin; k -= LANES) {
            const int count = end - k < LANES ? end - k : LANES;
            const phase_point before = {load_some(ph + k, count), load_some(from + k, count)};
            const vf at = lanes + static_cast<float>(k);
            const vi strong = load_some(am + k, count) > level;
            const phase_point v = from_above({before.phase, at}, strong, next);
            const vf slope = (v.phase - before.phase) / (v.at - before.at);
            store_some(ph + k, strong ? before.phase : before.phase + (at - before.at) * slope, count);
            next = {first_everywhere(v.phase), first_everywhere(v.at)};
        }
    }
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

void rectify(float* x, int n, float range, float back) {
    for (int k = 0; k < n; k++) {
        const float re = x[2 * k] * range, im = x[2 * k + 1] * range;
        x[2 * k] = __builtin_sqrtf(re * re + im * im) * back;
        x[2 * k + 1] = 0;
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

void cartesian(const float* am, const float* ph, int n, float sign, float* x) {
    by_vectors(n, [&](int k, int count) {
        const samples e = phasor_of(sign * load_some(ph + k, count));
        const vf a = load_some(am + k, count);
        store_pairs(x + 2 * k, {a * e.re, a * e.im}, count);
    });
}

void turn_each(float* x, int n, float sign, const float* ph) {
    by_vectors(n, [&](int k, int count) {
        const samples e = phasor_of(sign * load_some(ph + k, count));
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
    vi power = {}, part = {};
    by_vectors(2 * n, [&](int k, int count) {
        const vf v = load_some(x + k, count), scaled = v * range, squares = scaled * scaled;
        part = larger_of(part, bits_of(v));
        power = larger_of(power, bits_of(squares + swapped_pairs(squares)));
    });
    return {largest_of(power), largest_of(part)};
}

void multiply(float* x, int n, float range, float unit) {
    for (int k = 0; k < n; k++) x[k] = x[k] * range * unit;
}

void reweigh(float* x, const float* from, const float* to, int n, float factor) {
    by_vectors(n, [&](int k, int count) {
        const vf gain = load_some(from + k, count) * (factor * load_some(to + k, count));
        const samples v = load_pairs(x + 2 * k, count);
        store_pairs(x + 2 * k, {v.re * gain, v.im * gain}, count);
    });
}

void weigh(const float* x, const float* w, int n, float* y) {
    by_vectors(n, [&](int k, int count) {
        const samples v = load_pairs(x + 2 * k, count);
        const vf weight = load_some(w + k, count);
        store_pairs(y + 2 * k, {v.re * weight, v.im * weight}, count);
    });
}

constexpr angle_kernels all_kernels = {parts,     split,    join,   place,    rectify, equalize, cartesian,
                                       turn_each, turn_run, extent, multiply, weigh,   reweigh};

} // namespace
} // namespace norva
