// Array kernels on contiguous elements.
#include "signal/vector.h"

#include "zuvsys/stop.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace norva {

void xmit(int n, const float* a, float* b) {
    if (n > 0)
        std::memmove(b, a, sizeof(float) * static_cast<std::size_t>(n));
    else if (n < 0)
        std::fill_n(b, -static_cast<std::ptrdiff_t>(n), *a);
}

void xmt(int n, const void* a, void* b) {
    constexpr std::size_t word = sizeof(std::int32_t);
    if (n > 0) std::memmove(b, a, word * n);
    if (n >= 0) return;
    unsigned char value[word];
    std::memcpy(value, a, word);
    auto* to = static_cast<unsigned char*>(b);
    for (int k = 0; k < -n; k++) std::memcpy(to + word * k, value, word);
}

void ixmt(int n, const void* a, void* b) {
    xmt(n, a, b);
}

void prod(int n, const float* a, const float* b, float* c) {
    if (n < 0) {
        const float scale = *a;
        for (int k = 0; k < -n; k++) c[k] = scale * b[k];
    }
    for (int k = 0; k < n; k++) c[k] = a[k] * b[k];
}

void asum(int n, const float* a, const float* b, float* c) {
    if (n < 0) {
        const float offset = *a;
        for (int k = 0; k < -n; k++) c[k] = offset + b[k];
    }
    for (int k = 0; k < n; k++) c[k] = a[k] + b[k];
}

void adif(int n, const float* a, const float* b, float* c) {
    if (n < 0) stop("IN APROC/ADIF...N CANNOT BE NEGATIVE");
    for (int k = 0; k < n; k++) c[k] = a[k] - b[k];
}

void powr(int n, const float* a, const float* b, float* c) {
    for (int k = 0; k < n; k++) c[k] = a[k] * a[k] + b[k] * b[k];
}

// Sums are gathered in double precision, so that a mean over a whole image keeps its digits.
float engy(int n, const float* a, const float* b) {
    double sum = 0;
    for (int k = 0; k < n; k++) sum += static_cast<double>(a[k]) * a[k] + static_cast<double>(b[k]) * b[k];
    return static_cast<float>(sum);
}

float zsum(int n, const float* a) {
    double sum = 0;
    for (int k = 0; k < n; k++) sum += a[k];
    return static_cast<float>(sum);
}

float dot(int n, const float* a, const float* b) {
    double sum = 0;
    for (int k = 0; k < n; k++) sum += static_cast<double>(a[k]) * b[k];
    return static_cast<float>(sum);
}

float zmax(int n, const float* a) {
    float largest = n > 0 ? a[0] : 0.0F;
    for (int k = 1; k < n; k++) largest = largest < a[k] ? a[k] : largest;
    return largest;
}

float zmin(int n, const float* a) {
    float smallest = n > 0 ? a[0] : 0.0F;
    for (int k = 1; k < n; k++) smallest = a[k] < smallest ? a[k] : smallest;
    return smallest;
}

void swap(int n, float* a, float* b) {
    if (n > 0) std::swap_ranges(a, a + n, b);
}

void asqrt(int n, const float* a, float* b) {
    for (int k = 0; k < n; k++) b[k] = std::sqrt(a[k]);
}

void reima(const float* x, int n, float* xr, float* xi) {
    for (int k = 0; k < n; k++) {
        xr[k] = x[2 * k];
        xi[k] = x[2 * k + 1];
    }
}

void cpxmul(int n, const float* a, const float* b, float* c) {
    const float scalar[2] = {n != 0 ? a[0] : 0.0F, n != 0 ? a[1] : 0.0F};
    for (int k = 0; k < std::abs(n); k++) {
        const float re = n < 0 ? scalar[0] : a[2 * k], im = n < 0 ? scalar[1] : a[2 * k + 1];
        const float bre = b[2 * k], bim = b[2 * k + 1];
        c[2 * k] = re * bre - im * bim;
        c[2 * k + 1] = re * bim + im * bre;
    }
}

void powrc(int n, const float* x, float* p) {
    for (int k = 0; k < n; k++) p[k] = x[2 * k] * x[2 * k] + x[2 * k + 1] * x[2 * k + 1];
}

void linseq(float* a, int n, float a1, float da) {
    for (int k = 0; k < n; k++) a[k] = k == 0 ? a1 : a[k - 1] + da;
}

int length(const char* s) {
    auto n = static_cast<int>(std::strlen(s));
    while (n > 0 && s[n - 1] == ' ') n--;
    return n;
}

} // namespace norva
