#include "signal/stream.h"

#include "signal/processor.h"
#include "signal/vector.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace norva {

#if defined(__x86_64__)

namespace {

// In each step a vector's number of samples is copied, and the power of as many is formed. These are not the
// same samples, as the two results have their boundaries at different ones.
struct stretch {
    const float* from;
    float* to;
    const float* x;
    float* p;
    std::size_t steps;
};

void run_base(stretch s) {
    for (; s.steps > 0; s.steps--, s.from += 8, s.to += 8, s.x += 8, s.p += 4) {
        _mm_stream_ps(s.to, _mm_loadu_ps(s.from));
        _mm_stream_ps(s.to + 4, _mm_loadu_ps(s.from + 4));
        const __m128 a = _mm_loadu_ps(s.x), b = _mm_loadu_ps(s.x + 4);
        const __m128 re = _mm_shuffle_ps(a, b, 0x88), im = _mm_shuffle_ps(a, b, 0xdd);
        _mm_stream_ps(s.p, _mm_add_ps(_mm_mul_ps(re, re), _mm_mul_ps(im, im)));
    }
}

[[gnu::target("avx2")]] void run_avx2(stretch s) {
    for (; s.steps > 0; s.steps--, s.from += 16, s.to += 16, s.x += 16, s.p += 8) {
        _mm256_stream_ps(s.to, _mm256_loadu_ps(s.from));
        _mm256_stream_ps(s.to + 8, _mm256_loadu_ps(s.from + 8));
        const __m256 a = _mm256_loadu_ps(s.x), b = _mm256_loadu_ps(s.x + 8);
        const __m256 re = _mm256_shuffle_ps(a, b, 0x88), im = _mm256_shuffle_ps(a, b, 0xdd);
        const __m256 sum = _mm256_add_ps(_mm256_mul_ps(re, re), _mm256_mul_ps(im, im));
        // Samples 0 1 4 5 2 3 6 7 into their order.
        const __m256d in_order = _mm256_permute4x64_pd(_mm256_castps_pd(sum), 0xd8);
        _mm256_stream_ps(s.p, _mm256_castpd_ps(in_order));
    }
}

// The first place k of n, `each` floats apart, at which a vector of `lanes` floats can be stored; n when
// there is none.
std::size_t boundary(const float* p, std::size_t each, std::size_t lanes, std::size_t n) {
    for (std::size_t k = 0; k < std::min(lanes, n); k++) {
        if (reinterpret_cast<std::uintptr_t>(p + each * k) % (lanes * sizeof(float)) == 0) return k;
    }
    return n;
}

} // namespace

void stream_samples(std::size_t n, const float* x, float* to, float* p) {
    if (n == 0) return;
    const std::size_t lanes = has_avx2() ? 8 : 4;
    const std::size_t i = boundary(to, 2, lanes, n), k = p ? boundary(p, 1, lanes, n) : n;
    const std::size_t steps = (n - std::max(i, k)) / lanes, done = steps * lanes;
    auto copy = [=](std::size_t begin, std::size_t end) {
        std::memcpy(to + 2 * begin, x + 2 * begin, 2 * sizeof(float) * (end - begin));
    };
    auto power = [=](std::size_t begin, std::size_t end) {
        if (p) powrc(static_cast<int>(end - begin), x + 2 * begin, p + begin);
    };
    const stretch s = {x + 2 * i, to + 2 * i, x + 2 * k, p + k, steps};
    copy(0, i);
    power(0, k);
    if (steps > 0) has_avx2() ? run_avx2(s) : run_base(s);
    copy(i + done, n);
    power(k + done, n);
}

void stream_done() {
    _mm_sfence();
}

void fetch_ahead(std::size_t n, const float* p) {
    constexpr std::size_t line = 64 / sizeof(float);
    for (std::size_t k = 0; k < n; k += line) _mm_prefetch(reinterpret_cast<const char*>(p + k), _MM_HINT_T0);
}

#else

void stream_samples(std::size_t n, const float* x, float* to, float* p) {
    std::memcpy(to, x, 2 * n * sizeof(float));
    if (p) powrc(static_cast<int>(n), x, p);
}

void stream_done() {}

void fetch_ahead(std::size_t, const float*) {}

#endif

} // namespace norva
