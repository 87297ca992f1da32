// Peaks of sampled curves.
#include "signal/peak.h"

#include <cmath>

namespace norva {
namespace {

// Index from 1 of the largest element above 0, the first of equals; 0 when none exceeds 0.
int largest_positive(const float* a, int n) {
    float peak = 0.0F;
    int at = 0;
    for (int k = 1; k <= n; k++) {
        if (a[k - 1] > peak) {
            peak = a[k - 1];
            at = k;
        }
    }
    return at;
}

// Vertex of the parabola through three samples, as an offset from the middle one: -DF/(2 DDF).
float vertex(float left, float middle, float right) {
    return -0.5F * (right - left) / (right - 2 * middle + left);
}

} // namespace

int kpeak(const float* a, int n) {
    int ip = largest_positive(a, n);
    return ip > 0 ? ip : 1;
}

float pkloc(const float* a, int n) {
    const int ip = largest_positive(a, n);
    if (ip <= 1 || ip >= n) return 0.0F;
    return static_cast<float>(ip) + vertex(a[ip - 2], a[ip - 1], a[ip]);
}

float pklocr(const float* a, int n) {
    const int ip = largest_positive(a, n);
    if (ip == 0) return 0.0F;
    const float left = a[ip == 1 ? n - 1 : ip - 2], right = a[ip == n ? 0 : ip];
    if (right - 2 * a[ip - 1] + left == 0) return static_cast<float>(ip); // all three alike: no parabola
    return static_cast<float>(ip) + vertex(left, a[ip - 1], right);
}

float pkpos(const float* a, int n, int k) {
    if (n <= 1 || k >= n || k < 1) return 0.0F;
    auto at = [&](int i) { return a[i - 1]; };
    int ip = k;
    if (at(k + 1) >= at(k)) {
        while (ip < n && !(at(ip + 1) < at(ip))) ip++;
        if (ip == n) return 0.0F;
    } else {
        while (ip > 1 && !(at(ip - 1) < at(ip))) ip--;
        if (ip == 1) return 0.0F;
    }
    return static_cast<float>(ip) + vertex(at(ip - 1), at(ip), at(ip + 1));
}

float pkwdth(const float* a, int n, int ip, float a0, float* wl, float* wr) {
    if (ip < 2 || ip >= n) return 0.0F;
    auto at = [&](int i) { return a[i - 1]; };
    const float df = at(ip + 1) - at(ip - 1), ddf = at(ip + 1) - 2 * at(ip) + at(ip - 1);
    // A vertex more than a sample away, |DF/(2 DDF)| > 1, is not the peak at ip.
    if (!(ddf < 0) || df * df > 4 * ddf * ddf) return 0.0F;
    const float dx = -0.5F * df / ddf;
    const float aa = (at(ip) - 0.5F * ddf * dx * dx) * a0;

    int ir = ip + 1, il = ip - 1;
    while (ir <= n && !(at(ir) < aa)) ir++;
    while (il >= 1 && !(at(il) < aa)) il--;
    if (ir > n || il < 1) return 0.0F;
    // The crossing by linear interpolation, measured from the vertex.
    *wr = static_cast<float>(ir - ip - 1) - dx + (at(ir - 1) - aa) / (at(ir - 1) - at(ir));
    *wl = static_cast<float>(ip - il - 1) + dx + (at(il + 1) - aa) / (at(il + 1) - at(il));
    return *wl + *wr;
}

} // namespace norva
