// Moving window image.
#include "profiles/mwimag.h"

#include "signal/aligned_buffer.h"
#include "signal/fft.h"
#include "signal/numbers.h"
#include "signal/parallel.h"
#include "signal/peak.h"
#include "signal/progress.h"
#include "signal/vector.h"
#include "signal/weight.h"
#include "zuvsys/stop.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace norva {
namespace {

// What all images of a run have in common.
struct run {
    int nf, nti;             // frequencies, records of a window
    int nx, ny;              // samples of an image: crossrange, range
    int ksx, ksy;            // transform signs
    bool turned_x, turned_y; // the image is centred by the weights' signs, see window_weights
    std::vector<float> weights;
};

// Place in m samples of sample k of n, both with the origin at the first sample: the upper half stays at the
// end.
int spread(int k, int n, int m) {
    return k < (n + 1) / 2 ? k : m - n + k;
}

// The circular weight around the middle of the window, nf rows of nti, the middle coming first. Where a size
// of the image is even, the sign of every other place of the transform's input is turned: that brings the
// zero of the result from the first sample to the middle one.
std::vector<float> window_weights(const run& r) {
    const std::size_t n = static_cast<std::size_t>(r.nti) * r.nf;
    std::vector<float> pairs(2 * n, 1.0F), weights(n);
    wght2d(pairs.data(), r.nti, r.nf, 1);
    for (int f = 0; f < r.nf; f++) {
        for (int t = 0; t < r.nti; t++) {
            const bool odd = (r.turned_x && spread(t, r.nti, r.nx) % 2 == 1) !=
                             (r.turned_y && spread(f, r.nf, r.ny) % 2 == 1);
            const std::size_t at = static_cast<std::size_t>(f) * r.nti + t;
            weights[at] = odd ? -pairs[2 * at] : pairs[2 * at];
        }
    }
    return weights;
}

// The complex image of the window that begins at q, zero crossrange and range at sample (nx/2, ny/2), counted
// from 0. Time becomes the fast direction and the middle of the band comes first; weighted, zero filled and
// transformed. spare serves as scratch; the result is one of the two.
float* form_image(const run& r, const float* q, float* image, float* spare) {
    std::fill_n(image, 2 * static_cast<std::size_t>(r.nx) * r.ny, 0.0F);
    for (int f = 0; f < r.nf; f++) {
        const float* from = q + 2 * ((f + r.nf / 2) % r.nf);
        const float* w = &r.weights[static_cast<std::size_t>(f) * r.nti];
        float* row = image + 2 * static_cast<std::size_t>(spread(f, r.nf, r.ny)) * r.nx;
        for (int t = 0; t < r.nti; t++) {
            const float* sample = from + 2 * static_cast<std::size_t>((t + r.nti / 2) % r.nti) * r.nf;
            float* to = row + 2 * static_cast<std::size_t>(spread(t, r.nti, r.nx));
            to[0] = w[t] * sample[0];
            to[1] = w[t] * sample[1];
        }
        gfft(row, r.nx, r.ksx); // the rows in between are zero
    }
    fft2d(image, r.nx, r.ny, 0, r.ksy);
    if (r.turned_x && r.turned_y) return image;
    // The directions that are centred already stay as they are.
    const int k0 = 2 * (r.turned_y ? 0 : (r.ny + 1) / 2) * r.nx + 2 * (r.turned_x ? 0 : (r.nx + 1) / 2) + 1;
    arrext(image, 2 * r.nx, r.ny, k0, 2 * r.nx, r.ny, spare);
    return spare;
}

} // namespace

void mwimag(const float* q, int nf, int nt, int nti, int lag, int ksx, int ksy, int ifx, int ify, int npk,
            int* nto, float* ap, float* xp, float* yp) {
    run r{nf, nti, niceno(nti * ifx), niceno(nf * ify), ksx, ksy, false, false, {}};
    if (2LL * r.nx * r.ny > MWIMAG_MAX_WORDS) stop("STOP IN MWIMAG #1");
    if (npk > MWIMAG_MAX_NPK) stop("STOP IN MWIMAG #2");
    *nto = 0;
    if (nf < 1 || nti < 1 || nti > nt || lag < 1) return;
    r.turned_x = r.nx % 2 == 0;
    r.turned_y = r.ny % 2 == 0;
    r.weights = window_weights(r);
    *nto = (nt - nti) / lag + 1;
    const std::size_t found = static_cast<std::size_t>(std::max(npk, 0)) * *nto;
    for (float* p : {ap, xp, yp}) std::fill_n(p, found, 0.0F);

    const float dx = static_cast<float>(nti) / static_cast<float>(r.nx),
                x1 = static_cast<float>(-(r.nx / 2)) * dx;
    const float dy = static_cast<float>(nf) / static_cast<float>(r.ny),
                y1 = static_cast<float>(-(r.ny / 2)) * dy;
    auto some_images = [&](int first, int last) {
        const std::size_t samples = static_cast<std::size_t>(r.nx) * r.ny;
        static thread_local aligned_buffer buffer;
        float *one = buffer.make_room(4 * samples), *other = one + 2 * samples;
        std::array<int, MWIMAG_MAX_NPK + 1> lp{};
        for (int i = first; i < last; i++) {
            float* image = form_image(r, q + 2 * static_cast<std::size_t>(i) * lag * nf, one, other);
            float* power = image == one ? other : one;
            powrc(static_cast<int>(samples), image, power);
            int np = 0;
            peaks(power, r.nx, r.ny, npk, 0.0F, lp.data(), &np);
            for (int k = 0; k < np; k++) {
                const std::size_t l = static_cast<std::size_t>(i) * npk + k;
                float xx = 0, yy = 0;
                pk2dpos(image, r.nx, r.ny, lp[k], MWIMAG_STEPS, &xx, &yy, &ap[l]);
                xp[l] = (xx - 1) * dx + x1;
                yp[l] = (yy - 1) * dy + y1;
            }
        }
    };
    int reported = 0;
    auto report = [&](int done) {
        while (reported < done) signal_hooks.progress(++reported, *nto);
    };
    parallel_chunks(*nto, 1, some_images, report);

    const float strongest = found > 0 ? *std::max_element(ap, ap + found) : 0.0F;
    if (strongest > 0) std::for_each(ap, ap + found, [=](float& a) { a /= strongest; });
}

} // namespace norva
