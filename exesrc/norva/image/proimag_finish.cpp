// What a call ends with: amplitudes and peaks of the image, or the record of a status or of the end.
#include "image/proimag.h"
#include "proimag_int.h"
#include "signal/parallel.h"
#include "signal/peak.h"
#include "signal/vector.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace norva::image {
namespace {

constexpr int chunk = 16384; // samples

// Power of n complex samples into p; the largest, 0 for none.
float power(const float* a, int n, float* p) {
    powrc(n, a, p);
    constexpr int lanes = 16;
    std::array<float, lanes> most{};
    int k = 0;
    for (; k + lanes <= n; k += lanes) {
        for (int l = 0; l < lanes; l++) most[l] = most[l] < p[k + l] ? p[k + l] : most[l];
    }
    float largest = *std::ranges::max_element(most);
    for (; k < n; k++) largest = std::max(largest, p[k]);
    return largest;
}

// The same for powers that single precision does not hold; what is no number counts as nothing.
double amplitudes_in_double(const float* a, int n, float* out) {
    auto power = [a](int k) {
        const double re = a[2 * k], im = a[2 * k + 1], value = re * re + im * im;
        return std::isfinite(value) ? value : 0.0;
    };
    double largest = 0;
    for (int k = 0; k < n; k++) largest = std::max(largest, power(k));
    for (int k = 0; k < n; k++)
        out[k] = largest > 0 ? static_cast<float>(std::sqrt(power(k) / largest)) : 0.0F;
    return std::sqrt(largest);
}

} // namespace

float* amplitudes(processor& p) {
    const int n = img.nx * img.ny;
    const float* q = p.qa.data();
    float* a = p.qb.make_room(static_cast<std::size_t>(n));
    std::array<float, PI_MAX_SAMPLES / chunk + 1> most{};
    parallel_chunks(n, chunk, [&](int begin, int end) {
        most[static_cast<std::size_t>(begin / chunk)] =
            power(q + 2 * static_cast<std::ptrdiff_t>(begin), end - begin, a + begin);
    });
    const float pmax = *std::ranges::max_element(most);
    constexpr float faint = 1.0e-30F;
    if (pmax >= faint && pmax <= std::numeric_limits<float>::max()) {
        parallel_chunks(n, chunk, [&](int begin, int end) {
            for (int k = begin; k < end; k++) {
                const float share = a[k] / pmax;
                a[k] = std::sqrt(share >= 0 ? share : 0.0F); // not so for a NaN
            }
        });
        img.ascl = std::sqrt(pmax);
    } else {
        img.ascl = static_cast<float>(amplitudes_in_double(q, n, a));
    }
    // The largest amplitude is 1, so that the mean needs no scale.
    if (img.apmn < 0) img.apmn = img.ascl > 0 ? -img.apmn * zsum(n, a) / static_cast<float>(n) : 0.0F;
    return a;
}

failure result_image(processor& p, words_out out) {
    const float* a = amplitudes(p);
    std::array<int, PI_MAX_PEAKS + 1> lp{};
    peaks(a, img.nx, img.ny, std::clamp(img.npmx, 0, PI_MAX_PEAKS), img.apmn, lp.data(), &img.npk);

    const auto npk = static_cast<std::size_t>(img.npk);
    if (out.size() < PI_HEADER_WORDS + 3 * npk + p.samples() + p.own.size()) return SHORT_RESULT;
    const std::int32_t header[PI_HEADER_WORDS] = {
        p.is,         p.il,   img.kw,       img.ifx,      img.ify,        img.nx, bits(img.x1),
        bits(img.dx), img.ny, bits(img.y1), bits(img.dy), bits(img.ascl), img.npk};
    auto* to = std::ranges::copy(header, out.data()).out;
    for (std::size_t k = 0; k < npk; k++) {
        const int iy = (lp[k] - 1) / img.nx, ix = lp[k] - img.nx * iy - 1;
        const float amplitude = a[lp[k] - 1];
        const float size = img.kscl <= 1   ? amplitude * amplitude
                           : img.kscl >= 3 ? std::sqrt(amplitude)
                                           : amplitude;
        to[k] = bits(static_cast<float>(ix) * img.dx + img.x1);
        to[npk + k] = bits(static_cast<float>(iy) * img.dy + img.y1);
        to[2 * npk + k] = bits(size * img.diam);
    }
    to += 3 * npk;
    std::memcpy(to, a, p.samples() * sizeof(float));
    std::ranges::copy(p.own, to + p.samples());
    return nullptr;
}

failure result_status(processor& p, words_out out) {
    if (!p.fresh) amplitudes(p); // the scale of the image that the replay has come to
    const std::int32_t record[] = {p.is,     PI_STATUS,    img.kw,         img.ksx,
                                   img.ksy,  img.nx,       bits(img.x1),   bits(img.dx),
                                   img.ny,   bits(img.y1), bits(img.dy),   bits(img.ascl),
                                   img.npmx, img.kscl,     bits(img.apmn), bits(img.diam)};
    if (out.size() < std::size(record)) return SHORT_RESULT;
    std::ranges::copy(record, out.begin());
    return nullptr;
}

} // namespace norva::image
