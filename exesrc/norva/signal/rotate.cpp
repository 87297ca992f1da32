// Circular movement of array elements.
#include "signal/vector.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace norva {
namespace {

long long wrap(long long k, long long n) {
    k %= n;
    return k < 0 ? k + n : k;
}

} // namespace

void shaft(float* a, int len, int n) {
    if (len <= 0) return;
    auto places = static_cast<int>(wrap(n, len));
    if (places != 0) std::rotate(a, a + (len - places), a + len);
}

void arrext(const float* a, int nx, int ny, int k0, int mx, int my, float* b) {
    if (nx <= 0 || ny <= 0 || mx <= 0 || my <= 0) return;
    // Offset of element k0, row and column apart so that the inverse offset turns each back by itself.
    long long offset = (k0 < 0 ? -static_cast<long long>(k0) : k0) - 1;
    long long ix = offset % nx, iy = offset / nx;
    if (k0 < 0) ix = -ix, iy = -iy;
    ix = wrap(ix, nx);
    for (int j = 0; j < my; j++) {
        const float* from = a + wrap(iy + j, ny) * nx;
        float* to = b + static_cast<std::size_t>(j) * mx;
        long long i = ix;
        for (int left = mx; left > 0;) {
            auto run = static_cast<int>(std::min<long long>(left, nx - i));
            std::memcpy(to, from + i, run * sizeof(float));
            to += run;
            left -= run;
            i = 0;
        }
    }
}

void half_rotate(const float* a, int nx, int ny, float* b, bool back) {
    int k0 = 2 * (ny / 2) * nx + 2 * (nx / 2) + 1;
    arrext(a, 2 * nx, ny, back ? -k0 : k0, 2 * nx, ny, b);
}

} // namespace norva
