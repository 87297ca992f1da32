#pragma once
// The separable kernel of the image interpolator along one axis.

#include <vector>

namespace norva {

// Taps of one axis of n samples, chosen by n and the taps asked for: half-width m samples, and the kernel in
// steps of 1/16 sample, carried on with zeros as far as the taps reach.
struct image_kernel {
    int n = 0;
    int m = 0;
    std::vector<float> table;
};
image_kernel make_image_kernel(int n, int nt);

// Value c of the image a, as imgint tells, from the kernels of its two axes.
void interpolate_image(const float* a, const image_kernel& kx, const image_kernel& ky, float x0, float y0,
                       float* c);

} // namespace norva
