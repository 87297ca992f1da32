// Actions that change the image or how its peaks are shown: flop, peak scaling, box edit, interpolation.
#include "proimag_int.h"
#include "signal/fft.h"
#include "signal/numbers.h"
#include "signal/resize.h"
#include "signal/vector.h"

#include <algorithm>
#include <utility>

namespace norva::image {
namespace {

// Only an image that holds the zero of a direction can be turned about it.
bool holds_zero(float first, float last) {
    return !(last * first > 0);
}

void reverse_rows(float* a, int nx, int ny) {
    for (int j = 0; j < ny; j++, a += 2 * static_cast<std::ptrdiff_t>(nx)) {
        for (int i = 0, k = nx - 1; i < k; i++, k--) std::swap_ranges(a + 2 * i, a + 2 * i + 2, a + 2 * k);
    }
}

void reverse_columns(float* a, int nx, int ny) {
    const std::ptrdiff_t row = 2 * static_cast<std::ptrdiff_t>(nx);
    for (int j = 0, k = ny - 1; j < k; j++, k--)
        std::swap_ranges(a + j * row, a + (j + 1) * row, a + k * row);
}

// Lengths that fft2d transforms.
bool transformable(int nx, int ny) {
    return (nx <= GFFT_MAX_MIXED || (nx & (nx - 1)) == 0) && ny <= FFT2D_MAX_NY;
}

} // namespace

failure act_flop(processor& p, words_in words) {
    const int kflop = words[0];
    const bool x = kflop == 1 || kflop == 3, y = kflop == 2 || kflop == 3;
    const float x2 = static_cast<float>(img.nx - 1) * img.dx + img.x1;
    const float y2 = static_cast<float>(img.ny - 1) * img.dy + img.y1;
    if (x && !holds_zero(img.x1, x2)) return "***Error 101a...Image cannot be flopped";
    if (y && !holds_zero(img.y1, y2)) return "***Error 101b...Image cannot be flopped";
    if (x || y) keep_first(p);
    if (x) {
        img.ksx = -img.ksx;
        img.x1 = -x2;
        reverse_rows(p.qa.data(), img.nx, img.ny);
    }
    if (y) {
        img.ksy = -img.ksy;
        img.y1 = -y2;
        reverse_columns(p.qa.data(), img.nx, img.ny);
    }
    return nullptr;
}

failure act_peak_scaling(processor& p, words_in words) {
    img.npmx = words[0];
    img.kscl = words[1];
    img.apmn = real_at(words, 2);
    img.diam = real_at(words, 3);
    // What a threshold below zero means depends on the image of this step.
    if (img.apmn < 0 && !p.fresh && !p.landing()) amplitudes(p);
    return nullptr;
}

failure act_edit(processor& p, words_in words) {
    const int i1 = nint(img.x1 / img.dx), j1 = nint(img.y1 / img.dy);
    const int i2 = img.nx + i1 - 1, j2 = img.ny + j1 - 1;
    const int ic1 = nint(real_at(words, 0) / img.dx), ic2 = nint(real_at(words, 1) / img.dx);
    const int jc1 = nint(real_at(words, 2) / img.dy), jc2 = nint(real_at(words, 3) / img.dy);
    if (ic1 < i1 || ic2 > i2 || jc1 < j1 || jc2 > j2) return "***Error 104a...Box must be inside image";
    // In 64 bits: a corner may lie far beyond the other side.
    if (static_cast<std::int64_t>(ic2) - ic1 < 10 || static_cast<std::int64_t>(jc2) - jc1 < 10)
        return "***Error 104b...Box is too small";
    const int mx = ic2 - ic1 + 1, my = jc2 - jc1 + 1;
    if (static_cast<std::int64_t>(mx) * my > PI_MAX_SAMPLES) return "***Error 104c...Insufficient memory";
    keep_first(p);
    const int k0 = 2 * ((jc1 - j1) * img.nx + ic1 - i1) + 1;
    arrext(p.qa.data(), 2 * img.nx, img.ny, k0, 2 * mx, my,
           p.qb.make_room(2 * static_cast<std::size_t>(mx) * static_cast<std::size_t>(my)));
    std::swap(p.qa, p.qb);
    img.nx = mx;
    img.ny = my;
    img.x1 = static_cast<float>(ic1) * img.dx;
    img.y1 = static_cast<float>(jc1) * img.dy;
    p.edited = true;
    return nullptr;
}

failure act_interpolate(processor& p, words_in words) {
    const int ifx = words[0], ify = words[1];
    const int mx = iradx2(nint(static_cast<float>(img.nx) * static_cast<float>(ifx) * img.dx));
    const int my = iradx2(nint(static_cast<float>(img.ny) * static_cast<float>(ify) * img.dy));
    if (mx < img.nx || my < img.ny) return "***Error 105a...Interpolation cannot be reversed";
    if (static_cast<std::int64_t>(mx) * my > PI_MAX_SAMPLES || my > FFT2D_MAX_NY ||
        !transformable(img.nx, img.ny))
        return "***Error 105b...Insufficient memory";
    keep_first(p);
    const std::size_t n = p.samples();
    float* a = p.qa.data();
    fft2d(a, img.nx, img.ny, -img.ksx, -img.ksy);
    float* b = p.qb.make_room(2 * static_cast<std::size_t>(mx) * static_cast<std::size_t>(my));
    const float scale = 1.0F / static_cast<float>(n);
    std::transform(a, a + 2 * n, b, [scale](float v) { return scale * v; });
    zfil2d(b, img.nx, img.ny, mx, my);
    fft2d(b, mx, my, img.ksx, img.ksy);
    std::swap(p.qa, p.qb);
    img.dx *= static_cast<float>(img.nx) / static_cast<float>(mx);
    img.dy *= static_cast<float>(img.ny) / static_cast<float>(my);
    img.nx = mx;
    img.ny = my;
    img.ifx = ifx;
    img.ify = ify;
    return nullptr;
}

} // namespace norva::image
