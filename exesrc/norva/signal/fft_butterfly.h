// Vectors of complex samples, and the short transforms on them: exponent sign -, in place, in order. Part of
// fft_kernel.h, with internal linkage like it.
#include "fft_pass.h"

namespace norva {
namespace {

typedef float v8 __attribute__((vector_size(32)));
typedef float v4 __attribute__((vector_size(16)));

template <class V> struct vec;
template <> struct vec<v8> {
    static constexpr int lanes = 8;
    typedef float anywhere __attribute__((vector_size(32), aligned(4), may_alias));
    typedef int ints __attribute__((vector_size(32)));
    [[gnu::always_inline]] static v8 splat(float x) { return v8{x, x, x, x, x, x, x, x}; }
};
template <> struct vec<v4> {
    static constexpr int lanes = 4;
    typedef float anywhere __attribute__((vector_size(16), aligned(4), may_alias));
    typedef int ints __attribute__((vector_size(16)));
    [[gnu::always_inline]] static v4 splat(float x) { return v4{x, x, x, x}; }
};

template <class V> [[gnu::always_inline]] inline V load(const float* p) {
    return *reinterpret_cast<const typename vec<V>::anywhere*>(p);
}
template <class V> [[gnu::always_inline]] inline void store(float* p, V v) {
    *reinterpret_cast<typename vec<V>::anywhere*>(p) = v;
}

// As many complex samples as V has lanes.
template <class V> struct cv { V re, im; };
template <class V> [[gnu::always_inline]] inline cv<V> operator+(cv<V> a, cv<V> b) {
    return {a.re + b.re, a.im + b.im};
}
template <class V> [[gnu::always_inline]] inline cv<V> operator-(cv<V> a, cv<V> b) {
    return {a.re - b.re, a.im - b.im};
}
template <class V> [[gnu::always_inline]] inline cv<V> plus_i(cv<V> a, cv<V> b) { // a + i b
    return {a.re - b.im, a.im + b.re};
}
template <class V> [[gnu::always_inline]] inline cv<V> minus_i(cv<V> a, cv<V> b) { // a - i b
    return {a.re + b.im, a.im - b.re};
}
template <class V> [[gnu::always_inline]] inline cv<V> scale(cv<V> a, float f) {
    return {a.re * f, a.im * f};
}
template <class V> [[gnu::always_inline]] inline cv<V> fma(cv<V> a, V f, cv<V> b) { // a f + b
    return {a.re * f + b.re, a.im * f + b.im};
}
template <class V> [[gnu::always_inline]] inline cv<V> fma(cv<V> a, float f, cv<V> b) {
    return fma(a, vec<V>::splat(f), b);
}
template <class V> [[gnu::always_inline]] inline cv<V> times(cv<V> a, V re, V im) { // a (re + i im)
    return {a.re * re - a.im * im, a.re * im + a.im * re};
}
template <class V> [[gnu::always_inline]] inline cv<V> times(cv<V> a, float re, float im) {
    return times(a, vec<V>::splat(re), vec<V>::splat(im));
}

template <class V> [[gnu::always_inline]] inline void dft2(cv<V>& a, cv<V>& b) {
    cv<V> t = a - b;
    a = a + b;
    b = t;
}

// y1, y2 = x0 - (x1+x2)/2 -+ i sqrt(3)/2 (x1-x2)
template <class V> [[gnu::always_inline]] inline void dft3(cv<V>& a, cv<V>& b, cv<V>& c) {
    cv<V> t = b + c, d = scale(b - c, 0.866025403784438646763723F), m = fma(t, -0.5F, a);
    a = a + t;
    b = minus_i(m, d);
    c = plus_i(m, d);
}

template <class V> [[gnu::always_inline]] inline void dft4(cv<V>& a, cv<V>& b, cv<V>& c, cv<V>& d) {
    cv<V> t0 = a + c, t1 = a - c, t2 = b + d, t3 = b - d;
    a = t0 + t2;
    c = t0 - t2;
    b = minus_i(t1, t3);
    d = plus_i(t1, t3);
}

// y(k), y(5-k) = x0 + sum cos(2 pi j k/5) (x(j)+x(5-j)) -+ i sum sin(2 pi j k/5) (x(j)-x(5-j)),  j = 1, 2
template <class V> [[gnu::always_inline]] inline void dft5(cv<V>& a, cv<V>& b, cv<V>& c, cv<V>& d, cv<V>& e) {
    constexpr float c1 = 0.309016994374947424102293F, c2 = -0.809016994374947424102293F;
    constexpr float s1 = 0.951056516295153572116439F, s2 = 0.587785252292473129168706F;
    cv<V> t1 = b + e, t2 = c + d, t3 = b - e, t4 = c - d;
    cv<V> m1 = fma(t2, c2, fma(t1, c1, a)), u1 = fma(t4, s2, scale(t3, s1));
    cv<V> m2 = fma(t2, c1, fma(t1, c2, a)), u2 = fma(t4, -s1, scale(t3, s2));
    a = a + t1 + t2;
    b = minus_i(m1, u1);
    e = plus_i(m1, u1);
    c = minus_i(m2, u2);
    d = plus_i(m2, u2);
}

// Transform of R samples x[0..R-1].
template <int R> struct fixed;
template <> struct fixed<1> {
    template <class V> [[gnu::always_inline]] static void run(cv<V>*) {}
};
template <> struct fixed<2> {
    template <class V> [[gnu::always_inline]] static void run(cv<V>* x) { dft2(x[0], x[1]); }
};
template <> struct fixed<3> {
    template <class V> [[gnu::always_inline]] static void run(cv<V>* x) { dft3(x[0], x[1], x[2]); }
};
template <> struct fixed<4> {
    template <class V> [[gnu::always_inline]] static void run(cv<V>* x) { dft4(x[0], x[1], x[2], x[3]); }
};
template <> struct fixed<5> {
    template <class V> [[gnu::always_inline]] static void run(cv<V>* x) {
        dft5(x[0], x[1], x[2], x[3], x[4]);
    }
};

// y(k), y(k+4) = e(k) +- exp(-2 pi i k / 8) o(k), from transforms of 4 of the even and the odd samples.
template <class V> [[gnu::always_inline]] inline void combine8(const cv<V>* e, const cv<V>* o, cv<V>* x) {
    constexpr float h = 0.707106781186547524400844F;
    cv<V> r1 = {o[1].re + o[1].im, o[1].im - o[1].re}; // sqrt(2) exp(-i pi/4) o1
    cv<V> r3 = {o[3].im - o[3].re, o[3].re + o[3].im}; // sqrt(2) exp(-3 i pi/4) o3, imaginary part negated
    x[0] = e[0] + o[0];
    x[4] = e[0] - o[0];
    x[1] = fma(r1, h, e[1]);
    x[5] = fma(r1, -h, e[1]);
    x[2] = minus_i(e[2], o[2]);
    x[6] = plus_i(e[2], o[2]);
    x[3] = {r3.re * h + e[3].re, e[3].im - r3.im * h};
    x[7] = {e[3].re - r3.re * h, r3.im * h + e[3].im};
}
template <> struct fixed<8> {
    template <class V> [[gnu::always_inline]] static void run(cv<V>* x) {
        cv<V> e[4] = {x[0], x[2], x[4], x[6]}, o[4] = {x[1], x[3], x[5], x[7]};
        fixed<4>::run(e);
        fixed<4>::run(o);
        combine8(e, o, x);
    }
};

// The same for x[0..L-1] alone, the rest being zero.
template <int R, int L> struct padded {
    static_assert(R == L);
    template <class V> [[gnu::always_inline]] static void run(cv<V>* x) { fixed<R>::run(x); }
};
template <> struct padded<4, 2> { // y(k) = x0 + (-i)^k x1
    template <class V> [[gnu::always_inline]] static void run(cv<V>* x) {
        cv<V> a = x[0], b = x[1];
        x[0] = a + b;
        x[1] = minus_i(a, b);
        x[2] = a - b;
        x[3] = plus_i(a, b);
    }
};
template <> struct padded<8, 4> {
    template <class V> [[gnu::always_inline]] static void run(cv<V>* x) {
        cv<V> e[4] = {x[0], x[2]}, o[4] = {x[1], x[3]};
        padded<4, 2>::run(e);
        padded<4, 2>::run(o);
        combine8(e, o, x);
    }
};
template <> struct padded<8, 2> {
    template <class V> [[gnu::always_inline]] static void run(cv<V>* x) {
        cv<V> e[4] = {x[0], x[0], x[0], x[0]}, o[4] = {x[1], x[1], x[1], x[1]};
        combine8(e, o, x);
    }
};

// Three transforms of 3, rotations by ninths of a turn, three of 3.
template <> struct fixed<9> {
    template <class V> [[gnu::always_inline]] static void run(cv<V>* x) {
        constexpr float c1 = 0.766044443118978035202393F, s1 = 0.642787609686539326322643F;
        constexpr float c2 = 0.173648177666930348851717F, s2 = 0.984807753012208059366743F;
        constexpr float c4 = -0.939692620785908384054109F, s4 = 0.342020143325668733044100F;
        dft3(x[0], x[3], x[6]);
        dft3(x[1], x[4], x[7]);
        dft3(x[2], x[5], x[8]);
        x[4] = times(x[4], c1, -s1);
        x[5] = times(x[5], c2, -s2);
        x[7] = times(x[7], c2, -s2);
        x[8] = times(x[8], c4, -s4);
        dft3(x[0], x[1], x[2]);
        dft3(x[3], x[4], x[5]);
        dft3(x[6], x[7], x[8]);
        // x[3 a + b] is result a + 3 b.
        cv<V> y1 = x[3], y2 = x[6], y3 = x[1], y5 = x[7], y6 = x[2], y7 = x[5];
        x[1] = y1, x[2] = y2, x[3] = y3, x[5] = y5, x[6] = y6, x[7] = y7;
    }
};

// R = A B without a common factor: sample j = (B a + A b) mod R, result k with k = ka mod A and k = kb mod B,
// and no rotation in between (Good 1958, Thomas 1963).
template <int A, int B> struct coprime {
    static constexpr int inverse(int x, int modulus) {
        int y = 1;
        while (x * y % modulus != 1) y++;
        return y;
    }
    template <class V> [[gnu::always_inline]] static void run(cv<V>* x) {
        constexpr int R = A * B, ua = B * inverse(B, A), ub = A * inverse(A, B);
        cv<V> t[R];
#pragma GCC unroll 8
        for (int b = 0; b < B; b++) {
            cv<V> c[A];
#pragma GCC unroll 8
            for (int a = 0; a < A; a++) c[a] = x[(B * a + A * b) % R];
            fixed<A>::run(c);
#pragma GCC unroll 8
            for (int a = 0; a < A; a++) t[a * B + b] = c[a];
        }
#pragma GCC unroll 8
        for (int a = 0; a < A; a++) {
            fixed<B>::run(t + a * B);
#pragma GCC unroll 8
            for (int b = 0; b < B; b++) x[(ua * a + ub * b) % R] = t[a * B + b];
        }
    }
};
template <> struct fixed<6> : coprime<2, 3> {};
template <> struct fixed<10> : coprime<2, 5> {};
template <> struct fixed<15> : coprime<3, 5> {};

// Any odd R below fft_longest_odd: as dft5, with cosines and sines from a table.
template <class V> void dft_odd(cv<V>* x, int radix, const float* table) {
    const int half = (radix - 1) / 2;
    cv<V> sum[fft_longest_odd / 2], dif[fft_longest_odd / 2];
    cv<V> total = x[0];
    for (int j = 1; j <= half; j++) {
        sum[j - 1] = x[j] + x[radix - j];
        dif[j - 1] = x[j] - x[radix - j];
        total = total + sum[j - 1];
    }
    for (int k = 1; k <= half; k++) {
        cv<V> m = x[0], u = {V{}, V{}};
        for (int j = 0; j < half; j++, table += 2) {
            m = fma(sum[j], table[0], m);
            u = fma(dif[j], table[1], u);
        }
        x[k] = minus_i(m, u);
        x[radix - k] = plus_i(m, u);
    }
    x[0] = total;
}

// The transform of one pass, of which the first L samples are not zero. R = 0 stands for any odd radix.
template <int R, int L = R> struct butterfly {
    static constexpr int capacity = R;
    static int radix(const fft_pass&) { return R; }
    template <class V> [[gnu::always_inline]] static void run(cv<V>* x, const fft_pass&) {
        padded<R, L>::run(x);
    }
};
template <> struct butterfly<0> {
    static constexpr int capacity = fft_longest_odd;
    static int radix(const fft_pass& pass) { return pass.radix; }
    template <class V> static void run(cv<V>* x, const fft_pass& pass) { dft_odd(x, pass.radix, pass.odd); }
};

// Interleaved samples to separate parts and back, lanes in the order of fft_lane.
[[gnu::always_inline]] inline cv<v8> split(v8 lo, v8 hi) {
    return {__builtin_shufflevector(lo, hi, 0, 2, 8, 10, 4, 6, 12, 14),
            __builtin_shufflevector(lo, hi, 1, 3, 9, 11, 5, 7, 13, 15)};
}
[[gnu::always_inline]] inline void join(cv<v8> x, v8& lo, v8& hi) {
    lo = __builtin_shufflevector(x.re, x.im, 0, 8, 1, 9, 4, 12, 5, 13);
    hi = __builtin_shufflevector(x.re, x.im, 2, 10, 3, 11, 6, 14, 7, 15);
}
[[gnu::always_inline]] inline void join(cv<v4> x, v4& lo, v4& hi) {
    lo = __builtin_shufflevector(x.re, x.im, 0, 4, 1, 5);
    hi = __builtin_shufflevector(x.re, x.im, 2, 6, 3, 7);
}

// Transposes the two 4 by 4 halves of r[0..3]: r[t] then holds lane t, and behind it lane t+4, of the four.
[[gnu::always_inline]] inline void transpose_halves(v8* r) {
    v8 t0 = __builtin_shufflevector(r[0], r[1], 0, 8, 1, 9, 4, 12, 5, 13);
    v8 t1 = __builtin_shufflevector(r[0], r[1], 2, 10, 3, 11, 6, 14, 7, 15);
    v8 t2 = __builtin_shufflevector(r[2], r[3], 0, 8, 1, 9, 4, 12, 5, 13);
    v8 t3 = __builtin_shufflevector(r[2], r[3], 2, 10, 3, 11, 6, 14, 7, 15);
    r[0] = __builtin_shufflevector(t0, t2, 0, 1, 8, 9, 4, 5, 12, 13);
    r[1] = __builtin_shufflevector(t0, t2, 2, 3, 10, 11, 6, 7, 14, 15);
    r[2] = __builtin_shufflevector(t1, t3, 0, 1, 8, 9, 4, 5, 12, 13);
    r[3] = __builtin_shufflevector(t1, t3, 2, 3, 10, 11, 6, 7, 14, 15);
}

// 8 by 8 transposition.
[[gnu::always_inline]] inline void transpose(v8* r) {
    transpose_halves(r);
    transpose_halves(r + 4);
#pragma GCC unroll 4
    for (int t = 0; t < 4; t++) {
        v8 a = r[t], b = r[t + 4];
        r[t] = __builtin_shufflevector(a, b, 0, 1, 2, 3, 8, 9, 10, 11);
        r[t + 4] = __builtin_shufflevector(a, b, 4, 5, 6, 7, 12, 13, 14, 15);
    }
}
[[gnu::always_inline]] inline v4 low_half(v8 v) {
    return __builtin_shufflevector(v, v, 0, 1, 2, 3);
}
[[gnu::always_inline]] inline v4 high_half(v8 v) {
    return __builtin_shufflevector(v, v, 4, 5, 6, 7);
}

} // namespace
} // namespace norva
