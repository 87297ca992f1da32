// Actions that read the image: peak parameters, cut, centring.
#include "image/proimag.h"
#include "proimag_int.h"
#include "signal/interp.h"
#include "signal/numbers.h"
#include "signal/parallel.h"
#include "signal/peak.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace norva::image {
namespace {

constexpr int search_steps = 4;   // of a peak's refinement
constexpr float search_gates = 2; // a peak further away is not the one that was meant

struct sample_place {
    int ix, iy;
    bool inside() const { return ix > 0 && ix < img.nx - 1 && iy > 0 && iy < img.ny - 1; }
};

sample_place nearest_sample(float xc, float yc) {
    return {nint((xc - img.x1) / img.dx), nint((yc - img.y1) / img.dy)};
}

struct found_peak {
    float x, y, amplitude;
    bool near; // within 2 gates of the point
};

// The peak reached from a sample, wanted near a point.
found_peak find_peak(const processor& p, sample_place from, float xc, float yc) {
    float x = 0, y = 0, amplitude = 0;
    pk2dpos(p.qa.data(), img.nx, img.ny, img.nx * from.iy + from.ix + 1, search_steps, &x, &y, &amplitude);
    x = (x - 1) * img.dx + img.x1;
    y = (y - 1) * img.dy + img.y1;
    return {x, y, amplitude, std::fabs(x - xc) <= search_gates && std::fabs(y - yc) <= search_gates};
}

void sincosd(float angle, double& sine, double& cosine) {
    const double radians = angle * std::numbers::pi / 180;
    sine = std::sin(radians);
    cosine = std::cos(radians);
}

struct cut {
    int zone = 1; // 1: nearer crossrange, 0: nearer range
    int nc = 0;   // samples, from c1 in steps of dc
    float c1 = 0, dc = 0;
    float xc1 = 0, yc1 = 0, dxc = 0, dyc = 0; // in the image
    float end_x() const { return xc1 + static_cast<float>(nc - 1) * dxc; }
    float end_y() const { return yc1 + static_cast<float>(nc - 1) * dyc; }
    // 1 along range, 2 along crossrange, 3 and 4 diagonal, nearer range and crossrange.
    int kind() const { return std::fabs(dxc) <= 0.01F ? 1 : std::fabs(dyc) <= 0.01F ? 2 : zone == 0 ? 3 : 4; }
};

// A cut of length wct about the pivot, in steps of about dct. False when it has no samples, or too many.
bool place_cut(float wct, float dct, float xpv, float ypv, float ang, cut& c) {
    for (float value : {wct, dct, xpv, ypv, ang}) {
        if (!std::isfinite(value)) return false;
    }
    if (!(dct > 0)) return false;
    constexpr float steepest = 45;
    const auto turned = static_cast<float>(std::remainder(ang, 360.0F));
    const bool range =
        (turned > steepest && turned <= 180 - steepest) || (turned > steepest - 180 && turned <= -steepest);
    c.zone = range ? 0 : 1;
    const float extent = range ? static_cast<float>(img.ny) * img.dy : static_cast<float>(img.nx) * img.dx;
    const float wc = std::min(wct, extent);
    const auto per_gate = static_cast<int>(std::min(1 / dct + 0.01F, 1e9F));
    c.dc = 1.0F / static_cast<float>(iradx2(per_gate));
    c.nc = nint(wc / c.dc);
    if (c.nc < 1 || c.nc > PI_MAX_CUT) return false;
    double sine = 0, cosine = 0;
    sincosd(ang, sine, cosine);
    c.c1 = static_cast<float>(-(c.nc / 2)) * c.dc;
    c.dxc = static_cast<float>(cosine * c.dc);
    c.dyc = static_cast<float>(sine * c.dc);
    c.xc1 = xpv - static_cast<float>(c.nc / 2) * c.dxc;
    c.yc1 = ypv - static_cast<float>(c.nc / 2) * c.dyc;
    return true;
}

// 0, or the side (1 left, 2 right, 3 bottom, 4 top) on which the cut leaves the image, the last that holds.
int leaves_image(const cut& c) {
    const float x2 = static_cast<float>(img.nx - 1) * img.dx + img.x1;
    const float y2 = static_cast<float>(img.ny - 1) * img.dy + img.y1;
    int side = 0;
    if (std::min(c.xc1, c.end_x()) < img.x1) side = 1;
    if (std::max(c.xc1, c.end_x()) > x2) side = 2;
    if (std::min(c.yc1, c.end_y()) < img.y1) side = 3;
    if (std::max(c.yc1, c.end_y()) > y2) side = 4;
    return side;
}

// The image along a line: n samples from (x1, y1), counted in samples from 1, in steps of (dx, dy).
void diacut(const float* a, int nx, int ny, double x1, double y1, double dx, double dy, int n, float* b) {
    parallel_chunks(n, 64, [=](int first, int last) {
        for (int k = first; k < last; k++) {
            imgint(a, nx, ny, static_cast<float>(x1 + k * dx), static_cast<float>(y1 + k * dy), IMGINT_TAPS,
                   b + 2 * static_cast<std::ptrdiff_t>(k));
        }
    });
}

void append(std::vector<std::int32_t>& words, const float* values, std::size_t n) {
    const std::size_t at = words.size();
    words.resize(at + n);
    std::transform(values, values + n, words.begin() + static_cast<std::ptrdiff_t>(at), bits);
}

// The stored journal of a cut comes back to the cut processor.
void restore_cut_journal(processor& p, std::size_t length_at) {
    const auto nn = static_cast<std::size_t>(p.actions[length_at]);
    const words_in stored = words_in(p.actions).subspan(length_at + 1, nn);
    cutj.jf = 0;
    if (nn < 2 || stored[1] < 0 || static_cast<std::size_t>(stored[1]) > nn - 2) return;
    cutj.jf = 1;
    cutj.ns = stored[0];
    cutj.np = stored[1];
    cutj.ir.assign(stored.begin() + 2, stored.end());
}

} // namespace

