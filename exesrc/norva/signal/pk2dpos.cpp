// Refinement of one peak of a complex image.
#include "image_kernel.h"
#include "signal/aligned_buffer.h"
#include "signal/interp.h"
#include "signal/peak.h"
#include "signal/processor.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace norva {
namespace {

// Kernels with the taps that every refinement uses, whatever imgint was called with before. Between the
// entries of a kernel's table the values lie on chords, which would draw a peak to the nearest entry: here
// there is one at every place that seven halvings reach.
constexpr int entries_per_sample = 128;

const image_kernel& kernel_for(int n, image_kernel& kept) {
    if (kept.n != n) kept = make_image_kernel(n, IMGINT_TAPS, entries_per_sample);
    return kept;
}

// Four samples. The same operations on every processor, and so the same bits.
typedef float v8 __attribute__((vector_size(32)));
typedef int mask8 __attribute__((vector_size(32)));
typedef float v8_anywhere __attribute__((vector_size(32), aligned(4), may_alias));

[[gnu::always_inline]] inline v8 load(const float* p) {
    return *reinterpret_cast<const v8_anywhere*>(p);
}
// The first n samples of four.
[[gnu::always_inline]] inline v8 first_of(v8 x, int n) {
    constexpr mask8 place = {0, 0, 1, 1, 2, 2, 3, 3};
    return reinterpret_cast<v8>(reinterpret_cast<mask8>(x) & (place < n));
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
        // The last vector of a row reads on for three samples.
        float* to = kept_samples_.make_room(2 * (static_cast<std::size_t>(width_) * height + 3));
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

    using nine = std::array<std::array<float, 3>, 3>; // [i][j]: column, row

    nine powers() const { return has_avx2() ? powers_avx2() : powers_here(); }
#if defined(__x86_64__)
    [[gnu::target("avx2")]]
#endif
    nine
    powers_avx2() const {
        return powers_here();
    }
    [[gnu::always_inline]] inline nine powers_here() const {
        v8 total[3][3] = {};
        if (tx_[0]->same_places(*tx_[1]) && tx_[2]->same_places(*tx_[1]) && ty_[0]->same_places(*ty_[1]) &&
            ty_[2]->same_places(*ty_[1]))
            sum_alike(total);
        else
            sum_apart(total);
        nine result;
        for (int i = 0; i < 3; i++) {
            for (int j = 0; j < 3; j++) {
                const v8 t = total[i][j];
                const float re = (t[0] + t[2]) + (t[4] + t[6]), im = (t[1] + t[3]) + (t[5] + t[7]);
                result[i][j] = re * re + im * im;
            }
        }
        return result;
    }

    // The taps of all nine places lie at the same samples, as they do but for a step across a sample: each
    // row is read, and its part found, once for all of them.
    [[gnu::always_inline]] inline void sum_alike(v8 (&total)[3][3]) const {
        const image_taps &x = *tx_[0], &y = *ty_[0];
        for (int tap = 0; tap < y.count; tap++) {
            const int away = y.distance(tap);
            v8 sum[3] = {};
            add_row<3>(y.first + tap, 0, x.begin(away), x.end(away), sum);
            for (int i = 0; i < 3; i++) {
                for (int j = 0; j < 3; j++) total[i][j] += sum[i] * ty_[j]->w[2 * tap];
            }
        }
    }

    // Column by column. Rows that lie equally far from two of the places still serve both.
    [[gnu::always_inline]] inline void sum_apart(v8 (&total)[3][3]) const {
        const int first = std::min({ty_[0]->first, ty_[1]->first, ty_[2]->first});
        const int last = std::max({ty_[0]->first, ty_[1]->first, ty_[2]->first}) + ty_[0]->count;
        for (int i = 0; i < 3; i++) {
            for (int row = first; row < last; row++) {
                int away = -1;
                v8 sum = {};
                for (int j = 0; j < 3; j++) {
                    const int tap = row - ty_[j]->first;
                    if (tap < 0 || tap >= ty_[j]->count) continue;
                    if (const int d = ty_[j]->distance(tap); d != away) {
                        away = d;
                        sum = v8{};
                        add_row<1>(row, i, tx_[i]->begin(d), tx_[i]->end(d), &sum);
                    }
                    total[i][j] += sum * ty_[j]->w[2 * tap];
                }
            }
        }
    }

    // Adds the taps begin..end-1 of a row for N places from column i on, whose taps lie at the same samples.
    template <int N>
    [[gnu::always_inline]] inline void add_row(int row, int i, int begin, int end, v8* sum) const {
        const float* from = samples_ + 2 * (static_cast<std::ptrdiff_t>(row) * width_ + tx_[i]->first);
        int k = begin;
        for (; k + 4 <= end; k += 4) {
            const v8 a = load(from + 2 * k);
            for (int n = 0; n < N; n++) sum[n] += a * load(&tx_[i + n]->w[2 * k]);
        }
        if (k >= end) return;
        const v8 a = load(from + 2 * k);
        for (int n = 0; n < N; n++) sum[n] += first_of(a * load(&tx_[i + n]->w[2 * k]), end - k);
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
