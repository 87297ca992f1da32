// Transposition of two-dimensional arrays, tile by tile so that both sides stay in the cache.
#include "mocomp/trnpos.h"

#include <algorithm>
#include <cstddef>

namespace norva {
namespace {

constexpr int tile = 32;

struct pair {
    float re, im;
};

template <class T> void transpose(const T* a, int nx, int ny, T* b) {
    for (int k0 = 0; k0 < ny; k0 += tile) {
        for (int i0 = 0; i0 < nx; i0 += tile) {
            for (int i = i0; i < std::min(i0 + tile, nx); i++) {
                for (int k = k0; k < std::min(k0 + tile, ny); k++) {
                    b[static_cast<std::size_t>(i) * ny + k] = a[static_cast<std::size_t>(k) * nx + i];
                }
            }
        }
    }
}

} // namespace

void trnpos(const float* a, int nx, int ny, float* b) {
    transpose(a, nx, ny, b);
}

void trnpoc(const float* a, int nx, int ny, float* b) {
    transpose(reinterpret_cast<const pair*>(a), nx, ny, reinterpret_cast<pair*>(b));
}

} // namespace norva
