#pragma once
// Vectors of floats as wide as those of the processor that a file is compiled for. For kernels that are
// compiled once for all processors and once for those with AVX2: free of the standard library, and each file
// has these for its own, because what is compiled for one processor must not leave code behind for others.

namespace norva {
namespace {

#if defined(__AVX2__)
constexpr int LANES = 8;
#else
constexpr int LANES = 4; // a vector wider than the processor's would be taken apart by way of memory
#endif
typedef float vf __attribute__((vector_size(4 * LANES)));
typedef int vi __attribute__((vector_size(4 * LANES)));
// Floats at any place, also among words of another type.
typedef float float_anywhere __attribute__((may_alias));
typedef float vf_anywhere __attribute__((vector_size(4 * LANES), aligned(4), may_alias));

[[gnu::always_inline]] inline vf load(const float* p) {
    return *reinterpret_cast<const vf_anywhere*>(p);
}
[[gnu::always_inline]] inline void store(float* p, vf v) {
    *reinterpret_cast<vf_anywhere*>(p) = v;
}

// Interleaved samples a, b apart: real and imaginary parts.
template <class V> [[gnu::always_inline]] inline V even_of(V a, V b) {
    if constexpr (LANES == 8) return __builtin_shufflevector(a, b, 0, 2, 4, 6, 8, 10, 12, 14);
    if constexpr (LANES == 4) return __builtin_shufflevector(a, b, 0, 2, 4, 6);
}
template <class V> [[gnu::always_inline]] inline V odd_of(V a, V b) {
    if constexpr (LANES == 8) return __builtin_shufflevector(a, b, 1, 3, 5, 7, 9, 11, 13, 15);
    if constexpr (LANES == 4) return __builtin_shufflevector(a, b, 1, 3, 5, 7);
}
// Real and imaginary parts interleaved: the first half of the samples, and the second.
template <class V> [[gnu::always_inline]] inline V first_pairs(V re, V im) {
    if constexpr (LANES == 8) return __builtin_shufflevector(re, im, 0, 8, 1, 9, 2, 10, 3, 11);
    if constexpr (LANES == 4) return __builtin_shufflevector(re, im, 0, 4, 1, 5);
}
template <class V> [[gnu::always_inline]] inline V last_pairs(V re, V im) {
    if constexpr (LANES == 8) return __builtin_shufflevector(re, im, 4, 12, 5, 13, 6, 14, 7, 15);
    if constexpr (LANES == 4) return __builtin_shufflevector(re, im, 2, 6, 3, 7);
}

} // namespace
} // namespace norva
