// Peaks of images: the search over the samples and the refinement of one peak.
#include "image_kernel.h"
#include "signal/interp.h"
#include "signal/peak.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

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
    std::vector<int> top(std::max(nx, 0)); // of the row at hand: greater than all eight neighbours
    for (int j = 0; j < ny; j++) {
        const float* row = a + static_cast<std::size_t>(j) * nx;
        const float* below = a + static_cast<std::size_t>(j == 0 ? ny - 1 : j - 1) * nx;
        const float* above = a + static_cast<std::size_t>(j == ny - 1 ? 0 : j + 1) * nx;
        auto is_top = [=](int i, int left, int right) {
            const float aa = row[i];
            return (aa > amn) & (aa > row[left]) & (aa > row[right]) & (aa > below[i]) & (aa > above[i]) &
                   (aa > below[left]) & (aa > below[right]) & (aa > above[left]) & (aa > above[right]);
        };
        // Without branches between the columns at the edge, so that several samples are compared at once.
        for (int i = 1; i < nx - 1; i++) top[i] = is_top(i, i - 1, i + 1);
        for (int i : {0, nx - 1}) {
            if (nx > 0) top[i] = is_top(i, i == 0 ? nx - 1 : i - 1, i == nx - 1 ? 0 : i + 1);
        }
        for (int i = 0; i < nx; i++) {
            if (top[i]) list.enter(j * nx + i + 1);
        }
    }
    *np = list.used();
}

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
    // Reach of the taps about a place that moves by less than two samples.
    surroundings(const float* c, int nx, int ny, int ix, int iy)
        : kx_(kernel_for(nx, kept_x_)), ky_(kernel_for(ny, kept_y_)), x0_(ix - kx_.m - 3),
          y0_(iy - ky_.m - 3), width_(2 * kx_.m + 6), height_(2 * ky_.m + 6),
          samples_(2 * static_cast<std::size_t>(width_) * height_) {
        for (int j = 0; j < height_; j++) {
            const float* row = c + 2 * static_cast<std::size_t>(wrap(y0_ + j, ny)) * nx;
            float* to = samples_.data() + 2 * static_cast<std::size_t>(j) * width_;
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
        place(kx_, x, x0_, tx_[1]);
        place(ky_, y, y0_, ty_[1]);
    }
    // Moves to the best of nine places d apart; the taps of the middle ones are those found the last time.
    peak_position step(float d) {
        for (int i : {0, 2}) {
            place(kx_, at_.x + static_cast<float>(i - 1) * d, x0_, tx_[i]);
            place(ky_, at_.y + static_cast<float>(i - 1) * d, y0_, ty_[i]);
        }
        std::array<std::array<float, 3>, 3> power; // [i][j]: column, row
        for (int i = 0; i < 3; i++) power[i] = powers_of_column(tx_[i]);
        int best_i = 1, best_j = 1;
        at_.power = 0;
        for (int j = 0; j < 3; j++) {
            for (int i = 0; i < 3; i++) {
                if (power[i][j] > at_.power) at_.power = power[i][j], best_i = i, best_j = j;
            }
        }
        at_.x += static_cast<float>(best_i - 1) * d;
        at_.y += static_cast<float>(best_j - 1) * d;
        if (best_i != 1) std::swap(tx_[1], tx_[best_i]);
        if (best_j != 1) std::swap(ty_[1], ty_[best_j]);
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

    // Powers at one x and the three y. When the taps of these lie at the same places, as they do but for a
    // step across a sample, the sum along a row serves all three.
    std::array<float, 3> powers_of_column(const image_taps& tx) const {
        const auto& [before, here, behind] = ty_;
        two_samples first = {}, second = {}, third = {};
        if (here.same_places(before) && here.same_places(behind)) {
            for (int tap = 0; tap < here.count; tap++) {
                const two_samples sum = sum_of_row(tx, here, tap);
                first += sum * before.w[2 * tap];
                second += sum * here.w[2 * tap];
                third += sum * behind.w[2 * tap];
            }
        } else {
            for (int tap = 0; tap < here.count; tap++) {
                first += sum_of_row(tx, before, tap) * before.w[2 * tap];
                second += sum_of_row(tx, here, tap) * here.w[2 * tap];
                third += sum_of_row(tx, behind, tap) * behind.w[2 * tap];
            }
        }
        return {power(first), power(second), power(third)};
    }
    two_samples sum_of_row(const image_taps& tx, const image_taps& ty, int tap) const {
        const int away = ty.distance(tap), from = tx.begin(away), to = tx.end(away);
        const std::ptrdiff_t row = static_cast<std::ptrdiff_t>(ty.first + tap) * width_;
        return sum_run(&samples_[2 * (row + tx.first + from)], &tx.w[2 * from], to - from);
    }
    static float power(two_samples v) {
        const float re = v[0] + v[2], im = v[1] + v[3];
        return re * re + im * im;
    }

    static thread_local image_kernel kept_x_, kept_y_;
    const image_kernel &kx_, &ky_;
    int x0_, y0_; // sample of the image, from 0, that comes first here
    int width_, height_;
    std::vector<float> samples_;
    peak_position at_;
    std::array<image_taps, 3> tx_, ty_; // of the places before, at and behind it
};
thread_local image_kernel surroundings::kept_x_, surroundings::kept_y_;

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
