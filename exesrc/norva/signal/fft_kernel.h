// The passes of the transform on vectors of floats. This file is compiled more than once, for different
// processors (fft_avx2.cpp, fft_base.cpp); everything in it has internal linkage, so that no code of one of
// them is ever used by the other.
//
// Samples lie between the passes as separate real and imaginary parts, in one of two layouts:
//   blocks   8 (or 4) real parts, then as many imaginary parts, of samples that follow each other; for
//   lengths of which
//            everything comes in whole vectors
//   planes   all real parts, then all imaginary parts; vectors begin anywhere, and the last one of a run of
//   no whole
//            number of vectors overlaps the one before it
// Exponent sign + is sign - between two conjugations.
#include "fft_butterfly.h"

namespace norva {
namespace {

// ---- Layouts ----

template <class V> struct blocks {
    using vector = V;
    static constexpr int lanes = vec<V>::lanes;
    static constexpr bool whole = true; // every run is a whole number of vectors
    static constexpr long im = lanes;   // floats from the real part to the imaginary part
    static constexpr long step = 2;     // floats from sample to sample, over whole vectors
};
struct planes {
    using vector = v8;
    static constexpr int lanes = vec<v8>::lanes;
    static constexpr bool whole = false;
    long im;
    static constexpr long step = 1;
};

template <class Layout>
[[gnu::always_inline]] inline cv<typename Layout::vector> load_split(const Layout& l, const float* p) {
    using V = typename Layout::vector;
    return {load<V>(p), load<V>(p + l.im)};
}
// The first `count` lanes.
template <class Layout, class V>
[[gnu::always_inline]] inline void store_split(const Layout& l, float* p, cv<V> x, int count) {
    if (Layout::whole || count == Layout::lanes) {
        store(p, x.re);
        store(p + l.im, x.im);
        return;
    }
    for (int t = 0; t < count; t++) {
        p[t] = x.re[t];
        p[l.im + t] = x.im[t];
    }
}

// Conjugates when flip is the sign bit, and not when it is 0.
template <class V> [[gnu::always_inline]] inline V flipped(V v, int flip) {
    using ints = typename vec<V>::ints;
    return reinterpret_cast<V>(reinterpret_cast<ints>(v) ^ (ints{} + flip));
}
[[gnu::always_inline]] inline cv<v8> load_interleaved(const float* p, int flip) {
    cv<v8> x = split(load<v8>(p), load<v8>(p + 8));
    return {x.re, flipped(x.im, flip)};
}
// From blocks, where lanes have the order of fft_lane.
template <class V>
[[gnu::always_inline]] inline void store_interleaved(const blocks<V>&, float* p, cv<V> x, int, int flip) {
    V lo, hi;
    join(cv<V>{x.re, flipped(x.im, flip)}, lo, hi);
    store(p, lo);
    store(p + vec<V>::lanes, hi);
}
// From planes, where they follow each other; the first `count` lanes.
[[gnu::always_inline]] inline void store_interleaved(const planes&, float* p, cv<v8> x, int count, int flip) {
    x.im = flipped(x.im, flip);
    if (count < planes::lanes) {
        for (int t = 0; t < count; t++) {
            p[2 * t] = x.re[t];
            p[2 * t + 1] = x.im[t];
        }
        return;
    }
    v8 lo, hi;
    join(x, lo, hi); // samples 0 1 | 4 5 and 2 3 | 6 7
    store<v8>(p, __builtin_shufflevector(lo, hi, 0, 1, 2, 3, 8, 9, 10, 11));
    store<v8>(p + planes::lanes, __builtin_shufflevector(lo, hi, 4, 5, 6, 7, 12, 13, 14, 15));
}

// Stores the results k = 0..radix-1 of the eight groups p + fft_lane(t) at radix*p + k, `to` being the place
// of group p. The first `rows` groups exist.
[[gnu::always_inline]] inline void store_transposed(const blocks<v8>&, float* to, int radix, int,
                                                    const cv<v8>* x) {
    v8 re[8], im[8];
#pragma GCC unroll 8
    for (int t = 0; t < 8; t++) {
        re[t] = x[fft_lane(t)].re;
        im[t] = x[fft_lane(t)].im;
    }
    transpose(re);
    transpose(im);
#pragma GCC unroll 8
    for (int t = 0; t < 8; t++) {
        float* row = to + 2 * radix * fft_lane(t);
        store(row, re[t]);
        store(row + 8, im[t]);
    }
}
[[gnu::always_inline]] inline void store_transposed(const blocks<v4>&, float* to, int radix, int rows,
                                                    const cv<v8>* x) {
    v8 re[4], im[4];
#pragma GCC unroll 4
    for (int t = 0; t < 4; t++) {
        re[t] = x[t].re;
        im[t] = x[t].im;
    }
    transpose_halves(re);
    transpose_halves(im);
#pragma GCC unroll 8
    for (int t = 0; t < 8; t++) {
        if (fft_lane(t) >= rows) continue;
        float* row = to + 2 * radix * fft_lane(t);
        store(row, t < 4 ? low_half(re[t]) : high_half(re[t - 4]));
        store(row + 4, t < 4 ? low_half(im[t]) : high_half(im[t - 4]));
    }
}
inline void store_transposed(const planes& l, float* to, int radix, int rows, const cv<v8>* x) {
    if (radix < 8 || rows < 8) {
        for (int t = 0; t < 8; t++) {
            if (fft_lane(t) >= rows) continue;
            float* row = to + radix * fft_lane(t);
            for (int k = 0; k < radix; k++) {
                row[k] = x[k].re[t];
                row[l.im + k] = x[k].im[t];
            }
        }
        return;
    }
    for (int k0 = 0;;) { // the last columns again, when they are no whole vector
        v8 re[8], im[8];
        for (int t = 0; t < 8; t++) {
            re[t] = x[k0 + t].re;
            im[t] = x[k0 + t].im;
        }
        transpose(re);
        transpose(im);
        for (int t = 0; t < 8; t++) {
            float* row = to + radix * fft_lane(t) + k0;
            store(row, re[t]);
            store(row + l.im, im[t]);
        }
        if (k0 == radix - 8) return;
        k0 = k0 + 16 > radix ? radix - 8 : k0 + 8;
    }
}

// ---- Passes ----

// One vector of the first pass, over eight groups that begin at `in` and `out`; the first `rows` of them
// exist, and the first L legs are not zero.
template <int R, int L, class Layout>
[[gnu::always_inline]] inline void first_vector(const fft_pass& pass, const Layout& l, const float* in,
                                                float* out, int rows, const float* w, int flip) {
    using fly = butterfly<R, L>;
    const int radix = fly::radix(pass);
    const long leg = 2L * pass.m;
    cv<v8> x[fly::capacity];
#pragma GCC unroll 16
    for (int j = 0; j < (L > 0 ? L : radix); j++) x[j] = load_interleaved(in + j * leg, flip);
    fly::run(x, pass);
#pragma GCC unroll 16
    for (int k = 1; k < radix; k++)
        x[k] = times(x[k], load<v8>(w + 16 * (k - 1)), load<v8>(w + 16 * (k - 1) + 8));
    store_transposed(l, out, radix, rows, x);
}

// From interleaved samples; vectors run over the groups. When there are fewer than eight, as many samples
// must be readable behind the last.
template <int R, int L, class Layout>
[[gnu::always_inline]] inline void first_pass(const fft_pass& pass, const Layout& l, const float* in,
                                              float* out, int flip) {
    const int m = pass.m, radix = butterfly<R, L>::radix(pass);
    const float* w = pass.twiddles;
    int p = 0;
    for (; p + 8 <= m; p += 8, w += 16 * (radix - 1))
        first_vector<R, L>(pass, l, in + 2L * p, out + Layout::step * radix * p, 8, w, flip);
    if (p == m) return;
    p = m > 8 ? m - 8 : 0;
    first_vector<R, L>(pass, l, in + 2L * p, out + Layout::step * radix * p, m < 8 ? m : 8, w, flip);
}

// One vector of a later pass, from legs `js` floats apart to legs `ks` floats apart.
template <int R, bool Rotate, class Layout>
[[gnu::always_inline]] inline void middle_vector(const fft_pass& pass, const Layout& l, const float* in,
                                                 long js, float* out, long ks, int count, const float* w) {
    using V = typename Layout::vector;
    using fly = butterfly<R>;
    const int radix = fly::radix(pass);
    cv<V> x[fly::capacity];
#pragma GCC unroll 16
    for (int j = 0; j < radix; j++) x[j] = load_split(l, in + j * js);
    fly::run(x, pass);
#pragma GCC unroll 16
    for (int k = 0; k < radix; k++) {
        if (Rotate && k > 0) x[k] = times(x[k], w[2 * k - 2], w[2 * k - 1]);
        store_split(l, out + k * ks, x[k], count);
    }
}

template <int R, bool Rotate, class Layout>
[[gnu::always_inline]] inline void middle_group(const fft_pass& pass, const Layout& l, const float* in,
                                                float* out, const float* w) {
    constexpr int lanes = Layout::lanes;
    const int s = pass.s;
    const long ks = Layout::step * s, js = ks * pass.m;
    int q = 0;
    for (; q + lanes <= s; q += lanes)
        middle_vector<R, Rotate>(pass, l, in + Layout::step * q, js, out + Layout::step * q, ks, lanes, w);
    if (Layout::whole || q == s) return;
    q = s > lanes ? s - lanes : 0;
    middle_vector<R, Rotate>(pass, l, in + q, js, out + q, ks, s < lanes ? s : lanes, w);
}

template <int R, class Layout>
[[gnu::always_inline]] inline void middle_pass(const fft_pass& pass, const Layout& l, const float* in,
                                               float* out) {
    const int radix = butterfly<R>::radix(pass), m = pass.m;
    const float* w = pass.twiddles;
    const int next = 2 * (radix - 1);
    if (Layout::whole && pass.s == Layout::lanes) { // one vector a group
        constexpr long group = Layout::step * Layout::lanes;
        const long js = group * m;
        middle_vector<R, false>(pass, l, in, js, out, group, Layout::lanes, w);
        for (int p = 1; p < m; p++)
            middle_vector<R, true>(pass, l, in + group * p, js, out + group * radix * p, group, Layout::lanes,
                                   w += next);
        return;
    }
    const long group = Layout::step * pass.s;
    middle_group<R, false>(pass, l, in, out, w);
    for (int p = 1; p < m; p++)
        middle_group<R, true>(pass, l, in + group * p, out + group * radix * p, w += next);
}

// The last pass has one group and goes to interleaved samples.
template <int R, class Layout>
[[gnu::always_inline]] inline void last_vector(const fft_pass& pass, const Layout& l, const float* in,
                                               float* out, int count, int flip) {
    using V = typename Layout::vector;
    using fly = butterfly<R>;
    const int radix = fly::radix(pass);
    const long js = Layout::step * pass.s, ks = 2L * pass.s;
    cv<V> x[fly::capacity];
#pragma GCC unroll 16
    for (int j = 0; j < radix; j++) x[j] = load_split(l, in + j * js);
    fly::run(x, pass);
#pragma GCC unroll 16
    for (int k = 0; k < radix; k++) store_interleaved(l, out + k * ks, x[k], count, flip);
}

template <int R, class Layout>
[[gnu::always_inline]] inline void last_pass(const fft_pass& pass, const Layout& l, const float* in,
                                             float* out, int flip) {
    constexpr int lanes = Layout::lanes;
    const int s = pass.s;
    int q = 0;
    for (; q + lanes <= s; q += lanes)
        last_vector<R>(pass, l, in + Layout::step * q, out + 2L * q, lanes, flip);
    if (Layout::whole || q == s) return;
    q = s > lanes ? s - lanes : 0;
    last_vector<R>(pass, l, in + q, out + 2L * q, s < lanes ? s : lanes, flip);
}

// ---- The passes of one length ----

// Samples from `used` on are zero, and not read from the next whole leg on.
inline void first(const fft_pass& pass, const blocks<v8>& l, const float* in, int used, float* out,
                  int flip) {
    if (used <= 2 * pass.m) return first_pass<8, 2>(pass, l, in, out, flip);
    if (used <= 4 * pass.m) return first_pass<8, 4>(pass, l, in, out, flip);
    first_pass<8, 8>(pass, l, in, out, flip);
}
inline void first(const fft_pass& pass, const blocks<v4>& l, const float* in, int used, float* out,
                  int flip) {
    if (used <= 2 * pass.m) return first_pass<4, 2>(pass, l, in, out, flip);
    first_pass<4, 4>(pass, l, in, out, flip);
}
inline void first(const fft_pass& pass, const planes& l, const float* in, int, float* out, int flip) {
    switch (pass.radix) {
    case 2: return first_pass<2, 2>(pass, l, in, out, flip);
    case 3: return first_pass<3, 3>(pass, l, in, out, flip);
    case 5: return first_pass<5, 5>(pass, l, in, out, flip);
    case 9: return first_pass<9, 9>(pass, l, in, out, flip);
    case 10: return first_pass<10, 10>(pass, l, in, out, flip);
    case 15: return first_pass<15, 15>(pass, l, in, out, flip);
    default: return first_pass<0, 0>(pass, l, in, out, flip);
    }
}

template <class Layout> void middle(const fft_pass& pass, const Layout& l, const float* in, float* out) {
    switch (pass.radix) {
    case 2: return middle_pass<2>(pass, l, in, out);
    case 3: return middle_pass<3>(pass, l, in, out);
    case 4: return middle_pass<4>(pass, l, in, out);
    case 5: return middle_pass<5>(pass, l, in, out);
    case 6: return middle_pass<6>(pass, l, in, out);
    case 8: return middle_pass<8>(pass, l, in, out);
    case 9: return middle_pass<9>(pass, l, in, out);
    case 10: return middle_pass<10>(pass, l, in, out);
    case 15: return middle_pass<15>(pass, l, in, out);
    default: return middle_pass<0>(pass, l, in, out);
    }
}

template <class Layout>
void last(const fft_pass& pass, const Layout& l, const float* in, float* out, int flip) {
    switch (pass.radix) {
    case 1: return last_pass<1>(pass, l, in, out, flip);
    case 2: return last_pass<2>(pass, l, in, out, flip);
    case 3: return last_pass<3>(pass, l, in, out, flip);
    case 4: return last_pass<4>(pass, l, in, out, flip);
    case 5: return last_pass<5>(pass, l, in, out, flip);
    case 8: return last_pass<8>(pass, l, in, out, flip);
    case 9: return last_pass<9>(pass, l, in, out, flip);
    default: return last_pass<0>(pass, l, in, out, flip);
    }
}

template <class Layout>
void run_passes(const fft_schedule& schedule, const Layout& l, const float* in, int used, float* out,
                int flip, float* from, float* to) {
    const fft_pass* pass = schedule.passes;
    first(*pass++, l, in, used, from, flip);
    for (int i = 2; i < schedule.count; i++) {
        middle(*pass++, l, from, to);
        float* t = from;
        from = to;
        to = t;
    }
    last(*pass, l, from, out, flip);
}

// A short length: all strides are known when this is compiled.
template <int Route>
[[gnu::noinline]] void run_short(const fft_schedule& schedule, const float* in, float* out, int flip,
                                 float* work, float* spare) {
    constexpr blocks<v8> l;
    constexpr fft_short_route r = fft_short_routes[Route];
    const fft_pass* pass = schedule.passes;
    const fft_pass first = {r.first, r.second * r.third, 1, pass[0].twiddles, nullptr};
    const fft_pass second = {r.second, r.third, r.first, pass[1].twiddles, nullptr};
    const fft_pass third = {r.third, 1, r.first * r.second, nullptr, nullptr};
    first_pass<r.first, r.first>(first, l, in, work, flip);
    if (r.second > 1) middle_pass<r.second>(second, l, work, spare);
    last_pass<r.third>(third, l, r.second > 1 ? spare : work, out, flip);
}

inline void run(const fft_schedule& schedule, const float* in, int used, float* out, bool positive,
                float* work) {
    const int n = schedule.n, flip = positive ? -0x7fffffff - 1 : 0;
    float* other = work + fft_half_work(n);
    // The result's place serves between the passes too, when vectors lie well there: the less memory the
    // better it stays in the cache. The last pass of whole vectors reads all that it writes before it writes.
    float* spare = reinterpret_cast<unsigned long>(out) % 32 == 0 ? out : other;
    if (schedule.passes->m < 8) { // the vectors over the groups read on behind the last sample
        __builtin_memcpy(other, in, 2 * sizeof(float) * n);
        __builtin_memset(other + 2 * n, 0, 16 * sizeof(float));
        in = other;
    }
    if (used == n) {
        switch (schedule.short_route) {
        case 0: return run_short<0>(schedule, in, out, flip, work, spare);
        case 1: return run_short<1>(schedule, in, out, flip, work, spare);
        case 2: return run_short<2>(schedule, in, out, flip, work, spare);
        }
    }
    switch (schedule.layout) {
    case fft_layout::blocks_of_8: return run_passes(schedule, blocks<v8>{}, in, used, out, flip, work, spare);
    case fft_layout::blocks_of_4: return run_passes(schedule, blocks<v4>{}, in, used, out, flip, work, spare);
    case fft_layout::planes:
        return run_passes(schedule, planes{n + planes::lanes}, in, used, out, flip, work, other);
    }
}

// ---- Eight columns at once ----

// As the middle passes, but from and to rows of interleaved samples.
template <int R>
void first_of_columns(const fft_pass& pass, const float* in, long row, float* out, int flip) {
    using fly = butterfly<R>;
    const int radix = fly::radix(pass), m = pass.m;
    const long leg = row * m;
    const float* w = pass.twiddles;
    for (int p = 0; p < m; p++, in += row, out += 16 * radix, w += 2 * (radix - 1)) {
        cv<v8> x[fly::capacity];
#pragma GCC unroll 16
        for (int j = 0; j < radix; j++) x[j] = load_interleaved(in + j * leg, flip);
        fly::run(x, pass);
#pragma GCC unroll 16
        for (int k = 0; k < radix; k++) {
            if (k > 0) x[k] = times(x[k], w[2 * k - 2], w[2 * k - 1]);
            store_split(blocks<v8>{}, out + 16 * k, x[k], 8);
        }
    }
}

template <int R> void last_of_columns(const fft_pass& pass, const float* in, float* out, long row, int flip) {
    using fly = butterfly<R>;
    const int radix = fly::radix(pass), rows = pass.s / 8;
    const long js = 2L * pass.s, leg = row * rows;
    for (int q = 0; q < rows; q++, in += 16, out += row) {
        cv<v8> x[fly::capacity];
#pragma GCC unroll 16
        for (int j = 0; j < radix; j++) x[j] = load_split(blocks<v8>{}, in + j * js);
        fly::run(x, pass);
#pragma GCC unroll 16
        for (int k = 0; k < radix; k++) store_interleaved(blocks<v8>{}, out + k * leg, x[k], 8, flip);
    }
}

inline void run_columns(const fft_schedule& schedule, float* a, long row, bool positive, float* work) {
    const int flip = positive ? -0x7fffffff - 1 : 0;
    float *from = work, *to = work + fft_half_work(schedule.n);
    const fft_pass* pass = schedule.passes;
    switch (pass->radix) {
    case 2: first_of_columns<2>(*pass, a, row, from, flip); break;
    case 3: first_of_columns<3>(*pass, a, row, from, flip); break;
    case 4: first_of_columns<4>(*pass, a, row, from, flip); break;
    case 5: first_of_columns<5>(*pass, a, row, from, flip); break;
    case 8: first_of_columns<8>(*pass, a, row, from, flip); break;
    default: first_of_columns<0>(*pass, a, row, from, flip); break;
    }
    for (int i = 2; i < schedule.count; i++) {
        middle(*++pass, blocks<v8>{}, from, to);
        float* t = from;
        from = to;
        to = t;
    }
    switch ((++pass)->radix) {
    case 1: last_of_columns<1>(*pass, from, a, row, flip); break;
    case 2: last_of_columns<2>(*pass, from, a, row, flip); break;
    case 3: last_of_columns<3>(*pass, from, a, row, flip); break;
    case 4: last_of_columns<4>(*pass, from, a, row, flip); break;
    case 5: last_of_columns<5>(*pass, from, a, row, flip); break;
    case 8: last_of_columns<8>(*pass, from, a, row, flip); break;
    default: last_of_columns<0>(*pass, from, a, row, flip); break;
    }
}

} // namespace
} // namespace norva