failure act_nothing(processor&, words_in) {
    return nullptr;
}

failure act_peak_parameters(processor& p, words_in words) {
    const float xc = real_at(words, 0), yc = real_at(words, 1);
    const sample_place at = nearest_sample(xc, yc);
    const found_peak peak = at.inside() ? find_peak(p, at, xc, yc) : found_peak{};
    img.xpk = peak.near ? peak.x : 0;
    img.ypk = peak.near ? peak.y : 0;
    img.apk = peak.near ? peak.amplitude : 0;
    p.own = {bits(img.xpk), bits(img.ypk), bits(img.apk)};
    return nullptr;
}

failure act_cut(processor& p, words_in words) {
    cut c;
    const float xpv = real_at(words, 2), ypv = real_at(words, 3), ang = real_at(words, 4);
    if (!place_cut(real_at(words, 0), real_at(words, 1), xpv, ypv, ang, c))
        return "***Error 108...Improper cut";
    p.wct = static_cast<float>(c.nc) * c.dc;
    p.dct = c.dc;
    img.xpv = xpv;
    img.ypv = ypv;
    img.ang = ang;
    img.xc1 = c.xc1;
    img.yc1 = c.yc1;
    img.dxc = c.dxc;
    img.dyc = c.dyc;
    kss = c.zone == 1 ? img.ksx : img.ksy;
    cutj.isi = 100 * (p.is + 1);
    cutj.jf = 0;
    if (!p.fresh) restore_cut_journal(p, p.np + 1 + words.size());
    if (!p.fresh && !p.landing()) return nullptr; // nobody will see the samples
    float* b = p.qb.make_room(2 * static_cast<std::size_t>(c.nc));
    diacut(p.qa.data(), img.nx, img.ny, (static_cast<double>(c.xc1) - img.x1) / img.dx + 1,
           (static_cast<double>(c.yc1) - img.y1) / img.dy + 1, static_cast<double>(c.dxc) / img.dx,
           static_cast<double>(c.dyc) / img.dy, c.nc, b);
    p.own = {c.kind(), c.nc, bits(c.c1), bits(c.dc)};
    append(p.own, b, 2 * static_cast<std::size_t>(c.nc));
    p.own.push_back(p.edited ? leaves_image(c) : 0);
    return nullptr;
}

failure act_center(processor& p, words_in words) {
    float xc = real_at(words, 0), yc = real_at(words, 1);
    const float fc = real_at(words, 2), bw = real_at(words, 3);
    const sample_place at = nearest_sample(xc, yc);
    if (!at.inside()) return "***Error 109a...Point must be within image";
    if (words[4] > 0) {
        const found_peak peak = find_peak(p, at, xc, yc);
        if (!peak.near) return "***Error 109b...No peak within 2 gates";
        xc = peak.x;
        yc = peak.y;
    }
    // The point's delay against the origin, and how it changes from record to record as the target turns.
    const double yn = img.ksy * static_cast<double>(yc) / bw;
    const double xn = img.ksx * static_cast<double>(xc) / (static_cast<double>(img.nt) * fc);
    if (!std::isfinite(yn) || !std::isfinite(img.nt * xn))
        return "***Error 109c...Improper frequency or bandwidth";
    p.own = {img.nt + 1, bits(xc), bits(yc)};
    for (int k = 0; k <= img.nt; k++)
        p.own.push_back(bits(static_cast<float>(yn + (k - 0.5 * (img.nt - 1)) * xn)));
    return nullptr;
}

} // namespace norva::image
