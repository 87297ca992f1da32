// Peaks of images: the search over the samples and the refinement of one peak.
#include "image_kernel.h"
#include "signal/interp.h"
#include "signal/peak.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace norva {
namespace {

// List of linear indices in falling order of amplitude, at most `room` of them in use.
class falling_list {
public:
    falling_list(const float* a, int* lp, int room) : a_(a), lp_(lp), room_(room) {}
    void enter(int index) {
        const float value = amplitude(index);
        int place = 0;
        while (place < used_ && !(value >= amplitude(lp_[place]))) place++;
        // One entry beyond the room is written too: what is too small for a full list goes there.
        const int last = std::min(used_, room_ - 1);
        for (int i = last; i > place; i--) lp_[i] = lp_[i - 1];
        lp_[place] = index;
        used_ = std::min(used_ + 1, room_);
    }
    int used() const { return used_; }

private:
    float amplitude(int index) const { return a_[index - 1]; }
    const float* a_;
    int* lp_;
    int room_;
    int used_ = 0;
};

} // namespace

void peaks(const float* a, int nx, int ny, int npm, float amn, int* lp, int* np) {
    falling_list list(a, lp, std::max(npm, 0));
    for (int j = 0; j < ny; j++) {
        const float* row = a + static_cast<std::size_t>(j) * nx;
        const float* below = a + static_cast<std::size_t>(j == 0 ? ny - 1 : j - 1) * nx;
        const float* above = a + static_cast<std::size_t>(j == ny - 1 ? 0 : j + 1) * nx;
        for (int i = 0; i < nx; i++) {
            const float aa = row[i];
            if (!(aa > amn)) continue;
            const int left = i == 0 ? nx - 1 : i - 1, right = i == nx - 1 ? 0 : i + 1;
            if (aa > row[left] && aa > row[right] && aa > below[i] && aa > above[i] && aa > below[left] &&
                aa > below[right] && aa > above[left] && aa > above[right])
                list.enter(j * nx + i + 1);
        }
    }
    *np = list.used();
}

void pk2dpos(const float* c, int nx, int ny, int k0, int ni, float* xp, float* yp, float* ap) {
    *xp = *yp = *ap = 0;
    if (nx < 1 || ny < 1) return;
    auto power = [&](int x, int y) {
        const float* s = c + 2 * (static_cast<std::size_t>(y - 1) * nx + (x - 1));
        return s[0] * s[0] + s[1] * s[1];
    };
    k0 = std::clamp(k0, 1, nx * ny);
    int iy = (k0 - 1) / nx + 1, ix = k0 - (iy - 1) * nx;
    float pmx = 0;
    for (float plast = 0;; plast = pmx) {
        pmx = 0;
        int bx = ix, by = iy;
        for (int j = std::max(iy - 1, 1); j <= std::min(iy + 1, ny); j++) {
            for (int i = std::max(ix - 1, 1); i <= std::min(ix + 1, nx); i++) {
                if (power(i, j) > pmx) pmx = power(i, j), bx = i, by = j;
            }
        }
        if (!(pmx > plast)) break;
        ix = bx, iy = by;
    }

    *xp = static_cast<float>(ix);
    *yp = static_cast<float>(iy);
    const image_kernel kx = make_image_kernel(nx, IMGINT_TAPS), ky = make_image_kernel(ny, IMGINT_TAPS);
    float d = 0.5F;
    for (int step = 0; step < ni; step++, d *= 0.5F) {
        const float x0 = *xp, y0 = *yp;
        pmx = 0;
        for (int j = -1; j <= 1; j++) {
            for (int i = -1; i <= 1; i++) {
                const float x = x0 + static_cast<float>(i) * d, y = y0 + static_cast<float>(j) * d;
                float v[2];
                interpolate_image(c, kx, ky, x, y, v);
                const float p = v[0] * v[0] + v[1] * v[1];
                if (p > pmx) pmx = p, *xp = x, *yp = y;
            }
        }
    }
    *ap = std::sqrt(pmx);
}

} // namespace norva
