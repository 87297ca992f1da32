// See polar_sum.h. Compiled more than once. The phase is rounded after each operation everywhere, so that
// every processor uses the same entries of the table; the sums may differ in the last bits, because they are
// fused with products where the processor can.
#include "polar_sum.h"
#include "signal/lanes.h"

#if defined(__AVX2__)
#include <immintrin.h>
#endif

namespace norva {
namespace {

typedef int vi_anywhere __attribute__((vector_size(4 * LANES), aligned(4), may_alias));
typedef double pair __attribute__((aligned(4), may_alias)); // cosine and sine, moved as one

// The numbers of two entries, which come out of memory as one.
typedef unsigned long long two_entries __attribute__((may_alias));
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__);
[[gnu::always_inline]] inline unsigned first(two_entries k) {
    return static_cast<unsigned>(k);
}
[[gnu::always_inline]] inline unsigned second(two_entries k) {
    return static_cast<unsigned>(k >> 32);
}

// a * b + c; and the entries of a vector of points, parts apart. Their pairs are gathered in the order that
// one shuffle within halves brings right.
#if defined(__AVX2__)
typedef double pairs __attribute__((vector_size(32)));
[[gnu::always_inline]] inline vf fused(vf a, vf b, vf c) {
    return _mm256_fmadd_ps(a, b, c);
}
[[gnu::always_inline]] inline void look_up(const float* cycle, const two_entries* k, vf& c, vf& s) {
    const pair* table = reinterpret_cast<const pair*>(cycle);
    const two_entries k01 = k[0], k23 = k[1], k45 = k[2], k67 = k[3];
    vf low = reinterpret_cast<vf>(
        pairs{table[first(k01)], table[second(k01)], table[first(k45)], table[second(k45)]});
    vf high = reinterpret_cast<vf>(
        pairs{table[first(k23)], table[second(k23)], table[first(k67)], table[second(k67)]});
    c = __builtin_shufflevector(low, high, 0, 2, 8, 10, 4, 6, 12, 14);
    s = __builtin_shufflevector(low, high, 1, 3, 9, 11, 5, 7, 13, 15);
}
#else
typedef double pairs __attribute__((vector_size(16)));
[[gnu::always_inline]] inline vf fused(vf a, vf b, vf c) {
    return a * b + c;
}
[[gnu::always_inline]] inline void look_up(const float* cycle, const two_entries* k, vf& c, vf& s) {
    const pair* table = reinterpret_cast<const pair*>(cycle);
    const two_entries k01 = k[0], k23 = k[1];
    vf low = reinterpret_cast<vf>(pairs{table[first(k01)], table[second(k01)]});
    vf high = reinterpret_cast<vf>(pairs{table[first(k23)], table[second(k23)]});
    c = __builtin_shufflevector(low, high, 0, 2, 4, 6);
    s = __builtin_shufflevector(low, high, 1, 3, 5, 7);
}
#endif

// Adding and taking away 3/2 of the largest power of two rounds to whole numbers.
constexpr float whole = 12582912.0F; // 1.5 * 2^23
constexpr float below_half = 0.49999997F;

[[gnu::always_inline]] inline vf all(float v) {
    return v - vf{}; // not vf{} + v, which is an operation: it turns -0 into 0
}

// Entries of the table, 0..8000. The number of cycles may be off by one near a half; whichever is taken off,
// the remainder is exact, fused or not, and is brought to 0..8000 by the one addition that the remainder of a
// negative phase needs anyway. That addition rounds; the half for the nearest entry is in it already, which
// changes nothing about the rounding.
[[gnu::always_inline]] inline vi entries(vf phase) {
    vf cycles = fused(phase, all(1.0F / polar_cycle), all(whole)) - whole;
    vf r = fused(cycles, all(-polar_cycle), phase);
    vf up = reinterpret_cast<vi>(r) < 0 ? all(polar_cycle + 0.5F) : all(below_half);
    return __builtin_convertvector(r + up, vi);
}

// A block of samples at a time, all entries' numbers first: two short chains of operations overlap better
// than one long one, and the numbers reach the address units by way of memory. Several vectors of points
// share what is loaded for a sample.
[[gnu::always_inline]] inline void polar_sum(const polar_record& record, const float* range, float con2,
                                             float* z, int n) {
    constexpr int block = 16, vectors = 2;
    static_assert(polar_step % (vectors * LANES) == 0);
    for (int begin = 0; begin < record.n; begin += block) {
        const int count = record.n - begin < block ? record.n - begin : block;
        for (int ix = 0; ix < n; ix += vectors * LANES) {
            vf r[vectors], zr[vectors], zi[vectors];
            for (int v = 0; v < vectors; v++) {
                const float* from = z + 2 * (ix + v * LANES);
                const vf low = load(from), high = load(from + LANES);
                zr[v] = even_of(low, high);
                zi[v] = odd_of(low, high);
                r[v] = load(range + ix + v * LANES);
            }
            two_entries k[block][vectors][LANES / 2];
            for (int i = 0; i < count; i++) {
                for (int v = 0; v < vectors; v++)
                    *reinterpret_cast<vi_anywhere*>(k[i][v]) = entries(r[v] * record.con1[begin + i] - con2);
            }
            for (int i = 0; i < count; i++) {
                const vf re = all(record.re[begin + i]), im = all(record.im[begin + i]);
                for (int v = 0; v < vectors; v++) {
                    vf c, s;
                    look_up(record.cycle, k[i][v], c, s);
                    zr[v] = fused(-s, im, fused(c, re, zr[v]));
                    zi[v] = fused(s, re, fused(c, im, zi[v]));
                }
            }
            for (int v = 0; v < vectors; v++) {
                float* to = z + 2 * (ix + v * LANES);
                store(to, first_pairs(zr[v], zi[v]));
                store(to + LANES, last_pairs(zr[v], zi[v]));
            }
        }
    }
}

} // namespace
} // namespace norva
