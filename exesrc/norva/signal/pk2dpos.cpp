// Refinement of one peak of a complex image.
#include "image_kernel.h"
#include "signal/aligned_buffer.h"
#include "signal/interp.h"
#include "signal/peak.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace norva {
namespace {

// Kernels with the taps that every refinement uses, whatever imgint was called with before.
const image_kernel& kernel_for(int n, image_kernel& kept) {
    if (kept.n != n) kept = make_image_kernel(n, IMGINT_TAPS);
    return kept;
}

struct peak_position {
    float x, y, power;
};

// The surroundings of a peak as an image of its own, so that the taps of all steps find their samples side by
// side.
class surroundings {
public:
    surroundings(const surroundings&) = delete;
    surroundings& operator=(const surroundings&) = delete;
    // Reach of the taps about a place that moves by less than two samples.
    surroundings(const float* c, int nx, int ny, int ix, int iy)
        : kx_(kernel_for(nx, kept_x_)), ky_(kernel_for(ny, kept_y_)), x0_(ix - kx_.m - 3),
          y0_(iy - ky_.m - 3), width_(2 * kx_.m + 6) {
        const int height = 2 * ky_.m + 6;
        float* to = kept_samples_.make_room(2 * static_cast<std::size_t>(width_) * height);
        samples_ = to;
        for (int j = 0; j < height; j++, to += 2 * width_) {
            const float* row = c + 2 * static_cast<std::size_t>(wrap(y0_ + j, ny)) * nx;
            for (int i = 0, run = 0; i < width_; i += run) {
                const int from = wrap(x0_ + i, nx);
                run = std::min(width_ - i, nx - from);
                std::copy_n(row + 2 * static_cast<std::ptrdiff_t>(from), 2 * run, to + 2 * i);
            }
        }
    }
    // Begins at (x, y).
    void start(float x, float y) {
        at_ = {x, y, 0};
        place(kx_, x, x0_, *tx_[1]);
        place(ky_, y, y0_, *ty_[1]);
    }
    // Moves to the best of nine places d apart; the taps of the middle ones are those found the last time.
    peak_position step(float d) {
        for (int i : {0, 2}) {
            place(kx_, at_.x + static_cast<float>(i - 1) * d, x0_, *tx_[i]);
            place(ky_, at_.y + static_cast<float>(i - 1) * d, y0_, *ty_[i]);
        }
        const nine power = powers();
        int best_i = 1, best_j = 1;
        at_.power = 0;
        for (int j = 0; j < 3; j++) {
            for (int i = 0; i < 3; i++) {
                if (power[i][j] > at_.power) at_.power = power[i][j], best_i = i, best_j = j;
            }
        }
        at_.x += static_cast<float>(best_i - 1) * d;
        at_.y += static_cast<float>(best_j - 1) * d;
        std::swap(tx_[1], tx_[best_i]);
        std::swap(ty_[1], ty_[best_j]);
        return at_;
    }

private:
    static int wrap(int k, int n) {
        k %= n;
        return k < 0 ? k + n : k;
    }
    static void place(const image_kernel& kernel, float position, int origin, image_taps& taps) {
        place_taps(kernel, position, taps);
        taps.first -= origin;
    }

    using three = std::array<image_taps*, 3>;
    using nine = std::array<std::array<float, 3>, 3>; // [i][j]: column, row

    // The taps lie at the same places, as they do but for a step across a sample.
    static bool alike(const three& taps) {
        return taps[0]->same_places(*taps[1]) && taps[2]->same_places(*taps[1]);
    }
    // Places whose taps are alike are done together: each row is then read, and its part found, once for all
    // of them.
    nine powers() const {
        nine result;
        const bool x = alike(tx_), y = alike(ty_);
        if (x && y) powers_of<3, 3>(0, 0, result);
        for (int k = 0; x != y && k < 3; k++)
            x ? powers_of<3, 1>(0, k, result) : powers_of<1, 3>(k, 0, result);
        for (int k = 0; !x && !y && k < 9; k++) powers_of<1, 1>(k / 3, k % 3, result);
        return result;
    }
    // Of the columns i0..i0+NX-1 and the rows j0..j0+NY-1.
    template <int NX, int NY> void powers_of(int i0, int j0, nine& result) const {
        const image_taps &x = *tx_[i0], &y = *ty_[j0];
        two_samples total[NX][NY] = {};
        for (int tap = 0; tap < y.count; tap++) {
            const int away = y.distance(tap), begin = 2 * x.begin(away), end = 2 * x.end(away);
            const float* row = samples_ + 2 * (static_cast<std::ptrdiff_t>(y.first + tap) * width_ + x.first);
            two_samples sum[NX] = {};
            int k = begin;
            for (; k + 4 <= end; k += 4) {
                const two_samples a = load_two(row + k);
                for (int i = 0; i < NX; i++) sum[i] += a * load_two(&tx_[i0 + i]->w[k]);
            }
            if (k < end) {
                const two_samples a = {row[k], row[k + 1], 0, 0};
                for (int i = 0; i < NX; i++) sum[i] += a * tx_[i0 + i]->w[k];
            }
            for (int i = 0; i < NX; i++) {
                for (int j = 0; j < NY; j++) total[i][j] += sum[i] * ty_[j0 + j]->w[2 * tap];
            }
        }
        for (int i = 0; i < NX; i++) {
            for (int j = 0; j < NY; j++) result[i0 + i][j0 + j] = power(total[i][j]);
        }
    }
    static float power(two_samples v) {
        const float re = v[0] + v[2], im = v[1] + v[3];
        return re * re + im * im;
    }

    // Kept from peak to peak.
    static thread_local image_kernel kept_x_, kept_y_;
    static thread_local aligned_buffer kept_samples_;

    const image_kernel &kx_, &ky_;
    int x0_, y0_; // sample of the image, from 0, that comes first here
    int width_;
    const float* samples_;
    peak_position at_;
    std::array<image_taps, 6> taps_;
    // Those of the places before, at and behind the position.
    std::array<image_taps*, 3> tx_ = {&taps_[0], &taps_[1], &taps_[2]},
                               ty_ = {&taps_[3], &taps_[4], &taps_[5]};
};
thread_local image_kernel surroundings::kept_x_, surroundings::kept_y_;
thread_local aligned_buffer surroundings::kept_samples_;

} // namespace

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

    peak_position at = {static_cast<float>(ix), static_cast<float>(iy), pmx};
    if (ni > 0) {
        surroundings near(c, nx, ny, ix - 1, iy - 1);
        near.start(at.x, at.y);
        float d = 0.5F;
        for (int step = 0; step < ni; step++, d *= 0.5F) at = near.step(d);
    }
    *xp = at.x;
    *yp = at.y;
    *ap = std::sqrt(at.power);
}

} // namespace norva
