#pragma once
// The image interpolator in two steps: the weights of the taps along each axis, and the sum over both.

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace norva {

// Kernel of one axis of n samples: half-width m samples, and its values in steps of 1/per_sample, carried on
// with zeros as far as the taps reach.
struct image_kernel {
    int n = 0;
    int m = 0;
    int per_sample = 0;
    std::vector<float> table;
};
image_kernel make_image_kernel(int n, int nt, int per_sample);

// tsinc and samp with any number of values per sample: per_sample*m of them, and per_sample*n/2.
void tapered_sinc(float* r, int m, int per_sample);
void periodic_kernel(float* r, int n, int per_sample);

// The taps that give the value at one position of an axis.
struct image_taps {
    static constexpr int most = 128;
    // Taps whose whole distances multiply to more than this are left out: the corners of the square
    // contribute little.
    static constexpr int far_product = 40;

    int first = 0;                 // sample of the first tap, counted from 0; not wrapped
    int count = 0;                 // samples in a row
    std::array<float, 2 * most> w; // weight of each tap, twice: for real and imaginary part
    int centre = 0; // whole distances fall to 0 at this tap, and the next one is at 1 - gap, 2 - gap, ...
    int gap = 0;

    bool same_places(const image_taps& other) const {
        return first == other.first && centre == other.centre && gap == other.gap;
    }
    // From the position, whole samples.
    int distance(int tap) const { return tap <= centre ? centre - tap : tap - centre - gap; }
    // Taps begin(d)..end(d)-1 go with the taps of the other axis at the distance d.
    int begin(int d) const { return std::max(0, centre - reach(d)); }
    int end(int d) const { return std::min(count, centre + gap + reach(d) + 1); }

private:
    static int reach(int d) {
        static constexpr auto table = [] {
            std::array<int, most + 2> t{};
            for (int k = 0; k < most + 2; k++) t[k] = k == 0 ? most : far_product / k;
            return t;
        }();
        return table[d];
    }
};
void place_taps(const image_kernel& kernel, float position, image_taps& taps);

// Sum of the weights times n taps in a row of complex samples: even taps in the first half of the result, odd
// ones in the second.
typedef float two_samples __attribute__((vector_size(16)));
inline two_samples load_two(const float* p) {
    two_samples v;
    std::memcpy(&v, p, sizeof v);
    return v;
}
inline two_samples sum_run(const float* a, const float* weights, int n) {
    two_samples sum = {0, 0, 0, 0},
                other = sum; // two sums in turn, neither of which has to wait for the other
    int k = 0;
    for (; k + 4 <= n; k += 4) {
        sum += load_two(a + 2 * k) * load_two(weights + 2 * k);
        other += load_two(a + 2 * k + 4) * load_two(weights + 2 * k + 4);
    }
    if (k + 2 <= n) {
        sum += load_two(a + 2 * k) * load_two(weights + 2 * k);
        k += 2;
    }
    if (k < n) other += two_samples{a[2 * k], a[2 * k + 1], 0, 0} * weights[2 * k];
    return sum + other;
}

// Sum of wx wy A over the taps of both axes, for a complex image of ny rows of nx samples, periodic both
// ways.
void sum_taps(const float* a, int nx, int ny, const image_taps& x, const image_taps& y, float* c);

} // namespace norva
