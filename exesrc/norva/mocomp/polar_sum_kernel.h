// See polar_sum.h. Compiled more than once, with the same arithmetic: products and sums are never fused here,
// so that every processor uses the same entries of the table and gives the same bits.
#include "polar_sum.h"

namespace norva {
namespace {

typedef float v8 __attribute__((vector_size(32)));
typedef int i8 __attribute__((vector_size(32)));
typedef int i8_anywhere __attribute__((vector_size(32), aligned(4), may_alias));
typedef double d4 __attribute__((vector_size(32)));
typedef float v8_anywhere __attribute__((vector_size(32), aligned(4), may_alias));
typedef double pair __attribute__((aligned(4), may_alias)); // cosine and sine, moved as one

// Adding and taking away 3/2 of the largest power of two rounds to whole numbers.
constexpr float whole = 12582912.0F; // 1.5 * 2^23
constexpr float below_half = 0.49999997F;

[[gnu::always_inline]] inline v8 load(const float* p) {
    return *reinterpret_cast<const v8_anywhere*>(p);
}

[[gnu::always_inline]] inline void store(float* p, v8 v) {
    *reinterpret_cast<v8_anywhere*>(p) = v;
}

[[gnu::always_inline]] inline v8 flipped(v8 v, i8 sign_bits) {
    return reinterpret_cast<v8>(reinterpret_cast<i8>(v) ^ sign_bits);
}

// A phase brought to 0..8000. The number of cycles may be off by one near a half; whichever is taken off, the
// remainder is exact, and one addition, which a negative phase needs anyway, brings it into place.
[[gnu::always_inline]] inline v8 within_cycle(v8 phase) {
    v8 cycles = (phase * (1.0F / polar_cycle) + whole) - whole;
    v8 r = phase - cycles * static_cast<float>(polar_cycle);
    i8 negative = reinterpret_cast<i8>(r) >> 31;
    return r + reinterpret_cast<v8>(reinterpret_cast<i8>(v8{} + polar_cycle) & negative);
}

// Where the table has cosine and sine of eight phases: its entry k, and the signs to change. The table holds
// one quarter of a cycle, so that it stays in the nearest cache; what is left after half a cycle has been
// taken off 0, 1 or 2 times lies within one quarter to either side.
struct place {
    i8 k, cosine_sign, sine_sign;
};

[[gnu::always_inline]] inline place places(v8 phase) {
    constexpr int half_cycle = polar_cycle / 2, sign_bit = -2147483647 - 1;
    v8 r = within_cycle(phase);
    i8 nearest = __builtin_convertvector(r + below_half, i8); // r + 0.5 would round 0.49999997 up
    i8 halves = reinterpret_cast<i8>(r * (1.0F / half_cycle) + whole);
    i8 rest = nearest - (halves & 3) * half_cycle;
    i8 sign = rest >> 31;
    i8 cosine_sign = halves << 31;
    return {(rest ^ sign) - sign, cosine_sign, cosine_sign ^ (sign & sign_bit)};
}

[[gnu::always_inline]] inline v8 four_pairs(const float* quarter, unsigned k0, unsigned k1, unsigned k2,
                                            unsigned k3) {
    const pair* table = reinterpret_cast<const pair*>(quarter);
    return reinterpret_cast<v8>(d4{table[k0], table[k1], table[k2], table[k3]});
}

// z + sample * e for four points; im is negative in the real places.
[[gnu::always_inline]] inline v8 add_four(v8 z, v8 e, v8 re, v8 im) {
    v8 turned = __builtin_shufflevector(e, e, 1, 0, 3, 2, 5, 4, 7, 6);
    return z + (e * re + turned * im);
}

// Two vectors hold the points 0 1 4 5 and 2 3 6 7 of eight: the order in which signs of cosine and sine
// interleave without crossing the halves of a register. A block of samples at a time, all places first: two
// short chains of operations overlap better than one long one, and the entries' numbers reach the address
// units by way of memory.
[[gnu::always_inline]] inline void polar_sum(const polar_record& record, const float* range, float con2,
                                             float* z, int n) {
    constexpr int block = 64;
    const v8 signs = {-1, 1, -1, 1, -1, 1, -1, 1};
    for (int ix = 0; ix < n; ix += polar_step) {
        const v8 r = load(range + ix), z0 = load(z + 2 * ix), z1 = load(z + 2 * ix + 8);
        v8 even = __builtin_shufflevector(z0, z1, 0, 1, 2, 3, 8, 9, 10, 11);
        v8 odd = __builtin_shufflevector(z0, z1, 4, 5, 6, 7, 12, 13, 14, 15);
        for (int begin = 0; begin < record.n; begin += block) {
            const int count = record.n - begin < block ? record.n - begin : block;
            unsigned k[block][polar_step];
            i8 even_signs[block], odd_signs[block];
            for (int i = 0; i < count; i++) {
                const place p = places(r * record.con1[begin + i] - con2);
                *reinterpret_cast<i8_anywhere*>(k[i]) = p.k;
                even_signs[i] = __builtin_shufflevector(p.cosine_sign, p.sine_sign, 0, 8, 1, 9, 4, 12, 5, 13);
                odd_signs[i] =
                    __builtin_shufflevector(p.cosine_sign, p.sine_sign, 2, 10, 3, 11, 6, 14, 7, 15);
            }
            for (int i = 0; i < count; i++) {
                const v8 re = v8{} + record.re[begin + i], im = signs * record.im[begin + i];
                const unsigned* q = k[i];
                const v8 e = four_pairs(record.quarter, q[0], q[1], q[4], q[5]);
                const v8 o = four_pairs(record.quarter, q[2], q[3], q[6], q[7]);
                even = add_four(even, flipped(e, even_signs[i]), re, im);
                odd = add_four(odd, flipped(o, odd_signs[i]), re, im);
            }
        }
        store(z + 2 * ix, __builtin_shufflevector(even, odd, 0, 1, 2, 3, 8, 9, 10, 11));
        store(z + 2 * ix + 8, __builtin_shufflevector(even, odd, 4, 5, 6, 7, 12, 13, 14, 15));
    }
}

} // namespace
} // namespace norva
