// Action 11: the edited image made data again.
#include "image/proimag.h"
#include "proimag_int.h"
#include "signal/fft.h"
#include "signal/numbers.h"
#include "signal/resize.h"
#include "signal/vector.h"
#include "signal/weight.h"

#include <algorithm>

namespace norva::image {
namespace {

// A length made of small factors, which fft2d transforms.
int nice_length(int n) {
    const int nice = niceno(n);
    return nice <= GFFT_MAX_MIXED ? nice : iradx2(n);
}

} // namespace

failure result_data(processor& p, words_out out) {
    const int ntp = nice_length(img.nx), nfp = nice_length(img.ny);
    const std::size_t n = static_cast<std::size_t>(ntp) * static_cast<std::size_t>(nfp);
    constexpr std::size_t header_words = 6;
    if (out.size() < header_words + 2 * n) return SHORT_RESULT;
    // The middle of the image becomes the origin, so that it stays in the middle when the data are imaged
    // again.
    float* b = p.qb.make_room(2 * n);
    half_rotate(p.qa.data(), img.nx, img.ny, b);
    zfil2d(b, img.nx, img.ny, ntp, nfp);
    fft2d(b, ntp, nfp, -img.ksx, -img.ksy);
    dwght2d(b, ntp, nfp, 1);

    const std::int32_t header[header_words] = {p.is, PI_WRITE, nfp, ntp, img.ksx, img.ksy};
    std::ranges::copy(header, out.begin());
    // The middle of the band goes from the first place to the middle, and frequency becomes the fast
    // direction.
    for (int t = 0; t < ntp; t++) {
        auto to = out.begin() + static_cast<std::ptrdiff_t>(header_words) +
                  2 * static_cast<std::ptrdiff_t>(t) * nfp;
        const int column = (t + ntp - ntp / 2) % ntp;
        for (int f = 0; f < nfp; f++) {
            const int row = (f + nfp - nfp / 2) % nfp;
            const float* sample = b + 2 * (static_cast<std::ptrdiff_t>(row) * ntp + column);
            *to++ = bits(sample[0]);
            *to++ = bits(sample[1]);
        }
    }
    return nullptr;
}

} // namespace norva::image
