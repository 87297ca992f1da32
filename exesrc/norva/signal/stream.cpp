#include "signal/stream.h"

#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace norva {

namespace {

float power(const float* x) {
    return x[0] * x[0] + x[1] * x[1];
}

// Floats to the next place at which a vector of four can be stored; all of n when there is none.
std::size_t to_boundary(const float* p, std::size_t n) {
    const std::size_t lead = (16 - reinterpret_cast<std::uintptr_t>(p) % 16) % 16 / sizeof(float);
    return lead < n ? lead : n;
}

} // namespace

#if defined(__SSE2__)

void stream_copy(std::size_t n, const float* from, float* to) {
    std::size_t k = to_boundary(to, n);
    std::memcpy(to, from, k * sizeof(float));
    for (; k + 4 <= n; k += 4) _mm_stream_ps(to + k, _mm_loadu_ps(from + k));
    std::memcpy(to + k, from + k, (n - k) * sizeof(float));
}

void stream_power(std::size_t n, const float* x, float* p) {
    const std::size_t lead = to_boundary(p, n);
    std::size_t k = 0;
    for (; k < lead; k++) p[k] = power(x + 2 * k);
    for (; k + 4 <= n; k += 4) {
        const __m128 a = _mm_loadu_ps(x + 2 * k), b = _mm_loadu_ps(x + 2 * k + 4);
        const __m128 re = _mm_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0)),
                     im = _mm_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1));
        _mm_stream_ps(p + k, _mm_add_ps(_mm_mul_ps(re, re), _mm_mul_ps(im, im)));
    }
    for (; k < n; k++) p[k] = power(x + 2 * k);
}

void stream_done() {
    _mm_sfence();
}

#else

void stream_copy(std::size_t n, const float* from, float* to) {
    std::memcpy(to, from, n * sizeof(float));
}

void stream_power(std::size_t n, const float* x, float* p) {
    for (std::size_t k = 0; k < n; k++) p[k] = power(x + 2 * k);
}

void stream_done() {}

#endif

} // namespace norva
