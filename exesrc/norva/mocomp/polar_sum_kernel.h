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

// Entries of the table for eight phases. The number of cycles may be off by one near a half; whichever is
// taken off, the remainder is exact, and is brought to 0..8000 by the one addition that the remainder of a
// negative phase needs anyway.
[[gnu::always_inline]] inline i8 entries(v8 phase) {
    v8 cycles = (phase * (1.0F / polar_cycle) + whole) - whole;
    v8 r = phase - cycles * static_cast<float>(polar_cycle);
    i8 negative = reinterpret_cast<i8>(r) >> 31;
    r = r + reinterpret_cast<v8>(reinterpret_cast<i8>(v8{} + polar_cycle) & negative);
    return __builtin_convertvector(r + below_half, i8); // r + 0.5 would round 0.49999997 up
}

[[gnu::always_inline]] inline v8 four_pairs(const float* cycle, const unsigned* k) {
    const pair* table = reinterpret_cast<const pair*>(cycle);
    return reinterpret_cast<v8>(d4{table[k[0]], table[k[1]], table[k[2]], table[k[3]]});
}

// z + sample * e for four points; im is negative in the real places.
[[gnu::always_inline]] inline v8 add_four(v8 z, v8 e, v8 re, v8 im) {
    v8 turned = __builtin_shufflevector(e, e, 1, 0, 3, 2, 5, 4, 7, 6);
    return z + (e * re + turned * im);
}

// A block of samples at a time, all entries first: two short chains of operations overlap better than one
// long one, and the entries' numbers reach the address units by way of memory.
[[gnu::always_inline]] inline void polar_sum(const polar_record& record, const float* range, float con2,
                                             float* z, int n) {
    constexpr int block = 64;
    const v8 signs = {-1, 1, -1, 1, -1, 1, -1, 1};
    for (int ix = 0; ix < n; ix += polar_step) {
        const v8 r = load(range + ix);
        v8 low = load(z + 2 * ix), high = load(z + 2 * ix + 8);
        for (int begin = 0; begin < record.n; begin += block) {
            const int count = record.n - begin < block ? record.n - begin : block;
            unsigned k[block][polar_step];
            for (int i = 0; i < count; i++)
                *reinterpret_cast<i8_anywhere*>(k[i]) = entries(r * record.con1[begin + i] - con2);
            for (int i = 0; i < count; i++) {
                const v8 re = v8{} + record.re[begin + i], im = signs * record.im[begin + i];
                low = add_four(low, four_pairs(record.cycle, k[i]), re, im);
                high = add_four(high, four_pairs(record.cycle, k[i] + 4), re, im);
            }
        }
        store(z + 2 * ix, low);
        store(z + 2 * ix + 8, high);
    }
}

} // namespace
} // namespace norva
